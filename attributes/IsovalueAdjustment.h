#ifndef ORAVANE_ATTRIBUTES_ISOVALUEADJUSTMENT_H
#define ORAVANE_ATTRIBUTES_ISOVALUEADJUSTMENT_H

#include <array>
#include <span>

namespace oravane {

/// Up to three arrays of node values that count as one field. A null array, and a count below 0, count as
/// empty.
struct NodeValues {
    NodeValues(int num1, const float *data1, int num2 = 0, const float *data2 = nullptr, int num3 = 0,
               const float *data3 = nullptr);

    std::array<std::span<const float>, 3> parts;
};

/// Moves each isovalue that coincides with a node value, by itself, as `PiVolundra` tells. Returns 1 when any
/// was to be moved. Finding the coincidences takes one pass over the values, whatever the number of
/// isovalues; the neighbours of all those that coincide take one more.
int adjustIsovalues(const NodeValues &values, std::span<float> isovalues);

} // namespace oravane

#endif
