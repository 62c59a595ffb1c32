#ifndef ORAVANE_EXAMPLES_TERRAIN_H
#define ORAVANE_EXAMPLES_TERRAIN_H

#include "tools/Example.h"

#include <oravane/PbRegularCartesianGrid2D.h>

#include <memory>
#include <string>

class PoDataMapping;
class PoDomain;
class SoNode;
class SoSeparator;

/// Mount St. Helens as a mesh: one node for each `stride`-th height of the elevation model in both
/// directions, in metres from its south-west corner. Value set 0 holds the heights; they are also the third
/// coordinate of the nodes when `isSurface` is set, `exaggeration` times as high.
std::unique_ptr<PbRegularCartesianGrid2D> readTerrain(const oravane::Example &example, int stride,
                                                      bool isSurface, float exaggeration = 1);

/// A table from the green of the valleys through the brown of the slopes to the white of the summit.
PoDataMapping *newHeightColors();

/// A scene that a camera sees from above, in parallel projection, as a map fills its sheet.
SoSeparator *newMapScene(const PbRegularCartesianGrid2D &terrain);

/// The box of a mesh as domain: lengths of labels and axes refer to it, and nothing is scaled.
PoDomain *newMapDomain(const PbMesh2D &mesh);

/// How a page is made of a scene.
struct PageOptions {
    int hiddenSurfaceMode = 0; ///< a SoVectorizeAction::HLHSRMode
    bool isLit = false;
    bool isLandscape = false;
    float width = 190; ///< of the drawing, in millimetres
    float height = 276;
};

/// Writes NAME.ps and, rendered headless in the same proportions, NAME.png.
void writePageAndPicture(oravane::Example &example, const std::string &name, SoNode *scene,
                         const PageOptions &options);

#endif
