#ifndef ORAVANE_VECTORIZE_EXCHANGEPASS_H
#define ORAVANE_VECTORIZE_EXCHANGEPASS_H

#include <oravane/PrimitiveList.h>

namespace oravane {

/// Mends the order of a list sorted by depth: for each place i and each place j behind it, in ascending
/// order, the primitives there change places when both are polygons, P at i reaches in front of Q's farthest
/// point, their boxes meet, and `PainterShapes::mustExchange` says so. The walk goes on with the new P behind
/// j.
///
/// Only pairs whose boxes meet are looked at, so that time grows with their number, and with n log n.
void exchangePass(PrimitiveList &list);

} // namespace oravane

#endif
