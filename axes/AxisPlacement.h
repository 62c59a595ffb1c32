#ifndef ORAVANE_AXES_AXISPLACEMENT_H
#define ORAVANE_AXES_AXISPLACEMENT_H

#include <Inventor/SbMatrix.h>
#include <Inventor/SbVec3f.h>

class PbDomain;

namespace oravane {

/// How the local frame of an axis lies in the world.
struct AxisPlacement {
    SbMatrix matrix;              ///< from local to world coordinates
    int along = 0;                ///< index of the world axis that local x runs along
    float scaleAlong = 1;         ///< extent of the domain in that direction
    float scalePerpendicular = 1; ///< and in that of local y
};

/// That of an axis of a `PoCartesianAxis::Type` that starts at `origin`, whose coordinate along the axis
/// plays no part.
AxisPlacement axisPlacement(int type, const SbVec3f &origin, const PbDomain &domain);

} // namespace oravane

#endif
