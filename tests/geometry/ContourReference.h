#ifndef ORAVANE_TESTS_GEOMETRY_CONTOURREFERENCE_H
#define ORAVANE_TESTS_GEOMETRY_CONTOURREFERENCE_H

#include <oravane/PlanarRecords.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <utility>
#include <vector>

inline bool operator==(const Ppoint3 &a, const Ppoint3 &b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

namespace oravane {

/// The contouring as it is defined: records of edges and crossings, links searched crossing by crossing,
/// scans over all levels. Slow and plain; what the engines make has to be the same, the order of everything
/// included. Numbers of edges and crossings start at 1, as 0 means none.
class ContourReference {
public:
    struct Cell {
        int type;
        int nodes[4];
        int edges[4] = {0, 0, 0, 0};
        int numCrossedEdges = 0;
    };
    struct Line {
        std::vector<Ppoint3> points;
        float iso;
        bool operator==(const Line &) const = default;
    };
    struct Piece {
        std::vector<int> points;
        float mean;
        bool operator==(const Piece &) const = default;
    };
    /// Position of the crossing of a level with the edge from a node to the next one in direction i or j.
    using Crossing = std::function<Ppoint3(int a, int b, float iso)>;

    ContourReference(std::vector<float> isoLevels, std::vector<float> nodeValues, std::vector<Ppoint3> nodes)
        : m_iso(std::move(isoLevels)), m_values(std::move(nodeValues)), m_points(std::move(nodes)),
          m_edges(1), m_vertices(1) {}

    void addCell(std::vector<int> nodes) {
        Cell cell{static_cast<int>(nodes.size()), {}};
        std::copy(nodes.begin(), nodes.end(), cell.nodes);
        if (std::any_of(nodes.begin(), nodes.end(), [this](int n) { return !std::isfinite(m_values[n]); }))
            cell.type = 0;
        m_cells.push_back(cell);
    }

    /// Grid of nx by ny nodes whose cells are added already.
    void searchGrid(int nx, int ny, const Crossing &crossing) {
        const auto cell = [&](int i, int j) {
            if (i < 0 || j < 0 || i >= nx - 1 || j >= ny - 1 || m_cells[i * (ny - 1) + j].type == 0)
                return -1;
            return i * (ny - 1) + j;
        };
        for (int i = 0; i + 1 < nx; ++i)
            for (int j = 0; j < ny; ++j)
                addGridEdge(i * ny + j, (i + 1) * ny + j, cell(i, j - 1), 2, cell(i, j), 0, crossing);
        for (int j = 0; j + 1 < ny; ++j)
            for (int i = 0; i < nx; ++i)
                addGridEdge(i * ny + j, i * ny + j + 1, cell(i - 1, j), 1, cell(i, j), 3, crossing);
        searchNextVertex();
    }

    void searchIndexed(bool keepsZ) {
        std::map<std::pair<int, int>, int> known;
        for (int c = 0; c < static_cast<int>(m_cells.size()); ++c)
            for (int s = 0; s < m_cells[c].type; ++s)
                addIndexedSide(c, s, known, keepsZ);
        searchNextVertex();
    }

    std::vector<Line> lines() {
        std::vector<Line> result;
        for (const int start : m_border)
            if (m_vertices[start].edge != 0)
                result.push_back(openLine(start));
        for (int start = 1; start < static_cast<int>(m_vertices.size()); ++start)
            if (m_vertices[start].edge != 0)
                result.push_back(closedLine(start));
        return result;
    }

    std::vector<Piece> pieces() {
        std::vector<Piece> result;
        for (int c = 0; c < static_cast<int>(m_cells.size()); ++c) {
            const Cell &cell = m_cells[c];
            if (cell.type == 0)
                continue;
            if (cell.numCrossedEdges > 0) {
                cut(c, result);
                continue;
            }
            Piece piece;
            double sum = 0;
            for (int k = 0; k < cell.type; ++k) {
                piece.points.push_back(cell.nodes[k]);
                sum += m_values[cell.nodes[k]];
            }
            piece.mean = static_cast<float>(sum / cell.type);
            result.push_back(piece);
        }
        return result;
    }

    int countPieces() const {
        int count = 0;
        for (const Cell &cell : m_cells) {
            int crossings = 0;
            for (const int edge : cell.edges)
                crossings += edge ? m_edges[edge].numVertices : 0;
            count += cell.type ? 1 + crossings / 2 : 0;
        }
        return count;
    }

    const std::vector<Ppoint3> &points() const { return m_points; }

private:
    struct Edge {
        int firstVertex = 0, numVertices = 0;
        int elem1 = -1, elem2 = -1;
    };
    struct Vertex {
        int isoIndex = 0, point = 0, link1 = 0, link2 = 0, edge = 0, border = 0;
    };

    /// First level not below the lower value, and the first not below the higher one.
    std::pair<int, int> crossed(int a, int b) const {
        const float lo = std::min(m_values[a], m_values[b]), hi = std::max(m_values[a], m_values[b]);
        int k = 0;
        while (k < static_cast<int>(m_iso.size()) && !(m_iso[k] >= lo))
            ++k;
        int end = k;
        while (end < static_cast<int>(m_iso.size()) && !(m_iso[end] >= hi))
            ++end;
        return {k, end};
    }

    int addEdge(int a, int b, const Crossing &crossing) {
        const auto [first, end] = crossed(a, b);
        const int number = static_cast<int>(m_edges.size());
        m_edges.push_back({static_cast<int>(m_vertices.size()), end - first, -1, -1});
        for (int k = first; k < end; ++k) {
            m_vertices.push_back({k, static_cast<int>(m_points.size()), 0, 0, number, 0});
            m_points.push_back(crossing(a, b, m_iso[k]));
        }
        return number;
    }

    void attach(int c, int side, int edge) {
        if (c < 0)
            return;
        ++m_cells[c].numCrossedEdges;
        m_cells[c].edges[side] = edge;
    }

    void addGridEdge(int a, int b, int elem1, int side1, int elem2, int side2, const Crossing &crossing) {
        if (elem1 < 0 && elem2 < 0)
            return;
        const auto [first, end] = crossed(a, b);
        if (first == end)
            return;
        const int edge = addEdge(a, b, crossing);
        m_edges[edge].elem1 = elem1;
        m_edges[edge].elem2 = elem2;
        attach(elem1, side1, edge);
        attach(elem2, side2, edge);
    }

    void addIndexedSide(int c, int s, std::map<std::pair<int, int>, int> &known, bool keepsZ) {
        int a = m_cells[c].nodes[s], b = m_cells[c].nodes[(s + 1) % m_cells[c].type];
        const auto [first, end] = crossed(a, b);
        if (first == end)
            return;
        int &edge = known[std::minmax(a, b)];
        if (edge != 0) {
            m_edges[edge].elem2 = c;
        } else {
            if (m_values[a] > m_values[b])
                std::swap(a, b);
            edge = addEdge(a, b, [&](int low, int high, float iso) {
                const double vLow = m_values[low], vHigh = m_values[high], t = (iso - vLow) / (vHigh - vLow);
                const auto mix = [t](double p, double q) { return static_cast<float>(p + (q - p) * t); };
                const Ppoint3 p = m_points[low], q = m_points[high];
                return Ppoint3{mix(p.x, q.x), mix(p.y, q.y), keepsZ ? mix(p.z, q.z) : 0};
            });
            m_edges[edge].elem1 = c;
        }
        attach(c, s, edge);
    }

    void searchNextVertex() {
        for (int v = 1; v < static_cast<int>(m_vertices.size()); ++v) {
            const Edge &e = m_edges[m_vertices[v].edge];
            if (m_vertices[v].link1 == 0 && e.elem1 >= 0)
                link(v, e.elem1, m_vertices[v].link1);
            if (m_vertices[v].link2 == 0 && e.elem2 >= 0)
                link(v, e.elem2, m_vertices[v].link2);
            if (e.elem1 < 0 || e.elem2 < 0)
                m_border.push_back(v);
        }
    }

    int &linkIn(int v, int c) {
        return m_edges[m_vertices[v].edge].elem1 == c ? m_vertices[v].link1 : m_vertices[v].link2;
    }

    void link(int v, int c, int &slot) {
        const Cell &cell = m_cells[c];
        int onSide[4] = {0, 0, 0, 0}, count = 0, own = 0, other = 0;
        for (int s = 0; s < cell.type; ++s) {
            const Edge &e = m_edges[cell.edges[s]];
            for (int w = e.firstVertex; cell.edges[s] && w < e.firstVertex + e.numVertices; ++w)
                if (m_vertices[w].isoIndex == m_vertices[v].isoIndex)
                    onSide[s] = w;
            count += onSide[s] != 0;
            if (onSide[s] == v)
                own = s;
            else if (onSide[s] && !other)
                other = onSide[s];
        }
        if (count == 4)
            other = partnerInSaddle(onSide, own, c);
        slot = other;
        linkIn(other, c) = v;
    }

    /// Of four crossings two belong together, and so do the two others.
    int partnerInSaddle(const int onSide[4], int own, int c) {
        int unlinked = 0, numUnlinked = 0;
        for (int s = 0; s < 4; ++s)
            if (s != own && linkIn(onSide[s], c) == 0) {
                unlinked = onSide[s];
                ++numUnlinked;
            }
        if (numUnlinked == 1)
            return unlinked;
        static constexpr int table[4][3] = {{1, 3, 2}, {2, 0, 3}, {1, 3, 0}, {2, 0, 1}};
        const int p = onSide[own], a = onSide[table[own][0]], b = onSide[table[own][1]],
                  q = onSide[table[own][2]];
        const auto distance = [this](int v, int w) {
            const Ppoint3 &s = m_points[m_vertices[v].point], &t = m_points[m_vertices[w].point];
            return std::pow(static_cast<double>(s.x) - t.x, 2) + std::pow(static_cast<double>(s.y) - t.y, 2);
        };
        const double pa = distance(p, a), pb = distance(p, b), aq = distance(a, q), bq = distance(b, q);
        if (pa <= std::min({pb, aq, bq}))
            return a;
        return std::min(pb, aq) <= std::min(pa, bq) ? b : a;
    }

    Line startLine(int v) {
        Line line{{m_points[m_vertices[v].point]}, m_iso[m_vertices[v].isoIndex]};
        m_vertices[v].edge = 0;
        return line;
    }

    void visit(int v, Line &line) {
        line.points.push_back(m_points[m_vertices[v].point]);
        m_vertices[v].edge = 0;
    }

    Line openLine(int start) {
        Line line = startLine(start);
        int left = start, v = m_vertices[start].link1 ? m_vertices[start].link1 : m_vertices[start].link2;
        while (v != 0 && m_vertices[v].edge != 0) {
            visit(v, line);
            const int before = std::exchange(left, v);
            const Vertex &vertex = m_vertices[v];
            v = vertex.link1 && vertex.link1 != before ? vertex.link1
                : vertex.link2 != before               ? vertex.link2
                                                       : 0;
        }
        return line;
    }

    Line closedLine(int start) {
        Line line = startLine(start);
        for (int v = start;;) {
            const Vertex &vertex = m_vertices[v];
            if (vertex.link2 && m_vertices[vertex.link2].edge)
                v = vertex.link2;
            else if (vertex.link1 && m_vertices[vertex.link1].edge)
                v = vertex.link1;
            else
                break;
            visit(v, line);
        }
        line.points.push_back(line.points.front());
        return line;
    }

    struct Entry {
        int point = 0;
        float value = 0;
        int link = 0;
        int partner = 0;
        bool marked = false;
    };

    std::vector<Entry> boundary(int c) {
        const Cell &cell = m_cells[c];
        std::vector<Entry> list(1);
        for (int k = 0; k < cell.type; ++k) {
            const float own = m_values[cell.nodes[k]], next = m_values[cell.nodes[(k + 1) % cell.type]];
            list.push_back({cell.nodes[k], own});
            const Edge &e = m_edges[cell.edges[k]];
            for (int s = 0; cell.edges[k] && s < e.numVertices; ++s) {
                const int v = e.firstVertex + (next > own ? s : e.numVertices - 1 - s);
                m_vertices[v].border = static_cast<int>(list.size());
                list.push_back({m_vertices[v].point, m_iso[m_vertices[v].isoIndex],
                                e.elem2 == c ? m_vertices[v].link2 : m_vertices[v].link1});
            }
        }
        list.push_back(list[1]);
        for (Entry &entry : list)
            entry.partner = entry.link ? m_vertices[entry.link].border : 0;
        return list;
    }

    void cut(int c, std::vector<Piece> &pieces) {
        std::vector<Entry> list = boundary(c);
        const int n = static_cast<int>(list.size()) - 1;
        for (int start = 1; start < n; ++start) {
            if (list[start].marked)
                continue;
            Piece piece;
            double sum = 0;
            int at = start;
            list[at].marked = true;
            do {
                piece.points.push_back(list[at].point);
                sum += list[at].value;
                if (list[at].partner) {
                    at = list[at].partner;
                    list[at].marked = true;
                    piece.points.push_back(list[at].point);
                    sum += list[at].value;
                }
                list[++at].marked = true;
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
