#include "vectorize/PageText.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace oravane {

namespace {

constexpr char kHexDigits[] = "0123456789ABCDEF";
constexpr std::size_t kLongestFast = 24; ///< characters of a number that is written digit by digit

// A float times 100 fits a double without rounding. Below this limit the sum with 2^52 rounds it to an
// integer, half to even as printf does, and leaves that integer in the low bits.
constexpr double kFastLimit = 0x1p51;
constexpr double kRounder = 0x1p52;

struct Hundredths {
    std::uint64_t value;
    bool isNegative;
    bool isFast;
};

Hundredths hundredthsOf(float value) {
    const double magnitude = std::fabs(static_cast<double>(value)) * 100.0;
    const bool isFast = magnitude < kFastLimit;
    const double sum = (isFast ? magnitude : 0.0) + kRounder;
    return {std::bit_cast<std::uint64_t>(sum) - std::bit_cast<std::uint64_t>(kRounder), std::signbit(value),
            isFast};
}

char *putInteger(char *at, std::uint64_t value) {
    char digits[kLongestFast];
    char *const end = digits + sizeof digits;
    char *begin = end;
    do {
        *--begin = static_cast<char>('0' + value % 10);
        value /= 10;
    } while (value > 0);
    return std::copy(begin, end, at);
}

char *putUnits(char *at, const Hundredths &h) {
    if (h.isNegative)
        *at++ = '-';
    return putInteger(at, h.value / 100);
}

} // namespace

/// Space for `length` more characters.
char *PageText::room(std::size_t length) {
    if (m_size + length > m_capacity) {
        m_capacity = std::max(2 * m_capacity, m_size + length + 256);
        std::unique_ptr<char[]> larger(new char[m_capacity]);
        std::copy_n(m_text.get(), m_size, larger.get());
        m_text = std::move(larger);
    }
    return m_text.get() + m_size;
}

PageText &PageText::operator<<(std::string_view text) {
    std::copy(text.begin(), text.end(), room(text.size()));
    m_size += text.size();
    return *this;
}

PageText &PageText::operator<<(int value) {
    char *begin = room(kLongestFast);
    m_size += std::to_chars(begin, begin + kLongestFast, value).ptr - begin;
    return *this;
}

PageText &PageText::fixed2(float value) {
    const Hundredths h = hundredthsOf(value);
    if (!h.isFast)
        return fixed(value, 2);
    char *const begin = room(kLongestFast);
    char *at = putUnits(begin, h);
    const unsigned fraction = h.value % 100;
    *at++ = '.';
    *at++ = static_cast<char>('0' + fraction / 10);
    *at++ = static_cast<char>('0' + fraction % 10);
    m_size += at - begin;
    return *this;
}

int PageText::shortFixed2(float value) {
    const Hundredths h = hundredthsOf(value);
    const std::size_t start = m_size;
    if (!h.isFast) {
        fixed(value, 2); // a whole number: only floats without a fraction are that large
        m_size -= 3;
        return static_cast<int>(m_size - start) + 3;
    }
    char *const begin = room(kLongestFast);
    char *at = putUnits(begin, h);
    const int length = static_cast<int>(at - begin) + 3;
    if (const unsigned fraction = h.value % 100) {
        *at++ = '.';
        *at++ = static_cast<char>('0' + fraction / 10);
        if (fraction % 10 != 0)
            *at++ = static_cast<char>('0' + fraction % 10);
    }
    m_size += at - begin;
    return length;
}

PageText &PageText::fixed(double value, int digits) {
    constexpr std::size_t kLongest = 400; // the largest double has 309 digits before the point
    char *begin = room(kLongest);
    const double finite = std::isfinite(value) ? value : 0.0;
    m_size += std::to_chars(begin, begin + kLongest, finite, std::chars_format::fixed, digits).ptr - begin;
    return *this;
}

PageText &PageText::general(float value) {
    constexpr int kDigits = 6, kLeastExponent = -4;
    constexpr double kPowers[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
    constexpr double kLimits[] = {1e-3, 1e-2, 1e-1, 1, 1e1, 1e2, 1e3, 1e4, 1e5};
    const double magnitude = std::fabs(static_cast<double>(value));
    if (!(magnitude >= 1e-4 && magnitude < 999999.5))
        return slowGeneral(value);
    int exponent = kLeastExponent;
    for (const double limit : kLimits)
        exponent += magnitude >= limit ? 1 : 0;
    // As with the hundredths: a float times 10^9 fits a double without rounding.
    const double sum = magnitude * kPowers[kDigits - 1 - exponent] + kRounder;
    auto value6 =
        static_cast<unsigned>(std::bit_cast<std::uint64_t>(sum) - std::bit_cast<std::uint64_t>(kRounder));
    if (value6 == 1000000) {
        value6 = 100000;
        ++exponent;
    }
    char digits[kDigits];
    int significant = 0;
    for (int i = kDigits - 1; i >= 0; --i, value6 /= 10) {
        digits[i] = static_cast<char>('0' + value6 % 10);
        if (significant == 0 && digits[i] != '0')
            significant = i + 1;
    }
    char *const begin = room(kLongestFast);
    char *at = begin;
    if (value < 0)
        *at++ = '-';
    const int whole = std::max(exponent + 1, 0); // digits before the point
    at = whole > 0 ? std::copy_n(digits, whole, at) : std::fill_n(at, 1, '0');
    *at++ = '.';
    at = std::fill_n(at, std::max(-exponent - 1, 0), '0');
    if (significant > whole)
        at = std::copy(digits + whole, digits + significant, at);
    m_size += at - begin;
    return *this;
}

PageText &PageText::slowGeneral(float value) {
    char digits[kLongestFast];
    const char *const end = std::to_chars(digits, digits + sizeof digits, std::isfinite(value) ? value : 0.0f,
                                          std::chars_format::general, 6)
                                .ptr;
    const std::string_view all(digits, end - digits);
    if (all.find('.') != std::string_view::npos)
        return *this << all;
    const std::size_t mantissa = std::min(all.find('e'), all.size());
    return *this << all.substr(0, mantissa) << "." << all.substr(mantissa);
}

PageText &PageText::hexByte(unsigned char byte) {
    return hex(byte, 2);
}

PageText &PageText::hex(unsigned value, int width) {
    char *at = room(width);
    for (int shift = 4 * (width - 1); shift >= 0; shift -= 4)
        *at++ = kHexDigits[value >> shift & 15];
    m_size += width;
    return *this;
}

std::string shortenNumbers(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        if (text[i] == ' ') {
            ++i;
            continue;
        }
        std::size_t end = text.find(' ', i);
        if (end == std::string_view::npos)
            end = text.size();
        std::string_view word = text.substr(i, end - i);
        i = end;
        const std::size_t point = word.find('.');
        if (point != std::string_view::npos &&
            word.find_first_not_of("0123456789", point + 1) == std::string_view::npos) {
            while (word.back() == '0')
                word.remove_suffix(1);
            if (word.size() > 1 && word.back() == '.')
                word.remove_suffix(1);
        }
        if (!result.empty())
            result += ' ';
        result += word;
    }
    return result;
}

} // namespace oravane
