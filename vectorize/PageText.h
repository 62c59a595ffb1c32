#ifndef ORAVANE_PAGETEXT_H
#define ORAVANE_PAGETEXT_H

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace oravane {

/// Text of a page file, built from strings and numbers. Numbers have the form that printf gives them in the
/// "C" locale, whatever the locale of the program is; what is not finite is written as 0. A page is millions
/// of numbers: they are put into the buffer digit by digit.
class PageText {
public:
    PageText &operator<<(std::string_view text);
    PageText &operator<<(int value);

    /// "%.2f".
    PageText &fixed2(float value);
    PageText &fixed2(double value) { return fixed(value, 2); }
    /// "%.<digits>f", digits from 0 to 9.
    PageText &fixed(double value, int digits);
    /// "%g" with a decimal point in any case: "12.", "0.5", "1.e-05".
    PageText &general(float value);
    /// Two upper-case hexadecimal digits of a byte.
    PageText &hexByte(unsigned char byte);
    /// `width` upper-case hexadecimal digits of `value`.
    PageText &hex(unsigned value, int width);

    /// "%.2f" in the short form that `shortenNumbers` would leave of it. Returns the length of the long form.
    int shortFixed2(float value);

    std::string_view view() const { return {m_text.get(), m_size}; }
    void clear() { m_size = 0; }

private:
    char *room(std::size_t length);
    PageText &slowGeneral(float value);

    std::unique_ptr<char[]> m_text;
    std::size_t m_size = 0, m_capacity = 0;
};

/// Shortens a line without changing a value: zeros at the end of the fraction of a number go, a point left
/// alone goes (except at the start of the text or after a blank), leading and trailing blanks go, and a run
/// of blanks becomes one. "1.50 2.00" becomes "1.5 2".
std::string shortenNumbers(std::string_view text);

} // namespace oravane

#endif
