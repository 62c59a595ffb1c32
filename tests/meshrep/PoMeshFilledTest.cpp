#include <oravane/PoMeshFilled.h>

#include "Drawn.h"

#include <oravane/PbIsovaluesList.h>
#include <oravane/PbLinearDataMapping.h>
#include <oravane/PbNonLinearDataMapping.h>
#include <oravane/PbQuadrangleMesh2D.h>
#include <oravane/PbRegularCartesianGrid2D.h>
#include <oravane/PbTriangleMesh2D.h>
#include <oravane/PoDomain.h>
#include <oravane/PoIsovaluesList.h>
#include <oravane/PoLinearDataMapping.h>
#include <oravane/PoMeshElement.h>

#include <Inventor/nodes/SoCallback.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoQuadMesh.h>
#include <Inventor/nodes/SoVertexProperty.h>

#include <gtest/gtest.h>

#include <memory>

using test::Drawn;
using test::drawnBy;
using test::INFINITE;
using test::NOT_A_NUMBER;

namespace {

/// A kit with a mesh of its own behind a mapping and isovalues in the scene.
struct Scene : test::KitScene<PoMeshFilled> {
    explicit Scene(PbMesh2D *mesh) : KitScene(mesh) {
        const float values[] = {0.25f, 0.5f, 0.75f};
        levels->isovaluesList.setValues(0, 3, values);
        root->insertChild(levels, 0);
        root->insertChild(mapping, 0);
    }
    SoGroup *group() const { return part("groupFilled"); }
    SoMaterial *material() const { return part<SoMaterial>("appearance.material"); }
    template <class Node>
    Node *shape() const {
        return dynamic_cast<Node *>(group()->getChild(group()->getNumChildren() - 1));
    }

