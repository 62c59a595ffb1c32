#ifndef ORAVANE_TESTS_GEOMETRY_CONTOURREFERENCE_H
#define ORAVANE_TESTS_GEOMETRY_CONTOURREFERENCE_H

#include "geometry/ContourFields.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <utility>

namespace oravane {

/// The contouring as it is defined: records of edges and crossings, links searched crossing by crossing,
/// scans over all levels. Slow and plain; what the engines make has to be the same, the order of everything
/// included. Numbers of edges and crossings start at 1: record 0 stands for none.
class ContourReference {
public:
    struct Line {
        std::vector<Ppoint3> points;
        float iso;
        bool operator==(const Line &) const = default;
    };
    struct Piece {
        std::vector<int> points;
        float mean;
    };
    /// Position of the crossing of a level with the edge from node a to node b.
    using Crossing = std::function<Ppoint3(int a, int b, float iso)>;

    ContourReference(std::vector<float> isoLevels, std::vector<float> nodeValues, std::vector<Ppoint3> nodes)
        : m_iso(std::move(isoLevels)), m_values(std::move(nodeValues)), m_points(std::move(nodes)),
          m_edges(1), m_vertices(1) {
        m_vertices[0].isVisited = true;
    }

    void addCell(std::vector<int> nodes) {
        if (std::any_of(nodes.begin(), nodes.end(), [this](int n) { return !std::isfinite(m_values[n]); }))
            nodes.clear();
        m_cells.push_back({nodes});
    }

    /// Grid of nx by ny nodes whose cells are added already.
    void searchGrid(int nx, int ny, const Crossing &crossing) {
        const auto cell = [=, this](int i, int j) {
            const bool isInside = i >= 0 && j >= 0 && i < nx - 1 && j < ny - 1;
            return isInside && !m_cells[i * (ny - 1) + j].nodes.empty() ? i * (ny - 1) + j : -1;
        };
        const auto add = [&](int a, int b, int cell1, int side1, int cell2, int side2) {
            const int edge = cell1 < 0 && cell2 < 0 ? 0 : addEdge(a, b, crossing);
            attach(edge, 0, cell1, side1);
            attach(edge, 1, cell2, side2);
        };
        for (int i = 0; i + 1 < nx; ++i)
            for (int j = 0; j < ny; ++j)
                add(i * ny + j, (i + 1) * ny + j, cell(i, j - 1), 2, cell(i, j), 0);
        for (int j = 0; j + 1 < ny; ++j)
            for (int i = 0; i < nx; ++i)
                add(i * ny + j, i * ny + j + 1, cell(i - 1, j), 1, cell(i, j), 3);
        linkAll();
    }

    void searchIndexed(bool keepsZ) {
        const auto crossing = [this, keepsZ](int a, int b, float iso) {
            const double va = m_values[a], vb = m_values[b], t = (iso - va) / (vb - va);
            const auto mix = [t](double p, double q) { return static_cast<float>(p + (q - p) * t); };
            const Ppoint3 p = m_points[a], q = m_points[b];
            return Ppoint3{mix(p.x, q.x), mix(p.y, q.y), keepsZ ? mix(p.z, q.z) : 0};
        };
        std::map<std::pair<int, int>, int> known;
        for (int c = 0; c < std::ssize(m_cells); ++c)
            for (int s = 0; s < std::ssize(m_cells[c].nodes); ++s) {
                const int a = m_cells[c].node(s), b = m_cells[c].node(s + 1);
                int &edge = known[std::minmax(a, b)];
                const bool isKnown = edge != 0;
                if (!isKnown)
                    edge = m_values[a] > m_values[b] ? addEdge(b, a, crossing) : addEdge(a, b, crossing);
                attach(edge, isKnown, c, s);
            }
        linkAll();
    }

    std::vector<Line> lines() {
        std::vector<Line> result;
        for (const int start : m_border)
            if (!m_vertices[start].isVisited)
                result.push_back(openLine(start));
        for (int start = 1; start < std::ssize(m_vertices); ++start)
            if (!m_vertices[start].isVisited)
                result.push_back(closedLine(start));
        return result;
    }

