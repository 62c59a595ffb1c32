#include <oravane/PoPieChart2D.h>

#include "core/ClassTable.h"

SO_KIT_SOURCE(PoPieChart2D)

void PoPieChart2D::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoPieChart2D, PoPieChart, "PoPieChart");
}

PoPieChart2D::PoPieChart2D() {
    init();
}

PoPieChart2D::PoPieChart2D(const SbVec2f &at, float radiusOfDisc, short num, const char **texts,
                           const float *values, int numColors, const SbColor *colors)
    : PoPieChart(FALSE, radiusOfDisc, num, texts, values, numColors, colors) {
    init();
    if (at != center.getValue())
        center = at;
}

void PoPieChart2D::init() {
    SO_KIT_CONSTRUCTOR(PoPieChart2D);
    SO_KIT_ADD_FIELD(center, (0, 0));
    SO_KIT_INIT_INSTANCE();
    watchFields({&center});
    setUpConnections(TRUE, TRUE);
}

void PoPieChart2D::rebuild() {
    preRebuild();
    const SbVec2f at = center.getValue();
    rebuildPie({at[0], at[1], 0}, 0);
    postRebuild();
}
