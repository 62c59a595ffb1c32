#ifndef ORAVANE_POMESHFILLED_H
#define ORAVANE_POMESHFILLED_H

#include <oravane/PoMesh2D.h>

namespace oravane {
class OrientedCells;
}

/// Draws a surface mesh as a filled surface, one polygon a cell, in any of the four colourings; lit.
///
/// \code
///   auto *terrain = new PoMeshFilled;
///   terrain->setMesh(&grid);                         // a PbRegularCartesianGrid2D, say
///   terrain->valuesIndex = 1;
///   terrain->coloringType = PoMesh::COLOR_CONTOURING;
///   root->addChild(terrain);                         // behind a data mapping and a list of isovalues
/// \endcode
///
/// Generates `groupFilled`: shape hints, a material binding (unless inherited), coordinates, one shape; and
/// the part `appearance.material` (null under COLOR_INHERITED). A structured grid is a quad mesh, an indexed
/// mesh a set of faces. Cells that a data mapping makes almost invisible are left out (see
/// `PoBase::deleteTransparencyParts`), and so are cells for which it has no colour, and cells with a node
/// whose value or position is not finite.
class ORAVANE_API PoMeshFilled : public PoMesh2D {
    SO_KIT_HEADER(PoMeshFilled);
    SO_KIT_CATALOG_ENTRY_HEADER(groupFilled);

public:
    PoMeshFilled();
    static void initClass();
    void rebuild() override;

    /// \name Called back by `PbMesh2D::meshFilled`, one family for each kind of mesh
    /// The first chooses the builder of the colouring in force; the builders add to the group of the rebuild
    /// under way. `values` and `z` have one float for each node; null values give geometry only, null z gives
    /// 0. Outside of a rebuild, and for a null mesh, they do nothing.
    /// @{
#define ORAVANE_DECLARE(Mesh, prefix, linesPrefix)                                                           \
    void prefix##Filled(const Mesh *mesh);                                                                   \
    void prefix##FilledInhColr(const Mesh *mesh, const float *z);                                            \
    void prefix##FilledMapColr(const Mesh *mesh, const float *values, const float *z);                       \
    void prefix##FilledAvergColr(const Mesh *mesh, const float *values, const float *z);                     \
    void prefix##FilledContColr(const Mesh *mesh, const float *values, const float *z);
    ORAVANE_MESH2D_KINDS(ORAVANE_DECLARE)
#undef ORAVANE_DECLARE
    /// @}

protected:
    ~PoMeshFilled() override;
    void preRebuild() override;
    void addElementsAllCaches() override;

private:
    template <class Mesh>
    void fill(const Mesh &mesh);
    template <class Mesh>
    void buildGeometry(const Mesh &mesh, const float *z);
    template <class Grid>
    void buildGrid(const Grid &grid, const float *z);
    void buildFaces(const oravane::OrientedCells &cells, const float *z);
    template <class Mesh>
    void buildPerNode(const Mesh &mesh, const float *values, const float *z);
    template <class Mesh>
    void buildPerCell(const Mesh &mesh, const float *values, const float *z);
    template <class Mesh>
    void buildBands(const Mesh &mesh, const float *values, const float *z);

    void addBinding(int value);
    void makeMaterial(const float *values, std::size_t count);

    std::vector<float> m_cellValues; ///< scratch, kept from one rebuild to the next
    std::vector<float> m_maskedValues;
};

#endif
