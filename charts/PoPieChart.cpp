#include <oravane/PoPieChart.h>

#include "charts/PieAnnotations.h"
#include "charts/PieShapes.h"
#include "charts/PieSlices.h"
#include "core/ClassTable.h"
#include "core/ShapeGroup.h"
#include "text/TextLayout.h"

#include <oravane/PbMiscTextAttr.h>
#include <oravane/PbNumericDisplayFormat.h>
#include <oravane/PiCircleArc2.h>
#include <oravane/PiNumericFormat.h>
#include <oravane/PiText.h>
#include <oravane/PoMiscTextAttrElement.h>
#include <oravane/PoNumericDisplayFormatElement.h>

#include <Inventor/SoPath.h>
#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoAnnotation.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoPickStyle.h>
#include <Inventor/nodes/SoShapeHints.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <map>
#include <string>

SO_KIT_SOURCE(PoPieChart)

using oravane::PieDisc;
using oravane::PieLabel;
using oravane::PieLabelAlignment;
using oravane::PieLabelPlace;
using oravane::PieLabelRules;
using oravane::PieSlice;
using oravane::PlacedPieLabel;

namespace {

/// The lines of an annotation, from top to bottom.
enum LineKind : std::size_t { TEXT, VALUE, PERCENT, NUM_KINDS };
constexpr const char *kKindNames[NUM_KINDS] = {"Text", "Value", "Percent"};
static_assert(NUM_KINDS == PieLabel::NUM_LINES);

/// In font sizes: around the lines of an annotation, and between two annotations.
constexpr float kMargin = 0.25f, kGap = 0.15f;

/// In radii; keeps sums and products of lengths finite.
constexpr float kLongest = 1e6f;

constexpr const char *kSliceName = "slice", *kGroupName = "sliceGroup";

/// What is wanted where it is above 0 and a number, else `usual`.
float positiveOr(float wanted, float usual) {
    return wanted > 0 && std::isfinite(wanted) ? wanted : usual;
}

} // namespace

void PoPieChart::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoPieChart, PoKestrava, "PoKestrava");
}

// -------------------------------------------------------------------------------------------- construction

PoPieChart::PoPieChart(int isSolid) {
    init(isSolid);
}

PoPieChart::PoPieChart(int isSolid, float radiusOfDisc, short num, const char **texts, const float *values,
                       int numColors, const SbColor *colors) {
    init(isSolid);
    if (radiusOfDisc != radius.getValue())
        radius = radiusOfDisc;
    if (num > 0 && texts && values) {
        for (int k = 0; k < num; ++k)
            sliceText.set1Value(k, texts[k] ? texts[k] : "");
        sliceValue.setValues(0, num, values);
    }
    sliceColor.setNum(0);
    if (numColors > 0 && colors)
        sliceColor.setValues(0, numColors, colors);
}

PoPieChart::~PoPieChart() = default;

void PoPieChart::init(int isSolid) {
    SO_KIT_CONSTRUCTOR(PoPieChart);
    addParts();
    addFields();
    defineEnums();
    SO_KIT_INIT_INSTANCE();
    generatedParts({&slice, &sliceBorder, &extAnnotBox, &extAnnotBoxBorder, &extAnnotText, &extAnnotValue,
                    &extAnnotPercent, &arrow, &intAnnotBox, &intAnnotBoxBorder, &intAnnotText, &intAnnotValue,
                    &intAnnotPercent});
    setAppearances(isSolid);
    setUpConnections(TRUE, TRUE);
    setDomainUsedForRebuild(FALSE);
}

void PoPieChart::addParts() {
    ORAVANE_SHOWN_PART(slice, SoGroup, FALSE);
    ORAVANE_SHOWN_PART(sliceBorder, SoGroup, FALSE);
    ORAVANE_SHOWN_PART(extAnnotBox, SoAnnotation, FALSE);
    ORAVANE_SHOWN_PART(extAnnotBoxBorder, SoAnnotation, FALSE);
    ORAVANE_SHOWN_PART(extAnnotText, SoAnnotation, FALSE);
    ORAVANE_SHOWN_PART(extAnnotValue, SoAnnotation, FALSE);
    ORAVANE_SHOWN_PART(extAnnotPercent, SoAnnotation, FALSE);
    ORAVANE_SHOWN_PART(arrow, SoGroup, FALSE);
    ORAVANE_SHOWN_PART(intAnnotBox, SoAnnotation, FALSE);
    ORAVANE_SHOWN_PART(intAnnotBoxBorder, SoAnnotation, FALSE);
    ORAVANE_SHOWN_PART(intAnnotText, SoAnnotation, FALSE);
    ORAVANE_SHOWN_PART(intAnnotValue, SoAnnotation, FALSE);
    ORAVANE_SHOWN_PART(intAnnotPercent, SoAnnotation, FALSE);
}

