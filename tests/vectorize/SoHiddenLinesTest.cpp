#include <oravane/SoHiddenLines.h>

#include "vectorize/PageFixture.h"
#include "vectorize/RecordingAction.h"

#include <Inventor/SbVec2d.h>
#include <Inventor/SbVec3d.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <numeric>
#include <random>
#include <span>
#include <vector>

namespace {

using namespace oravane_test;
using Points = std::vector<SbVec4f>;

const SbColor kBlack(0, 0, 0);

/// Pieces and what is asked of them.
struct Visible {
    std::unique_ptr<SoHiddenLines::Polyline[]> lines;
    int count = 0;

    explicit Visible(SoHiddenLines &hidden) { lines.reset(hidden.computeHiddenLines(count)); }
    std::span<const SbVec4f> operator[](int i) const {
        return {lines[i].points.get(), static_cast<std::size_t>(lines[i].num)};
    }
    double length() const {
        double sum = 0;
        for (int i = 0; i < count; ++i)
            for (int k = 1; k < lines[i].num; ++k)
                sum += (lines[i].points[k] - lines[i].points[k - 1]).length();
        return sum;
    }
};

void addPolygon(SoHiddenLines &lines, const Points &points, const SbColor &color = kBlack) {
    lines.addPolygon(points.data(), static_cast<int>(points.size()), color, 1, 0xFFFF);
}

void addPolyline(SoHiddenLines &lines, const Points &points, const SbColor &color = kBlack) {
    lines.addPolyline(points.data(), static_cast<int>(points.size()), color, 1, 0xFFFF);
}

/// An axis-parallel rectangle at depth z.
Points rectangle(float x0, float y0, float x1, float y1, float z) {
    return {{x0, y0, z, 1}, {x1, y0, z, 1}, {x1, y1, z, 1}, {x0, y1, z, 1}};
}

void expectPoints(std::span<const SbVec4f> points, const std::vector<SbVec2f> &expected) {
    ASSERT_EQ(points.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_NEAR(points[i][0], expected[i][0], 1e-6) << i;
        EXPECT_NEAR(points[i][1], expected[i][1], 1e-6) << i;
        EXPECT_EQ(points[i][2], 0);
        EXPECT_EQ(points[i][3], 0);
    }
}

TEST(SoHiddenLines, ALineIsCutWhereAPolygonCoversIt) {
    SoHiddenLines lines;
    lines.addPolyline(Points{{-1, 0, 0.5f, 1}, {0, 0, 0.5f, 1}, {1, 0, 0.5f, 1}}.data(), 3, SbColor(1, 0, 0),
                      3, 0xF0F0);
    addPolygon(lines, rectangle(-0.25f, -0.5f, 0.25f, 0.5f, 0));
    addPolygon(lines, rectangle(0.5f, -0.5f, 0.75f, 0.5f, 0.6f)); // behind it
    const Visible visible(lines);
    ASSERT_EQ(visible.count, 4);
    expectPoints(visible[0], {{-1, 0}, {-0.25f, 0}});
    expectPoints(visible[1], {{0.25f, 0}, {1, 0}});
    EXPECT_EQ(visible.lines[1].color, SbColor(1, 0, 0));
    EXPECT_EQ(visible.lines[1].width, 3);
    EXPECT_EQ(visible.lines[1].pattern, 0xF0F0);
    expectPoints(visible[2],
                 {{-0.25f, -0.5f}, {0.25f, -0.5f}, {0.25f, 0.5f}, {-0.25f, 0.5f}, {-0.25f, -0.5f}});
    EXPECT_EQ(visible.lines[2].pattern, 0xFFFF);
}

TEST(SoHiddenLines, AFenceCutsALineIntoManyParts) {
    // Posts in random order, and in the last gap beams of one middle, one of them drawn many times.
    const int n = 50;
    std::vector<int> order(n);
    std::iota(order.begin(), order.end(), 0);
    std::ranges::shuffle(order, std::mt19937(3));
    SoHiddenLines lines;
    addPolyline(lines, {{-1, 0, 0.9f, 1}, {1.25f, 0, 0.9f, 1}}, SbColor(1, 0, 0));
    for (const int post : order) {
        const float x = -1 + 2.0f * static_cast<float>(post) / n;
        addPolygon(lines, rectangle(x, -0.5f, x + 1.0f / n, 0.5f, 0.01f * static_cast<float>(post % 7)));
    }
    for (int beam = 0; beam < 30; ++beam) {
        const float width = beam < 25 ? 0.02f : 0.02f + 0.01f * static_cast<float>(beam - 25);
        addPolygon(lines, rectangle(1.125f + width, -0.5f, 1.125f - width, 0.5f, 0));
    }
    const Visible visible(lines);
    EXPECT_EQ(visible.lines[n].color, SbColor(1, 0, 0));
    EXPECT_EQ(visible.lines[n + 1].color, kBlack);
    for (int i = 0; i < n; ++i) {
        const float x = -1 + (2.0f * static_cast<float>(i) + 1) / n;
        expectPoints(visible[i], {{x, 0}, {i < n - 1 ? x + 1.0f / n : 1.125f - 0.06f, 0}});
    }
}

TEST(SoHiddenLines, WhatLiesInAPlaneIsNotHiddenByIt) {
    // A sheet of n x n squares, each of two triangles, at slants up to almost the edge; lines on the sheet,
    // drawn by points of their own, are seen as a whole.
    const int n = 12;
    for (const float slope : {0.0f, 0.3f, 3.0f, 300.0f}) {
        SCOPED_TRACE(slope);
        const auto at = [&](float u, float v) { // turned, so that no number is round
            const float x = (0.8f * u - 0.6f * v) / (1 + slope), y = 0.6f * u + 0.8f * v;
            return SbVec4f(x * 0.6f, y * 0.6f, (slope * x + 0.1f * y) / 4, 1);
        };
        SoHiddenLines lines;
        addPolyline(lines, {at(-0.9f, -0.713f), at(0.9f, 0.7541f)}, SbColor(1, 0, 0));
        const auto corner = [&](int i, int j) { return at(2.0f * i / n - 1, 2.0f * j / n - 1); };
        const auto flatLength = [](SbVec4f a, SbVec4f b) { return std::hypot(a[0] - b[0], a[1] - b[1]); };
        double expected = flatLength(at(-0.9f, -0.713f), at(0.9f, 0.7541f));
        for (int i = 0; i <= n; ++i)
            expected += flatLength(corner(0, i), corner(n, i)) + flatLength(corner(i, 0), corner(i, n));
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j) {
                addPolygon(lines, {corner(i, j), corner(i + 1, j), corner(i + 1, j + 1)});
                addPolygon(lines, {corner(i, j + 1), corner(i, j), corner(i + 1, j + 1)});
                expected += flatLength(corner(i, j), corner(i + 1, j + 1));
            }
        const Visible visible(lines);
        EXPECT_NEAR(visible.length(), expected, expected * 1e-5);
        EXPECT_EQ(visible[0].size(), 2U);
    }
}

