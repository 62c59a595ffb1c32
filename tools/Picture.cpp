#include "tools/Picture.h"

#include <png.h>

#include <memory>
#include <stdexcept>

namespace oravane {

namespace {

using PngImage = std::unique_ptr<png_image, decltype(&png_image_free)>;

[[noreturn]] void fail(const std::string &what, const std::string &path, const std::string &reason) {
    throw std::runtime_error(what + " " + path + ": " + reason);
}

} // namespace

void writePng(const std::string &path, const Picture &picture) {
    const std::size_t pixels = static_cast<std::size_t>(picture.width) * picture.height;
    if (picture.width <= 0 || picture.height <= 0 || picture.rgb.size() != 3 * pixels)
        fail("cannot write", path, "the picture is empty or its pixels do not fill it");
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGB;
    const PngImage guard(&image, &png_image_free);
    if (png_image_write_to_file(&image, path.c_str(), 0, picture.rgb.data(), 0, nullptr) == 0)
        fail("cannot write", path, image.message);
}

Picture readPng(const std::string &path) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    const PngImage guard(&image, &png_image_free);
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0)
        fail("cannot read", path, image.message);
    image.format = PNG_FORMAT_RGB;
    Picture picture{static_cast<int>(image.width), static_cast<int>(image.height), {}};
    picture.rgb.resize(PNG_IMAGE_SIZE(image));
    const png_color black{0, 0, 0};
    if (png_image_finish_read(&image, &black, picture.rgb.data(), 0, nullptr) == 0)
        fail("cannot read", path, image.message);
    return picture;
}

} // namespace oravane
