#include <oravane/PoLinearDataMapping.h>

#include "core/ClassTable.h"

SO_NODE_SOURCE(PoLinearDataMapping)

void PoLinearDataMapping::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_NODE_INIT_CLASS(PoLinearDataMapping, PoDataMapping, "PoDataMapping");
}

PoLinearDataMapping::PoLinearDataMapping() : PoDataMapping(&m_linearDataMapping) {
    SO_NODE_CONSTRUCTOR(PoLinearDataMapping);
    SO_NODE_ADD_FIELD(value1, (0));
    SO_NODE_ADD_FIELD(color1, (0, 0, 0));
    SO_NODE_ADD_FIELD(transparency1, (0));
    SO_NODE_ADD_FIELD(value2, (1));
    SO_NODE_ADD_FIELD(color2, (1, 1, 1));
    SO_NODE_ADD_FIELD(transparency2, (0));
    m_valuesWatch.watch({&value1, &color1, &transparency1, &value2, &color2, &transparency2});
}

void PoLinearDataMapping::updateDataMapping() {
    PoDataMapping::updateDataMapping();
    if (m_valuesWatch.takeChanged())
        m_linearDataMapping.setValues(value1.getValue(), color1.getValue(), transparency1.getValue(),
                                      value2.getValue(), color2.getValue(), transparency2.getValue());
}
