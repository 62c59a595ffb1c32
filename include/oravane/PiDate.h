#ifndef ORAVANE_PIDATE_H
#define ORAVANE_PIDATE_H

#include <oravane/OravaneApi.h>

/// A calendar date with its time of day: read from text, stepped, compared and subtracted. A plain value; its
/// members may be set directly, `dayWeek` along with them (see `getDayWeek`).
///
/// \code
///   PiDate date;
///   if (date.setDateString("31-01-92 14:30", "dmyh'") == 0)
///       date.incDateStep(1, PiDate::STEP_MONTH);   // 29 February 1992, 14:30
/// \endcode
///
/// The calendar is the Gregorian one, carried on to all years: a leap year divides by 4 and not by 100, or
/// divides by 400. There are no time zones and no leap seconds. Whatever the members hold, every function has
/// a defined result: a month outside 1 to 12 counts as the nearest of them, and what leaves the range of an
/// int stays at its end.
///
/// Days are counted from the start of an era of 400 years (H. Hinnant, "chrono-Compatible Low-Level Date
/// Algorithms", 2014), so no function takes longer for a far date than for a near one.
class ORAVANE_API PiDate {
public:
    enum Language : int { ENGLISH = 0, FRANCAIS = 1, DEUTSCH = 2, ESPANOL = 3 };

    enum StepType : int {
        STEP_NONE = 0,
        STEP_SECOND = 1,
        STEP_MINUTE = 2,
        STEP_HOUR = 3,
        STEP_DAY = 4,
        STEP_MONTH = 5,
        STEP_YEAR = 6,
    };

    int year = 1970;  ///< in full
    int month = 1;    ///< 1 to 12
    int day = 1;      ///< 1 to 31; the signed number of days in a difference of dates
    int dayWeek = 4;  ///< 1 for Monday to 7 for Sunday
    int hour = 0;     ///< 0 to 23
    int minute = 0;   ///< 0 to 59
    float second = 0; ///< 0 to below 60

    /// Reads `text`. Each letter of `format` asks for one element, in the order of the text:
    ///
    /// | Letter     | Element | Accepts |
    /// |------------|---------|---------|
    /// | `"`        | second  | one or two digits below 60, with or without a point and further digits |
    /// | `'`        | minute  | one or two digits, up to 59 |
    /// | `h` or `H` | hour    | one or two digits, up to 23 |
    /// | `D`        | weekday | the first 3 letters of its name, upper case |
    /// | `d`        | day     | one or two digits, 1 to 31 |
    /// | `M`        | month   | the first 4 letters of its name, upper case |
    /// | `m`        | month   | one or two digits, 1 to 12 |
    /// | `y`        | year    | exactly two digits, to which 1900 is added |
    /// | `Y`        | year    | exactly four digits |
    ///
    /// Ahead of an element all that is neither a digit nor a letter of ASCII is skipped; other format letters
    /// read nothing. Names are tried in the order of `Language`. A name takes exactly 3 or 4 characters: the
    /// rest of a longer name is not skipped, and a month of three letters ("MAY", "MAI") is read at the end
    /// of the text only.
    ///
    /// A missing year is 1993, a missing month January. A day beyond the end of its month is the last of the
    /// month; a missing day is the first one of the month with the given weekday, or else the first.
    /// `dayWeek` always follows from the date.
    ///
    /// Returns 0; on a fault the number of characters read up to and with the faulty one, where the end of
    /// the text counts as one. The elements read before it then hold their values and all others 0. A null
    /// text or format counts as an empty one.
    int setDateString(const char *text, const char *format);

    /// Days from `b` to `a`, negative when `a` is the earlier. The time of day plays no part.
    static int getDeltaDays(const PiDate &a, const PiDate &b);

    /// The weekday by year, month and day; `dayWeek` is neither read nor set.
    int getDayWeek() const { return getDayWeek(*this); }
    static int getDayWeek(const PiDate &date);

    /// Moves the date by `step` units. All steps but those of seconds are cut to whole units. A step that is
    /// not a number counts as 0, and one beyond the range of an int as the end of that range (for seconds,
    /// one beyond 1e18 as 1e18). `STEP_NONE`, and what is no step type, changes nothing at all; after any
    /// other step the day is at most the last of its month, and `dayWeek` is right.
    ///
    /// Beware of steps of seconds, minutes and hours back beyond the start of a year: they end in the January
    /// of the year before, not in its December. Days step to December.
    void incDateStep(float step, StepType type) { incDateStep(*this, step, type); }
    static void incDateStep(PiDate &date, float step, StepType type);

    /// Names in upper case, at index 1 to 7 and 1 to 12; index 0 holds a blank. What is no language counts as
    /// `ENGLISH`. The third English weekday is "WENESDAY".
    static const char *const *getDays(Language language);
    static const char *const *getMonths(Language language);

    /// Lengths of the months, at index 1 to 12, of a common year and of a leap year; index 0 holds 0.
    static const int *getNumDaysPerMonth();
    static const int *getNumDaysParMonthBissex();
};

/// All members are equal, the weekday among them.
ORAVANE_API bool operator==(const PiDate &a, const PiDate &b);
/// `a` is the earlier; the weekday plays no part.
ORAVANE_API bool operator<(const PiDate &a, const PiDate &b);
/// `b` is not the earlier.
ORAVANE_API bool operator<=(const PiDate &a, const PiDate &b);

/// The time from `b` to `a`: year and month are 0, `day` is `PiDate::getDeltaDays`, and the hours, minutes
/// and seconds that add to it may be negative: 24 hours, 60 minutes and 60 seconds are borrowed from the
/// member above only where that one is not 0. `dayWeek` means nothing.
ORAVANE_API PiDate operator-(const PiDate &a, const PiDate &b);

#endif
