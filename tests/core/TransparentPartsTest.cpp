#include "core/TransparentParts.h"

#include <oravane/PbLinearDataMapping.h>
#include <oravane/PoRectangle.h>

#include "Drawn.h"
#include "TestScene.h"

#include <Inventor/nodes/SoIndexedTriangleStripSet.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using oravane::DeletedMaterials;
using oravane::ShapeIndices;
using Ints = std::vector<std::int32_t>;

constexpr float LIMIT = 0.95f;

TEST(TransparentParts, AMaterialIsDeletedFromTheLimitOn) {
    const float transparencies[] = {0, std::nextafter(LIMIT, 0.0f), LIMIT, 1, std::nanf("")};
    const DeletedMaterials deleted(transparencies, LIMIT);
    const bool expected[] = {false, false, true, true, false};
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(deleted.contains(i), expected[i]) << i;
    EXPECT_FALSE(deleted.contains(-1));
    EXPECT_FALSE(deleted.contains(5));
}

void expectKept(const ShapeIndices &kept, const Ints &coords, const Ints &materials) {
    EXPECT_EQ(kept.coords, coords);
    EXPECT_EQ(kept.materials, materials);
}

TEST(TransparentParts, GridsKeepWholeCellsAndTrianglesOfThreeCorners) {
    const float cells[] = {0, 1}; // of a grid of 3 by 2 nodes
    expectKept(oravane::keepGridCells(3, 2, DeletedMaterials(cells, LIMIT)), {0, 2, 1, 3, -1}, {0});
    const float corners[] = {0, 0, 0, 0, 0, 1}; // node 5 is gone: cell 1 is left with three corners
    EXPECT_EQ(oravane::keepGridCorners(3, 2, DeletedMaterials(corners, LIMIT)).coords,
              (Ints{0, 2, 1, 3, -1, 2, 4, 3, -1}));
    const float two[] = {1, 0, 0, 0, 0, 1};
    EXPECT_EQ(oravane::keepGridCorners(3, 2, DeletedMaterials(two, LIMIT)).coords,
              (Ints{2, 3, 1, -1, 2, 4, 3, -1}));
}

TEST(TransparentParts, IndexedShapesAreFilteredAndSplit) {
    const float oneAndThree[] = {0, 1, 0, 1, 0, 0, 0};
    const DeletedMaterials deleted(oneAndThree, LIMIT);
    const Ints faces{0, 1, 2, -1, 2, 3, 4, -1, 4, 5, 6}; // the last one without its end mark
    expectKept(oravane::keepParts(faces, {}, deleted), {0, 1, 2, -1, 4, 5, 6, -1}, {0, 2});
    expectKept(oravane::keepParts(faces, Ints{3, 0, 5}, deleted), {2, 3, 4, -1, 4, 5, 6, -1}, {0, 5});

    const Ints line{0, 1, 2, 3, 4, 5, 6, -1};
    expectKept(oravane::splitAtDeletedPoints(line, line, 2, deleted), {4, 5, 6, -1}, {4, 5, 6, -1});
    // Segments 1 and 3 are gone; the runs 0 and 2 have one segment only, the run 4 5 has two.
    expectKept(oravane::splitAtDeletedSegments(line, {}, deleted), {4, 5, 6, -1}, {4, 5});
    const Ints twoLines{0, 1, 2, -1, 7, 8, 9, -1}, materials{0, 2, 4, 5};
    expectKept(oravane::splitAtDeletedSegments(twoLines, materials, deleted), twoLines, materials);
}

const char *const kTwoCells = "QuadMesh { verticesPerColumn 3 verticesPerRow 2 }";

