#include "legends/LegendGrid.h"

#include <algorithm>
#include <cmath>

namespace oravane {

namespace {

float gapsOf(int count, float gap) {
    return static_cast<float>(count - 1) * gap;
}

/// What `count` things and their gaps leave of `length`, for each gap.
float spare(float length, float used, int count) {
    const float rest = std::max(length - used, 0.0f);
    return count > 1 ? rest / static_cast<float>(count - 1) : 0;
}

} // namespace

float stackedHeight(float textHeight, float graphicHeight, bool isBeside) {
    if (isBeside)
        return std::max(textHeight, graphicHeight);
    const bool isStack = textHeight > 0 && graphicHeight > 0;
    return textHeight + graphicHeight + (isStack ? kTextGap : 0);
}

LegendGrid::LegendGrid(const LegendCells &cells, float width, float height)
    : m_runsAlongRows(cells.runsAlongRows), m_growsUp(cells.growsUp), m_textSide(cells.textSide),
      m_hasTexts(!cells.texts.empty()), m_graphic(cells.graphic) {
    if (cells.count < 1)
        return;
    m_numColumns = std::clamp(cells.numColumns, 1, cells.count);
    m_numRows = (cells.count + m_numColumns - 1) / m_numColumns;
    for (const SbVec2f &text : cells.texts)
        m_textHeight = std::max(m_textHeight, text[1]);
    m_rowHeight = std::max(cells.rowHeight, stackedHeight(m_textHeight, m_graphic[1], isBeside()));
    measureColumns(cells);

    float widthUnits = gapsOf(m_numColumns, kColumnGap), heightUnits = gapsOf(m_numRows, kRowGap);
    for (const float column : m_columnWidths)
        widthUnits += column;
    heightUnits += static_cast<float>(m_numRows) * m_rowHeight + cells.besideCells[1];
    widthUnits = std::max(widthUnits, cells.minimum[0]) + cells.besideCells[0];
    heightUnits = std::max(heightUnits, cells.minimum[1]);
    float size = height / heightUnits;
    if (widthUnits > 0)
        size = std::min(size, width / widthUnits);
    m_fontSize = std::isfinite(size) && size > 0 ? size : 0;
    spread(width, height, cells);
}

void LegendGrid::measureColumns(const LegendCells &cells) {
    m_columnWidths.assign(static_cast<std::size_t>(m_numColumns), 0);
    for (std::size_t i = 0; i < cells.texts.size(); ++i) {
        float &width = m_columnWidths[placeOf(i).column];
        width = std::max(width, cells.texts[i][0]);
    }
    const std::size_t outermost = m_textSide == TextSide::Left ? 0 : m_columnWidths.size() - 1;
    for (std::size_t column = 0; column < m_columnWidths.size(); ++column) {
        float &width = m_columnWidths[column];
        // A narrow text stands in the gap to the next column; behind the outermost there is none.
        if (width < kNarrowText && column != outermost)
            width = 0;
        if (!isBeside())
            width = std::max(width, m_graphic[0]);
        else if (m_graphic[0] > 0)
            width += m_graphic[0] + (m_hasTexts ? kTextGap : 0);
    }
}

void LegendGrid::spread(float width, float height, const LegendCells &cells) {
    const float s = m_fontSize;
    const float roomX = width - s * cells.besideCells[0], roomY = height - s * cells.besideCells[1];
    float usedX = s * gapsOf(m_numColumns, kColumnGap);
    for (const float column : m_columnWidths)
        usedX += s * column;
    const float gapX = s * kColumnGap + spare(roomX, usedX, m_numColumns);
    float x = m_numColumns == 1 ? std::max(roomX - usedX, 0.0f) / 2 : 0;
    for (const float column : m_columnWidths) {
        m_columns.push_back(x);
        x += s * column + gapX;
    }
    const float rows = s * m_rowHeight * static_cast<float>(m_numRows);
    const float usedY = rows + s * gapsOf(m_numRows, kRowGap);
    const float border = m_numRows == 1 ? std::max(roomY - usedY, 0.0f) / 2 : 0;
    m_rowPitch = s * (m_rowHeight + kRowGap) + spare(roomY, usedY, m_numRows);
    m_firstRow = border;
    if (!m_growsUp) {
        m_firstRow = roomY - border - s * m_rowHeight;
        m_rowPitch = -m_rowPitch;
    }
}

LegendGrid::Place LegendGrid::placeOf(std::size_t cell) const {
    const auto rows = static_cast<std::size_t>(m_numRows), columns = static_cast<std::size_t>(m_numColumns);
    if (m_runsAlongRows)
        return {cell / columns, cell % columns};
    return {cell % rows, cell / rows};
}

SbVec2f LegendGrid::graphicCorner(std::size_t cell) const {
    const auto [row, column] = placeOf(cell);
    const float width = m_fontSize * m_columnWidths[column], cellHeight = m_fontSize * m_rowHeight;
    SbVec2f corner(m_columns[column], m_firstRow + m_rowPitch * static_cast<float>(row));
    const SbVec2f size = graphicSize();
    if (isBeside()) {
        if (m_textSide == TextSide::Left)
            corner[0] += width - size[0];
        corner[1] += (cellHeight - size[1]) / 2;
        return corner;
    }
    const float stack = m_fontSize * stackedHeight(m_textHeight, m_graphic[1], false);
    corner[0] += (width - size[0]) / 2;
    corner[1] += (cellHeight - stack) / 2;
    if (m_textSide == TextSide::Below)
        corner[1] += stack - size[1];
    return corner;
}

SbVec2f LegendGrid::textAnchor(std::size_t cell) const {
    const SbVec2f size = graphicSize();
    const SbVec2f middle = graphicCorner(cell) + size / 2;
    const bool hasGraphic = isBeside() ? size[0] > 0 : size[1] > 0;
    const float gap = hasGraphic ? m_fontSize * kTextGap : 0;
    switch (m_textSide) {
    case TextSide::Left:
        return middle - SbVec2f(size[0] / 2 + gap, 0);
    case TextSide::Above:
        return middle + SbVec2f(0, size[1] / 2 + gap);
    case TextSide::Below:
        return middle - SbVec2f(0, size[1] / 2 + gap);
    default:
        return middle + SbVec2f(size[0] / 2 + gap, 0);
    }
}

} // namespace oravane
