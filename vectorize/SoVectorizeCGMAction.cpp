#include <oravane/SoVectorizeCGMAction.h>

#include "vectorize/CgmEncoder.h"

#include <Inventor/nodes/SoMarkerSet.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

ORAVANE_VECTORIZE_BEGIN

namespace {

namespace cgm = oravane::cgm;
using oravane::CgmColor;
using oravane::ColorBytes;

constexpr int kTableSize = 256;
constexpr int kVersionWithStyles = 3; ///< with dashes, line ends, joins and transparent cells

/// A colour of 24 bits as a number.
int packed(const ColorBytes &color) {
    return color[0] << 16 | color[1] << 8 | color[2];
}

ColorBytes unpacked(int color) {
    return {color >> 16 & 255, color >> 8 & 255, color & 255};
}

/// The runs of a pattern in pairs of a dash and a gap: a run left over belongs to the first dash.
std::vector<int> dashesOf(unsigned short pattern) {
    if (pattern == oravane::kSolidPattern)
        return {};
    const oravane::PatternRuns runs = oravane::patternRuns(pattern);
    std::vector<int> dashes(runs.lengths.begin(), runs.lengths.begin() + runs.count);
    if (dashes.size() % 2 != 0) {
        dashes.front() += dashes.back();
        dashes.pop_back();
    }
    return dashes;
}

/// The nearest of the standard line types; solid lines have 0 on these pages.
int lineTypeOf(const std::vector<int> &dashes) {
    enum { SOLID = 0, DASH = 2, DOT = 3, DASH_DOT = 4, DASH_DOT_DOT = 5 };
    constexpr int kLongRun = 7;
    const bool isLong = std::any_of(dashes.begin(), dashes.end(), [](int run) { return run > kLongRun; });
    switch (dashes.size()) {
    case 0:
        return SOLID;
    case 2:
        return DASH;
    case 4:
        return isLong ? DASH_DOT : DASH;
    case 6:
        return isLong ? DASH_DOT_DOT : DASH;
    default:
        return DOT;
    }
}

std::string printable(const char *string) {
    std::string text = string ? string : "";
    for (char &c : text)
        if (static_cast<unsigned char>(c) < ' ' || c == '\x7F')
            c = ' ';
    return text;
}

/// A rectangle of bits that are set, in bits from the lower left.
struct BitBox {
    int x0, x1, y0, y1;
};

/// The runs of set bits of each row; equal ones above each other are one box.
std::vector<BitBox> boxesOf(const oravane::MarkerBits &marker) {
    std::vector<BitBox> boxes;
    for (int y = 0; y < marker.size[1]; ++y) {
        for (int x0 = 0; x0 < marker.size[0]; ++x0) {
            if (!marker.isSet(x0, y))
                continue;
            int x1 = x0 + 1;
            while (x1 < marker.size[0] && marker.isSet(x1, y))
                ++x1;
            const auto below = std::find_if(boxes.begin(), boxes.end(), [&](const BitBox &box) {
                return box.x0 == x0 && box.x1 == x1 && box.y1 == y;
            });
            if (below != boxes.end())
                ++below->y1;
            else
                boxes.push_back({x0, x1, y, y + 1});
            x0 = x1;
        }
    }
    return boxes;
}

} // namespace

/// The page that is being written, and what its reader has been told: nothing, where a value is missing.
struct SoVectorizeCGMAction::Page {
    struct LineStyle {
        int cap = 0, join = 0;
        float mitreLimit = 0;
        bool operator==(const LineStyle &) const = default;
    };

    SoVectorizeCGMAction &action;
    std::unique_ptr<oravane::CgmEncoder> encoder = oravane::makeCgmClearText();
    int version = 1;
    bool isIndexed = false;
    std::vector<ColorBytes> table;
    std::unordered_map<int, int> nearest; ///< index of each colour that was asked for

    unsigned short pattern = oravane::kSolidPattern;
    std::optional<LineStyle> lineStyle;
    std::optional<float> lineWidth, charHeight, charAngle;
    std::optional<int> justification;
    std::optional<CgmColor> lineColor, fillColor, markerColor, textColor;
    std::optional<SbBox2f> clip;
    bool isFilled = false; ///< the interior style is set

