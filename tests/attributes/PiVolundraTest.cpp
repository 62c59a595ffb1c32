#include <oravane/PbIsovaluesList.h>
#include <oravane/PiVolundra.h>

#include "attributes/AttributeTest.h"

#include <cfloat>
#include <cmath>
#include <random>

namespace {

struct Engine : PiVolundra {
    using PiVolundra::adjustIsoval;
    using PiVolundra::adjustIsovalList;
    using PiVolundra::adjustIsovalMultiple;
    using PiVolundra::m_isAdjusted;
    using PiVolundra::m_isovalues;
    using PiVolundra::m_numIsovalues;
};

/// The adjustment step by step, with a look at all values in each: slow, and without an end when no float is
/// left.
bool slowAdjust(const Values &first, const Values &second, float &isovalue) {
    Values all(first);
    all.insert(all.end(), second.begin(), second.end());
    std::size_t equal = 0;
    double direction = -1;
    for (float value : all) {
        equal += value == isovalue;
        if (value > isovalue)
            direction = 1;
    }
    if (equal == 0 || equal == first.size())
        return false;
    double previous = 0, gap;
    float saved;
    do {
        isovalue = float(isovalue + previous);
        saved = isovalue;
        gap = 1e30;
        for (float value : all) {
            const double distance = std::fabs(double(value) - double(isovalue));
            if (distance > previous && distance < gap)
                gap = distance;
        }
        double factor = 0.01;
        isovalue = float(isovalue + gap * 0.01 * direction);
        while (isovalue == saved && factor < 0.1) {
            factor += 0.01;
            isovalue = float(isovalue + gap * factor * direction);
        }
        previous = gap;
    } while (isovalue == saved);
    return true;
}

TEST(PiVolundra, MovesAnIsovalueOffTheData) {
    const struct {
        const char *name;
        Values data;
        float isovalue, expected;
        int isAdjusted;
        Values second = {};
    } rows[] = {
        {"up when a value is above", {1, 2, 3}, 2, 2.01f, 1},
        {"down from the largest value", {1, 3}, 3, 2.98f, 1},
        {"a constant field", {2, 2}, 2, 2, 0},
        {"no coincidence", {1, 2, 3}, 2.5f, 2.5f, 0},
        {"no data", {}, 2, 2, 0},
        {"the nearer neighbour counts", {0, 10, 14}, 10, 10.04f, 1},
        {"negative zero is zero", {-0.0f, 1}, 0, 0.01f, 1},
        {"not-a-number counts for nothing", {NaN, 1, 3, NaN}, 3, 2.98f, 1},
        {"an isovalue that is not a number", {NaN, 1}, NaN, NaN, 0},
        {"infinity is above, but has no distance", {infinity, 1, 0}, 1, 1.01f, 1},
        {"infinite isovalue", {infinity, 1}, infinity, infinity, 1},
        {"only infinity beside it", {5, infinity}, 5, 1e28f, 1},
        {"no room at the end of the floats", {FLT_MAX, infinity}, FLT_MAX, FLT_MAX, 1},
        {"the first array decides whether the field is constant", {2, 2}, 2, -1e28f, 1, {2}},
        {"as many hits as the first array has values", {2, 1}, 2, 2, 0, {2}},
    };
    for (const auto &row : rows) {
        Engine engine, alone;
        float isovalue = row.isovalue;
        engine.adjustIsovalMultiple(size(row.data), row.data.data(), size(row.second), row.second.data(), 5,
                                    nullptr, isovalue);
        EXPECT_TRUE(isovalue == row.expected || (std::isnan(isovalue) && std::isnan(row.expected)))
            << row.name << ": " << isovalue;
        EXPECT_EQ(engine.m_isAdjusted, row.isAdjusted) << row.name;
        if (!row.second.empty())
            continue;
        float same = row.isovalue;
        alone.adjustIsoval(size(row.data), row.data.data(), same);
        EXPECT_TRUE(same == isovalue || std::isnan(isovalue)) << row.name;
        EXPECT_EQ(alone.m_isAdjusted, row.isAdjusted) << row.name;
    }
}

TEST(PiVolundra, AgreesWithTheStepByStepWay) {
    std::mt19937 random(7);
    // Around 2^23 and 2^24 one per cent, and even ten, of the distance of two integers is lost to rounding.
    for (const float base : {0.0f, -20.0f, 1e6f, 8388590.0f, 16777200.0f, -8388620.0f})
        for (int round = 0; round < 60; ++round) {
            Values first(30), second(30);
            for (Values *values : {&first, &second})
                for (float &value : *values)
                    value = base + float(random() % 40);
            PbIsovaluesList list;
            list.setRegularIsoList(40, base, 1.0f);
            Engine engine;
            engine.setIsovaluesList(&list);
            engine.adjustIsovalList(30, first.data(), 0, nullptr, 30, second.data());
            ASSERT_EQ(engine.m_numIsovalues, 40);
            int num, isRegular;
            float min, max, step;
            const float *levels = list.getIsoList(num, min, max, step, isRegular);
            bool anyAdjusted = false;
            for (int i = 0; i < 40; ++i) {
                float expected = levels[i], single = expected;
                anyAdjusted |= slowAdjust(first, second, expected);
                EXPECT_EQ(engine.m_isovalues[i], expected) << base << " + " << i;
                Engine one;
                one.adjustIsovalMultiple(30, first.data(), 30, second.data(), 0, nullptr, single);
                EXPECT_EQ(single, expected);
            }
            EXPECT_EQ(engine.m_isAdjusted, anyAdjusted);
        }
}

TEST(PiVolundra, ListsOfAnyLength) {
    Engine engine;
    const Values data = {1, 2, 3}, twice = {2, 2};
    const auto adjust = [&] { engine.adjustIsovalList(3, data.data(), -1, data.data(), 3, nullptr); };
    adjust();
    EXPECT_EQ(engine.m_numIsovalues, 0) << "no list";
    PbIsovaluesList list;
    list.setRegularIsoList(1000, 0.0f, 1.0f);
    engine.setIsovaluesList(&list);
    adjust();
    EXPECT_EQ(engine.m_numIsovalues, 1000);
    EXPECT_TRUE(list == PbIsovaluesList(999, 0, 1000)) << "untouched";
    list.setRegularIsoList(0);
    adjust();
    EXPECT_EQ(engine.m_numIsovalues, 0);
    EXPECT_EQ(engine.m_isAdjusted, 0);
    list.setIrregularIsoList(2, twice.data());
    adjust();
    EXPECT_EQ(engine.m_isovalues[0], 2.01f);
    EXPECT_EQ(engine.m_isovalues[1], 2.01f);
}

} // namespace
