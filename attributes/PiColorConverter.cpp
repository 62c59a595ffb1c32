#include <oravane/PiColorConverter.h>

#include <algorithm>
#include <cmath>

namespace {

float unit(float value) {
    return value > 0.0f ? std::min(value, 1.0f) : 0.0f;
}

/// One component of a pure hue, as a height between `low` and `high`: a trapezoid over the colour circle.
float component(float low, float high, float hue) {
    if (hue >= 360.0f)
        hue -= 360.0f;
    else if (hue < 0.0f)
        hue += 360.0f;
    if (hue < 60.0f)
        return low + (high - low) * hue / 60.0f;
    if (hue < 180.0f)
        return high;
    if (hue < 240.0f)
        return low + (high - low) * (240.0f - hue) / 60.0f;
    return low;
}

} // namespace

SbColor PiColorConverter::toRGB(const float *hls) {
    if (!hls)
        return SbColor(0.0f, 0.0f, 0.0f);
    float hue = std::isfinite(hls[0]) ? std::fmod(hls[0], 360.0f) : 0.0f;
    if (hue < 0.0f)
        hue += 360.0f;
    const float lightness = unit(hls[1]);
    const float saturation = unit(hls[2]);
    const float high =
        lightness <= 0.5f ? lightness * (1.0f + saturation) : lightness + saturation - lightness * saturation;
    const float low = 2.0f * lightness - high;
    return SbColor(unit(component(low, high, hue + 120.0f)), unit(component(low, high, hue)),
                   unit(component(low, high, hue - 120.0f)));
}

void PiColorConverter::toHLS(const SbColor &rgb, float hls[3]) {
    const float red = unit(rgb[0]), green = unit(rgb[1]), blue = unit(rgb[2]);
    const float high = std::max({red, green, blue}), low = std::min({red, green, blue});
    const float delta = high - low;
    hls[0] = 0.0f;
    hls[1] = (high + low) / 2.0f;
    hls[2] = 0.0f;
    if (!(delta > 0.0f))
        return;
    hls[2] = std::min(delta / (hls[1] <= 0.5f ? high + low : 2.0f - high - low), 1.0f);
    float sextant = 0.0f;
    if (red == high)
        sextant = (green - blue) / delta;
    else if (green == high)
        sextant = 2.0f + (blue - red) / delta;
    else
        sextant = 4.0f + (red - green) / delta;
    hls[0] = sextant * 60.0f;
    if (hls[0] < 0.0f)
        hls[0] = hls[0] + 360.0f < 360.0f ? hls[0] + 360.0f : 0.0f;
}