    explicit Page(SoVectorizeCGMAction &driver) : action(driver) {}
    void send();
    void writeMetafileDescriptor();
    void writePictureDescriptor();
    void makeColorTable();
    void clipTo(const SbBox2f &box);
    float pageLength(float multiple) const;
    int nearestIndex(const ColorBytes &color);
    CgmColor pageColor(const SbColor &color, float width);
    void assignColor(const oravane::CgmElement &element, std::optional<CgmColor> &last,
                     const CgmColor &color);
    void assignLineStyle(unsigned short newPattern);
    void assignTextStyle(const char *fontName, float height, int newJustification, float angle);
    void writePoints(const oravane::CgmElement &element, const SbVec4f *points, int n);
    void writeRuns(const oravane::CgmElement &element, const SbVec4f *points, int n, const SbColor *colors,
                   int multicolor, float width);
};

SoVectorizeCGMAction::SoVectorizeCGMAction()
    : m_cgmOutput(std::make_unique<SoCGMVectorOutput>()), m_page(std::make_unique<Page>(*this)) {
    setOutput(m_cgmOutput.get());
}

SoVectorizeCGMAction::~SoVectorizeCGMAction() {
    closePage();
}

SoCGMVectorOutput *SoVectorizeCGMAction::getOutput() const {
    return m_cgmOutput.get();
}

/// Every operation ends with this, so that a driver's child may write to the stream between them.
void SoVectorizeCGMAction::Page::send() {
    action.m_cgmOutput->write(encoder->view());
    encoder->clear();
}

// ---------------------------------------------------------------------------------------- frame of the page

void SoVectorizeCGMAction::writeHeader() {
    m_page = std::make_unique<Page>(*this);
    m_page->version = m_cgmOutput->getVersion();
    m_page->isIndexed = m_cgmOutput->isIndexed() != 0;
    if (m_cgmOutput->isBinary())
        m_page->encoder = oravane::makeCgmBinary();
    oravane::CgmEncoder &out = *m_page->encoder;
    m_page->writeMetafileDescriptor();
    m_page->writePictureDescriptor();
    out.constant(cgm::kBegPicBody, "BEGPICBODY;", {});
    out.constant(cgm::kVdcRealPrec, "VDCREALPREC -32767. 32767. 8;\n", {0, 9, 23});
    out.constant(cgm::kEdgeVis, "EDGEVIS OFF;", {0});
    if (m_page->isIndexed) {
        m_page->makeColorTable();
        out.colorTable(m_page->table);
    }
    m_page->send();
}

void SoVectorizeCGMAction::Page::writeMetafileDescriptor() {
    oravane::CgmEncoder &out = *encoder;
    out.string(cgm::kBegMf, "PLOT CGM OUTPUT");
    out.integers(cgm::kMfVersion, {version});
    out.string(cgm::kMfDesc, "PLOT CGM METAFILE OUTPUT");
    out.constant(cgm::kMfElemList, "MFELEMLIST 'DRAWINGPLUS';\n", {1, -1, 1});
    out.constant(cgm::kVdcType, "VDCTYPE REAL;\n", {1});
    out.constant(cgm::kIntegerPrec, "INTEGERPREC -32767 32767;\n", {16});
    out.constant(cgm::kRealPrec, "REALPREC -32767. 32767. 8;\n", {0, 9, 23});
    out.constant(cgm::kIndexPrec, "INDEXPREC -32767 32767;\n", {16});
    out.constant(cgm::kColrPrec, "COLRPREC 255;\n", {8});
    out.constant(cgm::kColrIndexPrec, "COLRINDEXPREC 255;\n", {16});
    out.constant(cgm::kColrValueExt, "COLRVALUEEXT 0 0 0 255 255 255;\n", {0x0000, 0x00FF, 0xFFFF});
    out.constant(cgm::kMaxColrIndex, "MAXCOLRINDEX 255;\n", {255});
    out.fontList();
}

