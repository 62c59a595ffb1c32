#include "axes/DateRepresentation.h"

#include "text/DateTime.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include <gtest/gtest.h>

using oravane::DateLevel;
using oravane::DateRepresentation;
using oravane::DateRepresentations;

namespace {

const char *const units[] = {"", "SEC", "MIN", "HOU", "DAY", "MON", "YEA"};

std::string plain(float number) {
    char text[100];
    return {text, std::to_chars(text, text + sizeof text, number, std::chars_format::fixed).ptr};
}

/// In the language itself.
std::string written(const DateRepresentation &levels) {
    static const char letters[] = "smHDDMMY";
    std::string text;
    for (const DateLevel &level : levels) {
        text += &level == &levels.front() ? "" : ";";
        if (level.unit != PiDate::STEP_NONE)
            text += plain(level.step) + units[level.unit];
        text += level.prefix.empty() ? "" : "'" + level.prefix + "'";
        for (const auto &e : level.elements) {
            text += std::string(" ") + letters[static_cast<int>(e.form)];
            text += e.width == 0 ? "" : std::to_string(e.width);
            text += e.suffix.empty() ? "" : "'" + e.suffix + "'";
        }
    }
    return text;
}

TEST(DateRepresentation, IsReadFromItsLanguage) {
    struct Row {
        std::string text;
        std::string levels; ///< as they are written; or the place of the fault
        char separator = ';';
    };
    const Row rows[] = {
        {"2 DAY D ' ' M 3 ' ' Y 4", "2DAY D' ' M3' ' Y4"},
        {"2 DAY D ' ' M 3 ' ' Y 4", "2DAY D' ' M3' ' Y4", ' '}, // blanks do not separate
        {"+1.5 SEC 'at ' s'\"'", "1.5SEC'at ' s'\"'"},
        {".5SEC;-.5SEC;7.SEC;-3 DAY", "0.5SEC;-0.5SEC;7SEC;-3DAY"},
        {"MONM;DAYD3D0D", "0MON M;0DAY D3 D D"},
        {"s m H D M Y;;", " s m H D M Y;;"},
        {"'\n\t' M''Y", "'\n\t' M Y"},
        {"D\nM", " D; M", '\n'},
        {"DAYDM", "0DAY D M", 'D'}, // what is a token of its own does not separate
        {"D 99999999999999999999", " D1000000000"},
        {std::string(1'000'000, 'D') + "?", "1000001"},
        {std::string(400, '9') + "SEC", "1"},
        {std::string(40, '9') + "SEC", "1"},
        {"'" + std::string(1'000'000, '?'), "1"},
        {std::string("D\0M", 3), "2"},
    };
    const Row faults[] = {
        {"2", "2"},      {"2 D", "3"},     {"MONTH", "4"},   {"sec", "2"},     {"D 3 4", "5"},
        {"D -3", "4"},   {"D 3.5", "5"},   {"D 3.", "4"},    {". SEC", "1"},   {"+ SEC", "1"},
        {"D;D\nM", "4"}, {"1e5 SEC", "2"}, {"DAY DAY", "7"}, {"D'a''b'", "7"}, {"'a''b'", "6"},
    };
    const auto expectLevels = [](const Row &row) {
        int error = -1;
        const auto levels = oravane::parseAxisRep(row.text, row.separator, error);
        EXPECT_EQ(levels ? written(*levels) : std::to_string(error), row.levels) << row.text.substr(0, 50);
        EXPECT_EQ(levels.has_value(), error == 0);
    };
    std::for_each(std::begin(rows), std::end(rows), expectLevels);
    std::for_each(std::begin(faults), std::end(faults), expectLevels);
}

/// The levels that alternatives and periods give for a span.
std::string chosen(const std::vector<std::string> &texts, const char *periods, double days,
                   double seconds = 0, PiDate::Language language = PiDate::ENGLISH) {
    PiDate start, end;
    oravane::stepSeconds(end, days * 86400 + seconds);
    return written(DateRepresentations(texts, periods, ';').getDateAxisRep(start, end, language));
}

TEST(DateRepresentation, WhatIsNotGivenFollowsFromTheSpan) {
    struct Row {
        const char *text;
        double days, seconds;
        const char *levels;
    };
    const Row levels[] = {
        {"", 0, 0.004, "0.0005SEC s'\"';1MIN H'h ' m'''"},
        {"", 0, 4, "0.5SEC s'\"';1MIN H'h ' m'''"},
        {"", 0, 5.9, "1SEC s'\"';1MIN H'h ' m'''"},
        {"", 0, 359, "30SEC s'\"';1MIN H'h ' m'''"},
        {"", 0, 360, "1MIN m''';1HOU D' ' H'h'"},
        {"", 0, 21599, "30MIN m''';1HOU D' ' H'h'"},
        {"", 0, 21600, "1HOU H'h';1DAY M3' ' D' ' Y2"},
        {"", 5, 86399, "12HOU H'h';1DAY M3' ' D' ' Y2"},
        {"", 6, 0, "1DAY D;1MON M3' ' Y4"},
        {"", 150, 0, "13DAY D;1MON M3' ' Y4"},
        {"", 151, 0, "1MON M3;1YEA Y24"},
        {"", 1825, 0, "5MON M3;1YEA Y24"},
        {"", 36524250, 0, "8339YEA Y24"},
        {"'a' Y M3 s;DAY;", 1, 0, "2HOU'a' H'h' Y M3;1DAY;1MON M3"},
        {"H s D 3;;Y;", 9, 0, "1DAY D3;1MON M3;1YEA Y"},
        {"1 SEC;", 1, 0, "1SEC;2HOU H'h'"},
    };
    const Row steps[] = {
        {"SEC s", 0, 12, "1SEC s"}, {"SEC s", 0, 449, "30SEC s"}, {"SEC s", 0, 450, "1MIN s"},
        {"MIN", 0, 26999, "30MIN"}, {"MIN", 0, 27000, "1HOU"},    {"HOU", 3, 0, "6HOU"},
        {"HOU", 4, 0, "8HOU"},      {"HOU", 12, 86399, "12HOU"},  {"HOU", 13, 0, "1DAY"},
        {"DAY", 17, 0, "1DAY"},     {"DAY", 18, 0, "2DAY"},       {"MON", 539, 0, "1MON"},
        {"MON", 540, 0, "2MON"},    {"YEA", 6570, 0, "2YEA"},     {"7 DAY", 1, 0, "7DAY"},
    };
    const auto expectLevels = [](const Row &row) { // of two, the first one serves these spans
        EXPECT_EQ(chosen({row.text, "1 YEA"}, "1 YEA", row.days, row.seconds), row.levels) << row.text;
    };
    std::for_each(std::begin(levels), std::end(levels), expectLevels);
    std::for_each(std::begin(steps), std::end(steps), expectLevels);
    EXPECT_EQ(chosen({}, "", 1, 0, PiDate::DEUTSCH), "2HOU H'h';1DAY D' ' M3' ' Y2");
}

TEST(DateRepresentation, OneOfSeveralIsChosenByTheSpan) {
    const std::vector<std::string> three{"1 HOU", "1 DAY", "1 YEA"};
    const std::string automatic = chosen({""}, "", 9);
    struct Row {
        std::vector<std::string> texts;
        const char *periods;
        double days, seconds;
        std::string levels;
    };
    const Row rows[] = {
        {{"1DAY", "1YEA"}, "1 MON", 31, 0, "1DAY"},
        {three, "10 DAY 6 HOU", 0, 21600, "1HOU"}, // the periods are sorted, not the alternatives
        {three, "10 DAY 6 HOU", 0, 21601, "1DAY"},
        {three, "+10DAY6HOU", 10, 0, "1DAY"},
        {three, "HOU 1.9 DAY", 1, 1, "1YEA"},     // cut to whole units
        {three, "86400 SEC 1 DAY", 9, 0, "1YEA"}, // equal ones are one
        {three, "1 DAY 86400 SEC", 1, 0, "1HOU"},
        // Lengths are those of first levels, and the nearest to a twelfth of the span is taken.
        {three, "", 0, 3600, "1HOU"},
        {three, "", 6, 0, "1HOU"}, // a twelfth is 12 hours: 11 off, 12 off
        {three, "", 7, 0, "1DAY"}, // 14 hours
        {three, "", 12 * 183 + 12, 0, "1YEA"},
        {three, "", 12 * 183 - 12, 0, "1DAY"},
        {three, "", 400000, 0, "1YEA"},
        {{"D", "2 MIN m", "3 SEC"}, "", 0, 36, "3SEC"},
        {{"D", "2 MIN m", "M"}, "", 400, 0, "2MIN m"},
        {{"10 SEC", "20 SEC"}, "", 0, 180, "20SEC"}, // as close: the larger
        {{"D 3"}, "", 9, 0, automatic},              // no length at all
    };
    for (const Row &row : rows)
        EXPECT_EQ(chosen(row.texts, row.periods, row.days, row.seconds), row.levels)
            << row.texts[0] << " of " << row.texts.size() << ", " << row.periods << ", " << row.days;
    for (const char *periods : {"1", "-1 DAY", "1 DAY ;", "1 DAY D", "1 DAY 1 MON", "1e5 DAY", " "})
        EXPECT_EQ(chosen({"1DAY", "1YEA"}, periods, 9), automatic) << periods;
    for (const char *text : {"", "D;1", "'"})
        EXPECT_EQ(chosen({text, "1DAY"}, "", 9), automatic) << text;
    // A year sorts as 365.25 months, and huge numbers stay at the end.
    const DateRepresentations sorted({"D", "D", "D", "D"}, "1 YEA 365 MON 99999999999 YEA", ';');
    ASSERT_EQ(sorted.periods().size(), 3U);
    EXPECT_EQ(sorted.periods()[0].month, 365);
    EXPECT_EQ(sorted.periods()[1].year, 1);
    EXPECT_EQ(sorted.periods()[2].year, std::numeric_limits<int>::max());
}

} // namespace
