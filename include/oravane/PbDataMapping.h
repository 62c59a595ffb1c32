#ifndef ORAVANE_PBDATAMAPPING_H
#define ORAVANE_PBDATAMAPPING_H

#include <oravane/PbBase.h>

#include <Inventor/SbColor.h>

#include <cstddef>

/// Turns a scalar value into a colour and a transparency. Every coloured representation of data asks the
/// mapping it finds in the state. The children decide how: between two ends (`PbLinearDataMapping`), by
/// functions of the program (`PbNonLinearDataMapping`), by a table of levels (`PbNonLinearDataMapping2`).
/// This class cuts values off at two thresholds first.
///
/// \code
///   PbLinearDataMapping heights;
///   heights.setValues(0.0f, SbColor(0, 0.3f, 0), 2500.0f, SbColor(1, 1, 1));
///   heights.setMinThreshold(0.0f, SbColor(0, 0, 1), 0.0f); // the sea is blue
///   heights.enableThresholds(1, 0);
///   const SbColor *color = heights.getRGBColor(1200.0f);
/// \endcode
///
/// A null colour means that no colour belongs to the value: the representation leaves that part out. A value
/// equal to a threshold, and a value that is not a number, count as beyond an enabled threshold.
///
/// Colours given as three floats are HLS colours, see `PiColorConverter`. Setters ignore a null colour array:
/// the call changes nothing.
class ORAVANE_API PbDataMapping : public PbBase {
public:
    enum ClassType {
        DATA_MAPPING = 0,
        LINEAR = 1,
        NON_LINEAR = 2,  ///< with functions
        NON_LINEAR2 = 3, ///< with a table
    };

    PbDataMapping(const PbDataMapping &) = delete;
    PbDataMapping &operator=(const PbDataMapping &) = delete;

    virtual ClassType getClassType() const { return DATA_MAPPING; }

    /// Values not above `value` have no colour, or the given one. The connected kits are told
    /// (`CHANGE_GENERAL`) only when the threshold is enabled.
    void setMinThreshold(float value);
    void setMinThreshold(float value, const SbColor &color, float transparency);
    void setMinThreshold(float value, const float hls[3], float transparency);

    /// Values not below `value` have no colour, or the given one.
    void setMaxThreshold(float value);
    void setMaxThreshold(float value, const SbColor &color, float transparency);
    void setMaxThreshold(float value, const float hls[3], float transparency);

    /// The threshold, enabled or not, and its colour; null when it has none. The RGB pointers stay valid as
    /// long as the mapping, the HLS ones until the next call that gives an HLS colour of this mapping.
    const SbColor *getMinRGBThreshold(float &value) const;
    const SbColor *getMinRGBThreshold(float &value, float &transparency) const;
    const float *getMinHLSThreshold(float &value) const;
    const float *getMinHLSThreshold(float &value, float &transparency) const;
    const SbColor *getMaxRGBThreshold(float &value) const;
    const SbColor *getMaxRGBThreshold(float &value, float &transparency) const;
    const float *getMaxHLSThreshold(float &value) const;
    const float *getMaxHLSThreshold(float &value, float &transparency) const;

    /// Both thresholds are off at the start. Always tells the kits.
    void enableThresholds(int min, int max);
    void thresholdsEnabled(int &min, int &max) const;

    /// Says whether representations use the transparencies of this mapping; off at the start. Always tells
    /// the kits.
    void enableTransparency(int enable);
    int isTransparencyEnabled() const { return m_transparencyEnabled; }

    /// Colour of `value`, or null when it has none. The pointer is valid until the next computation of this
    /// mapping. `transparency` is that of the threshold where a threshold applies, with or without a colour.
    const SbColor *getRGBColor(float value) const { return computeColor(value); }
    const SbColor *getRGBColor(float value, float &transparency) const {
        return computeColor(value, transparency);
    }

    /// The same colour in HLS; valid until the next call that gives an HLS colour of this mapping.
    const float *getHLSColor(float value) const;
    const float *getHLSColor(float value, float &transparency) const;

    /// Colours of `count` values at once, each the one that `getRGBColor` gives: the way to colour the nodes
    /// of a large mesh.
    ///
    /// `values` and `colors` have `count` entries; `transparencies` and `hasColor` have as many, or are null
    /// when they are not wanted. `hasColor[i]` gets 1, or 0 where the value has no colour; `colors[i]` is
    /// black there. Returns the number of values that have a colour, so that a result of `count` needs no
    /// look at the mask.
    std::size_t computeColors(std::size_t count, const float *values, SbColor *colors,
                              float *transparencies = nullptr, unsigned char *hasColor = nullptr) const;

    /// Transparency from which on `PoBase::deleteTransparencyParts` takes a part away; 0.95 at the start.
    void setTransparencyValueDeletedParts(float value);
    float getTransparencyValueDeletedParts() const { return m_transparencyValueDeletedParts; }

protected:
    PbDataMapping() = default;

    /// First step of every computation: true when a threshold decides; then `color` (null: none) and
    /// `transparency` are its own.
    bool isBeyondThreshold(float value, const SbColor *&color, float &transparency) const;

    /// Colour on the straight line in RGB through `color1` at `value1` and `color2` at `value2`. Not limited
    /// to the two ends: beyond them each component goes on and is cut to 0..1. With equal ends the result is
    /// some colour with components from 0 to 1.
    static void colorInterpolation(const SbColor &color1, float value1, const SbColor &color2, float value2,
                                   float value, SbColor &result);
    static void colorInterpolation(const SbColor &color1, float value1, float transparency1,
                                   const SbColor &color2, float value2, float transparency2, float value,
                                   SbColor &result, float &transparency);
    static float transparencyInterpolation(float value1, float transparency1, float value2,
                                           float transparency2, float value);

    /// Body of `computeColorsOf` of the children: `color` is called as `const SbColor *(float, float &)`.
    template <class ColorOfValue>
    static std::size_t colorEach(std::size_t count, const float *values, SbColor *colors,
                                 float *transparencies, unsigned char *hasColor, ColorOfValue color);

    mutable SbColor m_color{0.0f, 0.0f, 0.0f};

private:
    struct Threshold {
        float value;
        float transparency = 0.0f;
        SbColor color{0.0f, 0.0f, 0.0f};
        int isEnabled = 0;
        int hasColor = 0;
    };

    virtual const SbColor *computeColor(float value, float &transparency) const = 0;
    virtual const SbColor *computeColor(float value) const = 0;
    /// Pointers are checked and `count` is not 0. A child that can do without a virtual call for each value
    /// overrides it.
    virtual std::size_t computeColorsOf(std::size_t count, const float *values, SbColor *colors,
                                        float *transparencies, unsigned char *hasColor) const;

    void setThreshold(Threshold &threshold, float value);
    void setThreshold(Threshold &threshold, float value, const SbColor &color, float transparency);
    void setThreshold(Threshold &threshold, float value, const float *hls, float transparency);
    static const SbColor *getThreshold(const Threshold &threshold, float &value, float &transparency);
    const float *toHLS(const SbColor *color) const;

    float m_transparencyValueDeletedParts = 0.95f;
    int m_transparencyEnabled = 0;
    Threshold m_minThreshold{0.0f};
    Threshold m_maxThreshold{1.0f};
    mutable float m_hls[3] = {0.0f, 0.0f, 0.0f};
};

#endif
