#include <oravane/PoHistogram.h>

#include "core/ClassTable.h"
#include "text/TextLayout.h"

#include <oravane/PbDataMapping.h>
#include <oravane/PbMiscTextAttr.h>
#include <oravane/PbNumericDisplayFormat.h>
#include <oravane/PiText.h>
#include <oravane/PoDataMappingElement.h>
#include <oravane/PoMiscTextAttrElement.h>
#include <oravane/PoNumericDisplayFormatElement.h>

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <cmath>
#include <utility>

SO_KIT_SOURCE(PoHistogram)

using oravane::TextSide;

namespace {

constexpr float kFontSize = 0.04f; // of a field that gives none

float fontSizeOf(const SoSFFloat &field, float unit) {
    const float size = field.getValue() * unit;
    return size > 0 && std::isfinite(size) ? size : kFontSize * unit;
}

PoHistogram::Position positionOf(const SoSFEnum &field) {
    return static_cast<PoHistogram::Position>(
        std::clamp<int>(field.getValue(), PoHistogram::POS_TOP_OUT, PoHistogram::POS_DEPEND));
}

PoHistogram::TextPath pathOf(const SoSFEnum &field) {
    const int path = field.getValue();
    const bool isPath = path >= PoHistogram::PATH_RIGHT && path <= PoHistogram::PATH_DOWN;
    return isPath ? static_cast<PoHistogram::TextPath>(path) : PoHistogram::PATH_RIGHT;
}

/// A border of a bar, by the side that texts are on and by its direction.
struct Border {
    TextSide side;
    int x, y;
};

/// Of POS_CENTER too.
Border borderOf(PoHistogram::Position position) {
    static constexpr Border borders[] = {
        {TextSide::Above, 0, 1}, {TextSide::Below, 0, -1}, {TextSide::Right, 1, 0}, {TextSide::Left, -1, 0}};
    const bool isBorder = position >= PoHistogram::POS_TOP_OUT && position <= PoHistogram::POS_LEFT_IN;
    return isBorder ? borders[position / 2] : Border{TextSide::Centre, 0, 0};
}

} // namespace

void PoHistogram::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoHistogram, PoKestrava, "PoKestrava");
}

PoHistogram::PoHistogram() {
    SO_KIT_CONSTRUCTOR(PoHistogram);
    SO_KIT_ADD_CATALOG_ENTRY(transform, SoMatrixTransform, TRUE, alternateRep, , TRUE);
    ORAVANE_SHOWN_PART(bar, SoGroup, FALSE);
    ORAVANE_SHOWN_PART(valueText, SoGroup, FALSE);
    ORAVANE_SHOWN_PART(nameText, SoGroup, FALSE);
    SO_KIT_ADD_FIELD(start, (0, 0));
    SO_KIT_ADD_FIELD(end, (1));
    SO_KIT_ADD_FIELD(type, (X));
    SO_KIT_ADD_FIELD(color, (SbColor(0, 0, 0)));
    SO_KIT_ADD_FIELD(coloring, (COLOR_LIST));
    SO_KIT_ADD_FIELD(valueVisibility, (VISIBILITY_ON));
    SO_KIT_ADD_FIELD(valuePosition, (POS_DEPEND));
    SO_KIT_ADD_FIELD(valuePath, (PATH_DEPEND));
    SO_KIT_ADD_FIELD(valueFontSize, (0));
    SO_KIT_ADD_FIELD(valueFontName, (""));
    SO_KIT_ADD_FIELD(valueAddStringVisibility, (FALSE));
    SO_KIT_ADD_FIELD(valueAddString, (""));
    SO_KIT_ADD_FIELD(nameVisibility, (VISIBILITY_ON));
    SO_KIT_ADD_FIELD(namePosition, (POS_DEPEND));
    SO_KIT_ADD_FIELD(namePath, (PATH_DEPEND));
    SO_KIT_ADD_FIELD(nameFontSize, (0));
    SO_KIT_ADD_FIELD(nameFontName, (""));
    SO_KIT_ADD_FIELD(barSpaceType, (REL_SPACE));
    SO_KIT_ADD_FIELD(barSpaceValue, (0.25f));
    defineEnumerations();
    SO_KIT_INIT_INSTANCE();
    watchFields({&start, &end, &type, &color, &coloring, &valueVisibility, &valuePosition, &valuePath,
                 &valueFontSize, &valueFontName, &valueAddStringVisibility, &valueAddString, &nameVisibility,
                 &namePosition, &namePath, &nameFontSize, &nameFontName, &barSpaceType, &barSpaceValue});
    generatedParts({&transform, &bar, &valueText, &nameText});
    setLightModel(SoLightModel::BASE_COLOR);
    setUpConnections(TRUE, TRUE);
}

