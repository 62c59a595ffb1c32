// Electricity made in Iowa: bars along x and along y, with names and values, and bars below zero.
#include "Sheet.h"

#include "tools/DataFile.h"

#include <oravane/PoLinearAxis.h>
#include <oravane/PoNumericDisplayFormat.h>
#include <oravane/PoSingleHistogram.h>

#include <Inventor/nodes/SoSeparator.h>

#include <cmath>

namespace {

std::vector<const char *> pointersTo(const std::vector<std::string> &texts) {
    std::vector<const char *> pointers;
    pointers.reserve(texts.size());
    for (const std::string &text : texts)
        pointers.push_back(text.c_str());
    return pointers;
}

SoSeparator *newPanel(const Sheet &sheet, const SbBox2f &place, const SbBox2f &data) {
    SoSeparator *panel = sheet.addPanel(place, data);
    auto *format = new PoNumericDisplayFormat;
    format->formatType = PbNumericDisplayFormat::INTEGER_FORMAT;
    panel->addChild(format);
    return panel;
}

/// A scale in thousands of MWh on a panel whose longer side has `side` millimetres, with grid lines of this
/// length.
void addScale(SoSeparator *panel, float side, int type, float low, float high, float gridLength) {
    auto *axis = new PoLinearAxis;
    axis->type = type;
    axis->start.setValue(0, type == PoCartesianAxis::YX ? low : 0, 0);
    axis->end = high;
    axis->gridVisibility = PoAxis::VISIBILITY_ON;
    axis->gridLengthGradOtherSide = gridLength;
    axis->arrowVisibility = PoAxis::VISIBILITY_OFF;
    axis->gradFontSize = 3 / side;
    axis->titleFontSize = 3.2f / side;
    axis->tickMainLength = 1.2f / side;
    axis->titleVisibility = PoAxis::VISIBILITY_ON;
    axis->titlePosition = PoAxis::TITLE_MIDDLE;
    axis->titlePath = PoAxis::PATH_RIGHT;
    axis->titleString = "thousand MWh";
    axis->set(styled("mainGradGridApp", "0.8 0.8 0.8", 0.6f).c_str());
    panel->addChild(axis);
}

PoSingleHistogram *addBars(SoSeparator *panel, PoHistogram::Type type, const std::vector<float> &values,
                           const std::vector<std::string> &names) {
    const auto count = static_cast<int>(values.size());
    auto *bars = new PoSingleHistogram({0, 0}, static_cast<float>(count), type, count, values.data(),
                                       pointersTo(names).data());
    bars->valueFontSize = 0.022f;
    bars->nameFontSize = 0.025f;
    panel->addChild(bars);
    return bars;
}

void addYears(const Sheet &sheet, const std::vector<float> &values, const std::vector<std::string> &years) {
    sheet.addText(26, 178, 5, "Electricity from renewable sources in Iowa");
    SoSeparator *panel = newPanel(sheet, SbBox2f(26, 106, 146, 172), SbBox2f(0, 0, 17, 24000));
    addScale(panel, 120, PoCartesianAxis::YX, 0, 24000, 17);
    PoSingleHistogram *bars = addBars(panel, PoHistogram::X, values, years);
    bars->valuePath = PoHistogram::PATH_UP;
    bars->namePath = PoHistogram::PATH_UP;
    bars->set(styled("barApp", "0.35 0.6 0.3").c_str());
}

void addSources(const Sheet &sheet, const std::vector<float> &values) {
    sheet.addText(160, 178, 5, "By source, 2017");
    SoSeparator *panel = newPanel(sheet, SbBox2f(178, 112, 262, 172), SbBox2f(0, 0, 35000, 3));
    addScale(panel, 84, PoCartesianAxis::XY, 0, 35000, 3);
    PoSingleHistogram *bars = addBars(panel, PoHistogram::Y, values, {"fossil", "nuclear", "renewable"});
    const SbColor colors[] = {SbColor(0.55f, 0.5f, 0.47f), SbColor(0.85f, 0.65f, 0.2f),
                              SbColor(0.35f, 0.6f, 0.3f)};
    bars->color.setValues(0, 3, colors);
    bars->valueFontSize = bars->nameFontSize = 0.035f;
    bars->valueAddString = " GWh";
    bars->valueAddStringVisibility = TRUE;
}

void addChanges(const Sheet &sheet, const std::vector<float> &values, const std::vector<std::string> &years) {
    sheet.addText(26, 84, 5, "Change of fossil electricity from one year to the next");
    SoSeparator *panel = newPanel(sheet, SbBox2f(26, 12, 262, 78), SbBox2f(0, -6000, 16, 6000));
    addScale(panel, 236, PoCartesianAxis::YX, -6000, 6000, 16);
    std::vector<float> changes;
    changes.reserve(values.size());
    for (std::size_t i = 1; i < values.size(); ++i)
        changes.push_back(values[i] - values[i - 1]);
    PoSingleHistogram *bars = addBars(panel, PoHistogram::X, changes, {years.begin() + 1, years.end()});
    std::vector<SbColor> colors;
    colors.reserve(changes.size());
    for (const float change : changes)
        colors.push_back(change < 0 ? SbColor(0.3f, 0.5f, 0.75f) : SbColor(0.8f, 0.4f, 0.3f));
    bars->color.setValues(0, static_cast<int>(colors.size()), colors.data());
    bars->valueFontSize = bars->nameFontSize = 0.012f;
}

} // namespace

int main(int argc, char **argv) {
    return oravane::runExample(argc, argv, [](oravane::Example &example) {
        PoBase::init();
        const oravane::TableFile table =
            oravane::readTableFile(example.dataFile("table_iowa_electricity.csv"));
        const std::vector<std::string> years = table.texts("year");
        const std::vector<float> fossil = table.numbers("fossil"), renewable = table.numbers("renewables");
        const Sheet sheet(276, 190);
        addYears(sheet, renewable, years);
        addSources(sheet, {fossil.back(), table.numbers("nuclear").back(), renewable.back()});
        addChanges(sheet, fossil, years);
        sheet.addText(26, 2, 3, "Data: US Energy Information Administration");
        sheet.write(example, "iowa_bars");
    });
}
