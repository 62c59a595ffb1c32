#ifndef ORAVANE_PBARRAYOFLONG_H
#define ORAVANE_PBARRAYOFLONG_H

#include <oravane/PbArrayOfInt.h>

/// Growable array of 32-bit integers that hands out its block, for the index fields of shapes.
class ORAVANE_API PbArrayOfLong : public PbIntArrayBase {
public:
    PbArrayOfLong(int initialCapacity, int step) : PbIntArrayBase(initialCapacity, step) {}
    PbArrayOfLong(const PbArrayOfLong &source) = default;
    PbArrayOfLong &operator=(const PbArrayOfLong &source) = default;

    PbArrayOfLong &operator+=(const PbArrayOfLong &other);

    /// The element block, `getNum()` values; valid until the next call that adds elements.
    const int *get() const { return data(); }
};

#endif
