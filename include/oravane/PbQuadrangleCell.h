#ifndef ORAVANE_PBQUADRANGLECELL_H
#define ORAVANE_PBQUADRANGLECELL_H

#include <oravane/PbCell.h>

/// Cell of four nodes in order around it, in the plane z = 0 or in space, with bilinear interpolation: (u, v)
/// is (0,0), (1,0), (1,1), (0,1) at nodes 0 to 3. Edges: (0,1), (1,2), (2,3), (3,0).
class ORAVANE_API PbQuadrangleCell : public PbCell {
public:
    /// The unit square. The mesh is the owner of the cell; may be null.
    explicit PbQuadrangleCell(const PbMesh *mesh);

    /// Fills the cell; `x`, `y` and `z` have one value per node of the mesh, a null `z` is the plane z = 0.
    /// Returns 1; 0 and no change for null `x` or `y`.
    int set(int index, const float *x, const float *y, int n0, int n1, int n2, int n3);
    int set(int index, const float *x, const float *y, const float *z, int n0, int n1, int n2, int n3);
    /// Cell of a structured grid with sides along the axes. Its nodes (i,j), (i+1,j), (i+1,j+1), (i,j+1) are
    /// given as they are numbered in the grid; the index of the cell follows from these numbers.
    int set(float xmin, float ymin, float xmax, float ymax, const float *z, int n0, int n1, int n2, int n3);

    float getVolume() const override { return 0; }
    /// Sum of the triangles (0,1,2) and (0,2,3).
    float getArea() const override { return getTriangleArea(0, 1, 2) + getTriangleArea(0, 2, 3); }
    /// Newton iteration from the centre, at most 10 steps. In space the point is first projected on the plane
    /// through the cell. `pcoord` gets the last (u, v, 0) in every case.
    int locatePoint(const SbVec3f &point, float tolerance, SbVec3f &pcoord) const override;
    void getWeight(const SbVec3f &pcoord, float *weights) const override;
    /// Derivatives of the four weights with respect to u, then of the four with respect to v: 8 floats.
    void getDerivs(const SbVec3f &pcoord, float *derivs) const;

private:
    int locatePointOnXY(const SbVec3f &point, float tolerance, SbVec3f &pcoord, int axis1, int axis2) const;

    bool m_isOnXY = true;
};

#endif
