// The record of carbon dioxide at Mauna Loa over 62 years, measured and without the seasons; and a year of
// it. Data: Scripps CO2 Program, scrippsco2.ucsd.edu.
#include "Sheet.h"

#include "tools/DataFile.h"

#include <oravane/PoCurve.h>
#include <oravane/PoDateFormatMapping.h>
#include <oravane/PoItemLegend.h>
#include <oravane/PoLinearAxis.h>
#include <oravane/PoTimeAxis.h>

#include <Inventor/nodes/SoSeparator.h>

namespace {

struct Record {
    std::vector<SbVec2f> measured, adjusted;
};

/// Days since the start of 1958 against parts per million.
PoDateFormatMapping *newCalendar() {
    auto *calendar = new PoDateFormatMapping;
    calendar->format = "Ymd";
    calendar->date1 = "1958-01-01";
    calendar->date2 = "1958-01-02";
    return calendar;
}

Record readRecord(const oravane::Example &example) {
    const oravane::TableFile table = oravane::readTableFile(example.dataFile("series_co2_mauna_loa.csv"));
    const std::vector<std::string> dates = table.texts("date");
    const std::vector<float> measured = table.numbers("co2"), adjusted = table.numbers("co2_adjusted");
    PbDateFormatMapping calendar("1958-01-01", "1958-01-02", 0, 1, "Ymd");
    Record record;
    for (std::size_t i = 0; i < dates.size(); ++i) {
        float day = 0;
        if (!calendar.getCoordinate(dates[i].c_str(), day))
            throw std::runtime_error(table.path + ": no date: " + dates[i]);
        record.measured.emplace_back(day, measured[i]);
        record.adjusted.emplace_back(day, adjusted[i]);
    }
    return record;
}

float dayOf(const char *date) {
    float day = 0;
    PbDateFormatMapping("1958-01-01", "1958-01-02", 0, 1, "Ymd").getCoordinate(date, day);
    return day;
}

PoCurve *addCurve(SoSeparator *panel, const std::vector<SbVec2f> &points, const char *color, float width) {
    auto *curve = new PoCurve;
    curve->point.setValues(0, static_cast<int>(points.size()), points.data());
    curve->set(styled("curvePointApp", color, width).c_str());
    panel->addChild(curve);
    return curve;
}

PoLinearAxis *addScale(SoSeparator *panel, const SbBox2f &data, const char *title) {
    auto *axis = new PoLinearAxis;
    axis->type = PoCartesianAxis::YX;
    axis->start.setValue(data.getMin()[0], data.getMin()[1], 0);
    axis->end = data.getMax()[1];
    axis->titleVisibility = PoAxis::VISIBILITY_ON;
    axis->titlePosition = PoAxis::TITLE_MIDDLE;
    axis->titlePath = PoAxis::PATH_RIGHT;
    axis->titleString = title;
    axis->gridVisibility = PoAxis::VISIBILITY_ON;
    axis->gridLengthGradOtherSide = data.getSize()[0];
    panel->addChild(axis);
    return axis;
}

PoTimeAxis *addCalendarAxis(SoSeparator *panel, const char *start, const char *end, float y) {
    panel->addChild(newCalendar());
    auto *axis = new PoTimeAxis;
    axis->startDate = start;
    axis->endDate = end;
    axis->coord = y;
    panel->addChild(axis);
    return axis;
}

template <class Axis>
void setSizes(Axis *axis) {
    axis->gradFontSize = 0.016f;
    axis->titleFontSize = 0.019f;
    axis->tickMainLength = 0.008f;
    axis->arrowVisibility = PoAxis::VISIBILITY_OFF;
    axis->set((styled("mainGradGridApp", "0.82 0.82 0.82", 0.6f)).c_str());
}

} // namespace

int main(int argc, char **argv) {
    return oravane::runExample(argc, argv, [](oravane::Example &example) {
        PoBase::init();
        const Record record = readRecord(example);
        const Sheet sheet(260, 165);
        sheet.addText(24, 156, 6, "Carbon dioxide in the air at Mauna Loa, Hawaii");
        sheet.addText(24, 4, 3, "Data: Scripps CO2 Program, scrippsco2.ucsd.edu (CC-BY-4.0)");
        const char *start = "1958-01-01", *end = "2021-01-01";
        const SbBox2f data(dayOf(start), 310, dayOf(end), 420);
        SoSeparator *panel = sheet.addPanel(SbBox2f(24, 26, 250, 148), data);
        PoLinearAxis *scale = addScale(panel, data, "CO2 (parts per million)");
        PoTimeAxis *time = addCalendarAxis(panel, start, end, data.getMin()[1]);
        time->gridVisibility = PoAxis::VISIBILITY_ON;
        time->gridLengthGradOtherSide = data.getSize()[1];
        setSizes(scale);
        setSizes(time);
        addCurve(panel, record.measured, "0.85 0.35 0.2", 1);
        addCurve(panel, record.adjusted, "0.1 0.25 0.55", 2);

        auto *legend = new PoItemLegend;
        legend->start.setValue(32, 122);
        legend->end.setValue(92, 140);
        const char *items[] = {"measured", "without the seasons"};
        legend->item.setValues(0, 2, items);
        const SbColor colors[] = {SbColor(0.85f, 0.35f, 0.2f), SbColor(0.1f, 0.25f, 0.55f)};
        legend->lineColor.setValues(0, 2, colors);
        const float widths[] = {1, 2};
        legend->lineSize.setValues(0, 2, widths);
        legend->boxVisibility = FALSE;
        legend->lineVisibility = TRUE;
        legend->set(
            (styled("backgroundApp", "1 1 1") + styled("backgroundBorderApp", "0.5 0.5 0.5")).c_str());
        sheet.scene()->addChild(legend);
        sheet.write(example, "co2_record");
    });
}
