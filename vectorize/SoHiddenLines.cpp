#include <oravane/SoHiddenLines.h>

#include "vectorize/HiddenLineEngine.h"
#include "vectorize/PageClipper.h"

#include <algorithm>
#include <array>
#include <bit>
#include <compare>
#include <cstring>
#include <unordered_set>
#include <vector>

ORAVANE_VECTORIZE_BEGIN

namespace {

bool operator==(const SoHiddenLines::Appearance &a, const SoHiddenLines::Appearance &b) {
    return a.color == b.color && a.width == b.width && a.pattern == b.pattern;
}

/// An edge without its direction, and what it is drawn with.
struct Edge {
    std::array<std::uint32_t, 11> words;

    bool operator==(const Edge &) const = default;
};

struct EdgeHash {
    std::size_t operator()(const Edge &edge) const {
        std::uint64_t hash = 0;
        for (const std::uint32_t word : edge.words) {
            hash = (hash ^ word) * 0x9E3779B97F4A7C15u; // the golden ratio spreads what differs little
            hash ^= hash >> 32;
        }
        return hash;
    }
};

using PointWords = std::array<std::uint32_t, 3>;

PointWords wordsOf(const SbVec3f &p) {
    PointWords words;
    for (int k = 0; k < 3; ++k)
        words[k] = std::bit_cast<std::uint32_t>(p[k] + 0.0f); // -0 is 0
    return words;
}

Edge edgeOf(const SbVec3f &a, const SbVec3f &b, const SoHiddenLines::Appearance &appearance) {
    PointWords low = wordsOf(a), high = wordsOf(b);
    if (high < low)
        low.swap(high);
    const PointWords color = wordsOf(appearance.color);
    return {{low[0], low[1], low[2], high[0], high[1], high[2], color[0], color[1], color[2],
             std::bit_cast<std::uint32_t>(appearance.width), appearance.pattern}};
}

} // namespace

/// All lines that were given, their points in one row.
struct SoHiddenLines::Lines {
    struct Line {
        std::size_t first, numPoints;
        std::uint32_t appearance;
        bool isPolygon;
    };

    std::vector<SbVec3f> points;
    std::vector<Line> lines;
    std::vector<Appearance> appearances;
    std::unordered_set<Edge, EdgeHash> drawnEdges;
    oravane::HiddenLineEngine engine;
    std::vector<Polyline> visible;
    std::vector<SbVec4f> chain; ///< the piece that grows

    void add(std::span<const SbVec4f> given, const Appearance &appearance, bool isPolygon);
    std::span<const SbVec3f> pointsOf(const Line &line) const {
        return std::span(points).subspan(line.first, line.numPoints);
    }
    void index();
    void show(const Line &line);
    void addPart(const SbVec3f &from, const SbVec3f &to, const oravane::LinePart &part, const Line &line);
    void endChain(const Line &line);
};

SoHiddenLines::SoHiddenLines() : m_lines(std::make_unique<Lines>()) {}

SoHiddenLines::~SoHiddenLines() = default;

void SoHiddenLines::Lines::add(std::span<const SbVec4f> given, const Appearance &appearance, bool isPolygon) {
    // Lines that follow each other mostly look alike.
    if (appearances.empty() || !(appearances.back() == appearance))
        appearances.push_back(appearance);
    lines.push_back(
        {points.size(), given.size(), static_cast<std::uint32_t>(appearances.size() - 1), isPolygon});
    for (const SbVec4f &p : given)
        points.emplace_back(p[0], p[1], p[2]);
}

void SoHiddenLines::addPolygon(const SbVec4f *points, int n, const SbColor &color, float width,
                               unsigned short pattern) {
    if (!points || n < 2)
        return;
    const std::span ring(points, static_cast<std::size_t>(n));
    if (oravane::isFinite(ring))
        m_lines->add(ring, {color, width, pattern}, true);
}

void SoHiddenLines::addPolyline(const SbVec4f *points, int n, const SbColor &color, float width,
                                unsigned short pattern) {
    for (int begin = 0, end = 0; points && begin < n; begin = end + 1) {
        for (end = begin; end < n && oravane::isFinite(points[end]);)
            ++end;
        if (end - begin > 1)
            m_lines->add({points + begin, static_cast<std::size_t>(end - begin)}, {color, width, pattern},
                         false);
    }
}

SoHiddenLines::Polyline *SoHiddenLines::computeHiddenLines(int &count) {
    Lines &all = *m_lines;
    all.index();
    for (const Lines::Line &line : all.lines)
        all.show(line);
    count = static_cast<int>(all.visible.size());
    auto result = count > 0 ? std::make_unique<Polyline[]>(all.visible.size()) : nullptr;
    std::ranges::move(all.visible, result.get());
    all.visible.clear();
    return result.release();
}

void SoHiddenLines::Lines::index() {
    engine = {};
    drawnEdges.clear();
    for (const Line &line : lines)
        if (line.isPolygon)
            engine.addFace(pointsOf(line));
    engine.buildIndex();
}

void SoHiddenLines::Lines::show(const Line &line) {
    const std::span<const SbVec3f> p = pointsOf(line);
    for (std::size_t i = 0; i + (line.isPolygon ? 0 : 1) < p.size(); ++i) {
        const SbVec3f &from = p[i], &to = p[i + 1 < p.size() ? i + 1 : 0];
        if (line.isPolygon && !drawnEdges.insert(edgeOf(from, to, appearances[line.appearance])).second)
            continue;
        for (const oravane::LinePart &part : engine.visibleParts(from, to))
            addPart(from, to, part, line);
    }
    endChain(line);
}

namespace {

SbVec4f pointAt(const SbVec3f &from, const SbVec3f &to, double t) {
    const auto between = [&](int k) {
        return static_cast<float>(from[k] + t * (static_cast<double>(to[k]) - from[k]));
    };
    return t >= 1 ? SbVec4f(to[0], to[1], 0, 0) : SbVec4f(between(0), between(1), 0, 0);
}

} // namespace

void SoHiddenLines::Lines::addPart(const SbVec3f &from, const SbVec3f &to, const oravane::LinePart &part,
                                   const Line &line) {
    const SbVec4f start = pointAt(from, to, part.begin);
    if (chain.empty() || chain.back() != start) {
        endChain(line);
        chain.push_back(start);
    }
    chain.push_back(pointAt(from, to, part.end));
}

void SoHiddenLines::Lines::endChain(const Line &line) {
    if (chain.empty())
        return;
    const Appearance &a = appearances[line.appearance];
    auto piece = std::make_unique<SbVec4f[]>(chain.size());
    std::ranges::copy(chain, piece.get());
    visible.push_back({std::move(piece), static_cast<int>(chain.size()), a.color, a.width, a.pattern});
    chain.clear();
}

ORAVANE_VECTORIZE_END
