#include <oravane/PoBase.h>
#include <oravane/PoDomain.h>
#include <oravane/PoDomainElement.h>
#include <oravane/PoParallelogram.h>
#include <oravane/PoParallelogram3.h>
#include <oravane/PoRectangle.h>

#include "Drawn.h"
#include "TestScene.h"

#include <Inventor/SbVec2f.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGetMatrixAction.h>
#include <Inventor/actions/SoGetPrimitiveCountAction.h>
#include <Inventor/actions/SoHandleEventAction.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/errors/SoReadError.h>
#include <Inventor/nodekits/SoWrapperKit.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/sensors/SoNodeSensor.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

using test::boundingBox;
using test::readBack;
using test::Ref;
using test::written;

/// A scene with one kit of any class under a separator, and a count of its rebuilds.
template <class Kit>
struct Scene {
    explicit Scene(Kit *newKit = new Kit) : kit(newKit), root(new SoSeparator) {
        root->addChild(kit);
        kit->addPostRebuildCallback([](void *count, PoBase *) { ++*static_cast<int *>(count); }, &rebuilds);
    }
    Kit *kit;
    Ref<SoSeparator> root;
    int rebuilds = 0;
};

SbBox3f box(float x0, float y0, float x1, float y1) {
    return {SbVec3f(x0, y0, 0), SbVec3f(x1, y1, 0)};
}

SbVec3f corner(SoBaseKit *kit, const char *part, int index) {
    auto *group = static_cast<SoGroup *>(kit->getPart(part, FALSE));
    return static_cast<SoCoordinate3 *>(group->getChild(0))->point[index];
}

/// The scene as a file of parts.
std::string writtenParts(SoNode *root, bool isBinary = false) {
    PoBase::setNodeWriteFormat(PoBase::WRITE_PARTS);
    const std::string text = written(root, isBinary);
    PoBase::setNodeWriteFormat(PoBase::WRITE_FIELDS);
    return text;
}

/// The box of what a file holds.
SbBox3f boxOf(const std::string &text) {
    const auto read = readBack(text);
    EXPECT_TRUE(read) << text;
    return read ? boundingBox(read.get()) : SbBox3f();
}

TEST(ShapeKits, GenerateTheirCorners) {
    Scene<PoRectangle> rectangle;
    boundingBox(rectangle.root.get());
    const SbVec3f square[] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(corner(rectangle.kit, "rectangle", i), square[i]);
    Scene<PoParallelogram> parallelogram;
    parallelogram.kit->p = SbVec2f(2, 0);
    boundingBox(parallelogram.root.get());
    EXPECT_EQ(corner(parallelogram.kit, "parallelogram", 3), SbVec3f(2, 1, 0));
    Scene<PoParallelogram3> inSpace;
    inSpace.kit->r = SbVec3f(1, 0, 5);
    boundingBox(inSpace.root.get());
    EXPECT_EQ(corner(inSpace.kit, "parallelogram3", 3), SbVec3f(0, 0, 5));
}

TEST(PoBase, RebuildsOnceForManyChangesAndNotAtAllForNone) {
    Scene<PoRectangle> scene;
    EXPECT_FALSE(scene.kit->isBuilt());
    for (int i = 0; i < 10; ++i)
        scene.kit->q = SbVec2f(2.f + static_cast<float>(i), 3);
    EXPECT_EQ(scene.rebuilds, 0);
    EXPECT_TRUE(scene.kit->isModified());
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(boundingBox(scene.root.get()), box(0, 0, 11, 3));
        test::drawnBy(scene.root.get());
        EXPECT_EQ(scene.rebuilds, 1);
    }
    EXPECT_FALSE(scene.kit->isModified());
    scene.kit->setUpdateMethod(PoBase::UPDATE_IMMEDIATE);
    scene.kit->q = SbVec2f(2, 4);
    EXPECT_EQ(scene.rebuilds, 2);
    EXPECT_EQ(corner(scene.kit, "rectangle", 2), SbVec3f(2, 4, 0));
    scene.kit->touchKit();
    EXPECT_EQ(scene.rebuilds, 3);
    EXPECT_FALSE(scene.kit->isModified());
}

