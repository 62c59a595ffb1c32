#include <oravane/PoNonLinearDataMapping.h>

#include "core/ClassTable.h"

SO_NODE_SOURCE(PoNonLinearDataMapping)

void PoNonLinearDataMapping::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_NODE_INIT_CLASS(PoNonLinearDataMapping, PoDataMapping, "PoDataMapping");
}

PoNonLinearDataMapping::PoNonLinearDataMapping() : PoDataMapping(&m_nonLinearDataMapping) {
    SO_NODE_CONSTRUCTOR(PoNonLinearDataMapping);
}

void PoNonLinearDataMapping::setColorFunction(PbNonLinearDataMapping::RGBFunction function) {
    m_colorFunction = function;
    m_nonLinearDataMapping.setRGBFunction(function);
    touch(); // no field tells the scene
}

void PoNonLinearDataMapping::setTransparencyFunction(PbNonLinearDataMapping::TransparencyFunction function) {
    m_transparencyFunction = function;
    m_nonLinearDataMapping.setTransparencyFunction(function);
    touch();
}

void PoNonLinearDataMapping::copyContents(const SoFieldContainer *from, SbBool copyConnections) {
    PoDataMapping::copyContents(from, copyConnections);
    const auto *source = static_cast<const PoNonLinearDataMapping *>(from);
    setColorFunction(source->m_colorFunction);
    setTransparencyFunction(source->m_transparencyFunction);
}
