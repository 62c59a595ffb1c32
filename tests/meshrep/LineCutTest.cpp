#include "meshrep/LineCut.h"
#include "meshrep/PolylineBoxes.h"

#include "geometry/ContourFields.h"

#include <oravane/PlanarPolygons.h>

#include <gtest/gtest.h>

#include <random>

namespace {

using oravane::ClosedBox;
using Line = std::vector<Ppoint3>;

class Random {
public:
    explicit Random(unsigned seed) : m_engine(seed) {}
    float in(float low, float high) { return std::uniform_real_distribution<float>(low, high)(m_engine); }

    /// Steps of all directions within the unit square, so that it passes most places more than once.
    Line line(int numPoints) {
        Line line{{in(0, 1), in(0, 1), in(0, 1)}};
        while (static_cast<int>(line.size()) < numPoints) {
            const Ppoint3 &p = line.back();
            line.push_back({std::clamp(p.x + in(-0.05f, 0.05f), 0.f, 1.f),
                            std::clamp(p.y + in(-0.05f, 0.05f), 0.f, 1.f), in(0, 1)});
        }
        return line;
    }
    ClosedBox box() {
        const float x = in(0, 1), y = in(0, 1), angle = in(0, 3), along = in(0.01f, 0.1f), across = along / 2;
        const float ax = along * std::cos(angle), ay = along * std::sin(angle);
        const float bx = -across * std::sin(angle), by = across * std::cos(angle);
        return {{{x - ax - bx, y - ay - by, 0},
                 {x - ax + bx, y - ay + by, 0},
                 {x + ax + bx, y + ay + by, 0},
                 {x + ax - bx, y + ay - by, 0},
                 {x - ax - bx, y - ay - by, 0}}};
    }

private:
    std::mt19937 m_engine;
};

bool isInside(const Ppoint3 &point, ClosedBox box) {
    return pscanLine2D(point, Ppoint_list3{5, box.data()}) % 2 != 0;
}

/// All parts through the toolbox, one box after the other.
std::vector<Line> cutWhole(const Line &line, const std::vector<ClosedBox> &boxes) {
    std::vector<Line> parts{line};
    for (ClosedBox box : boxes) {
        std::vector<Line> left;
        for (Line &part : parts) {
            Ppoint_list_list3 outside{0, nullptr};
            const Ppoint_list3 polygon{5, box.data()}, all{static_cast<int>(part.size()), part.data()};
            const bool isCrossing = pintersPolygons2D(all, polygon, nullptr, nullptr, nullptr, nullptr) > 0;
            pdiffPolygons2D(all, polygon, &outside);
            for (int k = 0; k < outside.numLists; ++k) {
                const Ppoint_list3 &piece = outside.lists[k];
                if (isCrossing || !isInside(part.front(), box) || !isInside(part.back(), box))
                    left.emplace_back(piece.points, piece.points + piece.numPoints);
                delete[] piece.points;
            }
            delete[] outside.lists;
        }
        parts = std::move(left);
    }
    return parts;
}

TEST(LineCut, LeavesWhatTheToolboxLeavesOfTheWholeLine) {
    int numParts = 0;
    for (const int numPoints : {1, 2, 3, 16, 17, 18, 300, 2000})
        for (unsigned round = 0; round < 40; ++round) {
            Random random(round);
            Line line = random.line(numPoints);
            if (round % 2 == 1)
                line.back() = line.front();
            std::vector<ClosedBox> boxes(12); // some overlap
            for (ClosedBox &box : boxes)
                box = random.box();
            oravane::LineCut cut({numPoints, line.data()});
            for (const ClosedBox &box : boxes)
                cut.cutAt(box);
            std::vector<Line> memory, parts;
            for (const auto &[count, points] : cut.parts(memory))
                parts.emplace_back(points, points + count);
            EXPECT_EQ(parts, cutWhole(line, boxes)) << numPoints << " points, round " << round;
            numParts += static_cast<int>(parts.size());
        }
    EXPECT_GT(numParts, 1500);
}

TEST(PolylineBoxes, FindTheLinesThatALookAtEachFinds) {
    for (const int numLines : {0, 1, 5, 400}) {
        Random random(numLines);
        std::vector<Line> lines;
        oravane::PolylineBoxes boxes;
        for (int k = 0; k < numLines; ++k)
            lines.push_back(random.line(1 + k % 60));
        for (int k = 0; k < numLines; ++k)
            boxes.add(k, {static_cast<int>(lines[k].size()), lines[k].data()});
        boxes.arrange();
        for (int trial = 0; trial < 200; ++trial) {
            const ClosedBox box = random.box();
            std::vector<std::size_t> crossed;
            for (std::size_t k = 0; k < lines.size(); ++k)
                if (pintersParaPolyline2D(box.data(), lines[k].data(), static_cast<int>(lines[k].size())))
                    crossed.push_back(k);
            const Plimit limit = oravane::limitOf<Ppoint3>(box);
            EXPECT_EQ(boxes.cross(box.data(), limit), !crossed.empty());
            if (!crossed.empty()) {
                EXPECT_EQ(boxes.cross(box.data(), limit, crossed.front()), crossed.size() > 1);
            }
        }
    }
}

} // namespace
