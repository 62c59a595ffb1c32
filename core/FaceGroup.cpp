#include "core/FaceGroup.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoGroup.h>

namespace oravane {

SoGroup *newFaceGroup(std::span<const SbVec3f> corners) {
    auto *coordinates = new SoCoordinate3;
    coordinates->point.setValues(0, static_cast<int>(corners.size()), corners.data());
    auto *face = new SoFaceSet;
    face->numVertices = static_cast<int>(corners.size());
    auto *group = new SoGroup;
    group->addChild(coordinates);
    group->addChild(face);
    return group;
}

} // namespace oravane
