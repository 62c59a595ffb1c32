#include <oravane/PoCurve.h>

#include "core/ClassTable.h"
#include "core/ShapeGroup.h"
#include "curves/CurveFilling.h"
#include "curves/MarkerParts.h"
#include "curves/PointFilter.h"

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoVertexProperty.h>

#include <cmath>

SO_KIT_SOURCE(PoCurve)

using oravane::CurveShape;
using oravane::PointFilter;
using oravane::PointRuns;

static_assert(static_cast<int>(CurveShape::Stairs2Y) == PoCurve::CURVE_STAIRS_2Y);
static_assert(static_cast<int>(PointFilter::XList) == PoCurve::X_LIST);

void PoCurve::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoCurve, PoKestrava, "PoKestrava");
}

PoCurve::PoCurve() : m_markers(std::make_unique<oravane::MarkerParts>(*this)) {
    SO_KIT_CONSTRUCTOR(PoCurve);
    ORAVANE_SHOWN_PART(curveFilling, SoGroup, TRUE);
    ORAVANE_SHOWN_PART(curvePoint, SoGroup, TRUE);
    ORAVANE_SHOWN_PART(raisePoint, SoGroup, TRUE);
    ORAVANE_SHOWN_PART(marker, SoGroup, TRUE);
    SO_KIT_ADD_FIELD(point, (SbVec2f(0, 0)));
    SO_KIT_ADD_FIELD(curveRep, (CURVE_POLYLINE));
    SO_KIT_ADD_FIELD(isCurveFilled, (FALSE));
    SO_KIT_ADD_FIELD(fillingThreshold, (0));
    SO_KIT_ADD_FIELD(markerFilterType, (INACTIVE));
    SO_KIT_ADD_FIELD(markerIndexPeriod, (0));
    SO_KIT_ADD_FIELD(markerIndexList, (0));
    SO_KIT_ADD_FIELD(markerXPeriod, (0));
    SO_KIT_ADD_FIELD(markerXList, (0));
    SO_KIT_ADD_FIELD(markerString, ("."));
    SO_KIT_ADD_FIELD(raiseFilterType, (INACTIVE));
    SO_KIT_ADD_FIELD(raiseIndexPeriod, (0));
    SO_KIT_ADD_FIELD(raiseIndexList, (0));
    SO_KIT_ADD_FIELD(raiseXPeriod, (0));
    SO_KIT_ADD_FIELD(raiseXList, (0));
    SO_KIT_ADD_FIELD(raiseThreshold, (0));
    SO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_NONE);
    SO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_POLYLINE);
    SO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_SMOOTH);
    SO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_STAIRS_X);
    SO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_STAIRS_Y);
    SO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_HISTO_X);
    SO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_HISTO_Y);
    SO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_STAIRS_2X);
    SO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_STAIRS_2Y);
    SO_KIT_SET_SF_ENUM_TYPE(curveRep, CurveRep);
    SO_KIT_DEFINE_ENUM_VALUE(FilterType, INACTIVE);
    SO_KIT_DEFINE_ENUM_VALUE(FilterType, ALL_POINTS);
    SO_KIT_DEFINE_ENUM_VALUE(FilterType, INDEX_PERIOD);
    SO_KIT_DEFINE_ENUM_VALUE(FilterType, INDEX_LIST);
    SO_KIT_DEFINE_ENUM_VALUE(FilterType, X_PERIOD);
    SO_KIT_DEFINE_ENUM_VALUE(FilterType, X_LIST);
    SO_KIT_SET_SF_ENUM_TYPE(markerFilterType, FilterType);
    SO_KIT_SET_SF_ENUM_TYPE(raiseFilterType, FilterType);
    SO_KIT_INIT_INSTANCE();
    watchFields({&point, &curveRep, &isCurveFilled, &fillingThreshold, &markerFilterType, &markerIndexPeriod,
                 &markerIndexList, &markerXPeriod, &markerXList, &markerString, &raiseFilterType,
                 &raiseIndexPeriod, &raiseIndexList, &raiseXPeriod, &raiseXList, &raiseThreshold});
    generatedParts({&curveFilling, &curvePoint, &raisePoint, &marker});
    setLightModel(SoLightModel::BASE_COLOR);
    setUpConnections(TRUE, TRUE);
    setDomainUsedForRebuild(0);
}

PoCurve::~PoCurve() = default;

void PoCurve::setDefaultOnNonWritingFields() {
    PoKestrava::setDefaultOnNonWritingFields();
    if (getNodeWriteFormat() != WRITE_FIELDS)
        return;
    for (SoField *field : m_markers->madeFields())
        skipInFile(field);
}

