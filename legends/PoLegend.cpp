#include <oravane/PoLegend.h>

#include "core/ClassTable.h"
#include "legends/LegendBoxes.h"
#include "legends/LegendGrid.h"
#include "legends/LegendText.h"
#include "text/TextLayout.h"

#include <oravane/PbMiscTextAttr.h>
#include <oravane/PoMiscTextAttrElement.h>

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTranslation.h>

#include <algorithm>
#include <cmath>

SO_KIT_SOURCE(PoLegend)

using oravane::BoxOutline;
using oravane::LegendCells;
using oravane::LegendGrid;

namespace {

constexpr float kDefaultMargin = 0.05f;    ///< of the smaller side
constexpr float kTitleShare = 0.5f;        ///< of the legend, across the title's side
constexpr float kTitleLengthShare = 0.95f; ///< along it
constexpr float kTitleScale = 1.2f;        ///< by the other texts
constexpr float kLonelyTitleShare = 0.12f; ///< of the smaller side, for a title without a grid
constexpr float kMaxTitleGap = 0.1f;       ///< of the side that it is taken from
constexpr float kLayerShare = 0.001f;      ///< of the larger side, between background, boxes and texts
constexpr float kMinRatio = 0.01f, kMaxRatio = 100;
constexpr float kLargest = 1e30f; ///< coordinate and margin; sums of larger ones might be infinite

bool areUsable(std::initializer_list<float> lengths) {
    return std::all_of(lengths.begin(), lengths.end(),
                       [](float length) { return std::abs(length) <= kLargest; });
}

oravane::TextSide sideOf(PoLegend::Position position) {
    switch (position) {
    case PoLegend::POS_BOTTOM:
        return oravane::TextSide::Below;
    case PoLegend::POS_TOP:
        return oravane::TextSide::Above;
    case PoLegend::POS_LEFT:
        return oravane::TextSide::Left;
    default:
        return oravane::TextSide::Right;
    }
}

/// The value of a field; a number that is none of the enumeration is the default.
template <class Enum>
Enum enumOf(const PoSFEnum &field, int count, Enum defaultValue) {
    const int value = field.getValue();
    return value >= 0 && value < count ? static_cast<Enum>(value) : defaultValue;
}

} // namespace

/// The nodes that a rebuild has made, and that are not in the scene yet.
class PoLegend::NewParts {
public:
    NewParts() = default;
    NewParts(const NewParts &) = delete;
    NewParts &operator=(const NewParts &) = delete;
    ~NewParts() {
        for (const Entry &entry : m_entries)
            entry.node->unref();
    }
    void add(const char *name, SoNode *node) {
        node->ref();
        m_entries.push_back({name, node});
    }
    bool has(const SbString &name) const {
        return std::any_of(m_entries.begin(), m_entries.end(),
                           [&](const Entry &entry) { return entry.name == name; });
    }
    void setIn(PoLegend &kit) const {
        for (const Entry &entry : m_entries)
            kit.setPart(entry.name.getString(), entry.node);
    }

private:
    struct Entry {
        SbString name;
        SoNode *node;
    };
    std::vector<Entry> m_entries;
};

void PoLegend::initClass() {
    if (oravane::registersNow(classTypeId))
        SO_KIT_INIT_CLASS(PoLegend, PoKestrava, "PoKestrava");
}

