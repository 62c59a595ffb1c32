#include <oravane/PoAxis.h>

#include "axes/GraduationSplit.h"
#include "core/ClassTable.h"
#include "core/ShapeGroup.h"
#include "text/TextLayout.h"

#include <oravane/PbMiscTextAttr.h>
#include <oravane/PoMiscTextAttrElement.h>

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <cmath>
#include <utility>

SO_KIT_SOURCE(PoAxis)

void PoAxis::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoAxis, PoBaseAxis, "PoBaseAxis");
}

PoAxis::PoAxis(void (*catchAction)(void *, SoAction *)) : PoBaseAxis(catchAction) {
    SO_KIT_CONSTRUCTOR(PoAxis);
    SO_KIT_ADD_CATALOG_ENTRY(transform, SoMatrixTransform, TRUE, alternateRep, , TRUE);
    ORAVANE_SHOWN_PART(body, SoGroup, TRUE);
    ORAVANE_SHOWN_PART(arrow, SoGroup, TRUE);
    ORAVANE_SHOWN_PART(title, SoGroup, TRUE);
    ORAVANE_SHOWN_PART(subGradTick, SoGroup, TRUE);
    ORAVANE_SHOWN_PART(subGradGrid, SoGroup, TRUE);
    ORAVANE_SHOWN_PART(mainGradTick, SoGroup, TRUE);
    ORAVANE_SHOWN_PART(mainGradGrid, SoGroup, TRUE);
    ORAVANE_SHOWN_PART(mainGradText, SoGroup, TRUE);
    addFields();
    addEnumerations();
    SO_KIT_INIT_INSTANCE();
    watchFields({&gradVisibility,  &gradPosition,
                 &gradPath,        &gradFontName,
                 &gradFontSize,    &gradDistAxis,
                 &gradAddString,   &gradAddStringVisibility,
                 &marginType,      &marginStart,
                 &marginEnd,       &titleVisibility,
                 &titlePosition,   &titlePath,
                 &titleFontName,   &titleFontSize,
                 &titleDistAxis,   &titleString,
                 &gridVisibility,  &gridLengthGradSide,
                 &arrowVisibility, &gridLengthGradOtherSide,
                 &arrowHeight,     &arrowLength,
                 &tickVisibility,  &tickPosition,
                 &tickMainLength,  &tickSubLength,
                 &tickSubDef,      &tickNumOrPeriod,
                 &tickFirstGrad,   &tickLastGrad,
                 &reverseFlag});
    generatedParts({&transform, &body, &arrow, &title, &subGradTick, &subGradGrid, &mainGradTick,
                    &mainGradGrid, &mainGradText});
    setLightModel(SoLightModel::BASE_COLOR);
    setUpConnections(TRUE, TRUE);
}

PoAxis::~PoAxis() = default;

void PoAxis::addFields() {
    SO_KIT_ADD_FIELD(gradVisibility, (VISIBILITY_DEPEND));
    SO_KIT_ADD_FIELD(gradPosition, (GRAD_DEPEND));
    SO_KIT_ADD_FIELD(gradPath, (PATH_DEPEND));
    SO_KIT_ADD_FIELD(gradFontName, (""));
    SO_KIT_ADD_FIELD(gradFontSize, (0));
    SO_KIT_ADD_FIELD(gradDistAxis, (0));
    // Neither on nor off until a program sets it: only TRUE itself adds the text.
    SO_KIT_ADD_FIELD(gradAddStringVisibility, (2));
    SO_KIT_ADD_FIELD(gradAddString, (""));
    SO_KIT_ADD_FIELD(marginType, (REL_MARGIN));
    SO_KIT_ADD_FIELD(marginStart, (0));
    SO_KIT_ADD_FIELD(marginEnd, (0));
    SO_KIT_ADD_FIELD(titleVisibility, (VISIBILITY_DEPEND));
    SO_KIT_ADD_FIELD(titlePosition, (TITLE_DEPEND));
    SO_KIT_ADD_FIELD(titlePath, (PATH_DEPEND));
    SO_KIT_ADD_FIELD(titleFontName, (""));
    SO_KIT_ADD_FIELD(titleFontSize, (0));
    SO_KIT_ADD_FIELD(titleDistAxis, (0));
    SO_KIT_ADD_FIELD(titleString, (""));
    SO_KIT_ADD_FIELD(gridVisibility, (VISIBILITY_DEPEND));
    SO_KIT_ADD_FIELD(gridLengthGradSide, (0));
    SO_KIT_ADD_FIELD(gridLengthGradOtherSide, (1));
    SO_KIT_ADD_FIELD(arrowVisibility, (VISIBILITY_DEPEND));
    SO_KIT_ADD_FIELD(arrowHeight, (0));
    SO_KIT_ADD_FIELD(arrowLength, (0));
    SO_KIT_ADD_FIELD(tickVisibility, (VISIBILITY_DEPEND));
    SO_KIT_ADD_FIELD(tickPosition, (TICK_GRAD_SIDE));
    SO_KIT_ADD_FIELD(tickMainLength, (0));
    SO_KIT_ADD_FIELD(tickSubLength, (0));
    SO_KIT_ADD_FIELD(tickSubDef, (PERIOD_MAIN_TICK));
    SO_KIT_ADD_FIELD(tickNumOrPeriod, (1));
    SO_KIT_ADD_FIELD(tickFirstGrad, (1));
    SO_KIT_ADD_FIELD(tickLastGrad, (1));
    SO_KIT_ADD_FIELD(reverseFlag, (AXIS_REVERSE_DEPEND));
}

