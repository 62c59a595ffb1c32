#ifndef ORAVANE_CHARTS_PIEANNOTATIONS_H
#define ORAVANE_CHARTS_PIEANNOTATIONS_H

#include <Inventor/SbVec2f.h>

#include <array>
#include <cstddef>
#include <span>
#include <vector>

/// \file
/// Where the labels of a pie stand. All coordinates count from the centre of the disc.

namespace oravane {

/// Row, Column and Square: horizontal, on common lines above and below, at both sides, and on all four.
enum class PieLabelPlace { Radial, Horizontal, Row, Column, Square };
enum class PieLabelAlignment { Left, Centre, Right, Inwards, Outwards };

/// The label of one slice: up to three lines of text that stand below each other.
struct PieLabel {
    static constexpr std::size_t NUM_LINES = 3;

    double angle;                         ///< of the middle of its slice
    float translation;                    ///< of the slice, along that angle; not negative
    std::array<SbVec2f, NUM_LINES> lines; ///< width and height of each, 0 of one that is not there
};

/// Lengths are those of the drawing.
struct PieLabelRules {
    PieLabelPlace place = PieLabelPlace::Horizontal;
    PieLabelAlignment alignment = PieLabelAlignment::Inwards;
    float radius = 1;
    bool hasArrows = true;
    float anchor = 1.05f; ///< of the labels inside, or of the arrows' tips: from the centre of the slice
    float knee = 0.1f, leg = 0.2f; ///< lengths of the arrow behind its tip
    float margin = 0;              ///< of a label's box around its lines
    float gap = 0;                 ///< between two boxes, and between a box and the disc
};

struct PlacedPieLabel {
    std::size_t index = 0; ///< of the label
    SbVec2f middle, size;  ///< of the box
    SbVec2f along;         ///< the way in which it is read, of length 1
    float alignment;       ///< of the lines: -1 left, 0 centre, 1 right
    std::array<SbVec2f, PieLabel::NUM_LINES> lineMiddles;
    std::array<SbVec2f, 4> arrow; ///< from its tip at the slice to the box; some points may be the same

    SbVec2f up() const { return {-along[1], along[0]}; }
    /// Counter-clockwise from the lower left one.
    std::array<SbVec2f, 4> corners() const;
};

// Both leave out labels without a line.

/// Labels inside of the slices: the middle of each box lies `anchor` away from the centre of its slice,
/// whether it fits there or not. Places other than Radial are Horizontal.
std::vector<PlacedPieLabel> placeInsidePie(const PieLabelRules &rules, std::span<const PieLabel> labels);

/// Labels around the pie. Boxes overlap neither each other nor the disc, pulled slices included, and arrows
/// cross neither the disc nor boxes nor each other.
///
/// An arrow leads from its tip outwards to a circle around all that is drawn, and on to the box. A horizontal
/// label stands beside that bend, and is pushed away from the horizontal middle, upwards or downwards, where
/// a neighbour stands in its way: so the order of the angles is kept, and no arrow has to come back over the
/// disc. Labels on a common line are pushed along it in the same way; the lines of a square share the
/// labels so that they fit into a small one, and move out until they do. Radial labels are turned about the
/// centre by the least sum of squares, and move out together where a turn has no room for them. Without
/// arrows labels stand where the tips would.
///
/// Labels have to be ordered by their angles, from 0 to below a turn. Takes a time that grows with their
/// number.
std::vector<PlacedPieLabel> placeAroundPie(const PieLabelRules &rules, std::span<const PieLabel> labels);

} // namespace oravane

#endif
