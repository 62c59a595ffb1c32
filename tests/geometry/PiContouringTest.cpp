#include <oravane/PbIsovaluesList.h>
#include <oravane/PbLinearDataMapping.h>
#include <oravane/PbParalCartesianGrid2D.h>
#include <oravane/PbPolarGrid2D.h>
#include <oravane/PbRegularCartesianGrid2D.h>
#include <oravane/PiContouringFilled.h>
#include <oravane/PiContouringLines.h>

#include "geometry/NodeMemory.h"

#include <gtest/gtest.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>

#include <cmath>
#include <functional>
#include <memory>

using oravane::NodeRef;

namespace {

constexpr int N = 12;

/// A field with an open valley, closed hills and no symmetry.
float valueAt(int i, int j) {
    return std::sin(0.9f * static_cast<float>(i)) * std::cos(0.8f * static_cast<float>(j)) +
           0.05f * static_cast<float>(i);
}

std::vector<float> makeValues(const std::function<float(int, int)> &value = valueAt, int n = N) {
    std::vector<float> values;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j)
            values.push_back(value(i, j));
    return values;
}

std::vector<float> axis(float first, float step) {
    std::vector<float> result;
    for (int k = 0; k < N; ++k)
        result.push_back(first + step * static_cast<float>(k));
    return result;
}

struct Polygon {
    std::vector<SbVec3f> points;
    SbColor color;
    double area() const { // in the plane
        double twice = 0;
        for (std::size_t k = 0; k < points.size(); ++k) {
            const SbVec3f &p = points[k], &q = points[(k + 1) % points.size()];
            twice += static_cast<double>(p[0]) * q[1] - static_cast<double>(q[0]) * p[1];
        }
        return twice / 2;
    }
};

/// A contouring with the nodes that it writes to.
class Filling : public PiContouringFilled {
public:
    Filling() {
        group.reset(new SoGroup);
        material.reset(new SoMaterial);
        binding.reset(new SoMaterialBinding);
        const float list[] = {-0.7f, -0.3f, 0.05f, 0.4f, 0.8f};
        levels.setIrregularIsoList(5, list);
        mapping.setValues(-1, SbColor(0, 0, 0), 1, SbColor(1, 1, 1));
        setIsovaluesList(&levels);
        setDataMapping(&mapping);
    }

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

    const SoMFVec3f &points() const { return static_cast<SoCoordinate3 *>(group->getChild(1))->point; }

    std::vector<Polygon> polygons() const {
        std::vector<Polygon> result;
        const auto *faces = static_cast<SoIndexedFaceSet *>(group->getChild(group->getNumChildren() - 1));
        const auto *nodes = static_cast<SoCoordinate3 *>(group->getChild(group->getNumChildren() - 2));
        Polygon polygon;
        for (int k = 0; k < faces->coordIndex.getNum(); ++k) {
            if (faces->coordIndex[k] >= 0) {
                polygon.points.push_back(nodes->point[faces->coordIndex[k]]);
                continue;
            }
            const int face = static_cast<int>(result.size());
            polygon.color = material->diffuseColor[std::min(face, material->diffuseColor.getNum() - 1)];
            result.push_back(std::exchange(polygon, {}));
        }
        return result;
    }

    double area() const {
        double sum = 0;
        for (const Polygon &polygon : polygons())
            sum += polygon.area();
        return sum;
    }

    NodeRef<SoGroup> group;
    NodeRef<SoMaterial> material;
    NodeRef<SoMaterialBinding> binding;
    PbIsovaluesList levels;
    PbLinearDataMapping mapping;
};

/// The cells of a grid, given one by one.
void addGridCells(PiContouring &contouring, int n = N) {
    contouring.initGeometry();
    for (int i = 0; i + 1 < n; ++i)
        for (int j = 0; j + 1 < n; ++j) {
            const int quad[] = {i * n + j, (i + 1) * n + j, (i + 1) * n + j + 1, i * n + j + 1};
            contouring.addElems(4, quad);
        }
}

