// Surface temperatures of the oceans on the curvilinear grid of an ocean model, whose pole is in Greenland.
// Land has no values: cells there are left out.
#include "Gallery.h"

#include "tools/DataFile.h"

#include <oravane/PbCartesianGrid2D.h>
#include <oravane/PoDataMapping.h>
#include <oravane/PoMeshContouring.h>
#include <oravane/PoMeshFilled.h>

#include <Inventor/nodes/SoSeparator.h>

#include <limits>

namespace {

/// Longitudes and latitudes as they are; the temperatures are value set 0, NaN on land.
void readOcean(const oravane::Example &example, PbCartesianGrid2D &grid) {
    const oravane::RawFile file = oravane::readRawFile(example.dataFile("curv2d_ocean_pop.hdr"));
    const std::vector<float> &points = file.arrays.at("points").floats;
    std::vector<float> x, y, temperatures = file.arrays.at("temperature").floats;
    for (std::size_t k = 0; k < points.size(); k += 2) {
        x.push_back(points[k]);
        y.push_back(points[k + 1]);
    }
    for (float &temperature : temperatures)
        if (temperature < -100)
            temperature = std::numeric_limits<float>::quiet_NaN();
    grid.setGeometry(file.dims[1], file.dims[0], x.data(), y.data());
    grid.addValuesSet(0, temperatures.data());
}

PoDataMapping *newTemperatureColors() {
    return newColorTable({
        {-4, SbColor(0.25f, 0.25f, 0.55f)},
        {4, SbColor(0.30f, 0.55f, 0.80f)},
        {12, SbColor(0.55f, 0.82f, 0.80f)},
        {20, SbColor(0.95f, 0.93f, 0.65f)},
        {26, SbColor(0.93f, 0.62f, 0.35f)},
        {32, SbColor(0.72f, 0.20f, 0.20f)},
    });
}

} // namespace

int main(int argc, char **argv) {
    return oravane::runExample(argc, argv, [](oravane::Example &example) {
        PoBase::init();
        PbCartesianGrid2D ocean(1);
        readOcean(example, ocean);
        const SbBox2f box = ocean.getBoundingBox();
        SoSeparator *scene = newMapScene(box);
        scene->ref();
        scene->addChild(newTemperatureColors());
        addContourAttributes(scene, box, -4.0f, 32.0f, 19);

        scene->addChild(newColorBands(&ocean));
        PoMeshContouring *lines = newLabelledLines(&ocean, 2, 0.2f, 0.01f);
        lines->annotCrossStatus = PoMeshContouring::DONT_CROSS_CONTOUR;
        lines->set("majorContourLineApp.material { diffuseColor 0.15 0.15 0.2 }"
                   "minorContourLineApp.material { diffuseColor 0.4 0.4 0.45 }"
                   "minorContourLineApp.drawStyle { lineWidth 0.6 }"
                   "annotTextApp.material { diffuseColor 0.1 0.1 0.15 }");
        scene->addChild(lines);
        writePageAndPicture(example, "ocean_temperatures", scene, mapSheet(box));
        scene->unref();
    });
}
