#include <oravane/SoVectorizePSAction.h>

#include "vectorize/PageFormat.h"
#include "vectorize/PageText.h"
#include "vectorize/PsText.h"

#include <Inventor/nodes/SoMarkerSet.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_set>

ORAVANE_VECTORIZE_BEGIN

namespace {

constexpr int kNoBitmap = -999999;
constexpr double kPointInMillimeters = 0.3527777778;
constexpr double kPointsPerMillimeter = 2.834645669112778;
constexpr std::size_t kLongestFontName = 255;
constexpr int kLineBatch = 100;    ///< points of a polyline or of marks on the operand stack
constexpr int kPolygonBatch = 248; ///< points of a polygon on the operand stack
constexpr int kLongestLine = 78;   ///< a line of points ends beyond so many characters, before shortening
constexpr int kLongestPolygonLine = 66;
constexpr int kHexDigitsOnBitmapLine = 40;
constexpr int kBytesOnImageLine = 40;
constexpr std::size_t kLargestPiece = 1 << 16; ///< of an image's text in memory

/// True for a length that would be written as 0: an interpreter refuses to scale by it.
bool vanishes(float millimeters) {
    return !std::isfinite(millimeters) || std::fabs(millimeters) <= 0.005f;
}

int pagePoints(float millimeters) {
    return static_cast<int>(std::clamp(millimeters / kPointInMillimeters, -1e9, 1e9));
}

} // namespace

/// What the page's interpreter has been told, and the text on its way to the file.
struct SoVectorizePSAction::Page {
    oravane::PageText text;
    bool isColored = true; ///< which prolog the page has
    std::unordered_set<int> bitmaps;
    int bitmapIndex = kNoBitmap;
    SbColor color{-1, -1, -1};
    float pointSize = 0;
    float lineWidth = 0;
    unsigned short pattern = oravane::kSolidPattern;
    float fontSize = -1;
    std::string fontName;
};

SoVectorizePSAction::SoVectorizePSAction()
    : m_psOutput(std::make_unique<SoPSVectorOutput>()), m_page(std::make_unique<Page>()) {
    setOutput(m_psOutput.get());
}

SoVectorizePSAction::~SoVectorizePSAction() {
    closePage();
}

SoPSVectorOutput *SoVectorizePSAction::getOutput() const {
    return m_psOutput.get();
}

/// Every operation ends with this, so that a driver's child may write to the stream between them.
void SoVectorizePSAction::send() {
    m_psOutput->write(m_page->text.view());
    m_page->text.clear();
}

void SoVectorizePSAction::initDefaultCurrentValues() {
    m_page->fontSize = -1;
    m_page->fontName.clear();
}

// ---------------------------------------------------------------------------------------- frame of the page

void SoVectorizePSAction::writeHeader() {
    constexpr int kLineCaps[] = {0, 2, 1, 1};
    constexpr int kLineJoins[] = {2, 0, 0, 2, 1, 1};
    const SbVec2f &size = getPageSize();
    const SbVec2f &origin = getPageOrigin();
    const float nominal = getNominalMillimeters();
    *m_page = Page();
    m_page->isColored = m_psOutput->getColored() != 0;
    m_page->pointSize = m_page->lineWidth = nominal;

    oravane::PageText &text = m_page->text;
    text << oravane::psProlog(m_page->isColored, pagePoints(size[0]), pagePoints(size[1]));
    text.fixed(kPointsPerMillimeter, 6) << " ";
    text.fixed(kPointsPerMillimeter, 6) << " scale\n";
    text << "/linecap " << kLineCaps[std::clamp<int>(getLineEndStyle(), 0, 3)]
         << " def\nlinecap setlinecap\n";
    text << kLineJoins[std::clamp<int>(getLineJoinsStyle(), 0, 5)] << " setlinejoin\n";
    text.fixed2(getMiterLimit()) << " setmiterlimit\n";
    text.fixed2(nominal) << " ps\n";
    text.fixed2(nominal) << " ep\n[] 0 tl\n";
    const bool isPortrait = getOrientation() == PORTRAIT;
    text.fixed2(origin[isPortrait ? 0 : 1]) << " ";
    text.fixed2(origin[isPortrait ? 1 : 0]) << " translate\n";
    if (!isPortrait)
        (text << "90 rotate\n0 ").fixed2(-size[1]) << " translate\n";
    send();
}

