#include <oravane/PoValueLegend.h>

#include "axes/LinearGraduations.h"
#include "core/ClassTable.h"

#include <oravane/PbIsovaluesList.h>
#include <oravane/PbLinearDataMapping.h>
#include <oravane/PbNonLinearDataMapping2.h>
#include <oravane/PbNumericDisplayFormat.h>
#include <oravane/PoDataMappingElement.h>
#include <oravane/PoIsovaluesListElement.h>
#include <oravane/PoNumericDisplayFormatElement.h>

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

SO_KIT_SOURCE(PoValueLegend)

void PoValueLegend::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoValueLegend, PoLegend, "PoLegend");
}

PoValueLegend::PoValueLegend() {
    SO_KIT_CONSTRUCTOR(PoValueLegend);
    ORAVANE_SHOWN_PART(multFactor, SoGroup, FALSE);
    SO_KIT_ADD_FIELD(upperUndefString, ("UNDEF>"));
    SO_KIT_ADD_FIELD(lowerUndefString, ("UNDEF<"));
    SO_KIT_ADD_FIELD(periodValue, (1));
    SO_KIT_ADD_FIELD(firstValue, (1));
    SO_KIT_ADD_FIELD(lastValue, (32767));
    SO_KIT_INIT_INSTANCE();
    watchFields({&upperUndefString, &lowerUndefString, &periodValue, &firstValue, &lastValue});
    generatedParts({&multFactor});
    setUpConnections(TRUE, TRUE);
}

PoValueLegend::~PoValueLegend() = default;

void PoValueLegend::setFormat(PbNumericDisplayFormat *format) {
    m_format.set(format);
}

const PbNumericDisplayFormat *PoValueLegend::getFormat() const {
    return m_format.inForce();
}

void PoValueLegend::preRebuild() {
    PoLegend::preRebuild();
    addElementCache(PoDataMappingElement::getClassStackIndex());
    addElementCache(PoIsovaluesListElement::getClassStackIndex());
    m_format.addToCache();
    if (!isStateValid())
        rebuildAtNextTraversal();
}

void PoValueLegend::postRebuild() {
    deleteBoxRepresentationList();
    m_mapping = nullptr;
    PoLegend::postRebuild();
}

void PoValueLegend::addElementsAllCaches() {
    PoLegend::addElementsAllCaches();
    PoDataMappingElement::get(getState());
    PoIsovaluesListElement::get(getState());
    m_format.readElement();
}

void PoValueLegend::setDefaultOnNonWritingFields() {
    PoLegend::setDefaultOnNonWritingFields();
    skipGeneratedInFile(multFactorApp, "font");
}

// ----------------------------------------------------------------------------------------------- the values

void PoValueLegend::computeValuesList() {
    m_values.clear();
    m_sourceKind = NOTHING;
    m_hasLowThreshold = m_hasHighThreshold = 0;
    m_mappingType = PbDataMapping::DATA_MAPPING;
    m_mapping = isStateValid() ? PoDataMappingElement::get(getState()) : nullptr;
    const PbIsovaluesList *list = isStateValid() ? PoIsovaluesListElement::get(getState()) : nullptr;
    if (m_mapping) {
        m_mappingType = m_mapping->getClassType();
        m_mapping->thresholdsEnabled(m_hasLowThreshold, m_hasHighThreshold);
        m_mapping->getMinRGBThreshold(m_lowThreshold);
        m_mapping->getMaxRGBThreshold(m_highThreshold);
    }
    int count = 0;
    if (list) {
        float min = 0, max = 0, step = 0;
        int isRegular = 0;
        const float *values = list->getIsoList(count, min, max, step, isRegular);
        m_sourceKind = ISOVALUES;
        takeValues(values, count);
    } else if (m_mappingType == PbDataMapping::LINEAR) {
        m_sourceKind = MAPPING_VALUES;
        takeLinearValues();
    } else if (m_mappingType == PbDataMapping::NON_LINEAR2) {
        m_sourceKind = MAPPING_VALUES;
        const float *values = static_cast<const PbNonLinearDataMapping2 *>(m_mapping)->getValuesList(count);
        takeValues(values, count);
    }
    chooseFormat(m_values);
}

void PoValueLegend::takeValues(const float *values, int count) {
    for (int i = 0; i < count; ++i) {
        const float value = values[i];
        const bool isBeyond =
            (m_hasLowThreshold && value < m_lowThreshold) || (m_hasHighThreshold && value > m_highThreshold);
        if (std::isfinite(value) && !isBeyond && (m_values.empty() || m_values.back() != value))
            m_values.push_back(value);
    }
}

void PoValueLegend::takeLinearValues() {
    float from = 0, to = 0;
    linearRange(from, to);
    const float step = oravane::linearStep(to - from, 0);
    const auto [first, distance, count] = oravane::linearGraduations(false, from, to, step);
    for (int i = 0; i < count; ++i)
        m_values.push_back(static_cast<float>(i) * distance + first);
}

void PoValueLegend::linearRange(float &from, float &to) const {
    SbColor color;
    static_cast<const PbLinearDataMapping *>(m_mapping)->getValues(from, color, to, color);
    if (to < from)
        std::swap(from, to);
    if (m_hasLowThreshold)
        from = std::max(from, m_lowThreshold);
    if (m_hasHighThreshold)
        to = std::min(to, m_highThreshold);
    to = std::max(from, to);
}

