#ifndef ORAVANE_TEXT_TEXTLAYOUT_H
#define ORAVANE_TEXT_TEXTLAYOUT_H

#include <oravane/PiText.h>

class PbMiscTextAttr;
class SoFont;

/// \file
/// How axes, bars, pies and legends lay their texts: beside an anchor, growing away from it, whichever way
/// the text runs.

namespace oravane {

/// Heights in font sizes that layouts reckon with: of a capital, and of a line with the gap to the next.
constexpr float kCapitalHeight = 0.65f, kLineHeight = 0.975f;

/// Where a text lies, seen from its anchor.
enum class TextSide { Centre, Above, Below, Right, Left };

/// What of a line stands at the anchor where the text lies across its path: base and capitals, or all that
/// letters may reach.
enum class LetterEdge { Capitals, Full };

struct TextAlignment {
    PiText::HorAlignment horizontal;
    PiText::VertAlignment vertical;
};

/// The alignment by which a text on `path` lies at `side` of its origin. What is no path is as to the right.
TextAlignment alignmentAt(TextSide side, PiText::Path path, LetterEdge edge);

/// The side of the opposite direction.
TextSide opposite(TextSide side);

/// The name that a field gives, else that of the attributes.
const SbString &fontNameOf(const SbString &field, const PbMiscTextAttr &attributes);

SoFont *newFont(const SbString &name, float size);

} // namespace oravane

#endif
