#include "vectorize/PageLighting.h"

#include <algorithm>
#include <cmath>

namespace oravane {

namespace {

SbColor product(const SbColor &a, const SbColor &b) {
    return SbColor(a[0] * b[0], a[1] * b[1], a[2] * b[2]);
}

float attenuationFactor(const SbVec3f &coefficients, float distance) {
    const float sum = coefficients[2] * distance * distance + coefficients[1] * distance + coefficients[0];
    return sum > 0 ? 1 / sum : 1;
}

/// The part of a light that reaches a point, 0 outside of a spot's cone.
float reachFactor(const Light &light, const SbVec3f &point, const SbVec3f &attenuation) {
    if (light.kind == Light::DIRECTIONAL)
        return 1;
    SbVec3f toPoint = point - light.position;
    const float distance = toPoint.length();
    const float attenuated = attenuationFactor(light.attenuation.value_or(attenuation), distance);
    if (light.kind == Light::POINT)
        return attenuated;
    if (distance > 0)
        toPoint /= distance;
    const float s = toPoint.dot(light.direction);
    if (!(s > 0) || s < std::cos(light.cutOffAngle))
        return 0;
    return std::pow(s, light.dropOffRate * 128) * attenuated;
}

SbVec3f directionAt(const Light &light, const SbVec3f &point) {
    if (light.kind != Light::POINT)
        return light.direction;
    SbVec3f direction = point - light.position;
    if (direction.length() > 0)
        direction.normalize();
    return direction;
}

} // namespace

SbColor litColor(const LightMaterial &material, const SbVec3f &point, const SbVec3f &normal,
                 std::span<const Light> lights, const LightEnvironment &environment) {
    SbColor sum = material.emission + product(environment.ambient, material.ambient);
    for (const Light &light : lights) {
        const float reach = reachFactor(light, point, environment.attenuation);
        const SbColor shine = light.color * light.intensity;
        const SbVec3f direction = directionAt(light, point);
        const float c = direction.dot(normal);
        if (reach == 0 || (c >= 0 && !environment.isTwoSided))
            continue;
        sum += product(shine, material.diffuse) * (std::fabs(c) * reach);
        const float r = direction[2] - 2 * c * normal[2]; // z of the reflected ray
        if (r > 0)
            sum += product(shine, material.specular) * (std::pow(r, material.shininess * 128) * reach);
    }
    for (int k = 0; k < 3; ++k)
        sum[k] = std::isnan(sum[k]) ? 0.0f : std::min(sum[k], 1.0f);
    return sum;
}

} // namespace oravane
