#ifndef ORAVANE_PBSORTEDARRAY_H
#define ORAVANE_PBSORTEDARRAY_H

#include <oravane/OravaneApi.h>

/// Finds the interval of a sorted array that holds `value`, by binary search. The array of `num` values is
/// ascending, or descending when its second value is not above its first.
///
/// Returns the index of the last element before `value` in the order of the array, -1 when there is none: the
/// interval runs from there to the next element. A value equal to an element belongs to the interval that
/// ends there, so that the first element itself gives -1. In an ascending array NaN gives -1, as does an
/// empty or null array.
///
/// \code
///   const float x[] = {0, 1, 2};
///   getPositionInSortedArray(1.5f, 3, x); // 1
///   getPositionInSortedArray(1, 3, x);    // 0
/// \endcode
ORAVANE_API int getPositionInSortedArray(float value, int num, const float *array);

#endif
