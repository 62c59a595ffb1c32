#include <oravane/PoMiscTextAttr.h>

#include "core/ClassTable.h"

#include <oravane/PoMiscTextAttrElement.h>

#include <Inventor/actions/SoAction.h>

SO_NODE_SOURCE(PoMiscTextAttr)

void PoMiscTextAttr::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_NODE_INIT_CLASS(PoMiscTextAttr, PoNode, "PoNode");
}

PoMiscTextAttr::PoMiscTextAttr() {
    SO_NODE_CONSTRUCTOR(PoMiscTextAttr);
    SO_NODE_ADD_FIELD(fontName, ("defaultFont"));
    SO_NODE_ADD_FIELD(lineLength, (0));
    SO_NODE_ADD_FIELD(endLineChar, (' '));
    m_fontNameWatch.watch({&fontName});
    m_lineLengthWatch.watch({&lineLength, &endLineChar});
}

void PoMiscTextAttr::doAction(SoAction *action) {
    if (m_lineLengthWatch.takeChanged())
        m_textAttr.setLineLength(static_cast<char>(endLineChar.getValue()), lineLength.getValue());
    if (m_fontNameWatch.takeChanged())
        m_textAttr.setFontName(fontName.getValue());
    PoMiscTextAttrElement::set(action->getState(), this, &m_textAttr);
}
