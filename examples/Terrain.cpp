#include "Terrain.h"

#include "tools/DataFile.h"

#include <oravane/PoDataMapping.h>

#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSeparator.h>

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
    return newColorTable({
        {700, SbColor(0.25f, 0.45f, 0.25f)},
        {1000, SbColor(0.47f, 0.62f, 0.32f)},
        {1300, SbColor(0.75f, 0.76f, 0.45f)},
        {1600, SbColor(0.80f, 0.64f, 0.40f)},
        {1900, SbColor(0.66f, 0.48f, 0.34f)},
        {2200, SbColor(0.78f, 0.72f, 0.68f)},
        {2560, SbColor(0.98f, 0.98f, 0.99f)},
    });
}

SoSeparator *newBlockScene(float heightAngle) {
    auto *camera = new SoPerspectiveCamera;
    camera->position.setValue(-1000, -12000, 25000);
    camera->pointAt(SbVec3f(5150, 6250, 300), SbVec3f(0, 0, 1));
    camera->heightAngle = heightAngle;
    camera->nearDistance = 2000;
    camera->farDistance = 60000;
    auto *light = new SoDirectionalLight;
    light->direction.setValue(0.6f, 0.5f, -1);
    auto *scene = new SoSeparator;
    scene->addChild(camera);
    scene->addChild(light);
    return scene;
}