PoLegend::PoLegend() {
    SO_KIT_CONSTRUCTOR(PoLegend);
    ORAVANE_SHOWN_PART(background, SoGroup, FALSE);
    ORAVANE_SHOWN_PART(backgroundBorder, SoGroup, FALSE);
    ORAVANE_SHOWN_PART(box, SoGroup, FALSE);
    ORAVANE_SHOWN_PART(boxBorder, SoGroup, FALSE);
    ORAVANE_SHOWN_PART(title, SoGroup, FALSE);
    ORAVANE_SHOWN_PART(valueText, SoGroup, FALSE);
    SO_KIT_ADD_FIELD(titleVisibility, (VISIBILITY_OFF));
    SO_KIT_ADD_FIELD(titlePosition, (POS_BOTTOM));
    SO_KIT_ADD_FIELD(titlePath, (PATH_RIGHT));
    SO_KIT_ADD_FIELD(titleFontSize, (0));
    SO_KIT_ADD_FIELD(titleFontName, (""));
    SO_KIT_ADD_FIELD(titleString, (""));
    SO_KIT_ADD_FIELD(valueVisibility, (VISIBILITY_ON));
    SO_KIT_ADD_FIELD(valuePosition, (POS_RIGHT));
    SO_KIT_ADD_FIELD(valueFontName, (""));
    SO_KIT_ADD_FIELD(valueAddStringVisibility, (FALSE));
    SO_KIT_ADD_FIELD(valueAddString, (""));
    SO_KIT_ADD_FIELD(marginType, (REL_MARGIN));
    SO_KIT_ADD_FIELD(marginLeft, (kDefaultMargin));
    SO_KIT_ADD_FIELD(marginRight, (kDefaultMargin));
    SO_KIT_ADD_FIELD(marginBottom, (kDefaultMargin));
    SO_KIT_ADD_FIELD(marginTop, (kDefaultMargin));
    SO_KIT_ADD_FIELD(incrementType, (VERTICAL_INCREMENT));
    SO_KIT_ADD_FIELD(numColumns, (1));
    SO_KIT_ADD_FIELD(boxRatio, (1));
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_BOTTOM);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_TOP);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_RIGHT);
    SO_KIT_DEFINE_ENUM_VALUE(Position, POS_LEFT);
    SO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_OFF);
    SO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_ON);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_RIGHT);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_LEFT);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_UP);
    SO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_DOWN);
    SO_KIT_DEFINE_ENUM_VALUE(MarginType, REL_MARGIN);
    SO_KIT_DEFINE_ENUM_VALUE(MarginType, FIXED_MARGIN);
    SO_KIT_DEFINE_ENUM_VALUE(IncrementType, VERTICAL_INCREMENT);
    SO_KIT_DEFINE_ENUM_VALUE(IncrementType, HORIZONTAL_INCREMENT);
    SO_KIT_SET_SF_ENUM_TYPE(titleVisibility, Visibility);
    SO_KIT_SET_SF_ENUM_TYPE(titlePosition, Position);
    SO_KIT_SET_SF_ENUM_TYPE(titlePath, TextPath);
    SO_KIT_SET_SF_ENUM_TYPE(valueVisibility, Visibility);
    SO_KIT_SET_SF_ENUM_TYPE(valuePosition, Position);
    SO_KIT_SET_SF_ENUM_TYPE(marginType, MarginType);
    SO_KIT_SET_SF_ENUM_TYPE(incrementType, IncrementType);
    SO_KIT_INIT_INSTANCE();
    watchFields({&titleVisibility, &titlePosition, &titlePath, &titleFontSize, &titleFontName, &titleString,
                 &valueVisibility, &valuePosition, &valueFontName, &valueAddStringVisibility, &valueAddString,
                 &marginType, &marginLeft, &marginRight, &marginBottom, &marginTop, &incrementType,
                 &numColumns, &boxRatio});
    generatedParts({&background, &backgroundBorder, &box, &boxBorder, &title, &valueText});
    setLightModel(SoLightModel::BASE_COLOR);
    set("backgroundApp.material", "diffuseColor 0 0 0");
    setUpConnections(TRUE, TRUE);
    setDomainUsedForRebuild(0);
    enableDomainTransform(0);
}

PoLegend::~PoLegend() = default;

void PoLegend::setMiscTextAttr(PbMiscTextAttr *attributes) {
    m_miscTextAttr.set(attributes);
}

const PbMiscTextAttr *PoLegend::getMiscTextAttr() const {
    return m_miscTextAttr.inForce();
}

void PoLegend::preRebuild() {
    PoKestrava::preRebuild();
    m_miscTextAttr.addToCache();
}

void PoLegend::addElementsAllCaches() {
    PoKestrava::addElementsAllCaches();
    m_miscTextAttr.readElement();
}

void PoLegend::setDefaultOnNonWritingFields() {
    PoKestrava::setDefaultOnNonWritingFields();
    skipGeneratedInFile(titleApp, "font");
    skipGeneratedInFile(valueTextApp, "font");
}

