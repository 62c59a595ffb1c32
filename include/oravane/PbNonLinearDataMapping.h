#ifndef ORAVANE_PBNONLINEARDATAMAPPING_H
#define ORAVANE_PBNONLINEARDATAMAPPING_H

#include <oravane/PbDataMapping.h>

/// Colours by functions of the program; a grey ramp, black at 0 to white at 1, at the start.
///
/// \code
///   const SbColor *redAboveOne(float value) {
///       static const SbColor red(1, 0, 0), grey(0.5f, 0.5f, 0.5f);
///       return value > 1.0f ? &red : &grey;
///   }
///   PbNonLinearDataMapping mapping;
///   mapping.setRGBFunction(redAboveOne);
/// \endcode
///
/// The result of a colour function is copied at once, so the function may reuse its memory. A null result
/// means that the value has no colour.
class ORAVANE_API PbNonLinearDataMapping : public PbDataMapping {
public:
    using RGBFunction = const SbColor *(*)(float value);
    using HLSFunction = const float *(*)(float value); ///< returns h, l, s as `PiColorConverter` has them
    using TransparencyFunction = float (*)(float value);

    PbNonLinearDataMapping() = default;

    ClassType getClassType() const override { return NON_LINEAR; }

    /// Each colour function replaces the other. Without either, after a null function, the grey ramp applies;
    /// a null transparency function means 0 everywhere. Each call tells the connected kits
    /// (`CHANGE_GENERAL`).
    void setRGBFunction(RGBFunction function);
    void setHLSFunction(HLSFunction function);
    void setTransparencyFunction(TransparencyFunction function);

private:
    static const SbColor *defaultColorFunc(float value);
    static float defaultTransparencyFunction(float value);

    const SbColor *mappedColor(float value) const;
    const SbColor *computeColor(float value, float &transparency) const override;
    const SbColor *computeColor(float value) const override;

    RGBFunction m_rgbFunction = defaultColorFunc;
    HLSFunction m_hlsFunction = nullptr;
    TransparencyFunction m_transparencyFunction = defaultTransparencyFunction;
};

#endif
