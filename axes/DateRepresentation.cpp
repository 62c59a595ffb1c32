#include "axes/DateRepresentation.h"

#include "axes/LinearGraduations.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <span>

namespace oravane {

namespace {

// ---- the two languages

struct Token {
    enum Kind { Number, String, Unit, Element, Separator, End, Error };

    Kind kind = End;
    std::string_view text = {}; ///< of a string, without its quotes
    double number = 0;          ///< within a float
    bool isInteger = false;     ///< has no point
    int value = 0;              ///< a `PiDate::StepType` or a `DateForm`
};

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Cuts a text into tokens.
class Scanner {
public:
    /// With strings, elements, separators and negative numbers, or without.
    Scanner(std::string_view text, std::optional<char> separator) : m_text(text), m_separator(separator) {}

    Token next() {
        while (peek() == ' ' && !isAtEnd())
            ++m_at;
        if (isAtEnd()) {
            ++m_at;
            return {};
        }
        for (const auto scan : {&Scanner::number, &Scanner::unit, &Scanner::string, &Scanner::element})
            if (const Token token = (this->*scan)(); token.kind != Token::Error)
                return token;
        const char c = m_text[m_at++];
        return {m_separator == c ? Token::Separator : Token::Error};
    }

    /// Characters read.
    int position() const {
        return static_cast<int>(std::min<std::size_t>(m_at, std::numeric_limits<int>::max()));
    }

private:
    bool isAtEnd() const { return m_at >= m_text.size(); }
    char peek(std::size_t ahead = 0) const {
        return m_at + ahead < m_text.size() ? m_text[m_at + ahead] : '\0';
    }

    Token number() {
        const std::size_t sign = peek() == '+' || (m_separator && peek() == '-') ? 1 : 0;
        std::size_t end = sign;
        while (isDigit(peek(end)))
            ++end;
        Token token{Token::Number};
        token.isInteger = peek(end) != '.';
        std::size_t digits = end - sign;
        if (!token.isInteger)
            for (++end; isDigit(peek(end)); ++end)
                ++digits;
        // The minus is left to the conversion, which knows no plus.
        const char *first = m_text.data() + m_at + (peek() == '+' ? 1 : 0),
                   *last = m_text.data() + m_at + end;
        if (digits == 0 || std::from_chars(first, last, token.number).ec != std::errc() ||
            std::abs(token.number) > std::numeric_limits<float>::max())
            return {Token::Error};
        m_at += end;
        return token;
    }

    Token unit() {
        static constexpr std::string_view names[] = {"SEC", "MIN", "HOU", "DAY", "MON", "YEA"};
        const auto *const name = std::find(std::begin(names), std::end(names), m_text.substr(m_at, 3));
        if (name == std::end(names))
            return {Token::Error};
        m_at += 3;
        Token token{Token::Unit};
        token.value = static_cast<int>(name - names) + PiDate::STEP_SECOND;
        return token;
    }

    Token string() {
        if (!m_separator || peek() != '\'')
            return {Token::Error};
        const std::size_t close = m_text.find('\'', m_at + 1);
        if (close == std::string_view::npos)
            return {Token::Error};
        Token token{Token::String, m_text.substr(m_at + 1, close - m_at - 1)};
        m_at = close + 1;
        return token;
    }

    Token element() {
        static constexpr std::pair<char, DateForm> forms[] = {
            {'s', DateForm::Second},    {'m', DateForm::Minute},      {'H', DateForm::Hour},
            {'D', DateForm::DayNumber}, {'M', DateForm::MonthNumber}, {'Y', DateForm::Year},
        };
        const auto *const form =
            std::find_if(std::begin(forms), std::end(forms), [this](auto f) { return f.first == peek(); });
        if (!m_separator || form == std::end(forms))
            return {Token::Error};
        ++m_at;
        Token token{Token::Element};
        token.value = static_cast<int>(form->second);
        return token;
    }

