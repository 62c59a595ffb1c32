#ifndef ORAVANE_CURVES_POINTFILTER_H
#define ORAVANE_CURVES_POINTFILTER_H

#include "curves/CurveShape.h"

#include <optional>

namespace oravane {

/// Places that one filter by x may at most choose: steps so small that more would follow choose none.
constexpr std::size_t kMaxPlacesByX = 1'000'000;

/// Chooses the places of a curve that get a mark, or a line that raises them.
struct PointFilter {
    /// Numbered as the values of the kits' filter fields.
    enum Type : int { Inactive, AllPoints, IndexPeriod, IndexList, XPeriod, XList };

    int type = Inactive;
    int indexPeriod = 0;
    std::span<const std::int32_t> indexList;
    float xPeriod = 0;
    std::span<const float> xList;
};

/// The places that a filter chooses, in order: of filters by index among `points`; of filters by x on the
/// segments of `curve`, x by x, and for each x in the order of the segments that have it between their ends.
/// A place without a finite position is left out. Nothing at all, as of an inactive filter, for a type that
/// there is none of, a period that is not above 0 or not finite, and more than `kMaxPlacesByX` places or
/// steps by x.
///
/// The time grows with the numbers of points, of x and of places, and not with the product of the first two.
std::optional<std::vector<SbVec2f>> placesOf(const PointFilter &filter, std::span<const SbVec2f> points,
                                             const PointRuns &curve);

} // namespace oravane

#endif
