#include "meshrep/LineCut.h"

#include <oravane/PlanarPolygons.h>

namespace oravane {

namespace {

bool isInside(const Ppoint3 &point, ClosedBox box) {
    return pscanLine2D(point, Ppoint_list3{5, box.data()}) % 2 != 0;
}

} // namespace

LineCut::LineCut(const Ppoint_list3 &line)
    : m_line(line.points, static_cast<std::size_t>(line.numPoints)), m_parts{{0, line.numPoints, std::nullopt,
                                                                              std::nullopt}} {
    std::vector<Plimit> boxes;
    boxes.reserve(m_line.size() / BoxTree::FAN + 1);
    std::size_t piece = 0;
    do {
        const int first = firstOf(piece);
        boxes.push_back(limitOf<Ppoint3>(m_line.subspan(first, endOf(piece) - first + 1)));
    } while (endOf(piece++) + 1 < line.numPoints);
    m_tree = BoxTree(std::move(boxes));
}

bool LineCut::isMeeting(const ClosedBox &box, const std::vector<std::size_t> &pieces) const {
    const auto isCrossing = [&](std::size_t piece) {
        const int first = firstOf(piece);
        return pintersParaPolyline2D(box.data(), m_line.data() + first, endOf(piece) - first + 1) != 0;
    };
    return std::any_of(pieces.begin(), pieces.end(), isCrossing) || isInside(m_line.front(), box);
}

void LineCut::cutAt(const ClosedBox &box) {
    std::vector<std::size_t> pieces;
    m_tree.anyNear(limitOf<Ppoint3>(box), [&](std::size_t piece) {
        pieces.push_back(piece);
        return false;
    });
    if (pieces.empty() || !isMeeting(box, pieces))
        return;
    const int first = firstOf(pieces.front()), end = endOf(pieces.back());
    const auto begin = std::partition_point(m_parts.begin(), m_parts.end(),
                                            [&](const Part &part) { return part.endSegment() < first; });
    const auto behind = std::partition_point(begin, m_parts.end(),
                                             [&](const Part &part) { return part.firstSegment() <= end; });
    std::vector<Part> left;
    std::for_each(begin, behind, [&](const Part &part) { cut(part, box, pieces, left); });
    m_parts.insert(m_parts.erase(begin, behind), left.begin(), left.end());
}

Ppoint3 LineCut::pointOf(const Part &part, int number) const {
    if (number < part.first)
        return *part.head;
    return number < part.end ? m_line[number] : *part.tail;
}

std::vector<LineCrossing> LineCut::crossingsOf(const Part &part, const ClosedBox &box,
                                               const std::vector<std::size_t> &pieces) const {
    std::vector<LineCrossing> crossings;
    std::vector<Ppoint3> points;
    for (const std::size_t piece : pieces) {
        const int first = std::max(firstOf(piece), part.firstSegment());
        const int end = std::min(endOf(piece), part.endSegment());
        points.clear();
        for (int k = first; k <= end; ++k)
            points.push_back(pointOf(part, k));
        for (const LineCrossing &crossing : lineCrossings(points, box))
            crossings.push_back({crossing.at, first + crossing.segment});
    }
    return crossings;
}

void LineCut::cut(const Part &part, const ClosedBox &box, const std::vector<std::size_t> &pieces,
                  std::vector<Part> &left) const {
    const std::vector<LineCrossing> crossings = crossingsOf(part, box, pieces);
    const bool startsInside = isInside(pointOf(part, part.firstSegment()), box);
    if (crossings.empty() && startsInside && isInside(pointOf(part, part.endSegment()), box))
        return;
    for (const OutsidePiece &piece : piecesOutside(static_cast<int>(crossings.size()), startsInside)) {
        left.push_back(part);
        if (piece.from != OutsidePiece::NONE) {
            left.back().head = crossings[piece.from].at;
            left.back().first = crossings[piece.from].segment + 1;
        }
        if (piece.to != OutsidePiece::NONE) {
            left.back().tail = crossings[piece.to].at;
            left.back().end = crossings[piece.to].segment + 1;
        }
    }
}

std::vector<Ppoint_list3> LineCut::parts(std::vector<std::vector<Ppoint3>> &memory) const {
    std::vector<Ppoint_list3> lists;
    for (const Part &part : m_parts) {
        std::span<Ppoint3> points = m_line.subspan(part.first, part.end - part.first);
        if (part.head || part.tail) {
            std::vector<Ppoint3> &copied = memory.emplace_back();
            copied.reserve(points.size() + 2);
            if (part.head)
                copied.push_back(*part.head);
            copied.insert(copied.end(), points.begin(), points.end());
            if (part.tail)
                copied.push_back(*part.tail);
            points = copied;
        }
        lists.push_back({static_cast<int>(points.size()), points.data()});
    }
    return lists;
}

} // namespace oravane
