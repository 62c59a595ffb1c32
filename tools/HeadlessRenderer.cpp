#include "tools/HeadlessRenderer.h"

#include "tools/EglContext.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoOffscreenRenderer.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <set>
#include <stdexcept>

namespace oravane {

namespace {

constexpr int largestSide = 32767; // sides of a viewport are shorts

struct Unref {
    void operator()(SoNode *node) const { node->unref(); }
};

/// The draw styles that a rendering meets. The traversal also has every kit make its parts first: there are
/// draw styles among them.
std::set<SoDrawStyle *> drawStylesOf(SoNode *scene, const SbViewportRegion &region) {
    std::set<SoDrawStyle *> found;
    SoCallbackAction action(region);
    action.addPreCallback(
        SoDrawStyle::getClassTypeId(),
        [](void *styles, SoCallbackAction *, const SoNode *node) {
            auto *const style = const_cast<SoNode *>(node);
            static_cast<std::set<SoDrawStyle *> *>(styles)->insert(static_cast<SoDrawStyle *>(style));
            return SoCallbackAction::CONTINUE;
        },
        &found);
    action.apply(scene);
    return found;
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

/// Averages blocks of samples x samples pixels, and turns the rows over: the toolkit gives the lowest first.
Picture reduce(const unsigned char *pixels, int width, int height, int samples) {
    Picture picture{width, height, std::vector<unsigned char>(static_cast<std::size_t>(3) * width * height)};
    const std::size_t rowLength = static_cast<std::size_t>(3) * width * samples;
    const unsigned int count = static_cast<unsigned int>(samples) * samples;
    std::vector<unsigned int> sums(static_cast<std::size_t>(3) * width);
    for (int y = 0; y < height; ++y) {
        std::fill(sums.begin(), sums.end(), 0U);
        for (int row = 0; row < samples; ++row) {
            const unsigned char *const line =
                pixels + rowLength * (static_cast<std::size_t>(y) * samples + row);
            for (std::size_t i = 0; i < rowLength; ++i)
                sums[i / (3 * static_cast<std::size_t>(samples)) * 3 + i % 3] += line[i];
        }
        unsigned char *const out =
            picture.rgb.data() + sums.size() * static_cast<std::size_t>(height - 1 - y);
        for (std::size_t i = 0; i < sums.size(); ++i)
            out[i] = static_cast<unsigned char>((sums[i] + count / 2) / count);
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
    const std::unique_ptr<SoSeparator, Unref> root(new SoSeparator);
    root->ref();
    root->renderCaching = SoSeparator::OFF;
    root->addChild(new SoDrawStyle);
    root->addChild(scene);

    const SbViewportRegion region(static_cast<short>(width * m_samples),
                                  static_cast<short>(height * m_samples));
    std::vector<std::unique_ptr<ScaledDrawStyle>> scaled;
    if (m_samples > 1)
        for (SoDrawStyle *style : drawStylesOf(root.get(), region))
            scaled.push_back(std::make_unique<ScaledDrawStyle>(*style, m_samples));

    m_renderer->setViewportRegion(region);
    m_renderer->setBackgroundColor(m_background);
    if (!m_renderer->render(root.get()) || m_renderer->getBuffer() == nullptr)
        throw std::runtime_error("cannot render: no graphics context (are the packages libegl1, libegl-mesa0 "
                                 "and libgl1-mesa-dri installed?)");
    return reduce(m_renderer->getBuffer(), width, height, m_samples);
}

} // namespace oravane
