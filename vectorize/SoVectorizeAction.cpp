#include <oravane/SoVectorOutput.h>
#include <oravane/SoVectorizeAction.h>

#include "vectorize/PagePens.h"
#include "vectorize/PageText.h"
#include "vectorize/VectorizeTraversal.h"

#include <Inventor/SoPath.h>
#include <Inventor/lists/SoPathList.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

ORAVANE_VECTORIZE_BEGIN

namespace {

constexpr float kPointInMillimeters = 0.35277778f;
constexpr int kMaxPens = 256;

float millimeters(SoVectorizeAction::DimensionUnit unit) {
    switch (unit) {
    case SoVectorizeAction::INCH:
        return 25.4f;
    case SoVectorizeAction::MILLIMETER:
        return 1.0f;
    case SoVectorizeAction::METER:
        return 1000.0f;
    }
    return 0.0f;
}

float toUnit(float value, SoVectorizeAction::DimensionUnit unit) {
    const float factor = millimeters(unit);
    return factor > 0 ? value / factor : 0.0f;
}

SbVec2f toUnit(const SbVec2f &value, SoVectorizeAction::DimensionUnit unit) {
    return SbVec2f(toUnit(value[0], unit), toUnit(value[1], unit));
}

bool isFinite(const SbColor &c) {
    return std::isfinite(c[0]) && std::isfinite(c[1]) && std::isfinite(c[2]);
}

/// Sets nothing, and returns false, when the result were not finite.
bool setLength(float &length, float value, SoVectorizeAction::DimensionUnit unit) {
    const float inMillimeters = value * millimeters(unit);
    const bool isFinite = std::isfinite(inMillimeters);
    if (isFinite)
        length = inMillimeters;
    return isFinite;
}

bool setLengths(SbVec2f &lengths, const SbVec2f &values, SoVectorizeAction::DimensionUnit unit) {
    SbVec2f both;
    const bool isFinite = setLength(both[0], values[0], unit) && setLength(both[1], values[1], unit);
    if (isFinite)
        lengths = both;
    return isFinite;
}

} // namespace

struct SoVectorizeAction::Pens {
    std::vector<oravane::PagePen> pens;
    int colorPriority = 1;
};

SoVectorizeAction::SoVectorizeAction()
    : m_borderColor(1, 1, 1), m_backgroundColor(0, 0, 0), m_nominalWidth(kPointInMillimeters),
      m_pixelImageSize(kPointInMillimeters), m_pens(std::make_unique<Pens>()), m_pageSize(190, 277),
      m_pageOrigin(10, 10), m_start(10, 10), m_size(190, 277) {}

SoVectorizeAction::~SoVectorizeAction() = default;

// ---------------------------------------------------------------------------------------------------- apply

template <class Target>
void SoVectorizeAction::applyTo(Target &&traverse) {
    if (m_traversal)
        return;
    m_traversal = std::make_unique<Traversal>(*this);
    const struct Finish { // also when a driver's operation throws
        SoVectorizeAction &action;
        ~Finish() {
            action.m_viewportKnown = 0;
            action.m_traversal.reset();
        }
    } finish{*this};
    SoCallbackAction action;
    prepareAction(action);
    beginTraversal();
    if (!m_pageMode || m_headerPending)
        writeHeader();
    m_headerPending = 0;
    printBackground();
    traverse(action);
    m_traversal->closeStore();
    printBorder();
    m_viewportKnown = 0;
    if (!m_pageMode)
        writeFooter();
    endTraversal();
    if (m_output)
        m_output->flush();
}

void SoVectorizeAction::apply(const SoPathList &paths, int obeysRules) {
    applyTo([&](SoCallbackAction &action) { action.apply(paths, obeysRules); });
}

void SoVectorizeAction::apply(SoPath *path) {
    applyTo([&](SoCallbackAction &action) {
        if (path)
            action.apply(path);
    });
}

void SoVectorizeAction::apply(SoNode *node) {
    applyTo([&](SoCallbackAction &action) {
        if (node)
            action.apply(node);
    });
}

void SoVectorizeAction::prepareAction(SoCallbackAction &action) {
    m_traversal->registerCallbacks(action);
}

void SoVectorizeAction::beginTraversal() {
    m_traversal->openStore();
}

void SoVectorizeAction::endTraversal() {}

void SoVectorizeAction::beginPage(const SbVec2f &start, const SbVec2f &size, DimensionUnit unit) {
    m_pageMode = 1;
    m_headerPending = 1;
    setLengths(m_pageOrigin, start, unit);
    setLengths(m_pageSize, size, unit);
}

