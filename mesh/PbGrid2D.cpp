#include <oravane/PbGrid2D.h>
#include <oravane/PbPixelCell.h>
#include <oravane/PbQuadrangleCell.h>

#include "mesh/GridNodes.h"
#include "mesh/ValueRange.h"

#include <limits>

using oravane::ValueRange;

bool PbGrid2D::acceptDim(int &numX, int &numY) {
    if (numX < 0 || numY < 0)
        return false;
    if (numX == 0 || numY == 0)
        numX = numY = 0;
    return numX == 0 || numY <= std::numeric_limits<int>::max() / numX;
}

void PbGrid2D::setDim(int numX, int numY) {
    m_numX = numX;
    m_numY = numY;
    setCounts(numX * numY, numX > 0 ? (numX - 1) * (numY - 1) : 0);
}

void PbGrid2D::setGeometry(int numX, int numY, const float *x, const float *y) {
    setGeometry(numX, numY, x, y, nullptr);
}

void PbGrid2D::setGeometry(int numX, int numY, const float *x, const float *y, const float *z) {
    if (!acceptDim(numX, numY) || (numX > 0 && (!x || !y)))
        return;
    const bool isNewCount = numX * numY != m_numNodes;
    // z may be an own array of x or y, and the other way round.
    PbDataBlock<float> newZ(isDataDuplicate() || m_zCoord.holds(z));
    newZ.set(z, numX * numY);
    setXYGeometry(numX, numY, x, y);
    m_zCoord.swap(newZ);
    // Sizes and arrays agree again before the first kit is told.
    setDim(numX, numY);
    updateBoundingBox();
    const bool areSetsGone = isNewCount && (dropValuesSets() || isDataDuplicate());
    if (areSetsGone && !notifyChange(CHANGE_VALUES_SET))
        return;
    notifyChange(CHANGE_MESH_GEOMETRY);
}

void PbGrid2D::getGeometry(int &numX, int &numY, const float *&x, const float *&y) const {
    getDim(numX, numY);
    getXYGeometry(x, y);
}

void PbGrid2D::getGeometry(int &numX, int &numY, const float *&x, const float *&y, const float *&z) const {
    getGeometry(numX, numY, x, y);
    z = getZcoord();
}

void PbGrid2D::getDim(int &numX, int &numY) const {
    numX = m_numX;
    numY = m_numY;
}

void PbGrid2D::getNodeIndices(int index, int &i, int &j) const {
    const bool isInside = index >= 0 && index < m_numNodes;
    i = isInside ? index / m_numY : -1;
    j = isInside ? index % m_numY : -1;
}

void PbGrid2D::getCellIndices(int index, int &i, int &j) const {
    const bool isInside = index >= 0 && index < m_numCells;
    i = isInside ? index / (m_numY - 1) : -1;
    j = isInside ? index % (m_numY - 1) : -1;
}

const PbCell *PbGrid2D::getCell(int index) const {
    int i = 0;
    int j = 0;
    getCellIndices(index, i, j);
    return i < 0 ? nullptr : fillCell(i, j);
}

const PbCell *PbGrid2D::fillRectangle(PbPixelCell &pixel, PbQuadrangleCell &quadrangle, int i, int j) const {
    const SbVec2f low = getNodeXY(i, j);
    const SbVec2f high = getNodeXY(i + 1, j + 1);
    if (!getZcoord()) {
        pixel.set(low[0], low[1], high[0], high[1], m_numY, i, j);
        return &pixel;
    }
    const int node = nodeIndex(i, j);
    quadrangle.set(low[0], low[1], high[0], high[1], getZcoord(), node, node + m_numY, node + m_numY + 1,
                   node + 1);
    return &quadrangle;
}

const PbCell *PbGrid2D::locateInCell(int i, int j, const SbVec3f &point, SbVec3f &pcoord) const {
    if (!hasCell(i, j))
        return nullptr;
    const PbCell *cell = fillCell(i, j);
    if (cell)
        cell->locatePoint(point, 0, pcoord);
    return cell;
}

SbVec3f PbGrid2D::getNodeCoord(int index) const {
    int i = 0;
    int j = 0;
    getNodeIndices(index, i, j);
    return getNodeCoord(i, j);
}

SbVec3f PbGrid2D::getNodeCoord(int i, int j) const {
    if (!hasNode(i, j))
        return SbVec3f(0, 0, 0);
    const SbVec2f xy = getNodeXY(i, j);
    return SbVec3f(xy[0], xy[1], getNodeZ(nodeIndex(i, j)));
}

void PbGrid2D::getNodesCoord(const float *z, SoMFVec3f &coords) const {
    oravane::fillNodes(m_numX, m_numY, z, coords, [this](int i, int j) { return getNodeXY(i, j); });
}

void PbGrid2D::updateBoundingBox() {
    ValueRange x;
    ValueRange y;
    ValueRange z;
    for (int i = 0; i < m_numX; ++i)
        for (int j = 0; j < m_numY; ++j) {
            const SbVec3f node = getNodeCoord(i, j);
            x.add(node[0]);
            y.add(node[1]);
            z.add(node[2]);
        }
    m_boundingBox = oravane::boxOf(x, y, z);
}

void PbGrid2D::updateCellBoundingBox() {
    resetCellBoxes();
    for (int i = 0; i < m_numX - 1; ++i)
        for (int j = 0; j < m_numY - 1; ++j) {
            SbBox3f box;
            box.extendBy(getNodeCoord(i, j));
            box.extendBy(getNodeCoord(i + 1, j));
            box.extendBy(getNodeCoord(i + 1, j + 1));
            box.extendBy(getNodeCoord(i, j + 1));
            compareCellBox(cellIndex(i, j), box);
        }
}

void PbGrid2D::addCell(int i, int j, PbArrayOfInt &cells) const {
    if (hasCell(i, j))
        cells.add(cellIndex(i, j));
}

void PbGrid2D::getNodeOwnerCellsInd(int node, PbArrayOfInt &cells) const {
    cells.empty();
    int i = 0;
    int j = 0;
    getNodeIndices(node, i, j);
    if (i < 0)
        return;
    addCell(i, j, cells);
    addCell(i - 1, j, cells);
    addCell(i - 1, j - 1, cells);
    addCell(i, j - 1, cells);
}

void PbGrid2D::getAdjacentCellsIndByNode(int cell, PbArrayOfInt &cells) const {
    cells.empty();
    int i = 0;
    int j = 0;
    getCellIndices(cell, i, j);
    if (i < 0)
        return;
    for (int row = i - 1; row <= i + 1; ++row)
        for (int column = j - 1; column <= j + 1; ++column)
            if (row != i || column != j)
                addCell(row, column, cells);
}

void PbGrid2D::getAdjacentCellsIndByFacet(int cell, PbArrayOfInt &cells) const {
    cells.empty();
    int i = 0;
    int j = 0;
    getCellIndices(cell, i, j);
    if (i < 0)
        return;
    addCell(i - 1, j, cells);
    addCell(i + 1, j, cells);
    addCell(i, j - 1, cells);
    addCell(i, j + 1, cells);
}
