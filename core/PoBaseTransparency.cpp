// Deletion of almost invisible geometry: which shape and binding is treated how. The work on indices is in
// TransparentParts.

#include <oravane/PoBase.h>

#include "core/TransparentParts.h"

#include <oravane/PbDataMapping.h>

#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoIndexedTriangleStripSet.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoQuadMesh.h>

#include <algorithm>

using oravane::DeletedMaterials;
using oravane::ShapeIndices;

namespace {

bool hasTransparencies(const PbDataMapping *mapping, const SoMaterial *material) {
    return mapping && material && material->transparency.getNum() >= material->diffuseColor.getNum();
}

/// Whether there is all that it takes to put a new shape in the place of one.
bool canReplace(const PbDataMapping *mapping, const SoMaterial *material, const SoMaterialBinding *binding,
                const SoNode *shape, const SoGroup *parent, int childIndex) {
    return hasTransparencies(mapping, material) && binding && shape && parent && childIndex >= 0 &&
           childIndex < parent->getNumChildren();
}

DeletedMaterials deletedMaterials(const PbDataMapping &mapping, const SoMaterial &material) {
    const int num = material.transparency.getNum();
    return {{material.transparency.getValues(0), static_cast<std::size_t>(num)},
            mapping.getTransparencyValueDeletedParts()};
}

std::span<const std::int32_t> valuesOf(const SoMFInt32 &field) {
    return {field.getValues(0), static_cast<std::size_t>(field.getNum())};
}

/// The material of each part or segment as far as the shape gives it; a lone -1 is the field's default and
/// gives none.
std::span<const std::int32_t> materialIndexOf(const SoIndexedShape &shape) {
    const auto values = valuesOf(shape.materialIndex);
    return values.size() == 1 && values[0] < 0 ? std::span<const std::int32_t>() : values;
}

/// The material of each entry of coordIndex under a binding per vertex.
std::vector<std::int32_t> materialsOfPoints(const SoIndexedShape &shape, int binding) {
    const auto coords = valuesOf(shape.coordIndex);
    const auto given = materialIndexOf(shape);
    std::vector<std::int32_t> materials(coords.begin(), coords.end());
    std::int32_t running = 0;
    for (std::size_t i = 0; i < coords.size(); ++i) {
        if (coords[i] < 0)
            continue;
        if (binding == SoMaterialBinding::PER_VERTEX)
            materials[i] = running++;
        else if (i < given.size())
            materials[i] = given[i];
    }
    return materials;
}

void setIndices(SoIndexedShape *shape, const ShapeIndices &indices) {
    shape->coordIndex.setNum(0);
    shape->coordIndex.setValues(0, static_cast<int>(indices.coords.size()), indices.coords.data());
    if (!indices.materials.empty())
        shape->materialIndex.setValues(0, static_cast<int>(indices.materials.size()),
                                       indices.materials.data());
}

bool isPerVertex(int binding) {
    return binding == SoMaterialBinding::PER_VERTEX || binding == SoMaterialBinding::PER_VERTEX_INDEXED;
}

/// Replaces an indexed shape whose points have materials of their own by what is left of it.
void splitShape(SoIndexedShape *shape, SoIndexedShape *left, int minPoints, SoMaterialBinding *binding,
                const DeletedMaterials &deleted, SoGroup *parent, int childIndex) {
    const auto materials = materialsOfPoints(*shape, binding->value.getValue());
    setIndices(left,
               oravane::splitAtDeletedPoints(valuesOf(shape->coordIndex), materials, minPoints, deleted));
    binding->value = SoMaterialBinding::PER_VERTEX_INDEXED;
    parent->replaceChild(childIndex, left);
}

} // namespace

void PoBase::deleteTransparencyParts(const PbDataMapping *mapping, SoMaterial *material,
                                     SoMaterialBinding *binding, SoGroup *group) {
    if (!hasTransparencies(mapping, material) || !group)
        return;
    group->ref(); // search paths hold their head
    SoSearchAction search;
    search.setType(SoShape::getClassTypeId());
    search.setInterest(SoSearchAction::ALL);
    search.setSearchingAll(TRUE);
    search.apply(group);
    // Each shape is told the binding that the group had before: two shapes below one binding are treated
    // alike.
    const int before = binding ? binding->value.getValue() : SoMaterialBinding::OVERALL;
    for (int i = 0; binding && i < search.getPaths().getLength(); ++i) {
        const SoPath *path = search.getPaths()[i];
        SoNode *shape = path->getTail();
        SoNode *parentNode = path->getLength() > 1 ? path->getNodeFromTail(1) : nullptr;
        if (!parentNode || !parentNode->isOfType(SoGroup::getClassTypeId()))
            continue;
        auto *parent = static_cast<SoGroup *>(parentNode);
        const int index = path->getIndexFromTail(0);
        binding->value = static_cast<SoMaterialBinding::Binding>(before);
        const SoType type = shape->getTypeId();
        if (type == SoQuadMesh::getClassTypeId())
            deleteTransparencyParts(mapping, material, binding, static_cast<SoQuadMesh *>(shape), parent,
                                    index);
        else if (type == SoIndexedTriangleStripSet::getClassTypeId())
            deleteTransparencyParts(mapping, material, binding,
                                    static_cast<SoIndexedTriangleStripSet *>(shape), parent, index);
        else if (type == SoIndexedFaceSet::getClassTypeId())
            deleteTransparencyParts(mapping, material, binding, static_cast<SoIndexedFaceSet *>(shape),
                                    parent, index);
        else if (type == SoIndexedLineSet::getClassTypeId())
            deleteTransparencyParts(mapping, material, binding, static_cast<SoIndexedLineSet *>(shape),
                                    parent, index);
    }
    search.reset();
    group->unrefNoDelete();
    const float limit = mapping->getTransparencyValueDeletedParts();
    const float *first = material->transparency.getValues(0);
    const bool isAnyVisible = std::any_of(first, first + material->transparency.getNum(),
                                          [=](float value) { return value != 0 && value < limit; });
    if (!isAnyVisible)
        material->transparency.setNum(0); // what is left is opaque
}

