#ifndef ORAVANE_SOVECTORIZEPSACTION_H
#define ORAVANE_SOVECTORIZEPSACTION_H

#include <oravane/SoPSVectorOutput.h>
#include <oravane/SoVectorizeAction.h>

#include <memory>

ORAVANE_VECTORIZE_BEGIN

/// Writes a scene as a PostScript page: level 1 operators, with optional colour, in millimetres behind a
/// fixed prolog of short procedures. What is already set (colour, width, font, pattern) is not set again, and
/// numbers have two decimals, so that pages stay small.
///
/// \code
///   SoVectorizePSAction action;
///   action.getOutput()->openFile("page.ps");
///   action.apply(scene);
///   action.getOutput()->closeFile();
/// \endcode
///
/// The page is well-formed whatever the scene holds: a number that is not finite is written as 0; in a string
/// parentheses get a backslash each and control characters are written by their octal codes, while other
/// characters, a backslash before an ordinary one among them, stand as they are; a font name that cannot be
/// written as a PostScript name is written as a string. Font names count up to 255 characters. Texts,
/// markers and images too small for two decimals are left out.
class ORAVANE_API SoVectorizePSAction : public SoVectorizeAction {
public:
    SoVectorizePSAction();
    ~SoVectorizePSAction() override;

    SoPSVectorOutput *getOutput() const;

protected:
    void writeHeader() override;
    void writeFooter() override;
    void setHardwareClip() override;
    void printBorder() override;
    void printBackground() override;

    /// Batches of 100 points keep the operand stack small. A pattern of 0 has nothing to draw.
    void printPolyLine(const SbVec4f *points, int n, const SbColor *colors, int multicolor, float width,
                       unsigned short pattern) override;
    void printPolyMark(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                       float size) override;
    /// A marker without a bitmap is left out.
    void printPolyMark(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                       SoMarkerSet *markerSet) override;
    void printPolygon(const SbVec4f *points, int n, const SbColor *colors) override;
    void printText2(SbVec4f point, SbColor color, const char *fontName, float size, const char *string,
                    int justification, float angle) override;
    void printImage(const SbVec4f &point, const unsigned char *pixels, SbVec2s &size, SbVec2s &sourceSize,
                    int components, SoImage::HorAlignment horizontal,
                    SoImage::VertAlignment vertical) override;

private:
    struct Page;

    void initDefaultCurrentValues();
    void send();
    void assignColor(SbColor color, float width);
    void assignWidth(float width);
    void assignPattern(unsigned short pattern);
    void assignFont(const char *fontName, float size);
    bool createBitmap(int index, SbVec2s &size);
    void writeRuns(const SbVec4f *points, int n, int batch, bool joined, std::string_view name);
    void writePoints(const SbVec4f *first, int n, int longestLine);
    void writePixels(const unsigned char *pixels, const SbVec2s &size, int components);

    std::unique_ptr<SoPSVectorOutput> m_psOutput;
    std::unique_ptr<Page> m_page;
};

ORAVANE_VECTORIZE_END

#endif
