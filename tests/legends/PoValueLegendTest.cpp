#include "CommaLocale.h"
#include "LegendScene.h"

#include <oravane/PbNumericDisplayFormat.h>
#include <oravane/PoIsovaluesList.h>
#include <oravane/PoLinearDataMapping.h>
#include <oravane/PoLinearValueLegend.h>
#include <oravane/PoNonLinearDataMapping.h>
#include <oravane/PoNonLinearDataMapping2.h>
#include <oravane/PoNonLinearValueLegend1.h>
#include <oravane/PoNonLinearValueLegend2.h>
#include <oravane/PoNonLinearValueLegend3.h>
#include <oravane/PoNumericDisplayFormat.h>

#include <gtest/gtest.h>

namespace {

using test::Box;
using test::INFINITE;
using test::NOT_A_NUMBER;
using test::Ref;
using test::Text;

// What stands before a legend.
constexpr const char *LINEAR = "PoLinearDataMapping { value1 -2.3 color1 0 0 1 value2 30.4 color2 1 1 0 } ";
constexpr const char *FALLING = "PoLinearDataMapping { value1 30.4 color1 0 0 1 value2 -2.3 color2 1 1 0 } ";
constexpr const char *CUT = "PoLinearDataMapping { value1 0 value2 15000 color1 0.2 0 0 color2 0 1 0.5 "
                            "minThresholdEnabled TRUE minThreshold 1000 minThresholdColor 0 0 1 "
                            "maxThresholdEnabled TRUE maxThreshold 12500 maxThresholdColor 1 0 0 } ";
constexpr const char *TABLE =
    "PoNonLinearDataMapping2 { type LINEAR_PER_LEVEL value [ 0, 1, 2, 5, 10, 20, 50, 100 ] color [ 0 0 1, 0 "
    ".5 1, 0 1 1, 0 1 0, 1 1 0, 1 .5 0, 1 0 0, .5 0 0 ] minThresholdEnabled TRUE minThreshold 1 } ";
constexpr const char *STEPS = "PoNonLinearDataMapping2 { type NON_LINEAR_PER_LEVEL value [ 10, 20, 30, 40 ] "
                              "color [ 0 0 1, 0 1 1, 0 1 0, 1 1 0, 1 0 0 ] } ";
constexpr const char *LEVELS = "PoIsovaluesList { isovaluesList [ 3, 1, 1, 2, 5, 8, 5 ] } ";

template <class Legend>
struct Scene : test::LegendScene<Legend> {
    explicit Scene(const std::string &before, const std::string &fields = "") {
        if (const Ref<SoSeparator> nodes = test::readBack("#Inventor V2.1 ascii\n" + before))
            for (int k = nodes->getNumChildren() - 1; k >= 0; --k)
                this->root->insertChild(nodes->getChild(k), 0);
        this->set(fields + " ");
        this->traverse();
    }
    template <class Node>
    Node *before() const {
        for (int k = 0; k < this->root->getNumChildren(); ++k)
            if (auto *node = dynamic_cast<Node *>(this->root->getChild(k)))
                return node;
        return nullptr;
    }
};

/// Texts from below to above, or from left to right.
template <class Legend>
std::string wordsOf(const std::string &before, const std::string &fields = "") {
    return Scene<Legend>(before, fields).words();
}

TEST(PoValueLegend, NothingCoversAnythingInAnyArrangement) {
    const auto check = [](const auto &scene, const std::string &before) {
        scene.expectClear();
        const bool hasThousands = before == CUT || before.find("59319") != std::string::npos;
        EXPECT_EQ(scene.texts("multFactor").size(), hasThousands ? 2u : 0u);
        EXPECT_GT(scene.fontSize(), 0);
    };
    std::string forty = "PoIsovaluesList { isovaluesList [ ", close = forty;
    for (int i = 0; i < 40; ++i) {
        forty += std::to_string(i) + ",";
        close += std::to_string(i * i * i) + ",";
    }
    for (const std::string &before : {std::string(LINEAR), std::string(CUT), std::string(TABLE),
                                      std::string(STEPS), forty + "] }", close + "] }" + STEPS})
        for (const char *place : {"end 1 1", "end 1 4", "start 7 1 end 0 0"})
            for (const auto &[texts, ofBar] :
                 {std::pair("POS_RIGHT", ""),
                  {"POS_LEFT", " maxValueSize 0.2"},
                  {"POS_TOP numColumns 16", " maxValueSize 9"},
                  {"POS_BOTTOM valueAddStringVisibility TRUE valueAddString \" m\" numColumns 3 "
                   "incrementType HORIZONTAL_INCREMENT titlePosition POS_LEFT",
                   ""}})
                for (const char *title : {"VISIBILITY_OFF", "VISIBILITY_ON"}) {
                    const std::string fields = std::string(place) +
                                               " titleString \"Depth\" titleVisibility " + title +
                                               " valuePosition " + texts;
                    SCOPED_TRACE(before + fields);
                    check(Scene<PoLinearValueLegend>(before, fields + ofBar), before);
                    check(Scene<PoNonLinearValueLegend3>(before, fields + ofBar), before);
                    check(Scene<PoNonLinearValueLegend1>(before, fields), before);
                    check(Scene<PoNonLinearValueLegend2>(before, fields), before);
                    ASSERT_FALSE(testing::Test::HasFailure());
                }
}

TEST(PoValueLegend, TextsAreThoseOfTheValuesShown) {
    struct Row {
        const char *before, *fields, *ranges, *values, *bar;
    };
    const std::string hidden = std::string(LEVELS) + "PoNonLinearDataMapping { } ";
    for (const Row &row :
         {Row{LEVELS, "", "<1|1 _ 2|2 _ 3|3 _ 5|5 _ 8|>8|", "1|2|3|5|8|", "1|2|3|5|8|"},
          {LEVELS, "periodValue 2", "<1|1 _ 2|3 _ 5|>8|", "1|3|8|", "1|3|8|"},
          {LEVELS, "periodValue 3", "<1|1 _ 2|>8|", "1|5|", "1|5|"},
          {LEVELS, "periodValue 0", "<1|1 _ 2|2 _ 3|3 _ 5|5 _ 8|>8|", "1|2|3|5|8|", "1|2|3|5|8|"},
          {LEVELS, "firstValue 2 lastValue 4", "<1|2 _ 3|3 _ 5|>5|", "2|3|5|", "2|3|5|"},
          {LEVELS, "firstValue 4 lastValue 2", "<1|1 _ 2|2 _ 3|3 _ 5|5 _ 8|>8|", "1|2|3|5|8|", "1|2|3|5|8|"},
          {LEVELS, "firstValue -7 lastValue -2", "<1|1 _ 2|2 _ 3|3 _ 5|5 _ 8|>8|", "1|2|3|5|8|",
           "1|2|3|5|8|"},
          {LEVELS, "firstValue 5", "<1|>8|", "8|", "8|"},
          {LEVELS, "valueAddStringVisibility TRUE valueAddString \"m\" lastValue 2", "<1m|1 _ 2m|>2m|",
           "1m|2m|", "1m|2m|"},
          {hidden.c_str(), "lastValue 2", "<1|1 _ 2|>2|", "1|2|", "1|2|"},
          {LINEAR, "lastValue 3", "<0|0 _ 4|4 _ 8|>8|", "0|4|8|", "0|4|8|"},
          {FALLING, "lastValue 3", "<0|0 _ 4|4 _ 8|>8|", "0|4|8|", "0|4|8|"},
          {CUT, "firstValue 5", "UNDEF<|<2|10 _ 12|>12|UNDEF>|", "UNDEF<|10|12|UNDEF>|",
           "UNDEF<|10|12|UNDEF>|"},
          {TABLE, "lowerUndefString low lastValue 3", "low|<1|1 _ 2|2 _ 5|>5|", "low|1|2|5|", "low|1|2|5|"},
          {STEPS, "lastValue 2", "<10|10 _ 20|>20|", "10|20|", "10|20|"},
          {"PoIsovaluesList { isovaluesList [ 0.25, 0.25 ] }", "", "<0.25|>0.25|", "0.25|", "0.25|"},
          {"PoIsovaluesList { isovaluesList [ 0, 0.01, 100 ] }", "",
           "<0.00|0.00 _ 0.01|0.01 _ 100.00|>100.00|", "0.00|0.01|100.00|", "0.00|0.01|100.00|"},
          {"PoIsovaluesList { isovaluesList [ 0, 1, 5, 7 ] }", "firstValue 3", "<0|5 _ 7|>7|", "5|7|",
           "5|7|"},
          {"PoIsovaluesList { isovaluesList [] }", "", "", "", ""},
          {"PoNonLinearDataMapping { }", "", "", "", ""},
          {"PoLinearDataMapping { value1 3 value2 3 }", "", "", "", ""},
          {"", "", "", "", ""}}) {
        SCOPED_TRACE(std::string(row.before) + row.fields);
        EXPECT_EQ(wordsOf<PoNonLinearValueLegend1>(row.before, row.fields), row.ranges);
        EXPECT_EQ(wordsOf<PoNonLinearValueLegend2>(row.before, row.fields), row.values);
        EXPECT_EQ(wordsOf<PoNonLinearValueLegend3>(row.before, row.fields), row.bar);
        EXPECT_EQ(wordsOf<PoLinearValueLegend>(row.before, row.fields), row.bar);
    }
    EXPECT_EQ(
        wordsOf<PoNonLinearValueLegend1>(
            LEVELS, "lastValue 2 lessLevelString \"below \" greaterLevelString + valueSeparatorString .."),
        "below 1|1..2|+2|");
    const CommaLocale locale;
    EXPECT_EQ(wordsOf<PoNonLinearValueLegend2>("PoIsovaluesList { isovaluesList [ 0.5, 0.75 ] }"),
              "0.50|0.75|");
}

TEST(PoValueLegend, BarsHaveTheColorsOfTheMappingAtTheirPlaces) {
    struct Row {
        const char *before, *fields;
        float from, to;
    };
    for (const Row &row : {Row{LINEAR, "", -2.3f, 30.4f},
                           {FALLING, "valueDistribution MIN_MAX_VALUES", -2.3f, 30.4f},
                           {LINEAR, "valueDistribution LINEAR_VALUES", 0, 28},
                           {LINEAR, "firstValue 3", 8, 30.4f},
                           {CUT, "", 1000, 12500},
                           {TABLE, "", 1, 100},
                           {STEPS, "", 10, 40}}) {
        for (const char *place : {" end 1 5", " end 5 1"}) {
            SCOPED_TRACE(std::string(row.before) + row.fields + place);
            const Scene<PoLinearValueLegend> scene(row.before, row.fields + std::string(place));
            const int axis = place[5] == '1' ? 1 : 0;
            const SbBox2f bar = scene.boxes().back().place;
            const float low = bar.getMin()[axis], length = bar.getSize()[axis];
            const auto *mapping = scene.template before<PoDataMapping>()->getDataMapping();
            const SoCoordinate3 *points = scene.template in<SoCoordinate3>("box");
            const SoMaterial *colors = scene.template in<SoMaterial>("box");
            int inBar = 0;
            for (int k = 0; k < points->point.getNum(); ++k) {
                const int opposite = k / 4 * 4 + (k % 4 + 2) % 4;
                const float share = (points->point[k][axis] - low) / length;
                const float inwards = (points->point[opposite][axis] - low) / length;
                if (std::min(share, inwards) < -1e-3f || std::max(share, inwards) > 1 + 1e-3f)
                    continue; // the box of a threshold
                ++inBar;
                // Just within the face, where the mapping has steps.
                const float value = row.from + (0.9999f * share + 0.0001f * inwards) * (row.to - row.from);
                EXPECT_TRUE(mapping->getRGBColor(value)->equals(colors->diffuseColor[k], 0.01f)) << value;
            }
            EXPECT_GE(inBar, 4 * 3);
        }
    }
    // Bands have the colour of the level below, as filled contours do.
    const Scene<PoNonLinearValueLegend3> bands(std::string(LEVELS) + LINEAR, "end 1 5");
    const auto *mapping = bands.before<PoDataMapping>()->getDataMapping();
    const float levels[] = {1, 2, 3, 5, 8};
    const SoMFColor &colors = bands.in<SoMaterial>("box")->diffuseColor;
    ASSERT_EQ(colors.getNum(), 16);
    for (int k = 0; k < 16; ++k)
        EXPECT_EQ(colors[k], *mapping->getRGBColor(levels[k / 4]));
}

TEST(PoValueLegend, LabelsStandAtTheirValues) {
    struct Row {
        const char *before, *fields;
        std::vector<float> positions; ///< in the bar, from 0 to 1
    };
    for (const Row &row :
         {Row{"PoIsovaluesList { isovaluesList [ 0, 2, 3, 8 ] }", "", {0, 0.25f, 0.375f, 1}},
          {"PoIsovaluesList { isovaluesList [ 0, 2, 3, 8 ] }",
           "valueDistribution LINEAR_VALUES",
           {0, 1 / 3.f, 2 / 3.f, 1}},
          {"PoIsovaluesList { isovaluesList [ 0, 2, 3, 8 ] }", "valueDistribution MIN_MAX_VALUES", {0, 1}},
          {"PoIsovaluesList { isovaluesList [ 4 ] }", "", {0.5f}},
          {"PoLinearDataMapping { value1 -1 value2 9 }",
           "",
           {0, .1f, .2f, .3f, .4f, .5f, .6f, .7f, .8f, .9f, 1}},
          {"PoLinearDataMapping { value1 -1.5 value2 2.5 }",
           "valueDistribution MIN_MAX_VALUES valuePosition POS_LEFT",
           {0, 1}}})
        for (const char *place : {" end 1 5", " end 9 1"}) {
            SCOPED_TRACE(std::string(row.before) + row.fields + place);
            const Scene<PoLinearValueLegend> scene(row.before, row.fields + std::string(place));
            const int axis = place[5] == '1' ? 1 : 0;
            const SbBox2f bar = scene.boxes().back().place;
            const std::vector<Text> texts = scene.texts();
            ASSERT_EQ(texts.size(), row.positions.size());
            for (std::size_t i = 0; i < texts.size(); ++i)
                EXPECT_NEAR(texts[i].place.getCenter()[axis],
                            bar.getMin()[axis] + row.positions[i] * bar.getSize()[axis],
                            0.15f * scene.fontSize());
            const bool isBefore = std::string(row.fields).find("LEFT") != std::string::npos;
            const bool isLow = texts[0].place.getCenter()[1 - axis] < bar.getCenter()[1 - axis];
            EXPECT_EQ(isLow, isBefore == (axis == 1)) << "at the right or below, else at the left or above";
        }
    EXPECT_EQ(wordsOf<PoLinearValueLegend>(LINEAR, "valueDistribution MIN_MAX_VALUES"), "-2.3|30.4|");
}

TEST(PoValueLegend, BoxesHaveTheColorsOfTheirValues) {
    const SbColor blue(0, 0, 1), cyan(0, 1, 1), green(0, 1, 0), yellow(1, 1, 0), red(1, 0, 0);
    struct Row {
        const char *before, *fields;
        std::vector<std::pair<SbColor, SbColor>> ranges;
        std::vector<SbColor> values;
    };
    const auto at = [](float value) { return SbColor(value / 10, 0, 0); };
    const std::string list = std::string("PoIsovaluesList { isovaluesList [ 2, 4, 6 ] } "),
                      reds = "PoLinearDataMapping { value2 10 color2 1 0 0 "
                             "maxThresholdColor 0 1 0 maxThreshold 6 maxThresholdTransparency 0.25 ";
    const std::string plain = list + reds + "}", cut = list + reds + "maxThresholdEnabled TRUE }";
    const float step = 4 / 3.f;
    for (const Row &row :
         {Row{STEPS,
              "",
              {{blue, blue}, {cyan, cyan}, {green, green}, {yellow, yellow}, {red, red}},
              {cyan, green, yellow, red}},
          {plain.c_str(),
           "",
           {{at(2 - step), at(2)}, {at(2), at(4)}, {at(4), at(6)}, {at(6), at(6 + step)}},
           {at(2), at(4), at(6)}},
          {cut.c_str(),
           "",
           {{at(2 - step), at(2)}, {at(2), at(4)}, {at(4), at(6)}, {at(6), green}, {green, green}},
           {at(2), at(4), at(6), green}}}) {
        SCOPED_TRACE(row.before);
        const Scene<PoNonLinearValueLegend1> ranges(row.before, "end 1 5");
        const Scene<PoNonLinearValueLegend2> values(row.before, "end 1 5");
        const std::vector<Box> first = ranges.boxes(), second = values.boxes();
        ASSERT_EQ(first.size(), row.ranges.size());
        ASSERT_EQ(second.size(), row.values.size());
        for (std::size_t i = 0; i < first.size(); ++i) {
            EXPECT_TRUE(first[i].first.equals(row.ranges[i].first, 1e-5f)) << i;
            EXPECT_TRUE(first[i].last.equals(row.ranges[i].second, 1e-5f)) << i;
            EXPECT_TRUE(i == 0 || first[i].place.getMin()[1] > first[i - 1].place.getMax()[1]) << "upwards";
        }
        for (std::size_t i = 0; i < second.size(); ++i)
            EXPECT_TRUE(second[i].first.equals(row.values[i], 1e-5f) && second[i].last == second[i].first)
                << i;
    }
    for (const bool isUsed : {false, true}) {
        const Scene<PoNonLinearValueLegend2> scene(cut.substr(0, cut.size() - 1) +
                                                   (isUsed ? "transparencyEnabled TRUE }" : "}"));
        const SoMFFloat &transparency = scene.in<SoMaterial>("box")->transparency;
        EXPECT_EQ(transparency[transparency.getNum() - 1], isUsed ? 0.25f : 0);
    }
    const Scene<PoNonLinearValueLegend2> colorless(LEVELS), noThresholdColor(TABLE);
    EXPECT_EQ(colorless.boxes().size(), 5u) << "borders alone";
    EXPECT_EQ(test::drawnBy(colorless.part("box")).triangles, 0);
    EXPECT_EQ(noThresholdColor.boxes().size(), 8u);
    const Scene<PoNonLinearValueLegend2> columns(LEVELS, "numColumns 2"),
        rows(LEVELS, "numColumns 2 incrementType HORIZONTAL_INCREMENT");
    EXPECT_GT(columns.boxes()[2].place.getMin()[1], columns.boxes()[0].place.getMin()[1]) << "read upwards";
    EXPECT_LT(rows.boxes()[2].place.getMin()[1], rows.boxes()[0].place.getMin()[1]) << "read as a page";
}

TEST(PoValueLegend, FontSizeIsTheFitOfBoxesAndFactor) {
    const std::string high =
        " marginType FIXED_MARGIN marginLeft 0 marginRight 0 marginBottom 0 marginTop 0 ";
    struct Row {
        const char *before, *fields;
        float units; ///< of a height of 10
    };
    for (const Row &row : {Row{LEVELS, "end 99 10", 4 * 0.975f + 5 * 0.975f},
                           {LEVELS, "end 99 10 valuePosition POS_TOP", 4 * 0.975f + 5 * 2.275f},
                           {LEVELS, "end 999 10 numColumns 5 firstValue 1", 1.f * 0.975f},
                           {CUT, "end 99 10 lastValue 1", 2 * 0.975f + 3 * 0.975f},
                           {CUT, "end 9.99 10 lastValue 1", 2 * 0.975f + 3 * 0.975f + 2.09f},
                           {CUT, "end 999 10 numColumns 3 lastValue 1", 1.115f}}) {
        const Scene<PoNonLinearValueLegend2> scene(row.before, high + row.fields);
        EXPECT_NEAR(scene.fontSize(), 10 / row.units, 1e-3f) << row.fields;
        EXPECT_EQ(scene.fontSize("multFactorApp.font"), row.before == CUT ? scene.fontSize() : 0);
    }
}

TEST(PoValueLegend, FollowsMappingLevelsAndFormatOfTheScene) {
    Scene<PoNonLinearValueLegend2> scene(std::string(LEVELS) + LINEAR + "PoNumericDisplayFormat { }");
    auto *format = scene.before<PoNumericDisplayFormat>();
    EXPECT_EQ(scene.rebuildsOf([&] { scene.before<PoLinearDataMapping>()->color1.setValue(1, 0, 0); }), 1);
    EXPECT_GT(scene.boxes()[0].first[0], 0.5f);
    EXPECT_EQ(scene.rebuildsOf([&] { scene.before<PoIsovaluesList>()->isovaluesList.set1Value(0, 77); }), 1);
    EXPECT_EQ(scene.words(), "1|2|5|8|77|");
    EXPECT_EQ(scene.rebuildsOf([&] {
        format->formatType = PbNumericDisplayFormat::FLOAT_FORMAT;
        format->numDecimal = 1;
        format->tenPower = 1;
    }),
              1);
    EXPECT_EQ(scene.words(), "0.1|0.2|0.5|0.8|7.7|");
    EXPECT_EQ(scene.texts("multFactor")[0].string + scene.texts("multFactor")[1].string, "x 101");
    auto own = std::make_unique<PbNumericDisplayFormat>(PbNumericDisplayFormat::INTEGER_FORMAT);
    EXPECT_EQ(scene.rebuildsOf([&] { scene.kit->setFormat(own.get()); }), 1);
    EXPECT_EQ(scene.words(), "1|2|5|8|77|");
    EXPECT_EQ(scene.part("multFactor"), nullptr);
    EXPECT_EQ(scene.rebuildsOf([&] { own.reset(); }), 1);
    EXPECT_EQ(scene.words().substr(0, 3), "0.1");

    // Outside of a traversal there is nothing to show; the next one shows it.
    scene.kit->setUpdateMethod(PoBase::UPDATE_IMMEDIATE);
    scene.kit->periodValue = 2;
    EXPECT_EQ(scene.part("box"), nullptr);
    EXPECT_NE(scene.part("background"), nullptr);
    scene.traverse();
    EXPECT_EQ(scene.words(), "0.1|0.5|7.7|");
}

TEST(PoValueLegend, NumbersThatAreNoneAreSafe) {
    for (const float bad : {NOT_A_NUMBER, INFINITE, -INFINITE, 3e38f, -3e38f, 1e-38f, 0.f})
        for (int which = 0; which < 7; ++which) {
            SCOPED_TRACE(std::to_string(bad) + " at " + std::to_string(which));
            for (const char *before : {CUT, TABLE, STEPS}) {
                Scene<PoLinearValueLegend> bar(which == 5 ? std::string(LEVELS) + before : before);
                Scene<PoNonLinearValueLegend1> boxes(which == 5 ? std::string(LEVELS) + before : before);
                const auto spoil = [&](auto &scene) {
                    auto *mapping = scene.template before<PoDataMapping>();
                    if (which == 0 || which == 1)
                        (which == 0 ? mapping->minThreshold : mapping->maxThreshold) = bad;
                    else if (auto *linear = dynamic_cast<PoLinearDataMapping *>(mapping); linear && which < 4)
                        (which == 2 ? linear->value1 : linear->value2) = bad;
                    else if (auto *table = dynamic_cast<PoNonLinearDataMapping2 *>(mapping);
                             table && which < 4)
                        table->value.set1Value(which, bad);
                    if (which == 6) {
                        mapping->minThresholdTransparency = bad;
                        mapping->transparencyEnabled = TRUE;
                        scene.kit->end.setValue(bad, 4);
                    }
                    if (which == 5)
                        scene.template before<PoIsovaluesList>()->isovaluesList.set1Value(2, bad);
                    scene.traverse();
                };
                bar.kit->maxValueSize = which == 4 ? bad : 0.6f;
                spoil(bar);
                spoil(boxes);
                EXPECT_TRUE(test::drawnBy(bar.root.get()).isFinite &&
                            test::drawnBy(boxes.root.get()).isFinite);
                bar.expectClear();
                boxes.expectClear();
            }
        }
}

} // namespace
