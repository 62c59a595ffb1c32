#include <oravane/PoMesh2D.h>

#include "core/ClassTable.h"
#include "geometry/MeshPositions.h"

#include <oravane/PoMeshElement.h>

#include <Inventor/nodes/SoCoordinate3.h>

SO_KIT_SOURCE(PoMesh2D)

/// Points of the border polylines and the records that point into them; kept from one call to the next.
struct PoMesh2D::Borders {
    std::vector<Ppoint3> points;
    std::vector<Ppoint_list3> lists;
};

void PoMesh2D::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoMesh2D, PoMesh, "PoMesh");
}

PoMesh2D::PoMesh2D() : m_borders(std::make_unique<Borders>()) {
    SO_KIT_CONSTRUCTOR(PoMesh2D);
    SO_KIT_ADD_FIELD(zValuesIndex, (-1));
    SO_KIT_INIT_INSTANCE();
    watchFields({&zValuesIndex});
    setUpConnections(TRUE, TRUE);
}

PoMesh2D::~PoMesh2D() = default;

void PoMesh2D::setMesh(PbMesh2D *mesh) {
    m_mesh2D.set(mesh);
}

const PbMesh2D *PoMesh2D::getMesh() const {
    if (m_mesh2D.get())
        return m_mesh2D.get();
    return isStateValid() ? PoMeshElement::getMesh2D(getState()) : nullptr;
}

void PoMesh2D::preRebuild() {
    PoMesh::preRebuild();
    const PbMesh2D *mesh = getMesh();
    checkColoring(mesh);
    m_resolvedMesh = mesh && !mesh->isEmpty() ? mesh : nullptr;
}

const float *PoMesh2D::zOf(const PbMesh2D &mesh) const {
    const int index = zValuesIndex.getValue();
    const float *set = index >= 0 ? mesh.getValuesSet(index) : nullptr;
    return set ? set : mesh.getZcoord();
}

const float *PoMesh2D::valuesOf(const PbMesh2D &mesh) const {
    return valuesIndex.getValue() >= 0 ? mesh.getValuesSet(valuesIndex.getValue()) : nullptr;
}

SoCoordinate3 *PoMesh2D::makeSoCoordinate3(const float *z) {
    if (!m_resolvedMesh)
        return nullptr;
    m_coordinate3 = new SoCoordinate3;
    m_resolvedMesh->getNodesCoord(z, m_coordinate3->point);
    return m_coordinate3;
}

void PoMesh2D::getMeshLimit(Ppoint_list_list3 &limits) {
    limits = {0, nullptr};
    if (const PbMesh2D *mesh = getMesh())
        mesh->getLimits(this, limits);
}

template <class Grid>
void PoMesh2D::gridLimits(const Grid &grid, Ppoint_list_list3 &limits) {
    limits = {0, nullptr};
    int nx = 0, ny = 0;
    grid.getDim(nx, ny);
    if (nx < 1 || ny < 1)
        return;
    const float *z = zOf(grid);
    const auto positions = oravane::positionsOf(grid);
    auto &points = m_borders->points;
    points.clear();
    const auto add = [&](int i, int j) {
        const auto [x, y] = positions.node(i, j);
        points.push_back({x, y, z ? z[static_cast<std::size_t>(i) * static_cast<std::size_t>(ny) + j] : 0});
    };
    for (int i = 0; i < nx; ++i)
        add(i, 0);
    for (int j = 1; j < ny; ++j)
        add(nx - 1, j);
    for (int i = nx - 2; i >= 0; --i)
        add(i, ny - 1);
    for (int j = ny - 2; j >= 0; --j)
        add(0, j);
    m_borders->lists.assign(1, {static_cast<int>(points.size()), points.data()});
    limits = {1, m_borders->lists.data()};
}

#define ORAVANE_DEFINE(Mesh, prefix)                                                                         \
    void PoMesh2D::prefix##GetLimits(const Mesh *mesh, Ppoint_list_list3 &limits) {                          \
        gridLimits(*mesh, limits);                                                                           \
    }
ORAVANE_MESH2D_KINDS(ORAVANE_DEFINE)
#undef ORAVANE_DEFINE
