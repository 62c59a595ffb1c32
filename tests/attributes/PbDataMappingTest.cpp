#include <oravane/PbLinearDataMapping.h>
#include <oravane/PbNonLinearDataMapping.h>
#include <oravane/PbNonLinearDataMapping2.h>
#include <oravane/PiColorConverter.h>

#include "attributes/SelectionOrder.h"

#include <gtest/gtest.h>

#include "attributes/ChangeCounter.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <optional>
#include <random>

namespace {

constexpr float nan = std::numeric_limits<float>::quiet_NaN();
constexpr float infinity = std::numeric_limits<float>::infinity();

using Table = PbNonLinearDataMapping2;

const SbColor black(0, 0, 0), white(1, 1, 1), red(1, 0, 0), green(0, 1, 0), blue(0, 0, 1);

std::optional<SbColor> colorOf(const PbDataMapping &mapping, float value) {
    const SbColor *color = mapping.getRGBColor(value);
    return color ? std::optional(*color) : std::nullopt;
}

TEST(PbDataMapping, LinearIsCutComponentByComponent) {
    PbLinearDataMapping mapping;
    EXPECT_EQ(colorOf(mapping, 0.25f), SbColor(0.25f, 0.25f, 0.25f));
    EXPECT_EQ(colorOf(mapping, 2), white);
    EXPECT_EQ(colorOf(mapping, -2), black);
    mapping.setValues(10, SbColor(0.5f, 0.25f, 1), 0.2f, 0, SbColor(0.25f, 0.5f, 0), 0.4f);
    float transparency;
    EXPECT_EQ(*mapping.getRGBColor(20, transparency), SbColor(0.75f, 0, 1)) << "goes on beyond the end";
    EXPECT_NEAR(transparency, 0, 1e-6f);
    EXPECT_EQ(*mapping.getRGBColor(-40, transparency), SbColor(0, 1, 0));
    EXPECT_EQ(transparency, 1);
    mapping.setValues(3, red, 3, blue);
    for (float value : {2.0f, 3.0f, 4.0f, nan, infinity})
        for (int i = 0; i < 3; ++i) {
            const float component = (*mapping.getRGBColor(value))[i];
            EXPECT_TRUE(component >= 0 && component <= 1) << value << ": equal ends";
        }
}

TEST(PbDataMapping, ThresholdsDecideFirst) {
    PbLinearDataMapping mapping;
    mapping.setMinThreshold(0.5f);
    mapping.setMaxThreshold(0.75f, blue, 0.6f);
    EXPECT_TRUE(colorOf(mapping, 0.5f)) << "not enabled yet";
    mapping.enableThresholds(1, 1);
    float transparency = -1;
    EXPECT_EQ(mapping.getRGBColor(0.5f), nullptr);
    EXPECT_EQ(mapping.getRGBColor(0.5f, transparency), nullptr);
    EXPECT_EQ(transparency, 0);
    EXPECT_EQ(mapping.getHLSColor(0.5f), nullptr);
    EXPECT_EQ(mapping.getRGBColor(nan), nullptr);
    EXPECT_EQ(colorOf(mapping, 0.51f), SbColor(0.51f, 0.51f, 0.51f));
    EXPECT_EQ(*mapping.getRGBColor(0.75f, transparency), blue);
    EXPECT_EQ(transparency, 0.6f);
    EXPECT_EQ(mapping.getHLSColor(0.75f)[0], 240);
    mapping.setMinThreshold(0.5f, red, 0.3f);
    EXPECT_EQ(*mapping.getRGBColor(0.2f, transparency), red);
    EXPECT_EQ(transparency, 0.3f);
    mapping.setMinThreshold(0.6f);
    float value = 0;
    EXPECT_EQ(mapping.getMinRGBThreshold(value), nullptr) << "the form without colour takes it away";
    EXPECT_EQ(value, 0.6f);
    mapping.setMinThreshold(2);
    EXPECT_EQ(mapping.getRGBColor(1), nullptr) << "beyond both: the lower one decides";
    const float green120[3] = {120, 0.5f, 1};
    mapping.setMaxThreshold(-1, green120, 0.1f);
    EXPECT_EQ(*mapping.getMaxRGBThreshold(value, transparency), green);
    EXPECT_EQ(mapping.getMaxHLSThreshold(value)[0], 120);
    mapping.enableThresholds(0, 1);
    EXPECT_EQ(colorOf(mapping, 0), green);
}

TEST(PbDataMapping, TellsTheKitsOfThresholdsOnlyWhenEnabled) {
    PbLinearDataMapping mapping;
    ChangeCounter kit(mapping);
    const auto notifications = [&](auto change) {
        const int before = kit.changes();
        change();
        return kit.changes() - before;
    };
    const float *noColor = nullptr;
    EXPECT_EQ(notifications([&] { mapping.setMinThreshold(1); }), 0);
    EXPECT_EQ(notifications([&] { mapping.setMaxThreshold(1, red, 0); }), 0);
    EXPECT_EQ(notifications([&] { mapping.enableThresholds(1, 0); }), 1);
    EXPECT_EQ(notifications([&] { mapping.enableThresholds(1, 0); }), 1);
    EXPECT_EQ(notifications([&] { mapping.setMinThreshold(1, red, 0); }), 1);
    EXPECT_EQ(notifications([&] { mapping.setMinThreshold(7, noColor, 0); }), 0);
    EXPECT_EQ(notifications([&] { mapping.setMaxThreshold(2); }), 0);
    EXPECT_EQ(notifications([&] { mapping.enableTransparency(0); }), 1);
    EXPECT_EQ(notifications([&] { mapping.setValues(0, red, 1, blue); }), 1);
    EXPECT_EQ(notifications([&] { mapping.setValues(0, noColor, 1, noColor); }), 0);
    float value;
    EXPECT_EQ(*mapping.getMinRGBThreshold(value), red);
    EXPECT_EQ(value, 1) << "a null colour changes nothing";
}

TEST(PbDataMapping, FunctionsOfTheProgram) {
    PbNonLinearDataMapping mapping;
    EXPECT_EQ(colorOf(mapping, 0.25f), SbColor(0.25f, 0.25f, 0.25f));
    EXPECT_EQ(colorOf(mapping, -3), black);
    EXPECT_EQ(colorOf(mapping, 3), white);
    static int transparencyCalls;
    mapping.setTransparencyFunction([](float value) { return ++transparencyCalls, value / 10; });
    mapping.setHLSFunction([](float value) -> const float * {
        static float hls[3] = {0, 0.5f, 1};
        hls[0] = value;
        return hls;
    });
    EXPECT_EQ(colorOf(mapping, 120), green);
    EXPECT_EQ(transparencyCalls, 0) << "only asked where a transparency is";
    mapping.setRGBFunction([](float value) { return value > 0 ? &blue : nullptr; });
    float transparency;
    EXPECT_EQ(*mapping.getRGBColor(5, transparency), blue) << "takes the place of the other function";
    EXPECT_EQ(transparency, 0.5f);
    EXPECT_EQ(mapping.getRGBColor(-5), nullptr);
    mapping.setRGBFunction(nullptr);
    mapping.setTransparencyFunction(nullptr);
    EXPECT_EQ(*mapping.getRGBColor(5, transparency), white);
    EXPECT_EQ(transparency, 0);
}

TEST(PbDataMapping, Tables) {
    const float two[] = {2, 1}, three[] = {3, 0, 1}, one = 4;
    const SbColor colors[] = {green, red, blue}, sorted[] = {SbColor(0, 0, 0.5f), red, green};
    Table steps, lines, single, start;
    steps.setValues(Table::NON_LINEAR_PER_LEVEL, 2, two, colors); // 1 red, 2 green, blue above
    lines.setValues(Table::LINEAR_PER_LEVEL, 3, three, sorted);   // 0 red, 1 green, 3 half blue
    single.setValues(Table::LINEAR_PER_LEVEL, 1, &one, sorted);
    const struct {
        const Table &table;
        float value;
        SbColor expected;
    } rows[] = {
        {steps, 0.5f, red},
        {steps, 1, green},
        {steps, 1.5f, green},
        {steps, 2, blue},
        {steps, 9, blue},
        {steps, nan, blue},
        {steps, -infinity, red},
        {lines, 2, SbColor(0, 0.5f, 0.25f)},
        {lines, 0, red},
        {lines, 1, green},
        {lines, 3, SbColor(0, 0, 0.5f)},
        {lines, 0.25f, SbColor(0.75f, 0.25f, 0)},
        {lines, 5, SbColor(0, 0, 1)},
        {lines, -1, SbColor(1, 0, 0)},
        {single, 4, SbColor(0, 0, 0.5f)},
        {single, -9, SbColor(0, 0, 0.5f)},
        {start, 0.5f, SbColor(0.5f, 0.5f, 0.5f)},
    };
    for (const auto &row : rows)
        EXPECT_EQ(colorOf(row.table, row.value), row.expected) << row.value;
    EXPECT_TRUE(colorOf(lines, nan));
    int count = 0;
    const float *values = steps.getValuesList(count);
    EXPECT_EQ(std::vector<float>(values, values + count), (std::vector<float>{1, 2}));
    const float(*hls)[3] = steps.getHLSColorsList(count);
    ASSERT_EQ(count, 3);
    EXPECT_EQ(hls[0][0], 0);
    EXPECT_EQ(hls[1][0], 120);
    EXPECT_EQ(hls[2][0], 240);
    steps.setValues(Table::LINEAR_PER_LEVEL, 2, two, hls);
    EXPECT_EQ(colorOf(steps, 1), green) << "HLS colours, of the table itself";
}

TEST(PbDataMapping, TransparenciesAreSortedWithTheirColours) {
    const float values[] = {2, 1}, transparencies[] = {0.2f, 0.1f, 0.9f};
    const SbColor colors[] = {green, red, blue};
    Table table;
    table.setValues(Table::NON_LINEAR_PER_LEVEL, 2, values, colors, transparencies);
    const float expected[] = {0.1f, 0.2f, 0.9f};
    for (int i = 0; i < 3; ++i) {
        float transparency;
        table.getRGBColor(0.5f + float(i), transparency);
        EXPECT_EQ(transparency, expected[i]);
    }
    table.setValues(Table::LINEAR_PER_LEVEL, 2, values, colors, transparencies);
    float transparency;
    table.getRGBColor(1.5f, transparency);
    EXPECT_FLOAT_EQ(transparency, 0.15f);
    table.setValues(Table::LINEAR_PER_LEVEL, 2, values, colors);
    table.getRGBColor(1.5f, transparency);
    EXPECT_EQ(transparency, 0);
}

/// Compares n(n - 1) / 2 pairs and swaps.
std::vector<int> plainSelectionSort(std::vector<float> values) {
    std::vector<int> order(values.size());
    std::iota(order.begin(), order.end(), 0);
    for (std::size_t i = 0; i < values.size(); ++i) {
        std::size_t smallest = i;
        for (std::size_t j = i + 1; j < values.size(); ++j)
            if (values[j] < values[smallest])
                smallest = j;
        std::swap(values[i], values[smallest]);
        std::swap(order[i], order[smallest]);
    }
    return order;
}

TEST(PbDataMapping, EqualValuesOfATableAreOrderedBySwaps) {
    EXPECT_EQ(oravane::selectionOrder(std::vector<float>{2, 2, 1}), (std::vector<int>{2, 1, 0}));
    std::mt19937 random(3);
    for (int round = 0; round < 300; ++round) {
        std::vector<float> values(round % 40);
        for (float &value : values)
            value = static_cast<float>(random() % 9);
        EXPECT_EQ(oravane::selectionOrder(values), plainSelectionSort(values));
    }
}

TEST(PbDataMapping, TableIsSafeInsideItsOwnNotification) {
    Table table;
    std::vector<float> seen;
    ChangeCounter kit(table, [&] {
        int count;
        const float *values = table.getValuesList(count);
        seen.assign(values, values + count);
        for (float value : {-1.0f, 0.0f, 1.0f, 5.0f})
            EXPECT_EQ(colorOf(table, value).has_value(), true);
    });
    const float values[] = {1, 2, 3};
    const SbColor colors[] = {red, green, blue, white};
    table.setValues(Table::NON_LINEAR_PER_LEVEL, 3, values, colors);
    EXPECT_EQ(seen, (std::vector<float>{0, 0, 0})) << "told before the values are there";
    EXPECT_EQ(colorOf(table, 9), white);
    int count;
    table.setValues(Table::LINEAR_PER_LEVEL, 2, table.getValuesList(count), colors);
    EXPECT_EQ(colorOf(table, 1), red) << "its own values";
    EXPECT_EQ(kit.changes(), 2);

    const float bad[] = {1, nan};
    table.setValues(Table::LINEAR_PER_LEVEL, 0, values, colors);
    table.setValues(Table::LINEAR_PER_LEVEL, 2, nullptr, colors);
    table.setValues(Table::LINEAR_PER_LEVEL, 2, values, static_cast<const SbColor *>(nullptr));
    table.setValues(Table::LINEAR_PER_LEVEL, 2, values, static_cast<const float(*)[3]>(nullptr));
    table.setValues(Table::LINEAR_PER_LEVEL, 2, values, colors, nullptr);
    table.setValues(Table::LINEAR_PER_LEVEL, 2, bad, colors);
    table.setValues(static_cast<Table::Type>(2), 2, values, colors);
    EXPECT_EQ(kit.changes(), 2) << "refused";
    EXPECT_EQ(colorOf(table, 2), green);
}

TEST(PbDataMapping, ManyColoursAtOnceAreTheSingleOnes) {
    PbLinearDataMapping linear;
    linear.setValues(0, red, 0.1f, 3, blue, 0.8f);
    PbNonLinearDataMapping functions;
    functions.setRGBFunction([](float value) { return value > 2 ? nullptr : &green; });
    Table steps, lines;
    const float levels[] = {0, 1, 2}, transparencies[] = {0.1f, 0.2f, 0.3f, 0.4f};
    const SbColor colors[] = {red, green, blue, white};
    steps.setValues(Table::NON_LINEAR_PER_LEVEL, 3, levels, colors, transparencies);
    lines.setValues(Table::LINEAR_PER_LEVEL, 3, levels, colors, transparencies);
    std::vector<float> values = {nan, infinity, -infinity};
    for (float value = -1; value < 4; value += 0.125f)
        values.push_back(value);
    for (PbDataMapping *mapping : std::initializer_list<PbDataMapping *>{&linear, &functions, &steps, &lines})
        for (const bool hasThresholds : {false, true}) {
            mapping->setMinThreshold(0);
            mapping->setMaxThreshold(2.5f, white, 0.7f);
            mapping->enableThresholds(hasThresholds, hasThresholds);
            const std::size_t n = values.size();
            std::vector<SbColor> bulk(n);
            std::vector<float> bulkTransparencies(n);
            std::vector<unsigned char> hasColor(n);
            const std::size_t colored = mapping->computeColors(n, values.data(), bulk.data(),
                                                               bulkTransparencies.data(), hasColor.data());
            EXPECT_EQ(colored, static_cast<std::size_t>(std::count(hasColor.begin(), hasColor.end(), 1)));
            for (std::size_t i = 0; i < n; ++i) {
                float transparency = 0;
                const SbColor *color = mapping->getRGBColor(values[i], transparency);
                EXPECT_EQ(hasColor[i], color != nullptr) << values[i];
                EXPECT_EQ(bulk[i], color ? *color : black) << values[i];
                EXPECT_EQ(bulkTransparencies[i], transparency) << values[i];
            }
            std::vector<SbColor> colorsOnly(n);
            EXPECT_EQ(mapping->computeColors(n, values.data(), colorsOnly.data()), colored);
            EXPECT_EQ(colorsOnly, bulk);
        }
    EXPECT_EQ(linear.computeColors(3, nullptr, nullptr), 0u);
}

} // namespace
