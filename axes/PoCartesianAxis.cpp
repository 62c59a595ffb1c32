#include <oravane/PoCartesianAxis.h>

#include "axes/AxisPlacement.h"
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

void PoCartesianAxis::computeTransfo(const SbVec3f &origin, SoMatrixTransform *placement, float &scaleAlong,
                                     float &scalePerpendicular) {
    const oravane::AxisPlacement place = oravane::axisPlacement(typeInForce(), origin, *getDomain());
    scaleAlong = place.scaleAlong;
    scalePerpendicular = place.scalePerpendicular;
    placement->matrix = place.matrix;
}

bool PoCartesianAxis::startRebuild(Parts &parts, float &from, float &to) {
    const Type orientation = typeInForce();
    saveAxisAttr();
    setDefaultAttr(orientation);
    const SbVec3f origin = start.getValue();
    from = origin[orientation / 2]; // two types to a direction
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
