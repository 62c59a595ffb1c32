#ifndef ORAVANE_SOPAINTER_H
#define ORAVANE_SOPAINTER_H

#include <oravane/PrimitiveList.h>

ORAVANE_VECTORIZE_BEGIN

class SoHLHSRVectorize;

/// Puts primitives into the order in which a painter lays them on, far ones first, and draws them.
///
/// The depth sort alone errs where a large polygon reaches behind a small one that is farther off at its
/// farthest point. The exchange pass of the full sort mends pairs of polygons by their planes, after
/// M. Newell, R. Newell, T. Sancha (1972), without their splitting: the pairs are walked once, and nothing is
/// tried again after an exchange, so that polygons that overlap in a circle end in some order at once.
class ORAVANE_API SoPainter {
public:
    /// `list` and `hlhsr` are borrowed. With `simple` non-zero there is the depth sort only.
    SoPainter(PrimitiveList *list, SoHLHSRVectorize *hlhsr, int simple)
        : m_list(list), m_hlhsr(hlhsr), m_simple(simple) {}

    /// Sorts the list.
    void apply();

    /// Prints each primitive in order and disposes of it; the list is empty afterwards.
    void display();

private:
    PrimitiveList *m_list;
    SoHLHSRVectorize *m_hlhsr;
    int m_simple;
};

ORAVANE_VECTORIZE_END

#endif