std::unique_ptr<PbMesh2D> makeMesh(const std::string &kind) {
    const std::vector<float> x = axis(2, 0.25f), y = axis(-1, 0.5f), angles = axis(0, 0.1f);
    if (kind == "regular")
        return std::make_unique<PbRegularCartesianGrid2D>(N, N, x.front(), y.front(), x.back(), y.back(), 1);
    if (kind == "polar")
        return std::make_unique<PbPolarGrid2D>(N, N, x.data(), angles.data(), 1);
    if (kind == "parallel")
        return std::make_unique<PbParalCartesianGrid2D>(N, N, x.data(), y.data(), 1);
    std::vector<float> allX, allY;
    for (int n = 0; n < N * N; ++n) {
        allX.push_back(x[n / N]);
        allY.push_back(y[n % N]);
    }
    return std::make_unique<PbCartesianGrid2D>(N, N, allX.data(), allY.data(), 1);
}

TEST(PiContouringFilled, EveryKindOfMeshShowsTheSameField) {
    const std::vector<float> values = makeValues();
    Filling expected;
    const std::unique_ptr<PbMesh2D> cartesian = makeMesh("cartesian");
    expected.setMesh(cartesian.get(), nullptr);
    expected.fill(values);
    const std::vector<Polygon> all = expected.polygons();
    EXPECT_GT(all.size(), 200u);
    for (const std::string kind : {"regular", "parallel", "indexed"}) {
        SCOPED_TRACE(kind);
        Filling made;
        std::unique_ptr<PbMesh2D> mesh;
        if (kind == "indexed") {
            addGridCells(made);
            NodeRef<SoCoordinate3> nodes;
            nodes.reset(new SoCoordinate3);
            nodes->point = expected.points();
            made.setPoints(N * N, nodes.get());
        } else {
            mesh = makeMesh(kind);
            made.setMesh(mesh.get(), nullptr);
        }
        made.fill(values);
        const std::vector<Polygon> polygons = made.polygons();
        ASSERT_EQ(polygons.size(), all.size());
        EXPECT_EQ(made.points().getNum(), expected.points().getNum());
        for (std::size_t k = 0; k < all.size(); ++k) {
            ASSERT_EQ(polygons[k].points.size(), all[k].points.size()) << "piece " << k;
            EXPECT_EQ(polygons[k].color, all[k].color) << "piece " << k;
            for (std::size_t p = 0; p < all[k].points.size(); ++p)
                EXPECT_TRUE(polygons[k].points[p].equals(all[k].points[p], 1e-10f)) << "piece " << k;
        }
    }
}

TEST(PiContouringFilled, WritesNodesInOrderAndOneColourForEachPiece) {
    const std::vector<float> values = makeValues();
    const std::unique_ptr<PbMesh2D> mesh = makeMesh("polar");
    Filling filling;
    filling.setMesh(mesh.get(), values.data());
    filling.fill(values, values.data());
    ASSERT_EQ(filling.group->getNumChildren(), 3);
    EXPECT_EQ(filling.group->getChild(0), filling.binding.get());
    EXPECT_EQ(filling.binding->value.getValue(), SoMaterialBinding::PER_FACE);
    ASSERT_TRUE(filling.group->getChild(1)->isOfType(SoCoordinate3::getClassTypeId()));
    ASSERT_TRUE(filling.group->getChild(2)->isOfType(SoIndexedFaceSet::getClassTypeId()));
    const std::vector<Polygon> polygons = filling.polygons();
    EXPECT_EQ(static_cast<int>(polygons.size()), filling.material->diffuseColor.getNum());
    EXPECT_EQ(filling.material->transparency.getNum(), 1) << "left as it was";
    for (const Polygon &polygon : polygons) {
        double mean = 0; // z holds the values: of nodes as they are, of crossings their level
        for (const SbVec3f &point : polygon.points)
            mean += point[2] / static_cast<double>(polygon.points.size());
        const SbColor *color =
            filling.mapping.getRGBColor(filling.levels.getLowerIsovalue(static_cast<float>(mean)));
        EXPECT_EQ(polygon.color, *color);
    }
    const std::vector<float> x = axis(2, 0.25f);
    for (int node = 0; node < N * N; ++node) {
        const float r = x[node / N], t = 0.1f * static_cast<float>(node % N);
        EXPECT_TRUE(
            filling.points()[node].equals(SbVec3f(r * std::cos(t), r * std::sin(t), values[node]), 1e-9f));
    }
}

