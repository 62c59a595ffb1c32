#ifndef ORAVANE_PICOLORCONVERTER_H
#define ORAVANE_PICOLORCONVERTER_H

#include <oravane/OravaneApi.h>

#include <Inventor/SbColor.h>

/// Converts between RGB and HLS (hue, lightness, saturation; the double hexcone of Foley and van Dam).
///
/// An HLS colour is three floats in the order h, l, s: the hue in degrees, 0 red, 120 green, 240 blue;
/// lightness and saturation from 0 to 1. RGB components are from 0 to 1.
///
/// \code
///   const float orange[3] = {30.0f, 0.5f, 1.0f};
///   SbColor rgb = PiColorConverter::toRGB(orange); // 1, 0.5, 0
/// \endcode
class ORAVANE_API PiColorConverter {
public:
    /// Any finite hue is taken modulo 360; a hue that is not finite counts as 0. Lightness and saturation are
    /// cut to 0..1 (NaN to 0). Null gives black.
    static SbColor toRGB(const float *hls);

    /// Fills `hls` with a hue of 0 <= h < 360. A grey has hue 0 and saturation 0. Components of `rgb` are cut
    /// to 0..1.
    static void toHLS(const SbColor &rgb, float hls[3]);
};

#endif
