#include <oravane/PiDate.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <limits>
#include <ostream>
#include <string>

inline void PrintTo(const PiDate &d, std::ostream *out) {
    *out << d.year << '-' << d.month << '-' << d.day << " (" << d.dayWeek << ") " << d.hour << ':' << d.minute
         << ':' << d.second;
}

namespace {

using namespace std::chrono;

PiDate dateOf(sys_days days) {
    const year_month_day ymd(days);
    const unsigned month(ymd.month()), day(ymd.day()), dayWeek = weekday(days).iso_encoding();
    return {int(ymd.year()), int(month), int(day), int(dayWeek), 0, 0, 0};
}

/// A date with its weekday.
PiDate date(int year, int month, int day, int hour = 0, int minute = 0, float second = 0) {
    PiDate result{year, month, day, 1, hour, minute, second};
    result.dayWeek = result.getDayWeek();
    return result;
}

PiDate stepped(PiDate date, float step, PiDate::StepType type) {
    date.incDateStep(step, type);
    return date;
}

TEST(PiDate, AgreesWithTheCalendarOfTheLanguage) {
    const sys_days origin = 1970y / January / 1;
    const PiDate first;
    EXPECT_EQ(first, dateOf(origin));
    for (sys_days day = -4000y / January / 1; day < sys_days(9999y / December / 31); day += days(89)) {
        const PiDate there = dateOf(day);
        const int distance = (day - origin).count();
        const float step = static_cast<float>(distance);
        ASSERT_EQ(there.getDayWeek(), there.dayWeek) << distance;
        ASSERT_EQ(PiDate::getDeltaDays(there, first), distance);
        ASSERT_EQ(PiDate::getDeltaDays(first, there), -distance);
        ASSERT_EQ(stepped(first, step, PiDate::STEP_DAY), there);
        ASSERT_EQ(stepped(there, -step, PiDate::STEP_DAY), first);
        if (distance < 0)
            continue; // units of time step back in another way
        ASSERT_EQ(stepped(first, 24 * step, PiDate::STEP_HOUR), there);
        if (distance < 1 << 14) { // a float holds the seconds
            ASSERT_EQ(stepped(first, 86400 * step, PiDate::STEP_SECOND), there);
        }
    }
}

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float NaN = std::numeric_limits<float>::quiet_NaN();

TEST(PiDate, Steps) {
    const PiDate base = date(1992, 1, 31, 10, 20, 30.5f);
    const int last = std::numeric_limits<int>::max();
    const struct {
        const char *name;
        PiDate from;
        float step;
        PiDate::StepType type;
        PiDate to;
    } rows[] = {
        {"into a leap February", base, 1, PiDate::STEP_MONTH, date(1992, 2, 29, 10, 20, 30.5f)},
        {"the 31st is lost", date(1992, 2, 29), 1, PiDate::STEP_MONTH, date(1992, 3, 29)},
        {"months over years", base, -14, PiDate::STEP_MONTH, date(1990, 11, 30, 10, 20, 30.5f)},
        {"a century that has no 29 February", date(2096, 2, 29), 4, PiDate::STEP_YEAR, date(2100, 2, 28)},
        {"days are whole, and reach December", date(1970, 1, 1), -1.9f, PiDate::STEP_DAY, date(1969, 12, 31)},
        {"seconds do not", date(1970, 1, 1), -.5f, PiDate::STEP_SECOND, date(1969, 1, 31, 23, 59, 59.5f)},
        {"minutes do not", date(2001, 1, 1), -1, PiDate::STEP_MINUTE, date(2000, 1, 31, 23, 59)},
        {"one of 31 days for each year", date(2001, 1, 1), -9600, PiDate::STEP_HOUR, date(1988, 1, 4)},
        {"over February", date(2000, 3, 1, 12), -70 * 24, PiDate::STEP_HOUR, date(1999, 1, 22, 12)},
        {"over a short one", date(1900, 3, 1), -25, PiDate::STEP_HOUR, date(1900, 2, 27, 23)},
        {"by months", date(2100, 12, 31), -92 * 24, PiDate::STEP_HOUR, date(2100, 9, 30)},
        {"within a month they do", base, -31.f, PiDate::STEP_SECOND, date(1992, 1, 31, 10, 19, 59.5f)},
        {"less than a float sees of 60", date(1970, 1, 1), -1e-9f, PiDate::STEP_SECOND, date(1970, 1, 1)},
        {"no number", base, NaN, PiDate::STEP_SECOND, base},
        {"no number of days", base, NaN, PiDate::STEP_DAY, base},
        {"the end of the years", base, infinity, PiDate::STEP_YEAR, date(last, 1, 31, 10, 20, 30.5f)},
        {"no step", {1, 2, 31, 7, 99, 99, 99}, 1, PiDate::STEP_NONE, {1, 2, 31, 7, 99, 99, 99}},
        {"repaired by a step",
         {1992, 14, 40, 0, 25, 61, 60},
         0,
         PiDate::STEP_SECOND,
         date(1993, 1, 10, 2, 2)},
    };
    for (const auto &row : rows)
        EXPECT_EQ(stepped(row.from, row.step, row.type), row.to) << row.name;
    for (const float step : {1e38f, -1e38f, infinity, -infinity}) {
        for (int type = PiDate::STEP_SECOND; type <= PiDate::STEP_YEAR; ++type) {
            const PiDate far = stepped(base, step, static_cast<PiDate::StepType>(type));
            EXPECT_TRUE(far.month >= 1 && far.month <= 12 && far.day >= 1 && far.day <= 31) << type;
            EXPECT_EQ(far.year > base.year, step > 0);
            EXPECT_EQ(far.getDayWeek(), far.dayWeek);
        }
    }
}

TEST(PiDate, ReadsText) {
    const struct {
        const char *text, *format;
        int result;
        PiDate date;
    } rows[] = {
        {"29-02-93", "dmy", 0, date(1993, 2, 28)},
        {"29-02-92", "dmy", 0, date(1992, 2, 29)},
        {"29-02-1900", "dmY", 0, date(1900, 2, 28)},
        {"0103 00", "dmy", 0, date(1900, 3, 1)},
        {"WEN, MARCH", "DM", 0, date(1993, 3, 3)},
        {"DON 2000 29 FEBR", "DYdM", 0, date(2000, 2, 29)},
        {"12", "xd?", 0, date(1993, 1, 12)},
        {"12:30:5.25", "H'\"", 0, date(1993, 1, 1, 12, 30, 5.25f)},
        {"59.99999999 7", "\"d", 0, date(1993, 1, 7, 0, 0, std::nextafter(60.f, 0.f))},
        {"3.,\xc3\xa4 4", "\"d", 0, date(1993, 1, 4, 0, 0, 3)},
        {"0000", "Y", 0, date(1993, 1, 1)},
        {"", "d", 1, {0, 0, 0, 0, 0, 0, 0}},
        {"12-", "dm", 4, {0, 0, 12, 0, 0, 0, 0}},
        {"32", "d", 2, {0, 0, 0, 0, 0, 0, 0}},
        {"0-1", "dm", 1, {0, 0, 0, 0, 0, 0, 0}},
        {"1-13", "dm", 4, {0, 0, 1, 0, 0, 0, 0}},
        {"24", "h", 2, {0, 0, 0, 0, 0, 0, 0}},
        {"1 60", "d'", 4, {0, 0, 1, 0, 0, 0, 0}},
        {"60.0", "\"", 2, {0, 0, 0, 0, 0, 0, 0}},
        {"1-1-7", "dmy", 6, {0, 1, 1, 0, 0, 0, 0}},
        {"197x", "Y", 4, {0, 0, 0, 0, 0, 0, 0}},
        {"1MAY 90", "dMy", 5, {0, 0, 1, 0, 0, 0, 0}},
        {"MO", "D", 3, {0, 0, 0, 0, 0, 0, 0}},
        {"monday", "D", 3, {0, 0, 0, 0, 0, 0, 0}},
        {"MONDAY 1", "Dd", 4, {0, 0, 0, 1, 0, 0, 0}},
        {"M\xc3\x84RZ", "M", 4, {0, 0, 0, 0, 0, 0, 0}},
        {nullptr, "d", 1, {0, 0, 0, 0, 0, 0, 0}},
        {"5", nullptr, 0, date(1993, 1, 1)},
    };
    for (const auto &row : rows) {
        PiDate read;
        const std::string name =
            std::string(row.text ? row.text : "null") + " by " + (row.format ? row.format : "");
        EXPECT_EQ(read.setDateString(row.text, row.format), row.result) << name;
        EXPECT_EQ(read, row.date) << name;
    }
}

TEST(PiDate, KnowsTheNamesOfAllLanguages) {
    for (const auto language : {PiDate::ENGLISH, PiDate::FRANCAIS, PiDate::DEUTSCH, PiDate::ESPANOL}) {
        PiDate read;
        for (int month = 1; month <= 12; ++month) {
            read.setDateString(PiDate::getMonths(language)[month], "M");
            EXPECT_EQ(read.month, month) << language;
        }
        for (int day = 1; day <= 7; ++day) {
            read.setDateString(PiDate::getDays(language)[day], "D");
            EXPECT_EQ(read.dayWeek, day) << language;
        }
    }
    EXPECT_STREQ(PiDate::getDays(PiDate::ENGLISH)[3], "WENESDAY");
    EXPECT_STREQ(PiDate::getMonths(static_cast<PiDate::Language>(9))[0], " ");
}

TEST(PiDate, DifferencesAndOrder) {
    const PiDate a = date(1992, 3, 1, 10, 30, 30);
    const struct {
        PiDate b, difference;
    } rows[] = {
        {date(1992, 2, 28, 11, 40, 40.5f), {0, 0, 1, 4, 22, 49, 49.5f}},
        {date(1992, 3, 1, 11, 40, 30), {0, 0, 0, 4, -2, 50, 0}},
        {date(1992, 3, 1, 10, 40, 40), {0, 0, 0, 4, 0, -11, 50}},
        {date(1992, 3, 1, 10, 30, 40), {0, 0, 0, 4, 0, 0, -10}},
        {date(1992, 3, 2, 11, 30, 30), {0, 0, -2, 4, 23, 0, 0}},
    };
    for (const auto &[b, difference] : rows) {
        EXPECT_EQ(a - b, difference);
        EXPECT_EQ(a < b, difference.day != 1);
        EXPECT_EQ(a <= b, difference.day != 1);
    }
    PiDate otherDay = a;
    otherDay.dayWeek = 0;
    EXPECT_FALSE(a == otherDay);
    EXPECT_TRUE(a <= otherDay && otherDay <= a && !(a < otherDay));
}

} // namespace