void SoVectorizeCGMAction::Page::writePictureDescriptor() {
    oravane::CgmEncoder &out = *encoder;
    out.string(cgm::kBegPic, out.isBinary() ? "Binary Image from PLOT" : "Clear Text Image from PLOT");
    out.constant(cgm::kScaleMode, "SCALEMODE METRIC 1.;\n", {1, 0x3F80, 0x0000}); // the real 1
    out.constant(cgm::kLineWidthMode, "LINEWIDTHMODE ABS;\n", {0});
    out.constant(cgm::kMarkerSizeMode, "MARKERSIZEMODE ABS;\n", {0});
    out.constant(cgm::kEdgeWidthMode, "EDGEWIDTHMODE ABS;\n", {0});
    SbColor background;
    if (action.getBackgroundColor(&background) && !isIndexed)
        out.color(cgm::kBackColr, {oravane::colorBytes(action.translateColor(background)), 3}, {});
    if (isIndexed)
        out.constant(cgm::kColrMode, "COLRMODE INDEXED;\n", {0});
    else
        out.constant(cgm::kColrMode, "COLRMODE DIRECT;\n", {1});
    const SbVec2f &low = action.getPageOrigin(), high = low + action.getPageSize();
    out.lengths(cgm::kVdcExt, {low[0], low[1], high[0], high[1]});
}

/// The background, then the pens; or, without pens, a palette that ends with white.
void SoVectorizeCGMAction::Page::makeColorTable() {
    SbColor background;
    if (action.getBackgroundColor(&background))
        table.push_back(oravane::colorBytes(action.translateColor(background)));
    for (int pen = 0; pen < action.getPenNum() && static_cast<int>(table.size()) < kTableSize; ++pen)
        table.push_back(oravane::colorBytes(action.getPenColor(pen)));
    if (action.getPenNum() > 0)
        return;
    for (int k = 0; static_cast<int>(table.size()) < kTableSize - 1; ++k)
        table.push_back(oravane::paletteColor(k));
    table.push_back({255, 255, 255});
}

void SoVectorizeCGMAction::writeFooter() {
    m_page->encoder->constant(cgm::kEndPic, "\nENDPIC;", {});
    m_page->encoder->constant(cgm::kEndMf, "ENDMF;", {});
    m_page->send();
}

void SoVectorizeCGMAction::setHardwareClip() {
    m_page->clip.reset();
    m_page->clipTo(getClippingLimits());
    m_page->send();
}

/// `box` is in mm of the drawing.
void SoVectorizeCGMAction::Page::clipTo(const SbBox2f &box) {
    const SbVec2f offset(action.getOffsetX(), action.getOffsetY());
    const SbBox2f onPage(box.getMin() + offset, box.getMax() + offset);
    if (clip == onPage)
        return;
    clip = onPage;
    const SbVec2f &low = onPage.getMin(), &high = onPage.getMax();
    encoder->lengths(cgm::kClipRect, {low[0], low[1], high[0], high[1]});
}

void SoVectorizeCGMAction::printBackground() {
    if (!getBackgroundColor(nullptr))
        return;
    if (m_page->clip) // that of another drawing
        m_page->clipTo(SbBox2f(0, 0, getWidth(), getHeight()));
    fillBackground();
    m_page->send();
}

void SoVectorizeCGMAction::printBorder() {
    float borderWidth;
    getBorder(&borderWidth, nullptr);
    if (borderWidth <= 0)
        return;
    m_page->clipTo(SbBox2f(0, 0, getWidth(), getHeight()));
    strokeBorder();
    m_page->send();
}

// --------------------------------------------------------------------------------------- current attributes

float SoVectorizeCGMAction::Page::pageLength(float multiple) const {
    return oravane::orOne(multiple) * std::max(action.getNominalMillimeters(), 0.0f);
}

/// The entry of the table at the smallest distance; the first of several.
int SoVectorizeCGMAction::Page::nearestIndex(const ColorBytes &color) {
    const auto [place, isNew] = nearest.try_emplace(packed(color), 0);
    if (!isNew)
        return place->second;
    int least = std::numeric_limits<int>::max();
    for (std::size_t i = 0; i < table.size(); ++i) {
        int distance = 0;
        for (int k = 0; k < 3; ++k)
            distance += (table[i][k] - color[k]) * (table[i][k] - color[k]);
        if (distance < least) {
            least = distance;
            place->second = static_cast<int>(i);
        }
    }
    return place->second;
}

CgmColor SoVectorizeCGMAction::Page::pageColor(const SbColor &color, float width) {
    ColorBytes bytes;
    if (action.getPenNum() > 0) {
        int pen = 0;
        action.penAssignment(color, width, &pen, nullptr);
        bytes = oravane::colorBytes(action.getPenColor(pen));
    } else {
        bytes = oravane::colorBytes(color);
    }
    if (isIndexed)
        return {{nearestIndex(bytes)}, 1};
    return {bytes, 3};
}

