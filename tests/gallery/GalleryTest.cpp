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

/// How alike page and picture must be.
struct Demand {
    double mean;      ///< largest mean difference
    double limit;     ///< blocks that differ more than this are counted,
    double different; ///< and are at most this share
    double dark;      ///< largest ratio of dark blocks,
    double ink;       ///< and of what is not white
};

/// Looks at all files of a folder with this ending; `drawing(path, picture)` is the page's drawing.
template <class DrawingOf>
void expectAgreement(const fs::path &folder, const std::string &ending, const Demand &demand,
                     DrawingOf drawing) {
    int numPages = 0;
    for (const auto &entry : fs::directory_iterator(folder)) {
        const std::string file = entry.path().filename().string(), name = file.substr(0, file.find('.'));
        if (file != name + ending)
            continue;
        SCOPED_TRACE(file);
        ++numPages;
        const Picture picture = pictureOf(name);
        const Agreement a = agreementOf(picture, drawing(entry.path(), picture), demand.limit);
        EXPECT_GT(a.coloured, a.blocks / 12) << "there is something to see";
        EXPECT_GT(a.otherDark * demand.dark, a.dark) << "on a white sheet nothing is missing";
        EXPECT_LT(a.otherDark, a.dark * demand.dark) << "or too much";
        EXPECT_GT(a.otherInk * demand.ink, a.ink);
        EXPECT_LT(a.otherInk, a.ink * demand.ink);
        EXPECT_LT(a.mean, demand.mean);
        EXPECT_LT(a.different, demand.different * a.blocks + 1);
        std::printf("%s: mean difference %.2f of 255, %d of %d blocks differ, %.2f times the ink\n",
                    file.c_str(), a.mean, a.different, a.blocks, a.otherInk / a.ink);
    }
    EXPECT_GE(numPages, 4);
}

// Thin lines come out a part of a pixel wider on the page, and those at a slant thinner in pictures; letters
// are those of another font.
constexpr Demand kVectors{12, 40, 0.01, 1.5, 1.5};
// A plotter has 256 colours here, in four levels of blue, and places texts that are not left-aligned
// elsewhere.
constexpr Demand kPlots{20, 80, 0.025, 3, 1.6};

TEST(Gallery, PagesShowWhatIsRendered) {
    expectAgreement(kGallery, ".ps", kVectors, drawingOf);
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
    const std::string command = "gs -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=png16m -dDownScaleFactor=4 -r" +
                                std::to_string(4 * PIXELS_PER_MILLIMETER * 25.4) + " -g" +
                                std::to_string(4 * like.width) + "x" + std::to_string(4 * like.height) +
                                " -o '" + raster.string() + "' '" + moved.string() + "'";
    EXPECT_EQ(std::system(command.c_str()), 0);
    Picture drawing = oravane::readPng(raster.string());
    fs::remove(moved);
    fs::remove(raster);
    return drawing;
}

TEST(Gallery, MetafilesShowWhatIsRendered) {
    expectAgreement(kEveryFormat, ".binary.cgm", kVectors, [](const fs::path &page, const Picture &like) {
        return drawn(page, CgmInterpreter().postScript(textOf(page)), like);
    });
}

TEST(Gallery, PlotsShowWhatIsRendered) {
    expectAgreement(kEveryFormat, ".hpgl", kPlots, [](const fs::path &page, const Picture &like) {
        const HpglReader read(textOf(page));
        EXPECT_EQ(read.error, "");
        return drawn(page, read.postScript, like);
    });
}

} // namespace
