#include <oravane/PiText.h>

#include "text/TextMeasure.h"

#include <oravane/PbMiscTextAttr.h>
#include <oravane/PoBase.h>
#include <oravane/SoAnnoText3.h>

#include <Inventor/nodes/SoTransform.h>
#include <Inventor/nodes/SoTransformSeparator.h>

#include <algorithm>
#include <cmath>

using oravane::TextLines;

namespace {

// Font metrics that are taken for every font, in multiples of the size: half of the capitals is rounded.
constexpr float kAscender = 0.73f, kCapital = 0.65f, kHalfCapital = 0.32f, kDescender = 0.28f;

template <class Vector>
bool isFinite(const Vector &v) {
    return std::isfinite(v.dot(v)); // no component is too large to be squared, either
}

std::string_view viewOf(const char *text) {
    return text ? text : "";
}

SoText3::Justification justificationOf(PiText::HorAlignment alignment) {
    switch (alignment) {
    case PiText::HOR_RIGHT:
        return SoText3::RIGHT;
    case PiText::HOR_CENTER:
        return SoText3::CENTER;
    default:
        return SoText3::LEFT;
    }
}

/// How far the first line's base stands above the origin.
float verticalOffset(PiText::VertAlignment alignment, int numLines, float size) {
    const float height = static_cast<float>(numLines - 1) * size; // from the first base to the last
    switch (alignment) {
    case PiText::VERT_TOP:
        return -kAscender * size;
    case PiText::VERT_CAP:
        return -kCapital * size;
    case PiText::VERT_HALF:
        return height / 2 - kHalfCapital * size;
    case PiText::VERT_BOTTOM:
        return height + kDescender * size;
    default:
        return height;
    }
}

/// The end of the line that `text` starts with, and where the next one starts: 0 behind the last.
struct LineEnd {
    std::size_t length, next;
};

LineEnd firstLine(std::string_view text, char endLineChar, int lineLength) {
    if (lineLength == 0)
        return {text.size(), 0};
    const auto skipEnds = [&](std::size_t at) {
        return std::min(text.find_first_not_of(endLineChar, at), text.size());
    };
    std::size_t previous = std::string_view::npos, at = 0, end = 0;
    for (;;) {
        end = std::min(text.find(endLineChar, at), text.size());
        if (end == text.size() || static_cast<std::ptrdiff_t>(end) >= lineLength)
            break;
        previous = end;
        at = skipEnds(end);
    }
    if (static_cast<std::ptrdiff_t>(end) > lineLength && previous != std::string_view::npos)
        end = previous;
    const std::size_t next = skipEnds(end);
    return {end, next == text.size() ? 0 : next};
}

/// Calls `take` with each line of `text`.
template <class Take>
void forEachLine(std::string_view text, char endLineChar, int lineLength, Take take) {
    for (std::size_t next = 1; next != 0;) {
        const LineEnd line = firstLine(text, endLineChar, lineLength);
        take(text.substr(0, line.length));
        next = line.next;
        text.remove_prefix(next);
    }
}

SbVec2f extent(const SbBox3f &box) {
    if (box.isEmpty())
        return {0, 0};
    const SbVec3f size = box.getMax() - box.getMin();
    return {size[0], size[1]};
}

} // namespace

/// Where a text's own space lies: scaled, turned and moved, in this order.
struct PiText::Placement {
    SbVec3f scale{0, 0, 0};
    SbRotation rotation;
    SbVec3f translation;

    SbMatrix matrix() const {
        SbMatrix m;
        m.setTransform(translation, rotation, scale);
        return m;
    }
};

// ------------------------------------------------------------------------------------------------- setters

void PiText::setString(const char *string) {
    m_string = string ? string : "";
}

void PiText::setOrigin(const SbVec3f &origin) {
    if (isFinite(origin))
        m_origin = origin;
}