    PoLinearDataMapping *mapping = new PoLinearDataMapping;
    PoIsovaluesList *levels = new PoIsovaluesList;
};

constexpr int NX = 5, NY = 4;

std::vector<float> field(const std::function<float(int, int)> &value) {
    std::vector<float> values;
    for (int i = 0; i < NX; ++i)
        for (int j = 0; j < NY; ++j)
            values.push_back(value(i, j));
    return values;
}

std::vector<float> ramp() {
    return field([](int i, int j) { return static_cast<float>(i + j) / (NX + NY - 2); });
}

std::unique_ptr<PbRegularCartesianGrid2D> regularGrid(const std::vector<float> &values = ramp()) {
    auto grid = std::make_unique<PbRegularCartesianGrid2D>(NX, NY, 0.f, 0.f, 4.f, 6.f, 1);
    grid->addValuesSet(0, values.data());
    return grid;
}

TEST(PoMeshFilled, GroupHoldsHintsBindingCoordinatesAndShapeInOrder) {
    constexpr int CELLS = (NX - 1) * (NY - 1);
    const struct {
        int coloring, binding, numColors;
    } rows[] = {{PoMesh::COLOR_INHERITED, 0, 0},
                {PoMesh::COLOR_AVERAGE, SoMaterialBinding::PER_FACE, CELLS},
                {PoMesh::COLOR_MAPPING, SoMaterialBinding::PER_VERTEX_INDEXED, NX * NY},
                {PoMesh::COLOR_CONTOURING, SoMaterialBinding::PER_FACE, -1}};
    const auto grid = regularGrid();
    for (const auto &row : rows) {
        SCOPED_TRACE(row.coloring);
        const Scene scene(grid.get());
        scene.kit->coloringType = row.coloring;
        scene.traverse();
        const int numChildren = row.coloring == PoMesh::COLOR_INHERITED ? 3 : 4;
        ASSERT_EQ(scene.group()->getNumChildren(), numChildren);
        EXPECT_STREQ(scene.group()->getChild(0)->getTypeId().getName().getString(), "ShapeHints");
        auto *coords = dynamic_cast<SoCoordinate3 *>(scene.group()->getChild(numChildren - 2));
        ASSERT_TRUE(coords);
        EXPECT_EQ(coords->point[NY + 1], SbVec3f(1, 2, 0)) << "node (1, 1) is number ny + 1";
        EXPECT_EQ(coords->point.getNum() == NX * NY, row.numColors >= 0);
        EXPECT_EQ(scene.shape<SoQuadMesh>() != nullptr, row.numColors >= 0);
        EXPECT_EQ(scene.shape<SoIndexedFaceSet>() != nullptr, row.numColors < 0);
        EXPECT_EQ(scene.material() == nullptr, row.coloring == PoMesh::COLOR_INHERITED);
        auto *binding = dynamic_cast<SoMaterialBinding *>(scene.group()->getChild(1));
        EXPECT_EQ(binding == nullptr, scene.material() == nullptr);
        if (binding) {
            EXPECT_EQ(binding->value.getValue(), row.binding);
            EXPECT_TRUE(row.numColors < 0 || scene.material()->diffuseColor.getNum() == row.numColors);
        }
    }
}

TEST(PoMeshFilled, ColoringFallsBackWhereSomethingIsMissing) {
    const auto grid = regularGrid();
    Scene scene(grid.get());
    PbIsovaluesList levels(0.5f, 1.0f, 2);
    PbLinearDataMapping mapping;
    const auto numColors = [&](const std::function<void()> &change) {
        change();
        scene.traverse();
        return scene.material() ? scene.material()->diffuseColor.getNum() : 0;
    };
    scene.kit->coloringType = PoMesh::COLOR_CONTOURING;
    EXPECT_EQ(numColors([&] { scene.root->removeChild(scene.levels); }), NX * NY) << "no isovalues: by nodes";
    EXPECT_NE(numColors([&] { scene.kit->setIsovaluesList(&levels); }), NX * NY);
    EXPECT_TRUE(scene.shape<SoIndexedFaceSet>());
    EXPECT_EQ(numColors([&] { scene.root->removeChild(0); }), 0) << "no mapping: inherited";
    EXPECT_GT(numColors([&] { scene.kit->setDataMapping(&mapping); }), 0);
    EXPECT_EQ(numColors([&] { scene.kit->valuesIndex = 7; }), 0) << "no such values";
    EXPECT_GT(numColors([&] { scene.kit->valuesIndex = 0; }), 0);
    EXPECT_EQ(numColors([&] { scene.kit->coloringType = 99; }), 0);
}

TEST(PoMeshFilled, EachChangeRebuildsOnceAndOnlyTheKitsItConcerns) {
    const auto grid = regularGrid(), otherGrid = regularGrid();
    const std::vector<float> flat = field([](int, int) { return 0.5f; });
    Scene scene(grid.get()), other(otherGrid.get());
    auto *domain = new PoDomain;
    scene.root->insertChild(domain, 0);
    const auto rebuildsOf = [&](int coloring, const std::function<void()> &change) {
        scene.kit->coloringType = coloring;
        return scene.rebuildsOf(change);
    };
    constexpr int PLAIN = PoMesh::COLOR_INHERITED, CELLS = PoMesh::COLOR_AVERAGE,
                  ALL = PoMesh::COLOR_CONTOURING;
    EXPECT_EQ(rebuildsOf(ALL, [] {}), 0);
    EXPECT_EQ(rebuildsOf(ALL, [&] { grid->addValuesSet(0, flat.data()); }), 1);
    EXPECT_EQ(rebuildsOf(ALL, [&] { grid->touch(); }), 1);
    EXPECT_EQ(rebuildsOf(ALL, [&] { scene.kit->zValuesIndex = 0; }), 1);
    EXPECT_EQ(rebuildsOf(ALL, [&] { scene.mapping->value2 = 2; }), 1);
    EXPECT_EQ(rebuildsOf(ALL, [&] { scene.levels->setRegularIsoList(0.f, 1.f, 4); }), 1);
    EXPECT_EQ(rebuildsOf(ALL, [&] { domain->max = SbVec3f(4, 2, 4); }), 0) << "the transform alone moves";
    EXPECT_EQ(rebuildsOf(ALL, [&] { domain->transformType = PoDomain::SCALE_Y_FIXED; }), 0);
    EXPECT_EQ(rebuildsOf(ALL, [&] { grid->setGeometry(NX, NY, 0, 0, 8, 6); }), 0) << "the program tells";
    EXPECT_EQ(rebuildsOf(PLAIN, [&] { scene.mapping->value2 = 3; }), 0) << "colours that are not used";
    EXPECT_EQ(rebuildsOf(CELLS, [&] { scene.levels->isovaluesList = 0.3f; }), 0);
    EXPECT_EQ(rebuildsOf(CELLS, [&] { scene.mapping->value2 = 4; }), 1) << "read since a field changed";
    other.traverse();
    EXPECT_EQ(other.rebuilds, 1);
}

TEST(PoMeshFilled, AMeshOfTheSceneServesWithoutOneOfItsOwn) {
    const auto own = regularGrid();
    PbRegularCartesianGrid2D ofScene(2, 2, 0.f, 0.f, 1.f, 1.f, 1); // without values
    const Scene scene(own.get());
    scene.kit->coloringType = PoMesh::COLOR_MAPPING;
    auto *setter = new SoCallback;
    setter->setCallback(
        [](void *mesh, SoAction *action) {
            if (action->isOfType(SoCallbackAction::getClassTypeId()))
                PoMeshElement::set(action->getState(), action->getCurPathTail(),
                                   static_cast<PbMesh2D *>(mesh));
        },
        static_cast<PbMesh2D *>(&ofScene));
    scene.root->insertChild(setter, 0);
    const Drawn drawn = drawnBy(scene.root.get());
    EXPECT_NEAR(drawn.area, 24, 1e-4);
    EXPECT_NEAR(drawn.redArea, 12, 1e-4) << "values of the own mesh count";
    scene.kit->setMesh(nullptr);
    EXPECT_NEAR(drawnBy(scene.root.get()).area, 1, 1e-4);
}

TEST(PoMeshFilled, DeletedObjectsAreForgotten) {
    auto grid = regularGrid();
    Scene scene(grid.get());
    auto mapping = std::make_unique<PbLinearDataMapping>();
    auto levels = std::make_unique<PbIsovaluesList>();
    scene.kit->setDataMapping(mapping.get());
    scene.kit->setModuleDataMapping(mapping.get());
    scene.kit->setIsovaluesList(levels.get());
    scene.kit->coloringType = PoMesh::COLOR_CONTOURING;
    scene.traverse();
    mapping.reset();
    levels.reset();
    EXPECT_EQ(scene.kit->getDataMapping(), nullptr);
    EXPECT_NEAR(drawnBy(scene.root.get()).area, 24, 1e-4) << "those of the scene serve again";
    grid.reset();
    EXPECT_EQ(drawnBy(scene.root.get()).triangles, 0);
    EXPECT_EQ(scene.group(), nullptr);
    EXPECT_EQ(scene.material(), nullptr);
    auto again = regularGrid();
    scene.kit->setMesh(again.get());
    EXPECT_NEAR(drawnBy(scene.root.get()).area, 24, 1e-4);
    scene.root->removeChild(scene.kit); // a kit that dies first leaves nothing behind in the mesh
    again->touch();
}

TEST(PoMeshFilled, ObjectsMayGoInsideTheRebuildThatTheyCause) {
    struct Objects {
        std::unique_ptr<PbRegularCartesianGrid2D> grid = regularGrid();
        std::unique_ptr<PbLinearDataMapping> mapping = std::make_unique<PbLinearDataMapping>();
    };
    const auto deleteAll = [](void *data, PoBase *) {
        auto *objects = static_cast<Objects *>(data);
        objects->mapping.reset();
        objects->grid.reset();
    };
    for (const auto method : {PoBase::UPDATE_ON_TRAVERSAL, PoBase::UPDATE_IMMEDIATE})
        for (const bool atEnd : {false, true}) {
            Objects objects;
            Scene scene(objects.grid.get());
            scene.kit->setDataMapping(objects.mapping.get());
            scene.kit->setModuleDataMapping(objects.mapping.get());
            scene.kit->coloringType = PoMesh::COLOR_AVERAGE;
            scene.kit->setUpdateMethod(method);
            scene.traverse();
            if (atEnd)
                scene.kit->addPostRebuildCallback(deleteAll, &objects);
            else
                scene.kit->addPreRebuildCallback(deleteAll, &objects);
            const float x[] = {0, 1, 2};
            objects.grid->PbGrid2D::setGeometry(3, 3, x, x); // reports twice
            scene.traverse();
            EXPECT_EQ(objects.grid, nullptr);
            EXPECT_EQ(scene.kit->getMesh(), nullptr);
            scene.kit->touchKit();
            EXPECT_EQ(drawnBy(scene.root.get()).triangles, 0);
        }
}

TEST(PoMeshFilled, ThresholdsDeleteCellsAndGiveTheirColorToCellsAcross) {
    const auto grid = regularGrid();
    Scene scene(grid.get());
    scene.kit->coloringType = PoMesh::COLOR_AVERAGE;
    scene.mapping->maxThresholdEnabled = TRUE;
    scene.mapping->maxThreshold = ramp()[NY + 1]; // exactly the value of node (1, 1)
    scene.mapping->maxThresholdColor = SbColor(1, 0, 0);
    scene.mapping->maxThresholdTransparency = 0.5f;
    scene.mapping->transparencyEnabled = TRUE;
    scene.traverse();
    EXPECT_EQ(scene.material()->diffuseColor[0], SbColor(1, 0, 0)) << "one node at the threshold decides";
    EXPECT_EQ(scene.material()->transparency[0], 0.5f);
    scene.mapping->maxThreshold = 0.99f; // below the last node only
    scene.mapping->maxThresholdTransparency = 1;
    EXPECT_NEAR(drawnBy(scene.root.get()).area, 24 - 2, 1e-4) << "the last cell is deleted";
    EXPECT_EQ(scene.material()->transparency.getNum(), 0) << "and the rest is opaque";
    scene.kit->coloringType = PoMesh::COLOR_MAPPING;
    EXPECT_NEAR(drawnBy(scene.root.get()).area, 24 - 1, 1e-4) << "three corners stay as a triangle";
    scene.kit->coloringType = PoMesh::COLOR_CONTOURING;
    EXPECT_NEAR(drawnBy(scene.root.get()).area, 24 - 1, 1e-4);
}

TEST(PoMeshFilled, CellsOfIndexedMeshesAreReversedAndTakeAThresholdByTheirKind) {
    const float x[] = {0, 1, 1, 0}, y[] = {0, 0, 1, 1}, values[] = {0, 0.25f, 0.5f, 1};
    const std::vector<int> clockwise{0, 3, 2, 1}, byMin{3, 2, 1, 0}, byMax{0, 1, 2, 3};
    const int size = 4;
    struct Row {
        const char *name;
        std::unique_ptr<PbIndexedMesh2D> mesh;
        std::vector<int> face;
        bool isOfMax;
    };
    const auto general = [&](const std::vector<int> &cell) {
        return std::make_unique<PbIndexedMesh2D>(4, x, y, 1, cell.data(), &size, 1);
    };
    Row rows[] = {{"triangle",
                   std::make_unique<PbTriangleMesh2D>(4, x, y, 1, clockwise.data(), 1),
                   {0, 2, 3, -1},
                   true},
                  {"quadrangle",
                   std::make_unique<PbQuadrangleMesh2D>(4, x, y, 1, byMin.data(), 1),
                   {3, 0, 1, 2, -1},
                   true},
                  {"general, ends at the minimum", general(byMin), {0, 1, 2, 3, -1}, false},
                  {"general, ends at the maximum", general(byMax), {0, 1, 2, 3, -1}, true},
                  {"general, clockwise", general(clockwise), {1, 2, 3, 0, -1}, true}};
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        row.mesh->addValuesSet(0, values);
        row.mesh->setElemOrientation(PbIndexedMesh2D::ORIENT_BY_FLAGS);
        const Scene scene(row.mesh.get());
        scene.kit->coloringType = PoMesh::COLOR_AVERAGE;
        PbLinearDataMapping mapping;
        mapping.enableTransparency(1);
        mapping.enableThresholds(1, 1);
        mapping.setMinThreshold(0, SbColor(0, 1, 0), 0.5f);
        mapping.setMaxThreshold(1, SbColor(1, 0, 0), 0.25f);
        scene.kit->setDataMapping(&mapping);
        scene.traverse();
        const SoMFInt32 &face = scene.shape<SoIndexedFaceSet>()->coordIndex;
        EXPECT_EQ(std::vector<int>(face.getValues(0), face.getValues(0) + face.getNum()), row.face);
        EXPECT_EQ(scene.material()->diffuseColor[0], row.isOfMax ? SbColor(1, 0, 0) : SbColor(0, 1, 0));
        EXPECT_EQ(scene.material()->transparency[0], row.isOfMax ? 0.25f : 0.5f);
    }
}

