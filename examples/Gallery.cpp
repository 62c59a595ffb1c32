#include "Gallery.h"

#include "tools/HeadlessRenderer.h"

#include <oravane/PoDomain.h>
#include <oravane/PoIsovaluesList.h>
#include <oravane/PoMeshContouring.h>
#include <oravane/PoMeshFilled.h>
#include <oravane/PoMiscTextAttr.h>
#include <oravane/PoNonLinearDataMapping2.h>
#include <oravane/PoNumericDisplayFormat.h>
#include <oravane/SoVectorizeCGMAction.h>
#include <oravane/SoVectorizeHPGLAction.h>
#include <oravane/SoVectorizePSAction.h>

#include <Inventor/nodes/SoDepthBuffer.h>
#include <Inventor/nodes/SoOrthographicCamera.h>
#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

PageOptions mapSheet(const SbBox2f &box) {
    const SbVec2f size = box.getSize();
    PageOptions sheet;
    sheet.isLandscape = size[0] > size[1];
    if (sheet.isLandscape)
        std::swap(sheet.width, sheet.height);
    const float scale = std::min(sheet.width / size[0], sheet.height / size[1]);
    sheet.width = std::round(scale * size[0]);
    sheet.height = std::round(scale * size[1]);
    return sheet;
}

SoSeparator *newMapScene(const SbBox2f &box) {
    const SbVec2f center = box.getCenter(), size = box.getSize();
    auto *camera = new SoOrthographicCamera;
    camera->position.setValue(center[0], center[1], 10000);
    camera->height = std::min(size[0], size[1]); // on an upright sheet the camera takes it for the width
    camera->nearDistance = 1;
    camera->farDistance = 20000;
    auto *scene = new SoSeparator;
    scene->addChild(camera);
    return scene;
}

PoDataMapping *newColorTable(std::initializer_list<std::pair<float, SbColor>> rows) {
    auto *mapping = new PoNonLinearDataMapping2;
    mapping->type = PoNonLinearDataMapping2::LINEAR_PER_LEVEL;
    int row = 0;
    for (const auto &[value, color] : rows) {
        mapping->value.set1Value(row, value);
        mapping->color.set1Value(row++, color);
    }
    return mapping;
}

void addContourAttributes(SoSeparator *scene, const SbBox2f &box, float min, float max, int numLevels) {
    auto *levels = new PoIsovaluesList;
    levels->setRegularIsoList(min, max, numLevels);
    scene->addChild(levels);
    const SbVec2f center = box.getCenter(), size = box.getSize();
    const float half = std::max(size[0], size[1]) / 2;
    auto *domain = new PoDomain;
    domain->min.setValue(center[0] - half, center[1] - half, -half);
    domain->max.setValue(center[0] + half, center[1] + half, half);
    scene->addChild(domain);
    auto *format = new PoNumericDisplayFormat;
    format->formatType = PbNumericDisplayFormat::INTEGER_FORMAT;
    scene->addChild(format);
    auto *text = new PoMiscTextAttr;
    text->fontName = "Times-Roman";
    scene->addChild(text);
}

PoMeshFilled *newColorBands(PbMesh2D *mesh) {
    auto *bands = new PoMeshFilled;
    bands->setMesh(mesh);
    bands->valuesIndex = 0;
    bands->coloringType = PoMesh::COLOR_CONTOURING;
    bands->set("appearance.lightModel { model BASE_COLOR }");
    return bands;
}

PoMeshContouring *newLabelledLines(PbMesh2D *mesh, int majorPeriod, float gap, float fontSize) {
    auto *lines = new PoMeshContouring;
    lines->setMesh(mesh);
    lines->valuesIndex = 0;
    lines->majorPeriod = static_cast<unsigned short>(majorPeriod);
    lines->annotIsVisible = TRUE;
    lines->annotIsContourClip = TRUE;
    lines->annotGap = gap;
    lines->annotFontSize = fontSize;
    return lines;
}

namespace {

constexpr float PIXELS_PER_MILLIMETER = 5;

void writePage(oravane::Example &example, const std::string &name, SoVectorizeAction &page, SoNode *scene,
               const PageOptions &options) {
    page.setStartPosition(10, 10, SoVectorizeAction::MILLIMETER);
    page.setDrawingDimensions(options.width, options.height, SoVectorizeAction::MILLIMETER);
    page.setHLHSRMode(static_cast<SoVectorizeAction::HLHSRMode>(options.hiddenSurfaceMode));
    page.enableLighting(options.isLit);
    page.setOrientation(options.isLandscape ? SoVectorizeAction::LANDSCAPE : SoVectorizeAction::PORTRAIT);
    // A line of width 1 is as wide on the page as a pixel of the picture.
    page.setNominalWidth(1 / PIXELS_PER_MILLIMETER, SoVectorizeAction::MILLIMETER);
    page.setColorTranslationMethod(SoVectorizeAction::KEEP_COLORS); // the pictures are on white too
    page.setBorder(1, SbColor(0.3f, 0.3f, 0.3f));
    const std::string file = example.outFile(name);
    if (!page.getOutput()->openFile(file.c_str()))
        throw std::runtime_error("cannot write " + file);
    if (options.overlay) {
        page.beginPage(SbVec2f(0, 0), SbVec2f(210, 297), SoVectorizeAction::MILLIMETER);
        page.apply(scene);
        page.setHLHSRMode(SoVectorizeAction::HLHSR_NONE);
        page.apply(options.overlay);
        page.endPage();
    } else {
        page.apply(scene);
    }
    page.getOutput()->closeFile();
}

void writeEveryFormat(oravane::Example &example, const std::string &name, SoNode *scene,
                      PageOptions options) {
    SoVectorizeHPGLAction hpgl;
    writePage(example, name + ".hpgl", hpgl, scene, options);
    SoVectorizeCGMAction cgm;
    writePage(example, name + ".cgm", cgm, scene, options);
    cgm.getOutput()->setBinary(1);
    writePage(example, name + ".binary.cgm", cgm, scene, options);
    SoVectorizePSAction ps;
    options.hiddenSurfaceMode = SoVectorizeAction::HLHSR_NONE;
    for (const char *mode : {".none.ps", ".sort.ps", ".full.ps", ".lines.ps"}) {
        writePage(example, name + mode, ps, scene, options);
        ++options.hiddenSurfaceMode;
    }
}

void writePicture(oravane::Example &example, const std::string &name, SoNode *scene,
                  const PageOptions &options) {
    auto *picture = new SoSeparator;
    picture->ref();
    picture->addChild(scene);
    if (options.overlay) {
        auto *onTop = new SoDepthBuffer;
        onTop->test = FALSE;
        picture->addChild(onTop);
        picture->addChild(options.overlay);
    }
    oravane::HeadlessRenderer renderer;
    oravane::writePng(example.outFile(name + ".png"),
                      renderer.render(picture,
                                      static_cast<int>(std::lround(options.width * PIXELS_PER_MILLIMETER)),
                                      static_cast<int>(std::lround(options.height * PIXELS_PER_MILLIMETER))));
    picture->unref();
}

} // namespace

void writePageAndPicture(oravane::Example &example, const std::string &name, SoNode *scene,
                         const PageOptions &options) {
    if (example.everyFormat()) {
        writeEveryFormat(example, name, scene, options);
        return;
    }
    SoVectorizePSAction page;
    writePage(example, name + ".ps", page, scene, options);
    writePicture(example, name, scene, options);
}
