#ifndef ORAVANE_PBLINEARDATAMAPPING_H
#define ORAVANE_PBLINEARDATAMAPPING_H

#include <oravane/PbDataMapping.h>

/// Colours on the straight line in RGB between two values; black at 0 to white at 1 at the start.
///
/// \code
///   PbLinearDataMapping mapping;
///   mapping.setValues(-20.0f, SbColor(0, 0, 1), 40.0f, SbColor(1, 0, 0));
/// \endcode
///
/// Beyond the two values the colour goes on, each component cut to 0..1. The second value may be below the
/// first. With equal values every result is still a colour with components from 0 to 1.
class ORAVANE_API PbLinearDataMapping : public PbDataMapping {
public:
    PbLinearDataMapping() = default;

    ClassType getClassType() const override { return LINEAR; }

    /// The forms without transparencies set them to 0. Each tells the connected kits (`CHANGE_GENERAL`).
    void setValues(float value1, const SbColor &color1, float value2, const SbColor &color2);
    void setValues(float value1, const SbColor &color1, float transparency1, float value2,
                   const SbColor &color2, float transparency2);
    void setValues(float value1, const float hls1[3], float value2, const float hls2[3]);
    void setValues(float value1, const float hls1[3], float transparency1, float value2, const float hls2[3],
                   float transparency2);

    void getValues(float &value1, SbColor &color1, float &value2, SbColor &color2) const;
    void getValues(float &value1, SbColor &color1, float &transparency1, float &value2, SbColor &color2,
                   float &transparency2) const;
    void getValues(float &value1, float hls1[3], float &value2, float hls2[3]) const;
    void getValues(float &value1, float hls1[3], float &transparency1, float &value2, float hls2[3],
                   float &transparency2) const;

private:
    const SbColor *computeColor(float value, float &transparency) const override;
    const SbColor *computeColor(float value) const override;
    std::size_t computeColorsOf(std::size_t count, const float *values, SbColor *colors,
                                float *transparencies, unsigned char *hasColor) const override;

    float m_value1 = 0.0f;
    float m_value2 = 1.0f;
    float m_transparency1 = 0.0f;
    float m_transparency2 = 0.0f;
    SbColor m_color1{0.0f, 0.0f, 0.0f};
    SbColor m_color2{1.0f, 1.0f, 1.0f};
};

#endif
