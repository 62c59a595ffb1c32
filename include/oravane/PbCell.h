#ifndef ORAVANE_PBCELL_H
#define ORAVANE_PBCELL_H

#include <oravane/PbArrayOfInt.h>
#include <oravane/PbBase.h>

#include <Inventor/SbBox3f.h>
#include <Inventor/SbVec3f.h>

#include <array>
#include <cstdio>
#include <span>

class PbMesh;

/// One element of a mesh: its nodes, its geometry, point location inside of it, and interpolation of node
/// data. A mesh keeps no list of cells: `PbMesh::getCell` fills one reusable object from the arrays of the
/// mesh and returns it, valid until the next `getCell` or search on that mesh. Copy a cell that has to last
/// longer.
///
/// \code
///   SbVec3f pcoord;
///   const PbCell *cell = mesh.findContainingCell(point, 0, pcoord);
///   if (cell) use(cell->getValue(pcoord, mesh.getValuesSet(0)));
/// \endcode
///
/// Nodes, edges and facets of a cell have local numbers, from 0. A planar cell has one facet, itself.
/// Parametric coordinates stand in an `SbVec3f` of which a planar cell uses the first two. A cell that was
/// not filled yet has the index -1 and the node indices -1, and the geometry of the unit cell.
class ORAVANE_API PbCell : public PbBase {
public:
    ~PbCell() override = default;

    /// Length of the longest edge.
    virtual float getLongestEdgeLength() const;
    /// Box around the nodes.
    virtual SbBox3f getBoundingBox() const;
    /// Mean of the nodes.
    virtual SbVec3f getCenter() const;
    /// 0 for a planar cell.
    virtual float getVolume() const = 0;
    /// 0 for a volume cell.
    virtual float getArea() const = 0;

    /// Nodes of an edge or a facet, in order, by their index in the mesh; any other edge or facet number
    /// empties `nodes`.
    virtual void getNodesIndexOfEdge(int edge, PbArrayOfInt &nodes) const;
    virtual void getNodesIndexOfFacet(int facet, PbArrayOfInt &nodes) const;
    /// The same by their local number.
    virtual void getNodesLocalIndexOfEdge(int edge, PbArrayOfInt &nodes) const;
    virtual void getNodesLocalIndexOfFacet(int facet, PbArrayOfInt &nodes) const;

    /// Parametric coordinates of `point`. Returns 1 when each of them lies in [-tolerance, 1 + tolerance], 0
    /// otherwise and for a degenerate cell. Where they can be computed, `pcoord` gets the coordinates of a
    /// point outside as well. A point with NaN is outside.
    virtual int locatePoint(const SbVec3f &point, float tolerance, SbVec3f &pcoord) const = 0;
    /// Weight of each node at `pcoord`, `getNumNodes()` floats (at most `MAX_NODES`), their sum is 1.
    virtual void getWeight(const SbVec3f &pcoord, float *weights) const = 0;

    /// Interpolates at `pcoord`. `vectors` and `values` have one entry per node of the mesh.
    virtual SbVec3f getValue(const SbVec3f &pcoord, const SbVec3f *vectors) const;
    virtual float getValue(const SbVec3f &pcoord, const float *values) const;

    /// Debugging dump.
    virtual void print(FILE *file) const;

    int getIndex() const { return m_index; }
    int getNumNodes() const { return m_topology.numNodes; }
    int getNumEdges() const { return static_cast<int>(m_topology.edges.size()) / 2; }
    int getNumFacets() const { return static_cast<int>(m_topology.facets.size()) / m_topology.numFacetNodes; }
    /// Index in the mesh of a node; -1 for a local number outside of the cell.
    int getNodeIndex(int local) const { return hasNode(local) ? m_nodesIndex[local] : -1; }
    /// (0, 0, 0) for a local number outside of the cell.
    SbVec3f getNodeCoord(int local) const { return hasNode(local) ? m_nodesCoord[local] : SbVec3f(0, 0, 0); }
    /// Indices in the mesh of all nodes, in order.
    void getNodesIndex(PbArrayOfInt &nodes) const;

    /// Sums weights[i] times the entry of node i. Null arguments and nodes of a cell not yet filled give 0.
    float getValue(const float *weights, const float *values) const;
    SbVec3f getValue(const float *weights, const SbVec3f *vectors) const;

    static constexpr int MAX_NODES = 8;

protected:
    /// What is common to all cells of a kind; the spans are tables of static lifetime.
    struct Topology {
        int numNodes;
        std::span<const int> edges;  ///< local numbers, two for each edge
        std::span<const int> facets; ///< local numbers, `numFacetNodes` for each facet
        int numFacetNodes;
    };

    explicit PbCell(const Topology &topology);
    PbCell(const PbCell &source) = default;
    PbCell &operator=(const PbCell &source) = default;

    static bool isParametric(float value, float tolerance) {
        return value >= -tolerance && value <= 1 + tolerance;
    }
    float getEdgeLength(int local0, int local1) const {
        return (m_nodesCoord[local1] - m_nodesCoord[local0]).length();
    }
    float getTriangleArea(int local0, int local1, int local2) const;
    void setNode(int local, int index, const SbVec3f &coord) {
        m_nodesIndex[local] = index;
        m_nodesCoord[local] = coord;
    }

    int m_index = -1;
    std::array<int, MAX_NODES> m_nodesIndex;
    std::array<SbVec3f, MAX_NODES> m_nodesCoord;

private:
    bool hasNode(int local) const { return local >= 0 && local < m_topology.numNodes; }
    std::span<const int> getEdge(int edge) const;
    std::span<const int> getFacet(int facet) const;
    void fillIndices(std::span<const int> locals, PbArrayOfInt &nodes) const;

    Topology m_topology;
};

#endif
