#include "charts/PieChartAttr.h"
#include "core/ShapeGroup.h"
#include "text/DataNumbers.h"
#include "text/TextLayout.h"

#include <oravane/PbMiscTextAttr.h>
#include <oravane/PbNumericDisplayFormat.h>
#include <oravane/PiText.h>
#include <oravane/PoMiscTextAttrElement.h>
#include <oravane/PoNumericDisplayFormatElement.h>

#include <Inventor/nodes/SoAnnotation.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoPickStyle.h>
#include <Inventor/nodes/SoShapeHints.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <utility>

using oravane::PieAnnotAttr;
using oravane::PieDisc;
using oravane::PieLabel;
using oravane::PieLabelAlignment;
using oravane::PieLabelPlace;
using oravane::PieLabelRules;
using oravane::PieSlice;
using oravane::PlacedPieLabel;

namespace {

/// In font sizes: around the lines of an annotation, and between two annotations.
constexpr float kMargin = 0.25f, kGap = 0.15f;

/// The largest radius, and the longest other length in radii: sums and squares of lengths stay finite.
constexpr float kLargestRadius = 1e12f, kLongest = 1e6f;

/// What is wanted where it is above 0 and a number, else `usual`.
float positiveOr(float wanted, float usual) {
    return wanted > 0 && std::isfinite(wanted) ? wanted : usual;
}

// The order in which things are seen from above.
float arrowHeightOf(const PieDisc &disc) {
    return disc.top + 2 * disc.lift();
}
float annotationHeightOf(const PieDisc &disc) {
    return disc.top + 3 * disc.lift();
}

} // namespace

// ---------------------------------------------------------------------------------------------- attributes

oravane::PieAnnotFields PoPieChart::annotFields(bool isExternal) const {
    if (isExternal)
        return {extAnnotPosition,
                extAnnotAlignment,
                {&extAnnotTextVisibility, &extAnnotValueVisibility, &extAnnotPercentVisibility},
                extAnnotAddStringVisibility,
                {&extAnnotTextFontName, &extAnnotValueFontName, &extAnnotPercentFontName},
                {&extAnnotTextFontSize, &extAnnotValueFontSize, &extAnnotPercentFontSize},
                extAnnotAddString};
    return {intAnnotPosition,
            intAnnotAlignment,
            {&intAnnotTextVisibility, &intAnnotValueVisibility, &intAnnotPercentVisibility},
            intAnnotAddStringVisibility,
            {&intAnnotTextFontName, &intAnnotValueFontName, &intAnnotPercentFontName},
            {&intAnnotTextFontSize, &intAnnotValueFontSize, &intAnnotPercentFontSize},
            intAnnotAddString};
}

namespace {

PieLabelPlace placeOf(int position) {
    switch (position) {
    case PoPieChart::RADIAL_INT_POS:
    case PoPieChart::RADIAL_EXT_POS:
        return PieLabelPlace::Radial;
    case PoPieChart::HOR_ALIGNED_EXT_POS:
        return PieLabelPlace::Row;
    case PoPieChart::VERT_ALIGNED_EXT_POS:
        return PieLabelPlace::Column;
    case PoPieChart::SQUARE_ALIGNED_EXT_POS:
        return PieLabelPlace::Square;
    default:
        return PieLabelPlace::Horizontal;
    }
}

PieLabelAlignment alignmentOf(int alignment) {
    switch (alignment) {
    case PoPieChart::LEFT_ALIGN:
        return PieLabelAlignment::Left;
    case PoPieChart::RIGHT_ALIGN:
        return PieLabelAlignment::Right;
    case PoPieChart::INWARDS_ALIGN:
        return PieLabelAlignment::Inwards;
    case PoPieChart::OUTWARDS_ALIGN:
        return PieLabelAlignment::Outwards;
    default:
        return PieLabelAlignment::Centre;
    }
}

} // namespace

PieAnnotAttr PoPieChart::annotAttr(const oravane::PieAnnotFields &fields) const {
    const float r = m_attr->disc.radius;
    PieAnnotAttr attr;
    float largest = 0;
    for (std::size_t line = 0; line < PieLabel::NUM_LINES; ++line) {
        attr.isVisible[line] = fields.visibility[line]->getValue();
        attr.fontName[line] = oravane::fontNameOf(fields.fontName[line]->getValue(), *getMiscTextAttr());
        attr.fontSize[line] =
            std::min(positiveOr(fields.fontSize[line]->getValue(), r * 0.025f), kLongest * r);
        if (attr.isVisible[line])
            largest = std::max(largest, attr.fontSize[line]);
    }
    attr.hasAddString = fields.addStringVisibility.getValue();
    attr.addString = fields.addString.getValue();
    attr.rules.place = placeOf(fields.position.getValue());
    attr.rules.alignment = alignmentOf(fields.alignment.getValue());
    attr.rules.radius = r;
    attr.rules.margin = kMargin * largest;
    attr.rules.gap = kGap * largest;
    return attr;
}

