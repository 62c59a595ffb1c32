#include "vectorize/PageLighting.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using oravane::Light;
using oravane::LightEnvironment;
using oravane::LightMaterial;
using oravane::litColor;

const SbVec3f kOrigin(0, 0, 0), kTowardsViewer(0, 0, 1);

LightMaterial matt() {
    return {SbColor(0.2f, 0.2f, 0.2f), SbColor(1, 0.5f, 0.25f), SbColor(0, 0, 0), SbColor(0, 0, 0.1f), 0.2f};
}

void expectColor(const SbColor &color, float r, float g, float b) {
    EXPECT_NEAR(color[0], r, 1e-5);
    EXPECT_NEAR(color[1], g, 1e-5);
    EXPECT_NEAR(color[2], b, 1e-5);
}

TEST(PageLighting, AmbientAndDirectional) {
    LightEnvironment environment;
    environment.ambient = SbColor(0.5f, 0.5f, 1);
    expectColor(litColor(matt(), kOrigin, kTowardsViewer, {}, environment), 0.1f, 0.1f, 0.3f);
    Light light;
    light.intensity = 0.5f;
    light.direction.setValue(0, 0.6f, -0.8f);
    expectColor(litColor(matt(), kOrigin, kTowardsViewer, {&light, 1}, environment), 0.5f, 0.3f, 0.4f);
}

TEST(PageLighting, TheBackIsLitOnTwoSidedSurfacesOnly) {
    const Light light; // along -z
    LightEnvironment environment;
    expectColor(litColor(matt(), kOrigin, -kTowardsViewer, {&light, 1}, environment), 0, 0, 0.1f);
    environment.isTwoSided = true;
    expectColor(litColor(matt(), kOrigin, -kTowardsViewer, {&light, 1}, environment), 1, 0.5f, 0.35f);
}

TEST(PageLighting, PointLightFadesWithTheDistance) {
    Light light;
    light.kind = Light::POINT;
    light.position.setValue(0, 0, 2);
    LightEnvironment environment;
    environment.attenuation.setValue(1, 0.5f, 0.5f); // 1 + 1 + 2 at distance 2
    expectColor(litColor(matt(), kOrigin, kTowardsViewer, {&light, 1}, environment), 0.25f, 0.125f, 0.1625f);
    environment.attenuation.setValue(0, 0, 0);
    expectColor(litColor(matt(), kOrigin, kTowardsViewer, {&light, 1}, environment), 1, 0.5f, 0.35f);
    light.position = kOrigin; // at the point itself: no direction, no fault
    expectColor(litColor(matt(), kOrigin, kTowardsViewer, {&light, 1}, environment), 0, 0, 0.1f);
}

TEST(PageLighting, SpotLightHasAConeAndADropOff) {
    Light light;
    light.kind = Light::SPOT;
    light.position.setValue(0, 0, 1);
    light.cutOffAngle = 0.8f;
    light.dropOffRate = 1 / 128.0f;
    const LightEnvironment environment;
    expectColor(litColor(matt(), SbVec3f(0.75f, 0, 0), kTowardsViewer, {&light, 1}, environment), 0.8f, 0.4f,
                0.3f);
    expectColor(litColor(matt(), SbVec3f(2, 0, 0), kTowardsViewer, {&light, 1}, environment), 0, 0, 0.1f);
    expectColor(litColor(matt(), SbVec3f(0, 0, 2), kTowardsViewer, {&light, 1}, environment), 0, 0, 0.1f);
}

TEST(PageLighting, HighlightTowardsTheViewerAndNoChannelAboveOne) {
    LightMaterial shiny = matt();
    shiny.diffuse.setValue(0, 0, 0);
    shiny.specular.setValue(1, 0.5f, 0);
    shiny.shininess = 2 / 128.0f;
    Light light;
    light.direction.setValue(0.6f, 0, -0.8f);
    // The reflected ray's z is -0.8 + 2 * 0.8 = 0.8, squared 0.64.
    expectColor(litColor(shiny, kOrigin, kTowardsViewer, {&light, 1}, {}), 0.64f, 0.32f, 0.1f);
    const Light many[3] = {light, light, light};
    expectColor(litColor(shiny, kOrigin, kTowardsViewer, many, {}), 1, 0.96f, 0.1f);
}

} // namespace
