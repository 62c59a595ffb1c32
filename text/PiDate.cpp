#include "text/DateTime.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <tuple>

namespace {

constexpr int numLanguages = 4;

const char *const dayNames[numLanguages][8] = {
    {" ", "MONDAY", "TUESDAY", "WENESDAY", "THURSDAY", "FRIDAY", "SATURDAY", "SUNDAY"},
    {" ", "LUNDI", "MARDI", "MERCREDI", "JEUDI", "VENDREDI", "SAMEDI", "DIMANCHE"},
    {" ", "MONTAG", "DIENSTAG", "MITTWOCH", "DONNERSTAG", "FREITAG", "SAMSTAG", "SONNTAG"},
    {" ", "LUNES", "MARTES", "MIERCOLES", "JUEVES", "VIERNES", "SABADO", "DOMINGO"},
};

const char *const monthNames[numLanguages][13] = {
    {" ", "JANUARY", "FEBRUARY", "MARCH", "APRIL", "MAY", "JUNE", "JULY", "AUGUST", "SEPTEMBER", "OCTOBER",
     "NOVEMBER", "DECEMBER"},
    {" ", "JANVIER", "FEVRIER", "MARS", "AVRIL", "MAI", "JUIN", "JUILLET", "AOUT", "SEPTEMBRE", "OCTOBRE",
     "NOVEMBRE", "DECEMBRE"},
    {" ", "JANUAR", "FEBRUAR", "MARZ", "APRIL", "MAI", "JUNI", "JULI", "AUGUST", "SEPTEMBER", "OKTOBER",
     "NOVEMBER", "DEZEMBER"},
    {" ", "ENERO", "FEBRERO", "MARZO", "ABRIL", "MAYO", "JUNIO", "JULIO", "AGOSTO", "SEPTIEMBRE", "OCTUBRE",
     "NOVIEMBRE", "DICIEMBRE"},
};

const int commonLengths[] = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
const int leapLengths[] = {0, 31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

int rowOf(PiDate::Language language) {
    return language >= 0 && language < numLanguages ? language : 0;
}

int toInt(std::int64_t value) {
    constexpr std::int64_t low = std::numeric_limits<int>::min(), high = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(value, low, high));
}

/// Takes the whole multiples of `base` out of `value`, which ends in 0 to base - 1; returns their number.
std::int64_t takeWhole(std::int64_t &value, int base) {
    std::int64_t whole = value / base;
    value -= whole * base;
    if (value < 0) {
        value += base;
        --whole;
    }
    return whole;
}

// ---- calendar

/// A date whose numbers have room to be carried.
struct WideDate {
    std::int64_t year, month, day;

    explicit WideDate(const PiDate &date)
        : year(date.year), month(std::clamp(date.month, 1, 12)), day(date.day) {}

    int monthLength() const {
        const bool isLeap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
        return (isLeap ? leapLengths : commonLengths)[month];
    }
};

constexpr std::int64_t daysPerEra = 146097; // 400 years

/// Days since 1 March of the year 0. Years start in March here, so that a leap day ends its year.
std::int64_t dayNumber(const WideDate &date) {
    std::int64_t yearOfEra = date.month > 2 ? date.year : date.year - 1;
    const std::int64_t era = takeWhole(yearOfEra, 400);
    const std::int64_t monthFromMarch = (date.month + 9) % 12;
    const std::int64_t firstOfMonth = (153 * monthFromMarch + 2) / 5;
    return era * daysPerEra + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + firstOfMonth + date.day - 1;
}

void setDayNumber(WideDate &date, std::int64_t number) {
    const std::int64_t era = takeWhole(number, daysPerEra);
    // Without the leap days so far, whose places are the last of each 4 years, but not of each 100, and so
    // on.
    const std::int64_t yearOfEra = (number - number / 1460 + number / 36524 - number / 146096) / 365;
    const std::int64_t dayOfYear = number - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
    date.day = dayOfYear - (153 * monthFromMarch + 2) / 5 + 1;
    date.month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
    date.year = era * 400 + yearOfEra + (date.month <= 2 ? 1 : 0);
}

std::int64_t daysBetween(const PiDate &a, const PiDate &b) {
    return dayNumber(WideDate(a)) - dayNumber(WideDate(b));
}

// ---- steps

/// Takes a day outside of its month to the month where it belongs.
void settleDay(WideDate &date) {
    if (date.day < 1 || date.day > date.monthLength())
        setDayNumber(date, dayNumber(date));
}

/// The same for a day that times of day were carried into: back from a January it goes to the January of the
/// year before, and so on with every 31 days.
void settleDayByTime(WideDate &date) {
    while (date.day < 1 && date.month > 1) {
        --date.month;
        date.day += date.monthLength();
    }
    if (date.day < 1) {
        const std::int64_t years = (31 - date.day) / 31;
        date.year -= years;
        date.day += 31 * years;
    }
    settleDay(date);
}

void stepMinutes(PiDate &date, WideDate &wide, std::int64_t hours, std::int64_t minutes) {
    minutes += date.minute;
    hours += date.hour + takeWhole(minutes, 60);
    wide.day += takeWhole(hours, 24);
    date.minute = static_cast<int>(minutes);
    date.hour = static_cast<int>(hours);
    settleDayByTime(wide);
}

/// The last part of every step.
void store(WideDate &wide, PiDate &date) {
    wide.year = toInt(wide.year);
    wide.day = std::min<std::int64_t>(wide.day, wide.monthLength());
    date.year = static_cast<int>(wide.year);
    date.month = static_cast<int>(wide.month);
    date.day = static_cast<int>(wide.day);
    date.dayWeek = date.getDayWeek();
}

/// A step in whole units.
int wholeStep(float step) {
    constexpr double low = std::numeric_limits<int>::min(), high = std::numeric_limits<int>::max();
    return std::isnan(step) ? 0 : static_cast<int>(std::clamp<double>(step, low, high));
}

double bounded(double seconds) {
    constexpr double limit = 1e18; // beyond all years of an int, and within a 64-bit integer
    return std::isnan(seconds) ? 0 : std::clamp(seconds, -limit, limit);
}

} // namespace

