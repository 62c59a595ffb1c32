#include <oravane/SoVectorizeHPGLAction.h>

#include "vectorize/PageFormat.h"
#include "vectorize/PageText.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>
#include <string>

ORAVANE_VECTORIZE_BEGIN

namespace {

constexpr float kUnitsPerMillimeter = 40;
constexpr float kPointInMillimeters = 0.35277778f;
constexpr int kPaletteSize = 256;
constexpr int kRealDigits = 6;         ///< as "%f"
constexpr float kLeastWritten = 0.01f; ///< what "%.2f" does not write as 0
constexpr char kEndOfLabel = '\x03';

/// Device units stay below this, so that their differences are within what a device must take.
constexpr float kFarthest = 0x1p28f;

float limited(float units) {
    if (std::fabs(units) <= kFarthest)
        return units;
    return std::isnan(units) ? 0.0f : std::copysign(kFarthest, units);
}

/// A number of the Polyline Encoded form: its sign in the lowest bit, then digits of 6 bits from the lowest
/// on, of which the last one stands in the upper half of the character set.
char *putEncoded(char *at, int value) {
    const auto bits = static_cast<std::uint32_t>(value);
    std::uint32_t rest = value >= 0 ? 2 * bits : 1 - 2 * bits;
    for (; rest >= 64; rest /= 64)
        *at++ = static_cast<char>(rest % 64 + 63);
    *at++ = static_cast<char>(rest + 191);
    return at;
}

constexpr std::size_t kLongestEncoded = 6;

oravane::PageText &encoded(oravane::PageText &text, int value) {
    char digits[kLongestEncoded];
    return text << std::string_view(digits, putEncoded(digits, value) - digits);
}

/// Control characters would end the label, or the page.
std::string labelOf(const char *string) {
    std::string label(string ? string : "");
    std::erase_if(label, [](unsigned char c) { return c < ' ' || c == 0x7F; });
    return label;
}

} // namespace

/// What the device has been told, and the text on its way to the file.
struct SoVectorizeHPGLAction::Page {
    oravane::PageText text;
    int pen = -1;
    float lineWidth = -1; ///< a device starts with 0.35 mm, which is not quite the nominal width
    unsigned short pattern = oravane::kSolidPattern;
    float fontSize = -1;
    std::string fontName;
    int justification = -1;
    float angle = 0;
    bool hasWindow = false;
    SbBox2f window;
    bool penMayBeDown = false; ///< encoded points leave it down on some devices
};

/// Where the device's pen goes: whole units, each cut towards the pen's present place.
class SoVectorizeHPGLAction::Trace {
public:
    Trace(const SoVectorizeHPGLAction &action, const SbVec4f &start)
        : m_offsetX(action.getOffsetX()), m_offsetY(action.getOffsetY()) {
        moveTo(start);
    }

    int x() const { return m_x; }
    int y() const { return m_y; }

    void moveTo(const SbVec4f &point) {
        m_x = static_cast<int>(units(point[0], m_offsetX));
        m_y = static_cast<int>(units(point[1], m_offsetY));
    }

    /// Writes the differences to the points of `line` after its first, where the pen is; a difference that
    /// does not move the pen is left out, its remainder counts in the next one.
    void writeSteps(std::span<const SbVec4f> line, oravane::PageText &text) {
        for (const SbVec4f &point : line.subspan(1)) {
            const int dx = static_cast<int>(units(point[0], m_offsetX) - static_cast<float>(m_x));
            const int dy = static_cast<int>(units(point[1], m_offsetY) - static_cast<float>(m_y));
            if (dx == 0 && dy == 0)
                continue;
            m_x += dx;
            m_y += dy;
            char pair[2 * kLongestEncoded];
            text << std::string_view(pair, putEncoded(putEncoded(pair, dx), dy) - pair);
        }
    }

private:
    static float units(float millimeters, float offset) {
        return limited((millimeters + offset) * kUnitsPerMillimeter);
    }

    float m_offsetX, m_offsetY;
    int m_x = 0, m_y = 0;
};

SoVectorizeHPGLAction::SoVectorizeHPGLAction()
    : m_hpglOutput(std::make_unique<SoHPGLVectorOutput>()), m_page(std::make_unique<Page>()) {
    setOutput(m_hpglOutput.get());
}

SoVectorizeHPGLAction::~SoVectorizeHPGLAction() {
    closePage();
}

SoHPGLVectorOutput *SoVectorizeHPGLAction::getOutput() const {
    return m_hpglOutput.get();
}

/// Every operation ends with this, so that a driver's child may write to the stream between them.
void SoVectorizeHPGLAction::send() {
    m_hpglOutput->write(m_page->text.view());
    m_page->text.clear();
}

// ---------------------------------------------------------------------------------------- frame of the page