TEST(PoBase, WhatACallbackOfARebuildChangesStartsNoOther) {
    for (const auto method : {PoBase::UPDATE_ON_TRAVERSAL, PoBase::UPDATE_IMMEDIATE}) {
        Scene<PoRectangle> scene;
        scene.kit->setUpdateMethod(method);
        struct Callback {
            Scene<PoRectangle> &scene;
            int runs = 0;
        } callback{scene};
        scene.kit->addPreRebuildCallback(
            [](void *data, PoBase *kit) {
                auto &self = *static_cast<Callback *>(data);
                if (++self.runs > 9)
                    return;
                self.scene.kit->p = SbVec2f(-1, -1);
                kit->touchKit();
                boundingBox(self.scene.root.get());
                writtenParts(self.scene.root.get());
            },
            &callback);
        scene.kit->q = SbVec2f(2, 3);
        EXPECT_EQ(boundingBox(scene.root.get()), box(-1, -1, 2, 3)) << "but it is seen";
        EXPECT_EQ(callback.runs, method == PoBase::UPDATE_IMMEDIATE ? 2 : 1) << "setter and first traversal";
        EXPECT_FALSE(scene.kit->isModified());
    }
}

TEST(PoBase, ARebuildDoesNotScheduleTheNextRedraw) {
    Scene<PoRectangle> scene;
    int notifications = 0;
    SoNodeSensor sensor([](void *count, SoSensor *) { ++*static_cast<int *>(count); }, &notifications);
    sensor.setPriority(0);
    sensor.attach(scene.root.get());
    boundingBox(scene.root.get());
    EXPECT_EQ(notifications, 0);
    EXPECT_TRUE(scene.kit->isNotifyEnabled());
    scene.kit->touchKit();
    EXPECT_GT(notifications, 0);
}

TEST(PoBase, EveryActionThatReachesANewKitSeesItsParts) {
    const auto pickedBy = [](SoNode *root) {
        SoRayPickAction action(SbViewportRegion(100, 100));
        action.setRay(SbVec3f(0.5f, 0.5f, 10), SbVec3f(0, 0, -1));
        action.apply(root);
        return action.getPickedPoint() != nullptr;
    };
    const auto foundBy = [](SoNode *root) {
        SoBaseKit::setSearchingChildren(TRUE);
        SoSearchAction action;
        action.setType(SoFaceSet::getClassTypeId());
        action.apply(root);
        SoBaseKit::setSearchingChildren(FALSE);
        return action.getPath() != nullptr;
    };
    const std::pair<const char *, std::function<bool(SoNode *)>> actions[] = {
        {"bounding box", [](SoNode *root) { return boundingBox(root) == box(0, 0, 1, 1); }},
        {"ray pick", pickedBy},
        {"callback", [](SoNode *root) { return test::drawnBy(root).triangles == 2; }},
        {"search", foundBy},
        {"write", [](SoNode *root) { return writtenParts(root).find("FaceSet") != std::string::npos; }},
    };
    for (const auto &[name, sees] : actions) {
        SCOPED_TRACE(name);
        Scene<PoRectangle> scene;
        EXPECT_TRUE(sees(scene.root.get()));
        EXPECT_TRUE(scene.kit->isBuilt());
    }
    // These draw nothing; they must reach a new kit, and its parts, without harm.
    Scene<PoRectangle> scene;
    SoGetPrimitiveCountAction count;
    count.apply(scene.root.get());
    SoHandleEventAction event(SbViewportRegion(100, 100));
    event.apply(scene.root.get());
    SoGetMatrixAction matrix(SbViewportRegion(100, 100));
    matrix.apply(scene.root.get());
}

TEST(PoBase, CachesAboveAKitFollowTheAttributesBeforeIt) {
    const Ref<SoSeparator> root(new SoSeparator);
    root->boundingBoxCaching = SoSeparator::ON;
    auto *domain = new PoDomain;
    root->addChild(domain);
    auto *cached = new SoSeparator;
    cached->boundingBoxCaching = SoSeparator::ON;
    cached->addChild(new PoRectangle);
    root->addChild(cached);
    EXPECT_EQ(boundingBox(root.get()), box(0, 0, 1, 1));
    EXPECT_EQ(boundingBox(root.get()), box(0, 0, 1, 1));
    domain->max = SbVec3f(4, 2, 4); // y scaled by 2
    EXPECT_EQ(boundingBox(root.get()), box(0, 0, 1, 2));
    domain->transformType = PoDomain::TRANSFORM_01;
    EXPECT_EQ(boundingBox(root.get()), box(0, 0, 0.25f, 0.5f));
}

