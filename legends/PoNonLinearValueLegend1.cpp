#include <oravane/PoNonLinearValueLegend1.h>

#include "core/ClassTable.h"

SO_KIT_SOURCE(PoNonLinearValueLegend1)

void PoNonLinearValueLegend1::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoNonLinearValueLegend1, PoAutoValueLegend, "PoAutoValueLegend");
}

PoNonLinearValueLegend1::PoNonLinearValueLegend1() {
    SO_KIT_CONSTRUCTOR(PoNonLinearValueLegend1);
    SO_KIT_ADD_FIELD(lessLevelString, ("<"));
    SO_KIT_ADD_FIELD(greaterLevelString, (">"));
    SO_KIT_ADD_FIELD(valueSeparatorString, (" _ "));
    SO_KIT_INIT_INSTANCE();
    watchFields({&lessLevelString, &greaterLevelString, &valueSeparatorString});
    setUpConnections(TRUE, TRUE);
}

void PoNonLinearValueLegend1::drawLegend() {
    drawValueBoxes(hasValues() ? rangeBoxes() : std::vector<BoxRepresentation>(), 1);
}

std::vector<PoValueLegend::BoxRepresentation> PoNonLinearValueLegend1::rangeBoxes() const {
    const auto [first, last, period] = shownValues();
    const float *values = m_values.data();
    const auto count = static_cast<float>(m_values.size());
    const float step = m_values.size() < 2 ? values[0] : (m_values.back() - values[0]) / count;
    std::vector<BoxRepresentation> boxes;
    boxes.push_back(newBox(values[0] - step, values[0], lessLevelString.getValue() + valueString(values[0])));
    for (int inner = 0, i = first; inner < (last - first) / period; ++inner, i += period)
        boxes.push_back(
            newBox(values[i], values[i + 1],
                   valueString(values[i]) + valueSeparatorString.getValue() + valueString(values[i + 1])));
    boxes.push_back(
        newBox(values[last], values[last] + step, greaterLevelString.getValue() + valueString(values[last])));
    return boxes;
}