void SoVectorizePSAction::writeFooter() {
    m_page->text << "showpage\n";
    send();
}

void SoVectorizePSAction::setHardwareClip() {
    oravane::PageText &text = m_page->text;
    if (isViewportKnown()) {
        text << "grestore\n";
        initDefaultCurrentValues();
    }
    float x0, y0, x1, y1;
    getClippingLimits().getBounds(x0, y0, x1, y1);
    const SbVec2f corners[] = {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}, {x0, y0}};
    text << "newpath\n";
    for (const SbVec2f &corner : corners) {
        text.fixed2(corner[0]) << " ";
        text.fixed2(corner[1]) << (&corner == corners ? " moveto\n" : " lineto\n");
    }
    text << "closepath\ngsave\nclip\n";
    send();
}

void SoVectorizePSAction::printBackground() {
    oravane::PageText &text = m_page->text;
    if (isPageMode()) {
        (text << "gsave\n").fixed2(getShiftX()) << " ";
        text.fixed2(getShiftY()) << " translate\n";
    }
    send();
    fillBackground();
}

void SoVectorizePSAction::printBorder() {
    oravane::PageText &text = m_page->text;
    initDefaultCurrentValues();
    float borderWidth;
    getBorder(&borderWidth, nullptr);
    // A view leaves its clip open. Each drawing of a page must end in the state that it began in.
    const bool clipIsOpen = isViewportKnown();
    if (borderWidth > 0) {
        const float width = getWidth(), height = getHeight();
        if (!clipIsOpen && isPageMode())
            text << "gsave\n";
        (text << "grestore\nnewpath\n0 0 moveto\n").fixed2(width) << " 0 lineto\n";
        text.fixed2(width) << " ";
        text.fixed(height, 6) << " lineto\n0 ";
        text.fixed2(height) << " lineto\n0 0 lineto\nclosepath\ngsave\nclip\n";
        send();
        strokeBorder();
        text << "grestore\n";
    } else if (clipIsOpen && isPageMode()) {
        text << "grestore\n";
    }
    if (isPageMode())
        text << "grestore\n";
    send();
}

// --------------------------------------------------------------------------------------- current attributes

void SoVectorizePSAction::assignColor(SbColor color, float width) {
    if (getPenNum() > 0) {
        int pen = 0;
        float penWidth = 0;
        penAssignment(color, width, &pen, &penWidth);
        color = getPenColor(pen);
    }
    if (color == m_page->color)
        return;
    m_page->color = color;
    oravane::PageText &text = m_page->text;
    if (m_page->isColored) {
        for (int k = 0; k < 3; ++k) {
            text.shortFixed2(color[k]);
            text << " ";
        }
        text << "gc\n";
    } else {
        oravane::PageText level;
        level.fixed2(oravane::greyLevel(color[0], color[1], color[2])) << " gb";
        text << oravane::shortenNumbers(level.view()) << "\n";
    }
}

void SoVectorizePSAction::assignWidth(float width) {
    if (width == m_page->lineWidth)
        return;
    m_page->lineWidth = width;
    m_page->text.shortFixed2(width);
    m_page->text << " ep\n";
}

void SoVectorizePSAction::assignPattern(unsigned short pattern) {
    if (pattern == m_page->pattern)
        return;
    m_page->pattern = pattern;
    const oravane::PsDash dash = oravane::psDash(pattern);
    m_page->text << "[" << dash.elements << "] ";
    m_page->text.fixed2(static_cast<float>(dash.offsetBits) * getNominalMillimeters()) << " tl\n";
}

void SoVectorizePSAction::assignFont(const char *fontName, float size) {
    const std::string name = std::string(fontName ? fontName : "").substr(0, kLongestFontName);
    if (size == m_page->fontSize && name == m_page->fontName)
        return;
    m_page->fontSize = size;
    m_page->fontName = name;
    m_page->text << oravane::psFontName(name) << " findfont ";
    m_page->text.fixed2(size * getNominalMillimeters()) << " scalefont setfont\n";
}

// ---------------------------------------------------------------------------------- lines, marks, polygons

/// Writes the points from the last to the first, since the operators take them from a stack.
void SoVectorizePSAction::writePoints(const SbVec4f *first, int n, int longestLine) {
    oravane::PageText &text = m_page->text;
    int length = 0;
    for (int i = n - 1; i >= 0; --i) {
        length += text.shortFixed2(first[i][0]) + 1;
        text << " ";
        length += text.shortFixed2(first[i][1]) + 1;
        const bool isFull = length > longestLine;
        text << (isFull || i == 0 ? "\n" : " ");
        if (isFull)
            length = 0;
    }
}

