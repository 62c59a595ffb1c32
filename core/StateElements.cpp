#include "core/ClassTable.h"

#include <oravane/PbDomain.h>
#include <oravane/PoDomainElement.h>

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

// ---- domain

namespace {
const PbDomain &defaultDomain() {
    static const PbDomain domain;
    return domain;
}
} // namespace

void PoDomainElement::initClass() {
    if (!oravane::registersNow(classTypeId))
        return;
    SO_ELEMENT_INIT_CLASS(PoDomainElement, SoReplacedElement);
    enable(classTypeId, classStackIndex);
}

void PoDomainElement::init(SoState *state) {
    PoBasicObjectElement::init(state);
    m_object = &defaultDomain();
}

void PoDomainElement::set(SoState *state, SoNode *node, const PbDomain *domain) {
    setObject(state, classStackIndex, node, domain);
}

const PbDomain *PoDomainElement::get(SoState *state) {
    const auto *domain = static_cast<const PbDomain *>(getObject(state, classStackIndex));
    return domain ? domain : &defaultDomain();
}
