// Mount St. Helens as a map in colour bands of 100 metres.
#include "Terrain.h"

#include <oravane/PoIsovaluesList.h>
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
        auto *levels = new PoIsovaluesList;
        levels->setRegularIsoList(600.0f, 2500.0f, 20);
        scene->addChild(levels);
        auto *surface = new PoMeshFilled;
        surface->setMesh(terrain.get());
        surface->valuesIndex = 0;
        surface->coloringType = PoMesh::COLOR_CONTOURING;
        surface->set("appearance.lightModel { model BASE_COLOR }");
        scene->addChild(surface);
        writePageAndPicture(example, "terrain_bands", scene, {});
        scene->unref();
    });
}
