#include "text/NearestAscending.h"

#include <cstddef>

namespace oravane {

std::vector<double> nearestAscending(std::span<const double> values) {
    struct Run {
        double sum;
        std::size_t count;
        double mean() const { return sum / static_cast<double>(count); }
    };
    std::vector<Run> runs;
    for (const double value : values) {
        runs.push_back({value, 1});
        while (runs.size() > 1 && runs[runs.size() - 2].mean() > runs.back().mean()) {
            const Run last = runs.back();
            runs.pop_back();
            runs.back() = {runs.back().sum + last.sum, runs.back().count + last.count};
        }
    }
    std::vector<double> result;
    result.reserve(values.size());
    for (const Run &run : runs)
        result.insert(result.end(), run.count, run.mean());
    return result;
}

} // namespace oravane
