#include "tools/HeadlessRenderer.h"

#include "tools/EglContext.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoFullPath.h>
#include <Inventor/SoOffscreenRenderer.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoImage.h>
#include <Inventor/nodes/SoIndexedMarkerSet.h>
#include <Inventor/nodes/SoMarkerSet.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoText2.h>

#include <algorithm>
#include <map>
#include <set>
#include <stdexcept>
#include <utility>

namespace oravane {

namespace {

constexpr int largestSide = 32767; // sides of a viewport are shorts

struct Unref {
    void operator()(SoNode *node) const { node->unref(); }
};
template <class Node>
using NodePtr = std::unique_ptr<Node, Unref>;

template <class Node>
NodePtr<Node> copyOf(const SoNode *node) {
    NodePtr<Node> copy(static_cast<Node *>(node->copy()));
    copy->ref();
    return copy;
}

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

class ScaledDrawStyle {
public:
    ScaledDrawStyle(SoDrawStyle &style, int samples)
        : m_lineWidth(style.lineWidth, enlarged(style.lineWidth, samples)),
          m_pointSize(style.pointSize, enlarged(style.pointSize, samples)),
          m_patternScale(style.linePatternScaleFactor, style.linePatternScaleFactor.getValue() * samples) {}

private:
    ScaledField<SoSFFloat, float> m_lineWidth;
    ScaledField<SoSFFloat, float> m_pointSize;
    ScaledField<SoSFInt32, int> m_patternScale;
};

/// The index of a marker like that of this index, `samples` times as large.
int largeMarker(int index, int samples) {
    SbVec2s size;
    const unsigned char *bits = nullptr;
    SbBool isLowBitFirst = FALSE; // never so
    if (!SoMarkerSet::getMarker(index, size, bits, isLowBitFirst) || bits == nullptr)
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
    auto copy = copyOf<MarkerSet>(node);
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

NodePtr<SoNode> largeImage(const SoNode *node, int samples) {
    auto copy = copyOf<SoImage>(node);
    SbVec2s size;
    int components = 0;
    copy->image.getValue(size, components);
    for (const auto &[field, own] : {std::pair(&copy->width, size[0]), std::pair(&copy->height, size[1])})
        if (const int side = field->getValue() > 0 ? field->getValue() : own; side > 0)
            field->setValue(side * samples);
    return copy;
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
            return largeImage(node, samples);
        return node->isOfType(SoMarkerSet::getClassTypeId())
                   ? withLargeMarkers<SoMarkerSet>(node, samples)
                   : withLargeMarkers<SoIndexedMarkerSet>(node, samples);
    }
};

/// Puts another node in the place of a shape for as long as it lives, in silence.
class StandIn {
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

/// The traversal also has every kit make its parts first: there are such nodes among them.
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

/// Averages blocks of samples x samples pixels, and turns the rows over: the toolkit gives the lowest first.
Picture reduce(const unsigned char *pixels, int width, int height, int samples) {
    Picture picture{width, height, std::vector<unsigned char>(static_cast<std::size_t>(3) * width * height)};
    const unsigned int count = static_cast<unsigned int>(samples) * samples;
    std::vector<unsigned int> sums(static_cast<std::size_t>(3) * width);
    for (int y = height - 1; y >= 0; --y) {
        std::fill(sums.begin(), sums.end(), count / 2);
        for (int row = 0; row < samples; ++row)
            for (std::size_t i = 0; i < sums.size(); i += 3)
                for (int column = 0; column < samples; ++column, pixels += 3)
                    for (int c = 0; c < 3; ++c)
                        sums[i + c] += pixels[c];
        std::transform(sums.begin(), sums.end(),
                       picture.rgb.begin() + static_cast<std::ptrdiff_t>(sums.size()) * y,
                       [count](unsigned int sum) { return static_cast<unsigned char>(sum / count); });
    }
    return picture;
}

} // namespace

HeadlessRenderer::HeadlessRenderer(int samples) : m_samples(std::clamp(samples, 1, 8)) {
    useEglForOffscreenRendering();
    m_renderer = std::make_unique<SoOffscreenRenderer>(SbViewportRegion(1, 1));
    m_renderer->setComponents(SoOffscreenRenderer::RGB);
    m_renderer->getGLRenderAction()->setTransparencyType(SoGLRenderAction::SORTED_OBJECT_BLEND);
    // Without it, lines at an angle are thinner than those along the axes.
    m_renderer->getGLRenderAction()->setSmoothing(TRUE);
}

HeadlessRenderer::~HeadlessRenderer() = default;

Picture HeadlessRenderer::render(SoNode *scene, int width, int height) {
    if (scene == nullptr)
        throw std::runtime_error("cannot render: there is no scene");
    if (width < 1 || height < 1 || width > largestSide / m_samples || height > largestSide / m_samples)
        throw std::runtime_error("cannot render: a picture of " + std::to_string(width) + " x " +
                                 std::to_string(height) + " pixels is not possible");
    const NodePtr<SoSeparator> root(new SoSeparator);
    root->ref();
    root->renderCaching = SoSeparator::OFF;
    root->addChild(new SoDrawStyle);
    root->addChild(scene);

    const SbViewportRegion region(static_cast<short>(width * m_samples),
                                  static_cast<short>(height * m_samples));
    std::vector<std::unique_ptr<ScaledDrawStyle>> styles;
    std::vector<std::unique_ptr<StandIn>> standIns;
    if (m_samples > 1) {
        const PixelNodes found = pixelNodesOf(root.get(), region);
        for (SoDrawStyle *style : found.styles)
            styles.push_back(std::make_unique<ScaledDrawStyle>(*style, m_samples));
        for (const PixelShape &shape : found.shapes)
            standIns.push_back(std::make_unique<StandIn>(shape, m_samples));
    }

    m_renderer->setViewportRegion(region);
    m_renderer->setBackgroundColor(m_background);
    if (!m_renderer->render(root.get()) || m_renderer->getBuffer() == nullptr)
        throw std::runtime_error("cannot render: no graphics context (are the packages libegl1, libegl-mesa0 "
                                 "and libgl1-mesa-dri installed?)");
    return reduce(m_renderer->getBuffer(), width, height, m_samples);
}

} // namespace oravane
