#ifndef ORAVANE_TESTS_ATTRIBUTES_ATTRIBUTETEST_H
#define ORAVANE_TESTS_ATTRIBUTES_ATTRIBUTETEST_H

#include <oravane/PoBase.h>

#include "TestScene.h"

#include <Inventor/SbColor.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/nodes/SoCallback.h>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <vector>

constexpr float NaN = std::numeric_limits<float>::quiet_NaN();
constexpr float infinity = std::numeric_limits<float>::infinity();

using Values = std::vector<float>;

inline int size(const Values &values) {
    return static_cast<int>(values.size());
}

inline const SbColor black(0, 0, 0), white(1, 1, 1), grey(0.5f, 0.5f, 0.5f);
inline const SbColor red(1, 0, 0), green(0, 1, 0), blue(0, 0, 1);

/// Counts what a kit is told that is connected to `object`; each time it calls `onChange`, from inside the
/// notification.
class ChangeCounter {
public:
    explicit ChangeCounter(
        PbBase &object, std::function<void()> onChange = [] {})
        : m_object(object), m_kit(new Kit) {
        m_kit->onChange = std::move(onChange);
        object.addConnection(m_kit.get());
    }
    ~ChangeCounter() { m_object.removeConnection(m_kit.get()); }
    ChangeCounter(const ChangeCounter &) = delete;

    int changes() const { return m_kit->count; }

private:
    struct Kit : PoBase {
        int count = 0;
        std::function<void()> onChange;

        void basicObjectChange(PbBase *object) override {
            EXPECT_EQ(object->getChangeType(), PbBase::CHANGE_GENERAL);
            ++count;
            onChange();
        }
    };

    PbBase &m_object;
    const test::Ref<Kit> m_kit;
};

/// The object that `Element` holds behind `node` in a traversal; the node, when it is given, keeps owning it.
template <class Element>
auto stateBehind(SoNode *node) {
    using Object = decltype(Element::get(nullptr));
    Object seen = nullptr;
    const test::Ref<SoSeparator> root(new SoSeparator);
    auto *probe = new SoCallback;
    probe->setCallback(
        [](void *data, SoAction *action) { *static_cast<Object *>(data) = Element::get(action->getState()); },
        &seen);
    if (node)
        root->addChild(node);
    root->addChild(probe);
    SoCallbackAction action;
    action.apply(root.get());
    return seen;
}

/// The node of a file's text (its first line is added) after a way through a file of its own, text or binary;
/// null when it cannot be read.
template <class Node>
test::Ref<Node> throughFile(const std::string &text, bool isBinary) {
    auto root = test::readBack("#Inventor V2.1 ascii\n" + text);
    if (root)
        root = test::readBack(test::written(root->getChild(0), isBinary));
    return test::Ref<Node>(root ? dynamic_cast<Node *>(root->getChild(0)) : nullptr);
}

#endif
