#include <oravane/SoHLHSRVectorize.h>
#include <oravane/SoPainter.h>

#include "vectorize/CallUp.h"
#include "vectorize/ExchangePass.h"

#include <functional>

ORAVANE_VECTORIZE_BEGIN

void SoPainter::apply() {
    m_list->sortZmax(0);
    if (!m_simple)
        oravane::exchangePass(*m_list);
}

void SoPainter::display() {
    const int n = m_list->getLength();
    for (int i = 0; i < n; ++i) {
        oravane::callUpAhead(*m_list, i, n, std::identity());
        Primitive *primitive = (*m_list)[i];
        primitive->print(m_hlhsr);
        Primitive::dispose(primitive);
    }
    m_list->empty();
}

ORAVANE_VECTORIZE_END
