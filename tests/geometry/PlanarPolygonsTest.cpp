#include <oravane/PlanarPolygons.h>

#include <Inventor/SbVec3f.h>
#include <Inventor/fields/SoMFVec2f.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr float nan = std::numeric_limits<float>::quiet_NaN();

using Line = std::vector<Ppoint3>;

const Line square{{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}, {0, 0, 0}};

std::vector<Ppoint> flattened(const Line &line) {
    std::vector<Ppoint> flat;
    for (const Ppoint3 &point : line)
        flat.push_back({point.x, point.y});
    return flat;
}

auto listOf(Line &line) {
    return Ppoint_list3{static_cast<int>(line.size()), line.data()};
}
auto listOf(std::vector<Ppoint> &line) {
    return Ppoint_list{static_cast<int>(line.size()), line.data()};
}

bool isPoint(const Ppoint &a, const Ppoint &b) {
    return a.x == b.x && a.y == b.y;
}

/// In tenths: "x,y,z x,y,z".
std::string textOf(const Line &line) {
    std::ostringstream text;
    for (std::size_t k = 0; k < line.size(); ++k)
        text << (k == 0 ? "" : " ") << std::lround(line[k].x * 10) << ',' << std::lround(line[k].y * 10)
             << ',' << std::lround(line[k].z * 10);
    return text.str();
}

/// The pieces of `line` outside of `polygon`; the planar form has to give the same ones.
std::vector<Line> outside(Line line, Line polygon) {
    Ppoint_list_list3 lists{};
    pdiffPolygons2D(listOf(line), listOf(polygon), &lists);
    auto flatLine = flattened(line), flatPolygon = flattened(polygon);
    Ppoint_list_list flat{};
    pdiffPolygons2D(listOf(flatLine), listOf(flatPolygon), &flat);
    EXPECT_EQ(flat.numLists, lists.numLists);
    std::vector<Line> pieces;
    for (int k = 0; k < lists.numLists; ++k) {
        const auto [count, points] = lists.lists[k];
        pieces.emplace_back(points, points + count);
        const auto twin = flattened(pieces.back());
        EXPECT_EQ(flat.lists[k].numPoints, count);
        EXPECT_TRUE(std::equal(twin.begin(), twin.end(), flat.lists[k].points, isPoint));
        delete[] points;
        delete[] flat.lists[k].points;
    }
    delete[] lists.lists;
    delete[] flat.lists;
    return pieces;
}

TEST(PlanarPolygons, ScanLineCountsAVertexAtTheHeightAsBelow) {
    // A diamond: every height of a vertex is met.
    Line diamond{{0, -2, 0}, {2, 0, 0}, {0, 2, 0}, {-2, 0, 0}, {0, -2, 0}};
    struct Row {
        Ppoint3 point;
        int count;
    };
    const Row rows[] = {{{0.5f, 0.5f, 7}, 1}, {{0, 0, 7}, 1},    {{-3, 0, 7}, 2}, {{-3, -2, 7}, 2},
                        {{-3, 2, 7}, 0},      {{3, 0.5f, 7}, 0}, {{1, 1, 7}, 0},  {{0, nan, 7}, 0}};
    auto flat = flattened(diamond);
    SoMFVec2f field;
    for (const Ppoint &p : flat)
        field.set1Value(field.getNum(), p.x, p.y);
    for (const auto &[point, count] : rows) {
        const std::string at = textOf({{point.x, 0, 0}}) + " " + std::to_string(point.y);
        EXPECT_EQ(pscanLine2D(Ppoint{point.x, point.y}, listOf(flat)), count) << at;
        EXPECT_EQ(pscanLine2D(point, listOf(diamond)), count) << at;
        EXPECT_EQ(pscanLine2D(point, field), count) << at;
        EXPECT_EQ(pscanLine2D(point, Ppoint_list{4, flat.data()}), count) << at << ", left open";
    }
    EXPECT_EQ(pscanLine2D(Ppoint{0, 0}, Ppoint_list{5, nullptr}), 0);
}

