#include <oravane/PiCubicSpline.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

/// First and second derivatives at both ends of an interval, of the one cubic through its knots and thirds.
struct Derivatives {
    Derivatives(const SbVec3f *p, int k) {
        const double a = p[0][k], b = p[1][k], c = p[2][k], d = p[3][k];
        first0 = (-11 * a + 18 * b - 9 * c + 2 * d) / 2;
        first1 = (11 * d - 18 * c + 9 * b - 2 * a) / 2;
        second0 = 9 * (2 * a - 5 * b + 4 * c - d);
        second1 = 9 * (2 * d - 5 * c + 4 * b - a);
    }
    double first0, first1, second0, second1;
};

std::vector<SbVec3f> randomPoints(int n, bool isClosed) {
    std::mt19937 random(static_cast<unsigned>(n));
    std::uniform_real_distribution<float> between(-1, 1);
    std::vector<SbVec3f> points;
    for (int i = 0; i < n; ++i)
        points.emplace_back(between(random), between(random), between(random));
    if (isClosed)
        points.back() = points.front();
    return points;
}

// Cubics whose derivatives agree at all knots, with these ends, are the spline: there is no other.
TEST(PiCubicSpline, IsSmoothOverAllKnots) {
    for (const bool isClosed : {false, true})
        for (const int n : {2, 3, 4, 5, 50, 1000}) {
            SCOPED_TRACE(testing::Message() << n << " points, closed " << isClosed);
            const std::vector<SbVec3f> points = randomPoints(n, isClosed);
            PiCubicSpline spline;
            spline.setValues(n, points.data(), 3);
            int count = 0;
            const SbVec3f *curve = spline.getPoints(count);
            ASSERT_EQ(count, 3 * (n - 1) + 1);
            for (int i = 0; i < n; ++i)
                EXPECT_EQ(curve[3 * i], points[static_cast<std::size_t>(i)]);
            constexpr double TOLERANCE = 2e-4; // the results have seven digits
            for (int k = 0; k < 3; ++k) {
                for (int i = 0; i + 2 < n; ++i) {
                    const Derivatives before(curve + 3 * i, k), after(curve + 3 * (i + 1), k);
                    EXPECT_NEAR(before.first1, after.first0, TOLERANCE);
                    EXPECT_NEAR(before.second1, after.second0, TOLERANCE);
                }
                const Derivatives begin(curve, k), end(curve + 3 * (n - 2), k);
                if (isClosed && n > 3) {
                    EXPECT_NEAR(begin.first0, end.first1, TOLERANCE);
                    EXPECT_NEAR(begin.second0, end.second1, TOLERANCE);
                } else if (!isClosed) {
                    EXPECT_NEAR(begin.second0, 0, TOLERANCE);
                    EXPECT_NEAR(end.second1, 0, TOLERANCE);
                }
            }
        }
}

TEST(PiCubicSpline, DegenerateInput) {
    PiCubicSpline spline;
    int count = -1;
    EXPECT_EQ(spline.getPoints(count), nullptr) << "nothing set";
    EXPECT_EQ(count, 0);
    const SbVec2f points[] = {{1, 2}, {4, 6}, {1, 2}};
    struct {
        const char *name;
        int n;
        const SbVec2f *points;
        int subdivisions, count;
    } const rows[] = {
        {"one point", 1, points, 10, 1},           {"no subdivisions", 3, points, 0, 3},
        {"there and back", 3, points, 4, 9},       {"null", 3, nullptr, 10, 0},
        {"a count below 0", -3, points, 10, 0},    {"more than can be counted", 3, points, 1 << 30, 0},
        {"an open curve of two", 2, points, 4, 5},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        spline.setValues(row.n, row.points, row.subdivisions);
        const SbVec3f *curve = spline.getPoints(count);
        ASSERT_EQ(count, row.count);
        EXPECT_EQ(curve == nullptr, count == 0);
        for (int i = 0; i < count; ++i) { // on the straight line
            EXPECT_NEAR(4 * (curve[i][0] - 1), 3 * (curve[i][1] - 2), 1e-5);
            EXPECT_TRUE(curve[i][0] >= 1 && curve[i][0] <= 4 && curve[i][2] == 0);
        }
    }
    const SbVec2f far[] = {{0, -3.4e38f}, {1, 3.4e38f}, {2, 3.4e38f}, {3, -3.4e38f}};
    spline.setValues(4, far, 5);
    const SbVec3f *curve = spline.getPoints(count);
    for (int i = 0; i < count; ++i)
        EXPECT_TRUE(std::isfinite(curve[i][1])) << i;
    spline.setValues(1, far, 5);
    EXPECT_EQ(spline.getPoints(count), curve) << "the array is used again";
}

} // namespace
