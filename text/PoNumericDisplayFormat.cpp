#include <oravane/PoNumericDisplayFormat.h>

#include "core/ClassTable.h"

#include <oravane/PoNumericDisplayFormatElement.h>

#include <Inventor/actions/SoAction.h>

SO_NODE_SOURCE(PoNumericDisplayFormat)

void PoNumericDisplayFormat::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_NODE_INIT_CLASS(PoNumericDisplayFormat, PoNode, "PoNode");
}

PoNumericDisplayFormat::PoNumericDisplayFormat() {
    SO_NODE_CONSTRUCTOR(PoNumericDisplayFormat);
    SO_NODE_ADD_FIELD(formatType, (AUTO_FORMAT));
    SO_NODE_ADD_FIELD(numDecimal, (0));
    SO_NODE_ADD_FIELD(tenPower, (0));
    SO_NODE_DEFINE_ENUM_VALUE(FormatType, AUTO_FORMAT);
    SO_NODE_DEFINE_ENUM_VALUE(FormatType, FLOAT_FORMAT);
    SO_NODE_DEFINE_ENUM_VALUE(FormatType, INTEGER_FORMAT);
    SO_NODE_SET_SF_ENUM_TYPE(formatType, FormatType);
    m_formatWatch.watch({&formatType, &numDecimal, &tenPower});
}

void PoNumericDisplayFormat::doAction(SoAction *action) {
    if (m_formatWatch.takeChanged())
        m_format.setFormat(static_cast<PbNumericDisplayFormat::FormatType>(formatType.getValue()),
                           tenPower.getValue(), numDecimal.getValue());
    PoNumericDisplayFormatElement::set(action->getState(), this, &m_format);
}
