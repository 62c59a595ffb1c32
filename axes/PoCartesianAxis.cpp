#include <oravane/PoCartesianAxis.h>

#include "core/ClassTable.h"

#include <Inventor/nodes/SoMatrixTransform.h>

#include <cmath>

SO_KIT_SOURCE(PoCartesianAxis)

void PoCartesianAxis::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoCartesianAxis, PoAxis, "PoAxis");
}

PoCartesianAxis::PoCartesianAxis(void (*catchAction)(void *, SoAction *)) : PoAxis(catchAction) {
    SO_KIT_CONSTRUCTOR(PoCartesianAxis);
    SO_KIT_ADD_FIELD(start, (0, 0, 0));
    SO_KIT_ADD_FIELD(end, (1));
    SO_KIT_ADD_FIELD(type, (XY));
    SO_KIT_DEFINE_ENUM_VALUE(Type, XY);
    SO_KIT_DEFINE_ENUM_VALUE(Type, XZ);
    SO_KIT_DEFINE_ENUM_VALUE(Type, YX);
    SO_KIT_DEFINE_ENUM_VALUE(Type, YZ);
    SO_KIT_DEFINE_ENUM_VALUE(Type, ZX);
    SO_KIT_DEFINE_ENUM_VALUE(Type, ZY);
    SO_KIT_SET_SF_ENUM_TYPE(type, Type);
    SO_KIT_INIT_INSTANCE();
    watchFields({&start, &end, &type});
    setUpConnections(TRUE, TRUE);
}

PoCartesianAxis::Type PoCartesianAxis::typeInForce() const {
    const int value = type.getValue();
    return value >= XY && value <= ZY ? static_cast<Type>(value) : XY;
}

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
void PoCartesianAxis::computeTransfo(const SbVec3f &origin, SoMatrixTransform *placement, float &scaleAlong,
                                     float &scalePerpendicular) {
    const Orientation &place = kOrientations[typeInForce()];
    const PbDomain &domain = *getDomain();
    const float size[] = {domain.getDeltaX(), domain.getDeltaY(), domain.getDeltaZ()};
    scaleAlong = size[place.along];
    scalePerpendicular = size[place.across];
    SbVec3f along(0, 0, 0), across(0, 0, 0);
    along[place.along] = 1;
    across[place.across] = place.acrossSign;
    const SbVec3f normal = along.cross(across);
    SbMatrix matrix = SbMatrix::identity();
    for (int k = 0; k < 3; ++k) {
        matrix[0][k] = along[k];
        matrix[1][k] = across[k] * (k == place.across ? scalePerpendicular / scaleAlong : 1);
        matrix[2][k] = normal[k];
        matrix[3][k] = k == place.along ? 0 : origin[k];
    }
    placement->matrix = matrix;
}

bool PoCartesianAxis::startRebuild(Parts &parts, float &from, float &to) {
    const Type orientation = typeInForce();
    saveAxisAttr();
    setDefaultAttr(orientation);
    const SbVec3f origin = start.getValue();
    from = origin[kOrientations[orientation].along];
    to = end.getValue();
    m_mainCoords.clear();
    m_subCoords.clear();
    if (!std::isfinite(origin[0] + origin[1] + origin[2]))
        return false;
    auto *placement = new SoMatrixTransform;
    computeTransfo(origin, placement, m_attr.scaleAlong, m_attr.scalePerpendicular);
    parts.transform = placement;
    return from != to && std::isfinite(to - from);
}
