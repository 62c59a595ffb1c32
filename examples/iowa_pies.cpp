// Electricity made in Iowa as pies: annotations in each of their positions, small slices grouped, one pulled
// out; and a pie with a body.
#include "Sheet.h"

#include "tools/DataFile.h"

#include <oravane/PoMiscTextAttr.h>
#include <oravane/PoPieChart2D.h>
#include <oravane/PoPieChart3D.h>
#include <oravane/SoVectorizeAction.h>

#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSeparator.h>

namespace {

struct Table {
    std::vector<std::string> names;
    std::vector<float> values;
};

/// From dark to light green.
std::vector<SbColor> newGreens(std::size_t count) {
    std::vector<SbColor> colors;
    for (std::size_t i = 0; i < count; ++i) {
        const float t = static_cast<float>(i) / static_cast<float>(count - 1);
        colors.emplace_back(0.75f - 0.5f * t, 0.88f - 0.33f * t, 0.6f - 0.35f * t);
    }
    return colors;
}

template <class Pie>
Pie *newPie(const Table &table, const std::vector<SbColor> &colors) {
    auto *pie = new Pie;
    for (std::size_t i = 0; i < table.names.size(); ++i)
        pie->sliceText.set1Value(static_cast<int>(i), table.names[i].c_str());
    pie->sliceValue.setValues(0, static_cast<int>(table.values.size()), table.values.data());
    pie->sliceColor.setValues(0, static_cast<int>(colors.size()), colors.data());
    return pie;
}

void setFontSizes(PoPieChart *pie, float size) {
    for (SoSFFloat *field :
         {&pie->intAnnotTextFontSize, &pie->intAnnotValueFontSize, &pie->intAnnotPercentFontSize,
          &pie->extAnnotTextFontSize, &pie->extAnnotValueFontSize, &pie->extAnnotPercentFontSize})
        *field = size;
}

/// One year in three sources; the renewable ones are pulled out.
void addSources(const Sheet &sheet, const Table &table, const std::vector<SbColor> &colors) {
    auto *pie = newPie<PoPieChart2D>(table, colors);
    pie->radius = 27;
    pie->center.setValue(56, 136);
    pie->intAnnotValueVisibility = FALSE;
    pie->intAnnotPercentVisibility = TRUE;
    pie->extAnnotValueVisibility = TRUE;
    pie->extAnnotAddString = " GWh";
    pie->extAnnotAddStringVisibility = TRUE;
    pie->setSliceToTranslate(3, 4);
    setFontSizes(pie, 3.6f);
    sheet.scene()->addChild(pie);
    sheet.addText(16, 181, 5, "Electricity in Iowa, 2017");
}

void addPositions(const Sheet &sheet, const Table &table) {
    const char *captions[] = {"RADIAL_INT_POS",        "HOR_INT_POS",         "RADIAL_EXT_POS",
                              "HOR_EXT_POS",           "HOR_ALIGNED_EXT_POS", "VERT_ALIGNED_EXT_POS",
                              "SQUARE_ALIGNED_EXT_POS"};
    sheet.addText(106, 181, 5, "Renewable electricity by year, in all positions of annotations");
    for (int position = 0; position < 7; ++position) {
        const bool isAbove = position < 3;
        const float x = isAbove ? 126 + 58 * static_cast<float>(position)
                                : 68 * static_cast<float>(position) - 167,
                    y = isAbove ? 140 : 50;
        auto *pie = newPie<PoPieChart2D>(table, newGreens(table.values.size()));
        pie->radius = 17;
        pie->center.setValue(x, y);
        const bool isInside = position < 2;
        pie->intAnnotPosition = position;
        pie->extAnnotPosition = position;
        pie->intAnnotValueVisibility = FALSE;
        pie->intAnnotTextVisibility = isInside;
        pie->extAnnotTextVisibility = !isInside;
        pie->arrowVisibility = !isInside;
        pie->extAnnotPercentVisibility = position == 6;
        setFontSizes(pie, 2.6f);
        sheet.scene()->addChild(pie);
        sheet.addText(x, y - 36, 3, captions[position], PiText::HOR_CENTER);
    }
}

void writeBody(oravane::Example &example, const Table &table, const std::vector<SbColor> &colors) {
    auto *camera = new SoPerspectiveCamera;
    camera->position.setValue(0, -4.2f, 5.4f);
    camera->pointAt(SbVec3f(0, 0.05f, 0), SbVec3f(0, 0, 1));
    camera->heightAngle = 0.45f;
    auto *light = new SoDirectionalLight;
    light->direction.setValue(-0.4f, 0.5f, -1);
    auto *scene = new SoSeparator;
    scene->ref();
    scene->addChild(camera);
    scene->addChild(light);
    auto *ink = new SoMaterial;
    ink->diffuseColor.setValue(0.05f, 0.05f, 0.05f);
    scene->addChild(ink);
    auto *text = new PoMiscTextAttr;
    text->fontName = "Times-Roman";
    scene->addChild(text);
    auto *pie = newPie<PoPieChart3D>(table, colors);
    pie->zCenter2 = -0.3f;
    pie->setSliceToTranslate(3, 0.15f);
    pie->extAnnotPercentVisibility = TRUE;
    pie->intAnnotValueVisibility = FALSE;
    setFontSizes(pie, 0.12f);
    scene->addChild(pie);
    PageOptions options;
    options.isLit = true;
    options.isLandscape = true;
    options.width = 220;
    options.height = 150;
    options.hiddenSurfaceMode = SoVectorizeAction::HLHSR_Z_SORT;
    writePageAndPicture(example, "iowa_pie_body", scene, options);
    scene->unref();
}

} // namespace

int main(int argc, char **argv) {
    return oravane::runExample(argc, argv, [](oravane::Example &example) {
        PoBase::init();
        const oravane::TableFile table =
            oravane::readTableFile(example.dataFile("table_iowa_electricity.csv"));
        const std::vector<SbColor> colors{SbColor(0.62f, 0.57f, 0.54f), SbColor(0.9f, 0.72f, 0.3f),
                                          SbColor(0.45f, 0.7f, 0.4f)};
        const std::vector<float> renewable = table.numbers("renewables");
        const Table sources{
            {"fossil", "nuclear", "renewable"},
            {table.numbers("fossil").back(), table.numbers("nuclear").back(), renewable.back()}};
        const Sheet sheet(276, 190);
        addSources(sheet, sources, colors);
        addPositions(sheet, {table.texts("year"), renewable});
        sheet.addText(16, 2, 3, "Data: US Energy Information Administration");
        sheet.write(example, "iowa_pies");
        writeBody(example, sources, colors);
    });
}
