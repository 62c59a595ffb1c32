#include <oravane/PoKestrava.h>

#include "core/ClassTable.h"

SO_KIT_SOURCE(PoKestrava)

void PoKestrava::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoKestrava, PoBase, "PoBase");
}

void PoKestrava::initClasses() {
    oravane::initialize(oravane::graphicsKitClasses());
}

PoKestrava::PoKestrava(void (*catchAction)(void *, SoAction *)) : PoBase(catchAction) {
    SO_KIT_CONSTRUCTOR(PoKestrava);
    SO_KIT_INIT_INSTANCE();
}
