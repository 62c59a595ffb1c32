// Every page of the gallery, as a PostScript interpreter draws it, shows what the renderer shows of the same
// scene.
#include "PageRaster.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <string>

namespace {

namespace fs = std::filesystem;
using oravane::Picture;
using oravane_test::drawingOf;

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
        int blocks = 0, different = 0, coloured = 0, dark = 0, printedDark = 0;
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
                dark += a[0] + a[1] + a[2] < 3 * 225;
                printedDark += b[0] + b[1] + b[2] < 3 * 225;
            }
        }
        EXPECT_GT(coloured, blocks / 12) << "there is something to see";
        EXPECT_GT(3 * printedDark, 2 * dark) << "and on a sheet that is mostly white nothing is missing";
        EXPECT_LT(2 * printedDark, 3 * dark) << "or too much";
        // Thin lines come out a part of a pixel wider on the page, and letters are those of another font.
        EXPECT_LT(sum / blocks, 12);
        EXPECT_LT(different, blocks / 100 + 1);
        std::printf("%s: mean difference %.2f of 255, %d of %d blocks differ\n",
                    entry.path().filename().c_str(), sum / blocks, different, blocks);
    }
    EXPECT_GE(numPages, 4);
}

} // namespace
