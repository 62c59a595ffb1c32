#include <oravane/PbLinearDataMapping.h>
#include <oravane/PbNonLinearDataMapping.h>
#include <oravane/PbNonLinearDataMapping2.h>
#include <oravane/PoDataMappingElement.h>
#include <oravane/PoDebugError.h>
#include <oravane/PoLinearDataMapping.h>
#include <oravane/PoNonLinearDataMapping.h>
#include <oravane/PoNonLinearDataMapping2.h>

#include "attributes/AttributeTest.h"
#include "attributes/SelectionOrder.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <random>
#include <string>

namespace {

using Table = PbNonLinearDataMapping2;

const float *const noColor = nullptr;

std::optional<SbColor> colorOf(const PbDataMapping &mapping, float value) {
    const SbColor *color = mapping.getRGBColor(value);
    return color ? std::optional(*color) : std::nullopt;
}

/// A colour, if there is one, with its transparency.
using Look = std::pair<std::optional<SbColor>, float>;

Look lookOf(const PbDataMapping &mapping, float value) {
    float transparency = -1;
    const SbColor *color = mapping.getRGBColor(value, transparency);
    return {color ? std::optional(*color) : std::nullopt, transparency};
}

TEST(PbDataMapping, LinearIsCutComponentByComponent) {
    PbLinearDataMapping mapping;
    EXPECT_EQ(colorOf(mapping, 0.25f), SbColor(0.25f, 0.25f, 0.25f));
    mapping.setValues(10, SbColor(0.5f, 0.25f, 1), 0.2f, 0, SbColor(0.25f, 0.5f, 0), 0.4f);
    EXPECT_EQ(colorOf(mapping, 20), SbColor(0.75f, 0, 1)) << "goes on beyond the end";
    EXPECT_NEAR(lookOf(mapping, 20).second, 0, 1e-6f);
    EXPECT_EQ(lookOf(mapping, -40), Look(green, 1));
    mapping.setValues(3, red, 3, blue);
    for (float value : {2.0f, 3.0f, 4.0f, NaN, infinity})
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
    EXPECT_EQ(lookOf(mapping, 0.5f), Look(std::nullopt, 0));
    EXPECT_EQ(mapping.getHLSColor(0.5f), nullptr);
    EXPECT_EQ(colorOf(mapping, NaN), std::nullopt);
    EXPECT_TRUE(colorOf(mapping, 0.51f));
    EXPECT_EQ(lookOf(mapping, 0.75f), Look(blue, 0.6f));
    EXPECT_EQ(mapping.getHLSColor(0.75f)[0], 240);
    mapping.setMinThreshold(0.5f, red, 0.3f);
    EXPECT_EQ(lookOf(mapping, 0.2f), Look(red, 0.3f));
    mapping.setMinThreshold(0.6f);
    float value = 0, transparency;
    EXPECT_EQ(mapping.getMinRGBThreshold(value), nullptr) << "the form without colour takes it away";
    EXPECT_EQ(value, 0.6f);
    mapping.setMinThreshold(2);
    EXPECT_EQ(colorOf(mapping, 1), std::nullopt) << "beyond both: the lower one decides";
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
    const std::pair<void (*)(PbLinearDataMapping &), int> rows[] = {
        {[](auto &m) { m.setMinThreshold(1); }, 0},
        {[](auto &m) { m.setMaxThreshold(1, red, 0); }, 0},
        {[](auto &m) { m.enableThresholds(1, 0); }, 1},
        {[](auto &m) { m.enableThresholds(1, 0); }, 2}, // each time
        {[](auto &m) { m.setMinThreshold(1); }, 3},
        {[](auto &m) { m.setMinThreshold(1, red, 0); }, 4},
        {[](auto &m) { m.setMaxThreshold(2); }, 4}, // off
        {[](auto &m) { m.setMinThreshold(7, noColor, 0); }, 4},
        {[](auto &m) { m.setValues(0, noColor, 1, noColor); }, 4},
        {[](auto &m) { m.enableTransparency(0); }, 5},
        {[](auto &m) { m.setValues(0, red, 1, blue); }, 6},
    };
    for (const auto &[change, changes] : rows) {
        change(mapping);
        EXPECT_EQ(kit.changes(), changes);
    }
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
    EXPECT_EQ(lookOf(mapping, 5), Look(blue, 0.5f)) << "takes the place of the other function";
    EXPECT_EQ(colorOf(mapping, -5), std::nullopt);
    mapping.setRGBFunction(nullptr);
    mapping.setTransparencyFunction(nullptr);
    EXPECT_EQ(lookOf(mapping, 5), Look(white, 0));
}

TEST(PbDataMapping, Tables) {
    const float two[] = {2, 1}, three[] = {3, 0, 1}, one = 4;
    const float transparencies[] = {0.2f, 0.1f, 0.9f}, exact[] = {0.25f, 0, 1};
    const SbColor navy(0, 0, 0.5f), colors[] = {green, red, blue}, sorted[] = {navy, red, green};
    Table steps, lines, single, start, clear;
    // Steps: red below 1, green below 2, else blue. Lines: red at 0, green at 1, navy at 3.
    steps.setValues(Table::NON_LINEAR_PER_LEVEL, 2, two, colors, transparencies);
    clear.setValues(Table::NON_LINEAR_PER_LEVEL, 2, two, colors, transparencies);
    clear.setValues(Table::LINEAR_PER_LEVEL, 2, two, colors);
    lines.setValues(Table::LINEAR_PER_LEVEL, 3, three, sorted, exact);
    single.setValues(Table::LINEAR_PER_LEVEL, 1, &one, sorted);
    const struct {
        const Table &table;
        float value;
        SbColor color;
        float transparency;
    } rows[] = {
        {steps, 0.5f, red, 0.1f},
        {steps, 1, green, 0.2f},
        {steps, 2, blue, 0.9f},
        {steps, NaN, blue, 0.9f},
        {steps, -infinity, red, 0.1f},
        {clear, 1.5f, SbColor(0.5f, 0.5f, 0), 0},
        {lines, 0, red, 0},
        {lines, 2, SbColor(0, 0.5f, 0.25f), 0.625f},
        {lines, 3, navy, 0.25f},
        {lines, 0.25f, SbColor(0.75f, 0.25f, 0), 0.25f},
        {lines, 5, blue, 0},
        {lines, -1, red, 0},
        {single, 4, navy, 0},
        {single, -9, navy, 0},
        {start, 0.5f, grey, 0},
    };
    for (const auto &[table, value, color, transparency] : rows) {
        EXPECT_EQ(colorOf(table, value), color) << value;
        EXPECT_EQ(lookOf(table, value), Look(color, transparency)) << value;
    }
    EXPECT_TRUE(colorOf(lines, NaN));
    int count = 0;
    const float *values = steps.getValuesList(count);
    EXPECT_EQ(Values(values, values + count), (Values{1, 2}));
    const float(*hls)[3] = steps.getHLSColorsList(count);
    ASSERT_EQ(count, 3);
    EXPECT_EQ((Values{hls[0][0], hls[1][0], hls[2][0]}), (Values{0, 120, 240}));
    steps.setValues(Table::LINEAR_PER_LEVEL, 2, two, hls);
    EXPECT_EQ(colorOf(steps, 1), green) << "HLS colours, of the table itself";
}

/// Compares n(n - 1) / 2 pairs and swaps.
std::vector<int> plainSelectionSort(Values values) {
    std::vector<int> order(values.size());
    std::iota(order.begin(), order.end(), 0);
    for (std::size_t i = 0; i < values.size(); ++i) {
        const auto smallest = std::min_element(values.begin() + i, values.end()) - values.begin();
        std::swap(values[i], values[smallest]);
        std::swap(order[i], order[smallest]);
    }
    return order;
}

TEST(PbDataMapping, EqualValuesOfATableAreOrderedBySwaps) {
    EXPECT_EQ(oravane::selectionOrder(Values{2, 2, 1}), (std::vector<int>{2, 1, 0}));
    std::mt19937 random(3);
    for (int round = 0; round < 300; ++round) {
        Values values(round % 40);
        for (float &value : values)
            value = static_cast<float>(random() % 9);
        EXPECT_EQ(oravane::selectionOrder(values), plainSelectionSort(values));
    }
}

TEST(PbDataMapping, TableIsSafeInsideItsOwnNotification) {
    Table table;
    Values seen;
    int count;
    ChangeCounter kit(table, [&] {
        const float *values = table.getValuesList(count);
        seen.assign(values, values + count);
        for (float value : {-1.0f, 0.0f, 1.0f, 5.0f})
            EXPECT_TRUE(colorOf(table, value));
    });
    const float values[] = {1, 2, 3}, bad[] = {1, NaN};
    const SbColor colors[] = {red, green, blue, white};
    table.setValues(Table::NON_LINEAR_PER_LEVEL, 3, values, colors);
    EXPECT_EQ(seen, (Values{0, 0, 0})) << "told before the values are there";
    EXPECT_EQ(colorOf(table, 9), white);
    table.setValues(Table::LINEAR_PER_LEVEL, 2, table.getValuesList(count), colors);
    EXPECT_EQ(colorOf(table, 1), red) << "its own values";
    EXPECT_EQ(kit.changes(), 2);
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
    Values values = {NaN, infinity, -infinity};
    for (float value = -1; value < 4; value += 0.125f)
        values.push_back(value);
    const std::size_t n = values.size();
    for (PbDataMapping *mapping : std::initializer_list<PbDataMapping *>{&linear, &functions, &steps, &lines})
        for (const bool hasThresholds : {false, true}) {
            mapping->setMinThreshold(0);
            mapping->setMaxThreshold(2.5f, white, 0.7f);
            mapping->enableThresholds(hasThresholds, hasThresholds);
            std::vector<SbColor> bulk(n), colorsOnly(n);
            Values clear(n);
            std::vector<unsigned char> hasColor(n);
            std::size_t numColored = 0;
            const std::size_t told =
                mapping->computeColors(n, values.data(), bulk.data(), clear.data(), hasColor.data());
            for (std::size_t i = 0; i < n; ++i) {
                const Look look(hasColor[i] ? std::optional(bulk[i]) : std::nullopt, clear[i]);
                EXPECT_EQ(look, lookOf(*mapping, values[i])) << values[i];
                EXPECT_TRUE(hasColor[i] || bulk[i] == black) << values[i];
                numColored += hasColor[i];
            }
            EXPECT_EQ(told, numColored);
            EXPECT_EQ(mapping->computeColors(n, values.data(), colorsOnly.data()), told);
            EXPECT_EQ(colorsOnly, bulk);
        }
    EXPECT_EQ(linear.computeColors(3, nullptr, nullptr), 0u);
}

const PbDataMapping *mappingBehind(SoNode *node) {
    return stateBehind<PoDataMappingElement>(node);
}

TEST(PoDataMapping, FieldsReachTheMappingAtTheNextAction) {
    EXPECT_EQ(mappingBehind(nullptr), nullptr);
    const test::Ref<PoLinearDataMapping> node(new PoLinearDataMapping);
    const PbDataMapping *mapping = mappingBehind(node.get());
    EXPECT_EQ(mapping, node->getDataMapping());
    node->color1 = red;
    node->transparency2 = 0.5f;
    node->minThreshold = 0.25f;
    node->minThresholdColor = green;
    node->minThresholdTransparency = 0.75f;
    node->minThresholdEnabled = TRUE;
    node->transparencyEnabled = TRUE;
    node->transparencyValueDeletedParts = 0.5f;
    EXPECT_EQ(*mapping->getRGBColor(0), black) << "not yet";
    EXPECT_FALSE(mapping->isTransparencyEnabled());
    mappingBehind(node.get());
    EXPECT_EQ(lookOf(*mapping, 0.25f), Look(green, 0.75f));
    EXPECT_EQ(lookOf(*mapping, 0.5f), Look(SbColor(1, 0.5f, 0.5f), 0.25f));
    EXPECT_TRUE(mapping->isTransparencyEnabled());
    EXPECT_EQ(mapping->getTransparencyValueDeletedParts(), 0.5f);
    node->maxThresholdEnabled = TRUE;
    node->maxThresholdColor = blue;
    EXPECT_EQ(*node->getColor(1), blue) << "asking the node brings it up to date";
    EXPECT_EQ(*node->getColor(0.25f), green) << "the other threshold stays";
}

template <class Field, class Entries>
void fill(Field &field, const Entries &entries) {
    field.setNum(static_cast<int>(entries.size()));
    field.setValues(0, static_cast<int>(entries.size()), entries.data());
}

TEST(PoDataMapping, TheTableIsTakenWhenItIsComplete) {
    const struct {
        const char *name;
        int type;
        Values values;
        std::vector<SbColor> colors;
        Values transparencies;
        SbColor colorAt1;
        float transparencyAt1;
        std::size_t messages;
    } rows[] = {
        {"steps", 0, {2, 1}, {green, red, blue}, {0.2f, 0.1f, 0.3f}, green, 0.2f, 0},
        {"steps, a colour too many", 0, {2, 1}, {green, red, blue, white}, {}, green, 0, 0},
        {"steps, a colour missing", 0, {2, 1}, {green, red}, {}, grey, 0, 1},
        {"lines", 1, {0, 2}, {red, blue}, {0, 0.5f}, SbColor(0.5f, 0, 0.5f), 0.25f, 0},
        {"lines, other transparencies", 1, {0, 2}, {red, blue}, {0.5f}, SbColor(0.5f, 0, 0.5f), 0, 0},
        {"lines, a colour missing", 1, {0, 2}, {red}, {}, grey, 0, 0},
        {"no value", 1, {}, {}, {}, grey, 0, 0},
        {"no such type", 7, {0, 2}, {red, blue}, {}, grey, 0, 0},
    };
    std::vector<std::string> messages;
    PoDebugError::setHandlerCallback(
        [](const SoError *error, void *texts) {
            static_cast<decltype(messages) *>(texts)->push_back(error->getDebugString().getString());
        },
        &messages);
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        messages.clear();
        const test::Ref<PoNonLinearDataMapping2> node(new PoNonLinearDataMapping2);
        fill(node->value, Values{0, 2});
        fill(node->color, std::vector{black, white});
        mappingBehind(node.get());
        node->type = row.type;
        fill(node->value, row.values);
        fill(node->color, row.colors);
        fill(node->transparency, row.transparencies);
        EXPECT_TRUE(messages.empty()) << "before the action";
        mappingBehind(node.get());
        EXPECT_EQ(lookOf(*mappingBehind(node.get()), 1), Look(row.colorAt1, row.transparencyAt1));
        EXPECT_EQ(messages, std::vector<std::string>(
                                row.messages, "Oravane error in PoNonLinearDataMapping2():"
                                              "The number of colours must be >= to number of values + 1"))
            << "once for the change, not for each use";
    }
    PoDebugError::setHandlerCallback(nullptr, nullptr);
}

