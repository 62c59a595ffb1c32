#ifndef ORAVANE_POLEGEND_H
#define ORAVANE_POLEGEND_H

#include <oravane/PlanarRecords.h>
#include <oravane/PoAttributeConnection.h>
#include <oravane/PoKestrava.h>
#include <oravane/PoSFEnum.h>
#include <oravane/PoShownPart.h>

#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFShort.h>
#include <Inventor/fields/SoSFString.h>

#include <functional>
#include <initializer_list>
#include <vector>

class PiText;

namespace oravane {
class LegendGrid;
struct LegendCells;
} // namespace oravane

/// Frame of all legends: a rectangle with a background and a border, a title, and a grid of boxes with their
/// texts. All texts of the grid have one font size, the largest with which everything fits into the
/// rectangle.
///
/// The rectangle lies in the plane z = 0, in plain coordinates: the transform of a domain does not apply to
/// legends, so that letters keep their shape in every domain. A program that has its map in a domain that
/// scales gives the legend a place in the space that the domain maps to (or an own camera and separator). A
/// rectangle without a width or a height, or with corners that are not finite or beyond 1e30, shows nothing.
/// What lies upon the background is a thousandth of the rectangle's size nearer than it, to be safe from
/// depth buffers, by a translation in each part.
///
/// Relative margins are fractions of width and height. When one of the four is below 0 all become 0.05 of the
/// smaller side; when two opposite ones leave nothing, these two do. Fixed margins are lengths; when two
/// opposite ones leave nothing, or one is not finite or beyond 1e30, all four become that figure.
///
/// The background is black, as screens are, and pages show it white as long as they exchange black and white
/// (`SoVectorizeAction::setColorTranslationMethod`). For a white one on screens,
/// `legend->set("backgroundApp.material { diffuseColor 1 1 1 } appearance.material { diffuseColor 0 0 0 }")`,
/// the latter for texts and borders.
///
/// Generates the parts `background`, `backgroundBorder`, `box`, `boxBorder`, `title` and `valueText`, and the
/// fonts of the last two; what is not needed is null.
class ORAVANE_API PoLegend : public PoKestrava {
    SO_KIT_HEADER(PoLegend);
    ORAVANE_SHOWN_PART_HEADER(background);
    ORAVANE_SHOWN_PART_HEADER(backgroundBorder);
    ORAVANE_SHOWN_PART_HEADER(box);
    ORAVANE_SHOWN_PART_HEADER(boxBorder);
    ORAVANE_SHOWN_PART_HEADER(title);
    ORAVANE_SHOWN_PART_HEADER(valueText);

public:
    enum Position : int { POS_BOTTOM = 0, POS_TOP = 1, POS_RIGHT = 2, POS_LEFT = 3 };
    enum Visibility : int { VISIBILITY_OFF = 0, VISIBILITY_ON = 1 };
    /// Where texts run to: to the right, to the left (upside down), up or down.
    enum TextPath : int { PATH_RIGHT = 0, PATH_LEFT = 1, PATH_UP = 2, PATH_DOWN = 3 };
    enum MarginType : int {
        REL_MARGIN = 0,   ///< margins are fractions of the rectangle's width and height
        FIXED_MARGIN = 1, ///< margins are lengths
    };
    enum IncrementType : int {
        VERTICAL_INCREMENT = 0,   ///< boxes are counted down (value legends: up) a column, then the next one
        HORIZONTAL_INCREMENT = 1, ///< along a row, then the next one
    };

    PoSFEnum titleVisibility; ///< default VISIBILITY_OFF
    PoSFEnum titlePosition;   ///< side of the legend; default POS_BOTTOM
    PoSFEnum titlePath;       ///< default PATH_RIGHT
    /// Default 0: a fifth larger than the other texts, as for what is no size. A title that is too long, or
    /// takes more than half of the legend, is made smaller.
    SoSFFloat titleFontSize;
    SoSFString titleFontName;          ///< default empty: that of the text attributes
    SoSFString titleString;            ///< default empty
    PoSFEnum valueVisibility;          ///< of the texts of the boxes; default VISIBILITY_ON
    PoSFEnum valuePosition;            ///< of a text, seen from its box; default POS_RIGHT
    SoSFString valueFontName;          ///< default empty: that of the text attributes
    SoSFBool valueAddStringVisibility; ///< default FALSE
    SoSFString valueAddString;         ///< behind each text, such as a unit; default empty
    PoSFEnum marginType;               ///< default REL_MARGIN
    SoSFFloat marginLeft;              ///< default 0.05
    SoSFFloat marginRight;             ///< default 0.05
    SoSFFloat marginBottom;            ///< default 0.05
    SoSFFloat marginTop;               ///< default 0.05
    PoSFEnum incrementType;            ///< default VERTICAL_INCREMENT
    SoSFShort numColumns;              ///< default 1, which stands for less, too
    SoSFFloat boxRatio;                ///< height of a box by its width, default 1, also for what is no ratio

