// What an axis is drawn with: each adds to a group, and widens the limit that the next one keeps clear of.
#include <oravane/PoAxis.h>

#include "core/ShapeGroup.h"
#include "text/TextLayout.h"

#include <oravane/PiText.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <string>
#include <utility>

using oravane::kCapitalHeight;
using oravane::LetterEdge;
using oravane::TextSide;

float PoAxis::lengthOf(float fraction) const {
    const float length = fraction * m_attr.scaleAlong;
    return std::isfinite(length) ? length : 0;
}

void PoAxis::widenLimit(float x, float y) {
    if (!std::isfinite(x + y))
        return;
    Plimit &limit = m_attr.limit;
    limit = {std::min(limit.xmin, x), std::max(limit.xmax, x), std::min(limit.ymin, y),
             std::max(limit.ymax, y)};
}

void PoAxis::buildArrow(float start, float end, SoGroup *group) {
    if (m_attr.arrowVisibility != VISIBILITY_ON)
        return;
    if (!(m_attr.arrowHeight > 0))
        m_attr.arrowHeight = 0.03f;
    if (!(m_attr.arrowLength > 0))
        m_attr.arrowLength = 0.05f;
    const float half = lengthOf(m_attr.arrowHeight) / 2, length = lengthOf(m_attr.arrowLength);
    const float tip = end > start ? end + length : end - length;
    if (!std::isfinite(tip))
        return;
    const SbVec3f corners[] = {{end, half, 0}, {end, -half, 0}, {tip, 0, 0}};
    oravane::addUniformShape<SoFaceSet>(group, corners, 3);
    widenLimit(tip, half);
    widenLimit(tip, -half);
}

namespace {

/// Adds a segment from y1 to y2 at each coordinate.
void addSegments(std::span<const float> coords, float y1, float y2, std::vector<SbVec3f> &points) {
    for (const float x : coords) {
        points.emplace_back(x, y1, 0.0f);
        points.emplace_back(x, y2, 0.0f);
    }
}

} // namespace

void PoAxis::buildTick(int n, const float *coords, float length, SoGroup *group) {
    if (m_attr.tickVisibility != VISIBILITY_ON || n < 1)
        return;
    float from = 0, to = lengthOf(length);
    if (m_attr.grad.position != GRAD_ABOVE)
        to = -to;
    if (m_attr.tickPosition == TICK_GRAD_OTHER_SIDE)
        to = -to;
    if (m_attr.tickPosition == TICK_ACROSS_AXIS) {
        to = lengthOf(length) / 2;
        from = -to;
    }
    std::vector<SbVec3f> points;
    addSegments({coords, static_cast<std::size_t>(n)}, from, to, points);
    oravane::addUniformShape<SoLineSet>(group, points, 2);
    m_attr.limit.ymin = std::min({m_attr.limit.ymin, from, to});
    m_attr.limit.ymax = std::max({m_attr.limit.ymax, from, to});
}

void PoAxis::buildGridLines(int n, const float *coords, SoGroup *group) {
    if (m_attr.gridVisibility != VISIBILITY_ON || n < 1)
        return;
    // The transform of the axis stretches its local y by the inverse of this factor.
    const float factor =
        (m_attr.grad.position == GRAD_ABOVE ? 1.0f : -1.0f) * m_attr.scaleAlong / m_attr.scalePerpendicular;
    std::vector<SbVec3f> points;
    for (const float length :
         {-std::abs(m_attr.gridLengthGradOtherSide) * factor, std::abs(m_attr.gridLengthGradSide) * factor})
        if (length != 0 && std::isfinite(length))
            addSegments({coords, static_cast<std::size_t>(n)}, 0, length, points);
    if (!points.empty())
        oravane::addUniformShape<SoLineSet>(group, points, 2);
}

PoAxis::TextPath PoAxis::effectivePath(TextPath path) const {
    if (m_attr.reverseFlag != AXIS_REVERSE)
        return path;
    return path == PATH_UP ? PATH_DOWN : path == PATH_DOWN ? PATH_UP : path;
}

void PoAxis::prepareText(PiText &text, const SbString &fontName, SoGroup *group) const {
    text.setMirrorEnable(m_attr.reverseFlag == AXIS_REVERSE);
    text.setGroup(group);
    text.setMultiLines(m_attr.endLineChar, m_attr.lineLength);
    text.setFontName(fontName);
}

