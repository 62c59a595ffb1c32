#ifndef ORAVANE_AXES_DATEGRADUATIONS_H
#define ORAVANE_AXES_DATEGRADUATIONS_H

#include "axes/DateRepresentation.h"

#include <oravane/PiNumericFormat.h>

#include <string>
#include <vector>

class PbDateFormatMapping;

namespace oravane {

/// What the labels of all levels of an axis share.
struct DateAxis {
    PiDate start, end;      ///< between which graduations stand, both included; the start is the earlier
    bool fitsStart = false; ///< graduations in parts of a minute count from the start on
    PiDate::Language language = PiDate::ENGLISH;
};

/// Graduations in ascending order.
struct DateGraduations {
    std::vector<float> coords;
    std::vector<std::string> labels;
};

/// The first graduation at or behind the start: of seconds, minutes and hours a multiple of the step, of days
/// midnight, of months the first day, of years the first of January. Where the start has the hour 0, the day
/// 1 or the day 1 of January already, it is the start itself, with its time of day. It lies before the start
/// when the step is below a whole unit. `secondsFormat` becomes the one for the level's labels.
PiDate getFirstDateGrad(const DateAxis &axis, const DateLevel &level, PiNumericFormat &secondsFormat);

/// The graduations of a level, at the coordinates of their dates. When the first one lies outside of the axis
/// there is one label, for the start, in the middle. There are none when the step leads nowhere or is lost in
/// the rounding of the coordinates, or when they would be more than `kMaxGraduations`.
DateGraduations getGradList(const DateAxis &axis, const DateLevel &level, const PbDateFormatMapping &mapping);

/// One element of a label, without its suffix.
std::string getStringDate(const PiDate &date, const DateElement &element, PiDate::Language language,
                          const PiNumericFormat &secondsFormat);

/// The date at `part` of the way from `start` to `end`, which lie at different coordinates. It is as round as
/// its coordinate allows: a whole day, hour, minute or second, where that has the same coordinate.
PiDate dateBetween(const PiDate &start, const PiDate &end, double part, const PbDateFormatMapping &mapping);

} // namespace oravane

#endif
