#include "meshrep/ContourLabels.h"
#include "meshrep/LineCut.h"

#include <oravane/PlanarPolygons.h>

#include <oravane/PbIsovaluesList.h>
#include <oravane/PbRegularCartesianGrid2D.h>
#include <oravane/PiContouringLines.h>

#include <Inventor/SbRotation.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <tuple>

using oravane::ContourLabel;
using oravane::ContourLabels;
using oravane::ContourLine;
using oravane::LabelRules;

namespace {

SbVec3f vec(const Ppoint3 &p) {
    return {p.x, p.y, p.z};
}

float planar(const SbVec3f &v) {
    return std::hypot(v[0], v[1]);
}

/// Places labels by a plain walk that tries everything against everything.
class PlainLabels {
public:
    PlainLabels(const LabelRules &rules, std::span<const ContourLine> lines)
        : m_rules(rules), m_lines(lines) {}

    void placeOn(std::size_t line, float w, float h) {
        const Ppoint_list3 &p = m_lines[line].points;
        const auto length = [&](int k) { return planar(vec(p.points[k + 1]) - vec(p.points[k])); };
        const Plimit box = boxOf(p.points, p.numPoints);
        if (!(1.5f * (w * w + h * h) <
              std::pow(box.xmax - box.xmin, 2.f) + std::pow(box.ymax - box.ymin, 2.f)))
            return;
        const int n = p.numPoints - 1;
        int start = 0;
        float sum = length(0);
        while (sum < m_offset && start < n - 1)
            sum += length(++start);
        if (sum < m_offset)
            start = 0, m_offset = 0;
        int k = start, numPlaced = 0;
        do {
            if (numPlaced > 0 && k < start)
                return;
            if (tryAt(line, k, w, h)) {
                if (numPlaced++ == 0)
                    m_offset = m_offset + 1.5f * w > m_rules.gap ? 0 : m_offset + 1.5f * w;
                for (sum = length(k); sum < m_rules.gap; sum += length(k))
                    if (++k == n)
                        return;
            }
            k = (k + 1) % n;
        } while (k != start);
    }
    std::vector<ContourLabel> labels;

private:
    static Plimit boxOf(const Ppoint3 *points, int count) {
        Plimit box{};
        pcomputePolygonBBox2D(points, count, &box);
        return box;
    }

    bool tryAt(std::size_t line, int k, float w, float h) {
        const Ppoint_list3 &p = m_lines[line].points;
        const SbVec3f middle = (vec(p.points[k]) + vec(p.points[k + 1])) / 2;
        const Ppoint3 mid{middle[0], middle[1], middle[2]};
        Ppoint3 p1, p2;
        SbVec3f u(1, 0, 0), up(0, 1, 0);
        if (m_rules.path == PoMeshContouring::TANGENTIAL_PATH) {
            if (!ppolylineIntersSphere3D(p, k, mid, w * w / 4, &p1, &p2))
                return false;
            u = vec(p2) - vec(p1);
            u[2] = 0;
            u.normalize();
            u = u[0] < 0 ? -u : u;
            up.setValue(-u[1], u[0], 0);
        } else if (m_rules.path == PoMeshContouring::VERTICAL_PATH) {
            u.setValue(0, -1, 0);
            up.setValue(1, 0, 0);
        }
        ContourLabel label{};
        const int sides[4][2] = {{-1, -1}, {-1, 1}, {1, 1}, {1, -1}};
        for (int c = 0; c < 4; ++c) {
            const float a = w / 2 * static_cast<float>(sides[c][0]), margin = 0.05f * w;
            const float b = h / 2 * static_cast<float>(sides[c][1]);
            const SbVec3f corner = middle + u * a + up * b;
            const SbVec3f outer = corner + margin * (static_cast<float>(sides[c][0]) * u +
                                                     static_cast<float>(sides[c][1]) * up);
            label.box[c] = {corner[0], corner[1], corner[2]};
            label.outer[c] = {outer[0], outer[1], outer[2]};
        }
        label.outer[4] = label.outer[0];
        if (!isFree(label, line))
            return false;
        label.middle = mid;
        label.isovalue = m_lines[line].isovalue;
        label.line = line;
        if (m_rules.is3D && findEnds(label, p1, p2)) {
            SbVec3f d = vec(p1) - vec(p2), level(d[0], d[1], 0);
            d.normalize();
            level.normalize();
            const auto tilt = [&](Ppoint3 &corner) {
                SbVec3f turned;
                SbRotation(level, d).multVec(vec(corner) - middle, turned);
                turned += middle;
                corner = {turned[0], turned[1], turned[2]};
            };
            std::for_each(label.box.begin(), label.box.end(), tilt);
            std::for_each(label.outer.begin(), label.outer.end(), tilt);
        }
        labels.push_back(label);
        return true;
    }

