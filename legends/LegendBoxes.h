#ifndef ORAVANE_LEGENDS_LEGENDBOXES_H
#define ORAVANE_LEGENDS_LEGENDBOXES_H

#include <Inventor/SbColor.h>
#include <Inventor/SbVec3f.h>

#include <array>
#include <span>

class SoGroup;

namespace oravane {

/// How a box is filled: by one colour, or by two that run into each other from its left or lower side to the
/// other one. Transparencies and components of colours count from 0 to 1; what is no number counts as 0.
struct BoxFill {
    SbColor first, second;
    float firstTransparency = 0, secondTransparency = 0;
    bool runsUp = false;
};

/// A rectangle with sides along the axes.
struct BoxOutline {
    SbVec3f corner; ///< the lower left one
    float width, height;
};

/// Corners from the lower left one on, counter-clockwise, and the first one again.
std::array<SbVec3f, 5> cornersOf(const BoxOutline &box);

/// Adds a box to a group, which holds all boxes that were added to it: material, binding, coordinates and one
/// face set. Where colours run into each other the box is many faces, side by side: pages paint a face in one
/// colour.
void addFace(SoGroup *faces, const BoxOutline &box, const BoxFill &fill);
/// The same with the colour of the scene; all boxes of a group are added in the same way.
void addFace(SoGroup *faces, const BoxOutline &box);

/// Adds a line through points to a group, which holds coordinates and one line set.
void addLine(SoGroup *lines, std::span<const SbVec3f> points);
void addBorder(SoGroup *lines, const BoxOutline &box);

} // namespace oravane

#endif
