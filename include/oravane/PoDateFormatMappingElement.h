#ifndef ORAVANE_PODATEFORMATMAPPINGELEMENT_H
#define ORAVANE_PODATEFORMATMAPPINGELEMENT_H

#include <oravane/PoBasicObjectElement.h>

class PbDateFormatMapping;

/// The mapping of dates in the traversal state. Never null: a state starts with a default one.
class ORAVANE_API PoDateFormatMappingElement : public PoBasicObjectElement {
    SO_ELEMENT_HEADER(PoDateFormatMappingElement);

public:
    static void initClass();
    void init(SoState *state) override;
    static void set(SoState *state, SoNode *node, const PbDateFormatMapping *object);
    static const PbDateFormatMapping *get(SoState *state);

protected:
    ~PoDateFormatMappingElement() override = default;
};

#endif