void oravane::stepSeconds(PiDate &date, double seconds) {
    const double sum = bounded(date.second) + bounded(seconds);
    double second = std::fmod(sum, 60);
    second += second < 0 ? 60 : 0;
    double minutes = std::round((sum - second) / 60);
    date.second = static_cast<float>(second);
    if (date.second >= 60) { // a float has no number between it and 60
        date.second = 0;
        ++minutes;
    }
    WideDate wide(date);
    stepMinutes(date, wide, 0, static_cast<std::int64_t>(minutes));
    store(wide, date);
}

double oravane::secondsBetween(const PiDate &a, const PiDate &b) {
    const std::int64_t hours = 24 * daysBetween(a, b) + a.hour - b.hour;
    return static_cast<double>(a.second) - b.second +
           static_cast<double>(60 * hours + a.minute - b.minute) * 60;
}

void PiDate::incDateStep(PiDate &date, float step, StepType type) {
    WideDate wide(date);
    switch (type) {
    case STEP_SECOND:
        oravane::stepSeconds(date, step);
        return;
    case STEP_MINUTE:
        stepMinutes(date, wide, 0, wholeStep(step));
        break;
    case STEP_HOUR:
        stepMinutes(date, wide, wholeStep(step), 0);
        break;
    case STEP_DAY:
        wide.day += wholeStep(step);
        settleDay(wide);
        break;
    case STEP_MONTH:
        wide.month += wholeStep(step) - 1LL;
        wide.year += takeWhole(wide.month, 12);
        ++wide.month;
        break;
    case STEP_YEAR:
        wide.year += wholeStep(step);
        break;
    default:
        return;
    }
    store(wide, date);
}

int PiDate::getDeltaDays(const PiDate &a, const PiDate &b) {
    return toInt(daysBetween(a, b));
}

int PiDate::getDayWeek(const PiDate &date) {
    PiDate monday;
    monday.year = 1992;
    monday.month = 9;
    monday.day = 21;
    std::int64_t days = daysBetween(date, monday);
    takeWhole(days, 7);
    return static_cast<int>(days) + 1;
}

const char *const *PiDate::getDays(Language language) {
    return dayNames[rowOf(language)];
}

const char *const *PiDate::getMonths(Language language) {
    return monthNames[rowOf(language)];
}

const int *PiDate::getNumDaysPerMonth() {
    return commonLengths;
}

const int *PiDate::getNumDaysParMonthBissex() {
    return leapLengths;
}

bool operator==(const PiDate &a, const PiDate &b) {
    const auto members = [](const PiDate &d) {
        return std::tie(d.year, d.month, d.day, d.dayWeek, d.hour, d.minute, d.second);
    };
    return members(a) == members(b);
}

bool operator<(const PiDate &a, const PiDate &b) {
    const auto members = [](const PiDate &d) {
        return std::tie(d.year, d.month, d.day, d.hour, d.minute, d.second);
    };
    return members(a) < members(b);
}

bool operator<=(const PiDate &a, const PiDate &b) {
    return !(b < a);
}

PiDate operator-(const PiDate &a, const PiDate &b) {
    const auto borrow = [](auto &value, int base, std::int64_t &above) {
        if (value < 0 && above != 0) {
            value += base;
            --above;
        }
    };
    std::int64_t days = daysBetween(a, b);
    std::int64_t hours = std::int64_t(a.hour) - b.hour, minutes = std::int64_t(a.minute) - b.minute;
    PiDate difference;
    difference.second = a.second - b.second;
    borrow(hours, 24, days);
    borrow(minutes, 60, hours);
    borrow(difference.second, 60, minutes);
    difference.year = 0;
    difference.month = 0;
    difference.day = toInt(days);
    difference.hour = toInt(hours);
    difference.minute = toInt(minutes);
    return difference;
}
