// Dates read from text.
#include <oravane/PiDate.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace {

// Of ASCII, whatever the locale of the program holds for a digit or a letter.
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// Reads the elements of a date one behind the other, and never beyond the end of the text. Each `read...`
/// tells whether it found its element.
class ElementReader {
public:
    explicit ElementReader(const char *text) : m_text(text), m_at(text) {}

    /// Characters read, the end of the text among them.
    int consumed() const { return static_cast<int>(m_at - m_text) + (m_hasReadEnd ? 1 : 0); }

    void skipSeparators() {
        while (*m_at && !isDigit(*m_at) && !isLetter(*m_at))
            ++m_at;
    }

    bool readOneOrTwoDigits(int &value, int lowest, int highest) {
        int number = 0;
        if (!readDigit(number))
            return false;
        if (isDigit(*m_at))
            readDigit(number);
        if (number < lowest || number > highest)
            return false;
        value = number;
        return true;
    }

    bool readYear(int &year, int numDigits, int firstYear) {
        int number = 0;
        for (int i = 0; i < numDigits; ++i) {
            if (!readDigit(number))
                return false;
        }
        year = firstYear + number;
        return true;
    }

    bool readSecond(float &second) {
        const char *start = m_at;
        int whole = 0;
        if (!readOneOrTwoDigits(whole, 0, 59))
            return false;
        if (*m_at == '.') {
            ++m_at;
            while (isDigit(*m_at))
                ++m_at;
        }
        double value = whole;
        std::from_chars(start, m_at, value);
        second = std::min(static_cast<float>(value), std::nextafter(60.0f, 0.0f)); // 59.9999999 is below 60
        return true;
    }

    /// The index, 1 to `numNames`, of a name of any language by its first `length` characters.
    template <class NamesOf>
    bool readName(int &index, std::size_t length, int numNames, NamesOf namesOf) {
        const char *word = m_at;
        for (std::size_t i = 0; i < length; ++i)
            readCharacter();
        for (const auto language : {PiDate::ENGLISH, PiDate::FRANCAIS, PiDate::DEUTSCH, PiDate::ESPANOL}) {
            const char *const *names = namesOf(language);
            for (int i = 1; i <= numNames; ++i) {
                if (std::strncmp(word, names[i], length) == 0) {
                    index = i;
                    return true;
                }
            }
        }
        return false;
    }

private:
    char readCharacter() {
        if (*m_at)
            return *m_at++;
        m_hasReadEnd = true;
        return '\0';
    }

    bool readDigit(int &value) {
        const char c = readCharacter();
        if (!isDigit(c))
            return false;
        value = 10 * value + (c - '0');
        return true;
    }

    const char *m_text, *m_at;
    bool m_hasReadEnd = false;
};

bool readElement(ElementReader &reader, char letter, PiDate &date) {
    switch (letter) {
    case '"':
        return reader.readSecond(date.second);
    case '\'':
        return reader.readOneOrTwoDigits(date.minute, 0, 59);
    case 'h':
    case 'H':
        return reader.readOneOrTwoDigits(date.hour, 0, 23);
    case 'D':
        return reader.readName(date.dayWeek, 3, 7, &PiDate::getDays);
    case 'd':
        return reader.readOneOrTwoDigits(date.day, 1, 31);
    case 'M':
        return reader.readName(date.month, 4, 12, &PiDate::getMonths);
    case 'm':
        return reader.readOneOrTwoDigits(date.month, 1, 12);
    case 'y':
        return reader.readYear(date.year, 2, 1900);
    case 'Y':
        return reader.readYear(date.year, 4, 0);
    default:
        return true;
    }
}

/// Gives the elements that the text did not hold.
void complete(PiDate &date) {
    if (date.year == 0)
        date.year = 1993;
    if (date.month == 0)
        date.month = 1;
    if (date.day == 0) {
        date.day = 1;
        if (date.dayWeek != 0)
            date.day += (date.dayWeek - date.getDayWeek() + 7) % 7;
    }
    date.incDateStep(0, PiDate::STEP_MONTH); // not beyond the end of the month, and the weekday of that day
}

} // namespace

int PiDate::setDateString(const char *text, const char *format) {
    *this = {0, 0, 0, 0, 0, 0, 0.0f};
    ElementReader reader(text ? text : "");
    for (const char *letter = format ? format : ""; *letter; ++letter) {
        reader.skipSeparators();
        if (!readElement(reader, *letter, *this))
            return reader.consumed();
    }
    complete(*this);
    return 0;
}
