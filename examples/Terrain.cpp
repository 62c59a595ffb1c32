#include "Terrain.h"

#include "tools/DataFile.h"
#include "tools/HeadlessRenderer.h"

#include <oravane/PoDomain.h>
#include <oravane/PoNonLinearDataMapping2.h>
#include <oravane/SoPSVectorOutput.h>
#include <oravane/SoVectorizePSAction.h>

#include <Inventor/nodes/SoOrthographicCamera.h>
#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <vector>

std::unique_ptr<PbRegularCartesianGrid2D> readTerrain(const oravane::Example &example, int stride,
                                                      bool isSurface, float exaggeration) {
    const oravane::GridFile file = oravane::readGridFile(example.dataFile("grid2d_st_helens.txt"));
    const int numX = (file.numX - 1) / stride + 1, numY = (file.numY - 1) / stride + 1;
    std::vector<float> heights, z;
    for (int i = 0; i < numX; ++i)
        for (int j = 0; j < numY; ++j)
            heights.push_back(file.values[static_cast<std::size_t>(i) * stride * file.numY + j * stride]);
    for (const float height : heights)
        z.push_back(height * exaggeration);
    const float stepX =
        (file.xmax - file.xmin) / static_cast<float>(file.numX - 1) * static_cast<float>(stride);
    const float stepY =
        (file.ymax - file.ymin) / static_cast<float>(file.numY - 1) * static_cast<float>(stride);
    auto grid =
        std::make_unique<PbRegularCartesianGrid2D>(1); // keeps copies: the file ends with this function
    grid->setGeometry(numX, numY, 0, 0, stepX * static_cast<float>(numX - 1),
                      stepY * static_cast<float>(numY - 1), isSurface ? z.data() : nullptr);
    grid->addValuesSet(0, heights.data());
    return grid;
}

PoDataMapping *newHeightColors() {
    const float heights[] = {700, 1000, 1300, 1600, 1900, 2200, 2560};
    const SbColor colors[] = {{0.25f, 0.45f, 0.25f}, {0.47f, 0.62f, 0.32f}, {0.75f, 0.76f, 0.45f},
                              {0.80f, 0.64f, 0.40f}, {0.66f, 0.48f, 0.34f}, {0.78f, 0.72f, 0.68f},
                              {0.98f, 0.98f, 0.99f}};
    auto *mapping = new PoNonLinearDataMapping2;
    mapping->type = PoNonLinearDataMapping2::LINEAR_PER_LEVEL;
    mapping->value.setValues(0, 7, heights);
    mapping->color.setValues(0, 7, colors);
    return mapping;
}

SoSeparator *newMapScene(const PbRegularCartesianGrid2D &terrain) {
    int numX = 0, numY = 0;
    float xmin = 0, ymin = 0, xmax = 0, ymax = 0;
    terrain.getGeometry(numX, numY, xmin, ymin, xmax, ymax);
    auto *camera = new SoOrthographicCamera;
    camera->position.setValue((xmin + xmax) / 2, (ymin + ymax) / 2, 10000);
    camera->height = xmax - xmin; // on an upright sheet the camera takes this for the width
    camera->nearDistance = 1;
    camera->farDistance = 20000;
    auto *scene = new SoSeparator;
    scene->addChild(camera);
    return scene;
}

PoDomain *newMapDomain(const PbMesh2D &mesh) {
    const SbBox2f box = mesh.getBoundingBox();
    const SbVec2f center = box.getCenter(), size = box.getSize();
    const float half = std::max(size[0], size[1]) / 2;
    auto *domain = new PoDomain;
    domain->min.setValue(center[0] - half, center[1] - half, -half);
    domain->max.setValue(center[0] + half, center[1] + half, half);
    return domain;
}

void writePageAndPicture(oravane::Example &example, const std::string &name, SoNode *scene,
                         const PageOptions &options) {
    constexpr float PIXELS_PER_MILLIMETER = 5;
    SoVectorizePSAction page;
    const SbVec2f start(10, 10), size(options.width, options.height);
    page.setStartPosition(start, SoVectorizeAction::MILLIMETER);
    page.setDrawingDimensions(size, SoVectorizeAction::MILLIMETER);
    page.setHLHSRMode(static_cast<SoVectorizeAction::HLHSRMode>(options.hiddenSurfaceMode));
    page.enableLighting(options.isLit);
    page.setOrientation(options.isLandscape ? SoVectorizeAction::LANDSCAPE : SoVectorizeAction::PORTRAIT);
    // A line of width 1 is as wide on the page as a pixel of the picture.
    page.setNominalWidth(1 / PIXELS_PER_MILLIMETER, SoVectorizeAction::MILLIMETER);
    page.setBorder(1, SbColor(0.3f, 0.3f, 0.3f));
    const std::string file = example.outFile(name + ".ps");
    if (!page.getOutput()->openFile(file.c_str()))
        throw std::runtime_error("cannot write " + file);
    page.apply(scene);
    page.getOutput()->closeFile();

    oravane::HeadlessRenderer renderer;
    oravane::writePng(example.outFile(name + ".png"),
                      renderer.render(scene,
                                      static_cast<int>(std::lround(options.width * PIXELS_PER_MILLIMETER)),
                                      static_cast<int>(std::lround(options.height * PIXELS_PER_MILLIMETER))));
}
