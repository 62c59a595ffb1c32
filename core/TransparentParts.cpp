#include "core/TransparentParts.h"

#include <algorithm>
#include <array>

namespace oravane {

namespace {

void endPart(ShapeIndices &shape, bool withMaterial) {
    shape.coords.push_back(-1);
    if (withMaterial)
        shape.materials.push_back(-1);
}

std::int32_t materialOf(std::span<const std::int32_t> materials, std::size_t number) {
    return number < materials.size() ? materials[number] : static_cast<std::int32_t>(number);
}

} // namespace

ShapeIndices keepGridCells(int nx, int ny, const DeletedMaterials &deleted) {
    ShapeIndices kept;
    for (std::int32_t i = 0; i + 1 < nx; ++i) {
        for (std::int32_t j = 0; j + 1 < ny; ++j) {
            const std::int32_t cell = i * (ny - 1) + j;
            if (deleted.contains(cell))
                continue;
            const std::int32_t node = i * ny + j;
            kept.coords.insert(kept.coords.end(), {node, node + ny, node + 1, node + ny + 1, -1});
            kept.materials.push_back(cell);
        }
    }
    return kept;
}

ShapeIndices keepGridCorners(int nx, int ny, const DeletedMaterials &deleted) {
    ShapeIndices kept;
    for (std::int32_t i = 0; i + 1 < nx; ++i) {
        for (std::int32_t j = 0; j + 1 < ny; ++j) {
            const std::int32_t node = i * ny + j;
            const std::array<std::int32_t, 4> ring{node, node + ny, node + ny + 1, node + 1};
            std::array<std::int32_t, 4> corners{};
            const auto end = std::copy_if(ring.begin(), ring.end(), corners.begin(),
                                          [&](std::int32_t corner) { return !deleted.contains(corner); });
            if (end - corners.begin() < 3)
                continue;
            if (end == corners.end())
                std::swap(corners[2], corners[3]); // a strip zigzags where the ring goes round
            kept.coords.insert(kept.coords.end(), corners.begin(), end);
            endPart(kept, false);
        }
    }
    return kept;
}

ShapeIndices keepParts(std::span<const std::int32_t> coords, std::span<const std::int32_t> materials,
                       const DeletedMaterials &deleted) {
    ShapeIndices kept;
    std::size_t part = 0;
    for (auto begin = coords.begin(); begin != coords.end(); ++part) {
        const auto end = std::find_if(begin, coords.end(), [](std::int32_t index) { return index < 0; });
        const std::int32_t material = materialOf(materials, part);
        if (end != begin && !deleted.contains(material)) {
            kept.coords.insert(kept.coords.end(), begin, end);
            endPart(kept, false);
            kept.materials.push_back(material);
        }
        begin = end == coords.end() ? end : end + 1;
    }
    return kept;
}

ShapeIndices splitAtDeletedPoints(std::span<const std::int32_t> coords,
                                  std::span<const std::int32_t> materials, int minPoints,
                                  const DeletedMaterials &deleted) {
    ShapeIndices kept;
    std::size_t start = 0; // of the run of kept points that ends at i
    for (std::size_t i = 0; i <= coords.size(); ++i) {
        const bool isEnd = i == coords.size() || coords[i] < 0;
        if (!isEnd && !deleted.contains(materialOf(materials, i)))
            continue;
        if (i - start >= static_cast<std::size_t>(minPoints)) {
            for (std::size_t k = start; k < i; ++k) {
                kept.coords.push_back(coords[k]);
                kept.materials.push_back(materialOf(materials, k));
            }
            endPart(kept, true);
        }
        start = i + 1;
    }
    return kept;
}

ShapeIndices splitAtDeletedSegments(std::span<const std::int32_t> coords,
                                    std::span<const std::int32_t> materials,
                                    const DeletedMaterials &deleted) {
    ShapeIndices kept;
    std::size_t segment = 0;      // number of the segment from i to i + 1
    std::size_t start = 0;        // first point of the run
    std::size_t startSegment = 0; // and its first segment
    for (std::size_t i = 0; i < coords.size(); ++i) {
        const bool isLinePoint = coords[i] >= 0;
        const bool hasSegment = isLinePoint && i + 1 < coords.size() && coords[i + 1] >= 0;
        const bool isKept = hasSegment && !deleted.contains(materialOf(materials, segment));
        if (!isKept) { // the run ends with this point
            if (isLinePoint && segment - startSegment >= 2) {
                kept.coords.insert(kept.coords.end(), coords.begin() + static_cast<std::ptrdiff_t>(start),
                                   coords.begin() + static_cast<std::ptrdiff_t>(i) + 1);
                endPart(kept, false);
                for (std::size_t s = startSegment; s < segment; ++s)
                    kept.materials.push_back(materialOf(materials, s));
            }
            start = i + 1;
            startSegment = segment + (hasSegment ? 1 : 0);
        }
        if (hasSegment)
            ++segment;
    }
    return kept;
}

} // namespace oravane
