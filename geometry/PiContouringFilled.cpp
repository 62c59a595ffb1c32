#include <oravane/PiContouringFilled.h>

#include "geometry/ContourWork.h"
#include "geometry/NodeMemory.h"

#include <oravane/PbDataMapping.h>
#include <oravane/PbIsovaluesList.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>

#include <cmath>

using oravane::BandCounts;
using oravane::BandFaces;
using oravane::BandTable;
using oravane::ContourWork;
using oravane::MeshCell;

struct PiContouringFilled::Output {
    SoGroup *group = nullptr;
    SoMaterial *material = nullptr;
    SoMaterialBinding *binding = nullptr;
    oravane::NodeRef<SoCoordinate3> coordinates;
    oravane::NodeRef<SoIndexedFaceSet> faces;
    BandTable table;
};

PiContouringFilled::PiContouringFilled() : m_output(std::make_unique<Output>()) {}

PiContouringFilled::~PiContouringFilled() = default;

void PiContouringFilled::fillSurf(const float *values, const float *z, SoGroup *group, SoMaterial *material,
                                  SoMaterialBinding *binding) {
    if (!values || !group || !material || !binding)
        return;
    preventFromThresholdWall(values);
    setOutput(group, material, binding);
    if (!computeContouringPoints(values, z))
        return;
    isoFilledElemIndexedMesh(values);
    makeNode();
}

void PiContouringFilled::setOutput(SoGroup *group, SoMaterial *material, SoMaterialBinding *binding) {
    m_output->group = group;
    m_output->material = material;
    m_output->binding = binding;
}

namespace {

/// The part of the values that is not deleted.
struct VisibleRange {
    float min = -INFINITY, max = INFINITY;

    explicit VisibleRange(const PbDataMapping *mapping) {
        if (!mapping || !mapping->isTransparencyEnabled())
            return;
        int isMinEnabled, isMaxEnabled;
        mapping->thresholdsEnabled(isMinEnabled, isMaxEnabled);
        const float limit = mapping->getTransparencyValueDeletedParts();
        float value, transparency;
        mapping->getMinRGBThreshold(value, transparency);
        if (isMinEnabled && transparency >= limit)
            min = value;
        mapping->getMaxRGBThreshold(value, transparency);
        if (isMaxEnabled && transparency >= limit)
            max = value;
    }

    bool isAll() const { return min == -INFINITY && max == INFINITY; }
    bool contains(float value) const { return value > min && value < max; }
};

/// Keeps of a cell the triangle of its visible corners, when only one of four is beyond.
void clipCell(const VisibleRange &range, const float *values, std::size_t numNodes, MeshCell &cell) {
    MeshCell visible{{}, 0};
    for (int s = 0; s < cell.sides; ++s) {
        const std::int32_t node = cell.nodes[s];
        if (node >= 0 && static_cast<std::size_t>(node) < numNodes && range.contains(values[node]))
            visible.nodes[visible.sides++] = node;
    }
    if (visible.sides < 3)
        visible.sides = 0;
    cell = visible;
}

} // namespace

void PiContouringFilled::preventFromThresholdWall(const float *values) {
    const VisibleRange range(m_dataMapping);
    m_work->isWalled = values && !range.isAll();
    if (!m_work->isWalled)
        return;
    if (m_work->isGrid)
        m_work->spellOutGrid();
    else
        m_work->inside = m_work->cells;
    for (MeshCell &cell : m_work->inside)
        clipCell(range, values, m_work->nodes.size(), cell);
}

void PiContouringFilled::isoFilledElemIndexedMesh(const float *values) {
    m_work->values = values;
    cutCells(false);
}

void PiContouringFilled::isoFilledElemParalCartGrid2D(const float *values) {
    m_work->values = values;
    cutCells(true);
}