void PoBase::deleteTransparencyParts(const PbDataMapping *mapping, SoMaterial *material,
                                     SoMaterialBinding *binding, SoQuadMesh *shape, SoGroup *parent,
                                     int childIndex) {
    if (!canReplace(mapping, material, binding, shape, parent, childIndex))
        return;
    const int value = binding->value.getValue();
    if (value < SoMaterialBinding::PER_FACE)
        return;
    const DeletedMaterials deleted = deletedMaterials(*mapping, *material);
    const int nx = shape->verticesPerColumn.getValue(), ny = shape->verticesPerRow.getValue();
    auto *strips = new SoIndexedTriangleStripSet;
    setIndices(strips, isPerVertex(value) ? oravane::keepGridCorners(nx, ny, deleted)
                                          : oravane::keepGridCells(nx, ny, deleted));
    binding->value =
        isPerVertex(value) ? SoMaterialBinding::PER_VERTEX_INDEXED : SoMaterialBinding::PER_PART_INDEXED;
    parent->replaceChild(childIndex, strips);
}

void PoBase::deleteTransparencyParts(const PbDataMapping *mapping, SoMaterial *material,
                                     SoMaterialBinding *binding, SoIndexedTriangleStripSet *shape,
                                     SoGroup *parent, int childIndex) {
    if (canReplace(mapping, material, binding, shape, parent, childIndex) &&
        isPerVertex(binding->value.getValue()))
        splitShape(shape, new SoIndexedTriangleStripSet, 3, binding, deletedMaterials(*mapping, *material),
                   parent, childIndex);
}

void PoBase::deleteTransparencyParts(const PbDataMapping *mapping, SoMaterial *material,
                                     SoMaterialBinding *binding, SoIndexedFaceSet *shape, SoGroup *parent,
                                     int childIndex) {
    if (!canReplace(mapping, material, binding, shape, parent, childIndex))
        return;
    const int value = binding->value.getValue();
    if (value <= SoMaterialBinding::OVERALL)
        return;
    const DeletedMaterials deleted = deletedMaterials(*mapping, *material);
    if (isPerVertex(value)) {
        splitShape(shape, new SoIndexedFaceSet, 3, binding, deleted, parent, childIndex);
        return;
    }
    const bool isIndexed =
        value == SoMaterialBinding::PER_PART_INDEXED || value == SoMaterialBinding::PER_FACE_INDEXED;
    auto *faces = new SoIndexedFaceSet;
    setIndices(faces, oravane::keepParts(
                          valuesOf(shape->coordIndex),
                          isIndexed ? materialIndexOf(*shape) : std::span<const std::int32_t>(), deleted));
    binding->value = SoMaterialBinding::PER_FACE_INDEXED;
    parent->replaceChild(childIndex, faces);
}

void PoBase::deleteTransparencyParts(const PbDataMapping *mapping, SoMaterial *material,
                                     SoMaterialBinding *binding, SoIndexedLineSet *shape, SoGroup *parent,
                                     int childIndex) {
    if (!canReplace(mapping, material, binding, shape, parent, childIndex))
        return;
    const int value = binding->value.getValue();
    const DeletedMaterials deleted = deletedMaterials(*mapping, *material);
    if (isPerVertex(value)) {
        splitShape(shape, new SoIndexedLineSet, 2, binding, deleted, parent, childIndex);
        return;
    }
    if (value != SoMaterialBinding::PER_PART && value != SoMaterialBinding::PER_PART_INDEXED)
        return;
    const bool isIndexed = value == SoMaterialBinding::PER_PART_INDEXED;
    auto *lines = new SoIndexedLineSet;
    setIndices(lines, oravane::splitAtDeletedSegments(
                          valuesOf(shape->coordIndex),
                          isIndexed ? materialIndexOf(*shape) : std::span<const std::int32_t>(), deleted));
    binding->value = SoMaterialBinding::PER_PART_INDEXED;
    parent->replaceChild(childIndex, lines);
}

void PoBase::deleteTransparencyParts(const PbDataMapping *, SoMaterial *, SoMaterialBinding *, SoLineSet *,
                                     SoGroup *, int) {}
