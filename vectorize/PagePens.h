#ifndef ORAVANE_PAGEPENS_H
#define ORAVANE_PAGEPENS_H

#include <Inventor/SbColor.h>

#include <span>

namespace oravane {

struct PagePen {
    SbColor color;
    float width; ///< mm
};

/// Index of the pen for a colour and a width in mm. By colour first: of the pens of exactly the colour, or
/// else the nearest colour, the widest that is not wider than asked, or else the narrowest. By width first:
/// of the pens of exactly the width, or else the widest below it, or else the narrowest, the one of nearest
/// colour. `pens` must not be empty.
int choosePen(std::span<const PagePen> pens, const SbColor &color, float width, bool colorFirst);

} // namespace oravane

#endif