    /// Ends of the direction in which a label is tilted.
    bool findEnds(const ContourLabel &label, Ppoint3 &p1, Ppoint3 &p2) const {
        if (m_rules.path == PoMeshContouring::TANGENTIAL_PATH)
            return true;
        std::array<Ppoint3, 5> closed{label.box[0], label.box[1], label.box[2], label.box[3], label.box[0]};
        Ppoint_list3 at{0, nullptr};
        int capacity = 0;
        pintersPolygons2D({5, closed.data()}, m_lines[label.line].points, &capacity, &at, nullptr, nullptr);
        const bool isFound = at.numPoints > 1;
        if (isFound)
            p1 = at.points[0], p2 = at.points[at.numPoints - 1];
        delete[] at.points;
        return isFound;
    }

    bool isFree(const ContourLabel &label, std::size_t line) const {
        const Ppoint3 *corners = label.outer.data();
        for (int c = 0; c < 4 && m_rules.clippingPolygon.numPoints > 2; ++c)
            if (pscanLine2D(corners[c], m_rules.clippingPolygon) % 2 == 0)
                return false;
        const auto crosses = [&](const Ppoint_list3 &other) {
            return pintersParaPolyline2D(corners, other.points, other.numPoints) != 0;
        };
        if (std::any_of(m_rules.limits.lists, m_rules.limits.lists + m_rules.limits.numLists, crosses))
            return false;
        for (const ContourLabel &placed : labels)
            if (pintersBBox2D(boxOf(corners, 4), boxOf(placed.outer.data(), 4)))
                return false;
        if (m_rules.crossStatus == PoMeshContouring::CROSS_CONTOUR)
            return true;
        for (std::size_t other = 0; other < m_lines.size(); ++other)
            if (other != line &&
                (m_lines[other].isMajor || m_rules.crossStatus == PoMeshContouring::DONT_CROSS_CONTOUR) &&
                crosses(m_lines[other].points))
                return false;
        return true;
    }

    const LabelRules &m_rules;
    std::span<const ContourLine> m_lines;
    float m_offset = 0;
};

constexpr int N = 60, PERIOD = 2, NUM_LEVELS = 10;

/// Lines of a smooth random field on the unit square.
struct RandomLines {
    explicit RandomLines(unsigned seed) {
        std::mt19937 random(seed);
        std::uniform_real_distribution<float> factor(1, 9);
        const float a = factor(random), b = factor(random), c = factor(random), d = factor(random);
        for (int i = 0; i < N; ++i)
            for (int j = 0; j < N; ++j) {
                const float x = static_cast<float>(i) / (N - 1), y = static_cast<float>(j) / (N - 1);
                values.push_back(5.5f + 2.7f * std::sin(a * x + b * y) + 2.3f * std::cos(c * x - d * y));
                z.push_back(0.3f * std::sin(3 * x) * std::cos(2 * y));
            }
    }
    std::vector<ContourLine> lines(bool is3D) {
        engine.setMesh(&mesh, is3D ? z.data() : nullptr);
        engine.setIsovaluesList(&levels);
        Tisoline_list made{};
        engine.getLines(values.data(), is3D ? z.data() : nullptr, &made);
        std::vector<ContourLine> result;
        for (int k = 0; k < made.numLines; ++k)
            result.push_back(
                {made.lines[k], made.isovalues[k], static_cast<int>(made.isovalues[k]) % PERIOD == 0});
        return result;
    }
    PbRegularCartesianGrid2D mesh{N, N, 0.f, 0.f, 1.f, 1.f, 1};
    PbIsovaluesList levels{1.f, 10.f, NUM_LEVELS};
    std::vector<float> values, z;
    PiContouringLines engine;
};

TEST(ContourLabels, StandWhereAPlainWalkPutsThem) {
    Ppoint polygon[] = {{0.1f, 0.05f}, {0.9f, 0.2f}, {0.95f, 0.9f}, {0.5f, 0.6f}, {0.1f, 0.9f}};
    Ppoint3 border[] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 0}};
    Ppoint_list3 borders[] = {{5, border}};
    std::size_t numLabels = 0;
    for (unsigned seed = 0; seed < 36; ++seed) {
        RandomLines field(seed);
        LabelRules rules{};
        rules.path = static_cast<PoMeshContouring::AnnotPath>(seed % 3);
        rules.crossStatus = static_cast<PoMeshContouring::AnnotCrossStatus>(seed / 3 % 3);
        rules.is3D = seed / 9 % 2 != 0;
        rules.gap = seed % 4 == 3 ? NAN : 0.1f + 0.2f * static_cast<float>(seed % 4);
        rules.fontSize = 0.03f;
        if (seed % 2 != 0)
            rules.clippingPolygon = {5, polygon};
        rules.limits = {1, borders};
        const float distance = rules.crossStatus == PoMeshContouring::DONT_CROSS_CONTOUR ? 1 : PERIOD;
        rules.neighbours = [&](float value) { return std::array{value - distance, value + distance}; };
        const std::vector<ContourLine> lines = field.lines(rules.is3D);
        ContourLabels labels(rules, lines);
        PlainLabels plain(rules, lines);
        for (std::size_t line = 0; line < lines.size(); ++line)
            if (lines[line].isMajor) {
                const float width = 0.06f * static_cast<float>(line % 4 + 1);
                labels.placeOn(line, width, 0.03f);
                plain.placeOn(line, width, 0.03f);
            }
        SCOPED_TRACE("field " + std::to_string(seed));
        ASSERT_EQ(labels.all().size(), plain.labels.size());
        numLabels += plain.labels.size();
        for (std::size_t k = 0; k < plain.labels.size(); ++k) {
            SCOPED_TRACE("label " + std::to_string(k));
            const auto &[label, expected] = std::tie(labels.all()[k], plain.labels[k]);
            EXPECT_EQ(std::pair(label.line, label.isovalue), std::pair(expected.line, expected.isovalue));
            for (std::size_t c = 0; c < 5; ++c) {
                EXPECT_TRUE(vec(label.box[c % 4]).equals(vec(expected.box[c % 4]), 1e-5f)) << c;
                EXPECT_TRUE(vec(label.outer[c]).equals(vec(expected.outer[c]), 1e-5f)) << c;
            }
        }
    }
    EXPECT_GT(numLabels, 300u);
}

