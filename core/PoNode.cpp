#include <oravane/PoNode.h>

#include "core/ClassTable.h"
#include "core/FieldDescriptions.h"

#include <oravane/PoBase.h>

#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoGetMatrixAction.h>
#include <Inventor/actions/SoHandleEventAction.h>
#include <Inventor/actions/SoPickAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/nodes/SoGroup.h>

SO_NODE_SOURCE(PoNode)

void PoNode::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_NODE_INIT_CLASS(PoNode, SoNode, "Node");
}

void PoNode::initClasses() {
    oravane::initialize(oravane::attributeNodeClasses());
}

PoNode::PoNode() {
    SO_NODE_CONSTRUCTOR(PoNode);
}

PoNode::~PoNode() {
    if (m_standIn)
        m_standIn->unref();
}

void PoNode::callback(SoCallbackAction *action) {
    doAction(action);
}

void PoNode::GLRender(SoGLRenderAction *action) {
    doAction(action);
}

void PoNode::getBoundingBox(SoGetBoundingBoxAction *action) {
    doAction(action);
}

void PoNode::getMatrix(SoGetMatrixAction *action) {
    doAction(action);
}

void PoNode::handleEvent(SoHandleEventAction *action) {
    doAction(action);
}

void PoNode::pick(SoPickAction *action) {
    doAction(action);
}

void PoNode::search(SoSearchAction *action) {
    doAction(action);
    SoNode::search(action);
}

// A binary group states the number of its children, so something must stand where this node is left out.
SoGroup *PoNode::standIn() {
    if (!m_standIn) {
        m_standIn = new SoGroup;
        m_standIn->ref();
    }
    return m_standIn;
}

void PoNode::addWriteReference(SoOutput *out, SbBool isFromField) {
    isBuiltIn = out->isBinary(); // as kits do: see PoBase::addWriteReference
    if (PoBase::getNodeWriteFormat() == PoBase::WRITE_FIELDS)
        SoNode::addWriteReference(out, isFromField);
    else if (out->isBinary())
        standIn()->addWriteReference(out, isFromField);
}

SbBool PoNode::readInstance(SoInput *in, unsigned short flags) {
    oravane::skipFieldDescriptions(in);
    return SoNode::readInstance(in, flags);
}

void PoNode::write(SoWriteAction *action) {
    doAction(action);
    SoOutput *out = action->getOutput();
    isBuiltIn = out->isBinary();
    if (PoBase::getNodeWriteFormat() == PoBase::WRITE_FIELDS)
        SoNode::write(action);
    else if (out->isBinary())
        standIn()->write(action);
}
