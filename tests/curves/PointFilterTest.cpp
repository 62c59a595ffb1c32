#include "curves/PointFilter.h"

#include "Drawn.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using oravane::CurveShape;
using oravane::PointFilter;
using test::INFINITE;
using test::NOT_A_NUMBER;
using Places = std::vector<SbVec2f>;

/// As a text: NONE for a filter that is inactive.
std::string placesText(const PointFilter &filter, const Places &points) {
    const auto places =
        oravane::placesOf(filter, points, oravane::curveThrough(CurveShape::Polyline, points));
    if (!places)
        return "NONE";
    std::ostringstream text;
    for (const SbVec2f &place : *places)
        text << place[0] << "," << place[1] << " ";
    return text.str();
}

TEST(PointFilter, ChoosesPlaces) {
    const Places line = {{0, 0}, {2, 4}, {2, 8}, {4, 0}}, one = {{3, 7}};
    const Places gap = {{0, 0}, {1, NOT_A_NUMBER}, {2, 4}, {3, 6}, {INFINITE, 1}, {5, 5}};
    using Filter = PointFilter;
    struct {
        const char *name;
        const Places &points;
        int type;
        int indexPeriod;
        std::vector<std::int32_t> indexList;
        float xPeriod;
        std::vector<float> xList;
        const char *places;
    } const rows[] = {
        {"inactive", line, Filter::Inactive, 1, {0}, 1, {0}, "NONE"},
        {"no such type", line, 9, 1, {0}, 1, {0}, "NONE"},
        {"all", line, Filter::AllPoints, 0, {}, 0, {}, "0,0 2,4 2,8 4,0 "},
        {"all with gaps", gap, Filter::AllPoints, 0, {}, 0, {}, "0,0 2,4 3,6 5,5 "},
        {"index period", line, Filter::IndexPeriod, 3, {}, 0, {}, "0,0 4,0 "},
        {"index period, huge", line, Filter::IndexPeriod, 2147483647, {}, 0, {}, "0,0 "},
        {"index period 0", line, Filter::IndexPeriod, 0, {}, 0, {}, "NONE"},
        {"index period -1", line, Filter::IndexPeriod, -1, {}, 0, {}, "NONE"},
        {"indices count gaps", gap, Filter::IndexPeriod, 2, {}, 0, {}, "0,0 2,4 "},
        {"index list", line, Filter::IndexList, 0, {3, 4, -1, 0, 3}, 0, {}, "4,0 0,0 4,0 "},
        {"x period", line, Filter::XPeriod, 0, {}, 1, {}, "0,0 1,2 2,4 2,4 2,8 3,4 4,0 "},
        {"x period with gaps", gap, Filter::XPeriod, 0, {}, 1, {}, "2,4 3,6 "},
        {"x period 0", line, Filter::XPeriod, 0, {}, 0, {}, "NONE"},
        {"x period -1", line, Filter::XPeriod, 0, {}, -1, {}, "NONE"},
        {"x period not a number", line, Filter::XPeriod, 0, {}, NOT_A_NUMBER, {}, "NONE"},
        {"x period too small", line, Filter::XPeriod, 0, {}, 3e-6f, {}, "NONE"},
        {"x period very much too small", line, Filter::XPeriod, 0, {}, 1e-45f, {}, "NONE"},
        {"x period, one point", one, Filter::XPeriod, 0, {}, 5, {}, "3,7 "},
        {"x list", line, Filter::XList, 0, {}, 0, {3, -1, NOT_A_NUMBER, 1, 3, 5}, "3,4 1,2 3,4 "},
        {"x list out of range", line, Filter::XList, 0, {}, 0, {-1, 4.5f}, ""},
        {"x list, one point", one, Filter::XList, 0, {}, 0, {1, 3, 3}, "3,7 "},
        {"x list beside one point", one, Filter::XList, 0, {}, 0, {1}, ""},
    };
    for (const auto &row : rows) {
        PointFilter filter;
        filter.type = row.type;
        filter.indexPeriod = row.indexPeriod;
        filter.indexList = row.indexList;
        filter.xPeriod = row.xPeriod;
        filter.xList = row.xList;
        EXPECT_EQ(placesText(filter, row.points), row.places) << row.name;
    }
}

TEST(PointFilter, StepsReachTheGreatestX) {
    struct {
        float low, high, period;
        std::size_t count;
    } const rows[] = {
        {0, 1, 0.1f, 11},
        {0.1f, 0.7f, 0.1f, 7},
        {-0.7f, 0.7f, 0.1f, 15},
        {1958, 2020, 1 / 12.f, 745},
        {0, 999999, 1, 1'000'000},
        {0, 0.99f, 0.1f, 10},
        {0, 10, 30, 1},
        {1e6f, 1e6f + 1, 0.25f, 5},
        {0, 15.9999f, 1, 16},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message() << row.low << " to " << row.high << " by " << row.period);
        const Places ends = {{row.low, 0}, {row.high, 0}};
        PointFilter filter;
        filter.type = PointFilter::XPeriod;
        filter.xPeriod = row.period;
        const auto places =
            oravane::placesOf(filter, ends, oravane::curveThrough(CurveShape::Polyline, ends));
        ASSERT_TRUE(places);
        ASSERT_EQ(places->size(), row.count);
        const double last = row.low + (static_cast<double>(row.count) - 1) * row.period;
        EXPECT_FLOAT_EQ(places->back()[0], static_cast<float>(std::min<double>(last, row.high)));
    }
}

/// Each x against each segment.
Places searched(const std::vector<float> &list, const Places &points) {
    Places places;
    for (const float x : list)
        for (std::size_t i = 0; i + 1 < points.size(); ++i) {
            const SbVec2f &a = points[i], &b = points[i + 1];
            if (!oravane::hasPosition(a) || !oravane::hasPosition(b) ||
                !((static_cast<double>(x) - a[0]) * (static_cast<double>(x) - b[0]) <= 0))
                continue;
            const double slope = (static_cast<double>(b[1]) - a[1]) / (static_cast<double>(b[0]) - a[0]);
            places.emplace_back(x, a[0] == b[0] ? std::min(a[1], b[1])
                                                : static_cast<float>(slope * x + b[1] - slope * b[0]));
        }
    return places;
}

TEST(PointFilter, FindsAllSegmentsInOrder) {
    std::mt19937 random(5);
    for (int round = 0; round < 200; ++round) {
        // Few different x: many vertical segments, and x that are at ends.
        std::uniform_int_distribution<int> few(0, 3 + round / 10), size(2, 40);
        Places points(static_cast<std::size_t>(size(random)));
        for (SbVec2f &p : points)
            p.setValue(static_cast<float>(few(random)), static_cast<float>(few(random)));
        if (round % 4 == 0 && points.size() > 2)
            points[points.size() / 2][1] = NOT_A_NUMBER;
        std::vector<float> list(static_cast<std::size_t>(size(random)));
        for (float &x : list)
            x = static_cast<float>(few(random)) / 2;
        PointFilter filter;
        filter.type = PointFilter::XList;
        filter.xList = list;
        const auto found =
            oravane::placesOf(filter, points, oravane::curveThrough(CurveShape::Polyline, points));
        const Places expected = searched(list, points);
        ASSERT_TRUE(found);
        ASSERT_EQ(found->size(), expected.size());
        for (std::size_t k = 0; k < expected.size(); ++k)
            EXPECT_TRUE((*found)[k].equals(expected[k], 1e-9f)) << round << ", " << k;
    }
}

} // namespace
