#include <oravane/PbSortedArray.h>

int getPositionInSortedArray(float value, int num, const float *array) {
    if (!array)
        return -1;
    const bool isAscending = num < 2 || array[1] > array[0];
    int lo = 0;
    int hi = num - 1;
    while (lo <= hi) {
        const int mid = lo + (hi - lo) / 2;
        if (value == array[mid])
            return mid - 1;
        if (isAscending ? value > array[mid] : value < array[mid])
            lo = mid + 1;
        else
            hi = mid - 1;
    }
    return hi;
}
