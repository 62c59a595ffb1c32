#include <oravane/PbDomain.h>
#include <oravane/PoDomain.h>
#include <oravane/PoDomainElement.h>

#include "TestScene.h"

#include <Inventor/SbVec2f.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/nodes/SoCallback.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoTransform.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

SbBox3f boxOf(const PbDomain &domain) {
    SbBox3f box;
    domain.getDomain(box);
    return box;
}

SbBox3f box(float x0, float y0, float z0, float x1, float y1, float z1) {
    return {SbVec3f(x0, y0, z0), SbVec3f(x1, y1, z1)};
}

TEST(PbDomain, CubeTypesKeepTheCentre) {
    EXPECT_EQ(boxOf(PbDomain()), box(0, 0, 0, 1, 1, 1));
    EXPECT_EQ(boxOf(PbDomain(0, 0, 10, 2, PbDomain::BBOX_AS_GIVEN)), box(0, 0, 0, 10, 2, 1));
    EXPECT_EQ(boxOf(PbDomain(0, 0, 10, 2, PbDomain::BBOX_MAX_CUBE)), box(0, -4, 0, 10, 6, 1));
    EXPECT_EQ(boxOf(PbDomain(0, 0, 10, 2, PbDomain::BBOX_MIN_CUBE)), box(4, 0, 0, 6, 2, 1));
    EXPECT_EQ(boxOf(PbDomain(0, 0, 0, 10, 2, 4, PbDomain::BBOX_MIN_CUBE)), box(4, 0, 1, 6, 2, 3));
}

TEST(PbDomain, RefusesEmptyReversedAndUndefinedBoxes) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    PbDomain domain(0, 0, 10, 2, PbDomain::BBOX_AS_GIVEN);
    domain.setDomain(1, 0, 0, 1, PbDomain::BBOX_AS_GIVEN);
    domain.setDomain(0, 0, 0, 1, PbDomain::BBOX_AS_GIVEN);
    domain.setDomain(0, 0, nan, 1, PbDomain::BBOX_AS_GIVEN);
    domain.setDomain(0, 0, 5, 1, 1, 5, PbDomain::BBOX_AS_GIVEN);
    const float huge = std::numeric_limits<float>::max(), infinite = std::numeric_limits<float>::infinity();
    domain.setDomain(0, 0, infinite, 1, PbDomain::BBOX_AS_GIVEN);
    domain.setDomain(-huge, 0, huge, 1, PbDomain::BBOX_AS_GIVEN);
    domain.setDomain(0, 0, 1e-40f, 1, PbDomain::BBOX_AS_GIVEN);       // a scale of 1e40 is infinite
    domain.setDomain(1e8f, 0, 1e8f + 64, 1, PbDomain::BBOX_MIN_CUBE); // a side of 1 is lost at 1e8
    EXPECT_EQ(boxOf(domain), box(0, 0, 0, 10, 2, 1));
}

TEST(PbDomain, ScalesTheAxesAgainstTheFixedOne) {
    struct Row {
        const char *name;
        float dx, dy, dz;
        PbDomain::TransformType type;
        SbVec3f scale;
    };
    const Row rows[] = {
        {"x fixed", 4, 2, 2, PbDomain::SCALE_X_FIXED, {1, 2, 2}},
        {"y fixed", 4, 2, 1, PbDomain::SCALE_Y_FIXED, {0.5f, 1, 2}},
        {"z fixed", 4, 2, 1, PbDomain::SCALE_Z_FIXED, {0.25f, 0.5f, 1}},
        {"largest is x", 4, 2, 1, PbDomain::SCALE_MAX_XYZ_FIXED, {1, 2, 4}},
        {"largest is y", 2, 4, 1, PbDomain::SCALE_MAX_XYZ_FIXED, {2, 1, 4}},
        {"a tie of x and y keeps z", 3, 3, 1, PbDomain::SCALE_MAX_XYZ_FIXED, {1 / 3.f, 1 / 3.f, 1}},
        {"unit cube", 4, 2, 1, PbDomain::TRANSFORM_01, {0.25f, 0.5f, 1}},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        PbDomain domain(5, 6, 7, 5 + row.dx, 6 + row.dy, 7 + row.dz, PbDomain::BBOX_AS_GIVEN);
        domain.setTransformType(row.type);
        const SbVec3f lower(5, 6, 7), upper(5 + row.dx, 6 + row.dy, 7 + row.dz);
        SbVec3f a, b;
        domain.getMatrix().multVecMatrix(lower, a);
        domain.getMatrix().multVecMatrix(upper, b);
        for (int axis = 0; axis < 3; ++axis) {
            const float origin = row.type == PbDomain::TRANSFORM_01 ? 0 : lower[axis] * row.scale[axis];
            EXPECT_NEAR(a[axis], origin, 1e-5);
            EXPECT_NEAR(b[axis] - a[axis], (upper[axis] - lower[axis]) * row.scale[axis], 1e-5);
        }
        // The two node forms say the same as the matrix.
        const test::Ref<SoSeparator> root(new SoSeparator);
        auto *probe = new SoCallback;
        root->addChild(domain.getTransform());
        SbMatrix seen;
        probe->setCallback(
            [](void *data, SoAction *action) {
                if (action->isOfType(SoCallbackAction::getClassTypeId()))
                    *static_cast<SbMatrix *>(data) =
                        static_cast<SoCallbackAction *>(action)->getModelMatrix();
            },
            &seen);
        root->addChild(probe);
        for (int form = 0; form < 2; ++form) {
            SoCallbackAction action;
            action.apply(root.get());
            EXPECT_TRUE(seen.equals(domain.getMatrix(), 1e-5f)) << "form " << form;
            root->replaceChild(0, domain.getMatrixTransform());
        }
    }
}

