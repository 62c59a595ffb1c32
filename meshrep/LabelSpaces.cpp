#include "meshrep/LabelSpaces.h"

#include <oravane/PlanarPolygons.h>

#include <algorithm>

namespace oravane {

// Far out all coordinates share the last squares: slower there, and still right.
std::int64_t LabelSpaces::squareOf(float coordinate) const {
    constexpr double farthest = 1e9;
    const double square = std::floor(static_cast<double>(coordinate) / static_cast<double>(m_side));
    return static_cast<std::int64_t>(std::clamp(square, -farthest, farthest));
}

/// Calls `visit` with the key of each square that the box meets, until it returns true.
template <class Visit>
bool LabelSpaces::visitSquares(const Plimit &box, Visit visit) const {
    const std::int64_t lastX = squareOf(box.xmax), lastY = squareOf(box.ymax);
    for (std::int64_t x = squareOf(box.xmin); x <= lastX; ++x)
        for (std::int64_t y = squareOf(box.ymin); y <= lastY; ++y)
            if (visit(static_cast<std::uint64_t>(x) << 32 ^ static_cast<std::uint32_t>(y)))
                return true;
    return false;
}

void LabelSpaces::add(const Plimit &box) {
    visitSquares(box, [&](std::uint64_t square) {
        m_squares[square].push_back(m_boxes.size());
        return false;
    });
    m_boxes.push_back(box);
}

template <class Visit>
bool LabelSpaces::visitNear(const Plimit &box, Visit visit) const {
    if (m_boxes.empty() || !(box.xmin <= box.xmax && box.ymin <= box.ymax))
        return false;
    const double numSquares = (static_cast<double>(squareOf(box.xmax) - squareOf(box.xmin)) + 1) *
                              (static_cast<double>(squareOf(box.ymax) - squareOf(box.ymin)) + 1);
    if (numSquares > static_cast<double>(m_boxes.size())) {
        for (std::size_t label = 0; label < m_boxes.size(); ++label)
            if (visit(label))
                return true;
        return false;
    }
    return visitSquares(box, [&](std::uint64_t square) {
        const auto labels = m_squares.find(square);
        return labels != m_squares.end() && std::any_of(labels->second.begin(), labels->second.end(), visit);
    });
}

bool LabelSpaces::isTaken(const Plimit &box) const {
    return visitNear(box, [&](std::size_t label) { return pintersBBox2D(m_boxes[label], box) != 0; });
}

void LabelSpaces::find(const Plimit &box, std::vector<std::size_t> &found) const {
    found.clear();
    visitNear(box, [&](std::size_t label) {
        if (pintersBBox2D(m_boxes[label], box))
            found.push_back(label);
        return false;
    });
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
}

} // namespace oravane
