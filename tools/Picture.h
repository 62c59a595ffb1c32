#ifndef ORAVANE_TOOLS_PICTURE_H
#define ORAVANE_TOOLS_PICTURE_H

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace oravane {

/// A rectangle of RGB pixels, 8 bits a channel.
struct Picture {
    int width = 0;
    int height = 0;
    /// 3 * width * height values: row by row from the top, each row from the left, red green blue.
    std::vector<unsigned char> rgb;

    /// The pixel in column `x` from the left and row `y` from the top; both must lie inside.
    std::array<unsigned char, 3> at(int x, int y) const {
        const std::size_t first = 3 * (static_cast<std::size_t>(y) * width + x);
        return {rgb[first], rgb[first + 1], rgb[first + 2]};
    }
};

/// Writes `picture` as a PNG file; the same picture gives the same bytes. Throws `std::runtime_error` with
/// one line that names the file and the reason.
void writePng(const std::string &path, const Picture &picture);

/// The content of such a file. Throws when the picture is empty or its pixels do not fill it.
std::string encodePng(const Picture &picture);

/// Reads any PNG file as RGB; transparent pixels are laid over black. Throws like `writePng`.
Picture readPng(const std::string &path);

} // namespace oravane

#endif
