#include "charts/PieAnnotations.h"

#include "text/NearestAscending.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace oravane {

namespace {

constexpr double kTurn = 2 * std::numbers::pi;

SbVec2f unitVector(double angle) {
    return {static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle))};
}

/// Straight up and straight down belong to the right.
bool isRight(const SbVec2f &direction) {
    return direction[0] >= -1e-6f;
}

SbVec2f boxSize(const PieLabel &label, float margin) {
    SbVec2f size(0, 0);
    for (const SbVec2f &line : label.lines)
        size.setValue(std::max(size[0], line[0]), size[1] + line[1]);
    return size + SbVec2f(2 * margin, 2 * margin);
}

/// -1, 0 or 1 for left, centre or right.
float alignmentOf(PieLabelAlignment alignment, bool isRightSide) {
    switch (alignment) {
    case PieLabelAlignment::Left:
        return -1;
    case PieLabelAlignment::Right:
        return 1;
    case PieLabelAlignment::Inwards:
        return isRightSide ? -1.f : 1.f;
    case PieLabelAlignment::Outwards:
        return isRightSide ? 1.f : -1.f;
    case PieLabelAlignment::Centre:
        break;
    }
    return 0;
}

void placeLines(const PieLabel &label, float alignment, float margin, PlacedPieLabel &placed) {
    placed.alignment = alignment;
    float top = placed.size[1] / 2 - margin;
    for (std::size_t k = 0; k < label.lines.size(); ++k) {
        const SbVec2f &line = label.lines[k];
        const float across = alignment * ((placed.size[0] - line[0]) / 2 - margin);
        placed.lineMiddles[k] = placed.middle + across * placed.along + (top - line[1] / 2) * placed.up();
        top -= line[1];
    }
}

// ------------------------------------------------------------------------------------ labels along a line

/// A label on one side of the pie: along that side, and outwards from it.
struct SideLabel {
    std::size_t index; ///< of the label
    float bendAlong, bendOut;
    float along; ///< of the middle of the box
    float lengthAlong, lengthOut;
    float out; ///< of the edge of the box that is next to the pie
};

/// One of the sides: the direction outwards, and the one along it, which is +x or +y.
struct Side {
    SbVec2f outwards, along;
    std::vector<SideLabel> labels; ///< ordered along the side
};

/// Moves labels away from the middle of the side so far that there is a gap between each two.
void pushApart(std::vector<SideLabel> &labels, float gap) {
    const auto firstUpper =
        std::find_if(labels.begin(), labels.end(), [](const SideLabel &label) { return label.along >= 0; });
    const auto least = [gap](const SideLabel &a, const SideLabel &b) {
        return (a.lengthAlong + b.lengthAlong) / 2 + gap;
    };
    if (firstUpper != labels.begin() && firstUpper != labels.end()) {
        SideLabel &upper = *firstUpper, &lower = *(firstUpper - 1);
        const float missing = std::max(least(upper, lower) - (upper.along - lower.along), 0.f);
        upper.along += missing / 2;
        lower.along -= missing / 2;
    }
    if (firstUpper != labels.end())
        for (auto label = firstUpper + 1; label != labels.end(); ++label)
            label->along = std::max(label->along, (label - 1)->along + least(*label, *(label - 1)));
    if (firstUpper != labels.begin())
        for (auto label = firstUpper - 1; label != labels.begin(); --label)
            (label - 1)->along = std::min((label - 1)->along, label->along - least(*label, *(label - 1)));
}

/// How far labels reach along the side, in either direction.
float reach(const Side &side) {
    float farthest = 0;
    for (const SideLabel &label : side.labels)
        farthest = std::max(farthest, std::abs(label.along) + label.lengthAlong / 2);
    return farthest;
}

/// One rebuild's labels around the pie.
class Surroundings {
public:
    /// `pulled`: how far slices stand out.
    Surroundings(const PieLabelRules &rules, std::span<const PieLabel> labels, float pulled)
        : m_rules(rules), m_labels(labels), m_placed(labels.size()) {
        // All bends are on one circle around all that is drawn: whatever lies outside of it can be reordered
        // without a look at the slices.
        const float wanted = rules.anchor + (rules.hasArrows ? rules.knee : 0);
        m_clear = rules.radius + pulled + rules.gap;
        m_bend = std::max(wanted, rules.radius + rules.gap) + pulled;
        m_leg = rules.hasArrows ? rules.leg : 0;
        m_shoulder = rules.anchor + pulled;
        for (std::size_t k = 0; k < labels.size(); ++k)
            m_placed[k].size = boxSize(labels[k], rules.margin);
    }

