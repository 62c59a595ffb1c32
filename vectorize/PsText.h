#ifndef ORAVANE_PSTEXT_H
#define ORAVANE_PSTEXT_H

#include <string>
#include <string_view>

namespace oravane {

/// The procedures at the head of a PostScript page, with colours or grey levels, for a page of so many
/// points.
std::string psProlog(bool colored, int pageWidth, int pageHeight);

/// The inside of a PostScript string literal. Parentheses get a backslash, control characters become octal
/// codes; other characters stand as they are, so that escapes in the text keep their meaning. Only a
/// backslash that would swallow one of ours, or the end of the literal, is doubled.
std::string psString(std::string_view text);

/// A font name as the operand of `findfont`: "/name", or "(name) cvn" when it has characters that a name
/// cannot have.
std::string psFontName(std::string_view name);

/// The elements of a PostScript dash array for a 16-bit line pattern, each followed by a blank, and the
/// offset in bits. Bits are read from the lowest that is set; each is 0.35 mm long. Empty for a pattern
/// without gaps, and for 0.
struct PsDash {
    std::string elements;
    int offsetBits = 0;
};
PsDash psDash(unsigned short pattern);

} // namespace oravane

#endif