void PoAxis::buildLabel(PiText &text, float x, float y, const char *string) {
    SbBox2f box;
    int numLines = 0;
    text.setOrigin(x, y);
    text.setString(string);
    text.build(box, numLines);
    if (box.isEmpty())
        return;
    widenLimit(box.getMin()[0], box.getMin()[1]);
    widenLimit(box.getMax()[0], box.getMax()[1]);
}

namespace {

void setPathAndSide(PiText &text, PoAxis::TextPath path, TextSide side) {
    const auto textPath = static_cast<PiText::Path>(path);
    const oravane::TextAlignment alignment = oravane::alignmentAt(side, textPath, LetterEdge::Capitals);
    text.setPath(textPath);
    text.setAlignment(alignment.horizontal, alignment.vertical);
}

} // namespace

void PoAxis::buildGrads(int n, const float *coords, const char *const *strings, SoGroup *group) {
    if (m_attr.grad.visibility != VISIBILITY_ON || !strings || n < 1) {
        m_attr.grad.fontSize = 0;
        return;
    }
    buildGradRow(effectivePath(m_attr.grad.path), true, n, coords, strings, group);
}

void PoAxis::buildGradRow(TextPath path, bool isFirstRow, int n, const float *coords,
                          const char *const *strings, SoGroup *group) {
    PiText text;
    prepareText(text, m_attr.grad.fontName, group);
    setPathAndSide(text, path, m_attr.grad.position == GRAD_ABOVE ? TextSide::Above : TextSide::Below);
    const float size = gradFontSizeInForce(text, n, coords, strings);
    m_attr.grad.fontSize = size / m_attr.scaleAlong;
    text.setFontSize(size);
    const float y = gradBaseline(size, isFirstRow);
    for (int i = 0; i < n; ++i)
        buildLabel(text, coords[i], y, strings[i]);
}

/// Neighbours keep a fifth of their distance free. A single label has the length of the axis.
float PoAxis::gradFontSizeInForce(const PiText &text, int n, const float *coords,
                                  const char *const *strings) const {
    if (m_attr.grad.fontSize > 0)
        return lengthOf(m_attr.grad.fontSize);
    const float size = 0.04f * m_attr.scaleAlong;
    const float room = 0.8f * (n > 1 ? std::abs(coords[1] - coords[0]) : m_length);
    if (m_attr.grad.path == PATH_RIGHT || m_attr.grad.path == PATH_LEFT) {
        PiText measure = text;
        measure.setFontSize(size);
        int widest = 0, highest = 0;
        float width = 0, height = 0;
        measure.getStringsSizes(strings, n, widest, highest, width, height);
        return width > room ? size * room / width : size;
    }
    int numLines = 0;
    for (int i = 0; i < n; ++i)
        numLines = std::max(numLines, text.getSubStringNum(strings[i]));
    const auto lines = static_cast<float>(numLines);
    return (lines - 1) * size + kCapitalHeight * size > room ? room / lines : size;
}

/// Where the texts begin, beyond all that is drawn so far or as far from the axis as wanted.
float PoAxis::gradBaseline(float size, bool isFirstRow) {
    const bool isAbove = m_attr.grad.position == GRAD_ABOVE;
    if (isFirstRow && m_attr.grad.distAxis != 0)
        return (isAbove ? 1.0f : -1.0f) * lengthOf(m_attr.grad.distAxis);
    const float y =
        isAbove ? m_attr.limit.ymax + kCapitalHeight * size : m_attr.limit.ymin - kCapitalHeight * size;
    if (isFirstRow)
        m_attr.grad.distAxis = y / m_attr.scaleAlong;
    return y;
}

void PoAxis::buildTitle(float start, float end, SoGroup *group) {
    TitleAttr &attr = m_attr.title;
    if (attr.visibility != VISIBILITY_ON)
        return;
    if (!(attr.fontSize > 0))
        attr.fontSize = 0.055f;
    const float size = lengthOf(attr.fontSize), distance = lengthOf(attr.distAxis);
    const bool isBelow = m_attr.grad.position == GRAD_BELOW, isRising = start < end;
    PiText text;
    prepareText(text, attr.fontName, group);
    text.setFontSize(size);
    float x = std::midpoint(start, end), y = 0;
    if (attr.position == TITLE_MIDDLE) {
        setPathAndSide(text, effectivePath(attr.path), isBelow ? TextSide::Below : TextSide::Above);
        if (attr.distAxis != 0)
            y = isBelow ? -distance : distance;
        else
            y = isBelow ? m_attr.limit.ymin - size : m_attr.limit.ymax + size;
    } else {
        setPathAndSide(text, effectivePath(attr.path), isRising ? TextSide::Right : TextSide::Left);
        const float sign = isRising ? 1.0f : -1.0f;
        if (attr.distAxis == 0) {
            x = (isRising ? m_attr.limit.xmax : m_attr.limit.xmin) + sign * kCapitalHeight * size;
            attr.distAxis = std::abs(x - (isRising ? end : start)) / m_attr.scaleAlong;
        } else {
            x = isRising ? end + distance : start - distance;
        }
    }
    buildLabel(text, x, y, titleString.getValue().getString());
}