    std::string_view m_text;
    std::optional<char> m_separator;
    std::size_t m_at = 0;
};

/// A scanner with one token read ahead.
class Parser {
public:
    Parser(std::string_view text, std::optional<char> separator) : m_scanner(text, separator) { advance(); }

    int position() const { return m_scanner.position(); }
    bool sees(Token::Kind kind) const { return m_token.kind == kind; }
    bool seesWidth() const { return sees(Token::Number) && m_token.isInteger && m_token.number >= 0; }

    /// The next token when it is of this kind.
    std::optional<Token> take(Token::Kind kind) {
        if (!sees(kind))
            return std::nullopt;
        const Token token = m_token;
        advance();
        return token;
    }

    std::string takeString() {
        const auto token = take(Token::String);
        return token ? std::string(token->text) : std::string();
    }

private:
    void advance() { m_token = m_scanner.next(); }

    Scanner m_scanner;
    Token m_token;
};

/// Whether a step was there, or none at all: a number alone is a fault.
bool parseStep(Parser &parser, DateLevel &level) {
    const auto number = parser.take(Token::Number);
    const auto unit = parser.take(Token::Unit);
    if (unit) {
        level.unit = static_cast<PiDate::StepType>(unit->value);
        level.step = number ? static_cast<float>(number->number) : 0;
    }
    return unit || !number;
}

/// Behind its letter. A width asks for the name of a day or month.
bool parseElement(Parser &parser, DateElement &element) {
    if (parser.sees(Token::Number) && !parser.seesWidth())
        return false;
    if (const auto width = parser.take(Token::Number))
        element.width = static_cast<int>(std::min(width->number, 1e9));
    element.suffix = parser.takeString();
    if (element.width != 0 && element.form == DateForm::DayNumber)
        element.form = DateForm::DayName;
    if (element.width != 0 && element.form == DateForm::MonthNumber)
        element.form = DateForm::MonthName;
    return true;
}

bool parseLevel(Parser &parser, DateLevel &level) {
    if (!parseStep(parser, level))
        return false;
    level.prefix = parser.takeString();
    while (const auto token = parser.take(Token::Element)) {
        DateElement &element = level.elements.emplace_back();
        element.form = static_cast<DateForm>(token->value);
        if (!parseElement(parser, element))
            return false;
    }
    return true;
}

} // namespace

std::optional<DateRepresentation> parseAxisRep(std::string_view text, char separator, int &error) {
    Parser parser(text, separator);
    DateRepresentation levels;
    do {
        if (!parseLevel(parser, levels.emplace_back()))
            break;
        if (parser.sees(Token::End)) {
            error = 0;
            return levels;
        }
    } while (parser.take(Token::Separator));
    error = parser.position();
    return std::nullopt;
}

std::optional<DateList> parseDateList(std::string_view text, int &error) {
    Parser parser(text, std::nullopt);
    DateList list;
    do {
        const auto number = parser.take(Token::Number);
        const auto unit = parser.take(Token::Unit);
        if (!unit)
            break;
        list.emplace_back(number ? number->number : 1, static_cast<PiDate::StepType>(unit->value));
        if (parser.sees(Token::End)) {
            error = 0;
            return list;
        }
    } while (true);
    error = parser.position();
    return std::nullopt;
}

// ---- automatic units, steps and elements

namespace {

/// The time that an axis spans, by its parts and in whole units.
struct TimeSpan {
    TimeSpan(const PiDate &start, const PiDate &end) : delta(end - start) {}

    std::int64_t days() const { return delta.day; }
    std::int64_t hours() const { return 24 * days() + delta.hour; }
    std::int64_t minutes() const { return 60 * hours() + delta.minute; }
    double seconds() const { return 60.0 * static_cast<double>(minutes()) + delta.second; }

