#include "meshrep/ContourLabels.h"

#include <oravane/PlanarPolygons.h>

#include <algorithm>
#include <cmath>
#include <set>

namespace oravane {

namespace {

double planarLength(const Ppoint3 &a, const Ppoint3 &b) {
    return std::hypot(static_cast<double>(b.x) - static_cast<double>(a.x),
                      static_cast<double>(b.y) - static_cast<double>(a.y));
}

Ppoint3 between(const Ppoint3 &a, const Ppoint3 &b) {
    return {(a.x + b.x) / 2, (a.y + b.y) / 2, (a.z + b.z) / 2};
}

Plimit boxOf(std::span<const Ppoint3> points) {
    Plimit box{};
    pcomputePolygonBBox2D(points.data(), static_cast<int>(points.size()), &box);
    return box;
}

/// A rectangle around `middle` of the half sizes `along`, in the direction (ux, uy), and `across`.
std::array<Ppoint3, 4> rectangle(const Ppoint3 &middle, float ux, float uy, float along, float across) {
    const auto corner = [&](float a, float b) {
        return Ppoint3{middle.x + a * ux - b * uy, middle.y + a * uy + b * ux, middle.z};
    };
    return {corner(-along, -across), corner(-along, across), corner(along, across), corner(along, -across)};
}

} // namespace

/// Where a line leaves the surroundings of a label.
struct ContourLabels::Ends {
    Ppoint3 ahead, behind;
};

ContourLabels::ContourLabels(const LabelRules &rules, std::span<const ContourLine> lines)
    : m_rules(rules), m_lines(lines), m_spaces(4 * rules.fontSize) {
    pcomputePolygonBBox2D(rules.clippingPolygon, &m_clippingBox);
    for (int k = 0; k < rules.limits.numLists; ++k)
        m_border.add(k, rules.limits.lists[k]);
    m_border.arrange();
    m_lineBoxes.reserve(lines.size());
    for (const ContourLine &line : lines)
        m_lineBoxes.push_back(boxOf({line.points.points, static_cast<std::size_t>(line.points.numPoints)}));
    if (rules.crossStatus == PoMeshContouring::CROSS_CONTOUR)
        return;
    for (std::size_t k = 0; k < lines.size(); ++k)
        if (lines[k].isMajor || rules.crossStatus == PoMeshContouring::DONT_CROSS_CONTOUR)
            m_linesByValue[lines[k].isovalue].add(k, lines[k].points);
    for (auto &[isovalue, boxes] : m_linesByValue)
        boxes.arrange();
}

bool ContourLabels::isLongEnough(std::size_t line, Size size) const {
    const Plimit &box = m_lineBoxes[line];
    const double w = size.width, h = size.height;
    const double dx = static_cast<double>(box.xmax) - static_cast<double>(box.xmin),
                 dy = static_cast<double>(box.ymax) - static_cast<double>(box.ymin);
    return 1.5 * (w * w + h * h) < dx * dx + dy * dy;
}

// The segment that the offset reaches. A line shorter than the offset starts a new round.
int ContourLabels::startOn(const Ppoint_list3 &points) {
    double length = 0;
    for (int k = 0; k + 1 < points.numPoints; ++k) {
        length += planarLength(points.points[k], points.points[k + 1]);
        if (length >= static_cast<double>(m_offset))
            return k;
    }
    m_offset = 0;
    return 0;
}

void ContourLabels::placeOn(std::size_t line, float width, float height) {
    const Ppoint_list3 &points = m_lines[line].points;
    const Size size{width, height};
    const int numSegments = points.numPoints - 1;
    if (numSegments < 1 || !(width > 0) || !isLongEnough(line, size))
        return;
    m_rivals = rivalsOf(m_lines[line].isovalue);
    const int start = startOn(points);
    int k = start;
    for (bool isLabelled = false; !isLabelled || k >= start;) {
        if (const auto label = tryAt(line, k, size)) {
            m_labels.push_back(*label);
            m_spaces.add(boxOf(label->outer));
            if (!isLabelled) {
                m_offset += 1.5f * width;
                if (m_offset > m_rules.gap)
                    m_offset = 0;
            }
            isLabelled = true;
            double moved = planarLength(points.points[k], points.points[k + 1]);
            while (moved < static_cast<double>(m_rules.gap)) {
                if (++k == numSegments)
                    return; // less than the gap is left
                moved += planarLength(points.points[k], points.points[k + 1]);
            }
        }
        k = (k + 1) % numSegments;
        if (k == start)
            return;
    }
}

std::optional<ContourLabel> ContourLabels::tryAt(std::size_t line, int segment, Size size) const {
    const Ppoint_list3 &points = m_lines[line].points;
    const Ppoint3 middle = between(points.points[segment], points.points[segment + 1]);
    const float along = size.width / 2, across = size.height / 2, margin = 0.1f * along;
    float ux = 1, uy = 0;
    Ends ends{middle, middle};
    if (m_rules.path == PoMeshContouring::TANGENTIAL_PATH) {
        if (!ppolylineIntersSphere3D(points, segment, middle, along * along, &ends.ahead, &ends.behind))
            return std::nullopt;
        const double length = planarLength(ends.behind, ends.ahead);
        if (!(length > 0))
            return std::nullopt;
        // Text runs to the right, and on an upright line from the end ahead to that behind.
        const double side = ends.behind.x < ends.ahead.x ? -length : length;
        ux = static_cast<float>((ends.behind.x - ends.ahead.x) / side);
        uy = static_cast<float>((ends.behind.y - ends.ahead.y) / side);
    } else if (m_rules.path == PoMeshContouring::VERTICAL_PATH) {
        ux = 0;
        uy = -1;
    }
    ContourLabel label{};
    label.box = rectangle(middle, ux, uy, along, across);
    const auto outer = rectangle(middle, ux, uy, along + margin, across + margin);
    std::copy(outer.begin(), outer.end(), label.outer.begin());
    label.outer[4] = label.outer[0];
    label.middle = middle;
    label.isovalue = m_lines[line].isovalue;
    label.line = line;
    if (!isFree(label))
        return std::nullopt;
    if (m_rules.is3D)
        tilt(label, ends);
    return label;
}

bool ContourLabels::isFree(const ContourLabel &label) const {
    const Plimit limit = boxOf(label.outer);
    if (m_spaces.isTaken(limit) || !isInsidePolygon(label, limit))
        return false;
    const auto isCrossing = [&](const PolylineBoxes *lines) {
        return lines->cross(label.outer.data(), limit, label.line);
    };
    return !m_border.cross(label.outer.data(), limit) &&
           std::none_of(m_rivals.begin(), m_rivals.end(), isCrossing);
}

bool ContourLabels::isInsidePolygon(const ContourLabel &label, const Plimit &limit) const {
    if (m_rules.clippingPolygon.numPoints < 3)
        return true;
    if (!pintersBBox2D(m_clippingBox, limit))
        return false;
    return std::all_of(label.outer.begin(), label.outer.end() - 1, [this](const Ppoint3 &corner) {
        return pscanLine2D(corner, m_rules.clippingPolygon) % 2 != 0;
    });
}

std::vector<const PolylineBoxes *> ContourLabels::rivalsOf(float isovalue) const {
    std::vector<const PolylineBoxes *> rivals;
    if (m_linesByValue.empty())
        return rivals;
    const auto [below, above] = m_rules.neighbours(isovalue);
    for (const float value : std::set{isovalue, below, above})
        if (const auto lines = m_linesByValue.find(value); lines != m_linesByValue.end())
            rivals.push_back(&lines->second);
    return rivals;
}

namespace {

/// Rotates points about `center` by the rotation that leaves the horizontal directions across (dx, dy) as
/// they are, and takes (dx, dy, 0) to the direction (dx, dy, dz), all of length 1.
template <std::size_t N>
void tiltPoints(std::array<Ppoint3, N> &points, const Ppoint3 &center, double dx, double dy, double dz) {
    const double planar = std::hypot(dx, dy), hx = dx / planar, hy = dy / planar;
    for (Ppoint3 &point : points) {
        const double x = static_cast<double>(point.x) - static_cast<double>(center.x),
                     y = static_cast<double>(point.y) - static_cast<double>(center.y);
        const double along = x * hx + y * hy, across = y * hx - x * hy;
        point.x = static_cast<float>(center.x + along * planar * hx - across * hy);
        point.y = static_cast<float>(center.y + along * planar * hy + across * hx);
        point.z = static_cast<float>(center.z + along * dz);
    }
}

/// Where the line first and last meets the box of a label.
bool endsInBox(const Ppoint_list3 &line, std::array<Ppoint3, 4> box, Ppoint3 &first, Ppoint3 &last) {
    std::array<Ppoint3, 5> closed{box[0], box[1], box[2], box[3], box[0]};
    Ppoint_list3 crossings{0, nullptr};
    int capacity = 0, *indexLine = nullptr, *indexBox = nullptr;
    pintersPolygons2D({5, closed.data()}, line, &capacity, &crossings, &indexBox, &indexLine);
    const bool isFound = crossings.numPoints > 1;
    if (isFound) {
        first = crossings.points[0];
        last = crossings.points[crossings.numPoints - 1];
    }
    delete[] crossings.points;
    delete[] indexLine;
    delete[] indexBox;
    return isFound;
}

} // namespace

void ContourLabels::tilt(ContourLabel &label, const Ends &ends) const {
    Ends reached = ends;
    if (m_rules.path != PoMeshContouring::TANGENTIAL_PATH &&
        !endsInBox(m_lines[label.line].points, label.box, reached.ahead, reached.behind))
        return;
    const double dx = static_cast<double>(reached.ahead.x) - static_cast<double>(reached.behind.x),
                 dy = static_cast<double>(reached.ahead.y) - static_cast<double>(reached.behind.y),
                 dz = static_cast<double>(reached.ahead.z) - static_cast<double>(reached.behind.z);
    const double length = std::hypot(dx, dy, dz);
    if (!(std::hypot(dx, dy) > 0) || !std::isfinite(length))
        return;
    tiltPoints(label.box, label.middle, dx / length, dy / length, dz / length);
    tiltPoints(label.outer, label.middle, dx / length, dy / length, dz / length);
}

std::vector<std::size_t> ContourLabels::labelsNear(std::size_t line) const {
    std::vector<std::size_t> found;
    m_spaces.find(m_lineBoxes[line], found);
    if (m_rules.is3D)
        std::erase_if(
            found, [&](std::size_t number) { return m_labels[number].isovalue != m_lines[line].isovalue; });
    return found;
}

} // namespace oravane
