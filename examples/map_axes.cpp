// Mount St. Helens with axes: a contour map with its border as scales, and a block with an axis of each
// orientation.
#include "Terrain.h"

#include <oravane/PoDomain.h>
#include <oravane/PoGenAxis.h>
#include <oravane/PoLinearAxis.h>
#include <oravane/PoMeshContouring.h>
#include <oravane/PoMeshFilled.h>
#include <oravane/PoMeshSides.h>
#include <oravane/PoMiscTextAttr.h>
#include <oravane/PoNonLinearDataMapping2.h>
#include <oravane/PoNumericDisplayFormat.h>
#include <oravane/SoVectorizeAction.h>

#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSeparator.h>

namespace {

void setInk(PoAxis *axis) {
    axis->set("appearance.material { diffuseColor 0.1 0.1 0.1 } appearance.lightModel { model BASE_COLOR }");
}

PoLinearAxis *addAxis(SoSeparator *scene, int type, const SbVec3f &start, float end, const char *title) {
    auto *axis = new PoLinearAxis;
    axis->type = type;
    axis->start = start;
    axis->end = end;
    axis->titleVisibility = title ? PoAxis::VISIBILITY_ON : PoAxis::VISIBILITY_OFF;
    axis->titleString = title ? title : "";
    axis->titlePosition = PoAxis::TITLE_MIDDLE;
    setInk(axis);
    scene->addChild(axis);
    return axis;
}

// ------------------------------------------------------------------------------------------------ the map

void addScale(SoSeparator *scene, int type, const SbVec3f &start, float end, const char *title, int side) {
    PoLinearAxis *axis = addAxis(scene, type, start, end, title);
    axis->gradPosition = side;
    axis->arrowVisibility = PoAxis::VISIBILITY_OFF;
    axis->step = 1000;
    axis->gradFontSize = 0.016f;
    axis->titleFontSize = 0.02f;
    axis->tickMainLength = 0.01f;
    axis->tickSubDef = PoAxis::NUM_SUB_TICK;
    axis->tickNumOrPeriod = 4;
    if (type == PoCartesianAxis::YX)
        axis->titlePath = PoAxis::PATH_RIGHT; // along the axis; numbers stay level
}

/// Names for the fifths of the upper border.
void addGrid(SoSeparator *scene, const SbVec2f &corner) {
    const char *columns[] = {"A", "B", "C", "D", "E"};
    auto *names = new PoGenAxis;
    names->start.setValue(0, corner[1], 0);
    names->end = corner[0];
    names->gradList.setValues(0, 5, columns);
    names->gradPosition = PoAxis::GRAD_ABOVE;
    names->marginStart = names->marginEnd = 0.1f;
    names->arrowVisibility = PoAxis::VISIBILITY_OFF;
    names->gradFontSize = 0.02f;
    names->tickMainLength = 0.01f;
    setInk(names);
    scene->addChild(names);
}

void writeMap(oravane::Example &example) {
    const auto terrain = readTerrain(example, 1, false);
    const SbVec2f corner = terrain->getBoundingBox().getMax();
    const SbBox2f sheet(-0.16f * corner[0], -0.11f * corner[1], 1.12f * corner[0], 1.07f * corner[1]);
    SoSeparator *scene = newMapScene(sheet);
    scene->ref();
    scene->addChild(newHeightColors());
    addContourAttributes(scene, terrain->getBoundingBox(), 600.0f, 2560.0f, 99);
    scene->addChild(newColorBands(terrain.get()));
    PoMeshContouring *contours = newLabelledLines(terrain.get(), 5, 0.35f, 0.014f);
    contours->set("majorContourLineApp.material { diffuseColor 0.35 0.2 0.1 }"
                  "minorContourLineApp.drawStyle { style INVISIBLE }"
                  "annotTextApp.material { diffuseColor 0.25 0.1 0 }");
    scene->addChild(contours);
    addScale(scene, PoCartesianAxis::XY, {0, 0, 0}, corner[0], "East (m)", PoAxis::GRAD_BELOW);
    addScale(scene, PoCartesianAxis::YX, {0, 0, 0}, corner[1], "North (m)", PoAxis::GRAD_ABOVE);
    addScale(scene, PoCartesianAxis::YX, {corner[0], 0, 0}, corner[1], nullptr, PoAxis::GRAD_BELOW);
    addGrid(scene, corner);
    writePageAndPicture(example, "map_axes", scene, mapSheet(sheet));
    scene->unref();
}

// ---------------------------------------------------------------------------------------------- the block

SoSeparator *newBlock(PbMesh2D *terrain) {
    SoSeparator *scene = newBlockScene(0.56f);
    scene->addChild(newHeightColors());
    auto *surface = new PoMeshFilled;
    surface->setMesh(terrain);
    surface->valuesIndex = 0;
    surface->coloringType = PoMesh::COLOR_MAPPING;
    scene->addChild(surface);
    auto *walls = new PoMeshSides;
    walls->setMesh(terrain);
    walls->thresholdType = PoMeshSides::THRESHOLD_VALUE;
    walls->thresholdValue = 0;
    auto *brown = new SoMaterial;
    brown->diffuseColor.setValue(0.62f, 0.52f, 0.42f);
    scene->addChild(brown);
    scene->addChild(walls);
    return scene;
}

/// An axis of each orientation around the block, and numbers readable from the south-west.
SoSeparator *newBlockAxes(const SbVec2f &corner) {
    constexpr float kTop = 3200;
    SoSeparator *scene = newBlockScene(0.56f);
    auto *domain = new PoDomain;
    domain->max.setValue(corner[1], corner[1], corner[1]);
    scene->addChild(domain);
    auto *text = new PoMiscTextAttr;
    text->fontName = "Times-Roman";
    scene->addChild(text);
    auto *format = new PoNumericDisplayFormat;
    format->formatType = PbNumericDisplayFormat::INTEGER_FORMAT;
    scene->addChild(format);
    PoLinearAxis *front = addAxis(scene, PoCartesianAxis::XY, {0, 0, 0}, corner[0], "East (m)");
    addAxis(scene, PoCartesianAxis::YX, {0, 0, 0}, corner[1], "North (m)")->titlePath = PoAxis::PATH_RIGHT;
    PoLinearAxis *back = addAxis(scene, PoCartesianAxis::XZ, {0, corner[1], kTop}, corner[0], nullptr);
    back->gradPath = PoAxis::PATH_RIGHT;
    PoLinearAxis *side = addAxis(scene, PoCartesianAxis::YZ, {corner[0], 0, kTop}, corner[1], nullptr);
    side->gradPath = PoAxis::PATH_RIGHT;
    side->reverseFlag = PoAxis::AXIS_REVERSE; // its front shows to the east
    PoLinearAxis *west = addAxis(scene, PoCartesianAxis::ZX, {0, corner[1], 0}, kTop, nullptr);
    west->gradPosition = PoAxis::GRAD_BELOW;
    west->gradPath = PoAxis::PATH_UP; // down, for who sees the axis from behind
    west->reverseFlag = PoAxis::AXIS_REVERSE;
    PoLinearAxis *east = addAxis(scene, PoCartesianAxis::ZY, {corner[0], 0, 0}, kTop, nullptr);
    east->gradPosition = PoAxis::GRAD_ABOVE;
    east->reverseFlag = PoAxis::AXIS_REVERSE;
    east->gradPath = PoAxis::PATH_UP;
    for (PoLinearAxis *axis : {front, back, side}) // there the next one begins
        axis->arrowVisibility = PoAxis::VISIBILITY_OFF;
    for (PoLinearAxis *upright : {west, east})
        upright->step = 1000;
    return scene;
}

void writeBlock(oravane::Example &example) {
    const auto terrain = readTerrain(example, 4, true, 1.2f);
    SoSeparator *block = newBlock(terrain.get()), *axes = newBlockAxes(terrain->getBoundingBox().getMax());
    block->ref();
    axes->ref();
    PageOptions options;
    options.isLit = true;
    options.height = 230;
    options.hiddenSurfaceMode = SoVectorizeAction::HLHSR_Z_SORT;
    options.overlay = axes;
    writePageAndPicture(example, "terrain_axes", block, options);
    axes->unref();
    block->unref();
}

} // namespace

int main(int argc, char **argv) {
    return oravane::runExample(argc, argv, [](oravane::Example &example) {
        PoBase::init();
        writeMap(example);
        writeBlock(example);
    });
}
