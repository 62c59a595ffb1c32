#ifndef ORAVANE_POCURVE3_H
#define ORAVANE_POCURVE3_H

#include <oravane/PoKestrava.h>
#include <oravane/PoSFEnum.h>
#include <oravane/PoShownPart.h>

#include <Inventor/fields/SoMFVec3f.h>
#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFString.h>

#include <memory>

namespace oravane {
class MarkerParts;
}

/// Draws a curve through points in space, straight or smooth, and marks at its points.
///
/// \code
///   PoCurve3 { point [ 0 0 0, 1 0 1, 1 1 2, 0 1 3 ]  curveRep CURVE_SMOOTH }
/// \endcode
///
/// Marks stand in the plane z = 0, at x and y of the points of the field; their looks are those of `PoCurve`,
/// and so are smooth curves, gaps at points without a finite position, and what the kit depends on.
///
/// Generates `curvePoint` (coordinates and a line set) and `marker`, drawn unlit; what is not needed is null.
class ORAVANE_API PoCurve3 : public PoKestrava {
    SO_KIT_HEADER(PoCurve3);
    ORAVANE_SHOWN_PART_HEADER(curvePoint);
    ORAVANE_SHOWN_PART_HEADER(marker);

public:
    enum CurveRep : int {
        CURVE_NONE = 0,
        CURVE_POLYLINE = 1,
        CURVE_SMOOTH = 2,
    };

    SoMFVec3f point;          ///< default one point (0, 0, 0)
    PoSFEnum curveRep;        ///< default CURVE_POLYLINE, as for a value that names none
    SoSFBool isMarkerVisible; ///< default FALSE
    SoSFString markerString;  ///< default "."

    PoCurve3();
    static void initClass();
    void rebuild() override;

protected:
    ~PoCurve3() override;
    void setDefaultOnNonWritingFields() override;
    void copyContents(const SoFieldContainer *from, SbBool copyConnections) override;

private:
    std::unique_ptr<oravane::MarkerParts> m_markers;
};

#endif