void PoPieChart::savePieChartAttr() {
    const float r = m_attr->disc.radius;
    const auto length = [r](const SoSFFloat &field, float usual) {
        return r * std::min(positiveOr(field.getValue(), usual), kLongest);
    };
    m_attr->internal = annotAttr(annotFields(false));
    m_attr->internal.rules.anchor = length(intAnnotDistance, 0.6667f);
    m_attr->external = annotAttr(annotFields(true));
    PieLabelRules &rules = m_attr->external.rules;
    rules.anchor = length(extAnnotDistance1, 1.05f);
    rules.knee = length(extAnnotDistance2, 0.1f);
    rules.leg = length(extAnnotDistance3, 0.2f);
    rules.hasArrows = arrowVisibility.getValue();
    m_attr->arrowHeight = length(arrowHeight, 0.015f);
    m_attr->arrowWidth = length(arrowWidth, 0.015f);
    m_attr->numSlices = std::min({static_cast<std::size_t>(sliceValue.getNum()),
                                  static_cast<std::size_t>(sliceText.getNum()), oravane::kMaxPieSlices});
}

void PoPieChart::computeSlicePartValuesToDisplay() {
    oravane::PieGrouping grouping;
    grouping.isActive = sliceGroupActive.getValue();
    grouping.minValue = sliceGroupMinValue.getValue();
    grouping.isPercentage = sliceGroupFlagMin.getValue() == PERCENTAGE;
    m_attr->slices = oravane::pieSlices({sliceValue.getValues(0), m_attr->numSlices}, grouping);
    const int numMoved = std::min(sliceToTranslateNumber.getNum(), sliceToTranslateValue.getNum());
    std::map<int, float> moved; // the first entry of each slice counts
    for (int k = 0; k < numMoved; ++k)
        moved.emplace(sliceToTranslateNumber[k], positiveOr(sliceToTranslateValue[k], 0));
    for (const PieSlice &part : m_attr->slices) {
        const auto found = moved.find(part.number);
        m_attr->translations.push_back(
            found == moved.end() ? 0 : std::min(found->second, kLongest * m_attr->disc.radius));
        m_attr->texts.emplace_back(
            (part.isGroup ? sliceGroupString.getValue() : sliceText[part.number - 1]).getString());
    }
}

void PoPieChart::computeSliceNames() {
    for (const PieSlice &part : m_attr->slices)
        m_attr->names.emplace_back(oravane::pieSliceName(part).c_str());
}

void PoPieChart::computeStringsToDisplay(const float *values, int count, int percent) {
    const std::span<const float> numbers(values, static_cast<std::size_t>(values ? std::max(count, 0) : 0));
    if (percent)
        m_attr->percents = oravane::percentTexts(*getFormat(), numbers);
    else // written with the unit of each annotation
        m_attr->values.assign(numbers.begin(), numbers.end());
}

// ------------------------------------------------------------------------------------------------- drawing

void PoPieChart::rebuildPie(const SbVec3f &center, float zCenter2) {
    const float r = radius.getValue();
    m_attr = std::make_unique<PieChartAttr>();
    m_attr->disc = {{center[0], center[1]},
                    r,
                    sliceAngleStep.getValue(),
                    std::min(center[2], zCenter2),
                    std::max(center[2], zCenter2)};
    const float coordinates[] = {center[0], center[1], center[2], zCenter2};
    const bool isPlaced = std::all_of(std::begin(coordinates), std::end(coordinates),
                                      [](float coordinate) { return std::isfinite(coordinate); });
    if (isPlaced && r > 0 && r <= kLargestRadius) {
        savePieChartAttr();
        computeSlicePartValuesToDisplay();
    }
    if (m_attr->slices.empty()) {
        resetAllPart();
        return;
    }
    computeSliceNames();
    std::vector<float> values, percents;
    for (const PieSlice &part : m_attr->slices) {
        values.push_back(part.value);
        percents.push_back(part.percent);
    }
    computeStringsToDisplay(values.data(), static_cast<int>(values.size()), FALSE);
    computeStringsToDisplay(percents.data(), static_cast<int>(percents.size()), TRUE);
    drawSlices();
    drawInternalAnnotations();
    drawExternalAnnotations();
    setParts();
}