void PoAxis::addEnumerations() {
    SO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_OFF);
    SO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_ON);
    SO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_DEPEND);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_RIGHT);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_LEFT);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_UP);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_DOWN);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_DEPEND);
    SO_KIT_DEFINE_ENUM_VALUE(GradPosition, GRAD_ABOVE);
    SO_KIT_DEFINE_ENUM_VALUE(GradPosition, GRAD_BELOW);
    SO_KIT_DEFINE_ENUM_VALUE(GradPosition, GRAD_DEPEND);
    SO_KIT_DEFINE_ENUM_VALUE(MarginType, REL_MARGIN);
    SO_KIT_DEFINE_ENUM_VALUE(MarginType, FIXED_MARGIN);
    SO_KIT_DEFINE_ENUM_VALUE(TickPosition, TICK_GRAD_SIDE);
    SO_KIT_DEFINE_ENUM_VALUE(TickPosition, TICK_GRAD_OTHER_SIDE);
    SO_KIT_DEFINE_ENUM_VALUE(TickPosition, TICK_ACROSS_AXIS);
    SO_KIT_DEFINE_ENUM_VALUE(TitlePosition, TITLE_MIDDLE);
    SO_KIT_DEFINE_ENUM_VALUE(TitlePosition, TITLE_END);
    SO_KIT_DEFINE_ENUM_VALUE(TitlePosition, TITLE_DEPEND);
    SO_KIT_DEFINE_ENUM_VALUE(TickSubDef, NUM_SUB_TICK);
    SO_KIT_DEFINE_ENUM_VALUE(TickSubDef, PERIOD_MAIN_TICK);
    SO_KIT_DEFINE_ENUM_VALUE(AxisReverse, AXIS_NO_REVERSE);
    SO_KIT_DEFINE_ENUM_VALUE(AxisReverse, AXIS_REVERSE);
    SO_KIT_DEFINE_ENUM_VALUE(AxisReverse, AXIS_REVERSE_DEPEND);
    SO_KIT_SET_SF_ENUM_TYPE(gradVisibility, Visibility);
    SO_KIT_SET_SF_ENUM_TYPE(titleVisibility, Visibility);
    SO_KIT_SET_SF_ENUM_TYPE(gridVisibility, Visibility);
    SO_KIT_SET_SF_ENUM_TYPE(arrowVisibility, Visibility);
    SO_KIT_SET_SF_ENUM_TYPE(tickVisibility, Visibility);
    SO_KIT_SET_SF_ENUM_TYPE(gradPosition, GradPosition);
    SO_KIT_SET_SF_ENUM_TYPE(gradPath, TextPath);
    SO_KIT_SET_SF_ENUM_TYPE(titlePath, TextPath);
    SO_KIT_SET_SF_ENUM_TYPE(marginType, MarginType);
    SO_KIT_SET_SF_ENUM_TYPE(tickPosition, TickPosition);
    SO_KIT_SET_SF_ENUM_TYPE(titlePosition, TitlePosition);
    SO_KIT_SET_SF_ENUM_TYPE(tickSubDef, TickSubDef);
    SO_KIT_SET_SF_ENUM_TYPE(reverseFlag, AxisReverse);
}