void PoPieChart::addFields() {
    SO_KIT_ADD_FIELD(radius, (1));
    SO_KIT_ADD_EMPTY_MFIELD(sliceText);
    SO_KIT_ADD_EMPTY_MFIELD(sliceValue);
    SO_KIT_ADD_FIELD(sliceColor, (SbColor(0, 0, 0)));
    addAnnotFields();
    SO_KIT_ADD_FIELD(arrowVisibility, (TRUE));
    SO_KIT_ADD_FIELD(arrowHeight, (0));
    SO_KIT_ADD_FIELD(arrowWidth, (0));
    SO_KIT_ADD_FIELD(sliceGroupActive, (TRUE));
    SO_KIT_ADD_FIELD(sliceGroupMinValue, (5));
    SO_KIT_ADD_FIELD(sliceGroupFlagMin, (PERCENTAGE));
    SO_KIT_ADD_FIELD(sliceGroupString, ("Others"));
    SO_KIT_ADD_EMPTY_MFIELD(sliceToTranslateNumber);
    SO_KIT_ADD_EMPTY_MFIELD(sliceToTranslateValue);
    SO_KIT_ADD_FIELD(sliceAngleStep, (PiCircleArc2::DEFAULT_STEP));
    watchFields({&radius, &sliceText, &sliceValue, &sliceColor, &arrowVisibility, &arrowHeight, &arrowWidth,
                 &sliceGroupActive, &sliceGroupMinValue, &sliceGroupFlagMin, &sliceGroupString,
                 &sliceToTranslateNumber, &sliceToTranslateValue, &sliceAngleStep});
}

void PoPieChart::addAnnotFields() {
    SO_KIT_ADD_FIELD(intAnnotPosition, (HOR_INT_POS));
    SO_KIT_ADD_FIELD(intAnnotAlignment, (CENTER_ALIGN));
    SO_KIT_ADD_FIELD(intAnnotTextVisibility, (FALSE));
    SO_KIT_ADD_FIELD(intAnnotValueVisibility, (TRUE));
    SO_KIT_ADD_FIELD(intAnnotPercentVisibility, (FALSE));
    SO_KIT_ADD_FIELD(intAnnotAddStringVisibility, (FALSE));
    SO_KIT_ADD_FIELD(intAnnotTextFontName, (""));
    SO_KIT_ADD_FIELD(intAnnotValueFontName, (""));
    SO_KIT_ADD_FIELD(intAnnotPercentFontName, (""));
    SO_KIT_ADD_FIELD(intAnnotTextFontSize, (0));
    SO_KIT_ADD_FIELD(intAnnotValueFontSize, (0));
    SO_KIT_ADD_FIELD(intAnnotPercentFontSize, (0));
    SO_KIT_ADD_FIELD(intAnnotAddString, (""));
    SO_KIT_ADD_FIELD(intAnnotDistance, (0));
    SO_KIT_ADD_FIELD(extAnnotPosition, (HOR_INT_POS));
    SO_KIT_ADD_FIELD(extAnnotAlignment, (INWARDS_ALIGN));
    SO_KIT_ADD_FIELD(extAnnotTextVisibility, (TRUE));
    SO_KIT_ADD_FIELD(extAnnotValueVisibility, (FALSE));
    SO_KIT_ADD_FIELD(extAnnotPercentVisibility, (FALSE));
    SO_KIT_ADD_FIELD(extAnnotAddStringVisibility, (FALSE));
    SO_KIT_ADD_FIELD(extAnnotTextFontName, (""));
    SO_KIT_ADD_FIELD(extAnnotValueFontName, (""));
    SO_KIT_ADD_FIELD(extAnnotPercentFontName, (""));
    SO_KIT_ADD_FIELD(extAnnotTextFontSize, (0));
    SO_KIT_ADD_FIELD(extAnnotValueFontSize, (0));
    SO_KIT_ADD_FIELD(extAnnotPercentFontSize, (0));
    SO_KIT_ADD_FIELD(extAnnotAddString, (""));
    SO_KIT_ADD_FIELD(extAnnotDistance1, (0));
    SO_KIT_ADD_FIELD(extAnnotDistance2, (0));
    SO_KIT_ADD_FIELD(extAnnotDistance3, (0));
    watchFields({&intAnnotPosition,          &intAnnotAlignment,
                 &intAnnotTextVisibility,    &intAnnotValueVisibility,
                 &intAnnotPercentVisibility, &intAnnotAddStringVisibility,
                 &intAnnotTextFontName,      &intAnnotValueFontName,
                 &intAnnotPercentFontName,   &intAnnotTextFontSize,
                 &intAnnotValueFontSize,     &intAnnotPercentFontSize,
                 &intAnnotAddString,         &intAnnotDistance,
                 &extAnnotPosition,          &extAnnotAlignment,
                 &extAnnotTextVisibility,    &extAnnotValueVisibility,
                 &extAnnotPercentVisibility, &extAnnotAddStringVisibility,
                 &extAnnotTextFontName,      &extAnnotValueFontName,
                 &extAnnotPercentFontName,   &extAnnotTextFontSize,
                 &extAnnotValueFontSize,     &extAnnotPercentFontSize,
                 &extAnnotAddString,         &extAnnotDistance1,
                 &extAnnotDistance2,         &extAnnotDistance3});
}

