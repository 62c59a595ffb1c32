#ifndef ORAVANE_POMESHLINES_H
#define ORAVANE_POMESHLINES_H

#include <oravane/PoMesh2D.h>

namespace oravane {
class WireFrame;
}

/// Draws the edges of all cells of a surface mesh: a wire frame.
///
/// \code
///   auto *wires = new PoMeshLines;
///   wires->setMesh(&mesh);
///   wires->set("appearance.drawStyle", "lineWidth 0.3");
///   root->addChild(wires);
/// \endcode
///
/// Generates `groupLines`: a material binding (unless inherited), coordinates with all nodes, and a set of
/// lines; and the part `appearance.material` (null under COLOR_INHERITED). A structured grid has one line for
/// each i, along j, and then one for each j, along i. An indexed mesh has one closed line for each cell; an
/// edge between two cells is drawn twice. Lines break at nodes without a finite position.
///
/// Any colouring other than COLOR_INHERITED colours the nodes, and the colour goes over from one to the next.
class ORAVANE_API PoMeshLines : public PoMesh2D {
    SO_KIT_HEADER(PoMeshLines);
    SO_KIT_CATALOG_ENTRY_HEADER(groupLines);

public:
    PoMeshLines();
    static void initClass();
    void rebuild() override;

    /// \name Called back by `PbMesh2D::meshLines`, one family for each kind of mesh
    /// The first chooses the builder of the colouring in force; the builders add to the group of the rebuild
    /// under way. `values` and `z` have one float for each node; null values give geometry only, null z gives
    /// 0. The builder for COLOR_AVERAGE, which no colouring chooses, gives each segment the colour of the
    /// mean of its ends; that for COLOR_CONTOURING is the same as for COLOR_MAPPING. Outside
    /// of a rebuild, and for a null mesh, they do nothing.
    /// @{
#define ORAVANE_DECLARE(Mesh, meshPrefix, prefix)                                                            \
    void prefix##Lines(const Mesh *mesh);                                                                    \
    void prefix##LinesInhColr(const Mesh *mesh, const float *z);                                             \
    void prefix##LinesMapColr(const Mesh *mesh, const float *values, const float *z);                        \
    void prefix##LinesAvergColr(const Mesh *mesh, const float *values, const float *z);                      \
    void prefix##LinesContColr(const Mesh *mesh, const float *values, const float *z);
    ORAVANE_MESH2D_KINDS(ORAVANE_DECLARE)
#undef ORAVANE_DECLARE
    /// @}

protected:
    ~PoMeshLines() override;
    void preRebuild() override;
    void addElementsAllCaches() override;

private:
    template <class Mesh>
    void draw(const Mesh &mesh);
    template <class Mesh>
    void buildGeometry(const Mesh &mesh, const float *z, oravane::WireFrame &wires);
    template <class Mesh>
    void buildPerNode(const Mesh &mesh, const float *values, const float *z);
    template <class Mesh>
    void buildPerSegment(const Mesh &mesh, const float *values, const float *z);
    void addBinding(int value);
};

#endif
