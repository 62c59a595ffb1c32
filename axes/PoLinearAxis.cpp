#include <oravane/PoLinearAxis.h>

#include "axes/AxisLabels.h"
#include "axes/LinearGraduations.h"
#include "core/ClassTable.h"

#include <oravane/PbNumericDisplayFormat.h>
#include <oravane/PiNumericFormat.h>
#include <oravane/PoNumericDisplayFormatElement.h>

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoSeparator.h>

#include <cmath>

SO_KIT_SOURCE(PoLinearAxis)

void PoLinearAxis::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoLinearAxis, PoCartesianAxis, "PoCartesianAxis");
}

PoLinearAxis::PoLinearAxis() {
    SO_KIT_CONSTRUCTOR(PoLinearAxis);
    ORAVANE_SHOWN_PART(multFactor, SoGroup, TRUE);
    SO_KIT_ADD_FIELD(step, (0));
    SO_KIT_ADD_FIELD(gradFit, (GRAD_UNFIT));
    SO_KIT_ADD_FIELD(multFactorPosition, (MULT_FACTOR_END));
    SO_KIT_ADD_FIELD(multFactorDistAxis, (0));
    SO_KIT_DEFINE_ENUM_VALUE(GradFit, GRAD_FIT);
    SO_KIT_DEFINE_ENUM_VALUE(GradFit, GRAD_UNFIT);
    SO_KIT_SET_SF_ENUM_TYPE(gradFit, GradFit);
    SO_KIT_DEFINE_ENUM_VALUE(MultFactorPosition, MULT_FACTOR_START);
    SO_KIT_DEFINE_ENUM_VALUE(MultFactorPosition, MULT_FACTOR_END);
    SO_KIT_DEFINE_ENUM_VALUE(MultFactorPosition, MULT_FACTOR_EXTR);
    SO_KIT_DEFINE_ENUM_VALUE(MultFactorPosition, MULT_FACTOR_GRAD);
    SO_KIT_SET_SF_ENUM_TYPE(multFactorPosition, MultFactorPosition);
    SO_KIT_INIT_INSTANCE();
    watchFields({&step, &gradFit, &multFactorPosition, &multFactorDistAxis});
    generatedParts({&multFactor});
    setUpConnections(TRUE, TRUE);
}

PoLinearAxis::~PoLinearAxis() = default;

void PoLinearAxis::setFormat(PbNumericDisplayFormat *format) {
    m_format.set(format);
}

const PbNumericDisplayFormat *PoLinearAxis::getFormat() const {
    return m_format.inForce();
}

float PoLinearAxis::getStep() const {
    return isBuilt() ? m_linAttr.step : step.getValue();
}

void PoLinearAxis::getMultFactor(MultFactorPosition &position, float &distAxis) const {
    position = static_cast<MultFactorPosition>(multFactorPosition.getValue());
    distAxis = multFactorDistAxis.getValue();
    if (isBuilt()) {
        position = m_linAttr.multFactorPosition;
        distAxis = m_linAttr.multFactorDistAxis;
    }
}

void PoLinearAxis::preRebuild() {
    PoCartesianAxis::preRebuild();
    m_format.addToCache();
}

void PoLinearAxis::addElementsAllCaches() {
    PoCartesianAxis::addElementsAllCaches();
    m_format.readElement();
}

void PoLinearAxis::setDefaultOnNonWritingFields() {
    PoCartesianAxis::setDefaultOnNonWritingFields();
    skipGeneratedInFile(multFactorApp, "font");
}

// ------------------------------------------------------------------------------------------- the graduations

void PoLinearAxis::getLinGradStep(float range, float &step) {
    step = oravane::linearStep(range, step);
}

void PoLinearAxis::getLinGradFirstGrad(GradFit gradFit, float start, float end, float step, float &first,
                                       int &numGrads) {
    const oravane::LinearGraduations grads =
        oravane::linearGraduations(gradFit == GRAD_FIT, start, end, step);
    first = grads.first;
    numGrads = grads.count;
}

