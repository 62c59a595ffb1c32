#ifndef ORAVANE_PODATAMAPPINGELEMENT_H
#define ORAVANE_PODATAMAPPINGELEMENT_H

#include <oravane/PoBasicObjectElement.h>

class PbDataMapping;

/// The data mapping in the traversal state; null where no node has set one.
class ORAVANE_API PoDataMappingElement : public PoBasicObjectElement {
    SO_ELEMENT_HEADER(PoDataMappingElement);

public:
    static void initClass();
    static void set(SoState *state, SoNode *node, const PbDataMapping *object);
    static const PbDataMapping *get(SoState *state);

protected:
    ~PoDataMappingElement() override = default;
};

#endif
