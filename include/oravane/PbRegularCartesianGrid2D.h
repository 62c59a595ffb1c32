#ifndef ORAVANE_PBREGULARCARTESIANGRID2D_H
#define ORAVANE_PBREGULARCARTESIANGRID2D_H

#include <oravane/MeshKinds.h>
#include <oravane/PbGrid2D.h>
#include <oravane/PbPixelCell.h>
#include <oravane/PbQuadrangleCell.h>

#include <vector>

/// Structured grid with equal steps along both axes, stored as its bounds. Node (i, j) is at xmin + i * dx,
/// ymin + j * dy, with dx = (xmax - xmin) / (numX - 1), or 0 for a grid one node wide. A bound max below min
/// gives a negative step. Its cells are pixels, or quadrangles when there is a z.
///
/// \code
///   PbRegularCartesianGrid2D grid(41, 31, 0, 0, 4, 3, 1);   // 41 by 31 nodes over 0 to 4 and 0 to 3
/// \endcode
class ORAVANE_API PbRegularCartesianGrid2D : public PbGrid2D {
public:
    explicit PbRegularCartesianGrid2D(int isDataDuplicate);
    /// `z`: numX * numY values. Refused arguments leave the grid empty.
    PbRegularCartesianGrid2D(int numX, int numY, float xmin, float ymin, float xmax, float ymax,
                             int isDataDuplicate);
    PbRegularCartesianGrid2D(int numX, int numY, float xmin, float ymin, float xmax, float ymax,
                             const float *z, int isDataDuplicate);
    PbRegularCartesianGrid2D(const PbRegularCartesianGrid2D &source) = default;
    /// Reports the removal of the old sets, and in the end `CHANGE_GENERAL`.
    PbRegularCartesianGrid2D &operator=(const PbRegularCartesianGrid2D &source);

    /// Replaces the geometry and deliberately reports nothing, not even the loss of the value sets of a
    /// duplicating grid whose number of nodes changes: touch the kits, or the grid. The form without `z`
    /// removes the z.
    ///
    /// Through the parent, `setGeometry(numX, numY, x, y)` takes the smallest and largest of the numX values
    /// of `x` and numY values of `y` as bounds, and reports; `getGeometry` gives the positions of columns and
    /// rows.
    void setGeometry(int numX, int numY, float xmin, float ymin, float xmax, float ymax);
    void setGeometry(int numX, int numY, float xmin, float ymin, float xmax, float ymax, const float *z);
    void getGeometry(int &numX, int &numY, float &xmin, float &ymin, float &xmax, float &ymax) const;
    void getGeometry(int &numX, int &numY, float &xmin, float &ymin, float &xmax, float &ymax,
                     const float *&z) const;

    /// Computes the cell from the point: column floor((x - xmin) * (numX - 1) / (xmax - xmin)). A point on a
    /// grid line belongs to the cell behind it, and a point on the upper bound is outside. Neither the
    /// tolerance nor an adjacent cell plays a part.
    const PbCell *findContainingCell(const SbVec3f &point, float tolerance, SbVec3f &pcoord) override;
    const PbCell *findContainingCell(const SbVec3f &point, float tolerance, SbVec3f &pcoord,
                                     const PbCell *adjacentCell) override;

    ORAVANE_MESH2D_DISPATCH

protected:
    void setXYGeometry(int numX, int numY, const float *x, const float *y) override;
    void getXYGeometry(const float *&x, const float *&y) const override;
    SbVec2f getNodeXY(int i, int j) const override;
    const PbCell *fillCell(int i, int j) const override;
    /// From the bounds, in whichever order they are.
    void updateBoundingBox() override;

private:
    void setBounds(int numX, int numY, float xmin, float ymin, float xmax, float ymax);
    float xOf(int i) const { return m_xmin + static_cast<float>(i) * m_dx; }
    float yOf(int j) const { return m_ymin + static_cast<float>(j) * m_dy; }

    float m_xmin = 0;
    float m_xmax = 0;
    float m_dx = 0;
    float m_ymin = 0;
    float m_ymax = 0;
    float m_dy = 0;
    mutable std::vector<float> m_columns; ///< positions handed out by `getXYGeometry`
    mutable std::vector<float> m_rows;
    mutable PbPixelCell m_pixelCell;
    mutable PbQuadrangleCell m_quadrangleCell;
};

#endif