PoValueLegend::ShownValues PoValueLegend::shownValues() const {
    const int count = static_cast<int>(m_values.size());
    ShownValues shown{std::max(firstValue.getValue() - 1, 0), std::min(lastValue.getValue() - 1, count - 1),
                      std::max<int>(periodValue.getValue(), 1)};
    if (shown.first > shown.last || shown.last < 0) {
        shown.first = 0;
        shown.last = count - 1;
    }
    return shown;
}

namespace {

/// Whether all ascending values are written exactly to a fiftieth of their distance to the next.
bool tellsApart(const PiNumericFormat &format, std::span<const float> values) {
    const double unit = std::pow(10.0, format.getTenPower());
    double before = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        char text[PiNumericFormat::STRING_SIZE];
        format.getString(values[i], text);
        double written = 0;
        std::from_chars(text, text + std::strlen(text), written);
        const double error = std::abs(written * unit - values[i]);
        const double distance = i > 0 ? static_cast<double>(values[i]) - values[i - 1] : values[i];
        if (std::max(error, before) > std::abs(distance) / 50)
            return false;
        before = i + 1 < values.size() ? error : 0;
    }
    return true;
}

} // namespace

void PoValueLegend::chooseFormat(std::span<const float> values) {
    const PbNumericDisplayFormat *format = getFormat();
    m_numbers = PiNumericFormat();
    m_numbers.setFormat(format, static_cast<int>(values.size()), values.data(), 0);
    PbNumericDisplayFormat::FormatType type{};
    int tenPower = 0, numDecimal = 0;
    format->getFormat(type, tenPower, numDecimal);
    if (type != PbNumericDisplayFormat::AUTO_FORMAT)
        return;
    // The mean distance of irregular values says little about the decimals that they need.
    constexpr int MOST_DECIMALS = 5;
    for (int decimals = 0; decimals <= MOST_DECIMALS; ++decimals) {
        PiNumericFormat shortest;
        if (decimals == 0)
            shortest.setFormatInteger(m_numbers.getTenPower());
        else
            shortest.setFormatFloatingPoint(decimals, m_numbers.getTenPower());
        if (tellsApart(shortest, values)) {
            m_numbers = shortest;
            return;
        }
    }
}

SbString PoValueLegend::valueString(float value) const {
    char text[PiNumericFormat::STRING_SIZE];
    m_numbers.getString(value, text);
    return text;
}

// ------------------------------------------------------------------------------------------------ the boxes

void PoValueLegend::newBoxRepresentationList(int count) {
    m_boxes.assign(static_cast<std::size_t>(std::max(count, 0)), BoxRepresentation());
}

void PoValueLegend::deleteBoxRepresentationList() {
    m_boxes = {};
}

void PoValueLegend::computeUndefBoxRepresentation(int lowIndex, int highIndex) {
    const auto fill = [this](int index, const SbColor *color, float transparency, const SbString &text) {
        BoxRepresentation &shown = m_boxes[static_cast<std::size_t>(index)];
        shown = BoxRepresentation();
        shown.text = text;
        if (!m_mapping)
            return;
        shown.kind = color ? BoxRepresentation::ONE_COLOR : BoxRepresentation::UNDEFINED_COLOR;
        if (color)
            shown.firstColor = shown.secondColor = *color;
        shown.firstTransparency = shown.secondTransparency = transparency;
        shown.hasTransparency = m_mapping->isTransparencyEnabled();
    };
    float value = 0, transparency = 0;
    if (lowIndex >= 0) {
        const SbColor *color = m_mapping ? m_mapping->getMinRGBThreshold(value, transparency) : nullptr;
        fill(lowIndex, color, transparency, lowerUndefString.getValue());
    }
    if (highIndex >= 0) {
        const SbColor *color = m_mapping ? m_mapping->getMaxRGBThreshold(value, transparency) : nullptr;
        fill(highIndex, color, transparency, upperUndefString.getValue());
    }
}

bool PoValueLegend::colorOf(float value, SbColor &color, float &transparency) const {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    if (m_hasLowThreshold && value == m_lowThreshold)
        value = std::nextafter(value, infinity);
    if (m_hasHighThreshold && value == m_highThreshold)
        value = std::nextafter(value, -infinity);
    const SbColor *found = m_mapping->getRGBColor(value, transparency);
    if (found)
        color = *found; // which lives until the next call
    return found != nullptr;
}

/// A table may give its levels the colour above them: a range that ends there shows that below.
float PoValueLegend::endOfRange(const BoxRepresentation &range) const {
    return m_mappingType == PbDataMapping::LINEAR ? range.secondValue
                                                  : std::nextafter(range.secondValue, range.firstValue);
}

void PoValueLegend::computeBoxColors(int index, int range) {
    BoxRepresentation &shown = m_boxes[static_cast<std::size_t>(index)];
    shown.kind = BoxRepresentation::NO_COLOR;
    if (!m_mapping)
        return;
    shown.hasTransparency = m_mapping->isTransparencyEnabled();
    bool isColored = colorOf(shown.firstValue, shown.firstColor, shown.firstTransparency);
    shown.secondColor = shown.firstColor;
    shown.secondTransparency = shown.firstTransparency;
    if (range != 0)
        isColored = colorOf(endOfRange(shown), shown.secondColor, shown.secondTransparency) && isColored;
    shown.kind = !isColored   ? BoxRepresentation::UNDEFINED_COLOR
                 : range == 0 ? BoxRepresentation::ONE_COLOR
                              : BoxRepresentation::TWO_COLORS;
}
