#include <oravane/PoPieChart3D.h>

#include "core/ClassTable.h"

SO_KIT_SOURCE(PoPieChart3D)

void PoPieChart3D::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoPieChart3D, PoPieChart, "PoPieChart");
}

PoPieChart3D::PoPieChart3D() : PoPieChart(TRUE) {
    init();
}

PoPieChart3D::PoPieChart3D(const SbVec3f &at, float farHeight, float radiusOfDisc, short num,
                           const char **texts, const float *values, int numColors, const SbColor *colors)
    : PoPieChart(TRUE, radiusOfDisc, num, texts, values, numColors, colors) {
    init();
    if (at != center.getValue())
        center = at;
    if (farHeight != zCenter2.getValue())
        zCenter2 = farHeight;
}

void PoPieChart3D::init() {
    SO_KIT_CONSTRUCTOR(PoPieChart3D);
    SO_KIT_ADD_FIELD(center, (0, 0, 0));
    SO_KIT_ADD_FIELD(zCenter2, (1));
    SO_KIT_INIT_INSTANCE();
    watchFields({&center, &zCenter2});
    setUpConnections(TRUE, TRUE);
}

void PoPieChart3D::rebuild() {
    preRebuild();
    rebuildPie(center.getValue(), zCenter2.getValue());
    postRebuild();
}