void SoVectorizeCGMAction::Page::assignColor(const oravane::CgmElement &element,
                                             std::optional<CgmColor> &last, const CgmColor &color) {
    if (last == color)
        return;
    last = color;
    encoder->color(element, color, {});
}

void SoVectorizeCGMAction::Page::assignLineStyle(unsigned short newPattern) {
    constexpr int kLineCaps[] = {2, 4, 5, 3};
    constexpr int kLineJoins[] = {4, 2, 2, 4, 3, 3};
    constexpr int kAnyDashCap = 1;
    oravane::CgmEncoder &out = *encoder;
    const bool isNewPattern = newPattern != pattern;
    pattern = newPattern;
    if (version != kVersionWithStyles) {
        if (isNewPattern)
            out.integers(cgm::kLineType, {lineTypeOf(dashesOf(pattern))});
        return;
    }
    const LineStyle style{kLineCaps[std::clamp<int>(action.getLineEndStyle(), 0, 3)],
                          kLineJoins[std::clamp<int>(action.getLineJoinsStyle(), 0, 5)],
                          action.getMiterLimit()};
    if (!isNewPattern && lineStyle == style)
        return;
    lineStyle = style;
    if (isNewPattern)
        out.dashes(dashesOf(pattern));
    out.integers(cgm::kLineCap, {style.cap, kAnyDashCap});
    out.integers(cgm::kLineJoin, {style.join});
    out.mitreLimit(style.mitreLimit);
}

// ---------------------------------------------------------------------------------- lines, marks, polygons

void SoVectorizeCGMAction::Page::writePoints(const oravane::CgmElement &element, const SbVec4f *points,
                                             int n) {
    encoder->points(element, {points, static_cast<std::size_t>(n)},
                    {action.getOffsetX(), action.getOffsetY()});
}

/// Writes lines or marks, one element for each run of equal colours. Lines share the points between them.
void SoVectorizeCGMAction::Page::writeRuns(const oravane::CgmElement &element, const SbVec4f *points, int n,
                                           const SbColor *colors, int multicolor, float width) {
    const bool isLine = element == cgm::kLine;
    const oravane::CgmElement &colorElement = isLine ? cgm::kLineColr : cgm::kMarkerColr;
    std::optional<CgmColor> &last = isLine ? lineColor : markerColor;
    const int shared = isLine ? 1 : 0;
    const int limit = n - shared;
    CgmColor next = pageColor(colors[0], width);
    for (int begin = 0, end = 0; begin < limit; begin = end) {
        const CgmColor color = next;
        for (end = multicolor ? begin + 1 : limit; end < limit; ++end) {
            next = pageColor(colors[end], width);
            if (next != color)
                break;
        }
        assignColor(colorElement, last, color);
        writePoints(element, points + begin, end - begin + shared);
    }
}

void SoVectorizeCGMAction::printPolyLine(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                                         float width, unsigned short pattern) {
    if (n < 2 || pattern == 0)
        return;
    const float lineWidth = m_page->pageLength(width);
    m_page->assignLineStyle(pattern);
    if (lineWidth != m_page->lineWidth) {
        m_page->lineWidth = lineWidth;
        m_page->encoder->lengths(cgm::kLineWidth, {lineWidth});
    }
    m_page->writeRuns(cgm::kLine, points, n, colors, multicolor, lineWidth);
    m_page->send();
}

void SoVectorizeCGMAction::printPolyMark(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                                         float size) {
    constexpr int kDot = 1;
    if (n < 1)
        return;
    const float markerSize = m_page->pageLength(size);
    m_page->encoder->integers(cgm::kMarkerType, {kDot});
    m_page->encoder->lengths(cgm::kMarkerSize, {markerSize});
    m_page->writeRuns(cgm::kMarker, points, n, colors, multicolor, markerSize);
    m_page->send();
}

