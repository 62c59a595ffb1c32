#include <oravane/PiNumericFormat.h>

#include <oravane/PbNumericDisplayFormat.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>

namespace {

constexpr int maxDecimals = 149; // of the smallest float
static_assert(PiNumericFormat::STRING_SIZE >
              2 + std::numeric_limits<double>::max_exponent10 + 1 + maxDecimals);

double inUnits(float value, int tenPower) {
    // 10 to a far power is 0 or infinite: neither may divide a number by which it has no quotient.
    if (tenPower == 0 || value == 0 || !std::isfinite(value))
        return value;
    return value / std::pow(10.0, tenPower);
}

/// `value` with a number of decimals; the length of the text. `std::to_chars` knows no locale.
std::size_t print(double value, int numDecimal, char *out, std::size_t size) {
    const auto [end, error] = std::to_chars(out, out + size, value, std::chars_format::fixed, numDecimal);
    return error == std::errc() ? end - out : 0;
}

/// The number of digits ahead of the point; 0 or below for a number below 0.1. It is read off the shortest
/// text that gives the number again: the float next to 0.000001 lies a little below it, but has its decades.
int decimalExponent(float value) {
    if (value == 0)
        return 0;
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific).ptr;
    const char *digits = std::find(text, end, 'e') + 1;
    int exponent = 0;
    std::from_chars(*digits == '+' ? digits + 1 : digits, end, exponent);
    return exponent + 1;
}

/// The decimals of a text but for those at its end that binary noise alone may account for.
int countDecimals(std::string_view text) {
    const std::size_t point = text.find('.');
    if (point == std::string_view::npos)
        return 0;
    std::string_view decimals = text.substr(point + 1);
    bool onlyNines = true;
    while (!decimals.empty() && (decimals.back() == '0' || (decimals.back() == '9' && onlyNines))) {
        onlyNines = decimals.back() == '9' && onlyNines;
        decimals.remove_suffix(1);
    }
    return static_cast<int>(decimals.size());
}

/// The decimals that a number, not negative, needs out of five significant digits.
int decimalsOf(double number, int roundStep) {
    if (!(number < 1e5))
        return 0;
    const int exponent = decimalExponent(static_cast<float>(number));
    const int numDecimal = exponent < 1 ? 4 : 5 - exponent;
    if (numDecimal < 1)
        return 0;
    if (roundStep) {
        const double scale = std::pow(10.0, 2 - exponent);
        number = std::trunc(number * scale + 0.5) / scale;
    }
    char text[32]; // four digits and a carried one, point, four digits
    return countDecimals({text, print(number, numDecimal, text, sizeof text)});
}

float finiteOr0(float value) {
    return std::isfinite(value) ? value : 0;
}

} // namespace

void PiNumericFormat::setFormatInteger(int tenPower) {
    m_type = 0;
    m_tenPower = tenPower;
    m_numDecimal = 0;
}

void PiNumericFormat::setFormatFloatingPoint(int numDecimal, int tenPower) {
    m_type = 1;
    m_tenPower = tenPower;
    m_numDecimal = std::clamp(numDecimal, 0, maxDecimals);
}

void PiNumericFormat::setFormatAuto(float min, float max, float step, int roundStep) {
    findBestFormatOfDomain(std::abs(finiteOr0(min)), std::abs(finiteOr0(max)), std::abs(finiteOr0(step)),
                           roundStep);
}

void PiNumericFormat::findBestFormatOfDomain(float min, float max, float step, int roundStep) {
    setFormatInteger(0);
    const float largest = std::max(min, max);
    if (largest == 0)
        return;
    const int exponent = decimalExponent(largest);
    m_tenPower = 3 * (exponent >= 0 ? (exponent - 1) / 3 : exponent / 3 - 1);
    // The maximum gives the scale only: it may lie anywhere behind the last label.
    m_numDecimal = std::max(decimalsOf(inUnits(step, m_tenPower), roundStep),
                            decimalsOf(inUnits(min, m_tenPower), roundStep));
    m_type = m_numDecimal != 0;
}

void PiNumericFormat::setFormat(const PbNumericDisplayFormat *format, float min, float max, float step,
                                int roundStep) {
    auto type = PbNumericDisplayFormat::AUTO_FORMAT;
    int tenPower = 0, numDecimal = 0;
    if (format)
        format->getFormat(type, tenPower, numDecimal);
    if (type == PbNumericDisplayFormat::AUTO_FORMAT)
        setFormatAuto(min, max, step, roundStep);
    else if (type == PbNumericDisplayFormat::FLOAT_FORMAT)
        setFormatFloatingPoint(numDecimal, tenPower);
    else if (type == PbNumericDisplayFormat::INTEGER_FORMAT)
        setFormatInteger(tenPower);
}

void PiNumericFormat::setFormat(const PbNumericDisplayFormat *format, int n, const float *values,
                                int roundStep) {
    if (n < 1 || !values)
        return;
    float min = std::numeric_limits<float>::infinity(), max = -min;
    for (int i = 0; i < n; ++i) {
        if (!std::isfinite(values[i]))
            continue;
        min = std::min(min, values[i]);
        max = std::max(max, values[i]);
    }
    if (min > max)
        min = max = 0;
    const double step = n > 1 ? (static_cast<double>(max) - min) / (n - 1) : max;
    const bool isFloat = step <= std::numeric_limits<float>::max(); // of two values it may be none
    setFormat(format, min, max, isFloat ? static_cast<float>(step) : 0, roundStep);
}

void PiNumericFormat::getString(float value, char *out) const {
    if (!out)
        return;
    const double number = inUnits(value, m_tenPower);
    if (!std::isfinite(number)) {
        std::strcpy(out, std::isnan(number) ? "nan" : number > 0 ? "inf" : "-inf");
        return;
    }
    // An integer has no sign at 0, while C writes "-0.0" for a decimal number.
    const double printed = m_type ? number : std::round(number) + 0.0;
    out[print(printed, m_numDecimal, out, STRING_SIZE - 1)] = '\0';
}
