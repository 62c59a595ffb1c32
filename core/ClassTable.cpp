#include "core/ClassTable.h"

#include <oravane/PoAutoValueLegend.h>
#include <oravane/PoAxis.h>
#include <oravane/PoBase.h>
#include <oravane/PoBaseAxis.h>
#include <oravane/PoCartesianAxis.h>
#include <oravane/PoDataMapping.h>
#include <oravane/PoDataMappingElement.h>
#include <oravane/PoDateFormatMapping.h>
#include <oravane/PoDateFormatMappingElement.h>
#include <oravane/PoDebugError.h>
#include <oravane/PoDomain.h>
#include <oravane/PoDomainElement.h>
#include <oravane/PoGenAxis.h>
#include <oravane/PoHistogram.h>
#include <oravane/PoIsovaluesList.h>
#include <oravane/PoIsovaluesListElement.h>
#include <oravane/PoItemLegend.h>
#include <oravane/PoKestrava.h>
#include <oravane/PoLegend.h>
#include <oravane/PoLinearAxis.h>
#include <oravane/PoLinearDataMapping.h>
#include <oravane/PoLinearValueLegend.h>
#include <oravane/PoMeshContouring.h>
#include <oravane/PoMeshElement.h>
#include <oravane/PoMeshFilled.h>
#include <oravane/PoMeshLimit.h>
#include <oravane/PoMeshLines.h>
#include <oravane/PoMeshSides.h>
#include <oravane/PoMiscTextAttr.h>
#include <oravane/PoMiscTextAttrElement.h>
#include <oravane/PoNonLinearDataMapping.h>
#include <oravane/PoNonLinearDataMapping2.h>
#include <oravane/PoNonLinearValueLegend1.h>
#include <oravane/PoNonLinearValueLegend2.h>
#include <oravane/PoNonLinearValueLegend3.h>
#include <oravane/PoNumericDisplayFormat.h>
#include <oravane/PoNumericDisplayFormatElement.h>
#include <oravane/PoParallelogram.h>
#include <oravane/PoParallelogram3.h>
#include <oravane/PoPieChart.h>
#include <oravane/PoPieChart2D.h>
#include <oravane/PoPieChart3D.h>
#include <oravane/PoRectangle.h>
#include <oravane/PoSingleHistogram.h>
#include <oravane/PoTimeAxis.h>
#include <oravane/PoValueLegend.h>
#include <oravane/PoVolundra.h>
#include <oravane/SoAnnoText3.h>
#include <oravane/SoAnnoText3Property.h>

#include <Inventor/SoDB.h>
#include <Inventor/SoInteraction.h>
#include <Inventor/nodekits/SoNodeKit.h>

namespace oravane {

namespace {

bool isStarting = false;

/// Nodes that extend the toolkit, and that kits are made of.
const ClassInitializer toolkitNodes[] = {
    &SoAnnoText3::initClass,
    &SoAnnoText3Property::initClass,
};

// clang-format off
const ClassInitializer graphicsKits[] = {
    &PoKestrava::initClass,
    &PoRectangle::initClass,
    &PoParallelogram::initClass,
    &PoParallelogram3::initClass,
    &PoBaseAxis::initClass,
    &PoAxis::initClass,
    &PoCartesianAxis::initClass,
    &PoLinearAxis::initClass,
    &PoGenAxis::initClass,
    &PoTimeAxis::initClass,
    &PoLegend::initClass,
    &PoItemLegend::initClass,
    &PoValueLegend::initClass,
    &PoAutoValueLegend::initClass,
    &PoLinearValueLegend::initClass,
    &PoNonLinearValueLegend1::initClass,
    &PoNonLinearValueLegend2::initClass,
    &PoNonLinearValueLegend3::initClass,
    &PoHistogram::initClass,
    &PoSingleHistogram::initClass,
    &PoPieChart::initClass,
    &PoPieChart2D::initClass,
    &PoPieChart3D::initClass,
};
// clang-format on

const ClassInitializer dataKits[] = {
    &PoVolundra::initClass,   &PoMesh::initClass,      &PoMesh2D::initClass,    &PoMeshLines::initClass,
    &PoMeshFilled::initClass, &PoMeshSides::initClass, &PoMeshLimit::initClass, &PoMeshContouring::initClass,
};

const ClassInitializer stateElements[] = {
    &PoDomainElement::initClass,        &PoNumericDisplayFormatElement::initClass,
    &PoIsovaluesListElement::initClass, &PoDateFormatMappingElement::initClass,
    &PoMiscTextAttrElement::initClass,  &PoDataMappingElement::initClass,
    &PoMeshElement::initClass,
};

const ClassInitializer attributeNodes[] = {
    &PoNode::initClass,
    &PoDomain::initClass,
    &PoNumericDisplayFormat::initClass,
    &PoIsovaluesList::initClass,
    &PoDateFormatMapping::initClass,
    &PoMiscTextAttr::initClass,
    &PoDataMapping::initClass,
    &PoLinearDataMapping::initClass,
    &PoNonLinearDataMapping::initClass,
    &PoNonLinearDataMapping2::initClass,
};

} // namespace

std::span<const ClassInitializer> graphicsKitClasses() {
    return graphicsKits;
}
std::span<const ClassInitializer> dataKitClasses() {
    return dataKits;
}
std::span<const ClassInitializer> stateElementClasses() {
    return stateElements;
}
std::span<const ClassInitializer> attributeNodeClasses() {
    return attributeNodes;
}

void initialize(std::span<const ClassInitializer> classes) {
    for (const ClassInitializer initClass : classes)
        initClass();
}

bool registersNow(SoType type) {
    if (isStarting)
        return type == SoType::badType();
    PoBase::init();
    return false;
}

} // namespace oravane

void PoBase::init() {
    // The type, and not a flag, tells whether the library is up: a program may finish the toolkit and start
    // it again.
    if (oravane::isStarting || getClassTypeId() != SoType::badType())
        return;
    oravane::isStarting = true;
    SoDB::init();
    SoNodeKit::init();
    SoInteraction::init();
    oravane::initialize(oravane::toolkitNodes);
    PoDebugError::initClass();
    PoBase::initClass();
    PoKestrava::initClasses();
    PoVolundra::initClasses();
    oravane::initialize(oravane::stateElementClasses());
    PoNode::initClasses();
    oravane::isStarting = false;
}
