#include <oravane/PoGenAxis.h>

#include "core/ClassTable.h"

SO_KIT_SOURCE(PoGenAxis)

void PoGenAxis::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoGenAxis, PoCartesianAxis, "PoCartesianAxis");
}

PoGenAxis::PoGenAxis() {
    SO_KIT_CONSTRUCTOR(PoGenAxis);
    SO_KIT_ADD_FIELD(gradList, (""));
    SO_KIT_INIT_INSTANCE();
    watchFields({&gradList});
    setUpConnections(TRUE, TRUE);
}

void PoGenAxis::rebuild() {
    preRebuild();
    Parts parts;
    float from = 0, to = 0;
    if (startRebuild(parts, from, to)) {
        drawBody(from, to, parts);
        float limitStart = 0, limitEnd = 0;
        computeGradLimit(from, to, limitStart, limitEnd);
        const int numGrads = limitStart == limitEnd ? 0 : gradList.getNum();
        const float distance = (limitEnd - limitStart) / static_cast<float>(numGrads > 1 ? numGrads - 1 : 1);
        std::vector<float> coords;
        std::vector<std::string> labels;
        for (int i = 0; i < numGrads; ++i) {
            coords.push_back(limitStart + static_cast<float>(i) * distance);
            labels.emplace_back(gradList[i].getString());
        }
        std::vector<std::string> mainLabels = computeGradList(limitStart, limitEnd, 0, coords, labels);
        if (gradAddStringVisibility.getValue() == TRUE)
            for (std::string &label : mainLabels)
                label += gradAddString.getValue().getString();
        drawGraduations(numGrads, mainLabels, parts);
        drawTitle(from, to, parts);
    }
    setParts(parts);
    postRebuild();
}
