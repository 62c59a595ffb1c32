#include "meshrep/CellColors.h"

#include <oravane/PbDataMapping.h>

#include <Inventor/fields/SoMFVec3f.h>
#include <Inventor/nodes/SoMaterial.h>

#include <algorithm>
#include <vector>

namespace oravane {

void clearUndefinedPoints(SoMFVec3f &points) {
    const SbVec3f *first = points.getValues(0), *end = first + points.getNum();
    if (std::all_of(first, end, isFinite))
        return;
    SbVec3f *point = points.startEditing();
    std::replace_if(
        point, point + points.getNum(), [](const SbVec3f &p) { return !isFinite(p); }, SbVec3f(0, 0, 0));
    points.finishEditing();
}

CellValue::CellValue(const PbDataMapping &mapping) {
    if (!mapping.isTransparencyEnabled())
        return;
    int hasMin = 0, hasMax = 0;
    mapping.thresholdsEnabled(hasMin, hasMax);
    m_hasMin = hasMin != 0;
    m_hasMax = hasMax != 0;
    mapping.getMinRGBThreshold(m_min);
    mapping.getMaxRGBThreshold(m_max);
}

float CellValue::ofPolygon(std::span<const int> nodes, const float *values) const {
    double sum = 0;
    const float *threshold = nullptr;
    for (const int node : nodes) {
        const float value = values[node];
        sum += static_cast<double>(value);
        if (m_hasMax && value >= m_max)
            threshold = &m_max;
        else if (m_hasMin && value <= m_min)
            threshold = &m_min;
    }
    // A node without a value takes its cell out, whatever the others say.
    return threshold && !std::isnan(sum) ? *threshold
                                         : static_cast<float>(sum / static_cast<double>(nodes.size()));
}

void colorMaterial(const PbDataMapping &mapping, std::span<const float> values, SoMaterial &material) {
    const int count = static_cast<int>(values.size());
    std::vector<unsigned char> hasColor(values.size());
    std::vector<float> transparencies(mapping.isTransparencyEnabled() ? values.size() : 0);
    material.diffuseColor.setNum(count);
    const std::size_t numColored =
        mapping.computeColors(values.size(), values.data(), material.diffuseColor.startEditing(),
                              transparencies.empty() ? nullptr : transparencies.data(), hasColor.data());
    material.diffuseColor.finishEditing();
    const bool isAllFinite =
        std::all_of(values.begin(), values.end(), [](float value) { return std::isfinite(value); });
    const float limit = mapping.getTransparencyValueDeletedParts();
    const float deleted = std::isfinite(limit) ? std::max(limit, 1.0f) : 1.0f;
    // Functions of the program may give anything, of which a renderer would make other colours.
    for (float &transparency : transparencies)
        if (!(transparency >= limit))
            transparency = transparency > 0 ? std::min(transparency, 1.0f) : 0.0f;
    if (numColored < values.size() || !isAllFinite) {
        transparencies.resize(values.size(), 0.0f);
        for (std::size_t i = 0; i < values.size(); ++i)
            if (!hasColor[i] || !std::isfinite(values[i]))
                transparencies[i] = deleted;
    }
    if (!transparencies.empty())
        material.transparency.setValues(0, count, transparencies.data());
}

} // namespace oravane