void PoCurve::copyContents(const SoFieldContainer *from, SbBool copyConnections) {
    PoKestrava::copyContents(from, copyConnections);
    m_markers->copyFrom(*static_cast<const PoCurve *>(from)->m_markers);
}

/// What a rebuild makes; null for what is not needed.
struct PoCurve::Parts {
    SoNode *curveFilling = nullptr;
    SoNode *curvePoint = nullptr;
    SoNode *raisePoint = nullptr;
    oravane::MarkerParts::Made markers;
};

void PoCurve::rebuild() {
    preRebuild();
    Parts parts;
    const std::span<const SbVec2f> points(point.getValues(0), static_cast<std::size_t>(point.getNum()));
    const PointRuns curve = oravane::curveThrough(static_cast<CurveShape>(curveRep.getValue()), points);
    if (!curve.points.empty()) {
        drawCurve(curve, parts);
        if (const auto places = oravane::placesOf(raiseFilter(), points, curve))
            parts.raisePoint = drawRaisePoints(*places);
        if (const auto places = oravane::placesOf(markerFilter(), points, curve))
            drawMarkers(*places, parts);
    }
    setDomainUsedForRebuild(parts.markers.dependsOnDomain);
    if (parts.markers.dependsOnDomain && !isStateValid())
        rebuildAtNextTraversal(); // which may have another domain
    // All are made before the first is set, which tells the scene: a sensor of the program may then change
    // the points.
    setPart("curveFilling", parts.curveFilling);
    setPart("curvePoint", parts.curvePoint);
    setPart("raisePoint", parts.raisePoint);
    m_markers->set(parts.markers);
    postRebuild();
}

void PoCurve::drawCurve(const PointRuns &curve, Parts &parts) const {
    const float threshold = fillingThreshold.getValue();
    const bool isFilled = isCurveFilled.getValue() && curve.points.size() > 1 && std::isfinite(threshold);
    const PointRuns closed = isFilled ? oravane::closedAtThreshold(curve, threshold) : PointRuns();
    const PointRuns &line = isFilled ? closed : curve;
    if (curveRep.getValue() != CURVE_NONE)
        parts.curvePoint = oravane::newShapeGroup<SoLineSet>(line.points, line.counts);
    if (!isFilled)
        return;
    const PointRuns polygons = oravane::fillingPolygons(closed, threshold);
    auto *hints = new SoShapeHints;
    hints->faceType = SoShapeHints::UNKNOWN_FACE_TYPE; // they may be concave
    SoGroup *filling = oravane::newShapeGroup<SoFaceSet>(polygons.points, polygons.counts);
    filling->insertChild(hints, 0);
    // Told, since the toolkit's search for normals slows down with the number of points.
    auto *normals = new SoVertexProperty;
    normals->normal = SbVec3f(0, 0, 1);
    normals->normalBinding = SoVertexProperty::OVERALL;
    static_cast<SoFaceSet *>(filling->getChild(2))->vertexProperty = normals;
    parts.curveFilling = filling;
}

SoGroup *PoCurve::drawRaisePoints(std::span<const SbVec2f> places) const {
    const float threshold = raiseThreshold.getValue();
    if (!std::isfinite(threshold))
        return nullptr;
    std::vector<SbVec3f> ends;
    ends.reserve(2 * places.size());
    for (const SbVec2f &place : places) {
        ends.emplace_back(place[0], threshold, 0.0f);
        ends.emplace_back(place[0], place[1], 0.0f);
    }
    return oravane::newSegmentGroup(ends);
}

void PoCurve::drawMarkers(std::span<const SbVec2f> places, Parts &parts) const {
    parts.markers =
        m_markers->make(markerString.getValue(), places, *getDomain(), isDomainTransformEnabled());
}

namespace {

PointFilter newFilter(const SoSFEnum &type, const SoSFInt32 &indexPeriod, const SoMFInt32 &indexList,
                      const SoSFFloat &xPeriod, const SoMFFloat &xList) {
    PointFilter filter;
    filter.type = type.getValue();
    filter.indexPeriod = indexPeriod.getValue();
    filter.indexList = {indexList.getValues(0), static_cast<std::size_t>(indexList.getNum())};
    filter.xPeriod = xPeriod.getValue();
    filter.xList = {xList.getValues(0), static_cast<std::size_t>(xList.getNum())};
    return filter;
}

} // namespace

PointFilter PoCurve::markerFilter() const {
    return newFilter(markerFilterType, markerIndexPeriod, markerIndexList, markerXPeriod, markerXList);
}

PointFilter PoCurve::raiseFilter() const {
    return newFilter(raiseFilterType, raiseIndexPeriod, raiseIndexList, raiseXPeriod, raiseXList);
}
