#include "text/TextLayout.h"

#include "text/TextMeasure.h"

#include <oravane/PbMiscTextAttr.h>

#include <Inventor/nodes/SoFont.h>

namespace oravane {

namespace {

SbVec2f directionOf(TextSide side) {
    switch (side) {
    case TextSide::Above:
        return {0, 1};
    case TextSide::Below:
        return {0, -1};
    case TextSide::Right:
        return {1, 0};
    case TextSide::Left:
        return {-1, 0};
    case TextSide::Centre:
        break;
    }
    return {0, 0};
}

/// Along which a text on `path` is read.
SbVec2f readingDirection(PiText::Path path) {
    switch (path) {
    case PiText::TEXT_PATH_LEFT:
        return {-1, 0};
    case PiText::TEXT_PATH_UP:
        return {0, 1};
    case PiText::TEXT_PATH_DOWN:
        return {0, -1};
    default:
        return {1, 0};
    }
}

} // namespace

TextAlignment alignmentAt(TextSide side, PiText::Path path, LetterEdge edge) {
    const SbVec2f away = directionOf(side), reading = readingDirection(path);
    const SbVec2f top(-reading[1], reading[0]);
    const float along = away.dot(reading), up = away.dot(top);
    TextAlignment result{PiText::HOR_CENTER, PiText::VERT_HALF};
    if (along != 0)
        result.horizontal = along > 0 ? PiText::HOR_LEFT : PiText::HOR_RIGHT;
    if (up != 0 && edge == LetterEdge::Capitals)
        result.vertical = up > 0 ? PiText::VERT_BASE : PiText::VERT_CAP;
    else if (up != 0)
        result.vertical = up > 0 ? PiText::VERT_BOTTOM : PiText::VERT_TOP;
    return result;
}

TextSide opposite(TextSide side) {
    switch (side) {
    case TextSide::Above:
        return TextSide::Below;
    case TextSide::Below:
        return TextSide::Above;
    case TextSide::Right:
        return TextSide::Left;
    case TextSide::Left:
        return TextSide::Right;
    case TextSide::Centre:
        break;
    }
    return TextSide::Centre;
}

const SbString &fontNameOf(const SbString &field, const PbMiscTextAttr &attributes) {
    return field.getLength() > 0 ? field : attributes.getFontName();
}

SoFont *newFont(const SbString &name, float size) {
    auto *font = new SoFont;
    font->name = nameOf(name);
    font->size = size;
    return font;
}

} // namespace oravane