TEST(SoHiddenLines, TolerancesAllowForFloats) {
    const Points sheet = rectangle(-1, -1, 1, 1, 0);
    const auto shifted = [](float dx, float dz) { // along a plane with a slope of 100
        return Points{{-0.004f + dx, -0.5f, -0.4f + dz, 1}, {0.003f + dx, 0.5f, 0.3f + dz, 1}};
    };
    const Points slope{{-0.01f, -1, -1, 1}, {0.01f, -1, 1, 1}, {0.01f, 1, 1, 1}, {-0.01f, 1, -1, 1}};
    const Points wall{{0, -1, -1, 1}, {0.001f, -1, 1, 1}, {0.001f, 1, 1, 1}, {0, 1, -1, 1}};
    const float seam = 0.3f, besideSeam = seam + 1e-7f;
    const struct {
        const char *name;
        std::vector<Points> polygons;
        Points line;
        bool isVisible;
    } rows[] = {
        {"just behind a plane", {sheet}, {{-.5f, 0, 3e-7f, 1}, {.5f, .1f, 3e-7f, 1}}, true},
        {"behind it", {sheet}, {{-.5f, 0, 1e-5f, 1}, {.5f, .1f, 1e-5f, 1}}, false},
        {"beside a place on a slope", {slope}, shifted(-2e-6f, 0), true},
        {"behind a slope", {slope}, shifted(0, 2e-3f), false},
        {"behind all of a steep wall",
         {wall},
         {{9.99e-4f, -.5f, 1.003f, 1}, {9.99e-4f, .5f, 1.003f, 1}},
         false},
        {"behind a seam that does not quite close",
         {rectangle(-1, -1, seam, 1, 0), rectangle(besideSeam, -1, 1, 1, 0)},
         {{seam + 5e-8f, -.5f, .5f, 1}, {seam + 5e-8f, .5f, .5f, 1}},
         false},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        SoHiddenLines lines;
        addPolyline(lines, row.line, SbColor(1, 0, 0));
        for (const Points &polygon : row.polygons)
            addPolygon(lines, polygon);
        const Visible visible(lines);
        EXPECT_EQ(visible.lines[0].color == SbColor(1, 0, 0), row.isVisible);
        if (row.isVisible) { // as a whole
            EXPECT_EQ(visible[0][1], SbVec4f(row.line[1][0], row.line[1][1], 0, 0));
        }
    }
}