TEST(PoDataMapping, SurvivesFiles) {
    const struct {
        const char *text;
        SbColor below, at0, at1;
    } rows[] = {
        {"PoLinearDataMapping { value1 -2 color1 0 1 0 value2 2 color2 0 0 1 maxThresholdEnabled TRUE "
         "maxThreshold 1 maxThresholdColor 1 0 0 }",
         green, SbColor(0, 0.5f, 0.5f), red},
        {"PoNonLinearDataMapping2 { type NON_LINEAR_PER_LEVEL value [ 1, -1 ] "
         "color [ 1 0 0, 0 1 0, 0 0 1 ] transparency [ 0.1, 0.2, 0.3 ] }",
         green, red, blue},
        {"PoNonLinearDataMapping2 { type 0 value [ 1, -1 ] color [ 1 0 0, 0 1 0, 0 0 1 ] }", green, red,
         blue},
        {"PoNonLinearDataMapping { minThresholdEnabled TRUE minThreshold -2 minThresholdColor 0 1 0 }", green,
         black, white},
    };
    for (const auto &row : rows)
        for (const bool isBinary : {false, true}) {
            const auto node = throughFile<PoDataMapping>(row.text, isBinary);
            ASSERT_TRUE(node) << row.text << isBinary;
            EXPECT_EQ(*node->getColor(-3), row.below) << row.text;
            EXPECT_EQ(*node->getColor(0), row.at0) << row.text;
            EXPECT_EQ(*node->getColor(1), row.at1) << row.text;
        }
}

TEST(PoDataMapping, FunctionsTellTheSceneAndAreCopied) {
    const test::Ref<PoNonLinearDataMapping> node(new PoNonLinearDataMapping);
    const SbUniqueId before = node->getNodeId();
    node->setColorFunction([](float value) { return value > 0 ? &red : nullptr; });
    EXPECT_NE(node->getNodeId(), before);
    node->setTransparencyFunction([](float value) { return value / 4; });
    node->minThreshold = -1;
    node->minThresholdEnabled = TRUE;
    const test::Ref<PoNonLinearDataMapping> copy(static_cast<PoNonLinearDataMapping *>(node->copy()));
    for (PoNonLinearDataMapping *each : {node.get(), copy.get()}) {
        float transparency = 0;
        EXPECT_EQ(*each->getColor(2, transparency), red);
        EXPECT_EQ(transparency, 0.5f);
        EXPECT_EQ(each->getColor(-0.5f), nullptr);
        EXPECT_EQ(*each->getColor(-2), black);
    }
    EXPECT_NE(copy->getDataMapping(), node->getDataMapping());
}

} // namespace
