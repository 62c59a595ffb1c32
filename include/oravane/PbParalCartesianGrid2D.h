#ifndef ORAVANE_PBPARALCARTESIANGRID2D_H
#define ORAVANE_PBPARALCARTESIANGRID2D_H

#include <oravane/MeshKinds.h>
#include <oravane/PbCartesianGrid2D.h>
#include <oravane/PbPixelCell.h>

/// Structured grid with sides along the axes: one x per column, one y per row, both sorted, in either
/// direction. Its cells are pixels, or quadrangles when there is a z.
///
/// \code
///   const float x[] = {0, 1, 10}, y[] = {0, 1};
///   PbParalCartesianGrid2D grid(3, 2, x, y, 1);
/// \endcode
class ORAVANE_API PbParalCartesianGrid2D : public PbCartesianGrid2D {
public:
    explicit PbParalCartesianGrid2D(int isDataDuplicate);
    /// `x`: numX values, `y`: numY values, `z`: numX * numY values. Refused arguments leave the grid empty.
    PbParalCartesianGrid2D(int numX, int numY, const float *x, const float *y, int isDataDuplicate);
    PbParalCartesianGrid2D(int numX, int numY, const float *x, const float *y, const float *z,
                           int isDataDuplicate);
    PbParalCartesianGrid2D(const PbParalCartesianGrid2D &source);
    /// Reports the removal of the old sets, and in the end `CHANGE_GENERAL`.
    PbParalCartesianGrid2D &operator=(const PbParalCartesianGrid2D &source);
    /// Takes another grid of this kind, seen as its parent. Any other is refused: it does not fit into two
    /// axes.
    PbCartesianGrid2D &operator=(const PbCartesianGrid2D &source) override;

    /// Binary search in each axis (`getPositionInSortedArray`): a point on a grid line belongs to the cell
    /// before it. Neither the tolerance nor an adjacent cell plays a part.
    const PbCell *findContainingCell(const SbVec3f &point, float tolerance, SbVec3f &pcoord) override;
    const PbCell *findContainingCell(const SbVec3f &point, float tolerance, SbVec3f &pcoord,
                                     const PbCell *adjacentCell) override;

    ORAVANE_MESH2D_DISPATCH

protected:
    void setXYGeometry(int numX, int numY, const float *x, const float *y) override;
    void getXYGeometry(const float *&x, const float *&y) const override;
    SbVec2f getNodeXY(int i, int j) const override;
    const PbCell *fillCell(int i, int j) const override;
    /// As `findContainingCell`.
    const PbCell *findContainingCellProtected(const SbVec3f &point, float tolerance, SbVec3f &pcoord,
                                              PbArrayOfInt &testedCells) override;

private:
    PbDataBlock<float> m_x;
    PbDataBlock<float> m_y;
    mutable PbPixelCell m_pixelCell;
};

#endif
