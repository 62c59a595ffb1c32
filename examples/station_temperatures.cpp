// Temperatures of weather stations in North America: from scattered points to a map with bands, contour lines
// and labels that keep off each other, off neighbouring lines and inside a polygon.
#include "Gallery.h"

#include "tools/DataFile.h"

#include <oravane/PbTriangleMesh2D.h>
#include <oravane/PoDataMapping.h>
#include <oravane/PoMeshContouring.h>
#include <oravane/PoMeshFilled.h>
#include <oravane/PoMeshLimit.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoPointSet.h>
#include <Inventor/nodes/SoSeparator.h>

#include <cmath>
#include <numbers>

namespace {

/// One degree to the east is shorter than one to the north; this is for the middle of the map.
const float EAST = std::cos(40 * std::numbers::pi_v<float> / 180);

/// The stations as nodes of a triangle mesh, with their temperatures as value set 0.
void readStations(const oravane::Example &example, PbTriangleMesh2D &mesh) {
    const oravane::TableFile table = oravane::readTableFile(example.dataFile("scatter2d_stations_1995.csv"));
    std::vector<float> x = table.numbers("lon");
    for (float &longitude : x)
        longitude *= EAST;
    mesh.setGeometry(static_cast<int>(x.size()), x.data(), table.numbers("lat").data());
    mesh.addValuesSet(0, table.numbers("temp").data());
}

PoDataMapping *newTemperatureColors() {
    return newColorTable({
        {-18, SbColor(0.30f, 0.30f, 0.62f)},
        {-8, SbColor(0.40f, 0.62f, 0.85f)},
        {0, SbColor(0.82f, 0.91f, 0.95f)},
        {8, SbColor(0.97f, 0.94f, 0.72f)},
        {16, SbColor(0.95f, 0.71f, 0.42f)},
        {30, SbColor(0.75f, 0.22f, 0.20f)},
    });
}

PoMeshContouring *newIsotherms(PbTriangleMesh2D &mesh) {
    PoMeshContouring *lines = newLabelledLines(&mesh, 5, 0.3f, 0.016f);
    lines->firstMajor = 5; // -18, -16, ... : 0 is the tenth
    lines->annotCrossStatus = PoMeshContouring::CROSS_MINOR_CONTOUR;
    // Labels stay where there are many stations: off the oceans, and off the north.
    const SbVec2f polygon[] = {SbVec2f(-124 * EAST, 49), SbVec2f(-124 * EAST, 38), SbVec2f(-117 * EAST, 31),
                               SbVec2f(-97 * EAST, 25),  SbVec2f(-80 * EAST, 25),  SbVec2f(-74 * EAST, 38),
                               SbVec2f(-64 * EAST, 46),  SbVec2f(-75 * EAST, 52),  SbVec2f(-115 * EAST, 55)};
    lines->annotClippingPolygon.setValues(0, 9, polygon);
    lines->set("majorContourLineApp.material { diffuseColor 0.15 0.15 0.2 }"
               "majorContourLineApp.drawStyle { lineWidth 2.5 }"
               "minorContourLineApp.material { diffuseColor 0.4 0.4 0.45 }"
               "annotTextApp.material { diffuseColor 0.1 0.1 0.15 }");
    return lines;
}

SoSeparator *newStationPoints(const PbTriangleMesh2D &mesh) {
    auto *points = new SoSeparator;
    auto *style = new SoDrawStyle;
    style->pointSize = 2.5f;
    auto *color = new SoMaterial;
    color->diffuseColor.setValue(0.3f, 0.3f, 0.35f);
    auto *coordinates = new SoCoordinate3;
    mesh.getNodesCoord(nullptr, coordinates->point);
    for (SoNode *node : {static_cast<SoNode *>(style), static_cast<SoNode *>(color),
                         static_cast<SoNode *>(coordinates), static_cast<SoNode *>(new SoPointSet)})
        points->addChild(node);
    return points;
}

} // namespace

int main(int argc, char **argv) {
    return oravane::runExample(argc, argv, [](oravane::Example &example) {
        PoBase::init();
        PbTriangleMesh2D mesh(1);
        readStations(example, mesh);
        const SbBox2f box = mesh.getBoundingBox();
        SoSeparator *scene = newMapScene(box);
        scene->ref();
        scene->addChild(newTemperatureColors());
        addContourAttributes(scene, box, -18.0f, 30.0f, 25);

        scene->addChild(newColorBands(&mesh));
        scene->addChild(newStationPoints(mesh));
        scene->addChild(newIsotherms(mesh));
        auto *border = new PoMeshLimit;
        border->setMesh(&mesh);
        border->set("appearance.material { diffuseColor 0.3 0.3 0.3 }");
        scene->addChild(border);
        writePageAndPicture(example, "station_temperatures", scene, mapSheet(box));
        scene->unref();
    });
}
