#include "Sheet.h"

#include <oravane/PoDomain.h>
#include <oravane/PoMiscTextAttr.h>

#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTransform.h>

#include <algorithm>

Sheet::Sheet(float width, float height)
    : m_width(width), m_height(height), m_scene(newMapScene(SbBox2f(0, 0, width, height))) {
    m_scene->ref();
    auto *ink = new SoMaterial;
    ink->diffuseColor.setValue(0, 0, 0);
    m_scene->addChild(ink);
    auto *flat = new SoLightModel;
    flat->model = SoLightModel::BASE_COLOR;
    m_scene->addChild(flat);
    auto *text = new PoMiscTextAttr;
    text->fontName = "Times-Roman";
    m_scene->addChild(text);
}

Sheet::~Sheet() {
    m_scene->unref();
}

SoSeparator *Sheet::addPanel(const SbBox2f &place, const SbBox2f &data) const {
    const SbVec2f size = place.getSize(), extent = data.getSize();
    const float side = std::max(size[0], size[1]);
    auto *transform = new SoTransform;
    transform->translation.setValue(place.getMin()[0], place.getMin()[1], 0);
    transform->scaleFactor.setValue(side, side, side);
    // The domain's box becomes a cube, so it reaches beyond the data along the shorter side of the panel.
    auto *domain = new PoDomain;
    const SbVec2f from = data.getMin();
    domain->min.setValue(from[0], from[1], 0);
    domain->max.setValue(from[0] + extent[0] * side / size[0], from[1] + extent[1] * side / size[1], 1);
    domain->transformType = PoDomain::TRANSFORM_01;
    auto *panel = new SoSeparator;
    panel->addChild(transform);
    panel->addChild(domain);
    m_scene->addChild(panel);
    return panel;
}

void Sheet::addText(float x, float y, float size, const char *text, PiText::HorAlignment alignment) const {
    auto *place = new SoSeparator;
    auto *font = new SoFont;
    font->name = "Times-Roman";
    font->size = size;
    place->addChild(font);
    PiText builder;
    builder.setGroup(place);
    builder.setFont("Times-Roman", size);
    builder.setAlignment(alignment, PiText::VERT_BASE);
    builder.setOrigin(x, y);
    builder.setString(text);
    builder.build();
    m_scene->addChild(place);
}

void Sheet::write(oravane::Example &example, const std::string &name) const {
    writePageAndPicture(example, name, m_scene, mapSheet(SbBox2f(0, 0, m_width, m_height)));
}

std::string styled(const char *part, const char *color, float lineWidth) {
    return std::string(part) + ".material { diffuseColor " + color + " } " + part +
           ".drawStyle { lineWidth " + std::to_string(lineWidth) + " } ";
}
