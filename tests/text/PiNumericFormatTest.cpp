#include <oravane/PbNumericDisplayFormat.h>
#include <oravane/PiDate.h>
#include <oravane/PiNumericFormat.h>

#include "CommaLocale.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float NaN = std::numeric_limits<float>::quiet_NaN();

std::string text(const PiNumericFormat &format, float value) {
    char out[PiNumericFormat::STRING_SIZE];
    format.getString(value, out);
    return out;
}

TEST(PiNumericFormat, ChoosesPowerAndDecimalsByTheDomain) {
    const struct {
        const char *name;
        float min, max, step;
        int roundStep, tenPower;
        float value;
        const char *text;
    } rows[] = {
        {"all zero", 0, 0, 0, 0, 0, 0, "0"},
        {"zero bounds", 0, 0, 0.5f, 0, 0, 2.5f, "3"},
        {"thousand", 0, 1000, 100, 0, 3, 300, "0.3"},
        {"below a million", 0, 999999.9f, 100000, 0, 3, 300000, "300"},
        {"the minimum gives the scale", -2e6f, 5, 500000, 0, 6, -1.5e6f, "-1.5"},
        {"a tenth", 0, 0.1f, 0.02f, 0, 0, 0.06f, "0.06"},
        {"below a tenth", 0, 0.05f, 0.01f, 0, -3, 0.03f, "30"},
        {"exactly a millionth", 0, 1e-6f, 2e-7f, 0, -6, 6e-7f, "0.6"},
        {"two digits of the step", 0, 1, 0.25f, 1, 0, 0.5f, "0.50"},
        {"the step is rounded", 0, 10, 1.2345f, 1, 0, 2.4f, "2.4"},
        {"and kept", 0, 10, 1.2345f, 0, 0, 2.4f, "2.4000"},
        {"decimals of the minimum", 0.125f, 9, 1, 0, 0, 1.125f, "1.125"},
        {"nines are noise", 0, 10, 2.49999f, 0, 0, 2.49999f, "2.5"},
        {"nines, then zeros", 0, 10, 2.0999f, 0, 0, 4, "4"},
        {"zeros end the nines", 0, 10, 1.999f, 0, 0, 1.999f, "1.999"},
        {"five digits", 1234.5f, 1234.5f, 0, 0, 3, 1234.5f, "1.2345"},
        {"a step beyond the scale", 0, 1, 3e38f, 0, 0, 7, "7"},
        {"smallest float", 0, 1e-45f, 1e-45f, 1, -45, 1e-45f, "1.4"},
        {"largest float", -3.4e38f, 3.4e38f, 1e38f, 0, 36, 1e38f, "100"},
        {"bounds that are none", NaN, infinity, 1, 0, 0, 7, "7"},
        {"a step that is none", 0, 5, NaN, 0, 0, 7, "7"},
    };
    for (const auto &row : rows) {
        PiNumericFormat format;
        format.setFormatAuto(row.min, row.max, row.step, row.roundStep);
        EXPECT_EQ(format.getTenPower(), row.tenPower) << row.name;
        EXPECT_EQ(text(format, row.value), row.text) << row.name;
    }
}

TEST(PiNumericFormat, WritesWhatIsAskedFor) {
    const auto FLOAT = PbNumericDisplayFormat::FLOAT_FORMAT, INTEGER = PbNumericDisplayFormat::INTEGER_FORMAT;
    const struct {
        PbNumericDisplayFormat::FormatType type;
        int tenPower, numDecimal;
        float value;
        std::string text;
    } rows[] = {
        {FLOAT, 3, 2, 12345, "12.35"},
        {FLOAT, 0, 1, -0.04f, "-0.0"},
        {FLOAT, 0, -7, 2.75f, "3"},
        {FLOAT, 0, 3, -infinity, "-inf"},
        {FLOAT, -1000, 1, 1, "inf"},
        {FLOAT, -1000, 1, 0, "0.0"},
        {FLOAT, 1000, 1, 5, "0.0"},
        {FLOAT, 0, 500, 0.5f, "0.5" + std::string(148, '0')},
        {INTEGER, 0, 5, -2.5f, "-3"},
        {INTEGER, 0, 0, -0.4f, "0"},
        {INTEGER, -2, 0, 0.2951f, "30"},
        {INTEGER, 3, 0, 1499, "1"},
        {INTEGER, 0, 0, 1e38f, "99999996802856924650656260769173209088"},
        {INTEGER, 0, 0, -NaN, "nan"},
    };
    for (const auto &row : rows) {
        const PbNumericDisplayFormat wish(row.type, row.tenPower, row.numDecimal);
        PiNumericFormat format;
        format.setFormat(&wish, 0, 1, 0.25f, 0);
        EXPECT_EQ(text(format, row.value), row.text);
    }
    PiNumericFormat longest;
    longest.setFormatFloatingPoint(149, -270);
    EXPECT_EQ(text(longest, -1e38f).size(), 1 + 308 + 1 + 149);
    longest.getString(1, nullptr);
}

TEST(PiNumericFormat, ListsOfValues) {
    const float values[] = {0.5f, NaN, 3, 1.25f, infinity}, huge[] = {-3e38f, 3e38f};
    PiNumericFormat format;
    format.setFormatFloatingPoint(3, 0);
    for (const int n : {0, -5})
        format.setFormat(nullptr, n, values, 0);
    format.setFormat(nullptr, 5, nullptr, 0);
    const PbNumericDisplayFormat unknown(static_cast<PbNumericDisplayFormat::FormatType>(7), 1, 1);
    format.setFormat(&unknown, 5, values, 0);
    EXPECT_EQ(text(format, 1), "1.000") << "no values and no format change nothing";
    const struct {
        int first, n;
        const char *text; // of 1.25
    } rows[] = {{0, 5, "1.250"}, {0, 1, "1.2"}, {1, 1, "1"}, {2, 1, "1"}, {3, 1, "1.25"}, {2, 2, "1.25"}};
    for (const auto &[first, n, expected] : rows) {
        format.setFormat(nullptr, n, values + first, 0);
        EXPECT_EQ(text(format, 1.25f), expected) << first << ", " << n;
    }
    format.setFormat(nullptr, 2, huge, 0);
    EXPECT_EQ(text(format, 3e38f), "300");
}

TEST(PiNumericFormat, TheDecimalPointIsAPoint) {
    const CommaLocale locale;
    EXPECT_TRUE(locale.isSet) << "the package locales has one with a decimal comma";
    PiNumericFormat format;
    format.setFormatAuto(0, 1, 0.25f, 0);
    EXPECT_EQ(text(format, 0.75f), "0.75");
    PiDate date;
    EXPECT_EQ(date.setDateString("7.25", "\""), 0);
    EXPECT_EQ(date.second, 7.25f);
}

} // namespace