/// The domain in force behind a node, as a traversal sees it.
SbBox3f domainBehind(SoNode *node, PbDomain::TransformType *type = nullptr) {
    struct Seen {
        SbBox3f box;
        PbDomain::TransformType type;
    } seen;
    const test::Ref<SoSeparator> root(new SoSeparator);
    auto *probe = new SoCallback;
    probe->setCallback(
        [](void *data, SoAction *action) {
            const PbDomain *domain = PoDomainElement::get(action->getState());
            domain->getDomain(static_cast<Seen *>(data)->box);
            static_cast<Seen *>(data)->type = domain->getTransformType();
        },
        &seen);
    if (node)
        root->addChild(node);
    root->addChild(probe);
    SoCallbackAction action;
    action.apply(root.get());
    if (type)
        *type = seen.type;
    return seen.box;
}

TEST(PoDomain, FieldsReachTheStateAtTheNextAction) {
    EXPECT_EQ(domainBehind(nullptr), box(0, 0, 0, 1, 1, 1));
    const test::Ref<PoDomain> node(new PoDomain);
    node->min = SbVec3f(1, 2, 5);
    node->max = SbVec3f(3, 4, 5);
    node->transformType = PoDomain::SCALE_Z_FIXED;
    PbDomain::TransformType type = PbDomain::TRANSFORM_01;
    EXPECT_EQ(domainBehind(node.get(), &type), box(1, 2, 0, 3, 4, 1)) << "a flat box gets z 0 to 1";
    EXPECT_EQ(type, PbDomain::SCALE_Z_FIXED);
    node->setValues(SbVec2f(0, 0), SbVec2f(10, 2), PoDomain::BBOX_MIN_CUBE);
    EXPECT_EQ(domainBehind(node.get()), box(4, 0, 0, 6, 2, 1));
    EXPECT_EQ(node->min.getValue(), SbVec3f(4, 0, 0)) << "the fields show what the cube became";
    node->max = SbVec3f(0, 0, 0); // reversed: refused
    EXPECT_EQ(domainBehind(node.get()), box(4, 0, 0, 6, 2, 1));
}

TEST(PoDomain, ReadsTypesByNameAndByNumberAndSurvivesFiles) {
    EXPECT_FALSE(test::readBack("#Inventor V2.1 ascii\nPoDomain { transformType SCALE_W_FIXED }\n"));
    const auto unnamed = test::readBack("#Inventor V2.1 ascii\nPoDomain { transformType 7 }\n");
    for (const bool isBinary : {false, true}) {
        const auto again = test::readBack(test::written(unnamed->getChild(0), isBinary));
        ASSERT_TRUE(again);
        EXPECT_EQ(static_cast<PoDomain *>(again->getChild(0))->transformType.getValue(), 7);
    }
    for (const char *word : {"SCALE_Y_FIXED", "2"}) {
        const auto root = test::readBack(
            std::string("#Inventor V2.1 ascii\nPoDomain { max 5 6 7 transformType ") + word + " }\n");
        ASSERT_TRUE(root) << word;
        for (const bool isBinary : {false, true}) {
            const auto again = test::readBack(test::written(root->getChild(0), isBinary));
            ASSERT_TRUE(again);
            auto *domain = dynamic_cast<PoDomain *>(again->getChild(0));
            ASSERT_TRUE(domain);
            PbDomain::TransformType type = PbDomain::TRANSFORM_01;
            EXPECT_EQ(domainBehind(domain, &type), box(0, 0, 0, 5, 6, 7));
            EXPECT_EQ(type, PbDomain::SCALE_Y_FIXED);
        }
    }
}

} // namespace
