#include <oravane/PoIsovaluesList.h>
#include <oravane/PoIsovaluesListElement.h>

#include "attributes/StateBehind.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace {

using Values = std::vector<float>;

template <class List>
Values valuesOf(List &list, int *isRegular = nullptr) {
    int num, regular;
    float min, max, step;
    const float *block = list.getIsoList(num, min, max, step, regular);
    if (isRegular)
        *isRegular = regular;
    return Values(block, block + num);
}

Values fieldOf(const PoIsovaluesList &node) {
    const float *values = node.isovaluesList.getValues(0);
    return Values(values, values + node.isovaluesList.getNum());
}

TEST(PoIsovaluesList, FieldReachesTheListAtTheNextAction) {
    EXPECT_EQ(stateBehind<PoIsovaluesListElement>(nullptr), nullptr);
    const test::Ref<PoIsovaluesList> node(new PoIsovaluesList);
    const PbIsovaluesList *list = stateBehind<PoIsovaluesListElement>(node.get());
    EXPECT_EQ(valuesOf(*list), Values{0});
    const float values[] = {4, 1, 2};
    node->isovaluesList.setValues(0, 3, values);
    EXPECT_EQ(valuesOf(*list), Values{0}) << "not yet";
    stateBehind<PoIsovaluesListElement>(node.get());
    EXPECT_EQ(valuesOf(*list), (Values{1, 2, 4}));
    node->isovaluesList.setNum(1);
    EXPECT_EQ(valuesOf(*node.get()), Values{4}) << "asking the node brings it up to date";
    node->isovaluesList.setNum(0);
    EXPECT_EQ(valuesOf(*node.get()), Values{});
}

TEST(PoIsovaluesList, RegularListsShowInTheFieldAndStayRegular) {
    const test::Ref<PoIsovaluesList> node(new PoIsovaluesList);
    const float many[] = {1, 2, 3, 4, 5, 6, 7};
    node->isovaluesList.setValues(0, 7, many);
    node->setRegularIsoList(0.0f, 10.0f, 3);
    EXPECT_EQ(fieldOf(*node.get()), (Values{0, 5, 10}));
    int isRegular = 0;
    EXPECT_EQ(valuesOf(*node.get(), &isRegular), (Values{0, 5, 10}));
    EXPECT_EQ(isRegular, 1);
    const float data[] = {3, -1};
    node->setRegularIsoList(2, data, 2);
    EXPECT_EQ(fieldOf(*node.get()), (Values{-1, 3}));
    node->setRegularIsoList(50, 0.0f, 0.1f);
    const PbIsovaluesList *list = stateBehind<PoIsovaluesListElement>(node.get());
    valuesOf(*list, &isRegular);
    EXPECT_EQ(isRegular, 1) << "although the rounded distances of the field's values differ";
    node->isovaluesList.touch();
    valuesOf(*node.get(), &isRegular);
    EXPECT_EQ(isRegular, 0);
    const float two[] = {8, 9};
    node->isovaluesList.setNum(0);
    node->isovaluesList.setValues(0, 2, two);
    node->setRegularIsoList(std::numeric_limits<float>::quiet_NaN(), 1.0f, 5);
    EXPECT_EQ(valuesOf(*node.get()), (Values{8, 9})) << "refused";
    EXPECT_EQ(fieldOf(*node.get()), (Values{8, 9}));
}

TEST(PoIsovaluesList, SurvivesFiles) {
    const auto read =
        readNode<PoIsovaluesList>("#Inventor V2.1 ascii\nPoIsovaluesList { isovaluesList [ 3, 1, 2.5 ] }\n");
    ASSERT_TRUE(read);
    for (const bool isBinary : {false, true}) {
        const auto again = readNode<PoIsovaluesList>(test::written(read.get(), isBinary));
        ASSERT_TRUE(again) << isBinary;
        EXPECT_EQ(valuesOf(*again.get()), (Values{1, 2.5f, 3}));
    }
}

} // namespace
