#include <oravane/PoMeshFilled.h>

#include "core/ClassTable.h"
#include "geometry/MeshPositions.h"
#include "meshrep/CellColors.h"

#include <oravane/PbDataMapping.h>
#include <oravane/PiContouringFilled.h>
#include <oravane/PoDataMappingElement.h>
#include <oravane/PoIsovaluesListElement.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoQuadMesh.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoVertexProperty.h>

#include <algorithm>
#include <cmath>
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
    preRebuild();
    if (const PbMesh2D *mesh = resolvedMesh()) {
        m_group = new SoGroup;
        m_group->ref();
        m_shapeHints = new SoShapeHints;
        m_shapeHints->vertexOrdering = SoShapeHints::CLOCKWISE;
        m_shapeHints->creaseAngle = 0.8f;
        m_group->addChild(m_shapeHints);
        mesh->meshFilled(this);
        // Before the parts are set, which tells the scene: a sensor of the program may then delete the
        // mapping.
        deleteTransparencyParts(resolved().dataMapping, m_material, m_materialBinding, m_group);
        setPart("appearance.material", m_material);
        setPart("groupFilled", m_group);
        m_group->unref();
    } else {
        setPart("appearance.material", nullptr);
        setPart("groupFilled", nullptr);
    }
    postRebuild();
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

/// The cells of a grid all of whose nodes have finite coordinates, as faces; the materials are the cells'
/// numbers.
SoIndexedFaceSet *newFacesOfSoundCells(int nx, int ny, std::span<const SbVec3f> nodes,
                                       bool withCellMaterials) {
    std::vector<std::int32_t> coords, cells;
    for (int i = 0; i + 1 < nx; ++i) {
        for (int j = 0; j + 1 < ny; ++j) {
            const std::int32_t a = i * ny + j;
            const std::int32_t face[] = {a, a + ny, a + ny + 1, a + 1};
            if (!std::all_of(std::begin(face), std::end(face),
                             [&](std::int32_t node) { return oravane::isFinite(nodes[node]); }))
                continue;
            coords.insert(coords.end(), {face[0], face[1], face[2], face[3], -1});
            cells.push_back(i * (ny - 1) + j);
        }
    }
    auto *faces = new SoIndexedFaceSet;
    faces->coordIndex.setNum(0);
    faces->coordIndex.setValues(0, static_cast<int>(coords.size()), coords.data());
    if (withCellMaterials && !cells.empty())
        faces->materialIndex.setValues(0, static_cast<int>(cells.size()), cells.data());
    return faces;
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
    int nx = 0, ny = 0;
    mesh.getDim(nx, ny);
    const auto positions = oravane::positionsOf(mesh);
    m_coordinate3 = new SoCoordinate3;
    bool isSound = true;
    edit(m_coordinate3->point, static_cast<std::size_t>(nx) * static_cast<std::size_t>(ny),
         [&](SbVec3f *node) {
             const float *height = z;
             for (int i = 0; i < nx; ++i) {
                 for (int j = 0; j < ny; ++j, ++node) {
                     const auto [x, y] = positions.node(i, j);
                     node->setValue(x, y, height ? *height++ : 0);
                     isSound = isSound && oravane::isFinite(*node);
                 }
             }
         });
    m_group->addChild(m_coordinate3);
    const std::span<const SbVec3f> nodes(m_coordinate3->point.getValues(0),
                                         static_cast<std::size_t>(m_coordinate3->point.getNum()));
    if (isSound) {
        auto *quads = new SoQuadMesh;
        quads->verticesPerColumn = nx;
        quads->verticesPerRow = ny;
        quads->vertexProperty = newNormals(nx, ny, nodes, z == nullptr);
        m_group->addChild(quads);
        return;
    }
    // A quad mesh has no way to leave out a cell.
    const bool isPerCell =
        m_materialBinding && m_materialBinding->value.getValue() == SoMaterialBinding::PER_FACE;
    if (isPerCell)
        m_materialBinding->value = SoMaterialBinding::PER_FACE_INDEXED;
    m_group->addChild(newFacesOfSoundCells(nx, ny, nodes, isPerCell));
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

template <class Mesh>
void PoMeshFilled::buildPerCell(const Mesh &mesh, const float *values, const float *z) {
    if (values)
        addBinding(SoMaterialBinding::PER_FACE);
    buildGeometry(mesh, z);
    if (!values)
        return;
    int nx = 0, ny = 0;
    mesh.getDim(nx, ny);
    const oravane::CellValue cellValue(*resolved().dataMapping);
    m_cellValues.clear();
    m_cellValues.reserve(static_cast<std::size_t>(mesh.getNumCells()));
    for (int i = 0; i + 1 < nx; ++i) {
        const float *row = values + static_cast<std::size_t>(i) * static_cast<std::size_t>(ny),
                    *next = row + ny;
        for (int j = 0; j + 1 < ny; ++j)
            m_cellValues.push_back(cellValue(row[j], next[j], next[j + 1], row[j + 1]));
    }
    makeMaterial(m_cellValues.data(), m_cellValues.size());
}

template <class Mesh>
void PoMeshFilled::buildBands(const Mesh &mesh, const float *values, const float *z) {
    if (!values) {
        buildGeometry(mesh, z);
        return;
    }
    // A node without a position has no value either: its cells are left out.
    const auto isMissing = [](float height) { return !std::isfinite(height); };
    const std::size_t numNodes = static_cast<std::size_t>(mesh.getNumNodes());
    if (z && std::any_of(z, z + numNodes, isMissing)) {
        m_maskedValues.assign(values, values + numNodes);
        for (std::size_t node = 0; node < numNodes; ++node)
            if (isMissing(z[node]))
                m_maskedValues[node] = z[node] - z[node]; // NaN
        values = m_maskedValues.data();
    }
    PiContouringFilled &engine = contouringFilled();
    engine.setMesh(&mesh, z);
    m_material = new SoMaterial;
    m_materialBinding = new SoMaterialBinding;
    engine.setDataMapping(resolved().dataMapping);
    engine.setIsovaluesList(resolved().isovaluesList);
    engine.fillSurf(values, z, m_group, m_material, m_materialBinding);
}

#define ORAVANE_DEFINE(Mesh, prefix)                                                                         \
    void PoMeshFilled::prefix##Filled(const Mesh *mesh) {                                                    \
        fill(*mesh);                                                                                         \
    }                                                                                                        \
    void PoMeshFilled::prefix##FilledInhColr(const Mesh *mesh, const float *z) {                             \
        buildGeometry(*mesh, z);                                                                             \
    }                                                                                                        \
    void PoMeshFilled::prefix##FilledMapColr(const Mesh *mesh, const float *values, const float *z) {        \
        buildPerNode(*mesh, values, z);                                                                      \
    }                                                                                                        \
    void PoMeshFilled::prefix##FilledAvergColr(const Mesh *mesh, const float *values, const float *z) {      \
        buildPerCell(*mesh, values, z);                                                                      \
    }                                                                                                        \
    void PoMeshFilled::prefix##FilledContColr(const Mesh *mesh, const float *values, const float *z) {       \
        buildBands(*mesh, values, z);                                                                        \
    }
ORAVANE_MESH2D_KINDS(ORAVANE_DEFINE)
#undef ORAVANE_DEFINE