TEST(PoBase, ADomainMovesTheTransformAndNothingElseInAKitThatDoesNotUseIt) {
    Scene<PoRectangle> scene;
    boundingBox(scene.root.get());
    EXPECT_EQ(scene.kit->getPart("domainTransform", FALSE), nullptr);
    {
        PbDomain domain(0, 0, 4, 2, PbDomain::BBOX_AS_GIVEN);
        scene.kit->setDomain(&domain);
        EXPECT_EQ(scene.kit->getDomain(), &domain);
        EXPECT_FALSE(scene.kit->isModified());
        EXPECT_EQ(boundingBox(scene.root.get()), box(0, 0, 1, 2));
        domain.setTransformType(PbDomain::SCALE_Y_FIXED);
        EXPECT_FALSE(scene.kit->isModified());
        EXPECT_EQ(boundingBox(scene.root.get()), box(0, 0, 0.5f, 1));
        domain.setDomain(0, 0, 8, 2, PbDomain::BBOX_AS_GIVEN);
        EXPECT_EQ(boundingBox(scene.root.get()), box(0, 0, 0.25f, 1));
    }
    SbBox3f fallback;
    scene.kit->getDomain()->getDomain(fallback);
    EXPECT_EQ(fallback, SbBox3f(SbVec3f(0, 0, 0), SbVec3f(1, 1, 1))) << "a deleted domain is forgotten";
    EXPECT_EQ(boundingBox(scene.root.get()), box(0, 0, 1, 1));
    EXPECT_EQ(scene.rebuilds, 1) << "only the transform has moved";
}

TEST(PoBase, TheDomainOfTheSceneReturnsWhenTheOwnOneGoes) {
    Scene<PoRectangle> scene;
    auto *inScene = new PoDomain;
    inScene->max = SbVec3f(4, 2, 4);
    scene.root->insertChild(inScene, 0);
    scene.root->boundingBoxCaching = SoSeparator::ON;
    // The cube has no transform, so that its going changes no part of the kit.
    const PbDomain cube, flat(0, 0, 2, 8, PbDomain::BBOX_AS_GIVEN);
    for (const auto &[own, seen] : {std::pair(cube, box(0, 0, 1, 1)), {flat, box(0, 0, 1, 0.25f)}})
        for (const bool isDeleted : {false, true}) {
            EXPECT_EQ(boundingBox(scene.root.get()), box(0, 0, 1, 2));
            PbDomain domain(own);
            scene.kit->setDomain(&domain);
            EXPECT_EQ(boundingBox(scene.root.get()), seen);
            if (!isDeleted)
                scene.kit->setDomain(nullptr);
        }
    EXPECT_EQ(boundingBox(scene.root.get()), box(0, 0, 1, 2));
    scene.kit->enableDomainTransform(0);
    inScene->max = SbVec3f(4, 1, 4);
    EXPECT_EQ(boundingBox(scene.root.get()), box(0, 0, 1, 2))
        << "switched off: the transform stays as it was";
}

/// A kit that counts what its basic objects report, and may answer it.
struct Listener : PoBase {
    Listener() = default;
    void basicObjectChange(PbBase *object) override {
        changes.push_back(object->getChangeType());
        if (onChange)
            onChange(object);
        PoBase::basicObjectChange(object);
    }
    std::vector<PbBase::ChangeType> changes;
    std::function<void(PbBase *)> onChange;
};

TEST(PbBase, TellsEveryConnectedKitTheLatestFirst) {
    const Ref<Listener> first(new Listener), second(new Listener);
    std::vector<Listener *> order;
    for (Listener *kit : {first.get(), second.get()})
        kit->onChange = [kit, &order](PbBase *) { order.push_back(kit); };
    {
        PbDomain a, b(0, 0, 2, 2, PbDomain::BBOX_AS_GIVEN);
        a.addConnection(first.get());
        a.addConnection(second.get());
        b.addConnection(first.get());
        a.touch();
        EXPECT_EQ(order, (std::vector<Listener *>{second.get(), first.get()}));
        order.clear();
        a = b; // tells the kits of a, and keeps them
        EXPECT_EQ(order, (std::vector<Listener *>{second.get(), first.get()}));
        EXPECT_EQ(a.removeConnection(second.get()), 1);
        EXPECT_EQ(a.removeConnection(second.get()), 0);
        order.clear();
        first->changes.clear();
    }
    EXPECT_EQ(first->changes,
              (std::vector<PbBase::ChangeType>{PbBase::CHANGE_DELETED, PbBase::CHANGE_DELETED}));
    EXPECT_EQ(order.size(), 2u);
}

