#include "vectorize/PageClipper.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace {

using oravane::ColoredPoints;
using oravane::PageClipper;
using Points = std::vector<SbVec4f>;

constexpr float kNear = -1;
constexpr float kInfinite = std::numeric_limits<float>::infinity(),
                kNaN = std::numeric_limits<float>::quiet_NaN();
const SbColor kRed(1, 0, 0), kBlue(0, 0, 1), kViolet(0.5f, 0, 0.5f);

const ColoredPoints &clip(const Points &points, const SbColor &last = kRed) {
    static PageClipper clipper;
    std::vector<SbColor> colors(points.size(), kRed);
    colors.back() = last;
    return clipper.polygon(points, colors, kNear);
}

double areaOf(const Points &points) {
    double twice = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const SbVec4f &a = points[i], &b = points[(i + 1) % points.size()];
        twice += static_cast<double>(a[0]) * b[1] - static_cast<double>(b[0]) * a[1];
    }
    return std::fabs(twice) / 2;
}

void expectInside(const Points &points) {
    for (const SbVec4f &p : points)
        ASSERT_TRUE(std::max({std::fabs(p[0]), std::fabs(p[1]), std::fabs(p[2])}) <= 1 && p[3] == 1);
}

TEST(PageClipper, PartsOfATriangleInNeighbouringPagesAddUpToIt) {
    std::mt19937 random(3);
    std::uniform_real_distribution<float> uniform(-3, 3);
    for (int round = 0; round < 300; ++round) {
        Points triangle;
        for (int k = 0; k < 3; ++k)
            triangle.emplace_back(uniform(random), uniform(random), 0.0f, 1.0f);
        double sum = 0;
        for (int page = 0; page < 25; ++page) {
            Points moved = triangle;
            for (SbVec4f &p : moved)
                p += SbVec4f(2.0f * (page % 5 - 2), 2.0f * (page / 5 - 2), 0, 0);
            const Points &part = clip(moved).points;
            expectInside(part);
            sum += areaOf(part);
        }
        ASSERT_NEAR(sum, areaOf(triangle), 1e-4);
    }
}

TEST(PageClipper, DepthLimitsCutBeforeAndAfterTheDivision) {
    // One corner behind the eye (w < 0): cut at the near limit, where z is -1 and w is 1.
    const ColoredPoints &cut = clip({{0, 0, 1, 3}, {0.5f, 0, 1, 3}, {0, 0, -3, -1}}, kBlue);
    ASSERT_EQ(cut.size(), 4);
    expectInside(cut.points);
    EXPECT_EQ(cut.points[2], SbVec4f(0.25f, 0, -1, 1)) << "half way from the second point to the third";
    EXPECT_EQ(cut.colors[2], kViolet);
    EXPECT_NEAR(areaOf(clip({{0, 0, 0, 1}, {1, 0, 2, 1}, {0, 1, 2, 1}}).points), 0.125, 1e-6);
}

TEST(PageClipper, PolygonsStayWholeOrGo) {
    const Points square = {{-1, -1, 1, 1}, {1, -1, 1, 1}, {1, 1, 1, 1}, {-1, 1, 1, 1}};
    EXPECT_EQ(clip(square).points, square) << "on the limits";
    EXPECT_EQ(clip({{0, 0, 1.5f, 1}, {1, 0, 2, 1}, {0, 1, 2, 1}}).size(), 0) << "beyond";
    EXPECT_EQ(clip({{0, 0, 0, 1}, {kInfinite, 0, 0, 1}, {0, 1, 0, 1}}).size(), 0) << "not finite";
    EXPECT_EQ(clip({{0, 0, 0, 0}, {1, 0, 0, 0}, {0, 1, 0, 0}}).size(), 0) << "at the eye";
    EXPECT_EQ(clip({{-3e38f, -3e38f, 0, 1}, {3e38f, 3e38f, 0, 1}, {0, 1, 0, 1}}).size(), 0) << "too large";
}

TEST(PageClipper, NeighboursAreCutInOnePoint) {
    const SbVec4f inside(0.1f, 0.3f, 0.7f, 1.1f), outside(1.7f, -2.3f, 0.2f, 1.3f);
    const Points one = clip({inside, outside, {0, 0.5f, 0, 1}}).points;
    EXPECT_NE(std::ranges::find(one, clip({outside, inside, {0, -0.5f, 0, 1}}).points[0]), one.end());
}

TEST(PageClipper, PolylineFallsIntoRuns) {
    PageClipper clipper;
    // Leaves at x = 1, comes back, and has a point that is not a number.
    const Points points = {{0, 0, 0, 1},    {4, 0, 0, 1}, {0, 0.5f, 0, 1},
                           {0, kNaN, 0, 1}, {0, 0, 0, 1}, {0, -4, 0, 1}};
    const std::vector<SbColor> colors = {kRed, kBlue, kRed, kRed, kRed, kRed};
    const auto runs = clipper.polyline(points, colors, kNear);
    ASSERT_EQ(runs.size(), 3u);
    EXPECT_EQ(runs[0].points, (Points{points[0], {1, 0, 0, 1}}));
    EXPECT_EQ(runs[0].colors[1], SbColor(0.75f, 0, 0.25f));
    EXPECT_EQ(runs[1].points, (Points{{1, 0.375f, 0, 1}, points[2]}));
    EXPECT_EQ(runs[2].points, (Points{points[4], {0, -1, 0, 1}}));

    const Points across = {{-2, -2, 0, 1}, {2, 2, 0, 1}}; // shows its middle, with both ends outside
    const auto middle = clipper.polyline(across, std::span(colors).first(2), kNear);
    ASSERT_EQ(middle.size(), 1u);
    EXPECT_EQ(middle[0].points, (Points{{-1, -1, 0, 1}, {1, 1, 0, 1}}));
    const Points deep = {{0, 0, -2, 1}, {0, 0, 2, 1}};
    EXPECT_EQ(clipper.polyline(deep, std::span(colors).first(2), kNear)[0].points,
              (Points{{0, 0, -1, 1}, {0, 0, 1, 1}}));
}

TEST(PageClipper, MarksMoveUpAndTextOnlyLooksAtDepthWhenAskedTo) {
    Points points = {{0, 0, 0, 1},    {3, 0, 0, 1}, {2, 2, 0, 2}, {0, 0, -2, 1},
                     {kNaN, 0, 0, 1}, {0, 0, 3, 2}, {0, 1, 1, 1}};
    ASSERT_EQ(PageClipper().marks(points, kNear), 3);
    EXPECT_EQ(points[1], SbVec4f(1, 1, 0, 1));
    EXPECT_EQ(points[2], SbVec4f(0, 1, 1, 1));
    SbVec4f aside(3, 0, 0, 1), beyond(0, 0, 2, 1), atEye(0, 0, 0, 0);
    EXPECT_TRUE(PageClipper().point(aside, kNear, false));
    EXPECT_FALSE(PageClipper().point(aside, kNear, true));
    EXPECT_FALSE(PageClipper().point(beyond, kNear, false));
    EXPECT_FALSE(PageClipper().point(atEye, kNear, false));
}

} // namespace
