#ifndef ORAVANE_CORE_SHAPEGROUP_H
#define ORAVANE_CORE_SHAPEGROUP_H

#include <Inventor/SbVec3f.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLineSet.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

namespace oravane {

/// Adds coordinates and one shape over them to a group, an `SoFaceSet` or an `SoLineSet`, of which face or
/// line i has the next `numVertices[i]` points. The arrays are copied.
template <class Shape>
void addShape(SoGroup *group, std::span<const SbVec3f> points, std::span<const std::int32_t> numVertices) {
    auto *coordinates = new SoCoordinate3;
    auto *shape = new Shape;
    coordinates->point.setNum(0); // a new node has one point
    coordinates->point.setValues(0, static_cast<int>(points.size()), points.data());
    shape->numVertices.setNum(0);
    shape->numVertices.setValues(0, static_cast<int>(numVertices.size()), numVertices.data());
    group->addChild(coordinates);
    group->addChild(shape);
}

/// The same where all faces or lines have `perShape` points.
template <class Shape>
void addUniformShape(SoGroup *group, std::span<const SbVec3f> points, std::size_t perShape) {
    addShape<Shape>(group, points, {});
    auto &numVertices = static_cast<Shape *>(group->getChild(group->getNumChildren() - 1))->numVertices;
    const std::size_t count = perShape == 0 ? 0 : points.size() / perShape;
    numVertices.setNum(static_cast<int>(count));
    std::fill_n(numVertices.startEditing(), count, static_cast<std::int32_t>(perShape));
    numVertices.finishEditing();
}

/// New groups of such shapes.
template <class Shape>
SoGroup *newShapeGroup(std::span<const SbVec3f> points, std::span<const std::int32_t> numVertices) {
    auto *group = new SoGroup;
    addShape<Shape>(group, points, numVertices);
    return group;
}

template <class Shape>
SoGroup *newUniformShapeGroup(std::span<const SbVec3f> points, std::size_t perShape) {
    auto *group = new SoGroup;
    addUniformShape<Shape>(group, points, perShape);
    return group;
}

/// One face through all points, in order.
inline SoGroup *newFaceGroup(std::span<const SbVec3f> corners) {
    return newUniformShapeGroup<SoFaceSet>(corners, corners.size());
}

/// One line through all points.
inline SoGroup *newPolylineGroup(std::span<const SbVec3f> points) {
    return newUniformShapeGroup<SoLineSet>(points, points.size());
}

/// A line between the points 0 and 1, 2 and 3, and so on.
inline SoGroup *newSegmentGroup(std::span<const SbVec3f> points) {
    return newUniformShapeGroup<SoLineSet>(points, 2);
}

} // namespace oravane

#endif
