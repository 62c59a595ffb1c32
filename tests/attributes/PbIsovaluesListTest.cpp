#include <oravane/PbIsovaluesList.h>

#include "attributes/ChangeCounter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr float nan = std::numeric_limits<float>::quiet_NaN();
constexpr float infinity = std::numeric_limits<float>::infinity();

struct Contents {
    std::vector<float> values;
    float min, max, step;
    int isRegular;

    explicit Contents(const PbIsovaluesList &list) {
        int num;
        const float *block = list.getIsoList(num, min, max, step, isRegular);
        EXPECT_EQ(block == nullptr, num == 0);
        values.assign(block, block + num);
    }
};

using Values = std::vector<float>;

TEST(PbIsovaluesList, RegularForms) {
    const float data[] = {4, nan, -2, infinity, 8};
    const struct {
        const char *name;
        void (*set)(PbIsovaluesList &, const float *);
        Values values;
        float min, max, step;
    } rows[] = {
        {"start", [](PbIsovaluesList &, const float *) {}, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, 1, 10, 1},
        {"bounds and count",
         [](PbIsovaluesList &list, const float *) { list.setRegularIsoList(10.0f, 0.0f, 3); },
         {0, 5, 10},
         0,
         10,
         5},
        {"bounds keep the count",
         [](PbIsovaluesList &list, const float *) { list.setRegularIsoList(0.0f, 18.0f); },
         {0, 2, 4, 6, 8, 10, 12, 14, 16, 18},
         0,
         18,
         2},
        {"count keeps the bounds",
         [](PbIsovaluesList &list, const float *) { list.setRegularIsoList(4); },
         {1, 4, 7, 10},
         1,
         10,
         3},
        {"data and count",
         [](PbIsovaluesList &list, const float *five) { list.setRegularIsoList(5, five, 3); },
         {-2, 3, 8},
         -2,
         8,
         5},
        {"first and step",
         [](PbIsovaluesList &list, const float *) { list.setRegularIsoList(3, 2.0f, 0.5f); },
         {2, 2.5f, 3},
         2,
         3,
         0.5f},
        {"a negative step leaves index 0",
         [](PbIsovaluesList &list, const float *) { list.setRegularIsoList(4, 9.0f, -2.0f); },
         {0, 5, 7, 9},
         0,
         9,
         -2},
        {"one value is the larger bound",
         [](PbIsovaluesList &list, const float *) { list.setRegularIsoList(2.0f, 6.0f, 1); },
         {6},
         2,
         6,
         infinity},
        {"no value", [](PbIsovaluesList &list, const float *) { list.setRegularIsoList(-3); }, {}, 1, 10, -9},
        {"the range of all floats",
         [](PbIsovaluesList &list, const float *) { list.setRegularIsoList(-3e38f, 3e38f, 3); },
         {-3e38f, 0, 3e38f},
         -3e38f,
         3e38f,
         3e38f},
    };
    for (const auto &row : rows) {
        PbIsovaluesList list;
        row.set(list, data);
        const Contents contents(list);
        EXPECT_EQ(contents.values, row.values) << row.name;
        EXPECT_EQ(contents.min, row.min) << row.name;
        EXPECT_EQ(contents.max, row.max) << row.name;
        EXPECT_EQ(contents.step, row.step) << row.name;
        EXPECT_EQ(contents.isRegular, 1) << row.name;
    }
    PbIsovaluesList tenths(0.0f, 1.0f, 11);
    EXPECT_EQ(Contents(tenths).values.back(), 1) << "repeated addition alone gives 1.0000001";
    tenths.setRegularIsoList(5, data);
    EXPECT_EQ(Contents(tenths).values.size(), 11u) << "data alone keep the count";
    EXPECT_EQ(Contents(tenths).values.front(), -2);
}

TEST(PbIsovaluesList, IrregularForm) {
    const struct {
        Values given, values;
        float step;
        int isRegular;
    } rows[] = {
        {{3, 1, 2}, {1, 2, 3}, 1, 1},
        {{1, 2, 4}, {1, 2, 4}, 1, 0},
        {{1, 5, 6}, {1, 5, 6}, 1, 0},
        {{7}, {7}, 1, 1},
        {{}, {}, 1, 1},
        {{2, 2, 1}, {1, 2, 2}, 0, 0},
        {{nan, 4, 2, nan}, {2, 4}, 2, 1},
    };
    for (const auto &row : rows) {
        PbIsovaluesList list;
        list.setIrregularIsoList(static_cast<int>(row.given.size()), row.given.data());
        const Contents contents(list);
        EXPECT_EQ(contents.values, row.values);
        EXPECT_EQ(contents.step, row.step);
        EXPECT_EQ(contents.isRegular, row.isRegular);
    }
    PbIsovaluesList list;
    const Values many(1000, 3);
    list.setIrregularIsoList(1000, many.data());
    EXPECT_EQ(Contents(list).values.size(), 1000u);
    const Values three = {3, 1, 2};
    list.setIrregularIsoList(3, three.data());
    int num, isRegular;
    float min, max, step;
    list.setIrregularIsoList(2, list.getIsoList(num, min, max, step, isRegular));
    EXPECT_EQ(Contents(list).values, (Values{1, 2})) << "its own values";
}

