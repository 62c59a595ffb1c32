#ifndef ORAVANE_PBPOLARGRID2D_H
#define ORAVANE_PBPOLARGRID2D_H

#include <oravane/MeshKinds.h>
#include <oravane/PbGrid2D.h>

/// Structured grid of numX radii by numY angles in radians: node (i, j) is at radius[i] * cos(angle[j]),
/// radius[i] * sin(angle[j]), computed in double precision. It has no cell objects and no point location:
/// `getCell` is null and `getArea` 0. Its representations work from the nodes.
///
/// \code
///   const float radius[] = {1, 2, 3}, angle[] = {0, 0.5f, 1};
///   PbPolarGrid2D grid(3, 3, radius, angle, 1);
/// \endcode
class ORAVANE_API PbPolarGrid2D : public PbGrid2D {
public:
    explicit PbPolarGrid2D(int isDataDuplicate);
    /// `radius`: numX values, `angle`: numY values, `z`: numX * numY values. Refused arguments leave the grid
    /// empty.
    PbPolarGrid2D(int numX, int numY, const float *radius, const float *angle, int isDataDuplicate);
    PbPolarGrid2D(int numX, int numY, const float *radius, const float *angle, const float *z,
                  int isDataDuplicate);
    PbPolarGrid2D(const PbPolarGrid2D &source) = default;
    /// Reports the removal of the old sets, and in the end `CHANGE_GENERAL`.
    PbPolarGrid2D &operator=(const PbPolarGrid2D &source);

    void getNodesCoord(const float *z, SoMFVec3f &coords) const override;

    ORAVANE_MESH2D_DISPATCH

protected:
    void setXYGeometry(int numX, int numY, const float *x, const float *y) override;
    void getXYGeometry(const float *&x, const float *&y) const override;
    SbVec2f getNodeXY(int i, int j) const override;
    const PbCell *fillCell(int i, int j) const override;

private:
    PbDataBlock<float> m_radius;
    PbDataBlock<float> m_angle;
};

#endif