// --------------------------------------------------------------------------------- multiplication factor

namespace {

const char kTimesTen[] = "x 10";

/// The two texts of a factor, in the order in which they stand from their anchor outwards.
struct FactorTexts {
    struct Entry {
        const char *string;
        bool isExponent;
    };
    FactorTexts(const char *exponent, bool exponentIsFirst) {
        entries[0] = {kTimesTen, false};
        entries[1] = {exponent, true};
        if (exponentIsFirst)
            std::swap(entries[0], entries[1]);
    }
    Entry entries[2];
};

} // namespace

void PoAxis::buildMultFactorAtExtr(int tenPower, float from, float to, float &distAxis, SoGroup *group) {
    const float size = lengthOf(m_attr.grad.fontSize);
    float right = to + lengthOf(distAxis), left = to - lengthOf(distAxis);
    if (distAxis == 0) {
        right = m_attr.limit.xmax + kCapitalHeight * size;
        left = m_attr.limit.xmin - kCapitalHeight * size;
        distAxis = std::abs(right - to) / m_attr.scaleAlong;
    }
    PiText text;
    prepareText(text, m_attr.grad.fontName, group);
    text.setFontSize(size);
    text.setMultiLinesEnable(0);
    const std::string exponent = std::to_string(tenPower);
    const bool isRight = from < to;
    const TextPath path = effectivePath(m_attr.grad.path);
    if (path == PATH_UP || path == PATH_DOWN)
        stackFactor(text, path, exponent.c_str(), isRight, isRight ? right : left, size);
    else
        chainFactor(text, path, exponent.c_str(), isRight, isRight ? right : left, size);
}

/// Beside each other along the axis, so that they read along the path.
void PoAxis::chainFactor(PiText &text, TextPath path, const char *exponent, bool isRight, float anchor,
                         float size) {
    const bool readsRight = path != PATH_LEFT, isMirrored = m_attr.reverseFlag == AXIS_REVERSE;
    setPathAndSide(text, path, isRight ? TextSide::Right : TextSide::Left);
    const FactorTexts texts(exponent, (readsRight == isRight) == isMirrored);
    float x = anchor;
    for (const FactorTexts::Entry &entry : texts.entries) {
        const float raised = readsRight ? 0.5f * size : -0.5f * size;
        buildLabel(text, x, entry.isExponent ? raised : 0, entry.string);
        float width = 0, height = 0;
        text.getStringSizes(entry.string, width, height);
        x += isRight ? width : -width;
    }
}

/// Above each other across the axis, centred on it.
void PoAxis::stackFactor(PiText &text, TextPath path, const char *exponent, bool isRight, float anchor,
                         float size) {
    const bool isUp = path == PATH_UP, isMirrored = m_attr.reverseFlag == AXIS_REVERSE;
    text.setPath(static_cast<PiText::Path>(path));
    text.setAlignment(!isUp && !isRight ? PiText::HOR_RIGHT : PiText::HOR_LEFT,
                      isUp == isRight ? PiText::VERT_CAP : PiText::VERT_BASE);
    float width = 0, exponentWidth = 0, height = 0;
    text.getStringSizes(kTimesTen, width, height);
    text.getStringSizes(exponent, exponentWidth, height);
    const float centre = (width + exponentWidth) / 2;
    // From below to above, except down the right side.
    const float direction = !isUp && isRight ? -1.0f : 1.0f;
    const FactorTexts texts(exponent, (!isUp && !isRight) != isMirrored);
    float y = -direction * centre;
    for (const FactorTexts::Entry &entry : texts.entries) {
        // The exponent lies towards the tops of the letters: to the left of those that run up.
        const float lowered = isRight ? (isUp != entry.isExponent ? 0.5f * size : 0)
                                      : (isUp == entry.isExponent ? -0.5f * size : 0);
        buildLabel(text, anchor + lowered, y, entry.string);
        const SbBox3f &box = text.getBoundingBox();
        if (!box.isEmpty())
            y += direction * (box.getMax()[1] - box.getMin()[1]);
    }
}
