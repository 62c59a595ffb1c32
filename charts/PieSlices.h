#ifndef ORAVANE_CHARTS_PIESLICES_H
#define ORAVANE_CHARTS_PIESLICES_H

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace oravane {

/// More slices than these nobody can read.
constexpr std::size_t kMaxPieSlices = 360;

struct PieGrouping {
    bool isActive = true;
    float minValue = 5; ///< slices below it go into one, when there are two or more
    bool isPercentage = true;
};

/// A slice that is drawn.
struct PieSlice {
    int number; ///< of its value, from 1; the slice of small ones has the number behind the last value
    bool isGroup;
    float value, percent;
    double start, end; ///< radians

    double middle() const { return (start + end) / 2; }
};

/// The slices of a pie in the order of the values, counter-clockwise from the x axis; the slice of small ones
/// is last. What is not above 0, or not finite, is no slice. Values beyond `kMaxPieSlices` are ignored.
std::vector<PieSlice> pieSlices(std::span<const float> values, const PieGrouping &grouping);

/// The names that shapes of slices have in the scene.
struct PieSliceName {
    int number = 0; ///< 0 for what is none
    bool isGroup = false;
};
std::string pieSliceName(const PieSlice &slice);
PieSliceName parseSliceName(std::string_view name);

} // namespace oravane

#endif
