#include "charts/PieAnnotations.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace {

using namespace oravane;

constexpr double PI = std::numbers::pi;
constexpr PieLabelPlace PLACES[] = {PieLabelPlace::Radial, PieLabelPlace::Horizontal, PieLabelPlace::Row,
                                    PieLabelPlace::Column, PieLabelPlace::Square};

struct Segment {
    SbVec2f a, b;
};

float cross(const SbVec2f &a, const SbVec2f &b) {
    return a[0] * b[1] - a[1] * b[0];
}

/// What is left of the segment within a convex, counter-clockwise polygon whose sides are moved inwards.
bool passesThrough(const Segment &s, const std::array<SbVec2f, 4> &corners, float inwards) {
    float first = 0, last = 1;
    for (std::size_t k = 0; k < 4; ++k) {
        SbVec2f side = corners[(k + 1) % 4] - corners[k];
        side.normalize();
        const float at = cross(side, s.a - corners[k]) - inwards, more = cross(side, s.b - s.a);
        if (more == 0 && at < 0)
            return false;
        if (more > 0)
            first = std::max(first, -at / more);
        if (more < 0)
            last = std::min(last, -at / more);
    }
    return first < last;
}

bool doCross(const Segment &s, const Segment &t) {
    const SbVec2f u = s.b - s.a, v = t.b - t.a;
    return cross(u, t.a - s.a) * cross(u, t.b - s.a) < 0 && cross(v, s.a - t.a) * cross(v, s.b - t.a) < 0;
}

/// Boxes overlap when a diagonal of one passes through the other.
bool doOverlap(const PlacedPieLabel &p, const PlacedPieLabel &q) {
    const auto passes = [](const PlacedPieLabel &a, const PlacedPieLabel &b) {
        const auto c = a.corners();
        return passesThrough({c[0], c[2]}, b.corners(), 1e-4f) ||
               passesThrough({c[1], c[3]}, b.corners(), 1e-4f);
    };
    return passes(p, q) || passes(q, p);
}

float distanceFromCenter(const Segment &s) {
    const SbVec2f along = s.b - s.a;
    const float t = along.dot(along) > 0 ? std::clamp(-s.a.dot(along) / along.dot(along), 0.f, 1.f) : 0;
    return (s.a + t * along).length();
}

/// Labels of random slices, of which many are small neighbours and some stand out.
std::vector<PieLabel> randomLabels(int n, unsigned seed, bool isPulled) {
    std::mt19937 random(seed);
    const auto number = [&](double a, double b) {
        return a + (b - a) * static_cast<double>(random() % 10000) / 10000;
    };
    std::vector<double> values;
    double total = 0;
    for (int k = 0; k < n; ++k)
        total += values.emplace_back(number(0, 1) < 0.5 ? number(0.01, 0.1) : number(0.1, 3));
    std::vector<PieLabel> labels;
    double angle = 0;
    for (const double value : values) {
        PieLabel &label = labels.emplace_back();
        label.angle = angle + value / total * PI;
        angle += value / total * 2 * PI;
        label.translation = isPulled && number(0, 1) < 0.3 ? static_cast<float>(number(0, 0.4)) : 0;
        for (SbVec2f &line : label.lines)
            line = number(0, 1) < 0.6 ? SbVec2f(static_cast<float>(number(0.05, 0.5)), 0.06f) : SbVec2f(0, 0);
        label.lines[1].setValue(0.2f, 0.07f);
    }
    return labels;
}

std::vector<Segment> arrowOf(const PlacedPieLabel &label) {
    const auto &a = label.arrow;
    return {{a[0], a[1]}, {a[1], a[2]}, {a[2], a[3]}};
}

/// Boxes keep off all that is drawn, arrows off the disc; and nothing is in the way of anything else.
void expectClear(const std::vector<PlacedPieLabel> &placed, float reach, bool hasArrows) {
    int overlaps = 0, crossings = 0, hits = 0;
    for (const PlacedPieLabel &label : placed) {
        const auto c = label.corners();
        for (std::size_t k = 0; k < 4; ++k)
            EXPECT_GE(distanceFromCenter({c[k], c[(k + 1) % 4]}), reach);
        for (const PlacedPieLabel &other : placed)
            overlaps += &other != &label && doOverlap(other, label);
        if (!hasArrows)
            continue;
        for (const Segment &s : arrowOf(label)) {
            EXPECT_GE(distanceFromCenter(s), 1 - 1e-4f);
            for (const PlacedPieLabel &other : placed) {
                hits += &other != &label && passesThrough(s, other.corners(), 1e-4f);
                for (const Segment &t : arrowOf(other))
                    crossings += &other != &label && doCross(s, t);
            }
        }
    }
    EXPECT_EQ(overlaps, 0);
    EXPECT_EQ(crossings, 0);
    EXPECT_EQ(hits, 0) << "arrows through boxes";
}

