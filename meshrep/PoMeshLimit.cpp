#include <oravane/PoMeshLimit.h>

#include "core/ClassTable.h"
#include "meshrep/CellColors.h"
#include "meshrep/FiniteRuns.h"

#include <oravane/PbMesh2D.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLineSet.h>

SO_KIT_SOURCE(PoMeshLimit)

void PoMeshLimit::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoMeshLimit, PoMesh2D, "PoMesh2D");
}

PoMeshLimit::PoMeshLimit() {
    SO_KIT_CONSTRUCTOR(PoMeshLimit);
    SO_KIT_ADD_CATALOG_ENTRY(groupLimit, SoGroup, TRUE, alternateRep, , TRUE);
    SO_KIT_INIT_INSTANCE();
    generatedParts({&groupLimit});
    setDomainUsedForRebuild(FALSE);
    setUpConnections(TRUE, TRUE);
}

PoMeshLimit::~PoMeshLimit() = default;

namespace {

/// Null without a line.
SoGroup *newLines(const Ppoint_list_list3 &limits) {
    std::vector<SbVec3f> points;
    std::vector<std::int32_t> counts;
    for (const Ppoint_list3 &line : std::span(limits.lists, static_cast<std::size_t>(limits.numLists))) {
        const auto pointAt = [&](std::size_t k) {
            return SbVec3f(line.points[k].x, line.points[k].y, line.points[k].z);
        };
        oravane::forEachRun(
            static_cast<std::size_t>(line.numPoints),
            [&](std::size_t k) { return oravane::isFinite(pointAt(k)); },
            [&](std::size_t first, std::size_t length) {
                for (std::size_t k = first; k < first + length; ++k)
                    points.push_back(pointAt(k));
                counts.push_back(static_cast<std::int32_t>(length));
            });
    }
    if (counts.empty())
        return nullptr;
    auto *coordinates = new SoCoordinate3;
    coordinates->point.setValues(0, static_cast<int>(points.size()), points.data());
    auto *lines = new SoLineSet;
    lines->numVertices.setValues(0, static_cast<int>(counts.size()), counts.data());
    auto *group = new SoGroup;
    group->addChild(coordinates);
    group->addChild(lines);
    return group;
}

} // namespace

void PoMeshLimit::rebuild() {
    preRebuild();
    Ppoint_list_list3 limits{0, nullptr};
    if (resolvedMesh())
        getMeshLimit(limits);
    else
        setPart("appearance.material", nullptr);
    setPart("groupLimit", newLines(limits));
    postRebuild();
}
