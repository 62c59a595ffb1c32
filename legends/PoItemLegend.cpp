#include <oravane/PoItemLegend.h>

#include "core/ClassTable.h"
#include "curves/DotStyle.h"
#include "legends/LegendBoxes.h"
#include "legends/LegendGrid.h"
#include "legends/LegendText.h"

#include <oravane/PiMarker.h>
#include <oravane/PiText.h>

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoBaseColor.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <cmath>

SO_KIT_SOURCE(PoItemLegend)

using oravane::LegendCells;
using oravane::LegendGrid;

namespace {

constexpr const char *kDot = ".";

/// Entry of an item, or another value when the list is empty.
template <class Field, class Value>
Value entryOf(const Field &field, int item, const Value &ifNone) {
    const int count = field.getNum();
    return count > 0 ? Value(field[item % count]) : ifNone;
}

float sizeOf(const SoMFFloat &field, int item) {
    const float size = entryOf(field, item, 0.0f);
    return size > 0 && std::isfinite(size) ? size : 0;
}

/// Adds a node before the shapes of an item, where it differs from that of the item before.
void addColor(SoGroup *group, const SoMFColor &colors, int item, bool isFirst) {
    if (colors.getNum() == 0)
        return;
    const SbColor color = entryOf(colors, item, SbColor());
    if (!isFirst && color == entryOf(colors, item - 1, SbColor()))
        return;
    auto *node = new SoBaseColor;
    node->rgb = color;
    group->addChild(node);
}

SbString markerOf(const SoMFString &strings, int item) {
    return entryOf(strings, item, SbString());
}

/// A group of lines that look alike but for their colour. A size of 0 leaves the width to the scene.
SoGroup *newStyledGroup(float size, unsigned short pattern) {
    auto *style = new SoDrawStyle;
    style->style.setIgnored(TRUE);
    style->pointSize.setIgnored(TRUE);
    style->lineWidth = size;
    style->lineWidth.setIgnored(size == 0);
    style->linePattern = pattern;
    auto *group = new SoSeparator;
    group->addChild(style);
    return group;
}

} // namespace

void PoItemLegend::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoItemLegend, PoLegend, "PoLegend");
}

PoItemLegend::PoItemLegend() {
    init();
}

PoItemLegend::PoItemLegend(const SbVec2f &from, const SbVec2f &to, int num, const char **items,
                           const SbColor *colours) {
    init();
    start = from;
    end = to;
    if (num > 0 && items) {
        item.setNum(num);
        SbString *names = item.startEditing();
        for (int i = 0; i < num; ++i)
            names[i] = items[i] ? items[i] : "";
        item.finishEditing();
    }
    if (num > 0 && colours)
        boxColor.setValues(0, num, colours);
}

void PoItemLegend::init() {
    SO_KIT_CONSTRUCTOR(PoItemLegend);
    ORAVANE_SHOWN_PART(line, SoGroup, FALSE);
    ORAVANE_SHOWN_PART(marker, SoGroup, FALSE);
    const SbColor black(0, 0, 0);
    SO_KIT_ADD_FIELD(start, (0, 0));
    SO_KIT_ADD_FIELD(end, (1, 1));
    SO_KIT_ADD_EMPTY_MFIELD(item);
    SO_KIT_ADD_FIELD(boxVisibility, (TRUE));
    SO_KIT_ADD_FIELD(boxColor, (black));
    SO_KIT_ADD_FIELD(lineVisibility, (FALSE));
    SO_KIT_ADD_FIELD(lineColor, (black));
    SO_KIT_ADD_FIELD(lineSize, (0));
    SO_KIT_ADD_FIELD(linePattern, (65535));
    SO_KIT_ADD_FIELD(markerVisibility, (FALSE));
    SO_KIT_ADD_FIELD(markerColor, (black));
    SO_KIT_ADD_FIELD(markerSize, (0));
    SO_KIT_ADD_FIELD(markerString, ("."));
    SO_KIT_INIT_INSTANCE();
    watchFields({&start, &end, &item, &boxVisibility, &boxColor, &lineVisibility, &lineColor, &lineSize,
                 &linePattern, &markerVisibility, &markerColor, &markerSize, &markerString});
    generatedParts({&line, &marker});
    setUpConnections(TRUE, TRUE);
}

void PoItemLegend::rebuild() {
    preRebuild();
    setDefaultAttr();
    const int count = item.getNum();
    const std::vector<SbString> strings = itemStrings();
    const std::vector<SbVec2f> sizes = oravane::textSizes(valueTextBuilder(), strings);
    LegendCells cells = cellsOf(count, sizes);
    cells.rowHeight = rowHeight();
    Plimit room{};
    if (drawFrame(start.getValue(), end.getValue(), fontSizeOf(cells), room) && count > 0)
        drawGrid(cells, strings, room);
    setNewParts({"line", "marker"});
    postRebuild();
}

/// Empty when no texts are shown.
std::vector<SbString> PoItemLegend::itemStrings() const {
    std::vector<SbString> strings;
    if (!attr().hasValues)
        return strings;
    for (int i = 0; i < item.getNum(); ++i) {
        strings.push_back(item[i]);
        strings.back() += attr().addString;
    }
    return strings;
}

float PoItemLegend::rowHeight() const {
    if (attr().valuePosition == POS_TOP || attr().valuePosition == POS_BOTTOM)
        return oravane::kLineHeight;
    const bool kinds[] = {boxVisibility.getValue() != 0, lineVisibility.getValue() != 0,
                          markerVisibility.getValue() != 0};
    static constexpr float heights[] = {0.65f, 1.3f, 1.95f, 2.275f};
    return heights[std::count(std::begin(kinds), std::end(kinds), true)];
}

