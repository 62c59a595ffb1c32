#include <oravane/PoAutoValueLegend.h>

#include "core/ClassTable.h"
#include "legends/LegendBar.h"
#include "legends/LegendBoxes.h"
#include "legends/LegendGrid.h"
#include "legends/LegendText.h"

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <array>
#include <cmath>

SO_KIT_SOURCE(PoAutoValueLegend)

using oravane::BarContent;
using oravane::BarLabel;
using oravane::LegendBar;
using oravane::LegendCells;
using oravane::LegendGrid;
using oravane::MultiplicationFactor;
using oravane::TextSide;

namespace {

/// Height of a row with a text above or below its box, in font sizes.
constexpr float kStackedRow = 2.275f;
/// What a multiplication factor adds to the height of a vertical legend: itself, and the gap.
constexpr float kFactorRoom = oravane::kFactorHeight + oravane::kFactorGap;
/// Between the labels of a long box, at least.
constexpr float kLabelDistance = 0.75f;
/// From the middle of "x 10" to the top of its exponent.
constexpr float kRaisedHeight = 0.9f;
/// How far letters reach below their line.
constexpr float kDescender = 0.28f;

} // namespace

void PoAutoValueLegend::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoAutoValueLegend, PoValueLegend, "PoValueLegend");
}

PoAutoValueLegend::PoAutoValueLegend() {
    SO_KIT_CONSTRUCTOR(PoAutoValueLegend);
    SO_KIT_ADD_FIELD(start, (0, 0));
    SO_KIT_ADD_FIELD(end, (1, 1));
    SO_KIT_INIT_INSTANCE();
    watchFields({&start, &end});
    set("boxBorderApp.drawStyle", "style LINES");
    setUpConnections(TRUE, TRUE);
}

void PoAutoValueLegend::rebuild() {
    preRebuild();
    setDefaultAttr();
    computeValuesList();
    drawLegend();
    setNewParts({"multFactor"});
    postRebuild();
}

void PoAutoValueLegend::drawLegend() {
    drawBoxesLegend(0, nullptr);
}

bool PoAutoValueLegend::isVertical() const {
    const SbVec2f size = end.getValue() - start.getValue();
    return std::abs(size[1]) > std::abs(size[0]);
}

// --------------------------------------------------------------------------------- the multiplication factor

MultiplicationFactor PoAutoValueLegend::factor(SoGroup *group) const {
    PiText text = valueTextBuilder();
    text.setGroup(group);
    return {text, attr().hasValues && hasValues() ? m_numbers.getTenPower() : 0};
}

float PoAutoValueLegend::factorWidth() const {
    return factor(nullptr).width();
}

void PoAutoValueLegend::drawMultFactor(MultFactorPosition position, Plimit &limit) {
    auto *group = new SoGroup;
    MultiplicationFactor texts = factor(group);
    const float s = m_factorSize, width = s * texts.width(), height = s * oravane::kFactorHeight;
    // The middle of "x 10", half a line of letters below the raised exponent.
    SbVec2f origin;
    if (position == MULT_FACTOR_ABOVE) {
        const float left = (limit.xmin + limit.xmax - width) / 2, top = limit.ymax + s * kFactorRoom;
        origin.setValue(left, top - height + s * oravane::kCapitalHeight / 2);
        limit = {std::min(limit.xmin, left), std::max(limit.xmax, left + width), limit.ymin, top};
    } else {
        const float left = limit.xmax + s * oravane::kColumnGap, middle = (limit.ymin + limit.ymax) / 2;
        origin.setValue(left, middle);
        const float bottom = middle - s * oravane::kCapitalHeight / 2;
        limit = {limit.xmin, left + width, std::min(limit.ymin, bottom),
                 std::max(limit.ymax, bottom + height)};
    }
    texts.build(origin, s);
    newPart("multFactor", group);
    newFontPart("multFactorApp.font", attr().valueFontName, s);
}

// ------------------------------------------------------------------------------------------- separate boxes

