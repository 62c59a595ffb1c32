#include "tools/oravane/OptionValues.h"

#include "TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace oravane;

namespace {

TEST(OptionValues, SizesAreNamedOrGiven) {
    const struct {
        const char *text;
        SbVec2f size;
    } rows[] = {{"A4", {210, 297}},      {"a3", {297, 420}},         {"LETTER", {215.9f, 279.4f}},
                {"300x200", {300, 200}}, {"99.5X1e2", {99.5f, 100}}, {"1x10000", {1, 10000}}};
    for (const auto &row : rows)
        EXPECT_EQ(parsePaperSize(row.text), row.size) << row.text;
    for (const char *bad : {"", "A", "A44", "x", "10x", "x10", "10x10mm", "0x10", "-1x10", "nanx10", "10xinf",
                            "10 x 10", "1x10001", "1e99x10"})
        EXPECT_TRUE(
            refusalOf([&] { parsePaperSize(bad); }).starts_with('"' + std::string(bad) + "\" is no paper"));
    EXPECT_EQ(parsePixelSize("800x600"), (std::array{800, 600}));
    for (const char *bad : {"", "800", "800x", "8.5x6", "0x1", "32768x1", "99999999999x1"})
        EXPECT_NE(refusalOf([&] { parsePixelSize(bad); }), "") << bad;
}

TEST(OptionValues, ColorsAndPens) {
    EXPECT_EQ(parseColor("Cyan"), SbColor(0, 1, 1));
    EXPECT_EQ(parseColor("#fff"), SbColor(1, 1, 1));
    EXPECT_EQ(parseColor("#0080fF").getPackedValue(), 0x0080FFFFU);
    for (const char *bad : {"", "#", "#12", "#1234567", "#12345g", "#+1+1+1", "123456", "reddish"})
        EXPECT_NE(refusalOf([&] { parseColor(bad); }), "") << bad;

    EXPECT_EQ(parsePens("3").colors, (std::vector<SbColor>{{1, 1, 1}, {0, 0, 0}, {1, 0, 0}}));
    EXPECT_EQ(parsePens("8").widths, std::vector<float>(8, 25.4f / 72));
    const PenList pens = parsePens("black:0.35,red,#00ff00:0.7");
    EXPECT_EQ(pens.colors, (std::vector<SbColor>{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}));
    EXPECT_EQ(pens.widths, (std::vector<float>{0.35f, 25.4f / 72, 0.7f}));
    std::string many = "red";
    for (int i = 1; i < 257; ++i)
        many += ",red";
    for (const std::string &bad :
         {std::string(), std::string("1"), std::string("9"), std::string(",red"), std::string("red,,blue"),
          std::string("red:-1"), std::string("red:1:2"), many})
        EXPECT_NE(refusalOf([&] { parsePens(bad); }), "") << bad;
}

} // namespace
