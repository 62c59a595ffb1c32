#ifndef ORAVANE_SOVECTORIZEACTION_H
#define ORAVANE_SOVECTORIZEACTION_H

#include <oravane/OravaneApi.h>

#include <Inventor/SbBox2f.h>
#include <Inventor/SbColor.h>
#include <Inventor/SbString.h>
#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec2s.h>
#include <Inventor/SbVec4f.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/nodes/SoImage.h>

#include <memory>

class SoCallbackAction;
class SoMarkerSet;
class SoNode;
class SoPath;
class SoPathList;

ORAVANE_VECTORIZE_BEGIN

class SoHLHSRVectorize;
class SoVectorOutput;

/// Turns a scene into drawing primitives on a page: polygons, lines, marks, texts and images, clipped to each
/// view, in millimetres, y upwards. A driver writes them in the language of a page format: see
/// `SoVectorizePSAction`. The action drives an `SoCallbackAction` over the scene and renders nothing.
///
/// \code
///   SoVectorizePSAction action;
///   action.getOutput()->openFile("page.ps");
///   action.setHLHSRMode(SoVectorizeAction::HLHSR_Z_SORT);
///   action.apply(scene);
///   action.getOutput()->closeFile();
/// \endcode
///
/// `SoText2` becomes text on the page, `SoAnnoText3` text or the polygons of its letters, as
/// `SoAnnoText3Property` says; other text nodes become polygons. A text is kept or dropped as a whole: its
/// origin has to be in view.
///
/// Line widths, marker sizes and font sizes are multiples of the nominal width. Setters ignore numbers that
/// are not finite. An unknown unit counts 0 millimetres. Colours pass through the colour translation first.
///
/// A page looks as the rendering of the scene does, but for what paper or the formats cannot do: a polygon
/// has one colour, and a line segment that of its start; nothing shines through; textures, fog, back-face
/// culling and depth-buffer settings do not count. Planes of `SoClipPlane` cut everything.
///
/// What is fully transparent (transparency exactly 1 at all vertices of a triangle, at both ends of a line,
/// at the point) or has the invisible draw style draws nothing; a primitive with a coordinate that is not
/// finite is left out. One traversal at a time: an action that is applied from inside its own operations does
/// nothing.
class ORAVANE_API SoVectorizeAction {
public:
    enum DimensionUnit : int { INCH = 0, MILLIMETER = 1, METER = 2 };
    enum Orientation : int { PORTRAIT = 0, LANDSCAPE = 1 };
    /// What hides what on the page. HLHSR_NONE draws in the order of traversal; the others collect each view,
    /// see `SoHLHSRVectorize`. The two sorts draw it far to near; HLHSR_LINE_REMOVAL draws the visible parts
    /// of lines and of the outlines of polygons.
    enum HLHSRMode : int { HLHSR_NONE = 0, HLHSR_Z_SORT = 1, HLHSR_FULL_SORT = 2, HLHSR_LINE_REMOVAL = 3 };
    /// Black and white exchanged (paper is white, screens are dark), colours kept, or 1 - c for each channel.
    enum ColorTranslationMethod : int { SWAP_BLACK_WHITE = 0, KEEP_COLORS = 1, COMPLEMENT_COLORS = 2 };
    enum EndLineStyle : int { BUTT_END = 0, SQUARE_END = 1, TRIANGULAR_END = 2, ROUND_END = 3 };
    enum JoinLineStyle : int {
        NO_JOIN = 0,
        MITER_JOIN = 1,
        MITER_BEVEL_JOIN = 2,
        BEVEL_JOIN = 3,
        TRIANGULAR_JOIN = 4,
        ROUND_JOIN = 5,
    };

    SoVectorizeAction(const SoVectorizeAction &) = delete;
    SoVectorizeAction &operator=(const SoVectorizeAction &) = delete;

    /// Draws the scene. Outside of `beginPage` and `endPage` this makes a whole page, with header and footer.
    /// The driver's file must be open before. A null node or path draws the empty page.
    virtual void apply(const SoPathList &paths, int obeysRules = 0);
    virtual void apply(SoPath *path);
    virtual void apply(SoNode *node);

    /// Opens a page that takes the drawings of any number of `apply` calls: one header, written by the first
    /// of them, and one footer. `start` is the page's origin, `size` its extent.
    virtual void beginPage(const SbVec2f &start, const SbVec2f &size, DimensionUnit unit);
    /// Nothing happens when no page is open. A page without drawings has a header all the same.
    virtual void endPage();

