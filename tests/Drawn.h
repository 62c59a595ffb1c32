#ifndef ORAVANE_TESTS_DRAWN_H
#define ORAVANE_TESTS_DRAWN_H

#include "TestScene.h"

#include <oravane/PoBase.h>

#include <Inventor/SbColor.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoQuadMesh.h>

#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <set>

#include <gtest/gtest.h>

namespace test {

constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
constexpr float INFINITE = std::numeric_limits<float>::infinity();

/// What a scene draws. Areas and lengths times red tell colours apart. A segment counts once, however often
/// and in whichever direction it is drawn.
struct Drawn {
    double area = 0, redArea = 0; ///< in the x-y plane
    double areaInSpace = 0;
    double length = 0, redLength = 0;
    int triangles = 0, segments = 0;
    bool isFinite = true;
    std::set<std::array<float, 6>> known;
};

/// The toolkit counts the cells of a quad mesh wrongly under PER_FACE; this is what its renderer takes.
inline int materialIndex(SoCallbackAction *traversal, const SoPrimitiveVertex *vertex) {
    const int index = vertex->getMaterialIndex();
    const auto *quads = dynamic_cast<const SoQuadMesh *>(traversal->getCurPathTail());
    if (!quads || traversal->getMaterialBinding() != SoMaterialBinding::PER_FACE)
        return index;
    const int perRow = quads->verticesPerRow.getValue();
    return index / perRow * (perRow - 1) + index % perRow - 1;
}

inline double redOf(SoCallbackAction *traversal, const SoPrimitiveVertex *vertex) {
    SbColor ambient, diffuse, specular, emission;
    float shininess = 0, transparency = 0;
    traversal->getMaterial(ambient, diffuse, specular, emission, shininess, transparency,
                           materialIndex(traversal, vertex));
    return diffuse[0];
}

inline void addTriangle(void *data, SoCallbackAction *traversal, const SoPrimitiveVertex *a,
                        const SoPrimitiveVertex *b, const SoPrimitiveVertex *c) {
    auto &sum = *static_cast<Drawn *>(data);
    const SbVec3f cross = (b->getPoint() - a->getPoint()).cross(c->getPoint() - a->getPoint());
    const double area = std::abs(cross[2]) / 2.0;
    sum.area += area;
    sum.areaInSpace += cross.length() / 2.0;
    sum.redArea += area * (redOf(traversal, a) + redOf(traversal, b) + redOf(traversal, c)) / 3;
    sum.isFinite = sum.isFinite && std::isfinite(cross.length());
    ++sum.triangles;
}

inline void addSegment(void *data, SoCallbackAction *traversal, const SoPrimitiveVertex *a,
                       const SoPrimitiveVertex *b) {
    auto &sum = *static_cast<Drawn *>(data);
    const SbVec3f p = a->getPoint(), q = b->getPoint();
    const double length = (q - p).length();
    sum.isFinite = sum.isFinite && std::isfinite(length);
    const std::array<float, 6> there{p[0], p[1], p[2], q[0], q[1], q[2]},
        back{q[0], q[1], q[2], p[0], p[1], p[2]};
    if (!sum.known.insert(std::min(there, back)).second)
        return;
    sum.length += length;
    sum.redLength += length * (redOf(traversal, a) + redOf(traversal, b)) / 2;
    ++sum.segments;
}

inline Drawn drawnBy(SoNode *root) {
    Drawn drawn;
    SoCallbackAction action;
    action.addTriangleCallback(SoShape::getClassTypeId(), addTriangle, &drawn);
    action.addLineSegmentCallback(SoShape::getClassTypeId(), addSegment, &drawn);
    action.apply(root);
    return drawn;
}

/// A kit in a scene, and a count of its rebuilds.
template <class Kit>
struct KitScene {
    KitScene() : root(new SoSeparator), kit(new Kit) {
        root->addChild(kit);
        kit->addPostRebuildCallback([](void *count, PoBase *) { ++*static_cast<int *>(count); }, &rebuilds);
    }
    /// Of a kit with a mesh of its own.
    template <class Mesh>
    explicit KitScene(Mesh *mesh) : KitScene() {
        kit->setMesh(mesh);
        kit->valuesIndex = 0;
    }
    KitScene(const KitScene &) = delete;

    void traverse() const { SoCallbackAction().apply(root.get()); }
    template <class Node = SoGroup>
    Node *part(const char *name) const {
        return dynamic_cast<Node *>(kit->getPart(name, FALSE));
    }
    /// The rebuilds that a change and the traversals behind it cause; those of the change itself come at once
    /// or not at all.
    int rebuildsOf(const std::function<void()> &change, bool isImmediate = false) {
        traverse();
        const int before = rebuilds;
        change();
        EXPECT_EQ(rebuilds - before, isImmediate ? 1 : 0);
        traverse();
        traverse();
        return rebuilds - before;
    }

    Ref<SoSeparator> root;
    Kit *kit;
    int rebuilds = 0;
};

} // namespace test

#endif
