#include "axes/DateGraduations.h"

#include "axes/AxisLabels.h"
#include "axes/LinearGraduations.h"
#include "text/DateTime.h"

#include <oravane/PbDateFormatMapping.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

namespace oravane {

namespace {

constexpr double secondsPerDay = 86400;

void clearTime(PiDate &date) {
    date.hour = 0;
    date.minute = 0;
    date.second = 0;
}

/// Moves a date by seconds, which `stepSeconds` alone does not do right back over the start of a year.
void moveSeconds(PiDate &date, double seconds) {
    while (seconds < 0) { // again where a float does not hold the number of days
        const auto days = static_cast<float>(std::ceil(-seconds / secondsPerDay));
        date.incDateStep(-days, PiDate::STEP_DAY);
        seconds += days * secondsPerDay;
    }
    stepSeconds(date, seconds);
}

/// The number that was meant by a float: 0.1 is not 0.100000001. So steps add up to the decimals of dates.
double decimalOf(float value) {
    char text[64];
    const char *end = std::to_chars(std::begin(text), std::end(text), value).ptr;
    double result = value;
    std::from_chars(std::begin(text), end, result);
    return result;
}

int wholeOf(float step) {
    constexpr double low = std::numeric_limits<int>::min(), high = std::numeric_limits<int>::max();
    return std::isnan(step) ? 0 : static_cast<int>(std::clamp<double>(step, low, high));
}

/// The smallest multiple of n that is not smaller; the value itself when there is none.
std::int64_t raisedTo(int n, std::int64_t value) {
    return n > 0 ? (value + n - 1) / n * n : value;
}

/// Decimals that write the multiples of a step, in as many digits as a float has.
int decimalsOf(double step) {
    int count = 0;
    for (double scaled = step; count < 9 && std::abs(scaled - std::round(scaled)) > 1e-6 * scaled; ++count)
        scaled *= 10;
    return count;
}

/// A format for graduations in parts of a minute. No power of ten can be taken out of them, as an axis does
/// not show one for dates.
void setSecondsFormat(const LinearGraduations &grads, PiNumericFormat &format) {
    const float last = grads.first + grads.step * static_cast<float>(grads.count);
    format.setFormatAuto(grads.first, last, grads.step, 0);
    const double step = decimalOf(std::abs(grads.step));
    if (format.getTenPower() != 0 || (step > 0 && step < 1e-4))
        format.setFormatFloatingPoint(decimalsOf(step), 0);
}

/// Second of the minute of the start where graduations in seconds begin.
double firstSecond(const DateAxis &axis, float step, PiNumericFormat &format) {
    const float start = axis.start.second;
    if (!(step > 0) || std::isinf(step))
        return start;
    const double exactStep = decimalOf(step), seconds = secondsBetween(axis.end, axis.start);
    if (!(seconds > 5)) {
        const auto grads =
            linearGraduations(axis.fitsStart, start, start + static_cast<float>(seconds), step);
        setSecondsFormat(grads, format);
        return axis.fitsStart ? decimalOf(start) : std::round(grads.first / exactStep) * exactStep;
    }
    const double number = std::trunc(start / exactStep);
    for (const double more : {0, 1})
        if (static_cast<float>((number + more) * exactStep) >= start)
            return (number + more) * exactStep;
    return (number + 2) * exactStep;
}

/// The graduations of a level one after the other.
class DateWalk {
public:
    DateWalk(const DateAxis &axis, const DateLevel &level, PiNumericFormat &format)
        : m_level(level), m_date(axis.start) {
        format.setFormatInteger(0);
        if (level.unit == PiDate::STEP_SECOND) {
            m_date.second = 0;
            m_minute = m_date;
            m_second = firstSecond(axis, level.step, format);
            m_step = decimalOf(level.step);
            stepSeconds(m_date, m_second);
        } else {
            goToFirst(wholeOf(level.step));
        }
        m_date.dayWeek = m_date.getDayWeek();
    }

    const PiDate &date() const { return m_date; }

    void advance() {
        if (m_level.unit != PiDate::STEP_SECOND) {
            m_date.incDateStep(m_level.step, m_level.unit);
            return;
        }
        // Each from the start, so that no rounding adds up.
        m_date = m_minute;
        stepSeconds(m_date, m_second + ++m_number * m_step);
    }

private:
    void goToFirst(int n);
    void goToUnit(bool isThere, int n);

