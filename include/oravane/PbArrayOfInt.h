#ifndef ORAVANE_PBARRAYOFINT_H
#define ORAVANE_PBARRAYOFINT_H

#include <oravane/OravaneApi.h>

#include <cstdint>
#include <memory>

/// Growable array of integers with an explicit growth step, for lists of cell and node numbers. Common part
/// of `PbArrayOfInt` and `PbArrayOfLong`, which differ only in the operations they offer.
class ORAVANE_API PbIntArrayBase {
public:
    /// Appends one value. Returns its index.
    int add(int value);

    /// Appends `count` values, which may not stand in this array; returns the index of the last element
    /// afterwards. A `count` below 1, null, and more elements than memory or an int can hold add nothing.
    int add(int count, const int *values);

    /// Number of used elements.
    int getNum() const { return m_last + 1; }

    /// Number of allocated elements.
    int getCapacity() const { return m_capacity; }

    /// Forgets the elements and keeps the block.
    void empty() { m_last = -1; }

    /// Shrinks the block to the used elements.
    void squeeze();

    void increasingSort();
    void decreasingSort();

protected:
    PbIntArrayBase() = default;
    /// Each argument below 1 counts as 1; the block is allocated at once.
    PbIntArrayBase(int initialCapacity, int step);
    /// Takes the count, capacity and step, but copies all elements except the last, which stays as allocated
    /// (0). Assignment copies all of them.
    PbIntArrayBase(const PbIntArrayBase &source);
    PbIntArrayBase &operator=(const PbIntArrayBase &source);
    ~PbIntArrayBase() = default;

    void append(const PbIntArrayBase &other);
    /// Makes `index` a used element, within a block that grows if it must.
    int &reach(int index);
    const int *data() const { return m_data.get(); }
    int last() const { return m_last; }

private:
    int *resize(std::int64_t newCount);

    std::unique_ptr<int[]> m_data;
    int m_capacity = 0;
    int m_last = -1;
    int m_step = 10;
};

/// Growable array of integers with access by index.
///
/// \code
///   PbArrayOfInt cells;
///   mesh.getNodeOwnerCellsInd(17, cells);
///   for (int i = 0; i < cells.getNum(); ++i) use(cells[i]);
/// \endcode
class ORAVANE_API PbArrayOfInt : public PbIntArrayBase {
public:
    /// No block yet; grows in steps of 10.
    PbArrayOfInt() = default;
    PbArrayOfInt(int initialCapacity, int step) : PbIntArrayBase(initialCapacity, step) {}
    PbArrayOfInt(const PbArrayOfInt &source) = default;
    PbArrayOfInt &operator=(const PbArrayOfInt &source) = default;

    PbArrayOfInt &operator+=(int value);
    PbArrayOfInt &operator+=(const PbArrayOfInt &other);

    /// Element `index`; writing beyond the last element makes all elements up to `index` used ones. A
    /// negative index gives element 0, and one that memory cannot hold an element that belongs to no array.
    int &operator[](int index) { return reach(index); }

    /// Element `index`; 0 for an index outside of the used elements.
    const int &operator[](int index) const;
    int get(int index) const { return (*this)[index]; }

    /// Index of the first element equal to `value`, or -1.
    int find(int value) const;
};

#endif