void PiText::setDirectionVectors(const SbVec3f vectors[2]) {
    if (!vectors || !isFinite(vectors[0]) || !isFinite(vectors[1]))
        return;
    for (int i = 0; i < 2; ++i) {
        m_directionVectors[i] = vectors[i];
        m_directionVectors[i].normalize();
    }
}

void PiText::setCharUpVec(const SbVec2f &vector) {
    if (isFinite(vector))
        m_charUpVec = vector;
}

void PiText::setPath(Path path) {
    static const SbVec2f upVectors[] = {{0, 1}, {0, -1}, {-1, 0}, {1, 0}};
    if (path >= TEXT_PATH_RIGHT && path <= TEXT_PATH_DOWN)
        m_charUpVec = upVectors[path];
}

void PiText::setAlignment(HorAlignment horizontal, VertAlignment vertical) {
    setHorAlignment(horizontal);
    setVertAlignment(vertical);
}

void PiText::setFont(const char *name, float size) {
    setFontName(name);
    setFontSize(size);
}

void PiText::setFontName(const char *name) {
    if (name)
        m_fontName = oravane::nameOf(name);
}

void PiText::setFontSize(float size) {
    if (std::isfinite(size))
        m_fontSize = size;
}

void PiText::setMultiLines(char endLineChar, int lineLength) {
    m_endLineChar = endLineChar;
    m_lineLength = lineLength;
}

void PiText::setName(const SbString &name) {
    m_nodeName = name;
    m_isNamed = true;
}

void PiText::setTextAttributes(const PbMiscTextAttr *attributes) {
    if (!attributes)
        return;
    m_fontName = oravane::nameOf(attributes->getFontName());
    attributes->getLineLength(m_endLineChar, m_lineLength);
}

// ------------------------------------------------------------------------------------------------ building

void PiText::build() {
    int numLines;
    build(numLines);
}

void PiText::build(int &numLines) {
    if (m_group)
        buildP(false, true, numLines);
}

void PiText::build(SbBox2f &box, int &numLines) {
    if (!m_group)
        return;
    buildP(true, true, numLines);
    reportBox(box);
}

void PiText::getLimit(SbBox2f &box, int &numLines) {
    buildP(true, false, numLines);
    reportBox(box);
}

void PiText::reportBox(SbBox2f &box) const {
    box.makeEmpty();
    if (m_boundingBox.isEmpty())
        return;
    const SbVec3f &lower = m_boundingBox.getMin(), &upper = m_boundingBox.getMax();
    box.setBounds(lower[0], lower[1], upper[0], upper[1]);
}

void PiText::buildP(bool wantBox, bool addToGroup, int &numLines) {
    const TextLines lines = linesOf(m_string.getString());
    numLines = lines.count();
    const Placement place = placement(lines);
    if (wantBox) {
        m_boundingBox = boxOf(lines, m_fontSize, m_horAlignment);
        if (!m_boundingBox.isEmpty())
            m_boundingBox.transform(place.matrix());
    }
    if (addToGroup)
        addNodes(lines, place);
}

/// The shift, the turn and the lift of the text in its plane come before the plane's own place. The rows of
/// the plane are at right angles, so scaling and rotation can be told apart without solving for them.
PiText::Placement PiText::placement(const TextLines &lines) const {
    const auto &[base, up] = m_directionVectors;
    SbVec3f axes[3];
    axes[2] = base.cross(up);
    axes[1] = m_charUpVec[0] * base + m_charUpVec[1] * up;
    axes[0] = axes[1].cross(axes[2]);
    float shift = 0;
    if (m_mirrorEnable && m_horAlignment != HOR_CENTER) {
        const float width = extent(boxOf(lines, m_fontSize, m_horAlignment))[0];
        shift = m_horAlignment == HOR_RIGHT ? -width : width;
    }
    const float lift = verticalOffset(m_vertAlignment, lines.count(), m_fontSize);
    Placement place;
    place.translation = m_origin + shift * axes[0] + lift * axes[1];
    place.scale.setValue(axes[0].length(), axes[1].length(), axes[2].length());
    if (!(place.scale[0] > 0)) { // then the text has no plane to lie in
        place.scale.setValue(0, 0, 0);
        return place;
    }
    SbMatrix turn = SbMatrix::identity();
    for (int i = 0; i < 3; ++i) {
        axes[i] *= (m_mirrorEnable && i != 1 ? -1.0f : 1.0f) / place.scale[i];
        std::copy_n(axes[i].getValue(), 3, turn[i]);
    }
    place.rotation.setValue(turn);
    return place;
}

