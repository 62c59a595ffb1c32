#ifndef ORAVANE_POHISTOGRAM_H
#define ORAVANE_POHISTOGRAM_H

#include <oravane/PoAttributeConnection.h>
#include <oravane/PoKestrava.h>
#include <oravane/PoSFEnum.h>
#include <oravane/PoShownPart.h>

#include <Inventor/fields/SoMFColor.h>
#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFString.h>
#include <Inventor/fields/SoSFVec2f.h>

class PbDataMapping;
class PiText;
class SoMaterial;

/// What all bar charts share: bars along a segment that starts at `start` and runs in the direction of x or
/// y, and texts at the bars. `PoSingleHistogram` draws one series of values, and says how.
///
/// Font sizes are factors of the domain's x side. In a domain of unequal sides the kit draws in a space whose
/// y has the unit of x, and the part `transform` takes that back: letters keep their shape, and bars end at
/// their values.
///
/// Texts grow away from the side of the bar that their position names, whichever way they run: an ..._OUT
/// position puts them outside of the bar, an ..._IN position inside of it. A bar that goes down has its value
/// at the bottom: top and bottom, left and right are those of the page.
///
/// Bars are drawn unlit, so that their colours are those of a legend. The mapping, the text attributes and
/// the numeric format are those set here, else those of the scene.
///
/// Generates `transform`, `bar`, `valueText`, `nameText`, `valueTextApp.font`, `nameTextApp.font`, and
/// `barApp.material` while the kit colours the bars; what is not needed is null.
class ORAVANE_API PoHistogram : public PoKestrava {
    SO_KIT_HEADER(PoHistogram);
    SO_KIT_CATALOG_ENTRY_HEADER(transform);
    ORAVANE_SHOWN_PART_HEADER(bar);
    ORAVANE_SHOWN_PART_HEADER(valueText);
    ORAVANE_SHOWN_PART_HEADER(nameText);

public:
    enum Type : int {
        X = 0, ///< bars stand side by side along x and grow along y
        Y = 1, ///< along y, and grow along x
    };
    enum Position : int {
        POS_TOP_OUT = 0,
        POS_TOP_IN = 1,
        POS_BOTTOM_OUT = 2,
        POS_BOTTOM_IN = 3,
        POS_RIGHT_OUT = 4,
        POS_RIGHT_IN = 5,
        POS_LEFT_OUT = 6,
        POS_LEFT_IN = 7,
        POS_CENTER = 8,
        POS_DEPEND = 9, ///< by type: values at POS_TOP_OUT or POS_RIGHT_OUT, names across from them, outside
    };
    enum Visibility : int { VISIBILITY_OFF = 0, VISIBILITY_ON = 1 };
    enum TextPath : int {
        PATH_RIGHT = 0,
        PATH_LEFT = 1, ///< upside down
        PATH_UP = 2,
        PATH_DOWN = 3,
        PATH_DEPEND = 4, ///< PATH_RIGHT
    };
    enum BarSpaceType : int {
        REL_SPACE = 0,   ///< `barSpaceValue` is a part of the room of a bar
        FIXED_SPACE = 1, ///< it is a length
    };
    enum Coloring : int {
        COLOR_LIST = 0,   ///< `color`, where it has one for each value; else the colour of the scene
        DATA_MAPPING = 1, ///< by value
    };

