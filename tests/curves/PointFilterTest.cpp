#include "curves/PointFilter.h"

#include "Drawn.h"

#include <gtest/gtest.h>

#include <algorithm>

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
    const Places line = {{0, 0}, {2, 4}, {2, 8}, {4, 0}}, one = {{3, 7}}, back = {{0, 0}, {4, 4}, {2, 6}};
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
        {"x list on the way back",
         back,
         Filter::XList,
         0,
         {},
         0,
         {3, 2, 2.5f, 4},
         "3,3 3,5 2,2 2,6 2.5,2.5 2.5,5.5 4,4 4,4 "},
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

} // namespace
