#include <oravane/PbDateFormatMapping.h>

#include "attributes/AttributeTest.h"

#include <string>
#include <tuple>

namespace {

using Contents = std::tuple<std::string, std::string, float, float>;

Contents contentsOf(const PbDateFormatMapping &mapping) {
    SbString first, second;
    float min, max;
    mapping.getDateMapping(first, second, min, max);
    return {first.getString(), second.getString(), min, max};
}

PiDate dateOf(const char *text, const char *format) {
    PiDate date;
    EXPECT_EQ(date.setDateString(text, format), 0);
    return date;
}

/// NaN when it cannot be read.
float coordinate(const PbDateFormatMapping &mapping, const char *date) {
    float result = NaN;
    const int isRead = mapping.getCoordinate(date, result);
    EXPECT_EQ(isRead, std::isnan(result) ? 0 : 1);
    return result;
}

TEST(PbDateFormatMapping, TheEarlierDateHasTheSmallerCoordinate) {
    PbDateFormatMapping mapping;
    EXPECT_EQ(contentsOf(mapping), Contents("1-01-70", "2-01-70", 0, 1));
    EXPECT_EQ(coordinate(mapping, "1-03-72"), 790);
    const char *early = "1-01-90", *late = "1-01-92";
    const struct {
        const char *date1, *date2;
        float coord1, coord2;
        Contents contents;
    } rows[] = {
        {early, late, 10, 30, {early, late, 10, 30}},
        {late, early, 10, 30, {late, early, 10, 30}},
        {early, late, 30, 10, {early, late, 10, 30}},
        {early, late, 10, 10, {late, early, 10, 10}},
    };
    ChangeCounter counter(mapping);
    for (const auto &[date1, date2, coord1, coord2, contents] : rows) {
        EXPECT_EQ(mapping.setDateMapping(date1, date2, coord1, coord2), 0);
        EXPECT_EQ(contentsOf(mapping), contents);
        const float max = std::get<3>(contents), half = (10 + max) / 2;
        EXPECT_EQ(coordinate(mapping, early), 10);
        EXPECT_EQ(coordinate(mapping, late), max);
        EXPECT_EQ(coordinate(mapping, "1-01-91"), half);
        EXPECT_EQ(mapping.getDateP(half), dateOf(max == 10 ? early : "1-01-91", "dmy"));
        EXPECT_EQ(mapping.getDateP(NaN), dateOf(early, "dmy"));
    }
    EXPECT_EQ(counter.changes(), 4);
}

TEST(PbDateFormatMapping, RefusesAndKeepsTheFormerMapping) {
    PbDateFormatMapping mapping("5-06-90", "6-06-90", 1, 2, nullptr);
    const ChangeCounter counter(mapping);
    const struct {
        const char *date1, *date2;
        float coord2;
        int result;
    } rows[] = {
        {"", "1-01-90", 1, 1},          {nullptr, "1-01-90", 1, 1},          {"45-01-90", "", 1, 1},
        {"1-01-90", "1-01", 1, 2},      {"1-01-90", nullptr, 1, 2},          {"30-02-90", "28-02-90", 1, 3},
        {"1-01-90", "2-01-90", NaN, 4}, {"1-01-90", "2-01-90", infinity, 4},
    };
    for (const auto &[date1, date2, coord2, result] : rows)
        EXPECT_EQ(mapping.setDateMapping(date1, date2, 0, coord2), result);
    EXPECT_EQ(contentsOf(mapping), Contents("5-06-90", "6-06-90", 1, 2));
    EXPECT_EQ(coordinate(mapping, "7-06-90"), 3);
    EXPECT_TRUE(std::isnan(coordinate(mapping, "7-06")));
    EXPECT_TRUE(std::isnan(coordinate(mapping, nullptr)));
    EXPECT_EQ(counter.changes(), 0);
    EXPECT_EQ(contentsOf(PbDateFormatMapping("x", "y", 5, 6, "dmY")), Contents("1-01-70", "2-01-70", 0, 1));
    mapping.setDateMappingP(PiDate(), PiDate(), 3, 4);
    EXPECT_EQ(mapping.getCoordinateP(PiDate()), 3);
    EXPECT_EQ(mapping.getDateP(9), PiDate());
}

TEST(PbDateFormatMapping, AssignmentTellsOfTheNewValues) {
    const PbDateFormatMapping source("1-01-1990", "2-01-1990", 5, 6, "dmY");
    PbDateFormatMapping mapping;
    const ChangeCounter counter(mapping, [&] { EXPECT_EQ(coordinate(mapping, "3-01-1990"), 7); });
    mapping = source;
    EXPECT_EQ(counter.changes(), 1);
}

TEST(PbDateFormatMapping, AFaultyFormatIsFoundByTheNextCall) {
    const struct {
        const char *format;
        int fault;
    } rows[] = {{"\"'DdhmY", 0}, {"", 0}, {"dd", 2}, {"hmH", 3}, {"mM", 2}, {"Yy", 2}, {"d-m", 2}, {"Q", 1}};
    for (const auto &[format, fault] : rows) {
        PbDateFormatMapping mapping;
        const ChangeCounter counter(mapping);
        EXPECT_EQ(mapping.setFormat(format), 0) << format;
        EXPECT_EQ(mapping.setFormat(nullptr), fault) << format;
        EXPECT_EQ(mapping.getFormat(), SbString(fault ? format : "dmy"));
        EXPECT_EQ(counter.changes(), fault ? 1 : 2);
    }
}

TEST(PbDateFormatMapping, KeepsSecondsAsFarAsCoordinatesDo) {
    // Coordinates are seconds of 60 years; those of the first half year have a float for each.
    const PbDateFormatMapping mapping("01-01-1960", "01-01-2020", 0, 1893456000.f, "dmY");
    for (const float seconds : {1.f, 86399.f, 16777215.f}) {
        PiDate date = dateOf("1960", "Y");
        date.incDateStep(seconds, PiDate::STEP_SECOND);
        EXPECT_EQ(mapping.getCoordinateP(date), seconds);
        EXPECT_EQ(mapping.getDateP(seconds), date);
    }
    EXPECT_NEAR(mapping.getCoordinateP(dateOf("31-12-2019 23:59:50", "dmYh'\"")), 1893455990.0, 64);
    // Before the first date, time goes from January to January.
    EXPECT_EQ(mapping.getDateP(-86400).month, 1);
    EXPECT_EQ(mapping.getDateP(-86400).year, 1959);
}

} // namespace
