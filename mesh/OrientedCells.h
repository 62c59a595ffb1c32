#ifndef ORAVANE_MESH_ORIENTEDCELLS_H
#define ORAVANE_MESH_ORIENTEDCELLS_H

#include <oravane/PbFixedCellMesh2D.h>

#include <algorithm>
#include <concepts>

namespace oravane {

/// A mesh whose nodes stand in rows.
template <class Mesh>
concept StructuredMesh = requires(const Mesh &mesh, int &n) {
    mesh.getDim(n, n);
};

/// The cells of an indexed mesh as representations draw them: cells that have a flag of orientation other
/// than 1 are reversed. The reversal of triangle and quadrangle meshes keeps the first node in front, that of
/// mixed meshes goes from last to first.
class OrientedCells {
public:
    explicit OrientedCells(const PbIndexedMesh2D &mesh) : m_mesh(mesh), m_keepsFirst(false) {}
    explicit OrientedCells(const PbFixedCellMesh2D &mesh) : m_mesh(mesh), m_keepsFirst(true) {}

    /// Calls `visit(cell, nodes)` for every cell whose nodes all exist; `nodes` is valid during the call.
    template <class Visit>
    void forEach(Visit visit) const {
        const int *flags = m_mesh.getOrientFlags();
        std::vector<int> reversed;
        forEachAsGiven([&](int cell, std::span<const int> nodes) {
            if (flags && flags[cell] != 1) {
                reversed.assign(nodes.begin(), nodes.end());
                std::reverse(reversed.begin() + m_keepsFirst, reversed.end());
                nodes = reversed;
            }
            visit(cell, nodes);
        });
    }

    /// The same with the nodes in the order in which they were given.
    template <class Visit>
    void forEachAsGiven(Visit visit) const {
        for (int cell = 0; cell < m_mesh.getNumCells(); ++cell) {
            const std::span<const int> nodes = m_mesh.getCellNodes(cell);
            if (!nodes.empty() && exist(nodes))
                visit(cell, nodes);
        }
    }

    const PbIndexedMesh2D &mesh() const { return m_mesh; }

private:
    bool exist(std::span<const int> nodes) const {
        const int count = m_mesh.getNumNodes();
        return std::all_of(nodes.begin(), nodes.end(),
                           [count](int node) { return node >= 0 && node < count; });
    }

    const PbIndexedMesh2D &m_mesh;
    bool m_keepsFirst;
};

} // namespace oravane

#endif