/// A shape over six points, below a binding and materials that have no parts any more where they are
/// transparent.
struct Transparent {
    Transparent(const std::string &shape, const std::string &bindingName, const std::string &transparencies)
        : group(test::readBack("#Inventor V2.1 ascii\nMaterial { transparency [ " + transparencies +
                               " ] } MaterialBinding { value " + bindingName +
                               " } Coordinate3 { point [ 0 0 0, 0 1 0, 1 0 0, 1 1 0, 2 0 0, 2 1 0 ] } " +
                               shape)),
          kit(new PoRectangle), material(static_cast<SoMaterial *>(group->getChild(0))),
          binding(static_cast<SoMaterialBinding *>(group->getChild(1))) {
        material->diffuseColor.setNum(material->transparency.getNum());
        mapping.setTransparencyValueDeletedParts(LIMIT);
        kit->deleteTransparencyParts(&mapping, material, binding, group.get());
    }
    SoIndexedShape *result() const { return dynamic_cast<SoIndexedShape *>(group->getChild(3)); }
    int triangles() const { return test::drawnBy(group.get()).triangles; }

    test::Ref<SoSeparator> group;
    test::Ref<PoRectangle> kit;
    SoMaterial *material;
    SoMaterialBinding *binding;
    PbLinearDataMapping mapping;
};

TEST(PoBaseTransparency, QuadMeshesBecomeStripsWithTheRightBinding) {
    const Transparent perCell(kTwoCells, "PER_FACE", "0, 1");
    ASSERT_TRUE(dynamic_cast<SoIndexedTriangleStripSet *>(perCell.result()));
    EXPECT_EQ(perCell.binding->value.getValue(), SoMaterialBinding::PER_PART_INDEXED);
    EXPECT_EQ(perCell.triangles(), 2);
    EXPECT_EQ(perCell.material->transparency.getNum(), 0) << "what is left is opaque";
    const Transparent perNode(kTwoCells, "PER_VERTEX_INDEXED", "0, 0.5, 0, 0, 0, 1");
    EXPECT_EQ(perNode.binding->value.getValue(), SoMaterialBinding::PER_VERTEX_INDEXED);
    EXPECT_EQ(perNode.triangles(), 3);
    EXPECT_EQ(perNode.material->transparency.getNum(), 6) << "something is half transparent";
    const Transparent overall(kTwoCells, "OVERALL", "1");
    EXPECT_EQ(overall.result(), nullptr) << "one material for all: the shape stays";
}

TEST(PoBaseTransparency, NothingLeftIsDrawnAsNothing) {
    for (const char *value : {"PER_FACE", "PER_VERTEX_INDEXED"}) {
        const Transparent quads(kTwoCells, value, "1, 1, 1, 1, 1, 1");
        EXPECT_EQ(quads.triangles(), 0);
        EXPECT_TRUE(test::boundingBox(quads.group.get()).isEmpty());
        EXPECT_EQ(Transparent("IndexedFaceSet { coordIndex [ 0, 2, 1, -1 ] }", value, "1, 1, 1").triangles(),
                  0);
    }
}

TEST(PoBaseTransparency, RunningMaterialsStayWithTheirPoints) {
    const Transparent split("IndexedFaceSet { coordIndex [ 0, 2, 1, -1, 2, 4, 3, -1 ] }", "PER_VERTEX",
                            "1, 0, 0, 0, 0, 0");
    ASSERT_TRUE(split.result());
    EXPECT_EQ(split.result()->coordIndex.getNum(), 4);
    EXPECT_EQ(split.result()->materialIndex[0], 3) << "the second face began with the fourth material";
    EXPECT_EQ(split.binding->value.getValue(), SoMaterialBinding::PER_VERTEX_INDEXED);
}

TEST(PoBaseTransparency, PlainLineSetsAndMissingArgumentsAreLeftAlone) {
    const Transparent kept("LineSet { numVertices 6 }", "PER_VERTEX", "1, 1, 1, 1, 1, 1");
    EXPECT_TRUE(dynamic_cast<SoLineSet *>(kept.group->getChild(3)));
    SoGroup *none = nullptr;
    kept.kit->deleteTransparencyParts(nullptr, nullptr, nullptr, none);
    kept.kit->deleteTransparencyParts(&kept.mapping, kept.material, nullptr, kept.group.get());
}

} // namespace
