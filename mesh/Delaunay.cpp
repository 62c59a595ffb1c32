#include "mesh/Delaunay.h"

#include "mesh/SpatialOrder.h"

#include <algorithm>
#include <utility>

namespace oravane {

Delaunay::Delaunay(std::span<const float> x, std::span<const float> y) {
    // Sides are numbered in 32 bits: four of each triangle, two triangles a point.
    constexpr std::size_t tooMany = std::size_t{1} << 29;
    if (x.size() != y.size() || x.size() >= tooMany)
        return;
    m_numbers = spatialOrder(x, y);
    m_sites.resize(m_numbers.size());
    std::transform(m_numbers.begin(), m_numbers.end(), m_sites.begin(), [&](std::int32_t number) {
        return Site{x[number], y[number]};
    });
    if (!findFirstTriangle())
        return;
    makeFirstTriangle();
    for (std::size_t i = 3; i < m_sites.size(); ++i)
        insert(static_cast<std::int32_t>(i));
    m_numTriangles = std::count_if(m_triangles.get(), m_triangles.get() + m_numSlots,
                                   [](const Triangle &triangle) { return !isOutside(triangle); });
}

void Delaunay::write(std::int32_t *indices) const {
    for (std::uint32_t i = 0; i < m_numSlots; ++i)
        if (const Triangle &triangle = m_triangles[i]; !isOutside(triangle))
            for (int k = 0; k < 3; ++k)
                *indices++ = m_numbers[triangle.vertices[k]];
}

/// Brings three sites that turn left to the front; false when all are on one line.
bool Delaunay::findFirstTriangle() {
    const auto swapSites = [this](std::size_t a, std::size_t b) {
        std::swap(m_sites[a], m_sites[b]);
        std::swap(m_numbers[a], m_numbers[b]);
    };
    const auto bringTo = [&](std::size_t place, auto isFit) {
        for (std::size_t i = place; i < m_sites.size(); ++i)
            if (isFit(m_sites[i])) {
                swapSites(i, place);
                return true;
            }
        return false;
    };
    if (!bringTo(1, [this](Site site) { return site != m_sites[0]; }) ||
        !bringTo(2, [this](Site site) { return orientation(m_sites[0], m_sites[1], site) != 0; }))
        return false;
    if (orientation(m_sites[0], m_sites[1], m_sites[2]) < 0)
        swapSites(0, 1);
    return true;
}

/// Makes the triangle of the first three sites and the three beyond its sides.
void Delaunay::makeFirstTriangle() {
    // On a sphere, which the vertex at infinity closes the plane to, V vertices have 2 V - 4 triangles.
    m_triangles = std::make_unique_for_overwrite<Triangle[]>(2 * (m_sites.size() + 1) - 4);
    m_numSlots = 4;
    m_triangles[0] = {{0, 1, 2, 0}, {}};
    for (Side k = 0; k < 3; ++k)
        m_triangles[k + 1] = {{end(k), start(k), infinity, 0}, {}};
    for (Side k = 0; k < 3; ++k) {
        const Side outer = 4 * (k + 1), nextOuter = 4 * (nextSide(k) + 1);
        link(k, outer);
        link(outer + 2, nextOuter + 1);
    }
}

void Delaunay::link(Side a, Side b) {
    m_triangles[a / 4].twins[a & 3] = b;
    m_triangles[b / 4].twins[b & 3] = a;
}

void Delaunay::insert(std::int32_t number) {
    const Site site = m_sites[number];
    bool isOnLine = false;
    const std::uint32_t triangle = locate(site, isOnLine);
    if (isOnLine && joinCopy(triangle, number))
        return;
    findCavity(triangle, site);
    fillCavity(number);
}

/// A triangle that holds `site`, found by walking towards it from the latest one. In a Delaunay triangulation
/// no such walk comes back to where it was. `isOnLine` is set when the site may be on the sides that meet at
/// a vertex, as a copy of that vertex is.
std::uint32_t Delaunay::locate(Site site, bool &isOnLine) const {
    const auto isBeyond = [&](Side side) {
        const double turn = orientation(m_sites[start(side)], m_sites[end(side)], site);
        isOnLine = isOnLine || turn == 0;
        return turn < 0;
    };
    Side side = 4 * m_latest; // not beyond the hull
    if (isBeyond(side))
        side = twin(side);
    // Taking turns in which side comes first keeps the way from going around a vertex of many thin triangles.
    for (bool isNextFirst = true; !isOutside(m_triangles[side / 4]); isNextFirst = !isNextFirst) {
        const Side first = isNextFirst ? nextSide(side) : previousSide(side);
        const Side second = isNextFirst ? previousSide(side) : nextSide(side);
        if (isBeyond(first))
            side = twin(first);
        else if (isBeyond(second))
            side = twin(second);
        else
            break;
    }
    return side / 4;
}

/// True when the site equals a vertex of `triangle`, which then stands for the first of both in the input.
bool Delaunay::joinCopy(std::uint32_t triangle, std::int32_t number) {
    for (int k = 0; k < 3; ++k) {
        const std::int32_t vertex = m_triangles[triangle].vertices[k];
        if (vertex != infinity && m_sites[vertex] == m_sites[number]) {
            m_numbers[vertex] = std::min(m_numbers[vertex], m_numbers[number]);
            return true;
        }
    }
    return false;
}

bool Delaunay::isInConflict(const Triangle &triangle, Site site) const {
    if (isOutside(triangle))
        return isBeyondHull(triangle, site);
    const auto [a, b, c, unused] = triangle.vertices;
    return inCircle(m_sites[a], m_sites[b], m_sites[c], site) > 0;
}

/// True for a site beyond the line through the side that the triangle shares with the hull, or on that side.
bool Delaunay::isBeyondHull(const Triangle &triangle, Site site) const {
    Side side = 0;
    while (triangle.vertices[previousSide(side)] != infinity)
        ++side;
    const Site a = m_sites[triangle.vertices[side]], b = m_sites[triangle.vertices[nextSide(side)]];
    const double turn = orientation(a, b, site);
    if (turn != 0)
        return turn > 0;
    const auto [left, right] = std::minmax(a.x, b.x);
    const auto [low, high] = std::minmax(a.y, b.y);
    return left <= site.x && site.x <= right && low <= site.y && site.y <= high;
}

/// Collects the triangles whose circle holds `site`, of which one is given. They hang together as a tree,
/// since the cavity is star-shaped and no vertex is inside of it: no triangle is met twice. Looking beyond
/// the sides in their order gives the rim in its order.
void Delaunay::findCavity(std::uint32_t triangle, Site site) {
    m_cavity.assign(1, triangle);
    m_rim.clear();
    m_pending.assign({4 * triangle + 2, 4 * triangle + 1, 4 * triangle});
    while (!m_pending.empty()) {
        Side outer = twin(m_pending.back());
        m_pending.pop_back();
        while (isInConflict(m_triangles[outer / 4], site)) {
            m_cavity.push_back(outer / 4);
            m_pending.push_back(previousSide(outer));
            outer = twin(nextSide(outer));
        }
        m_rim.push_back(outer);
    }
}

/// Replaces the cavity by a fan around the site, which takes the places of the cavity's triangles and two
/// more.
void Delaunay::fillCavity(std::int32_t number) {
    m_cavity.push_back(m_numSlots++);
    m_cavity.push_back(m_numSlots++);
    // Each triangle has a spoke out (side 0), the side on the rim (1) and a spoke back (2), the next one's
    // out.
    Side previousSpoke = 4 * m_cavity.back() + 2;
    for (std::size_t i = 0; i < m_rim.size(); ++i) {
        const std::uint32_t made = m_cavity[i];
        const std::int32_t from = end(m_rim[i]), to = start(m_rim[i]);
        m_triangles[made].vertices[0] = number;
        m_triangles[made].vertices[1] = from;
        m_triangles[made].vertices[2] = to;
        link(4 * made + 1, m_rim[i]);
        link(4 * made, previousSpoke);
        previousSpoke = 4 * made + 2;
        if ((from | to) >= 0)
            m_latest = made;
    }
}

} // namespace oravane