    const DateLevel &m_level;
    PiDate m_date;
    // Of seconds:
    PiDate m_minute;
    double m_second = 0, m_step = 0, m_number = 0;
};

void DateWalk::goToFirst(int n) {
    const auto setRaised = [&](int &member, bool isBegun) {
        const std::int64_t raised = raisedTo(n, std::int64_t(member) + (isBegun ? 1 : 0));
        m_date.second = 0;
        member = 0;
        m_date.incDateStep(static_cast<float>(raised), m_level.unit); // carries
    };
    switch (m_level.unit) {
    case PiDate::STEP_MINUTE:
        setRaised(m_date.minute, m_date.second > 0);
        break;
    case PiDate::STEP_HOUR: {
        const bool isBegun = m_date.minute != 0 || m_date.second != 0;
        m_date.minute = 0;
        setRaised(m_date.hour, isBegun);
        break;
    }
    case PiDate::STEP_DAY:
        goToUnit(m_date.hour == 0, n);
        break;
    case PiDate::STEP_MONTH:
        goToUnit(m_date.day == 1, n);
        break;
    case PiDate::STEP_YEAR:
        goToUnit(m_date.day == 1 && m_date.month == 1, n);
        break;
    default:
        break;
    }
}

/// To the start of the next day, month or year; without a step that leads on, to that of the present one.
void DateWalk::goToUnit(bool isThere, int n) {
    if (isThere)
        return;
    clearTime(m_date);
    if (m_level.unit != PiDate::STEP_DAY)
        m_date.day = 1;
    if (m_level.unit == PiDate::STEP_YEAR)
        m_date.month = 1;
    if (n > 0)
        m_date.incDateStep(1, m_level.unit);
}

bool isInside(const DateAxis &axis, const PiDate &date) {
    return axis.start <= date && date <= axis.end;
}

/// All from the first on; empty when they would be too many, or the same one again and again.
std::vector<PiDate> datesInside(const DateAxis &axis, DateWalk walk) {
    std::vector<PiDate> dates;
    while (isInside(axis, walk.date())) {
        const bool isStuck = !dates.empty() && dates.back() == walk.date();
        if (isStuck || dates.size() == static_cast<std::size_t>(kMaxGraduations))
            return {};
        dates.push_back(walk.date());
        walk.advance();
    }
    return dates;
}

std::string cutName(const char *name, int width) {
    return std::string(name).substr(0, static_cast<std::size_t>(std::max(width, 0)));
}

std::string labelOf(const PiDate &date, const DateLevel &level, PiDate::Language language,
                    const PiNumericFormat &format) {
    std::string label = level.prefix;
    for (const DateElement &element : level.elements)
        label += getStringDate(date, element, language, format) + element.suffix;
    return limitedLabel(std::move(label));
}

} // namespace

PiDate getFirstDateGrad(const DateAxis &axis, const DateLevel &level, PiNumericFormat &secondsFormat) {
    return DateWalk(axis, level, secondsFormat).date();
}

DateGraduations getGradList(const DateAxis &axis, const DateLevel &level,
                            const PbDateFormatMapping &mapping) {
    DateGraduations result;
    PiNumericFormat format;
    const DateWalk walk(axis, level, format);
    if (!isInside(axis, walk.date())) {
        const float a = mapping.getCoordinateP(axis.start), b = mapping.getCoordinateP(axis.end);
        result.coords = {static_cast<float>((static_cast<double>(a) + b) / 2)};
        result.labels = {labelOf(axis.start, level, axis.language, format)};
        return result;
    }
    for (const PiDate &date : datesInside(axis, walk)) {
        result.coords.push_back(mapping.getCoordinateP(date));
        result.labels.push_back(labelOf(date, level, axis.language, format));
    }
    if (std::adjacent_find(result.coords.begin(), result.coords.end()) != result.coords.end())
        return {};
    return result;
}

std::string getStringDate(const PiDate &date, const DateElement &element, PiDate::Language language,
                          const PiNumericFormat &secondsFormat) {
    switch (element.form) {
    case DateForm::Second: {
        char text[PiNumericFormat::STRING_SIZE];
        secondsFormat.getString(date.second, text);
        return text;
    }
    case DateForm::Minute:
        return std::to_string(date.minute);
    case DateForm::Hour:
        return std::to_string(date.hour);
    case DateForm::DayNumber:
        return std::to_string(date.day);
    case DateForm::DayName:
        return cutName(PiDate::getDays(language)[date.getDayWeek()], element.width);
    case DateForm::MonthNumber:
        return std::to_string(date.month);
    case DateForm::MonthName:
        return cutName(PiDate::getMonths(language)[std::clamp(date.month, 1, 12)], element.width);
    case DateForm::Year:
        break;
    }
    return std::to_string(element.width >= 3 ? date.year : date.year % 100);
}

PiDate dateBetween(const PiDate &start, const PiDate &end, double part, const PbDateFormatMapping &mapping) {
    if (part == 0 || part == 1 || !std::isfinite(part))
        return part == 1 ? end : start;
    PiDate date = start;
    moveSeconds(date, part * secondsBetween(end, start));
    const float coordinate = mapping.getCoordinateP(date);
    const double secondOfDay = 3600.0 * date.hour + 60.0 * date.minute + date.second;
    for (const double unit : {secondsPerDay, 3600.0, 60.0, 1.0}) {
        PiDate rounded = date;
        clearTime(rounded);
        stepSeconds(rounded, std::round(secondOfDay / unit) * unit);
        if (mapping.getCoordinateP(rounded) == coordinate)
            return rounded;
    }
    return date;
}

} // namespace oravane
