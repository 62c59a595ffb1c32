#include <oravane/PbRegularCartesianGrid2D.h>

#include "mesh/GridNodes.h"
#include "mesh/ValueRange.h"

#include <cmath>

using oravane::ValueRange;

PbRegularCartesianGrid2D::PbRegularCartesianGrid2D(int isDataDuplicate)
    : PbGrid2D(isDataDuplicate), m_pixelCell(this), m_quadrangleCell(this) {}

PbRegularCartesianGrid2D::PbRegularCartesianGrid2D(int numX, int numY, float xmin, float ymin, float xmax,
                                                   float ymax, int isDataDuplicate)
    : PbRegularCartesianGrid2D(numX, numY, xmin, ymin, xmax, ymax, nullptr, isDataDuplicate) {}

PbRegularCartesianGrid2D::PbRegularCartesianGrid2D(int numX, int numY, float xmin, float ymin, float xmax,
                                                   float ymax, const float *z, int isDataDuplicate)
    : PbRegularCartesianGrid2D(isDataDuplicate) {
    setGeometry(numX, numY, xmin, ymin, xmax, ymax, z);
}

PbRegularCartesianGrid2D &PbRegularCartesianGrid2D::operator=(const PbRegularCartesianGrid2D &source) {
    if (this == &source)
        return *this;
    PbGrid2D::operator=(source);
    setBounds(m_numX, m_numY, source.m_xmin, source.m_ymin, source.m_xmax, source.m_ymax);
    PbBase::operator=(source);
    return *this;
}

void PbRegularCartesianGrid2D::setBounds(int numX, int numY, float xmin, float ymin, float xmax, float ymax) {
    m_xmin = xmin;
    m_xmax = xmax;
    m_ymin = ymin;
    m_ymax = ymax;
    m_dx = numX > 1 ? (xmax - xmin) / static_cast<float>(numX - 1) : 0;
    m_dy = numY > 1 ? (ymax - ymin) / static_cast<float>(numY - 1) : 0;
}

void PbRegularCartesianGrid2D::setGeometry(int numX, int numY, float xmin, float ymin, float xmax,
                                           float ymax) {
    setGeometry(numX, numY, xmin, ymin, xmax, ymax, nullptr);
}

void PbRegularCartesianGrid2D::setGeometry(int numX, int numY, float xmin, float ymin, float xmax, float ymax,
                                           const float *z) {
    if (!acceptDim(numX, numY))
        return;
    if (numX * numY != getNumNodes())
        dropValuesSets();
    setZCoord(numX * numY, z);
    setBounds(numX, numY, xmin, ymin, xmax, ymax);
    setDim(numX, numY);
    updateBoundingBox();
}

void PbRegularCartesianGrid2D::getGeometry(int &numX, int &numY, float &xmin, float &ymin, float &xmax,
                                           float &ymax) const {
    getDim(numX, numY);
    xmin = m_xmin;
    ymin = m_ymin;
    xmax = m_xmax;
    ymax = m_ymax;
}

void PbRegularCartesianGrid2D::getGeometry(int &numX, int &numY, float &xmin, float &ymin, float &xmax,
                                           float &ymax, const float *&z) const {
    getGeometry(numX, numY, xmin, ymin, xmax, ymax);
    z = getZcoord();
}

void PbRegularCartesianGrid2D::setXYGeometry(int numX, int numY, const float *x, const float *y) {
    ValueRange xRange;
    ValueRange yRange;
    xRange.add(x, numX);
    yRange.add(y, numY);
    const ValueRange none{0, 0};
    const ValueRange &xs = xRange.isValid() ? xRange : none;
    const ValueRange &ys = yRange.isValid() ? yRange : none;
    setBounds(numX, numY, xs.min, ys.min, xs.max, ys.max);
}

void PbRegularCartesianGrid2D::getXYGeometry(const float *&x, const float *&y) const {
    m_columns.resize(static_cast<std::size_t>(m_numX));
    m_rows.resize(static_cast<std::size_t>(m_numY));
    for (int i = 0; i < m_numX; ++i)
        m_columns[i] = xOf(i);
    for (int j = 0; j < m_numY; ++j)
        m_rows[j] = yOf(j);
    x = m_columns.data();
    y = m_rows.data();
}

SbVec2f PbRegularCartesianGrid2D::getNodeXY(int i, int j) const {
    return SbVec2f(xOf(i), yOf(j));
}

void PbRegularCartesianGrid2D::updateBoundingBox() {
    m_boundingBox = SbBox3f();
    if (isEmpty())
        return;
    ValueRange x;
    ValueRange y;
    ValueRange z;
    for (const float bound : {m_xmin, m_xmax})
        x.add(bound);
    for (const float bound : {m_ymin, m_ymax})
        y.add(bound);
    if (getZcoord())
        z.add(getZcoord(), getNumNodes());
    else
        z.add(0);
    m_boundingBox = oravane::boxOf(x, y, z);
}

const PbCell *PbRegularCartesianGrid2D::fillCell(int i, int j) const {
    return fillRectangle(m_pixelCell, m_quadrangleCell, i, j);
}

namespace {

/// Interval of `value` among the `num` positions from `min` to `max`, or -1. The comparison comes before the
/// conversion to an integer, so that NaN and huge values are outside.
int intervalOf(float value, int num, float min, float max) {
    const float position = std::floor((value - min) * static_cast<float>(num - 1) / (max - min));
    return position >= 0 && position < static_cast<float>(num - 1) ? static_cast<int>(position) : -1;
}

} // namespace

const PbCell *PbRegularCartesianGrid2D::findContainingCell(const SbVec3f &point, float, SbVec3f &pcoord) {
    const int i = intervalOf(point[0], m_numX, m_xmin, m_xmax);
    const int j = intervalOf(point[1], m_numY, m_ymin, m_ymax);
    return locateInCell(i, j, point, pcoord);
}

const PbCell *PbRegularCartesianGrid2D::findContainingCell(const SbVec3f &point, float tolerance,
                                                           SbVec3f &pcoord, const PbCell *) {
    return findContainingCell(point, tolerance, pcoord);
}
