#include <oravane/PbNonLinearDataMapping2.h>

#include "attributes/ColorEach.h"
#include "attributes/SelectionOrder.h"
#include "attributes/SortedSearch.h"

#include <oravane/PiColorConverter.h>

#include <algorithm>
#include <cmath>

PbNonLinearDataMapping2::PbNonLinearDataMapping2()
    : m_table{LINEAR_PER_LEVEL,
              {0.0f, 1.0f},
              {SbColor(0.0f, 0.0f, 0.0f), SbColor(1.0f, 1.0f, 1.0f)},
              {0.0f, 0.0f}} {}

void PbNonLinearDataMapping2::setValues(Type type, int count, const float *values, const SbColor *colors) {
    setTable(type, count, values, colors, nullptr);
}

void PbNonLinearDataMapping2::setValues(Type type, int count, const float *values, const SbColor *colors,
                                        const float *transparencies) {
    if (transparencies)
        setTable(type, count, values, colors, transparencies);
}

void PbNonLinearDataMapping2::setValues(Type type, int count, const float *values, const float (*hls)[3]) {
    setTable(type, count, values, hls, nullptr);
}

void PbNonLinearDataMapping2::setValues(Type type, int count, const float *values, const float (*hls)[3],
                                        const float *transparencies) {
    if (transparencies)
        setTable(type, count, values, hls, transparencies);
}

void PbNonLinearDataMapping2::setTable(Type type, int count, const float *values, const float (*hls)[3],
                                       const float *transparencies) {
    if (count < 1 || !hls)
        return;
    std::vector<SbColor> colors;
    const std::size_t numColors = std::size_t(count) + (type == NON_LINEAR_PER_LEVEL ? 1 : 0);
    for (std::size_t i = 0; i < numColors; ++i)
        colors.push_back(PiColorConverter::toRGB(hls[i]));
    setTable(type, count, values, colors.data(), transparencies);
}

void PbNonLinearDataMapping2::setTable(Type type, int count, const float *values, const SbColor *colors,
                                       const float *transparencies) {
    if ((type != NON_LINEAR_PER_LEVEL && type != LINEAR_PER_LEVEL) || count < 1 || !values || !colors ||
        std::any_of(values, values + count, [](float value) { return std::isnan(value); }))
        return;
    const std::size_t numColors = std::size_t(count) + (type == NON_LINEAR_PER_LEVEL ? 1 : 0);
    // Filled before the notification, since the arrays may be those of this very mapping.
    Table table{type, {}, {}, std::vector<float>(numColors, 0.0f)};
    std::vector<int> order = oravane::selectionOrder({values, std::size_t(count)});
    for (int i : order)
        table.values.push_back(values[i]);
    order.resize(numColors, count);
    for (std::size_t i = 0; i < numColors; ++i) {
        table.colors.push_back(colors[order[i]]);
        if (transparencies)
            table.transparencies[i] = transparencies[order[i]];
    }
    m_table = {type, std::vector<float>(count, 0.0f),
               std::vector<SbColor>(numColors, SbColor(0.0f, 0.0f, 0.0f)),
               std::vector<float>(numColors, 0.0f)};
    if (notifyChange(CHANGE_GENERAL))
        m_table = std::move(table);
}

const float *PbNonLinearDataMapping2::getValuesList(int &count) const {
    count = static_cast<int>(m_table.values.size());
    return m_table.values.data();
}

const float (*PbNonLinearDataMapping2::getHLSColorsList(int &count) const)[3] {
    count = static_cast<int>(m_table.colors.size());
    m_hlsColors.reset(new float[m_table.colors.size()][3]);
    for (int i = 0; i < count; ++i)
        PiColorConverter::toHLS(m_table.colors[i], m_hlsColors[i]);
    return m_hlsColors.get();
}

const SbColor *PbNonLinearDataMapping2::interpolatedColor(float value, float &transparency) const {
    const auto &[type, values, colors, transparencies] = m_table;
    const int last = static_cast<int>(values.size()) - 1;
    if (last == 0) {
        transparency = transparencies[0];
        m_color = colors[0];
        return &m_color;
    }
    int upper = last;
    if (!(value >= values[last])) // not-a-number goes to the first interval
        upper = std::max(static_cast<int>(oravane::firstNotBelow(values, value)), 1);
    const int lower = upper - 1;
    colorInterpolation(colors[lower], values[lower], transparencies[lower], colors[upper], values[upper],
                       transparencies[upper], value, m_color, transparency);
    return &m_color;
}

const SbColor *PbNonLinearDataMapping2::computeColor(float value, float &transparency) const {
    const SbColor *color = nullptr;
    if (isBeyondThreshold(value, color, transparency))
        return color;
    if (m_table.type == LINEAR_PER_LEVEL)
        return interpolatedColor(value, transparency);
    const std::size_t level = oravane::firstAbove(m_table.values, value);
    transparency = m_table.transparencies[level];
    return &m_table.colors[level];
}

const SbColor *PbNonLinearDataMapping2::computeColor(float value) const {
    float transparency;
    return PbNonLinearDataMapping2::computeColor(value, transparency);
}

std::size_t PbNonLinearDataMapping2::computeColorsOf(std::size_t count, const float *values, SbColor *colors,
                                                     float *transparencies, unsigned char *hasColor) const {
    return colorEach(count, values, colors, transparencies, hasColor,
                     [this](float value, float &transparency) {
                         return PbNonLinearDataMapping2::computeColor(value, transparency);
                     });
}
