#ifndef ORAVANE_TOOLS_ORAVANE_OPTIONVALUES_H
#define ORAVANE_TOOLS_ORAVANE_OPTIONVALUES_H

#include <Inventor/SbColor.h>
#include <Inventor/SbVec2f.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

/// What the words of a command line stand for. Each function throws `std::invalid_argument` with one line
/// that quotes the word and says what would be right.
namespace oravane {

/// Millimetres, width first: "A4", "Letter" and their like in any case, upright; or "WIDTHxHEIGHT", as it
/// stands. Sides are 1 to 10 000 mm.
SbVec2f parsePaperSize(std::string_view text);

/// The names that `parsePaperSize` knows, with commas.
std::string paperNames();

/// Pixels, width first: "WIDTHxHEIGHT", at most 32767.
std::array<int, 2> parsePixelSize(std::string_view text);

/// "#rrggbb", "#rgb", or one of the names black, white, grey, red, green, blue, yellow, magenta and cyan.
SbColor parseColor(std::string_view text);

/// A finite number from `least` to `most`.
float parseNumber(std::string_view text, float least, float most);

/// A whole number from `least` to `most`.
int parseCount(std::string_view text, int least, int most);

/// The pens of a plotter or printer, one for each colour; none is no restriction.
struct PenList {
    std::vector<SbColor> colors;
    std::vector<float> widths; ///< in mm
};

/// "black:0.35,red,#00ff00:0.7" for colours with widths in mm, 1/72 inch where none is given, at most 256; or
/// a number from 2 to 8 for the first ones of white, black, red, green, yellow, blue, magenta and cyan.
PenList parsePens(std::string_view text);

} // namespace oravane

#endif
