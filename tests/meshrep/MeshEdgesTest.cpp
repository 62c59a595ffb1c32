// Wire frames, walls and borders: the exact nodes that they generate.
#include "Drawn.h"

#include <oravane/PbIsovaluesList.h>
#include <oravane/PbLinearDataMapping.h>
#include <oravane/PbPolarGrid2D.h>
#include <oravane/PbQuadrangleMesh2D.h>
#include <oravane/PbRegularCartesianGrid2D.h>
#include <oravane/PbTriangleMesh2D.h>
#include <oravane/PoMeshLimit.h>
#include <oravane/PoMeshLines.h>
#include <oravane/PoMeshSides.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>

namespace {

using Ints = std::vector<int>;
using test::NOT_A_NUMBER;

/// Nodes 0 to 15 in a square of 4 by 4; as quadrangles all cells but the one in the middle, so with a hole.
struct Square {
    Square() {
        for (int node = 0; node < 16; ++node) {
            x.push_back(static_cast<float>(node / 4));
            y.push_back(static_cast<float>(node % 4));
            z.push_back(1 + static_cast<float>(node) / 8);
        }
        for (int cell = 0; cell < 9; ++cell)
            if (const int n = cell / 3 * 4 + cell % 3; cell != 4)
                ring.insert(ring.end(), {n, n + 4, n + 5, n + 1});
    }
    template <class Mesh>
    std::unique_ptr<PbMesh2D> with(const Ints &cells, int size, int orientation = 0) const {
        auto mesh = std::make_unique<Mesh>(16, x.data(), y.data(), z.data(),
                                           static_cast<int>(cells.size()) / size, cells.data(), 1);
        mesh->setElemOrientation(static_cast<PbIndexedMesh2D::ElemOrientation>(orientation));
        mesh->addValuesSet(0, z.data());
        return mesh;
    }
    std::unique_ptr<PbMesh2D> withHole() const { return with<PbQuadrangleMesh2D>(ring, 4); }
    std::vector<float> x, y, z;
    Ints ring;
};

std::unique_ptr<PbMesh2D> grid(int nx, int ny) {
    auto grid = std::make_unique<PbRegularCartesianGrid2D>(nx, ny, 0.f, 0.f, nx - 1.f, ny - 1.f, 1);
    grid->addValuesSet(0, Square().z.data());
    return grid;
}

template <class Kit>
test::Ref<Kit> kitOf(PbMesh2D *mesh) {
    const test::Ref<Kit> kit(new Kit);
    kit->setMesh(mesh);
    kit->rebuild();
    return kit;
}

/// The generated nodes of a type, in their order.
template <class Node>
std::vector<const Node *> nodesOf(PoMesh2D *kit, const char *part) {
    std::vector<const Node *> nodes;
    auto *group = static_cast<SoGroup *>(kit->getPart(part, FALSE));
    for (int k = 0; group && k < group->getNumChildren(); ++k)
        if (group->getChild(k)->getTypeId() == Node::getClassTypeId())
            nodes.push_back(static_cast<Node *>(group->getChild(k)));
    return nodes;
}

SoMaterial *materialOf(PoMesh2D *kit) {
    return static_cast<SoMaterial *>(kit->getPart("appearance.material", FALSE));
}

Ints valuesOf(const SoMFInt32 &field) {
    return {field.getValues(0), field.getValues(0) + field.getNum()};
}

TEST(PoMeshLines, FollowTheRowsOfAGridAndTheCellsOfAnIndexedMesh) {
    const Square s;
    Square broken;
    broken.x[5] = NOT_A_NUMBER;
    const Ints nodes = {0, 4, 5, 1, 4, 8, 5}, sizes = {4, 3};
    PbIndexedMesh2D mixed(16, s.x.data(), s.y.data(), 2, nodes.data(), sizes.data(), 0);
    const float radius[] = {1, 2}, angle[] = {0, 1, 2};
    PbPolarGrid2D polar(2, 3, radius, angle, 0);
    const auto rows = grid(3, 2), clockwise = s.with<PbTriangleMesh2D>({0, 1, 4, 1, 5, 4}, 3, 1),
               gap = broken.with<PbQuadrangleMesh2D>({0, 4, 5, 1, 5, 9, 10, 6}, 4);
    struct Row {
        const char *name;
        PbMesh2D *mesh;
        Ints lines;
    };
    for (const Row &row : {Row{"grid", rows.get(), {0, 1, -1, 2, 3, -1, 4, 5, -1, 0, 2, 4, -1, 1, 3, 5, -1}},
                           Row{"polar", &polar, {0, 1, 2, -1, 3, 4, 5, -1, 0, 3, -1, 1, 4, -1, 2, 5, -1}},
                           Row{"indexed", &mixed, {0, 4, 5, 1, 0, -1, 4, 8, 5, 4, -1}},
                           Row{"not reversed by flags", clockwise.get(), {0, 1, 4, 0, -1, 1, 5, 4, 1, -1}},
                           Row{"node without a position", gap.get(), {0, 4, -1, 1, 0, -1, 9, 10, 6, -1}}}) {
        SCOPED_TRACE(row.name);
        const auto kit = kitOf<PoMeshLines>(row.mesh);
        EXPECT_EQ(valuesOf(nodesOf<SoIndexedLineSet>(kit.get(), "groupLines")[0]->coordIndex), row.lines);
        EXPECT_EQ(nodesOf<SoCoordinate3>(kit.get(), "groupLines")[0]->point.getNum(),
                  row.mesh->getNumNodes());
        EXPECT_EQ(materialOf(kit.get()), nullptr);
    }
}

/// Draws itself with a colour for each segment, as no colouring does.
struct SegmentMesh : PbQuadrangleMesh2D {
    using PbQuadrangleMesh2D::PbQuadrangleMesh2D;
    void meshLines(PoMeshLines *lines) const override {
        lines->quadrangleLinesAvergColr(this, getValuesSet(0), nullptr);
    }
};

TEST(PoMeshLines, ColorNodesUnderAnyColoringAndSegmentsWhenAsked) {
    const Square s;
    const auto whole = s.withHole();
    SegmentMesh segments(16, s.x.data(), s.y.data(), 1, s.ring.data(), 1);
    segments.addValuesSet(0, s.z.data());
    PbLinearDataMapping mapping;
    mapping.setValues(1, SbColor(0, 0, 0), 3, SbColor(1, 0, 0));
    PbIsovaluesList levels(1.5f, 2.5f, 3);
    for (PbMesh2D *mesh : {whole.get(), static_cast<PbMesh2D *>(&segments)})
        for (int coloring = PoMesh::COLOR_AVERAGE; coloring <= PoMesh::COLOR_CONTOURING; ++coloring) {
            const auto kit = kitOf<PoMeshLines>(mesh);
            kit->setDataMapping(&mapping);
            kit->setIsovaluesList(&levels);
            kit->valuesIndex = 0;
            kit->coloringType = coloring;
            kit->rebuild();
            std::vector<float> expected = s.z;
            if (mesh == &segments) // 0 4 5 1 0
                expected = {1.25f, 1.5625f, 1.375f, 1.0625f};
            const SoMFColor &colors = materialOf(kit.get())->diffuseColor;
            ASSERT_EQ(colors.getNum(), static_cast<int>(expected.size()));
            for (int k = 0; k < colors.getNum(); ++k)
                EXPECT_NEAR(colors[k][0], (expected[k] - 1) / 2, 1e-6f) << k;
            EXPECT_EQ(nodesOf<SoMaterialBinding>(kit.get(), "groupLines")[0]->value.getValue(),
                      mesh == &segments ? 3 : 8);
        }
}

TEST(PoMeshSides, StandOnTheBorderWithEachCornerTwice) {
    const auto smallest = grid(2, 2), holed = Square().withHole();
    auto kit = kitOf<PoMeshSides>(smallest.get());
    kit->zValuesIndex = 0;
    kit->thresholdType = PoMeshSides::THRESHOLD_VALUE;
    kit->thresholdValue = 7; // above the surface
    kit->valuesIndex = 0;
    PbLinearDataMapping mapping;
    kit->setDataMapping(&mapping);
    for (int coloring = PoMesh::COLOR_INHERITED; coloring <= PoMesh::COLOR_CONTOURING; ++coloring) {
        kit->coloringType = coloring;
        kit->rebuild();
        const SoMFVec3f &points = nodesOf<SoCoordinate3>(kit.get(), "groupSides")[0]->point;
        ASSERT_EQ(points.getNum(), 16);
        const int corners[] = {0, 2, 2, 3, 3, 1, 1, 0};
        for (int k = 0; k < 16; ++k) {
            const int node = corners[k % 8];
            const SbVec3f expected(static_cast<float>(node / 2), static_cast<float>(node % 2),
                                   k < 8 ? 1 + static_cast<float>(node) / 8 : 7);
            EXPECT_EQ(points[k], expected) << k;
        }
        EXPECT_EQ(nodesOf<SoQuadMesh>(kit.get(), "groupSides")[0]->verticesPerRow.getValue(), 8);
        EXPECT_EQ(materialOf(kit.get()), nullptr);
    }
    kit = kitOf<PoMeshSides>(holed.get());
    Ints rows;
    for (const SoQuadMesh *wall : nodesOf<SoQuadMesh>(kit.get(), "groupSides"))
        rows.push_back(wall->verticesPerRow.getValue());
    std::sort(rows.begin(), rows.end());
    EXPECT_EQ(rows, (Ints{5, 13})) << "around the hole and around the whole";
}

TEST(PoMeshSides, FootIsABoundOfTheSetOrTheValue) {
    const auto mesh = Square().withHole();
    mesh->addValuesSet(-1, Square().z.data());
    struct Row {
        const char *name;
        int type;
        short set;
        float foot;
    };
    for (const Row &row :
         {Row{"smallest", PoMeshSides::THRESHOLD_ZMIN, 0, 1},
          Row{"largest", PoMeshSides::THRESHOLD_ZMAX, 0, 1 + 15 / 8.f},
          Row{"value", PoMeshSides::THRESHOLD_VALUE, 0, -5},
          Row{"own z", PoMeshSides::THRESHOLD_ZMIN, -1, -5},
          Row{"own z, largest", PoMeshSides::THRESHOLD_ZMAX, -1, -5},
          Row{"unknown set", PoMeshSides::THRESHOLD_ZMAX, 9, -5}, Row{"unknown type", 7, 0, -5}}) {
        const auto kit = kitOf<PoMeshSides>(mesh.get());
        kit->thresholdType = row.type;
        kit->zValuesIndex = row.set;
        kit->thresholdValue = -5;
        kit->rebuild();
        const SoMFVec3f &points = nodesOf<SoCoordinate3>(kit.get(), "groupSides")[0]->point;
        EXPECT_EQ(points[points.getNum() - 1][2], row.foot) << row.name;
    }
}

TEST(PoMeshLimit, IsOneClosedLineForEachBorder) {
    const Square s;
    const auto smallest = grid(3, 2), holed = s.withHole();
    const auto islands = s.with<PbQuadrangleMesh2D>({0, 4, 5, 1, 10, 14, 15, 11}, 4),
               pinched = s.with<PbTriangleMesh2D>({0, 4, 5, 5, 10, 6}, 3),
               closed = s.with<PbTriangleMesh2D>({0, 1, 4, 0, 1, 5, 1, 4, 5, 0, 4, 5}, 3),
               twice = s.with<PbQuadrangleMesh2D>({0, 4, 5, 1, 0, 4, 5, 1}, 4);
    struct Row {
        const char *name;
        PbMesh2D *mesh;
        Ints sizes;
    };
    const auto kit = kitOf<PoMeshLimit>(nullptr);
    Ppoint_list_list3 limits{};
    kit->getMeshLimit(limits);
    EXPECT_EQ(limits.numLists, 0);
    kit->setMesh(smallest.get());
    kit->zValuesIndex = 0;
    kit->getMeshLimit(limits);
    ASSERT_EQ(limits.numLists, 1);
    ASSERT_EQ(limits.lists[0].numPoints, 7);
    const int around[] = {0, 2, 4, 5, 3, 1, 0}; // i first
    for (int k = 0; k < 7; ++k) {
        const Ppoint3 &p = limits.lists[0].points[k];
        const SbVec3f node = smallest->getNodeCoord(around[k]);
        EXPECT_EQ(SbVec3f(p.x, p.y, p.z), node + SbVec3f(0, 0, Square().z[around[k]])) << k;
    }
    for (const Row &row :
         {Row{"grid", smallest.get(), {7}}, Row{"hole", holed.get(), {5, 13}},
          Row{"islands", islands.get(), {5, 5}}, Row{"closed surface", closed.get(), {}},
          Row{"two triangles at a node", pinched.get(), {4, 4}}, Row{"cell twice", twice.get(), {}}}) {
        SCOPED_TRACE(row.name);
        kit->setMesh(row.mesh);
        kit->rebuild();
        Ints sizes;
        if (!row.sizes.empty()) {
            sizes = valuesOf(nodesOf<SoLineSet>(kit.get(), "groupLimit")[0]->numVertices);
            const SoMFVec3f &points = nodesOf<SoCoordinate3>(kit.get(), "groupLimit")[0]->point;
            for (int start = 0, k = 0; k < static_cast<int>(sizes.size()); start += sizes[k++])
                EXPECT_EQ(points[start], points[start + sizes[k] - 1]);
        }
        std::sort(sizes.begin(), sizes.end());
        EXPECT_EQ(sizes, row.sizes);
        EXPECT_EQ(kit->getPart("groupLimit", FALSE) == nullptr, row.sizes.empty());
    }
}

TEST(MeshEdges, FollowTheirFieldsAndMeshOnce) {
    const auto mesh = Square().withHole();
    for (const bool isImmediate : {false, true}) {
        test::KitScene<PoMeshSides> scene(mesh.get());
        scene.kit->setUpdateMethod(isImmediate ? PoBase::UPDATE_IMMEDIATE : PoBase::UPDATE_ON_TRAVERSAL);
        for (const std::function<void()> &change : std::initializer_list<std::function<void()>>{
                 [&] { scene.kit->thresholdType = PoMeshSides::THRESHOLD_VALUE; },
                 [&] { scene.kit->thresholdValue = 4; }, [&] { scene.kit->zValuesIndex = 0; },
                 [&] { mesh->touch(); }, [&] { scene.kit->setMesh(nullptr); }})
            EXPECT_EQ(scene.rebuildsOf(change, isImmediate), 1);
        EXPECT_EQ(scene.part("groupSides"), nullptr);
    }
}

} // namespace
