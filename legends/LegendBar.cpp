#include "legends/LegendBar.h"

#include "text/NearestAscending.h"

#include <algorithm>
#include <cmath>

namespace oravane {

namespace {

constexpr float kBoxShare = 0.1f;     ///< of the length, of the box at an end
constexpr float kLabelShare = 0.2f;   ///< of the length, at most, that the label of such a box keeps free
constexpr float kBoxGapShare = 0.3f;  ///< of its length, to the bar
constexpr float kMinThickness = 1.5f; ///< in font sizes
/// Of the size at which the labels fill the whole length. Below it labels leave their values rather than
/// getting smaller.
constexpr float kCrowdedShare = 0.6f;

} // namespace

LegendBar::LegendBar(const BarContent &content, float length, float width)
    : m_content(content), m_wholeLength(length), m_width(width) {
    if (content.hasLowBox)
        m_extents.push_back(content.lowLabel);
    m_extents.insert(m_extents.end(), content.labels.begin(), content.labels.end());
    if (content.hasHighBox)
        m_extents.push_back(content.highLabel);
    findFontSize();
    placeEnds(m_fontSize);
    spreadLabels();
    m_content.labels = {}; // which are the caller's
    float across = 0;
    for (const BarLabel &label : m_extents)
        across = std::max(across, label.across);
    m_thickness = m_width - (across > 0 ? m_fontSize * (across + kLabelGap) : 0);
}

void LegendBar::findFontSize() {
    float across = 0, along = m_content.beyondEnd;
    for (const BarLabel &label : m_extents) {
        across = std::max(across, label.across);
        along += label.along;
    }
    float largest =
        std::min(m_content.maxLabelShare * m_width / across, m_width / (across + kLabelGap + kMinThickness));
    if (m_content.minimumAcross > 0)
        largest = std::min(largest, m_width / m_content.minimumAcross);
    const float filling = m_wholeLength / along;
    largest = std::min(largest, filling);
    if (!(across > 0 && std::isfinite(largest)))
        return;
    // The room at the values shrinks as letters grow.
    float fits = 0, tooLarge = largest;
    for (int k = 0; k < 24 && fits < largest; ++k) {
        const float size = k == 0 ? largest : (fits + tooLarge) / 2;
        placeEnds(size);
        (hasRoomAtAnchors() ? fits : tooLarge) = size;
    }
    m_fontSize = std::min(largest, std::max(fits, kCrowdedShare * filling));
}

void LegendBar::placeEnds(float fontSize) {
    m_fontSize = fontSize;
    const float whole = length(), box = std::min(kBoxShare * whole, m_width / 2), gap = kBoxGapShare * box;
    const auto halfOf = [&](const BarLabel &label) { return fontSize * label.along / 2; };
    // How far the label of a value sticks out of the bar's end.
    const auto &labels = m_content.labels;
    const float low = labels.empty() ? 0 : (1 - labels.front().position) * halfOf(labels.front());
    const float high = labels.empty() ? 0 : labels.back().position * halfOf(labels.back());
    m_bar = {std::min(low, whole / 4), whole - std::min(high, whole / 4)};
    if (m_content.hasLowBox) {
        const float half = halfOf(m_content.lowLabel), middle = std::max(box / 2, half);
        m_lowBox = {middle - box / 2, middle + box / 2};
        m_bar.from = std::max(m_lowBox.to + gap, std::min(middle + half + low, kLabelShare * whole));
    }
    if (m_content.hasHighBox) {
        const float half = halfOf(m_content.highLabel), middle = whole - std::max(box / 2, half);
        m_highBox = {middle - box / 2, middle + box / 2};
        m_bar.to = std::min(m_highBox.from - gap, std::max(middle - half - high, (1 - kLabelShare) * whole));
    }
    if (m_bar.to < m_bar.from)
        m_bar.from = m_bar.to = (m_bar.from + m_bar.to) / 2;
    m_labels.clear();
    for (std::size_t i = 0; i < m_extents.size(); ++i) {
        float anchor = m_bar.from + m_extents[i].position * (m_bar.to - m_bar.from);
        if (i == 0 && m_content.hasLowBox)
            anchor = (m_lowBox.from + m_lowBox.to) / 2;
        else if (i + 1 == m_extents.size() && m_content.hasHighBox)
            anchor = (m_highBox.from + m_highBox.to) / 2;
        m_labels.push_back({anchor, anchor});
    }
}

bool LegendBar::hasRoomAtAnchors() const {
    const float tolerance = 1e-4f * m_wholeLength;
    float end = 0;
    for (std::size_t i = 0; i < m_labels.size(); ++i) {
        const float half = m_fontSize * m_extents[i].along / 2;
        if (m_labels[i].anchor - half < end - tolerance)
            return false;
        end = m_labels[i].anchor + half;
    }
    return end <= length() + tolerance;
}

void LegendBar::spreadLabels() {
    if (m_labels.empty() || hasRoomAtAnchors())
        return;
    // Taking away the room of the labels before each turns the order into an ascending one.
    std::vector<double> room, wanted;
    double before = 0;
    for (std::size_t i = 0; i < m_labels.size(); ++i) {
        const double half = m_fontSize * m_extents[i].along / 2;
        room.push_back(before + half);
        wanted.push_back(m_labels[i].anchor - room.back());
        before += 2 * half;
    }
    const std::vector<double> shifts = nearestAscending(wanted);
    const double last = std::max(length() - before, 0.0);
    for (std::size_t i = 0; i < m_labels.size(); ++i)
        m_labels[i].position = static_cast<float>(std::clamp(shifts[i], 0.0, last) + room[i]);
}

} // namespace oravane
