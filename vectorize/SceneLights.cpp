#include "vectorize/SceneLights.h"

#include <Inventor/SbMatrix.h>
#include <Inventor/VRMLnodes/SoVRMLDirectionalLight.h>
#include <Inventor/VRMLnodes/SoVRMLPointLight.h>
#include <Inventor/VRMLnodes/SoVRMLSpotLight.h>
#include <Inventor/elements/SoLightElement.h>
#include <Inventor/elements/SoModelMatrixElement.h>
#include <Inventor/elements/SoViewingMatrixElement.h>
#include <Inventor/lists/SoNodeList.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoPointLight.h>
#include <Inventor/nodes/SoSpotLight.h>

#include <algorithm>

namespace oravane {

namespace {

template <class Node>
const Node *as(const SoNode &node) {
    return node.isOfType(Node::getClassTypeId()) ? static_cast<const Node *>(&node) : nullptr;
}

Light lightOf(const SoLight &node, const SbMatrix &toView) {
    Light light;
    light.intensity = node.intensity.getValue();
    light.color = node.color.getValue();
    if (const auto *directional = as<SoDirectionalLight>(node)) {
        light.direction = directional->direction.getValue();
    } else if (const auto *point = as<SoPointLight>(node)) {
        light.kind = Light::POINT;
        light.position = point->location.getValue();
    } else if (const auto *spot = as<SoSpotLight>(node)) {
        light.kind = Light::SPOT;
        light.direction = spot->direction.getValue();
        light.position = spot->location.getValue();
        light.dropOffRate = spot->dropOffRate.getValue();
        light.cutOffAngle = spot->cutOffAngle.getValue();
    }
    toView.multVecMatrix(light.position, light.position);
    toView.multDirMatrix(light.direction, light.direction);
    if (light.direction.length() > 0)
        light.direction.normalize();
    return light;
}

SoLight *converted(const SoVRMLLight &node) {
    if (const auto *directional = as<SoVRMLDirectionalLight>(node)) {
        auto *light = new SoDirectionalLight;
        light->direction = directional->direction.getValue();
        return light;
    }
    if (const auto *point = as<SoVRMLPointLight>(node)) {
        auto *light = new SoPointLight;
        light->location = point->location.getValue();
        return light;
    }
    const auto *spot = as<SoVRMLSpotLight>(node);
    if (!spot)
        return nullptr;
    auto *light = new SoSpotLight;
    light->location = spot->location.getValue();
    light->direction = spot->direction.getValue();
    light->cutOffAngle = spot->cutOffAngle.getValue();
    light->dropOffRate = 0; // a rendering lets its beam width be
    return light;
}

SbVec3f attenuationOf(const SoVRMLLight &node) {
    if (const auto *point = as<SoVRMLPointLight>(node))
        return point->attenuation.getValue();
    if (const auto *spot = as<SoVRMLSpotLight>(node))
        return spot->attenuation.getValue();
    return SbVec3f(1, 0, 0);
}

} // namespace

void SceneLights::Unref::operator()(SoLight *light) const {
    light->unref();
}

void SceneLights::add(SoState *state, const SoVRMLLight &node) {
    SoLight *light = node.on.getValue() ? converted(node) : nullptr;
    if (!light)
        return;
    light->ref();
    light->intensity = node.intensity.getValue();
    light->color = node.color.getValue();
    m_converted.push_back({std::unique_ptr<SoLight, Unref>(light), attenuationOf(node)});
    SbMatrix toView = SoModelMatrixElement::get(state);
    toView.multRight(SoViewingMatrixElement::get(state));
    SoLightElement::add(state, light, toView);
}

void SceneLights::read(SoState *state, std::vector<Light> &lights) const {
    const SoNodeList &nodes = SoLightElement::getLights(state);
    lights.clear();
    for (int i = 0; i < nodes.getLength(); ++i) {
        const auto &node = *static_cast<const SoLight *>(nodes[i]);
        if (!node.on.getValue())
            continue;
        lights.push_back(lightOf(node, SoLightElement::getMatrix(state, i)));
        const auto own =
            std::ranges::find(m_converted, &node, [](const Converted &c) { return c.light.get(); });
        if (own != m_converted.end())
            lights.back().attenuation = own->attenuation;
    }
}

} // namespace oravane
