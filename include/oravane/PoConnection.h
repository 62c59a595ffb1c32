#ifndef ORAVANE_POCONNECTION_H
#define ORAVANE_POCONNECTION_H

#include <oravane/OravaneApi.h>

class PbBase;
class PoBase;
class SoState;

/// A kit's pointer to a basic object that it does not own; see `PoConnection`.
class ORAVANE_API PoConnectionBase {
public:
    PoConnectionBase(const PoConnectionBase &) = delete;
    PoConnectionBase &operator=(const PoConnectionBase &) = delete;

protected:
    explicit PoConnectionBase(PoBase *kit);
    /// Disconnects the kit.
    ~PoConnectionBase();

    void connect(PbBase *object);
    /// Null also from the start of the object's deletion on.
    PbBase *object() const;

    /// Of the traversal that the kit is in; null outside of one.
    SoState *traversalState() const;
    /// The kit's rebuild under way depends on an element of the state, which it may need where there is no
    /// object.
    void dependOn(int stackIndex);

private:
    friend class PoBase;

    PoBase *m_kit;
    PbBase *m_object = nullptr;
};

/// Member of a kit that holds a basic object given by the application. While it is connected, a change of the
/// object marks the kit, and its deletion clears the pointer; the frame does both, and connects a copied kit
/// to the same objects.
///
/// \code
///   void PoMeshFilled::setMesh(PbMesh2D *mesh) { m_mesh.set(mesh); }    // m_mesh is a
///   PoConnection<PbMesh2D>{this}
/// \endcode
template <class Object>
class PoConnection : public PoConnectionBase {
public:
    explicit PoConnection(PoBase *kit) : PoConnectionBase(kit) {}

    /// Leaves the former object, connects to the new one, and touches the kit. Null only leaves.
    void set(Object *object) { connect(object); }

    /// The connected object, or null.
    Object *get() const { return static_cast<Object *>(object()); }
};

#endif
