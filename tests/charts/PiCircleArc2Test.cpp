#include <oravane/PiCircleArc2.h>

#include <cmath>
#include <limits>
#include <numbers>

#include <gtest/gtest.h>

namespace {

constexpr double PI = std::numbers::pi;
constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN(),
                INFINITE = std::numeric_limits<float>::infinity();

TEST(PiCircleArc2, PointsAreOnTheCircleInEqualStepsFromStartToEnd) {
    struct Row {
        const char *name;
        double start, end;
        float step;
        std::size_t numPoints; ///< on the circle
        bool isCircle;
    };
    for (const Row &row : {
             Row{"quarter", 0, PI / 2, 0.0349066f, 46, false},
             {"clockwise", 1, -1, 0.5f, 5, false},
             {"rounded up", 2, 3, 0.3f, 5, false},
             {"one step", 2, 2.1, 9, 2, false},
             {"no sweep", 2, 2, 0.1f, 2, false},
             {"circle", 0, 100 * 6.2831855 / 100, 0.0349066f, 180, true},
             {"nearly a circle", 0, 2 * PI * (1 - 1e-7), 0.0349066f, 180, true},
             {"more turns", 1, 30, 0.1f, 63, true},
             {"coarse circle", 0, -2 * PI, 100, 3, true},
             {"negative", 0, PI, -1, 91, false},
             {"NaN", 0, PI, NOT_A_NUMBER, 91, false},
             {"infinite", 0, PI, INFINITE, 91, false},
             {"tiny", 0, PI, 1e-30f, 1801, false},
         })
        for (const bool isSector : {false, true}) {
            SCOPED_TRACE(row.name);
            const PiCircleArc2 arc({3, -2}, 2, row.start, row.end, row.step,
                                   isSector ? PiCircleArc2::SECTOR : PiCircleArc2::ARC);
            std::span<const SbVec2f> points = arc.points();
            EXPECT_EQ(arc.isCircle(), row.isCircle);
            if (isSector && !row.isCircle) {
                EXPECT_EQ(points.front(), SbVec2f(3, -2));
                points = points.subspan(1);
            }
            ASSERT_EQ(points.size(), row.numPoints);
            const double sweep =
                             row.isCircle ? std::copysign(2 * PI, row.end - row.start) : row.end - row.start,
                         steps = static_cast<double>(row.numPoints) - (row.isCircle ? 0 : 1);
            for (std::size_t k = 0; k < points.size(); ++k) {
                const double angle = row.start + sweep * static_cast<double>(k) / steps;
                EXPECT_NEAR(points[k][0], 3 + 2 * std::cos(angle), 1e-6);
                EXPECT_NEAR(points[k][1], -2 + 2 * std::sin(angle), 1e-6);
            }
        }
    for (const float bad : {NOT_A_NUMBER, INFINITE})
        for (const PiCircleArc2 &arc : {PiCircleArc2({0, 0}, 1, double{bad}, 1),
                                        PiCircleArc2({0, 0}, bad, 0, 1), PiCircleArc2({0, bad}, 1, 0, 1)})
            EXPECT_TRUE(arc.points().empty());
}

} // namespace