void PoPieChart::defineEnums() {
    SO_KIT_DEFINE_ENUM_VALUE(AnnotPosPieChart, RADIAL_INT_POS);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotPosPieChart, HOR_INT_POS);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotPosPieChart, RADIAL_EXT_POS);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotPosPieChart, HOR_EXT_POS);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotPosPieChart, HOR_ALIGNED_EXT_POS);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotPosPieChart, VERT_ALIGNED_EXT_POS);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotPosPieChart, SQUARE_ALIGNED_EXT_POS);
    SO_KIT_SET_SF_ENUM_TYPE(intAnnotPosition, AnnotPosPieChart);
    SO_KIT_SET_SF_ENUM_TYPE(extAnnotPosition, AnnotPosPieChart);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotAlignPieChart, LEFT_ALIGN);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotAlignPieChart, CENTER_ALIGN);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotAlignPieChart, RIGHT_ALIGN);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotAlignPieChart, INWARDS_ALIGN);
    SO_KIT_DEFINE_ENUM_VALUE(AnnotAlignPieChart, OUTWARDS_ALIGN);
    SO_KIT_SET_SF_ENUM_TYPE(intAnnotAlignment, AnnotAlignPieChart);
    SO_KIT_SET_SF_ENUM_TYPE(extAnnotAlignment, AnnotAlignPieChart);
    SO_KIT_DEFINE_ENUM_VALUE(SliceGroupFlag, ABSOLUTE);
    SO_KIT_DEFINE_ENUM_VALUE(SliceGroupFlag, PERCENTAGE);
    SO_KIT_SET_SF_ENUM_TYPE(sliceGroupFlagMin, SliceGroupFlag);
}

void PoPieChart::setAppearances(int isSolid) {
    setLightModel(SoLightModel::BASE_COLOR);
    if (isSolid)
        set("sliceApp.lightModel", "model PHONG");
    for (const char *box :
         {"extAnnotBoxApp", "extAnnotBoxBorderApp", "intAnnotBoxApp", "intAnnotBoxBorderApp"})
        setDrawStyleAK(box, SoDrawStyle::INVISIBLE);
}

// ------------------------------------------------------------------------------------ attributes and files

void PoPieChart::setFormat(PbNumericDisplayFormat *format) {
    m_format.set(format);
}

const PbNumericDisplayFormat *PoPieChart::getFormat() const {
    return m_format.inForce();
}

void PoPieChart::setMiscTextAttr(PbMiscTextAttr *attributes) {
    m_miscTextAttr.set(attributes);
}

const PbMiscTextAttr *PoPieChart::getMiscTextAttr() const {
    return m_miscTextAttr.inForce();
}

void PoPieChart::preRebuild() {
    PoKestrava::preRebuild();
    m_format.addToCache();
    m_miscTextAttr.addToCache();
}

void PoPieChart::addElementsAllCaches() {
    PoKestrava::addElementsAllCaches();
    m_format.readElement();
    m_miscTextAttr.readElement();
}

