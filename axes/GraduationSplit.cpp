#include "axes/GraduationSplit.h"

#include "axes/LinearGraduations.h"

#include <algorithm>
#include <cmath>

namespace oravane {

namespace {

/// The stretch that sub graduations may stand on.
struct Stretch {
    Stretch(float start, float end) : low(std::min(start, end)), high(std::max(start, end)) {}
    bool contains(float c) const { return c >= low && c <= high; }
    /// Whether steps of `d` across it are more than what we draw, or none.
    bool isTooFine(float d) const { return !(std::abs((high - low) / d) <= kMaxGraduations); }

    float low, high;
};

/// Adds from + d, from + 2 d ... while they are inside.
void walk(const Stretch &inside, float from, float d, std::vector<float> &sub) {
    for (int j = 1; j <= kMaxGraduations; ++j) {
        const float c = from + static_cast<float>(j) * d;
        if (!inside.contains(c))
            return;
        sub.push_back(c);
    }
}

std::vector<float> partsOfMain(const TickRule &rule, const Stretch &inside, std::span<const float> main) {
    std::vector<float> sub;
    const float d = (main[1] - main[0]) / static_cast<float>(rule.count + 1);
    if (inside.isTooFine(d))
        return sub;
    walk(inside, main[0], -d, sub);
    for (std::size_t i = 0; i + 1 < main.size(); ++i)
        for (int j = 1; j <= rule.count; ++j)
            sub.push_back(main[i] + static_cast<float>(j) * d);
    walk(inside, main.back(), d, sub);
    return sub;
}

/// Around a single main graduation at `main`.
std::vector<float> partsOfStep(const TickRule &rule, float start, float end, float step, float main) {
    std::vector<float> sub;
    const Stretch inside(start, end);
    // The multiples around the stretch, or its ends where they are multiples.
    float a = std::trunc(start / step) * step, b = std::trunc(end / step) * step;
    if (end > start ? a > start : a < start)
        a -= step;
    if (end > start ? b < end : b > end)
        b += step;
    float d = (b - a) / static_cast<float>(rule.count + 1);
    if (a != start && b != end)
        d /= 2;
    if (inside.isTooFine(d) || Stretch(a, b).isTooFine(d))
        return sub;
    for (int j = 0; j <= 2 * kMaxGraduations; ++j) {
        const float c = a + static_cast<float>(j) * d;
        if (inside.contains(c) && std::abs(c - main) > std::abs(d) / 2)
            sub.push_back(c);
        if (d > 0 ? c > inside.high : c < inside.low)
            break;
    }
    return sub;
}

} // namespace

SplitGraduations splitGraduations(const TickRule &rule, float start, float end, float step,
                                  std::span<const float> coords) {
    SplitGraduations result;
    const auto n = static_cast<long>(coords.size());
    const long begin = std::max(rule.first, 1) - 1L, behind = n - std::max(rule.last, 1) + 1L;
    const long period = rule.isPeriod ? std::max(rule.count, 1) : 1;
    for (long i = 0; i < n; ++i) {
        if (i >= begin && i < behind && (i - begin) % period == 0)
            result.main.push_back(static_cast<std::size_t>(i));
        else if (rule.isPeriod)
            result.sub.push_back(coords[static_cast<std::size_t>(i)]);
    }
    if (rule.isPeriod || rule.count < 1 || result.main.empty())
        return result;
    if (result.main.size() >= 2)
        result.sub = partsOfMain(rule, {start, end}, coords.subspan(result.main[0], result.main.size()));
    else if (step != 0)
        result.sub = partsOfStep(rule, start, end, step, coords[result.main[0]]);
    return result;
}

} // namespace oravane
