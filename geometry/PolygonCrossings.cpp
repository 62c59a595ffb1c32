#include "geometry/PolygonCrossings.h"

#include "geometry/BoxTree.h"
#include "geometry/PlanarSegments.h"

#include <oravane/PlanarPolygons.h>

#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

using oravane::OutsidePiece;
using oravane::Planar;
using oravane::planar;
using oravane::spanOf;

namespace {

/// Finds the segments of a polyline near a box without a look at each.
template <class Point>
class SegmentTree {
public:
    explicit SegmentTree(std::span<const Point> line) : m_line(line), m_tree(boxesAlong(line)) {}

    /// Of the whole line, which has a segment at least.
    const Plimit &limit() const { return m_tree.all(); }

    /// Calls `visit(k)` for each segment k whose box meets `box`, in order.
    template <class Visit>
    void visitNear(const Plimit &box, const Visit &visit) const {
        m_tree.anyNear(box, [&](std::size_t piece) {
            const std::size_t end = std::min((piece + 1) * FAN, m_line.size() - 1);
            for (std::size_t k = piece * FAN; k < end; ++k)
                if (oravane::areMeeting(oravane::limitOf(m_line.subspan(k, 2)), box))
                    visit(k);
            return false;
        });
    }

private:
    static constexpr std::size_t FAN = 8; ///< segments of a box

    static std::vector<Plimit> boxesAlong(std::span<const Point> line) {
        std::vector<Plimit> boxes;
        boxes.reserve(line.size() / FAN + 1);
        for (std::size_t first = 0; first + 1 < line.size(); first += FAN)
            boxes.push_back(oravane::limitOf(line.subspan(first, std::min(FAN + 1, line.size() - first))));
        return boxes;
    }

