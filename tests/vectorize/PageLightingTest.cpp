#include "vectorize/PageLighting.h"

#include <gtest/gtest.h>

namespace {

using oravane::Light;
using oravane::LightEnvironment;
using oravane::LightMaterial;

const LightMaterial kMatt = {SbColor(0.2f, 0.2f, 0.2f), SbColor(1, 0.5f, 0.25f), SbColor(0, 0, 0),
                             SbColor(0, 0, 0.1f), 0.2f};
const SbColor kUnlit(0, 0, 0.1f), kFullyLit(1, 0.5f, 0.35f);

/// Lights a surface that faces the viewer, as a rule at the origin.
void expectColor(const SbColor &expected, std::span<const Light> lights,
                 const LightEnvironment &environment = {}, const SbVec3f &point = SbVec3f(0, 0, 0),
                 float normalZ = 1, const LightMaterial &material = kMatt) {
    const SbColor color = oravane::litColor(material, point, SbVec3f(0, 0, normalZ), lights, environment);
    EXPECT_TRUE(color.equals(expected, 1e-10f))
        << color.toString().getString() << ", not " << expected.toString().getString();
}

TEST(PageLighting, AmbientAndDirectional) {
    LightEnvironment environment;
    Light light; // along -z
    expectColor(kUnlit, {&light, 1}, environment, SbVec3f(0, 0, 0), -1);
    environment.isTwoSided = true;
    expectColor(kFullyLit, {&light, 1}, environment, SbVec3f(0, 0, 0), -1);
    environment.isTwoSided = false;
    environment.ambient = SbColor(0.5f, 0.5f, 1);
    expectColor(SbColor(0.1f, 0.1f, 0.3f), {}, environment);
    light.intensity = 0.5f;
    light.direction.setValue(0, 0.6f, -0.8f);
    expectColor(SbColor(0.5f, 0.3f, 0.4f), {&light, 1}, environment);
}

TEST(PageLighting, PointLightFadesWithTheDistance) {
    Light light;
    light.kind = Light::POINT;
    light.position.setValue(0, 0, 2);
    LightEnvironment environment;
    environment.attenuation.setValue(1, 0.5f, 0.5f); // 1 + 1 + 2 at distance 2
    expectColor(SbColor(0.25f, 0.125f, 0.1625f), {&light, 1}, environment);
    environment.attenuation.setValue(0, 0, 0);
    expectColor(kFullyLit, {&light, 1}, environment);
    expectColor(kUnlit, {&light, 1}, environment, light.position); // no direction, no fault
}

TEST(PageLighting, SpotLightHasAConeAndADropOff) {
    Light light;
    light.kind = Light::SPOT;
    light.position.setValue(0, 0, 1);
    light.cutOffAngle = 0.8f;
    light.dropOffRate = 1 / 128.0f;
    expectColor(SbColor(0.8f, 0.4f, 0.3f), {&light, 1}, {}, SbVec3f(0.75f, 0, 0));
    expectColor(kUnlit, {&light, 1}, {}, SbVec3f(2, 0, 0));
    expectColor(kUnlit, {&light, 1}, {}, SbVec3f(0, 0, 2));
}

TEST(PageLighting, HighlightTowardsTheViewerAndNoChannelAboveOne) {
    LightMaterial shiny = kMatt;
    shiny.diffuse.setValue(0, 0, 0);
    shiny.specular.setValue(1, 0.5f, 0);
    shiny.shininess = 2 / 128.0f;
    Light light;
    light.direction.setValue(0.6f, 0, -0.8f);
    // The reflected ray's z is -0.8 + 2 * 0.8 = 0.8, squared 0.64.
    expectColor(SbColor(0.64f, 0.32f, 0.1f), {&light, 1}, {}, SbVec3f(0, 0, 0), 1, shiny);
    const Light many[3] = {light, light, light};
    expectColor(SbColor(1, 0.96f, 0.1f), many, {}, SbVec3f(0, 0, 0), 1, shiny);
}

} // namespace
