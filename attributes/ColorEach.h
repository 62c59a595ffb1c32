#ifndef ORAVANE_ATTRIBUTES_COLOREACH_H
#define ORAVANE_ATTRIBUTES_COLOREACH_H

#include <oravane/PbDataMapping.h>

template <class ColorOfValue>
std::size_t PbDataMapping::colorEach(std::size_t count, const float *values, SbColor *colors,
                                     float *transparencies, unsigned char *hasColor, ColorOfValue color) {
    static const SbColor none(0.0f, 0.0f, 0.0f);
    std::size_t colored = 0;
    for (std::size_t i = 0; i < count; ++i) {
        float transparency = 0.0f;
        const SbColor *found = color(values[i], transparency);
        colored += found ? 1 : 0;
        colors[i] = found ? *found : none;
        if (transparencies)
            transparencies[i] = transparency;
        if (hasColor)
            hasColor[i] = found ? 1 : 0;
    }
    return colored;
}

#endif
