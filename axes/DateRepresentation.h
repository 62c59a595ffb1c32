#ifndef ORAVANE_AXES_DATEREPRESENTATION_H
#define ORAVANE_AXES_DATEREPRESENTATION_H

#include <oravane/PiDate.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// \file
/// What a time axis writes: levels of labels, each with a step and the elements of its dates. Levels are
/// described in a small language, or found by the span of the axis. The two languages are those of
/// `PoTimeAxis::gradRep` and `PoTimeAxis::timesPeriod`; their contract is in that header.

namespace oravane {

enum class DateForm { Second, Minute, Hour, DayNumber, DayName, MonthNumber, MonthName, Year };

/// A part of a label: one element of the date, and what follows it.
struct DateElement {
    DateForm form = DateForm::Second;
    int width = 0; ///< letters of a name; of a year, 3 or more for all digits, else the last two
    std::string suffix;
};

/// Labels in distances of `step` units. `STEP_NONE` and 0 ask for automatic ones.
struct DateLevel {
    PiDate::StepType unit = PiDate::STEP_NONE;
    float step = 0;
    std::string prefix;
    std::vector<DateElement> elements;
};

using DateRepresentation = std::vector<DateLevel>;

/// Reads levels. `error` is 0, or, with no result, the number of characters read up to and with the faulty
/// token, where the end of the text counts as one.
std::optional<DateRepresentation> parseAxisRep(std::string_view text, char separator, int &error);

using DateList = std::vector<std::pair<double, PiDate::StepType>>;

/// Reads a list of spans, in the same way.
std::optional<DateList> parseDateList(std::string_view text, int &error);

/// The descriptions that a program gives, and the spans by which one of them is chosen.
class DateRepresentations {
public:
    /// None.
    DateRepresentations() = default;
    /// Those of `texts`, separated into levels at `separator`; none at all when a text cannot be read or the
    /// number of periods does not fit.
    DateRepresentations(const std::vector<std::string> &texts, std::string_view periods, char separator);

    bool empty() const { return m_representations.empty(); }
    /// Spans in ascending order, all different, in the form of a difference of dates.
    const std::vector<PiDate> &periods() const { return m_periods; }

    /// The one for the time from `start` to `end`, which is the later; an automatic one where there is none.
    /// All levels have a unit and a step; automatic ones also elements. `language` decides on the order of
    /// automatic elements.
    DateRepresentation getDateAxisRep(const PiDate &start, const PiDate &end,
                                      PiDate::Language language) const;

private:
    bool setPeriods(std::string_view text);

    std::vector<DateRepresentation> m_representations;
    std::vector<PiDate> m_periods;
};

} // namespace oravane

#endif
