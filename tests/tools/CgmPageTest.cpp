// A page in CGM shows what the renderer shows of the same scene.
#include "PageRaster.h"
#include "tools/HeadlessRenderer.h"
#include "vectorize/CgmInterpreter.h"
#include "vectorize/PageFixture.h"

#include <oravane/PiText.h>
#include <oravane/SoVectorizeCGMAction.h>

#include <cstdlib>

namespace {

using namespace oravane_test;
using oravane::Picture;

constexpr int PIXELS = 500; // of a drawing of 100 mm

/// Mean of a colour channel in a square of pixels.
double mean(const Picture &picture, int x0, int y0, int block, std::size_t channel) {
    double sum = 0;
    for (int y = y0; y < y0 + block; ++y)
        for (int x = x0; x < x0 + block; ++x)
            sum += picture.at(x, y)[channel];
    return sum / (block * block);
}

/// Draws `nodes` on pages and on the screen. In each quarter of the picture the difference, in squares of
/// `block` pixels, must be below a part of what there is to see.
void expectSamePicture(const std::string &nodes, int block, double part) {
    const Scene scene(view("LightModel { model BASE_COLOR } " + nodes));
    oravane::HeadlessRenderer renderer(1);
    const Picture picture = renderer.render(scene, PIXELS, PIXELS);
    for (const bool isBinary : {false, true}) {
        SoVectorizeCGMAction action;
        action.getOutput()->setVersion(isBinary ? 3 : 1);
        action.getOutput()->setBinary(isBinary);
        action.getOutput()->setIndexed(!isBinary);
        action.setDrawingDimensions(100, 100, SoVectorizeAction::MILLIMETER);
        action.setColorTranslationMethod(SoVectorizeAction::KEEP_COLORS);
        action.setNominalWidth(0.2f, SoVectorizeAction::MILLIMETER); // a pixel
        action.setPixelImageSize(0.2f, SoVectorizeAction::MILLIMETER);
        action.setBorder(0);
        const TemporaryFile page;
        std::ofstream(page.path()) << CgmInterpreter().postScript(pageOf(action, scene));
        const Picture drawing = drawingOf(page.path(), picture);
        std::array<double, 4> ink{}, difference{};
        for (int y = 0; y < PIXELS; y += block)
            for (int x = 0; x < PIXELS; x += block)
                for (std::size_t c = 0; c < 3; ++c) {
                    const std::size_t quarter = 2 * (y / (PIXELS / 2)) + x / (PIXELS / 2);
                    const double seen = mean(picture, x, y, block, c);
                    ink[quarter] += 255 - seen;
                    difference[quarter] += std::abs(seen - mean(drawing, x, y, block, c));
                }
        for (std::size_t quarter = 0; quarter < 4; ++quarter) {
            EXPECT_GT(ink[quarter] * block * block, 50 * 255) << "there is something to see";
            EXPECT_LT(difference[quarter] / ink[quarter], part)
                << nodes << "\nquarter " << quarter << (isBinary ? ", binary" : ", clear text");
        }
    }
}

TEST(CgmPage, ShowsWhatIsRendered) {
    expectSamePicture(
        "Separator { BaseColor { rgb 1 0 0 } Translation { translation -.5 .5 0 } "
        "Rotation { rotation 1 1 0 1 } Cube { width .4 height .5 depth .3 } } "
        "Separator { BaseColor { rgb 0 0 1 } DrawStyle { lineWidth 5 } "
        "Coordinate3 { point [ .1 .2 0, .5 .9 0, .9 .1 0 ] } LineSet { } } "
        "Separator { BaseColor { rgb [ 0 1 0, 1 0 1, 0 0 0 ] } MaterialBinding { value PER_VERTEX } "
        "DrawStyle { pointSize 15 } Coordinate3 { point [ -.9 -.2 0, -.5 -.3 0, -.2 -.2 0 ] } "
        "PointSet { } Translation { translation 0 -.5 0 } MarkerSet { markerIndex [ 88, 70, 80 ] } } "
        "Translation { translation .5 -.5 0 } Image { image 3 2 3 0xff0000 0xff00 0xff 0xff00ff "
        "0 0xffff width 90 height 80 horAlignment CENTER vertAlignment TOP } ",
        10, 0.15);
}

TEST(CgmPage, DashesAreAsDense) {
    std::string nodes = "BaseColor { rgb 0 0 0 } ";
    for (const char *rest : {"0xFF00 } Coordinate3 { point [ -1 .5 0, 0 .5 0 ] ",
                             "0xF0F0 } Coordinate3 { point [ 0 .5 0, 1 .5 0 ] ",
                             "0x5555 } Coordinate3 { point [ -1 -.5 0, 0 -.5 0 ] ",
                             "0xFFFF } Coordinate3 { point [ 0 -.5 0, 1 -.5 0 ] "})
        nodes += "DrawStyle { lineWidth 5 linePattern " + std::string(rest) + "} LineSet { } ";
    expectSamePicture(nodes, 125, 0.15);
}

TEST(CgmPage, TextStandsWhereItIsRendered) {
    unsetenv("COIN_FORCE_FREETYPE_OFF"); // works until the first letter of the process
    PiText measure;
    float width, height;
    measure.setFont("Helvetica", 1);
    measure.getStringSizes("Hello 12.5", width, height);
    if (std::abs(width - 4.475f) > 0.1f)
        GTEST_SKIP() << "no Helvetica on this machine, or another font was in use before: " << width;
    std::string nodes = "BaseColor { rgb 0 0 1 } Font { name \"Helvetica\" size 0.2 } ";
    for (const char *rest : {"-.9 .5 0 } SoAnnoText3 { string [ \"left\", \"aligned\" ] ",
                             ".9 .5 0 } SoAnnoText3 { string [ \"right\", \"aligned\" ] justification RIGHT ",
                             "-.5 -.5 0 } SoAnnoText3 { string \"middle\" justification CENTER ",
                             ".2 -.7 0 } Rotation { rotation 0 0 1 0.5 } SoAnnoText3 { string \"turned\" "})
        nodes += "Separator { Translation { translation " + std::string(rest) + "} } ";
    expectSamePicture(nodes, 10, 0.2);
}

} // namespace
