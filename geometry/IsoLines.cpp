#include "geometry/IsoLines.h"

namespace oravane {

namespace {

class LineWalker {
public:
    LineWalker(std::vector<IsoCrossing> &crossings, IsoLines &lines)
        : m_crossings(crossings), m_lines(lines) {}

    bool isVisited(std::uint32_t crossing) const { return m_crossings[crossing].level < 0; }

    void walkOpen(std::uint32_t start) {
        begin(start);
        const std::uint32_t *link = m_crossings[start].link;
        std::uint32_t before = start, at = link[0] != NO_CROSSING ? link[0] : link[1];
        while (at != NO_CROSSING && !isVisited(at)) {
            visit(at);
            link = m_crossings[at].link;
            const std::uint32_t left = before;
            before = at;
            at = link[0] != left && link[0] != NO_CROSSING ? link[0]
                 : link[1] != left                         ? link[1]
                                                           : NO_CROSSING;
        }
        end();
    }

    /// Sets out in the other direction than an open line does, and comes back to its first point.
    void walkClosed(std::uint32_t start) {
        begin(start);
        for (std::uint32_t at = unvisitedNeighbour(start); at != NO_CROSSING; at = unvisitedNeighbour(at))
            visit(at);
        m_lines.points.push_back(m_crossings[start].point);
        end();
    }

private:
    std::uint32_t unvisitedNeighbour(std::uint32_t crossing) const {
        const std::uint32_t *link = m_crossings[crossing].link;
        if (link[1] != NO_CROSSING && !isVisited(link[1]))
            return link[1];
        return link[0] != NO_CROSSING && !isVisited(link[0]) ? link[0] : NO_CROSSING;
    }

    void begin(std::uint32_t start) {
        m_lines.lines.push_back({m_lines.points.size(), 0, m_crossings[start].level});
        visit(start);
    }

    void visit(std::uint32_t crossing) {
        m_lines.points.push_back(m_crossings[crossing].point);
        m_crossings[crossing].level = -1;
    }

    void end() { m_lines.lines.back().count = m_lines.points.size() - m_lines.lines.back().start; }

    std::vector<IsoCrossing> &m_crossings;
    IsoLines &m_lines;
};

} // namespace

void joinLines(std::vector<IsoCrossing> &crossings, const std::vector<std::uint32_t> &border,
               IsoLines &lines) {
    lines.points.clear();
    lines.lines.clear();
    lines.points.reserve(crossings.size() + crossings.size() / 64);
    LineWalker walker(crossings, lines);
    for (const std::uint32_t start : border)
        if (!walker.isVisited(start))
            walker.walkOpen(start);
    for (std::uint32_t start = 0; start < crossings.size(); ++start)
        if (!walker.isVisited(start))
            walker.walkClosed(start);
}

} // namespace oravane
