#ifndef ORAVANE_AXES_AXISLABELS_H
#define ORAVANE_AXES_AXISLABELS_H

#include <string>

namespace oravane {

/// Labels that an axis writes itself have at most 99 bytes; longer ones lose whole characters at their end.
inline std::string limitedLabel(std::string label) {
    constexpr std::size_t kLongest = 99;
    if (label.size() <= kLongest)
        return label;
    std::size_t size = kLongest;
    while (size > 0 && (static_cast<unsigned char>(label[size]) & 0xc0) == 0x80) // inside of a character
        --size;
    label.resize(size);
    return label;
}

} // namespace oravane

#endif
