// Mount St. Helens in lines alone, as an engraver draws it: a net and contour lines of the same surface,
// without what the mountain hides. The surface itself is there, in the colour of the paper: it hides what is
// behind it.
#include "Terrain.h"

#include <oravane/PoMeshContouring.h>
#include <oravane/PoMeshFilled.h>
#include <oravane/PoMeshLines.h>
#include <oravane/SoVectorizeAction.h>

#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoPolygonOffset.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTranslation.h>

namespace {

SoSeparator *newScene() {
    auto *camera = new SoPerspectiveCamera;
    camera->position.setValue(-5600, -7800, 9400);
    camera->pointAt(SbVec3f(5200, 6000, 900), SbVec3f(0, 0, 1));
    camera->heightAngle = 0.56f;
    camera->nearDistance = 5000;
    camera->farDistance = 30000;
    auto *scene = new SoSeparator;
    scene->addChild(camera);
    return scene;
}

SoSeparator *newInk(float red, float green, float blue) {
    auto *material = new SoMaterial;
    material->diffuseColor.setValue(red, green, blue);
    auto *group = new SoSeparator;
    group->addChild(material);
    return group;
}

/// The surface in the colour of the paper; a little farther off in pictures, so that its net is seen there.
SoNode *newSurface(PbRegularCartesianGrid2D &terrain) {
    auto *surface = new PoMeshFilled;
    surface->setMesh(&terrain);
    surface->set("appearance.lightModel { model BASE_COLOR }");
    SoSeparator *group = newInk(1, 1, 1);
    group->addChild(new SoPolygonOffset);
    group->addChild(surface);
    return group;
}

SoNode *newNet(PbRegularCartesianGrid2D &terrain) {
    auto *net = new PoMeshLines;
    net->setMesh(&terrain);
    net->set("appearance.drawStyle { lineWidth 1.5 }");
    SoSeparator *group = newInk(0.75f, 0.78f, 0.82f);
    group->addChild(net);
    return group;
}

/// Straight across their cells, which the surface is not: they float some metres above it.
SoNode *newContourLines(PbRegularCartesianGrid2D &terrain) {
    auto *group = new SoSeparator;
    auto *lift = new SoTranslation;
    lift->translation.setValue(0, 0, 25);
    group->addChild(lift);
    addContourAttributes(group, terrain.getBoundingBox(), 600.0f, 2500.0f, 20);
    auto *lines = new PoMeshContouring;
    lines->setMesh(&terrain);
    lines->valuesIndex = 0;
    lines->majorPeriod = 5;
    lines->set("majorContourLineApp.material { diffuseColor 0.6 0.1 0 }"
               "majorContourLineApp.drawStyle { lineWidth 3.5 }"
               "minorContourLineApp.material { diffuseColor 0.65 0.3 0.1 }"
               "minorContourLineApp.drawStyle { lineWidth 2 }");
    group->addChild(lines);
    return group;
}

} // namespace

int main(int argc, char **argv) {
    return oravane::runExample(argc, argv, [](oravane::Example &example) {
        PoBase::init();
        const auto terrain = readTerrain(example, 4, true, 1.5f);
        SoSeparator *scene = newScene();
        scene->ref();
        for (SoNode *part : {newSurface(*terrain), newNet(*terrain), newContourLines(*terrain)})
            scene->addChild(part);
        PageOptions options;
        options.isLandscape = true;
        options.width = 276;
        options.height = 190;
        options.hiddenSurfaceMode = SoVectorizeAction::HLHSR_LINE_REMOVAL;
        writePageAndPicture(example, "terrain_net", scene, options);
        scene->unref();
    });
}
