#ifndef ORAVANE_TEXT_NEARESTASCENDING_H
#define ORAVANE_TEXT_NEARESTASCENDING_H

#include <span>
#include <vector>

namespace oravane {

/// The numbers that do not decrease and are nearest to `values` by least squares: neighbours in the wrong
/// order are given their mean (Barlow et al., Statistical Inference under Order Restrictions, 1972). Linear
/// in their number. Labels that would overlap find their places by it, once the room of those before each is
/// taken away.
std::vector<double> nearestAscending(std::span<const double> values);

} // namespace oravane

#endif
