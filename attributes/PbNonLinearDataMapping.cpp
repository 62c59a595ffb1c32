#include <oravane/PbNonLinearDataMapping.h>

#include <oravane/PiColorConverter.h>

void PbNonLinearDataMapping::setRGBFunction(RGBFunction function) {
    m_rgbFunction = function;
    m_hlsFunction = nullptr;
    notifyChange(CHANGE_GENERAL);
}

void PbNonLinearDataMapping::setHLSFunction(HLSFunction function) {
    m_hlsFunction = function;
    m_rgbFunction = nullptr;
    notifyChange(CHANGE_GENERAL);
}

void PbNonLinearDataMapping::setTransparencyFunction(TransparencyFunction function) {
    m_transparencyFunction = function ? function : defaultTransparencyFunction;
    notifyChange(CHANGE_GENERAL);
}

const SbColor *PbNonLinearDataMapping::defaultColorFunc(float value) {
    static SbColor grey;
    static const SbColor black(0.0f, 0.0f, 0.0f), white(1.0f, 1.0f, 1.0f);
    colorInterpolation(black, 0.0f, white, 1.0f, value, grey);
    return &grey;
}

float PbNonLinearDataMapping::defaultTransparencyFunction(float) {
    return 0.0f;
}

const SbColor *PbNonLinearDataMapping::mappedColor(float value) const {
    if (m_hlsFunction && !m_rgbFunction) {
        const float *hls = m_hlsFunction(value);
        if (!hls)
            return nullptr;
        m_color = PiColorConverter::toRGB(hls);
        return &m_color;
    }
    const SbColor *color = m_rgbFunction ? m_rgbFunction(value) : defaultColorFunc(value);
    if (!color)
        return nullptr;
    m_color = *color;
    return &m_color;
}

const SbColor *PbNonLinearDataMapping::computeColor(float value, float &transparency) const {
    const SbColor *color = nullptr;
    if (isBeyondThreshold(value, color, transparency))
        return color;
    transparency = m_transparencyFunction(value);
    return mappedColor(value);
}

const SbColor *PbNonLinearDataMapping::computeColor(float value) const {
    const SbColor *color = nullptr;
    float transparency;
    return isBeyondThreshold(value, color, transparency) ? color : mappedColor(value);
}