TEST(ContourLabels, RunAgainstAnUprightLineAndToTheRightOnAllOthers) {
    for (const SbVec2f &step : {SbVec2f(0, 1), SbVec2f(0, -1), SbVec2f(1, 2), SbVec2f(-1, 2)}) {
        std::vector<Ppoint3> points;
        for (int k = 0; k < 9; ++k)
            points.push_back({step[0] * static_cast<float>(k), step[1] * static_cast<float>(k), 0});
        const ContourLine line{{9, points.data()}, 1, true};
        LabelRules rules{};
        rules.gap = 100;
        rules.fontSize = 1;
        ContourLabels labels(rules, {&line, 1});
        labels.placeOn(0, 2, 1);
        ASSERT_EQ(labels.all().size(), 1u);
        const SbVec3f along = vec(labels.all()[0].box[3]) - vec(labels.all()[0].box[0]);
        SbVec3f expected(step[0], step[1], 0);
        expected *= (step[0] > 0 ? 2 : -2) / expected.length();
        EXPECT_TRUE(along.equals(expected, 1e-5f)) << along[0] << ' ' << along[1];
    }
}

TEST(ContourLabels, CoverLinesWhollyUnderThem) {
    Ppoint3 through[] = {{-9, 0, 0}, {9, 0, 0}, {30, 0, 0}}, above[] = {{-1, 2, 0}, {1, 2, 0}},
            under[] = {{-1, 0.2f, 0}, {1, 0.2f, 0}, {0, 0.5f, 0}, {-1, 0.2f, 0}};
    const ContourLine lines[] = {{{3, through}, 1, true}, {{2, above}, 2, false}, {{4, under}, 2, false}};
    LabelRules rules{};
    rules.gap = 100;
    ContourLabels labels(rules, lines);
    labels.placeOn(0, 4, 2);
    ASSERT_EQ(labels.all().size(), 1u);
    const std::size_t numParts[] = {2, 1, 0};
    for (std::size_t k = 0; k < 3; ++k) {
        oravane::LineCut cut(lines[k].points);
        for (const std::size_t label : labels.labelsNear(k))
            cut.cutAt(labels.all()[label].outer);
        std::vector<std::vector<Ppoint3>> memory;
        EXPECT_EQ(cut.parts(memory).size(), numParts[k]) << k;
    }
}

} // namespace