void PoAxis::setMiscTextAttr(PbMiscTextAttr *attributes) {
    m_miscTextAttr.set(attributes);
}

const PbMiscTextAttr *PoAxis::getMiscTextAttr() const {
    return m_miscTextAttr.inForce();
}

void PoAxis::preRebuild() {
    PoBaseAxis::preRebuild();
    m_miscTextAttr.addToCache();
}

void PoAxis::addElementsAllCaches() {
    PoBaseAxis::addElementsAllCaches();
    m_miscTextAttr.readElement();
}

void PoAxis::setDefaultOnNonWritingFields() {
    PoBaseAxis::setDefaultOnNonWritingFields();
    skipGeneratedInFile(mainGradTextApp, "font");
    skipGeneratedInFile(titleApp, "font");
}

// -------------------------------------------------------------------------------------------- the attributes

namespace {

template <class Enum>
Enum valueOf(const PoSFEnum &field) {
    return static_cast<Enum>(field.getValue());
}

float finiteOr0(const SoSFFloat &field) {
    return std::isfinite(field.getValue()) ? field.getValue() : 0;
}

} // namespace

void PoAxis::readFields(AxisAttr &attr) const {
    attr.grad = {valueOf<Visibility>(gradVisibility),
                 valueOf<GradPosition>(gradPosition),
                 valueOf<TextPath>(gradPath),
                 finiteOr0(gradFontSize),
                 gradFontName.getValue(),
                 finiteOr0(gradDistAxis)};
    attr.marginType = valueOf<MarginType>(marginType);
    attr.marginStart = finiteOr0(marginStart);
    attr.marginEnd = finiteOr0(marginEnd);
    attr.title = {valueOf<Visibility>(titleVisibility),
                  valueOf<TitlePosition>(titlePosition),
                  valueOf<TextPath>(titlePath),
                  finiteOr0(titleFontSize),
                  titleFontName.getValue(),
                  finiteOr0(titleDistAxis)};
    attr.gridVisibility = valueOf<Visibility>(gridVisibility);
    attr.gridLengthGradSide = finiteOr0(gridLengthGradSide);
    attr.gridLengthGradOtherSide = finiteOr0(gridLengthGradOtherSide);
    attr.arrowVisibility = valueOf<Visibility>(arrowVisibility);
    attr.arrowHeight = finiteOr0(arrowHeight);
    attr.arrowLength = finiteOr0(arrowLength);
    attr.tickVisibility = valueOf<Visibility>(tickVisibility);
    attr.tickPosition = valueOf<TickPosition>(tickPosition);
    attr.tickMainLength = finiteOr0(tickMainLength);
    attr.tickSubLength = finiteOr0(tickSubLength);
    attr.tickSubDef = valueOf<TickSubDef>(tickSubDef);
    attr.tickNumOrPeriod = tickNumOrPeriod.getValue();
    attr.tickFirstGrad = tickFirstGrad.getValue();
    attr.tickLastGrad = tickLastGrad.getValue();
    attr.reverseFlag = valueOf<AxisReverse>(reverseFlag);
}

void PoAxis::saveAxisAttr() {
    readFields(m_attr);
    const PbMiscTextAttr &text = *getMiscTextAttr();
    m_attr.grad.fontName = oravane::fontNameOf(m_attr.grad.fontName, text);
    m_attr.title.fontName = oravane::fontNameOf(m_attr.title.fontName, text);
    text.getLineLength(m_attr.endLineChar, m_attr.lineLength);
    m_attr.scaleAlong = getDomain()->getDeltaX();
    m_attr.scalePerpendicular = getDomain()->getDeltaY();
    m_attr.limit = {0, 0, 0, 0};
}

void PoAxis::setDefaultAttr(Plane plane) {
    const bool isXY = plane == 0;
    const auto settle = [](auto &value, auto depend, auto settled) {
        if (value == depend)
            value = settled;
    };
    settle(m_attr.grad.visibility, VISIBILITY_DEPEND, VISIBILITY_ON);
    settle(m_attr.grad.position, GRAD_DEPEND, isXY ? GRAD_BELOW : GRAD_ABOVE);
    settle(m_attr.grad.path, PATH_DEPEND, isXY ? PATH_RIGHT : PATH_DOWN);
    settle(m_attr.title.visibility, VISIBILITY_DEPEND, VISIBILITY_OFF);
    settle(m_attr.title.position, TITLE_DEPEND, isXY ? TITLE_MIDDLE : TITLE_END);
    settle(m_attr.title.path, PATH_DEPEND, isXY ? PATH_RIGHT : PATH_DOWN);
    settle(m_attr.arrowVisibility, VISIBILITY_DEPEND, VISIBILITY_ON);
    settle(m_attr.gridVisibility, VISIBILITY_DEPEND, VISIBILITY_OFF);
    settle(m_attr.tickVisibility, VISIBILITY_DEPEND, VISIBILITY_ON);
    settle(m_attr.reverseFlag, AXIS_REVERSE_DEPEND, AXIS_NO_REVERSE);
}

