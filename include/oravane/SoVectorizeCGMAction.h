#ifndef ORAVANE_SOVECTORIZECGMACTION_H
#define ORAVANE_SOVECTORIZECGMACTION_H

#include <oravane/SoCGMVectorOutput.h>
#include <oravane/SoVectorizeAction.h>

#include <memory>
#include <optional>

namespace oravane {
struct CgmColor;
struct CgmElement;
} // namespace oravane

ORAVANE_VECTORIZE_BEGIN

/// Writes a scene as a Computer Graphics Metafile (ISO 8632) of one picture: in clear text or in the binary
/// encoding, with direct or indexed colours. One unit of the metafile is a millimetre of the page; the page
/// has the size that was set, whatever the orientation. An attribute is written when it changes.
///
/// \code
///   SoVectorizeCGMAction action;
///   action.getOutput()->setBinary(1);
///   action.getOutput()->openFile("page.cgm");
///   action.apply(scene);
///   action.getOutput()->closeFile();
/// \endcode
///
/// The page is well-formed whatever the scene holds: a number that is not finite is written as 0, a control
/// character of a string as a blank, and what has too few points for its kind is left out. Binary numbers
/// have 32 bits; the extent of a binary page ends at 32767 mm.
class ORAVANE_API SoVectorizeCGMAction : public SoVectorizeAction {
public:
    SoVectorizeCGMAction();
    ~SoVectorizeCGMAction() override;

    SoCGMVectorOutput *getOutput() const;

protected:
    void writeHeader() override;
    void writeFooter() override;
    void setHardwareClip() override;
    void printBorder() override;
    void printBackground() override;

    /// A line of several colours is cut where the colour changes. A pattern of 0 has nothing to draw.
    void printPolyLine(const SbVec4f *points, int n, const SbColor *colors, int multicolor, float width,
                       unsigned short pattern) override;
    void printPolyMark(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                       float size) override;
    /// A marker becomes small filled rectangles, centred at the point; one without a bitmap is left out.
    void printPolyMark(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                       SoMarkerSet *markerSet) override;
    void printPolygon(const SbVec4f *points, int n, const SbColor *colors) override;
    /// A font that is not one of the 13 of the page leaves the last one in force. Another justification than
    /// 1 to 3, or a size that is not above 0, draws nothing.
    void printText2(SbVec4f point, SbColor color, const char *fontName, float size, const char *string,
                    int justification, float angle) override;
    /// In version 3 pixels whose alpha is below 128 are transparent; else alpha does not count.
    void printImage(const SbVec4f &point, const unsigned char *pixels, SbVec2s &size, SbVec2s &sourceSize,
                    int components, SoImage::HorAlignment horizontal,
                    SoImage::VertAlignment vertical) override;

private:
    struct Page;

    void send();
    void writeMetafileDescriptor();
    void writePictureDescriptor();
    void makeColorTable();
    void clipTo(const SbBox2f &box);
    float pageLength(float multiple) const;
    oravane::CgmColor pageColor(const SbColor &color, float width);
    void assignColor(const oravane::CgmElement &element, std::optional<oravane::CgmColor> &last,
                     const oravane::CgmColor &color);
    void assignLineStyle(unsigned short pattern);
    void assignTextStyle(const char *fontName, float height, int justification, float angle);
    void writePoints(const oravane::CgmElement &element, const SbVec4f *points, int n);
    void writeRuns(const oravane::CgmElement &element, const SbVec4f *points, int n, const SbColor *colors,
                   int multicolor, float width);

    std::unique_ptr<SoCGMVectorOutput> m_cgmOutput;
    std::unique_ptr<Page> m_page;
};

ORAVANE_VECTORIZE_END

#endif