TEST(PoMeshFilled, ValuesWithoutColorAreLeftOutOpaquely) {
    const auto grid = regularGrid();
    Scene scene(grid.get());
    PbLinearDataMapping mapping;
    mapping.enableThresholds(0, 1);
    scene.kit->setDataMapping(&mapping);
    const auto expectArea = [&](int coloring, float threshold, double area) {
        scene.kit->coloringType = coloring;
        mapping.setMaxThreshold(threshold); // without a colour: nothing is drawn there
        EXPECT_NEAR(drawnBy(scene.root.get()).area, area, 1e-4) << threshold;
    };
    expectArea(PoMesh::COLOR_MAPPING, 0.99f, 23);
    expectArea(PoMesh::COLOR_CONTOURING, 0.7f, 24 - 1.75 * 1.75); // the corner from level 0.75 on
    expectArea(PoMesh::COLOR_AVERAGE, 0.9f, 24);                  // above the mean of the last cell
    expectArea(PoMesh::COLOR_AVERAGE, 0.8f, 22);
    EXPECT_EQ(scene.material()->transparency.getNum(), 0);
    mapping.setTransparencyValueDeletedParts(2); // no transparency deletes anything, but this is not one
    expectArea(PoMesh::COLOR_AVERAGE, 0.8f, 22);
}

