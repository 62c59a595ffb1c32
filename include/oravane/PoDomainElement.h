#ifndef ORAVANE_PODOMAINELEMENT_H
#define ORAVANE_PODOMAINELEMENT_H

#include <oravane/PoBasicObjectElement.h>

class PbDomain;

/// The domain in the traversal state. Never null: a state starts with a default domain.
class ORAVANE_API PoDomainElement : public PoBasicObjectElement {
    SO_ELEMENT_HEADER(PoDomainElement);

public:
    static void initClass();
    void init(SoState *state) override;
    static void set(SoState *state, SoNode *node, const PbDomain *domain);
    static const PbDomain *get(SoState *state);

protected:
    ~PoDomainElement() override = default;
};

#endif
