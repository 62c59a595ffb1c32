#ifndef ORAVANE_PAINTERORDER_H
#define ORAVANE_PAINTERORDER_H

#include <oravane/SoVectorizePrimitives.h>

namespace oravane {

/// Whether P, which is drawn before Q, must change places with it, given that their z ranges and boxes meet:
/// neither lies on the right side of the other's plane, but one does on the wrong side, and they overlap in x
/// and y.
bool mustExchange(PolyGon &p, PolyGon &q);

} // namespace oravane

#endif