LegendCells PoAutoValueLegend::computeStrFtSizeLegendBoxes(int count, const std::vector<SbVec2f> &sizes) {
    LegendCells cells = cellsOf(count, sizes);
    const bool isStacked = attr().valuePosition == POS_TOP || attr().valuePosition == POS_BOTTOM;
    cells.growsUp = !cells.runsAlongRows || cells.numColumns < 2; // rows of text are read from the top
    cells.rowHeight = isStacked && !sizes.empty() ? kStackedRow : oravane::kLineHeight;
    if (const float width = factorWidth(); width > 0) {
        if (isVertical()) {
            cells.minimum[0] = width;
            cells.besideCells[1] = kFactorRoom;
        } else {
            cells.besideCells[0] = width + oravane::kColumnGap;
        }
        cells.minimum[1] = oravane::kFactorHeight;
    }
    return cells;
}

PoValueLegend::BoxRepresentation PoAutoValueLegend::newBox(float from, float to, const SbString &text) const {
    BoxRepresentation result;
    result.firstValue = from;
    result.secondValue = to;
    result.text = text;
    result.text += attr().addString;
    return result;
}

void PoAutoValueLegend::drawValueBoxes(std::vector<BoxRepresentation> boxes, int range) {
    const int first = hasLowBox() ? 1 : 0, behind = first + static_cast<int>(boxes.size());
    const int count = behind + (hasHighBox() ? 1 : 0);
    newBoxRepresentationList(count);
    std::move(boxes.begin(), boxes.end(), m_boxes.begin() + first);
    for (int i = first; i < behind; ++i)
        computeBoxColors(i, range);
    computeUndefBoxRepresentation(hasLowBox() ? 0 : -1, hasHighBox() ? behind : -1);
    std::vector<SbString> strings;
    for (const BoxRepresentation &each : m_boxes)
        strings.push_back(each.text);
    drawBoxesLegend(count, strings.data());
}

void PoAutoValueLegend::drawBoxesLegend(int count, const SbString *strings) {
    std::vector<SbString> texts;
    if (attr().hasValues && count > 0)
        texts.assign(strings, strings + count);
    const std::vector<SbVec2f> sizes = oravane::textSizes(valueTextBuilder(), texts);
    const LegendCells cells = computeStrFtSizeLegendBoxes(count, sizes);
    Plimit room{};
    if (!drawFrame(start.getValue(), end.getValue(), fontSizeOf(cells), room) || count < 1)
        return;
    const LegendGrid grid(cells, room.xmax - room.xmin, room.ymax - room.ymin);
    const SbVec2f corner(room.xmin, room.ymin);
    drawBoxesLegendBoxesA(grid, corner, count);
    if (!texts.empty())
        drawValuesLegendBoxesA(grid, corner, texts);
    if (factorWidth() > 0) {
        m_factorSize = grid.fontSize();
        room.xmax -= m_factorSize * cells.besideCells[0];
        room.ymax -= m_factorSize * cells.besideCells[1];
        drawMultFactor(isVertical() ? MULT_FACTOR_ABOVE : MULT_FACTOR_RIGHT, room);
    }
}

void PoAutoValueLegend::addBoxFace(SoGroup *face, const oravane::BoxOutline &outline,
                                   const BoxRepresentation &shown) const {
    if (shown.kind <= BoxRepresentation::UNDEFINED_COLOR)
        return;
    oravane::BoxFill fill{shown.firstColor, shown.firstColor};
    if (shown.kind == BoxRepresentation::TWO_COLORS)
        fill.second = shown.secondColor;
    if (shown.hasTransparency) {
        fill.firstTransparency = shown.firstTransparency;
        fill.secondTransparency = shown.secondTransparency;
    }
    fill.runsUp = isVertical();
    oravane::addFace(face, outline, fill);
}

void PoAutoValueLegend::drawBoxLegendBoxesA(SoGroup *face, SoGroup *border, const SbVec2f &corner,
                                            float width, float height, int index) {
    addBoxFace(face, {SbVec3f(corner[0], corner[1], boxZ()), width, height},
               m_boxes[static_cast<std::size_t>(index)]);
    oravane::addBorder(border, {SbVec3f(corner[0], corner[1], textZ()), width, height});
}

