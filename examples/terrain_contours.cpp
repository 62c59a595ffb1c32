// Mount St. Helens as a contour map: a line every 20 metres, and every fifth one strong, with its height.
#include "Terrain.h"

#include <oravane/PoMeshContouring.h>
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
        addContourAttributes(scene, terrain->getBoundingBox(), 600.0f, 2560.0f, 99);

        PoMeshContouring *contours = newLabelledLines(terrain.get(), 5, 0.35f, 0.014f);
        contours->annotCrossStatus = PoMeshContouring::CROSS_MINOR_CONTOUR;
        contours->set("majorContourLineApp.material { diffuseColor 0.45 0.25 0.1 }"
                      "majorContourLineApp.drawStyle { lineWidth 2 }"
                      "minorContourLineApp.material { diffuseColor 0.75 0.58 0.42 }"
                      "annotTextApp.material { diffuseColor 0.35 0.15 0 }");
        scene->addChild(contours);
        writePageAndPicture(example, "terrain_contours", scene, {});
        scene->unref();
    });
}
