#include "tools/EnlargedPixels.h"

#include <Inventor/SoFullPath.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoImage.h>
#include <Inventor/nodes/SoIndexedMarkerSet.h>
#include <Inventor/nodes/SoMarkerSet.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoText2.h>

#include <map>
#include <set>
#include <utility>

namespace oravane {

namespace {

/// Multiplies a field for as long as it lives, in silence: a kit that watches the field must not rebuild, and
/// a field with its default value has to be default again afterwards.
template <class Field, class Value>
class ScaledField {
public:
    ScaledField(Field &field, Value scaled)
        : m_field(&field), m_before(field.getValue()), m_default(field.isDefault()) {
        set(scaled, FALSE);
    }
    ~ScaledField() { set(m_before, m_default); }
    ScaledField(const ScaledField &) = delete;
    ScaledField &operator=(const ScaledField &) = delete;

private:
    void set(Value value, SbBool isDefault) {
        const SbBool notified = m_field->enableNotify(FALSE);
        m_field->setValue(value);
        m_field->setDefault(isDefault);
        m_field->enableNotify(notified);
    }

    Field *m_field;
    Value m_before;
    SbBool m_default;
};

/// A size of 0 stands for the default of 1 pixel.
float enlarged(const SoSFFloat &size, int samples) {
    return static_cast<float>(samples) * (size.getValue() > 0.0f ? size.getValue() : 1.0f);
}

/// The index of a marker like that of this index, `samples` times as large.
int largeMarker(int index, int samples) {
    SbVec2s size;
    const unsigned char *bits = nullptr;
    SbBool isLowBitFirst = FALSE; // never so
    // The toolkit looks below its table for an index such as `NONE`.
    if (index < 0 || !SoMarkerSet::getMarker(index, size, bits, isLowBitFirst) || bits == nullptr)
        return index;
    // Rows of the toolkit's own markers are padded.
    const int rowBytes = index < SoMarkerSet::NUM_MARKERS ? (size[0] + 31) / 32 * 4 : (size[0] + 7) / 8;
    const int width = size[0] * samples, height = size[1] * samples, newRowBytes = (width + 7) / 8;
    std::vector<unsigned char> newBits(static_cast<std::size_t>(newRowBytes) * height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const int column = x / samples, byte = bits[y / samples * rowBytes + column / 8];
            if ((byte & 0x80 >> column % 8) != 0)
                newBits[y * newRowBytes + x / 8] |= 0x80 >> x % 8;
        }
    // The toolkit forgets no marker, so none is made twice.
    static std::map<std::pair<int, std::vector<unsigned char>>, int> made;
    const auto [found, isNew] = made.emplace(std::pair(width, newBits), SoMarkerSet::getNumDefinedMarkers());
    if (isNew)
        SoMarkerSet::addMarker(found->second, SbVec2s(static_cast<short>(width), static_cast<short>(height)),
                               newBits.data(), FALSE, FALSE);
    return found->second;
}

template <class MarkerSet>
NodePtr<SoNode> withLargeMarkers(const SoNode *node, int samples) {
    NodePtr<MarkerSet> copy(static_cast<MarkerSet *>(node->copy()));
    copy->ref();
    SoMFInt32 &indices = copy->markerIndex;
    std::map<int, int> large;
    std::vector<int> values(indices.getValues(0), indices.getValues(0) + indices.getNum());
    for (int &value : values) {
        const auto [found, isNew] = large.emplace(value, value);
        if (isNew)
            found->second = largeMarker(value, samples);
        value = found->second;
    }
    indices.setValues(0, static_cast<int>(values.size()), values.data());
    return copy;
}

/// Without the file's name, so that it is not read once more.
NodePtr<SoNode> largeImage(const SoImage &image, int samples) {
    NodePtr<SoImage> large(new SoImage);
    large->ref();
    large->image = image.image;
    large->horAlignment = image.horAlignment;
    large->vertAlignment = image.vertAlignment;
    SbVec2s size;
    int components = 0;
    image.image.getValue(size, components);
    const auto side = [samples](const SoSFInt32 &wanted, int own) {
        return samples * (wanted.getValue() > 0 ? wanted.getValue() : own);
    };
    large->width = side(image.width, size[0]);
    large->height = side(image.height, size[1]);
    return large;
}

NodePtr<SoNode> withLargeFont(SoNode *text, const SbName &fontName, float fontSize, int samples) {
    auto *const font = new SoFont;
    // The built-in font has small sizes only; pages show it as Courier, too.
    font->name = fontName == "defaultFont" ? "Courier" : fontName;
    font->size = fontSize * static_cast<float>(samples);
    auto *const separator = new SoSeparator;
    separator->ref();
    separator->addChild(font);
    separator->addChild(text);
    return NodePtr<SoNode>(separator);
}

/// A node that is drawn pixel by pixel, where a rendering meets it.
struct PixelShape {
    SoGroup *parent;
    SoNode *node;
    SbName fontName;
    float fontSize;

