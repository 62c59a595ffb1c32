#ifndef ORAVANE_SCENELIGHTS_H
#define ORAVANE_SCENELIGHTS_H

#include "vectorize/PageLighting.h"

#include <memory>
#include <vector>

class SoLight;
class SoState;
class SoVRMLLight;

namespace oravane {

/// The lights of a traversal. Those of VRML are no `SoLight` and reach the state in rendering only: they
/// enter it as lights of the toolkit's own.
class SceneLights {
public:
    /// For a node that is met now.
    void add(SoState *state, const SoVRMLLight &node);

    /// Fills `lights` with those of the state that are on, in view coordinates.
    void read(SoState *state, std::vector<Light> &lights) const;

private:
    struct Unref {
        void operator()(SoLight *light) const;
    };
    struct Converted {
        std::unique_ptr<SoLight, Unref> light;
        SbVec3f attenuation;
    };
    std::vector<Converted> m_converted;
};

} // namespace oravane

#endif
