#include <oravane/PoParallelogram.h>

#include "core/ClassTable.h"
#include "core/ShapeGroup.h"

#include <Inventor/nodes/SoGroup.h>

SO_KIT_SOURCE(PoParallelogram)

void PoParallelogram::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoParallelogram, PoKestrava, "PoKestrava");
}

PoParallelogram::PoParallelogram() {
    SO_KIT_CONSTRUCTOR(PoParallelogram);
    SO_KIT_ADD_CATALOG_ENTRY(parallelogram, SoGroup, TRUE, alternateRep, , TRUE);
    SO_KIT_ADD_FIELD(p, (0, 0));
    SO_KIT_ADD_FIELD(q, (1, 0));
    SO_KIT_ADD_FIELD(r, (1, 1));
    SO_KIT_INIT_INSTANCE();
    watchFields({&p, &q, &r});
    generatedParts({&parallelogram});
    setLightModel(SoLightModel::BASE_COLOR);
    setUpConnections(TRUE, TRUE);
    setDomainUsedForRebuild(0);
}

void PoParallelogram::rebuild() {
    preRebuild();
    const auto inPlane = [](const SbVec2f &v) { return SbVec3f(v[0], v[1], 0); };
    const SbVec2f a = p.getValue(), b = q.getValue(), c = r.getValue();
    const SbVec3f corners[] = {inPlane(a), inPlane(b), inPlane(c), inPlane(c + a - b)};
    setPart("parallelogram", oravane::newFaceGroup(corners));
    postRebuild();
}
