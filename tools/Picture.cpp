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

constexpr const char *unfilled = "the picture is empty or its pixels do not fill it";

bool isFilled(const Picture &picture) {
    const std::size_t pixels = static_cast<std::size_t>(picture.width) * picture.height;
    return picture.width > 0 && picture.height > 0 && picture.rgb.size() == 3 * pixels;
}

png_image imageOf(const Picture &picture) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGB;
    return image;
}

} // namespace

void writePng(const std::string &path, const Picture &picture) {
    if (!isFilled(picture))
        fail("cannot write", path, unfilled);
    png_image image = imageOf(picture);
    const PngImage guard(&image, &png_image_free);
    if (png_image_write_to_file(&image, path.c_str(), 0, picture.rgb.data(), 0, nullptr) == 0)
        fail("cannot write", path, image.message);
}

std::string encodePng(const Picture &picture) {
    if (!isFilled(picture))
        throw std::runtime_error(unfilled);
    png_image image = imageOf(picture);
    const PngImage guard(&image, &png_image_free);
    std::string bytes(PNG_IMAGE_PNG_SIZE_MAX(image), '\0');
    png_alloc_size_t size = bytes.size();
    if (png_image_write_to_memory(&image, bytes.data(), &size, 0, picture.rgb.data(), 0, nullptr) == 0)
        throw std::runtime_error(std::string("cannot encode the picture: ") + image.message);
    bytes.resize(size);
    return bytes;
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
