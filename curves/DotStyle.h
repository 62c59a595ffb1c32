#ifndef ORAVANE_CURVES_DOTSTYLE_H
#define ORAVANE_CURVES_DOTSTYLE_H

#include <Inventor/nodes/SoDrawStyle.h>

namespace oravane {

constexpr float kDotSize = 5; ///< of dots that have no size of their own; pixels, or nominal widths

/// A point size, which leaves all else of the style as it is.
inline SoDrawStyle *newDotStyle(float size) {
    auto *style = new SoDrawStyle;
    style->pointSize = size;
    style->style.setIgnored(TRUE);
    style->lineWidth.setIgnored(TRUE);
    style->linePattern.setIgnored(TRUE);
    return style;
}

} // namespace oravane

#endif
