#ifndef ORAVANE_PITEXT_H
#define ORAVANE_PITEXT_H

#include <oravane/OravaneApi.h>

#include <Inventor/SbBox2f.h>
#include <Inventor/SbBox3f.h>
#include <Inventor/SbName.h>
#include <Inventor/SbString.h>
#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3f.h>

#include <string_view>

class PbMiscTextAttr;
class SoGroup;

namespace oravane {
class TextLines;
}

/// Makes the nodes of a label: a string at a place, in a plane, aligned to its origin and wrapped into lines.
/// Every label that a kit draws comes from here, so that all are placed alike. A `PiText` lives for the time
/// of a rebuild and is used for many labels.
///
/// \code
///   PiText text;
///   text.setGroup(labels);                 // the builder keeps no reference
///   text.setFont("Helvetica", 0.05f);      // of the font node that the kit puts before `labels`
///   text.setAlignment(PiText::HOR_CENTER, PiText::VERT_TOP);
///   for (const Graduation &g : graduations) {
///       text.setOrigin(g.x, 0);
///       text.setString(g.label);
///       text.build();
///   }
/// \endcode
///
/// A label is an `SoTransformSeparator` with an `SoTransform` and a text node, `SoAnnoText3` or `SoText3` as
/// `PoBase::getTextType()` says. There is no font node in it: name and size of the builder's font serve for
/// measuring and for the vertical alignment, and have to be those of the font node that stands before it.
///
/// Measuring a text again, of the same font and size, is a look-up. Boxes of texts without letters are empty
/// (`isEmpty()`), their sizes 0. Null strings count as empty ones; setters ignore numbers that are not finite
/// and null font names. Direction vectors without a plane (parallel, or of no length), or a `charUpVec` of
/// no length, shrink a text to its origin.
class ORAVANE_API PiText {
public:
    /// Which end of the lines stands at the origin.
    enum HorAlignment : int { HOR_LEFT = 0, HOR_RIGHT = 1, HOR_CENTER = 2 };
    /// What of the lines stands at the origin: the ascenders or capitals of the first one, the middle of all,
    /// the base or the descenders of the last one.
    enum VertAlignment : int { VERT_TOP = 0, VERT_CAP = 1, VERT_HALF = 2, VERT_BASE = 3, VERT_BOTTOM = 4 };
    enum Path : int {
        TEXT_PATH_RIGHT = 0,
        TEXT_PATH_LEFT = 1,
        TEXT_PATH_UP = 2,
        TEXT_PATH_DOWN = 3,
    };

    /// Empty, at the origin of the xy plane, left and base aligned, in the font "default" of size 1, with
    /// lines enabled but without a line length, not mirrored, without a group.
    PiText() = default;

    void setString(const char *string);
    /// The forms with two coordinates set z to 0.
    void setOrigin(float x, float y) { setOrigin(x, y, 0); }
    void setOrigin(float x, float y, float z) { setOrigin(SbVec3f(x, y, z)); }
    void setOrigin(const SbVec2f &origin) { setOrigin(origin[0], origin[1], 0); }
    void setOrigin(const SbVec3f &origin);
    /// Base and up direction of the plane of the text, stored with length 1.
    void setDirectionVectors(const SbVec3f vectors[2]);
    /// Where the top of a letter points in that plane, (0, 1) at first; its length scales the letters.
    void setCharUpVec(float x, float y) { setCharUpVec(SbVec2f(x, y)); }
    void setCharUpVec(const SbVec2f &vector);
    /// Sets the up vector so that the lines run to the right, to the left (upside down), up or down.
    void setPath(Path path);

    void setHorAlignment(HorAlignment alignment) { m_horAlignment = alignment; }
    void setVertAlignment(VertAlignment alignment) { m_vertAlignment = alignment; }
    void setAlignment(HorAlignment horizontal, VertAlignment vertical);