void SoVectorizeHPGLAction::writePalette() {
    const int numPens = getPenNum();
    for (int i = 0; i < (numPens > 0 ? numPens : kPaletteSize); ++i) {
        const oravane::ColorBytes color =
            numPens > 0 ? oravane::colorBytes(getPenColor(i)) : oravane::paletteColor(i);
        m_page->text << "PC" << i << "," << color[0] << "," << color[1] << "," << color[2] << "\n";
    }
}

void SoVectorizeHPGLAction::writeHeader() {
    constexpr int kLineEnds[] = {1, 2, 3, 4}; // butt, square, triangle, round
    constexpr int kNoJoin = 6;
    constexpr int kLineJoins[] = {kNoJoin, 1, 2, 5, 3, 4}; // none, miter, miter/bevel, bevel, triangle, round
    const unsigned end = getLineEndStyle(), join = getLineJoinsStyle();
    const bool isPortrait = getOrientation() == PORTRAIT;
    const int width = static_cast<int>(limited(getPageSize()[0] * kUnitsPerMillimeter));
    const int height = static_cast<int>(limited(getPageSize()[1] * kUnitsPerMillimeter));

    *m_page = Page();
    oravane::PageText &text = m_page->text;
    text << "\x1B%-1B\nIN;" << (isPortrait ? "" : "RO90;IP;") << "FT;NP"
         << (getPenNum() > 0 ? getPenNum() : kPaletteSize) << ";TR0;\n";
    writePalette();
    text << "PS" << (isPortrait ? width : height) << "," << (isPortrait ? height : width) << ";\n";
    text << "LA1," << (end < std::size(kLineEnds) ? kLineEnds[end] : kLineEnds[0]) << ",2,"
         << (join < std::size(kLineJoins) ? kLineJoins[join] : kNoJoin) << ",3,";
    text.fixed2(getMiterLimit()) << "\n";
    send();
}

void SoVectorizeHPGLAction::writeFooter() {
    m_page->text << "SPPG;\n";
    send();
}

SbBox2f SoVectorizeHPGLAction::getClippingLimits() const {
    const SbVec2f corner = SoVectorizeAction::getClippingLimits().getMin();
    const float x = (corner[0] + getOffsetX()) * kUnitsPerMillimeter;
    const float y = (corner[1] + getOffsetY()) * kUnitsPerMillimeter;
    return SbBox2f(x, y, getViewportWidth() * kUnitsPerMillimeter + x,
                   getViewportHeight() * kUnitsPerMillimeter + y);
}

SbBox2f SoVectorizeHPGLAction::drawingBox() const {
    const float x = getOffsetX(), y = getOffsetY();
    return SbBox2f(x * kUnitsPerMillimeter, y * kUnitsPerMillimeter, (x + getWidth()) * kUnitsPerMillimeter,
                   (y + getHeight()) * kUnitsPerMillimeter);
}

void SoVectorizeHPGLAction::writeWindow(const SbBox2f &window) {
    m_page->hasWindow = true;
    m_page->window = window;
    oravane::PageText &text = m_page->text;
    (text << "IW").fixed(window.getMin()[0], kRealDigits) << ",";
    text.fixed(window.getMin()[1], kRealDigits) << ",";
    text.fixed(window.getMax()[0], kRealDigits) << ",";
    text.fixed(window.getMax()[1], kRealDigits) << ";\n";
    send();
}

void SoVectorizeHPGLAction::setHardwareClip() {
    writeWindow(getClippingLimits());
}

void SoVectorizeHPGLAction::printBackground() {
    if (getBackgroundColor(nullptr) && m_page->hasWindow) {
        const SbBox2f drawing = drawingBox();
        if (!m_page->window.intersect(drawing.getMin()) || !m_page->window.intersect(drawing.getMax())) {
            m_page->hasWindow = false;
            m_page->text << "IW;\n";
            send();
        }
    }
    fillBackground();
}

void SoVectorizeHPGLAction::printBorder() {
    float borderWidth;
    getBorder(&borderWidth, nullptr);
    if (borderWidth > 0)
        writeWindow(drawingBox());
    strokeBorder();
}

// --------------------------------------------------------------------------------------- current attributes

int SoVectorizeHPGLAction::assignColor(SbColor color, float width) {
    if (getPenNum() == 0)
        return oravane::paletteIndex(oravane::colorBytes(color));
    int pen = 0;
    penAssignment(color, width, &pen, nullptr);
    return pen;
}

void SoVectorizeHPGLAction::selectPen(int pen) {
    if (pen == m_page->pen)
        return;
    m_page->pen = pen;
    m_page->text << "SP" << pen;
}

