#ifndef ORAVANE_POCARTESIANAXIS_H
#define ORAVANE_POCARTESIANAXIS_H

#include <oravane/PoAxis.h>

#include <Inventor/fields/SoSFVec3f.h>

class SoMatrixTransform;

/// An axis parallel to x, y or z.
class ORAVANE_API PoCartesianAxis : public PoAxis {
    SO_KIT_HEADER(PoCartesianAxis);

public:
    /// The direction of the axis, and that of its local +y: as it stands for `XY`, `XZ`, `YZ` and `ZX`,
    /// against it for `YX` and `ZY`.
    enum Type : int { XY = 0, XZ = 1, YX = 2, YZ = 3, ZX = 4, ZY = 5 };

    SoSFVec3f start; ///< of the axis, default (0, 0, 0)
    SoSFFloat end;   ///< coordinate of the end along the axis' direction, default 1; may be below the start
    PoSFEnum type;   ///< default XY; what is no type counts as XY

    static void initClass();

protected:
    explicit PoCartesianAxis(void (*catchAction)(void *, SoAction *) = nullptr);
    ~PoCartesianAxis() override = default;

    /// The transform that maps the local frame of an axis of this `type` that starts at `origin`, and the
    /// scales.
    void computeTransfo(const SbVec3f &origin, SoMatrixTransform *placement, float &scaleAlong,
                        float &scalePerpendicular);

    /// The first steps of a rebuild: attributes, transform, and the coordinates of start and end on the local
    /// x axis. False when there is no axis between them; the transform is there all the same, unless a
    /// coordinate is not finite.
    bool startRebuild(Parts &parts, float &from, float &to);

private:
    Type typeInForce() const;
};

#endif