    static void initClass();

    /// Font name and line length of the texts: of the object given here, else of the scene. Not owned; one
    /// that is deleted is forgotten. Outside of a traversal, without an own object, a default one.
    void setMiscTextAttr(PbMiscTextAttr *attributes);
    const PbMiscTextAttr *getMiscTextAttr() const;

protected:
    PoLegend();
    ~PoLegend() override;
    void preRebuild() override;
    void addElementsAllCaches() override;
    void setDefaultOnNonWritingFields() override;

    /// What the fields say, with what is left open or makes no sense replaced.
    struct LegendAttr {
        bool hasTitle = false;
        Position titlePosition = POS_BOTTOM;
        TextPath titlePath = PATH_RIGHT;
        float titleFontSize = 0; ///< 0 until it is found
        SbString titleFontName;
        bool hasValues = true;
        Position valuePosition = POS_RIGHT;
        SbString valueFontName;
        SbString addString; ///< empty when it is not visible
        float boxRatio = 1;
    };
    /// The font size of the grid, fitted into a width and a height.
    using FontSizeFunction = std::function<float(float, float)>;

    // ---- what a rebuild of a legend does, in this order

    /// Takes over the fields. Nothing is drawn yet.
    void setDefaultAttr();
    const LegendAttr &attr() const { return m_attr; }
    /// Draws background and title of the legend between two corners, and tells the room for its grid; false,
    /// with nothing drawn, when there is no such legend. The font size of the grid is asked for to find that
    /// of the title; null for no grid.
    bool drawFrame(const SbVec2f &start, const SbVec2f &end, const FontSizeFunction &fontSizeIn,
                   Plimit &room);
    /// Of a grid of these cells; null where there are none. The cells have to outlive it.
    static FontSizeFunction fontSizeOf(const oravane::LegendCells &cells);
    /// Hands a new node over to the kit, under the name of its part. A group is complete by then.
    void newPart(const char *name, SoNode *node);
    /// Sets all parts of the legend: those that `newPart` was called for, and null for the others, those of a
    /// child named here included. The last step, as sensors of the program may change objects.
    void setNewParts(std::initializer_list<const char *> partsOfChild);

    // ---- its pieces

    /// Lower left corner, width and height of the rectangle within the margins.
    void computeMarginA(const SbVec2f &start, float width, float height, SbVec2f &newStart, float &newWidth,
                        float &newHeight);
    /// Extent of the title within a legend of this size, at the font size of the working attributes, which is
    /// made smaller when the title does not fit.
    void computeTitleSizeA(float width, float height, float &titleWidth, float &titleHeight);
    /// New parts of the rectangle and its border.
    void drawBackgroundA(const SbVec2f &start, float width, float height);
    /// New part of a title of this extent at its side of `room`, which loses what the title and a gap take.
    void drawTitleA(float titleWidth, float titleHeight, Plimit &room);
    /// New parts `box` and `boxBorder` with all boxes of the grid, by `drawBoxLegendBoxesA`.
    void drawBoxesLegendBoxesA(const oravane::LegendGrid &grid, const SbVec2f &corner, int count);
    /// New parts `valueText` and its font with the texts of the grid.
    void drawValuesLegendBoxesA(const oravane::LegendGrid &grid, const SbVec2f &corner,
                                const std::vector<SbString> &strings);
    /// Adds the face and the border of box `index` to groups that hold those of all boxes; here in the colour
    /// of the scene.
    virtual void drawBoxLegendBoxesA(SoGroup *face, SoGroup *border, const SbVec2f &corner, float width,
                                     float height, int index);
    /// Widths in the row of a box, a line and a marker, in font sizes; 0 for what is not shown. Here a box.
    virtual void computeGraphicSizeForValues(float &boxWidth, float &lineWidth, float &markerWidth);

    /// What fields and `computeGraphicSizeForValues` say of the cells; `texts` are the sizes of theirs.
    oravane::LegendCells cellsOf(int count, const std::vector<SbVec2f> &texts);
    /// Where texts and graphics upon a box lie, and boxes upon the background.
    float textZ() const { return 0; }
    float boxZ() const { return -m_layer; }
    /// Larger side of the legend.
    float largerSide() const;
    /// A builder of value texts.
    PiText valueTextBuilder() const;
    void newFontPart(const char *name, const SbString &fontName, float size);

private:
    class NewParts;

    void fitTitle(float width, float height, const FontSizeFunction &fontSizeIn, float &titleWidth,
                  float &titleHeight);
    bool isTitleAside() const {
        return m_attr.titlePosition == POS_LEFT || m_attr.titlePosition == POS_RIGHT;
    }
    float titleGap(float side) const;
    PiText titleBuilder() const;

    PoMiscTextAttrConnection m_miscTextAttr{this};
    LegendAttr m_attr;
    float m_layer = 0;
    std::unique_ptr<NewParts> m_newParts;
};

#endif
