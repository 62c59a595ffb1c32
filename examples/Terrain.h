#ifndef ORAVANE_EXAMPLES_TERRAIN_H
#define ORAVANE_EXAMPLES_TERRAIN_H

#include "Gallery.h"

#include <oravane/PbRegularCartesianGrid2D.h>

#include <memory>

class PoDataMapping;

/// Mount St. Helens as a mesh: one node for each `stride`-th height of the elevation model in both
/// directions, in metres from its south-west corner. Value set 0 holds the heights; they are also the third
/// coordinate of the nodes when `isSurface` is set, `exaggeration` times as high.
std::unique_ptr<PbRegularCartesianGrid2D> readTerrain(const oravane::Example &example, int stride,
                                                      bool isSurface, float exaggeration = 1);

/// A table from the green of the valleys through the brown of the slopes to the white of the summit.
PoDataMapping *newHeightColors();

/// A lit scene seen from the south-west, high enough to see all slopes, under this angle of view.
SoSeparator *newBlockScene(float heightAngle);

#endif