    /// Extent of the drawing; 190 by 277 mm at first. Outside of a page also the extent of the page.
    virtual void setDrawingDimensions(const SbVec2f &size, DimensionUnit unit);
    virtual void setDrawingDimensions(float width, float height, DimensionUnit unit);
    virtual SbVec2f getDrawingDimensions(DimensionUnit unit) const;

    /// Lower left corner of the drawing; (10, 10) mm at first. Outside of a page also the page's origin,
    /// within a page it counts from there.
    virtual void setStartPosition(const SbVec2f &start, DimensionUnit unit);
    virtual void setStartPosition(float x, float y, DimensionUnit unit);
    virtual SbVec2f getStartPosition(DimensionUnit unit) const;

    virtual void setOrientation(Orientation orientation);
    virtual Orientation getOrientation() const;

    /// Frame around the drawing; 2 and white at first, which the colour translation turns black. A width of 0
    /// or less means no frame. Null pointers to `getBorder` are skipped.
    virtual void setBorder(float width, SbColor color);
    virtual void setBorder(float width);
    virtual void getBorder(float *width, SbColor *color) const;

    /// Non-zero `flag`: the drawing area is filled first. The getter returns the flag.
    virtual void setBackgroundColor(int flag, SbColor color);
    virtual void setBackgroundColor(int flag);
    virtual int getBackgroundColor(SbColor *color) const;

    /// Unit of line widths, marker sizes and font sizes; 1/72 inch at first.
    virtual void setNominalWidth(float width, DimensionUnit unit);
    virtual float getNominalWidth(DimensionUnit unit) const;
    /// Size of one image pixel on the page; 1/72 inch at first.
    virtual void setPixelImageSize(float size, DimensionUnit unit);
    virtual float getPixelImageSize(DimensionUnit unit) const;

    virtual void setColorTranslationMethod(ColorTranslationMethod method);
    virtual ColorTranslationMethod getColorTranslationMethod() const;
    virtual void setLineEndStyle(EndLineStyle style);
    virtual EndLineStyle getLineEndStyle() const;
    virtual void setLineJoinsStyle(JoinLineStyle style);
    virtual JoinLineStyle getLineJoinsStyle() const;
    /// Stored as 1 when less.
    virtual void setMiterLimit(float limit);
    virtual float getMiterLimit() const;

    /// Restricts colours and widths to `num` pens, at most 256; with 0 there is no restriction. Null `colors`
    /// give 2, 4 or 8 pens, the least that holds `num`, in white, black, red, green, yellow, blue, magenta
    /// and cyan. `widths` are `num` values; pens beyond them, and all pens with null `widths`, have 1/72
    /// inch. A negative `num` is ignored.
    virtual void setPenDescription(int num, const SbColor *colors, const float *widths, DimensionUnit unit);
    /// Fills `getPenNum()` values each; null arrays are skipped.
    virtual void getPenDescription(SbColor *colors, float *widths, DimensionUnit unit) const;
    virtual int getPenNum() const;
    /// Non-zero (the start value 1): a pen is chosen by colour first, else by width first.
    virtual void setColorPriority(int priority);
    virtual int getColorPriority() const;

    virtual void setHLHSRMode(HLHSRMode mode);
    /// Non-zero: triangles under the PHONG light model are lit, each with one colour. Else, as at first, they
    /// have their diffuse colours.
    virtual void enableLighting(int flag);

    /// Ends an open page: each driver's own destructor does so with `closePage`, as the footer is the
    /// driver's.
    virtual ~SoVectorizeAction();

protected:
    SoVectorizeAction();

    virtual void beginTraversal();
    virtual void endTraversal();

    virtual void writeHeader() = 0;
    virtual void writeFooter() = 0;
    /// Called when a new view begins; `isViewportKnown` tells whether one was open before.
    virtual void setHardwareClip() = 0;

    /// The present view on the page, in mm.
    virtual SbBox2f getClippingLimits() const;

