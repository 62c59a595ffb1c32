#ifndef ORAVANE_PRIMITIVELIST_H
#define ORAVANE_PRIMITIVELIST_H

#include <oravane/SoVectorizePrimitives.h>

#include <vector>

ORAVANE_VECTORIZE_BEGIN

/// List of primitives that can be sorted from far to near. The list owns nothing: `SoPainter::display`
/// disposes of each primitive when it has drawn it.
class ORAVANE_API PrimitiveList {
public:
    int getLength() const { return static_cast<int>(m_primitives.size()); }

    /// Primitive `index`; null for an index out of range.
    Primitive *operator[](int index) const;

    /// Adds at the end; null is ignored.
    void append(Primitive *primitive);

    /// Exchanges two primitives; nothing happens for an index out of range.
    void swap(int i, int j);

    /// Takes primitive `index` out of the list without destroying it; those behind move up.
    void remove(int index);

    /// Forgets all primitives.
    void empty() { m_primitives.clear(); }

    /// Sorts the primitives from index `start` on, the largest z maximum first, equal ones by ascending
    /// priority. A radix sort: linear in the number of primitives.
    void sortZmax(int start);

    /// Heap sort of `list[0]` to `list[n - 1]`. `verify(list, n, node)` sifts a node of the heap down; nodes
    /// are numbered from 1.
    void heapSort(Primitive **list, int n, void (*verify)(Primitive **, int, int));

    /// Sift down in a heap with the least z maximum on top (which sorts in descending order), or with the
    /// largest priority on top (which sorts in ascending order).
    static void verifyHeapZmax(Primitive **list, int n, int node);
    static void verifyHeapPriority(Primitive **list, int n, int node);

private:
    bool isIndex(int index) const { return index >= 0 && index < getLength(); }

    std::vector<Primitive *> m_primitives;
};

ORAVANE_VECTORIZE_END

#endif
