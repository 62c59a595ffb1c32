#ifndef ORAVANE_ATTRIBUTES_SELECTIONORDER_H
#define ORAVANE_ATTRIBUTES_SELECTIONORDER_H

#include <span>
#include <vector>

namespace oravane {

/// Where a selection sort by swapping, with strict comparison, would put the values: entry i of the result is
/// the index of the value that ends at place i. The same as any other sort but for equal values, whose order
/// the swaps may change; in n log n. No value may be not-a-number.
std::vector<int> selectionOrder(std::span<const float> values);

} // namespace oravane

#endif