    std::vector<Piece> pieces() {
        std::vector<Piece> result;
        for (int c = 0; c < std::ssize(m_cells); ++c)
            if (!m_cells[c].nodes.empty())
                cut(boundary(c), result);
        return result;
    }

    int countPieces() const {
        int count = 0;
        for (const Cell &cell : m_cells) {
            int crossings = 0;
            for (const int edge : cell.edges)
                crossings += m_edges[edge].count;
            count += cell.nodes.empty() ? 0 : 1 + crossings / 2;
        }
        return count;
    }

    const std::vector<Ppoint3> &points() const { return m_points; }

private:
    struct Cell {
        std::vector<int> nodes; ///< none where a value is missing
        std::array<int, 4> edges{};
        int node(int k) const { return nodes[k % nodes.size()]; }
    };
    struct Edge {
        int first = 0, count = 0; ///< crossings
        int cells[2] = {-1, -1};
    };
    struct Vertex {
        int level = 0, point = 0, edge = 0;
        std::array<int, 2> link{}; ///< through the first and the second cell of the edge
        int border = 0;
        bool isVisited = false;
    };

    /// Crossings from the first level not below the lower value to the first not below the higher one.
    int addEdge(int a, int b, const Crossing &crossing) {
        const float low = std::min(m_values[a], m_values[b]), high = std::max(m_values[a], m_values[b]);
        const int number = static_cast<int>(m_edges.size()), first = static_cast<int>(m_vertices.size());
        int k = 0;
        while (k < std::ssize(m_iso) && !(m_iso[k] >= low))
            ++k;
        for (; k < std::ssize(m_iso) && !(m_iso[k] >= high); ++k) {
            m_vertices.push_back({k, static_cast<int>(m_points.size()), number});
            m_points.push_back(crossing(a, b, m_iso[k]));
        }
        const int count = static_cast<int>(m_vertices.size()) - first;
        if (count == 0)
            return 0;
        m_edges.push_back({first, count});
        return number;
    }

    void attach(int edge, int which, int c, int side) {
        if (edge == 0 || c < 0)
            return;
        m_edges[edge].cells[which] = c;
        m_cells[c].edges[side] = edge;
    }

    void linkAll() {
        for (int v = 1; v < std::ssize(m_vertices); ++v) {
            const Edge &e = m_edges[m_vertices[v].edge];
            for (const int k : {0, 1})
                if (m_vertices[v].link[k] == 0 && e.cells[k] >= 0) {
                    const int other = partner(v, e.cells[k]);
                    m_vertices[v].link[k] = other;
                    linkIn(other, e.cells[k]) = v;
                }
            if (e.cells[0] < 0 || e.cells[1] < 0)
                m_border.push_back(v);
        }
    }

    int &linkIn(int v, int c) { return m_vertices[v].link[m_edges[m_vertices[v].edge].cells[0] != c]; }

    int partner(int v, int c) {
        std::array<int, 4> onSide{};
        for (int s = 0; s < 4; ++s) {
            const Edge &e = m_edges[m_cells[c].edges[s]];
            for (int w = e.first; w < e.first + e.count; ++w)
                if (m_vertices[w].level == m_vertices[v].level)
                    onSide[s] = w;
        }
        if (std::count(onSide.begin(), onSide.end(), 0) == 0)
            return partnerInSaddle(onSide, v, c);
        return *std::find_if(onSide.begin(), onSide.end(), [v](int w) { return w != 0 && w != v; });
    }

