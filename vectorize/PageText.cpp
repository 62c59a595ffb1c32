#include "vectorize/PageText.h"

#include <charconv>
#include <cmath>

namespace oravane {

namespace {

constexpr char kHexDigits[] = "0123456789ABCDEF";

/// Writes the digits of `value` so that they end before `end`; at least `least` of them.
char *digitsBackward(char *end, unsigned long long value, int least) {
    for (; value > 0 || least > 0; value /= 10, --least)
        *--end = static_cast<char>('0' + value % 10);
    return end;
}

// A float times 100 fits a double without rounding, so the rounding to an integer, half to even, is the only
// one, as it is in printf.
constexpr double kLargestHundredfold = 9e15;

} // namespace

PageText &PageText::operator<<(std::string_view text) {
    m_text.append(text);
    return *this;
}

PageText &PageText::operator<<(int value) {
    char buffer[16];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    m_text.append(buffer, end);
    return *this;
}

PageText &PageText::fixed2(float value) {
    const double hundredfold = static_cast<double>(value) * 100.0;
    if (!(std::fabs(hundredfold) < kLargestHundredfold))
        return fixed(value, 2);
    const auto rounded = static_cast<unsigned long long>(std::nearbyint(std::fabs(hundredfold)));
    char buffer[32];
    char *const end = buffer + sizeof buffer;
    char *begin = digitsBackward(end, rounded % 100, 2);
    *--begin = '.';
    begin = digitsBackward(begin, rounded / 100, 1);
    if (std::signbit(value))
        *--begin = '-';
    m_text.append(begin, end);
    return *this;
}

int PageText::shortFixed2(float value) {
    const std::size_t start = m_text.size();
    fixed2(value);
    const auto length = static_cast<int>(m_text.size() - start);
    while (m_text.back() == '0')
        m_text.pop_back();
    if (m_text.back() == '.')
        m_text.pop_back();
    return length;
}

PageText &PageText::fixed(double value, int digits) {
    char buffer[512];
    const double finite = std::isfinite(value) ? value : 0.0;
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, finite, std::chars_format::fixed, digits).ptr;
    m_text.append(buffer, end);
    return *this;
}

PageText &PageText::hexByte(unsigned char byte) {
    m_text += kHexDigits[byte >> 4];
    m_text += kHexDigits[byte & 15];
    return *this;
}

PageText &PageText::hex(unsigned value, int width) {
    for (int shift = 4 * (width - 1); shift >= 0; shift -= 4)
        m_text += kHexDigits[value >> shift & 15];
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
