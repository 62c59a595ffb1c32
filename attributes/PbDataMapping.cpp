#include "attributes/ColorEach.h"

#include <oravane/PiColorConverter.h>
#include <oravane/PmHelpers.h>

namespace {

/// 0..1, also for what a division by zero gives: not-a-number becomes 1.
float cut(float value) {
    return PmMAX(PmMIN(value, 1.0f), 0.0f);
}

} // namespace

void PbDataMapping::setThreshold(Threshold &threshold, float value) {
    threshold.value = value;
    threshold.hasColor = 0;
    if (threshold.isEnabled)
        notifyChange(CHANGE_GENERAL);
}

void PbDataMapping::setThreshold(Threshold &threshold, float value, const SbColor &color,
                                 float transparency) {
    threshold.value = value;
    threshold.hasColor = 1;
    threshold.color = color;
    threshold.transparency = transparency;
    if (threshold.isEnabled)
        notifyChange(CHANGE_GENERAL);
}

void PbDataMapping::setThreshold(Threshold &threshold, float value, const float *hls, float transparency) {
    if (hls)
        setThreshold(threshold, value, PiColorConverter::toRGB(hls), transparency);
}

const SbColor *PbDataMapping::getThreshold(const Threshold &threshold, float &value, float &transparency) {
    value = threshold.value;
    transparency = threshold.transparency;
    return threshold.hasColor ? &threshold.color : nullptr;
}

const float *PbDataMapping::toHLS(const SbColor *color) const {
    if (!color)
        return nullptr;
    PiColorConverter::toHLS(*color, m_hls);
    return m_hls;
}

void PbDataMapping::setMinThreshold(float value) {
    setThreshold(m_minThreshold, value);
}

void PbDataMapping::setMinThreshold(float value, const SbColor &color, float transparency) {
    setThreshold(m_minThreshold, value, color, transparency);
}

void PbDataMapping::setMinThreshold(float value, const float hls[3], float transparency) {
    setThreshold(m_minThreshold, value, hls, transparency);
}

void PbDataMapping::setMaxThreshold(float value) {
    setThreshold(m_maxThreshold, value);
}

void PbDataMapping::setMaxThreshold(float value, const SbColor &color, float transparency) {
    setThreshold(m_maxThreshold, value, color, transparency);
}

void PbDataMapping::setMaxThreshold(float value, const float hls[3], float transparency) {
    setThreshold(m_maxThreshold, value, hls, transparency);
}

const SbColor *PbDataMapping::getMinRGBThreshold(float &value, float &transparency) const {
    return getThreshold(m_minThreshold, value, transparency);
}

const SbColor *PbDataMapping::getMaxRGBThreshold(float &value, float &transparency) const {
    return getThreshold(m_maxThreshold, value, transparency);
}

const SbColor *PbDataMapping::getMinRGBThreshold(float &value) const {
    float transparency;
    return getMinRGBThreshold(value, transparency);
}

const SbColor *PbDataMapping::getMaxRGBThreshold(float &value) const {
    float transparency;
    return getMaxRGBThreshold(value, transparency);
}

const float *PbDataMapping::getMinHLSThreshold(float &value) const {
    return toHLS(getMinRGBThreshold(value));
}

const float *PbDataMapping::getMinHLSThreshold(float &value, float &transparency) const {
    return toHLS(getMinRGBThreshold(value, transparency));
}

const float *PbDataMapping::getMaxHLSThreshold(float &value) const {
    return toHLS(getMaxRGBThreshold(value));
}

const float *PbDataMapping::getMaxHLSThreshold(float &value, float &transparency) const {
    return toHLS(getMaxRGBThreshold(value, transparency));
}

void PbDataMapping::enableThresholds(int min, int max) {
    m_minThreshold.isEnabled = min != 0;
    m_maxThreshold.isEnabled = max != 0;
    notifyChange(CHANGE_GENERAL);
}

void PbDataMapping::thresholdsEnabled(int &min, int &max) const {
    min = m_minThreshold.isEnabled;
    max = m_maxThreshold.isEnabled;
}

void PbDataMapping::enableTransparency(int enable) {
    m_transparencyEnabled = enable != 0;
    notifyChange(CHANGE_GENERAL);
}

void PbDataMapping::setTransparencyValueDeletedParts(float value) {
    m_transparencyValueDeletedParts = value;
    notifyChange(CHANGE_GENERAL);
}

const float *PbDataMapping::getHLSColor(float value) const {
    return toHLS(computeColor(value));
}

const float *PbDataMapping::getHLSColor(float value, float &transparency) const {
    return toHLS(computeColor(value, transparency));
}

std::size_t PbDataMapping::computeColors(std::size_t count, const float *values, SbColor *colors,
                                         float *transparencies, unsigned char *hasColor) const {
    if (count == 0 || !values || !colors)
        return 0;
    return computeColorsOf(count, values, colors, transparencies, hasColor);
}

std::size_t PbDataMapping::computeColorsOf(std::size_t count, const float *values, SbColor *colors,
                                           float *transparencies, unsigned char *hasColor) const {
    return colorEach(count, values, colors, transparencies, hasColor, [&](float value, float &transparency) {
        return transparencies ? computeColor(value, transparency) : computeColor(value);
    });
}

bool PbDataMapping::isBeyondThreshold(float value, const SbColor *&color, float &transparency) const {
    // Negated comparisons, so that not-a-number has no accidental colour when a threshold is on.
    const Threshold *decisive = nullptr;
    if (m_minThreshold.isEnabled && !(value > m_minThreshold.value))
        decisive = &m_minThreshold;
    else if (m_maxThreshold.isEnabled && !(value < m_maxThreshold.value))
        decisive = &m_maxThreshold;
    if (!decisive)
        return false;
    transparency = decisive->transparency;
    color = decisive->hasColor ? &decisive->color : nullptr;
    return true;
}

void PbDataMapping::colorInterpolation(const SbColor &color1, float value1, const SbColor &color2,
                                       float value2, float value, SbColor &result) {
    const float t = (value - value1) / (value2 - value1);
    for (int i = 0; i < 3; ++i)
        result[i] = cut((color2[i] - color1[i]) * t + color1[i]);
}

void PbDataMapping::colorInterpolation(const SbColor &color1, float value1, float transparency1,
                                       const SbColor &color2, float value2, float transparency2, float value,
                                       SbColor &result, float &transparency) {
    const float t = (value - value1) / (value2 - value1);
    colorInterpolation(color1, value1, color2, value2, value, result);
    transparency = cut((transparency2 - transparency1) * t + transparency1);
}

float PbDataMapping::transparencyInterpolation(float value1, float transparency1, float value2,
                                               float transparency2, float value) {
    return cut((transparency2 - transparency1) * (value - value1) / (value2 - value1) + transparency1);
}