    /// Of four crossings two belong together, and so do the two others.
    int partnerInSaddle(const std::array<int, 4> &onSide, int v, int c) {
        std::vector<int> unlinked;
        for (const int w : onSide)
            if (w != v && linkIn(w, c) == 0)
                unlinked.push_back(w);
        if (unlinked.size() == 1)
            return unlinked[0];
        static constexpr int table[4][3] = {{1, 3, 2}, {2, 0, 3}, {1, 3, 0}, {2, 0, 1}};
        const auto row = table[std::find(onSide.begin(), onSide.end(), v) - onSide.begin()];
        const int a = onSide[row[0]], b = onSide[row[1]], q = onSide[row[2]];
        const auto distance = [this](int from, int to) {
            const Ppoint3 &s = m_points[m_vertices[from].point], &t = m_points[m_vertices[to].point];
            return std::pow(static_cast<double>(s.x) - t.x, 2) + std::pow(static_cast<double>(s.y) - t.y, 2);
        };
        const double va = distance(v, a), vb = distance(v, b), aq = distance(a, q), bq = distance(b, q);
        if (va <= std::min({vb, aq, bq}))
            return a;
        return std::min(vb, aq) <= std::min(va, bq) ? b : a;
    }

    void visit(int v, Line &line) {
        line.points.push_back(m_points[m_vertices[v].point]);
        line.iso = m_iso[m_vertices[v].level];
        m_vertices[v].isVisited = true;
    }

    Line openLine(int start) {
        Line line{};
        visit(start, line);
        const auto [link1, link2] = m_vertices[start].link;
        for (int before = start, v = link1 ? link1 : link2; !m_vertices[v].isVisited;) {
            visit(v, line);
            const auto [first, second] = m_vertices[v].link;
            const int left = std::exchange(before, v);
            v = first && first != left ? first : second != left ? second : 0;
        }
        return line;
    }

    Line closedLine(int start) {
        Line line{};
        for (int v = start; !m_vertices[v].isVisited;) {
            visit(v, line);
            const auto [first, second] = m_vertices[v].link;
            v = m_vertices[second].isVisited ? first : second;
        }
        line.points.push_back(line.points.front());
        return line;
    }

    /// A corner or a crossing on the way round a cell; a crossing has a partner, the entry across the cell.
    struct Entry {
        int point = 0;
        float value = 0;
        int link = 0, partner = 0;
        bool isMarked = false;
    };

    /// Entries from number 1 on, the first one again at the end.
    std::vector<Entry> boundary(int c) {
        const Cell &cell = m_cells[c];
        std::vector<Entry> list(1);
        for (int k = 0; k < std::ssize(cell.nodes); ++k) {
            const float own = m_values[cell.node(k)], next = m_values[cell.node(k + 1)];
            list.push_back({cell.node(k), own});
            const Edge &e = m_edges[cell.edges[k]];
            for (int s = 0; s < e.count; ++s) {
                Vertex &v = m_vertices[e.first + (next > own ? s : e.count - 1 - s)];
                v.border = static_cast<int>(list.size());
                list.push_back({v.point, m_iso[v.level], v.link[e.cells[1] == c]});
            }
        }
        list.push_back(list[1]);
        for (Entry &entry : list)
            entry.partner = m_vertices[entry.link].border;
        return list;
    }

    static void cut(std::vector<Entry> list, std::vector<Piece> &pieces) {
        const int n = static_cast<int>(list.size()) - 1;
        for (int start = 1; start < n; ++start) {
            if (list[start].isMarked)
                continue;
            Piece piece{};
            double sum = 0;
            const auto take = [&](Entry &entry) {
                entry.isMarked = true;
                piece.points.push_back(entry.point);
                sum += entry.value;
            };
            int at = start;
            do {
                take(list[at]);
                if (list[at].partner)
                    take(list[at = list[at].partner]);
                list[++at].isMarked = true;
            } while (at != start && at != n && piece.points.size() < 10);
            if (piece.points.size() >= 10)
                return;
            piece.mean = static_cast<float>(sum / static_cast<double>(piece.points.size()));
            pieces.push_back(piece);
        }
    }

    std::vector<float> m_iso, m_values;
    std::vector<Ppoint3> m_points;
    std::vector<Cell> m_cells;
    std::vector<Edge> m_edges;
    std::vector<Vertex> m_vertices;
    std::vector<int> m_border;
};

} // namespace oravane

#endif