TEST(SoHiddenLines, ACommonEdgeIsReturnedOnceForEachAppearance) {
    const Points one{{0, 0, 0, 1}, {1, 0, 0, 1}, {1, 1, 0, 1}};
    const Points two{{-0.0f, 0, 0, 1}, {1, 1, 0, 1}, {0, 1, 0, 1}};
    const double diagonal = std::sqrt(2.0);
    const struct {
        SbColor color;
        float width;
        unsigned short pattern;
        double length;
    } rows[] = {{kBlack, 1, 0xFFFF, 4 + diagonal},
                {SbColor(0, 0, 1), 1, 0xFFFF, 4 + 2 * diagonal},
                {kBlack, 2, 0xFFFF, 4 + 2 * diagonal},
                {kBlack, 1, 0x0F0F, 4 + 2 * diagonal}};
    for (const auto &row : rows) {
        SoHiddenLines lines;
        addPolygon(lines, one);
        lines.addPolygon(two.data(), 3, row.color, row.width, row.pattern);
        EXPECT_NEAR(Visible(lines).length(), row.length, 1e-6);
        EXPECT_NEAR(Visible(lines).length(), row.length, 1e-6) << "again";
        addPolyline(lines, {one[0], one[2]});
        EXPECT_NEAR(Visible(lines).length(), row.length + diagonal, 1e-6) << "a line of its own";
    }
}

