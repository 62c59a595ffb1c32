// Pages in HP-GL/2 show what the renderer shows: as Ghostscript draws what our strict reader found in them,
// and as hp2xx, where it is installed, draws the pages themselves.
#include "tools/HeadlessRenderer.h"
#include "vectorize/HpglReader.h"
#include "vectorize/PageFixture.h"

#include <oravane/SoVectorizeHPGLAction.h>

#include <algorithm>
#include <array>
#include <cstdlib>
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
const std::string kLine = "Coordinate3 { point [ -.9 -.5 0, 0 -.5 0, 1.9 .3 0 ] } LineSet { } ";
const std::string kWideLine = "BaseColor { rgb 0 1 0 } DrawStyle { lineWidth 20 } " + kLine;
const std::string kDashedLine =
    "BaseColor { rgb 0 1 0 } DrawStyle { lineWidth 12 linePattern 0x00FF } " + kLine;

Scene sceneOf(const std::string &nodes) {
    return Scene(view("LightModel { model BASE_COLOR } " + nodes));
}

/// The drawing fills the page.
void prepare(SoVectorizeAction &action) {
    const float size = PIXELS * action.getNominalWidth(SoVectorizeAction::MILLIMETER);
    action.setDrawingDimensions(size, size, SoVectorizeAction::MILLIMETER);
    action.setStartPosition(0, 0, SoVectorizeAction::MILLIMETER);
    action.setBorder(0);
    action.setColorTranslationMethod(SoVectorizeAction::KEEP_COLORS);
    action.setBackgroundColor(1, SbColor(1, 1, 1));
}

std::string hpglPage(SoNode *scene) {
    SoVectorizeHPGLAction action;
    prepare(action);
    return pageOf(action, scene);
}

Picture picture(const TemporaryFile &file, const std::string &command) {
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    return oravane::readPng(file.path());
}

Picture ghostscript(const std::string &postScript) {
    const TemporaryFile page, png(".png");
    std::ofstream(page.path()) << postScript;
    const std::string size = std::to_string(4 * PIXELS);
    return picture(png, "gs -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=png16m -dDownScaleFactor=4 -r288 -g" +
                            size + "x" + size + " -o " + png.path() + " " + page.path());
}

/// What the strict reader found.
Picture drawn(const std::string &page) {
    const HpglReader read(page);
    EXPECT_EQ(read.error, "");
    return ghostscript(read.postScript);
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

TEST(HpglPage, FillsAndLinesAreTheRenderedOnes) {
    oravane::HeadlessRenderer renderer;
    for (const auto &[nodes, least] : {std::pair(kFills + kWideLine, 4000), {kDashedLine, 300}}) {
        const Scene scene = sceneOf(nodes);
        Agreement all = compare(renderer.render(scene, PIXELS, PIXELS), drawn(hpglPage(scene)), 2);
        EXPECT_GT(all.seen[0x00FF00], least) << "there is something to see";
        EXPECT_LT(all.different, 10);
    }
}

TEST(HpglPage, MarksStandWhereTheyAreRendered) {
    const Scene scene = sceneOf("BaseColor { rgb [ 1 0 0, 0 0 1 ] } MaterialBinding { value PER_VERTEX } "
                                "DrawStyle { pointSize 5 } Coordinate3 { point [ -.79 -.79 0, .81 .41 0 ] } "
                                "PointSet { } ");
    oravane::HeadlessRenderer renderer;
    const Picture rendered = renderer.render(scene, PIXELS, PIXELS), printed = drawn(hpglPage(scene));
    for (const auto &[x, y, channel] : {std::tuple(31, 268, 0), {271, 88, 2}})
        for (const Picture *picture : {&rendered, &printed}) {
            const auto color = picture->at(x, y);
            EXPECT_GT(color[channel], color[2 - channel] + 150) << x;
            EXPECT_GT(color[channel], color[1] + 150) << x;
        }
}

TEST(HpglPage, Hp2xxDrawsThePagesToo) {
    if (std::system("command -v hp2xx > /dev/null") != 0)
        GTEST_SKIP() << "hp2xx is not installed";
    oravane::HeadlessRenderer renderer;
    for (const auto &[nodes, color, least] : // its fills are strokes of the widest pen
         {std::tuple(kFills, 0xFF0000u, 6000), {kWideLine, 0x00FF00u, 2000}}) {
        const Scene scene = sceneOf(nodes);
        const TemporaryFile page(".plt"), png(".png"), log(".log");
        std::ofstream(page.path(), std::ios::binary) << hpglPage(scene);
        const Picture printed = picture(png, "hp2xx -t -d 72 -m png -f " + png.path() + " " + page.path() +
                                                 " < /dev/null > " + log.path() + " 2>&1");
        const std::string said = readFile(log.path());
        EXPECT_EQ(count(said, "Unexpected event(s):  0\n"), 1) << said;
        EXPECT_EQ(count(said, "HPGL command(s) ignored: 1\n") + count(said, "TR: ignored"), 2) << said;
        Agreement all = compare(renderer.render(scene, PIXELS, PIXELS), printed, 4);
        EXPECT_GT(all.seen[color], least);
        EXPECT_LT(all.different, 10);
    }
}

/// Left, top, right and bottom.
std::array<int, 4> inkOf(const Picture &picture) {
    std::array<int, 4> box{PIXELS, PIXELS, -1, -1};
    for (int y = 0; y < PIXELS; ++y)
        for (int x = 0; x < PIXELS; ++x)
            if (picture.at(x, y)[0] < 128)
                box = {std::min(box[0], x), std::min(box[1], y), std::max(box[2], x), std::max(box[3], y)};
    return box;
}

TEST(HpglPage, TextsStartAtTheirOrigin) {
    const auto sceneWith = [](const std::string &justification) {
        return sceneOf("Font { name \"Helvetica\" size 24 } BaseColor { rgb 0 0 1 } "
                       "Text2 { string \"Hill\" justification " +
                       justification + " }");
    };
    SoVectorizePSAction postScript;
    prepare(postScript);
    const auto expected = inkOf(ghostscript(pageOf(postScript, sceneWith("LEFT"))));
    EXPECT_NEAR(expected[0], PIXELS / 2 + 2, 1);
    const int drop = expected[3] - expected[1] + 1; // "right" stands half as high, "centre" below its origin
    for (const auto &[justification, dropped] :
         {std::pair("LEFT", 0), {"RIGHT", drop / 2}, {"CENTER", drop}}) {
        const auto ink = inkOf(drawn(hpglPage(sceneWith(justification))));
        for (int k = 0; k < 4; ++k)
            EXPECT_NEAR(ink[k], expected[k] + (k % 2) * dropped, 1) << justification << k;
    }
}

} // namespace