// ---------------------------------------------------------------------------------------------- the rebuild

void PoLegend::setDefaultAttr() {
    const PbMiscTextAttr &text = *getMiscTextAttr();
    const float size = titleFontSize.getValue(), ratio = boxRatio.getValue();
    m_attr.hasTitle = titleVisibility.getValue() == VISIBILITY_ON;
    m_attr.titlePosition = enumOf(titlePosition, 4, POS_BOTTOM);
    m_attr.titlePath = enumOf(titlePath, 4, PATH_RIGHT);
    m_attr.titleFontSize = size > 0 && std::isfinite(size) ? size : 0;
    m_attr.titleFontName = oravane::fontNameOf(titleFontName.getValue(), text);
    m_attr.hasValues = valueVisibility.getValue() == VISIBILITY_ON;
    m_attr.valuePosition = enumOf(valuePosition, 4, POS_RIGHT);
    m_attr.valueFontName = oravane::fontNameOf(valueFontName.getValue(), text);
    m_attr.addString = valueAddStringVisibility.getValue() ? valueAddString.getValue() : SbString();
    m_attr.boxRatio = ratio > 0 ? std::clamp(ratio, kMinRatio, kMaxRatio) : 1;
    m_layer = 0;
    m_newParts = std::make_unique<NewParts>();
}

// The background has the z of the rectangle, to cover what has been drawn in that plane; all else is nearer.
void PoLegend::newPart(const char *name, SoNode *node) {
    if (!m_newParts)
        m_newParts = std::make_unique<NewParts>();
    if (node->isOfType(SoGroup::getClassTypeId()) && m_layer > 0) {
        auto *nearer = new SoTranslation;
        nearer->translation.setValue(0, 0, 2 * m_layer);
        static_cast<SoGroup *>(node)->insertChild(nearer, 0);
    }
    m_newParts->add(name, node);
}

void PoLegend::newFontPart(const char *name, const SbString &fontName, float size) {
    newPart(name, oravane::newFont(fontName, size));
}

void PoLegend::setNewParts(std::initializer_list<const char *> partsOfChild) {
    const auto parts = m_newParts ? std::move(m_newParts) : std::make_unique<NewParts>();
    std::vector<const char *> names{"background", "backgroundBorder", "box", "boxBorder",
                                    "title",      "valueText"};
    names.insert(names.end(), partsOfChild);
    for (const char *name : names)
        if (!parts->has(name))
            setPart(name, nullptr);
    parts->setIn(*this);
}

bool PoLegend::drawFrame(const SbVec2f &start, const SbVec2f &end, const FontSizeFunction &fontSizeIn,
                         Plimit &room) {
    const SbVec2f corner(std::min(start[0], end[0]), std::min(start[1], end[1]));
    float width = std::abs(end[0] - start[0]), height = std::abs(end[1] - start[1]);
    if (!(width > 0 && height > 0 && areUsable({start[0], start[1], end[0], end[1]})))
        return false;
    m_layer = kLayerShare * std::max(width, height);
    drawBackgroundA(corner, width, height);
    SbVec2f inner;
    computeMarginA(corner, width, height, inner, width, height);
    room = {inner[0], inner[0] + width, inner[1], inner[1] + height};
    if (m_attr.hasTitle) {
        float titleWidth = 0, titleHeight = 0;
        fitTitle(width, height, fontSizeIn, titleWidth, titleHeight);
        drawTitleA(titleWidth, titleHeight, room);
    }
    return true;
}

void PoLegend::computeMarginA(const SbVec2f &start, float width, float height, SbVec2f &newStart,
                              float &newWidth, float &newHeight) {
    const float figure = kDefaultMargin * std::min(width, height);
    float left = marginLeft.getValue(), right = marginRight.getValue();
    float bottom = marginBottom.getValue(), top = marginTop.getValue();
    const bool isRelative = marginType.getValue() == REL_MARGIN;
    if (isRelative) {
        const bool hasNegative = left < 0 || right < 0 || bottom < 0 || top < 0;
        const bool keepX = !hasNegative && left + right < 1, keepY = !hasNegative && bottom + top < 1;
        left = keepX ? left * width : figure;
        right = keepX ? right * width : figure;
        bottom = keepY ? bottom * height : figure;
        top = keepY ? top * height : figure;
    } else if (!(left + right < width && bottom + top < height && areUsable({left, right, bottom, top}))) {
        left = right = bottom = top = figure;
    }
    newStart = start + SbVec2f(left, bottom);
    newWidth = width - left - right;
    newHeight = height - bottom - top;
}

