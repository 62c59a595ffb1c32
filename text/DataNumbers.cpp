#include "text/DataNumbers.h"

#include <oravane/PbNumericDisplayFormat.h>
#include <oravane/PiNumericFormat.h>

#include <algorithm>
#include <cmath>

namespace oravane {

namespace {

constexpr int kLargestWrittenPower = 6, kMostDecimals = 9;

struct FormatParts {
    explicit FormatParts(const PbNumericDisplayFormat &format) {
        format.getFormat(type, tenPower, numDecimal);
    }
    PbNumericDisplayFormat::FormatType type{};
    int tenPower = 0, numDecimal = 0;
};

std::string textOf(const PiNumericFormat &format, float value) {
    char text[PiNumericFormat::STRING_SIZE];
    format.getString(value, text);
    return text;
}

int numDecimalsOf(const std::string &text) {
    const std::size_t point = text.find('.');
    return point == std::string::npos ? 0 : static_cast<int>(text.size() - point - 1);
}

/// How many of its decimals are 0 in the texts of all values.
int commonZeros(const PiNumericFormat &format, std::span<const float> values, int numDecimals) {
    int zeros = numDecimals;
    for (const float value : values) {
        const std::string text = textOf(format, value);
        const std::size_t behind = text.find_last_not_of('0') + 1;
        zeros = std::min(zeros, static_cast<int>(text.size() - behind));
    }
    return zeros;
}

/// Decimals that a value needs in units of one, of five digits of its own.
int numDecimalsOf(float value) {
    PiNumericFormat own;
    own.setFormatAuto(value, value, 0, 0);
    return numDecimalsOf(textOf(own, value)) - own.getTenPower();
}

PiNumericFormat exactFormat(std::span<const float> values) {
    float largest = 0;
    int numDecimals = 0;
    for (const float value : values) {
        largest = std::max(largest, std::abs(value));
        numDecimals = std::max(numDecimals, numDecimalsOf(value));
    }
    PiNumericFormat format;
    format.setFormatAuto(0, largest, 0, 0);
    int power = format.getTenPower();
    if (std::abs(power) <= kLargestWrittenPower)
        power = 0;
    numDecimals = std::clamp(numDecimals + power, 0, kMostDecimals);
    format.setFormatFloatingPoint(numDecimals, power);
    format.setFormatFloatingPoint(numDecimals - commonZeros(format, values, numDecimals), power);
    return format;
}

std::vector<float> finiteOf(std::span<const float> values) {
    std::vector<float> finite(values.begin(), values.end());
    std::erase_if(finite, [](float value) { return !std::isfinite(value); });
    return finite;
}

std::vector<std::string> textsOf(const PiNumericFormat &format, std::span<const float> values,
                                 const std::string &suffix) {
    std::vector<std::string> texts;
    texts.reserve(values.size());
    for (const float value : values)
        texts.push_back(std::isfinite(value) ? textOf(format, value) + suffix : std::string());
    return texts;
}

} // namespace

std::vector<std::string> dataTexts(const PbNumericDisplayFormat &format, std::span<const float> values,
                                   const char *unit) {
    const std::vector<float> finite = finiteOf(values);
    const bool isAutomatic = FormatParts(format).type == PbNumericDisplayFormat::AUTO_FORMAT;
    PiNumericFormat numeric;
    if (isAutomatic && !finite.empty())
        numeric = exactFormat(finite);
    else
        numeric.setFormat(&format, static_cast<int>(finite.size()), finite.data(), 0);
    std::string suffix;
    if (numeric.getTenPower() != 0 && (isAutomatic || !unit))
        suffix.append("E").append(std::to_string(numeric.getTenPower()));
    if (unit)
        suffix += unit;
    return textsOf(numeric, values, suffix);
}

std::vector<std::string> percentTexts(const PbNumericDisplayFormat &format, std::span<const float> percents) {
    const FormatParts parts(format);
    const PbNumericDisplayFormat inOnes(parts.type, 0, parts.numDecimal);
    PiNumericFormat numeric;
    numeric.setFormat(&inOnes, static_cast<int>(percents.size()), percents.data(), 1);
    return textsOf(numeric, percents, "%");
}

} // namespace oravane