PoAxis::AxisAttr PoAxis::attributes() const {
    if (isBuilt())
        return m_attr;
    AxisAttr attr;
    readFields(attr);
    return attr;
}

void PoAxis::getGrad(Visibility &visibility, GradPosition &position, TextPath &path, SbString &fontName,
                     float &fontSize, float &distAxis, int &addStringVisibility, SbString &addString) const {
    const GradAttr grad = attributes().grad;
    visibility = grad.visibility;
    position = grad.position;
    path = grad.path;
    fontName = grad.fontName;
    fontSize = grad.fontSize;
    distAxis = grad.distAxis;
    addStringVisibility = gradAddStringVisibility.getValue();
    addString = gradAddString.getValue();
}

void PoAxis::getMargin(MarginType &type, float &start, float &end) const {
    const AxisAttr attr = attributes();
    type = attr.marginType;
    start = attr.marginStart;
    end = attr.marginEnd;
}

void PoAxis::getTitle(Visibility &visibility, TitlePosition &position, TextPath &path, SbString &fontName,
                      float &fontSize, float &distAxis, SbString &string) const {
    const TitleAttr attr = attributes().title;
    visibility = attr.visibility;
    position = attr.position;
    path = attr.path;
    fontName = attr.fontName;
    fontSize = attr.fontSize;
    distAxis = attr.distAxis;
    string = titleString.getValue();
}

void PoAxis::getGrid(Visibility &visibility, float &lengthGradSide, float &lengthGradOtherSide) const {
    const AxisAttr attr = attributes();
    visibility = attr.gridVisibility;
    lengthGradSide = attr.gridLengthGradSide;
    lengthGradOtherSide = attr.gridLengthGradOtherSide;
}

void PoAxis::getArrow(Visibility &visibility, float &height, float &length) const {
    const AxisAttr attr = attributes();
    visibility = attr.arrowVisibility;
    height = attr.arrowHeight;
    length = attr.arrowLength;
}

void PoAxis::getTick(Visibility &visibility, TickPosition &position, float &mainLength, float &subLength,
                     TickSubDef &subDef, unsigned short &numOrPeriod, unsigned short &firstGrad,
                     unsigned short &lastGrad) const {
    const AxisAttr attr = attributes();
    visibility = attr.tickVisibility;
    position = attr.tickPosition;
    mainLength = attr.tickMainLength;
    subLength = attr.tickSubLength;
    subDef = attr.tickSubDef;
    numOrPeriod = static_cast<unsigned short>(attr.tickNumOrPeriod);
    firstGrad = static_cast<unsigned short>(attr.tickFirstGrad);
    lastGrad = static_cast<unsigned short>(attr.tickLastGrad);
}

PoAxis::AxisReverse PoAxis::getReverseFlag() const {
    return attributes().reverseFlag;
}

int PoAxis::getMainGradCoords(const float *&coords) const {
    coords = m_mainCoords.empty() ? nullptr : m_mainCoords.data();
    return static_cast<int>(m_mainCoords.size());
}

int PoAxis::getSubGradCoords(const float *&coords) const {
    coords = m_subCoords.empty() ? nullptr : m_subCoords.data();
    return static_cast<int>(m_subCoords.size());
}

// ------------------------------------------------------------------------------------------- the graduations

void PoAxis::computeGradLimit(float start, float end, float &limitStart, float &limitEnd) {
    const float unit = m_attr.marginType == REL_MARGIN ? std::abs(end - start) : 1;
    const float direction = start < end ? 1.0f : -1.0f;
    limitStart = start + direction * unit * m_attr.marginStart;
    limitEnd = end - direction * unit * m_attr.marginEnd;
    if (!(direction * (limitEnd - limitStart) > 0) || !std::isfinite(limitEnd - limitStart))
        limitStart = limitEnd = std::isfinite(limitEnd) ? limitEnd : end;
}

