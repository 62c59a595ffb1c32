#include <oravane/PiContouringLines.h>

#include "geometry/ContourWork.h"
#include "geometry/NodeMemory.h"

#include <oravane/PbIsovaluesList.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLineSet.h>

using oravane::IsoLines;

void PiContouringLines::computeLines(const float *values, const float *z) {
    IsoLines &lines = m_work->lines;
    m_work->isWalled = false;
    if (!computeContouringPoints(values, z)) {
        lines.points.clear();
        lines.lines.clear();
    } else if (m_work->isGrid) {
        m_work->grid.makeLines(m_work->gridField(), m_work->positions, m_work->levels, lines);
    } else {
        m_work->indexed.makeLines(m_work->meshField(), m_work->levels, lines);
    }
}

void PiContouringLines::getLines(const float *values, const float *z, Tisoline_list *lines) {
    computeLines(values, z);
    IsoLines &made = m_work->lines;
    m_lines.clear();
    m_lineIsovalues.clear();
    int numLevels = 0, isRegular = 0;
    float min = 0, max = 0, step = 0;
    const float *levels =
        m_isovaluesList ? m_isovaluesList->getIsoList(numLevels, min, max, step, isRegular) : nullptr;
    for (const IsoLines::Line &line : made.lines) {
        m_lines.push_back({static_cast<int>(line.count), made.points.data() + line.start});
        m_lineIsovalues.push_back(levels ? levels[line.level] : m_work->levels[line.level]);
    }
    if (lines)
        *lines = {m_lines.data(), m_lineIsovalues.data(), static_cast<int>(m_lines.size())};
}

void PiContouringLines::makeLines(const float *values, const float *z, SoGroup *group, SoMaterial *) {
    computeLines(values, z);
    const IsoLines &made = m_work->lines;
    if (!group || made.lines.empty())
        return;
    auto *coordinates = new SoCoordinate3;
    std::copy(made.points.begin(), made.points.end(),
              oravane::startPoints(coordinates->point, made.points.size()));
    coordinates->point.finishEditing();
    auto *lineSet = new SoLineSet;
    std::int32_t *count = oravane::startValues(lineSet->numVertices, made.lines.size());
    for (const IsoLines::Line &line : made.lines)
        *count++ = static_cast<std::int32_t>(line.count);
    lineSet->numVertices.finishEditing();
    group->addChild(coordinates);
    group->addChild(lineSet);
}