TEST(PbIsovaluesList, Searches) {
    const struct {
        Values list;
        float value, lower, upper;
        int index;
    } rows[] = {
        {{1, 2, 3}, 0, -1e20f, 1, 0},
        {{1, 2, 3}, 1, 1, 1, 0},
        {{1, 2, 3}, 2, 2, 2, 1},
        {{1, 2, 3}, 2.5f, 2, 3, 2},
        {{1, 2, 3}, 3, 3, 3, 2},
        {{1, 2, 3}, 9, 3, 1e20f, 3},
        {{1, 2, 4}, 0, -1e20f, 1, 0},
        {{1, 2, 4}, 2, 2, 2, 1},
        {{1, 2, 4}, 3, 2, 4, 2},
        {{1, 2, 4}, 4, 4, 4, 2},
        {{1, 2, 4}, 9, 4, 1e20f, 3},
        {{}, 5, -1e20f, 1e20f, 0},
        {{5}, 5, 5, 5, 0},
        {{5}, 6, 5, 1e20f, 1},
        {{1, 2, 4}, nan, -1e20f, 1e20f, 0},
        {{1, 2}, nan, -1e20f, 1e20f, 0},
        {{1, 2, 4}, infinity, 4, 1e20f, 3},
    };
    for (const auto &row : rows) {
        PbIsovaluesList list;
        list.setIrregularIsoList(static_cast<int>(row.list.size()), row.list.data());
        EXPECT_EQ(list.getLowerIsovalue(row.value), row.lower) << row.value;
        EXPECT_EQ(list.getUpperIsovalue(row.value), row.upper) << row.value;
        EXPECT_EQ(list.getIndex(row.value), row.index) << row.value;
    }
}

TEST(PbIsovaluesList, IndexStaysInsideTheListWhateverItsForm) {
    PbIsovaluesList lists[5];
    lists[0].setRegularIsoList(5, 10.0f, -1.0f); // 0 7 8 9 10
    lists[1].setRegularIsoList(5, 10.0f, 0.0f);
    lists[2].setRegularIsoList(1000, 0.0f, 0.1f);
    lists[3].setRegularIsoList(-3e38f, 3e38f, 7);
    const float infinite[] = {-infinity, infinity};
    lists[4].setIrregularIsoList(2, infinite);
    for (const PbIsovaluesList &list : lists) {
        const Contents contents(list);
        Values probes = contents.values;
        probes.insert(probes.end(), {nan, infinity, -infinity, 1e30f, -1e30f, 3.3f, 99.85f});
        for (float probe : probes) {
            const int index = list.getIndex(probe);
            EXPECT_TRUE(index >= 0 && index <= static_cast<int>(contents.values.size())) << probe;
        }
    }
}

TEST(PbIsovaluesList, CopiesComparesAndTellsTheKits) {
    PbIsovaluesList source(0.0f, 4.0f, 5), target;
    ChangeCounter kit(target);
    EXPECT_FALSE(source == target);
    target = source;
    EXPECT_EQ(kit.changes(), 1);
    EXPECT_TRUE(source == target);
    const PbIsovaluesList copy(source);
    source.setRegularIsoList(3);
    EXPECT_EQ(Contents(copy).values, (Values{0, 1, 2, 3, 4}));
    target.setRegularIsoList(nan, 3.0f, 4);
    target.setRegularIsoList(3, 1.0f, infinity);
    target.setRegularIsoList(3, nullptr);
    target.setRegularIsoList(1, &nan, 5);
    target.setIrregularIsoList(2, nullptr);
    EXPECT_EQ(kit.changes(), 1) << "refused";
    EXPECT_TRUE(copy == target);
    target.setIrregularIsoList(0, nullptr);
    EXPECT_EQ(kit.changes(), 2);
}

} // namespace
