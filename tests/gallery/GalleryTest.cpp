// Every page of the gallery, as a reader of its format draws it, shows what the renderer shows of the same
// scene.
#include "PageRaster.h"
#include "gallery/Agreement.h"
#include "vectorize/CgmInterpreter.h"
#include "vectorize/HpglReader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <iterator>
#include <string>

namespace {

namespace fs = std::filesystem;
using namespace oravane_test;
using oravane::Picture;

const fs::path kGallery = ORAVANE_GALLERY, kEveryFormat = ORAVANE_GALLERY_FORMATS;

Picture pictureOf(const std::string &name) {
    return oravane::readPng((kGallery / (name + ".png")).string());
}

/// Looks at all files of a folder with this ending; `drawingOf(path, picture)` is the page's drawing.
template <class DrawingOf>
void expectAgreement(const fs::path &folder, const std::string &ending, double mean, double limit,
                     DrawingOf drawing) {
    int numPages = 0;
    for (const auto &entry : fs::directory_iterator(folder)) {
        const std::string file = entry.path().filename().string(), name = file.substr(0, file.find('.'));
        if (file != name + ending)
            continue;
        SCOPED_TRACE(file);
        ++numPages;
        const Picture picture = pictureOf(name);
        const Agreement a = agreementOf(picture, drawing(entry.path(), picture), limit);
        EXPECT_GT(a.coloured, a.blocks / 12) << "there is something to see";
        EXPECT_GT(3 * a.otherDark, 2 * a.dark) << "and on a sheet that is mostly white nothing is missing";
        EXPECT_LT(2 * a.otherDark, 3 * a.dark) << "or too much";
        EXPECT_LT(a.mean, mean);
        EXPECT_LT(a.different, a.blocks / 100 + 1);
        std::printf("%s: mean difference %.2f of 255, %d of %d blocks differ\n", file.c_str(), a.mean,
                    a.different, a.blocks);
    }
    EXPECT_GE(numPages, 4);
}

// Thin lines come out a part of a pixel wider on the page, and letters are those of another font.
TEST(Gallery, PagesShowWhatIsRendered) {
    expectAgreement(kGallery, ".ps", 12, 40, drawingOf);
}

std::string textOf(const fs::path &file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// What `postScript`, in page coordinates without any turning, shows of the drawing.
Picture drawn(const fs::path &page, const std::string &postScript, const Picture &like) {
    const fs::path moved = page.string() + ".drawn.ps", raster = page.string() + ".drawn.png";
    std::ofstream(moved, std::ios::binary)
        << "%!PS\n72 25.4 div dup " << -START << " mul exch " << -START << " mul translate\n"
        << postScript;
    // Twice as fine as the picture: lines of less than a pixel come out wider yet, but it takes half a second.
    const std::string command =
        "gs -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=png16m -dDownScaleFactor=2 -r" +
        std::to_string(2 * PIXELS_PER_MILLIMETER * 25.4) + " -g" + std::to_string(2 * like.width) + "x" +
        std::to_string(2 * like.height) + " -o '" + raster.string() + "' '" + moved.string() + "'";
    EXPECT_EQ(std::system(command.c_str()), 0);
    Picture drawing = oravane::readPng(raster.string());
    fs::remove(moved);
    fs::remove(raster);
    return drawing;
}

TEST(Gallery, MetafilesShowWhatIsRendered) {
    for (const char *ending : {".cgm", ".binary.cgm"})
        expectAgreement(kEveryFormat, ending, 14, 50, [](const fs::path &page, const Picture &like) {
            return drawn(page, CgmInterpreter().postScript(textOf(page)), like);
        });
}

// A plotter has 256 colours here, in four levels of blue.
TEST(Gallery, PlotsShowWhatIsRendered) {
    expectAgreement(kEveryFormat, ".hpgl", 30, 80, [](const fs::path &page, const Picture &like) {
        const HpglReader read(textOf(page));
        EXPECT_EQ(read.error, "");
        return drawn(page, read.postScript, like);
    });
}

} // namespace
