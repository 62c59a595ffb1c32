#include <oravane/PoMesh2D.h>

#include "core/ClassTable.h"
#include "geometry/BorderLoops.h"
#include "geometry/MeshPositions.h"
#include "mesh/OrientedCells.h"

#include <oravane/PbQuadrangleMesh2D.h>
#include <oravane/PbTriangleMesh2D.h>
#include <oravane/PoMeshElement.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoShapeHints.h>

SO_KIT_SOURCE(PoMesh2D)

/// Points of the border polylines and the records that point into them; kept from one call to the next.
struct PoMesh2D::Borders {
    std::vector<Ppoint3> points;
    std::vector<int> sizes; ///< number of points of each polyline
    std::vector<Ppoint_list3> lists;
    oravane::BorderLoops loops;
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

const PbMesh *PoMesh2D::meshToDraw() const {
    return getMesh();
}

void PoMesh2D::preRebuild() {
    PoMesh::preRebuild();
    const PbMesh2D *mesh = getMesh();
    m_resolvedMesh = mesh && !mesh->isEmpty() ? mesh : nullptr;
}

void PoMesh2D::rebuildGroup(const char *part, GroupKind kind,
                            const std::function<void(const PbMesh2D &)> &fill) {
    preRebuild();
    SoGroup *group = nullptr;
    if (m_resolvedMesh) {
        group = new SoGroup;
        group->ref();
        m_group = group;
        if (kind == SURFACE) {
            m_shapeHints = new SoShapeHints;
            m_shapeHints->vertexOrdering = SoShapeHints::CLOCKWISE;
            m_shapeHints->creaseAngle = 0.8f;
            m_group->addChild(m_shapeHints);
        }
        fill(*m_resolvedMesh);
        // Before the parts are set, which tells the scene: a sensor of the program may then delete the
        // mapping.
        deleteTransparencyParts(resolved().dataMapping, m_material, m_materialBinding, group);
        m_group = nullptr;
    }
    setPart("appearance.material", m_material);
    setPart(part, group);
    if (group)
        group->unref();
    postRebuild();
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
void PoMesh2D::addGridBorder(const Grid &grid, const float *z) {
    int nx = 0, ny = 0;
    grid.getDim(nx, ny);
    if (nx < 1 || ny < 1)
        return;
    const auto positions = oravane::positionsOf(grid);
    auto &points = m_borders->points;
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
    m_borders->sizes.push_back(static_cast<int>(points.size()));
}

// The order of a triangle's sides decides on the order of the polylines.
void PoMesh2D::addIndexedBorder(const PbIndexedMesh2D &mesh, const float *z) {
    oravane::BorderLoops &loops = m_borders->loops;
    loops.clear();
    oravane::OrientedCells(mesh).forEachAsGiven([&](int, std::span<const int> nodes) {
        for (std::size_t k = 0; k + 1 < nodes.size(); ++k)
            loops.addSide(nodes[k], nodes[k + 1]);
        loops.addSide(nodes.front(), nodes.back());
    });
    loops.join(mesh.getNumNodes());
    int numNodes = 0;
    const float *x = nullptr, *y = nullptr;
    mesh.getNodes(numNodes, x, y);
    for (std::size_t k = 0; k < loops.numLoops(); ++k) {
        for (const int node : loops.loop(k))
            m_borders->points.push_back({x[node], y[node], z ? z[node] : 0});
        m_borders->sizes.push_back(static_cast<int>(loops.loop(k).size()));
    }
}

template <class Mesh>
void PoMesh2D::limitsOf(const Mesh *mesh, Ppoint_list_list3 &limits) {
    m_borders->points.clear();
    m_borders->sizes.clear();
    m_borders->lists.clear();
    if constexpr (oravane::StructuredMesh<Mesh>) {
        if (mesh)
            addGridBorder(*mesh, zOf(*mesh));
    } else if (mesh) {
        addIndexedBorder(*mesh, zOf(*mesh));
    }
    Ppoint3 *point = m_borders->points.data();
    for (const int size : m_borders->sizes) {
        m_borders->lists.push_back({size, point});
        point += size;
    }
    limits = {static_cast<int>(m_borders->lists.size()), m_borders->lists.data()};
}

#define ORAVANE_DEFINE(Mesh, prefix, linesPrefix)                                                            \
    void PoMesh2D::prefix##GetLimits(const Mesh *mesh, Ppoint_list_list3 &limits) {                          \
        limitsOf(mesh, limits);                                                                              \
    }
ORAVANE_MESH2D_KINDS(ORAVANE_DEFINE)
#undef ORAVANE_DEFINE
