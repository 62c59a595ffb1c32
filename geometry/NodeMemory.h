#ifndef ORAVANE_GEOMETRY_NODEMEMORY_H
#define ORAVANE_GEOMETRY_NODEMEMORY_H

#include <oravane/PlanarRecords.h>

#include <Inventor/SbVec3f.h>
#include <Inventor/fields/SoMFVec3f.h>

#include <cstddef>

namespace oravane {

/// Gives a field `count` values to be written, in memory of just that size: a field that grows doubles its
/// memory and copies. `finishEditing` of the field has to follow.
template <class Field>
auto *startValues(Field &field, std::size_t count) {
    field.setNum(0);
    field.setNum(static_cast<int>(count));
    return field.startEditing();
}

/// The same for points, seen as the records that the engines write.
inline Ppoint3 *startPoints(SoMFVec3f &field, std::size_t count) {
    static_assert(sizeof(SbVec3f) == sizeof(Ppoint3) && alignof(SbVec3f) == alignof(Ppoint3));
    return reinterpret_cast<Ppoint3 *>(startValues(field, count));
}

/// Counted reference to a node of the scene graph.
template <class Node>
class NodeRef {
public:
    NodeRef() = default;
    ~NodeRef() { reset(nullptr); }
    NodeRef(const NodeRef &) = delete;
    NodeRef &operator=(const NodeRef &) = delete;

    void reset(Node *node) {
        if (node)
            node->ref();
        if (m_node)
            m_node->unref();
        m_node = node;
    }
    Node *get() const { return m_node; }
    Node *operator->() const { return m_node; }

private:
    Node *m_node = nullptr;
};

} // namespace oravane

#endif
