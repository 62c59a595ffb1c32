#ifndef ORAVANE_GEOMETRY_ISOLINES_H
#define ORAVANE_GEOMETRY_ISOLINES_H

#include <oravane/PlanarRecords.h>

#include <cstdint>
#include <vector>

namespace oravane {

constexpr std::uint32_t NO_CROSSING = 0xffffffffu;

/// The most points and crossings together, and the most entries of a list of faces: both are numbered by int.
constexpr std::uint64_t MAX_ISO_NUMBERS = 0x7fffffff;

/// A crossing of one level with one edge, and the crossings of the same level that it is joined to: `link[0]`
/// through the first cell of the edge, `link[1]` through the second.
struct IsoCrossing {
    Ppoint3 point;
    std::int32_t level; ///< number of the level; negative once the crossing stands in a line
    std::uint32_t link[2];
};

/// Polylines, one behind the other. Buffers are kept from one contouring to the next.
struct IsoLines {
    struct Line {
        std::size_t start; ///< index of its first point
        std::size_t count; ///< number of points; in a closed line the first is repeated as the last
        std::int32_t level;
    };
    std::vector<Ppoint3> points;
    std::vector<Line> lines;
};

/// Joins `crossings` into lines: first the open ones, in the order of the `border` crossings in which they
/// begin, then the closed ones, each from its lowest crossing on. Uses up the crossings.
void joinLines(std::vector<IsoCrossing> &crossings, const std::vector<std::uint32_t> &border,
               IsoLines &lines);

} // namespace oravane

#endif
