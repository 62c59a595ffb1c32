#include <oravane/PoDateFormatMapping.h>

#include "core/ClassTable.h"

#include <oravane/PoDateFormatMappingElement.h>

#include <Inventor/actions/SoAction.h>

SO_NODE_SOURCE(PoDateFormatMapping)

void PoDateFormatMapping::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_NODE_INIT_CLASS(PoDateFormatMapping, PoNode, "PoNode");
}

PoDateFormatMapping::PoDateFormatMapping() {
    SO_NODE_CONSTRUCTOR(PoDateFormatMapping);
    SO_NODE_ADD_FIELD(date1, ("1-01-70"));
    SO_NODE_ADD_FIELD(date2, ("2-01-70"));
    SO_NODE_ADD_FIELD(coord1, (0));
    SO_NODE_ADD_FIELD(coord2, (1));
    SO_NODE_ADD_FIELD(format, ("dmy"));
    m_formatWatch.watch({&format});
    m_dateCoordWatch.watch({&date1, &date2, &coord1, &coord2});
}

void PoDateFormatMapping::updateDateFormatMapping() {
    if (m_formatWatch.takeChanged())
        m_mapping.setFormat(format.getValue().getString());
    if (m_dateCoordWatch.takeChanged())
        m_mapping.setDateMapping(date1.getValue().getString(), date2.getValue().getString(),
                                 coord1.getValue(), coord2.getValue());
}

int PoDateFormatMapping::getCoordinate(const char *date, float &coordinate) {
    updateDateFormatMapping();
    return m_mapping.getCoordinate(date, coordinate);
}

void PoDateFormatMapping::doAction(SoAction *action) {
    updateDateFormatMapping();
    PoDateFormatMappingElement::set(action->getState(), this, &m_mapping);
}