void PoLegend::drawBackgroundA(const SbVec2f &start, float width, float height) {
    auto *face = new SoGroup, *border = new SoGroup;
    oravane::addFace(face, BoxOutline{SbVec3f(start[0], start[1], -2 * m_layer), width, height});
    oravane::addBorder(border, BoxOutline{SbVec3f(start[0], start[1], boxZ()), width, height});
    newPart("background", face);
    newPart("backgroundBorder", border);
}

// ------------------------------------------------------------------------------------------------ the title

PiText PoLegend::titleBuilder() const {
    PiText text;
    text.setTextAttributes(getMiscTextAttr());
    text.setFont(m_attr.titleFontName, m_attr.titleFontSize);
    text.setPath(static_cast<PiText::Path>(m_attr.titlePath));
    text.setString(titleString.getValue().getString());
    return text;
}

void PoLegend::computeTitleSizeA(float width, float height, float &titleWidth, float &titleHeight) {
    const SbVec2f space(width * (isTitleAside() ? kTitleShare : kTitleLengthShare),
                        height * (isTitleAside() ? kTitleLengthShare : kTitleShare));
    titleWidth = titleHeight = 0;
    const auto measure = [&] {
        SbBox2f extent;
        int numLines = 0;
        titleBuilder().getLimit(extent, numLines);
        if (!extent.isEmpty())
            extent.getSize(titleWidth, titleHeight);
    };
    measure();
    if (titleWidth <= space[0] && titleHeight <= space[1])
        return;
    m_attr.titleFontSize = std::min(m_attr.titleFontSize, space[isTitleAside() ? 0 : 1]);
    measure();
    m_attr.titleFontSize *= std::min({1.0f, space[0] / titleWidth, space[1] / titleHeight});
    measure();
}

/// An automatic size depends on that of the other texts, and theirs on the room that the title leaves.
void PoLegend::fitTitle(float width, float height, const FontSizeFunction &fontSizeIn, float &titleWidth,
                        float &titleHeight) {
    if (m_attr.titleFontSize > 0) {
        computeTitleSizeA(width, height, titleWidth, titleHeight);
        return;
    }
    constexpr int NUM_STEPS = 5;
    float size = kLonelyTitleShare * std::min(width, height);
    if (fontSizeIn)
        size = kTitleScale * fontSizeIn(width, height);
    for (int step = 0;; ++step) {
        m_attr.titleFontSize = size;
        computeTitleSizeA(width, height, titleWidth, titleHeight);
        if (!fontSizeIn || step == NUM_STEPS)
            return;
        const float aside = isTitleAside() ? titleWidth + titleGap(width) : 0;
        const float above = isTitleAside() ? 0 : titleHeight + titleGap(height);
        size = (size + kTitleScale * fontSizeIn(width - aside, height - above)) / 2;
    }
}

float PoLegend::titleGap(float side) const {
    return std::min(oravane::kLineHeight * m_attr.titleFontSize, kMaxTitleGap * side);
}

void PoLegend::drawTitleA(float titleWidth, float titleHeight, Plimit &room) {
    SbVec2f middle((room.xmin + room.xmax) / 2, (room.ymin + room.ymax) / 2);
    const float taken = isTitleAside() ? titleWidth + titleGap(room.xmax - room.xmin)
                                       : titleHeight + titleGap(room.ymax - room.ymin);
    switch (m_attr.titlePosition) {
    case POS_TOP:
        middle[1] = room.ymax - titleHeight / 2;
        room.ymax -= taken;
        break;
    case POS_RIGHT:
        middle[0] = room.xmax - titleWidth / 2;
        room.xmax -= taken;
        break;
    case POS_LEFT:
        middle[0] = room.xmin + titleWidth / 2;
        room.xmin += taken;
        break;
    default:
        middle[1] = room.ymin + titleHeight / 2;
        room.ymin += taken;
        break;
    }
    auto *group = new SoGroup;
    PiText text = titleBuilder();
    text.setGroup(group);
    oravane::buildCentred(text, middle);
    newPart("title", group);
    newFontPart("titleApp.font", m_attr.titleFontName, m_attr.titleFontSize);
}