TEST(PoMeshFilled, TransparenciesOfTheMaterialAreThoseOfARenderer) {
    const auto grid = regularGrid();
    Scene scene(grid.get());
    PbNonLinearDataMapping mapping;
    mapping.enableTransparency(1);
    mapping.setTransparencyValueDeletedParts(9);
    mapping.setTransparencyFunction([](float value) {
        return value < 0.2f ? -3 : value < 0.4f ? NOT_A_NUMBER : value < 0.6f ? 0.5f : 5;
    });
    scene.kit->setDataMapping(&mapping);
    scene.kit->coloringType = PoMesh::COLOR_MAPPING;
    scene.traverse();
    ASSERT_EQ(scene.material()->transparency.getNum(), NX * NY);
    for (int node = 0; node < NX * NY; ++node) {
        const float value = ramp()[node];
        EXPECT_EQ(scene.material()->transparency[node], value < 0.4f ? 0 : value < 0.6f ? 0.5f : 1) << value;
    }
}

TEST(PoMeshFilled, UndefinedNodesDrawNothingWrong) {
    for (const float undefined : {NOT_A_NUMBER, INFINITE, -INFINITE})
        for (const bool isInZ : {false, true})
            for (int coloring = PoMesh::COLOR_INHERITED; coloring <= PoMesh::COLOR_CONTOURING; ++coloring) {
                SCOPED_TRACE((isInZ ? "height " : "value ") + std::to_string(undefined) + ", colouring " +
                             std::to_string(coloring));
                std::vector<float> values = ramp(), z(values.size(), 1.f);
                (isInZ ? z : values)[2 * NY + 1] = undefined; // an inner node: four cells
                const auto grid = regularGrid(values);
                grid->addValuesSet(1, z.data());
                const Scene scene(grid.get());
                scene.kit->zValuesIndex = 1;
                scene.kit->coloringType = coloring;
                const Drawn drawn = drawnBy(scene.root.get());
                EXPECT_TRUE(drawn.isFinite);
                double expected = 24 - 4 * 2;
                if (coloring == PoMesh::COLOR_INHERITED && !isInZ)
                    expected = 24; // no value counts
                else if (coloring == PoMesh::COLOR_MAPPING && !isInZ)
                    expected = 24 - 4 * 1; // the three other corners stay as triangles
                EXPECT_NEAR(drawn.area, expected, 1e-4);
                EXPECT_TRUE(std::isfinite(test::boundingBox(scene.root.get()).getSize()[2]));
            }
}