void PiText::addNodes(const TextLines &lines, const Placement &place) const {
    auto *transform = new SoTransform;
    transform->translation = place.translation;
    transform->rotation = place.rotation;
    transform->scaleFactor = place.scale;
    SoText3 *text = PoBase::getTextType() == PoBase::ANNO_TEXT3_NODE ? new SoAnnoText3 : new SoText3;
    if (m_isNamed)
        text->setName(oravane::nameOf(m_nodeName));
    int line = 0;
    text->string.setNum(lines.count());
    lines.forEach([&](std::string_view string) { text->string.set1Value(line++, string.data()); });
    text->justification = justificationOf(m_horAlignment);
    auto *separator = new SoTransformSeparator;
    separator->addChild(transform);
    separator->addChild(text);
    m_group->addChild(separator);
}

// ----------------------------------------------------------------------------------------------- measuring

TextLines PiText::linesOf(const char *text) const {
    TextLines lines;
    forEachLine(viewOf(text), m_endLineChar, m_multiLinesEnable ? m_lineLength : 0,
                [&](std::string_view line) { lines.add(line); });
    return lines;
}

SbBox3f PiText::boxOf(const TextLines &lines, float fontSize, HorAlignment alignment) const {
    return oravane::textBox(m_fontName, fontSize, 1, justificationOf(alignment), lines);
}

SbVec2f PiText::sizeOf(const char *text, float fontSize) const {
    return extent(boxOf(linesOf(text), fontSize, HOR_LEFT));
}

void PiText::getStringSizes(const char *text, float &width, float &height) const {
    sizeOf(text, m_fontSize).getValue(width, height);
}

void PiText::getStringsSizes(const char *const texts[], int n, int &widestIndex, int &highestIndex,
                             float &maxWidth, float &maxHeight) const {
    widestIndex = highestIndex = 0;
    maxWidth = maxHeight = 0;
    for (int i = 0; texts && i < n; ++i) {
        const SbVec2f size = sizeOf(texts[i], m_fontSize);
        if (size[0] > maxWidth) {
            maxWidth = size[0];
            widestIndex = i;
        }
        if (size[1] > maxHeight) {
            maxHeight = size[1];
            highestIndex = i;
        }
    }
}

int PiText::getSubStringNum(const char *text) const {
    int count = 0;
    forEachLine(viewOf(text), m_endLineChar, m_lineLength,
                [&](std::string_view line) { count += !line.empty(); });
    return count;
}

float PiText::computeFontSize(const char *text, float startSize, float decrement, float maxWidth,
                              float maxHeight) const {
    if (!(startSize > 0 && decrement > 0 && maxWidth > 0 && maxHeight > 0) || std::isinf(startSize))
        return -1;
    for (float size = startSize;;) {
        const SbVec2f extent = sizeOf(text, size);
        if (extent[0] <= maxWidth && extent[1] <= maxHeight)
            return size;
        // Extents grow with the size: of a great many steps, those that are too large for sure are not
        // measured.
        const float aim = size * std::min(maxWidth / extent[0], maxHeight / extent[1]);
        const float leap = std::floor((size - 1.001f * aim) / decrement) - 1;
        if (leap > 1000)
            size -= leap * decrement;
        const float next = size - decrement;
        if (!(next > 0) || next == size)
            return size;
        size = next;
    }
}
