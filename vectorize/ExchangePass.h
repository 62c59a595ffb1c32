#ifndef ORAVANE_VECTORIZE_EXCHANGEPASS_H
#define ORAVANE_VECTORIZE_EXCHANGEPASS_H

#include <oravane/PrimitiveList.h>

namespace oravane {

/// Mends the order of a list sorted by depth: for each place i and each place j behind it, in ascending
/// order, the primitives there change places when both are polygons, P at i reaches in front of Q's farthest
/// point, their boxes meet, and `PainterShapes::mustExchange` says so. The walk goes on with the new P behind
/// j.
///
/// A polygon finds its partners by a tree of boxes, so that time grows as n log n and with the number of
/// pairs whose boxes meet.
void exchangePass(PrimitiveList &list);

} // namespace oravane

#endif
