#include <oravane/PbPixelCell.h>

#include "mesh/PlanarTopology.h"

#include <algorithm>
#include <cmath>

PbPixelCell::PbPixelCell(const PbMesh *) : PbCell({4, oravane::QUADRANGLE_EDGES, oravane::FACET_NODES, 4}) {
    setNode(1, -1, SbVec3f(1, 0, 0));
    setNode(2, -1, SbVec3f(1, 1, 0));
    setNode(3, -1, SbVec3f(0, 1, 0));
}

int PbPixelCell::set(const float *x, const float *y, int ny, int i, int j) {
    return x && y ? set(x[i], y[j], x[i + 1], y[j + 1], ny, i, j) : 0;
}

int PbPixelCell::set(float xmin, float ymin, float xmax, float ymax, int ny, int i, int j) {
    m_xmin = xmin;
    m_ymin = ymin;
    m_xmax = xmax;
    m_ymax = ymax;
    m_dx = xmax - xmin;
    m_dy = ymax - ymin;
    m_index = j + i * (ny - 1);
    const int node = i * ny + j;
    setNode(0, node, SbVec3f(xmin, ymin, 0));
    setNode(1, node + ny, SbVec3f(xmax, ymin, 0));
    setNode(2, node + ny + 1, SbVec3f(xmax, ymax, 0));
    setNode(3, node + 1, SbVec3f(xmin, ymax, 0));
    return 1;
}

float PbPixelCell::getLongestEdgeLength() const {
    return std::max(std::abs(m_dx), std::abs(m_dy));
}

float PbPixelCell::getArea() const {
    return std::abs(m_dx * m_dy);
}

SbBox3f PbPixelCell::getBoundingBox() const {
    return SbBox3f(std::min(m_xmin, m_xmax), std::min(m_ymin, m_ymax), 0, std::max(m_xmin, m_xmax),
                   std::max(m_ymin, m_ymax), 0);
}

SbVec3f PbPixelCell::getCenter() const {
    return SbVec3f((m_xmin + m_xmax) / 2, (m_ymin + m_ymax) / 2, 0);
}

int PbPixelCell::locatePoint(const SbVec3f &point, float tolerance, SbVec3f &pcoord) const {
    pcoord.setValue((point[0] - m_xmin) / m_dx, (point[1] - m_ymin) / m_dy, 0);
    return isParametric(pcoord[0], tolerance) && isParametric(pcoord[1], tolerance);
}

void PbPixelCell::getWeight(const SbVec3f &pcoord, float *weights) const {
    oravane::bilinearWeights(pcoord[0], pcoord[1], weights);
}

float PbPixelCell::getValue(const SbVec3f &pcoord, const float *values) const {
    if (!values || m_nodesIndex[0] < 0)
        return 0;
    const float *const v = values;
    const auto &n = m_nodesIndex;
    const float lower = v[n[0]] + (v[n[1]] - v[n[0]]) * pcoord[0];
    const float upper = v[n[3]] + (v[n[2]] - v[n[3]]) * pcoord[0];
    return lower + (upper - lower) * pcoord[1];
}
