#ifndef ORAVANE_PAGELIGHTING_H
#define ORAVANE_PAGELIGHTING_H

#include <Inventor/SbColor.h>
#include <Inventor/SbVec3f.h>

#include <optional>
#include <span>

namespace oravane {

/// A light source in view coordinates.
struct Light {
    enum Kind { DIRECTIONAL = 0, POINT = 1, SPOT = 2 };

    Kind kind = DIRECTIONAL;
    float intensity = 1;
    SbColor color{1, 1, 1};
    SbVec3f direction{0, 0, -1}; ///< in which the light goes, of unit length
    SbVec3f position{0, 0, 0};
    float dropOffRate = 0;
    float cutOffAngle = 0;              ///< radians
    std::optional<SbVec3f> attenuation; ///< instead of the environment's
};

/// What lights surfaces beside the light sources.
struct LightEnvironment {
    SbColor ambient{0, 0, 0};     ///< colour times intensity
    SbVec3f attenuation{1, 0, 0}; ///< factors of 1, d and d^2, d being the distance from the light
    bool isTwoSided = false;
};

struct LightMaterial {
    SbColor ambient, diffuse, specular, emission;
    float shininess;
};

/// Colour of a surface point seen from far along +z, by the model of B. Phong (1975) with single light
/// contributions; each channel is at most 1. All vectors are in view coordinates; `normal` has unit length.
SbColor litColor(const LightMaterial &material, const SbVec3f &point, const SbVec3f &normal,
                 std::span<const Light> lights, const LightEnvironment &environment);

} // namespace oravane

#endif
