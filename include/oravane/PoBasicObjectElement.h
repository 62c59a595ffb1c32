#ifndef ORAVANE_POBASICOBJECTELEMENT_H
#define ORAVANE_POBASICOBJECTELEMENT_H

#include <oravane/OravaneApi.h>

#include <Inventor/elements/SoReplacedElement.h>
#include <Inventor/elements/SoSubElement.h>

class PbBase;

/// What the state elements of the library share: a pointer to a basic object, not owned, under the identity
/// of the attribute node that set it. Separators scope it, and a later node overrides an earlier one.
///
/// A node that puts another object into the state must have changed a field or be touched, since caches
/// compare nodes, not objects. An element is enabled in the actions that attribute nodes take part in:
/// callback, GL render, bounding box, matrix, event, pick, search and write; in any other action `set` does
/// nothing and `get` gives null.
class ORAVANE_API PoBasicObjectElement : public SoReplacedElement {
public:
    void init(SoState *state) override;

protected:
    PoBasicObjectElement() = default;
    ~PoBasicObjectElement() override = default;

    /// Enables a class in the eight actions.
    static void enable(SoType elementType, int stackIndex);

    static void setObject(SoState *state, int stackIndex, SoNode *node, const PbBase *object, int kind = 0);
    /// The element of the state, read so that every open cache depends on it; null where it is not enabled.
    static const PoBasicObjectElement *getElementOf(SoState *state, int stackIndex);
    static const PbBase *getObject(SoState *state, int stackIndex);

    const PbBase *m_object = nullptr;
    int m_kind = 0;
};

#endif
