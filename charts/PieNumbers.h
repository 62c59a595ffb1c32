#ifndef ORAVANE_CHARTS_PIENUMBERS_H
#define ORAVANE_CHARTS_PIENUMBERS_H

#include <Inventor/SbString.h>

#include <span>
#include <vector>

class PbNumericDisplayFormat;

namespace oravane {

/// The texts of some numbers, in units of a power of ten.
struct PieNumbers {
    std::vector<SbString> texts;
    int tenPower = 0;
};

/// The values of slices. An automatic format writes them as exactly as the one that needs the most decimals,
/// and in full up to a power of 6: what is written is the data, and the mean distance of values, by which
/// scales are written, means nothing in a pie.
PieNumbers pieValueNumbers(const PbNumericDisplayFormat &format, std::span<const float> values);

/// Percents, with their sign, in units of one whatever the unit of the values is. They are quotients: an
/// automatic format writes two digits of the least one.
PieNumbers piePercentNumbers(const PbNumericDisplayFormat &format, std::span<const float> percents);

} // namespace oravane

#endif
