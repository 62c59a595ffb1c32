#ifndef ORAVANE_HIDDENLINEENGINE_H
#define ORAVANE_HIDDENLINEENGINE_H

#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3f.h>

#include <cstdint>
#include <span>
#include <vector>

namespace oravane {

/// A part of a line segment, by the parameter that is 0 at its start and 1 at its end.
struct LinePart {
    double begin, end;
};

/// Finds the parts of line segments that no face hides. x and y are those of the picture, z grows away from
/// the viewer; all of it within some units around 0, as normalised view coordinates are.
///
/// \code
///   HiddenLineEngine engine;
///   engine.addFace(triangle);
///   engine.buildIndex();
///   for (const LinePart &part : engine.visibleParts(from, to)) ...
/// \endcode
///
/// A face hides what lies behind it, its outline included. What lies in its plane is not behind it: the edges
/// of a mesh do not hide each other, nor do coplanar faces the lines on them. Two tolerances allow for
/// numbers that were rounded to floats: a line counts as in the plane when a shift by some millionths aside
/// would bring it there, and parts that are shorter than that do not count.
///
/// A segment looks at few faces only: those along it in a tree of boxes, the near ones first, until it is
/// hidden as a whole.
class HiddenLineEngine {
public:
    /// A plane polygon, whose ring closes by itself, in either direction. One that is not convex or not plane
    /// hides what its triangles hide; one that is seen from the edge hides nothing.
    void addFace(std::span<const SbVec3f> ring);

    /// To be called when all faces are there.
    void buildIndex();

    /// The visible parts of a segment, in order. They are valid until the next call.
    std::span<const LinePart> visibleParts(const SbVec3f &from, const SbVec3f &to);

private:
    struct Box {
        float xMin, yMin, xMax, yMax, zMin;

        void include(const Box &other);
    };
    /// z = slopeX * x + slopeY * y + height on the face.
    struct Face {
        Box box;
        float zMax;
        std::uint32_t firstCorner, numCorners; ///< counterclockwise
        double slopeX, slopeY, height;
        double tolerance; ///< how far behind the plane still counts as in it
        double beyond;    ///< what is farther off is behind the face, however steep it is
    };
    /// The faces from `first` on, or two nodes from there on when `numFaces` is 0.
    struct Node {
        Box box;
        std::uint32_t first, numFaces;
    };
    struct Segment {
        SbVec3f from;
        double dx, dy, dz;
        Box box;
        float zMax;
    };

    bool addPlane(std::span<const SbVec3f> ring);
    void addTriangles(std::span<const SbVec3f> ring);
    static SbVec3f middleOf(const Face &face);
    static int axisOf(std::span<const Face> faces);
    Node nodeOf(std::uint32_t first, std::uint32_t numFaces) const;
    std::size_t moveEqualToEnd(std::span<Face> faces) const;
    void divide(std::uint32_t node);
    static bool isNear(const Box &box, const Segment &segment);
    void hideBy(const Face &face, const Segment &segment);
    bool insideOf(const Face &face, const Segment &segment, LinePart &part) const;
    void hide(const LinePart &part);
    void joinHidden();
    bool isHiddenAll() const;

    std::vector<Face> m_faces;
    std::vector<SbVec2f> m_corners;
    std::vector<Node> m_nodes;
    std::vector<LinePart> m_hidden, m_visible;
    std::size_t m_numJoined = 0; ///< of the hidden parts, those that are in order and apart
    double m_shortest = 0;       ///< part of the present segment that does not count
};

} // namespace oravane

#endif
