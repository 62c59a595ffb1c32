#include <oravane/PoNonLinearValueLegend3.h>

#include "core/ClassTable.h"

SO_KIT_SOURCE(PoNonLinearValueLegend3)

void PoNonLinearValueLegend3::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoNonLinearValueLegend3, PoAutoValueLegend, "PoAutoValueLegend");
}

PoNonLinearValueLegend3::PoNonLinearValueLegend3() {
    SO_KIT_CONSTRUCTOR(PoNonLinearValueLegend3);
    SO_KIT_ADD_FIELD(maxValueSize, (0.6f));
    SO_KIT_INIT_INSTANCE();
    watchFields({&maxValueSize});
    setUpConnections(TRUE, TRUE);
}

void PoNonLinearValueLegend3::drawLegend() {
    m_maxValueSize = maxValueSize.getValue();
    drawOneBoxLegend(DISTRIB_ALL, 0);
}