// --------------------------------------------------------------------------------------------- one long box

/// A long box: along it from the low end, and across it from the side without labels.
struct PoAutoValueLegend::OneBox {
    TextSide side = TextSide::Right;
    Plimit room{};
    float from = 0, to = 0;        ///< the range
    std::vector<float> values;     ///< where parts of the box meet, ends included
    std::vector<float> positions;  ///< of the values, from 0 to 1
    std::size_t firstShown = 0;    ///< index of the first value that may have a label
    std::vector<SbString> labels;  ///< of the threshold boxes too
    std::vector<BarLabel> extents; ///< of the labels of values
    BarContent content;

    bool isVertical() const { return side == TextSide::Right || side == TextSide::Left; }
    float length() const { return isVertical() ? room.ymax - room.ymin : room.xmax - room.xmin; }
    float width() const { return isVertical() ? room.xmax - room.xmin : room.ymax - room.ymin; }
    SbVec2f at(float along, float across) const;
    oravane::BoxOutline outline(const LegendBar::Range &range, float thickness, float z) const;
    float positionOf(float value) const {
        const double range = static_cast<double>(to) - from;
        return range > 0 ? static_cast<float>((static_cast<double>(value) - from) / range) : 0.5f;
    }
};

SbVec2f PoAutoValueLegend::OneBox::at(float along, float across) const {
    switch (side) {
    case TextSide::Left:
        return {room.xmax - across, room.ymin + along};
    case TextSide::Below:
        return {room.xmin + along, room.ymax - across};
    case TextSide::Above:
        return {room.xmin + along, room.ymin + across};
    default:
        return {room.xmin + across, room.ymin + along};
    }
}

oravane::BoxOutline PoAutoValueLegend::OneBox::outline(const LegendBar::Range &range, float thickness,
                                                       float z) const {
    const SbVec2f a = at(range.from, 0), b = at(range.to, thickness);
    return {SbVec3f(std::min(a[0], b[0]), std::min(a[1], b[1]), z), std::abs(b[0] - a[0]),
            std::abs(b[1] - a[1])};
}

/// The range, and the values that divide it.
void PoAutoValueLegend::findRange(ValDistrib distribution, OneBox &bar) const {
    const auto [first, last, period] = shownValues();
    const float *values = m_values.data();
    bar.from = values[first];
    bar.to = values[last];
    if (m_sourceKind == MAPPING_VALUES && m_mappingType == PbDataMapping::LINEAR &&
        distribution != DISTRIB_LINEAR) {
        float from = 0, to = 0;
        linearRange(from, to);
        if (first == 0)
            bar.from = std::min(from, bar.from);
        if (last == static_cast<int>(m_values.size()) - 1)
            bar.to = std::max(to, bar.to);
    }
    if (bar.from < values[first])
        bar.values.push_back(bar.from);
    bar.firstShown = bar.values.size();
    bar.values.insert(bar.values.end(), values + first, values + last + 1);
    if (bar.to > values[last])
        bar.values.push_back(bar.to);
    for (std::size_t i = 0; i < bar.values.size(); ++i)
        bar.positions.push_back(distribution == DISTRIB_LINEAR && bar.values.size() > 1
                                    ? static_cast<float>(i) / static_cast<float>(bar.values.size() - 1)
                                    : bar.positionOf(bar.values[i]));
}

void PoAutoValueLegend::findLabels(ValDistrib distribution, OneBox &bar) {
    if (!attr().hasValues)
        return;
    const auto addLabel = [&](std::size_t index) {
        bar.labels.push_back(valueString(bar.values[index]));
        bar.labels.back() += attr().addString;
        bar.extents.push_back({bar.positions[index], 0, 0});
    };
    if (distribution == DISTRIB_MIN_MAX) {
        const std::array ends = {bar.from, bar.to};
        const std::size_t count = bar.to > bar.from ? 2 : 1;
        chooseFormat(std::span(ends).first(count));
        addLabel(0);
        if (count == 2)
            addLabel(bar.values.size() - 1);
        return;
    }
    const auto [first, last, period] = shownValues();
    for (int i = 0; i <= last - first; i += period)
        addLabel(bar.firstShown + static_cast<std::size_t>(i));
}

