#ifndef ORAVANE_LEGENDS_LEGENDGRID_H
#define ORAVANE_LEGENDS_LEGENDGRID_H

#include "text/TextLayout.h"

#include <Inventor/SbVec2f.h>

#include <cstddef>
#include <span>
#include <vector>

namespace oravane {

/// What the layouts of legends agree on; lengths in font sizes.
constexpr float kBoxSize = kLineHeight;   ///< width of a box, and its height where it is a square
constexpr float kSampleSize = 0.65f;      ///< width of one graphic of several
constexpr float kColumnGap = 1.3f;        ///< at least between two columns
constexpr float kRowGap = kLineHeight;    ///< at least between two rows
constexpr float kTextGap = 0.45f;         ///< between a graphic and its text
constexpr float kSampleGap = 0.3f;        ///< between two graphics
constexpr float kNarrowText = 0.65f;      ///< columns of narrower texts lend them their gap
constexpr float kFactorHeight = 1.115f;   ///< of a multiplication factor with its raised exponent
constexpr float kFactorGap = kLineHeight; ///< between it and what it belongs to

/// What stands in the cells of a legend; lengths in font sizes. A cell is a graphic, of the same size in all
/// cells, and a text beside, above or below it.
struct LegendCells {
    int count = 0;
    int numColumns = 1;             ///< the wanted number; what is below 1 counts as 1
    bool runsAlongRows = false;     ///< else cells are counted down the columns
    bool growsUp = false;           ///< the first row is the lowest
    std::span<const SbVec2f> texts; ///< their widths and heights; empty: no texts
    SbVec2f graphic{0, 0};
    TextSide textSide = TextSide::Right;
    float rowHeight = 0; ///< at least
    /// Room that the legend needs beside the cells: at its right, and above.
    SbVec2f besideCells{0, 0};
    SbVec2f minimum{0, 0}; ///< of the whole, before `besideCells.x` and after `besideCells.y`
};

/// Rows and columns of cells, fitted into a rectangle by one common font size; what is left over widens the
/// gaps.
class LegendGrid {
public:
    /// With the lower left corner at the origin. A rectangle or cells without a size give the font size 0.
    LegendGrid(const LegendCells &cells, float width, float height);

    float fontSize() const { return m_fontSize; }
    int numRows() const { return m_numRows; }
    int numColumns() const { return m_numColumns; }

    SbVec2f graphicSize() const { return m_fontSize * m_graphic; }
    /// Lower left corner of the graphic of a cell.
    SbVec2f graphicCorner(std::size_t cell) const;
    /// Where the text of a cell is anchored; it grows to the text side, and stands centred across that.
    SbVec2f textAnchor(std::size_t cell) const;

private:
    struct Place {
        std::size_t row, column;
    };

    Place placeOf(std::size_t cell) const;
    void measureColumns(const LegendCells &cells);
    void spread(float width, float height, const LegendCells &cells);
    bool isBeside() const { return m_textSide == TextSide::Right || m_textSide == TextSide::Left; }

    int m_numRows = 1, m_numColumns = 1;
    bool m_runsAlongRows, m_growsUp;
    TextSide m_textSide;
    bool m_hasTexts;
    SbVec2f m_graphic;
    float m_textHeight = 0; ///< of the highest
    float m_rowHeight = 0;
    float m_fontSize = 0;
    std::vector<float> m_columnWidths;    ///< in font sizes
    std::vector<float> m_columns;         ///< left ends
    float m_firstRow = 0, m_rowPitch = 0; ///< lower end of the first row, and from row to row
};

/// Height of the rows that texts and a graphic of this height need, in font sizes.
float stackedHeight(float textHeight, float graphicHeight, bool isBeside);

} // namespace oravane

#endif
