#include <oravane/PbQuadrangleCell.h>

#include "mesh/PlanarTopology.h"

#include <cmath>

PbQuadrangleCell::PbQuadrangleCell(const PbMesh *)
    : PbCell({4, oravane::QUADRANGLE_EDGES, oravane::FACET_NODES, 4}) {
    setNode(1, -1, SbVec3f(1, 0, 0));
    setNode(2, -1, SbVec3f(1, 1, 0));
    setNode(3, -1, SbVec3f(0, 1, 0));
}

int PbQuadrangleCell::set(int index, const float *x, const float *y, int n0, int n1, int n2, int n3) {
    return set(index, x, y, nullptr, n0, n1, n2, n3);
}

int PbQuadrangleCell::set(int index, const float *x, const float *y, const float *z, int n0, int n1, int n2,
                          int n3) {
    if (!x || !y)
        return 0;
    m_index = index;
    m_isOnXY = !z;
    const int nodes[] = {n0, n1, n2, n3};
    for (int i = 0; i < 4; ++i)
        setNode(i, nodes[i], SbVec3f(x[nodes[i]], y[nodes[i]], z ? z[nodes[i]] : 0));
    return 1;
}

int PbQuadrangleCell::set(float xmin, float ymin, float xmax, float ymax, const float *z, int n0, int n1,
                          int n2, int n3) {
    const int numY = n1 - n0;
    m_index = numY > 0 ? n0 / numY * (numY - 1) + n0 % numY : -1;
    m_isOnXY = !z;
    setNode(0, n0, SbVec3f(xmin, ymin, z ? z[n0] : 0));
    setNode(1, n1, SbVec3f(xmax, ymin, z ? z[n1] : 0));
    setNode(2, n2, SbVec3f(xmax, ymax, z ? z[n2] : 0));
    setNode(3, n3, SbVec3f(xmin, ymax, z ? z[n3] : 0));
    return 1;
}

int PbQuadrangleCell::locatePoint(const SbVec3f &point, float tolerance, SbVec3f &pcoord) const {
    if (m_isOnXY)
        return locatePointOnXY(point, tolerance, pcoord, 0, 1);
    const SbVec3f &origin = m_nodesCoord[2];
    SbVec3f normal = (m_nodesCoord[3] - origin).cross(m_nodesCoord[0] - origin);
    normal.normalize();
    int dropped = 0;
    for (int axis = 1; axis < 3; ++axis)
        if (std::abs(normal[axis]) > std::abs(normal[dropped]))
            dropped = axis;
    const SbVec3f projected = point - normal * (point - origin).dot(normal);
    return locatePointOnXY(projected, tolerance, pcoord, dropped == 0 ? 1 : 0, dropped == 2 ? 1 : 2);
}

namespace {

/// Determinant of the columns a and b.
double Determinant2x2(const double *a, const double *b) {
    return a[0] * b[1] - b[0] * a[1];
}

/// The iteration ends within rounding of a side; that must not push a point of the side out of the cell.
float snapped(double value) {
    return std::abs(value) < 1e-12 ? 0.0f : static_cast<float>(value);
}

} // namespace

int PbQuadrangleCell::locatePointOnXY(const SbVec3f &point, float tolerance, SbVec3f &pcoord, int axis1,
                                      int axis2) const {
    const int axes[] = {axis1, axis2};
    double u = 0.5;
    double v = 0.5;
    bool isConverged = false;
    for (int iteration = 0; iteration < 10 && !isConverged; ++iteration) {
        double weights[4];
        double derivs[8];
        oravane::bilinearWeights(u, v, weights);
        oravane::bilinearDerivs(u, v, derivs);
        double residual[2];
        double byU[2] = {0, 0};
        double byV[2] = {0, 0};
        for (int k = 0; k < 2; ++k) {
            residual[k] = -static_cast<double>(point[axes[k]]);
            for (int node = 0; node < 4; ++node) {
                const double coord = m_nodesCoord[node][axes[k]];
                residual[k] += weights[node] * coord;
                byU[k] += derivs[node] * coord;
                byV[k] += derivs[4 + node] * coord;
            }
        }
        const double det = Determinant2x2(byU, byV);
        if (det == 0) {
            pcoord.setValue(snapped(u), snapped(v), 0);
            return 0;
        }
        const double stepU = Determinant2x2(residual, byV) / det;
        const double stepV = Determinant2x2(byU, residual) / det;
        u -= stepU;
        v -= stepV;
        isConverged = std::abs(stepU) < 0.001 && std::abs(stepV) < 0.001;
    }
    pcoord.setValue(snapped(u), snapped(v), 0);
    return isConverged && isParametric(pcoord[0], tolerance) && isParametric(pcoord[1], tolerance);
}

void PbQuadrangleCell::getWeight(const SbVec3f &pcoord, float *weights) const {
    oravane::bilinearWeights(pcoord[0], pcoord[1], weights);
}

void PbQuadrangleCell::getDerivs(const SbVec3f &pcoord, float *derivs) const {
    oravane::bilinearDerivs(pcoord[0], pcoord[1], derivs);
}
