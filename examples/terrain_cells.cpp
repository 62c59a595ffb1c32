// The high ground of Mount St. Helens, one colour for each cell of 120 metres. A threshold whose transparency
// reaches the deletion limit takes everything at or below 1300 metres out of the geometry.
#include "Terrain.h"

#include <oravane/PoMeshFilled.h>
#include <oravane/PoNonLinearDataMapping2.h>

#include <Inventor/nodes/SoSeparator.h>

int main(int argc, char **argv) {
    return oravane::runExample(argc, argv, [](oravane::Example &example) {
        PoBase::init();
        const auto terrain = readTerrain(example, 4, false);
        SoSeparator *scene = newMapScene(terrain->getBoundingBox());
        scene->ref();
        PoDataMapping *colors = newHeightColors();
        colors->minThresholdEnabled = TRUE;
        colors->minThreshold = 1300;
        colors->minThresholdTransparency = 1;
        colors->transparencyEnabled = TRUE;
        scene->addChild(colors);
        auto *surface = new PoMeshFilled;
        surface->setMesh(terrain.get());
        surface->valuesIndex = 0;
        surface->coloringType = PoMesh::COLOR_AVERAGE;
        surface->set("appearance.lightModel { model BASE_COLOR }");
        scene->addChild(surface);
        writePageAndPicture(example, "terrain_cells", scene, {});
        scene->unref();
    });
}
