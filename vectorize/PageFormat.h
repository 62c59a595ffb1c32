#ifndef ORAVANE_PAGEFORMAT_H
#define ORAVANE_PAGEFORMAT_H

#include <Inventor/SbBox2f.h>
#include <Inventor/SbColor.h>
#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec2s.h>
#include <Inventor/nodes/SoImage.h>

#include <array>

/// What the page formats share.
namespace oravane {

/// Widths and sizes of 0, and what is no width, count as 1.
float orOne(float multiple);

/// The line pattern without gaps.
inline constexpr unsigned short kSolidPattern = 0xFFFF;

/// The runs of equal bits of a 16-bit line pattern, read from its lowest bit that is set: the first run is
/// drawn, the next one is a gap, and so on. They add up to 16 bits. No runs for a pattern of 0.
struct PatternRuns {
    std::array<int, 16> lengths{};
    int count = 0;
    int shifts = 0; ///< bits below the lowest that is set
};
PatternRuns patternRuns(unsigned short pattern);

/// Red, green and blue from 0 to 255, truncated. What lies outside of 0 to 1 counts as the nearer end.
using ColorBytes = std::array<int, 3>;
ColorBytes colorBytes(const SbColor &color);

/// Brightness of a colour whose channels are on any scale.
double greyLevel(double red, double green, double blue);

/// A palette of 256 colours: three bits of red, three of green, two of blue.
ColorBytes paletteColor(int index);
int paletteIndex(const ColorBytes &color);

/// Where an image lies whose anchor is at `point`: `size` pixels of `pixel` mm. Empty when there is nothing
/// to show.
SbBox2f imageBox(const SbVec2f &point, const SbVec2s &size, float pixel, SoImage::HorAlignment horizontal,
                 SoImage::VertAlignment vertical);

/// The bitmap of a marker of the toolkit; null bytes when there is none. Rows from the bottom, most
/// significant bit first.
struct MarkerBits {
    SbVec2s size{0, 0};
    const unsigned char *bytes = nullptr;
    int bytesPerRow = 0;

    bool isSet(int x, int y) const { return bytes[y * bytesPerRow + x / 8] >> (7 - x % 8) & 1; }
};
MarkerBits markerBits(int markerIndex);

} // namespace oravane

#endif
