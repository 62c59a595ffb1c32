// The contour map of Mount St. Helens and its colours in each of the four legends of values, with and without
// boxes for what lies beyond the thresholds of the map.
#include "Sheet.h"
#include "Terrain.h"

#include <oravane/PoIsovaluesList.h>
#include <oravane/PoLinearAxis.h>
#include <oravane/PoLinearValueLegend.h>
#include <oravane/PoMeshContouring.h>
#include <oravane/PoMeshFilled.h>
#include <oravane/PoNonLinearDataMapping2.h>
#include <oravane/PoNonLinearValueLegend1.h>
#include <oravane/PoNonLinearValueLegend2.h>
#include <oravane/PoNonLinearValueLegend3.h>
#include <oravane/PoNumericDisplayFormat.h>

#include <Inventor/nodes/SoSeparator.h>

namespace {

PoDataMapping *newColors(bool hasThresholds) {
    PoDataMapping *colors = newHeightColors();
    if (hasThresholds) {
        colors->minThresholdEnabled = TRUE;
        colors->minThreshold = 900;
        colors->minThresholdColor.setValue(0.55f, 0.65f, 0.8f);
        colors->maxThresholdEnabled = TRUE;
        colors->maxThreshold = 2300;
        colors->maxThresholdColor.setValue(0.9f, 0.35f, 0.3f);
    }
    return colors;
}

PoIsovaluesList *newLevels() {
    auto *levels = new PoIsovaluesList;
    levels->setRegularIsoList(600.0f, 2600.0f, 11);
    return levels;
}

void addMap(const Sheet &sheet, PbMesh2D *terrain, const SbBox2f &map) {
    const SbVec2f size = map.getSize();
    SoSeparator *panel = sheet.addPanel(SbBox2f(18, 20, 18 + 150 * size[0] / size[1], 170),
                                        SbBox2f(map.getMin(), map.getMax()));
    panel->addChild(newColors(true));
    panel->addChild(newLevels());
    auto *format = new PoNumericDisplayFormat;
    format->formatType = PbNumericDisplayFormat::INTEGER_FORMAT;
    panel->addChild(format);
    panel->addChild(newColorBands(terrain));
    PoMeshContouring *lines = newLabelledLines(terrain, 1, 0.4f, 0.016f);
    lines->set("majorContourLineApp.material { diffuseColor 0.3 0.2 0.1 }");
    panel->addChild(lines);
    for (const int type : {PoCartesianAxis::XY, PoCartesianAxis::YX}) {
        auto *axis = new PoLinearAxis;
        axis->type = type;
        axis->end = type == PoCartesianAxis::XY ? size[0] : size[1];
        axis->step = 2000;
        axis->gradFontSize = 0.018f;
        axis->tickMainLength = 0.01f;
        axis->arrowVisibility = PoAxis::VISIBILITY_OFF;
        panel->addChild(axis);
    }
}

/// One legend with its colours, in a place of the sheet.
template <class Legend>
void addLegend(const Sheet &sheet, int column, bool hasThresholds, const char *title) {
    const float x = 138 + 35 * static_cast<float>(column), y = hasThresholds ? 98 : 12;
    auto *place = new SoSeparator;
    place->addChild(newColors(hasThresholds));
    place->addChild(newLevels());
    auto *format = new PoNumericDisplayFormat;
    format->formatType = PbNumericDisplayFormat::INTEGER_FORMAT;
    place->addChild(format);
    auto *legend = new Legend;
    legend->start.setValue(x, y);
    legend->end.setValue(x + 32, y + 78);
    legend->titleVisibility = PoLegend::VISIBILITY_ON;
    legend->titlePosition = PoLegend::POS_TOP;
    legend->titleString = title;
    legend->titleFontSize = 3;
    legend->set((styled("backgroundApp", "1 1 1") + styled("backgroundBorderApp", "0.6 0.6 0.6")).c_str());
    place->addChild(legend);
    sheet.scene()->addChild(place);
}

void addLegends(const Sheet &sheet, bool hasThresholds) {
    addLegend<PoLinearValueLegend>(sheet, 0, hasThresholds, "Height (m)");
    addLegend<PoNonLinearValueLegend1>(sheet, 1, hasThresholds, "From - to (m)");
    addLegend<PoNonLinearValueLegend2>(sheet, 2, hasThresholds, "Levels (m)");
    addLegend<PoNonLinearValueLegend3>(sheet, 3, hasThresholds, "Steps (m)");
}

} // namespace

int main(int argc, char **argv) {
    return oravane::runExample(argc, argv, [](oravane::Example &example) {
        PoBase::init();
        const auto terrain = readTerrain(example, 1, false);
        const Sheet sheet(280, 190);
        sheet.addText(18, 180, 5, "Mount St. Helens, and its colours in four kinds of legends");
        addMap(sheet, terrain.get(), terrain->getBoundingBox());
        addLegends(sheet, true);
        addLegends(sheet, false);
        sheet.write(example, "map_legends");
    });
}
