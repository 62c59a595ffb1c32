#include "axes/AxisLabels.h"
#include "axes/GraduationSplit.h"
#include "axes/LinearGraduations.h"

#include <limits>

#include <gtest/gtest.h>

namespace {

constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
constexpr float INFINITE = std::numeric_limits<float>::infinity();

struct Row {
    float start, end, wanted;
    bool fitsStart;
    float step, first;
    int count;
};

TEST(LinearGraduations, AreRoundOrNone) {
    const float biggest = std::numeric_limits<float>::max();
    const Row rows[] = {
        {0, 10, 0, false, 1, 0, 11},
        {0, 100, 0, false, 20, 0, 6},
        {0, 45, 0, false, 5, 0, 10},
        {0, 50, 0, false, 10, 0, 6},
        {10, 0, 0, false, -1, 10, 11},
        {0, 38, 0, false, 4, 0, 10},
        {0, 28, 0, false, 3, 0, 10},
        {0, 20, 0, false, 3, 0, 7},
        {0, 40, 0, false, 5, 0, 9},
        {0, 30, 0, false, 4, 0, 8},
        {0, 1, 0, false, 0.2f, 0, 6},
        {0, 0.1f, 0, false, 0.02f, 0, 6},
        {0, 15000, 0, false, 2000, 0, 8},
        {0, 0.01f, 0, false, 0.002f, 0, 5},
        {-12, 31, 0, false, 5, -10, 9},
        {31, -12, 0, false, -5, 30, 9},
        {0.3f, 2, 0.5f, false, 0.5f, 0.5f, 4},
        {0.3f, 2, 0.5f, true, 0.5f, 0.3f, 4},
        {2, 0.3f, 0.5f, true, -0.5f, 2, 4},
        {2, 0.3f, 0.5f, false, -0.5f, 2, 4},
        {0, 10, -4, false, 4, 0, 3},
        {0, 10, NOT_A_NUMBER, false, 1, 0, 11},
        {3, 3, 1, false, 1, 3, 0},
        {0, 1, 1e-9f, false, 1e-9f, 0, 0},
        {0, INFINITE, 1, false, 1, 0, 0},
        {-biggest, biggest, 1, false, 1, -biggest, 0},
        {1e9f, 1e9f + 6400, 7, false, 7, 1e9f, 0}, // lost in the rounding of the coordinates
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(testing::Message() << row.start << " to " << row.end << " by " << row.wanted);
        const float step = oravane::linearStep(row.end - row.start, row.wanted);
        const auto grads = oravane::linearGraduations(row.fitsStart, row.start, row.end, step);
        EXPECT_FLOAT_EQ(step, row.step);
        EXPECT_FLOAT_EQ(grads.first, row.first);
        EXPECT_EQ(grads.count, row.count);
    }
    EXPECT_EQ(oravane::linearStep(0, 0), 0);
    EXPECT_EQ(oravane::linearStep(NOT_A_NUMBER, 3), 3);
    EXPECT_EQ(oravane::linearGraduations(false, 0.5f, 10, -1).count, 0) << "the step leads away";
    EXPECT_EQ(oravane::linearGraduations(false, NOT_A_NUMBER, 10, 1).count, 0);
    EXPECT_GT(oravane::linearGraduations(false, 0, 1, 2e-5f).count, 49900) << "many are allowed";
}

struct SplitRow {
    const char *what;
    oravane::TickRule rule;
    float start, end, step;
    std::vector<float> coords;
    std::vector<std::size_t> main;
    std::vector<float> sub;
};

TEST(GraduationSplit, DividesByPeriodOrNumber) {
    const SplitRow rows[] = {
        {"all main", {true, 1, 1, 1}, 0, 3, 1, {0, 1, 2, 3}, {0, 1, 2, 3}, {}},
        {"every second", {true, 2, 0, 0}, 0, 4, 1, {0, 1, 2, 3, 4}, {0, 2, 4}, {1, 3}},
        {"inside a range", {true, 2, 2, 2}, 0, 5, 1, {0, 1, 2, 3, 4, 5}, {1, 3}, {0, 2, 4, 5}},
        {"a period of 0", {true, 0, 0, 0}, 0, 2, 1, {0, 1, 2}, {0, 1, 2}, {}},
        {"beyond the last", {true, 1, 9, 1}, 0, 2, 1, {0, 1, 2}, {}, {0, 1, 2}},
        {"ranges that cross", {true, 1, 3, 3}, 0, 2, 1, {0, 1, 2}, {}, {0, 1, 2}},
        {"parts up to the limits",
         {false, 1, 1, 1},
         -0.6f,
         2.7f,
         1,
         {0, 1, 2},
         {0, 1, 2},
         {-0.5f, 0.5f, 1.5f, 2.5f}},
        {"falling", {false, 1, 1, 1}, 2.6f, 0, -1, {2, 1, 0}, {0, 1, 2}, {2.5f, 1.5f, 0.5f}},
        {"no parts", {false, 0, 1, 1}, 0, 2, 1, {0, 1, 2}, {0, 1, 2}, {}},
        {"one main, by the step", {false, 3, 2, 1}, 4, 11, 5, {5, 10}, {1}, {5.625f, 7.5f}},
        {"the same, falling", {false, 3, 1, 2}, 11, 4, -5, {10, 5}, {0}, {7.5f, 5.625f}},
        {"one main, from a multiple", {false, 4, 1, 1}, 5, 8, 5, {5}, {0}, {6, 7, 8}},
        {"one main, no step", {false, 4, 1, 1}, 5, 8, 0, {5}, {0}, {}},
        {"no main", {false, 4, 2, 1}, 5, 8, 5, {5}, {}, {}},
        {"parts without end", {false, 60000, 1, 1}, 0, 9, 1, {0, 1, 2, 3, 4}, {0, 1, 2, 3, 4}, {}},
        {"main ones at one place", {false, 3, 1, 1}, 0, 0, 0, {0, 0}, {0, 1}, {}},
    };
    for (const SplitRow &row : rows) {
        SCOPED_TRACE(row.what);
        const auto split = oravane::splitGraduations(row.rule, row.start, row.end, row.step, row.coords);
        EXPECT_EQ(split.main, row.main);
        ASSERT_EQ(split.sub.size(), row.sub.size());
        for (std::size_t i = 0; i < row.sub.size(); ++i)
            EXPECT_NEAR(split.sub[i], row.sub[i], 1e-5f);
    }
    const std::vector<float> coords{0, 1, 2};
    EXPECT_EQ(oravane::splitGraduations({false, 4, 1, 1}, 0, 2, 1, coords).sub.size(), 8U) << "at each 0.2";
}

TEST(AxisLabels, AreCutBetweenCharacters) {
    EXPECT_EQ(oravane::limitedLabel(std::string(99, 'a')), std::string(99, 'a'));
    EXPECT_EQ(oravane::limitedLabel(std::string(500, 'a')), std::string(99, 'a'));
    EXPECT_EQ(oravane::limitedLabel(std::string(98, 'a') + "\u00b0C"), std::string(98, 'a'));
}

} // namespace