void PoItemLegend::computeGraphicSizeForValues(float &boxWidth, float &lineWidth, float &markerWidth) {
    const bool hasBox = boxVisibility.getValue(), hasLine = lineVisibility.getValue(),
               hasMarker = markerVisibility.getValue();
    const float one = oravane::kSampleSize;
    boxWidth = hasBox ? (hasLine || hasMarker ? one : oravane::kBoxSize) : 0;
    lineWidth = hasLine ? one : 0;
    markerWidth = hasMarker ? one : 0;
}

void PoItemLegend::drawGrid(const LegendCells &cells, const std::vector<SbString> &strings,
                            const Plimit &room) {
    const LegendGrid grid(cells, room.xmax - room.xmin, room.ymax - room.ymin);
    const SbVec2f corner(room.xmin, room.ymin);
    float boxWidth = 0, lineWidth = 0, markerWidth = 0;
    computeGraphicSizeForValues(boxWidth, lineWidth, markerWidth);
    const float lineStart = boxWidth > 0 ? boxWidth + oravane::kSampleGap : 0;
    const float markerStart = lineStart + (lineWidth > 0 ? lineWidth + oravane::kSampleGap : 0);
    if (boxWidth > 0)
        drawBoxesLegendBoxesA(grid, corner, cells.count);
    if (lineWidth > 0)
        newPart("line", newLines(grid, corner, lineStart));
    if (markerWidth > 0)
        newPart("marker", newMarkers(grid, corner, markerStart + markerWidth / 2));
    if (!strings.empty())
        drawValuesLegendBoxesA(grid, corner, strings);
}

void PoItemLegend::drawBoxLegendBoxesA(SoGroup *face, SoGroup *border, const SbVec2f &corner, float width,
                                       float height, int index) {
    const oravane::BoxOutline upper{SbVec3f(corner[0], corner[1], textZ()), width, height};
    const oravane::BoxOutline lower{SbVec3f(corner[0], corner[1], boxZ()), width, height};
    oravane::addBorder(border, upper);
    if (boxColor.getNum() == 0) {
        oravane::addFace(face, lower);
        return;
    }
    const SbColor color = entryOf(boxColor, index, SbColor());
    oravane::addFace(face, lower, {color, color});
}

SoGroup *PoItemLegend::newLines(const LegendGrid &grid, const SbVec2f &corner, float sampleStart) const {
    constexpr unsigned short full = 0xffff;
    auto *group = new SoGroup;
    SoGroup *alike = nullptr;
    const float s = grid.fontSize();
    for (int i = 0; i < item.getNum(); ++i) {
        const unsigned short pattern = entryOf(linePattern, i, full);
        const float size = sizeOf(lineSize, i);
        const bool isFirst =
            !alike || pattern != entryOf(linePattern, i - 1, full) || size != sizeOf(lineSize, i - 1);
        if (isFirst) {
            alike = newStyledGroup(size, pattern);
            group->addChild(alike);
        }
        addColor(alike, lineColor, i, isFirst);
        const SbVec2f left = corner + grid.graphicCorner(static_cast<std::size_t>(i)) +
                             SbVec2f(s * sampleStart, grid.graphicSize()[1] / 2);
        const SbVec3f ends[] = {{left[0], left[1], textZ()},
                                {left[0] + s * oravane::kSampleSize, left[1], textZ()}};
        oravane::addLine(alike, ends);
    }
    return group;
}

/// The size of an item's marker: of a dot in pixels, of a text in units of the legend.
float PoItemLegend::markerSizeOf(int index, float fontSize, const PiText &measure) const {
    const float wanted = sizeOf(markerSize, index);
    const SbString string = markerOf(markerString, index);
    if (string == kDot)
        return wanted > 0 ? wanted : oravane::kDotSize;
    if (wanted > 0)
        return std::min(wanted, largerSide());
    float width = 0, height = 0;
    measure.getStringSizes(string.getString(), width, height);
    return fontSize * std::min(1.0f, oravane::kSampleSize / width);
}

SoGroup *PoItemLegend::newMarkers(const LegendGrid &grid, const SbVec2f &corner, float sampleMiddle) const {
    auto *group = new SoGroup;
    PiText measure = valueTextBuilder();
    measure.setMultiLinesEnable(0);
    PiMarker mark;
    mark.setFontName(attr().valueFontName);
    float dotSize = 0, textSize = 0;
    for (int i = 0; i < item.getNum(); ++i) {
        const SbString string = markerOf(markerString, i);
        const float size = markerSizeOf(i, grid.fontSize(), measure);
        addColor(group, markerColor, i, i == 0);
        const bool isDot = string == kDot;
        if (float &last = isDot ? dotSize : textSize; size != last) {
            if (isDot)
                group->addChild(oravane::newDotStyle(size));
            else
                group->addChild(oravane::newFont(attr().valueFontName, size));
            last = size;
        }
        mark.setMarkerType(string);
        mark.setFontSize(size);
        const SbVec2f middle = corner + grid.graphicCorner(static_cast<std::size_t>(i)) +
                               SbVec2f(grid.fontSize() * sampleMiddle, grid.graphicSize()[1] / 2);
        mark.setOrigin(middle[0], middle[1]);
        mark.build(group);
    }
    return group;
}
