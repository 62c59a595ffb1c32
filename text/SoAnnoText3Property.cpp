#include <oravane/SoAnnoText3Property.h>

#include "core/ClassTable.h"
#include "core/FieldDescriptions.h"

#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/elements/SoAnnoText3CharOrientElement.h>

SO_NODE_SOURCE(SoAnnoText3Property)

void SoAnnoText3Property::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_NODE_INIT_CLASS(SoAnnoText3Property, SoNode, "Node");
}

SoAnnoText3Property::SoAnnoText3Property() {
    SO_NODE_CONSTRUCTOR(SoAnnoText3Property);
    SO_NODE_ADD_FIELD(renderPrintType, (RENDER3D_PRINT_RASTER));
    SO_NODE_ADD_FIELD(fontSizeHint, (SoAnnoText3FontSizeHintElement::getDefault()));
    SO_NODE_ADD_FIELD(isOriented, (SoAnnoText3CharOrientElement::getDefault()));
    SO_NODE_DEFINE_ENUM_VALUE(RenderPrintType, RENDER3D_PRINT_VECTOR);
    SO_NODE_DEFINE_ENUM_VALUE(RenderPrintType, RENDER3D_PRINT_RASTER);
    SO_NODE_DEFINE_ENUM_VALUE(RenderPrintType, RENDER2D_PRINT_RASTER);
    SO_NODE_SET_SF_ENUM_TYPE(renderPrintType, RenderPrintType);
    SO_NODE_DEFINE_ENUM_VALUE(FontSizeHint, ANNOTATION);
    SO_NODE_DEFINE_ENUM_VALUE(FontSizeHint, FIT_TEXT_VECTOR);
    SO_NODE_SET_SF_ENUM_TYPE(fontSizeHint, FontSizeHint);
}

void SoAnnoText3Property::doAction(SoAction *action) {
    SoState *state = action->getState();
    if (!renderPrintType.isIgnored())
        SoAnnoText3RenderPrintElement::set(
            state, this,
            static_cast<SoAnnoText3RenderPrintElement::RenderPrintType>(renderPrintType.getValue()));
    if (!fontSizeHint.isIgnored())
        SoAnnoText3FontSizeHintElement::set(
            state, this, static_cast<SoAnnoText3FontSizeHintElement::FontSizeHint>(fontSizeHint.getValue()));
    if (!isOriented.isIgnored())
        SoAnnoText3CharOrientElement::set(state, isOriented.getValue());
}

void SoAnnoText3Property::callback(SoCallbackAction *action) {
    doAction(action);
}

void SoAnnoText3Property::GLRender(SoGLRenderAction *action) {
    doAction(action);
}

void SoAnnoText3Property::addWriteReference(SoOutput *out, SbBool isFromField) {
    isBuiltIn = out->isBinary(); // as kits do: see PoBase::addWriteReference
    SoNode::addWriteReference(out, isFromField);
}

void SoAnnoText3Property::write(SoWriteAction *action) {
    isBuiltIn = action->getOutput()->isBinary();
    SoNode::write(action);
}

SbBool SoAnnoText3Property::readInstance(SoInput *in, unsigned short flags) {
    oravane::skipFieldDescriptions(in);
    return SoNode::readInstance(in, flags);
}
