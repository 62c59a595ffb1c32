#ifndef ORAVANE_POMESHSIDES_H
#define ORAVANE_POMESHSIDES_H

#include <oravane/PoMesh2D.h>

#include <Inventor/fields/SoSFFloat.h>

/// Hangs a vertical wall from the border of a surface mesh down, or up, to a common foot; lit. With it a
/// height surface looks like a block.
///
/// \code
///   auto *walls = new PoMeshSides;
///   walls->setMesh(&grid);
///   walls->zValuesIndex = 0;                      // the foot: the smallest value of this set
///   root->addChild(walls);
/// \endcode
///
/// Generates `groupSides`: shape hints, and coordinates and a quad mesh of two rows for each border polyline,
/// the border above and the foot below. On a structured grid each corner stands twice, so that the edge is
/// sharp; the polyline has 2 (nx + ny) points. Walls have no colour of their own: all colourings look alike,
/// and `appearance.material` is null. Walls have a gap where a border node has no finite position.
class ORAVANE_API PoMeshSides : public PoMesh2D {
    SO_KIT_HEADER(PoMeshSides);
    SO_KIT_CATALOG_ENTRY_HEADER(groupSides);

public:
    /// How the foot is chosen. The first two ask the value set `zValuesIndex`; without it, as when the height
    /// is the mesh's own z, they fall back on `thresholdValue`.
    enum ThresholdType : int {
        THRESHOLD_ZMIN = 0,  ///< the smallest value
        THRESHOLD_ZMAX = 1,  ///< the largest value
        THRESHOLD_VALUE = 2, ///< `thresholdValue`
    };

    PoSFEnum thresholdType;   ///< default THRESHOLD_ZMIN
    SoSFFloat thresholdValue; ///< default 0

    PoMeshSides();
    static void initClass();
    void rebuild() override;

    /// \name Called back by `PbMesh2D::meshSides`, one family for each kind of mesh
    /// `z` has one float for each node, or is null for 0; `foot` is the height of the foot. Outside of
    /// a rebuild, and for a null mesh, they do nothing.
    /// @{
#define ORAVANE_DECLARE(Mesh, meshPrefix, prefix)                                                            \
    void prefix##Sides(const Mesh *mesh);                                                                    \
    void prefix##SidesInhColr(const Mesh *mesh, const float *z, float foot);                                 \
    void prefix##SidesMapColr(const Mesh *mesh, const float *values, const float *z, float foot);            \
    void prefix##SidesAvergColr(const Mesh *mesh, const float *values, const float *z, float foot);          \
    void prefix##SidesContColr(const Mesh *mesh, const float *values, const float *z, float foot);
    ORAVANE_MESH2D_KINDS(ORAVANE_DECLARE)
#undef ORAVANE_DECLARE
    /// @}

protected:
    ~PoMeshSides() override;

private:
    float footOf(const PbMesh2D &mesh) const;
    template <class Mesh>
    void buildWalls(const Mesh &mesh, const float *z, float foot);
};

#endif
