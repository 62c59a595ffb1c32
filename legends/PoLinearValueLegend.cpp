#include <oravane/PoLinearValueLegend.h>

#include "core/ClassTable.h"

SO_KIT_SOURCE(PoLinearValueLegend)

void PoLinearValueLegend::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoLinearValueLegend, PoAutoValueLegend, "PoAutoValueLegend");
}

PoLinearValueLegend::PoLinearValueLegend() {
    SO_KIT_CONSTRUCTOR(PoLinearValueLegend);
    SO_KIT_ADD_FIELD(valueDistribution, (ALL_VALUES));
    SO_KIT_ADD_FIELD(maxValueSize, (0.6f));
    SO_KIT_DEFINE_ENUM_VALUE(ValueDistribution, ALL_VALUES);
    SO_KIT_DEFINE_ENUM_VALUE(ValueDistribution, LINEAR_VALUES);
    SO_KIT_DEFINE_ENUM_VALUE(ValueDistribution, MIN_MAX_VALUES);
    SO_KIT_SET_SF_ENUM_TYPE(valueDistribution, ValueDistribution);
    SO_KIT_INIT_INSTANCE();
    watchFields({&valueDistribution, &maxValueSize});
    setUpConnections(TRUE, TRUE);
}

void PoLinearValueLegend::drawLegend() {
    m_maxValueSize = maxValueSize.getValue();
    switch (valueDistribution.getValue()) {
    case LINEAR_VALUES:
        drawOneBoxLegend(DISTRIB_LINEAR, 1);
        break;
    case MIN_MAX_VALUES:
        drawOneBoxLegend(DISTRIB_MIN_MAX, 1);
        break;
    default:
        drawOneBoxLegend(DISTRIB_ALL, 1);
        break;
    }
}