std::vector<std::string> PoAxis::computeGradList(float start, float end, float step,
                                                 std::span<const float> coords,
                                                 std::span<const std::string> labels) {
    const oravane::TickRule rule{m_attr.tickSubDef == PERIOD_MAIN_TICK, m_attr.tickNumOrPeriod,
                                 m_attr.tickFirstGrad, m_attr.tickLastGrad};
    oravane::SplitGraduations split = oravane::splitGraduations(rule, start, end, step, coords);
    m_subCoords = std::move(split.sub);
    m_mainCoords.clear();
    std::vector<std::string> mainLabels;
    for (const std::size_t i : split.main) {
        m_mainCoords.push_back(coords[i]);
        mainLabels.push_back(labels[i]);
    }
    return mainLabels;
}

void PoAxis::computeTickLen(int numGrads, float &mainLength, float &subLength) {
    if (!(m_attr.tickMainLength > 0))
        m_attr.tickMainLength = numGrads < 12 ? 0.025f : numGrads < 25 ? 0.016f : 0.012f;
    if (!(m_attr.tickSubLength > 0))
        m_attr.tickSubLength = m_attr.tickMainLength / 2;
    mainLength = m_attr.tickMainLength;
    subLength = m_attr.tickSubLength;
}

// ---------------------------------------------------------------------------------------- steps of a rebuild

void PoAxis::drawBody(float start, float end, Parts &parts) {
    m_length = std::abs(end - start);
    m_attr.limit = {std::min(start, end), std::max(start, end), 0, 0};
    const SbVec3f ends[] = {{start, 0, 0}, {end, 0, 0}};
    parts.body = oravane::newSegmentGroup(ends);
    parts.arrow = new SoGroup;
    buildArrow(start, end, parts.arrow);
}

void PoAxis::drawTicks(std::span<const float> coords, float length, SoGroup *&ticks, SoGroup *&gridLines) {
    const auto count = static_cast<int>(coords.size());
    ticks = new SoGroup;
    gridLines = new SoGroup;
    buildTick(count, coords.data(), length, ticks);
    buildGridLines(count, coords.data(), gridLines);
}

void PoAxis::drawGraduations(int numGrads, std::span<const std::string> mainLabels, Parts &parts) {
    std::vector<const char *> strings;
    for (const std::string &label : mainLabels)
        strings.push_back(label.c_str());
    float mainLength = 0, subLength = 0;
    computeTickLen(numGrads, mainLength, subLength);
    drawTicks(m_subCoords, subLength, parts.subGradTick, parts.subGradGrid);
    drawTicks(m_mainCoords, mainLength, parts.mainGradTick, parts.mainGradGrid);
    parts.mainGradText = new SoGroup;
    buildGrads(static_cast<int>(m_mainCoords.size()), m_mainCoords.data(), strings.data(),
               parts.mainGradText);
    parts.gradFont = newGradFont();
}

SoNode *PoAxis::newGradFont() const {
    if (m_attr.grad.visibility != VISIBILITY_ON)
        return nullptr;
    return oravane::newFont(m_attr.grad.fontName, lengthOf(m_attr.grad.fontSize));
}

void PoAxis::drawTitle(float start, float end, Parts &parts) {
    parts.title = new SoGroup;
    buildTitle(start, end, parts.title);
    if (m_attr.title.visibility == VISIBILITY_ON)
        parts.titleFont = oravane::newFont(m_attr.title.fontName, lengthOf(m_attr.title.fontSize));
}

// By now all is made: what setting a part calls in the program may change the axis and its objects.
void PoAxis::setParts(const Parts &parts) {
    const std::pair<const char *, SoNode *> made[] = {
        {"transform", parts.transform},
        {"body", parts.body},
        {"arrow", parts.arrow},
        {"subGradTick", parts.subGradTick},
        {"subGradGrid", parts.subGradGrid},
        {"mainGradTick", parts.mainGradTick},
        {"mainGradGrid", parts.mainGradGrid},
        {"mainGradText", parts.mainGradText},
        {"title", parts.title},
        {"mainGradTextApp.font", parts.gradFont},
        {"titleApp.font", parts.titleFont},
    };
    for (const auto &[name, node] : made)
        if (node)
            setPart(name, node);
}