void PoPieChart::drawSlices() {
    auto *slices = new SoGroup, *borders = new SoGroup;
    const PieDisc &disc = m_attr->disc;
    const bool isConcave = std::any_of(m_attr->slices.begin(), m_attr->slices.end(),
                                       [](const PieSlice &part) { return part.end - part.start > 3.14; });
    if (isConcave || !disc.isFlat()) {
        auto *hints = new SoShapeHints;
        if (isConcave)
            hints->faceType = SoShapeHints::UNKNOWN_FACE_TYPE;
        if (!disc.isFlat())
            hints->vertexOrdering = SoShapeHints::COUNTERCLOCKWISE;
        slices->addChild(hints);
    }
    const int numColors = sliceColor.getNum();
    const std::size_t count = m_attr->slices.size();
    const auto isInPlace = [this, count](std::size_t k) { return m_attr->translations[k % count] == 0; };
    for (std::size_t k = 0; k < count; ++k) {
        const PieSlice &part = m_attr->slices[k];
        if (numColors > 0) {
            auto *material = new SoMaterial;
            material->diffuseColor = sliceColor[part.isGroup ? numColors - 1 : (part.number - 1) % numColors];
            slices->addChild(material);
        }
        const oravane::PieCut cut{part, m_attr->translations[k], m_attr->names[k],
                                  isInPlace(k) && isInPlace(k + count - 1), isInPlace(k) && isInPlace(k + 1)};
        oravane::addSlice(slices, disc, cut);
        oravane::addSliceBorder(borders, disc, cut);
    }
    m_attr->slicePart = slices;
    m_attr->borderPart = borders;
}

oravane::PerPieLine<std::vector<std::string>> PoPieChart::annotStrings(const PieAnnotAttr &attr) const {
    oravane::PerPieLine<std::vector<std::string>> strings;
    if (attr.isVisible[oravane::PIE_TEXT])
        strings[oravane::PIE_TEXT] = m_attr->texts;
    if (attr.isVisible[oravane::PIE_VALUE])
        strings[oravane::PIE_VALUE] = oravane::dataTexts(
            *getFormat(), m_attr->values, attr.hasAddString ? attr.addString.getString() : nullptr);
    if (attr.isVisible[oravane::PIE_PERCENT])
        strings[oravane::PIE_PERCENT] = m_attr->percents;
    return strings;
}

namespace {

/// One shape for the boxes of all labels. They do not keep picks from what is below.
template <class Shape>
SoAnnotation *newBoxes(std::span<const PlacedPieLabel> labels, std::initializer_list<std::size_t> corners,
                       const PieDisc &disc) {
    std::vector<SbVec3f> points;
    for (const PlacedPieLabel &label : labels)
        for (const std::size_t corner : corners) {
            const SbVec2f point = disc.center + label.corners()[corner];
            points.emplace_back(point[0], point[1], annotationHeightOf(disc));
        }
    auto *pickStyle = new SoPickStyle;
    pickStyle->style = SoPickStyle::UNPICKABLE;
    auto *boxes = new SoAnnotation;
    boxes->addChild(pickStyle);
    boxes->addChild(oravane::newUniformShapeGroup<Shape>(points, corners.size()));
    return boxes;
}

/// Measures and builds one of the lines of all labels.
class LineTexts {
public:
    LineTexts(const PieAnnotAttr &attr, std::size_t line, const PbMiscTextAttr *attributes)
        : m_line(line), m_fontSize(attr.fontSize[line]) {
        m_text.setTextAttributes(attributes);
        m_text.setVertAlignment(PiText::VERT_HALF);
        m_text.setFont(attr.fontName[line], m_fontSize);
    }

    /// Each line of a text is as high as the font, with its capitals in the middle.
    SbVec2f size(const std::string &string) {
        SbBox2f box;
        int numLines = 0;
        m_text.setString(string.c_str());
        m_text.getLimit(box, numLines);
        if (box.isEmpty() || box.getSize()[0] <= 0)
            return {0, 0};
        return {box.getSize()[0], static_cast<float>(numLines) * m_fontSize};
    }

    void build(SoGroup *group, const std::string &string, const SbName &name, const PlacedPieLabel &label,
               float width, const PieDisc &disc) {
        static constexpr PiText::HorAlignment alignments[] = {PiText::HOR_LEFT, PiText::HOR_CENTER,
                                                              PiText::HOR_RIGHT};
        const SbVec2f origin =
            disc.center + label.lineMiddles[m_line] + label.alignment * width / 2 * label.along;
        if (!std::isfinite(origin.dot(origin)))
            return; // the builder would stay where it is
        const SbVec3f directions[] = {{label.along[0], label.along[1], 0}, {label.up()[0], label.up()[1], 0}};
        m_text.setGroup(group);
        m_text.setHorAlignment(alignments[static_cast<int>(label.alignment) + 1]);
        m_text.setDirectionVectors(directions);
        m_text.setOrigin(origin[0], origin[1], annotationHeightOf(disc));
        m_text.setName(name.getString());
        m_text.setString(string.c_str());
        m_text.build();
    }

private:
    std::size_t m_line;
    float m_fontSize;
    PiText m_text;
};

} // namespace

