#ifndef ORAVANE_TEXT_DATANUMBERS_H
#define ORAVANE_TEXT_DATANUMBERS_H

#include <span>
#include <string>
#include <vector>

class PbNumericDisplayFormat;

namespace oravane {

/// The texts of numbers that are data, as bars and slices show them, all in one format. An automatic format
/// writes all as exactly as the one that needs the most decimals, of five digits, and in full up to powers of
/// 6: the mean distance of values, by which scales are written, means nothing here. Where a power of ten is
/// factored out, "E9" stands behind the number; but a `unit` (null: none), which stands last, speaks for the
/// power that a program has chosen. What is not finite has no text.
std::vector<std::string> dataTexts(const PbNumericDisplayFormat &format, std::span<const float> values,
                                   const char *unit);

/// Percents, with their sign, in units of one whatever the unit of the values is. They are quotients: an
/// automatic format writes two digits of the least one.
std::vector<std::string> percentTexts(const PbNumericDisplayFormat &format, std::span<const float> percents);

} // namespace oravane

#endif
