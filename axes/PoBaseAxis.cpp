#include <oravane/PoBaseAxis.h>

#include "core/ClassTable.h"

SO_KIT_SOURCE(PoBaseAxis)

void PoBaseAxis::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoBaseAxis, PoKestrava, "PoKestrava");
}

PoBaseAxis::PoBaseAxis(void (*catchAction)(void *, SoAction *)) : PoKestrava(catchAction) {
    SO_KIT_CONSTRUCTOR(PoBaseAxis);
    SO_KIT_INIT_INSTANCE();
}
