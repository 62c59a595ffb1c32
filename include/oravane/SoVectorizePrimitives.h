#ifndef ORAVANE_SOVECTORIZEPRIMITIVES_H
#define ORAVANE_SOVECTORIZEPRIMITIVES_H

#include <oravane/OravaneApi.h>

#include <Inventor/SbBox2f.h>
#include <Inventor/SbColor.h>
#include <Inventor/SbPlane.h>
#include <Inventor/SbString.h>
#include <Inventor/SbVec2s.h>
#include <Inventor/SbVec4f.h>
#include <Inventor/nodes/SoImage.h>

#include <memory>
#include <memory_resource>
#include <string>
#include <vector>

class SoMarkerSet;

ORAVANE_VECTORIZE_BEGIN

class SoHLHSRVectorize;

/// One thing to be drawn on a page, kept until the things of a view are sorted by depth. Points are in
/// normalised coordinates: x and y from -1 to 1, z growing away from the viewer, up to 1.
///
/// \code
///   PolyGon *polygon = new PolyGon;
///   polygon->setValue(3, points, colors, 0, 1, 1, 0xFFFF, PolyGon::FILLED);
///   polygon->setPriority(7);
///   list.append(polygon);
/// \endcode
class ORAVANE_API Primitive {
public:
    Primitive() = default;
    Primitive(const Primitive &) = delete;
    Primitive &operator=(const Primitive &) = delete;
    virtual ~Primitive() = default;

    /// Draws itself through the matching print operation.
    virtual void print(SoHLHSRVectorize *hlhsr) = 0;
    virtual float getAverageZ() const = 0;
    /// Largest and smallest z of the points.
    virtual float getZmax() const = 0;
    virtual float getZmin() const = 0;
    /// Extent in x and y.
    virtual SbBox2f &getBBox() { return m_box; }
    /// Black here; the first point's colour, or the only colour, in the children.
    virtual SbColor getColor() const;
    /// Primitive 0, PrimitiveMultiPoints 1, PrimitiveMonoPoint 2, PolyGon 3, PolyLine 4, PolyMark 5,
    /// Text2D 6, Image 7.
    virtual int getTypeId() const { return 0; }

    /// Order of creation; decides between equal depths.
    void setPriority(int priority) { m_priority = priority; }
    int getPriority() const { return m_priority; }

    /// Makes a primitive whose object and points lie in `storage`, which must outlive it.
    template <class P>
    static P *makeIn(std::pmr::memory_resource &storage) {
        P *primitive = new (storage.allocate(sizeof(P), alignof(P))) P(&storage);
        static_cast<Primitive *>(primitive)->m_isStored = true;
        return primitive;
    }

    /// Destroys a primitive made by `new` or by `makeIn`; null is ignored.
    static void dispose(Primitive *primitive);

protected:
    SbBox2f m_box;

private:
    int m_priority = 0;
    bool m_isStored = false;
};

/// A run of points with a colour each.
class ORAVANE_API PrimitiveMultiPoints : public Primitive {
public:
    float getAverageZ() const override;
    float getZmax() const override { return m_zMax; }
    float getZmin() const override { return m_zMin; }
    SbColor getColor() const override;
    int getTypeId() const override { return 1; }

    int getNum() const { return m_points.get_deleter().num; }
    /// x, y and z of point `index`; the null vector for an index out of range.
    SbVec3f getPoint(int index) const;

protected:
    explicit PrimitiveMultiPoints(std::pmr::memory_resource *storage) : m_points(nullptr, {storage}) {}
    /// Copies `n` points and colours and works out the depths and the box; an `n` below 1 or a null array
    /// makes the run empty.
    void setPoints(int n, const SbVec4f *points, const SbColor *colors);

    const SbVec4f *points() const { return m_points.get(); }
    const SbColor *colors() const { return reinterpret_cast<const SbColor *>(points() + getNum()); }

private:
    struct Release {
        std::pmr::memory_resource *storage;
        int num = 0;

        void operator()(SbVec4f *block) const;
    };

    float m_zMax = 0, m_zMin = 0;
    std::unique_ptr<SbVec4f[], Release> m_points; ///< one block of memory with the colours behind
};

/// A convex polygon.
class ORAVANE_API PolyGon : public PrimitiveMultiPoints {
public:
    enum Style : int {
        FILLED = 0, ///< filled with the first point's colour
        LINES = 1,  ///< the polyline through its points
        POINTS = 2, ///< a mark at each point
    };

    explicit PolyGon(std::pmr::memory_resource *storage = std::pmr::get_default_resource())
        : PrimitiveMultiPoints(storage) {}

