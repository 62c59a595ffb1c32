#include <oravane/PiMarker.h>

#include "text/TextLayout.h"

#include <oravane/PiText.h>

#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoPointSet.h>
#include <Inventor/nodes/SoTransform.h>
#include <Inventor/nodes/SoTransformSeparator.h>

#include <algorithm>
#include <cmath>

namespace {

void addDots(SoGroup *group, std::span<const SbVec2f> places) {
    auto *coordinates = new SoCoordinate3;
    coordinates->point.setNum(static_cast<int>(places.size()));
    std::transform(places.begin(), places.end(), coordinates->point.startEditing(),
                   [](const SbVec2f &place) { return SbVec3f(place[0], place[1], 0); });
    coordinates->point.finishEditing();
    group->addChild(coordinates);
    group->addChild(new SoPointSet);
}

void addTriangle(void *box, SoCallbackAction *action, const SoPrimitiveVertex *a, const SoPrimitiveVertex *b,
                 const SoPrimitiveVertex *c) {
    for (const SoPrimitiveVertex *vertex : {a, b, c}) {
        SbVec3f point;
        action->getModelMatrix().multVecMatrix(vertex->getPoint(), point);
        static_cast<SbBox3f *>(box)->extendBy(point);
    }
}

} // namespace

void PiMarker::setFontName(const char *name) {
    if (!name || m_fontName == name)
        return;
    m_fontName = name;
    m_middles.clear();
}

void PiMarker::setFontSize(float size) {
    if (std::isfinite(size))
        m_fontSize = size;
}

void PiMarker::setHeightFactor(float factor) {
    if (std::isfinite(factor) && factor > 0)
        m_heightFactor = factor;
}

void PiMarker::build(SoGroup *group, std::span<const SbVec2f> places) const {
    if (!group || places.empty() || m_string.getLength() == 0)
        return;
    if (m_string == ".") {
        addDots(group, places);
        return;
    }
    SoNode *text = newText();
    for (const SbVec2f &place : places) {
        auto *transform = new SoTransform;
        transform->translation.setValue(place[0], place[1], 0);
        transform->scaleFactor.setValue(1, m_heightFactor, 1);
        auto *mark = new SoTransformSeparator;
        mark->addChild(transform);
        mark->addChild(text);
        group->addChild(mark);
    }
}

/// A text around the origin. Letters such as "*" lie high on their line, and others low.
SoNode *PiMarker::newText() const {
    PiText text;
    const auto [horizontal, vertical] = oravane::alignmentAt(
        oravane::TextSide::Centre, PiText::TEXT_PATH_RIGHT, oravane::LetterEdge::Capitals);
    text.setAlignment(horizontal, vertical);
    text.setFont(m_fontName, m_fontSize);
    text.setString(m_string.getString());
    text.setOrigin(-middleOf(text));
    auto *group = new SoGroup;
    text.setGroup(group);
    text.build();
    return group;
}

/// The middle of what is seen of the marker's text at the origin. Boxes of texts reach down to the line on
/// which letters stand.
const SbVec3f &PiMarker::middleOf(PiText &text) const {
    const auto [entry, isNew] = m_middles.try_emplace({m_string.getString(), m_fontSize}, 0.0f, 0.0f, 0.0f);
    if (!isNew)
        return entry->second;
    auto *root = new SoGroup;
    root->ref();
    root->addChild(oravane::newFont(m_fontName, m_fontSize));
    text.setGroup(root);
    text.build();
    SbBox3f box;
    SoCallbackAction action;
    action.addTriangleCallback(SoShape::getClassTypeId(), addTriangle, &box);
    action.apply(root);
    root->unref();
    if (!box.isEmpty())
        entry->second = box.getCenter();
    return entry->second;
}
