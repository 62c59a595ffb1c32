// Weather of Seattle: the range of temperature of a year as a filled band and its rain by month; the ways to
// choose places on a curve; and the shapes of curves.
#include "Sheet.h"

#include "tools/DataFile.h"

#include <oravane/PoCurve.h>
#include <oravane/PoDateFormatMapping.h>
#include <oravane/PoLinearAxis.h>
#include <oravane/PoNumericDisplayFormat.h>
#include <oravane/PoSingleHistogram.h>
#include <oravane/PoTimeAxis.h>

#include <Inventor/nodes/SoSeparator.h>

#include <array>
#include <cmath>

namespace {

/// The days of 2015: degrees and millimetres.
struct Year {
    std::vector<float> warmest, coldest;
    std::array<float, 12> rain{};
};

Year readYear(const oravane::Example &example) {
    const oravane::TableFile table = oravane::readTableFile(example.dataFile("series_seattle_weather.csv"));
    const std::vector<std::string> dates = table.texts("date");
    const std::vector<float> warmest = table.numbers("temp_max"), coldest = table.numbers("temp_min"),
                             rain = table.numbers("precipitation");
    Year year;
    for (std::size_t i = 0; i < dates.size(); ++i) {
        if (dates[i].compare(0, 4, "2015") != 0)
            continue;
        year.warmest.push_back(warmest[i]);
        year.coldest.push_back(coldest[i]);
        year.rain[std::stoul(dates[i].substr(5, 2)) - 1] += rain[i];
    }
    return year;
}

/// Days from the start of the year against values.
std::vector<SbVec2f> pointsOf(const std::vector<float> &values, std::size_t count) {
    std::vector<SbVec2f> points;
    for (std::size_t day = 0; day < count; ++day)
        points.emplace_back(static_cast<float>(day), values[day]);
    return points;
}

PoCurve *addCurve(SoSeparator *panel, const std::vector<SbVec2f> &points, const char *color, float width) {
    auto *curve = new PoCurve;
    curve->point.setValues(0, static_cast<int>(points.size()), points.data());
    curve->set(styled("curvePointApp", color, width).c_str());
    panel->addChild(curve);
    return curve;
}

/// In millimetres on a panel whose longer side has `side` of them.
template <class Axis>
Axis *addAxis(SoSeparator *panel, float side, float fontSize) {
    auto *axis = new Axis;
    axis->arrowVisibility = PoAxis::VISIBILITY_OFF;
    axis->gradFontSize = fontSize / side;
    axis->titleFontSize = fontSize / side;
    axis->tickMainLength = 1.2f / side;
    axis->set(styled("mainGradGridApp", "0.8 0.8 0.8", 0.6f).c_str());
    panel->addChild(axis);
    return axis;
}

PoLinearAxis *addScale(SoSeparator *panel, float side, const SbBox2f &data, float step, const char *title) {
    auto *axis = addAxis<PoLinearAxis>(panel, side, 3);
    axis->type = PoCartesianAxis::YX;
    axis->start.setValue(data.getMin()[0], data.getMin()[1], 0);
    axis->end = data.getMax()[1];
    axis->step = step;
    axis->gridVisibility = PoAxis::VISIBILITY_ON;
    axis->gridLengthGradOtherSide = data.getSize()[0];
    axis->titleVisibility = PoAxis::VISIBILITY_ON;
    axis->titlePosition = PoAxis::TITLE_MIDDLE;
    axis->titlePath = PoAxis::PATH_RIGHT;
    axis->titleString = title;
    return axis;
}

PoTimeAxis *addDays(SoSeparator *panel, float side, const SbBox2f &data, const char *end) {
    auto *days = new PoDateFormatMapping;
    days->format = "Ymd";
    days->date1 = "2015-01-01";
    days->date2 = "2015-01-02";
    panel->addChild(days);
    auto *axis = addAxis<PoTimeAxis>(panel, side, 3);
    axis->startDate = "2015-01-01";
    axis->endDate = end;
    axis->coord = data.getMin()[1];
    return axis;
}

// ------------------------------------------------------------------------------------------- the figures

void addTemperatures(const Sheet &sheet, const Year &year) {
    sheet.addText(22, 180, 5, "Temperature in Seattle, 2015: range of each day, and a mark a week");
    const SbBox2f data(0, -10, 365, 40);
    SoSeparator *panel = sheet.addPanel(SbBox2f(22, 92, 266, 174), data);
    addScale(panel, 244, data, 10, "degrees Celsius");
    addDays(panel, 244, data, "2016-01-01");
    // The band is one closed line, there along the warmest and back along the coldest; down to a threshold
    // below all, so that nothing is cut.
    std::vector<SbVec2f> band = pointsOf(year.warmest, year.warmest.size());
    for (std::size_t day = year.coldest.size(); day-- > 0;)
        band.emplace_back(static_cast<float>(day), year.coldest[day]);
    PoCurve *range = addCurve(panel, band, "0.9 0.6 0.4", 0.5f);
    range->isCurveFilled = TRUE;
    range->fillingThreshold = -10;
    range->curveRep = PoCurve::CURVE_NONE;
    range->set(styled("curveFillingApp", "0.97 0.82 0.66").c_str());
    // Every seventh day, and frost.
    PoCurve *weeks = addCurve(panel, pointsOf(year.warmest, year.warmest.size()), "0.8 0.3 0.15", 1);
    weeks->markerFilterType = PoCurve::INDEX_PERIOD;
    weeks->markerIndexPeriod = 7;
    weeks->set("markerApp.material { diffuseColor 0.6 0.15 0.05 } markerApp.drawStyle { pointSize 6 }");
    PoCurve *cold = addCurve(panel, pointsOf(year.coldest, year.coldest.size()), "0.25 0.4 0.7", 1);
    cold->isCurveFilled = FALSE;
}

void addRain(const Sheet &sheet, const Year &year) {
    sheet.addText(22, 72, 5, "Rain by month");
    const SbBox2f data(0, 0, 12, 300);
    SoSeparator *panel = sheet.addPanel(SbBox2f(22, 14, 266, 68), data);
    addScale(panel, 244, data, 50, "mm");
    auto *format = new PoNumericDisplayFormat;
    format->formatType = PbNumericDisplayFormat::INTEGER_FORMAT;
    panel->addChild(format);
    const char *months[] = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                            "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};
    auto *bars = new PoSingleHistogram({0, 0}, 12, PoHistogram::X, 12, year.rain.data(), months);
    bars->valueFontSize = bars->nameFontSize = 3.0f / 244;
    bars->set(styled("barApp", "0.35 0.55 0.8").c_str());
    panel->addChild(bars);
}

/// The days of two months with raise lines and marks where one filter puts them.
void addFilter(const Sheet &sheet, int filter, const Year &year) {
    const char *captions[] = {"ALL_POINTS", "INDEX_PERIOD 7", "INDEX_LIST [0, 20, 30, 44]", "X_PERIOD 10.5",
                              "X_LIST [5.5, 20, 41.3]"};
    const float y = 190 - 36.5f * static_cast<float>(filter);
    sheet.addText(24, y + 26, 3.4f, captions[filter - 1]);
    const SbBox2f data(0, 0, 60, 20);
    SoSeparator *panel = sheet.addPanel(SbBox2f(22, y, 266, y + 24), data);
    PoLinearAxis *scale = addScale(panel, 244, data, 10, "");
    scale->titleVisibility = PoAxis::VISIBILITY_OFF;
    PoCurve *curve = addCurve(panel, pointsOf(year.warmest, 61), "0.8 0.3 0.15", 1.5f);
    const std::array indices{0, 20, 30, 44};
    const std::array places{5.5f, 20.0f, 41.3f};
    curve->markerFilterType = filter;
    curve->raiseFilterType = filter;
    curve->markerIndexPeriod = curve->raiseIndexPeriod = 7;
    curve->markerXPeriod = curve->raiseXPeriod = 10.5f;
    curve->markerIndexList.setValues(0, 4, indices.data());
    curve->raiseIndexList.setValues(0, 4, indices.data());
    curve->markerXList.setValues(0, 3, places.data());
    curve->raiseXList.setValues(0, 3, places.data());
    curve->curveRep = filter >= PoCurve::X_PERIOD ? PoCurve::CURVE_SMOOTH : PoCurve::CURVE_POLYLINE;
    curve->set(
        (styled("raisePointApp", "0.5 0.5 0.5", 0.7f) + "markerApp.material { diffuseColor 0.1 0.2 0.5 }")
            .c_str());
    if (filter % 2 == 0) {
        curve->markerString = "*";
        curve->set("markerApp.font { name \"Times-Roman\" size 1.5 }");
    }
}

void addShape(const Sheet &sheet, int shape) {
    const char *captions[] = {"CURVE_NONE",     "CURVE_POLYLINE",  "CURVE_SMOOTH",
                              "CURVE_STAIRS_X", "CURVE_STAIRS_Y",  "CURVE_HISTO_X",
                              "CURVE_HISTO_Y",  "CURVE_STAIRS_2X", "CURVE_STAIRS_2Y"};
    const int column = shape % 3, row = shape / 3;
    const float x = 14 + 88 * static_cast<float>(column), y = 132 - 61 * static_cast<float>(row);
    sheet.addText(x, y + 48, 3.4f, captions[shape]);
    const std::vector<SbVec2f> points{{0, 2}, {1, 4}, {2, 3}, {3, -2}, {4, -3}, {5, 1.5f}, {6, 1.5f}, {7, 3}};
    SoSeparator *panel = sheet.addPanel(SbBox2f(x, y, x + 78, y + 46), SbBox2f(0, -4, 7, 5));
    PoCurve *curve = addCurve(panel, points, "0.15 0.3 0.55", 2);
    curve->curveRep = shape;
    curve->isCurveFilled = TRUE;
    curve->markerFilterType = PoCurve::ALL_POINTS;
    curve->set(
        (styled("curveFillingApp", "0.8 0.87 0.95") + "markerApp.material { diffuseColor 0.75 0.2 0.1 }")
            .c_str());
    auto *base = addAxis<PoLinearAxis>(panel, 78, 3);
    base->end = 7;
    base->gradVisibility = PoAxis::VISIBILITY_OFF;
}

} // namespace

int main(int argc, char **argv) {
    return oravane::runExample(argc, argv, [](oravane::Example &example) {
        PoBase::init();
        const Year year = readYear(example);
        const Sheet weather(276, 190), filters(276, 190), shapes(276, 190);
        addTemperatures(weather, year);
        addRain(weather, year);
        weather.addText(22, 2, 3, "Data: US National Oceanic and Atmospheric Administration");
        weather.write(example, "seattle_weather");
        for (int filter = PoCurve::ALL_POINTS; filter <= PoCurve::X_LIST; ++filter)
            addFilter(filters, filter, year);
        filters.write(example, "curve_filters");
        for (int shape = PoCurve::CURVE_NONE; shape <= PoCurve::CURVE_STAIRS_2Y; ++shape)
            addShape(shapes, shape);
        shapes.write(example, "curve_shapes");
    });
}