    std::span<const Point> m_line;
    oravane::BoxTree m_tree;
};

struct Crossing {
    Planar at;
    int p, q; ///< segments
};

double squaredDistance(const Planar &a, const Planar &b) {
    return (a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y);
}

/// In their order along `p`, then of segment of `q`.
template <class Point>
std::vector<Crossing> crossingsOf(std::span<const Point> p, std::span<const Point> q) {
    std::vector<Crossing> crossings;
    if (p.size() < 2 || q.size() < 2)
        return crossings;
    const SegmentTree<Point> tree(q);
    oravane::anySegmentNear(p, tree.limit(), [&](std::size_t k) {
        const Planar a = planar(p[k]), b = planar(p[k + 1]);
        const auto first = static_cast<std::ptrdiff_t>(crossings.size());
        tree.visitNear(oravane::limitOf(p.subspan(k, 2)), [&](std::size_t s) {
            Planar at{};
            if (oravane::crossSegments(a, b, planar(q[s]), planar(q[s + 1]), at))
                crossings.push_back({at, static_cast<int>(k), static_cast<int>(s)});
        });
        std::stable_sort(crossings.begin() + first, crossings.end(),
                         [&a](const Crossing &left, const Crossing &right) {
                             return squaredDistance(left.at, a) < squaredDistance(right.at, a);
                         });
        return false;
    });
    return crossings;
}

/// The point at `at` of the segment `a`-`b`.
Ppoint pointOn(const Ppoint &, const Ppoint &, const Planar &at) {
    return {static_cast<float>(at.x), static_cast<float>(at.y)};
}
Ppoint3 pointOn(const Ppoint3 &a, const Ppoint3 &b, const Planar &at) {
    double t = 0;
    if (a.x != b.x)
        t = (at.x - a.x) / (static_cast<double>(b.x) - a.x);
    else if (a.y != b.y)
        t = (at.y - a.y) / (static_cast<double>(b.y) - a.y);
    const double z = a.z + t * (static_cast<double>(b.z) - a.z);
    return {static_cast<float>(at.x), static_cast<float>(at.y), static_cast<float>(z)};
}

/// The capacity of arrays that held `capacity` entries and have to hold `count`.
int doubledUpTo(int capacity, int count) {
    if (count <= capacity)
        return capacity;
    long long room = std::max(capacity, 1);
    while (room < count)
        room *= 2;
    return static_cast<int>(std::min<long long>(room, std::numeric_limits<int>::max()));
}

/// Gives `array`, of `capacity` entries or null, `room` entries. What it held is lost.
template <class T>
void makeRoom(T *&array, int capacity, int room) {
    if (array && room <= capacity)
        return;
    auto larger = std::make_unique_for_overwrite<T[]>(static_cast<std::size_t>(room));
    delete[] array;
    array = larger.release();
}

template <class List>
int intersect(const List &p, const List &q, int *capacity, List *out, int **indexP, int **indexQ) {
    const auto line = spanOf(q.points, q.numPoints);
    const std::vector<Crossing> crossings = crossingsOf(spanOf(p.points, p.numPoints), line);
    const int count = static_cast<int>(crossings.size());
    if (!capacity)
        return count;
    const int room = doubledUpTo(*capacity, count);
    if (out) {
        makeRoom(out->points, *capacity, room);
        out->numPoints = count;
        for (int i = 0; i < count; ++i)
            out->points[i] = pointOn(line[crossings[i].q], line[crossings[i].q + 1], crossings[i].at);
    }
    for (int **const index : {indexP, indexQ})
        if (index) {
            makeRoom(*index, *capacity, room);
            for (int i = 0; i < count; ++i)
                (*index)[i] = index == indexP ? crossings[i].p : crossings[i].q;
        }
    *capacity = room;
    return count;
}

template <class Point>
struct PiecePoints {
    std::unique_ptr<Point[]> points;
    int count;
};

template <class Point>
PiecePoints<Point> pointsOf(const OutsidePiece &piece, std::span<const Point> line,
                            const std::vector<Crossing> &crossings) {
    const auto pointAt = [&](int crossing) {
        const Crossing &c = crossings[crossing];
        return pointOn(line[c.p], line[c.p + 1], c.at);
    };
    const std::size_t first = piece.from == OutsidePiece::NONE ? 0 : crossings[piece.from].p + 1;
    const std::size_t end = piece.to == OutsidePiece::NONE ? line.size() : crossings[piece.to].p + 1;
    auto points = std::make_unique_for_overwrite<Point[]>(end - first + 2);
    Point *next = points.get();
    if (piece.from != OutsidePiece::NONE)
        *next++ = pointAt(piece.from);
    next = std::copy(line.begin() + first, line.begin() + end, next);
    if (piece.to != OutsidePiece::NONE)
        *next++ = pointAt(piece.to);
    const int count = static_cast<int>(next - points.get());
    return {std::move(points), count};
}

template <class List, class Lists>
void subtract(const List &p, const List &q, Lists *out) {
    if (!out)
        return;
    const auto line = spanOf(p.points, p.numPoints), polygon = spanOf(q.points, q.numPoints);
    const std::vector<Crossing> crossings = crossingsOf(line, polygon);
    const auto isClosed = [&] { return planar(polygon.front()) == planar(polygon.back()); };
    const bool startsInside = !crossings.empty() && isClosed() && pscanLine2D(line.front(), q) % 2 != 0;
    const std::vector<OutsidePiece> pieces =
        oravane::piecesOutside(static_cast<int>(crossings.size()), startsInside);

    auto lists = std::make_unique<List[]>(pieces.size());
    std::vector<PiecePoints<std::remove_pointer_t<decltype(p.points)>>> made;
    made.reserve(pieces.size());
    for (const OutsidePiece &piece : pieces)
        made.push_back(pointsOf(piece, line, crossings));
    for (std::size_t i = 0; i < pieces.size(); ++i)
        lists[i] = {made[i].count, made[i].points.release()};
    *out = {static_cast<int>(pieces.size()), lists.release()};
}

} // namespace

namespace oravane {

std::vector<LineCrossing> lineCrossings(std::span<const Ppoint3> line, std::span<const Ppoint3> polygon) {
    std::vector<LineCrossing> crossings;
    for (const Crossing &c : crossingsOf(line, polygon))
        crossings.push_back({pointOn(line[c.p], line[c.p + 1], c.at), c.p});
    return crossings;
}

std::vector<OutsidePiece> piecesOutside(int numCrossings, bool startsInside) {
    constexpr int none = OutsidePiece::NONE;
    if (numCrossings == 0)
        return {{none, none}};
    std::vector<OutsidePiece> pieces;
    if (!startsInside)
        pieces.push_back({none, 0});
    for (int i = startsInside ? 0 : 1; i < numCrossings; i += 2)
        pieces.push_back({i, i + 1 < numCrossings ? i + 1 : none});
    return pieces;
}

} // namespace oravane

int pintersPolygons2D(const Ppoint_list &p, const Ppoint_list &q, int *capacity, Ppoint_list *out,
                      int **indexP, int **indexQ) {
    return intersect(p, q, capacity, out, indexP, indexQ);
}
int pintersPolygons2D(const Ppoint_list3 &p, const Ppoint_list3 &q, int *capacity, Ppoint_list3 *out,
                      int **indexP, int **indexQ) {
    return intersect(p, q, capacity, out, indexP, indexQ);
}

void pdiffPolygons2D(const Ppoint_list &p, const Ppoint_list &q, Ppoint_list_list *out) {
    subtract(p, q, out);
}
void pdiffPolygons2D(const Ppoint_list3 &p, const Ppoint_list3 &q, Ppoint_list_list3 *out) {
    subtract(p, q, out);
}