void SoVectorizeCGMAction::printPolygon(const SbVec4f *points, int n, const SbColor *colors) {
    if (n < 3)
        return;
    // In the binary encoding the repetition would be an eighth of a page of triangles.
    if (!m_page->isFilled || !m_page->encoder->isBinary())
        m_page->encoder->constant(cgm::kIntStyle, "INTSTYLE SOLID;\n", {1});
    m_page->isFilled = true;
    m_page->assignColor(cgm::kFillColr, m_page->fillColor,
                        m_page->pageColor(colors[0], getNominalMillimeters()));
    m_page->writePoints(cgm::kPolygon, points, n);
    m_page->send();
}

void SoVectorizeCGMAction::printPolyMark(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                                         SoMarkerSet *markerSet) {
    const int numIndices = markerSet ? markerSet->markerIndex.getNum() : 0;
    const float bit = getNominalMillimeters();
    std::map<int, std::pair<SbVec2f, std::vector<BitBox>>> markers; // by index: size in mm, and shape
    for (int i = 0; i < n && numIndices > 0 && bit > 0; ++i) {
        const int index = markerSet->markerIndex[i % numIndices];
        const auto [place, isNew] = markers.try_emplace(index);
        auto &[size, boxes] = place->second;
        if (isNew) {
            const oravane::MarkerBits marker = oravane::markerBits(index);
            size.setValue(marker.size[0] * bit, marker.size[1] * bit);
            if (marker.bytes)
                boxes = boxesOf(marker);
        }
        const float x = points[i][0] - size[0] / 2, y = points[i][1] - size[1] / 2;
        for (const BitBox &box : boxes) {
            const float x0 = x + box.x0 * bit, x1 = x + box.x1 * bit;
            const float y0 = y + box.y0 * bit, y1 = y + box.y1 * bit;
            const SbVec4f corners[] = {{x0, y0, 0, 1}, {x1, y0, 0, 1}, {x1, y1, 0, 1}, {x0, y1, 0, 1}};
            printPolygon(corners, 4, colors + (multicolor ? i : 0));
        }
    }
}

// ------------------------------------------------------------------------------------------ texts and images

void SoVectorizeCGMAction::Page::assignTextStyle(const char *fontName, float height, int newJustification,
                                                 float angle) {
    oravane::CgmEncoder &out = *encoder;
    if (height != charHeight) {
        charHeight = height;
        out.lengths(cgm::kCharHeight, {height});
    }
    const auto &fonts = oravane::kCgmFonts;
    const auto font = std::find(fonts.begin(), fonts.end(), std::string_view(fontName ? fontName : ""));
    if (font != fonts.end())
        out.integers(cgm::kTextFontIndex, {static_cast<int>(font - fonts.begin()) + 1});
    out.constant(cgm::kTextPrec, "TEXTPREC STROKE;\n", {2});
    out.constant(cgm::kTextPath, "TEXTPATH RIGHT;\n", {0});
    out.constant(cgm::kCharSpace, "CHARSPACE 0.;\n", {0x0000, 0x0000});
    out.constant(cgm::kCharExpan, "CHAREXPAN 1.;\n", {0x3F80, 0x0000}); // the real 1
    if (newJustification != justification) {
        constexpr std::string_view kStatements[] = {"TEXTALIGN LEFT NORMVERT 0. 0.;\n",
                                                    "TEXTALIGN RIGHT NORMVERT 0. 0.;\n",
                                                    "TEXTALIGN CTR NORMVERT 0. 0.;\n"};
        constexpr int kAlignments[] = {1, 3, 2};
        justification = newJustification;
        out.constant(cgm::kTextAlign, kStatements[newJustification - 1],
                     {kAlignments[newJustification - 1], 0, 0, 0, 0, 0}); // with two reals 0
    }
    if (angle != charAngle) {
        charAngle = angle;
        const float sine = std::sin(angle), cosine = std::cos(angle);
        out.lengths(cgm::kCharOri, {0.0f - sine, cosine, cosine, sine}); // never -0
    }
}

void SoVectorizeCGMAction::printText2(SbVec4f point, SbColor color, const char *fontName, float size,
                                      const char *string, int justification, float angle) {
    enum { LEFT = 1, CENTER = 3 };
    const float height = size * getNominalMillimeters();
    if (!(height > 0 && std::isfinite(height)) || justification < LEFT || justification > CENTER)
        return;
    m_page->assignColor(cgm::kTextColr, m_page->textColor, m_page->pageColor(color, getNominalMillimeters()));
    m_page->assignTextStyle(fontName, height, justification, std::isfinite(angle) ? angle : 0.0f);
    m_page->encoder->text({point[0] + getOffsetX(), point[1] + getOffsetY()}, printable(string));
    m_page->send();
}

