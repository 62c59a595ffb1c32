#include <oravane/PoMeshFilled.h>

#include "attributes/MaterialColors.h"
#include "core/ClassTable.h"
#include "geometry/MeshPositions.h"
#include "mesh/OrientedCells.h"
#include "meshrep/CellColors.h"

#include <oravane/PbDataMapping.h>
#include <oravane/PbQuadrangleMesh2D.h>
#include <oravane/PbTriangleMesh2D.h>
#include <oravane/PiContouringFilled.h>
#include <oravane/PoDataMappingElement.h>
#include <oravane/PoIsovaluesListElement.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoQuadMesh.h>
#include <Inventor/nodes/SoVertexProperty.h>

#include <algorithm>
#include <limits>
#include <type_traits>
#include <vector>

SO_KIT_SOURCE(PoMeshFilled)

void PoMeshFilled::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoMeshFilled, PoMesh2D, "PoMesh2D");
}

PoMeshFilled::PoMeshFilled() {
    SO_KIT_CONSTRUCTOR(PoMeshFilled);
    SO_KIT_ADD_CATALOG_ENTRY(groupFilled, SoGroup, TRUE, alternateRep, , TRUE);
    SO_KIT_INIT_INSTANCE();
    generatedParts({&groupFilled});
    setDomainUsedForRebuild(FALSE);
    setUpConnections(TRUE, TRUE);
    setLightModel(SoLightModel::PHONG);
}

PoMeshFilled::~PoMeshFilled() = default;

void PoMeshFilled::preRebuild() {
    PoMesh2D::preRebuild();
    addColoringElements();
}

void PoMeshFilled::addElementsAllCaches() {
    PoMesh2D::addElementsAllCaches();
    PoDataMappingElement::get(getState());
    PoIsovaluesListElement::get(getState());
}

void PoMeshFilled::rebuild() {
    rebuildGroup("groupFilled", SURFACE, [this](const PbMesh2D &mesh) { mesh.meshFilled(this); });
}

template <class Mesh>
void PoMeshFilled::fill(const Mesh &mesh) {
    m_material = nullptr;
    m_materialBinding = nullptr;
    const float *z = zOf(mesh), *values = valuesOf(mesh);
    switch (resolved().coloring) {
    case COLOR_INHERITED:
        buildGeometry(mesh, z);
        break;
    case COLOR_AVERAGE:
        buildPerCell(mesh, values, z);
        break;
    case COLOR_MAPPING:
        buildPerNode(mesh, values, z);
        break;
    case COLOR_CONTOURING:
        buildBands(mesh, values, z);
        break;
    }
}

void PoMeshFilled::addBinding(int value) {
    m_materialBinding = new SoMaterialBinding;
    m_materialBinding->value = static_cast<SoMaterialBinding::Binding>(value);
    m_group->addChild(m_materialBinding);
}

namespace {

/// Fills a field of known size in place.
template <class Field, class Fill>
void edit(Field &field, std::size_t count, Fill fill) {
    field.setNum(static_cast<int>(count));
    fill(field.startEditing());
    field.finishEditing();
}

/// Faces of the cells of a mesh, but for those that cannot be drawn: with less than three nodes, or with one
/// that has no finite position.
class SoundFaces {
public:
    explicit SoundFaces(std::span<const SbVec3f> nodes) : m_nodes(nodes) {}

    void add(int cell, std::span<const int> face) {
        const bool isSound = std::all_of(face.begin(), face.end(),
                                         [this](int node) { return oravane::isFinite(m_nodes[node]); });
        if (face.size() < 3 || !isSound)
            return;
        m_coords.insert(m_coords.end(), face.begin(), face.end());
        m_coords.push_back(-1);
        m_cells.push_back(cell);
    }

