#include <oravane/PoCurve.h>

#include "Drawn.h"

#include <oravane/PbDomain.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoText3.h>

#include <algorithm>
#include <random>

namespace {

using test::INFINITE;
using test::NOT_A_NUMBER;
using Points = std::vector<SbVec2f>;

constexpr const char *GENERATED[] = {"curveFilling", "curvePoint", "raisePoint", "marker"};

struct Scene : test::KitScene<PoCurve> {
    explicit Scene(const Points &points) { set(points); }
    void set(const Points &points) const {
        kit->point.setNum(static_cast<int>(points.size()));
        kit->point.setValues(0, static_cast<int>(points.size()), points.data());
    }
    template <class Node>
    Node *in(const char *name) const {
        const SoGroup *group = part(name);
        for (int k = 0; group && k < group->getNumChildren(); ++k)
            if (auto *node = dynamic_cast<Node *>(group->getChild(k)))
                return node;
        return nullptr;
    }
    /// Lines or polygons as text: "x,y x,y | x,y ... |", "null" for a part that is null.
    template <class Shape = SoLineSet>
    std::string text(const char *name) const {
        traverse();
        if (!part(name))
            return "null";
        std::ostringstream result;
        const SoMFInt32 &counts = in<Shape>(name)->numVertices;
        const SbVec3f *point = in<SoCoordinate3>(name)->point.getValues(0);
        for (int k = 0; k < counts.getNum(); ++k) {
            for (int i = 0; i < counts[k]; ++i, ++point)
                result << (*point)[0] << "," << (*point)[1] << " ";
            result << "| ";
        }
        return result.str();
    }
};

TEST(PoCurve, Shapes) {
    const Points three = {{0, 0}, {2, 4}, {4, 4}};
    struct {
        PoCurve::CurveRep rep;
        const char *ofThree, *ofGap;
    } const rows[] = {
        {PoCurve::CURVE_NONE, "null", "null"},
        {PoCurve::CURVE_POLYLINE, "0,0 2,4 4,4 | ", "0,0 2,4 | 4,4 | "},
        {PoCurve::CURVE_STAIRS_X, "0,0 2,0 2,4 4,4 | ", "0,0 2,0 2,4 | 4,4 | "},
        {PoCurve::CURVE_STAIRS_Y, "0,0 0,4 2,4 4,4 | ", "0,0 0,4 2,4 | 4,4 | "},
        {PoCurve::CURVE_HISTO_X, "0,0 0,2 2,2 2,4 4,4 | ", "0,0 0,2 2,2 2,4 | 4,4 | "},
        {PoCurve::CURVE_HISTO_Y, "0,0 1,0 1,4 3,4 4,4 | ", "0,0 1,0 1,4 2,4 | 4,4 | "},
        {PoCurve::CURVE_STAIRS_2X, "0,0 0,2 1,2 1,4 2,4 3,4 4,4 | ", "0,0 0,2 1,2 1,4 2,4 | 4,4 | "},
        {PoCurve::CURVE_STAIRS_2Y, "0,0 1,0 1,2 2,2 2,4 3,4 4,4 | ", "0,0 1,0 1,2 2,2 2,4 | 4,4 | "},
    };
    for (const auto &row : rows) {
        Scene scene(three);
        scene.kit->curveRep = row.rep;
        EXPECT_EQ(scene.text("curvePoint"), row.ofThree) << row.rep;
        scene.set({{0, 0}, {2, 4}, {3, NOT_A_NUMBER}, {4, 4}});
        EXPECT_EQ(scene.text("curvePoint"), row.ofGap) << row.rep;
        scene.set({{5, 6}});
        EXPECT_EQ(scene.text("curvePoint"), row.rep == PoCurve::CURVE_NONE ? "null" : "5,6 | ") << row.rep;
    }
    Scene scene({{0, 0}, {1, 1}, {2, 2}});
    scene.kit->curveRep = PoCurve::CURVE_SMOOTH;
    scene.traverse();
    ASSERT_EQ(scene.in<SoCoordinate3>("curvePoint")->point.getNum(), 21);
    EXPECT_TRUE(scene.in<SoCoordinate3>("curvePoint")->point[13].equals(SbVec3f(1.3f, 1.3f, 0), 1e-6f));
}

TEST(PoCurve, FillsDownToTheThreshold) {
    struct {
        const char *name;
        Points points;
        float threshold;
        const char *line, *polygons;
    } const rows[] = {
        {"above", {{0, 1}, {1, 2}}, 0, "-0.0001,0 0,1 1,2 1.0001,0 | ", "-0.0001,0 0,1 1,2 1.0001,0 | "},
        {"crossing",
         {{0, 1}, {0, 1}, {10, -1}},
         0,
         "-0.001,0 0,1 0,1 10,-1 10.001,0 | ",
         "-0.001,0 0,1 5,0 | 5,0 10,-1 10.001,0 | "},
        {"from threshold to threshold", {{0, 3}, {1, 4}, {2, 3}}, 3, "0,3 1,4 2,3 | ", "0,3 1,4 2,3 | "},
        {"touching",
         {{0, 0}, {1, 1}, {2, 0}, {2, 0}, {3, 0}, {4, -1}, {5, 0}},
         0,
         "0,0 1,1 2,0 2,0 3,0 4,-1 5,0 | ",
         "0,0 1,1 2,0 | 3,0 4,-1 5,0 | "},
        {"very small values cross, too",
         {{0, 0}, {1, 1e-19f}, {3, -1e-19f}, {4, 0}},
         0,
         "0,0 1,1e-19 3,-1e-19 4,0 | ",
         "0,0 1,1e-19 2,0 | 2,0 3,-1e-19 4,0 | "},
        {"as far as numbers go",
         {{-3.4028e38f, 1}, {3.4028e38f, 1}},
         0,
         "-3.40282e+38,0 -3.4028e+38,1 3.4028e+38,1 3.40282e+38,0 | ",
         "-3.40282e+38,0 -3.4028e+38,1 3.4028e+38,1 3.40282e+38,0 | "},
        {"along the threshold", {{0, 2}, {1, 2}}, 2, "0,2 1,2 | ", ""},
        {"one point", {{1, 2}}, 0, "1,2 | ", "null"},
        {"none", {}, 0, "null", "null"},
        {"infinite threshold", {{0, 1}, {1, 2}}, INFINITE, "0,1 1,2 | ", "null"},
        {"gap",
         {{0, 1}, {1, 1}, {2, INFINITE}, {9, 1}, {10, 0}},
         0,
         "-0.001,0 0,1 1,1 1.001,0 | 8.999,0 9,1 10,0 | ",
         "-0.001,0 0,1 1,1 1.001,0 | 8.999,0 9,1 10,0 | "},
    };
    for (const auto &row : rows) {
        Scene scene(row.points);
        scene.kit->fillingThreshold = row.threshold;
        EXPECT_EQ(scene.text<SoFaceSet>("curveFilling"), "null") << row.name;
        scene.kit->isCurveFilled = TRUE;
        EXPECT_EQ(scene.text("curvePoint"), row.line) << row.name;
        EXPECT_EQ(scene.text<SoFaceSet>("curveFilling"), row.polygons) << row.name;
    }
    Scene scene(rows[0].points);
    scene.kit->isCurveFilled = TRUE;
    scene.kit->curveRep = PoCurve::CURVE_NONE;
    EXPECT_EQ(scene.text("curvePoint"), "null");
    EXPECT_EQ(scene.text<SoFaceSet>("curveFilling"), rows[0].polygons);
    EXPECT_EQ(scene.in<SoShapeHints>("curveFilling")->faceType.getValue(), SoShapeHints::UNKNOWN_FACE_TYPE);
}

/// The area between a line and a height.
double areaToThreshold(const SoMFVec3f &line, double threshold) {
    double area = 0;
    for (int i = 0; i + 1 < line.getNum(); ++i) {
        const double width = line[i + 1][0] - line[i][0];
        const double a = line[i][1] - threshold, b = line[i + 1][1] - threshold;
        area += width / 2 * (a * b >= 0 ? std::abs(a + b) : (a * a + b * b) / (std::abs(a) + std::abs(b)));
    }
    return area;
}

Points randomPoints(int n, float lowest) {
    std::mt19937 random(3);
    std::uniform_real_distribution<float> between(lowest, 1);
    Points points;
    for (int i = 0; i < n; ++i)
        points.emplace_back(static_cast<float>(i), between(random));
    return points;
}

TEST(PoCurve, FillingHasTheAreaOfTheShape) {
    for (int rep = PoCurve::CURVE_POLYLINE; rep <= PoCurve::CURVE_STAIRS_2Y; ++rep) {
        const Points points = randomPoints(60, -1);
        Scene scene(points);
        scene.kit->curveRep = rep;
        scene.kit->isCurveFilled = TRUE;
        scene.kit->fillingThreshold = 0.1f;
        const double area = test::drawnBy(scene.root.get()).area;
        const SoMFVec3f &line = scene.in<SoCoordinate3>("curvePoint")->point;
        EXPECT_NEAR(area, areaToThreshold(line, 0.1), 1e-4 * area) << rep;
        const SoMFInt32 &counts = scene.in<SoFaceSet>("curveFilling")->numVertices;
        const SbVec3f *point = scene.in<SoCoordinate3>("curveFilling")->point.getValues(0);
        for (int k = 0; k < counts.getNum(); ++k) {
            bool isAbove = false, isBelow = false;
            for (int i = 0; i < counts[k]; ++i, ++point) {
                isAbove = isAbove || (*point)[1] > 0.1f;
                isBelow = isBelow || (*point)[1] < 0.1f;
            }
            EXPECT_NE(isAbove, isBelow) << rep << ", polygon " << k;
        }
    }
    // A polygon that would be too large to be triangulated in linear time.
    Points points = randomPoints(25000, 0.2f);
    for (const bool isReversed : {false, true}) {
        if (isReversed)
            std::reverse(points.begin(), points.end());
        Scene scene(points);
        scene.kit->isCurveFilled = TRUE;
        const double area = test::drawnBy(scene.root.get()).area;
        EXPECT_NEAR(area, std::abs(areaToThreshold(scene.in<SoCoordinate3>("curvePoint")->point, 0)),
                    5e-4 * area);
        EXPECT_EQ(scene.in<SoFaceSet>("curveFilling")->numVertices.getNum(), 25001);
    }
}

TEST(PoCurve, RaisesChosenPlaces) {
    Scene scene({{0, 1}, {2, 3}, {4, 1}});
    EXPECT_EQ(scene.text("raisePoint"), "null");
    scene.kit->curveRep = PoCurve::CURVE_SMOOTH;
    scene.kit->raiseThreshold = -1;
    scene.kit->raiseFilterType = PoCurve::ALL_POINTS;
    EXPECT_EQ(scene.text("raisePoint"), "0,-1 0,1 | 2,-1 2,3 | 4,-1 4,1 | ") << "the points of the user";
    scene.kit->raiseFilterType = PoCurve::INDEX_LIST;
    const std::int32_t indices[] = {2, 7};
    scene.kit->raiseIndexList.setValues(0, 2, indices);
    EXPECT_EQ(scene.text("raisePoint"), "4,-1 4,1 | ");
    scene.kit->raiseFilterType = PoCurve::X_PERIOD;
    EXPECT_EQ(scene.text("raisePoint"), "null") << "of period 0";
    scene.kit->curveRep = PoCurve::CURVE_STAIRS_X;
    scene.kit->raiseXPeriod = 1;
    EXPECT_EQ(scene.text("raisePoint"),
              "0,-1 0,1 | 1,-1 1,1 | 2,-1 2,1 | 2,-1 2,1 | 2,-1 2,3 | 3,-1 3,3 | 4,-1 4,3 | 4,-1 4,1 | ")
        << "on the shape";
    scene.kit->raiseFilterType = PoCurve::X_LIST;
    scene.kit->raiseXList = 7;
    EXPECT_EQ(scene.text("raisePoint"), "");
    scene.kit->raiseThreshold = NOT_A_NUMBER;
    EXPECT_EQ(scene.text("raisePoint"), "null");
}

TEST(PoCurve, MarksAreDotsOrTextsThatKeepTheirShape) {
    Scene scene({{0, 0}, {100, 1}, {200, 2}});
    scene.kit->curveRep = PoCurve::CURVE_NONE;
    scene.kit->markerFilterType = PoCurve::ALL_POINTS;
    scene.traverse();
    EXPECT_EQ(scene.in<SoCoordinate3>("marker")->point.getNum(), 3);
    auto *style = dynamic_cast<SoDrawStyle *>(scene.kit->getPart("markerApp.drawStyle", FALSE));
    ASSERT_TRUE(style);
    EXPECT_GT(style->pointSize.getValue(), 1);

    scene.kit->markerString = "H";
    PbDomain domain(0, 0, 200, 2, PbDomain::BBOX_AS_GIVEN);
    scene.kit->setDomain(&domain);
    for (const auto type : {PbDomain::SCALE_X_FIXED, PbDomain::SCALE_Y_FIXED, PbDomain::TRANSFORM_01}) {
        domain.setTransformType(type);
        scene.kit->markerFilterType = PoCurve::INDEX_LIST; // the one at (0, 0)
        const SbBox3f letter = test::boundingBox(scene.root.get());
        const SbVec3f size = letter.getMax() - letter.getMin();
        EXPECT_NEAR(size[1] / size[0], 0.7489f / 0.7389f, 0.1) << "as an H of the built-in font";
        EXPECT_TRUE(letter.getCenter().equals(SbVec3f(0, 0, 0), 0.02f * size[0])) << type;
        scene.kit->markerFilterType = PoCurve::ALL_POINTS;
        const SbBox3f all = test::boundingBox(scene.root.get());
        EXPECT_NEAR((all.getMax() - all.getMin() - size)[0],
                    type == PbDomain::SCALE_X_FIXED   ? 200
                    : type == PbDomain::SCALE_Y_FIXED ? 2
                                                      : 1,
                    1e-4 * size[0] * 100);
        EXPECT_EQ(scene.part("marker")->getNumChildren(), 3);
    }
    scene.kit->markerString = "";
    scene.traverse();
    EXPECT_EQ(scene.part("marker")->getNumChildren(), 0);
}

TEST(PoCurve, MarksStandOnTheirPoints) {
    for (const char *letter : {"*", "o", "-", "'", "A"}) {
        Scene scene({{3, 4}});
        scene.kit->markerString = letter;
        scene.kit->markerFilterType = PoCurve::ALL_POINTS;
        SbBox3f box;
        SoCallbackAction action;
        action.addTriangleCallback(
            SoShape::getClassTypeId(),
            [](void *seen, SoCallbackAction *traversal, const SoPrimitiveVertex *a,
               const SoPrimitiveVertex *b, const SoPrimitiveVertex *c) {
                for (const SoPrimitiveVertex *vertex : {a, b, c}) {
                    SbVec3f point;
                    traversal->getModelMatrix().multVecMatrix(vertex->getPoint(), point);
                    static_cast<SbBox3f *>(seen)->extendBy(point);
                }
            },
            &box);
        action.apply(scene.root.get());
        EXPECT_TRUE(box.getCenter().equals(SbVec3f(3, 4, 0), 1e-5f)) << letter;
    }
}

TEST(PoCurve, FontsOfMarksAreMadeOrTaken) {
    Scene scene({{0, 0}, {1, 1}});
    scene.kit->markerString = "*";
    scene.kit->markerFilterType = PoCurve::ALL_POINTS;
    const auto font = [&] { return static_cast<SoFont *>(scene.kit->getPart("markerApp.font", FALSE)); };
    scene.traverse();
    ASSERT_TRUE(font());
    EXPECT_FLOAT_EQ(font()->size.getValue(), 0.03f);
    EXPECT_EQ(test::written(scene.root.get()).find("Font"), std::string::npos) << "made again after reading";
    PbDomain domain(0, 0, 50, 1, PbDomain::BBOX_AS_GIVEN);
    EXPECT_EQ(scene.rebuildsOf([&] { scene.kit->setDomain(&domain); }), 1);
    EXPECT_FLOAT_EQ(font()->size.getValue(), 1.5f) << "follows the domain";
    const test::Ref<SoGroup> copy(static_cast<SoGroup *>(scene.root->copy()));
    domain.setDomain(0, 0, 80, 1, PbDomain::BBOX_AS_GIVEN);
    SoCallbackAction().apply(copy.get());
    auto *copied = static_cast<PoCurve *>(copy->getChild(0));
    EXPECT_FLOAT_EQ(static_cast<SoFont *>(copied->getPart("markerApp.font", FALSE))->size.getValue(), 2.4f);
    font()->size = 4;
    scene.kit->touchKit();
    scene.traverse();
    EXPECT_EQ(font()->size.getValue(), 4) << "taken over by the program";
    EXPECT_NE(test::written(scene.root.get()).find("size 4"), std::string::npos);
    scene.kit->markerString = ".";
    scene.traverse();
    EXPECT_EQ(scene.rebuildsOf([&] { domain.setDomain(0, 0, 9, 9, PbDomain::BBOX_AS_GIVEN); }), 0)
        << "dots are the same in all domains";
}

TEST(PoCurve, RebuildsForChangesOnlyAndComesBackFromFiles) {
    Scene scene({{0, 0}, {1, 2}, {2, -1}});
    scene.kit->curveRep = PoCurve::CURVE_HISTO_X;
    scene.kit->isCurveFilled = TRUE;
    scene.kit->raiseFilterType = PoCurve::X_PERIOD;
    scene.kit->raiseXPeriod = 0.25f;
    scene.kit->markerFilterType = PoCurve::INDEX_PERIOD;
    scene.kit->markerIndexPeriod = 2;
    EXPECT_EQ(scene.rebuildsOf([] {}), 0);
    EXPECT_EQ(scene.rebuildsOf([&] { scene.kit->raiseThreshold = 1; }), 1);
    EXPECT_EQ(scene.rebuildsOf([&] { scene.kit->point.set1Value(2, SbVec2f(2, -2)); }), 1);
    const test::Drawn drawn = test::drawnBy(scene.root.get());
    EXPECT_GT(drawn.area, 0);
    for (const auto format : {PoBase::WRITE_FIELDS, PoBase::WRITE_PARTS})
        for (const bool isBinary : {false, true}) {
            PoBase::setNodeWriteFormat(format);
            const auto read = test::readBack(test::written(scene.root.get(), isBinary));
            PoBase::setNodeWriteFormat(PoBase::WRITE_FIELDS);
            ASSERT_TRUE(read);
            const test::Drawn again = test::drawnBy(read.get());
            EXPECT_FLOAT_EQ(static_cast<float>(again.area), static_cast<float>(drawn.area));
            EXPECT_EQ(again.known, drawn.known);
        }
}

TEST(PoCurve, TakesAnyInput) {
    const float bad[] = {NOT_A_NUMBER, INFINITE, -INFINITE, 3e38f, -3e38f, 1e-45f, 0};
    for (int rep = -1; rep <= 9; ++rep)
        for (int filter = -1; filter <= 6; ++filter)
            for (std::size_t k = 0; k < std::size(bad); ++k) {
                Scene scene({{0, 1}, {bad[k], 1}, {1, bad[k]}, {bad[k], bad[(k + 3) % 7]}, {2, -1}, {3, 0}});
                scene.kit->curveRep = rep;
                scene.kit->isCurveFilled = TRUE;
                scene.kit->fillingThreshold = bad[(k + 1) % 7];
                scene.kit->raiseFilterType = scene.kit->markerFilterType = filter;
                scene.kit->raiseXPeriod = scene.kit->markerXPeriod = bad[(k + 2) % 7];
                scene.kit->raiseThreshold = bad[(k + 4) % 7];
                scene.kit->markerString = k % 2 ? "*" : ".";
                scene.traverse();
                scene.set({{NOT_A_NUMBER, 0}});
                scene.traverse();
                for (const char *name : GENERATED)
                    EXPECT_FALSE(scene.part(name)) << name;
            }
}

} // namespace