void PoPieChart::setDefaultOnNonWritingFields() {
    PoKestrava::setDefaultOnNonWritingFields();
    if (getNodeWriteFormat() != WRITE_FIELDS)
        return;
    for (SoSFNode *appearanceKit : {&extAnnotTextApp, &extAnnotValueApp, &extAnnotPercentApp,
                                    &intAnnotTextApp, &intAnnotValueApp, &intAnnotPercentApp})
        if (SoNode *kit = appearanceKit->getValue())
            skipInFile(kit->getField("font")); // generated
}

// ------------------------------------------------------------------------------ one rebuild's working data

/// Both groups of annotations have fields of the same kinds.
struct PoPieChart::AnnotFields {
    const PoSFEnum &position, &alignment;
    std::array<const SoSFBool *, NUM_KINDS> visibility;
    const SoSFBool &addStringVisibility;
    std::array<const SoSFString *, NUM_KINDS> fontName;
    std::array<const SoSFFloat *, NUM_KINDS> fontSize;
    const SoSFString &addString;
};

struct PoPieChart::AnnotAttr {
    PieLabelRules rules;
    std::array<bool, NUM_KINDS> isVisible;
    std::array<SbString, NUM_KINDS> fontName;
    std::array<float, NUM_KINDS> fontSize;
    bool hasAddString;
    SbString addString;
};

/// What a rebuild makes of annotations; null for what is not needed.
struct PoPieChart::AnnotParts {
    SoNode *box = nullptr, *boxBorder = nullptr;
    std::array<SoNode *, NUM_KINDS> lines{}, fonts{};
};

struct PoPieChart::Parts {
    SoNode *slice = nullptr, *sliceBorder = nullptr, *arrow = nullptr;
    AnnotParts external, internal;
};

struct PoPieChart::PieChartAttr {
    PieDisc disc;
    AnnotAttr external, internal;
    bool hasArrows;
    float arrowHeight, arrowWidth;

    std::size_t numSlices; ///< that could be, of values of whatever size
    std::vector<PieSlice> slices;
    std::vector<float> translations; ///< of each slice, as all that follows
    std::vector<SbName> names;
    std::vector<SbString> texts, values, percents;
    SbString power; ///< what the numbers of the values are multiples of: empty, or "E3"

    std::vector<PlacedPieLabel> arrows; ///< labels that have one
    Parts parts;
};