    void placeOnSides() {
        sortIntoSides();
        if (m_rules.place == PieLabelPlace::Square)
            balanceSquare();
        if (m_rules.place == PieLabelPlace::Horizontal)
            for (Side &side : m_sides)
                placeBesideBends(side);
        else
            placeOnLines();
        for (const Side &side : m_sides)
            for (const SideLabel &label : side.labels)
                place(side, label);
    }

    void placeRadially();

    std::vector<PlacedPieLabel> takePlaced() { return std::move(m_placed); }

private:
    enum SideName { RIGHT, LEFT, TOP, BOTTOM };

    SideName sideOf(const SbVec2f &direction) const {
        const bool isRow = m_rules.place == PieLabelPlace::Row ||
                           (m_rules.place == PieLabelPlace::Square && std::abs(direction[1]) > m_rowsFrom);
        if (isRow)
            return direction[1] >= -1e-6f ? TOP : BOTTOM;
        return isRight(direction) ? RIGHT : LEFT;
    }
    void sortIntoSides();
    void balanceSquare();
    float squareReach() const;
    void placeBesideBends(Side &side) const;
    void placeOnLines();
    void place(const Side &side, const SideLabel &label);
    std::size_t firstOfChain(std::span<const double> halfAngles) const;
    bool turnRadially(float distance, std::vector<double> &angles) const;
    SbVec2f tipOf(std::size_t label) const {
        return (m_rules.anchor + m_labels[label].translation) * unitVector(m_labels[label].angle);
    }
    double halfAngle(std::size_t label, float distance) const {
        return std::atan((m_placed[label].size[1] + m_rules.gap) / 2 / distance);
    }

    const PieLabelRules &m_rules;
    std::span<const PieLabel> m_labels;
    std::vector<PlacedPieLabel> m_placed;
    float m_clear;                                       ///< free of slices from here on
    float m_bend;                                        ///< where arrows bend
    float m_shoulder;                                    ///< up to where they lead straight outwards
    float m_leg;                                         ///< of the arrows behind the bend
    float m_lines = 0;                                   ///< where the common lines of labels are
    float m_rowsFrom = std::numbers::sqrt2_v<float> / 2; ///< sine of the angle where a square's rows begin
    std::array<Side, 4> m_sides{
        {{{1, 0}, {0, 1}, {}}, {{-1, 0}, {0, 1}, {}}, {{0, 1}, {1, 0}, {}}, {{0, -1}, {1, 0}, {}}}};
};

void Surroundings::sortIntoSides() {
    for (Side &side : m_sides)
        side.labels.clear();
    for (std::size_t k = 0; k < m_labels.size(); ++k) {
        const SbVec2f direction = unitVector(m_labels[k].angle);
        Side &side = m_sides[sideOf(direction)];
        SideLabel label{k, m_bend * direction.dot(side.along), m_bend * direction.dot(side.outwards), 0, 0, 0,
                        0};
        label.along = label.bendAlong;
        label.lengthAlong = std::abs(m_placed[k].size.dot(side.along));
        label.lengthOut = std::abs(m_placed[k].size.dot(side.outwards));
        // Without an arrow the nearest point of the box is the anchor: at the side its middle, at the poles
        // its lower or upper edge.
        if (!m_rules.hasArrows)
            label.along += label.lengthAlong / 2 * direction.dot(side.along);
        side.labels.push_back(label);
    }
    for (Side &side : m_sides) {
        std::stable_sort(side.labels.begin(), side.labels.end(),
                         [](const SideLabel &a, const SideLabel &b) { return a.bendAlong < b.bendAlong; });
        pushApart(side.labels, m_rules.gap);
    }
}

/// Half the length of the square's sides.
float Surroundings::squareReach() const {
    float farthest = m_bend + m_leg;
    for (const Side &side : m_sides)
        farthest = std::max(farthest, reach(side));
    return farthest;
}