TEST(PiContouringFilled, CrossingsOfAnyMeshKeepTheThirdCoordinateOfNodesWhenAsked) {
    const float x[] = {0, 2, 0}, y[] = {0, 0, 2}, z[] = {1, 5, 1}, values[] = {-1, 1, -1};
    const int triangle[] = {0, 1, 2};
    Filling filling;
    filling.levels.setRegularIsoList(1, 0.0f, 1.0f);
    filling.addElems(3, triangle);
    filling.setPoints(3, x, y, z);
    filling.fill({values, values + 3}, values);
    ASSERT_EQ(filling.points().getNum(), 5);
    EXPECT_EQ(filling.points()[3], SbVec3f(1, 0, 3)) << "not the values given for z: they only ask for it";
    filling.fill({values, values + 3}, nullptr);
    EXPECT_EQ(filling.points()[3], SbVec3f(1, 0, 0));
}

TEST(PiContouringFilled, ColoursFollowTheListAsItWasGiven) {
    const std::unique_ptr<PbMesh2D> mesh = makeMesh("regular");
    Filling filling;
    filling.setMesh(mesh.get(), nullptr);
    filling.levels.setRegularIsoList(3, 0.25f, 0.25f);
    filling.fill(makeValues([](int, int) { return 0.5f; }));
    const std::vector<Polygon> polygons = filling.polygons();
    EXPECT_EQ(polygons.size(), 1u * (N - 1) * (N - 1)) << "a uniform field is not cut";
    EXPECT_EQ(polygons.front().color, SbColor(0.75f, 0.75f, 0.75f));

    filling.levels.setIrregularIsoList(0, nullptr);
    filling.fill(makeValues());
    EXPECT_EQ(filling.polygons().size(), 1u * (N - 1) * (N - 1));
    EXPECT_EQ(filling.polygons().front().color, SbColor(0, 0, 0)) << "below all levels";
    filling.setIsovaluesList(nullptr);
    filling.fill(makeValues());
    EXPECT_EQ(filling.polygons().size(), 1u * (N - 1) * (N - 1));
}

TEST(PiContouringFilled, LeavesOutWhatHasNoColour) {
    const std::vector<float> values = makeValues();
    const std::unique_ptr<PbMesh2D> mesh = makeMesh("regular");
    Filling filling;
    filling.setMesh(mesh.get(), nullptr);
    filling.fill(values);
    const std::size_t all = filling.polygons().size();
    filling.mapping.setMinThreshold(0.0f); // no colour: levels -0.7 and -0.3, and what is below them
    filling.mapping.enableThresholds(1, 0);
    filling.fill(values);
    const std::vector<Polygon> shown = filling.polygons();
    EXPECT_LT(shown.size(), all);
    for (const Polygon &polygon : shown)
        EXPECT_GE(polygon.color[0], 0.5f);
    EXPECT_EQ(static_cast<std::size_t>(filling.material->diffuseColor.getNum()), all);

    filling.setDataMapping(nullptr);
    filling.fill(values);
    EXPECT_EQ(filling.group->getNumChildren(), 2) << "no binding without colours";
    EXPECT_EQ(filling.polygons().size(), all);
}

TEST(PiContouringFilled, NoWallStandsWhereAThresholdDeletes) {
    // Nodes 0 to 3 of the one cell: below, above, above, above.
    PbRegularCartesianGrid2D mesh(2, 2, 0, 0, 1, 1, 1);
    Filling filling;
    filling.setMesh(&mesh, nullptr);
    filling.levels.setRegularIsoList(1, 5.0f, 1.0f);
    filling.mapping.setMinThreshold(0.0f, SbColor(1, 0, 0), 1.0f);
    filling.mapping.enableThresholds(1, 0);
    const std::vector<float> values{-1, 1, 1, 1};
    filling.fill(values);
    EXPECT_NEAR(filling.area(), 1, 1e-6) << "transparency is not enabled";
    filling.mapping.enableTransparency(1);
    filling.fill(values);
    ASSERT_EQ(filling.polygons().size(), 1u);
    EXPECT_EQ(filling.polygons()[0].points,
              (std::vector<SbVec3f>{SbVec3f(1, 0, 0), SbVec3f(1, 1, 0), SbVec3f(0, 1, 0)}));
    EXPECT_EQ(filling.material->transparency.getNum(), 1);
    filling.fill({-1, 1, 1, 0});
    EXPECT_TRUE(filling.polygons().empty()) << "a value on the threshold is beyond it";
    filling.mapping.setMaxThreshold(0.5f, SbColor(0, 0, 1), 0.5f);
    filling.mapping.enableThresholds(0, 1);
    filling.fill(values);
    EXPECT_NEAR(filling.area(), 1, 1e-6) << "half transparent is not deleted";
    filling.mapping.setTransparencyValueDeletedParts(0.5f);
    filling.fill(values);
    EXPECT_TRUE(filling.polygons().empty());
}

