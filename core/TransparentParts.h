#ifndef ORAVANE_CORE_TRANSPARENTPARTS_H
#define ORAVANE_CORE_TRANSPARENTPARTS_H

#include <cstdint>
#include <span>
#include <vector>

namespace oravane {

/// Which entries of a material are so transparent that what they colour is deleted.
class DeletedMaterials {
public:
    DeletedMaterials(std::span<const float> transparencies, float limit)
        : m_transparencies(transparencies), m_limit(limit) {}

    /// An index that the material does not have is kept.
    bool contains(std::int64_t index) const {
        return index >= 0 && index < static_cast<std::int64_t>(m_transparencies.size()) &&
               m_transparencies[static_cast<std::size_t>(index)] >= m_limit;
    }

private:
    std::span<const float> m_transparencies;
    float m_limit;
};

/// Indices of a shape: point numbers with a -1 behind each part, and material numbers.
struct ShapeIndices {
    std::vector<std::int32_t> coords;
    std::vector<std::int32_t> materials;
};

/// Cells of a grid of nx by ny nodes, node (i, j) being number i * ny + j, as strips of four points.
/// A cell stays when its material, number i * (ny - 1) + j, is kept; the strips' materials are those numbers.
ShapeIndices keepGridCells(int nx, int ny, const DeletedMaterials &deleted);

/// The same with one material for each node: a cell with four kept corners stays as a strip, one with three
/// as the triangle of these. Materials go with the points, so none are given.
ShapeIndices keepGridCorners(int nx, int ny, const DeletedMaterials &deleted);

/// Parts (faces) of `coords` whose material is kept; `materials` gives the material of each part, or is empty
/// when part k has material k. The result has one material for each part.
ShapeIndices keepParts(std::span<const std::int32_t> coords, std::span<const std::int32_t> materials,
                       const DeletedMaterials &deleted);

/// Splits each part at every point whose material is deleted; runs of at least `minPoints` points stay as
/// parts of their own. `materials` runs parallel to `coords`. The result's materials run parallel to its
/// coords.
ShapeIndices splitAtDeletedPoints(std::span<const std::int32_t> coords,
                                  std::span<const std::int32_t> materials, int minPoints,
                                  const DeletedMaterials &deleted);

/// Splits polylines at every segment whose material is deleted; runs of two or more segments stay as lines of
/// their own. `materials` gives the material of each segment in order, or is empty when segment k has
/// material k. The result has one material for each segment.
ShapeIndices splitAtDeletedSegments(std::span<const std::int32_t> coords,
                                    std::span<const std::int32_t> materials, const DeletedMaterials &deleted);

} // namespace oravane

#endif
