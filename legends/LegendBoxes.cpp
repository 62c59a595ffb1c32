#include "legends/LegendBoxes.h"

#include "core/ShapeGroup.h"

#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>

#include <algorithm>
#include <cmath>

namespace oravane {

namespace {

/// Appends to the shape at the end of a group, which starts empty.
template <class Shape>
void addShape(SoGroup *group, std::span<const SbVec3f> points) {
    const auto count = static_cast<std::int32_t>(points.size());
    const int last = group->getNumChildren() - 1;
    if (last < 1 || !group->getChild(last)->isOfType(Shape::getClassTypeId()) ||
        !group->getChild(last - 1)->isOfType(SoCoordinate3::getClassTypeId())) {
        const SoGroup *shape = newUniformShapeGroup<Shape>(points, points.size());
        shape->ref();
        group->addChild(shape->getChild(0));
        group->addChild(shape->getChild(1));
        shape->unref();
        return;
    }
    SoMFVec3f &coordinates = static_cast<SoCoordinate3 *>(group->getChild(last - 1))->point;
    SoMFInt32 &counts = static_cast<Shape *>(group->getChild(last))->numVertices;
    coordinates.setValues(coordinates.getNum(), count, points.data());
    counts.set1Value(counts.getNum(), count);
}

SoMaterial *materialOf(SoGroup *faces) {
    if (faces->getNumChildren() > 0 && faces->getChild(0)->isOfType(SoMaterial::getClassTypeId()))
        return static_cast<SoMaterial *>(faces->getChild(0));
    auto *material = new SoMaterial;
    material->diffuseColor.setNum(0);
    material->transparency.setNum(0);
    auto *binding = new SoMaterialBinding;
    binding->value = SoMaterialBinding::PER_VERTEX;
    faces->addChild(material);
    faces->addChild(binding);
    return material;
}

/// What materials take of a number: no number counts as 0.
float share(float value) {
    return value > 0 ? std::min(value, 1.0f) : 0;
}

SbColor shares(const SbColor &color) {
    return {share(color[0]), share(color[1]), share(color[2])};
}

/// So many faces that their steps are not seen.
int stripesOf(const BoxFill &fill) {
    constexpr float PER_WHOLE_RANGE = 64;
    float contrast = std::abs(fill.secondTransparency - fill.firstTransparency);
    for (int i = 0; i < 3; ++i)
        contrast = std::max(contrast, std::abs(fill.second[i] - fill.first[i]));
    return std::max(1, static_cast<int>(std::ceil(PER_WHOLE_RANGE * std::min(contrast, 1.0f))));
}

} // namespace

std::array<SbVec3f, 5> cornersOf(const BoxOutline &box) {
    const SbVec3f right(box.width, 0, 0), up(0, box.height, 0);
    return {box.corner, box.corner + right, box.corner + right + up, box.corner + up, box.corner};
}

void addFace(SoGroup *faces, const BoxOutline &box, const BoxFill &wanted) {
    const BoxFill fill{shares(wanted.first), shares(wanted.second), share(wanted.firstTransparency),
                       share(wanted.secondTransparency), wanted.runsUp};
    const int numStripes = stripesOf(fill);
    const auto endOf = [&](int stripe) {
        return static_cast<float>(stripe + 1) / static_cast<float>(numStripes);
    };
    SoMaterial *material = materialOf(faces);
    for (int stripe = 0; stripe < numStripes; ++stripe) {
        const float from = endOf(stripe - 1), to = endOf(stripe);
        BoxOutline part = box;
        (fill.runsUp ? part.corner[1] : part.corner[0]) += from * (fill.runsUp ? box.height : box.width);
        (fill.runsUp ? part.height : part.width) *= to - from;
        SbColor colors[4];
        float transparencies[4];
        for (int corner = 0; corner < 4; ++corner) {
            const bool isFar = fill.runsUp ? corner >= 2 : corner == 1 || corner == 2;
            const float t = isFar ? to : from;
            colors[corner] = SbColor((1 - t) * fill.first + t * fill.second);
            transparencies[corner] = (1 - t) * fill.firstTransparency + t * fill.secondTransparency;
        }
        const int first = material->diffuseColor.getNum();
        material->diffuseColor.setValues(first, 4, colors);
        material->transparency.setValues(first, 4, transparencies);
        addFace(faces, part);
    }
}

void addFace(SoGroup *faces, const BoxOutline &box) {
    const auto corners = cornersOf(box);
    addShape<SoFaceSet>(faces, std::span(corners).first(4));
}

void addLine(SoGroup *lines, std::span<const SbVec3f> points) {
    addShape<SoLineSet>(lines, points);
}

void addBorder(SoGroup *lines, const BoxOutline &box) {
    addLine(lines, cornersOf(box));
}

} // namespace oravane
