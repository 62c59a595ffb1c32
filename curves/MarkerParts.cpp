#include "curves/MarkerParts.h"

#include "text/TextLayout.h"

#include <oravane/PbDomain.h>
#include <oravane/PiMarker.h>

#include <Inventor/nodekits/SoBaseKit.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoGroup.h>

namespace oravane {

namespace {

constexpr const char *kFont = "markerApp.font", *kDrawStyle = "markerApp.drawStyle";
constexpr float kDotSize = 5;          // pixels, or nominal widths
constexpr float kRelativeSize = 0.03f; // of letters, of the domain's x side

/// A node's id tells one node from another, and becomes another by each change of the node.
bool isUnchanged(const SoNode *node, std::uint64_t id) {
    return node && node->getNodeId() == id;
}

SoDrawStyle *newDotSize() {
    auto *style = new SoDrawStyle;
    style->pointSize = kDotSize;
    for (SoField *field : {static_cast<SoField *>(&style->style), static_cast<SoField *>(&style->lineWidth),
                           static_cast<SoField *>(&style->linePattern)})
        field->setIgnored(TRUE); // those of the kit's appearance hold
    return style;
}

} // namespace

MarkerParts::Made MarkerParts::make(const SbString &string, std::span<const SbVec2f> places,
                                    const PbDomain &domain, bool isTransformed) const {
    Made made;
    made.marker = new SoGroup;
    made.dependsOnDomain = string != ".";
    PiMarker marker;
    marker.setMarkerType(string);
    if (!made.dependsOnDomain) {
        if (!m_kit.getPart(kDrawStyle, FALSE))
            made.drawStyle = newDotSize();
    } else {
        auto *font = static_cast<SoFont *>(m_kit.getPart(kFont, FALSE));
        if (!font || isUnchanged(font, m_fontId))
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
    if (made.font) {
        m_fontId = made.font->getNodeId();
        m_kit.setPart(kFont, made.font);
    }
    if (made.drawStyle) {
        m_drawStyleId = made.drawStyle->getNodeId();
        m_kit.setPart(kDrawStyle, made.drawStyle);
    }
    m_kit.setPart("marker", made.marker);
}

std::vector<SoField *> MarkerParts::madeFields() const {
    std::vector<SoField *> fields;
    SoNode *appearance = m_kit.getPart("markerApp", FALSE);
    if (isUnchanged(m_kit.getPart(kFont, FALSE), m_fontId))
        fields.push_back(appearance->getField("font"));
    if (isUnchanged(m_kit.getPart(kDrawStyle, FALSE), m_drawStyleId))
        fields.push_back(appearance->getField("drawStyle"));
    return fields;
}

} // namespace oravane
