#include "axes/AxisPlacement.h"

#include <oravane/PbDomain.h>

#include <cmath>

namespace oravane {

namespace {

/// Where the local x and y axes of an axis type point, as indices of world axes.
struct Orientation {
    int along, across;
    float acrossSign;
};

constexpr Orientation kOrientations[] = {
    {0, 1, 1},  // XY
    {0, 2, 1},  // XZ
    {1, 0, -1}, // YX
    {1, 2, 1},  // YZ
    {2, 0, 1},  // ZX
    {2, 1, -1}, // ZY
};

} // namespace

// Written down rather than multiplied from quarter turns, which would leave rounding in the zeros. Local x
// stays a coordinate along the axis, so nothing moves in that direction; local z completes a right-handed
// frame.
AxisPlacement axisPlacement(int type, const SbVec3f &origin, const PbDomain &domain) {
    const Orientation &place = kOrientations[type];
    const float size[] = {domain.getDeltaX(), domain.getDeltaY(), domain.getDeltaZ()};
    AxisPlacement result{SbMatrix::identity(), place.along, size[place.along], size[place.across]};
    SbVec3f along(0, 0, 0), across(0, 0, 0);
    along[place.along] = 1;
    across[place.across] = place.acrossSign;
    const SbVec3f normal = along.cross(across);
    float stretch = result.scalePerpendicular / result.scaleAlong;
    if (!std::isnormal(stretch)) // sizes that far apart have no proportion to keep
        stretch = 1;
    for (int k = 0; k < 3; ++k) {
        result.matrix[0][k] = along[k];
        result.matrix[1][k] = across[k] * (k == place.across ? stretch : 1);
        result.matrix[2][k] = normal[k];
        result.matrix[3][k] = k == place.along ? 0 : origin[k];
    }
    return result;
}

} // namespace oravane
