#include <oravane/PbArrayOfInt.h>
#include <oravane/PbArrayOfLong.h>

#include <gtest/gtest.h>

#include <limits>
#include <utility>

namespace {

TEST(PbArrayOfInt, CountsFindsAndGrowsByWholeSteps) {
    PbArrayOfInt array;
    EXPECT_EQ(array.getNum(), 0);
    EXPECT_EQ(array.find(5), -1);
    EXPECT_EQ(array.add(5), 0);
    EXPECT_EQ(array.getCapacity(), 10);
    EXPECT_EQ(array.find(5), 0);
    EXPECT_EQ(array.find(6), -1);
    const int more[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
    EXPECT_EQ(array.add(10, more), 10);
    EXPECT_EQ(array.getCapacity(), 20);
    EXPECT_EQ(array.find(5), 0) << "the first match counts";
    array.squeeze();
    EXPECT_EQ(array.getCapacity(), 11);
    EXPECT_EQ(array[10], 10);
}

TEST(PbArrayOfInt, WritingBeyondTheLastElementUsesAllUpToIt) {
    PbArrayOfInt array(10, 10);
    array[7] = 1;
    EXPECT_EQ(array.getNum(), 8);
    array[25] = 2; // beyond the block: grows instead of overrunning it
    EXPECT_EQ(array.getNum(), 26);
    EXPECT_EQ(array[7], 1);
    EXPECT_EQ(std::as_const(array)[99], 0);
    array[std::numeric_limits<int>::max()] = 3; // no block holds that many
    array.add(std::numeric_limits<int>::max(), nullptr);
    EXPECT_EQ(array.getNum(), 26);
}

TEST(PbArrayOfInt, CopyConstructorLeavesTheLastElementAndAssignmentDoesNot) {
    const int values[] = {4, 5, 6};
    PbArrayOfInt source, assigned;
    source.add(3, values);
    const PbArrayOfInt copy(source);
    EXPECT_EQ(copy.getNum(), 3);
    EXPECT_EQ(copy[0], 4);
    EXPECT_EQ(copy[1], 5);
    EXPECT_EQ(copy[2], 0);
    assigned = source;
    EXPECT_EQ(assigned[2], 6);
}

TEST(PbArrayOfInt, AppendsSortsAndEmpties) {
    PbArrayOfInt array(1, 0);
    array += 3;
    array += 1;
    PbArrayOfInt none;
    array += none;
    EXPECT_EQ(array.getNum(), 2);
    array += array;
    array.increasingSort();
    EXPECT_EQ(array[0], 1);
    EXPECT_EQ(array[3], 3);
    array.decreasingSort();
    EXPECT_EQ(array[0], 3);
    array.empty();
    EXPECT_EQ(array.getNum(), 0);
    none.squeeze();
    none.increasingSort();
    EXPECT_EQ(none.getNum(), 0);
}

} // namespace