/// Where labels do not fit along the sides, wide ones are better in columns, and high ones in rows: takes the
/// smallest square that one of several angles between them gives.
void Surroundings::balanceSquare() {
    float bestReach = squareReach(), best = m_rowsFrom;
    if (bestReach <= m_bend + m_leg)
        return;
    for (int degrees = 15; degrees <= 75; degrees += 5) {
        m_rowsFrom = std::sin(static_cast<float>(degrees) / 180 * std::numbers::pi_v<float>);
        sortIntoSides();
        if (squareReach() < bestReach) {
            bestReach = squareReach();
            best = m_rowsFrom;
        }
    }
    m_rowsFrom = best;
    sortIntoSides();
}

void Surroundings::placeBesideBends(Side &side) const {
    for (SideLabel &label : side.labels) {
        const float nearest = std::max(std::abs(label.along) - label.lengthAlong / 2, 0.f);
        const float disc = std::sqrt(std::max(m_clear * m_clear - nearest * nearest, 0.f));
        label.out = std::max({label.bendOut + m_leg, disc, m_rules.gap / 2});
    }
}

void Surroundings::placeOnLines() {
    const float out = m_rules.place == PieLabelPlace::Square ? squareReach() : m_bend + m_leg;
    for (Side &side : m_sides) {
        float widest = 0;
        for (const SideLabel &label : side.labels)
            widest = std::max(widest, label.lengthOut);
        // In a column the boxes are aligned, too.
        const float outwards = side.outwards[0];
        const float ahead = (1 + alignmentOf(m_rules.alignment, outwards > 0) * outwards) / 2;
        for (SideLabel &label : side.labels)
            label.out = out + (outwards != 0 ? ahead * (widest - label.lengthOut) : 0);
    }
    m_lines = out;
}

void Surroundings::place(const Side &side, const SideLabel &label) {
    PlacedPieLabel &placed = m_placed[label.index];
    const SbVec2f direction = unitVector(m_labels[label.index].angle);
    const bool isBesideDisc = side.outwards[0] != 0;
    const float alignment =
        alignmentOf(m_rules.alignment, isBesideDisc ? side.outwards[0] > 0 : isRight(direction));
    placed.along.setValue(1, 0);
    placed.middle = (label.out + label.lengthOut / 2) * side.outwards + label.along * side.along;
    placeLines(m_labels[label.index], alignment, m_rules.margin, placed);
    const auto at = [&side](float out, float along) { return out * side.outwards + along * side.along; };
    const SbVec2f tip = tipOf(label.index), end = at(label.out, label.along);
    if (m_rules.place == PieLabelPlace::Horizontal)
        placed.arrow = {tip, m_shoulder * direction, at(label.bendOut, label.along), end};
    else
        placed.arrow = {tip, at(label.bendOut, label.bendAlong), at(m_lines, label.along), end};
}

// ------------------------------------------------------------------------------- labels around the centre

/// Ascending numbers near to `values` where there is no more room than `room` from the first to the last, all
/// the way round: they are spread evenly.
std::vector<double> spreadEvenly(std::span<const double> values, double room) {
    const double count = static_cast<double>(values.size()), step = room / count;
    double first = 0;
    for (std::size_t k = 0; k < values.size(); ++k)
        first += (values[k] - step * static_cast<double>(k)) / count;
    std::vector<double> result;
    for (std::size_t k = 0; k < values.size(); ++k)
        result.push_back(first + step * static_cast<double>(k));
    return result;
}

/// The label behind the widest gap: there a chain of neighbours is least likely to close on itself.
std::size_t Surroundings::firstOfChain(std::span<const double> halfAngles) const {
    const std::size_t n = m_labels.size();
    double widest = -kTurn;
    std::size_t first = 0;
    for (std::size_t k = 0; k < n; ++k) {
        const std::size_t next = (k + 1) % n;
        const double gap = m_labels[next].angle + (next == 0 ? kTurn : 0) - m_labels[k].angle -
                           halfAngles[k] - halfAngles[next];
        if (gap > widest) {
            widest = gap;
            first = next;
        }
    }
    return first;
}

