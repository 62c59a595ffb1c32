#include "core/TransparentParts.h"

#include <oravane/PbLinearDataMapping.h>
#include <oravane/PoRectangle.h>

#include "TestScene.h"

#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoIndexedTriangleStripSet.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoQuadMesh.h>

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

TEST(TransparentParts, GridsKeepWholeCellsAndTrianglesOfThreeCorners) {
    const float cells[] = {0, 1}; // of a grid of 3 by 2 nodes
    const ShapeIndices kept = oravane::keepGridCells(3, 2, DeletedMaterials(cells, LIMIT));
    EXPECT_EQ(kept.coords, (Ints{0, 2, 1, 3, -1}));
    EXPECT_EQ(kept.materials, (Ints{0}));
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
    ShapeIndices kept = oravane::keepParts(faces, {}, deleted);
    EXPECT_EQ(kept.coords, (Ints{0, 1, 2, -1, 4, 5, 6, -1}));
    EXPECT_EQ(kept.materials, (Ints{0, 2}));
    kept = oravane::keepParts(faces, Ints{3, 0, 5}, deleted);
    EXPECT_EQ(kept.coords, (Ints{2, 3, 4, -1, 4, 5, 6, -1}));
    EXPECT_EQ(kept.materials, (Ints{0, 5}));

    const Ints line{0, 1, 2, 3, 4, 5, 6, -1};
    kept = oravane::splitAtDeletedPoints(line, line, 2, deleted);
    EXPECT_EQ(kept.coords, (Ints{4, 5, 6, -1}));
    EXPECT_EQ(kept.materials, kept.coords);

    // Segments 1 and 3 are gone; the runs 0 and 2 have one segment only, the run 4 5 has two.
    kept = oravane::splitAtDeletedSegments(line, {}, deleted);
    EXPECT_EQ(kept.coords, (Ints{4, 5, 6, -1}));
    EXPECT_EQ(kept.materials, (Ints{4, 5}));
    const Ints twoLines{0, 1, 2, -1, 7, 8, 9, -1};
    kept = oravane::splitAtDeletedSegments(twoLines, Ints{0, 2, 4, 5}, deleted);
    EXPECT_EQ(kept.coords, twoLines);
    EXPECT_EQ(kept.materials, (Ints{0, 2, 4, 5}));
}

/// Four points, a material with one transparency each and a shape below a binding.
struct Transparent {
    Transparent(SoShape *shape, SoMaterialBinding::Binding value, std::initializer_list<float> transparencies)
        : group(new SoGroup), kit(new PoRectangle), material(new SoMaterial), binding(new SoMaterialBinding) {
        const int num = static_cast<int>(transparencies.size());
        material->diffuseColor.setNum(num);
        material->transparency.setValues(0, num, transparencies.begin());
        binding->value = value;
        auto *coords = new SoCoordinate3;
        const SbVec3f points[] = {{0, 0, 0}, {0, 1, 0}, {1, 0, 0}, {1, 1, 0}, {2, 0, 0}, {2, 1, 0}};
        coords->point.setValues(0, 6, points);
        for (SoNode *node : {static_cast<SoNode *>(material.get()), static_cast<SoNode *>(binding.get()),
                             static_cast<SoNode *>(coords), static_cast<SoNode *>(shape)})
            group->addChild(node);
        mapping.setTransparencyValueDeletedParts(LIMIT);
        kit->deleteTransparencyParts(&mapping, material.get(), binding.get(), group.get());
    }
    SoIndexedShape *result() const { return dynamic_cast<SoIndexedShape *>(group->getChild(3)); }
    int triangles() const {
        int count = 0;
        SoCallbackAction action;
        action.addTriangleCallback(
            SoShape::getClassTypeId(),
            [](void *data, SoCallbackAction *, const SoPrimitiveVertex *, const SoPrimitiveVertex *,
               const SoPrimitiveVertex *) { ++*static_cast<int *>(data); },
            &count);
        action.apply(group.get());
        return count;
    }