TEST(PlanarPolygons, TwoSegments) {
    struct Row {
        const char *name;
        Ppoint c, d;
        int foundOnLine, found;
        IntersectType type;
    };
    const Ppoint a{0, 0}, b{4, 2};
    const Row rows[] = {
        {"across", {0, 2}, {4, 0}, 1, 1, INTERSECT_PROPER},
        {"across the longer line only", {6, 0}, {6, 9}, 1, 0, INTERSECT_NONE},
        {"first end on it", {2, 1}, {2, 5}, 0, 0, INTERSECT_PROPER},
        {"last end on it", {2, 5}, {2, 1}, 1, 1, INTERSECT_PROPER},
        {"to its first end", {0, 4}, {0, 0}, 1, 0, INTERSECT_PROPER},
        {"to its last end", {4, 4}, {4, 2}, 1, 1, INTERSECT_PROPER},
        {"parallel", {0, 1}, {4, 3}, 0, 0, INTERSECT_NONE},
        {"on one line, apart", {6, 3}, {8, 4}, 1, 0, INTERSECT_NONE},
        {"on one line, touching", {4, 2}, {6, 3}, 1, 1, INTERSECT_OVERLAP},
        {"on one line, overlapping", {2, 1}, {6, 3}, 1, 1, INTERSECT_OVERLAP},
        {"the same", a, b, 1, 1, INTERSECT_OVERLAP},
        {"on one line, around it", {-2, -1}, {6, 3}, 1, 1, INTERSECT_NONE},
        {"a point on it", {2, 1}, {2, 1}, 0, 0, INTERSECT_NONE},
        {"no number", {nan, 1}, {2, 1}, 0, 0, INTERSECT_NONE},
    };
    for (const Row &row : rows) {
        int found = -1, foundOnLine = -1;
        Ppoint at{}, atLine{};
        pintersSegmentSegment2D(a, b, row.c, row.d, &found, &at);
        pintersSegmentLine2D(row.c, row.d, {-2, -1}, {-1, 2}, &foundOnLine, &atLine);
        EXPECT_EQ(found, row.found) << row.name;
        EXPECT_EQ(foundOnLine, row.foundOnLine) << row.name;
        EXPECT_TRUE(at.x == 2 * at.y && atLine.x == 2 * atLine.y) << row.name;
        for (const float tolerance : {0.0f, 1e-20f})
            EXPECT_EQ(pintersSegmentSegment2D(a, b, row.c, row.d, tolerance), row.type) << row.name;
    }
    EXPECT_EQ(pintersSegmentSegment2D(a, b, {2, 1.1f}, {3, 9}, 0.1f), INTERSECT_NONE);
    EXPECT_EQ(pintersSegmentSegment2D(a, b, {2, 1.1f}, {3, 9}, 0.5f), INTERSECT_PROPER) << "near enough";
}

TEST(PlanarPolygons, CrossingsRunAlongTheFirstLineInGrowingArrays) {
    Line p{{-1, 1, 50}, {5, 1, 50}, {5, 3, 50}, {2, 3, 50}};
    Line q{{0, 0, 0}, {0, 4, 8}, {3, 4, 8}, {3, 0, 0}};
    int capacity = 2;
    Ppoint_list3 out{0, new Ppoint3[2]};
    int *indexP = new int[2], *indexQ = nullptr;
    ASSERT_EQ(pintersPolygons2D(listOf(p), listOf(q), &capacity, &out, &indexP, &indexQ), 3);
    EXPECT_EQ(capacity, 4);
    EXPECT_EQ(textOf({out.points, out.points + out.numPoints}), "0,10,20 30,10,20 30,30,60");
    EXPECT_EQ(std::vector<int>(indexP, indexP + 3), (std::vector<int>{0, 0, 2}));
    EXPECT_EQ(std::vector<int>(indexQ, indexQ + 3), (std::vector<int>{0, 2, 2}));

    EXPECT_EQ(pintersPolygons2D({1, p.data()}, listOf(q), &capacity, &out, &indexP, &indexQ), 0);
    EXPECT_EQ(out.numPoints, 0);
    EXPECT_EQ(capacity, 4);
    EXPECT_EQ(pintersPolygons2D(listOf(p), listOf(q), nullptr, nullptr, nullptr, nullptr), 3);
    delete[] out.points;
    delete[] indexP;
    delete[] indexQ;
}

