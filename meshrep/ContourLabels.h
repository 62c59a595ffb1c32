#ifndef ORAVANE_MESHREP_CONTOURLABELS_H
#define ORAVANE_MESHREP_CONTOURLABELS_H

#include "meshrep/LabelSpaces.h"
#include "meshrep/LineCut.h"
#include "meshrep/PolylineBoxes.h"

#include <oravane/PoMeshContouring.h>

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <vector>

namespace oravane {

/// A contour line with its level.
struct ContourLine {
    Ppoint_list3 points;
    float isovalue;
    bool isMajor;
};

/// What decides on the place of labels. All lengths are in the space of the lines.
struct LabelRules {
    PoMeshContouring::AnnotPath path;
    PoMeshContouring::AnnotCrossStatus crossStatus;
    bool is3D;                   ///< labels are tilted into the surface
    float gap;                   ///< from one label of a line to the next
    float fontSize;              ///< about the size of labels
    Ppoint_list clippingPolygon; ///< labels stay inside; fewer than three points are none
    Ppoint_list_list3 limits;    ///< border of the mesh, which labels do not cross
    /// The isovalues whose lines can come close to a line of this one, beside itself.
    std::function<std::array<float, 2>(float)> neighbours;
};

/// A label in its place.
struct ContourLabel {
    std::array<Ppoint3, 4> box; ///< of the text: start below, start above, end above, end below
    ClosedBox outer;            ///< the same with a margin, closed
    Ppoint3 middle;
    float isovalue;
    std::size_t line;
};

/// Finds places for the values of contour lines: each label lies on a segment of its line, inside of the
/// clipping polygon, off the border and off all labels before it, and by its rules off other lines.
///
/// \code
///   ContourLabels labels(rules, lines);
///   for (std::size_t line : majors) labels.placeOn(line, width, height);
///   draw(labels.all());
/// \endcode
///
/// A line is walked from a start that moves on from one line to the next, so that labels of neighbours do not
/// stand in a row. The cost of a trial follows what is near it, not the number of lines or labels. `rules`
/// and `lines` are referred to.
class ContourLabels {
public:
    ContourLabels(const LabelRules &rules, std::span<const ContourLine> lines);

    /// Places the labels of one line, of that size.
    void placeOn(std::size_t line, float width, float height);

    std::span<const ContourLabel> all() const { return m_labels; }
    /// Of the labels that a line has to make way for if it meets them: all that its box meets. On a surface
    /// in space these are labels of its own value only.
    std::vector<std::size_t> labelsNear(std::size_t line) const;

private:
    struct Size {
        float width, height;
    };
    struct Ends;

    bool isLongEnough(std::size_t line, Size size) const;
    int startOn(const Ppoint_list3 &points);
    std::optional<ContourLabel> tryAt(std::size_t line, int segment, Size size) const;
    bool isFree(const ContourLabel &label) const;
    bool isInsidePolygon(const ContourLabel &label, const Plimit &limit) const;
    void tilt(ContourLabel &label, const Ends &ends) const;
    std::vector<const PolylineBoxes *> rivalsOf(float isovalue) const;

    const LabelRules &m_rules;
    std::span<const ContourLine> m_lines;
    std::vector<ContourLabel> m_labels;
    LabelSpaces m_spaces;
    Plimit m_clippingBox{};
    PolylineBoxes m_border;
    std::vector<Plimit> m_lineBoxes;
    std::map<float, PolylineBoxes> m_linesByValue; ///< those that labels may not cross
    std::vector<const PolylineBoxes *> m_rivals;   ///< those that labels of the line at work may not cross
    float m_offset = 0;                            ///< where the next line starts to look for places
};

} // namespace oravane

#endif