TEST(PoMeshFilled, DegenerateMeshesAndLevelsAreDefined) {
    PbRegularCartesianGrid2D empty(1);
    PbRegularCartesianGrid2D oneWide(1, 5, 0.f, 0.f, 1.f, 4.f, 1), reversed(NX, NY, 4.f, 6.f, 0.f, 0.f, 1);
    oneWide.addValuesSet(0, ramp().data());
    reversed.addValuesSet(0, ramp().data());
    PbIsovaluesList outside(5.f, 9.f, 3), one(0.5f, 0.5f, 1);
    for (int coloring = PoMesh::COLOR_INHERITED; coloring <= PoMesh::COLOR_CONTOURING; ++coloring)
        for (PbIsovaluesList *levels : {static_cast<PbIsovaluesList *>(nullptr), &outside, &one})
            for (PbMesh2D *mesh : {static_cast<PbMesh2D *>(nullptr), static_cast<PbMesh2D *>(&empty),
                                   static_cast<PbMesh2D *>(&oneWide), static_cast<PbMesh2D *>(&reversed)}) {
                const Scene scene(mesh);
                scene.kit->setIsovaluesList(levels);
                scene.kit->coloringType = coloring;
                EXPECT_NEAR(drawnBy(scene.root.get()).area, mesh == &reversed ? 24 : 0, 1e-4) << coloring;
                test::boundingBox(scene.root.get());
            }
}