void SoVectorizeAction::endPage() {
    if (!m_pageMode)
        return;
    if (m_headerPending)
        writeHeader();
    writeFooter();
    m_pageMode = 0;
    m_headerPending = 1;
    if (m_output)
        m_output->flush();
}

void SoVectorizeAction::closePage() {
    endPage();
}

// ------------------------------------------------------------------------------------------------ settings

void SoVectorizeAction::setDrawingDimensions(const SbVec2f &size, DimensionUnit unit) {
    if (setLengths(m_size, size, unit) && !m_pageMode)
        m_pageSize = m_size;
}

void SoVectorizeAction::setDrawingDimensions(float width, float height, DimensionUnit unit) {
    setDrawingDimensions(SbVec2f(width, height), unit);
}

SbVec2f SoVectorizeAction::getDrawingDimensions(DimensionUnit unit) const {
    return toUnit(m_size, unit);
}

void SoVectorizeAction::setStartPosition(const SbVec2f &start, DimensionUnit unit) {
    if (setLengths(m_start, start, unit) && !m_pageMode)
        m_pageOrigin = m_start;
}

void SoVectorizeAction::setStartPosition(float x, float y, DimensionUnit unit) {
    setStartPosition(SbVec2f(x, y), unit);
}

SbVec2f SoVectorizeAction::getStartPosition(DimensionUnit unit) const {
    return toUnit(m_start, unit);
}

void SoVectorizeAction::setOrientation(Orientation orientation) {
    m_orientation = orientation;
}

SoVectorizeAction::Orientation SoVectorizeAction::getOrientation() const {
    return m_orientation;
}

void SoVectorizeAction::setBorder(float width, SbColor color) {
    if (!std::isfinite(width) || !isFinite(color))
        return;
    m_borderWidth = width;
    m_borderColor = color;
}

void SoVectorizeAction::setBorder(float width) {
    setBorder(width, SbColor(1, 1, 1));
}

void SoVectorizeAction::getBorder(float *width, SbColor *color) const {
    if (width)
        *width = m_borderWidth;
    if (color)
        *color = m_borderColor;
}

void SoVectorizeAction::setBackgroundColor(int flag, SbColor color) {
    if (!isFinite(color))
        return;
    m_backgroundFlag = flag;
    m_backgroundColor = color;
}

void SoVectorizeAction::setBackgroundColor(int flag) {
    setBackgroundColor(flag, SbColor(0, 0, 0));
}

int SoVectorizeAction::getBackgroundColor(SbColor *color) const {
    if (color)
        *color = m_backgroundColor;
    return m_backgroundFlag;
}

void SoVectorizeAction::setNominalWidth(float width, DimensionUnit unit) {
    setLength(m_nominalWidth, width, unit);
}

float SoVectorizeAction::getNominalWidth(DimensionUnit unit) const {
    return toUnit(m_nominalWidth, unit);
}

void SoVectorizeAction::setPixelImageSize(float size, DimensionUnit unit) {
    setLength(m_pixelImageSize, size, unit);
}

float SoVectorizeAction::getPixelImageSize(DimensionUnit unit) const {
    return toUnit(m_pixelImageSize, unit);
}

void SoVectorizeAction::setColorTranslationMethod(ColorTranslationMethod method) {
    m_colorTranslation = method;
}

SoVectorizeAction::ColorTranslationMethod SoVectorizeAction::getColorTranslationMethod() const {
    return m_colorTranslation;
}

void SoVectorizeAction::setLineEndStyle(EndLineStyle style) {
    m_endStyle = style;
}

SoVectorizeAction::EndLineStyle SoVectorizeAction::getLineEndStyle() const {
    return m_endStyle;
}

void SoVectorizeAction::setLineJoinsStyle(JoinLineStyle style) {
    m_joinStyle = style;
}

SoVectorizeAction::JoinLineStyle SoVectorizeAction::getLineJoinsStyle() const {
    return m_joinStyle;
}

void SoVectorizeAction::setMiterLimit(float limit) {
    if (std::isfinite(limit))
        m_miterLimit = std::max(limit, 1.0f);
}

float SoVectorizeAction::getMiterLimit() const {
    return m_miterLimit;
}

void SoVectorizeAction::setHLHSRMode(HLHSRMode mode) {
    if (mode >= HLHSR_NONE && mode <= HLHSR_LINE_REMOVAL)
        m_hlhsrMode = mode;
}

void SoVectorizeAction::enableLighting(int flag) {
    m_lightingEnabled = flag;
}

