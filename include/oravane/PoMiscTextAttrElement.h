#ifndef ORAVANE_POMISCTEXTATTRELEMENT_H
#define ORAVANE_POMISCTEXTATTRELEMENT_H

#include <oravane/PoBasicObjectElement.h>

class PbMiscTextAttr;

/// The text attributes in the traversal state. Never null: a state starts with default ones.
class ORAVANE_API PoMiscTextAttrElement : public PoBasicObjectElement {
    SO_ELEMENT_HEADER(PoMiscTextAttrElement);

public:
    static void initClass();
    void init(SoState *state) override;
    static void set(SoState *state, SoNode *node, const PbMiscTextAttr *object);
    static const PbMiscTextAttr *get(SoState *state);

protected:
    ~PoMiscTextAttrElement() override = default;
};

#endif
