#ifndef ORAVANE_CORE_FACEGROUP_H
#define ORAVANE_CORE_FACEGROUP_H

#include <span>

class SbVec3f;
class SoGroup;

namespace oravane {

/// A new group with the coordinates and one face through all of them, in order.
SoGroup *newFaceGroup(std::span<const SbVec3f> corners);

} // namespace oravane

#endif
