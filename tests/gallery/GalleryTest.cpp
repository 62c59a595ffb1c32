// Every page of the gallery, as a PostScript interpreter draws it, shows what the renderer shows of the same
// scene.
#include "tools/Picture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

namespace fs = std::filesystem;
using oravane::Picture;

// How the examples make their pages and pictures.
constexpr double PAGE_HEIGHT = 297, START = 10, PIXELS_PER_MILLIMETER = 5;

/// The drawing on a page, in the pixels of its picture.
Picture drawingOf(const fs::path &page, const Picture &like) {
    const fs::path raster = page.parent_path() / (page.stem().string() + ".raster.png");
    const std::string command =
        "gs -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=png16m -dFIXEDMEDIA -sPAPERSIZE=a4 -r" +
        std::to_string(PIXELS_PER_MILLIMETER * 25.4) + " -o '" + raster.string() + "' '" + page.string() +
        "' 2>&1";
    FILE *pipe = popen(command.c_str(), "r");
    std::string complaints;
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe))
        complaints += static_cast<char>(c);
    EXPECT_EQ(pclose(pipe), 0);
    EXPECT_EQ(complaints, "");
    const Picture whole = oravane::readPng(raster.string());
    fs::remove(raster);
    std::ifstream in(page);
    std::string line;
    bool isLandscape = false;
    for (int i = 0; i < 150 && std::getline(in, line); ++i)
        isLandscape = isLandscape || line == "90 rotate";
    Picture drawing{like.width, like.height, std::vector<unsigned char>(like.rgb.size())};
    for (int v = 0; v < like.height; ++v) {
        for (int u = 0; u < like.width; ++u) {
            // Millimetres from the lower left of the page; a landscape page is turned to the left.
            const double along = START + (u + 0.5) / PIXELS_PER_MILLIMETER;
            const double x = isLandscape ? START + (v + 0.5) / PIXELS_PER_MILLIMETER : along;
            const double y = isLandscape ? along : START + (like.height - v - 0.5) / PIXELS_PER_MILLIMETER;
            const auto pixel = whole.at(static_cast<int>(x * PIXELS_PER_MILLIMETER),
                                        static_cast<int>((PAGE_HEIGHT - y) * PIXELS_PER_MILLIMETER));
            for (std::size_t c = 0; c < 3; ++c)
                drawing.rgb[3 * (static_cast<std::size_t>(v) * like.width + u) + c] = pixel[c];
        }
    }
    return drawing;
}

/// Mean colour of a square of pixels.
std::array<double, 3> blockMean(const Picture &picture, int u, int v, int size) {
    std::array<double, 3> mean{};
    for (int y = v; y < v + size; ++y)
        for (int x = u; x < u + size; ++x)
            for (std::size_t c = 0; c < 3; ++c)
                mean[c] += picture.at(x, y)[c] / static_cast<double>(size * size);
    return mean;
}

TEST(Gallery, PagesShowWhatIsRendered) {
    int numPages = 0;
    for (const auto &entry : fs::directory_iterator(ORAVANE_GALLERY)) {
        if (entry.path().extension() != ".ps")
            continue;
        SCOPED_TRACE(entry.path().filename().string());
        ++numPages;
        const Picture picture = oravane::readPng(fs::path(entry.path()).replace_extension(".png").string());
        const Picture drawing = drawingOf(entry.path(), picture);
        constexpr int BLOCK = 8;
        int blocks = 0, different = 0, coloured = 0;
        double sum = 0;
        for (int v = BLOCK; v + 2 * BLOCK <= picture.height; v += BLOCK) { // the border has no part in it
            for (int u = BLOCK; u + 2 * BLOCK <= picture.width; u += BLOCK) {
                const auto a = blockMean(picture, u, v, BLOCK), b = blockMean(drawing, u, v, BLOCK);
                double largest = 0;
                for (std::size_t c = 0; c < 3; ++c)
                    largest = std::max(largest, std::abs(a[c] - b[c]));
                sum += largest;
                ++blocks;
                different += largest > 40;
                coloured += a[0] + a[1] + a[2] < 3 * 250;
            }
        }
        EXPECT_GT(coloured, blocks / 5) << "there is something to see";
        EXPECT_LT(sum / blocks, 6);
        EXPECT_LT(different, blocks / 100 + 1);
        std::printf("%s: mean difference %.2f of 255, %d of %d blocks differ\n",
                    entry.path().filename().c_str(), sum / blocks, different, blocks);
    }
    EXPECT_GE(numPages, 4);
}

} // namespace