namespace {

/// The cells of an image as numbers: an index each, or a packed colour.
struct Cells {
    std::vector<int> numbers;
    int transparent = -1; ///< the number of the cells that are not to be seen
};

/// The largest number below `limit` that no cell has, those in `hidden` aside; -1 when there is none.
int unusedNumber(const std::vector<int> &numbers, const std::vector<std::size_t> &hidden, int limit) {
    // Of so many numbers from above one is unused, unless these are all numbers.
    std::vector<bool> isUsed(std::min<std::size_t>(limit, numbers.size() + 1));
    auto next = hidden.begin();
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::size_t fromAbove = limit - 1 - numbers[i];
        if (next != hidden.end() && *next == i)
            ++next;
        else if (fromAbove < isUsed.size())
            isUsed[fromAbove] = true;
    }
    const auto unused = std::find(isUsed.begin(), isUsed.end(), false);
    return unused == isUsed.end() ? -1 : limit - 1 - static_cast<int>(unused - isUsed.begin());
}

/// `numberOf` gives the number of a colour, below `limit`. Pixels of low alpha get a number that no other
/// pixel has, if there is one left and `hasAlpha` says so.
template <class NumberOf>
Cells cellsOf(std::span<const unsigned char> pixels, int components, bool hasAlpha, int limit,
              NumberOf numberOf) {
    constexpr unsigned char kLeastVisible = 128;
    Cells cells;
    std::vector<std::size_t> hidden;
    for (std::size_t at = 0; at < pixels.size(); at += components) {
        const auto channel = [&](int k) { return static_cast<int>(pixels[at + (components < 3 ? 0 : k)]); };
        if (hasAlpha && pixels[at + components - 1] < kLeastVisible)
            hidden.push_back(cells.numbers.size());
        cells.numbers.push_back(numberOf(ColorBytes{channel(0), channel(1), channel(2)}));
    }
    if (!hidden.empty())
        cells.transparent = unusedNumber(cells.numbers, hidden, limit);
    if (cells.transparent >= 0)
        for (const std::size_t cell : hidden)
            cells.numbers[cell] = cells.transparent;
    return cells;
}

} // namespace

void SoVectorizeCGMAction::printImage(const SbVec4f &point, const unsigned char *pixels, SbVec2s &size,
                                      SbVec2s &sourceSize, int components, SoImage::HorAlignment horizontal,
                                      SoImage::VertAlignment vertical) {
    if (!pixels || components <= 0 || sourceSize[0] <= 0 || sourceSize[1] <= 0)
        return;
    const SbBox2f box =
        oravane::imageBox({point[0], point[1]}, size, getPixelMillimeters(), horizontal, vertical);
    if (!box.hasArea() || !getClippingLimits().intersect(box))
        return;
    oravane::CgmEncoder &out = *m_page->encoder;
    const bool isIndexed = m_page->isIndexed;
    const bool hasAlpha = components % 2 == 0 && m_page->version == kVersionWithStyles;
    const std::size_t numBytes = static_cast<std::size_t>(sourceSize[0]) * sourceSize[1] * components;
    const Cells cells = cellsOf(
        {pixels, numBytes}, components, hasAlpha, isIndexed ? kTableSize : 1 << 24,
        [&](const ColorBytes &color) { return isIndexed ? m_page->nearestIndex(color) : packed(color); });
    const CgmColor hidden =
        isIndexed ? CgmColor{{cells.transparent}, 1} : CgmColor{unpacked(cells.transparent), 3};
    if (cells.transparent >= 0)
        out.color(cgm::kTranspCellColr, hidden, {1});
    const SbVec2f offset(getOffsetX(), getOffsetY());
    const SbVec2f low = box.getMin() + offset, high = box.getMax() + offset;
    out.cellArray(
        {low, high, {high[0], low[1]}, sourceSize[0], sourceSize[1], isIndexed ? 1 : 3, cells.numbers});
    if (cells.transparent >= 0)
        out.color(cgm::kTranspCellColr, hidden, {0});
    m_page->send();
}

ORAVANE_VECTORIZE_END