/// Writes batches of points, the last batch of the run first, each closed by its size and a procedure's name.
/// Joined batches share a point.
void SoVectorizePSAction::writeRuns(const SbVec4f *points, int n, int batch, bool joined,
                                    std::string_view name) {
    const int shared = joined ? 1 : 0;
    for (int end = n; end > 0;) {
        const int begin = std::max(end - batch, 0);
        writePoints(points + begin, end - begin, kLongestLine);
        m_page->text << end - begin << " " << name << "\n";
        end = begin > 0 ? begin + shared : 0;
    }
}

void SoVectorizePSAction::printPolyLine(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                                        float width, unsigned short pattern) {
    if (n < 1 || pattern == 0)
        return;
    const float lineWidth = oravane::orOne(width) * getNominalMillimeters();
    assignWidth(lineWidth);
    assignPattern(pattern);
    oravane::PageText &text = m_page->text;
    if (!multicolor) {
        assignColor(colors[0], lineWidth);
        writeRuns(points, n, kLineBatch, true, "ppl");
    } else {
        for (int i = 0; i + 1 < n; ++i) {
            assignColor(colors[i], lineWidth);
            for (const SbVec4f *p : {points + i, points + i + 1}) {
                for (int k = 0; k < 2; ++k) {
                    text.shortFixed2((*p)[k]);
                    text << " ";
                }
            }
            text << "2 ppl\n";
        }
    }
    send();
}

void SoVectorizePSAction::printPolyMark(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                                        float size) {
    if (n < 1)
        return;
    const float pointSize = oravane::orOne(size) * getNominalMillimeters();
    oravane::PageText &text = m_page->text;
    if (pointSize != m_page->pointSize) {
        m_page->pointSize = pointSize;
        text.fixed2(pointSize) << " ps\n";
    }
    if (!multicolor) {
        assignColor(colors[0], pointSize);
        writeRuns(points, n, kLineBatch, false, "ppmp");
    } else {
        for (int i = 0; i < n; ++i) {
            assignColor(colors[i], pointSize);
            text.fixed2(points[i][0]) << " ";
            text.fixed2(points[i][1]) << " 1 ppmp\n";
        }
    }
    send();
}

void SoVectorizePSAction::printPolygon(const SbVec4f *points, int n, const SbColor *colors) {
    if (n < 1)
        return;
    oravane::PageText &text = m_page->text;
    const float nominal = getNominalMillimeters();
    assignWidth(nominal);
    assignColor(colors[0], nominal);
    text.fixed2(points[0][0]) << " ";
    text.fixed2(points[0][1]) << " pfabeg\n";
    int next = 1;
    for (; n - next > kPolygonBatch; next += kPolygonBatch) {
        writePoints(points + next, kPolygonBatch, kLongestPolygonLine);
        text << kPolygonBatch << " pfacnt\n";
    }
    writePoints(points + next, n - next, kLongestPolygonLine);
    text << n - next << " pfaend\n1 pfa\n";
    send();
}

// -------------------------------------------------------------------------------------------------- markers

/// Defines the bitmap of a marker at its first use; false when the marker has none.
bool SoVectorizePSAction::createBitmap(int index, SbVec2s &size) {
    const oravane::MarkerBits marker = oravane::markerBits(index);
    size = marker.size;
    if (!marker.bytes || !m_page->bitmaps.insert(index).second)
        return marker.bytes != nullptr;
    oravane::PageText &text = m_page->text;
    text << "/Bitmap" << index << "\n{ " << size[0] << " " << size[1] << "\n true\n [" << size[0] << " 0 0 "
         << size[1] << " 0 0]\n{<";
    int digits = 0;
    for (int row = 0; row < size[1]; ++row) {
        for (int k = 0; k < (size[0] + 7) / 8; ++k) {
            text.hexByte(marker.bytes[row * marker.bytesPerRow + k]);
            digits += 2;
            if (digits % kHexDigitsOnBitmapLine == 0)
                text << "\n";
        }
    }
    text << ">} imagemask\n} bind def\n";
    return true;
}

