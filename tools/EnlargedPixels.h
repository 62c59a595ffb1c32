#ifndef ORAVANE_TOOLS_ENLARGEDPIXELS_H
#define ORAVANE_TOOLS_ENLARGEDPIXELS_H

#include <Inventor/nodes/SoNode.h>

#include <memory>
#include <vector>

class SbViewportRegion;

namespace oravane {

struct Unref {
    void operator()(SoNode *node) const { node->unref(); }
};
template <class Node>
using NodePtr = std::unique_ptr<Node, Unref>;

/// Makes all of a scene that is measured in pixels `samples` times as large for as long as it lives: line
/// widths, point sizes and line patterns by changing the `SoDrawStyle` nodes; `SoText2`, `SoImage`,
/// `SoMarkerSet` and `SoIndexedMarkerSet` by putting others in their places. Whoever watches the scene is not
/// told. The scene is traversed with the region first, which has every kit make its parts.
class EnlargedPixels {
public:
    EnlargedPixels(SoNode *scene, const SbViewportRegion &region, int samples);
    ~EnlargedPixels();
    EnlargedPixels(const EnlargedPixels &) = delete;
    EnlargedPixels &operator=(const EnlargedPixels &) = delete;

private:
    class Style;
    class StandIn;

    std::vector<std::unique_ptr<Style>> m_styles;
    std::vector<std::unique_ptr<StandIn>> m_standIns;
};

} // namespace oravane

#endif
