#include "charts/PieNumbers.h"

#include <oravane/PbNumericDisplayFormat.h>
#include <oravane/PiNumericFormat.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace oravane {

namespace {

constexpr int kLargestWrittenPower = 6;

int numDecimalsOf(const PiNumericFormat &format, float value) {
    char text[PiNumericFormat::STRING_SIZE];
    format.getString(value, text);
    const char *point = std::strchr(text, '.');
    return point ? static_cast<int>(std::strlen(point + 1)) : 0;
}

PiNumericFormat exactFormat(std::span<const float> values) {
    const float largest = *std::max_element(values.begin(), values.end());
    PiNumericFormat format;
    int numDecimals = 0;
    for (const float value : values) {
        format.setFormatAuto(value, largest, 0, 0);
        numDecimals = std::max(numDecimals, numDecimalsOf(format, value));
    }
    const int power = format.getTenPower();
    const bool isWritten = std::abs(power) <= kLargestWrittenPower;
    format.setFormatFloatingPoint(std::max(numDecimals - (isWritten ? power : 0), 0), isWritten ? 0 : power);
    return format;
}

PieNumbers write(const PiNumericFormat &format, std::span<const float> values, const char *unit) {
    PieNumbers numbers;
    numbers.tenPower = format.getTenPower();
    for (const float value : values) {
        char text[PiNumericFormat::STRING_SIZE];
        format.getString(value, text);
        numbers.texts.emplace_back(text);
        numbers.texts.back() += unit;
    }
    return numbers;
}

} // namespace

PieNumbers pieValueNumbers(const PbNumericDisplayFormat &format, std::span<const float> values) {
    PbNumericDisplayFormat::FormatType type;
    int tenPower, numDecimal;
    format.getFormat(type, tenPower, numDecimal);
    if (type == PbNumericDisplayFormat::AUTO_FORMAT && !values.empty())
        return write(exactFormat(values), values, "");
    PiNumericFormat numeric;
    numeric.setFormat(&format, static_cast<int>(values.size()), values.data(), 0);
    return write(numeric, values, "");
}

PieNumbers piePercentNumbers(const PbNumericDisplayFormat &format, std::span<const float> percents) {
    PbNumericDisplayFormat::FormatType type;
    int tenPower, numDecimal;
    format.getFormat(type, tenPower, numDecimal);
    const PbNumericDisplayFormat inOnes(type, 0, numDecimal);
    PiNumericFormat numeric;
    numeric.setFormat(&inOnes, static_cast<int>(percents.size()), percents.data(), 1);
    return write(numeric, percents, "%");
}

} // namespace oravane