TEST(SoHiddenLines, ShapesOfPolygons) {
    const Points line{{-0.9f, 0.3f, 0.5f, 1}, {0.9f, 0.3f, 0.5f, 1}};
    Points comb{{.8f, -.5f, 0, 1}, {0, -.5f, 0, 1}, {-.8f, -.5f, 0, 1}};
    for (const float x : {-.8f, -.4f, 0.f, .4f})
        for (const auto &[dx, y] : {std::pair(0.f, .5f), {.1f, .5f}, {.1f, -.2f}, {.4f, -.2f}})
            comb.emplace_back(x + dx, y, 0.f, 1.f);
    const struct {
        const char *name;
        Points polygon;
        double visible; ///< of the line, which is 1.8 long
    } rows[] = {
        {"a comb", comb, 1.8 - 4 * 0.1},
        {"the other way round", {comb.rbegin(), comb.rend()}, 1.8 - 4 * 0.1},
        {"closed by its first point",
         {{0, 0, 0, 1}, {.5f, 0, 0, 1}, {.5f, .5f, 0, 1}, {0, .5f, 0, 1}, {0, 0, 0, 1}},
         1.3},
        {"bent: one corner far behind",
         {{-.5f, -.5f, 0, 1}, {.5f, -.5f, 0, 1}, {.5f, .5f, 0, 1}, {-.5f, .5f, 9, 1}},
         1.8 - 0.2 - 0.8 * 0.5 / 7.2},
        {"two points", {{-.5f, .3f, 0, 1}, {.5f, .3f, 0, 1}}, 1.8},
        {"no area", {{-.5f, .3f, 0, 1}, {.5f, .3f, 0, 1}, {0, .3f, 0, 1}}, 1.8},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        SoHiddenLines with, without;
        addPolygon(with, row.polygon);
        addPolygon(without, row.polygon);
        addPolyline(with, line);
        const double length = Visible(with).length() - Visible(without).length();
        EXPECT_NEAR(length, row.visible, 1e-4);
    }
}

TEST(SoHiddenLines, WhatIsNoLineIsLeftOut) {
    SoHiddenLines lines;
    const float nan = NAN;
    addPolygon(lines, {});
    addPolygon(lines, {{0, 0, 0, 1}});
    addPolygon(lines, {{0, 0, 0, 1}, {nan, 0, 0, 1}, {0, 1, 0, 1}});
    addPolygon(lines, {{0, 0, 0, 1}, {0, 0, 0.5f, 1}, {0, 0, 1, 1}}); // a point in the picture
    addPolyline(lines, {{0, 0, 0, 1}, {0, 0, 0, 1}});
    lines.addPolygon(nullptr, 3, kBlack, 1, 0xFFFF);
    lines.addPolyline(nullptr, 3, kBlack, 1, 0xFFFF);
    EXPECT_EQ(Visible(lines).count, 0);
    EXPECT_EQ(Visible(lines).lines, nullptr);
    addPolyline(lines, {{0, 0, 0, 1}, {1, 0, 0, 1}, {0, nan, 0, 1}, {0, 0, 0, 1}, {0, 1, 0, 1}});
    EXPECT_EQ(Visible(lines).count, 2);
}

// ----------------------------------------------------------------------------------- against sampling

struct Triangle {
    SbVec3d p[3];

    /// How far behind the triangle's plane a point is, where the triangle covers it by `margin`; else 0.
    /// Points closer to an outline or a plane than the margin give NaN.
    double depthBehind(const SbVec3d &q, double margin) const {
        double low = 1e9, high = -1e9, weights[3], area = 0;
        for (int k = 0; k < 3; ++k) {
            const SbVec3d &a = p[k], &b = p[(k + 1) % 3];
            const double w = (b[0] - a[0]) * (q[1] - a[1]) - (b[1] - a[1]) * (q[0] - a[0]);
            const double distance = w / std::hypot(b[0] - a[0], b[1] - a[1]);
            low = std::min(low, distance);
            high = std::max(high, distance);
            weights[(k + 2) % 3] = w;
            area += w;
        }
        if (low < -margin && high > margin)
            return 0;
        const double z = (weights[0] * p[0][2] + weights[1] * p[1][2] + weights[2] * p[2][2]) / area;
        const bool isClear = (low > margin || high < -margin) && std::fabs(q[2] - z) > margin;
        return isClear ? std::max(q[2] - z, 0.0) : NAN;
    }
};

