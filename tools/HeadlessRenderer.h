#ifndef ORAVANE_TOOLS_HEADLESSRENDERER_H
#define ORAVANE_TOOLS_HEADLESSRENDERER_H

#include "tools/Picture.h"

#include <Inventor/SbColor.h>

#include <memory>

class SoNode;
class SoOffscreenRenderer;

namespace oravane {

/// Renders scenes to pictures without a window, an X server or a graphics card (EGL surfaceless). Make one
/// and reuse it: each new one costs a graphics context.
///
/// \code
///   oravane::HeadlessRenderer renderer;
///   oravane::writePng("terrain.png", renderer.render(scene, 800, 600));
/// \endcode
///
/// The scene needs a camera and its lights. Edges are smoothed by rendering `samples` times as large in both
/// directions and averaging. What is measured in pixels keeps its size: for the time of the picture line
/// widths, point sizes and line patterns are changed in the `SoDrawStyle` nodes, and `SoText2`, `SoImage` and
/// the sets of markers are replaced by larger ones, both without notification; a path that the program holds
/// to one of these four then ends at its parent. Without FreeType the largest font of `SoText2` is about 30
/// pixels, and texts shrink.
class HeadlessRenderer {
public:
    /// `samples` 1 to 8; 1 is no smoothing. The toolkit has to be up (`PoBase::init()`). From the first
    /// renderer on, all off-screen rendering of the process goes the same way.
    explicit HeadlessRenderer(int samples = 4);
    ~HeadlessRenderer();
    HeadlessRenderer(const HeadlessRenderer &) = delete;
    HeadlessRenderer &operator=(const HeadlessRenderer &) = delete;

    void setBackground(const SbColor &color) { m_background = color; }

    /// A picture of `width` x `height` pixels. Kits are brought up to date first. Throws `std::runtime_error`
    /// with one line when there is no scene, the size is not 1 to 32767 / samples, or no graphics context
    /// can be made.
    Picture render(SoNode *scene, int width, int height);

private:
    int m_samples;
    SbColor m_background{1.0f, 1.0f, 1.0f};
    std::unique_ptr<SoOffscreenRenderer> m_renderer;
};

} // namespace oravane

#endif
