#ifndef ORAVANE_POTIMEAXIS_H
#define ORAVANE_POTIMEAXIS_H

#include <oravane/PoAxis.h>

#include <Inventor/fields/SoMFString.h>

class PiDate;

namespace oravane {
struct DateGraduations;
} // namespace oravane

/// An axis between two dates, with levels of labels beyond one another: hours, and below them days. Levels
/// and steps follow from the span of the axis, or are described.
///
/// \code
///   auto *dates = new PoDateFormatMapping;                // 1990 to 2000 along x from 0 to 10
///   dates->format = "dmY";
///   dates->date1 = "1-01-1990";
///   dates->date2 = "1-01-2000";
///   dates->coord2 = 10;
///   auto *axis = new PoTimeAxis;                          // behind `dates` in the scene
///   axis->startDate = "15-06-1992";
///   axis->endDate = "15-06-1993";                         // months, and below them the year
///   axis->gradRep = "2 MON M 3 ' ' Y 4";                  // or "JUL 1992", "SEP 1992" ...
/// \endcode
///
/// Dates are texts in the format of the mapping in force, `setDateFormatMapping` or that of the scene, which
/// also gives their coordinates: x for an axis of the type `X`, y for `Y`. Where a date cannot be read the
/// parts stay as they were.
///
/// A representation, an element of `gradRep`, describes levels, which the line end character of the text
/// attributes separates (not a blank: blanks are skipped):
///
///     level   = [[number] unit] ['prefix'] {element}     unit    = SEC | MIN | HOU | DAY | MON | YEA
///     element = letter [width] ['suffix']                letter  = s | m | H | D | M | Y
///
/// The number is the step in units, whole except for seconds: "2 DAY". Letters are the elements of the date,
/// from the second to the year, and texts in single quotes stand as they are. D and M are numbers; with a
/// width they are names cut to so many letters, in the `language`. A year has all digits with a width of 3 or
/// more, else its last two without a leading zero. A level with a unit shows what its elements say, and
/// nothing without any. Without a number it has an automatic step, for which short units give way to longer
/// ones; without a unit, the automatic unit on level 0, and else that above the level before (none above
/// years): then elements finer than the unit go, and one for the unit comes first where there is none.
///
/// Of several representations the one serves whose step on level 0 comes closest to a twelfth of the span;
/// those without a unit on level 0 do not take part, and when none has one all is automatic. With
/// `timesPeriod`, a list of one span less ("6 HOU 10 DAY"), the first serves up to the shortest span, and so
/// on. Spans are compared member by member with the difference of the dates, which counts days, hours,
/// minutes and seconds: write 31 DAY rather than MON or YEA, which no difference exceeds, and 2 HOU rather
/// than 120 MIN. A description that cannot be read, or a wrong number of spans, leaves the automatic levels.
///
/// Graduations: seconds, minutes and hours at multiples of the step; days at midnight, months at their first
/// day, years at the first of January. An axis that starts in the hour 0, on a day 1 or on 1 January has the
/// first graduation in days, months or years at its start, and all others at that time of day. Seconds have
/// decimals on an axis of 5 seconds and less. A level that would begin outside of the axis has one label, for
/// the start, in the middle; one of more than 100 000 graduations, or with a step of no whole unit, has none.
/// Labels longer than 99 bytes are cut.
///
/// Labels are made from dates, and are right however long the axis is; coordinates are single precision, and
/// `PbDateFormatMapping` says where they stop to tell seconds apart. A level whose step is lost there has no
/// graduations, and where start and end share a coordinate there is no axis to draw. With margins the first
/// and the last date are those at the coordinates, as round as these allow.
///
/// Only level 0 has ticks and grid lines. All its graduations are main ones, and `gradAddString` is not
/// added. All levels have the font size that suits level 0, and `gradDistAxis` is its distance. Paths up and
/// down stay what they are under `AXIS_REVERSE`.
class ORAVANE_API PoTimeAxis : public PoAxis {
    SO_KIT_HEADER(PoTimeAxis);

public:
    /// Of the names of days and months: see `PiDate::getDays`.
    enum Language : int { ENGLISH = 0, FRANCAIS = 1, DEUTSCH = 2, ESPANOL = 3 };
    /// The direction of the axis. Local +y, the side above, is world +y for `X`, and world -x for `Y`.
    enum Type : int { X = 0, Y = 1 };
    enum GradFit : int {
        GRAD_FIT = 0,   ///< graduations count from the start, in an axis of 5 seconds and less
        GRAD_UNFIT = 1, ///< graduations are multiples of the step
    };

    SoSFString startDate;   ///< default "1-01-70"
    SoSFString endDate;     ///< default "2-01-70"; may be the earlier
    SoSFFloat coord;        ///< y of an axis along x, x of one along y; default 0
    PoSFEnum type;          ///< default X; what is no type counts as X
    PoSFEnum language;      ///< default ENGLISH, as for what is no language
    PoSFEnum gradFit;       ///< default GRAD_UNFIT
    SoMFString gradRep;     ///< representations, default one empty text; an empty first one means automatic
    SoSFString timesPeriod; ///< spans that choose among them, default empty

    PoTimeAxis();
    static void initClass();
    void rebuild() override;

    /// How dates are read and where they lie: the object given here, else that of the scene. Not owned; one
    /// that is deleted is forgotten. Outside of a traversal, without an own object, a default one.
    void setDateFormatMapping(PbDateFormatMapping *mapping);
    const PbDateFormatMapping *getDateFormatMapping() const;

protected:
    ~PoTimeAxis() override;
    void preRebuild() override;
    void addElementsAllCaches() override;

private:
    bool placeAxis(Parts &parts);
    void drawDates(const PiDate &from, const PiDate &to, Parts &parts);
    std::vector<oravane::DateGraduations> levelsBetween(const PiDate &from, const PiDate &to, float a,
                                                        float b);
    void buildDateGrads(std::span<const oravane::DateGraduations> levels, SoGroup *group);

    PoDateMappingConnection m_dateMapping{this};
};

#endif
