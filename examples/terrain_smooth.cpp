// Mount St. Helens with a colour for each height, blended between the points of the elevation model.
#include "Terrain.h"

#include <oravane/PoMeshFilled.h>
#include <oravane/PoNonLinearDataMapping2.h>

#include <Inventor/nodes/SoSeparator.h>

int main(int argc, char **argv) {
    return oravane::runExample(argc, argv, [](oravane::Example &example) {
        PoBase::init();
        const auto terrain = readTerrain(example, 1, false);
        SoSeparator *scene = newMapScene(terrain->getBoundingBox());
        scene->ref();
        scene->addChild(newHeightColors());
        auto *surface = new PoMeshFilled;
        surface->setMesh(terrain.get());
        surface->valuesIndex = 0;
        surface->coloringType = PoMesh::COLOR_MAPPING;
        surface->set("appearance.lightModel { model BASE_COLOR }");
        scene->addChild(surface);
        writePageAndPicture(example, "terrain_smooth", scene, {});
        scene->unref();
    });
}
