#include <oravane/PoDataMapping.h>

#include "core/ClassTable.h"

#include <oravane/PoDataMappingElement.h>

#include <Inventor/actions/SoAction.h>

SO_NODE_ABSTRACT_SOURCE(PoDataMapping)

void PoDataMapping::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_NODE_INIT_ABSTRACT_CLASS(PoDataMapping, PoNode, "PoNode");
}

PoDataMapping::PoDataMapping(PbDataMapping *dataMapping) : m_dataMapping(dataMapping) {
    SO_NODE_CONSTRUCTOR(PoDataMapping);
    SO_NODE_ADD_FIELD(minThresholdEnabled, (FALSE));
    SO_NODE_ADD_FIELD(minThreshold, (0));
    SO_NODE_ADD_FIELD(minThresholdColor, (0, 0, 0));
    SO_NODE_ADD_FIELD(minThresholdTransparency, (0));
    SO_NODE_ADD_FIELD(maxThresholdEnabled, (FALSE));
    SO_NODE_ADD_FIELD(maxThreshold, (1));
    SO_NODE_ADD_FIELD(maxThresholdColor, (0, 0, 0));
    SO_NODE_ADD_FIELD(maxThresholdTransparency, (0));
    SO_NODE_ADD_FIELD(transparencyEnabled, (FALSE));
    SO_NODE_ADD_FIELD(transparencyValueDeletedParts, (0.95f));
    m_minThresholdWatch.watch(
        {&minThresholdEnabled, &minThreshold, &minThresholdColor, &minThresholdTransparency});
    m_maxThresholdWatch.watch(
        {&maxThresholdEnabled, &maxThreshold, &maxThresholdColor, &maxThresholdTransparency});
    m_transparencyWatch.watch({&transparencyEnabled, &transparencyValueDeletedParts});
}

void PoDataMapping::updateDataMapping() {
    if (m_minThresholdWatch.takeChanged()) {
        m_dataMapping->setMinThreshold(minThreshold.getValue(), minThresholdColor.getValue(),
                                       minThresholdTransparency.getValue());
        m_dataMapping->enableThresholds(minThresholdEnabled.getValue(), maxThresholdEnabled.getValue());
    }
    if (m_maxThresholdWatch.takeChanged()) {
        m_dataMapping->setMaxThreshold(maxThreshold.getValue(), maxThresholdColor.getValue(),
                                       maxThresholdTransparency.getValue());
        m_dataMapping->enableThresholds(minThresholdEnabled.getValue(), maxThresholdEnabled.getValue());
    }
    if (m_transparencyWatch.takeChanged()) {
        m_dataMapping->enableTransparency(transparencyEnabled.getValue());
        m_dataMapping->setTransparencyValueDeletedParts(transparencyValueDeletedParts.getValue());
    }
}

const SbColor *PoDataMapping::getColor(float value, float &transparency) {
    updateDataMapping();
    return m_dataMapping->getRGBColor(value, transparency);
}

const SbColor *PoDataMapping::getColor(float value) {
    updateDataMapping();
    return m_dataMapping->getRGBColor(value);
}

void PoDataMapping::doAction(SoAction *action) {
    updateDataMapping();
    PoDataMappingElement::set(action->getState(), this, m_dataMapping);
}
