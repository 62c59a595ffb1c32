#include <oravane/PoParallelogram3.h>

#include "core/ClassTable.h"
#include "core/ShapeGroup.h"

#include <Inventor/nodes/SoGroup.h>

SO_KIT_SOURCE(PoParallelogram3)

void PoParallelogram3::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoParallelogram3, PoKestrava, "PoKestrava");
}

PoParallelogram3::PoParallelogram3() {
    SO_KIT_CONSTRUCTOR(PoParallelogram3);
    SO_KIT_ADD_CATALOG_ENTRY(parallelogram3, SoGroup, TRUE, alternateRep, , TRUE);
    SO_KIT_ADD_FIELD(p, (0, 0, 0));
    SO_KIT_ADD_FIELD(q, (1, 0, 0));
    SO_KIT_ADD_FIELD(r, (1, 1, 0));
    SO_KIT_INIT_INSTANCE();
    watchFields({&p, &q, &r});
    generatedParts({&parallelogram3});
    setLightModel(SoLightModel::BASE_COLOR);
    setUpConnections(TRUE, TRUE);
    setDomainUsedForRebuild(0);
}

void PoParallelogram3::rebuild() {
    preRebuild();
    const SbVec3f a = p.getValue(), b = q.getValue(), c = r.getValue();
    const SbVec3f corners[] = {a, b, c, c + a - b};
    setPart("parallelogram3", oravane::newFaceGroup(corners));
    postRebuild();
}