/// Of long lines most pairs of segments are never looked at; the crossings are those of all pairs.
TEST(PlanarPolygons, NoCrossingOfLongLinesIsMissed) {
    std::mt19937 random(5);
    // Whole numbers: crossings at vertices and segments on one line are frequent.
    const auto walk = [&random](int count, int step) {
        const auto next = [&](float from) {
            const int by = static_cast<int>(random() % (2 * step + 1)) - step;
            return std::clamp(from + static_cast<float>(by), -30.0f, 30.0f);
        };
        std::vector<Ppoint> line{{0, 0}};
        while (static_cast<int>(line.size()) < count)
            line.push_back({next(line.back().x), next(line.back().y)});
        line[count / 2].x = nan; // two segments without a place
        return line;
    };
    for (const auto &[countP, countQ, step] : {std::array{300, 700, 5}, {200, 9, 40}, {9, 1000, 25}}) {
        auto p = walk(countP, step), q = walk(countQ, step);
        int capacity = 0, *indexP = nullptr, *indexQ = nullptr;
        const int count = pintersPolygons2D(listOf(p), listOf(q), &capacity, nullptr, &indexP, &indexQ);
        std::vector<std::array<int, 2>> expected, found;
        for (int i = 0; i + 1 < countP; ++i)
            for (int j = 0; j + 1 < countQ; ++j) {
                int isCrossing = 0;
                pintersSegmentSegment2D(p[i], p[i + 1], q[j], q[j + 1], &isCrossing, nullptr);
                if (isCrossing)
                    expected.push_back({i, j});
            }
        for (int k = 0; k < count; ++k)
            found.push_back({indexP[k], indexQ[k]});
        EXPECT_GT(count, 20);
        std::sort(found.begin(), found.end()); // along a segment they run by distance
        EXPECT_EQ(found, expected);
        delete[] indexP;
        delete[] indexQ;
    }
}

TEST(PlanarPolygons, WhatIsOutsideOfASquare) {
    struct Row {
        const char *name;
        Line line;
        std::vector<const char *> pieces; ///< in tenths
    };
    const Row rows[] = {
        {"through", {{-2, 2, 0}, {1, 2, 3}, {6, 2, 8}}, {"-20,20,0 0,20,20", "40,20,60 60,20,80"}},
        {"twice through",
         {{-1, 1, 0}, {5, 1, 0}, {5, 3, 9}, {-1, 3, 9}},
         {"-10,10,0 0,10,0", "40,10,0 50,10,0 50,30,90 40,30,90", "0,30,90 -10,30,90"}},
        {"from inside", {{2, 2, 0}, {2, 6, 8}}, {"20,40,40 20,60,80"}},
        {"from outside", {{2, 6, 8}, {2, 2, 0}}, {"20,60,80 20,40,40"}},
        {"wholly inside: a copy", {{1, 1, 1}, {2, 3, 1}}, {"10,10,10 20,30,10"}},
        {"touching with a vertex", {{-2, 2, 0}, {0, 2, 2}, {-2, 3, 0}}, {"-20,20,0 0,20,20"}},
        {"in through a vertex", {{-2, 2, 0}, {0, 2, 2}, {1, 1, 3}}, {"-20,20,0 0,20,20"}},
        {"no point", {}, {""}},
    };
    for (const Row &row : rows) {
        const std::vector<Line> pieces = outside(row.line, square);
        ASSERT_EQ(pieces.size(), row.pieces.size()) << row.name;
        for (std::size_t k = 0; k < pieces.size(); ++k)
            EXPECT_EQ(textOf(pieces[k]), row.pieces[k]) << row.name;
    }
    const Line open(square.begin(), square.end() - 1);
    EXPECT_EQ(textOf(outside({{2, 2, 0}, {6, 2, 8}}, open)[0]), "20,20,0 40,20,40")
        << "nothing is inside of an open polygon";
    EXPECT_EQ(outside({{2, 2, 0}, {6, 2, 8}}, {}).size(), 1u);
}

TEST(PlanarPolygons, APolylineCrossesTheSidesOfAParallelogram) {
    const Ppoint corners[4] = {{0, 0}, {4, 0}, {6, 2}, {2, 2}};
    struct Row {
        const char *name;
        Line line;
        int crosses;
    };
    Line longLine(200, {-5, 1, 3});
    longLine[130] = {9, 1, 3};
    const Row rows[] = {
        {"in its box, beside it", {{0.1f, 1.9f, 3}, {0.5f, 1, 3}}, 0},
        {"touching a corner", {{4, 0, 3}, {8, -1, 3}}, 1},
        {"along a side", {{1, 0, 3}, {2, 0, 3}}, 1},
        {"around it", {{-1, -1, 3}, {9, -1, 3}, {9, 9, 3}}, 0},
        {"far along a long line", longLine, 1},
        {"no numbers", {{nan, 1, 3}, {9, 1, 3}, {9, nan, 3}}, 0},
    };
    for (const auto &[name, line, crosses] : rows) {
        const int count = static_cast<int>(line.size());
        EXPECT_EQ(pintersParaPolyline2D(corners, flattened(line).data(), count), crosses) << name;
        EXPECT_EQ(pintersParaPolyline2D(corners, line.data(), count), crosses) << name;
    }
    EXPECT_EQ(pintersParaPolyline2D(corners, longLine.data(), -1), 0);
    EXPECT_EQ(pintersParaPolyline2D(static_cast<Ppoint *>(nullptr), longLine.data(), 200), 0);
}

