#include <oravane/SoHLHSRVectorize.h>
#include <oravane/SoVectorizePrimitives.h>

#include "vectorize/ConvexPolygon.h"

#include <algorithm>
#include <memory>
#include <span>

ORAVANE_VECTORIZE_BEGIN

SbColor Primitive::getColor() const {
    return SbColor(0, 0, 0);
}

void Primitive::dispose(Primitive *primitive) {
    if (primitive && primitive->m_isStored)
        primitive->~Primitive(); // its memory goes with the storage
    else
        delete primitive;
}

namespace {

/// Of a block of points with their colours.
std::size_t sizeOf(int num) {
    return static_cast<std::size_t>(num) * (sizeof(SbVec4f) + sizeof(SbColor));
}

} // namespace

void PrimitiveMultiPoints::Release::operator()(SbVec4f *block) const {
    storage->deallocate(block, sizeOf(num), alignof(SbVec4f));
}

SbColor PrimitiveMultiPoints::getColor() const {
    return getNum() > 0 ? colors()[0] : Primitive::getColor();
}

SbVec3f PrimitiveMultiPoints::getPoint(int index) const {
    if (index < 0 || index >= getNum())
        return SbVec3f(0, 0, 0);
    const SbVec4f &p = m_points[index];
    return SbVec3f(p[0], p[1], p[2]);
}

float PrimitiveMultiPoints::getAverageZ() const {
    float sum = 0;
    for (int i = 0; i < getNum(); ++i)
        sum += m_points[i][2];
    return getNum() > 0 ? sum / static_cast<float>(getNum()) : 0;
}

void PrimitiveMultiPoints::setPoints(int n, const SbVec4f *points, const SbColor *colors) {
    const int count = points && colors ? std::max(n, 0) : 0;
    std::pmr::memory_resource *const storage = m_points.get_deleter().storage;
    m_box.makeEmpty();
    m_zMax = m_zMin = 0;
    m_points = {nullptr, {storage}};
    if (count == 0)
        return;
    auto *const block = static_cast<SbVec4f *>(storage->allocate(sizeOf(count), alignof(SbVec4f)));
    m_points = {block, {storage, count}};
    std::uninitialized_copy_n(points, count, block);
    std::uninitialized_copy_n(colors, count, reinterpret_cast<SbColor *>(block + count));
    SbVec4f low = points[0], high = points[0];
    for (int i = 1; i < count; ++i)
        for (int k = 0; k < 3; ++k) {
            low[k] = std::min(low[k], points[i][k]);
            high[k] = std::max(high[k], points[i][k]);
        }
    m_box.setBounds(low[0], low[1], high[0], high[1]);
    m_zMin = low[2];
    m_zMax = high[2];
}

void PolyGon::setValue(int n, const SbVec4f *points, const SbColor *colors, int multicolor, float lineWidth,
                       float pointSize, unsigned short pattern, Style style) {
    setPoints(n, points, colors);
    m_multicolor = multicolor;
    m_lineWidth = lineWidth;
    m_pointSize = pointSize;
    m_pattern = pattern;
    m_style = style;
    m_planeIsValid = false;
}

void PolyGon::print(SoHLHSRVectorize *hlhsr) {
    switch (m_style) {
    case FILLED:
        hlhsr->printPolygon(points(), getNum(), colors());
        break;
    case LINES:
        hlhsr->printPolyLine(points(), getNum(), colors(), m_multicolor, m_lineWidth, m_pattern);
        break;
    case POINTS:
        hlhsr->printPolyMark(points(), getNum(), colors(), m_multicolor, m_pointSize, nullptr);
        break;
    }
}

const SbPlane *PolyGon::getPlane() {
    if (getNum() < 3)
        return nullptr;
    if (!m_planeIsValid) {
        const SbVec3f p0 = getPoint(0);
        SbVec3f normal = (getPoint(1) - p0).cross(getPoint(2) - p0);
        if (normal.dot(SbVec3f(0, 0, -1)) < 0)
            normal.negate();
        m_plane = SbPlane(normal, p0);
        m_planeIsValid = true;
    }
    return &m_plane;
}

int PolyGon::isPointInnerXYPlane(const SbVec2f &point) const {
    return oravane::isInsideConvex(std::span(points(), static_cast<std::size_t>(getNum())), point[0],
                                   point[1]);
}

void PolyLine::setValue(int n, const SbVec4f *points, const SbColor *colors, int multicolor, float width,
                        unsigned short pattern) {
    setPoints(n, points, colors);
    m_multicolor = multicolor;
    m_width = width;
    m_pattern = pattern;
}

void PolyLine::print(SoHLHSRVectorize *hlhsr) {
    hlhsr->printPolyLine(points(), getNum(), colors(), m_multicolor, m_width, m_pattern);
}

void PolyMark::setValue(int n, const SbVec4f *points, const SbColor *colors, int multicolor, float size,
                        SoMarkerSet *markerSet) {
    setPoints(n, points, colors);
    m_multicolor = multicolor;
    m_size = size;
    m_markerSet = markerSet;
}

void PolyMark::print(SoHLHSRVectorize *hlhsr) {
    hlhsr->printPolyMark(points(), getNum(), colors(), m_multicolor, m_size, m_markerSet);
}

void PrimitiveMonoPoint::setPoint(const SbVec4f &point, const SbColor &color) {
    m_point = point;
    m_color = color;
    m_box.setBounds(point[0], point[1], point[0], point[1]);
}

void Text2D::setValue(const SbVec4f &point, const SbColor &color, const char *fontName, float size,
                      int numStrings, const SbString *strings, float spacing, int justification,
                      float angle) {
    setPoint(point, color);
    m_fontName = fontName ? fontName : "";
    m_size = size;
    m_strings.assign(strings, strings + (strings ? std::max(numStrings, 0) : 0));
    m_spacing = spacing;
    m_justification = justification;
    m_angle = angle;
}

void Text2D::print(SoHLHSRVectorize *hlhsr) {
    hlhsr->printText2D(m_point, m_color, m_fontName.c_str(), m_size, static_cast<int>(m_strings.size()),
                       m_strings.data(), m_spacing, m_justification, m_angle);
}

void Image::setValue(const SbVec4f &point, const unsigned char *pixels, const SbVec2s &size,
                     const SbVec2s &sourceSize, int components, SoImage::HorAlignment horizontal,
                     SoImage::VertAlignment vertical) {
    setPoint(point, SbColor(0, 0, 0));
    m_pixels = pixels;
    m_size = size;
    m_sourceSize = sourceSize;
    m_components = components;
    m_horizontal = horizontal;
    m_vertical = vertical;
}

void Image::print(SoHLHSRVectorize *hlhsr) {
    hlhsr->printImage(m_point, m_pixels, m_size, m_sourceSize, m_components, m_horizontal, m_vertical);
}

ORAVANE_VECTORIZE_END
