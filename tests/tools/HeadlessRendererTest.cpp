#include "tools/HeadlessRenderer.h"

#include "TemporaryFolder.h"
#include "TestScene.h"

#include <Inventor/sensors/SoNodeSensor.h>

#include <gtest/gtest.h>

#include <set>

using oravane::HeadlessRenderer;
using oravane::Picture;

namespace {

using Pixel = std::array<unsigned char, 3>;

constexpr Pixel white{255, 255, 255};
constexpr Pixel red{255, 0, 0};

/// A scene of 2 x 2 units around the origin, unlit, seen from the front.
test::Ref<SoSeparator> makeScene(const std::string &nodes) {
    return test::readBack("#Inventor V2.1 ascii\n"
                          "Separator { LightModel { model BASE_COLOR } BaseColor { rgb 1 0 0 }\n"
                          "OrthographicCamera { position 0 0 5 height 2 nearDistance 1 farDistance 9 }\n" +
                          nodes + "}");
}

std::set<Pixel> pixelsOf(const Picture &picture) {
    std::set<Pixel> pixels;
    for (int k = 0; k < picture.width * picture.height; ++k)
        pixels.insert(picture.at(k % picture.width, k / picture.width));
    return pixels;
}

TEST(HeadlessRenderer, DrawsTheSceneOverTheBackgroundTopRowFirst) {
    const auto cube = makeScene("Translation { translation 0 0.5 0 } Cube { width 1 height 0.8 depth 1 }");
    HeadlessRenderer renderer;
    const Picture picture = renderer.render(cube.get(), 60, 40);
    ASSERT_EQ(std::pair(picture.width, picture.height), std::pair(60, 40));
    EXPECT_EQ(picture.at(30, 10), red) << "the upper half";
    EXPECT_EQ(picture.at(30, 30), white) << "the lower half";
    EXPECT_EQ(picture.at(0, 0), white);
    renderer.setBackground(SbColor(0, 0, 1));
    const Picture again = renderer.render(cube.get(), 300, 300); // larger, with the same renderer
    EXPECT_EQ(again.at(0, 0), (Pixel{0, 0, 255}));
    EXPECT_EQ(again.at(150, 75), red);
}

TEST(HeadlessRenderer, SmoothsEdgesOnlyWithSamples) {
    const auto turned = makeScene("RotationXYZ { axis Z angle 0.3 } Cube { width 1 height 1 depth 1 }");
    EXPECT_EQ(pixelsOf(HeadlessRenderer(1).render(turned.get(), 50, 50)), (std::set<Pixel>{white, red}));
    EXPECT_GT(pixelsOf(HeadlessRenderer(4).render(turned.get(), 50, 50)).size(), 8U);
}

TEST(HeadlessRenderer, WhatIsMeasuredInPixelsKeepsItsSizeAndTheSceneItsNodes) {
    const std::string points = "Coordinate3 { point [-2 0.02 0, 2 0.02 0] }", line = points + "LineSet { }";
    const std::string kit = "ShapeKit { shape LineSet { } coordinate3 " + points +
                            "appearance AppearanceKit { drawStyle DrawStyle { lineWidth 3 } } }";
    const std::string rows[] = {
        line,
        "DrawStyle { lineWidth 5 linePattern 0xF0F0 }" + line,
        kit,
        "DrawStyle { pointSize 7 } PointSet { }",
        "DEF both MarkerSet { markerIndex 69 } Translation { translation 0.5 0.5 0 } USE both ",
        "IndexedMarkerSet { coordIndex 0 markerIndex 75 }",
        "ShapeKit { shape MarkerSet { markerIndex 70 } }",
        "Image { width 20 image 2 2 1 0 0 0 0 }",
        "Font { size 14 } Text2 { string \"HHH\" justification CENTER }",
    };
    HeadlessRenderer plain(1), smooth(2);
    for (const std::string &row : rows) {
        const auto scene = makeScene(row);
        const auto ink = [&scene](HeadlessRenderer &renderer) {
            double sum = 0;
            for (const unsigned char level : renderer.render(scene.get(), 50, 50).rgb)
                sum += 255 - level;
            return sum / 255;
        };
        const std::string before = test::written(scene.get());
        int changes = 0;
        SoNodeSensor sensor([](void *count, SoSensor *) { ++*static_cast<int *>(count); }, &changes);
        sensor.setPriority(0);
        sensor.attach(scene.get());
        const double drawn = ink(plain);
        EXPECT_GT(drawn, 10) << row;
        const bool isText = &row == std::end(rows) - 1; // large letters are thinner
        EXPECT_NEAR(ink(smooth), drawn, (isText ? 0.6 : 0.25) * drawn) << row;
        EXPECT_EQ(test::written(scene.get()), before);
        EXPECT_EQ(changes, 0) << "whoever watches the scene is not disturbed: " << row;
    }
}

TEST(HeadlessRenderer, RefusesWhatCannotBeDrawn) {
    const auto empty = makeScene("");
    HeadlessRenderer renderer(4);
    EXPECT_EQ(refusalOf([&] { renderer.render(nullptr, 10, 10); }), "cannot render: there is no scene");
    for (const int width : {0, 8192})
        EXPECT_EQ(refusalOf([&] { renderer.render(empty.get(), width, 10); }),
                  "cannot render: a picture of " + std::to_string(width) + " x 10 pixels is not possible");
    EXPECT_EQ(pixelsOf(renderer.render(empty.get(), 10, 10)), std::set<Pixel>{white});
}

} // namespace
