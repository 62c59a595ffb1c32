#include <oravane/PbQuadrangleMesh2D.h>

PbQuadrangleMesh2D::PbQuadrangleMesh2D(int isDataDuplicate) : PbFixedCellMesh2D(isDataDuplicate, 4) {}

PbQuadrangleMesh2D::PbQuadrangleMesh2D(int numNodes, const float *x, const float *y, int numCells,
                                       const int *cellIndex, int isDataDuplicate)
    : PbQuadrangleMesh2D(numNodes, x, y, nullptr, numCells, cellIndex, isDataDuplicate) {}

PbQuadrangleMesh2D::PbQuadrangleMesh2D(int numNodes, const float *x, const float *y, const float *z,
                                       int numCells, const int *cellIndex, int isDataDuplicate)
    : PbQuadrangleMesh2D(isDataDuplicate) {
    setGeometry(numNodes, x, y, z, numCells, cellIndex);
}
