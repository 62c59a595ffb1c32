#include "axes/DateGraduations.h"

#include "axes/LinearGraduations.h"
#include "text/DateTime.h"

#include <oravane/PbDateFormatMapping.h>

#include <cmath>

#include <gtest/gtest.h>

using oravane::DateAxis;
using oravane::DateGraduations;
using oravane::DateLevel;

namespace {

PiDate dateOf(const std::string &text) {
    PiDate date;
    EXPECT_EQ(date.setDateString(text.c_str(), "Ymdh'\""), 0) << text;
    return date;
}

DateAxis axisOf(const std::string &start, const std::string &end) {
    DateAxis axis;
    axis.start = dateOf(start);
    axis.end = dateOf(end);
    return axis;
}

DateLevel levelOf(const char *text) {
    int error = 0;
    return oravane::parseAxisRep(text, ';', error).value().front();
}

PbDateFormatMapping mappingOf(const DateAxis &axis) {
    PbDateFormatMapping mapping;
    EXPECT_EQ(mapping.setDateMappingP(axis.start, axis.end, 0, 1), 0);
    return mapping;
}

std::string joined(const DateGraduations &grads) {
    std::string text;
    for (const std::string &label : grads.labels)
        text += (text.empty() ? "" : " ") + label;
    return text;
}

TEST(DateGraduations, BeginAndGoOnByTheirUnit) {
    struct Row {
        const char *start, *end, *level, *labels;
        bool fitsStart = false;
    };
    const Row rows[] = {
        {"1999 12 31 23 59 58.2", "2000 1 1 0 0 2.2", "1 SEC m'.'s", "59.59 0.0 0.1 0.2"},
        {"1999 12 31 23 59 58.2", "2000 1 1 0 0 0.2", "0.4 SEC s", "58.4 58.8 59.2 59.6 0.0"},
        {"1999 12 31 23 59 58.2", "2000 1 1 0 0 0.2", "0.4 SEC s", "58.2 58.6 59.0 59.4 59.8 0.2", true},
        {"2000 1 1 0 0 0.3", "2000 1 1 0 0 0.7", "0.1 SEC s", "0.3 0.4 0.5 0.6 0.7"},
        {"2000 1 1 0 0 0.01", "2000 1 1 0 0 0.05", "0.01 SEC s", "0.01 0.02 0.03 0.04 0.05"},
        {"2000 1 1 0 0 0", "2000 1 1 0 0 0.0003", "0.00005 SEC s",
         "0.00000 0.00005 0.00010 0.00015 0.00020 0.00025 0.00030"},
        {"1999 12 31 23 59 30", "2000 1 1 0 3 0", "90 SEC H':'m':'s", "0:0:30 0:2:0"},
        {"1999 12 31 23 59 30", "2000 1 1 0 5 0", "150 SEC m':'s", "1:30 4:0"},
        {"2000 1 1 10 0 0", "2000 1 1 11 0 0", "1200 SEC m", "0 20 40 0"}, // of no minutes and seconds
        {"1999 12 31 23 52 0.5", "2000 1 1 0 12 0", "5 MIN D' 'm'm'", "31 55m 1 0m 1 5m 1 10m"},
        {"1999 12 31 23 59 0.5", "2000 1 1 0 12 0", "7 MIN m", "3 10"}, // 60 is raised to 63
        {"1999 12 31 22 0 0", "2000 1 2 0 0 0", "12 HOU D'/'H", "1/0 1/12 2/0"},
        {"1999 12 31 22 0 1", "1999 12 31 23 59 59", "1 HOU H", "23"},
        {"1900 2 26 1 0 0", "1900 3 2 0 0 0", "1 DAY D", "27 28 1 2"},
        {"2000 2 26 0 30 0", "2000 3 2 0 0 0", "2 DAY D'/'H':'m", "26/0:30 28/0:30 1/0:30"}, // hour 0
        {"2096 1 2 0 0 0", "2104 3 2 0 0 0", "24 MON M3Y3'.'D",
         "FEB2096.1 FEB2098.1 FEB2100.1 FEB2102.1 FEB2104.1"},
        {"1899 2 1 7 0 0", "1900 3 1 0 0 0", "6 MON M'/'Y'/'H", "2/99/7 8/99/7 2/0/7"},
        {"1899 1 1 0 0 0", "2101 1 1 0 0 0", "100 YEA Y", "99 99 99"},
        {"1899 1 2 0 0 0", "2101 1 1 0 0 0", "101 YEA Y4 M3D", "1900JAN1 2001JAN1"},
        // Outside: one, for the start.
        {"2000 1 2 3 4 5", "2000 2 2 0 0 0", "1 YEA '<'D'.'M' 'H'.'m'.'s'>'", "<2.1 3.4.5>"},
        {"2000 1 2 3 4 5", "2000 2 2 0 0 0", "0.5 DAY D", "2"},
        {"2000 1 2 3 4 5", "2000 1 2 3 4 8", "10 SEC s", "5"},
        {"2000 1 2 3 4 5", "2000 1 2 3 4 8", "100000000000 MIN s", "5"},
        // Steps that lead nowhere, or back.
        {"2000 1 1 0 0 0", "2000 2 2 0 0 0", "0.5 DAY D", ""},
        {"2000 1 1 0 0 0", "2000 2 2 0 0 0", "-1 DAY D", "1"},
        {"2000 1 1 0 0 1", "2000 2 2 0 0 0", "-1 SEC s", "1"},
        {"2000 1 1 0 0 0", "2000 1 1 0 0 1", "0.0000000001 SEC s", ""},
        {"1958 1 1 0 0 0", "2020 1 1 0 0 0", "1 SEC s", ""},
        {"1958 1 1 0 0 0", "2020 1 1 0 0 0", "999999999999 YEA Y", "58"},
        {"2024 2 27 12 0 0", "2024 3 1 0 0 0", "1 DAY D20' 'D 2", "WENESDAY WE THURSDAY TH FRIDAY FR"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(std::string(row.start) + ", " + row.level);
        DateAxis axis = axisOf(row.start, row.end);
        axis.fitsStart = row.fitsStart;
        const PbDateFormatMapping mapping = mappingOf(axis);
        const DateLevel level = levelOf(row.level);
        const DateGraduations grads = oravane::getGradList(axis, level, mapping);
        EXPECT_EQ(joined(grads), row.labels);
        ASSERT_EQ(grads.coords.size(), grads.labels.size());
        PiNumericFormat format;
        const PiDate first = oravane::getFirstDateGrad(axis, level, format);
        const bool isInside = axis.start <= first && first <= axis.end;
        if (!grads.coords.empty()) {
            EXPECT_EQ(grads.coords[0], isInside ? mapping.getCoordinateP(first) : 0.5f);
        }
    }
}

/// The unit that stands at its first value, and all below it, tells the graduations of the automatic levels.
TEST(DateGraduations, AutomaticOnesAreRoundReadableAndAllThere) {
    const char *const starts[] = {"1899 12 31 23 59 59.7", "1999 2 27 12 0 0", "2000 2 28 23 0 30",
                                  "2099 12 1 0 0 0", "0001 1 1 0 0 0"};
    for (const char *start : starts)
        for (double seconds = 0.01; seconds < 3.2e12; seconds *= 1.13) {
            DateAxis axis = axisOf(start, start);
            oravane::stepSeconds(axis.end, seconds);
            SCOPED_TRACE(testing::Message() << start << " + " << seconds);
            const PbDateFormatMapping mapping = mappingOf(axis);
            const auto levels =
                oravane::DateRepresentations().getDateAxisRep(axis.start, axis.end, PiDate::ENGLISH);
            const DateGraduations first = oravane::getGradList(axis, levels[0], mapping);
            const std::size_t count = first.coords.size();
            ASSERT_GE(count, 3U);
            ASSERT_LE(count, 19U);
            for (std::size_t i = 1; i < count; ++i) {
                ASSERT_GT(first.coords[i], first.coords[i - 1]);
                ASSERT_NE(first.labels[i], first.labels[i - 1]);
            }
            // No further one has room at the ends; months and leap years differ in length.
            const float distance =
                (first.coords.back() - first.coords.front()) / static_cast<float>(count - 1);
            ASSERT_GE(first.coords[0], 0);
            ASSERT_LE(first.coords.back(), 1);
            ASSERT_LT(first.coords[0], 1.13f * distance);
            ASSERT_GT(first.coords.back() + 1.13f * distance, 1);
            ASSERT_LE(oravane::getGradList(axis, levels.back(), mapping).coords.size(), 19U);
            if (HasFailure())
                return;
        }
}

TEST(DateGraduations, StayRightWhereCoordinatesAreRounded) {
    const DateAxis axis = axisOf("1965 1 1 0 0 0", "1965 1 2 0 0 0");
    PbDateFormatMapping mapping("1-01-70", "2-01-70", 0, 1, "dmy"); // before its dates
    const auto between = [&](double part) {
        return oravane::dateBetween(axis.start, axis.end, part, mapping);
    };
    EXPECT_EQ(between(0), axis.start);
    EXPECT_EQ(between(1), axis.end);
    EXPECT_EQ(between(0.1f), dateOf("1965 1 1 2 24 0"));
    EXPECT_EQ(between(0.50003), dateOf("1965 1 1 12 0 0")) << "three seconds are no coordinate here";
    EXPECT_EQ(between(-2), dateOf("1964 12 30 0 0 0")) << "back over the start of a year";
    EXPECT_EQ(between(-366 * 60), dateOf("1904 11 17 0 0 0"));
    EXPECT_EQ(between(std::nan("")), axis.start);
    // Seen from 1958, coordinates near 2020 are two minutes apart.
    const DateAxis night = axisOf("2019 12 31 23 30 0", "2020 1 1 0 30 0");
    mapping.setDateMappingP(dateOf("1958 1 1 0 0 0"), night.end, 0, 22645);
    EXPECT_EQ(joined(oravane::getGradList(night, levelOf("5 MIN m"), mapping)),
              "30 35 40 45 50 55 0 5 10 15 20 25 30");
    EXPECT_EQ(joined(oravane::getGradList(night, levelOf("1 MIN m"), mapping)), "");
    EXPECT_EQ(oravane::dateBetween(night.start, night.end, 0.4999, mapping), dateOf("2020 1 1 0 0 0"));
    for (const double far : {1e300, -1e300})
        EXPECT_GT(std::abs(between(far).year), 1000000);
}

} // namespace
