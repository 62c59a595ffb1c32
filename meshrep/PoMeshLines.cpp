#include <oravane/PoMeshLines.h>

#include "attributes/MaterialColors.h"
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
#include <oravane/PoDataMappingElement.h>
#include <oravane/PoIsovaluesListElement.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>

SO_KIT_SOURCE(PoMeshLines)

namespace oravane {

/// Collects lines by node numbers, and with values one for each segment.
class WireFrame {
public:
    explicit WireFrame(const float *values = nullptr) : m_values(values) {}

    void setNodes(const SoCoordinate3 &coordinates) { m_nodes = coordinates.point.getValues(0); }

    void addLine(std::span<const std::int32_t> line) {
        forEachRun(
            line.size(), [&](std::size_t k) { return isFinite(m_nodes[line[k]]); },
            [&](std::size_t first, std::size_t length) { addRun(line.subspan(first, length)); });
    }

    SoIndexedLineSet *newShape() const {
        auto *shape = new SoIndexedLineSet;
        shape->coordIndex.setNum(0);
        shape->coordIndex.setValues(0, static_cast<int>(m_index.size()), m_index.data());
        return shape;
    }

    std::span<const float> segmentValues() const { return m_segmentValues; }

private:
    void addRun(std::span<const std::int32_t> run) {
        m_index.insert(m_index.end(), run.begin(), run.end());
        m_index.push_back(SO_END_LINE_INDEX);
        for (std::size_t k = 0; m_values && k + 1 < run.size(); ++k)
            m_segmentValues.push_back(static_cast<float>(
                (static_cast<double>(m_values[run[k]]) + static_cast<double>(m_values[run[k + 1]])) / 2.0));
    }

    const float *m_values;
    const SbVec3f *m_nodes = nullptr;
    std::vector<std::int32_t> m_index;
    std::vector<float> m_segmentValues;
};

} // namespace oravane

using oravane::WireFrame;

void PoMeshLines::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoMeshLines, PoMesh2D, "PoMesh2D");
}

PoMeshLines::PoMeshLines() {
    SO_KIT_CONSTRUCTOR(PoMeshLines);
    SO_KIT_ADD_CATALOG_ENTRY(groupLines, SoGroup, TRUE, alternateRep, , TRUE);
    SO_KIT_INIT_INSTANCE();
    generatedParts({&groupLines});
    setDomainUsedForRebuild(FALSE);
    setUpConnections(TRUE, TRUE);
}

PoMeshLines::~PoMeshLines() = default;

void PoMeshLines::preRebuild() {
    PoMesh2D::preRebuild();
    addColoringElements();
}

void PoMeshLines::addElementsAllCaches() {
    PoMesh2D::addElementsAllCaches();
    PoDataMappingElement::get(getState());
    PoIsovaluesListElement::get(getState());
}

void PoMeshLines::rebuild() {
    rebuildGroup("groupLines", LINES, [this](const PbMesh2D &mesh) { mesh.meshLines(this); });
}

template <class Mesh>
void PoMeshLines::draw(const Mesh &mesh) {
    m_material = nullptr;
    m_materialBinding = nullptr;
    buildPerNode(mesh, resolved().coloring == COLOR_INHERITED ? nullptr : valuesOf(mesh), zOf(mesh));
}

namespace {

template <class Mesh>
void addLines(const Mesh &mesh, WireFrame &wires) {
    std::vector<std::int32_t> line;
    if constexpr (oravane::StructuredMesh<Mesh>) {
        int nx = 0, ny = 0;
        mesh.getDim(nx, ny);
        for (int i = 0; i < nx; ++i) {
            line.clear();
            for (int j = 0; j < ny; ++j)
                line.push_back(i * ny + j);
            wires.addLine(line);
        }
        for (int j = 0; j < ny; ++j) {
            line.clear();
            for (int i = 0; i < nx; ++i)
                line.push_back(i * ny + j);
            wires.addLine(line);
        }
    } else {
        oravane::OrientedCells(mesh).forEachAsGiven([&](int, std::span<const int> nodes) {
            if (nodes.size() < 2)
                return;
            line.assign(nodes.begin(), nodes.end());
            line.push_back(nodes.front());
            wires.addLine(line);
        });
    }
}

} // namespace

template <class Mesh>
void PoMeshLines::buildGeometry(const Mesh &mesh, const float *z, WireFrame &wires) {
    m_coordinate3 = new SoCoordinate3;
    mesh.getNodesCoord(z, m_coordinate3->point);
    m_group->addChild(m_coordinate3);
    wires.setNodes(*m_coordinate3);
    addLines(mesh, wires);
    oravane::clearUndefinedPoints(m_coordinate3->point);
    m_group->addChild(wires.newShape());
}

void PoMeshLines::addBinding(int value) {
    m_materialBinding = new SoMaterialBinding;
    m_materialBinding->value = static_cast<SoMaterialBinding::Binding>(value);
    m_group->addChild(m_materialBinding);
    m_material = new SoMaterial;
}

template <class Mesh>
void PoMeshLines::buildPerNode(const Mesh &mesh, const float *values, const float *z) {
    if (values)
        addBinding(SoMaterialBinding::PER_VERTEX_INDEXED);
    WireFrame wires;
    buildGeometry(mesh, z, wires);
    if (values)
        oravane::colorMaterial(*resolved().dataMapping,
                               {values, static_cast<std::size_t>(mesh.getNumNodes())}, *m_material);
}

template <class Mesh>
void PoMeshLines::buildPerSegment(const Mesh &mesh, const float *values, const float *z) {
    if (values)
        addBinding(SoMaterialBinding::PER_PART);
    WireFrame wires(values);
    buildGeometry(mesh, z, wires);
    if (values)
        oravane::colorMaterial(*resolved().dataMapping, wires.segmentValues(), *m_material);
}

#define ORAVANE_DEFINE(Mesh, meshPrefix, prefix)                                                             \
    void PoMeshLines::prefix##Lines(const Mesh *mesh) {                                                      \
        if (isBuilding(mesh))                                                                                \
            draw(*mesh);                                                                                     \
    }                                                                                                        \
    void PoMeshLines::prefix##LinesInhColr(const Mesh *mesh, const float *z) {                               \
        if (isBuilding(mesh))                                                                                \
            buildPerNode(*mesh, nullptr, z);                                                                 \
    }                                                                                                        \
    void PoMeshLines::prefix##LinesMapColr(const Mesh *mesh, const float *values, const float *z) {          \
        if (isBuilding(mesh))                                                                                \
            buildPerNode(*mesh, colorable(values), z);                                                       \
    }                                                                                                        \
    void PoMeshLines::prefix##LinesAvergColr(const Mesh *mesh, const float *values, const float *z) {        \
        if (isBuilding(mesh))                                                                                \
            buildPerSegment(*mesh, colorable(values), z);                                                    \
    }                                                                                                        \
    void PoMeshLines::prefix##LinesContColr(const Mesh *mesh, const float *values, const float *z) {         \
        if (isBuilding(mesh))                                                                                \
            buildPerNode(*mesh, colorable(values), z);                                                       \
    }
ORAVANE_MESH2D_KINDS(ORAVANE_DEFINE)
#undef ORAVANE_DEFINE