void PoHistogram::defineEnumerations() {
    SO_KIT_DEFINE_ENUM_VALUE(Type, X);
    SO_KIT_DEFINE_ENUM_VALUE(Type, Y);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_TOP_OUT);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_TOP_IN);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_BOTTOM_OUT);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_BOTTOM_IN);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_RIGHT_OUT);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_RIGHT_IN);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_LEFT_OUT);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_LEFT_IN);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_CENTER);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_DEPEND);
    SO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_OFF);
    SO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_ON);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_RIGHT);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_LEFT);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_UP);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_DOWN);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_DEPEND);
    SO_KIT_DEFINE_ENUM_VALUE(BarSpaceType, REL_SPACE);
    SO_KIT_DEFINE_ENUM_VALUE(BarSpaceType, FIXED_SPACE);
    SO_KIT_DEFINE_ENUM_VALUE(Coloring, COLOR_LIST);
    SO_KIT_DEFINE_ENUM_VALUE(Coloring, DATA_MAPPING);
    SO_KIT_SET_SF_ENUM_TYPE(type, Type);
    SO_KIT_SET_SF_ENUM_TYPE(coloring, Coloring);
    SO_KIT_SET_SF_ENUM_TYPE(valueVisibility, Visibility);
    SO_KIT_SET_SF_ENUM_TYPE(valuePosition, Position);
    SO_KIT_SET_SF_ENUM_TYPE(valuePath, TextPath);
    SO_KIT_SET_SF_ENUM_TYPE(nameVisibility, Visibility);
    SO_KIT_SET_SF_ENUM_TYPE(namePosition, Position);
    SO_KIT_SET_SF_ENUM_TYPE(namePath, TextPath);
    SO_KIT_SET_SF_ENUM_TYPE(barSpaceType, BarSpaceType);
}

void PoHistogram::setDataMapping(PbDataMapping *mapping) {
    m_dataMapping.set(mapping);
}

void PoHistogram::setMiscTextAttr(PbMiscTextAttr *attributes) {
    m_miscTextAttr.set(attributes);
}

void PoHistogram::setFormat(PbNumericDisplayFormat *format) {
    m_format.set(format);
}

const PbDataMapping *PoHistogram::getDataMapping() const {
    if (m_dataMapping.get())
        return m_dataMapping.get();
    return isStateValid() ? PoDataMappingElement::get(getState()) : nullptr;
}

const PbMiscTextAttr *PoHistogram::getMiscTextAttr() const {
    return m_miscTextAttr.inForce();
}

const PbNumericDisplayFormat *PoHistogram::getFormat() const {
    return m_format.inForce();
}

// ---- the rebuild

void PoHistogram::preRebuild() {
    PoKestrava::preRebuild();
    addElementCache(PoDataMappingElement::getClassStackIndex());
    if (!isStateValid() && coloring.getValue() == DATA_MAPPING && !m_dataMapping.get())
        rebuildAtNextTraversal();
    m_miscTextAttr.addToCache();
    m_format.addToCache();
}

void PoHistogram::addElementsAllCaches() {
    PoKestrava::addElementsAllCaches();
    PoDataMappingElement::get(getState());
    m_miscTextAttr.readElement();
    m_format.readElement();
}

// What a mapping that does not colour the bars holds is of no concern; but one that dies is forgotten.
void PoHistogram::manageBasicObjectChange(PbBase *object, PbBase **member) {
    const bool isUnused = coloring.getValue() != DATA_MAPPING && object == m_dataMapping.get();
    if (!isUnused || object->getChangeType() == PbBase::CHANGE_DELETED)
        PoKestrava::manageBasicObjectChange(object, member);
}

