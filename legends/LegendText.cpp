#include "legends/LegendText.h"

#include "text/TextLayout.h"

namespace oravane {

namespace {

constexpr const char *kBase = "x 10";
constexpr float kRaise = 0.5f;       ///< of the exponent, in font sizes
constexpr float kExponentGap = 0.1f; ///< before it

} // namespace

std::vector<SbVec2f> textSizes(PiText text, std::span<const SbString> strings) {
    std::vector<SbVec2f> sizes;
    sizes.reserve(strings.size());
    text.setFontSize(1);
    for (const SbString &string : strings) {
        SbBox2f box;
        int numLines = 0;
        text.setString(string.getString());
        text.getLimit(box, numLines);
        const float width = box.isEmpty() ? 0 : box.getMax()[0] - box.getMin()[0];
        sizes.emplace_back(width, static_cast<float>(std::max(numLines, 1) - 1) + kCapitalHeight);
    }
    return sizes;
}

void buildCentred(PiText &text, const SbVec2f &middle) {
    SbBox2f box;
    int numLines = 0;
    text.setAlignment(PiText::HOR_CENTER, PiText::VERT_HALF);
    text.setOrigin(middle);
    text.getLimit(box, numLines);
    if (box.isEmpty())
        return;
    text.setOrigin(2 * middle - box.getCenter());
    text.build();
}

MultiplicationFactor::MultiplicationFactor(const PiText &text, int tenPower)
    : m_text(text), m_tenPower(tenPower), m_exponent(tenPower) {
    m_text.setMultiLinesEnable(0);
    m_text.setPath(PiText::TEXT_PATH_RIGHT);
    m_text.setAlignment(PiText::HOR_LEFT, PiText::VERT_HALF);
    m_text.setFontSize(1);
    float height = 0;
    m_text.getStringSizes(kBase, m_baseWidth, height);
    m_text.getStringSizes(m_exponent.getString(), m_exponentWidth, height);
}

float MultiplicationFactor::width() const {
    return isShown() ? m_baseWidth + kExponentGap + m_exponentWidth : 0;
}

void MultiplicationFactor::build(const SbVec2f &origin, float fontSize) {
    m_text.setFontSize(fontSize);
    m_text.setOrigin(origin);
    m_text.setString(kBase);
    m_text.build();
    m_text.setOrigin(origin + fontSize * SbVec2f(m_baseWidth + kExponentGap, kRaise));
    m_text.setString(m_exponent.getString());
    m_text.build();
}

} // namespace oravane
