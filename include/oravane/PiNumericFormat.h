#ifndef ORAVANE_PINUMERICFORMAT_H
#define ORAVANE_PINUMERICFORMAT_H

#include <oravane/OravaneApi.h>

class PbNumericDisplayFormat;

/// Turns the numbers of one list of labels into text, all with the same number of decimals and in units of
/// the same power of ten. The kit shows that power apart.
///
/// \code
///   PiNumericFormat format;
///   format.setFormatAuto(0, 1200, 100, 0);
///   char text[PiNumericFormat::STRING_SIZE];
///   format.getString(300, text);   // "0.3", and getTenPower() is 3
/// \endcode
///
/// A new format writes integers. The texts are those of C's "%d" and "%.nf" in the "C" locale, whatever the
/// locale of the program: the decimal point is a point.
class ORAVANE_API PiNumericFormat {
public:
    /// Room for the longest text, its terminating zero included.
    static constexpr int STRING_SIZE = 512;

    /// Integers in units of 10 to the power `tenPower`.
    void setFormatInteger(int tenPower);

    /// With `numDecimal` decimals: none for a negative number, and no more than 149, by which every float is
    /// exact.
    void setFormatFloatingPoint(int numDecimal, int tenPower);

    /// Chooses for labels from `min` to `max` in distances of `step`: the power of ten by the larger of the
    /// bounds, a multiple of 3, and the decimals that `step` and `min` need out of five significant digits.
    /// Trailing zeros need none, and neither do trailing nines: they are what is left of a number that a
    /// float cannot hold. With `roundStep` not 0, step and minimum are rounded to two significant digits
    /// first. What is not finite counts as 0; two bounds of 0 give integers.
    void setFormatAuto(float min, float max, float step, int roundStep);

    /// As `format` wishes; null or `AUTO_FORMAT` is `setFormatAuto`. A type that is none changes nothing.
    void setFormat(const PbNumericDisplayFormat *format, float min, float max, float step, int roundStep);

    /// The same for `n` values, by the bounds of those that are finite and their mean distance
    /// (max - min) / (n - 1); for one value the distance is the value. Without values (`n` below 1, null)
    /// nothing changes.
    void setFormat(const PbNumericDisplayFormat *format, int n, const float *values, int roundStep);

    /// Writes the text into `out`, which has room for `STRING_SIZE` characters; null is ignored. Integers are
    /// rounded, halves away from zero. What is no number is "nan", and what no number can hold "inf" or
    /// "-inf".
    void getString(float value, char *out) const;

    int getTenPower() const { return m_tenPower; }

private:
    void findBestFormatOfDomain(float min, float max, float step, int roundStep);

    int m_type = 0; ///< 1 for decimals
    int m_tenPower = 0;
    int m_numDecimal = 0;
};

#endif