    bool operator<(const PixelShape &other) const {
        return std::pair(parent, node) < std::pair(other.parent, other.node);
    }
    NodePtr<SoNode> enlarged(int samples) const {
        if (node->isOfType(SoText2::getClassTypeId()))
            return withLargeFont(node, fontName, fontSize, samples);
        if (node->isOfType(SoImage::getClassTypeId()))
            return largeImage(*static_cast<SoImage *>(node), samples);
        return node->isOfType(SoMarkerSet::getClassTypeId())
                   ? withLargeMarkers<SoMarkerSet>(node, samples)
                   : withLargeMarkers<SoIndexedMarkerSet>(node, samples);
    }
};

/// What a rendering meets that is measured in pixels.
struct PixelNodes {
    std::set<SoDrawStyle *> styles;
    std::set<PixelShape> shapes;

    static SoCallbackAction::Response add(void *nodes, SoCallbackAction *action, const SoNode *) {
        auto *const found = static_cast<PixelNodes *>(nodes);
        const auto *const path = static_cast<const SoFullPath *>(action->getCurPath());
        SoNode *const node = path->getTail(), *const parent = path->getNodeFromTail(1);
        if (node->isOfType(SoDrawStyle::getClassTypeId()))
            found->styles.insert(static_cast<SoDrawStyle *>(node));
        else if (parent->isOfType(SoGroup::getClassTypeId()))
            found->shapes.insert(
                {static_cast<SoGroup *>(parent), node, action->getFontName(), action->getFontSize()});
        return SoCallbackAction::CONTINUE;
    }
};

PixelNodes pixelNodesOf(SoNode *scene, const SbViewportRegion &region) {
    PixelNodes found;
    SoCallbackAction action(region);
    for (const SoType type :
         {SoDrawStyle::getClassTypeId(), SoText2::getClassTypeId(), SoImage::getClassTypeId(),
          SoMarkerSet::getClassTypeId(), SoIndexedMarkerSet::getClassTypeId()})
        action.addPreCallback(type, PixelNodes::add, &found);
    action.apply(scene);
    return found;
}

} // namespace

class EnlargedPixels::Style {
public:
    Style(SoDrawStyle &style, int samples)
        : m_lineWidth(style.lineWidth, enlarged(style.lineWidth, samples)),
          m_pointSize(style.pointSize, enlarged(style.pointSize, samples)),
          m_patternScale(style.linePatternScaleFactor, style.linePatternScaleFactor.getValue() * samples) {}

private:
    ScaledField<SoSFFloat, float> m_lineWidth;
    ScaledField<SoSFFloat, float> m_pointSize;
    ScaledField<SoSFInt32, int> m_patternScale;
};

/// Puts another node in the place of a shape for as long as it lives, in silence.
class EnlargedPixels::StandIn {
public:
    StandIn(const PixelShape &shape, int samples)
        : m_parent(shape.parent), m_shape(shape.node), m_standIn(shape.enlarged(samples)) {
        m_parent->ref();
        m_shape->ref();
        exchange(m_shape.get(), m_standIn.get());
    }
    ~StandIn() { exchange(m_standIn.get(), m_shape.get()); }
    StandIn(const StandIn &) = delete;
    StandIn &operator=(const StandIn &) = delete;

private:
    void exchange(SoNode *from, SoNode *to) {
        const SbBool notified = m_parent->enableNotify(FALSE);
        for (int at = m_parent->findChild(from); at >= 0; at = m_parent->findChild(from))
            m_parent->replaceChild(at, to);
        m_parent->enableNotify(notified);
    }

    NodePtr<SoGroup> m_parent;
    NodePtr<SoNode> m_shape, m_standIn;
};

EnlargedPixels::EnlargedPixels(SoNode *scene, const SbViewportRegion &region, int samples) {
    if (samples == 1)
        return;
    const PixelNodes found = pixelNodesOf(scene, region);
    for (SoDrawStyle *style : found.styles)
        m_styles.push_back(std::make_unique<Style>(*style, samples));
    for (const PixelShape &shape : found.shapes)
        m_standIns.push_back(std::make_unique<StandIn>(shape, samples));
}

EnlargedPixels::~EnlargedPixels() = default;

} // namespace oravane
