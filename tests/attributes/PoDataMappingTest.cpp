#include <oravane/PoDataMappingElement.h>
#include <oravane/PoDebugError.h>
#include <oravane/PoLinearDataMapping.h>
#include <oravane/PoNonLinearDataMapping.h>
#include <oravane/PoNonLinearDataMapping2.h>

#include "attributes/StateBehind.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const SbColor black(0, 0, 0), white(1, 1, 1), red(1, 0, 0), green(0, 1, 0), blue(0, 0, 1);

/// The messages of the library while it lives.
struct Messages {
    std::vector<std::string> texts;

    Messages() {
        PoDebugError::setHandlerCallback(
            [](const SoError *error, void *data) {
                static_cast<Messages *>(data)->texts.push_back(error->getDebugString().getString());
            },
            this);
    }
    ~Messages() { PoDebugError::setHandlerCallback(nullptr, nullptr); }
};

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
    float transparency = 0;
    EXPECT_EQ(*mapping->getRGBColor(0.25f, transparency), green);
    EXPECT_EQ(transparency, 0.75f);
    EXPECT_EQ(*mapping->getRGBColor(0.5f, transparency), SbColor(1, 0.5f, 0.5f));
    EXPECT_EQ(transparency, 0.25f);
    EXPECT_TRUE(mapping->isTransparencyEnabled());
    EXPECT_EQ(mapping->getTransparencyValueDeletedParts(), 0.5f);
    node->maxThresholdEnabled = TRUE;
    node->maxThresholdColor = blue;
    EXPECT_EQ(*node->getColor(1, transparency), blue) << "asking the node brings it up to date";
    EXPECT_EQ(*node->getColor(0.25f), green) << "the other threshold stays";
}

TEST(PoDataMapping, TheTableIsTakenWhenItIsComplete) {
    struct Row {
        const char *name;
        int type;
        std::vector<float> values;
        std::vector<SbColor> colors;
        std::vector<float> transparencies;
        SbColor colorAt1;
        float transparencyAt1;
        std::size_t messages;
    };
    const SbColor grey(0.5f, 0.5f, 0.5f);
    const Row rows[] = {
        {"steps", 0, {2, 1}, {green, red, blue}, {0.2f, 0.1f, 0.3f}, green, 0.2f, 0},
        {"steps, a colour too many", 0, {2, 1}, {green, red, blue, white}, {}, green, 0, 0},
        {"steps, a colour missing", 0, {2, 1}, {green, red}, {}, grey, 0, 1},
        {"lines", 1, {0, 2}, {red, blue}, {0, 0.5f}, SbColor(0.5f, 0, 0.5f), 0.25f, 0},
        {"lines, other transparencies", 1, {0, 2}, {red, blue}, {0.5f}, SbColor(0.5f, 0, 0.5f), 0, 0},
        {"lines, a colour missing", 1, {0, 2}, {red}, {}, grey, 0, 0},
        {"no value", 1, {}, {}, {}, grey, 0, 0},
        {"no such type", 7, {0, 2}, {red, blue}, {}, grey, 0, 0},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        Messages messages;
        const test::Ref<PoNonLinearDataMapping2> node(new PoNonLinearDataMapping2);
        const float ends[] = {0, 2};
        const SbColor greys[] = {black, white};
        node->value.setValues(0, 2, ends);
        node->color.setValues(0, 2, greys);
        mappingBehind(node.get());
        node->type = row.type;
        for (SoMField *field : {static_cast<SoMField *>(&node->value), static_cast<SoMField *>(&node->color),
                                static_cast<SoMField *>(&node->transparency)})
            field->setNum(0);
        node->value.setValues(0, static_cast<int>(row.values.size()), row.values.data());
        node->color.setValues(0, static_cast<int>(row.colors.size()), row.colors.data());
        node->transparency.setValues(0, static_cast<int>(row.transparencies.size()),
                                     row.transparencies.data());
        EXPECT_TRUE(messages.texts.empty()) << "before the action";
        mappingBehind(node.get());
        float transparency = -1;
        EXPECT_EQ(*node->getColor(1, transparency), row.colorAt1);
        EXPECT_EQ(transparency, row.transparencyAt1);
        EXPECT_EQ(messages.texts.size(), row.messages) << "once for the change, not for each use";
        for (const std::string &text : messages.texts)
            EXPECT_EQ(text, "Oravane error in PoNonLinearDataMapping2():"
                            "The number of colours must be >= to number of values + 1");
    }
}

TEST(PoDataMapping, SurvivesFiles) {
    const char *linear =
        "#Inventor V2.1 ascii\nPoLinearDataMapping { value1 -2 color1 0 1 0 value2 2 color2 0 0 1 "
        "maxThresholdEnabled TRUE maxThreshold 1 maxThresholdColor 1 0 0 }\n";
    const char *table =
        "#Inventor V2.1 ascii\nPoNonLinearDataMapping2 { type NON_LINEAR_PER_LEVEL value [ 1, -1 ] "
        "color [ 1 0 0, 0 1 0, 0 0 1 ] transparency [ 0.1, 0.2, 0.3 ] }\n";
    const char *tableByNumber = "#Inventor V2.1 ascii\nPoNonLinearDataMapping2 { type 0 value [ 1, -1 ] "
                                "color [ 1 0 0, 0 1 0, 0 0 1 ] }\n";
    const struct {
        const char *text;
        SbColor below, at0, at1;
    } rows[] = {
        {linear, green, SbColor(0, 0.5f, 0.5f), red},
        {table, green, red, blue},
        {tableByNumber, green, red, blue},
        {"#Inventor V2.1 ascii\nPoNonLinearDataMapping { minThresholdEnabled TRUE minThreshold -2 "
         "minThresholdColor 0 1 0 }\n",
         green, black, white},
    };
    for (const auto &row : rows)
        for (const bool isBinary : {false, true}) {
            const auto read = readNode<PoDataMapping>(row.text);
            ASSERT_TRUE(read) << row.text;
            const auto again = readNode<PoDataMapping>(test::written(read.get(), isBinary));
            ASSERT_TRUE(again) << row.text << isBinary;
            EXPECT_EQ(*again->getColor(-3), row.below) << row.text;
            EXPECT_EQ(*again->getColor(0), row.at0) << row.text;
            EXPECT_EQ(*again->getColor(1), row.at1) << row.text;
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
