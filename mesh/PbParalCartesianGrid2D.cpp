#include <oravane/PbParalCartesianGrid2D.h>

PbParalCartesianGrid2D::PbParalCartesianGrid2D(int isDataDuplicate)
    : PbCartesianGrid2D(isDataDuplicate), m_x(isDataDuplicate != 0), m_y(isDataDuplicate != 0),
      m_pixelCell(this) {}

PbParalCartesianGrid2D::PbParalCartesianGrid2D(int numX, int numY, const float *x, const float *y,
                                               int isDataDuplicate)
    : PbParalCartesianGrid2D(numX, numY, x, y, nullptr, isDataDuplicate) {}

PbParalCartesianGrid2D::PbParalCartesianGrid2D(int numX, int numY, const float *x, const float *y,
                                               const float *z, int isDataDuplicate)
    : PbParalCartesianGrid2D(isDataDuplicate) {
    PbParalCartesianGrid2D::setGeometry(numX, numY, x, y, z);
}

PbParalCartesianGrid2D::PbParalCartesianGrid2D(const PbParalCartesianGrid2D &source)
    : PbCartesianGrid2D(source, WithoutNodes()), m_x(source.m_x), m_y(source.m_y), m_pixelCell(this) {}

PbParalCartesianGrid2D &PbParalCartesianGrid2D::operator=(const PbParalCartesianGrid2D &source) {
    if (this == &source)
        return *this;
    PbGrid2D::operator=(source);
    m_x = source.m_x;
    m_y = source.m_y;
    PbBase::operator=(source);
    return *this;
}

PbCartesianGrid2D &PbParalCartesianGrid2D::operator=(const PbCartesianGrid2D &source) {
    if (const auto *grid = dynamic_cast<const PbParalCartesianGrid2D *>(&source))
        *this = *grid;
    return *this;
}

void PbParalCartesianGrid2D::setXYGeometry(int numX, int numY, const float *x, const float *y) {
    PbDataBlock<float>::setTogether({{&m_x, x, numX}, {&m_y, y, numY}});
}

void PbParalCartesianGrid2D::getXYGeometry(const float *&x, const float *&y) const {
    x = m_x.data();
    y = m_y.data();
}

SbVec2f PbParalCartesianGrid2D::getNodeXY(int i, int j) const {
    return SbVec2f(m_x[i], m_y[j]);
}

const PbCell *PbParalCartesianGrid2D::fillCell(int i, int j) const {
    return fillRectangle(m_pixelCell, m_quadrangleCell, i, j);
}

const PbCell *PbParalCartesianGrid2D::findContainingCell(const SbVec3f &point, float, SbVec3f &pcoord) {
    const int i = getPositionInSortedArray(point[0], m_numX, m_x.data());
    const int j = getPositionInSortedArray(point[1], m_numY, m_y.data());
    return locateInCell(i, j, point, pcoord);
}

const PbCell *PbParalCartesianGrid2D::findContainingCell(const SbVec3f &point, float tolerance,
                                                         SbVec3f &pcoord, const PbCell *) {
    return findContainingCell(point, tolerance, pcoord);
}

const PbCell *PbParalCartesianGrid2D::findContainingCellProtected(const SbVec3f &point, float tolerance,
                                                                  SbVec3f &pcoord, PbArrayOfInt &) {
    return findContainingCell(point, tolerance, pcoord);
}
