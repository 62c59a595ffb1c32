#include "vectorize/PageClipper.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

using oravane::ColoredPoints;
using oravane::PageClipper;

constexpr float kNear = -1;
const SbColor kRed(1, 0, 0), kBlue(0, 0, 1);

double areaOf(const ColoredPoints &polygon) {
    double twice = 0;
    for (int i = 0; i < polygon.size(); ++i) {
        const SbVec4f &a = polygon.points[i];
        const SbVec4f &b = polygon.points[(i + 1) % polygon.size()];
        twice += static_cast<double>(a[0]) * b[1] - static_cast<double>(b[0]) * a[1];
    }
    return std::fabs(twice) / 2;
}

void expectInside(const ColoredPoints &points) {
    for (const SbVec4f &p : points.points) {
        for (int k = 0; k < 3; ++k) {
            ASSERT_LE(std::fabs(p[k]), 1.0f);
        }
        ASSERT_EQ(p[3], 1.0f);
    }
}

TEST(PageClipper, PartsOfATriangleInNeighbouringPagesAddUpToIt) {
    std::mt19937 random(3);
    std::uniform_real_distribution<float> uniform(-3, 3);
    PageClipper clipper;
    const SbColor colors[] = {kRed, kRed, kRed};
    for (int round = 0; round < 300; ++round) {
        ColoredPoints triangle;
        for (int k = 0; k < 3; ++k)
            triangle.add(SbVec4f(uniform(random), uniform(random), 0, 1), kRed);
        double sum = 0;
        for (int page = 0; page < 25; ++page) {
            std::vector<SbVec4f> moved = triangle.points;
            for (SbVec4f &p : moved)
                p += SbVec4f(2.0f * (page % 5 - 2), 2.0f * (page / 5 - 2), 0, 0);
            const ColoredPoints &part = clipper.polygon(moved, colors, kNear);
            expectInside(part);
            sum += areaOf(part);
        }
        ASSERT_NEAR(sum, areaOf(triangle), 1e-4);
    }
}

TEST(PageClipper, DepthLimitsCutBeforeAndAfterTheDivision) {
    PageClipper clipper;
    // One corner behind the eye (w < 0): cut at the near limit, where z is -1 and w is 1.
    const SbVec4f points[] = {{0, 0, 1, 3}, {0.5f, 0, 1, 3}, {0, 0, -3, -1}};
    const SbColor colors[] = {kRed, kRed, kBlue};
    const ColoredPoints &cut = clipper.polygon(points, colors, kNear);
    ASSERT_EQ(cut.size(), 4);
    expectInside(cut);
    EXPECT_EQ(cut.points[2], SbVec4f(0.25f, 0, -1, 1)) << "half way from the second point to the third";
    EXPECT_EQ(cut.colors[2], SbColor(0.5f, 0, 0.5f));

    const SbVec4f far[] = {{0, 0, 0, 1}, {1, 0, 2, 1}, {0, 1, 2, 1}};
    EXPECT_NEAR(areaOf(clipper.polygon(far, colors, kNear)), 0.125, 1e-6);
    const SbVec4f beyond[] = {{0, 0, 1.5f, 1}, {1, 0, 2, 1}, {0, 1, 2, 1}};
    EXPECT_EQ(clipper.polygon(beyond, colors, kNear).size(), 0);
}

TEST(PageClipper, PolygonOnTheLimitsStaysAsItIs) {
    PageClipper clipper;
    const SbVec4f square[] = {{-1, -1, 1, 1}, {1, -1, 1, 1}, {1, 1, 1, 1}, {-1, 1, 1, 1}};
    const SbColor colors[] = {kRed, kRed, kRed, kRed};
    const ColoredPoints &same = clipper.polygon(square, colors, kNear);
    EXPECT_EQ(same.points, std::vector<SbVec4f>(std::begin(square), std::end(square)));
}

TEST(PageClipper, PolylineFallsIntoRuns) {
    PageClipper clipper;
    // Leaves at x = 1, comes back, and has a point that is not a number.
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const SbVec4f points[] = {{0, 0, 0, 1},   {2, 0, 0, 1}, {0, 0.5f, 0, 1},
                              {0, nan, 0, 1}, {0, 0, 0, 1}, {0, -4, 0, 1}};
    const SbColor colors[] = {kRed, kBlue, kRed, kRed, kRed, kRed};
    const auto runs = clipper.polyline(points, colors, kNear);
    ASSERT_EQ(runs.size(), 3u);
    ASSERT_EQ(runs[0].size(), 2);
    EXPECT_EQ(runs[0].points[1], SbVec4f(1, 0, 0, 1));
    EXPECT_EQ(runs[0].colors[1], SbColor(0.5f, 0, 0.5f));
    ASSERT_EQ(runs[1].size(), 2);
    EXPECT_EQ(runs[1].points[0], SbVec4f(1, 0.25f, 0, 1));
    EXPECT_EQ(runs[1].points[1], points[2]);
    ASSERT_EQ(runs[2].size(), 2);
    EXPECT_EQ(runs[2].points[1], SbVec4f(0, -1, 0, 1));

    // A segment with both ends outside still shows its middle.
    const SbVec4f across[] = {{-2, -2, 0, 1}, {2, 2, 0, 1}};
    const auto middle = clipper.polyline(across, std::span(colors, 2), kNear);
    ASSERT_EQ(middle.size(), 1u);
    EXPECT_EQ(middle[0].points[0], SbVec4f(-1, -1, 0, 1));
    EXPECT_EQ(middle[0].points[1], SbVec4f(1, 1, 0, 1));
    EXPECT_EQ(clipper.polyline({}, {}, kNear).size(), 0u);
}

TEST(PageClipper, MarksMoveUpAndTextOnlyLooksAtDepthWhenAskedTo) {
    SbVec4f points[] = {{0, 0, 0, 1}, {3, 0, 0, 1}, {2, 2, 0, 2}, {0, 0, -2, 1}, {0, 0, 3, 2}, {0, 1, 1, 1}};
    ASSERT_EQ(PageClipper::marks(points, kNear), 3);
    EXPECT_EQ(points[1], SbVec4f(1, 1, 0, 1));
    EXPECT_EQ(points[2], SbVec4f(0, 1, 1, 1));
    SbVec4f aside(3, 0, 0, 1);
    EXPECT_TRUE(PageClipper::point(aside, kNear, false));
    EXPECT_FALSE(PageClipper::point(aside, kNear, true));
    SbVec4f atEye(0, 0, 0, 0);
    EXPECT_FALSE(PageClipper::point(atEye, kNear, false));
}

TEST(PageClipper, PointsThatAreNotFiniteDropAPolygon) {
    PageClipper clipper;
    const float inf = std::numeric_limits<float>::infinity();
    const SbColor colors[] = {kRed, kRed, kRed};
    const SbVec4f points[] = {{0, 0, 0, 1}, {inf, 0, 0, 1}, {0, 1, 0, 1}};
    EXPECT_EQ(clipper.polygon(points, colors, kNear).size(), 0);
    const SbVec4f atEye[] = {{0, 0, 0, 0}, {1, 0, 0, 0}, {0, 1, 0, 0}};
    EXPECT_EQ(clipper.polygon(atEye, colors, kNear).size(), 0);
}

} // namespace
