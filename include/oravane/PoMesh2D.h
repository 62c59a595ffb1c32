#ifndef ORAVANE_POMESH2D_H
#define ORAVANE_POMESH2D_H

#include <oravane/MeshKinds.h>
#include <oravane/PlanarRecords.h>
#include <oravane/PoMesh.h>

#include <Inventor/fields/SoSFShort.h>

#include <functional>

#define ORAVANE_DECLARE(Mesh, prefix, linesPrefix) class Mesh;
ORAVANE_MESH2D_KINDS(ORAVANE_DECLARE)
#undef ORAVANE_DECLARE
class PbMesh2D;

/// Base of the representations of a surface mesh.
///
/// The third coordinate of a node comes from the value set `zValuesIndex` when that is not negative and the
/// mesh has it, else from the mesh's own z; without either it is 0.
class ORAVANE_API PoMesh2D : public PoMesh {
    SO_KIT_HEADER(PoMesh2D);

public:
    SoSFShort zValuesIndex; ///< value set that gives each node its z, default -1: the mesh's own

    static void initClass();

    void setMesh(PbMesh2D *mesh);
    const PbMesh2D *getMesh() const;

    /// The border of the mesh as closed polylines, the first point repeated as the last. The records and
    /// their points belong to the kit and are valid until its next rebuild or the next call. Without a mesh
    /// there are none.
    ///
    /// A structured grid of nx by ny nodes has one polyline of 2 (nx + ny) - 3 points: i ascending at j = 0,
    /// j ascending at the last i, i descending at the last j, j descending at i = 0. An empty grid has none.
    /// An indexed mesh has one for each loop of the sides that belong to an odd number of cells: its outline,
    /// and one for each hole.
    void getMeshLimit(Ppoint_list_list3 &limits);

    /// Called back by `PbMesh2D::getLimits`, one for each kind of mesh. A null mesh has no border.
#define ORAVANE_DECLARE(Mesh, prefix, linesPrefix)                                                           \
    void prefix##GetLimits(const Mesh *mesh, Ppoint_list_list3 &limits);
    ORAVANE_MESH2D_KINDS(ORAVANE_DECLARE)
#undef ORAVANE_DECLARE

protected:
    PoMesh2D();
    ~PoMesh2D() override;

    /// The mesh of the rebuild under way; null without one, and for an empty one.
    const PbMesh2D *resolvedMesh() const {
        return m_resolvedMesh;
    }

    /// One float for each node, or null.
    const float *zOf(const PbMesh2D &mesh) const;
    /// The values of `valuesIndex`, or null.
    const float *valuesOf(const PbMesh2D &mesh) const;

    /// Whether the builders of a representation may draw `mesh`: there is one, and a rebuild is under way.
    bool isBuilding(const PbMesh2D *mesh) const {
        return mesh && m_group;
    }
    /// Values as they can colour something: null without a mapping.
    const float *colorable(const float *values) const {
        return resolved().dataMapping ? values : nullptr;
    }

    /// A new node with all nodes of the mesh of the rebuild under way, in the order of their numbers; `z` has
    /// one float for each, or is null for 0. Also stored as `m_coordinate3`. Null without a mesh.
    SoCoordinate3 *makeSoCoordinate3(const float *z);

    const PbMesh *meshToDraw() const override;
    void preRebuild() override;

    /// The whole rebuild of a kit that shows a mesh by one generated group. `fill` adds to `m_group`, and may
    /// make `m_material` and `m_materialBinding`; what the mapping makes invisible is left out, and the
    /// material and the group become the parts `appearance.material` and `part`. Without a mesh both are
    /// null. A surface begins with shape hints: clockwise, with a crease angle of 0.8.
    enum GroupKind { LINES, SURFACE };
    void rebuildGroup(const char *part, GroupKind kind, const std::function<void(const PbMesh2D &)> &fill);

private:
    struct Borders;

    template <class Mesh>
    void limitsOf(const Mesh *mesh, Ppoint_list_list3 &limits);
    template <class Grid>
    void addGridBorder(const Grid &grid, const float *z);
    void addIndexedBorder(const PbIndexedMesh2D &mesh, const float *z);

    PoConnection<PbMesh2D> m_mesh2D{this};
    const PbMesh2D *m_resolvedMesh = nullptr;
    std::unique_ptr<Borders> m_borders;
};

#endif