PoPieChart::AnnotFields PoPieChart::annotFields(bool isExternal) const {
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

PoPieChart::AnnotAttr PoPieChart::annotAttr(const AnnotFields &fields) const {
    const float r = m_attr->disc.radius;
    AnnotAttr attr;
    float largest = 0;
    for (std::size_t kind = 0; kind < NUM_KINDS; ++kind) {
        attr.isVisible[kind] = fields.visibility[kind]->getValue();
        attr.fontName[kind] = oravane::fontNameOf(fields.fontName[kind]->getValue(), *getMiscTextAttr());
        attr.fontSize[kind] =
            std::min(positiveOr(fields.fontSize[kind]->getValue(), r * 0.025f), kLongest * r);
        if (attr.isVisible[kind])
            largest = std::max(largest, attr.fontSize[kind]);
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
        m_attr->texts.push_back(part.isGroup ? sliceGroupString.getValue() : sliceText[part.number - 1]);
    }
}

void PoPieChart::computeSliceNames() {
    for (const PieSlice &part : m_attr->slices)
        m_attr->names.emplace_back(
            ((part.isGroup ? kGroupName : kSliceName) + std::to_string(part.number)).c_str());
}

namespace {

/// A power of ten up to this one is not factored out unless a format says so.
constexpr int kLargestWrittenPower = 6;

int numDecimalsOf(const PiNumericFormat &format, float value) {
    char text[PiNumericFormat::STRING_SIZE];
    format.getString(value, text);
    const char *point = std::strchr(text, '.');
    return point ? static_cast<int>(std::strlen(point + 1)) : 0;
}

/// As exact as the value that needs the most decimals: what is written is the data, and its mean distance,
/// by which scales are written, means nothing in a pie.
PiNumericFormat exactFormat(std::span<const float> values) {
    const float largest = *std::max_element(values.begin(), values.end());
    PiNumericFormat format;
    int numDecimals = 0;
    for (const float value : values) {
        format.setFormatAuto(value, largest, 0, 0);
        numDecimals = std::max(numDecimals, numDecimalsOf(format, value));
    }
    const int power = format.getTenPower();
    if (std::abs(power) > kLargestWrittenPower)
        format.setFormatFloatingPoint(numDecimals, power);
    else
        format.setFormatFloatingPoint(std::max(numDecimals - power, 0), 0);
    return format;
}

} // namespace

void PoPieChart::computeStringsToDisplay(const float *values, int count, int percent) {
    std::vector<SbString> &strings = percent ? m_attr->percents : m_attr->values;
    PbNumericDisplayFormat::FormatType type;
    int tenPower, numDecimal;
    getFormat()->getFormat(type, tenPower, numDecimal);
    PiNumericFormat format;
    if (!percent && type == PbNumericDisplayFormat::AUTO_FORMAT) {
        format = exactFormat({values, static_cast<std::size_t>(count)});
    } else {
        // Percents are parts of a hundred whatever the unit of the values is. They are quotients, of which
        // two digits of the least one tell enough.
        const PbNumericDisplayFormat wanted(type, percent ? 0 : tenPower, numDecimal);
        format.setFormat(&wanted, count, values, percent);
    }
    if (!percent && format.getTenPower() != 0)
        m_attr->power.sprintf("E%d", format.getTenPower());
    char text[PiNumericFormat::STRING_SIZE];
    for (int k = 0; k < count; ++k) {
        format.getString(values[k], text);
        strings.emplace_back(text);
        if (percent)
            strings.back() += "%";
    }
}

// ------------------------------------------------------------------------------------------------- drawing

void PoPieChart::rebuildPie(const SbVec3f &center, float zCenter2) {
    const float r = radius.getValue();
    const float finite = center[0] + center[1] + center[2] + zCenter2 + r;
    m_attr = std::make_unique<PieChartAttr>();
    m_attr->disc = {{center[0], center[1]},
                    r,
                    sliceAngleStep.getValue(),
                    std::min(center[2], zCenter2),
                    std::max(center[2], zCenter2)};
    if (r > 0 && r * kLongest * kLongest <= std::numeric_limits<float>::max() && std::isfinite(finite)) {
        savePieChartAttr();
        computeSlicePartValuesToDisplay();
    }
    if (m_attr->slices.empty()) {
        m_attr.reset();
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
    m_attr->parts.slice = slices;
    m_attr->parts.sliceBorder = borders;
}

std::array<std::vector<SbString>, NUM_KINDS> PoPieChart::annotStrings(const AnnotAttr &attr) const {
    std::array<std::vector<SbString>, NUM_KINDS> strings;
    const std::vector<SbString> *all[] = {&m_attr->texts, &m_attr->values, &m_attr->percents};
    for (std::size_t kind = 0; kind < NUM_KINDS; ++kind) {
        strings[kind].resize(m_attr->slices.size());
        if (attr.isVisible[kind])
            strings[kind] = *all[kind];
    }
    if (attr.isVisible[VALUE])
        for (SbString &value : strings[VALUE])
            value += attr.hasAddString ? attr.addString : m_attr->power;
    return strings;
}

namespace {

/// Width of the text, and height of its lines: each is as high as the font, with the capitals in its middle.
SbVec2f lineSize(PiText &text, const SbString &string, float fontSize) {
    SbBox2f box;
    int numLines = 0;
    text.setString(string.getString());
    text.getLimit(box, numLines);
    if (box.isEmpty() || box.getSize()[0] <= 0)
        return {0, 0};
    return {box.getSize()[0], static_cast<float>(numLines) * fontSize};
}

/// One shape for the boxes of all labels. They do not keep picks from what is below.
template <class Shape>
SoAnnotation *newBoxes(std::span<const PlacedPieLabel> labels, std::initializer_list<std::size_t> corners,
                       const SbVec2f &center, float z) {
    std::vector<SbVec3f> points;
    for (const PlacedPieLabel &label : labels)
        for (const std::size_t corner : corners) {
            const SbVec2f point = center + label.corners()[corner];
            points.emplace_back(point[0], point[1], z);
        }
    auto *pickStyle = new SoPickStyle;
    pickStyle->style = SoPickStyle::UNPICKABLE;
    auto *boxes = new SoAnnotation;
    boxes->addChild(pickStyle);
    boxes->addChild(oravane::newUniformShapeGroup<Shape>(points, corners.size()));
    return boxes;
}

/// Builds line `kind` of a label.
void buildLine(PiText &text, const PlacedPieLabel &label, std::size_t kind, float width,
               const SbVec2f &center, float z) {
    static constexpr PiText::HorAlignment alignments[] = {PiText::HOR_LEFT, PiText::HOR_CENTER,
                                                          PiText::HOR_RIGHT};
    const SbVec2f origin = center + label.lineMiddles[kind] + label.alignment * width / 2 * label.along;
    const SbVec3f directions[] = {{label.along[0], label.along[1], 0}, {label.up()[0], label.up()[1], 0}};
    text.setHorAlignment(alignments[static_cast<int>(label.alignment) + 1]);
    text.setDirectionVectors(directions);
    text.setOrigin(origin[0], origin[1], z);
    text.build();
}

} // namespace

void PoPieChart::drawAnnotations(bool isExternal, AnnotParts &parts) {
    const AnnotAttr &attr = isExternal ? m_attr->external : m_attr->internal;
    const std::array<std::vector<SbString>, NUM_KINDS> strings = annotStrings(attr);
    PiText text;
    text.setTextAttributes(getMiscTextAttr());
    text.setVertAlignment(PiText::VERT_HALF);
    std::vector<PieLabel> labels(m_attr->slices.size());
    for (std::size_t kind = 0; kind < NUM_KINDS; ++kind) {
        text.setFont(attr.fontName[kind], attr.fontSize[kind]);
        for (std::size_t k = 0; k < labels.size(); ++k)
            labels[k].lines[kind] = lineSize(text, strings[kind][k], attr.fontSize[kind]);
    }
    std::vector<std::size_t> slices; // that have a label
    for (std::size_t k = 0; k < labels.size(); ++k) {
        labels[k].angle = m_attr->slices[k].middle();
        labels[k].translation = m_attr->translations[k];
        const auto isThere = [](const SbVec2f &line) { return line[0] > 0; };
        if (std::any_of(labels[k].lines.begin(), labels[k].lines.end(), isThere))
            slices.push_back(k);
    }
    for (std::size_t k = 0; k < slices.size(); ++k)
        labels[k] = labels[slices[k]];
    labels.resize(slices.size());
    if (labels.empty())
        return;

    std::vector<PlacedPieLabel> placed =
        isExternal ? placeAroundPie(attr.rules, labels) : placeInsidePie(attr.rules, labels);
    const SbVec2f center = m_attr->disc.center;
    const float z = m_attr->disc.top + 3 * m_attr->disc.lift();
    parts.box = newBoxes<SoFaceSet>(placed, {0, 1, 2, 3}, center, z);
    parts.boxBorder = newBoxes<SoLineSet>(placed, {0, 1, 2, 3, 0}, center, z);
    for (std::size_t kind = 0; kind < NUM_KINDS; ++kind) {
        if (!attr.isVisible[kind])
            continue;
        auto *group = new SoAnnotation;
        text.setGroup(group);
        text.setFont(attr.fontName[kind], attr.fontSize[kind]);
        for (std::size_t k = 0; k < slices.size(); ++k) {
            const float width = labels[k].lines[kind][0];
            if (width <= 0)
                continue;
            text.setName(m_attr->names[slices[k]].getString());
            text.setString(strings[kind][slices[k]].getString());
            buildLine(text, placed[k], kind, width, center, z);
        }
        parts.lines[kind] = group;
        parts.fonts[kind] = oravane::newFont(attr.fontName[kind], attr.fontSize[kind]);
    }
    if (isExternal && attr.rules.hasArrows)
        m_attr->arrows = std::move(placed);
}

void PoPieChart::drawInternalAnnotations() {
    drawAnnotations(false, m_attr->parts.internal);
}

void PoPieChart::drawExternalAnnotations() {
    drawAnnotations(true, m_attr->parts.external);
    drawArrows();
}

void PoPieChart::drawArrows() {
    if (m_attr->arrows.empty())
        return;
    const PieDisc &disc = m_attr->disc;
    std::vector<SbVec3f> lines, heads;
    std::vector<std::int32_t> counts;
    const auto add = [&disc](std::vector<SbVec3f> &points, const SbVec2f &point) {
        points.emplace_back(disc.center[0] + point[0], disc.center[1] + point[1], disc.top + 2 * disc.lift());
    };
    for (const PlacedPieLabel &label : m_attr->arrows) {
        const SbVec2f tip = label.arrow[0];
        const std::size_t first = label.arrow[1] == tip ? 2 : 1;
        SbVec2f back = label.arrow[first] - tip;
        const float length = back.normalize();
        const SbVec2f base = tip + std::min(m_attr->arrowHeight, length / 2) * back;
        const SbVec2f across = m_attr->arrowWidth / 2 * SbVec2f(-back[1], back[0]);
        const std::size_t start = lines.size();
        add(lines, base);
        for (std::size_t k = first; k < label.arrow.size(); ++k)
            if (k == first || label.arrow[k] != label.arrow[k - 1])
                add(lines, label.arrow[k]);
        counts.push_back(static_cast<std::int32_t>(lines.size() - start));
        for (const SbVec2f &point : {tip, base - across, base + across})
            add(heads, point);
    }
    auto *arrows = new SoGroup;
    arrows->addChild(oravane::newShapeGroup<SoLineSet>(lines, counts));
    arrows->addChild(oravane::newUniformShapeGroup<SoFaceSet>(heads, 3));
    m_attr->parts.arrow = arrows;
}

// ------------------------------------------------------------------------------------------- setting parts

void PoPieChart::setParts() {
    // The first part set tells the scene: a sensor of the program may then change whatever it wants.
    const Parts parts = m_attr->parts;
    m_attr.reset();
    setPart("slice", parts.slice);
    setPart("sliceBorder", parts.sliceBorder);
    setAnnotParts("extAnnot", parts.external);
    setPart("arrow", parts.arrow);
    setAnnotParts("intAnnot", parts.internal);
}

void PoPieChart::setAnnotParts(const char *prefix, const AnnotParts &parts) {
    const SbString start(prefix);
    setPart(SbName(start + "Box"), parts.box);
    setPart(SbName(start + "BoxBorder"), parts.boxBorder);
    for (std::size_t kind = 0; kind < NUM_KINDS; ++kind) {
        const SbString name = start + kKindNames[kind];
        if (parts.fonts[kind])
            setPart(SbName(name + "App.font"), parts.fonts[kind]);
        setPart(SbName(name), parts.lines[kind]);
    }
}

void PoPieChart::resetAllPart() {
    m_attr = std::make_unique<PieChartAttr>();
    setParts();
}

// --------------------------------------------------------------------------------------- slices by number

int PoPieChart::getPickedSliceNumber(const SoPath *path, int &isGroup) const {
    isGroup = 0;
    // Kits hide what is below them from plain paths.
    const auto *full = static_cast<const SoFullPath *>(path);
    const int kit = full ? full->findNode(this) : -1;
    if (kit < 0)
        return 0;
    for (int k = full->getLength() - 1; k > kit; --k) {
        const std::string_view name = full->getNode(k)->getName().getString();
        for (const std::string_view start : {std::string_view(kGroupName), std::string_view(kSliceName)}) {
            int number = 0;
            if (!name.starts_with(start))
                continue;
            const char *end = name.data() + name.size();
            const auto [rest, error] = std::from_chars(name.data() + start.size(), end, number);
            if (error != std::errc() || rest != end)
                continue;
            isGroup = start == kGroupName;
            return number;
        }
    }
    return 0;
}

namespace {

/// Place of a slice among the first `count` entries; `count` when it has none.
int entryOf(const SoMFShort &numbers, int slice, int count) {
    const short *first = numbers.getValues(0);
    return static_cast<int>(std::find(first, first + count, slice) - first);
}

} // namespace

void PoPieChart::setSliceToTranslate(int number, float distance) {
    if (number < 1 || number > std::numeric_limits<short>::max())
        return;
    const int count = std::min(sliceToTranslateNumber.getNum(), sliceToTranslateValue.getNum());
    const int entry = entryOf(sliceToTranslateNumber, number, count);
    if (entry == count)
        sliceToTranslateNumber.set1Value(entry, static_cast<short>(number));
    sliceToTranslateValue.set1Value(entry, distance);
}

float PoPieChart::getSliceToTranslate(int number) const {
    const int count = std::min(sliceToTranslateNumber.getNum(), sliceToTranslateValue.getNum());
    const int entry = entryOf(sliceToTranslateNumber, number, count);
    return entry < count ? sliceToTranslateValue[entry] : 0;
}
