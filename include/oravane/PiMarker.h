#ifndef ORAVANE_PIMARKER_H
#define ORAVANE_PIMARKER_H

#include <oravane/OravaneApi.h>

#include <Inventor/SbString.h>
#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3f.h>

#include <map>
#include <span>
#include <string>
#include <utility>

class PiText;
class SoGroup;
class SoNode;

/// Makes marks at places of the plane z = 0: dots, or a string such as "*", "+" or "o".
///
/// \code
///   PiMarker marker;
///   marker.setMarkerType("*");
///   marker.setFontName("defaultFont");      // of the font node that stands before `marks`
///   marker.setFontSize(0.5f);
///   marker.setOrigin(3, 4);
///   marker.build(marks);
/// \endcode
///
/// The marker "." is a dot of the scene's point size (`SoDrawStyle`): it is so many pixels wide, or
/// nominal widths on a page, whatever transforms stand before it. All dots of one call are one point set.
/// Any other marker is a text whose letters, by their outline, are centred at the place, of a size in the
/// units of x; all marks of one call share one text node. The empty string marks nothing. Each string is
/// measured once in each size.
class ORAVANE_API PiMarker {
public:
    /// The string to mark with, "." at first; null counts as empty.
    void setMarkerType(const char *string) { m_string = string ? string : ""; }
    void setMarkerType(const SbString &string) { m_string = string; }

    /// Font of texts, "defaultFont" of size 1 at first. Null and sizes that are not finite are ignored.
    void setFontName(const char *name);
    void setFontName(const SbString &name) { setFontName(name.getString()); }
    void setFontSize(float size);

    /// How high one unit of a text is in units of y, 1 at first: what a scene that scales x and y differently
    /// takes to show letters in their true shape. Numbers that are not finite or not above 0 are ignored.
    void setHeightFactor(float factor);

    /// Where `build(group)` puts its mark, (0, 0) at first.
    void setOrigin(float x, float y) { m_origin.setValue(x, y); }

    /// Adds a mark at the origin to the group; nothing without a group.
    void build(SoGroup *group) const { build(group, std::span(&m_origin, 1)); }
    /// Adds one at each of the places.
    void build(SoGroup *group, std::span<const SbVec2f> places) const;

private:
    SoNode *newText() const;
    const SbVec3f &middleOf(PiText &text) const;

    SbString m_string = ".";
    SbString m_fontName = "defaultFont";
    float m_fontSize = 1;
    float m_heightFactor = 1;
    SbVec2f m_origin{0, 0};
    mutable std::map<std::pair<std::string, float>, SbVec3f> m_middles; ///< by string and size
};

#endif