    void setFont(const char *name, float size);
    void setFont(const SbString &name, float size) { setFont(name.getString(), size); }
    void setFontName(const char *name);
    void setFontName(const SbString &name) { setFontName(name.getString()); }
    void setFontSize(float size);

    /// Where labels go; null for measuring only. The group has to outlive the calls of `build`.
    void setGroup(const SoGroup *group) { m_group = const_cast<SoGroup *>(group); }

    /// Wraps texts into lines of at most `lineLength` characters, which end at an `endLineChar`; longer words
    /// stay whole. A length of 0 means no wrapping.
    void setMultiLines(char endLineChar, int lineLength);
    /// 0: every text is one line.
    void setMultiLinesEnable(int flag) { m_multiLinesEnable = flag; }
    int isMultiLinesEnable() const { return m_multiLinesEnable; }

    /// Non-zero: texts read correctly from behind, where they cover what they would cover from the front.
    void setMirrorEnable(int flag) { m_mirrorEnable = flag; }
    int isMirrorEnable() const { return m_mirrorEnable; }

    /// The node name that text nodes get from now on.
    void setName(const SbString &name);

    /// Takes font name, line length and line end character; null is ignored.
    void setTextAttributes(const PbMiscTextAttr *attributes);

    /// Adds the label to the group, and tells the number of its lines and its box in x and y. Without a group
    /// nothing happens, and the outputs keep their values.
    void build();
    void build(int &numLines);
    void build(SbBox2f &box, int &numLines);

    /// Box and number of lines as `build` would tell them; needs no group.
    void getLimit(SbBox2f &box, int &numLines);
    /// The box, with its z, that `build` or `getLimit` told last.
    const SbBox3f &getBoundingBox() const { return m_boundingBox; }

    /// Width and height of `text` in the present font and wrapping.
    void getStringSizes(const char *text, float &width, float &height) const;
    /// The largest width and height of `n` texts, and the first texts that have them (0 when all sizes are
    /// 0).
    void getStringsSizes(const char *const texts[], int n, int &widestIndex, int &highestIndex,
                         float &maxWidth, float &maxHeight) const;

    /// Number of lines that are not empty when `text` is wrapped at the line length; lines need not be
    /// enabled.
    int getSubStringNum(const char *text) const;

    /// The first font size of `startSize`, `startSize` - `decrement`, ... at which `text` is not larger than
    /// `maxWidth` x `maxHeight`; when there is none, the last size above 0. -1 when an argument is not above
    /// 0, or the start size is infinite. The font size stays.
    float computeFontSize(const char *text, float startSize, float decrement, float maxWidth,
                          float maxHeight) const;

private:
    struct Placement;

    oravane::TextLines linesOf(const char *text) const;
    SbBox3f boxOf(const oravane::TextLines &lines, float fontSize, HorAlignment alignment) const;
    SbVec2f sizeOf(const char *text, float fontSize) const;
    Placement placement(const oravane::TextLines &lines) const;
    void buildP(bool wantBox, bool addToGroup, int &numLines);
    void addNodes(const oravane::TextLines &lines, const Placement &place) const;
    void reportBox(SbBox2f &box) const;

    SbVec3f m_origin{0, 0, 0};
    SbVec3f m_directionVectors[2] = {{1, 0, 0}, {0, 1, 0}};
    SbVec2f m_charUpVec{0, 1};
    SbString m_string;
    HorAlignment m_horAlignment = HOR_LEFT;
    VertAlignment m_vertAlignment = VERT_BASE;
    SbName m_fontName{"default"};
    float m_fontSize = 1;
    SoGroup *m_group = nullptr;
    int m_multiLinesEnable = 1;
    int m_mirrorEnable = 0;
    SbBox3f m_boundingBox;
    int m_lineLength = 0;
    char m_endLineChar = ' ';
    SbString m_nodeName;
    bool m_isNamed = false;
};

#endif
