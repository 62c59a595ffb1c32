#ifndef ORAVANE_LEGENDS_LEGENDTEXT_H
#define ORAVANE_LEGENDS_LEGENDTEXT_H

#include <oravane/PiText.h>

#include <Inventor/SbString.h>
#include <Inventor/SbVec2f.h>

#include <span>
#include <vector>

namespace oravane {

/// Widths and heights of texts in the builder's font at size 1: the height from the base of the last line to
/// the capitals of the first.
std::vector<SbVec2f> textSizes(PiText text, std::span<const SbString> strings);

/// Builds the present string of `text` so that its letters have their middle at `middle`.
void buildCentred(PiText &text, const SbVec2f &middle);

/// The text "x 10" with a raised exponent.
class MultiplicationFactor {
public:
    /// No factor for a power of 0.
    MultiplicationFactor(const PiText &text, int tenPower);

    bool isShown() const { return m_tenPower != 0; }
    /// At font size 1; the height is `kFactorHeight`.
    float width() const;
    /// Builds both texts; the left end of "x 10" and the middle of its letters are at `origin`.
    void build(const SbVec2f &origin, float fontSize);

private:
    PiText m_text; ///< of the group and font of the factor
    int m_tenPower;
    SbString m_exponent;
    float m_baseWidth = 0, m_exponentWidth = 0; ///< at font size 1
};

} // namespace oravane

#endif
