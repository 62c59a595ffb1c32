#include <oravane/PbTriangleMesh2D.h>

#include "mesh/Delaunay.h"

PbTriangleMesh2D::PbTriangleMesh2D(int isDataDuplicate) : PbFixedCellMesh2D(isDataDuplicate, 3) {}

PbTriangleMesh2D::PbTriangleMesh2D(int numNodes, const float *x, const float *y, int numCells,
                                   const int *cellIndex, int isDataDuplicate)
    : PbTriangleMesh2D(numNodes, x, y, nullptr, numCells, cellIndex, isDataDuplicate) {}

PbTriangleMesh2D::PbTriangleMesh2D(int numNodes, const float *x, const float *y, const float *z, int numCells,
                                   const int *cellIndex, int isDataDuplicate)
    : PbTriangleMesh2D(isDataDuplicate) {
    setGeometry(numNodes, x, y, z, numCells, cellIndex);
}

void PbTriangleMesh2D::setGeometry(int numNodes, const float *x, const float *y) {
    if (!acceptNodes(numNodes, x, y))
        return;
    const auto count = static_cast<std::size_t>(numNodes);
    const oravane::Delaunay triangulation({x, count}, {y, count});
    std::vector<int> cellIndex(3 * triangulation.numTriangles());
    triangulation.write(cellIndex.data());
    setNodesAndOwnCells(numNodes, x, y, cellIndex);
}
