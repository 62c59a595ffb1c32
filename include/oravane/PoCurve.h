#ifndef ORAVANE_POCURVE_H
#define ORAVANE_POCURVE_H

#include <oravane/PoKestrava.h>
#include <oravane/PoSFEnum.h>
#include <oravane/PoShownPart.h>

#include <Inventor/fields/SoMFFloat.h>
#include <Inventor/fields/SoMFInt32.h>
#include <Inventor/fields/SoMFVec2f.h>
#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFInt32.h>
#include <Inventor/fields/SoSFString.h>

#include <memory>
#include <span>

namespace oravane {
class MarkerParts;
struct PointFilter;
struct PointRuns;
} // namespace oravane

/// Draws a curve through points of the plane z = 0: straight, smooth, as stairs or as a histogram; filled
/// down to a threshold when wanted; with vertical lines (raise lines) and marks at chosen places.
///
/// \code
///   auto *curve = new PoCurve;
///   curve->point.setValues(0, 365, temperatures);             // (day, degrees)
///   curve->curveRep = PoCurve::CURVE_SMOOTH;
///   curve->isCurveFilled = TRUE;                              // down, or up, to 0 degrees
///   curve->markerFilterType = PoCurve::INDEX_PERIOD;
///   curve->markerIndexPeriod = 30;
///   curve->set("curveFillingApp.material { diffuseColor 1 0.9 0.7 }");
///   root->addChild(curve);                                    // behind a PoDomain of 365 days by 30 degrees
/// \endcode
///
/// Shapes. For points p(0) to p(n - 1), and m = (mx, my) in the middle of two neighbours a and b, stairs and
/// histograms go from p(0) by the corners below for each two neighbours to p(n - 1); a corner that equals
/// the one before is left out. A smooth curve is a `PiCubicSpline` of 10 subdivisions, which is closed when
/// the last point equals the first.
///
///     CURVE_STAIRS_X    (b.x, a.y), b                     CURVE_HISTO_X   (a.x, my), (b.x, my)
///     CURVE_STAIRS_Y    (a.x, b.y), b                     CURVE_HISTO_Y   (mx, a.y), (mx, b.y)
///     CURVE_STAIRS_2X   (a.x, my), m, (mx, b.y), b
///     CURVE_STAIRS_2Y   (mx, a.y), m, (b.x, my), b
///
/// A point without a finite position is a gap: curve and filling end before it, and go on behind it as ones
/// of their own. Indices count such points, too, but there is nothing at them.
///
/// Filling. The line of a filled curve is led to the threshold at both ends, 1/10000 of its width outside of
/// them, and each area on one side of the threshold is a polygon, or a row of polygons where it would have
/// more than 5 000 corners. Fewer than two points have no filling, nor has a threshold that is not finite.
///
/// Filters choose the places of raise lines and marks. Those by index count the points of the field; those by
/// x look for places on the curve as drawn, also where it is not shown (CURVE_NONE), x by x and for each x
/// segment by segment: a point where two segments meet is two places. A curve of a single point has that
/// point for every period, and for a list that has its x. X_PERIOD runs from the smallest x of the curve to
/// its greatest, which counts as reached when the last step misses it by the last digit of the numbers.
/// Entries of lists that hit nothing choose nothing. A period that is not above 0, and steps or places by x
/// beyond 1 000 000, make a filter INACTIVE, and so does a value that names none.
///
/// Marks, see `PiMarker`. The size of dots is that of `markerApp.drawStyle`, and font name and size of other
/// marks are those of `markerApp.font`; without them the kit makes them, 5 pixels (on pages nominal widths),
/// and "defaultFont" of 3/100 of the domain's x side. The font size is in units of x, and letters keep their
/// shape in a domain of unequal sides. Change the font before the curve is drawn, or call `touchKit()`.
///
/// Generates `curveFilling` (shape hints, coordinates, a face set), `curvePoint` and `raisePoint`
/// (coordinates and a line set) and `marker`; what is not needed is null. All are drawn unlit. The kit
/// depends on its domain only when it has marks other than dots. The time of a rebuild grows with the number
/// of points and places, times the logarithm of the number of x of a filter by x.
class ORAVANE_API PoCurve : public PoKestrava {
    SO_KIT_HEADER(PoCurve);
    ORAVANE_SHOWN_PART_HEADER(curveFilling);
    ORAVANE_SHOWN_PART_HEADER(curvePoint);
    ORAVANE_SHOWN_PART_HEADER(raisePoint);
    ORAVANE_SHOWN_PART_HEADER(marker);

public:
    enum FilterType : int {
        INACTIVE = 0,
        ALL_POINTS = 1,
        INDEX_PERIOD = 2, ///< index 0, and so on by the period
        INDEX_LIST = 3,   ///< the indices of the list that there are, in its order
        X_PERIOD = 4,
        X_LIST = 5, ///< in the order of the list
    };
    enum CurveRep : int {
        CURVE_NONE = 0, ///< the line is not shown; filling, raise lines and marks are those of a polyline
        CURVE_POLYLINE = 1,
        CURVE_SMOOTH = 2,
        CURVE_STAIRS_X = 3, ///< the value of a point holds until the next one
        CURVE_STAIRS_Y = 4, ///< the value of a point holds from the one before
        CURVE_HISTO_X = 5,  ///< between two points their mean
        CURVE_HISTO_Y = 6,  ///< the value of a point holds half way to both neighbours
        CURVE_STAIRS_2X = 7,
        CURVE_STAIRS_2Y = 8,
    };

    SoMFVec2f point;            ///< default one point (0, 0)
    PoSFEnum curveRep;          ///< default CURVE_POLYLINE, as for a value that names none
    SoSFBool isCurveFilled;     ///< default FALSE
    SoSFFloat fillingThreshold; ///< default 0

    PoSFEnum markerFilterType;   ///< default INACTIVE
    SoSFInt32 markerIndexPeriod; ///< default 0
    SoMFInt32 markerIndexList;   ///< default 0
    SoSFFloat markerXPeriod;     ///< default 0
    SoMFFloat markerXList;       ///< default 0
    SoSFString markerString;     ///< default "."

    PoSFEnum raiseFilterType;   ///< default INACTIVE
    SoSFInt32 raiseIndexPeriod; ///< default 0
    SoMFInt32 raiseIndexList;   ///< default 0
    SoSFFloat raiseXPeriod;     ///< default 0
    SoMFFloat raiseXList;       ///< default 0
    SoSFFloat raiseThreshold;   ///< y where raise lines start, default 0; none when it is not finite

    PoCurve();
    static void initClass();
    void rebuild() override;

protected:
    ~PoCurve() override;
    void setDefaultOnNonWritingFields() override;
    void copyContents(const SoFieldContainer *from, SbBool copyConnections) override;

private:
    struct Parts;

    void drawCurve(const oravane::PointRuns &curve, Parts &parts) const;
    SoGroup *drawRaisePoints(std::span<const SbVec2f> places) const;
    void drawMarkers(std::span<const SbVec2f> places, Parts &parts) const;
    oravane::PointFilter markerFilter() const;
    oravane::PointFilter raiseFilter() const;

    std::unique_ptr<oravane::MarkerParts> m_markers;
};

#endif
