#include <oravane/PoTimeAxis.h>

#include "axes/AxisPlacement.h"
#include "axes/DateGraduations.h"
#include "core/ClassTable.h"

#include <oravane/PbDateFormatMapping.h>
#include <oravane/PoCartesianAxis.h>
#include <oravane/PoDateFormatMappingElement.h>

#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMatrixTransform.h>

#include <cmath>
#include <utility>

SO_KIT_SOURCE(PoTimeAxis)

using oravane::DateGraduations;

void PoTimeAxis::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoTimeAxis, PoAxis, "PoAxis");
}

PoTimeAxis::PoTimeAxis() {
    SO_KIT_CONSTRUCTOR(PoTimeAxis);
    SO_KIT_ADD_FIELD(startDate, ("1-01-70"));
    SO_KIT_ADD_FIELD(endDate, ("2-01-70"));
    SO_KIT_ADD_FIELD(coord, (0));
    SO_KIT_ADD_FIELD(type, (X));
    SO_KIT_ADD_FIELD(language, (ENGLISH));
    SO_KIT_ADD_FIELD(gradFit, (GRAD_UNFIT));
    SO_KIT_ADD_FIELD(gradRep, (""));
    SO_KIT_ADD_FIELD(timesPeriod, (""));
    SO_KIT_DEFINE_ENUM_VALUE(Type, X);
    SO_KIT_DEFINE_ENUM_VALUE(Type, Y);
    SO_KIT_SET_SF_ENUM_TYPE(type, Type);
    SO_KIT_DEFINE_ENUM_VALUE(Language, ENGLISH);
    SO_KIT_DEFINE_ENUM_VALUE(Language, FRANCAIS);
    SO_KIT_DEFINE_ENUM_VALUE(Language, DEUTSCH);
    SO_KIT_DEFINE_ENUM_VALUE(Language, ESPANOL);
    SO_KIT_SET_SF_ENUM_TYPE(language, Language);
    SO_KIT_DEFINE_ENUM_VALUE(GradFit, GRAD_FIT);
    SO_KIT_DEFINE_ENUM_VALUE(GradFit, GRAD_UNFIT);
    SO_KIT_SET_SF_ENUM_TYPE(gradFit, GradFit);
    SO_KIT_INIT_INSTANCE();
    watchFields({&startDate, &endDate, &coord, &type, &language, &gradFit, &gradRep, &timesPeriod});
    setUpConnections(TRUE, TRUE);
}

PoTimeAxis::~PoTimeAxis() = default;

void PoTimeAxis::setDateFormatMapping(PbDateFormatMapping *mapping) {
    m_dateMapping.set(mapping);
}

const PbDateFormatMapping *PoTimeAxis::getDateFormatMapping() const {
    return m_dateMapping.inForce();
}

void PoTimeAxis::preRebuild() {
    PoAxis::preRebuild();
    m_dateMapping.addToCache();
}

void PoTimeAxis::addElementsAllCaches() {
    PoAxis::addElementsAllCaches();
    m_dateMapping.readElement();
}

void PoTimeAxis::rebuild() {
    preRebuild();
    Parts parts;
    saveAxisAttr();
    m_mainCoords.clear();
    const char *const format = getDateFormatMapping()->getFormat().getString();
    PiDate from, to;
    if (from.setDateString(startDate.getValue().getString(), format) == 0 &&
        to.setDateString(endDate.getValue().getString(), format) == 0 && placeAxis(parts))
        drawDates(from, to, parts);
    setParts(parts);
    postRebuild();
}

/// Settles what depends on the direction. False when there is no place for the axis.
bool PoTimeAxis::placeAxis(Parts &parts) {
    const bool isAlongY = type.getValue() == Y;
    const int plane = isAlongY ? PoCartesianAxis::YX : PoCartesianAxis::XY;
    setDefaultAttr(plane);
    if (!std::isfinite(coord.getValue()))
        return false;
    const SbVec3f origin = isAlongY ? SbVec3f(coord.getValue(), 0, 0) : SbVec3f(0, coord.getValue(), 0);
    const oravane::AxisPlacement place = oravane::axisPlacement(plane, origin, *getDomain());
    m_attr.scaleAlong = place.scaleAlong;
    // Of an axis along y that of z, whatever its plane: the required form.
    m_attr.scalePerpendicular = isAlongY ? getDomain()->getDeltaZ() : place.scalePerpendicular;
    auto *transformNode = new SoMatrixTransform;
    transformNode->matrix = place.matrix;
    parts.transform = transformNode;
    return true;
}

void PoTimeAxis::drawDates(const PiDate &from, const PiDate &to, Parts &parts) {
    const float a = getDateFormatMapping()->getCoordinateP(from),
                b = getDateFormatMapping()->getCoordinateP(to);
    if (a == b || !std::isfinite(b - a))
        return;
    const std::vector<DateGraduations> levels = levelsBetween(from, to, a, b);
    if (!levels.empty())
        m_mainCoords = levels.front().coords;
    drawBody(a, b, parts);
    float mainLength = 0, subLength = 0;
    computeTickLen(static_cast<int>(m_mainCoords.size()), mainLength, subLength);
    drawTicks(m_mainCoords, mainLength, parts.mainGradTick, parts.mainGradGrid);
    parts.mainGradText = new SoGroup;
    buildDateGrads(levels, parts.mainGradText);
    parts.gradFont = newGradFont();
    drawTitle(a, b, parts);
}

/// Of an axis from one date, at `a`, to another one, at `b`. The dates of the limits come from these, so that
/// they are exact where there are no margins.
std::vector<DateGraduations> PoTimeAxis::levelsBetween(const PiDate &from, const PiDate &to, float a,
                                                       float b) {
    const PbDateFormatMapping &mapping = *getDateFormatMapping();
    float limitStart = 0, limitEnd = 0;
    computeGradLimit(a, b, limitStart, limitEnd);
    if (limitStart == limitEnd)
        return {};
    const auto dateAt = [&](float coordinate) {
        const double part = (static_cast<double>(coordinate) - a) / (static_cast<double>(b) - a);
        return oravane::dateBetween(from, to, part, mapping);
    };
    oravane::DateAxis axis{dateAt(limitStart), dateAt(limitEnd), gradFit.getValue() == GRAD_FIT,
                           static_cast<PiDate::Language>(language.getValue())};
    if (axis.end < axis.start)
        std::swap(axis.start, axis.end);
    std::vector<std::string> texts;
    texts.reserve(static_cast<std::size_t>(gradRep.getNum()));
    for (int k = 0; k < gradRep.getNum(); ++k)
        texts.emplace_back(gradRep[k].getString());
    const oravane::DateRepresentations representations(texts, timesPeriod.getValue().getString(),
                                                       m_attr.endLineChar);
    std::vector<DateGraduations> levels;
    for (const oravane::DateLevel &level :
         representations.getDateAxisRep(axis.start, axis.end, axis.language))
        levels.push_back(oravane::getGradList(axis, level, mapping));
    return levels;
}

void PoTimeAxis::buildDateGrads(std::span<const DateGraduations> levels, SoGroup *group) {
    bool isEmpty = true;
    for (const DateGraduations &level : levels) {
        if (m_attr.grad.visibility != VISIBILITY_ON || level.labels.empty())
            continue;
        std::vector<const char *> strings;
        for (const std::string &label : level.labels)
            strings.push_back(label.c_str());
        buildGradRow(m_attr.grad.path, &level == &levels.front(), static_cast<int>(strings.size()),
                     level.coords.data(), strings.data(), group);
        isEmpty = false;
    }
    if (isEmpty)
        m_attr.grad.fontSize = 0;
}