TEST(PbBase, KitsMayDisconnectAndConnectInsideANotification) {
    const Ref<Listener> kits[] = {Ref<Listener>(new Listener), Ref<Listener>(new Listener),
                                  Ref<Listener>(new Listener)};
    PbDomain domain;
    for (const auto &kit : kits)
        domain.addConnection(kit.get());
    kits[2]->onChange = [&](PbBase *object) {
        object->removeConnection(kits[2].get());
        object->removeConnection(kits[1].get());
        object->addConnection(kits[2].get());
    };
    domain.touch();
    EXPECT_EQ(kits[2]->changes.size(), 1u) << "connected again during the walk: told next time";
    EXPECT_EQ(kits[1]->changes.size(), 0u) << "disconnected before its turn";
    EXPECT_EQ(kits[0]->changes.size(), 1u);
    domain.touch();
    EXPECT_EQ(kits[2]->changes.size(), 2u);
}

TEST(PbBase, ObjectsAndKitsMayGoInsideANotification) {
    const Ref<Listener> last(new Listener), first(new Listener);
    auto domain = std::make_unique<PbDomain>();
    for (const auto &kit : {last, first})
        domain->addConnection(kit.get());
    first->onChange = [&](PbBase *) {
        first->onChange = nullptr;
        domain.reset();
    };
    domain->touch();
    EXPECT_EQ(last->changes, (std::vector<PbBase::ChangeType>{PbBase::CHANGE_DELETED}));

    PbDomain other;
    Scene<Listener> scene;
    scene.kit->setDomain(&other);
    SoNodeSensor emptiesScene(
        [](void *root, SoSensor *) { static_cast<SoGroup *>(root)->removeAllChildren(); }, scene.root.get());
    emptiesScene.setPriority(0);
    emptiesScene.attach(scene.root.get());
    other.touch();
    EXPECT_EQ(scene.root->getNumChildren(), 0);
    other.touch(); // nobody is left to be told
}

TEST(KitFiles, BothFormatsReadBackInAsciiAndBinaryInAnyOrder) {
    for (const bool isBinary : {false, true}) {
        SCOPED_TRACE(isBinary ? "binary" : "ascii");
        Scene<PoRectangle> scene;
        scene.kit->q = SbVec2f(4, 5);
        scene.root->insertChild(new PoDomain, 0);
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(boxOf(writtenParts(scene.root.get(), isBinary)), box(0, 0, 4, 5));
            const std::string fields = written(scene.root.get(), isBinary);
            EXPECT_EQ(boxOf(fields), box(0, 0, 4, 5));
            EXPECT_EQ(fields.find("Coordinate3"), std::string::npos)
                << "only fields, of those the changed ones";
            EXPECT_EQ(fields.find("p 0 0"), std::string::npos) << fields;
            const Ref<SoNode> copied(scene.kit->copy());
            EXPECT_EQ(boundingBox(copied.get()), box(0, 0, 4, 5)) << "writing changed nothing in the kit";
        }
    }
}

TEST(KitFiles, PartsOfAFileStayUntilSomethingChanges) {
    Scene<PoRectangle> scene;
    scene.kit->q = SbVec2f(4, 5);
    PbDomain domain(0, 0, 4, 2, PbDomain::BBOX_AS_GIVEN);
    scene.kit->setDomain(&domain);
    const auto read = readBack(writtenParts(scene.root.get()));
    ASSERT_TRUE(read);
    EXPECT_EQ(boundingBox(read.get()), box(0, 0, 4, 10)) << "with the transform of its domain";
    SoSearchAction search;
    search.setType(PoRectangle::getClassTypeId());
    search.apply(read.get());
    ASSERT_TRUE(search.getPath());
    auto *kit = static_cast<PoRectangle *>(search.getPath()->getTail());
    EXPECT_EQ(boxOf(writtenParts(read.get())), box(0, 0, 4, 10)) << "and can be written again";
    const Ref<SoNode> copied(kit->copy());
    EXPECT_EQ(boundingBox(copied.get()), box(0, 0, 4, 10)) << "and copied";
    kit->p = SbVec2f(-1, -1);
    EXPECT_EQ(boundingBox(read.get()), box(-1, -1, 1, 1));
}

TEST(KitFiles, AKitDueForARebuildIsWrittenAsItIsNow) {
    Scene<PoRectangle> scene;
    auto *domain = new PoDomain;
    domain->max = SbVec3f(4, 2, 4);
    scene.root->insertChild(domain, 0);
    const std::string text = writtenParts(scene.root.get());
    EXPECT_EQ(text.find("PoDomain"), std::string::npos) << "attribute nodes are left out";
    EXPECT_EQ(boxOf(text), box(0, 0, 1, 2)) << "but are seen";
    auto *outer = new SoWrapperKit;
    outer->setPart("contents", scene.root.get());
    const Ref<SoSeparator> root(new SoSeparator);
    root->addChild(outer);
    boundingBox(root.get());
    scene.kit->q = SbVec2f(4, 5);
    EXPECT_EQ(boxOf(writtenParts(root.get())), box(0, 0, 4, 10)) << "inside another kit";
    EXPECT_EQ(boundingBox(root.get()), box(0, 0, 4, 10));
}

