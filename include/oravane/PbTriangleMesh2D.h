#ifndef ORAVANE_PBTRIANGLEMESH2D_H
#define ORAVANE_PBTRIANGLEMESH2D_H

#include <oravane/PbFixedCellMesh2D.h>

/// Mesh of triangles. From points alone it makes its own: the Delaunay triangulation of the distinct points.
///
/// \code
///   PbTriangleMesh2D stations(1);
///   stations.setGeometry(count, longitude, latitude);     // scattered points
///   stations.addValuesSet(0, temperature);                // one float for each point
/// \endcode
class ORAVANE_API PbTriangleMesh2D : public PbFixedCellMesh2D {
public:
    explicit PbTriangleMesh2D(int isDataDuplicate);
    /// `cellIndex`: three node numbers for each triangle.
    PbTriangleMesh2D(int numNodes, const float *x, const float *y, int numCells, const int *cellIndex,
                     int isDataDuplicate);
    PbTriangleMesh2D(int numNodes, const float *x, const float *y, const float *z, int numCells,
                     const int *cellIndex, int isDataDuplicate);
    PbTriangleMesh2D(const PbTriangleMesh2D &source) : PbFixedCellMesh2D(source, 3) {}
    /// Reports the removal of the old sets, and in the end `CHANGE_GENERAL`.
    PbTriangleMesh2D &operator=(const PbTriangleMesh2D &source) = default;

    using PbFixedCellMesh2D::setGeometry;
    /// Points alone: removes the z, and triangulates. All points become nodes; of equal ones only the first
    /// stands in triangles, and points that are not finite in none. Fewer than three distinct points, or all
    /// on one line, give no cells. The triangles belong to the mesh in either mode.
    void setGeometry(int numNodes, const float *x, const float *y);

    ORAVANE_MESH2D_DISPATCH
};

#endif
