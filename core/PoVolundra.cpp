#include <oravane/PoVolundra.h>

#include "core/ClassTable.h"

SO_KIT_SOURCE(PoVolundra)

void PoVolundra::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoVolundra, PoBase, "PoBase");
}

void PoVolundra::initClasses() {
    oravane::initialize(oravane::dataKitClasses());
}

PoVolundra::PoVolundra() : PoBase(nullptr) {
    SO_KIT_CONSTRUCTOR(PoVolundra);
    SO_KIT_INIT_INSTANCE();
}