    /// The shape. Under a binding for each cell, and when cells are missing, the faces get the numbers of
    /// their cells, and the binding becomes `indexed`.
    SoIndexedFaceSet *newShape(std::size_t numCells, SoMaterialBinding *binding,
                               SoMaterialBinding::Binding indexed) const {
        auto *faces = new SoIndexedFaceSet;
        faces->coordIndex.setNum(0);
        faces->coordIndex.setValues(0, static_cast<int>(m_coords.size()), m_coords.data());
        const bool isPerCell = binding && binding->value.getValue() != SoMaterialBinding::PER_VERTEX_INDEXED;
        if (isPerCell && m_cells.size() != numCells) {
            binding->value = indexed;
            faces->materialIndex.setValues(0, static_cast<int>(m_cells.size()), m_cells.data());
        }
        return faces;
    }

private:
    std::span<const SbVec3f> m_nodes;
    std::vector<std::int32_t> m_coords, m_cells;
};

std::span<const SbVec3f> pointsOf(const SoCoordinate3 &coordinates) {
    return {coordinates.point.getValues(0), static_cast<std::size_t>(coordinates.point.getNum())};
}

/// Calls `take(x, y)` for each node, in the order of their numbers.
template <class Mesh, class Take>
void forEachPosition(const Mesh &mesh, Take take) {
    if constexpr (oravane::StructuredMesh<Mesh>) {
        int nx = 0, ny = 0;
        mesh.getDim(nx, ny);
        const auto positions = oravane::positionsOf(mesh);
        for (int i = 0; i < nx; ++i) {
            for (int j = 0; j < ny; ++j) {
                const auto [x, y] = positions.node(i, j);
                take(x, y);
            }
        }
    } else {
        int numNodes = 0;
        const float *x = nullptr, *y = nullptr;
        mesh.getNodes(numNodes, x, y);
        for (int node = 0; node < numNodes; ++node)
            take(x[node], y[node]);
    }
}

/// Normals of a grid of nodes, for the clockwise ordering of the shape hints. The toolkit's own normals of a
/// quad mesh do not follow the ordering, and turn lit surfaces black. One normal serves a flat grid.
SoVertexProperty *newNormals(int nx, int ny, std::span<const SbVec3f> nodes, bool isFlat) {
    const auto at = [&](int i, int j) -> const SbVec3f & {
        return nodes[static_cast<std::size_t>(i) * ny + j];
    };
    const auto normal = [&](int i, int j) {
        const SbVec3f alongI = at(std::min(i + 1, nx - 1), j) - at(std::max(i - 1, 0), j);
        const SbVec3f alongJ = at(i, std::min(j + 1, ny - 1)) - at(i, std::max(j - 1, 0));
        SbVec3f result = alongJ.cross(alongI);
        if (result.normalize() == 0)
            result.setValue(0, 0, -1);
        return result;
    };
    auto *normals = new SoVertexProperty;
    normals->normalBinding = isFlat ? SoVertexProperty::OVERALL : SoVertexProperty::PER_VERTEX;
    if (isFlat) {
        normals->normal.setValue(normal(0, 0));
        return normals;
    }
    edit(normals->normal, nodes.size(), [&](SbVec3f *out) {
        for (int i = 0; i < nx; ++i)
            for (int j = 0; j < ny; ++j)
                *out++ = normal(i, j);
    });
    return normals;
}

} // namespace

template <class Mesh>
void PoMeshFilled::buildGeometry(const Mesh &mesh, const float *z) {
    if constexpr (oravane::StructuredMesh<Mesh>)
        buildGrid(mesh, z);
    else
        buildFaces(oravane::OrientedCells(mesh), z);
}

template <class Grid>
void PoMeshFilled::buildGrid(const Grid &grid, const float *z) {
    int nx = 0, ny = 0;
    grid.getDim(nx, ny);
    m_coordinate3 = new SoCoordinate3;
    bool isSound = true;
    edit(m_coordinate3->point, static_cast<std::size_t>(grid.getNumNodes()), [&](SbVec3f *node) {
        forEachPosition(grid, [&, height = z](float x, float y) mutable {
            node->setValue(x, y, height ? *height++ : 0);
            isSound = isSound && oravane::isFinite(*node);
            ++node;
        });
    });
    m_group->addChild(m_coordinate3);
    const std::span<const SbVec3f> nodes = pointsOf(*m_coordinate3);
    if (isSound) {
        auto *quads = new SoQuadMesh;
        quads->verticesPerColumn = nx;
        quads->verticesPerRow = ny;
        quads->vertexProperty = newNormals(nx, ny, nodes, z == nullptr);
        m_group->addChild(quads);
        return;
    }
    // A quad mesh has no way to leave out a cell.
    SoundFaces faces(nodes);
    for (int i = 0, cell = 0; i + 1 < nx; ++i) {
        for (int j = 0; j + 1 < ny; ++j, ++cell) {
            const int node = i * ny + j, face[] = {node, node + ny, node + ny + 1, node + 1};
            faces.add(cell, face);
        }
    }
    oravane::clearUndefinedPoints(m_coordinate3->point);
    m_group->addChild(faces.newShape(static_cast<std::size_t>(grid.getNumCells()), m_materialBinding,
                                     SoMaterialBinding::PER_FACE_INDEXED));
}

void PoMeshFilled::buildFaces(const oravane::OrientedCells &cells, const float *z) {
    m_coordinate3 = new SoCoordinate3;
    cells.mesh().getNodesCoord(z, m_coordinate3->point);
    m_group->addChild(m_coordinate3);
    SoundFaces faces(pointsOf(*m_coordinate3));
    cells.forEach([&](int cell, std::span<const int> nodes) { faces.add(cell, nodes); });
    oravane::clearUndefinedPoints(m_coordinate3->point);
    m_group->addChild(faces.newShape(static_cast<std::size_t>(cells.mesh().getNumCells()), m_materialBinding,
                                     SoMaterialBinding::PER_PART_INDEXED));
}

void PoMeshFilled::makeMaterial(const float *values, std::size_t count) {
    m_material = new SoMaterial;
    oravane::colorMaterial(*resolved().dataMapping, {values, count}, *m_material);
}

template <class Mesh>
void PoMeshFilled::buildPerNode(const Mesh &mesh, const float *values, const float *z) {
    if (values)
        addBinding(SoMaterialBinding::PER_VERTEX_INDEXED);
    buildGeometry(mesh, z);
    if (values)
        makeMaterial(values, static_cast<std::size_t>(mesh.getNumNodes()));
}

