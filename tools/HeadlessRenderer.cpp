#include "tools/HeadlessRenderer.h"

#include "tools/EglContext.h"
#include "tools/EnlargedPixels.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoOffscreenRenderer.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <stdexcept>

namespace oravane {

namespace {

constexpr int largestSide = 32767; // sides of a viewport are shorts

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
    const EnlargedPixels enlarged(root.get(), region, m_samples);
    m_renderer->setViewportRegion(region);
    m_renderer->setBackgroundColor(m_background);
    if (!m_renderer->render(root.get()) || m_renderer->getBuffer() == nullptr)
        throw std::runtime_error("cannot render: no graphics context (are the packages libegl1, libegl-mesa0 "
                                 "and libgl1-mesa-dri installed?)");
    return reduce(m_renderer->getBuffer(), width, height, m_samples);
}

} // namespace oravane