    PiDate delta;
};

/// The unit of level 0.
PiDate::StepType automaticUnit(const TimeSpan &span) {
    const PiDate &delta = span.delta;
    if (delta.day >= 1826) // five years
        return PiDate::STEP_YEAR;
    if (delta.day >= 151) // five months
        return PiDate::STEP_MONTH;
    if (delta.day >= 6)
        return PiDate::STEP_DAY;
    if (delta.day >= 1 || delta.hour > 5)
        return PiDate::STEP_HOUR;
    return delta.hour >= 1 || delta.minute > 5 ? PiDate::STEP_MINUTE : PiDate::STEP_SECOND;
}

struct StepRow {
    int below; ///< of a total that is smaller
    int step;
};

constexpr StepRow sixtiethSteps[] = {{13, 1},   {25, 2},   {37, 3},   {61, 5},
                                     {121, 10}, {181, 15}, {241, 20}, {450, 30}};
constexpr StepRow hourSteps[] = {{13, 1}, {25, 2}, {37, 3}, {49, 4}, {73, 6}, {97, 8}, {312, 12}};

/// Whether a row serves.
bool setStep(std::span<const StepRow> rows, double total, DateLevel &level) {
    for (const StepRow &row : rows)
        if (total < row.below) {
            level.step = static_cast<float>(row.step);
            return true;
        }
    return false;
}

/// The step for about a dozen labels. A unit that is too small for that gives way to a larger one.
void setAutomaticStep(const TimeSpan &span, DateLevel &level) {
    std::int64_t total = span.days();
    switch (level.unit) {
    case PiDate::STEP_SECOND:
        if (span.seconds() < 6) {
            level.step = linearStep(span.delta.second, 0);
            return;
        }
        if (setStep(sixtiethSteps, span.seconds(), level))
            return;
        level.unit = PiDate::STEP_MINUTE;
        [[fallthrough]];
    case PiDate::STEP_MINUTE:
        if (setStep(sixtiethSteps, static_cast<double>(span.minutes()), level))
            return;
        level.unit = PiDate::STEP_HOUR;
        [[fallthrough]];
    case PiDate::STEP_HOUR:
        if (setStep(hourSteps, static_cast<double>(span.hours()), level))
            return;
        level.unit = PiDate::STEP_DAY;
        break;
    case PiDate::STEP_MONTH:
        total /= 30;
        break;
    case PiDate::STEP_YEAR:
        total /= 365;
        break;
    default:
        break;
    }
    level.step = static_cast<float>(std::max(1.0, std::trunc(static_cast<double>(total) / 12 + 0.5)));
}

/// The unit that an element shows.
PiDate::StepType unitOf(DateForm form) {
    switch (form) {
    case DateForm::Second:
        return PiDate::STEP_SECOND;
    case DateForm::Minute:
        return PiDate::STEP_MINUTE;
    case DateForm::Hour:
        return PiDate::STEP_HOUR;
    case DateForm::DayNumber:
    case DateForm::DayName:
        return PiDate::STEP_DAY;
    case DateForm::MonthNumber:
    case DateForm::MonthName:
        return PiDate::STEP_MONTH;
    case DateForm::Year:
        break;
    }
    return PiDate::STEP_YEAR;
}

DateElement defaultElement(PiDate::StepType unit) {
    switch (unit) {
    case PiDate::STEP_SECOND:
        return {DateForm::Second, 0, "\""};
    case PiDate::STEP_MINUTE:
        return {DateForm::Minute, 0, "'"};
    case PiDate::STEP_HOUR:
        return {DateForm::Hour, 0, "h"};
    case PiDate::STEP_DAY:
        return {DateForm::DayNumber, 0, ""};
    case PiDate::STEP_MONTH:
        return {DateForm::MonthName, 3, ""};
    default:
        return {DateForm::Year, 24, ""};
    }
}

/// Takes away elements that are finer than the unit, and adds one that shows it.
void setDefaultElements(DateLevel &level) {
    const auto isFiner = [&](const DateElement &e) { return unitOf(e.form) < level.unit; };
    const auto isShown = [&](const DateElement &e) { return unitOf(e.form) == level.unit; };
    std::erase_if(level.elements, isFiner);
    if (std::none_of(level.elements.begin(), level.elements.end(), isShown))
        level.elements.insert(level.elements.begin(), defaultElement(level.unit));
}

/// The second level of an automatic representation: its unit, the span in it, and what it shows.
DateLevel secondLevel(const TimeSpan &span, PiDate::StepType unit, PiDate::Language language) {
    const DateElement day{DateForm::DayNumber, 0, " "}, month{DateForm::MonthName, 3, " "};
    const DateElement minutes = defaultElement(PiDate::STEP_MINUTE),
                      hours = defaultElement(PiDate::STEP_HOUR);
    DateLevel level{unit, 0, "", {}};
    std::int64_t total = 0;
    switch (unit) {
    case PiDate::STEP_MINUTE:
        total = span.minutes();
        level.elements = {{DateForm::Hour, 0, "h "}, minutes};
        break;
    case PiDate::STEP_HOUR:
        total = span.hours();
        level.elements = {day, hours};
        break;
    case PiDate::STEP_DAY:
        total = span.days();
        level.elements = {day, month, {DateForm::Year, 2, ""}};
        if (language == PiDate::ENGLISH)
            std::swap(level.elements[0], level.elements[1]);
        break;
    case PiDate::STEP_MONTH:
        total = span.days() / 30;
        level.elements = {month, {DateForm::Year, 4, ""}};
        break;
    default:
        total = span.days() / 365;
        level.elements = {defaultElement(PiDate::STEP_YEAR)};
        break;
    }
    level.step = static_cast<float>(std::max<std::int64_t>(1, total / 4));
    return level;
}

PiDate::StepType unitAbove(PiDate::StepType unit) {
    return static_cast<PiDate::StepType>(unit + 1);
}

DateRepresentation automaticRepresentation(const TimeSpan &span, PiDate::Language language) {
    DateLevel level;
    level.unit = automaticUnit(span);
    setAutomaticStep(span, level);
    setDefaultElements(level);
    DateRepresentation levels{level};
    if (level.unit != PiDate::STEP_YEAR)
        levels.push_back(secondLevel(span, unitAbove(level.unit), language));
    return levels;
}

/// Fills in the units, steps and elements that were not given.
DateRepresentation completed(DateRepresentation levels, const TimeSpan &span) {
    PiDate::StepType before = PiDate::STEP_NONE;
    for (auto level = levels.begin(); level != levels.end();) {
        const bool isAutomatic = level->unit == PiDate::STEP_NONE;
        if (isAutomatic && before == PiDate::STEP_YEAR) {
            level = levels.erase(level);
            continue;
        }
        if (isAutomatic)
            level->unit = before == PiDate::STEP_NONE ? automaticUnit(span) : unitAbove(before);
        if (level->step == 0)
            setAutomaticStep(span, *level);
        if (isAutomatic)
            setDefaultElements(*level);
        before = level->unit;
        ++level;
    }
    return levels;
}

// ---- choosing one of several

/// A twelfth of the span in seconds, in whole units of a part that suits its size.
double wantedStepSeconds(const TimeSpan &span) {
    const PiDate &delta = span.delta;
    if (delta.day == 0 && delta.hour == 0 && delta.minute == 0)
        return delta.second / 12;
    std::int64_t total = span.days(), unit = 86400;
    if (delta.day == 0 && delta.hour == 0) {
        unit = delta.minute < 13 ? 1 : 60;
        total = delta.minute < 13 ? 60 * span.minutes() + static_cast<int>(delta.second) : span.minutes();
    } else if (delta.day == 0) {
        unit = delta.hour < 13 ? 60 : 3600;
        total = delta.hour < 13 ? span.minutes() : span.hours();
    } else if (delta.day < 13) {
        unit = 3600;
        total = span.hours();
    }
    const std::int64_t twelfth = total / 12;
    return static_cast<double>(twelfth * unit);
}

/// The length of a step of the first level; 0 without a unit.
double stepSecondsOf(const DateRepresentation &levels) {
    static constexpr double lengths[] = {0, 1, 60, 3600, 86400, 2592000, 31536000};
    const DateLevel &level = levels.front();
    return lengths[level.unit] * (level.step == 0 ? 1 : level.step);
}

/// The one whose step comes closest to a twelfth of the span, the larger where two are as close; null when
/// none has a step.
const DateRepresentation *bestRepresentation(std::span<const DateRepresentation> all, const TimeSpan &span) {
    std::vector<std::pair<double, const DateRepresentation *>> sorted;
    for (const DateRepresentation &levels : all)
        if (const double length = stepSecondsOf(levels); length != 0)
            sorted.emplace_back(length, &levels);
    if (sorted.empty())
        return nullptr;
    const auto isShorter = [](const auto &a, const auto &b) { return a.first < b.first; };
    std::stable_sort(sorted.begin(), sorted.end(), isShorter);
    const double wanted = wantedStepSeconds(span);
    auto found = std::find_if(sorted.begin(), sorted.end(), [=](const auto &s) { return s.first >= wanted; });
    if (found == sorted.end() ||
        (found != sorted.begin() && wanted - found[-1].first < found->first - wanted))
        --found;
    return found->second;
}

/// What sorts periods. A year counts as 365.25 months: the required form.
float sortingKey(const DateList::value_type &period) {
    static constexpr float lengths[] = {0, 1, 60, 3600, 86400, 2635200, 962506816};
    return static_cast<float>(period.first) * lengths[period.second];
}

/// A span in the form of a difference of dates, with no member but that of its unit.
PiDate spanOf(const DateList::value_type &period) {
    PiDate span;
    span.year = span.month = span.day = 0;
    const int whole = static_cast<int>(std::min<double>(period.first, std::numeric_limits<int>::max()));
    int *const members[] = {&span.minute, &span.hour, &span.day, &span.month, &span.year};
    if (period.second == PiDate::STEP_SECOND)
        span.second = static_cast<float>(period.first);
    else
        *members[period.second - PiDate::STEP_MINUTE] = whole;
    return span;
}

} // namespace

DateRepresentations::DateRepresentations(const std::vector<std::string> &texts, std::string_view periods,
                                         char separator) {
    if (texts.empty() || texts.front().empty())
        return;
    int error = 0;
    for (const std::string &text : texts) {
        auto levels = parseAxisRep(text, separator, error);
        if (!levels)
            break;
        m_representations.push_back(std::move(*levels));
    }
    if (error != 0 || !setPeriods(periods))
        *this = {};
}

bool DateRepresentations::setPeriods(std::string_view text) {
    if (text.empty())
        return true;
    int error = 0;
    auto list = parseDateList(text, error);
    if (!list || list->size() + 1 != m_representations.size())
        return false;
    std::stable_sort(list->begin(), list->end(),
                     [](const auto &a, const auto &b) { return sortingKey(a) < sortingKey(b); });
    const auto isEqual = [](const auto &a, const auto &b) { return sortingKey(a) == sortingKey(b); };
    list->erase(std::unique(list->begin(), list->end(), isEqual), list->end());
    for (const auto &period : *list)
        m_periods.push_back(spanOf(period));
    return true;
}

DateRepresentation DateRepresentations::getDateAxisRep(const PiDate &start, const PiDate &end,
                                                       PiDate::Language language) const {
    const TimeSpan span(start, end);
    if (m_periods.empty()) {
        const DateRepresentation *best = bestRepresentation(m_representations, span);
        return best ? completed(*best, span) : automaticRepresentation(span, language);
    }
    const auto fits = [&](const PiDate &period) { return span.delta <= period; };
    const auto period = std::find_if(m_periods.begin(), m_periods.end(), fits);
    const bool isLast = period == m_periods.end();
    return completed(isLast ? m_representations.back() : m_representations[period - m_periods.begin()], span);
}

} // namespace oravane