void SoVectorizeHPGLAction::assignPattern(unsigned short pattern) {
    const float nominal = getNominalMillimeters();
    if (!(nominal >= kLeastWritten && nominal <= kFarthest))
        pattern = oravane::kSolidPattern;
    if (pattern == m_page->pattern)
        return;
    m_page->pattern = pattern;
    oravane::PageText &text = m_page->text;
    if (pattern == oravane::kSolidPattern) {
        text << "LT";
        return;
    }
    text << "UL8";
    const oravane::PatternRuns runs = oravane::patternRuns(pattern);
    for (int i = 0; i < runs.count; ++i) {
        text << ",";
        text.fixed2(static_cast<float>(runs.lengths[i]) * nominal) << " ";
    }
    text << "LT8,5.65,1\n";
}

// ---------------------------------------------------------------------------------- lines, marks, polygons

void SoVectorizeHPGLAction::printPolyLine(const SbVec4f *points, int n, const SbColor *colors, int,
                                          float width, unsigned short pattern) {
    if (n < 1 || pattern == 0)
        return;
    const float lineWidth = std::max(oravane::orOne(width) * getNominalMillimeters(), 0.0f);
    const int pen = assignColor(colors[0], lineWidth);
    assignPattern(pattern);
    oravane::PageText &text = m_page->text;
    if (lineWidth != m_page->lineWidth) {
        m_page->lineWidth = lineWidth;
        (text << "PW").fixed(lineWidth, kRealDigits);
    }
    text << "PE";
    if (pen != m_page->pen) {
        m_page->pen = pen;
        encoded(text << ":", pen);
    }
    text << "<=";
    Trace trace(*this, points[0]);
    encoded(encoded(text, trace.x()), trace.y());
    trace.writeSteps({points, static_cast<std::size_t>(n)}, text);
    text << ";\n";
    m_page->penMayBeDown = true;
    send();
}

void SoVectorizeHPGLAction::printPolygon(const SbVec4f *points, int n, const SbColor *colors) {
    if (n < 1)
        return;
    selectPen(assignColor(colors[0], getNominalMillimeters()));
    Trace trace(*this, points[0]);
    oravane::PageText &text = m_page->text;
    text << "PU" << trace.x() << "," << trace.y() << "PMPE";
    trace.writeSteps({points, static_cast<std::size_t>(n)}, text);
    text << ";PM2FP\n";
    m_page->penMayBeDown = true;
    send();
}

void SoVectorizeHPGLAction::printPolyMark(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                                          float size) {
    if (n < 1)
        return;
    const float width = oravane::orOne(size) * getNominalMillimeters();
    oravane::PageText &text = m_page->text;
    Trace trace(*this, points[0]);
    for (int i = 0; i < n; ++i) {
        const int pen = i == 0 || multicolor ? assignColor(colors[i], width) : m_page->pen;
        if (i == 0 || pen != m_page->pen) {
            selectPen(pen);
            text << "PUSM.PA";
        } else {
            text << ",";
        }
        trace.moveTo(points[i]);
        text << trace.x() << "," << trace.y();
    }
    text << "SM;\n";
    send();
}

void SoVectorizeHPGLAction::printPolyMark(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                                          SoMarkerSet *) {
    printPolyMark(points, n, colors, multicolor, 1.0f);
}

// ------------------------------------------------------------------------------------------ texts and images

void SoVectorizeHPGLAction::printText2(SbVec4f point, SbColor color, const char *fontName, float size,
                                       const char *string, int justification, float angle) {
    // Devices count the heights of letters in points, of which the nominal width is one at first.
    const float height = size * (getNominalMillimeters() / kPointInMillimeters);
    if (!(height >= kLeastWritten) || !std::isfinite(height))
        return;
    selectPen(assignColor(color, getNominalMillimeters()));
    oravane::PageText &text = m_page->text;
    const char *const name = fontName ? fontName : "";
    if (height != m_page->fontSize || name != m_page->fontName) {
        m_page->fontSize = height;
        m_page->fontName = name;
        (text << "SD2,1,4,").fixed2(height) << "SS";
    }
    if (justification != m_page->justification) {
        m_page->justification = justification;
        text << "LO" << justification;
    }
    const float direction = std::isfinite(angle) ? angle : 0.0f;
    if (direction != m_page->angle) {
        m_page->angle = direction;
        (text << "DI").fixed(std::cos(direction), kRealDigits) << ",";
        text.fixed(std::sin(direction), kRealDigits) << "\n";
    }
    if (m_page->penMayBeDown) // or the way to the label would be drawn
        text << "PU";
    m_page->penMayBeDown = false;
    const Trace trace(*this, point);
    text << "PA" << trace.x() << "," << trace.y() << "LB" << labelOf(string)
         << std::string_view(&kEndOfLabel, 1) << "\n";
    send();
}

void SoVectorizeHPGLAction::printImage(const SbVec4f &, const unsigned char *, SbVec2s &, SbVec2s &, int,
                                       SoImage::HorAlignment, SoImage::VertAlignment) {}

ORAVANE_VECTORIZE_END
