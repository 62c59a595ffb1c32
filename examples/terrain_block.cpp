// Mount St. Helens as a block: the lit surface with contour lines and labels on it, and walls around it; and
// as a wire frame.
#include "Terrain.h"

#include <oravane/PoMeshContouring.h>
#include <oravane/PoMeshFilled.h>
#include <oravane/PoMeshLines.h>
#include <oravane/PoMeshSides.h>
#include <oravane/PoNonLinearDataMapping2.h>
#include <oravane/SoVectorizeAction.h>

#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSeparator.h>

namespace {

void addColor(SoSeparator *scene, float red, float green, float blue) {
    auto *material = new SoMaterial;
    material->diffuseColor.setValue(red, green, blue);
    scene->addChild(material);
}

/// Surface and walls.
SoSeparator *newBlock(PbRegularCartesianGrid2D &terrain) {
    SoSeparator *scene = newBlockScene(0.44f);
    scene->addChild(newHeightColors());
    auto *surface = new PoMeshFilled;
    surface->setMesh(&terrain);
    surface->valuesIndex = 0;
    surface->coloringType = PoMesh::COLOR_MAPPING;
    scene->addChild(surface);
    addColor(scene, 0.62f, 0.52f, 0.42f);
    auto *walls = new PoMeshSides;
    walls->setMesh(&terrain);
    walls->thresholdType = PoMeshSides::THRESHOLD_VALUE;
    walls->thresholdValue = -400;
    scene->addChild(walls);
    return scene;
}

SoSeparator *newContourLines(PbRegularCartesianGrid2D &terrain) {
    SoSeparator *scene = newBlockScene(0.44f);
    addContourAttributes(scene, terrain.getBoundingBox(), 600.0f, 2550.0f, 40);
    PoMeshContouring *lines = newLabelledLines(&terrain, 4, 0.5f, 0.018f);
    lines->set("majorContourLineApp.material { diffuseColor 0.25 0.1 0 }"
               "majorContourLineApp.drawStyle { lineWidth 2 }"
               "minorContourLineApp.material { diffuseColor 0.45 0.27 0.12 }"
               "annotTextApp.material { diffuseColor 0.15 0.03 0 }");
    scene->addChild(lines);
    return scene;
}

SoSeparator *newWireFrame(PbRegularCartesianGrid2D &terrain) {
    SoSeparator *scene = newBlockScene(0.44f);
    addColor(scene, 0.3f, 0.2f, 0.12f);
    auto *wires = new PoMeshLines;
    wires->setMesh(&terrain);
    wires->set("appearance.drawStyle { lineWidth 0.8 }");
    scene->addChild(wires);
    return scene;
}

} // namespace

int main(int argc, char **argv) {
    return oravane::runExample(argc, argv, [](oravane::Example &example) {
        PoBase::init();
        const auto terrain = readTerrain(example, 4, true, 1.2f);
        SoSeparator *block = newBlock(*terrain), *lines = newContourLines(*terrain),
                    *wireFrame = newWireFrame(*terrain);
        for (SoSeparator *scene : {block, lines, wireFrame})
            scene->ref();
        PageOptions options;
        options.isLit = true;
        options.height = 230;
        writePageAndPicture(example, "terrain_wires", wireFrame, options);
        options.hiddenSurfaceMode = SoVectorizeAction::HLHSR_Z_SORT;
        options.overlay = lines;
        writePageAndPicture(example, "terrain_block", block, options);
        for (SoSeparator *scene : {block, lines, wireFrame})
            scene->unref();
    });
}
