#ifndef ORAVANE_POISOVALUESLISTELEMENT_H
#define ORAVANE_POISOVALUESLISTELEMENT_H

#include <oravane/PoBasicObjectElement.h>

class PbIsovaluesList;

/// The list of isovalues in the traversal state; null where no node has set one.
class ORAVANE_API PoIsovaluesListElement : public PoBasicObjectElement {
    SO_ELEMENT_HEADER(PoIsovaluesListElement);

public:
    static void initClass();
    static void set(SoState *state, SoNode *node, const PbIsovaluesList *object);
    static const PbIsovaluesList *get(SoState *state);

protected:
    ~PoIsovaluesListElement() override = default;
};

#endif