void PoAutoValueLegend::computeUndefBoxOneBoxLegend(OneBox &bar) {
    const int low = hasLowBox() ? 0 : -1, high = hasHighBox() ? low + 1 : -1;
    newBoxRepresentationList(static_cast<int>(hasLowBox()) + static_cast<int>(hasHighBox()));
    computeUndefBoxRepresentation(low, high);
    bar.content.hasLowBox = low >= 0;
    bar.content.hasHighBox = high >= 0;
    if (!attr().hasValues)
        return;
    if (low >= 0)
        bar.labels.insert(bar.labels.begin(), m_boxes[static_cast<std::size_t>(low)].text);
    if (high >= 0)
        bar.labels.push_back(m_boxes[static_cast<std::size_t>(high)].text);
}

/// What the font size depends on.
void PoAutoValueLegend::computeValFtSizeOneBoxLegend(OneBox &bar) const {
    const std::vector<SbVec2f> sizes = oravane::textSizes(valueTextBuilder(), bar.labels);
    BarContent &content = bar.content;
    const auto extent = [&](std::size_t i, float position) {
        const float width = sizes[i][0], height = sizes[i][1];
        if (bar.isVertical())
            return BarLabel{position, height + kLabelDistance, width};
        return BarLabel{position, width + kLabelDistance, height + kDescender};
    };
    const std::size_t shift = content.hasLowBox && !sizes.empty() ? 1 : 0;
    for (std::size_t i = 0; i < bar.extents.size(); ++i)
        bar.extents[i] = extent(i + shift, bar.extents[i].position);
    if (shift == 1)
        content.lowLabel = extent(0, 0);
    if (content.hasHighBox && !sizes.empty())
        content.highLabel = extent(sizes.size() - 1, 0);
    content.labels = bar.extents;
    content.maxLabelShare = m_maxValueSize > 0 ? std::min(m_maxValueSize, 0.9f) : 0.6f;
    if (const float width = factorWidth(); width > 0) {
        content.beyondEnd = bar.isVertical() ? kFactorRoom : width + oravane::kColumnGap;
        content.minimumAcross = bar.isVertical() ? width : oravane::kFactorHeight;
    }
}

void PoAutoValueLegend::drawOneBoxLegend(ValDistrib distribution, int gradient) {
    OneBox bar;
    const bool isLabelFirst = attr().valuePosition == POS_LEFT || attr().valuePosition == POS_TOP;
    if (isVertical())
        bar.side = isLabelFirst ? TextSide::Left : TextSide::Right;
    else
        bar.side = isLabelFirst ? TextSide::Above : TextSide::Below;
    FontSizeFunction fontSizeIn;
    if (hasValues()) {
        findRange(distribution, bar);
        findLabels(distribution, bar);
        computeUndefBoxOneBoxLegend(bar);
        computeValFtSizeOneBoxLegend(bar);
        fontSizeIn = [&](float width, float height) {
            const bool isVertical = bar.isVertical();
            return LegendBar(bar.content, isVertical ? height : width, isVertical ? width : height)
                .fontSize();
        };
    }
    if (!drawFrame(start.getValue(), end.getValue(), fontSizeIn, bar.room) || !hasValues())
        return;
    const LegendBar layout(bar.content, bar.length(), bar.width());
    auto *face = new SoGroup, *border = new SoGroup;
    drawUndefBoxesOneBoxLegend(bar, layout, face, border);
    drawValuesRectOneBoxLegend(bar, layout, gradient, face, border);
    if (attr().hasValues)
        drawValuesOneBoxLegend(bar, layout, border);
    newPart("box", face);
    newPart("boxBorder", border);
}

