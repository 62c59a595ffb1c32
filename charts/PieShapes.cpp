#include "charts/PieShapes.h"

#include <oravane/PiCircleArc2.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoNormalBinding.h>

#include <cmath>
#include <cstdint>

namespace oravane {

namespace {

SbVec2f centerOf(const PieDisc &disc, const PieCut &cut) {
    const double angle = cut.slice.middle();
    return disc.center + cut.translation * SbVec2f(static_cast<float>(std::cos(angle)),
                                                   static_cast<float>(std::sin(angle)));
}

PiCircleArc2 outlineOf(const PieDisc &disc, const PieCut &cut) {
    return {centerOf(disc, cut), disc.radius,    cut.slice.start,
            cut.slice.end,       disc.angleStep, PiCircleArc2::SECTOR};
}

SbVec3f at(const SbVec2f &point, float z) {
    return {point[0], point[1], z};
}

/// Collects faces or lines, and for faces a normal at each point.
class Outlines {
public:
    void add(const SbVec3f &point) { m_points.push_back(point); }
    void add(const SbVec3f &point, const SbVec3f &normal) {
        m_points.push_back(point);
        m_normals.push_back(normal);
    }
    /// Ends the face or line that consists of what was added since the last one.
    void end() {
        const auto count = static_cast<std::int32_t>(m_points.size() - m_numEnded);
        m_counts.push_back(count);
        m_numEnded = m_points.size();
    }

    template <class Shape>
    void addTo(SoGroup *group, const SbName &name) const {
        auto *coordinates = new SoCoordinate3;
        auto *shape = new Shape;
        coordinates->point.setNum(0);
        coordinates->point.setValues(0, static_cast<int>(m_points.size()), m_points.data());
        shape->numVertices.setNum(0);
        shape->numVertices.setValues(0, static_cast<int>(m_counts.size()), m_counts.data());
        shape->setName(name);
        if (!m_normals.empty()) {
            auto *normal = new SoNormal;
            normal->vector.setValues(0, static_cast<int>(m_normals.size()), m_normals.data());
            group->addChild(normal);
        }
        group->addChild(coordinates);
        group->addChild(shape);
    }

private:
    std::vector<SbVec3f> m_points, m_normals;
    std::vector<std::int32_t> m_counts;
    std::size_t m_numEnded = 0;
};

void addFace(Outlines &faces, std::span<const SbVec2f> outline, float z, bool isUp) {
    const SbVec3f normal(0, 0, isUp ? 1.f : -1.f);
    for (std::size_t k = 0; k < outline.size(); ++k)
        // Backwards it starts with the same point: faces are fans around the centre.
        faces.add(at(outline[isUp ? k : (outline.size() - k) % outline.size()], z), normal);
    faces.end();
}

/// The walls of a body: round ones of the arc, whose normals follow the circle, and flat ones of the cuts.
/// Directions are those of a disc of radius 1 around the origin: far off, a small disc has lost its own.
void addWalls(Outlines &faces, const PieDisc &disc, const PiCircleArc2 &arc, const PieCut &cut) {
    const PiCircleArc2 unitArc(SbVec2f(0, 0), 1, cut.slice.start, cut.slice.end, disc.angleStep,
                               PiCircleArc2::SECTOR);
    const std::span<const SbVec2f> outline = arc.points(), radial = unitArc.points();
    for (std::size_t k = 0; k < outline.size(); ++k) {
        const std::size_t next = (k + 1) % outline.size();
        const bool isCut = !arc.isCircle() && (k == 0 || next == 0);
        if (isCut && (k == 0 ? cut.touchesBefore : cut.touchesBehind))
            continue;
        const SbVec2f along = radial[next] - radial[k], flat(along[1], -along[0]); // of a cut: of length 1
        const SbVec3f normal = at(isCut ? flat : radial[k], 0),
                      nextNormal = at(isCut ? flat : radial[next], 0);
        faces.add(at(outline[k], disc.bottom), normal);
        faces.add(at(outline[next], disc.bottom), nextNormal);
        faces.add(at(outline[next], disc.top), nextNormal);
        faces.add(at(outline[k], disc.top), normal);
        faces.end();
    }
}

} // namespace

void addSlice(SoGroup *group, const PieDisc &disc, const PieCut &cut) {
    const PiCircleArc2 arc = outlineOf(disc, cut);
    Outlines faces;
    if (disc.isFlat()) {
        for (const SbVec2f &point : arc.points())
            faces.add(at(point, disc.top));
        faces.end();
    } else {
        // What is seen best comes last: painters draw what is equally near in this order.
        addFace(faces, arc.points(), disc.bottom, false);
        addWalls(faces, disc, arc, cut);
        addFace(faces, arc.points(), disc.top, true);
    }
    faces.addTo<SoFaceSet>(group, cut.name);
}

void addSliceBorder(SoGroup *group, const PieDisc &disc, const PieCut &cut) {
    PieDisc around = disc;
    const float lift = disc.lift();
    if (!disc.isFlat())
        around.radius += lift;
    const PiCircleArc2 arc = outlineOf(around, cut);
    const std::span<const SbVec2f> outline = arc.points();
    Outlines lines;
    const auto addOutline = [&](float z) {
        for (std::size_t k = 0; k <= outline.size(); ++k)
            lines.add(at(outline[k % outline.size()], z));
        lines.end();
    };
    addOutline(disc.top + lift);
    if (!disc.isFlat()) {
        addOutline(disc.bottom - lift);
        if (!arc.isCircle())
            for (const std::size_t corner : {std::size_t{0}, std::size_t{1}, outline.size() - 1}) {
                lines.add(at(outline[corner], disc.bottom - lift));
                lines.add(at(outline[corner], disc.top + lift));
                lines.end();
            }
    }
    lines.addTo<SoLineSet>(group, cut.name);
}

} // namespace oravane
