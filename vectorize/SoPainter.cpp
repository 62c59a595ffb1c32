#include <oravane/SoHLHSRVectorize.h>
#include <oravane/SoPainter.h>

#include "vectorize/ExchangePass.h"

ORAVANE_VECTORIZE_BEGIN

void SoPainter::apply() {
    m_list->sortZmax(0);
    if (!m_simple)
        oravane::exchangePass(*m_list);
}

namespace {

/// Primitives lie in memory in the order of creation and are drawn in that of depth: the next ones are called
/// up in time. Their points follow the objects.
void callUp(const Primitive *primitive) {
    constexpr int kLine = 64, kLines = 4;
    for (int k = 0; k < kLines; ++k)
        __builtin_prefetch(reinterpret_cast<const char *>(primitive) + k * kLine);
}

constexpr int kAhead = 8;

} // namespace

void SoPainter::display() {
    const int n = m_list->getLength();
    for (int i = 0; i < n; ++i) {
        if (i + kAhead < n)
            callUp((*m_list)[i + kAhead]);
        Primitive *primitive = (*m_list)[i];
        primitive->print(m_hlhsr);
        Primitive::dispose(primitive);
    }
    m_list->empty();
}

ORAVANE_VECTORIZE_END