TEST(PiContouringFilled, MergedCellsCoverTheSame) {
    const std::vector<float> values = makeValues([](int i, int j) {
        return i > 7 ? 0.5f : i < 3 && j < 3 ? -1.0f : 0.0f;
    });
    const std::unique_ptr<PbMesh2D> mesh = makeMesh("parallel");
    Filling filling;
    filling.setMesh(mesh.get(), nullptr);
    filling.fill(values);
    const double area = filling.area();
    const std::size_t pieces = filling.polygons().size();
    filling.fillMerged(values);
    EXPECT_NEAR(filling.area(), area, 1e-4);
    EXPECT_LT(filling.polygons().size(), pieces / 2);
}

struct Lines : PiContouringLines {
    explicit Lines(std::vector<float> list) {
        levels.setIrregularIsoList(static_cast<int>(list.size()), list.data());
        setIsovaluesList(&levels);
    }
    Tisoline_list get(const std::vector<float> &values) {
        Tisoline_list lines{};
        getLines(values.data(), nullptr, &lines);
        return lines;
    }
    PbIsovaluesList levels;
};

bool isClosed(const Ppoint_list3 &line) {
    const Ppoint3 &a = line.points[0], &b = line.points[line.numPoints - 1];
    return line.numPoints > 1 && a.x == b.x && a.y == b.y && a.z == b.z;
}

TEST(PiContouringLines, OpenLinesComeFirstAndEndOnTheBorder) {
    const std::unique_ptr<PbMesh2D> grid = makeMesh("regular");
    const std::vector<float> values = makeValues();
    Lines lines({-0.7f, -0.3f, 0.05f, 0.4f, 0.8f});
    lines.setMesh(grid.get(), nullptr);
    const Tisoline_list made = lines.get(values);
    const auto onBorder = [](const Ppoint3 &p) {
        return p.x == 2 || p.x == 2 + 0.25f * (N - 1) || p.y == -1 || p.y == -1 + 0.5f * (N - 1);
    };
    int open = 0;
    while (open < made.numLines && !isClosed(made.lines[open]))
        ++open;
    EXPECT_GT(open, 3);
    EXPECT_LT(open, made.numLines);
    for (int k = 0; k < made.numLines; ++k) {
        const Ppoint_list3 &line = made.lines[k];
        EXPECT_EQ(isClosed(line), k >= open);
        EXPECT_EQ(onBorder(line.points[0]) && onBorder(line.points[line.numPoints - 1]), k < open);
    }
}

TEST(PiContouringLines, GivenCellByCellTheLinesAreTheSame) {
    const std::unique_ptr<PbMesh2D> grid = makeMesh("regular");
    const std::vector<float> values = makeValues();
    const auto summary =
        [&](Lines &lines) { // the order is another one: the cells meet the edges in their order
            const Tisoline_list made = lines.get(values);
            std::vector<std::array<double, 3>> rows;
            for (int k = 0; k < made.numLines; ++k) {
                double length = 0;
                const Ppoint_list3 &line = made.lines[k];
                for (int p = 1; p < line.numPoints; ++p)
                    length += std::hypot(line.points[p].x - line.points[p - 1].x,
                                         line.points[p].y - line.points[p - 1].y);
                rows.push_back(
                    {made.isovalues[k], static_cast<double>(line.numPoints), std::round(length * 1e4)});
            }
            std::sort(rows.begin(), rows.end());
            return rows;
        };
    Lines structured({-0.3f, 0.4f, 0.8f}), indexed({-0.3f, 0.4f, 0.8f});
    structured.setMesh(grid.get(), nullptr);
    addGridCells(indexed);
    std::vector<float> x, y;
    for (int n = 0; n < N * N; ++n) {
        x.push_back(2 + 0.25f * static_cast<float>(n / N));
        y.push_back(-1 + 0.5f * static_cast<float>(n % N));
    }
    indexed.setPoints(N * N, x.data(), y.data(), nullptr);
    EXPECT_EQ(summary(structured), summary(indexed));
    EXPECT_EQ(summary(structured), summary(structured)) << "nothing of a computation is left in the next";
}

