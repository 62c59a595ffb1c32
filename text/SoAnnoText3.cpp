#include <oravane/SoAnnoText3.h>

#include "core/ClassTable.h"
#include "core/FieldDescriptions.h"
#include "text/TextMeasure.h"

#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/elements/SoAnnoText3CharOrientElement.h>
#include <Inventor/elements/SoAnnoText3FontSizeHintElement.h>
#include <Inventor/elements/SoAnnoText3RenderPrintElement.h>
#include <Inventor/elements/SoFontNameElement.h>
#include <Inventor/elements/SoFontSizeElement.h>

SO_NODE_SOURCE(SoAnnoText3)

void SoAnnoText3::initClass() {
    if (!oravane::registersNow(classTypeId))
        return;
    SO_NODE_INIT_CLASS(SoAnnoText3, SoText3, "SoText3");
    SO_ENABLE(SoCallbackAction, SoAnnoText3CharOrientElement);
    SO_ENABLE(SoCallbackAction, SoAnnoText3FontSizeHintElement);
    SO_ENABLE(SoCallbackAction, SoAnnoText3RenderPrintElement);
    SO_ENABLE(SoGLRenderAction, SoAnnoText3CharOrientElement);
    SO_ENABLE(SoGLRenderAction, SoAnnoText3FontSizeHintElement);
    SO_ENABLE(SoGLRenderAction, SoAnnoText3RenderPrintElement);
    oravane::restartTextMeasure();
}

SoAnnoText3::SoAnnoText3() {
    SO_NODE_CONSTRUCTOR(SoAnnoText3);
}

/// The toolkit's own box of several lines is right for lines with letters and a spacing of 1 only.
void SoAnnoText3::computeBBox(SoAction *action, SbBox3f &box, SbVec3f &center) {
    SoState *state = action->getState();
    oravane::TextLines lines;
    for (int i = 0; i < string.getNum(); ++i)
        lines.add(string[i].getString());
    box = oravane::textBox(SoFontNameElement::get(state), SoFontSizeElement::get(state), spacing.getValue(),
                           justification.getValue(), lines);
    if (!box.isEmpty())
        center = box.getCenter();
}

void SoAnnoText3::addWriteReference(SoOutput *out, SbBool isFromField) {
    isBuiltIn = out->isBinary(); // as kits do: see PoBase::addWriteReference
    SoText3::addWriteReference(out, isFromField);
}

void SoAnnoText3::write(SoWriteAction *action) {
    isBuiltIn = action->getOutput()->isBinary();
    SoText3::write(action);
}

SbBool SoAnnoText3::readInstance(SoInput *in, unsigned short flags) {
    oravane::skipFieldDescriptions(in);
    return SoText3::readInstance(in, flags);
}