void PoLinearAxis::getLinGrads(GradFit gradFit, float start, float end, float &step, float &first,
                               int &numGrads) {
    getLinGradStep(end - start, step);
    getLinGradFirstGrad(gradFit, start, end, step, first, numGrads);
}

/// Of graduations at `coords`.
std::vector<std::string> PoLinearAxis::newLabels(std::span<const float> coords, int &tenPower) const {
    std::vector<std::string> labels;
    tenPower = 0;
    if (coords.empty())
        return labels;
    const float beyond = static_cast<float>(coords.size()) * m_linAttr.step + m_linAttr.firstGrad;
    PiNumericFormat format;
    format.setFormat(getFormat(), m_linAttr.firstGrad, beyond, m_linAttr.step, 0);
    tenPower = format.getTenPower();
    std::string suffix;
    if (tenPower != 0 && m_linAttr.multFactorPosition == MULT_FACTOR_GRAD)
        suffix.append("E").append(std::to_string(tenPower));
    if (gradAddStringVisibility.getValue() == TRUE)
        suffix += gradAddString.getValue().getString();
    labels.reserve(coords.size());
    for (const float value : coords) {
        char number[PiNumericFormat::STRING_SIZE];
        format.getString(value, number);
        labels.push_back(oravane::limitedLabel(number + suffix));
    }
    return labels;
}

void PoLinearAxis::rebuild() {
    preRebuild();
    Parts parts;
    SoGroup *factor = nullptr;
    float from = 0, to = 0;
    m_linAttr = {static_cast<MultFactorPosition>(multFactorPosition.getValue()),
                 std::isfinite(multFactorDistAxis.getValue()) ? multFactorDistAxis.getValue() : 0, 0,
                 step.getValue()};
    if (startRebuild(parts, from, to)) {
        float limitStart = 0, limitEnd = 0;
        computeGradLimit(from, to, limitStart, limitEnd);
        int numGrads = 0, tenPower = 0;
        getLinGrads(static_cast<GradFit>(gradFit.getValue()), limitStart, limitEnd, m_linAttr.step,
                    m_linAttr.firstGrad, numGrads);
        // By multiplication, so that errors do not add up.
        std::vector<float> coords(static_cast<std::size_t>(numGrads));
        for (int i = 0; i < numGrads; ++i)
            coords[static_cast<std::size_t>(i)] =
                static_cast<float>(i) * m_linAttr.step + m_linAttr.firstGrad;
        const std::vector<std::string> labels = newLabels(coords, tenPower);
        const std::vector<std::string> mainLabels =
            computeGradList(limitStart, limitEnd, m_linAttr.step, coords, labels);
        drawBody(from, to, parts);
        drawGraduations(numGrads, mainLabels, parts);
        factor = newMultFactor(tenPower, from, to);
        drawTitle(from, to, parts);
    }
    // The font of both; a program may take it out of the first as it gets there.
    if (parts.gradFont)
        parts.gradFont->ref();
    setParts(parts);
    if (factor)
        setPart("multFactor", factor);
    if (parts.gradFont) {
        setPart("multFactorApp.font", parts.gradFont);
        parts.gradFont->unref();
    }
    postRebuild();
}

SoGroup *PoLinearAxis::newMultFactor(int tenPower, float from, float to) {
    auto *group = new SoGroup;
    const MultFactorPosition position = m_linAttr.multFactorPosition;
    if (tenPower == 0 || m_attr.grad.fontSize == 0 || m_attr.grad.visibility != VISIBILITY_ON)
        return group;
    if (position == MULT_FACTOR_END || position == MULT_FACTOR_EXTR)
        buildMultFactorAtExtr(tenPower, from, to, m_linAttr.multFactorDistAxis, group);
    if (position == MULT_FACTOR_START || position == MULT_FACTOR_EXTR)
        buildMultFactorAtExtr(tenPower, to, from, m_linAttr.multFactorDistAxis, group);
    return group;
}
