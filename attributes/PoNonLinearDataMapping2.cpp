#include <oravane/PoNonLinearDataMapping2.h>

#include "core/ClassTable.h"

#include <oravane/PoDebugError.h>

SO_NODE_SOURCE(PoNonLinearDataMapping2)

void PoNonLinearDataMapping2::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_NODE_INIT_CLASS(PoNonLinearDataMapping2, PoDataMapping, "PoDataMapping");
}

PoNonLinearDataMapping2::PoNonLinearDataMapping2() : PoDataMapping(&m_nonLinearDataMapping2) {
    SO_NODE_CONSTRUCTOR(PoNonLinearDataMapping2);
    SO_NODE_ADD_FIELD(type, (LINEAR_PER_LEVEL));
    SO_NODE_ADD_FIELD(value, (0));
    SO_NODE_ADD_FIELD(color, (0, 0, 0));
    SO_NODE_ADD_FIELD(transparency, (0));
    SO_NODE_DEFINE_ENUM_VALUE(Type, NON_LINEAR_PER_LEVEL);
    SO_NODE_DEFINE_ENUM_VALUE(Type, LINEAR_PER_LEVEL);
    SO_NODE_SET_SF_ENUM_TYPE(type, Type);
    m_tableWatch.watch({&type, &value, &color, &transparency});
}

void PoNonLinearDataMapping2::updateDataMapping() {
    PoDataMapping::updateDataMapping();
    if (!m_tableWatch.takeChanged())
        return;
    const int numValues = value.getNum(), numColors = color.getNum();
    if (type.getValue() == NON_LINEAR_PER_LEVEL && numColors < numValues + 1) {
        PoDebugError::post("PoNonLinearDataMapping2",
                           "The number of colours must be >= to number of values + 1");
        return;
    }
    if (numValues > numColors)
        return;
    const auto tableType = static_cast<PbNonLinearDataMapping2::Type>(type.getValue());
    if (transparency.getNum() == numColors)
        m_nonLinearDataMapping2.setValues(tableType, numValues, value.getValues(0), color.getValues(0),
                                          transparency.getValues(0));
    else
        m_nonLinearDataMapping2.setValues(tableType, numValues, value.getValues(0), color.getValues(0));
}