    SoSFVec2f start;   ///< default (0, 0)
    SoSFFloat end;     ///< x (or y) of the end of the segment, default 1; below that of `start` bars run back
    PoSFEnum type;     ///< default X
    SoMFColor color;   ///< default black
    PoSFEnum coloring; ///< default COLOR_LIST
    PoSFEnum valueVisibility;          ///< default VISIBILITY_ON
    PoSFEnum valuePosition;            ///< default POS_DEPEND
    PoSFEnum valuePath;                ///< default PATH_DEPEND
    SoSFFloat valueFontSize;           ///< in x sides of the domain; default 0: 0.04, as for what is no size
    SoSFString valueFontName;          ///< default empty: that of the text attributes
    SoSFBool valueAddStringVisibility; ///< default FALSE
    SoSFString valueAddString;         ///< stands behind each value, a unit for example; default empty
    PoSFEnum nameVisibility;           ///< default VISIBILITY_ON
    PoSFEnum namePosition;             ///< default POS_DEPEND
    PoSFEnum namePath;                 ///< default PATH_DEPEND
    SoSFFloat nameFontSize;            ///< as `valueFontSize`
    SoSFString nameFontName;           ///< default empty
    PoSFEnum barSpaceType;             ///< default REL_SPACE
    SoSFFloat barSpaceValue;           ///< the gap between bars, default 0.25; what is not finite counts as 0

    static void initClass();

    /// Colours bars under DATA_MAPPING. Not owned; one that is deleted is forgotten. The mapping in force
    /// inside of a traversal can be that of the scene; null where there is none.
    void setDataMapping(PbDataMapping *mapping);
    const PbDataMapping *getDataMapping() const;
    /// Font of the texts, in the same way; never null. Texts are not broken into lines.
    void setMiscTextAttr(PbMiscTextAttr *attributes);
    const PbMiscTextAttr *getMiscTextAttr() const;
    /// How values are written, in the same way; never null.
    void setFormat(PbNumericDisplayFormat *format);
    const PbNumericDisplayFormat *getFormat() const;

    /// The origin of a text at `position` of the bar with these corners, three at least: half of a capital's
    /// height off the side, in its middle. What is no position, and POS_DEPEND, is POS_CENTER.
    static void computeTextPos(const SbVec2f *corners, Position position, float fontSize, SbVec2f &origin);
    /// Gives `text` the path, and the alignment by which it grows away from the side. PATH_DEPEND is
    /// PATH_RIGHT.
    static void computeTextAlignPath(Position position, TextPath path, PiText *text);

protected:
    /// How one kind of texts is drawn, as fields, attributes and domain make it.
    struct TextStyle {
        Position position = POS_DEPEND;
        TextPath path = PATH_RIGHT;
        float fontSize = 0.04f;
        SbString fontName;
    };
    /// What a rebuild makes; null for what is not needed.
    struct Parts {
        SoNode *transform = nullptr;
        SoNode *bar = nullptr;
        SoMaterial *barMaterial = nullptr;
        SoNode *valueText = nullptr;
        SoNode *valueFont = nullptr;
        SoNode *nameText = nullptr;
        SoNode *nameFont = nullptr;
    };

    PoHistogram();
    ~PoHistogram() override = default;

    /// Takes the working copies below from the fields. A position of POS_DEPEND stays.
    virtual void setDefaultAttr();
    /// Adds to the group of the bars what colours them, ahead of the geometry, and gives the material for
    /// `barApp` to `m_parts`. Here: nothing.
    virtual void colorBars(SoGroup *bars);
    /// Whether texts at `position` lie on the bar, that is at an ..._IN position or in the middle.
    static bool isOnBar(Position position);
    /// Sets all that `m_parts` has, and null for what it has not.
    void setParts();

    void preRebuild() override;
    void addElementsAllCaches() override;
    void setDefaultOnNonWritingFields() override;
    void manageBasicObjectChange(PbBase *object, PbBase **member) override;
    void copyContents(const SoFieldContainer *from, SbBool copyConnections) override;

    // Of the rebuild under way.
    TextStyle m_valueStyle, m_nameStyle;
    double m_aspect = 1; ///< the unit of x in units of y: the x side of the domain by its y side
    Parts m_parts;

private:
    void defineEnumerations();
    bool isBarMaterialGenerated() const;
    void setBarMaterial(SoMaterial *material);

    PoConnection<PbDataMapping> m_dataMapping{this};
    PoMiscTextAttrConnection m_miscTextAttr{this};
    PoNumericFormatConnection m_format{this};
    SbUniqueId m_barMaterialId = 0; ///< of the node that was generated; changed by a program it is another
};

#endif