TEST(SoHiddenLines, RandomTrianglesAgreeWithSampling) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> at(-1, 1);
    for (const float size : {2.0f, 0.7f, 0.2f}) {
        SCOPED_TRACE(size);
        SoHiddenLines lines;
        std::vector<Triangle> triangles;
        for (int i = 0; i < 150; ++i) {
            const SbVec3f middle(at(random), at(random), at(random));
            Points ring;
            Triangle triangle;
            for (SbVec3d &corner : triangle.p) {
                const SbVec3f q = middle + SbVec3f(at(random), at(random), at(random)) * size;
                ring.emplace_back(q[0], q[1], q[2], 1.0f);
                corner = SbVec3d(q);
            }
            addPolygon(lines, ring, SbColor(static_cast<float>(i), 0, 0)); // the colour names the triangle
            triangles.push_back(triangle);
        }
        const Visible visible(lines);
        std::vector<std::vector<std::pair<SbVec2d, SbVec2d>>> pieces(triangles.size());
        for (int i = 0; i < visible.count; ++i)
            for (std::size_t k = 1; k < visible[i].size(); ++k) {
                const SbVec4f &a = visible[i][k - 1], &b = visible[i][k];
                pieces[static_cast<int>(visible.lines[i].color[0])].push_back(
                    {SbVec2d(a[0], a[1]), SbVec2d(b[0], b[1])});
            }
        int hidden = 0, seen = 0;
        for (std::size_t i = 0; i < triangles.size(); ++i)
            for (int sample = 0; sample < 60; ++sample) {
                const SbVec3d &a = triangles[i].p[sample % 3], &b = triangles[i].p[(sample + 1) % 3];
                const SbVec3d q = a + (b - a) * ((sample / 3 + 0.5) / 20);
                double behind = 0;
                for (std::size_t k = 0; k < triangles.size(); ++k)
                    if (k != i)
                        behind += triangles[k].depthBehind(q, 1e-4);
                if (std::isnan(behind))
                    continue;
                bool isSeen = false;
                for (const auto &[from, to] : pieces[i]) {
                    const SbVec2d d = to - from, e = SbVec2d(q[0], q[1]) - from;
                    const double t = std::clamp(e.dot(d) / d.dot(d), 0.0, 1.0);
                    isSeen = isSeen || (e - d * t).length() < 3e-6;
                }
                EXPECT_EQ(isSeen, behind == 0) << i << " " << sample;
                (isSeen ? seen : hidden) += 1;
            }
        EXPECT_GT(std::min(seen, hidden), 300);
    }
}

// -------------------------------------------------------------------------------------------- on pages

TEST(SoHiddenLines, PagesOfLinesOnly) {
    RecordingAction action;
    action.setHLHSRMode(SoVectorizeAction::HLHSR_LINE_REMOVAL);
    const auto kinds = [&](const std::string &nodes) {
        action.forget();
        action.apply(Scene(view(kPlain + nodes)));
        return action.kinds();
    };
    EXPECT_EQ(kinds("BaseColor { rgb 0 0 1 } " + kTriangle), "line4 ");
    EXPECT_EQ(action.drawn[0].colors[3], SbColor(0, 0, 1));
    EXPECT_EQ(SbVec2f(action.drawn[0].points[2].getValue()), SbVec2f(50, 100));
    EXPECT_EQ(kinds("DrawStyle { style LINES lineWidth 2 linePattern 0xF0F0 } " + kTriangle), "line4 ");
    EXPECT_EQ(action.drawn[0].size, 2);
    EXPECT_EQ(action.drawn[0].pattern, 0xF0F0);
    // Each piece of a line keeps its colour; texts come first and are not hidden.
    EXPECT_EQ(kinds("Text2 { string \"a\" } MaterialBinding { value PER_VERTEX } "
                    "BaseColor { rgb [ 1 0 0, 1 0 0, 0 1 0, 0 0 1 ] } "
                    "Coordinate3 { point [ -.5 0 0, 0 0 0, .5 0 0, .5 .5 0 ] } LineSet { }"),
              "text1 line3 line2 ");
    EXPECT_EQ(action.drawn[1].colors[0], SbColor(1, 0, 0));
    EXPECT_EQ(action.drawn[2].colors[0], SbColor(0, 1, 0));
    EXPECT_EQ(kinds(""), "");
}

} // namespace
