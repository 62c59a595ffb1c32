#include <oravane/PbPolarGrid2D.h>

#include "mesh/GridNodes.h"

#include <Inventor/SbVec2d.h>

#include <cmath>
#include <vector>

PbPolarGrid2D::PbPolarGrid2D(int isDataDuplicate)
    : PbGrid2D(isDataDuplicate), m_radius(isDataDuplicate != 0), m_angle(isDataDuplicate != 0) {}

PbPolarGrid2D::PbPolarGrid2D(int numX, int numY, const float *radius, const float *angle, int isDataDuplicate)
    : PbPolarGrid2D(numX, numY, radius, angle, nullptr, isDataDuplicate) {}

PbPolarGrid2D::PbPolarGrid2D(int numX, int numY, const float *radius, const float *angle, const float *z,
                             int isDataDuplicate)
    : PbPolarGrid2D(isDataDuplicate) {
    PbPolarGrid2D::setGeometry(numX, numY, radius, angle, z);
}

PbPolarGrid2D &PbPolarGrid2D::operator=(const PbPolarGrid2D &source) {
    if (this == &source)
        return *this;
    PbGrid2D::operator=(source);
    m_radius = source.m_radius;
    m_angle = source.m_angle;
    PbBase::operator=(source);
    return *this;
}

void PbPolarGrid2D::setXYGeometry(int numX, int numY, const float *x, const float *y) {
    PbDataBlock<float>::setTogether({{&m_radius, x, numX}, {&m_angle, y, numY}});
}

void PbPolarGrid2D::getXYGeometry(const float *&x, const float *&y) const {
    x = m_radius.data();
    y = m_angle.data();
}

namespace {

SbVec2d directionOf(float angle) {
    return SbVec2d(std::cos(static_cast<double>(angle)), std::sin(static_cast<double>(angle)));
}

} // namespace

SbVec2f PbPolarGrid2D::getNodeXY(int i, int j) const {
    const SbVec2d xy = directionOf(m_angle[j]) * m_radius[i];
    return SbVec2f(static_cast<float>(xy[0]), static_cast<float>(xy[1]));
}

void PbPolarGrid2D::getNodesCoord(const float *z, SoMFVec3f &coords) const {
    std::vector<SbVec2d> directions; // one sine and cosine per angle, not per node
    directions.reserve(static_cast<std::size_t>(m_numY));
    for (int j = 0; j < m_numY; ++j)
        directions.push_back(directionOf(m_angle[j]));
    oravane::fillNodes(m_numX, m_numY, z, coords, [&](int i, int j) { return directions[j] * m_radius[i]; });
}

const PbCell *PbPolarGrid2D::fillCell(int, int) const {
    return nullptr;
}
