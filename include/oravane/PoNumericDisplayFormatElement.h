#ifndef ORAVANE_PONUMERICDISPLAYFORMATELEMENT_H
#define ORAVANE_PONUMERICDISPLAYFORMATELEMENT_H

#include <oravane/PoBasicObjectElement.h>

class PbNumericDisplayFormat;

/// The number format in the traversal state. Never null: a state starts with a default one.
class ORAVANE_API PoNumericDisplayFormatElement : public PoBasicObjectElement {
    SO_ELEMENT_HEADER(PoNumericDisplayFormatElement);

public:
    static void initClass();
    void init(SoState *state) override;
    static void set(SoState *state, SoNode *node, const PbNumericDisplayFormat *object);
    static const PbNumericDisplayFormat *get(SoState *state);

protected:
    ~PoNumericDisplayFormatElement() override = default;
};

#endif
