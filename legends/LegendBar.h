#ifndef ORAVANE_LEGENDS_LEGENDBAR_H
#define ORAVANE_LEGENDS_LEGENDBAR_H

#include <span>
#include <vector>

namespace oravane {

/// Across the bar, in font sizes: between bar and labels, and how far the ticks go.
constexpr float kLabelGap = 0.6f, kTickLength = 0.4f;

/// A label of a bar: where its value lies, and what room its text takes, in font sizes.
struct BarLabel {
    float position; ///< from 0 at the low end of the bar to 1
    float along;    ///< gaps included
    float across;
};

/// What belongs to a bar that shows colours of values along its length.
struct BarContent {
    std::span<const BarLabel> labels;           ///< in ascending order
    bool hasLowBox = false, hasHighBox = false; ///< a box apart, at an end
    BarLabel lowLabel{}, highLabel{};           ///< theirs, whose positions are not looked at
    float beyondEnd = 0;                        ///< length kept free behind the high end, in font sizes
    float minimumAcross = 0;                    ///< of the whole, in font sizes
    float maxLabelShare = 1;                    ///< of the width that labels may take
};

/// Where the pieces of a bar and its labels lie: coordinates along the bar from the low end on, and across it
/// from the side that has no labels on. Labels stand at their values, in one common font size. Where values
/// lie too close together for that, labels move apart, each as little as can be, and keep their order.
class LegendBar {
public:
    struct Range {
        float from, to;
    };
    struct Label {
        float anchor;   ///< of the value
        float position; ///< of the middle of the text
    };

    /// Into a rectangle of this length along the bar, and this width.
    LegendBar(const BarContent &content, float length, float width);

    float fontSize() const { return m_fontSize; }
    float thickness() const { return m_thickness; }
    const Range &bar() const { return m_bar; }
    const Range &lowBox() const { return m_lowBox; }
    const Range &highBox() const { return m_highBox; }
    /// Of the low box if there is one, then of the values, then of the high box if there is one.
    const std::vector<Label> &labels() const { return m_labels; }

private:
    void findFontSize();
    void placeEnds(float fontSize);
    bool hasRoomAtAnchors() const;
    void spreadLabels();
    float length() const { return m_wholeLength - m_fontSize * m_content.beyondEnd; }

    BarContent m_content;
    std::vector<BarLabel> m_extents; ///< of all labels
    float m_wholeLength, m_width;
    float m_fontSize = 0, m_thickness = 0;
    Range m_bar{0, 0}, m_lowBox{0, 0}, m_highBox{0, 0};
    std::vector<Label> m_labels;
};

} // namespace oravane

#endif
