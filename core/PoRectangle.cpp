#include <oravane/PoRectangle.h>

#include "core/ClassTable.h"
#include "core/ShapeGroup.h"

#include <Inventor/nodes/SoGroup.h>

SO_KIT_SOURCE(PoRectangle)

void PoRectangle::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoRectangle, PoKestrava, "PoKestrava");
}

PoRectangle::PoRectangle() {
    SO_KIT_CONSTRUCTOR(PoRectangle);
    SO_KIT_ADD_CATALOG_ENTRY(rectangle, SoGroup, TRUE, alternateRep, , TRUE);
    SO_KIT_ADD_FIELD(p, (0, 0));
    SO_KIT_ADD_FIELD(q, (1, 1));
    SO_KIT_INIT_INSTANCE();
    watchFields({&p, &q});
    generatedParts({&rectangle});
    setLightModel(SoLightModel::BASE_COLOR);
    setUpConnections(TRUE, TRUE);
    setDomainUsedForRebuild(0);
}

void PoRectangle::rebuild() {
    preRebuild();
    const SbVec2f a = p.getValue(), c = q.getValue();
    const SbVec3f corners[] = {{a[0], a[1], 0}, {c[0], a[1], 0}, {c[0], c[1], 0}, {a[0], c[1], 0}};
    setPart("rectangle", oravane::newFaceGroup(corners));
    postRebuild();
}