void PoPieChart::drawAnnotations(const PieAnnotAttr &attr, bool isExternal, oravane::PieAnnotParts &parts) {
    const oravane::PerPieLine<std::vector<std::string>> strings = annotStrings(attr);
    std::vector<PieLabel> labels;
    for (std::size_t k = 0; k < m_attr->slices.size(); ++k)
        labels.push_back({m_attr->slices[k].middle(), m_attr->translations[k], {}});
    for (std::size_t line = 0; line < strings.size(); ++line) {
        LineTexts texts(attr, line, getMiscTextAttr());
        for (std::size_t k = 0; k < strings[line].size(); ++k)
            labels[k].lines[line] = texts.size(strings[line][k]);
    }
    const std::vector<PlacedPieLabel> placed =
        isExternal ? placeAroundPie(attr.rules, labels) : placeInsidePie(attr.rules, labels);
    if (placed.empty())
        return;
    parts.box = newBoxes<SoFaceSet>(placed, {0, 1, 2, 3}, m_attr->disc);
    parts.boxBorder = newBoxes<SoLineSet>(placed, {0, 1, 2, 3, 0}, m_attr->disc);
    for (std::size_t line = 0; line < strings.size(); ++line) {
        if (!attr.isVisible[line])
            continue;
        LineTexts texts(attr, line, getMiscTextAttr());
        auto *group = new SoAnnotation;
        for (const PlacedPieLabel &label : placed)
            if (const float width = labels[label.index].lines[line][0]; width > 0)
                texts.build(group, strings[line][label.index], m_attr->names[label.index], label, width,
                            m_attr->disc);
        parts.lines[line] = group;
        parts.fonts[line] = oravane::newFont(attr.fontName[line], attr.fontSize[line]);
    }
    if (isExternal && attr.rules.hasArrows)
        m_attr->arrows = placed;
}

void PoPieChart::drawInternalAnnotations() {
    drawAnnotations(m_attr->internal, false, m_attr->internalParts);
}

void PoPieChart::drawExternalAnnotations() {
    drawAnnotations(m_attr->external, true, m_attr->externalParts);
    drawArrows();
}

void PoPieChart::drawArrows() {
    if (m_attr->arrows.empty())
        return;
    const PieDisc &disc = m_attr->disc;
    std::vector<SbVec3f> lines, heads;
    std::vector<std::int32_t> counts;
    const auto add = [&disc](std::vector<SbVec3f> &points, const SbVec2f &point) {
        points.emplace_back(disc.center[0] + point[0], disc.center[1] + point[1], arrowHeightOf(disc));
    };
    for (const PlacedPieLabel &label : m_attr->arrows) {
        std::vector<SbVec2f> points;
        std::unique_copy(label.arrow.begin(), label.arrow.end(), std::back_inserter(points));
        const SbVec2f tip = points.front();
        SbVec2f back = points[points.size() > 1] - tip;
        const float length = back.normalize();
        const SbVec2f base = tip + std::min(m_attr->arrowHeight, length / 2) * back;
        const SbVec2f across = m_attr->arrowWidth / 2 * SbVec2f(-back[1], back[0]);
        points.front() = base;
        for (const SbVec2f &point : points)
            add(lines, point);
        counts.push_back(static_cast<std::int32_t>(points.size()));
        for (const SbVec2f &point : {tip, base - across, base + across})
            add(heads, point);
    }
    auto *arrows = new SoGroup;
    arrows->addChild(oravane::newShapeGroup<SoLineSet>(lines, counts));
    arrows->addChild(oravane::newUniformShapeGroup<SoFaceSet>(heads, 3));
    m_attr->arrowPart = arrows;
}

// ------------------------------------------------------------------------------------------- setting parts

void PoPieChart::setParts() {
    // The first part set tells the scene: a sensor of the program may then change whatever it wants.
    const std::unique_ptr<PieChartAttr> attr = std::exchange(m_attr, std::make_unique<PieChartAttr>());
    setPart("slice", attr->slicePart);
    setPart("sliceBorder", attr->borderPart);
    setAnnotParts("extAnnot", attr->externalParts);
    setPart("arrow", attr->arrowPart);
    setAnnotParts("intAnnot", attr->internalParts);
}

void PoPieChart::setAnnotParts(const char *prefix, const oravane::PieAnnotParts &parts) {
    const SbString start(prefix);
    setPart(SbName(start + "Box"), parts.box);
    setPart(SbName(start + "BoxBorder"), parts.boxBorder);
    for (std::size_t line = 0; line < PieLabel::NUM_LINES; ++line) {
        const SbString name = start + oravane::kPieLineNames[line];
        if (parts.fonts[line])
            setPart(SbName(name + "App.font"), parts.fonts[line]);
        setPart(SbName(name), parts.lines[line]);
    }
}

void PoPieChart::resetAllPart() {
    m_attr = std::make_unique<PieChartAttr>();
    setParts();
}
