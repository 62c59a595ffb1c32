#include <oravane/PoMeshSides.h>

#include "core/ClassTable.h"
#include "mesh/OrientedCells.h"
#include "meshrep/CellColors.h"
#include "meshrep/FiniteRuns.h"

#include <oravane/PbCartesianGrid2D.h>
#include <oravane/PbParalCartesianGrid2D.h>
#include <oravane/PbPolarGrid2D.h>
#include <oravane/PbQuadrangleMesh2D.h>
#include <oravane/PbRegularCartesianGrid2D.h>
#include <oravane/PbTriangleMesh2D.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoQuadMesh.h>
#include <Inventor/nodes/SoVertexProperty.h>

SO_KIT_SOURCE(PoMeshSides)

void PoMeshSides::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoMeshSides, PoMesh2D, "PoMesh2D");
}

PoMeshSides::PoMeshSides() {
    SO_KIT_CONSTRUCTOR(PoMeshSides);
    SO_KIT_ADD_CATALOG_ENTRY(groupSides, SoGroup, TRUE, alternateRep, , TRUE);
    SO_KIT_ADD_FIELD(thresholdType, (THRESHOLD_ZMIN));
    SO_KIT_ADD_FIELD(thresholdValue, (0));
    SO_KIT_DEFINE_ENUM_VALUE(ThresholdType, THRESHOLD_ZMIN);
    SO_KIT_DEFINE_ENUM_VALUE(ThresholdType, THRESHOLD_ZMAX);
    SO_KIT_DEFINE_ENUM_VALUE(ThresholdType, THRESHOLD_VALUE);
    SO_KIT_SET_SF_ENUM_TYPE(thresholdType, ThresholdType);
    SO_KIT_INIT_INSTANCE();
    watchFields({&thresholdType, &thresholdValue});
    generatedParts({&groupSides});
    setDomainUsedForRebuild(FALSE);
    setUpConnections(TRUE, TRUE);
    setLightModel(SoLightModel::PHONG);
}

PoMeshSides::~PoMeshSides() = default;

void PoMeshSides::rebuild() {
    rebuildGroup("groupSides", SURFACE, [this](const PbMesh2D &mesh) { mesh.meshSides(this); });
}

float PoMeshSides::footOf(const PbMesh2D &mesh) const {
    float foot = thresholdValue.getValue();
    const int index = zValuesIndex.getValue(), type = thresholdType.getValue();
    if (index >= 0 && type == THRESHOLD_ZMIN)
        mesh.getMinValuesSet(index, foot);
    else if (index >= 0 && type == THRESHOLD_ZMAX)
        mesh.getMaxValuesSet(index, foot);
    return foot;
}

