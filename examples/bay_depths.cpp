// The Chesapeake Bay on the triangle mesh of an ocean model: depths in bands, shore and islands as border of
// the mesh.
#include "Gallery.h"

#include "tools/DataFile.h"

#include <oravane/PbTriangleMesh2D.h>
#include <oravane/PoDataMapping.h>
#include <oravane/PoMeshContouring.h>
#include <oravane/PoMeshFilled.h>
#include <oravane/PoMeshLimit.h>
#include <oravane/PoMeshLines.h>

#include <Inventor/nodes/SoSeparator.h>

#include <cmath>
#include <numbers>

namespace {

/// Depths as value set 0. Degrees to the east are shortened as they are on the ground.
void readBay(const oravane::Example &example, PbTriangleMesh2D &mesh) {
    const oravane::RawFile file = oravane::readRawFile(example.dataFile("tri2d_chesapeake_bay.hdr"));
    const std::vector<float> &points = file.arrays.at("points").floats;
    const std::vector<int> &cells = file.arrays.at("cells").ints;
    const float east = std::cos(38.1f * std::numbers::pi_v<float> / 180);
    std::vector<float> x, y;
    for (std::size_t k = 0; k < points.size(); k += 2) {
        x.push_back(points[k] * east);
        y.push_back(points[k + 1]);
    }
    mesh.setGeometry(static_cast<int>(x.size()), x.data(), y.data(), static_cast<int>(cells.size() / 3),
                     cells.data());
    mesh.addValuesSet(0, file.arrays.at("depth").floats.data());
}

PoDataMapping *newDepthColors() {
    return newColorTable({
        {0, SbColor(0.90f, 0.97f, 0.94f)},
        {5, SbColor(0.66f, 0.87f, 0.87f)},
        {10, SbColor(0.40f, 0.70f, 0.82f)},
        {20, SbColor(0.20f, 0.46f, 0.70f)},
        {36, SbColor(0.08f, 0.20f, 0.45f)},
    });
}

} // namespace

int main(int argc, char **argv) {
    return oravane::runExample(argc, argv, [](oravane::Example &example) {
        PoBase::init();
        PbTriangleMesh2D bay(1);
        readBay(example, bay);
        const SbBox2f box = bay.getBoundingBox();
        SoSeparator *scene = newMapScene(box);
        scene->ref();
        scene->addChild(newDepthColors());
        addContourAttributes(scene, box, 0.0f, 35.0f, 15);

        PoMeshFilled *bands = newColorBands(&bay);
        scene->addChild(bands);
        PoMeshContouring *lines = newLabelledLines(&bay, 4, 0.2f, 0.008f);
        lines->set("majorContourLineApp.material { diffuseColor 0.1 0.2 0.4 }"
                   "majorContourLineApp.drawStyle { lineWidth 1.5 }"
                   "minorContourLineApp.material { diffuseColor 0.35 0.5 0.65 }"
                   "minorContourLineApp.drawStyle { lineWidth 0.7 }"
                   "annotTextApp.material { diffuseColor 0.05 0.1 0.3 }");
        scene->addChild(lines);
        auto *shore = new PoMeshLimit;
        shore->setMesh(&bay);
        shore->set("appearance.material { diffuseColor 0.35 0.22 0.1 } appearance.drawStyle { lineWidth 2 }");
        scene->addChild(shore);
        writePageAndPicture(example, "bay_depths", scene, mapSheet(box));

        // The mesh itself.
        auto *wires = new PoMeshLines;
        wires->setMesh(&bay);
        wires->valuesIndex = 0;
        wires->coloringType = PoMesh::COLOR_MAPPING;
        wires->set("appearance.drawStyle { lineWidth 0.7 }");
        scene->replaceChild(bands, wires);
        scene->removeChild(lines);
        writePageAndPicture(example, "bay_mesh", scene, mapSheet(box));
        scene->unref();
    });
}
