#include <oravane/PoDateFormatMapping.h>
#include <oravane/PoDateFormatMappingElement.h>
#include <oravane/PoMiscTextAttr.h>
#include <oravane/PoMiscTextAttrElement.h>
#include <oravane/PoNumericDisplayFormat.h>
#include <oravane/PoNumericDisplayFormatElement.h>

#include "attributes/AttributeTest.h"

#include <string>
#include <tuple>

namespace {

using Format = std::tuple<int, int, int>;
using TextAttr = std::tuple<std::string, int, char>;
using Mapping = std::tuple<std::string, std::string, float, float, std::string>;

Format formatBehind(SoNode *node) {
    PbNumericDisplayFormat::FormatType type;
    int tenPower, numDecimal;
    stateBehind<PoNumericDisplayFormatElement>(node)->getFormat(type, tenPower, numDecimal);
    return {type, tenPower, numDecimal};
}

TextAttr textAttrBehind(SoNode *node) {
    const PbMiscTextAttr &attributes = *stateBehind<PoMiscTextAttrElement>(node);
    char endLineChar;
    int lineLength;
    attributes.getLineLength(endLineChar, lineLength);
    return {attributes.getFontName().getString(), lineLength, endLineChar};
}

Mapping mappingBehind(SoNode *node) {
    const PbDateFormatMapping &mapping = *stateBehind<PoDateFormatMappingElement>(node);
    SbString date1, date2;
    float min, max;
    mapping.getDateMapping(date1, date2, min, max);
    return {date1.getString(), date2.getString(), min, max, mapping.getFormat().getString()};
}

TEST(TextNodes, AStateStartsWithDefaults) {
    EXPECT_EQ(formatBehind(nullptr), Format(0, 0, 0));
    EXPECT_EQ(textAttrBehind(nullptr), TextAttr("defaultFont", 0, ' '));
    EXPECT_EQ(mappingBehind(nullptr), Mapping("1-01-70", "2-01-70", 0, 1, "dmy"));
    const test::Ref<SoNode> format(new PoNumericDisplayFormat), dates(new PoDateFormatMapping);
    const test::Ref<PoMiscTextAttr> text(new PoMiscTextAttr);
    EXPECT_EQ(formatBehind(format.get()), formatBehind(nullptr));
    EXPECT_EQ(textAttrBehind(text.get()), textAttrBehind(nullptr));
    EXPECT_EQ(mappingBehind(dates.get()), mappingBehind(nullptr));
    // A node has an object of its own, and carries only changed fields into it.
    text->lineLength = -4;
    EXPECT_EQ(textAttrBehind(text.get()), TextAttr("defaultFont", -4, ' '));
    EXPECT_EQ(textAttrBehind(nullptr), TextAttr("defaultFont", 0, ' '));
}

TEST(TextNodes, FieldsOfFilesReachTheState) {
    for (const bool isBinary : {false, true}) {
        const auto format = throughFile<PoNumericDisplayFormat>(
            "PoNumericDisplayFormat { formatType FLOAT_FORMAT numDecimal 2 tenPower -3 }", isBinary);
        ASSERT_TRUE(format);
        EXPECT_EQ(formatBehind(format.get()), Format(1, -3, 2));
        const auto text = throughFile<PoMiscTextAttr>(
            "PoMiscTextAttr { fontName \"Times\" lineLength 20 endLineChar 95 }", isBinary);
        ASSERT_TRUE(text);
        EXPECT_EQ(textAttrBehind(text.get()), TextAttr("Times", 20, '_'));
        const auto dates = throughFile<PoDateFormatMapping>(
            "PoDateFormatMapping { coord2 9 date1 \"1-05-2000\" date2 \"10-05-2000\" format \"dmY\" }",
            isBinary);
        ASSERT_TRUE(dates);
        EXPECT_EQ(mappingBehind(dates.get()), Mapping("1-05-2000", "10-05-2000", 0, 9, "dmY"));
    }
    EXPECT_FALSE(throughFile<PoNumericDisplayFormat>("PoNumericDisplayFormat { formatType ODD }", false));
}

TEST(TextNodes, DatesAnswerWithoutATraversal) {
    const test::Ref<PoDateFormatMapping> node(new PoDateFormatMapping);
    float x = -1;
    node->coord2 = 24;
    EXPECT_EQ(node->getCoordinate("3-01-70", x), 1);
    EXPECT_EQ(x, 48);
    node->format = "h";
    EXPECT_EQ(node->getCoordinate("12", x), 1) << "the dates were read by the old format";
    EXPECT_EQ(x, 24 * 8401.5f);
    node->date2 = "nothing"; // and neither is the former date of this format
    EXPECT_EQ(mappingBehind(node.get()), Mapping("1-01-70", "2-01-70", 0, 24, "h"));
    node->format = "hh";
    EXPECT_EQ(node->getCoordinate("", x), 0);
    node->format = "dmy"; // comes too late
    EXPECT_EQ(std::get<4>(mappingBehind(node.get())), "hh");
}

} // namespace
