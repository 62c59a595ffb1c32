#include <oravane/PoCurve3.h>

#include "core/ClassTable.h"
#include "core/ShapeGroup.h"
#include "curves/CurveShape.h"
#include "curves/MarkerParts.h"

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoSeparator.h>

SO_KIT_SOURCE(PoCurve3)

using oravane::CurveShape;

static_assert(static_cast<int>(CurveShape::Smooth) == PoCurve3::CURVE_SMOOTH);

void PoCurve3::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoCurve3, PoKestrava, "PoKestrava");
}

PoCurve3::PoCurve3() : m_markers(std::make_unique<oravane::MarkerParts>(*this)) {
    SO_KIT_CONSTRUCTOR(PoCurve3);
    ORAVANE_SHOWN_PART(curvePoint, SoGroup, TRUE);
    ORAVANE_SHOWN_PART(marker, SoGroup, TRUE);
    SO_KIT_ADD_FIELD(point, (SbVec3f(0, 0, 0)));
    SO_KIT_ADD_FIELD(curveRep, (CURVE_POLYLINE));
    SO_KIT_ADD_FIELD(isMarkerVisible, (FALSE));
    SO_KIT_ADD_FIELD(markerString, ("."));
    SO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_NONE);
    SO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_POLYLINE);
    SO_KIT_DEFINE_ENUM_VALUE(CurveRep, CURVE_SMOOTH);
    SO_KIT_SET_SF_ENUM_TYPE(curveRep, CurveRep);
    SO_KIT_INIT_INSTANCE();
    watchFields({&point, &curveRep, &isMarkerVisible, &markerString});
    generatedParts({&curvePoint, &marker});
    setLightModel(SoLightModel::BASE_COLOR);
    setUpConnections(TRUE, TRUE);
    setDomainUsedForRebuild(0);
}

PoCurve3::~PoCurve3() = default;

void PoCurve3::setDefaultOnNonWritingFields() {
    PoKestrava::setDefaultOnNonWritingFields();
    if (getNodeWriteFormat() != WRITE_FIELDS)
        return;
    for (SoField *field : m_markers->madeFields())
        skipInFile(field);
}

void PoCurve3::copyContents(const SoFieldContainer *from, SbBool copyConnections) {
    PoKestrava::copyContents(from, copyConnections);
    m_markers->copyFrom(*static_cast<const PoCurve3 *>(from)->m_markers);
}

void PoCurve3::rebuild() {
    preRebuild();
    const std::span<const SbVec3f> points(point.getValues(0), static_cast<std::size_t>(point.getNum()));
    const oravane::PointRuns curve =
        oravane::curveThrough(static_cast<CurveShape>(curveRep.getValue()), points);
    SoGroup *line = nullptr;
    if (!curve.points.empty() && curveRep.getValue() != CURVE_NONE)
        line = oravane::newShapeGroup<SoLineSet>(curve.points, curve.counts);
    oravane::MarkerParts::Made markers;
    if (!curve.points.empty() && isMarkerVisible.getValue()) {
        std::vector<SbVec2f> places;
        places.reserve(points.size());
        for (const SbVec3f &p : points)
            if (oravane::hasPosition(p))
                places.emplace_back(p[0], p[1]);
        markers = m_markers->make(markerString.getValue(), places, *getDomain(), isDomainTransformEnabled());
    }
    setDomainUsedForRebuild(markers.dependsOnDomain);
    if (markers.dependsOnDomain && !isStateValid())
        rebuildAtNextTraversal(); // which may have another domain
    // Both are made before the first is set, which tells the scene.
    setPart("curvePoint", line);
    m_markers->set(markers);
    postRebuild();
}