    /// Copies `n` points and colours. `lineWidth` and `pointSize` are multiples of the nominal width.
    void setValue(int n, const SbVec4f *points, const SbColor *colors, int multicolor, float lineWidth,
                  float pointSize, unsigned short pattern, Style style);

    void print(SoHLHSRVectorize *hlhsr) override;
    int getTypeId() const override { return getClassTypeId(); }
    static int getClassTypeId() { return 3; }

    /// The plane through the first three points, its normal facing the viewer (towards -z), or null with
    /// fewer than three points. Three points on a line give a null normal. Valid until the next `setValue`.
    const SbPlane *getPlane();

    /// True when `point` lies strictly inside of the polygon in x and y; an edge is outside.
    int isPointInnerXYPlane(const SbVec2f &point) const;

private:
    Style m_style = FILLED;
    float m_lineWidth = 1, m_pointSize = 1;
    unsigned short m_pattern = 0xFFFF;
    bool m_planeIsValid = false;
    int m_multicolor = 0;
    SbPlane m_plane;
};

class ORAVANE_API PolyLine : public PrimitiveMultiPoints {
public:
    explicit PolyLine(std::pmr::memory_resource *storage = std::pmr::get_default_resource())
        : PrimitiveMultiPoints(storage) {}

    void setValue(int n, const SbVec4f *points, const SbColor *colors, int multicolor, float width,
                  unsigned short pattern);
    void print(SoHLHSRVectorize *hlhsr) override;
    int getTypeId() const override { return 4; }

private:
    int m_multicolor = 0;
    float m_width = 1;
    unsigned short m_pattern = 0xFFFF;
};

class ORAVANE_API PolyMark : public PrimitiveMultiPoints {
public:
    explicit PolyMark(std::pmr::memory_resource *storage = std::pmr::get_default_resource())
        : PrimitiveMultiPoints(storage) {}

    /// `markerSet` is borrowed; null means square points of `size`.
    void setValue(int n, const SbVec4f *points, const SbColor *colors, int multicolor, float size,
                  SoMarkerSet *markerSet);
    void print(SoHLHSRVectorize *hlhsr) override;
    int getTypeId() const override { return 5; }

private:
    int m_multicolor = 0;
    float m_size = 1;
    SoMarkerSet *m_markerSet = nullptr;
};

/// Something that stands at one point.
class ORAVANE_API PrimitiveMonoPoint : public Primitive {
public:
    float getAverageZ() const override { return m_point[2]; }
    float getZmax() const override { return m_point[2]; }
    float getZmin() const override { return m_point[2]; }
    SbColor getColor() const override { return m_color; }
    int getTypeId() const override { return 2; }

protected:
    PrimitiveMonoPoint() : m_point(0, 0, 0, 1), m_color(0, 0, 0) {}
    void setPoint(const SbVec4f &point, const SbColor &color);

    SbVec4f m_point;
    SbColor m_color;
};

class ORAVANE_API Text2D : public PrimitiveMonoPoint {
public:
    explicit Text2D(std::pmr::memory_resource * = nullptr) {}

    /// Copies the font name and the strings. `size` is a multiple of the nominal width, `angle` is in
    /// radians.
    void setValue(const SbVec4f &point, const SbColor &color, const char *fontName, float size,
                  int numStrings, const SbString *strings, float spacing, int justification, float angle);
    void print(SoHLHSRVectorize *hlhsr) override;
    int getTypeId() const override { return 6; }

private:
    std::string m_fontName;
    float m_size = 1;
    std::vector<SbString> m_strings;
    float m_spacing = 1;
    int m_justification = 1;
    float m_angle = 0;
};

class ORAVANE_API Image : public PrimitiveMonoPoint {
public:
    explicit Image(std::pmr::memory_resource * = nullptr) {}

    /// `pixels` are borrowed: `sourceSize` rows of pixels of `components` bytes, bottom row first.
    void setValue(const SbVec4f &point, const unsigned char *pixels, const SbVec2s &size,
                  const SbVec2s &sourceSize, int components, SoImage::HorAlignment horizontal,
                  SoImage::VertAlignment vertical);
    void print(SoHLHSRVectorize *hlhsr) override;
    int getTypeId() const override { return 7; }

private:
    const unsigned char *m_pixels = nullptr;
    SbVec2s m_size{0, 0}, m_sourceSize{0, 0};
    int m_components = 0;
    SoImage::HorAlignment m_horizontal = SoImage::LEFT;
    SoImage::VertAlignment m_vertical = SoImage::BOTTOM;
};

ORAVANE_VECTORIZE_END

#endif
