#include "axes/LinearGraduations.h"

#include <cmath>

namespace oravane {

namespace {

/// The power of ten that takes `d` into 0.1 to 1. All in single precision: by the same divisions that a range
/// of a round 0.01 has gone through, such a range meets its decade exactly.
int decadeOf(float d) {
    if (d > 1)
        return static_cast<int>(std::log10(static_cast<double>(d))) + 1;
    int e = 0;
    float power = 1;
    do {
        power /= 10;
        --e;
    } while (d < power);
    return e + 1;
}

double roundFactor(double mantissa) {
    if (mantissa > 0.49)
        return 1;
    if (mantissa > 0.39)
        return 0.5;
    if (mantissa > 0.29)
        return 0.4;
    return mantissa > 0.19 ? 0.3 : 0.2;
}

/// Whether going on by `step` from any coordinate between these ends leaves it.
bool resolves(float start, float end, float step) {
    const float farthest = std::abs(start) > std::abs(end) ? start : end;
    return farthest + step != farthest && farthest - step != farthest;
}

int countFrom(float from, float end, float step) {
    int count = 0;
    for (float c = from; (step > 0 ? c <= end : c >= end) && count <= kMaxGraduations; c += step)
        ++count;
    return count;
}

} // namespace

float linearStep(float range, float wanted) {
    if (range == 0 || !std::isfinite(range))
        return wanted;
    float step = wanted;
    if (step == 0 || !std::isfinite(step)) {
        const float d = std::abs(range) / 10;
        if (d == 0) // of a range at the end of the numbers
            return wanted;
        const double decade = std::pow(10.0, decadeOf(d));
        step = static_cast<float>(decade * roundFactor(d / decade));
    }
    return std::copysign(step, range);
}

LinearGraduations linearGraduations(bool fitsStart, float start, float end, float step) {
    LinearGraduations result{start, step, 0};
    const bool isRising = end > start;
    if (start == end || !std::isfinite(end - start) || !std::isfinite(step) || step == 0 ||
        (step > 0) != isRising || (end - start) / step > kMaxGraduations || !resolves(start, end, step))
        return result;
    float from = start;
    if (!fitsStart) {
        from = std::trunc(start / step) * step;
        while (isRising ? from < start : from > start)
            from += step;
    }
    const int count = countFrom(from, end, step);
    if (count <= kMaxGraduations)
        result = {from, step, count};
    return result;
}

} // namespace oravane
