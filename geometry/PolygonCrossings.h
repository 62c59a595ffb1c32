#ifndef ORAVANE_GEOMETRY_POLYGONCROSSINGS_H
#define ORAVANE_GEOMETRY_POLYGONCROSSINGS_H

#include <oravane/PlanarRecords.h>

#include <span>
#include <vector>

namespace oravane {

/// Where a line crosses a side of a polygon.
struct LineCrossing {
    Ppoint3 at; ///< with the z of the line
    int segment;
};

/// In their order along the line.
std::vector<LineCrossing> lineCrossings(std::span<const Ppoint3> line, std::span<const Ppoint3> polygon);

/// A part of a line that lies outside of a polygon, from one crossing to the next.
struct OutsidePiece {
    static constexpr int NONE = -1;
    int from, to; ///< number of a crossing, or NONE for an end of the line
};

/// Lines change sides at each crossing. One without crossings stays whole, wherever it starts.
std::vector<OutsidePiece> piecesOutside(int numCrossings, bool startsInside);

} // namespace oravane

#endif
