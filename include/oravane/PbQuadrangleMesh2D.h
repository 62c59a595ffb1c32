#ifndef ORAVANE_PBQUADRANGLEMESH2D_H
#define ORAVANE_PBQUADRANGLEMESH2D_H

#include <oravane/PbFixedCellMesh2D.h>

/// Mesh of quadrangles; the nodes of each are in order around it.
///
/// \code
///   const float x[] = {0, 1, 1, 0, 2, 2}, y[] = {0, 0, 1, 1, 0, 1};
///   const int nodes[] = {0, 1, 2, 3, 1, 4, 5, 2};
///   PbQuadrangleMesh2D mesh(6, x, y, 2, nodes, 1);
/// \endcode
class ORAVANE_API PbQuadrangleMesh2D : public PbFixedCellMesh2D {
public:
    explicit PbQuadrangleMesh2D(int isDataDuplicate);
    /// `cellIndex`: four node numbers for each quadrangle.
    PbQuadrangleMesh2D(int numNodes, const float *x, const float *y, int numCells, const int *cellIndex,
                       int isDataDuplicate);
    PbQuadrangleMesh2D(int numNodes, const float *x, const float *y, const float *z, int numCells,
                       const int *cellIndex, int isDataDuplicate);
    PbQuadrangleMesh2D(const PbQuadrangleMesh2D &source) : PbFixedCellMesh2D(source, 4) {}
    /// Reports the removal of the old sets, and in the end `CHANGE_GENERAL`.
    PbQuadrangleMesh2D &operator=(const PbQuadrangleMesh2D &source) = default;

    ORAVANE_MESH2D_DISPATCH
};

#endif
