#include <oravane/PbIsovaluesList.h>
#include <oravane/PoIsovaluesList.h>
#include <oravane/PoIsovaluesListElement.h>

#include "attributes/AttributeTest.h"

#include <tuple>

namespace {

using List = PbIsovaluesList;

/// What a list, or a node with one, holds: values, minimum, maximum, step and whether it is regular.
using Contents = std::tuple<Values, float, float, float, int>;

template <class Source>
Contents contentsOf(Source &list) {
    int num, isRegular;
    float min, max, step;
    const float *block = list.getIsoList(num, min, max, step, isRegular);
    EXPECT_EQ(block == nullptr, num == 0);
    return {Values(block, block + num), min, max, step, isRegular};
}

template <class Source>
Values valuesOf(Source &list) {
    return std::get<Values>(contentsOf(list));
}

template <class Source>
bool isRegular(Source &list) {
    return std::get<int>(contentsOf(list));
}

void setIrregular(List &list, const Values &values) {
    list.setIrregularIsoList(size(values), values.data());
}

const float data[] = {4, NaN, -2, infinity, 8};
constexpr float low = -3e38f;

TEST(PbIsovaluesList, RegularForms) {
    const Values from1To10 = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
    const Values from0To18 = {0, 2, 4, 6, 8, 10, 12, 14, 16, 18};
    const struct {
        const char *name;
        void (*set)(List &);
        Values values;
        float min, max, step;
    } rows[] = {
        {"start", [](List &) {}, from1To10, 1, 10, 1},
        {"bounds, count", [](List &l) { l.setRegularIsoList(10.0f, 0.0f, 3); }, {0, 5, 10}, 0, 10, 5},
        {"bounds keep the count", [](List &l) { l.setRegularIsoList(0.0f, 18.0f); }, from0To18, 0, 18, 2},
        {"count keeps the bounds", [](List &l) { l.setRegularIsoList(4); }, {1, 4, 7, 10}, 1, 10, 3},
        {"data and count", [](List &l) { l.setRegularIsoList(5, data, 3); }, {-2, 3, 8}, -2, 8, 5},
        {"data alone", [](List &l) { l.setRegularIsoList(2, data + 3); }, Values(10, 8), 8, 8, 0},
        {"first and step", [](List &l) { l.setRegularIsoList(3, 2.0f, 0.5f); }, {2, 2.5f, 3}, 2, 3, 0.5f},
        {"downwards", [](List &l) { l.setRegularIsoList(4, 9.0f, -2.0f); }, {0, 5, 7, 9}, 0, 9, -2},
        {"one: larger bound", [](List &l) { l.setRegularIsoList(2.0f, 6.0f, 1); }, {6}, 2, 6, infinity},
        {"no value", [](List &l) { l.setRegularIsoList(-3); }, {}, 1, 10, -9},
        {"all floats", [](List &l) { l.setRegularIsoList(low, -low, 3); }, {low, 0, -low}, low, -low, -low},
    };
    for (const auto &row : rows) {
        List list;
        row.set(list);
        EXPECT_EQ(contentsOf(list), Contents(row.values, row.min, row.max, row.step, 1)) << row.name;
    }
    const List tenths(0.0f, 1.0f, 11);
    EXPECT_EQ(valuesOf(tenths).back(), 1) << "repeated addition alone gives 1.0000001";
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
        {{NaN, 4, 2, NaN}, {2, 4}, 2, 1},
        {Values(1000, 3), Values(1000, 3), 0, 1},
    };
    for (const auto &row : rows) {
        List list;
        setIrregular(list, row.given);
        const auto [values, min, max, step, isRegular] = contentsOf(list);
        EXPECT_EQ(std::tuple(values, step, isRegular), std::tuple(row.values, row.step, row.isRegular));
    }
    List list;
    int num, isRegular;
    float min, max, step;
    list.setIrregularIsoList(2, list.getIsoList(num, min, max, step, isRegular));
    EXPECT_EQ(valuesOf(list), (Values{1, 2})) << "its own values";
}

TEST(PbIsovaluesList, Searches) {
    const Values lists[] = {{1, 2, 3}, {1, 2, 4}, {}, {5}, {1, 2}}; // all but the second are regular
    const float none = 1e20f;
    const struct {
        int list;
        float value, lower, upper;
        int index;
    } rows[] = {
        {0, 0, -none, 1, 0},      {0, 1, 1, 1, 0},        {0, 2, 2, 2, 1},     {0, 2.5f, 2, 3, 2},
        {0, 3, 3, 3, 2},          {0, 9, 3, none, 3},     {1, 0, -none, 1, 0}, {1, 2, 2, 2, 1},
        {1, 3, 2, 4, 2},          {1, 4, 4, 4, 2},        {1, 9, 4, none, 3},  {1, infinity, 4, none, 3},
        {1, NaN, -none, none, 0}, {2, 5, -none, none, 0}, {3, 5, 5, 5, 0},     {3, 6, 5, none, 1},
        {4, NaN, -none, none, 0},
    };
    for (const auto &row : rows) {
        List list;
        setIrregular(list, lists[row.list]);
        EXPECT_EQ(list.getLowerIsovalue(row.value), row.lower) << row.value;
        EXPECT_EQ(list.getUpperIsovalue(row.value), row.upper) << row.value;
        EXPECT_EQ(list.getIndex(row.value), row.index) << row.value;
    }
}

