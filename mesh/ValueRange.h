#ifndef ORAVANE_VALUERANGE_H
#define ORAVANE_VALUERANGE_H

#include <limits>

namespace oravane {

/// Smallest and largest of the values added; NaN is passed over.
struct ValueRange {
    float min = std::numeric_limits<float>::infinity();
    float max = -std::numeric_limits<float>::infinity();

    void add(float value) {
        if (value < min)
            min = value;
        if (value > max)
            max = value;
    }
    void add(const float *values, int num) {
        for (int i = 0; i < num; ++i)
            add(values[i]);
    }
    /// Whether there was a value other than NaN.
    bool isValid() const { return min <= max; }
};

} // namespace oravane

#endif