    test::Ref<SoGroup> group;
    test::Ref<PoRectangle> kit;
    test::Ref<SoMaterial> material;
    test::Ref<SoMaterialBinding> binding;
    PbLinearDataMapping mapping;
};

SoQuadMesh *twoCells() {
    auto *quads = new SoQuadMesh;
    quads->verticesPerColumn = 3;
    quads->verticesPerRow = 2;
    return quads;
}

TEST(PoBaseTransparency, QuadMeshesBecomeStripsWithTheRightBinding) {
    const Transparent perCell(twoCells(), SoMaterialBinding::PER_FACE, {0, 1});
    ASSERT_TRUE(dynamic_cast<SoIndexedTriangleStripSet *>(perCell.result()));
    EXPECT_EQ(perCell.binding->value.getValue(), SoMaterialBinding::PER_PART_INDEXED);
    EXPECT_EQ(perCell.triangles(), 2);
    EXPECT_EQ(perCell.material->transparency.getNum(), 0) << "what is left is opaque";
    const Transparent perNode(twoCells(), SoMaterialBinding::PER_VERTEX_INDEXED, {0, 0.5f, 0, 0, 0, 1});
    EXPECT_EQ(perNode.binding->value.getValue(), SoMaterialBinding::PER_VERTEX_INDEXED);
    EXPECT_EQ(perNode.triangles(), 3);
    EXPECT_EQ(perNode.material->transparency.getNum(), 6) << "something is half transparent";
    const Transparent overall(twoCells(), SoMaterialBinding::OVERALL, {1});
    EXPECT_EQ(overall.result(), nullptr) << "one material for all: the shape stays";
}

TEST(PoBaseTransparency, NothingLeftIsDrawnAsNothing) {
    for (const auto value : {SoMaterialBinding::PER_FACE, SoMaterialBinding::PER_VERTEX_INDEXED}) {
        const Transparent quads(twoCells(), value, {1, 1, 1, 1, 1, 1});
        EXPECT_EQ(quads.triangles(), 0);
        EXPECT_TRUE(test::boundingBox(quads.group.get()).isEmpty());
        auto *faces = new SoIndexedFaceSet;
        faces->coordIndex.setValues(0, 4, Ints{0, 2, 1, -1}.data());
        const Transparent noFaces(faces, value, {1, 1, 1});
        EXPECT_EQ(noFaces.triangles(), 0);
    }
}

TEST(PoBaseTransparency, RunningMaterialsStayWithTheirPoints) {
    auto *faces = new SoIndexedFaceSet;
    faces->coordIndex.setValues(0, 8, Ints{0, 2, 1, -1, 2, 4, 3, -1}.data());
    const Transparent split(faces, SoMaterialBinding::PER_VERTEX, {1, 0, 0, 0, 0, 0});
    ASSERT_TRUE(split.result());
    EXPECT_EQ(split.result()->coordIndex.getNum(), 4);
    EXPECT_EQ(split.result()->materialIndex[0], 3) << "the second face began with the fourth material";
    EXPECT_EQ(split.binding->value.getValue(), SoMaterialBinding::PER_VERTEX_INDEXED);
}

TEST(PoBaseTransparency, PlainLineSetsAndMissingArgumentsAreLeftAlone) {
    auto *lines = new SoLineSet;
    lines->numVertices = 6;
    const Transparent kept(lines, SoMaterialBinding::PER_VERTEX, {1, 1, 1, 1, 1, 1});
    EXPECT_EQ(kept.group->getChild(3), lines);
    SoGroup *none = nullptr;
    kept.kit->deleteTransparencyParts(nullptr, nullptr, nullptr, none);
    kept.kit->deleteTransparencyParts(&kept.mapping, kept.material.get(), nullptr, kept.group.get());
}

} // namespace
