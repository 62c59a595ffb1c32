#ifndef ORAVANE_TEXT_DATETIME_H
#define ORAVANE_TEXT_DATETIME_H

#include <oravane/PiDate.h>

namespace oravane {

/// `PiDate::incDateStep` by seconds, for steps that a float cannot hold: it resolves the seconds of half a
/// year only.
void stepSeconds(PiDate &date, double seconds);

/// Seconds from `b` to `a`.
double secondsBetween(const PiDate &a, const PiDate &b);

} // namespace oravane

#endif
