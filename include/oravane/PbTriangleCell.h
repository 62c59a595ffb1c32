#ifndef ORAVANE_PBTRIANGLECELL_H
#define ORAVANE_PBTRIANGLECELL_H

#include <oravane/PbCell.h>

/// Triangle in the plane z = 0. With (u, v) its parametric coordinates a point is
/// (1 - u - v) * node 0 + u * node 1 + v * node 2. Edges: (0,1), (1,2), (2,0).
class ORAVANE_API PbTriangleCell : public PbCell {
public:
    /// The unit triangle (0,0), (1,0), (0,1). The mesh is the owner of the cell; may be null.
    explicit PbTriangleCell(const PbMesh *mesh);

    /// Fills the cell; `x` and `y` have one value per node of the mesh, `n0` to `n2` are the nodes.
    /// Returns 1. Three nodes on a line make the cell invalid: nothing else changes, and 0 is returned;
    /// likewise for null arrays.
    int set(int index, const float *x, const float *y, int n0, int n1, int n2);
    /// The same for a null `z`. A triangle in space is not supported: it makes the cell invalid and returns
    /// 0.
    int set(int index, const float *x, const float *y, const float *z, int n0, int n1, int n2);

    float getVolume() const override { return 0; }
    float getArea() const override { return getTriangleArea(0, 1, 2); }
    /// The third component of `pcoord` keeps its value. An invalid cell contains nothing.
    int locatePoint(const SbVec3f &point, float tolerance, SbVec3f &pcoord) const override;
    void getWeight(const SbVec3f &pcoord, float *weights) const override;

private:
    /// Inverse of the map from parametric coordinates to the plane: u = x a + y c - offsetU, and
    /// v = x b + y d - offsetV.
    float m_offsetU = 0;
    float m_offsetV = 0;
    float m_a = 1;
    float m_b = 0;
    float m_c = 0;
    float m_d = 1;
    bool m_isValid = true;
};

#endif
