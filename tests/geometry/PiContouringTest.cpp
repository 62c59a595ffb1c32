#include <oravane/PbIsovaluesList.h>
#include <oravane/PbLinearDataMapping.h>
#include <oravane/PbParalCartesianGrid2D.h>
#include <oravane/PbPolarGrid2D.h>
#include <oravane/PbRegularCartesianGrid2D.h>
#include <oravane/PiContouringFilled.h>
#include <oravane/PiContouringLines.h>

#include "TestScene.h"
#include "geometry/ContourFields.h"

#include <gtest/gtest.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>

#include <algorithm>
#include <array>
#include <initializer_list>

namespace {

constexpr int N = 12;

template <class Value>
std::vector<float> makeValues(int numI, int numJ, Value value) {
    return oravane::contourCase("", numI, numJ, {}, value).values;
}
const auto xOf = [](int i, int) { return 2 + 0.25f * static_cast<float>(i); };
const auto yOf = [](int, int j) { return -1 + 0.5f * static_cast<float>(j); };
const std::vector<float> axisX = makeValues(N, 1, xOf), axisY = makeValues(1, N, yOf),
                         nodeX = makeValues(N, N, xOf), nodeY = makeValues(N, N, yOf);
/// A field with an open valley, closed hills and no symmetry.
const std::vector<float> hills = makeValues(N, N, [](int i, int j) {
    return std::sin(0.9f * static_cast<float>(i)) * std::cos(0.8f * static_cast<float>(j)) +
           0.05f * static_cast<float>(i);
});
const std::vector<float> hillLevels{-0.7f, -0.3f, 0.05f, 0.4f, 0.8f};

/// A contouring with the nodes that it writes to.
class Filling : public PiContouringFilled {
public:
    Filling() {
        levels.setIrregularIsoList(5, hillLevels.data());
        mapping.setValues(-1, SbColor(0, 0, 0), 1, SbColor(1, 1, 1));
        setIsovaluesList(&levels);
        setDataMapping(&mapping);
    }
    explicit Filling(const PbMesh2D &mesh, const float *z = nullptr) : Filling() { setMesh(&mesh, z); }

    void fill(const std::vector<float> &values, const float *z = nullptr) {
        group->removeAllChildren();
        fillSurf(values.data(), z, group.get(), material.get(), binding.get());
    }
    void fillMerged(const std::vector<float> &values) {
        group->removeAllChildren();
        preventFromThresholdWall(values.data());
        setOutput(group.get(), material.get(), binding.get());
        ASSERT_TRUE(computeContouringPoints(values.data(), nullptr));
        isoFilledElemParalCartGrid2D(values.data());
        makeNode();
    }

    SoNode *fromLast(int k) const { return group->getChild(group->getNumChildren() - k); }
    const SoMFVec3f &field() const { return static_cast<SoCoordinate3 *>(fromLast(2))->point; }
    std::vector<Ppoint3> points() const {
        std::vector<Ppoint3> result;
        for (int k = 0; k < field().getNum(); ++k)
            result.push_back({field()[k][0], field()[k][1], field()[k][2]});
        return result;
    }
    std::vector<std::vector<int>> polygons() const {
        const SoMFInt32 &indices = static_cast<SoIndexedFaceSet *>(fromLast(1))->coordIndex;
        return oravane::polygonsOf({indices.getValues(0), static_cast<std::size_t>(indices.getNum())});
    }
    int numPolygons() const { return static_cast<int>(polygons().size()); }
    SbColor color(int polygon) const { return material->diffuseColor[polygon]; }
    double area() const { return oravane::areaOf(polygons(), points()); }