void PiContouringFilled::cutCells(bool isMerging) {
    ContourWork &work = *m_work;
    const bool isGrid = work.isGrid && !work.isWalled;
    const BandCounts counts = isGrid ? work.grid.countBands(work.gridField(), work.levels)
                                     : work.indexed.countBands(work.meshField(), work.levels);
    int num = 0, isRegular;
    float min, max, step;
    const float *list =
        m_isovaluesList ? m_isovaluesList->getIsoList(num, min, max, step, isRegular) : nullptr;
    m_output->table.assign({list, list ? static_cast<std::size_t>(num) : 0});

    m_output->coordinates.reset(new SoCoordinate3);
    m_output->faces.reset(new SoIndexedFaceSet);
    if (work.pieceBands.size() < counts.pieces)
        work.pieceBands.resize(counts.pieces);
    Ppoint3 *points = oravane::startPoints(m_output->coordinates->point, counts.points);
    std::int32_t *indices = oravane::startValues(m_output->faces->coordIndex, counts.indices);
    BandFaces faces(m_output->table, indices, work.pieceBands.data());
    if (!isGrid)
        work.indexed.fillBands(points, faces);
    else
        work.grid.fillBands(work.positions, isMerging, points, faces);
    colorPieces(faces, counts.pieces);
    m_output->coordinates->point.finishEditing();
    m_output->faces->coordIndex.finishEditing();
    m_output->faces->coordIndex.setNum(static_cast<int>(faces.numIndices()));
}

namespace {

/// Colour of each band that occurs; `isDrawn` is 0 for one without.
struct BandColor {
    SbColor color{0.0f, 0.0f, 0.0f};
    float transparency = 0.0f;
    bool isUsed = false;
    bool isDrawn = true;
};

std::vector<BandColor> colorsOf(const BandTable &table, const BandFaces &faces, const PbDataMapping &mapping,
                                const PbIsovaluesList *list) {
    std::vector<BandColor> colors(table.numBands());
    for (const std::int32_t band : faces.pieceBands())
        colors[band].isUsed = true;
    for (std::size_t band = 0; band < colors.size(); ++band) {
        if (!colors[band].isUsed)
            continue;
        // Every value of the band has the same lower level as the bound that belongs to the band.
        const float value = band > 0 ? table.bounds()[band - 1] : -INFINITY;
        const float level = list ? list->getLowerIsovalue(value) : -1e20f;
        const SbColor *color = mapping.isTransparencyEnabled()
                                   ? mapping.getRGBColor(level, colors[band].transparency)
                                   : mapping.getRGBColor(level);
        colors[band].isDrawn = color != nullptr;
        if (color)
            colors[band].color = *color;
    }
    return colors;
}

} // namespace

void PiContouringFilled::colorPieces(BandFaces &faces, std::size_t numColors) {
    if (!m_dataMapping)
        return;
    const std::vector<BandColor> colors = colorsOf(m_output->table, faces, *m_dataMapping, m_isovaluesList);
    if (std::any_of(colors.begin(), colors.end(), [](const BandColor &band) { return !band.isDrawn; }))
        faces.keepOnly([&colors](std::int32_t band) { return colors[band].isDrawn; });

    SoMFColor &diffuse = m_output->material->diffuseColor;
    SbColor *color = oravane::startValues(diffuse, numColors);
    for (const std::int32_t band : faces.pieceBands())
        *color++ = colors[band].color;
    std::fill_n(color, numColors - faces.numPieces(), SbColor(0.0f, 0.0f, 0.0f));
    diffuse.finishEditing();
    if (!m_dataMapping->isTransparencyEnabled())
        return;
    SoMFFloat &transparencies = m_output->material->transparency;
    float *transparency = oravane::startValues(transparencies, numColors);
    for (const std::int32_t band : faces.pieceBands())
        *transparency++ = colors[band].transparency;
    std::fill_n(transparency, numColors - faces.numPieces(), 0.0f);
    transparencies.finishEditing();
}

void PiContouringFilled::makeNode() {
    if (m_dataMapping) {
        m_output->binding->value = SoMaterialBinding::PER_FACE;
        m_output->group->addChild(m_output->binding);
    }
    m_output->group->addChild(m_output->coordinates.get());
    m_output->group->addChild(m_output->faces.get());
    m_output->coordinates.reset(nullptr);
    m_output->faces.reset(nullptr);
}
