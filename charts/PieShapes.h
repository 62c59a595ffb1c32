#ifndef ORAVANE_CHARTS_PIESHAPES_H
#define ORAVANE_CHARTS_PIESHAPES_H

#include "charts/PieSlices.h"

#include <Inventor/SbName.h>
#include <Inventor/SbVec2f.h>

class SoGroup;

namespace oravane {

/// The round that a pie is cut from: flat when both heights are the same.
struct PieDisc {
    SbVec2f center;
    float radius, angleStep;
    float bottom, top;

    bool isFlat() const { return bottom == top; }
    /// How far lines are drawn before faces, so that they are seen.
    float lift() const { return radius * 0.0001f; }
};

/// Where a slice is cut from, moved along its middle angle by `translation`.
struct PieCut {
    const PieSlice &slice;
    float translation;
    SbName name;                       ///< of the shapes
    bool touchesBefore, touchesBehind; ///< the neighbours, clockwise and counter-clockwise
};

/// Adds coordinates and a face set: one face, or all faces of a body, with their normals outwards. A body has
/// no wall where it touches a neighbour: nobody can see it, and painters, who have no depth buffer, would
/// find two walls in one place.
void addSlice(SoGroup *group, const PieDisc &disc, const PieCut &cut);
/// Adds coordinates and a line set: the outline, and of a body both and the edges between them.
void addSliceBorder(SoGroup *group, const PieDisc &disc, const PieCut &cut);

} // namespace oravane

#endif