/// Turns the labels apart at a distance from the centre. False when there is no room for them, or when an
/// arrow would have to lead over the disc.
bool Surroundings::turnRadially(float distance, std::vector<double> &angles) const {
    const std::size_t n = m_labels.size();
    std::vector<double> half;
    for (std::size_t k = 0; k < n; ++k)
        half.push_back(halfAngle(k, distance));
    const double room = kTurn - 2 * std::accumulate(half.begin(), half.end(), 0.0);
    if (room < 0)
        return false;
    const std::size_t first = firstOfChain(half);
    // Where labels would stand if each touched the one before it, and how far that is from where they want.
    std::vector<double> touching, shifts;
    for (std::size_t k = 0; k < n; ++k) {
        const std::size_t label = (first + k) % n;
        touching.push_back(k == 0 ? 0 : touching.back() + half[(label + n - 1) % n] + half[label]);
        shifts.push_back(m_labels[label].angle + (first + k >= n ? kTurn : 0) - touching.back());
    }
    std::vector<double> nearest = nearestAscending(shifts);
    if (nearest.back() - nearest.front() > room)
        nearest = spreadEvenly(shifts, room);
    const double bend = distance - m_leg;
    bool isClear = true;
    for (std::size_t k = 0; k < n; ++k) {
        const std::size_t label = (first + k) % n;
        const double turned = nearest[k] - shifts[k];
        angles[label] = m_labels[label].angle + turned;
        isClear = isClear && (!m_rules.hasArrows || std::abs(turned) < 1e-9 ||
                              (std::abs(turned) < kTurn / 4 && bend * std::cos(turned) >= m_rules.radius));
    }
    return isClear;
}

void Surroundings::placeRadially() {
    if (m_labels.empty())
        return;
    std::vector<double> angles(m_labels.size());
    float distance = m_bend + m_leg;
    constexpr int MAX_STEPS = 100; // of which each gains a tenth
    for (int step = 0; step < MAX_STEPS && !turnRadially(distance, angles); ++step)
        distance *= 1.1f;
    for (std::size_t k = 0; k < m_labels.size(); ++k) {
        PlacedPieLabel &placed = m_placed[k];
        const SbVec2f direction = unitVector(angles[k]);
        placed.along = isRight(direction) ? direction : -direction;
        placed.middle = (distance + placed.size[0] / 2) * direction;
        placeLines(m_labels[k], alignmentOf(m_rules.alignment, isRight(direction)), m_rules.margin, placed);
        placed.arrow = {tipOf(k), m_shoulder * unitVector(m_labels[k].angle), (distance - m_leg) * direction,
                        distance * direction};
    }
}

} // namespace

std::array<SbVec2f, 4> PlacedPieLabel::corners() const {
    const SbVec2f a = size[0] / 2 * along, b = size[1] / 2 * up();
    return {middle - a - b, middle + a - b, middle + a + b, middle - a + b};
}

namespace {

std::vector<std::size_t> withLines(std::span<const PieLabel> labels) {
    std::vector<std::size_t> result;
    for (std::size_t k = 0; k < labels.size(); ++k)
        if (std::any_of(labels[k].lines.begin(), labels[k].lines.end(),
                        [](const SbVec2f &line) { return line[0] > 0; }))
            result.push_back(k);
    return result;
}

} // namespace

std::vector<PlacedPieLabel> placeInsidePie(const PieLabelRules &rules, std::span<const PieLabel> labels) {
    std::vector<PlacedPieLabel> result;
    for (const std::size_t k : withLines(labels)) {
        PlacedPieLabel &placed = result.emplace_back();
        const SbVec2f direction = unitVector(labels[k].angle);
        placed.index = k;
        placed.size = boxSize(labels[k], rules.margin);
        placed.along.setValue(1, 0);
        if (rules.place == PieLabelPlace::Radial)
            placed.along = isRight(direction) ? direction : -direction;
        placed.middle = (rules.anchor + labels[k].translation) * direction;
        placed.arrow.fill(placed.middle);
        placeLines(labels[k], alignmentOf(rules.alignment, isRight(direction)), rules.margin, placed);
    }
    return result;
}

std::vector<PlacedPieLabel> placeAroundPie(const PieLabelRules &rules, std::span<const PieLabel> labels) {
    float pulled = 0;
    for (const PieLabel &label : labels)
        pulled = std::max(pulled, label.translation);
    const std::vector<std::size_t> indices = withLines(labels);
    std::vector<PieLabel> present;
    present.reserve(indices.size());
    for (const std::size_t k : indices)
        present.push_back(labels[k]);
    Surroundings surroundings(rules, present, pulled);
    if (rules.place == PieLabelPlace::Radial)
        surroundings.placeRadially();
    else
        surroundings.placeOnSides();
    std::vector<PlacedPieLabel> result = surroundings.takePlaced();
    for (std::size_t k = 0; k < indices.size(); ++k)
        result[k].index = indices[k];
    return result;
}

} // namespace oravane