// ---------------------------------------------------------------------------------------------------- pens

namespace {

const SbColor kPenColors[] = {SbColor(1, 1, 1), SbColor(0, 0, 0), SbColor(1, 0, 0), SbColor(0, 1, 0),
                              SbColor(1, 1, 0), SbColor(0, 0, 1), SbColor(1, 0, 1), SbColor(0, 1, 1)};

int numDefaultPens(int wanted) {
    return wanted >= 5 ? 8 : wanted >= 3 ? 4 : 2;
}

} // namespace

void SoVectorizeAction::setPenDescription(int num, const SbColor *colors, const float *widths,
                                          DimensionUnit unit) {
    if (num < 0)
        return;
    const int given = std::min(num, kMaxPens);
    const int count = given == 0 ? 0 : colors ? given : numDefaultPens(given);
    m_pens->pens.assign(count, {SbColor(0, 0, 0), kPointInMillimeters});
    for (int i = 0; i < count; ++i) {
        oravane::PagePen &pen = m_pens->pens[i];
        pen.color = colors ? colors[i] : kPenColors[i];
        if (widths && i < given)
            setLength(pen.width, widths[i], unit);
    }
}

void SoVectorizeAction::getPenDescription(SbColor *colors, float *widths, DimensionUnit unit) const {
    for (int i = 0; i < getPenNum(); ++i) {
        if (colors)
            colors[i] = m_pens->pens[i].color;
        if (widths)
            widths[i] = toUnit(m_pens->pens[i].width, unit);
    }
}

int SoVectorizeAction::getPenNum() const {
    return static_cast<int>(m_pens->pens.size());
}

void SoVectorizeAction::setColorPriority(int priority) {
    m_pens->colorPriority = priority;
}

int SoVectorizeAction::getColorPriority() const {
    return m_pens->colorPriority;
}

SbColor SoVectorizeAction::getPenColor(int pen) const {
    return m_pens->pens.at(pen).color;
}

void SoVectorizeAction::penAssignment(SbColor color, float width, int *pen, float *penWidth) {
    const bool restricted = !m_pens->pens.empty();
    const int chosen =
        restricted ? oravane::choosePen(m_pens->pens, color, width, m_pens->colorPriority != 0) : 0;
    if (pen)
        *pen = chosen;
    if (penWidth)
        *penWidth = restricted ? m_pens->pens[chosen].width : width;
}

// ---------------------------------------------------------------------------------------- view and colours

float SoVectorizeAction::getViewportWidth() const {
    return m_size[0] * m_viewport.getViewportSize()[0];
}

float SoVectorizeAction::getViewportHeight() const {
    return m_size[1] * m_viewport.getViewportSize()[1];
}

float SoVectorizeAction::getOffsetX() const {
    return m_pageOrigin[0] + (m_pageMode ? m_start[0] : 0.0f);
}

float SoVectorizeAction::getOffsetY() const {
    return m_pageOrigin[1] + (m_pageMode ? m_start[1] : 0.0f);
}

SbBox2f SoVectorizeAction::getClippingLimits() const {
    const SbVec2f &origin = m_viewport.getViewportOrigin();
    const float x = m_size[0] * origin[0];
    const float y = m_size[1] * origin[1];
    return SbBox2f(x, y, x + getViewportWidth(), y + getViewportHeight());
}

void SoVectorizeAction::projectPoints(SbVec4f *points, int n) const {
    const SbVec2f &origin = m_viewport.getViewportOrigin();
    const float x = m_size[0] * origin[0], width = getViewportWidth();
    const float y = m_size[1] * origin[1], height = getViewportHeight();
    for (int i = 0; i < n; ++i) {
        SbVec4f &p = points[i];
        p[0] = (p[0] + 1) * width / 2 + x;
        p[1] = (p[1] + 1) * height / 2 + y;
    }
}

SbColor SoVectorizeAction::translateColor(const SbColor &color) const {
    const auto isGrey = [&](float level) {
        return color[0] == level && color[1] == level && color[2] == level;
    };
    switch (m_colorTranslation) {
    case SWAP_BLACK_WHITE:
        return isGrey(0) ? SbColor(1, 1, 1) : isGrey(1) ? SbColor(0, 0, 0) : color;
    case COMPLEMENT_COLORS:
        return SbColor(1 - color[0], 1 - color[1], 1 - color[2]);
    default:
        return color;
    }
}