    /// The drawing operations. Points are in mm on the page, x and y count; colours are one for each point,
    /// of which only the first counts when `multicolor` is 0. Widths and sizes are multiples of the nominal
    /// width. Here they print what they are given to the standard output, for debugging.
    virtual void printPolyMark(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                               SoMarkerSet *markerSet);
    virtual void printPolyMark(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                               float size);
    /// `pixels`: `sourceSize` pixels of `components` bytes, bottom row first, to be shown at `size` pixels.
    virtual void printImage(const SbVec4f &point, const unsigned char *pixels, SbVec2s &size,
                            SbVec2s &sourceSize, int components, SoImage::HorAlignment horizontal,
                            SoImage::VertAlignment vertical);
    virtual void printPolyLine(const SbVec4f *points, int n, const SbColor *colors, int multicolor,
                               float width, unsigned short pattern);
    /// A filled polygon in the colour of its first point.
    virtual void printPolygon(const SbVec4f *points, int n, const SbColor *colors);
    /// `justification`: 1 left, 2 right, 3 centre; `angle` in radians.
    virtual void printText2(SbVec4f point, SbColor color, const char *fontName, float size,
                            const char *string, int justification, float angle);

    virtual void printBorder() = 0;
    virtual void printBackground() = 0;

    /// The pen for a colour and a width in mm, and the pen's width; without pens pen 0 and `width`.
    virtual void penAssignment(SbColor color, float width, int *pen, float *penWidth);

    /// Registers the callbacks that catch what the nodes generate.
    virtual void prepareAction(SoCallbackAction &action);

public:
    /// Each driver has one of its own type.
    SoVectorOutput *getOutput() const { return m_output; }
    HLHSRMode getHLHSRMode() const { return m_hlhsrMode; }
    int isLightingEnabled() const { return m_lightingEnabled; }

protected:
    /// `output` belongs to the driver, and must live as long as the action is used.
    void setOutput(SoVectorOutput *output) { m_output = output; }
    /// For the destructors of drivers.
    void closePage();

    /// In mm: the start position, the extent of the drawing, and the extent of the present view.
    float getShiftX() const { return m_start[0]; }
    float getShiftY() const { return m_start[1]; }
    float getWidth() const { return m_size[0]; }
    float getHeight() const { return m_size[1]; }
    float getViewportWidth() const;
    float getViewportHeight() const;
    /// The page's origin; within a page the start position is added.
    float getOffsetX() const;
    float getOffsetY() const;
    /// Fills the drawing with the translated background colour by `printPolygon`, if the flag is set.
    void fillBackground();
    /// Draws the frame in the translated border colour by `printPolyLine`, if it has a width.
    void strokeBorder();
    const SbVec2f &getPageSize() const { return m_pageSize; }
    const SbVec2f &getPageOrigin() const { return m_pageOrigin; }
    float getNominalMillimeters() const { return m_nominalWidth; }
    float getPixelMillimeters() const { return m_pixelImageSize; }
    int isPageMode() const { return m_pageMode; }
    int isViewportKnown() const { return m_viewportKnown; }
    const SbViewportRegion &getViewportRegion() const { return m_viewport; }
    /// Colour of pen `pen`; `pen` must be below `getPenNum()`.
    SbColor getPenColor(int pen) const;
    SbColor translateColor(const SbColor &color) const;

private:
    class Traversal;
    struct Pens;
    friend class SoHLHSRVectorize;

    template <class Target>
    void applyTo(Target &&traverse);
    /// From normalised coordinates to mm, in place.
    void projectPoints(SbVec4f *points, int n) const;
    /// Prints each string at `point` and lowers it by a line.
    void printTextLines(SbVec4f point, const SbColor &color, const char *fontName, float size, int numStrings,
                        const SbString *strings, float spacing, int justification, float angle);

    SoVectorOutput *m_output = nullptr;
    float m_borderWidth = 2.0f;
    SbColor m_borderColor;
    int m_backgroundFlag = 0;
    SbColor m_backgroundColor;
    float m_nominalWidth;
    float m_pixelImageSize;
    std::unique_ptr<Pens> m_pens;
    EndLineStyle m_endStyle = BUTT_END;
    JoinLineStyle m_joinStyle = NO_JOIN;
    float m_miterLimit = 1.5f;
    int m_viewportKnown = 0;
    SbVec2f m_pageSize, m_pageOrigin;
    int m_pageMode = 0;
    int m_headerPending = 1;
    SbVec2f m_start, m_size;
    Orientation m_orientation = PORTRAIT;
    SbViewportRegion m_viewport;
    ColorTranslationMethod m_colorTranslation = SWAP_BLACK_WHITE;
    HLHSRMode m_hlhsrMode = HLHSR_NONE;
    int m_lightingEnabled = 0;
    std::unique_ptr<Traversal> m_traversal;
};

ORAVANE_VECTORIZE_END

#endif
