#include <oravane/SoHLHSRVectorize.h>
#include <oravane/SoHiddenLines.h>
#include <oravane/SoPainter.h>
#include <oravane/SoVectorizeAction.h>

#include "vectorize/PageClipper.h"

#include <array>

ORAVANE_VECTORIZE_BEGIN

/// The primitives of one view. Millions of small objects live and die together here: they and their points
/// come from one growing block.
struct SoHLHSRVectorize::Batch {
    ~Batch() {
        for (int i = 0; i < list.getLength(); ++i)
            Primitive::dispose(list[i]);
    }

    std::pmr::monotonic_buffer_resource storage{std::size_t{1} << 16};
    PrimitiveList list;
    int nextPriority = 0;
    std::unique_ptr<SoHiddenLines> hiddenLines; ///< takes polygons and polylines in their place, if there
};

SoHLHSRVectorize::SoHLHSRVectorize(SoVectorizeAction *action, HLHSRMode mode)
    : m_action(action), m_mode(mode) {}

SoHLHSRVectorize::~SoHLHSRVectorize() = default;

void SoHLHSRVectorize::startHLHSR() {
    m_batch = std::make_unique<Batch>();
    if (m_mode == LINE_REMOVAL)
        m_batch->hiddenLines = std::make_unique<SoHiddenLines>();
}

void SoHLHSRVectorize::endHLHSR() {
    if (!m_batch)
        return;
    SoPainter painter(&m_batch->list, this, m_mode != FULL_SORT);
    painter.apply();
    painter.display();
    if (m_batch->hiddenLines)
        printVisibleLines(*m_batch->hiddenLines);
    m_batch.reset();
}

void SoHLHSRVectorize::printVisibleLines(SoHiddenLines &lines) {
    int count = 0;
    const std::unique_ptr<SoHiddenLines::Polyline[]> visible(lines.computeHiddenLines(count));
    for (int i = 0; i < count; ++i) {
        const SoHiddenLines::Polyline &line = visible[i];
        const std::vector<SbColor> colors(line.num, line.color);
        printPolyLine(line.points.get(), line.num, colors.data(), 0, line.width, line.pattern);
    }
}

template <class P, class... Values>
void SoHLHSRVectorize::store(const SbVec4f *points, int n, const Values &...values) {
    if (!m_batch || !points || n < 1 || !oravane::isFinite({points, static_cast<std::size_t>(n)}))
        return;
    P *primitive = Primitive::makeIn<P>(m_batch->storage);
    primitive->setValue(values...);
    primitive->setPriority(m_batch->nextPriority++);
    m_batch->list.append(primitive);
}

void SoHLHSRVectorize::storePolygon(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                                    float width, float size, unsigned short pattern, PolyGon::Style style) {
    if (m_batch && m_batch->hiddenLines) {
        if (points && colors && n > 0)
            m_batch->hiddenLines->addPolygon(points, n, colors[0], width, pattern);
        return;
    }
    store<PolyGon>(points, n, n, points, colors, multicolor, width, size, pattern, style);
}

void SoHLHSRVectorize::storePolyLine(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                                     float width, unsigned short pattern) {
    if (m_batch && m_batch->hiddenLines) {
        storeRuns(points, n, colors, multicolor, width, pattern);
        return;
    }
    store<PolyLine>(points, n, n, points, colors, multicolor, width, pattern);
}

/// Hidden lines have one colour each: a line of many is stored as runs of segments of one, that of their
/// start.
void SoHLHSRVectorize::storeRuns(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                                 float width, unsigned short pattern) {
    for (int begin = 0, end = 0; points && colors && begin + 1 < n; begin = end) {
        end = multicolor ? begin + 1 : n - 1;
        while (end + 1 < n && colors[end] == colors[begin])
            ++end;
        m_batch->hiddenLines->addPolyline(points + begin, end - begin + 1, colors[begin], width, pattern);
    }
}

void SoHLHSRVectorize::storePolyMark(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                                     float size, SoMarkerSet *markerSet) {
    store<PolyMark>(points, n, n, points, colors, multicolor, size, markerSet);
}

void SoHLHSRVectorize::storeImage(const SbVec4f &point, const unsigned char *pixels, const SbVec2s &size,
                                  const SbVec2s &sourceSize, int components, SoImage::HorAlignment horizontal,
                                  SoImage::VertAlignment vertical) {
    store<Image>(&point, 1, point, pixels, size, sourceSize, components, horizontal, vertical);
}

void SoHLHSRVectorize::storeText2D(const SbVec4f &point, const SbColor &color, const char *fontName,
                                   float size, int numStrings, const SbString *strings, float spacing,
                                   int justification, float angle) {
    store<Text2D>(&point, 1, point, color, fontName, size, numStrings, strings, spacing, justification,
                  angle);
}

const SbVec4f *SoHLHSRVectorize::project(const SbVec4f *points, int n) {
    m_projected.assign(points, points + n);
    m_action->projectPoints(m_projected.data(), n);
    return m_projected.data();
}

void SoHLHSRVectorize::printPolygon(const SbVec4f *points, int n, const SbColor *colors) {
    if (n > 0)
        m_action->printPolygon(project(points, n), n, colors);
}

void SoHLHSRVectorize::printPolyLine(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                                     float width, unsigned short pattern) {
    if (n > 0)
        m_action->printPolyLine(project(points, n), n, colors, multicolor, width, pattern);
}

void SoHLHSRVectorize::printPolyMark(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                                     float size, SoMarkerSet *markerSet) {
    if (n < 1)
        return;
    if (markerSet)
        m_action->printPolyMark(project(points, n), n, colors, multicolor, markerSet);
    else
        m_action->printPolyMark(project(points, n), n, colors, multicolor, size);
}

void SoHLHSRVectorize::printImage(const SbVec4f &point, const unsigned char *pixels, const SbVec2s &size,
                                  const SbVec2s &sourceSize, int components, SoImage::HorAlignment horizontal,
                                  SoImage::VertAlignment vertical) {
    SbVec2s extent = size;
    SbVec2s source = sourceSize;
    m_action->printImage(*project(&point, 1), pixels, extent, source, components, horizontal, vertical);
}

void SoHLHSRVectorize::printText2D(const SbVec4f &point, const SbColor &color, const char *fontName,
                                   float size, int numStrings, const SbString *strings, float spacing,
                                   int justification, float angle) {
    m_action->printTextLines(*project(&point, 1), color, fontName, size, numStrings, strings, spacing,
                             justification, angle);
}

ORAVANE_VECTORIZE_END
