// Mount St. Helens as a lit surface in perspective. A page has no depth buffer: its triangles are sorted, by
// depth alone on the first page, and on the second one with exchanges where the depth of two triangles
// misleads.
#include "Terrain.h"

#include <oravane/PoMeshFilled.h>
#include <oravane/PoNonLinearDataMapping2.h>
#include <oravane/SoVectorizeAction.h>

#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSeparator.h>

namespace {

SoSeparator *newPerspectiveScene() {
    auto *camera = new SoPerspectiveCamera;
    camera->position.setValue(-5600, -7800, 10400);
    camera->pointAt(SbVec3f(4700, 6000, 700), SbVec3f(0, 0, 1));
    camera->heightAngle = 0.53f;
    camera->nearDistance = 2000;
    camera->farDistance = 40000;
    auto *light = new SoDirectionalLight;
    light->direction.setValue(1, -0.3f, -0.9f);
    auto *scene = new SoSeparator;
    scene->addChild(camera);
    scene->addChild(light);
    scene->addChild(newHeightColors());
    return scene;
}

} // namespace

int main(int argc, char **argv) {
    return oravane::runExample(argc, argv, [](oravane::Example &example) {
        PoBase::init();
        const auto terrain = readTerrain(example, 4, true, 1.5f);
        SoSeparator *scene = newPerspectiveScene();
        scene->ref();
        auto *surface = new PoMeshFilled;
        surface->setMesh(terrain.get());
        surface->valuesIndex = 0;
        surface->coloringType = PoMesh::COLOR_MAPPING;
        scene->addChild(surface);
        PageOptions options;
        options.isLit = true;
        options.isLandscape = true;
        options.width = 276;
        options.height = 190;
        options.hiddenSurfaceMode = SoVectorizeAction::HLHSR_Z_SORT;
        writePageAndPicture(example, "terrain_perspective", scene, options);
        options.hiddenSurfaceMode = SoVectorizeAction::HLHSR_FULL_SORT;
        writePageAndPicture(example, "terrain_perspective_full_sort", scene, options);
        scene->unref();
    });
}
