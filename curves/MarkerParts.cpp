#include "curves/MarkerParts.h"

#include "curves/DotStyle.h"
#include "text/TextLayout.h"

#include <oravane/PbDomain.h>
#include <oravane/PiMarker.h>

#include <Inventor/nodekits/SoBaseKit.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoGroup.h>

namespace oravane {

namespace {

constexpr float kRelativeSize = 0.03f; // of letters, of the domain's x side

} // namespace

MarkerParts::Made MarkerParts::make(const SbString &string, std::span<const SbVec2f> places,
                                    const PbDomain &domain, bool isTransformed) const {
    Made made;
    made.marker = new SoGroup;
    made.dependsOnDomain = string != ".";
    PiMarker marker;
    marker.setMarkerType(string);
    if (!made.dependsOnDomain) {
        if (!nodeOf(m_drawStyle) || isMade(m_drawStyle))
            made.drawStyle = newDotStyle(kDotSize);
    } else {
        auto *font = static_cast<SoFont *>(nodeOf(m_font));
        if (!font || isMade(m_font))
            made.font = font = newFont("defaultFont", kRelativeSize * domain.getDeltaX());
        marker.setFontName(SbString(font->name.getValue().getString()));
        marker.setFontSize(font->size.getValue());
        if (isTransformed) {
            const SbMatrix matrix = domain.getMatrix();
            marker.setHeightFactor(matrix[0][0] / matrix[1][1]);
        }
    }
    marker.build(made.marker, places);
    return made;
}

void MarkerParts::set(const Made &made) {
    setPart(m_font, made.font);
    setPart(m_drawStyle, made.drawStyle);
    m_kit.setPart("marker", made.marker);
}

std::vector<SoField *> MarkerParts::madeFields() const {
    std::vector<SoField *> fields;
    for (const Part &part : {m_font, m_drawStyle})
        if (isMade(part))
            fields.push_back(m_kit.getPart("markerApp", FALSE)->getField(part.field));
    return fields;
}

void MarkerParts::copyFrom(const MarkerParts &original) {
    m_font.isOfOriginal = original.isMade(original.m_font);
    m_drawStyle.isOfOriginal = original.isMade(original.m_drawStyle);
}

SoNode *MarkerParts::nodeOf(const Part &part) const {
    return m_kit.getPart((SbString("markerApp.") + part.field).getString(), FALSE);
}

/// A node's id tells one node from another, and becomes another by each change of the node.
bool MarkerParts::isMade(const Part &part) const {
    const SoNode *node = nodeOf(part);
    return node && (part.isOfOriginal || node->getNodeId() == part.madeId);
}

void MarkerParts::setPart(Part &part, SoNode *node) {
    if (const SoNode *made = node || !part.isOfOriginal ? node : nodeOf(part))
        part.madeId = made->getNodeId();
    part.isOfOriginal = false;
    if (node)
        m_kit.setPart((SbString("markerApp.") + part.field).getString(), node);
}

} // namespace oravane
