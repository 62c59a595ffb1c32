#include <oravane/PoNonLinearValueLegend2.h>

#include "core/ClassTable.h"

SO_KIT_SOURCE(PoNonLinearValueLegend2)

void PoNonLinearValueLegend2::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoNonLinearValueLegend2, PoAutoValueLegend, "PoAutoValueLegend");
}

PoNonLinearValueLegend2::PoNonLinearValueLegend2() {
    SO_KIT_CONSTRUCTOR(PoNonLinearValueLegend2);
    SO_KIT_INIT_INSTANCE();
    setUpConnections(TRUE, TRUE);
}

void PoNonLinearValueLegend2::drawLegend() {
    std::vector<BoxRepresentation> boxes;
    const auto [first, last, period] = shownValues();
    for (int i = first; i <= last; i += period) {
        const float value = m_values[static_cast<std::size_t>(i)];
        boxes.push_back(newBox(value, value, valueString(value)));
    }
    drawValueBoxes(std::move(boxes), 0);
}
