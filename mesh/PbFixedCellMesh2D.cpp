#include <oravane/PbFixedCellMesh2D.h>

PbFixedCellMesh2D &PbFixedCellMesh2D::operator=(const PbFixedCellMesh2D &source) {
    PbIndexedMesh2D::operator=(source);
    return *this;
}

void PbFixedCellMesh2D::setGeometry(int numNodes, const float *x, const float *y, int numCells,
                                    const int *cellIndex) {
    setXYGeometry(numNodes, x, y, nullptr, numCells, cellIndex, nullptr);
}

void PbFixedCellMesh2D::setGeometry(int numNodes, const float *x, const float *y, const float *z,
                                    int numCells, const int *cellIndex) {
    setXYGeometry(numNodes, x, y, z, numCells, cellIndex, nullptr);
}

void PbFixedCellMesh2D::getGeometry(int &numNodes, const float *&x, const float *&y, int &numCells,
                                    const int *&cellIndex) const {
    getNodes(numNodes, x, y);
    numCells = getNumCells();
    cellIndex = getCellNodes(0).data();
}

void PbFixedCellMesh2D::getGeometry(int &numNodes, const float *&x, const float *&y, const float *&z,
                                    int &numCells, const int *&cellIndex) const {
    getGeometry(numNodes, x, y, numCells, cellIndex);
    z = getZcoord();
}

void PbFixedCellMesh2D::getGeometry(int &numNodes, const float *&x, const float *&y, int &numCells,
                                    const int *const *&cells) const {
    getNodes(numNodes, x, y);
    numCells = getNumCells();
    m_cells.clear();
    for (int cell = 0; cell < numCells; ++cell)
        m_cells.push_back(getCellNodes(cell).data());
    cells = m_cells.empty() ? nullptr : m_cells.data();
}

void PbFixedCellMesh2D::getGeometry(int &numNodes, const float *&x, const float *&y, const float *&z,
                                    int &numCells, const int *const *&cells) const {
    getGeometry(numNodes, x, y, numCells, cells);
    z = getZcoord();
}

const PbCell *PbFixedCellMesh2D::getCell(int index) const {
    const std::span<const int> nodes = getCellNodes(index);
    return nodes.empty() || getZcoord() ? nullptr : fillCell(index, nodes);
}
