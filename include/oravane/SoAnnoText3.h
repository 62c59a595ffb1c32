#ifndef ORAVANE_SOANNOTEXT3_H
#define ORAVANE_SOANNOTEXT3_H

#include <oravane/OravaneApi.h>

#include <Inventor/nodes/SoSubNode.h>
#include <Inventor/nodes/SoText3.h>

/// Annotation text: flat letters in the xy plane of the object space, facing z, of the font's size there. On
/// the screen it is the front of an `SoText3`: lit or not like any shape (the normal is (0, 0, 1), the
/// material the first one), and picked with an `SoTextDetail`. Unlike that it can reach a page as text
/// proper, which can be searched and selected: see `SoAnnoText3Property`.
///
/// \code
///   Font { name "Helvetica" size 0.2 }
///   SoAnnoText3 { string [ "Depth", "in metres" ] spacing 1.2 justification CENTER }
/// \endcode
///
/// Fields, those of `SoText3`: `string`, one line each, empty at first; `spacing`, 1; `justification`, LEFT,
/// RIGHT or CENTER of the origin; `parts` stays FRONT. The base of line k is at y = -k * font size *
/// `spacing`. An end of line inside a string ends no line. The box holds, for each line that is not empty,
/// the line's length by the height of its letters; without such a line it is empty.
///
/// A font that the machine does not have is replaced by the machine's choice, and by the toolkit's built-in
/// letters where there is none; no display is needed.
class ORAVANE_API SoAnnoText3 : public SoText3 {
    SO_NODE_HEADER(SoAnnoText3);

public:
    SoAnnoText3();
    /// Registers the class, and lets callback and rendering traversals carry the elements of annotation text.
    static void initClass();

    void write(SoWriteAction *action) override;
    void addWriteReference(SoOutput *out, SbBool isFromField = FALSE) override;

protected:
    ~SoAnnoText3() override = default;
    void computeBBox(SoAction *action, SbBox3f &box, SbVec3f &center) override;
    SbBool readInstance(SoInput *in, unsigned short flags) override;
};

#endif
