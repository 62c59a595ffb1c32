#ifndef ORAVANE_TESTS_ATTRIBUTES_STATEBEHIND_H
#define ORAVANE_TESTS_ATTRIBUTES_STATEBEHIND_H

#include "TestScene.h"

#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/nodes/SoCallback.h>

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

/// The first node of a file's text or bytes, as `Node`; the file must be readable.
template <class Node>
test::Ref<Node> readNode(const std::string &file) {
    const auto root = test::readBack(file);
    return test::Ref<Node>(root ? dynamic_cast<Node *>(root->getChild(0)) : nullptr);
}

#endif
