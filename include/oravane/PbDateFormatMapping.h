#ifndef ORAVANE_PBDATEFORMATMAPPING_H
#define ORAVANE_PBDATEFORMATMAPPING_H

#include <oravane/PbBase.h>
#include <oravane/PiDate.h>

#include <Inventor/SbString.h>

/// Maps dates to a world coordinate, linearly, by two dates and their coordinates; and the form in which
/// dates are written as text.
///
/// \code
///   PbDateFormatMapping mapping("1-01-1990", "1-01-2000", 0, 10, "dmY");
///   float x;
///   if (mapping.getCoordinate("15-06-1995", x))   // 5.45
///       ...
/// \endcode
///
/// A new mapping has the format "dmy" and takes 1 January 1970 to 0 and 2 January 1970 to 1: a day is a unit.
///
/// Coordinates are single precision, and hold 24 bits. Where they start at 0 they tell one second from the
/// next over 2^24 seconds, about 194 days; over 60 years they tell two minutes apart, at the far end. All
/// between text and coordinate is double precision.
class ORAVANE_API PbDateFormatMapping : public PbBase {
public:
    PbDateFormatMapping();
    /// As `setDateMapping` by `format`, which is not examined; null means "dmy". Arguments that are refused
    /// leave the mapping of a new object.
    PbDateFormatMapping(const char *date1, const char *date2, float coord1, float coord2, const char *format);
    PbDateFormatMapping(const PbDateFormatMapping &source);
    /// Tells the kits of this object, after the copy; nothing on self-assignment.
    PbDateFormatMapping &operator=(const PbDateFormatMapping &source);

    /// How dates given to this object are written: letters as in `PiDate::setDateString`, each element at
    /// most once. Takes effect for the texts to come; dates given before stay what they are. Null means
    /// "dmy".
    ///
    /// It is the format in force that is examined, not the new one: when it is sound, takes the new one as it
    /// is, notifies (`CHANGE_GENERAL`) and returns 0. Otherwise returns the place, from 1, of the first
    /// letter at fault, and keeps the format. So a faulty format is found by the next call, and stays.
    int setFormat(const char *format);
    const SbString &getFormat() const { return m_format; }

    /// Returns 0, and notifies (`CHANGE_GENERAL`); 1 when `date1` cannot be read (null included), 2 when
    /// `date2` cannot, 3 when the dates are equal, 4 when a coordinate is not finite: then nothing changes.
    ///
    /// The earlier date belongs to the smaller coordinate, whatever their order here.
    int setDateMapping(const char *date1, const char *date2, float coord1, float coord2);
    /// The same for dates. Equal ones are taken: then every date is at the smaller coordinate.
    int setDateMappingP(const PiDate &date1, const PiDate &date2, float coord1, float coord2);

    /// The texts as they were given last, exchanged when their coordinates were equal, and the smaller and
    /// the larger coordinate.
    void getDateMapping(SbString &date1, SbString &date2, float &minCoord, float &maxCoord) const;

    /// Returns 1, or 0 when the text cannot be read (null included); then `coordinate` is left alone.
    /// Dates outside of the two that define the mapping lie outside of their coordinates.
    int getCoordinate(const char *date, float &coordinate) const;
    float getCoordinateP(const PiDate &date) const;

    /// The date at a coordinate: the earlier date stepped by seconds. Thus a coordinate below the smaller one
    /// gives too early a date where it reaches back beyond the start of a year: see `PiDate::incDateStep`.
    /// The earlier date itself where there is no answer: `coordinate` is not finite, or the coordinates of
    /// the mapping are equal.
    PiDate getDateP(float coordinate) const;

private:
    bool storeMapping(const PiDate &date1, const PiDate &date2, float coord1, float coord2);

    PiDate m_origin;
    float m_minCoord = 0;
    float m_maxCoord = 1;
    double m_lengthSeconds = 86400;
    SbString m_format = "dmy";
    SbString m_dateStrings[2] = {"1-01-70", "2-01-70"};
};

#endif
