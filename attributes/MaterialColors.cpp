#include "attributes/MaterialColors.h"

#include <oravane/PbDataMapping.h>

#include <Inventor/nodes/SoMaterial.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace oravane {

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
