#ifndef ORAVANE_CGMENCODER_H
#define ORAVANE_CGMENCODER_H

#include "vectorize/PageFormat.h"
#include "vectorize/PageText.h"

#include <Inventor/SbVec4f.h>

#include <array>
#include <initializer_list>
#include <memory>
#include <span>
#include <string_view>

namespace oravane {

/// An element of a metafile: its name in clear text, its class and identifier in the binary encoding.
struct CgmElement {
    std::string_view name;
    int elementClass, id;

    constexpr bool operator==(const CgmElement &other) const {
        return elementClass == other.elementClass && id == other.id;
    }
};

/// The elements of a page, as ISO 8632 names and numbers them.
namespace cgm {
inline constexpr CgmElement kBegMf{"BEGMF", 0, 1}, kEndMf{"ENDMF", 0, 2}, kBegPic{"BEGPIC", 0, 3},
    kBegPicBody{"BEGPICBODY", 0, 4}, kEndPic{"ENDPIC", 0, 5};
inline constexpr CgmElement kMfVersion{"MFVERSION", 1, 1}, kMfDesc{"MFDESC", 1, 2}, kVdcType{"VDCTYPE", 1, 3},
    kIntegerPrec{"INTEGERPREC", 1, 4}, kRealPrec{"REALPREC", 1, 5}, kIndexPrec{"INDEXPREC", 1, 6},
    kColrPrec{"COLRPREC", 1, 7}, kColrIndexPrec{"COLRINDEXPREC", 1, 8}, kMaxColrIndex{"MAXCOLRINDEX", 1, 9},
    kColrValueExt{"COLRVALUEEXT", 1, 10}, kMfElemList{"MFELEMLIST", 1, 11}, kFontList{"FONTLIST", 1, 13};
inline constexpr CgmElement kScaleMode{"SCALEMODE", 2, 1}, kColrMode{"COLRMODE", 2, 2},
    kLineWidthMode{"LINEWIDTHMODE", 2, 3}, kMarkerSizeMode{"MARKERSIZEMODE", 2, 4},
    kEdgeWidthMode{"EDGEWIDTHMODE", 2, 5}, kVdcExt{"VDCEXT", 2, 6}, kBackColr{"BACKCOLR", 2, 7},
    kLineEdgeTypeDef{"LINEEDGETYPEDEF", 2, 17};
inline constexpr CgmElement kVdcRealPrec{"VDCREALPREC", 3, 2}, kClipRect{"CLIPRECT", 3, 5},
    kMitreLimit{"MITRELIMIT", 3, 19}, kTranspCellColr{"TRANSPCELLCOLR", 3, 20};
inline constexpr CgmElement kLine{"LINE", 4, 1}, kMarker{"MARKER", 4, 3}, kText{"TEXT", 4, 4},
    kPolygon{"POLYGON", 4, 7}, kCellArray{"CELLARRAY", 4, 9};
inline constexpr CgmElement kLineType{"LINETYPE", 5, 2}, kLineWidth{"LINEWIDTH", 5, 3},
    kLineColr{"LINECOLR", 5, 4}, kMarkerType{"MARKERTYPE", 5, 6}, kMarkerSize{"MARKERSIZE", 5, 7},
    kMarkerColr{"MARKERCOLR", 5, 8}, kTextFontIndex{"TEXTFONTINDEX", 5, 10}, kTextPrec{"TEXTPREC", 5, 11},
    kCharExpan{"CHAREXPAN", 5, 12}, kCharSpace{"CHARSPACE", 5, 13}, kTextColr{"TEXTCOLR", 5, 14},
    kCharHeight{"CHARHEIGHT", 5, 15}, kCharOri{"CHARORI", 5, 16}, kTextPath{"TEXTPATH", 5, 17},
    kTextAlign{"TEXTALIGN", 5, 18}, kIntStyle{"INTSTYLE", 5, 22}, kFillColr{"FILLCOLR", 5, 23},
    kEdgeVis{"EDGEVIS", 5, 30}, kColrTable{"COLRTABLE", 5, 34}, kLineCap{"LINECAP", 5, 37},
    kLineJoin{"LINEJOIN", 5, 38};
} // namespace cgm

/// The fonts of a page. A text's font is the position in this table, from 1.
inline constexpr std::array<std::string_view, 13> kCgmFonts = {
    "Times-Roman", "Times-Italic",      "Times-Bold",     "Times-BoldItalic",
    "Helvetica",   "Helvetica-Oblique", "Helvetica-Bold", "Helvetica-BoldOblique",
    "Courier",     "Courier-Oblique",   "Courier-Bold",   "Courier-BoldOblique",
    "Symbol"};

/// An index into the colour table (one value), or red, green and blue from 0 to 255 (three).
struct CgmColor {
    ColorBytes values{};
    int count = 0;

    std::span<const int> span() const { return {values.data(), static_cast<std::size_t>(count)}; }
    bool operator==(const CgmColor &) const = default;
};

/// An image: the cells run from corner `p` to corner `r`, their rows from `r` to `q`, opposite to `p`. A cell
/// is an index up to 255 (one value), or red, green and blue in 8 bits each of a number (three).
struct CgmCells {
    SbVec2f p, q, r;
    int columns, rows, valuesPerCell;
    std::span<const int> numbers;
};

/// Writes elements in one of the encodings of a metafile, into a buffer. What is not finite counts as 0.
class CgmEncoder {
public:
    virtual ~CgmEncoder() = default;

    std::string_view view() const { return m_text.view(); }
    void clear() { m_text.clear(); }

    virtual bool isBinary() const = 0;

    /// An element that no page writes otherwise: `text` is the whole statement in clear text, `words` are the
    /// parameters of the binary encoding, 16 bits each.
    virtual void constant(const CgmElement &element, std::string_view text,
                          std::initializer_list<int> words) = 0;
    virtual void string(const CgmElement &element, std::string_view text) = 0;
    /// Integers and indexes.
    virtual void integers(const CgmElement &element, std::initializer_list<int> values) = 0;
    /// Coordinates, widths and heights in mm.
    virtual void lengths(const CgmElement &element, std::initializer_list<float> values) = 0;
    /// `flags` are enumerated values before the colour.
    virtual void color(const CgmElement &element, const CgmColor &color,
                       std::initializer_list<int> flags) = 0;
    /// The points of a line, a polygon or of marks, shifted by `offset`.
    virtual void points(const CgmElement &element, std::span<const SbVec4f> points,
                        const SbVec2f &offset) = 0;
    virtual void text(const SbVec2f &point, std::string_view text) = 0;
    virtual void cellArray(const CgmCells &cells) = 0;

    virtual void fontList() = 0;
    virtual void colorTable(std::span<const ColorBytes> rows) = 0;
    /// Lengths of a dash, a gap, and so on; none for solid lines.
    virtual void dashes(std::span<const int> runs) = 0;
    virtual void mitreLimit(float limit) = 0;

protected:
    PageText m_text;
};

std::unique_ptr<CgmEncoder> makeCgmClearText();
std::unique_ptr<CgmEncoder> makeCgmBinary();

constexpr inline float kCgmDashCycle = 5.65f; ///< mm of a line pattern's 16 bits

} // namespace oravane

#endif