TEST(PieAnnotations, LabelsAroundKeepOffEachOtherAndOffTheDiscAndArrowsNeverCross) {
    for (const PieLabelPlace place : PLACES)
        for (const int n : {1, 2, 7, 40, 160})
            for (const unsigned seed : {1u, 2u, 3u, 4u}) {
                SCOPED_TRACE("place " + std::to_string(static_cast<int>(place)) + ", " + std::to_string(n) +
                             " labels, seed " + std::to_string(seed));
                PieLabelRules rules;
                rules.place = place;
                rules.hasArrows = seed != 4;
                rules.alignment = static_cast<PieLabelAlignment>(seed % 5);
                rules.margin = 0.02f;
                rules.gap = 0.01f;
                float pulled = 0;
                const std::vector<PieLabel> labels = randomLabels(n, seed, seed % 2 == 0);
                for (const PieLabel &label : labels)
                    pulled = std::max(pulled, label.translation);
                const std::vector<PlacedPieLabel> placed = placeAroundPie(rules, labels);
                ASSERT_EQ(placed.size(), labels.size());
                expectClear(placed, 1 + pulled, rules.hasArrows);
            }
}

TEST(PieAnnotations, DistancesAreUsedAndAllScalesWithTheRadius) {
    const std::vector<PieLabel> labels = randomLabels(12, 6, true);
    for (const PieLabelPlace place : PLACES) {
        PieLabelRules rules, larger;
        rules.place = larger.place = place;
        std::vector<PieLabel> largerLabels = labels;
        for (float *length : {&larger.radius, &larger.anchor, &larger.knee, &larger.leg})
            *length *= 8;
        for (PieLabel &label : largerLabels) {
            label.translation *= 8;
            for (SbVec2f &line : label.lines)
                line *= 8;
        }
        const auto a = placeAroundPie(rules, labels), b = placeAroundPie(larger, largerLabels);
        for (std::size_t k = 0; k < labels.size(); ++k) {
            EXPECT_TRUE(b[k].middle.equals(8 * a[k].middle, 1e-6f));
            EXPECT_NEAR(a[k].arrow[0].length(), 1.05f + labels[k].translation, 1e-5f);
            EXPECT_NEAR(std::atan2(a[k].arrow[0][1], a[k].arrow[0][0]),
                        std::remainder(labels[k].angle, 2 * PI), 1e-5);
        }
    }
    // Without neighbours and pulled slices nothing is in the way.
    const PieLabel alone{0.5, 0, {SbVec2f(0.4f, 0.1f), SbVec2f(0.2f, 0.1f), SbVec2f(0, 0)}};
    const SbVec2f direction(std::cos(0.5f), std::sin(0.5f));
    const PlacedPieLabel label = placeAroundPie({}, {&alone, 1})[0];
    EXPECT_TRUE(label.arrow[2].equals(1.15f * direction, 1e-12f));
    EXPECT_TRUE(label.arrow[3].equals(1.15f * direction + SbVec2f(0.2f, 0), 1e-12f));
    EXPECT_TRUE(label.corners()[0].equals(label.arrow[3] - SbVec2f(0, 0.1f), 1e-12f));
    EXPECT_TRUE(label.lineMiddles[0].equals(label.arrow[3] + SbVec2f(0.2f, 0.05f), 1e-12f));
    EXPECT_TRUE(label.lineMiddles[1].equals(label.arrow[3] + SbVec2f(0.1f, -0.05f), 1e-12f)) << "inwards";
    PieLabelRules bare;
    bare.hasArrows = false;
    for (const SbVec2f &axis : {SbVec2f(1, 0), SbVec2f(0, 1)}) {
        const PieLabel onAxis{axis[1] * PI / 2, 0, alone.lines};
        EXPECT_NEAR(placeAroundPie(bare, {&onAxis, 1})[0].corners()[0].dot(axis), 1.05f, 1e-6f)
            << "at the tip";
    }
}

TEST(PieAnnotations, AlignmentTurnsWithTheSide) {
    struct Row {
        PieLabelAlignment alignment;
        float right, left; ///< where the second, shorter line lies
    };
    for (const Row &row : {Row{PieLabelAlignment::Left, -1, -1},
                           {PieLabelAlignment::Centre, 0, 0},
                           {PieLabelAlignment::Right, 1, 1},
                           {PieLabelAlignment::Inwards, -1, 1},
                           {PieLabelAlignment::Outwards, 1, -1}})
        for (const PieLabelPlace place : PLACES) {
            PieLabelRules rules;
            rules.place = place;
            rules.alignment = row.alignment;
            rules.margin = 0.02f;
            const std::array<SbVec2f, 3> lines{SbVec2f(0.4f, 0.1f), SbVec2f(0.2f, 0.1f), SbVec2f(0, 0)};
            const std::vector<PieLabel> labels{
                {0.3, 0, lines}, {1.4, 0, {SbVec2f(0.1f, 0.1f)}}, {2.9, 0, lines}, {4.5, 0, lines}};
            for (const auto &placed : {placeAroundPie(rules, labels), placeInsidePie(rules, labels)}) {
                for (const std::size_t k : {0u, 2u, 3u})
                    EXPECT_NEAR((placed[k].lineMiddles[1] - placed[k].lineMiddles[0]).dot(placed[k].along),
                                0.1f * (k == 0 ? row.right : row.left), 1e-6f)
                        << k;
                EXPECT_GE(placed[2].along[0], 0) << "never upside down";
            }
            if (place != PieLabelPlace::Column)
                continue;
            // The boxes of a column keep the same edges as the lines of a box.
            const auto placed = placeAroundPie(rules, labels);
            EXPECT_NEAR(placed[1].middle[0] - placed[0].middle[0], 0.15f * row.right, 1e-6f);
        }
}

} // namespace
