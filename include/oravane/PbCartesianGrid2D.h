#ifndef ORAVANE_PBCARTESIANGRID2D_H
#define ORAVANE_PBCARTESIANGRID2D_H

#include <oravane/MeshKinds.h>
#include <oravane/PbGrid2D.h>
#include <oravane/PbQuadrangleCell.h>

/// Structured grid with an x and a y for each node, in the order of the node index: a curved grid. Its cells
/// are quadrangles.
///
/// \code
///   const float x[] = {0, 0, 1, 1.5f}, y[] = {0, 1, 0, 1};   // nodes (0,0), (0,1), (1,0), (1,1)
///   PbCartesianGrid2D grid(2, 2, x, y, 1);
/// \endcode
class ORAVANE_API PbCartesianGrid2D : public PbGrid2D {
public:
    explicit PbCartesianGrid2D(int isDataDuplicate);
    /// `x`, `y`, and `z`: numX * numY values each. Refused arguments leave the grid empty.
    PbCartesianGrid2D(int numX, int numY, const float *x, const float *y, int isDataDuplicate);
    PbCartesianGrid2D(int numX, int numY, const float *x, const float *y, const float *z,
                      int isDataDuplicate);
    /// A `PbParalCartesianGrid2D` as source gives its node coordinates, in own blocks.
    PbCartesianGrid2D(const PbCartesianGrid2D &source);
    /// Reports the removal of the old sets, and in the end `CHANGE_GENERAL`.
    virtual PbCartesianGrid2D &operator=(const PbCartesianGrid2D &source);

    ORAVANE_MESH2D_DISPATCH

protected:
    /// Copies the level of `PbGrid2D` only, for a child with its own arrays.
    struct WithoutNodes {};
    PbCartesianGrid2D(const PbCartesianGrid2D &source, WithoutNodes);

    void setXYGeometry(int numX, int numY, const float *x, const float *y) override;
    void getXYGeometry(const float *&x, const float *&y) const override;
    SbVec2f getNodeXY(int i, int j) const override;
    const PbCell *fillCell(int i, int j) const override;
    /// All cells in the order of their index; the first that contains the point.
    const PbCell *findContainingCellProtected(const SbVec3f &point, float tolerance, SbVec3f &pcoord,
                                              PbArrayOfInt &testedCells) override;

    mutable PbQuadrangleCell m_quadrangleCell;

private:
    void copyNodes(const PbCartesianGrid2D &source);

    PbDataBlock<float> m_x;
    PbDataBlock<float> m_y;
};

#endif