TEST(PiContouringLines, MovesALevelOffTheNodes) {
    PbRegularCartesianGrid2D grid(2, 2, 0, 0, 1, 1, 1);
    Lines lines({2});
    lines.setMesh(&grid, nullptr);
    const Tisoline_list made = lines.get({1, 1, 2, 3});
    ASSERT_EQ(made.numLines, 1);
    EXPECT_FLOAT_EQ(made.isovalues[0], 2.01f);
    EXPECT_NE(made.lines[0].points[0].x, 1);
}

TEST(PiContouringLines, MakesNodesOnlyWhenThereAreLines) {
    PbRegularCartesianGrid2D grid(3, 3, 0, 0, 2, 2, 1);
    Lines lines({0.5f, 0.75f});
    NodeRef<SoGroup> group;
    group.reset(new SoGroup);
    lines.setMesh(&grid, nullptr);
    const std::vector<float> flat(9, 0.0f), hill{0, 0, 0, 0, 1, 0, 0, 0, 0};
    lines.makeLines(flat.data(), nullptr, group.get(), nullptr);
    EXPECT_EQ(group->getNumChildren(), 0);
    lines.makeLines(hill.data(), nullptr, group.get(), nullptr);
    ASSERT_EQ(group->getNumChildren(), 2);
    const auto *coordinates = static_cast<SoCoordinate3 *>(group->getChild(0));
    const auto *lineSet = static_cast<SoLineSet *>(group->getChild(1));
    EXPECT_EQ(coordinates->point.getNum(), 10);
    ASSERT_EQ(lineSet->numVertices.getNum(), 2);
    EXPECT_EQ(lineSet->numVertices[0], 5);
    EXPECT_EQ(coordinates->point[0], SbVec3f(0.5f, 1, 0));
    EXPECT_EQ(coordinates->point[0], coordinates->point[4]);
}

TEST(PiContouring, NothingComesOfNothing) {
    Lines lines({0.5f});
    Filling filling;
    const std::vector<float> values{0, 1, 0, 1, 0, 1};
    const auto expectNothing = [&](const char *what) {
        SCOPED_TRACE(what);
        EXPECT_EQ(lines.get(values).numLines, 0);
        filling.group->removeAllChildren();
        filling.fill(values);
        EXPECT_TRUE(filling.group->getNumChildren() == 0 || filling.polygons().empty());
    };
    expectNothing("no mesh");
    PbRegularCartesianGrid2D empty(1), thin(1, 6, 0, 0, 1, 1, 1), grid(2, 3, 0, 0, 1, 1, 1);
    for (PbMesh2D *mesh : {static_cast<PbMesh2D *>(nullptr), static_cast<PbMesh2D *>(&empty),
                           static_cast<PbMesh2D *>(&thin)}) {
        lines.setMesh(mesh, nullptr);
        filling.setMesh(mesh, nullptr);
        expectNothing("mesh without cells");
    }
    for (PiContouring *contouring :
         {static_cast<PiContouring *>(&lines), static_cast<PiContouring *>(&filling)}) {
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
    lines.getLines(values.data(), nullptr, nullptr);
    Tisoline_list made{};
    lines.getLines(nullptr, nullptr, &made);
    EXPECT_EQ(made.numLines, 0);
    EXPECT_GT(lines.get(values).numLines, 0);
    filling.setMesh(&grid, nullptr);
    filling.group->removeAllChildren();
    filling.fillSurf(nullptr, nullptr, filling.group.get(), filling.material.get(), filling.binding.get());
    filling.fillSurf(values.data(), nullptr, nullptr, filling.material.get(), filling.binding.get());
    EXPECT_EQ(filling.group->getNumChildren(), 0);
}

} // namespace
