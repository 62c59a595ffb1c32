#include <oravane/PbLinearDataMapping.h>

#include "attributes/ColorEach.h"

#include <oravane/PiColorConverter.h>

void PbLinearDataMapping::setValues(float value1, const SbColor &color1, float transparency1, float value2,
                                    const SbColor &color2, float transparency2) {
    m_value1 = value1;
    m_value2 = value2;
    m_transparency1 = transparency1;
    m_transparency2 = transparency2;
    m_color1 = color1;
    m_color2 = color2;
    notifyChange(CHANGE_GENERAL);
}

void PbLinearDataMapping::setValues(float value1, const SbColor &color1, float value2,
                                    const SbColor &color2) {
    setValues(value1, color1, 0.0f, value2, color2, 0.0f);
}

void PbLinearDataMapping::setValues(float value1, const float hls1[3], float transparency1, float value2,
                                    const float hls2[3], float transparency2) {
    if (hls1 && hls2)
        setValues(value1, PiColorConverter::toRGB(hls1), transparency1, value2, PiColorConverter::toRGB(hls2),
                  transparency2);
}

void PbLinearDataMapping::setValues(float value1, const float hls1[3], float value2, const float hls2[3]) {
    setValues(value1, hls1, 0.0f, value2, hls2, 0.0f);
}

void PbLinearDataMapping::getValues(float &value1, SbColor &color1, float &transparency1, float &value2,
                                    SbColor &color2, float &transparency2) const {
    value1 = m_value1;
    value2 = m_value2;
    transparency1 = m_transparency1;
    transparency2 = m_transparency2;
    color1 = m_color1;
    color2 = m_color2;
}

void PbLinearDataMapping::getValues(float &value1, SbColor &color1, float &value2, SbColor &color2) const {
    float transparency1, transparency2;
    getValues(value1, color1, transparency1, value2, color2, transparency2);
}

void PbLinearDataMapping::getValues(float &value1, float hls1[3], float &transparency1, float &value2,
                                    float hls2[3], float &transparency2) const {
    value1 = m_value1;
    value2 = m_value2;
    transparency1 = m_transparency1;
    transparency2 = m_transparency2;
    PiColorConverter::toHLS(m_color1, hls1);
    PiColorConverter::toHLS(m_color2, hls2);
}

void PbLinearDataMapping::getValues(float &value1, float hls1[3], float &value2, float hls2[3]) const {
    float transparency1, transparency2;
    getValues(value1, hls1, transparency1, value2, hls2, transparency2);
}

const SbColor *PbLinearDataMapping::computeColor(float value, float &transparency) const {
    const SbColor *color = nullptr;
    if (isBeyondThreshold(value, color, transparency))
        return color;
    colorInterpolation(m_color1, m_value1, m_transparency1, m_color2, m_value2, m_transparency2, value,
                       m_color, transparency);
    return &m_color;
}

const SbColor *PbLinearDataMapping::computeColor(float value) const {
    float transparency;
    return PbLinearDataMapping::computeColor(value, transparency);
}

std::size_t PbLinearDataMapping::computeColorsOf(std::size_t count, const float *values, SbColor *colors,
                                                 float *transparencies, unsigned char *hasColor) const {
    return colorEach(count, values, colors, transparencies, hasColor,
                     [this](float value, float &transparency) {
                         return PbLinearDataMapping::computeColor(value, transparency);
                     });
}
