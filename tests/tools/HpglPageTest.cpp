// hp2xx, a program of its own, draws pages in HP-GL/2 as the renderer shows the scenes.
#include "tools/HeadlessRenderer.h"
#include "vectorize/PageFixture.h"

#include <oravane/SoVectorizeHPGLAction.h>

#include <map>
#include <tuple>

namespace {

using namespace oravane_test;
using oravane::Picture;

constexpr int PIXELS = 300; ///< one for each nominal width of the drawing

const std::string kFills = "Separator { BaseColor { rgb 1 0 0 } Translation { translation -0.5 0.5 0 } "
                           "RotationXYZ { axis X angle 0.6 } Cube { width .5 height .5 depth .5 } } "
                           "Separator { BaseColor { rgb 0 0 1 } Translation { translation 0.5 0.5 -0.3 } "
                           "Sphere { radius 0.3 } } ";
const std::string kWideLine = "BaseColor { rgb 0 1 0 } DrawStyle { lineWidth 20 } "
                              "Coordinate3 { point [ -.9 -.5 0, 0 -.5 0, 1.9 .3 0 ] } LineSet { } ";

/// The drawing fills the page.
std::string hpglPage(SoNode *scene) {
    SoVectorizeHPGLAction action;
    const float size = PIXELS * action.getNominalWidth(SoVectorizeAction::MILLIMETER);
    action.setDrawingDimensions(size, size, SoVectorizeAction::MILLIMETER);
    action.setStartPosition(0, 0, SoVectorizeAction::MILLIMETER);
    action.setBorder(0);
    action.setColorTranslationMethod(SoVectorizeAction::KEEP_COLORS);
    action.setBackgroundColor(1, SbColor(1, 1, 1));
    return pageOf(action, scene);
}

struct Agreement {
    int different = 0;
    std::map<unsigned, int> seen; ///< pixels of each colour of the rendering
};

/// Compares where the rendering has one colour for `around` pixels around; what is printed may be larger by
/// an equal margin on all sides.
Agreement compare(const Picture &rendered, const Picture &printed, int around) {
    Agreement result;
    const int margin = (printed.width - PIXELS) / 2, side = 2 * around + 1;
    for (int y = around; y < PIXELS - around; ++y) {
        for (int x = around; x < PIXELS - around; ++x) {
            const auto color = rendered.at(x, y);
            int k = 0;
            while (k < side * side && rendered.at(x - around + k % side, y - around + k / side) == color)
                ++k;
            if (k < side * side)
                continue;
            ++result.seen[color[0] << 16 | color[1] << 8 | color[2]];
            result.different += printed.at(x + margin, y + margin) != color;
        }
    }
    return result;
}

TEST(HpglPage, Hp2xxDrawsIt) {
    if (std::system("command -v hp2xx > /dev/null") != 0)
        GTEST_SKIP() << "hp2xx is not installed";
    oravane::HeadlessRenderer renderer;
    for (const auto &[nodes, color, least] : // its fills are strokes of the widest pen
         {std::tuple(kFills, 0xFF0000u, 6000), {kWideLine, 0x00FF00u, 2000}}) {
        const Scene scene(view("LightModel { model BASE_COLOR } " + nodes));
        const TemporaryFile page(".plt"), png(".png"), log(".log");
        std::ofstream(page.path(), std::ios::binary) << hpglPage(scene);
        const std::string command = "hp2xx -t -d 72 -m png -f " + png.path() + " " + page.path() +
                                    " < /dev/null > " + log.path() + " 2>&1";
        EXPECT_EQ(std::system(command.c_str()), 0);
        const std::string said = readFile(log.path());
        EXPECT_EQ(count(said, "Unexpected event(s):  0\n"), 1) << said;
        EXPECT_EQ(count(said, "HPGL command(s) ignored: 1\n") + count(said, "TR: ignored"), 2) << said;
        Agreement all = compare(renderer.render(scene, PIXELS, PIXELS), oravane::readPng(png.path()), 4);
        EXPECT_GT(all.seen[color], least);
        EXPECT_LT(all.different, 10);
    }
}

} // namespace
