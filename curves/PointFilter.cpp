#include "curves/PointFilter.h"

#include "curves/LineInterpolation.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace oravane {

namespace {

using Places = std::vector<SbVec2f>;

// ------------------------------------------------------------------------------------------------ by index

void addPoint(std::span<const SbVec2f> points, std::size_t index, Places &places) {
    if (index < points.size() && hasPosition(points[index]))
        places.push_back(points[index]);
}

Places byIndexPeriod(std::span<const SbVec2f> points, std::size_t period) {
    Places places;
    places.reserve(points.size() / period + 1);
    for (std::size_t index = 0; index < points.size(); index += period)
        addPoint(points, index, places);
    return places;
}

Places byIndexList(std::span<const SbVec2f> points, std::span<const std::int32_t> list) {
    Places places;
    places.reserve(list.size());
    for (const std::int32_t index : list)
        addPoint(points, static_cast<std::size_t>(index), places); // one below 0 is beyond all points
    return places;
}

// ---------------------------------------------------------------------------------------------------- by x

/// Smallest and greatest x of a curve that has points.
std::pair<float, float> rangeOfX(const PointRuns &curve) {
    const auto [low, high] =
        std::minmax_element(curve.points.begin(), curve.points.end(),
                            [](const SbVec3f &a, const SbVec3f &b) { return a[0] < b[0]; });
    return {(*low)[0], (*high)[0]};
}

/// From `low` to `high`. Each x comes of one multiplication, so that errors do not add up, and a step that
/// misses `high` by the last digit of the numbers at hand has reached it. Null when there are too many.
std::optional<std::vector<float>> stepsOfX(float low, float high, float period) {
    const double range = static_cast<double>(high) - low;
    const double lastDigit =
        static_cast<double>(std::numeric_limits<float>::epsilon()) * std::max(std::abs(low), std::abs(high));
    const double numSteps = std::floor((range + std::min(lastDigit, period / 2.0)) / period);
    if (!(numSteps < static_cast<double>(kMaxPlacesByX)))
        return std::nullopt;
    std::vector<float> steps(static_cast<std::size_t>(numSteps) + 1);
    for (std::size_t i = 0; i < steps.size(); ++i)
        steps[i] = std::min(static_cast<float>(low + static_cast<double>(i) * period), high);
    return steps;
}

/// The entries of a list in ascending order, each with its rank in the list.
struct SortedX {
    explicit SortedX(std::span<const float> list) {
        for (const float x : list)
            if (std::isfinite(x))
                values.push_back(x);
        if (std::is_sorted(values.begin(), values.end()))
            return;
        ranks.resize(values.size());
        std::iota(ranks.begin(), ranks.end(), std::size_t{0});
        std::stable_sort(ranks.begin(), ranks.end(),
                         [&](std::size_t a, std::size_t b) { return values[a] < values[b]; });
        std::sort(values.begin(), values.end());
    }
    std::size_t rankOf(std::size_t position) const { return ranks.empty() ? position : ranks[position]; }

    std::vector<float> values;
    std::vector<std::size_t> ranks; ///< empty where each is the position
};

/// Calls `take(a, b, first, last)` with the ends of each segment that has one of the values between them, in
/// order, and the range of these values.
template <class Take>
void forEachSegment(const PointRuns &curve, const std::vector<float> &values, Take take) {
    forEachRun(curve, [&](std::span<const SbVec3f> run) {
        for (std::size_t i = 0; i + 1 < run.size(); ++i) {
            const auto [low, high] = std::minmax(run[i][0], run[i + 1][0]);
            const auto first = std::lower_bound(values.begin(), values.end(), low);
            // Mostly there are none, or few.
            auto last = first;
            for (int k = 0; k < 4 && last != values.end() && *last <= high; ++k)
                ++last;
            if (last != values.end() && *last <= high)
                last = std::upper_bound(last, values.end(), high);
            if (first != last)
                take(run[i], run[i + 1], static_cast<std::size_t>(first - values.begin()),
                     static_cast<std::size_t>(last - values.begin()));
        }
    });
}

/// Counts the places of each x first, so that each place then goes straight where it belongs.
std::optional<Places> placesAt(std::span<const float> list, const PointRuns &curve) {
    const SortedX x(list);
    std::vector<std::size_t> next(x.values.size() + 1, 0); // where the next place of the x of a rank goes
    std::size_t total = 0;
    forEachSegment(curve, x.values,
                   [&](const SbVec3f &, const SbVec3f &, std::size_t first, std::size_t last) {
                       total += last - first;
                       for (std::size_t k = first; k < last && total <= kMaxPlacesByX; ++k)
                           ++next[x.rankOf(k) + 1];
                   });
    if (total > kMaxPlacesByX)
        return std::nullopt;
    std::partial_sum(next.begin(), next.end(), next.begin());
    Places places(total);
    forEachSegment(
        curve, x.values, [&](const SbVec3f &a, const SbVec3f &b, std::size_t first, std::size_t last) {
            for (std::size_t k = first; k < last; ++k)
                places[next[x.rankOf(k)]++].setValue(x.values[k], calculateInterpolation(a, b, x.values[k]));
        });
    return places;
}

std::optional<Places> byX(const PointFilter &filter, const PointRuns &curve) {
    const bool isList = filter.type == PointFilter::XList;
    if (curve.points.empty())
        return Places();
    if (curve.points.size() == 1) {
        const SbVec3f &only = curve.points.front();
        if (isList && std::find(filter.xList.begin(), filter.xList.end(), only[0]) == filter.xList.end())
            return Places();
        return Places{SbVec2f(only[0], only[1])};
    }
    if (isList)
        return placesAt(filter.xList, curve);
    const auto [low, high] = rangeOfX(curve);
    const auto steps = stepsOfX(low, high, filter.xPeriod);
    return steps ? placesAt(*steps, curve) : std::nullopt;
}

} // namespace

std::optional<std::vector<SbVec2f>> placesOf(const PointFilter &filter, std::span<const SbVec2f> points,
                                             const PointRuns &curve) {
    switch (filter.type) {
    case PointFilter::AllPoints:
        return byIndexPeriod(points, 1);
    case PointFilter::IndexPeriod:
        if (filter.indexPeriod > 0)
            return byIndexPeriod(points, static_cast<std::size_t>(filter.indexPeriod));
        break;
    case PointFilter::IndexList:
        return byIndexList(points, filter.indexList);
    case PointFilter::XPeriod:
        if (filter.xPeriod > 0 && std::isfinite(filter.xPeriod))
            return byX(filter, curve);
        break;
    case PointFilter::XList:
        return byX(filter, curve);
    default:
        break;
    }
    return std::nullopt;
}

} // namespace oravane