namespace {

/// Calls `take` with the value of each cell, in the order of their numbers.
template <class Mesh, class Take>
void forEachCellValue(const Mesh &mesh, const float *values, const oravane::CellValue &cellValue, Take take) {
    if constexpr (oravane::StructuredMesh<Mesh>) {
        int nx = 0, ny = 0;
        mesh.getDim(nx, ny);
        for (int i = 0; i + 1 < nx; ++i) {
            const float *row = values + static_cast<std::size_t>(i) * static_cast<std::size_t>(ny),
                        *next = row + ny;
            for (int j = 0; j + 1 < ny; ++j)
                take(cellValue(row[j], next[j], next[j + 1], row[j + 1]));
        }
    } else {
        std::vector<float> cellValues(static_cast<std::size_t>(mesh.getNumCells()), 0.0f);
        oravane::OrientedCells(mesh).forEachAsGiven([&](int cell, std::span<const int> nodes) {
            if constexpr (std::is_same_v<Mesh, PbTriangleMesh2D>)
                cellValues[cell] = cellValue(values[nodes[0]], values[nodes[1]], values[nodes[2]]);
            else if constexpr (std::is_same_v<Mesh, PbQuadrangleMesh2D>)
                cellValues[cell] =
                    cellValue(values[nodes[0]], values[nodes[1]], values[nodes[2]], values[nodes[3]]);
            else
                cellValues[cell] = cellValue.ofPolygon(nodes, values);
        });
        std::for_each(cellValues.begin(), cellValues.end(), take);
    }
}

} // namespace

template <class Mesh>
void PoMeshFilled::buildPerCell(const Mesh &mesh, const float *values, const float *z) {
    if (values)
        addBinding(oravane::StructuredMesh<Mesh> ? SoMaterialBinding::PER_FACE : SoMaterialBinding::PER_PART);
    buildGeometry(mesh, z);
    if (!values)
        return;
    m_cellValues.clear();
    m_cellValues.reserve(static_cast<std::size_t>(mesh.getNumCells()));
    forEachCellValue(mesh, values, oravane::CellValue(*resolved().dataMapping),
                     [this](float value) { m_cellValues.push_back(value); });
    makeMaterial(m_cellValues.data(), m_cellValues.size());
}

template <class Mesh>
void PoMeshFilled::buildBands(const Mesh &mesh, const float *values, const float *z) {
    if (!values) {
        buildGeometry(mesh, z);
        return;
    }
    // A node without a position has no value either: its cells are left out.
    forEachPosition(mesh, [&, node = 0](float x, float y) mutable {
        if (!oravane::isFinite(SbVec3f(x, y, z ? z[node] : 0))) {
            if (values != m_maskedValues.data())
                m_maskedValues.assign(values, values + mesh.getNumNodes());
            values = m_maskedValues.data();
            m_maskedValues[node] = std::numeric_limits<float>::quiet_NaN();
        }
        ++node;
    });
    PiContouringFilled &engine = contouringFilled();
    engine.setMesh(&mesh, z);
    m_material = new SoMaterial;
    m_materialBinding = new SoMaterialBinding;
    engine.setDataMapping(resolved().dataMapping);
    engine.setIsovaluesList(resolved().isovaluesList);
    engine.fillSurf(values, z, m_group, m_material, m_materialBinding);
    for (int k = 0; k < m_group->getNumChildren(); ++k)
        if (SoNode *child = m_group->getChild(k); child->isOfType(SoCoordinate3::getClassTypeId()))
            oravane::clearUndefinedPoints(static_cast<SoCoordinate3 *>(child)->point);
}

#define ORAVANE_DEFINE(Mesh, prefix, linesPrefix)                                                            \
    void PoMeshFilled::prefix##Filled(const Mesh *mesh) {                                                    \
        if (isBuilding(mesh))                                                                                \
            fill(*mesh);                                                                                     \
    }                                                                                                        \
    void PoMeshFilled::prefix##FilledInhColr(const Mesh *mesh, const float *z) {                             \
        if (isBuilding(mesh))                                                                                \
            buildGeometry(*mesh, z);                                                                         \
    }                                                                                                        \
    void PoMeshFilled::prefix##FilledMapColr(const Mesh *mesh, const float *values, const float *z) {        \
        if (isBuilding(mesh))                                                                                \
            buildPerNode(*mesh, colorable(values), z);                                                       \
    }                                                                                                        \
    void PoMeshFilled::prefix##FilledAvergColr(const Mesh *mesh, const float *values, const float *z) {      \
        if (isBuilding(mesh))                                                                                \
            buildPerCell(*mesh, colorable(values), z);                                                       \
    }                                                                                                        \
    void PoMeshFilled::prefix##FilledContColr(const Mesh *mesh, const float *values, const float *z) {       \
        if (isBuilding(mesh))                                                                                \
            buildBands(*mesh, colorable(values), z);                                                         \
    }
ORAVANE_MESH2D_KINDS(ORAVANE_DEFINE)
#undef ORAVANE_DEFINE
