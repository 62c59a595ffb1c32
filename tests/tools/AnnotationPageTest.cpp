// Annotation text stands on the page where the renderer shows it.
#include "PageRaster.h"
#include "tools/HeadlessRenderer.h"
#include "vectorize/PageFixture.h"

#include <oravane/PiText.h>

#include <algorithm>
#include <cstdlib>

namespace {

using namespace oravane_test;
using oravane::Picture;

constexpr int PIXELS = 500; // of a drawing of 100 mm

struct Ink {
    int left = PIXELS, right = -1, top = PIXELS, bottom = -1;
    double amount = 0; ///< in pixels that are all ink
};

Ink inkOf(const Picture &picture) {
    constexpr int MARGIN = 10; // the border has no part in it
    Ink ink;
    for (int y = MARGIN; y < picture.height - MARGIN; ++y)
        for (int x = MARGIN; x < picture.width - MARGIN; ++x) {
            const double darkness = (255 - picture.at(x, y)[0]) / 255.0;
            ink.amount += darkness;
            if (darkness > 0.5)
                ink = {std::min(ink.left, x), std::max(ink.right, x), std::min(ink.top, y),
                       std::max(ink.bottom, y), ink.amount};
        }
    return ink;
}

std::string pageOfDrawing(SoNode *scene) {
    SoVectorizePSAction action;
    action.setDrawingDimensions(100, 100, SoVectorizeAction::MILLIMETER);
    return pageOf(action, scene);
}

/// Draws `nodes` in blue on a page and on the screen, and expects the same ink, but for so many pixels.
void expectSameInk(const std::string &nodes, int pixels, double amount) {
    SCOPED_TRACE(nodes);
    const Scene scene(view("LightModel { model BASE_COLOR } BaseColor { rgb 0 0 1 } " + nodes));
    const TemporaryFile page;
    std::ofstream(page.path()) << pageOfDrawing(scene);
    oravane::HeadlessRenderer renderer;
    const Picture picture = renderer.render(scene, PIXELS, PIXELS);
    const Ink seen = inkOf(picture), printed = inkOf(drawingOf(page.path(), picture));
    EXPECT_GT(seen.amount, 500) << "there is something to see";
    EXPECT_NEAR(printed.left, seen.left, pixels);
    EXPECT_NEAR(printed.right, seen.right, pixels);
    EXPECT_NEAR(printed.top, seen.top, pixels);
    EXPECT_NEAR(printed.bottom, seen.bottom, pixels);
    EXPECT_NEAR(printed.amount / seen.amount, 1, amount);
}

const std::string kTexts[] = {
    "SoAnnoText3 { string [ \"Depth (m)\", \"2nd, longer line\" ] }",
    "SoAnnoText3 { string [ \"Depth (m)\", \"2nd, longer line\" ] justification RIGHT spacing 1.4 }",
    "SoAnnoText3 { string [ \"Depth (m)\", \"2nd, longer line\" ] justification CENTER spacing 0.8 }",
    "Rotation { rotation 0 0 1 0.5 } Scale { scaleFactor 1.5 1.5 1 } SoAnnoText3 { string \"turned\" }",
    "Rotation { rotation 0 0 1 1.5708 } SoAnnoText3 { string [ \"up\", \"and on\" ] justification CENTER }",
};

TEST(AnnotationPage, LettersAsPolygonsAreTheRenderedOnes) {
    for (const std::string &text : kTexts) // with more ink: the page's pixels are those that letters touch
        expectSameInk("SoAnnoText3Property { renderPrintType RENDER3D_PRINT_VECTOR } "
                      "Font { name \"defaultFont\" size 0.12 } " +
                          text,
                      1, 0.7);
}

TEST(AnnotationPage, TextProperStandsWhereItIsRendered) {
    unsetenv("COIN_FORCE_FREETYPE_OFF"); // works until the first letter of the process
    PiText measure;
    float width, height;
    measure.setFont("Helvetica", 1);
    measure.getStringSizes("Hello 12.5", width, height);
    if (std::abs(width - 4.475f) > 0.1f)
        GTEST_SKIP() << "no Helvetica on this machine, or another font was in use before: " << width;
    for (const std::string &text : kTexts)
        expectSameInk("Font { name \"Helvetica\" size 0.12 } " + text, 5, 0.06);
}

TEST(AnnotationPage, TextProperCanBeSelected) {
    const Scene scene(view("Font { size 0.1 } SoAnnoText3 { string [ \"Depth (m)\", \"back\\\\slash\" ] } "
                           "Translation { translation 0 0.5 0 } Font { name \"Helvetica\" size 0.1 } "
                           "SoAnnoText3 { string \"centred\" justification CENTER }"));
    const std::string page = pageOfDrawing(scene);
    EXPECT_EQ(complaints(page), "");
    for (const char *call : {"(Depth \\(m\\)) 0.00 50.00 50.00 ltx\n", "50.00 75.00 0.00 (centred) ctx\n",
                             "/Helvetica findfont 5.00 scalefont setfont\n"})
        EXPECT_EQ(count(page, call), 1) << call;
    if (std::system("command -v ps2pdf pdftotext > /dev/null") != 0)
        return;
    const TemporaryFile ps, pdf(".pdf"), text(".txt");
    std::ofstream(ps.path()) << page;
    const std::string command =
        "ps2pdf " + ps.path() + " " + pdf.path() + " && pdftotext " + pdf.path() + " " + text.path();
    EXPECT_EQ(std::system(command.c_str()), 0);
    for (const char *words : {"Depth (m)", "centred"})
        EXPECT_EQ(count(readFile(text.path()), words), 1) << words;
}

} // namespace
