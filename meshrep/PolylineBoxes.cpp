#include "meshrep/PolylineBoxes.h"

#include <oravane/PlanarPolygons.h>

namespace oravane {

void PolylineBoxes::add(std::size_t number, const Ppoint_list3 &line) {
    constexpr int step = BoxTree::FAN;
    for (int first = 0; first + 1 < line.numPoints; first += step) {
        const Ppoint3 *points = line.points + first;
        const int count = std::min(step + 1, line.numPoints - first);
        m_pieces.push_back({limitOf(spanOf(points, count)), number, points, count});
    }
}

// In columns, and along these: sixteen pieces that follow each other make about a square.
void PolylineBoxes::arrange() {
    const auto isLeft = [](const Piece &a, const Piece &b) { return a.box.xmin < b.box.xmin; };
    const auto isBelow = [](const Piece &a, const Piece &b) { return a.box.ymin < b.box.ymin; };
    std::sort(m_pieces.begin(), m_pieces.end(), isLeft);
    const double perColumn = std::sqrt(static_cast<double>(m_pieces.size() * BoxTree::FAN));
    const auto column = static_cast<std::size_t>(std::ceil(perColumn));
    for (std::size_t first = 0; first < m_pieces.size(); first += column)
        std::sort(m_pieces.begin() + first, m_pieces.begin() + std::min(first + column, m_pieces.size()),
                  isBelow);
    std::vector<Plimit> boxes;
    boxes.reserve(m_pieces.size());
    for (const Piece &piece : m_pieces)
        boxes.push_back(piece.box);
    m_tree = BoxTree(std::move(boxes));
}

bool PolylineBoxes::cross(const Ppoint3 *corners, const Plimit &limit, std::size_t except) const {
    return m_tree.anyNear(limit, [&](std::size_t k) {
        const Piece &piece = m_pieces[k];
        return piece.line != except && pintersParaPolyline2D(corners, piece.points, piece.count) != 0;
    });
}

} // namespace oravane
