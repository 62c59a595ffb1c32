#ifndef ORAVANE_SOVECTORIZEHPGLACTION_H
#define ORAVANE_SOVECTORIZEHPGLACTION_H

#include <oravane/SoHPGLVectorOutput.h>
#include <oravane/SoVectorizeAction.h>

#include <memory>
#include <string_view>

ORAVANE_VECTORIZE_BEGIN

/// Writes a scene as a page of HP-GL/2, wrapped for a PCL printer: 40 device units to the millimetre,
/// polylines and polygons in the Polyline Encoded form, which makes the smallest of all pages.
///
/// \code
///   SoVectorizeHPGLAction action;
///   action.getOutput()->openFile("page.plt");
///   action.apply(scene);
///   action.getOutput()->closeFile();
/// \endcode
///
/// Without pens colours are those of a palette of 256, three bits of red and green and two of blue; with
/// pens (`setPenDescription`) those of the pens. What is already set (pen, width, pattern, font height,
/// justification, direction) is not set again. Coordinates are cut to whole device units; along a polyline
/// or an outline the remainders are carried, so that every point lies within one unit of where it should.
///
/// The language limits the page: a line has one colour, its first; marks are single dots whatever their
/// size, markers too; a font has a height but no name; the justification of a text is passed on by its
/// number (1, 2, 3), which devices understand as the left end at the base line, at half the height and at the
/// top; images are not drawn.
///
/// The page is well-formed whatever the scene holds. Control characters in a text are dropped, so that it
/// stays one label. Coordinates beyond 2^28 device units count as that, and as 0 when they are not a number;
/// a negative line width counts as 0. Line patterns shorter than the file's decimals, or without measure, are
/// drawn solid, a pattern of 0 not at all, and texts lower than 0.01 points are left out.
class ORAVANE_API SoVectorizeHPGLAction : public SoVectorizeAction {
public:
    SoVectorizeHPGLAction();
    ~SoVectorizeHPGLAction() override;

    SoHPGLVectorOutput *getOutput() const;

protected:
    void writeHeader() override;
    void writeFooter() override;
    void setHardwareClip() override;
    /// The present view on the page in device units.
    SbBox2f getClippingLimits() const override;
    void printBorder() override;
    /// When an earlier drawing of the page has left a window that does not hold the whole of this one, the
    /// window is opened first.
    void printBackground() override;

    void printPolyLine(const SbVec4f *points, int n, const SbColor *colors, int multicolor, float width,
                       unsigned short pattern) override;
    void printPolyMark(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                       float size) override;
    /// Plain marks.
    void printPolyMark(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                       SoMarkerSet *markerSet) override;
    void printPolygon(const SbVec4f *points, int n, const SbColor *colors) override;
    void printText2(SbVec4f point, SbColor color, const char *fontName, float size, const char *string,
                    int justification, float angle) override;
    /// Writes nothing.
    void printImage(const SbVec4f &point, const unsigned char *pixels, SbVec2s &size, SbVec2s &sourceSize,
                    int components, SoImage::HorAlignment horizontal,
                    SoImage::VertAlignment vertical) override;

private:
    struct Page;
    class Trace;

    void send();
    /// The pen for a colour and a line width in mm.
    int assignColor(SbColor color, float width);
    void selectPen(int pen);
    void assignPattern(unsigned short pattern);
    void writePalette();
    void writeWindow(const SbBox2f &window);
    /// The drawing in device units.
    SbBox2f drawingBox() const;

    std::unique_ptr<SoHPGLVectorOutput> m_hpglOutput;
    std::unique_ptr<Page> m_page;
};

ORAVANE_VECTORIZE_END

#endif