TEST(PlanarPolygons, Boxes) {
    Line line{{1, 5, 0}, {nan, -2, 0}, {-3, nan, 0}};
    Plimit box{}, empty{};
    pcomputePolygonBBox2D(listOf(line), &box);
    pcomputePolygonBBox2D(SoMFVec2f(), &empty);
    EXPECT_EQ((std::array{box.xmin, box.xmax, box.ymin, box.ymax}), (std::array{-3.0f, 1.0f, -2.0f, 5.0f}));
    EXPECT_EQ(pintersBBox2D(box, empty) + pintersBBox2D(empty, empty), 0);
    EXPECT_EQ(pintersBBox2D(box, {1, 2, 5, 6}), 1) << "touching";
    EXPECT_EQ(pintersBBox2D(box, {1, 2, 5.1f, 6}) + pintersBBox2D(box, {1.1f, 2, 0, 6}), 0);
    const Ppoint a[4] = {{0, 0}, {4, 0}, {6, 2}, {2, 2}}, b[4] = {{0, 1}, {1, 1}, {1, 9}, {0, 9}};
    EXPECT_EQ(pintersBoundingBoxParals2D(a, b), 1) << "only their boxes overlap";
}

TEST(PlanarPolygons, WhereALineLeavesACircle) {
    struct Row {
        const char *name;
        Line line;
        int segment;
        float radius2;
        const char *ends; ///< ahead and behind, in tenths
    };
    const Line zigzag{{-4, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {1, 0, 0}, {4, 0, 0}};
    const char *const none = "70,70,70 70,70,70";
    const Row rows[] = {
        {"points inside", zigzag, 1, 4, "20,0,0 -20,0,0"},
        {"one long segment", {{-9, 0, 0}, {9, 0, 0}}, 0, 4, "20,0,0 -20,0,0"},
        {"in space", {{0, 0, -9}, {0, 0, 9}}, 0, 4, "0,0,20 0,0,-20"},
        {"last point inside", {{-4, 0, 0}, {1, 0, 0}}, 0, 4, none},
        {"segment beside the circle", {{-9, 3, 0}, {9, 3, 0}}, 0, 4, none},
        {"segment ahead of the circle", {{5, 0, 0}, {9, 0, 0}}, 0, 4, none},
        {"no such segment", zigzag, 4, 4, none},
        {"negative radius", zigzag, 1, -4, none},
        {"no number", {{-9, 0, 0}, {nan, 0, 0}, {9, 0, 0}}, 0, 4, none},
    };
    for (auto [name, line, segment, radius2, ends] : rows) {
        Ppoint3 ahead{7, 7, 7}, behind = ahead;
        const int found = ppolylineIntersSphere3D(listOf(line), segment, {0, 0, 0}, radius2, &ahead, &behind);
        EXPECT_EQ(found, ends != none) << name;
        EXPECT_EQ(textOf({ahead, behind}), ends) << name;
        Ppoint p{7, 7}, q = p;
        auto flat = flattened(line);
        if (line.front().z == 0) {
            EXPECT_EQ(ppolylineIntersCircle2D(listOf(flat), segment, {0, 0}, radius2, &p, &q), found) << name;
            EXPECT_TRUE(isPoint(p, {ahead.x, ahead.y}) && isPoint(q, {behind.x, behind.y})) << name;
        }
    }
}

TEST(PlanarPolygons, RotationKeepsTheCentreAndZ) {
    SbVec3f points[] = {{1, 2, 5}, {3, 2, 6}};
    protatePointsAroundPoint2D(points[0], 0.6f, 0.8f, 2, points);
    EXPECT_EQ(points[0], SbVec3f(1, 2, 5));
    EXPECT_TRUE(points[1].equals(SbVec3f(2.2f, 3.6f, 6), 1e-6f));
    SbVec2f flat(3, 2);
    protatePointsAroundPoint2D(SbVec2f(1, 2), 0.6f, 0.8f, 1, &flat);
    EXPECT_TRUE(flat.equals(SbVec2f(2.2f, 3.6f), 1e-6f));
}

} // namespace
