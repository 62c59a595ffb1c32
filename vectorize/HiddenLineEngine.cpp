#include "vectorize/HiddenLineEngine.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>
#include <utility>

namespace oravane {

namespace {

// Normalised coordinates are floats of at most 1 that went through a transformation: each is wrong by some
// 1e-7. A page of 200 mm is 2 units wide, so that a millionth is a tenth of a micrometre.
constexpr double kOutside = 1.5e-7; ///< as far outside of a face's outline it still hides
constexpr double kDepth = 5e-7;     ///< as far behind a face counts as in its plane,
constexpr double kAside = 4e-6;     ///< and so does what a shift aside by this much would bring there
constexpr double kShortest = 2e-6;  ///< shorter parts do not count
constexpr std::uint32_t kFacesInLeaf = 4;

double cross(const SbVec2f &a, const SbVec2f &b, double x, double y) {
    const double ax = a[0], ay = a[1];
    return (b[0] - ax) * (y - ay) - (b[1] - ay) * (x - ax);
}

SbVec2f flat(const SbVec3f &p) {
    return SbVec2f(p[0], p[1]);
}

double cross(const SbVec3f &a, const SbVec3f &b, const SbVec3f &c) {
    return cross(flat(a), flat(b), c[0], c[1]);
}

/// Twice the area in x and y, positive when the ring turns to the left.
double doubleArea(std::span<const SbVec3f> ring) {
    double sum = 0;
    for (std::size_t i = 1; i + 1 < ring.size(); ++i)
        sum += cross(ring[0], ring[i], ring[i + 1]);
    return sum;
}

/// Convex in x and y: no corner turns against `area`.
bool isConvex(std::span<const SbVec3f> ring, double area) {
    const std::size_t n = ring.size();
    for (std::size_t i = 0; i < n; ++i)
        if (cross(ring[i], ring[(i + 1) % n], ring[(i + 2) % n]) * area < 0)
            return false;
    return true;
}

} // namespace

void HiddenLineEngine::Box::include(const Box &other) {
    xMin = std::min(xMin, other.xMin);
    yMin = std::min(yMin, other.yMin);
    xMax = std::max(xMax, other.xMax);
    yMax = std::max(yMax, other.yMax);
    zMin = std::min(zMin, other.zMin);
}

// --------------------------------------------------------------------------------------------------- faces

void HiddenLineEngine::addFace(std::span<const SbVec3f> ring) {
    if (ring.size() < 3)
        return;
    if (!isConvex(ring, doubleArea(ring)) || !addPlane(ring))
        addTriangles(ring);
}

/// Adds a convex ring as one face, or nothing where it is too narrow to hide; false when it is not plane.
bool HiddenLineEngine::addPlane(std::span<const SbVec3f> ring) {
    const double area = doubleArea(ring);
    double nx = 0, ny = 0, longest = 0;
    for (std::size_t i = 0; i < ring.size(); ++i) { // the normal after M. Newell
        const SbVec3f &a = ring[i], &b = ring[(i + 1) % ring.size()];
        nx += (static_cast<double>(a[1]) - b[1]) * (static_cast<double>(a[2]) + b[2]);
        ny += (static_cast<double>(a[2]) - b[2]) * (static_cast<double>(a[0]) + b[0]);
        longest = std::max(longest, static_cast<double>((flat(b) - flat(a)).length()));
    }
    if (!(std::fabs(area) > 2 * kOutside * longest))
        return true;
    Face face{};
    face.slopeX = -nx / area;
    face.slopeY = -ny / area;
    const double slope = std::hypot(face.slopeX, face.slopeY);
    face.tolerance = kDepth + kAside * slope;
    const auto onPlane = [&](const SbVec3f &p) { return face.slopeX * p[0] + face.slopeY * p[1]; };
    for (const SbVec3f &p : ring)
        face.height += (p[2] - onPlane(p)) / static_cast<double>(ring.size());
    const auto isOff = [&](const SbVec3f &p) {
        return std::fabs(p[2] - onPlane(p) - face.height) > face.tolerance;
    };
    if (ring.size() > 3 && std::ranges::any_of(ring, isOff))
        return false;
    face.firstCorner = static_cast<std::uint32_t>(m_corners.size());
    face.numCorners = static_cast<std::uint32_t>(ring.size());
    face.box = {ring[0][0], ring[0][1], ring[0][0], ring[0][1], ring[0][2]};
    face.zMax = ring[0][2];
    for (const SbVec3f &p : ring) {
        m_corners.push_back(flat(p));
        face.box.include({p[0], p[1], p[0], p[1], p[2]});
        face.zMax = std::max(face.zMax, p[2]);
    }
    face.beyond = face.zMax + kDepth + 4 * kOutside * slope;
    if (area < 0)
        std::reverse(m_corners.end() - static_cast<std::ptrdiff_t>(ring.size()), m_corners.end());
    m_faces.push_back(face);
    return true;
}

/// Cuts one ear after the other off the ring.
void HiddenLineEngine::addTriangles(std::span<const SbVec3f> ring) {
    const double side = doubleArea(ring) < 0 ? -1 : 1;
    std::vector<SbVec3f> rest(ring.begin(), ring.end());
    const auto isEar = [&](std::size_t i) {
        const std::size_t n = rest.size();
        const SbVec3f &a = rest[i], &b = rest[(i + 1) % n], &c = rest[(i + 2) % n];
        if (side * cross(a, b, c) <= 0)
            return side * cross(a, b, c) == 0;
        return std::ranges::none_of(rest, [&](const SbVec3f &p) {
            return p != a && p != b && p != c && side * cross(a, b, p) >= 0 && side * cross(b, c, p) >= 0 &&
                   side * cross(c, a, p) >= 0;
        });
    };
    std::size_t tried = 0;
    for (std::size_t i = 0; rest.size() > 2 && tried < rest.size();) {
        const std::size_t n = rest.size();
        i %= n;
        if (!isEar(i)) { // a ring that crosses itself may have none left
            ++i;
            ++tried;
            continue;
        }
        addPlane(std::array{rest[i], rest[(i + 1) % n], rest[(i + 2) % n]});
        rest.erase(rest.begin() + static_cast<std::ptrdiff_t>((i + 1) % n));
        tried = 0;
    }
}

// ------------------------------------------------------------------------------------- tree of boxes

void HiddenLineEngine::buildIndex() {
    m_nodes.clear();
    if (m_faces.empty())
        return;
    m_nodes.push_back(nodeOf(0, static_cast<std::uint32_t>(m_faces.size())));
    divide(0);
}

HiddenLineEngine::Node HiddenLineEngine::nodeOf(std::uint32_t first, std::uint32_t numFaces) const {
    Node node{m_faces[first].box, first, numFaces};
    for (const Face &face : std::span(m_faces).subspan(first, numFaces))
        node.box.include(face.box);
    return node;
}

/// Twice the middle of a face.
SbVec3f HiddenLineEngine::middleOf(const Face &face) {
    return SbVec3f(face.box.xMin + face.box.xMax, face.box.yMin + face.box.yMax, face.box.zMin + face.zMax);
}

/// The direction in which a division tells the faces best apart. A segment meets all boxes in front of it, so
/// that depth tells least: it is taken where the faces lie on each other.
int HiddenLineEngine::axisOf(std::span<const Face> faces) {
    SbVec3f low = middleOf(faces[0]), high = low;
    double width = 0, height = 0;
    for (const Face &face : faces) {
        const SbVec3f middle = middleOf(face);
        for (int k = 0; k < 3; ++k) {
            low[k] = std::min(low[k], middle[k]);
            high[k] = std::max(high[k], middle[k]);
        }
        width += face.box.xMax - face.box.xMin;
        height += face.box.yMax - face.box.yMin;
    }
    const SbVec3f spread = (high - low) / 2;
    const auto count = static_cast<double>(faces.size());
    const double alongX = spread[0] - width / count, alongY = spread[1] - height / count;
    return std::max(alongX, alongY) <= 0 && spread[2] > 0 ? 2 : alongX >= alongY ? 0 : 1;
}

/// Shapes that are drawn over and over in one place hide no more than one of them, but each line along them
/// would look at all. Returns the number of different faces, if all have one middle, and else of all.
std::size_t HiddenLineEngine::moveEqualToEnd(std::span<Face> faces) const {
    const auto hasOtherMiddle = [&](const Face &face) { return middleOf(face) != middleOf(faces[0]); };
    if (std::ranges::any_of(faces, hasOtherMiddle))
        return faces.size();
    const auto numbers = [](const Face &f) { return std::tie(f.slopeX, f.slopeY, f.height, f.numCorners); };
    const auto corners = [&](const Face &f) {
        return std::span(m_corners).subspan(f.firstCorner, f.numCorners);
    };
    const auto isBefore = [](const SbVec2f &a, const SbVec2f &b) {
        return a[0] != b[0] ? a[0] < b[0] : a[1] < b[1];
    };
    std::ranges::sort(faces, [&](const Face &a, const Face &b) {
        return numbers(a) != numbers(b)
                   ? numbers(a) < numbers(b)
                   : std::ranges::lexicographical_compare(corners(a), corners(b), isBefore);
    });
    const auto end = std::unique(faces.begin(), faces.end(), [&](const Face &a, const Face &b) {
        return numbers(a) == numbers(b) && std::ranges::equal(corners(a), corners(b));
    });
    return static_cast<std::size_t>(end - faces.begin());
}

/// Halves the faces of a node, by their middles.
void HiddenLineEngine::divide(std::uint32_t node) {
    const std::uint32_t first = m_nodes[node].first;
    std::span faces = std::span(m_faces).subspan(first, m_nodes[node].numFaces);
    if (faces.size() > kFacesInLeaf)
        faces = faces.first(moveEqualToEnd(faces));
    const auto count = static_cast<std::uint32_t>(faces.size());
    m_nodes[node].numFaces = count;
    if (count <= kFacesInLeaf)
        return;
    const int axis = axisOf(faces);
    const std::uint32_t half = count / 2;
    std::nth_element(faces.begin(), faces.begin() + half, faces.end(),
                     [axis](const Face &a, const Face &b) { return middleOf(a)[axis] < middleOf(b)[axis]; });
    const auto children = static_cast<std::uint32_t>(m_nodes.size());
    m_nodes[node].first = children;
    m_nodes[node].numFaces = 0;
    m_nodes.push_back(nodeOf(first, half));
    m_nodes.push_back(nodeOf(first + half, count - half));
    divide(children);
    divide(children + 1);
}

// ------------------------------------------------------------------------------------------ visible parts

/// True when the box reaches in front of the segment's farthest point and over the segment.
bool HiddenLineEngine::isNear(const Box &box, const Segment &s) {
    if (!(box.zMin < s.zMax) || box.xMin > s.box.xMax || box.xMax < s.box.xMin || box.yMin > s.box.yMax ||
        box.yMax < s.box.yMin)
        return false;
    const double x = (static_cast<double>(box.xMin) + box.xMax) / 2 - s.from[0];
    const double y = (static_cast<double>(box.yMin) + box.yMax) / 2 - s.from[1];
    const double width = static_cast<double>(box.xMax) - box.xMin + 2 * kOutside;
    const double height = static_cast<double>(box.yMax) - box.yMin + 2 * kOutside;
    return std::fabs(s.dx * y - s.dy * x) <= (std::fabs(s.dx) * height + std::fabs(s.dy) * width) / 2;
}

std::span<const LinePart> HiddenLineEngine::visibleParts(const SbVec3f &from, const SbVec3f &to) {
    Segment s{};
    s.from = from;
    s.dx = static_cast<double>(to[0]) - from[0];
    s.dy = static_cast<double>(to[1]) - from[1];
    s.dz = static_cast<double>(to[2]) - from[2];
    constexpr float kAround = 2 * kOutside;
    s.box = {from[0] - kAround, from[1] - kAround, from[0] + kAround, from[1] + kAround, from[2]};
    s.box.include({to[0] - kAround, to[1] - kAround, to[0] + kAround, to[1] + kAround, to[2]});
    s.zMax = std::max(from[2], to[2]);
    const double length = std::hypot(s.dx, s.dy);
    m_shortest = length > 4 * kShortest ? kShortest / length : 0.25;
    m_hidden.clear();
    m_visible.clear();
    if (length == 0)
        return m_visible;

    std::array<std::uint32_t, 64> stack; // the tree halves: it is no deeper than a count has bits
    int top = 0;
    if (!m_nodes.empty() && isNear(m_nodes[0].box, s))
        stack[top++] = 0;
    while (top > 0 && !isHiddenAll()) {
        const Node &node = m_nodes[stack[--top]];
        for (const Face &face : std::span(m_faces).subspan(node.numFaces ? node.first : 0, node.numFaces))
            if (isNear(face.box, s))
                hideBy(face, s);
        if (node.numFaces > 0)
            continue;
        const bool leftIsNearer = m_nodes[node.first].box.zMin < m_nodes[node.first + 1].box.zMin;
        for (const std::uint32_t child :
             {node.first + (leftIsNearer ? 1 : 0), node.first + (leftIsNearer ? 0 : 1)})
            if (isNear(m_nodes[child].box, s))
                stack[top++] = child;
    }

    joinHidden();
    double begin = 0;
    const auto show = [&](double end) {
        if (end - begin >= m_shortest)
            m_visible.push_back({begin, end});
    };
    for (const LinePart &part : m_hidden) {
        if (part.end - part.begin < m_shortest)
            continue;
        show(part.begin);
        begin = part.end;
    }
    show(1);
    return m_visible;
}

/// The part of the segment over a convex face.
bool HiddenLineEngine::insideOf(const Face &face, const Segment &s, LinePart &part) const {
    const SbVec2f *corners = m_corners.data() + face.firstCorner;
    part = {0, 1};
    for (std::uint32_t i = 0; i < face.numCorners; ++i) {
        const SbVec2f &a = corners[i], &b = corners[i + 1 < face.numCorners ? i + 1 : 0];
        const double ex = static_cast<double>(b[0]) - a[0], ey = static_cast<double>(b[1]) - a[1];
        const double start = cross(a, b, s.from[0], s.from[1]) + kOutside * (std::fabs(ex) + std::fabs(ey));
        const double change = ex * s.dy - ey * s.dx;
        if (start < 0 && start + change < 0)
            return false;
        if (start < 0)
            part.begin = std::max(part.begin, -start / change);
        else if (start + change < 0)
            part.end = std::min(part.end, -start / change);
    }
    return part.begin < part.end;
}

namespace {

/// The part on which a number is positive that goes evenly from `atBegin` to `atEnd`, one of them positive.
LinePart positivePart(const LinePart &part, double atBegin, double atEnd) {
    const double zero = part.begin + (part.end - part.begin) * (atBegin / (atBegin - atEnd));
    return {atBegin < 0 ? zero : part.begin, atEnd < 0 ? zero : part.end};
}

} // namespace

void HiddenLineEngine::hideBy(const Face &face, const Segment &s) {
    LinePart over;
    if (!insideOf(face, s, over))
        return;
    const double behind = s.from[2] - (face.slopeX * s.from[0] + face.slopeY * s.from[1] + face.height);
    const double change = s.dz - (face.slopeX * s.dx + face.slopeY * s.dy);
    const double atBegin = behind + over.begin * change, atEnd = behind + over.end * change;
    if (std::max(atBegin, atEnd) > face.tolerance) {
        hide(positivePart(over, atBegin, atEnd));
        return;
    }
    // Where the plane is steep its tolerance is large.
    const double beyondBegin = s.from[2] + over.begin * s.dz - face.beyond;
    const double beyondEnd = s.from[2] + over.end * s.dz - face.beyond;
    if (std::max(beyondBegin, beyondEnd) > 0)
        hide(positivePart(over, beyondBegin, beyondEnd));
}

/// Adds to the hidden parts. Where there are many, as behind a fence, as many again are collected before they
/// are joined.
void HiddenLineEngine::hide(const LinePart &part) {
    constexpr std::size_t kFew = 16;
    m_hidden.push_back(part);
    if (m_hidden.size() <= kFew || m_hidden.size() >= 2 * m_numJoined)
        joinHidden();
}

/// Brings the hidden parts into order, apart from each other by more than what counts.
void HiddenLineEngine::joinHidden() {
    std::ranges::sort(m_hidden, {}, &LinePart::begin);
    m_numJoined = 0;
    for (const LinePart &part : m_hidden) {
        if (m_numJoined > 0 && part.begin <= m_hidden[m_numJoined - 1].end + m_shortest)
            m_hidden[m_numJoined - 1].end = std::max(m_hidden[m_numJoined - 1].end, part.end);
        else
            m_hidden[m_numJoined++] = part;
    }
    m_hidden.resize(m_numJoined);
}

bool HiddenLineEngine::isHiddenAll() const {
    return m_hidden.size() == 1 && m_hidden[0].begin < m_shortest && m_hidden[0].end > 1 - m_shortest;
}

} // namespace oravane
