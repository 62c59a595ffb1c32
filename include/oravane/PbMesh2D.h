#ifndef ORAVANE_PBMESH2D_H
#define ORAVANE_PBMESH2D_H

#include <oravane/PbMesh.h>
#include <oravane/PbSortedArray.h>

#include <Inventor/SbBox2f.h>
#include <Inventor/SbVec2f.h>

class PiContouring;
class PoMesh2D;
class PoMesh2DVec;
class PoMeshFilled;
class PoMeshLines;
class PoMeshSides;
class SoMFVec3f;
struct Ppoint_list_list3;

/// Parent of all surface meshes: cells in the x-y plane, with an optional z per node, which makes it a height
/// surface.
class ORAVANE_API PbMesh2D : public PbMesh {
public:
    /// Box in the plane; an empty box for an empty mesh.
    virtual SbBox2f getBoundingBox() const;
    /// One float per node, or null when z is 0 everywhere.
    virtual const float *getZcoord() const { return m_zCoord.data(); }

    /// Replaces the values of `coords` by all nodes in the order of their index. Their z is taken from the
    /// argument, one float per node, and is 0 when it is null; the z of the mesh plays no part.
    virtual void getNodesCoord(const float *z, SoMFVec3f &coords) const;

    /// Call back the function of the representation for the exact kind of this mesh, so that a representation
    /// never tests the kind. Here they do nothing.
    virtual void meshLines(PoMeshLines *lines) const;
    virtual void meshFilled(PoMeshFilled *filled) const;
    virtual void meshSides(PoMeshSides *sides) const;
    virtual void meshContouring(PiContouring *contouring, const float *z) const;
    virtual void getLimits(PoMesh2D *mesh, Ppoint_list_list3 &limits) const;
    virtual void mesh2DVec(PoMesh2DVec *vectors) const;

    float getVolume() const override { return 0; }
    /// Sum over the cells that `getCell` yields.
    float getArea() const override;

    using PbMesh::addVecsSet;
    /// Vectors in the plane: always copied, with z = 0.
    void addVecsSet(int index, const SbVec2f *vectors);

protected:
    explicit PbMesh2D(int isDataDuplicate);
    PbMesh2D(const PbMesh2D &source) = default;
    PbMesh2D &operator=(const PbMesh2D &source) = default;

    /// Takes `num` z values; null, or 0, removes the z.
    void setZCoord(int num, const float *z);
    /// z of a node inside of the mesh.
    float getNodeZ(int node) const { return node < m_zCoord.getNum() ? m_zCoord[node] : 0; }

    /// Null: no search.
    const PbCell *findContainingCellProtected(const SbVec3f &point, float tolerance, SbVec3f &pcoord,
                                              PbArrayOfInt &testedCells) override;

    PbDataBlock<float> m_zCoord;
};

#endif