TEST(PbIsovaluesList, IndexStaysInsideTheListWhateverItsForm) {
    List lists[5];
    lists[0].setRegularIsoList(5, 10.0f, -1.0f); // 0 7 8 9 10
    lists[1].setRegularIsoList(5, 10.0f, 0.0f);
    lists[2].setRegularIsoList(1000, 0.0f, 0.1f);
    lists[3].setRegularIsoList(-3e38f, 3e38f, 7);
    setIrregular(lists[4], {-infinity, infinity});
    for (const List &list : lists) {
        Values probes = valuesOf(list);
        const int num = size(probes);
        probes.insert(probes.end(), {NaN, infinity, -infinity, 1e30f, -1e30f, 3.3f, 99.85f});
        for (float probe : probes) {
            const int index = list.getIndex(probe);
            EXPECT_TRUE(index >= 0 && index <= num) << probe;
        }
    }
}

TEST(PbIsovaluesList, CopiesComparesAndTellsTheKits) {
    List source(0.0f, 4.0f, 5), target;
    ChangeCounter kit(target);
    EXPECT_FALSE(source == target);
    target = source;
    EXPECT_EQ(kit.changes(), 1);
    EXPECT_TRUE(source == target);
    const List copy(source);
    source.setRegularIsoList(3);
    EXPECT_EQ(valuesOf(copy), (Values{0, 1, 2, 3, 4}));
    target.setRegularIsoList(NaN, 3.0f, 4);
    target.setRegularIsoList(3, 1.0f, infinity);
    target.setRegularIsoList(3, nullptr);
    target.setRegularIsoList(1, &NaN, 5);
    target.setIrregularIsoList(2, nullptr);
    EXPECT_EQ(kit.changes(), 1) << "refused";
    EXPECT_TRUE(copy == target);
    target.setIrregularIsoList(0, nullptr);
    EXPECT_EQ(kit.changes(), 2);
}

void setField(PoIsovaluesList &node, const Values &values) {
    node.isovaluesList.setNum(size(values));
    node.isovaluesList.setValues(0, size(values), values.data());
}

Values fieldOf(const PoIsovaluesList &node) {
    const float *values = node.isovaluesList.getValues(0);
    return Values(values, values + node.isovaluesList.getNum());
}

TEST(PoIsovaluesList, FieldReachesTheListAtTheNextAction) {
    EXPECT_EQ(stateBehind<PoIsovaluesListElement>(nullptr), nullptr);
    const test::Ref<PoIsovaluesList> node(new PoIsovaluesList);
    const List &list = *stateBehind<PoIsovaluesListElement>(node.get());
    setField(*node.get(), {4, 1, 2});
    EXPECT_EQ(valuesOf(list), Values{0}) << "not yet";
    stateBehind<PoIsovaluesListElement>(node.get());
    EXPECT_EQ(valuesOf(list), (Values{1, 2, 4}));
    for (const Values &rest : {Values{4}, Values{}}) {
        setField(*node.get(), rest);
        EXPECT_EQ(valuesOf(*node.get()), rest) << "asking the node brings it up to date";
    }
}

TEST(PoIsovaluesList, RegularListsShowInTheFieldAndStayRegular) {
    const test::Ref<PoIsovaluesList> node(new PoIsovaluesList);
    setField(*node.get(), {1, 2, 3, 4, 5, 6, 7});
    node->setRegularIsoList(0.0f, 10.0f, 3);
    EXPECT_EQ(fieldOf(*node.get()), (Values{0, 5, 10}));
    EXPECT_EQ(contentsOf(*node.get()), Contents(Values{0, 5, 10}, 0, 10, 5, 1));
    node->setRegularIsoList(5, data, 2);
    EXPECT_EQ(fieldOf(*node.get()), (Values{-2, 8}));
    node->setRegularIsoList(50, 0.0f, 0.1f);
    EXPECT_EQ(isRegular(*stateBehind<PoIsovaluesListElement>(node.get())), 1)
        << "although the rounded distances differ";
    node->isovaluesList.touch();
    EXPECT_EQ(isRegular(*node.get()), 0);
    setField(*node.get(), {8, 9});
    node->setRegularIsoList(NaN, 1.0f, 5);
    EXPECT_EQ(valuesOf(*node.get()), (Values{8, 9})) << "refused";
    EXPECT_EQ(fieldOf(*node.get()), (Values{8, 9}));
}

TEST(PoIsovaluesList, SurvivesFiles) {
    for (const bool isBinary : {false, true}) {
        const auto node =
            throughFile<PoIsovaluesList>("PoIsovaluesList { isovaluesList [ 3, 1, 2.5 ] }", isBinary);
        EXPECT_EQ(node ? valuesOf(*node.get()) : Values(), (Values{1, 2.5f, 3}));
    }
}

} // namespace
