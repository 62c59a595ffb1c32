#include "vectorize/PageFormat.h"

#include <Inventor/nodes/SoMarkerSet.h>

#include <algorithm>
#include <bit>
#include <cmath>

namespace oravane {

float orOne(float multiple) {
    return multiple > 0 && std::isfinite(multiple) ? multiple : 1.0f;
}

PatternRuns patternRuns(unsigned short pattern) {
    constexpr int kBits = 16;
    PatternRuns runs;
    if (pattern == 0)
        return runs;
    runs.shifts = std::countr_zero(pattern);
    const unsigned bits = pattern >> runs.shifts;
    for (int start = 0; start < kBits; ++runs.count) {
        int end = start + 1;
        while (end < kBits && (bits >> end & 1) == (bits >> start & 1))
            ++end;
        runs.lengths[runs.count] = end - start;
        start = end;
    }
    return runs;
}

ColorBytes colorBytes(const SbColor &color) {
    ColorBytes bytes;
    for (int k = 0; k < 3; ++k) // a NaN fails the comparison
        bytes[k] = color[k] > 0 ? static_cast<int>(std::min(color[k], 1.0f) * 255) : 0;
    return bytes;
}

double greyLevel(double red, double green, double blue) {
    return 0.3 * red + 0.59 * green + 0.11 * blue;
}

ColorBytes paletteColor(int index) {
    return {(index & 0xE0) * 255 / 0xE0, (index & 0x1C) * 255 / 0x1C, (index & 3) * 255 / 3};
}

int paletteIndex(const ColorBytes &color) {
    return color[0] >> 5 << 5 | color[1] >> 5 << 2 | color[2] >> 6;
}

SbBox2f imageBox(const SbVec2f &point, const SbVec2s &size, float pixel, SoImage::HorAlignment horizontal,
                 SoImage::VertAlignment vertical) {
    if (size[0] <= 0 || size[1] <= 0)
        return SbBox2f();
    constexpr float kShares[] = {0, 0.5f, 1};
    const SbVec2f extent(size[0] * pixel, size[1] * pixel);
    const SbVec2f low(point[0] - extent[0] * kShares[std::clamp<int>(horizontal, 0, 2)],
                      point[1] - extent[1] * kShares[std::clamp<int>(vertical, 0, 2)]);
    return SbBox2f(low, low + extent);
}

MarkerBits markerBits(int markerIndex) {
    MarkerBits marker;
    SbBool isLsbFirst = FALSE;
    // The toolkit looks below its table for an index below 0.
    if (markerIndex < 0 || !SoMarkerSet::getMarker(markerIndex, marker.size, marker.bytes, isLsbFirst) ||
        marker.size[0] <= 0 || marker.size[1] <= 0)
        marker.bytes = nullptr;
    // Both kinds are stored bottom row first, most significant bit first; the built-in ones in words.
    const int padding = markerIndex < SoMarkerSet::NUM_MARKERS ? 4 : 1;
    const int bytes = (marker.size[0] + 7) / 8;
    marker.bytesPerRow = (bytes + padding - 1) / padding * padding;
    return marker;
}

} // namespace oravane