void PoHistogram::setDefaultAttr() {
    const PbDomain &domain = *getDomain();
    const float unit = domain.getDeltaX();
    m_aspect = static_cast<double>(unit) / domain.getDeltaY();
    const PbMiscTextAttr &attributes = *getMiscTextAttr();
    m_valueStyle = {positionOf(valuePosition), pathOf(valuePath), fontSizeOf(valueFontSize, unit),
                    oravane::fontNameOf(valueFontName.getValue(), attributes)};
    m_nameStyle = {positionOf(namePosition), pathOf(namePath), fontSizeOf(nameFontSize, unit),
                   oravane::fontNameOf(nameFontName.getValue(), attributes)};
}

void PoHistogram::colorBars(SoGroup *) {}

bool PoHistogram::isOnBar(Position position) {
    return position == POS_CENTER || position % 2 == 1;
}

void PoHistogram::computeTextPos(const SbVec2f *corners, Position position, float fontSize, SbVec2f &origin) {
    if (!corners)
        return;
    SbBox2f box;
    for (int k = 0; k < 3; ++k)
        box.extendBy(corners[k]);
    const Border border = borderOf(position);
    const int direction[] = {border.x, border.y};
    const float gap = (isOnBar(position) ? -0.5f : 0.5f) * fontSize * oravane::kCapitalHeight;
    origin = (box.getMin() + box.getMax()) / 2;
    for (int axis = 0; axis < 2; ++axis)
        if (direction[axis] > 0)
            origin[axis] = box.getMax()[axis] + gap;
        else if (direction[axis] < 0)
            origin[axis] = box.getMin()[axis] - gap;
}

void PoHistogram::computeTextAlignPath(Position position, TextPath path, PiText *text) {
    if (!text)
        return;
    // Paths of both classes have the same values.
    const auto textPath = path == PATH_DEPEND ? PiText::TEXT_PATH_RIGHT : static_cast<PiText::Path>(path);
    const oravane::TextSide border = borderOf(position).side;
    const oravane::TextAlignment alignment = oravane::alignmentAt(
        isOnBar(position) ? oravane::opposite(border) : border, textPath, oravane::LetterEdge::Full);
    text->setPath(textPath);
    text->setAlignment(alignment.horizontal, alignment.vertical);
}

// Copied first: what a sensor of the program does to the kit may be another rebuild.
void PoHistogram::setParts() {
    const Parts parts = std::exchange(m_parts, {});
    setPart("transform", parts.transform);
    setPart("bar", parts.bar);
    setPart("valueText", parts.valueText);
    setPart("nameText", parts.nameText);
    setBarMaterial(parts.barMaterial);
    if (parts.valueFont)
        setPart("valueTextApp.font", parts.valueFont);
    if (parts.nameFont)
        setPart("nameTextApp.font", parts.nameFont);
}

// ---- the material of the bars, which the kit or the program gives

bool PoHistogram::isBarMaterialGenerated() const {
    const auto *material = const_cast<PoHistogram *>(this)->getPart("barApp.material", FALSE);
    return material && material->getNodeId() == m_barMaterialId;
}

void PoHistogram::setBarMaterial(SoMaterial *material) {
    if (!material && !isBarMaterialGenerated())
        return;
    m_barMaterialId = material ? material->getNodeId() : 0;
    setPart("barApp.material", material);
}

void PoHistogram::copyContents(const SoFieldContainer *from, SbBool copyConnections) {
    PoKestrava::copyContents(from, copyConnections);
    const SoNode *copied = getPart("barApp.material", FALSE);
    const bool isGenerated = copied && static_cast<const PoHistogram *>(from)->isBarMaterialGenerated();
    m_barMaterialId = isGenerated ? copied->getNodeId() : 0;
}

void PoHistogram::setDefaultOnNonWritingFields() {
    PoKestrava::setDefaultOnNonWritingFields();
    skipGeneratedInFile(valueTextApp, "font");
    skipGeneratedInFile(nameTextApp, "font");
    if (isBarMaterialGenerated())
        skipGeneratedInFile(barApp, "material");
}
