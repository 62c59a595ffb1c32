#ifndef ORAVANE_TESTS_TESTSCENE_H
#define ORAVANE_TESTS_TESTSCENE_H

#include <Inventor/SbBox3f.h>
#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/nodes/SoNode.h>
#include <Inventor/nodes/SoSeparator.h>

#include <cstdlib>
#include <string>
#include <utility>

namespace test {

/// A counted reference to a node.
template <class Node>
class Ref {
public:
    explicit Ref(Node *node = nullptr) : m_node(node) {
        if (m_node)
            m_node->ref();
    }
    Ref(const Ref &other) : Ref(other.m_node) {}
    Ref &operator=(Ref other) {
        std::swap(m_node, other.m_node);
        return *this;
    }
    ~Ref() {
        if (m_node)
            m_node->unref();
    }
    Node *operator->() const { return m_node; }
    Node *get() const { return m_node; }
    explicit operator bool() const { return m_node != nullptr; }

private:
    Node *m_node;
};

inline SbBox3f boundingBox(SoNode *node) {
    SoGetBoundingBoxAction action(SbViewportRegion(100, 100));
    action.apply(node);
    return action.getBoundingBox();
}

/// What `write` puts into a file in memory: its text, or its bytes in the binary form.
template <class Write>
std::string writtenBy(bool isBinary, Write write) {
    SoOutput out;
    void *buffer = std::malloc(1000);
    out.setBuffer(buffer, 1000, [](void *block, std::size_t size) { return std::realloc(block, size); });
    out.setBinary(isBinary);
    write(&out);
    std::size_t size = 0;
    out.getBuffer(buffer, size);
    std::string text(static_cast<const char *>(buffer), size);
    std::free(buffer);
    return text;
}

/// The scene as a file.
inline std::string written(SoNode *node, bool isBinary = false) {
    return writtenBy(isBinary, [node](SoOutput *out) {
        SoWriteAction action(out);
        action.apply(node);
    });
}

/// The scene of a file's text or bytes; null when it cannot be read.
inline Ref<SoSeparator> readBack(const std::string &text) {
    SoInput in;
    in.setBuffer(text.data(), text.size());
    return Ref<SoSeparator>(SoDB::readAll(&in));
}

} // namespace test

#endif