// ------------------------------------------------------------------------------------------------- the grid

LegendCells PoLegend::cellsOf(int count, const std::vector<SbVec2f> &texts) {
    float boxWidth = 0, lineWidth = 0, markerWidth = 0, width = 0;
    computeGraphicSizeForValues(boxWidth, lineWidth, markerWidth);
    for (const float graphic : {boxWidth, lineWidth, markerWidth})
        width += graphic + (width > 0 && graphic > 0 ? oravane::kSampleGap : 0);
    LegendCells cells;
    cells.count = count;
    cells.numColumns = numColumns.getValue();
    cells.runsAlongRows = incrementType.getValue() == HORIZONTAL_INCREMENT;
    cells.texts = texts;
    cells.graphic.setValue(width, std::max({boxWidth * m_attr.boxRatio, lineWidth, markerWidth}));
    cells.textSide = sideOf(m_attr.valuePosition);
    return cells;
}

PoLegend::FontSizeFunction PoLegend::fontSizeOf(const LegendCells &cells) {
    if (cells.count < 1)
        return nullptr;
    return [&](float width, float height) { return LegendGrid(cells, width, height).fontSize(); };
}

float PoLegend::largerSide() const {
    return m_layer / kLayerShare;
}

PiText PoLegend::valueTextBuilder() const {
    PiText text;
    text.setTextAttributes(getMiscTextAttr());
    text.setFont(m_attr.valueFontName, 1);
    return text;
}

void PoLegend::computeGraphicSizeForValues(float &boxWidth, float &lineWidth, float &markerWidth) {
    boxWidth = oravane::kBoxSize;
    lineWidth = markerWidth = 0;
}

void PoLegend::drawBoxLegendBoxesA(SoGroup *face, SoGroup *border, const SbVec2f &corner, float width,
                                   float height, int) {
    oravane::addFace(face, BoxOutline{SbVec3f(corner[0], corner[1], boxZ()), width, height});
    oravane::addBorder(border, BoxOutline{SbVec3f(corner[0], corner[1], textZ()), width, height});
}

void PoLegend::drawBoxesLegendBoxesA(const LegendGrid &grid, const SbVec2f &corner, int count) {
    float boxWidth = 0, lineWidth = 0, markerWidth = 0;
    computeGraphicSizeForValues(boxWidth, lineWidth, markerWidth);
    const SbVec2f size = grid.fontSize() * SbVec2f(boxWidth, boxWidth * m_attr.boxRatio);
    const SbVec2f lift(0, (grid.graphicSize()[1] - size[1]) / 2);
    auto *face = new SoGroup, *border = new SoGroup;
    for (int i = 0; i < count; ++i)
        drawBoxLegendBoxesA(face, border, corner + lift + grid.graphicCorner(static_cast<std::size_t>(i)),
                            size[0], size[1], i);
    newPart("box", face);
    newPart("boxBorder", border);
}

void PoLegend::drawValuesLegendBoxesA(const LegendGrid &grid, const SbVec2f &corner,
                                      const std::vector<SbString> &strings) {
    auto *group = new SoGroup;
    PiText text = valueTextBuilder();
    const auto [horizontal, vertical] = oravane::alignmentAt(
        sideOf(m_attr.valuePosition), PiText::TEXT_PATH_RIGHT, oravane::LetterEdge::Capitals);
    text.setAlignment(horizontal, vertical);
    text.setFontSize(grid.fontSize());
    text.setGroup(group);
    for (std::size_t i = 0; i < strings.size(); ++i) {
        text.setOrigin(corner + grid.textAnchor(i));
        text.setString(strings[i].getString());
        text.build();
    }
    newPart("valueText", group);
    newFontPart("valueTextApp.font", m_attr.valueFontName, grid.fontSize());
}
