#ifndef ORAVANE_EXAMPLES_GALLERY_H
#define ORAVANE_EXAMPLES_GALLERY_H

#include "tools/Example.h"

#include <Inventor/SbBox2f.h>
#include <Inventor/SbColor.h>

#include <initializer_list>
#include <string>
#include <utility>

class PbMesh2D;
class PoDataMapping;
class PoMeshContouring;
class PoMeshFilled;
class SoNode;
class SoSeparator;

/// How a page is made of a scene.
struct PageOptions {
    int hiddenSurfaceMode = 0; ///< a SoVectorizeAction::HLHSRMode
    bool isLit = false;
    bool isLandscape = false;
    float width = 190; ///< of the drawing, in millimetres
    float height = 276;
    SoNode *overlay = nullptr; ///< a scene that is drawn on top, with no part of it hidden
};

/// The sheet on which a map of this box fills all it can.
PageOptions mapSheet(const SbBox2f &box);

/// A scene that a camera sees from above, in parallel projection, so that `box` fills its `mapSheet`.
SoSeparator *newMapScene(const SbBox2f &box);

/// A data mapping that goes over from the colour of one value to that of the next.
PoDataMapping *newColorTable(std::initializer_list<std::pair<float, SbColor>> rows);

/// Adds what contour lines of a map and their labels need: levels from `min` to `max`; a cube around the box
/// as domain, so that lengths of labels refer to its longer side and nothing is scaled; whole numbers; and a
/// font of all printers. Pictures have the toolkit's letters, which are like it.
void addContourAttributes(SoSeparator *scene, const SbBox2f &box, float min, float max, int numLevels);

/// The values 0 of a mesh in unlit colour bands.
PoMeshFilled *newColorBands(PbMesh2D *mesh);

/// The contour lines of the values 0 of a mesh, every `majorPeriod`-th of them with labels that the lines
/// make way for. Gap and font size are factors of the domain's side.
PoMeshContouring *newLabelledLines(PbMesh2D *mesh, int majorPeriod, float gap, float fontSize);

/// Writes NAME.ps and, rendered headless in the same proportions, NAME.png. When the example shall write
/// every format, it writes NAME.hpgl, NAME.cgm (clear text), NAME.binary.cgm, and NAME.none.ps, NAME.sort.ps,
/// NAME.full.ps and NAME.lines.ps by the ways of hiding instead.
void writePageAndPicture(oravane::Example &example, const std::string &name, SoNode *scene,
                         const PageOptions &options);

#endif
