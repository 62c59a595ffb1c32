#include <oravane/PbCartesianGrid2D.h>

#include "mesh/ValueRange.h"

#include <algorithm>

using oravane::ValueRange;

PbCartesianGrid2D::PbCartesianGrid2D(int isDataDuplicate)
    : PbGrid2D(isDataDuplicate), m_quadrangleCell(this), m_x(isDataDuplicate != 0),
      m_y(isDataDuplicate != 0) {}

PbCartesianGrid2D::PbCartesianGrid2D(int numX, int numY, const float *x, const float *y, int isDataDuplicate)
    : PbCartesianGrid2D(numX, numY, x, y, nullptr, isDataDuplicate) {}

PbCartesianGrid2D::PbCartesianGrid2D(int numX, int numY, const float *x, const float *y, const float *z,
                                     int isDataDuplicate)
    : PbCartesianGrid2D(isDataDuplicate) {
    PbCartesianGrid2D::setGeometry(numX, numY, x, y, z);
}

PbCartesianGrid2D::PbCartesianGrid2D(const PbCartesianGrid2D &source, WithoutNodes)
    : PbGrid2D(source), m_quadrangleCell(this), m_x(source.isDataDuplicate()), m_y(source.isDataDuplicate()) {
}

PbCartesianGrid2D::PbCartesianGrid2D(const PbCartesianGrid2D &source)
    : PbCartesianGrid2D(source, WithoutNodes()) {
    copyNodes(source);
}

PbCartesianGrid2D &PbCartesianGrid2D::operator=(const PbCartesianGrid2D &source) {
    if (this == &source)
        return *this;
    PbGrid2D::operator=(source);
    copyNodes(source);
    PbBase::operator=(source);
    return *this;
}

void PbCartesianGrid2D::copyNodes(const PbCartesianGrid2D &source) {
    m_x = source.m_x;
    m_y = source.m_y;
    if (m_x.getNum() == getNumNodes())
        return;
    // The source is of a kind that stores less than one x and y per node.
    float *x = m_x.makeOwn(getNumNodes(), 0);
    float *y = m_y.makeOwn(getNumNodes(), 0);
    for (int i = 0; i < m_numX; ++i)
        for (int j = 0; j < m_numY; ++j) {
            const SbVec2f xy = source.getNodeXY(i, j);
            *x++ = xy[0];
            *y++ = xy[1];
        }
}

void PbCartesianGrid2D::setXYGeometry(int numX, int numY, const float *x, const float *y) {
    PbDataBlock<float>::setTogether({{&m_x, x, numX * numY}, {&m_y, y, numX * numY}});
}

void PbCartesianGrid2D::getXYGeometry(const float *&x, const float *&y) const {
    x = m_x.data();
    y = m_y.data();
}

SbVec2f PbCartesianGrid2D::getNodeXY(int i, int j) const {
    const int node = nodeIndex(i, j);
    return SbVec2f(m_x[node], m_y[node]);
}

const PbCell *PbCartesianGrid2D::fillCell(int i, int j) const {
    const int node = nodeIndex(i, j);
    m_quadrangleCell.set(cellIndex(i, j), m_x.data(), m_y.data(), getZcoord(), node, node + m_numY,
                         node + m_numY + 1, node + 1);
    return &m_quadrangleCell;
}

namespace {

/// Whether a bilinear cell with these corner coordinates on one axis can contain `value`. Parametric
/// coordinates within the tolerance t reach 2t + 2t^2 ranges beyond the corners; one part in a hundred covers
/// the rest that a converged location leaves.
bool canReach(float value, float tolerance, float c0, float c1, float c2, float c3) {
    ValueRange range;
    for (const float corner : {c0, c1, c2, c3})
        range.add(corner);
    const float beyond = 2 * tolerance + 2 * tolerance * tolerance + 0.01f;
    const float margin = (range.max - range.min) * beyond;
    return value >= range.min - margin && value <= range.max + margin;
}

} // namespace

const PbCell *PbCartesianGrid2D::findContainingCellProtected(const SbVec3f &point, float tolerance,
                                                             SbVec3f &pcoord, PbArrayOfInt &) {
    // In space a cell takes in what its plane projects on it, so only flat cells have a reach on x and y.
    const bool isReachKnown = !getZcoord() && tolerance >= 0 && tolerance < 100;
    for (int i = 0; i < m_numX - 1; ++i)
        for (int j = 0; j < m_numY - 1; ++j) {
            const int n = nodeIndex(i, j);
            const int m = n + m_numY;
            if (isReachKnown && !(canReach(point[0], tolerance, m_x[n], m_x[m], m_x[m + 1], m_x[n + 1]) &&
                                  canReach(point[1], tolerance, m_y[n], m_y[m], m_y[m + 1], m_y[n + 1])))
                continue;
            if (fillCell(i, j)->locatePoint(point, tolerance, pcoord))
                return &m_quadrangleCell;
        }
    return nullptr;
}
