#include "core/ClassTable.h"

#include <oravane/PbDataMapping.h>
#include <oravane/PbDateFormatMapping.h>
#include <oravane/PbDomain.h>
#include <oravane/PbIsovaluesList.h>
#include <oravane/PbMesh2D.h>
#include <oravane/PbMiscTextAttr.h>
#include <oravane/PbNumericDisplayFormat.h>
#include <oravane/PoDataMappingElement.h>
#include <oravane/PoDateFormatMappingElement.h>
#include <oravane/PoDomainElement.h>
#include <oravane/PoIsovaluesListElement.h>
#include <oravane/PoMeshElement.h>
#include <oravane/PoMiscTextAttrElement.h>
#include <oravane/PoNumericDisplayFormatElement.h>

#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoGetMatrixAction.h>
#include <Inventor/actions/SoHandleEventAction.h>
#include <Inventor/actions/SoPickAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/misc/SoState.h>

SO_ELEMENT_SOURCE(PoDomainElement)
SO_ELEMENT_SOURCE(PoDataMappingElement)
SO_ELEMENT_SOURCE(PoIsovaluesListElement)
SO_ELEMENT_SOURCE(PoMeshElement)
SO_ELEMENT_SOURCE(PoNumericDisplayFormatElement)
SO_ELEMENT_SOURCE(PoDateFormatMappingElement)
SO_ELEMENT_SOURCE(PoMiscTextAttrElement)

void PoBasicObjectElement::enable(SoType elementType, int stackIndex) {
    SoCallbackAction::enableElement(elementType, stackIndex);
    SoGLRenderAction::enableElement(elementType, stackIndex);
    SoGetBoundingBoxAction::enableElement(elementType, stackIndex);
    SoGetMatrixAction::enableElement(elementType, stackIndex);
    SoHandleEventAction::enableElement(elementType, stackIndex);
    SoPickAction::enableElement(elementType, stackIndex);
    SoSearchAction::enableElement(elementType, stackIndex);
    SoWriteAction::enableElement(elementType, stackIndex);
}

void PoBasicObjectElement::init(SoState *state) {
    SoReplacedElement::init(state);
    m_object = nullptr;
    m_kind = 0;
}

void PoBasicObjectElement::setObject(SoState *state, int stackIndex, SoNode *node, const PbBase *object,
                                     int kind) {
    if (!state->isElementEnabled(stackIndex))
        return;
    auto *element =
        static_cast<PoBasicObjectElement *>(SoReplacedElement::getElement(state, stackIndex, node));
    if (!element)
        return;
    element->m_object = object;
    element->m_kind = kind;
}

const PoBasicObjectElement *PoBasicObjectElement::getElementOf(SoState *state, int stackIndex) {
    if (!state->isElementEnabled(stackIndex))
        return nullptr;
    return static_cast<const PoBasicObjectElement *>(SoElement::getConstElement(state, stackIndex));
}

const PbBase *PoBasicObjectElement::getObject(SoState *state, int stackIndex) {
    const PoBasicObjectElement *element = getElementOf(state, stackIndex);
    return element ? element->m_object : nullptr;
}

// ---- elements that a state starts with

namespace {
template <class Object>
const Object &defaultObject() {
    static const Object object;
    return object;
}

template <class Object>
const Object *orDefault(const PbBase *object) {
    return object ? static_cast<const Object *>(object) : &defaultObject<Object>();
}
} // namespace

/// An element is the same for every kind of object but for its name.
#define ORAVANE_STARTED_ELEMENT(Element, Object)                                                             \
    void Element::initClass() {                                                                              \
        if (!oravane::registersNow(classTypeId))                                                             \
            return;                                                                                          \
        SO_ELEMENT_INIT_CLASS(Element, SoReplacedElement);                                                   \
        enable(classTypeId, classStackIndex);                                                                \
    }                                                                                                        \
    void Element::init(SoState *state) {                                                                     \
        PoBasicObjectElement::init(state);                                                                   \
        m_object = &defaultObject<Object>();                                                                 \
    }                                                                                                        \
    void Element::set(SoState *state, SoNode *node, const Object *object) {                                  \
        setObject(state, classStackIndex, node, object);                                                     \
    }                                                                                                        \
    const Object *Element::get(SoState *state) {                                                             \
        return orDefault<Object>(getObject(state, classStackIndex));                                         \
    }

ORAVANE_STARTED_ELEMENT(PoDomainElement, PbDomain)
ORAVANE_STARTED_ELEMENT(PoNumericDisplayFormatElement, PbNumericDisplayFormat)
ORAVANE_STARTED_ELEMENT(PoDateFormatMappingElement, PbDateFormatMapping)
ORAVANE_STARTED_ELEMENT(PoMiscTextAttrElement, PbMiscTextAttr)

#undef ORAVANE_STARTED_ELEMENT

// ---- data mapping

void PoDataMappingElement::initClass() {
    if (!oravane::registersNow(classTypeId))
        return;
    SO_ELEMENT_INIT_CLASS(PoDataMappingElement, SoReplacedElement);
    enable(classTypeId, classStackIndex);
}

void PoDataMappingElement::set(SoState *state, SoNode *node, const PbDataMapping *object) {
    setObject(state, classStackIndex, node, object);
}

const PbDataMapping *PoDataMappingElement::get(SoState *state) {
    return static_cast<const PbDataMapping *>(getObject(state, classStackIndex));
}

// ---- list of isovalues

void PoIsovaluesListElement::initClass() {
    if (!oravane::registersNow(classTypeId))
        return;
    SO_ELEMENT_INIT_CLASS(PoIsovaluesListElement, SoReplacedElement);
    enable(classTypeId, classStackIndex);
}

void PoIsovaluesListElement::set(SoState *state, SoNode *node, const PbIsovaluesList *object) {
    setObject(state, classStackIndex, node, object);
}

const PbIsovaluesList *PoIsovaluesListElement::get(SoState *state) {
    return static_cast<const PbIsovaluesList *>(getObject(state, classStackIndex));
}

// ---- mesh

void PoMeshElement::initClass() {
    if (!oravane::registersNow(classTypeId))
        return;
    SO_ELEMENT_INIT_CLASS(PoMeshElement, SoReplacedElement);
    enable(classTypeId, classStackIndex);
}

void PoMeshElement::set(SoState *state, SoNode *node, const PbMesh2D *mesh) {
    setObject(state, classStackIndex, node, mesh, 0);
}

const PbMesh *PoMeshElement::getMesh(SoState *state) {
    return static_cast<const PbMesh *>(getObject(state, classStackIndex));
}

const PbMesh2D *PoMeshElement::getMesh2D(SoState *state) {
    const PoBasicObjectElement *element = getElementOf(state, classStackIndex);
    if (!element)
        return nullptr;
    const auto *typed = static_cast<const PoMeshElement *>(element);
    return typed->m_kind == 0 ? static_cast<const PbMesh2D *>(typed->m_object) : nullptr;
}
