#ifndef ORAVANE_PBPIXELCELL_H
#define ORAVANE_PBPIXELCELL_H

#include <oravane/PbCell.h>

/// Rectangle of a grid with sides along the axes, in the plane z = 0. Nodes, edges and weights are those of
/// `PbQuadrangleCell`; location and interpolation are direct. In a grid that runs backwards max is below min;
/// lengths and the area stay positive.
class ORAVANE_API PbPixelCell : public PbCell {
public:
    /// The unit square. The mesh is the owner of the cell; may be null.
    explicit PbPixelCell(const PbMesh *mesh);

    /// Fills the cell (i, j) of a grid with `ny` nodes per column, from x[i], x[i+1], y[j], y[j+1]. Node (i,
    /// j) has the index i * ny + j, the cell j + i * (ny - 1). Returns 1; 0 and no change for null arrays.
    int set(const float *x, const float *y, int ny, int i, int j);
    int set(float xmin, float ymin, float xmax, float ymax, int ny, int i, int j);

    float getLongestEdgeLength() const override;
    SbBox3f getBoundingBox() const override;
    SbVec3f getCenter() const override;
    float getVolume() const override { return 0; }
    float getArea() const override;
    /// `pcoord` is written for a point outside too.
    int locatePoint(const SbVec3f &point, float tolerance, SbVec3f &pcoord) const override;
    void getWeight(const SbVec3f &pcoord, float *weights) const override;
    using PbCell::getValue;
    float getValue(const SbVec3f &pcoord, const float *values) const override;

private:
    float m_xmin = 0;
    float m_ymin = 0;
    float m_xmax = 1;
    float m_ymax = 1;
    float m_dx = 1;
    float m_dy = 1;
};

#endif
