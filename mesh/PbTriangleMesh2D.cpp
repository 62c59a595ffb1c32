#include <oravane/PbTriangleMesh2D.h>

PbTriangleMesh2D::PbTriangleMesh2D(int isDataDuplicate) : PbFixedCellMesh2D(isDataDuplicate, 3) {}

PbTriangleMesh2D::PbTriangleMesh2D(int numNodes, const float *x, const float *y, int numCells,
                                   const int *cellIndex, int isDataDuplicate)
    : PbTriangleMesh2D(numNodes, x, y, nullptr, numCells, cellIndex, isDataDuplicate) {}

PbTriangleMesh2D::PbTriangleMesh2D(int numNodes, const float *x, const float *y, const float *z, int numCells,
                                   const int *cellIndex, int isDataDuplicate)
    : PbTriangleMesh2D(isDataDuplicate) {
    setGeometry(numNodes, x, y, z, numCells, cellIndex);
}
