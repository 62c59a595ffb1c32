#ifndef ORAVANE_EXAMPLES_GALLERY_H
#define ORAVANE_EXAMPLES_GALLERY_H

#include "tools/Example.h"

#include <Inventor/SbBox2f.h>

#include <string>

class PoDomain;
class PoMiscTextAttr;
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

/// A cube around the box as domain: lengths of labels refer to it, and nothing is scaled.
PoDomain *newMapDomain(const SbBox2f &box);

/// A font of all printers for the labels of a map. Pictures have the toolkit's letters, which are like it.
PoMiscTextAttr *newMapFont();

/// Writes NAME.ps and, rendered headless in the same proportions, NAME.png.
void writePageAndPicture(oravane::Example &example, const std::string &name, SoNode *scene,
                         const PageOptions &options);

#endif
