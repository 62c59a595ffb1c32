#include <oravane/PbCell.h>

#include <algorithm>

PbCell::PbCell(const Topology &topology) : m_topology(topology) {
    m_nodesIndex.fill(-1);
    m_nodesCoord.fill(SbVec3f(0, 0, 0));
}

float PbCell::getLongestEdgeLength() const {
    float longest = 0;
    for (int edge = 0; edge < getNumEdges(); ++edge) {
        const std::span<const int> nodes = getEdge(edge);
        longest = std::max(longest, getEdgeLength(nodes[0], nodes[1]));
    }
    return longest;
}

SbBox3f PbCell::getBoundingBox() const {
    SbBox3f box;
    for (int i = 0; i < getNumNodes(); ++i)
        box.extendBy(m_nodesCoord[i]);
    return box;
}

SbVec3f PbCell::getCenter() const {
    SbVec3f sum(0, 0, 0);
    for (int i = 0; i < getNumNodes(); ++i)
        sum += m_nodesCoord[i];
    return sum / static_cast<float>(getNumNodes());
}

float PbCell::getTriangleArea(int local0, int local1, int local2) const {
    const SbVec3f &origin = m_nodesCoord[local0];
    return (m_nodesCoord[local1] - origin).cross(m_nodesCoord[local2] - origin).length() / 2;
}

std::span<const int> PbCell::getEdge(int edge) const {
    return edge < 0 || edge >= getNumEdges() ? std::span<const int>{} : m_topology.edges.subspan(edge * 2, 2);
}

std::span<const int> PbCell::getFacet(int facet) const {
    const int num = m_topology.numFacetNodes;
    return facet < 0 || facet >= getNumFacets() ? std::span<const int>{}
                                                : m_topology.facets.subspan(facet * num, num);
}

void PbCell::fillIndices(std::span<const int> locals, PbArrayOfInt &nodes) const {
    nodes.empty();
    for (const int local : locals)
        nodes.add(m_nodesIndex[local]);
}

void PbCell::getNodesIndexOfEdge(int edge, PbArrayOfInt &nodes) const {
    fillIndices(getEdge(edge), nodes);
}

void PbCell::getNodesIndexOfFacet(int facet, PbArrayOfInt &nodes) const {
    fillIndices(getFacet(facet), nodes);
}

void PbCell::getNodesLocalIndexOfEdge(int edge, PbArrayOfInt &nodes) const {
    const std::span<const int> locals = getEdge(edge);
    nodes.empty();
    nodes.add(static_cast<int>(locals.size()), locals.data());
}

void PbCell::getNodesLocalIndexOfFacet(int facet, PbArrayOfInt &nodes) const {
    const std::span<const int> locals = getFacet(facet);
    nodes.empty();
    nodes.add(static_cast<int>(locals.size()), locals.data());
}

void PbCell::getNodesIndex(PbArrayOfInt &nodes) const {
    nodes.empty();
    nodes.add(getNumNodes(), m_nodesIndex.data());
}

namespace {

template <class T>
T weightedSum(std::span<const int> nodes, const float *weights, const T *entries, T sum) {
    if (!weights || !entries)
        return sum;
    for (std::size_t i = 0; i < nodes.size(); ++i)
        if (nodes[i] >= 0)
            sum += weights[i] * entries[nodes[i]];
    return sum;
}

} // namespace

float PbCell::getValue(const float *weights, const float *values) const {
    return weightedSum({m_nodesIndex.data(), static_cast<std::size_t>(getNumNodes())}, weights, values, 0.0f);
}

SbVec3f PbCell::getValue(const float *weights, const SbVec3f *vectors) const {
    return weightedSum({m_nodesIndex.data(), static_cast<std::size_t>(getNumNodes())}, weights, vectors,
                       SbVec3f(0, 0, 0));
}

float PbCell::getValue(const SbVec3f &pcoord, const float *values) const {
    float weights[MAX_NODES];
    getWeight(pcoord, weights);
    return getValue(weights, values);
}

SbVec3f PbCell::getValue(const SbVec3f &pcoord, const SbVec3f *vectors) const {
    float weights[MAX_NODES];
    getWeight(pcoord, weights);
    return getValue(weights, vectors);
}

void PbCell::print(FILE *file) const {
    if (!file)
        return;
    std::fprintf(file, "cell %d: %d nodes, %d edges, %d facets\n", m_index, getNumNodes(), getNumEdges(),
                 getNumFacets());
    for (int i = 0; i < getNumNodes(); ++i)
        std::fprintf(file, "  node %d: %g %g %g\n", m_nodesIndex[i], m_nodesCoord[i][0], m_nodesCoord[i][1],
                     m_nodesCoord[i][2]);
}
