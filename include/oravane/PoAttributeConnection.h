#ifndef ORAVANE_POATTRIBUTECONNECTION_H
#define ORAVANE_POATTRIBUTECONNECTION_H

#include <oravane/PoConnection.h>

class PbDateFormatMapping;
class PbMiscTextAttr;
class PbNumericDisplayFormat;
class PoDateFormatMappingElement;
class PoMiscTextAttrElement;
class PoNumericDisplayFormatElement;

/// An attribute that a kit takes from the program, else from the scene: the object in force is the connected
/// one; without it, inside of a traversal, that of the state element; else a default one.
///
/// \code
///   void PoAxis::setMiscTextAttr(PbMiscTextAttr *a) { m_miscTextAttr.set(a); }
///   const PbMiscTextAttr *PoAxis::getMiscTextAttr() const { return m_miscTextAttr.inForce(); }
///   void PoAxis::preRebuild() { PoBaseAxis::preRebuild(); m_miscTextAttr.addToCache(); }
///   void PoAxis::addElementsAllCaches() { PoBaseAxis::addElementsAllCaches(); m_miscTextAttr.readElement();
///   }
/// \endcode
template <class Object, class Element>
class PoAttributeConnection : public PoConnection<Object> {
public:
    using PoConnection<Object>::PoConnection;

    /// Never null. Valid until the scene or the program changes it.
    const Object *inForce() const {
        static const Object defaultObject;
        if (const Object *own = this->get())
            return own;
        SoState *state = this->traversalState();
        const Object *ofScene = state ? Element::get(state) : nullptr;
        return ofScene ? ofScene : &defaultObject;
    }

    /// For `preRebuild`: the rebuild depends on the element. One outside of a traversal, without an own
    /// object, is repeated by the next traversal.
    void addToCache() { this->dependOn(Element::getClassStackIndex()); }
    /// For `addElementsAllCaches`.
    void readElement() const { Element::get(this->traversalState()); }
};

using PoMiscTextAttrConnection = PoAttributeConnection<PbMiscTextAttr, PoMiscTextAttrElement>;
using PoNumericFormatConnection =
    PoAttributeConnection<PbNumericDisplayFormat, PoNumericDisplayFormatElement>;
using PoDateMappingConnection = PoAttributeConnection<PbDateFormatMapping, PoDateFormatMappingElement>;

#endif