void PoAutoValueLegend::drawUndefBoxesOneBoxLegend(const OneBox &bar, const LegendBar &layout, SoGroup *face,
                                                   SoGroup *border) {
    int index = 0;
    const auto draw = [&](const LegendBar::Range &range) {
        const oravane::BoxOutline outline = bar.outline(range, layout.thickness(), 0);
        drawBoxLegendBoxesA(face, border, SbVec2f(outline.corner[0], outline.corner[1]), outline.width,
                            outline.height, index++);
    };
    if (bar.content.hasLowBox)
        draw(layout.lowBox());
    if (bar.content.hasHighBox)
        draw(layout.highBox());
}

void PoAutoValueLegend::drawValuesRectOneBoxLegend(const OneBox &bar, const LegendBar &layout, int gradient,
                                                   SoGroup *face, SoGroup *border) {
    const auto along = [&](float position) {
        return layout.bar().from + position * (layout.bar().to - layout.bar().from);
    };
    const bool isSingle = bar.values.size() == 1;
    const std::size_t numParts = isSingle ? 1 : bar.values.size() - 1;
    newBoxRepresentationList(static_cast<int>(numParts));
    for (std::size_t i = 0; i < numParts; ++i) {
        BoxRepresentation &part = m_boxes[i];
        part.firstValue = bar.values[i];
        part.secondValue = bar.values[isSingle ? i : i + 1];
        computeBoxColors(static_cast<int>(i), gradient);
        const float from = isSingle ? 0 : bar.positions[i], to = isSingle ? 1 : bar.positions[i + 1];
        addBoxFace(face, bar.outline({along(from), along(to)}, layout.thickness(), boxZ()), part);
    }
    oravane::addBorder(border, bar.outline(layout.bar(), layout.thickness(), textZ()));
}

void PoAutoValueLegend::drawValuesOneBoxLegend(const OneBox &bar, const LegendBar &layout, SoGroup *border) {
    const float s = layout.fontSize(), edge = layout.thickness(), text = edge + s * oravane::kLabelGap;
    auto *group = new SoGroup;
    PiText builder = valueTextBuilder();
    const auto [horizontal, vertical] =
        oravane::alignmentAt(bar.side, PiText::TEXT_PATH_RIGHT, oravane::LetterEdge::Capitals);
    builder.setAlignment(horizontal, vertical);
    builder.setFontSize(s);
    builder.setGroup(group);
    float across = 0;
    for (std::size_t i = 0; i < bar.labels.size(); ++i) {
        const auto [anchor, position] = layout.labels()[i];
        builder.setOrigin(bar.at(position, text));
        builder.setString(bar.labels[i].getString());
        builder.build();
        const auto tickPoint = [&](float along, float share) {
            const SbVec2f point = bar.at(along, edge + share * s * oravane::kTickLength);
            return SbVec3f(point[0], point[1], textZ());
        };
        const std::array tick = {tickPoint(anchor, 0), tickPoint(anchor, 0.25f), tickPoint(position, 0.75f),
                                 tickPoint(position, 1)};
        oravane::addLine(border, tick);
    }
    for (const BarLabel &label : bar.extents)
        across = std::max(across, label.across);
    newPart("valueText", group);
    newFontPart("valueTextApp.font", attr().valueFontName, s);
    if (!(bar.content.beyondEnd > 0))
        return;
    m_factorSize = s;
    // Beyond the labels, in line with them.
    const float high = bar.length() - s * bar.content.beyondEnd;
    const SbVec2f a = bar.at(0, text), b = bar.at(high, text + s * across);
    Plimit limit{std::min(a[0], b[0]), std::max(a[0], b[0]), std::min(a[1], b[1]), std::max(a[1], b[1])};
    const float missing = s * factorWidth() - (limit.xmax - limit.xmin);
    if (bar.side == TextSide::Right && missing > 0)
        limit.xmin -= missing;
    else if (bar.side == TextSide::Left && missing > 0)
        limit.xmax += missing;
    else if (bar.side == TextSide::Above)
        limit.ymin = 2 * (limit.ymax - s * kRaisedHeight) - limit.ymax; // the exponent stays inside
    drawMultFactor(bar.isVertical() ? MULT_FACTOR_ABOVE : MULT_FACTOR_RIGHT, limit);
}
