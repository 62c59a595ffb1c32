#include "charts/PieSlices.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace oravane {

namespace {

constexpr std::string_view kSliceName = "slice", kGroupName = "sliceGroup";

constexpr double kTurn = 6.2831855; // a full turn in single precision

/// Replaces the slices below `limit` by one of number `groupNumber`, unless there is only one.
void groupSmallSlices(std::vector<PieSlice> &slices, double limit, double total, int groupNumber) {
    const auto isSmall = [limit](const PieSlice &slice) { return slice.value < limit; };
    if (std::count_if(slices.begin(), slices.end(), isSmall) < 2)
        return;
    double sum = 0;
    for (const PieSlice &slice : slices)
        sum += isSmall(slice) ? slice.value : 0;
    std::erase_if(slices, isSmall);
    const double stored = std::min<double>(sum, std::numeric_limits<float>::max());
    slices.push_back(
        {groupNumber, true, static_cast<float>(stored), static_cast<float>(sum / total * 100), 0, 0});
}

} // namespace

std::vector<PieSlice> pieSlices(std::span<const float> values, const PieGrouping &grouping) {
    values = values.first(std::min(values.size(), kMaxPieSlices));
    const auto isSlice = [](float value) { return value > 0 && std::isfinite(value); };
    double total = 0; // in double precision no sum of floats overflows
    for (const float value : values)
        total += isSlice(value) ? value : 0;
    std::vector<PieSlice> slices;
    for (std::size_t k = 0; k < values.size(); ++k)
        if (isSlice(values[k]))
            slices.push_back({static_cast<int>(k) + 1, false, values[k],
                              static_cast<float>(values[k] / total * 100), 0, 0});
    // Divided last: a slice that is just as large as the limit must not be lost by rounding.
    const double limit = grouping.isPercentage ? grouping.minValue * total / 100 : grouping.minValue;
    if (grouping.isActive)
        groupSmallSlices(slices, limit, total, static_cast<int>(values.size()) + 1);
    double angle = 0;
    for (PieSlice &slice : slices) {
        slice.start = angle;
        slice.end = angle += slice.percent * kTurn / 100;
    }
    return slices;
}

std::string pieSliceName(const PieSlice &slice) {
    std::string name(slice.isGroup ? kGroupName : kSliceName);
    return name += std::to_string(slice.number);
}

PieSliceName parseSliceName(std::string_view name) {
    for (const bool isGroup : {false, true}) {
        const std::string_view start = isGroup ? kGroupName : kSliceName;
        if (!name.starts_with(start))
            continue;
        const char *end = name.data() + name.size();
        int number = 0;
        const auto [rest, error] = std::from_chars(name.data() + start.size(), end, number);
        if (error == std::errc() && rest == end && number > 0)
            return {number, isGroup};
    }
    return {};
}

} // namespace oravane