TEST(PoMeshFilled, NormalsFollowTheOrderingOfTheShapeHints) {
    // Seen from above the cells run counter-clockwise while the hints say clockwise: the lit side is the
    // back, and the renderer turns the normals of the back. So they must point down.
    const auto grid = regularGrid();
    const std::vector<float> slope = field([](int i, int) { return static_cast<float>(i); });
    grid->addValuesSet(1, slope.data());
    const Scene scene(grid.get());
    for (const bool isFlat : {true, false}) {
        scene.kit->zValuesIndex = isFlat ? -1 : 1;
        scene.traverse();
        auto *quads = scene.shape<SoQuadMesh>();
        ASSERT_TRUE(quads);
        const auto *normals = static_cast<SoVertexProperty *>(quads->vertexProperty.getValue());
        ASSERT_TRUE(normals);
        const SbVec3f expected = isFlat ? SbVec3f(0, 0, -1) : SbVec3f(1, 0, -1) / std::sqrt(2.f);
        EXPECT_EQ(normals->normal.getNum(), isFlat ? 1 : NX * NY);
        for (int k = 0; k < normals->normal.getNum(); ++k)
            EXPECT_TRUE(normals->normal[k].equals(expected, 1e-6f));
    }
}

/// A representation of its own, as a program may write one: what the base offers to its rebuild.
struct Probe : PoMesh2D {
    void rebuild() override {
        preRebuild();
        const PbMesh2D *mesh = resolvedMesh();
        coordinates = test::Ref<SoCoordinate3>(makeSoCoordinate3(mesh ? zOf(*mesh) : nullptr));
        if (mesh)
            levels = adjustIsovalList(mesh->getNumNodes(), valuesOf(*mesh), 0, nullptr, 0, nullptr);
        isAdjusted = isIsovalueAdjusted();
        postRebuild();
    }
    test::Ref<SoCoordinate3> coordinates;
    std::vector<float> levels;
    int isAdjusted = 0;
};

TEST(PoMesh2D, OffersNodesAndAdjustedLevelsToARepresentation) {
    const auto grid = regularGrid(field([](int i, int) { return static_cast<float>(i); }));
    PbIsovaluesList levels(2.f, 2.5f, 2);
    const test::Ref<Probe> probe(new Probe);
    probe->setMesh(grid.get());
    probe->setIsovaluesList(&levels);
    probe->valuesIndex = 0;
    probe->zValuesIndex = 0;
    probe->rebuild();
    EXPECT_EQ(probe->levels, (std::vector{2.01f, 2.5f}));
    EXPECT_TRUE(probe->isAdjusted);
    ASSERT_EQ(probe->coordinates->point.getNum(), NX * NY);
    EXPECT_EQ(probe->coordinates->point[NX * NY - 1], SbVec3f(4, 6, 4));
    probe->setMesh(nullptr);
    probe->rebuild();
    EXPECT_FALSE(probe->coordinates);
}

TEST(PoMeshFilled, AnImmediateRebuildGetsTheColorsOfTheSceneAtTheNextTraversal) {
    const auto grid = regularGrid();
    Scene scene(grid.get());
    PbLinearDataMapping own;
    scene.kit->coloringType = PoMesh::COLOR_MAPPING;
    const double expected = drawnBy(scene.root.get()).redArea;
    scene.kit->setUpdateMethod(PoBase::UPDATE_IMMEDIATE);
    // Where a field changes no mapping is to be seen.
    EXPECT_EQ(scene.rebuildsOf([&] { scene.kit->zValuesIndex = 0; }, true), 2);
    EXPECT_NEAR(drawnBy(scene.root.get()).redArea, expected, 1e-4);
    EXPECT_EQ(scene.rebuildsOf([&] { scene.kit->setDataMapping(&own); }, true), 1) << "nothing is missing";
    EXPECT_NEAR(drawnBy(scene.root.get()).redArea, expected, 1e-4);
}

TEST(PoMeshFilled, AKitBelowTwoMappingsShowsTheColorsOfEachPlace) {
    const auto grid = regularGrid();
    Scene scene(grid.get());
    scene.kit->coloringType = PoMesh::COLOR_MAPPING;
    auto *inner = new SoSeparator;
    auto *brighter = new PoLinearDataMapping;
    brighter->value2 = 0.5f;
    inner->addChild(brighter);
    inner->addChild(scene.kit);
    scene.root->addChild(inner);
    const double one = drawnBy(inner).redArea;
    EXPECT_GT(one, 12.5);
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(drawnBy(scene.root.get()).redArea, one + 12, 1e-3);
}

} // namespace