namespace {

using oravane::isFinite;

/// Normals of a wall whose upper edge is `top`: horizontal, across the mean of the two neighbour segments.
/// Repeated points keep the edge between their segments sharp. Their side agrees with the clockwise ordering
/// of the shape hints, which the toolkit's own normals of a quad mesh do not follow.
std::vector<SbVec3f> normalsOf(std::span<const SbVec3f> top, float foot) {
    double rise = 0;
    for (const SbVec3f &point : top)
        rise += static_cast<double>(point[2]) - static_cast<double>(foot);
    const float side = rise < 0 ? -1.0f : 1.0f;
    const std::size_t last = top.size() - 1;
    const bool isClosed = top.front() == top.back();
    std::vector<SbVec3f> normals;
    for (std::size_t k = 0; k <= last; ++k) {
        const std::size_t before = k > 0      ? k - 1
                                   : isClosed ? last - 1
                                              : 0,
                          after = k < last   ? k + 1
                                  : isClosed ? 1
                                             : last;
        const SbVec3f along = top[after] - top[before];
        SbVec3f normal(-side * along[1], side * along[0], 0);
        if (normal.normalize() == 0)
            normal.setValue(0, 0, -1);
        normals.push_back(normal);
    }
    return normals;
}

/// Two rows of points, the given ones and those below them at the foot.
void addWall(std::span<const SbVec3f> top, float foot, SoGroup &group) {
    const int count = static_cast<int>(top.size());
    auto *coordinates = new SoCoordinate3;
    coordinates->point.setNum(2 * count);
    SbVec3f *point = coordinates->point.startEditing();
    for (int k = 0; k < count; ++k) {
        point[k] = top[k];
        point[count + k].setValue(top[k][0], top[k][1], foot);
    }
    coordinates->point.finishEditing();
    auto *vertices = new SoVertexProperty;
    vertices->normalBinding = SoVertexProperty::PER_VERTEX;
    const std::vector<SbVec3f> normals = normalsOf(top, foot);
    vertices->normal.setValues(0, count, normals.data());
    vertices->normal.setValues(count, count, normals.data());
    auto *quads = new SoQuadMesh;
    quads->verticesPerColumn = 2;
    quads->verticesPerRow = count;
    quads->vertexProperty = vertices;
    group.addChild(coordinates);
    group.addChild(quads);
}

void addWalls(std::span<const SbVec3f> border, float foot, SoGroup &group) {
    oravane::forEachRun(
        border.size(), [&](std::size_t k) { return isFinite(border[k]); },
        [&](std::size_t first, std::size_t length) { addWall(border.subspan(first, length), foot, group); });
}

/// The border of a grid, each corner twice.
std::vector<SbVec3f> gridBorder(const PbGrid2D &grid, const float *z) {
    int nx = 0, ny = 0;
    grid.getDim(nx, ny);
    std::vector<SbVec3f> border;
    const auto add = [&](int i, int j) {
        SbVec3f point = grid.getNodeCoord(i, j);
        point[2] = z ? z[static_cast<std::size_t>(i) * static_cast<std::size_t>(ny) + j] : 0;
        border.push_back(point);
    };
    for (int i = 0; i < nx; ++i)
        add(i, 0);
    for (int j = 0; j < ny; ++j)
        add(nx - 1, j);
    for (int i = nx - 1; i >= 0; --i)
        add(i, ny - 1);
    for (int j = ny - 1; j >= 0; --j)
        add(0, j);
    return border;
}

} // namespace

template <class Mesh>
void PoMeshSides::buildWalls(const Mesh &mesh, const float *z, float foot) {
    if (!std::isfinite(foot))
        return;
    if constexpr (oravane::StructuredMesh<Mesh>) {
        addWalls(gridBorder(mesh, z), foot, *m_group);
    } else {
        Ppoint_list_list3 limits;
        getMeshLimit(limits);
        std::vector<SbVec3f> border;
        for (const Ppoint_list3 &line : std::span(limits.lists, static_cast<std::size_t>(limits.numLists))) {
            border.clear();
            for (const Ppoint3 &point : std::span(line.points, static_cast<std::size_t>(line.numPoints)))
                border.emplace_back(point.x, point.y, point.z);
            addWalls(border, foot, *m_group);
        }
    }
}

#define ORAVANE_DEFINE(Mesh, meshPrefix, prefix)                                                             \
    void PoMeshSides::prefix##Sides(const Mesh *mesh) {                                                      \
        if (isBuilding(mesh))                                                                                \
            buildWalls(*mesh, zOf(*mesh), footOf(*mesh));                                                    \
    }                                                                                                        \
    void PoMeshSides::prefix##SidesInhColr(const Mesh *mesh, const float *z, float foot) {                   \
        if (isBuilding(mesh))                                                                                \
            buildWalls(*mesh, z, foot);                                                                      \
    }                                                                                                        \
    void PoMeshSides::prefix##SidesMapColr(const Mesh *mesh, const float *, const float *z, float foot) {    \
        if (isBuilding(mesh))                                                                                \
            buildWalls(*mesh, z, foot);                                                                      \
    }                                                                                                        \
    void PoMeshSides::prefix##SidesAvergColr(const Mesh *mesh, const float *, const float *z, float foot) {  \
        if (isBuilding(mesh))                                                                                \
            buildWalls(*mesh, z, foot);                                                                      \
    }                                                                                                        \
    void PoMeshSides::prefix##SidesContColr(const Mesh *mesh, const float *, const float *z, float foot) {   \
        if (isBuilding(mesh))                                                                                \
            buildWalls(*mesh, z, foot);                                                                      \
    }
ORAVANE_MESH2D_KINDS(ORAVANE_DEFINE)
#undef ORAVANE_DEFINE
