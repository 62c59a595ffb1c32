#include "meshrep/CellColors.h"

#include <oravane/PbDataMapping.h>

#include <Inventor/fields/SoMFVec3f.h>

#include <algorithm>

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

} // namespace oravane