void SoVectorizePSAction::printPolyMark(const SbVec4f *points, int n, const SbColor *colors, int,
                                        SoMarkerSet *markerSet) {
    const int numIndices = markerSet ? markerSet->markerIndex.getNum() : 0;
    const float nominal = getNominalMillimeters();
    oravane::PageText &text = m_page->text;
    for (int i = 0; i < n && numIndices > 0 && !vanishes(nominal); ++i) {
        const int index = markerSet->markerIndex[i % numIndices];
        SbVec2s pixels;
        if (!createBitmap(index, pixels))
            continue;
        if (index != m_page->bitmapIndex) {
            m_page->bitmapIndex = index;
            text << "/currentBitmapIndex {Bitmap" << index << "} bind def\n";
        }
        assignColor(colors[i], nominal);
        const SbVec2f size(pixels[0] * nominal, pixels[1] * nominal);
        text.fixed2(size[0]) << " ";
        text.fixed2(size[1]) << " ";
        text.fixed2(points[i][0] - size[0] / 2) << " ";
        text.fixed2(points[i][1] - size[1] / 2) << " DisplayBitmap\n";
    }
    send();
}

// ------------------------------------------------------------------------------------------ texts and images

void SoVectorizePSAction::printText2(SbVec4f point, SbColor color, const char *fontName, float size,
                                     const char *string, int justification, float angle) {
    enum { LEFT = 1, RIGHT = 2, CENTER = 3 };
    if (vanishes(size * getNominalMillimeters()))
        return;
    assignColor(color, getNominalMillimeters());
    assignFont(fontName, size);
    oravane::PageText &text = m_page->text;
    const float degrees = angle * 180 / 3.1415927f;
    const std::string inside = oravane::psString(string ? string : "");
    if (justification == LEFT) {
        (text << "(" << inside << ") ").fixed2(degrees) << " ";
        text.fixed2(point[0]) << " ";
        text.fixed2(point[1]) << " ltx\n";
    } else if (justification == RIGHT || justification == CENTER) {
        text.fixed2(point[0]) << " ";
        text.fixed2(point[1]) << " ";
        text.fixed2(degrees) << " (" << inside << (justification == RIGHT ? ") rtx\n" : ") ctx\n");
    }
    send();
}

void SoVectorizePSAction::writePixels(const unsigned char *pixels, const SbVec2s &size, int components) {
    oravane::PageText &text = m_page->text;
    const bool hasColors = components >= 3;
    const bool writesColors = hasColors && m_page->isColored;
    int onLine = 0;
    const auto put = [&](unsigned char byte) {
        text.hexByte(byte);
        if (++onLine == kBytesOnImageLine) {
            text << "\n";
            onLine = 0;
            if (text.view().size() > kLargestPiece)
                send();
        }
    };
    const long count = static_cast<long>(size[0]) * size[1];
    for (const unsigned char *p = pixels; p != pixels + count * components; p += components) {
        if (writesColors)
            std::for_each(p, p + 3, put);
        else
            put(hasColors ? static_cast<unsigned char>(oravane::greyLevel(p[0], p[1], p[2])) : p[0]);
    }
    text << "\n";
}

void SoVectorizePSAction::printImage(const SbVec4f &point, const unsigned char *pixels, SbVec2s &size,
                                     SbVec2s &sourceSize, int components, SoImage::HorAlignment horizontal,
                                     SoImage::VertAlignment vertical) {
    if (!pixels || components <= 0 || sourceSize[0] <= 0 || sourceSize[1] <= 0)
        return;
    const SbBox2f box =
        oravane::imageBox({point[0], point[1]}, size, getPixelMillimeters(), horizontal, vertical);
    const SbVec2f extent = box.isEmpty() ? SbVec2f(0, 0) : box.getSize();
    if (vanishes(extent[0]) || vanishes(extent[1]) || !getClippingLimits().intersect(box))
        return;
    oravane::PageText &text = m_page->text;
    text << sourceSize[0] << " " << sourceSize[1] << "\n";
    for (const SbVec2f &pair : {extent, box.getMin()}) {
        text.fixed2(pair[0]) << " ";
        text.fixed2(pair[1]) << "\n";
    }
    text << sourceSize[0] << "\n";
    if (m_page->isColored)
        text << (components < 3 ? 1 : 3) << "\n";
    text << "DisplayImage\n";
    writePixels(pixels, sourceSize, components);
    send();
}

ORAVANE_VECTORIZE_END