TEST(KitFiles, CutAndWrongFilesAreReadOrRefused) {
    // Read errors are expected here.
    SoErrorCB *const before = SoReadError::getHandlerCallback();
    SoReadError::setHandlerCallback([](const SoError *, void *) {}, nullptr);
    Scene<PoRectangle> scene;
    scene.kit->q = SbVec2f(4, 5);
    for (const bool isBinary : {false, true}) {
        const std::string whole = writtenParts(scene.root.get(), isBinary);
        for (std::size_t size = 0; size < whole.size(); size += isBinary ? 4 : 7)
            if (const auto read = readBack(whole.substr(0, size)))
                boundingBox(read.get());
    }
    // A field that the class does not have must not stay in the class.
    readBack("#Inventor V2.1 ascii\nSeparator { PoRectangle { fields [ SFVec2f p, SFFloat newer ] newer 3 } "
             "PoDomain { fields [ SFFloat newer ] newer 3 } }");
    EXPECT_EQ(scene.kit->getField("newer"), nullptr);
    EXPECT_EQ(Ref<SoNode>(new PoDomain)->getField("newer"), nullptr);
    for (const std::string part :
         {"catchActionCallback", "catchActionLevel2Callback", "domainTransform", "rectangle"})
        EXPECT_EQ(boxOf("#Inventor V2.1 ascii\nPoRectangle { q 4 5 " + part + " Cube { } }"),
                  box(0, 0, 4, 5));
    SoReadError::setHandlerCallback(before, nullptr);
}

TEST(KitFiles, ReadersWithoutTheLibraryGetUnknownNodesThatDraw) {
    // The same text under names that no class has is what such a reader sees.
    Scene<PoRectangle> scene;
    scene.kit->q = SbVec2f(4, 5);
    std::string text = writtenParts(scene.root.get());
    const std::string name = "PoRectangle";
    for (std::size_t at = text.find(name); at != std::string::npos; at = text.find(name, at))
        text.replace(at, name.size(), "PxRectangle");
    EXPECT_EQ(boxOf(text), box(0, 0, 4, 5)) << text;
}

TEST(KitCopies, ServeThemselvesAlsoBelowACopiedSeparator) {
    Scene<PoRectangle> scene;
    scene.kit->q = SbVec2f(4, 5);
    PbDomain domain(0, 0, 4, 2, PbDomain::BBOX_AS_GIVEN);
    scene.kit->setDomain(&domain);
    const Ref<SoSeparator> copied(static_cast<SoSeparator *>(scene.root->copy()));
    const int before = scene.rebuilds;
    EXPECT_EQ(boundingBox(copied.get()), box(0, 0, 4, 10));
    auto *copy = static_cast<PoRectangle *>(copied->getChild(0));
    EXPECT_TRUE(copy->isBuilt());
    EXPECT_GT(scene.rebuilds, before) << "the copy has the callbacks of the original";
    copy->q = SbVec2f(1, 1);
    EXPECT_EQ(boundingBox(copied.get()), box(0, 0, 1, 2));
    EXPECT_EQ(boundingBox(scene.root.get()), box(0, 0, 4, 10)) << "the original is its own";
    domain.setDomain(0, 0, 4, 4, PbDomain::BBOX_AS_GIVEN);
    EXPECT_EQ(boundingBox(copied.get()), box(0, 0, 1, 1)) << "connected to the same domain";
    const Ref<PoBase> direct(static_cast<PoBase *>(scene.kit->copy()));
    EXPECT_TRUE(direct->isBuilt()) << "copy() of a kit returns it rebuilt";
}

TEST(PoBase, StartsOnceAndRegistersInTheLibrary) {
    const SoType type = PoRectangle::getClassTypeId();
    PoBase::init();
    PoRectangle::initClass();
    EXPECT_EQ(SoType::fromName("PoRectangle"), type);
    EXPECT_TRUE(type.isDerivedFrom(SoType::fromName("PoKestrava")));
    Scene<PoRectangle> scene;
    testing::internal::CaptureStdout();
    scene.kit->printDiagram();
    EXPECT_NE(testing::internal::GetCapturedStdout().find("rectangle"), std::string::npos);
}

} // namespace