void SoVectorizeAction::printTextLines(SbVec4f point, const SbColor &color, const char *fontName, float size,
                                       int numStrings, const SbString *strings, float spacing,
                                       int justification, float angle) {
    for (int i = 0; i < numStrings; ++i) {
        printText2(point, color, fontName, size, strings[i].getString(), justification, angle);
        point[0] += std::sin(angle) * m_nominalWidth * size * spacing;
        point[1] -= std::cos(angle) * m_nominalWidth * size * spacing;
    }
}

void SoVectorizeAction::fillBackground() {
    if (!m_backgroundFlag)
        return;
    const SbVec4f corners[] = {
        {0, 0, 0, 1}, {m_size[0], 0, 0, 1}, {m_size[0], m_size[1], 0, 1}, {0, m_size[1], 0, 1}};
    std::array<SbColor, 4> colors;
    colors.fill(translateColor(m_backgroundColor));
    printPolygon(corners, 4, colors.data());
}

void SoVectorizeAction::strokeBorder() {
    if (m_borderWidth <= 0)
        return;
    constexpr unsigned short kSolid = 0xFFFF;
    const SbVec4f corners[] = {
        {0, 0, 0, 1}, {m_size[0], 0, 0, 1}, {m_size[0], m_size[1], 0, 1}, {0, m_size[1], 0, 1}, {0, 0, 0, 1}};
    std::array<SbColor, 5> colors;
    colors.fill(translateColor(m_borderColor));
    printPolyLine(corners, 5, colors.data(), 0, m_borderWidth, kSolid);
}

// --------------------------------------------------------------------------------------- debugging back end

namespace {

using oravane::PageText;

constexpr int kRealDigits = 6; // as "%f"

PageText &operator<<(PageText &text, const SbColor &color) {
    return text.hex(color.getPackedValue() >> 8, 6); // without the transparency byte
}

void print(const PageText &text) {
    std::fwrite(text.view().data(), 1, text.view().size(), stdout);
}

void addPoints(PageText &text, const SbVec4f *points, int n, const SbColor *colors, int multicolor) {
    for (int i = 0; i < n; ++i) {
        (text << "      (").fixed2(points[i][0]) << " - ";
        text.fixed2(points[i][1]) << ")";
        if (multicolor)
            text << "  color = " << colors[i];
        text << "\n";
    }
}

} // namespace

void SoVectorizeAction::printPolygon(const SbVec4f *points, int n, const SbColor *colors) {
    if (n < 1)
        return;
    PageText text;
    text << "Unicolor Polygon drawing  (color = " << colors[0] << ")\n";
    addPoints(text, points, n, colors, 0);
    print(text);
}

void SoVectorizeAction::printPolyLine(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                                      float width, unsigned short pattern) {
    if (n < 1)
        return;
    PageText text;
    text << (multicolor ? "Multicolor" : "Unicolor") << " Line drawing  (thickness : ";
    text.fixed(width, kRealDigits) << " , pattern : ";
    text.hex(pattern, 4);
    if (!multicolor)
        text << " , color = " << colors[0];
    text << ")\n";
    addPoints(text, points, n, colors, multicolor);
    print(text);
}

void SoVectorizeAction::printPolyMark(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                                      float size) {
    if (n < 1)
        return;
    PageText text;
    text << (multicolor ? "Multicolor Point drawing (size : " : "Unicolor Point drawing  (size : ");
    text.fixed(size, kRealDigits);
    if (!multicolor)
        text << ", color = " << colors[0];
    text << ")\n";
    addPoints(text, points, n, colors, multicolor);
    print(text);
}

void SoVectorizeAction::printPolyMark(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                                      SoMarkerSet *) {
    SoVectorizeAction::printPolyMark(points, n, colors, multicolor, 1.0f);
}

void SoVectorizeAction::printImage(const SbVec4f &point, const unsigned char *, SbVec2s &, SbVec2s &, int,
                                   SoImage::HorAlignment, SoImage::VertAlignment) {
    PageText text;
    addPoints(text, &point, 1, nullptr, 0);
    print(text);
}

void SoVectorizeAction::printText2(SbVec4f point, SbColor color, const char *fontName, float size,
                                   const char *string, int justification, float angle) {
    PageText text;
    text << "Text 2D color : " << color << "\n";
    text << "font_name=" << (fontName ? fontName : "") << " font_size=";
    text.fixed(size, kRealDigits) << " string=" << (string ? string : "");
    text << " justif=" << justification << " angle=";
    text.fixed(angle, kRealDigits) << "\n";
    addPoints(text, &point, 1, nullptr, 0);
    print(text);
}

ORAVANE_VECTORIZE_END