    test::Ref<SoGroup> group{new SoGroup};
    test::Ref<SoMaterial> material{new SoMaterial};
    test::Ref<SoMaterialBinding> binding{new SoMaterialBinding};
    PbIsovaluesList levels;
    PbLinearDataMapping mapping;
};

/// The grid of the two axes as cells and nodes, given one by one.
void spellOut(PiContouring &contouring) {
    contouring.initGeometry();
    for (int n = 0; n < N * (N - 1); ++n) {
        const int quad[] = {n, n + N, n + N + 1, n + 1};
        if (n % N + 1 < N)
            contouring.addElems(4, quad);
    }
    contouring.setPoints(N * N, nodeX.data(), nodeY.data(), nullptr);
}

TEST(PiContouringFilled, CellsOfParallelGridsMayBeMerged) {
    const PbParalCartesianGrid2D parallel(N, N, axisX.data(), axisY.data(), 1);
    Filling whole(parallel), merged(parallel);
    whole.fill(hills);
    merged.fillMerged(hills);
    EXPECT_NEAR(merged.area(), whole.area(), 1e-4);
    EXPECT_NEAR(merged.area(), (axisX.back() - axisX[0]) * (axisY.back() - axisY[0]), 1e-4);
    EXPECT_LT(merged.numPolygons(), whole.numPolygons());
}

TEST(PiContouringFilled, WritesNodesInOrderAndOneColourForEachPiece) {
    const PbPolarGrid2D polar(N, N, axisX.data(), axisY.data(), 1);
    Filling filling(polar, hills.data());
    filling.fill(hills, hills.data());
    ASSERT_EQ(filling.group->getNumChildren(), 3);
    EXPECT_EQ(filling.group->getChild(0), filling.binding.get());
    EXPECT_EQ(filling.binding->value.getValue(), SoMaterialBinding::PER_FACE);
    ASSERT_EQ(filling.numPolygons(), filling.material->diffuseColor.getNum());
    EXPECT_EQ(filling.material->transparency.getNum(), 1) << "left as it was";
    int face = 0;
    for (const std::vector<int> &polygon : filling.polygons()) {
        double mean = 0; // z holds the values: of nodes as they are, of crossings their level
        for (const int point : polygon)
            mean += filling.field()[point][2] / static_cast<double>(polygon.size());
        const float level = filling.levels.getLowerIsovalue(static_cast<float>(mean));
        EXPECT_EQ(filling.color(face++), *filling.mapping.getRGBColor(level));
    }
}

TEST(PiContouringFilled, CrossingsOfAnyMeshKeepTheThirdCoordinateOfNodesWhenAsked) {
    const float x[] = {0, 2, 0}, y[] = {0, 0, 2}, z[] = {1, 5, 1};
    const std::vector<float> values{-1, 1, -1};
    const int triangle[] = {0, 1, 2};
    const test::Ref<SoCoordinate3> nodes(new SoCoordinate3);
    for (int k = 0; k < 3; ++k)
        nodes->point.set1Value(k, x[k], y[k], z[k]);
    for (const bool isOfNode : {false, true}) {
        Filling filling;
        filling.levels.setRegularIsoList(1, 0.0f, 1.0f);
        filling.addElems(3, triangle);
        if (isOfNode)
            filling.setPoints(3, nodes.get());
        else
            filling.setPoints(3, x, y, z);
        filling.fill(values, values.data());
        ASSERT_EQ(filling.field().getNum(), 5);
        EXPECT_EQ(filling.field()[3], SbVec3f(1, 0, 3)) << "not the values given for z: they only ask for it";
        filling.fill(values);
        EXPECT_EQ(filling.field()[3], SbVec3f(1, 0, 0));
        filling.initGeometry();
        filling.setPoints(3, x, y, z);
        filling.fill(values);
        EXPECT_EQ(filling.numPolygons(), 0) << "the cells of before are forgotten";
    }
}

TEST(PiContouringFilled, ColoursFollowTheListAsItWasGiven) {
    const PbRegularCartesianGrid2D mesh(N, N, 0, 0, 1, 1, 1);
    Filling filling(mesh);
    const auto expectOne = [&](const std::vector<float> &values, float color) {
        filling.fill(values);
        EXPECT_EQ(filling.numPolygons(), (N - 1) * (N - 1)) << "a uniform field is not cut";
        EXPECT_EQ(filling.color(0), SbColor(color, color, color));
    };
    filling.levels.setRegularIsoList(3, 0.25f, 0.25f);
    expectOne(std::vector<float>(N * N, 0.5f), 0.75f);
    filling.levels.setIrregularIsoList(0, nullptr);
    expectOne(hills, 0); // below all levels
    filling.setIsovaluesList(nullptr);
    expectOne(hills, 0);
    filling.setDataMapping(nullptr);
    filling.fill(hills);
    EXPECT_EQ(filling.group->getNumChildren(), 2) << "no binding without colours";
}

TEST(PiContouringFilled, NoWallStandsWhereAThresholdDeletes) {
    const PbRegularCartesianGrid2D mesh(2, 2, 0, 0, 1, 1, 1);
    const float z[] = {5, 6, 7, 8};
    Filling filling(mesh, z);
    filling.levels.setRegularIsoList(1, 5.0f, 1.0f);
    const auto expectArea = [&](float last, double area) {
        filling.fill({-1, 1, 1, last}); // of the one cell: below, above, above, ...
        EXPECT_NEAR(area == 0 ? filling.numPolygons() : filling.area(), area, 1e-6);
    };
    filling.mapping.setMinThreshold(0.0f, SbColor(1, 0, 0), 1.0f);
    filling.mapping.enableThresholds(1, 0);
    expectArea(1, 1); // transparency is not enabled
    filling.mapping.enableTransparency(1);
    expectArea(1, 0.5);
    EXPECT_EQ(filling.polygons(), (std::vector<std::vector<int>>{{2, 3, 1}}));
    EXPECT_EQ(filling.points(), (std::vector<Ppoint3>{{0, 0, 5}, {0, 1, 6}, {1, 0, 7}, {1, 1, 8}}));
    EXPECT_EQ(filling.material->transparency.getNum(), 1);
    expectArea(0, 0); // a value on the threshold is beyond it
    filling.mapping.setMaxThreshold(0.5f, SbColor(0, 0, 1), 0.5f);
    filling.mapping.enableThresholds(0, 1);
    expectArea(1, 1); // half transparent is not deleted
    filling.mapping.setTransparencyValueDeletedParts(0.5f);
    expectArea(1, 0);
}

struct Lines : PiContouringLines {
    explicit Lines(const std::vector<float> &list, const PbMesh2D *mesh = nullptr) {
        levels.setIrregularIsoList(static_cast<int>(list.size()), list.data());
        setIsovaluesList(&levels);
        setMesh(mesh, nullptr);
    }
    Tisoline_list get(const std::vector<float> &values) {
        Tisoline_list lines{};
        getLines(values.data(), nullptr, &lines);
        return lines;
    }
    PbIsovaluesList levels;
};

TEST(PiContouringLines, GridsAndTheirCellsGiveTheSameLinesTimeAndAgain) {
    const PbRegularCartesianGrid2D grid(N, N, axisX[0], axisY[0], axisX.back(), axisY.back(), 1);
    Lines structured(hillLevels, &grid), indexed(hillLevels);
    spellOut(indexed);
    // Level, number of points and length of each line, sorted: cells given one by one have another order.
    std::vector<std::vector<std::array<double, 3>>> summaries;
    for (Lines *lines : {&structured, &indexed, &structured}) {
        const Tisoline_list made = lines->get(hills);
        std::vector<std::array<double, 3>> &rows = summaries.emplace_back();
        for (int k = 0; k < made.numLines; ++k) {
            const auto [numPoints, points] = made.lines[k];
            double length = 0;
            for (int p = 1; p < numPoints; ++p)
                length += std::hypot(points[p].x - points[p - 1].x, points[p].y - points[p - 1].y);
            rows.push_back({made.isovalues[k], static_cast<double>(numPoints), std::round(length * 1e4)});
        }
        EXPECT_GT(made.numLines, 4);
        std::sort(rows.begin(), rows.end());
        EXPECT_EQ(rows, summaries[0]);
    }
}

TEST(PiContouringLines, MakesNodesOnlyWhenThereAreLines) {
    const PbRegularCartesianGrid2D grid(3, 3, 0, 0, 2, 2, 1);
    Lines lines({0.5f, 1}, &grid);
    test::Ref<SoGroup> group(new SoGroup);
    const std::vector<float> flat(9, 0.0f), hill{0, 0, 0, 0, 1, 0, 0, 0, 0};
    lines.makeLines(flat.data(), nullptr, group.get(), nullptr);
    EXPECT_EQ(group->getNumChildren(), 0);
    lines.makeLines(hill.data(), nullptr, group.get(), nullptr);
    ASSERT_EQ(group->getNumChildren(), 2);
    const SoMFVec3f &points = static_cast<SoCoordinate3 *>(group->getChild(0))->point;
    const SoMFInt32 &counts = static_cast<SoLineSet *>(group->getChild(1))->numVertices;
    EXPECT_EQ(std::vector<int>(counts.getValues(0), counts.getValues(0) + counts.getNum()),
              (std::vector<int>{5, 5}));
    EXPECT_EQ(points[0], SbVec3f(0.5f, 1, 0));
    EXPECT_EQ(points[0], points[4]);
    EXPECT_NE(points[5][0], 1) << "the level of the node is moved off it";
    EXPECT_EQ(lines.get(hill).isovalues[1], 1) << "by its place in the list";
}

TEST(PiContouring, NothingComesOfNothing) {
    Lines lines({0.5f});
    Filling filling;
    const std::vector<float> values{0, 1, 0, 1, 0, 1};
    const auto expectNothing = [&](const char *what) {
        SCOPED_TRACE(what);
        EXPECT_EQ(lines.get(values).numLines, 0);
        filling.fill(values);
        EXPECT_TRUE(filling.group->getNumChildren() == 0 || filling.numPolygons() == 0);
    };
    PbRegularCartesianGrid2D empty(1), thin(1, 6, 0, 0, 1, 1, 1), grid(2, 3, 0, 0, 1, 1, 1);
    expectNothing("no mesh");
    for (const PbMesh2D *mesh : std::initializer_list<const PbMesh2D *>{nullptr, &empty, &thin}) {
        lines.setMesh(mesh, nullptr);
        filling.setMesh(mesh, nullptr);
        expectNothing("mesh without cells");
    }
    for (PiContouring *contouring : std::initializer_list<PiContouring *>{&lines, &filling}) {
        const int nodes[] = {0, 1, 2};
        contouring->initGeometry();
        contouring->addElems(2, nodes);
        contouring->addElems(3, nullptr);
        contouring->addElems(3, nodes);
        contouring->setPoints(3, nullptr, nullptr, nullptr);
        contouring->setPoints(3, static_cast<SoCoordinate3 *>(nullptr));
    }
    expectNothing("cells without nodes");
    lines.setMesh(&grid, nullptr);
    filling.setMesh(&grid, nullptr);
    lines.getLines(values.data(), nullptr, nullptr);
    Tisoline_list made{};
    lines.getLines(nullptr, nullptr, &made);
    EXPECT_EQ(made.numLines, 0);
    EXPECT_GT(lines.get(values).numLines, 0);
    filling.group->removeAllChildren();
    filling.fillSurf(nullptr, nullptr, filling.group.get(), filling.material.get(), filling.binding.get());
    filling.fillSurf(values.data(), nullptr, nullptr, filling.material.get(), filling.binding.get());
    EXPECT_EQ(filling.group->getNumChildren(), 0);
}

} // namespace
