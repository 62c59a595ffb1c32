#ifndef ORAVANE_PICIRCLEARC2_H
#define ORAVANE_PICIRCLEARC2_H

#include <oravane/OravaneApi.h>

#include <Inventor/SbVec2f.h>

#include <span>
#include <vector>

/// The points of an arc of a circle in the plane, of a circle, or of a sector.
///
/// \code
///   const PiCircleArc2 arc(SbVec2f(0, 0), 2, 0, 1.5708, 0.0349, PiCircleArc2::SECTOR);
///   draw(arc.points());        // the centre, then 46 points of a quarter
/// \endcode
///
/// Angles are in radians, counter-clockwise from the x axis. The arc leads from `start` to `end`, clockwise
/// when the end is less; both have a point exactly, and those between are equally distant, by at most
/// `angleStep`. Arcs that share an angle, a centre and a radius share that point to the last bit.
///
/// An arc of a whole turn or more is a circle: it starts at `start`, its last point is a step before the
/// first one, and a sector of it has no centre point. A step that is not above 0, or no number, is one of 2
/// degrees; one below a tenth of a degree is a tenth. With an angle, a radius or a centre that is not finite
/// there are no points.
class ORAVANE_API PiCircleArc2 {
public:
    enum Shape {
        ARC = 0,    ///< the points of the arc alone
        SECTOR = 1, ///< the centre first: an outline that goes through it
    };
    static constexpr float DEFAULT_STEP = 0.0349066f;

    PiCircleArc2(const SbVec2f &center, float radius, double start, double end,
                 float angleStep = DEFAULT_STEP, Shape shape = ARC);

    /// As long as the object lives.
    std::span<const SbVec2f> points() const { return m_points; }
    /// Whether the points go round the whole circle.
    bool isCircle() const { return m_isCircle; }

private:
    std::vector<SbVec2f> m_points;
    bool m_isCircle = false;
};

#endif
