#include <oravane/PbDomain.h>
#include <oravane/PoDomain.h>
#include <oravane/PoDomainElement.h>

#include "attributes/AttributeTest.h"

#include <Inventor/SbVec2f.h>
#include <Inventor/actions/SoGetMatrixAction.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoTransform.h>

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
    PbDomain domain(0, 0, 10, 2, PbDomain::BBOX_AS_GIVEN);
    EXPECT_EQ(boxOf(domain), box(0, 0, 0, 10, 2, 1));
    EXPECT_EQ(boxOf(PbDomain(0, 0, 10, 2, PbDomain::BBOX_MAX_CUBE)), box(0, -4, 0, 10, 6, 1));
    EXPECT_EQ(boxOf(PbDomain(0, 0, 10, 2, PbDomain::BBOX_MIN_CUBE)), box(4, 0, 0, 6, 2, 1));
    EXPECT_EQ(boxOf(PbDomain(0, 0, 0, 10, 2, 4, PbDomain::BBOX_MIN_CUBE)), box(4, 0, 1, 6, 2, 3));
    for (const float xmax : {0.0f, -1.0f, NaN, infinity})
        domain.setDomain(0, 0, xmax, 1, PbDomain::BBOX_AS_GIVEN);
    domain.setDomain(0, 0, 5, 1, 1, 5, PbDomain::BBOX_AS_GIVEN);
    const float huge = std::numeric_limits<float>::max();
    domain.setDomain(-huge, 0, huge, 1, PbDomain::BBOX_AS_GIVEN);
    domain.setDomain(0, 0, 1e-40f, 1, PbDomain::BBOX_AS_GIVEN); // a scale of 1e40 is infinite
    domain.setDomain(0, 0, 1e30f, 1e-30f, PbDomain::BBOX_AS_GIVEN);
    domain.setDomain(1e8f, 0, 1e8f + 64, 1, PbDomain::BBOX_MIN_CUBE); // a side of 1 is lost at 1e8
    EXPECT_EQ(boxOf(domain), box(0, 0, 0, 10, 2, 1)) << "empty, reversed and undefined boxes are refused";
}

TEST(PbDomain, ScalesTheAxesAgainstTheFixedOne) {
    const struct {
        const char *name;
        SbVec3f size;
        PbDomain::TransformType type;
        SbVec3f scale;
    } rows[] = {
        {"x fixed", {4, 2, 2}, PbDomain::SCALE_X_FIXED, {1, 2, 2}},
        {"y fixed", {4, 2, 1}, PbDomain::SCALE_Y_FIXED, {0.5f, 1, 2}},
        {"z fixed", {4, 2, 1}, PbDomain::SCALE_Z_FIXED, {0.25f, 0.5f, 1}},
        {"largest is x", {4, 2, 1}, PbDomain::SCALE_MAX_XYZ_FIXED, {1, 2, 4}},
        {"largest is y", {2, 4, 1}, PbDomain::SCALE_MAX_XYZ_FIXED, {2, 1, 4}},
        {"a tie of x and y keeps z", {3, 3, 1}, PbDomain::SCALE_MAX_XYZ_FIXED, {1 / 3.f, 1 / 3.f, 1}},
        {"unit cube", {4, 2, 1}, PbDomain::TRANSFORM_01, {0.25f, 0.5f, 1}},
    };
    for (const auto &[name, size, type, scale] : rows) {
        SCOPED_TRACE(name);
        const SbVec3f lower(5, 6, 7), upper = lower + size;
        PbDomain domain(5, 6, 7, upper[0], upper[1], upper[2], PbDomain::BBOX_AS_GIVEN);
        domain.setTransformType(type);
        SbVec3f a, b;
        domain.getMatrix().multVecMatrix(lower, a);
        domain.getMatrix().multVecMatrix(upper, b);
        for (int axis = 0; axis < 3; ++axis) {
            EXPECT_NEAR(a[axis], type == PbDomain::TRANSFORM_01 ? 0 : lower[axis] * scale[axis], 1e-5);
            EXPECT_NEAR(b[axis] - a[axis], size[axis] * scale[axis], 1e-5);
        }
        for (SoNode *form :
             std::initializer_list<SoNode *>{domain.getTransform(), domain.getMatrixTransform()}) {
            const test::Ref<SoNode> owner(form);
            SoGetMatrixAction action(SbViewportRegion(1, 1));
            action.apply(form);
            EXPECT_TRUE(action.getMatrix().equals(domain.getMatrix(), 1e-5f)) << form->getTypeId().getName();
        }
    }
}

const PbDomain &domainBehind(SoNode *node) {
    return *stateBehind<PoDomainElement>(node);
}

TEST(PbDomain, AssignmentTellsOfTheNewBox) {
    PbDomain domain;
    float seen = 0;
    const ChangeCounter counter(domain, [&] { seen = domain.getDeltaX(); });
    domain = PbDomain(0, 0, 7, 1, PbDomain::BBOX_AS_GIVEN);
    EXPECT_EQ(seen, 7);
}

TEST(PoDomain, FieldsReachTheStateAtTheNextAction) {
    EXPECT_EQ(boxOf(domainBehind(nullptr)), box(0, 0, 0, 1, 1, 1));
    const test::Ref<PoDomain> node(new PoDomain);
    node->min = SbVec3f(1, 2, 5);
    node->max = SbVec3f(3, 4, 5);
    node->transformType = PoDomain::SCALE_Z_FIXED;
    EXPECT_EQ(boxOf(domainBehind(node.get())), box(1, 2, 0, 3, 4, 1)) << "a flat box gets z 0 to 1";
    EXPECT_EQ(domainBehind(node.get()).getTransformType(), PbDomain::SCALE_Z_FIXED);
    node->setValues(SbVec2f(0, 0), SbVec2f(10, 2), PoDomain::BBOX_MIN_CUBE);
    EXPECT_EQ(boxOf(domainBehind(node.get())), box(4, 0, 0, 6, 2, 1));
    EXPECT_EQ(node->min.getValue(), SbVec3f(4, 0, 0)) << "the fields show what the cube became";
    node->max = SbVec3f(0, 0, 0); // reversed: refused
    EXPECT_EQ(boxOf(domainBehind(node.get())), box(4, 0, 0, 6, 2, 1));
}

TEST(PoDomain, ReadsTypesByNameAndByNumberAndSurvivesFiles) {
    for (const bool isBinary : {false, true}) {
        EXPECT_FALSE(throughFile<PoDomain>("PoDomain { transformType SCALE_W_FIXED }", isBinary));
        for (const auto &[word, number] : {std::pair("SCALE_Y_FIXED", 2), {"2", 2}, {"7", 7}}) {
            const auto node = throughFile<PoDomain>(
                std::string("PoDomain { max 5 6 7 transformType ") + word + " }", isBinary);
            ASSERT_TRUE(node) << word;
            EXPECT_EQ(boxOf(domainBehind(node.get())), box(0, 0, 0, 5, 6, 7));
            EXPECT_EQ(node->transformType.getValue(), number);
            EXPECT_EQ(domainBehind(node.get()).getTransformType(), number);
        }
    }
}

} // namespace
