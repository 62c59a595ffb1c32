#include <oravane/PoMesh.h>

#include "core/ClassTable.h"

#include <oravane/PbDataMapping.h>
#include <oravane/PbIsovaluesList.h>
#include <oravane/PbMesh.h>
#include <oravane/PiContouringFilled.h>
#include <oravane/PiContouringLines.h>
#include <oravane/PiVolundra.h>
#include <oravane/PoDataMappingElement.h>
#include <oravane/PoIsovaluesListElement.h>
#include <oravane/PoMeshElement.h>

#include <Inventor/nodekits/SoAppearanceKit.h>

SO_KIT_SOURCE(PoMesh)

/// Opens the adjustment to the kit.
class PoMesh::IsovalueAdjuster : public PiVolundra {
public:
    using PiVolundra::adjustIsoval;
    using PiVolundra::adjustIsovalList;
    using PiVolundra::adjustIsovalMultiple;
    const std::vector<float> &adjustedList() {
        m_isovalues.resize(static_cast<std::size_t>(m_numIsovalues));
        return m_isovalues;
    }
    int isAdjusted() const { return m_isAdjusted; }
};

void PoMesh::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoMesh, PoVolundra, "PoVolundra");
}

PoMesh::PoMesh() : m_adjuster(std::make_unique<IsovalueAdjuster>()) {
    SO_KIT_CONSTRUCTOR(PoMesh);
    SO_KIT_ADD_FIELD(valuesIndex, (-1));
    SO_KIT_ADD_FIELD(vecsIndex, (-1));
    SO_KIT_ADD_FIELD(coloringType, (COLOR_INHERITED));
    SO_KIT_DEFINE_ENUM_VALUE(ColoringType, COLOR_INHERITED);
    SO_KIT_DEFINE_ENUM_VALUE(ColoringType, COLOR_AVERAGE);
    SO_KIT_DEFINE_ENUM_VALUE(ColoringType, COLOR_MAPPING);
    SO_KIT_DEFINE_ENUM_VALUE(ColoringType, COLOR_CONTOURING);
    SO_KIT_SET_SF_ENUM_TYPE(coloringType, ColoringType);
    SO_KIT_INIT_INSTANCE();
    watchFields({&valuesIndex, &vecsIndex, &coloringType});
    setUpConnections(TRUE, TRUE);
}

PoMesh::~PoMesh() = default;

void PoMesh::setMesh(PbMesh *mesh) {
    m_mesh.set(mesh);
}

void PoMesh::setDataMapping(PbDataMapping *mapping) {
    m_dataMapping.set(mapping);
}

void PoMesh::setModuleDataMapping(PbDataMapping *mapping) {
    m_moduleDataMapping.set(mapping);
}

void PoMesh::setIsovaluesList(PbIsovaluesList *list) {
    m_isovaluesList.set(list);
}

const PbMesh *PoMesh::getMesh() const {
    if (m_mesh.get())
        return m_mesh.get();
    return isStateValid() ? PoMeshElement::getMesh(getState()) : nullptr;
}

const PbDataMapping *PoMesh::getDataMapping() const {
    if (m_dataMapping.get())
        return m_dataMapping.get();
    return isStateValid() ? PoDataMappingElement::get(getState()) : nullptr;
}

const PbDataMapping *PoMesh::getModuleDataMapping() const {
    if (m_moduleDataMapping.get())
        return m_moduleDataMapping.get();
    return isStateValid() ? PoDataMappingElement::get(getState()) : nullptr;
}

const PbIsovaluesList *PoMesh::getIsovaluesList() const {
    if (m_isovaluesList.get())
        return m_isovaluesList.get();
    return isStateValid() ? PoIsovaluesListElement::get(getState()) : nullptr;
}

void PoMesh::preRebuild() {
    PoVolundra::preRebuild();
    addElementCache(PoMeshElement::getClassStackIndex());
    m_resolved.dataMapping = getDataMapping();
    m_resolved.moduleDataMapping = getModuleDataMapping();
    m_resolved.isovaluesList = getIsovaluesList();
    m_resolved.mesh = meshToDraw();
    m_resolved.coloring = resolveColoring();
    m_coordinate3 = nullptr;
    m_material = nullptr;
    m_materialBinding = nullptr;
    m_group = nullptr;
    m_shapeHints = nullptr;
}

PoMesh::ColoringType PoMesh::resolveColoring() const {
    const int requested = coloringType.getValue(), index = valuesIndex.getValue();
    const bool isKnown = requested >= COLOR_INHERITED && requested <= COLOR_CONTOURING;
    if (!isKnown || !m_resolved.dataMapping)
        return COLOR_INHERITED;
    if (m_resolved.mesh && (index < 0 || !m_resolved.mesh->getValuesSet(index)))
        return COLOR_INHERITED;
    if (requested == COLOR_CONTOURING && !m_resolved.isovaluesList)
        return COLOR_MAPPING;
    return static_cast<ColoringType>(requested);
}

void PoMesh::addElementsAllCaches() {
    PoVolundra::addElementsAllCaches();
    PoMeshElement::getMesh(getState());
}

// What decides between the colourings counts as used too: a mapping that arrives later must reach a kit that
// did without one.
void PoMesh::addColoringElements() {
    const int requested = coloringType.getValue();
    if (requested == COLOR_INHERITED)
        return;
    addElementCache(PoDataMappingElement::getClassStackIndex());
    if (requested == COLOR_CONTOURING)
        addElementCache(PoIsovaluesListElement::getClassStackIndex());
    const bool isAllGiven = m_dataMapping.get() && (requested != COLOR_CONTOURING || m_isovaluesList.get());
    if (!isStateValid() && !isAllGiven)
        rebuildAtNextTraversal();
}

void PoMesh::setDefaultOnNonWritingFields() {
    PoVolundra::setDefaultOnNonWritingFields();
    if (getNodeWriteFormat() != WRITE_FIELDS)
        return;
    if (SoNode *kit = appearance.getValue())
        skipInFile(kit->getField("material")); // generated
}

PiContouringFilled &PoMesh::contouringFilled() {
    if (!m_contouringFilled)
        m_contouringFilled = std::make_unique<PiContouringFilled>();
    return *m_contouringFilled;
}

PiContouringLines &PoMesh::contouringLines() {
    if (!m_contouringLines)
        m_contouringLines = std::make_unique<PiContouringLines>();
    return *m_contouringLines;
}

void PoMesh::adjustIsoval(int num, const float *data, float &isovalue) {
    m_adjuster->adjustIsoval(num, data, isovalue);
}

void PoMesh::adjustIsovalMultiple(int num1, const float *data1, int num2, const float *data2, int num3,
                                  const float *data3, float &isovalue) {
    m_adjuster->adjustIsovalMultiple(num1, data1, num2, data2, num3, data3, isovalue);
}

const std::vector<float> &PoMesh::adjustIsovalList(int num1, const float *data1, int num2, const float *data2,
                                                   int num3, const float *data3) {
    m_adjuster->setIsovaluesList(m_resolved.isovaluesList);
    m_adjuster->adjustIsovalList(num1, data1, num2, data2, num3, data3);
    return m_adjuster->adjustedList();
}

int PoMesh::isIsovalueAdjusted() const {
    return m_adjuster->isAdjusted();
}

SbVec3f *PoMesh::newSbVec3f(int count) {
    if (count > 0 && m_vectors.size() < static_cast<std::size_t>(count))
        m_vectors.resize(static_cast<std::size_t>(count));
    return m_vectors.data();
}
