#include <oravane/PbTriangleCell.h>

#include "mesh/PlanarTopology.h"

PbTriangleCell::PbTriangleCell(const PbMesh *)
    : PbCell({3, oravane::TRIANGLE_EDGES, std::span(oravane::FACET_NODES).first(3), 3}) {
    setNode(1, -1, SbVec3f(1, 0, 0));
    setNode(2, -1, SbVec3f(0, 1, 0));
}

int PbTriangleCell::set(int index, const float *x, const float *y, int n0, int n1, int n2) {
    m_isValid = false;
    if (!x || !y)
        return 0;
    const float a = x[n1] - x[n0];
    const float b = x[n2] - x[n0];
    const float c = y[n1] - y[n0];
    const float d = y[n2] - y[n0];
    const float det = a * d - b * c;
    if (det == 0)
        return 0;
    m_a = d / det;
    m_b = -c / det;
    m_c = -b / det;
    m_d = a / det;
    m_offsetU = y[n0] * m_c + x[n0] * m_a;
    m_offsetV = y[n0] * m_d + x[n0] * m_b;
    m_index = index;
    const int nodes[] = {n0, n1, n2};
    for (int i = 0; i < 3; ++i)
        setNode(i, nodes[i], SbVec3f(x[nodes[i]], y[nodes[i]], 0));
    m_isValid = true;
    return 1;
}

int PbTriangleCell::set(int index, const float *x, const float *y, const float *z, int n0, int n1, int n2) {
    if (!z)
        return set(index, x, y, n0, n1, n2);
    m_isValid = false;
    return 0;
}

int PbTriangleCell::locatePoint(const SbVec3f &point, float tolerance, SbVec3f &pcoord) const {
    if (!m_isValid)
        return 0;
    const float u = point[0] * m_a + point[1] * m_c - m_offsetU;
    const float v = point[0] * m_b + point[1] * m_d - m_offsetV;
    pcoord.setValue(u, v, pcoord[2]);
    return isParametric(1 - u - v, tolerance) && isParametric(u, tolerance) && isParametric(v, tolerance);
}

void PbTriangleCell::getWeight(const SbVec3f &pcoord, float *weights) const {
    weights[0] = 1 - pcoord[0] - pcoord[1];
    weights[1] = pcoord[0];
    weights[2] = pcoord[1];
}
