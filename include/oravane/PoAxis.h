#ifndef ORAVANE_POAXIS_H
#define ORAVANE_POAXIS_H

#include <oravane/PlanarRecords.h>
#include <oravane/PoAttributeConnection.h>
#include <oravane/PoBaseAxis.h>
#include <oravane/PoSFEnum.h>
#include <oravane/PoShownPart.h>

#include <Inventor/SbString.h>
#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFString.h>
#include <Inventor/fields/SoSFUShort.h>

#include <span>
#include <string>
#include <vector>

class PiText;

/// Common body of every single axis: its attributes, and how body, arrow, ticks, grid lines, graduation texts
/// and title are drawn. Child classes (`PoLinearAxis`, `PoGenAxis`, `PoTimeAxis`) decide where graduations
/// are and what they say.
///
/// \code
///   auto *axis = new PoLinearAxis(...);
///   axis->titleVisibility = PoAxis::VISIBILITY_ON;
///   axis->titleString = "Depth (m)";
///   axis->set("mainGradGridApp.drawStyle { linePattern 0x1111 }");
/// \endcode
///
/// The local frame. An axis lies on the local x axis, from its start to its end in units of the data; local
/// +y is the side called above. The part `transform` maps this frame into place, and stretches y so that what
/// is drawn keeps its proportions in a domain of very different sizes. "Fraction of the scale" below means a
/// fraction of the extent of the domain along the axis.
///
/// Attributes left to depend are settled by the orientation of the axis, sizes of 0 automatically; the
/// getters tell the result once the kit is built. Graduation texts shrink until neighbours do not touch: none
/// is left out. Each thing that is drawn keeps clear of those before it: ticks, labels, factor, title.
///
/// With `AXIS_REVERSE` an axis is made to be seen from behind: its texts are mirrored.
///
/// Generates `transform`, `body`, `arrow`, `title`, `subGradTick`, `subGradGrid`, `mainGradTick`,
/// `mainGradGrid`, `mainGradText`, and the fonts of `mainGradTextApp` and `titleApp`. Where start and end are
/// equal, or not finite, there is no axis to draw and the parts stay as they were.
class ORAVANE_API PoAxis : public PoBaseAxis {
    SO_KIT_HEADER(PoAxis);
    SO_KIT_CATALOG_ENTRY_HEADER(transform);
    ORAVANE_SHOWN_PART_HEADER(body);
    ORAVANE_SHOWN_PART_HEADER(arrow);
    ORAVANE_SHOWN_PART_HEADER(title);
    ORAVANE_SHOWN_PART_HEADER(subGradTick);
    ORAVANE_SHOWN_PART_HEADER(subGradGrid);
    ORAVANE_SHOWN_PART_HEADER(mainGradTick);
    ORAVANE_SHOWN_PART_HEADER(mainGradGrid);
    ORAVANE_SHOWN_PART_HEADER(mainGradText);

public:
    enum Visibility : int { VISIBILITY_OFF = 0, VISIBILITY_ON = 1, VISIBILITY_DEPEND = 2 };
    enum TextPath : int {
        PATH_RIGHT = 0,
        PATH_LEFT = 1,
        PATH_UP = 2,
        PATH_DOWN = 3,
        PATH_DEPEND = 4,
    };
    enum GradPosition : int { GRAD_ABOVE = 0, GRAD_BELOW = 1, GRAD_DEPEND = 2 };
    enum MarginType : int {
        REL_MARGIN = 0,   ///< margins are fractions of the axis
        FIXED_MARGIN = 1, ///< margins are in units of the data
    };
    enum TickPosition : int { TICK_GRAD_SIDE = 0, TICK_GRAD_OTHER_SIDE = 1, TICK_ACROSS_AXIS = 2 };
    enum TitlePosition : int { TITLE_MIDDLE = 0, TITLE_END = 1, TITLE_DEPEND = 2 };
    enum TickSubDef : int {
        NUM_SUB_TICK = 0,     ///< `tickNumOrPeriod` sub ticks between two main ones
        PERIOD_MAIN_TICK = 1, ///< every `tickNumOrPeriod`-th graduation is main, the others are sub ticks
    };
    enum AxisReverse : int { AXIS_NO_REVERSE = 0, AXIS_REVERSE = 1, AXIS_REVERSE_DEPEND = 2 };
    /// An orientation: a `PoCartesianAxis::Type`.
    using Plane = int;

    PoSFEnum gradVisibility;           ///< default VISIBILITY_DEPEND
    PoSFEnum gradPosition;             ///< side of the texts, default GRAD_DEPEND
    PoSFEnum gradPath;                 ///< default PATH_DEPEND
    SoSFString gradFontName;           ///< default empty: that of the text attributes
    SoSFFloat gradFontSize;            ///< fraction of the scale, default 0: 0.04, or less where texts touch
    SoSFFloat gradDistAxis;            ///< fraction of the scale, default 0: clear of the ticks
    SoSFBool gradAddStringVisibility;  ///< off until it is set to TRUE
    SoSFString gradAddString;          ///< behind every label (a unit), default empty
    PoSFEnum marginType;               ///< default REL_MARGIN
    SoSFFloat marginStart;             ///< kept free of graduations, default 0
    SoSFFloat marginEnd;               ///< the same at the end, default 0; margins that cross leave none
    PoSFEnum titleVisibility;          ///< default VISIBILITY_DEPEND
    PoSFEnum titlePosition;            ///< default TITLE_DEPEND
    PoSFEnum titlePath;                ///< default PATH_DEPEND
    SoSFString titleFontName;          ///< default empty: that of the text attributes
    SoSFFloat titleFontSize;           ///< fraction of the scale, default 0: 0.055
    SoSFFloat titleDistAxis;           ///< fraction of the scale, default 0: clear of all else
    SoSFString titleString;            ///< default empty
    PoSFEnum gridVisibility;           ///< default VISIBILITY_DEPEND
    SoSFFloat gridLengthGradSide;      ///< in units of the world across the axis, default 0
    SoSFFloat gridLengthGradOtherSide; ///< the same on the side without texts, default 1
    PoSFEnum arrowVisibility;          ///< default VISIBILITY_DEPEND
    SoSFFloat arrowHeight;             ///< fraction of the scale, default 0: 0.03
    SoSFFloat arrowLength;             ///< fraction of the scale, default 0: 0.05
    PoSFEnum tickVisibility;           ///< default VISIBILITY_DEPEND
    PoSFEnum tickPosition;             ///< default TICK_GRAD_SIDE
    SoSFFloat
        tickMainLength; ///< fraction of the scale, default 0: 0.012 to 0.025 by the number of graduations
    SoSFFloat tickSubLength;    ///< fraction of the scale, default 0: half the main length
    PoSFEnum tickSubDef;        ///< default PERIOD_MAIN_TICK
    SoSFUShort tickNumOrPeriod; ///< default 1; a period of 0 counts as 1
    SoSFUShort tickFirstGrad;   ///< first main graduation, from 1 at the start; default 1, as for 0
    SoSFUShort tickLastGrad;    ///< last main graduation, from 1 at the end; default 1, as for 0
    PoSFEnum reverseFlag;       ///< default AXIS_REVERSE_DEPEND

    static void initClass();

    /// Font and line length of the texts: the object given here, else that of the scene. Not owned; one that
    /// is deleted is forgotten. Outside of a traversal, without an own object, a default one.
    void setMiscTextAttr(PbMiscTextAttr *attributes);
    const PbMiscTextAttr *getMiscTextAttr() const;

    // The attributes: as the fields have them, and once the kit `isBuilt()`, as they are in force.

    void getGrad(Visibility &visibility, GradPosition &position, TextPath &path, SbString &fontName,
                 float &fontSize, float &distAxis, int &addStringVisibility, SbString &addString) const;
    void getMargin(MarginType &type, float &start, float &end) const;
    void getTitle(Visibility &visibility, TitlePosition &position, TextPath &path, SbString &fontName,
                  float &fontSize, float &distAxis, SbString &string) const;
    void getGrid(Visibility &visibility, float &lengthGradSide, float &lengthGradOtherSide) const;
    void getArrow(Visibility &visibility, float &height, float &length) const;
    void getTick(Visibility &visibility, TickPosition &position, float &mainLength, float &subLength,
                 TickSubDef &subDef, unsigned short &numOrPeriod, unsigned short &firstGrad,
                 unsigned short &lastGrad) const;
    AxisReverse getReverseFlag() const;

    /// Number of graduations with and without a text, and their coordinates along the axis; the array is
    /// valid until the next rebuild. 0 and null before the first one.
    int getMainGradCoords(const float *&coords) const;
    int getSubGradCoords(const float *&coords) const;

protected:
    /// What a rebuild makes; it becomes the kit's when all is made. Null: the part stays as it was.
    struct Parts {
        SoNode *transform = nullptr;
        SoGroup *body = nullptr;
        SoGroup *arrow = nullptr;
        SoGroup *subGradTick = nullptr;
        SoGroup *subGradGrid = nullptr;
        SoGroup *mainGradTick = nullptr;
        SoGroup *mainGradGrid = nullptr;
        SoGroup *mainGradText = nullptr;
        SoGroup *title = nullptr;
        SoNode *gradFont = nullptr;
        SoNode *titleFont = nullptr;
    };

    struct GradAttr {
        Visibility visibility = VISIBILITY_DEPEND;
        GradPosition position = GRAD_DEPEND;
        TextPath path = PATH_DEPEND;
        float fontSize = 0;
        SbString fontName;
        float distAxis = 0;
    };
    struct TitleAttr {
        Visibility visibility = VISIBILITY_DEPEND;
        TitlePosition position = TITLE_DEPEND;
        TextPath path = PATH_DEPEND;
        float fontSize = 0;
        SbString fontName;
        float distAxis = 0;
    };
    /// The attributes in force. A rebuild reads only these, and writes what it settles back into them.
    struct AxisAttr {
        GradAttr grad;
        MarginType marginType = REL_MARGIN;
        float marginStart = 0;
        float marginEnd = 0;
        TitleAttr title;
        Visibility gridVisibility = VISIBILITY_DEPEND;
        float gridLengthGradSide = 0;
        float gridLengthGradOtherSide = 0;
        Visibility arrowVisibility = VISIBILITY_DEPEND;
        float arrowHeight = 0;
        float arrowLength = 0;
        Visibility tickVisibility = VISIBILITY_DEPEND;
        TickPosition tickPosition = TICK_GRAD_SIDE;
        float tickMainLength = 0;
        float tickSubLength = 0;
        TickSubDef tickSubDef = PERIOD_MAIN_TICK;
        int tickNumOrPeriod = 0;
        int tickFirstGrad = 0;
        int tickLastGrad = 0;
        AxisReverse reverseFlag = AXIS_REVERSE_DEPEND;
        float scaleAlong = 1;         ///< extent of the domain along the axis
        float scalePerpendicular = 1; ///< extent of the domain across it
        Plimit limit{0, 0, 0, 0};     ///< local box of what has been drawn so far
        char endLineChar = ' ';
        int lineLength = 0;
    };

    explicit PoAxis(void (*catchAction)(void *, SoAction *) = nullptr);
    ~PoAxis() override;

    /// Takes the attributes from the fields; the scales are those of the domain in x and y.
    virtual void saveAxisAttr();
    /// Settles the attributes that depend on the orientation.
    virtual void setDefaultAttr(Plane plane);
    /// The part of the axis that may have graduations. Margins that cross give `limitStart` = `limitEnd`.
    virtual void computeGradLimit(float start, float end, float &limitStart, float &limitEnd);
    /// Settles the lengths of ticks for an axis of so many graduations.
    virtual void computeTickLen(int numGrads, float &mainLength, float &subLength);

    // The builders add shapes to a group, and widen the limit to what they draw (grid lines do not).

    virtual void buildArrow(float start, float end, SoGroup *group);
    /// `length` is a fraction of the scale.
    virtual void buildTick(int n, const float *coords, float length, SoGroup *group);
    virtual void buildGridLines(int n, const float *coords, SoGroup *group);
    /// Without texts to show, the font size in force becomes 0.
    virtual void buildGrads(int n, const float *coords, const char *const *strings, SoGroup *group);

    /// Divides graduations between `start` and `end` into main and sub ones, which become those of the kit;
    /// returns the labels of the main ones. `step` is the distance of graduations, 0 when unknown.
    std::vector<std::string> computeGradList(float start, float end, float step,
                                             std::span<const float> coords,
                                             std::span<const std::string> labels);
    /// The texts of a row of graduations. Those of rows behind the first one stand beyond all that is drawn,
    /// whatever the distance wanted. The first row settles the font size.
    void buildGradRow(TextPath path, bool isFirstRow, int n, const float *coords, const char *const *strings,
                      SoGroup *group);
    void buildTitle(float start, float end, SoGroup *group);
    /// A power of ten beyond `to`, seen from `from`. A `distAxis` of 0 is settled.
    void buildMultFactorAtExtr(int tenPower, float from, float to, float &distAxis, SoGroup *group);

    // The steps that rebuilds of axes share, in this order.

    void drawBody(float start, float end, Parts &parts);
    /// Ticks, grid lines and texts of `numGrads` graduations that `computeGradList` has divided.
    void drawGraduations(int numGrads, std::span<const std::string> mainLabels, Parts &parts);
    /// Groups of ticks and grid lines.
    void drawTicks(std::span<const float> coords, float length, SoGroup *&ticks, SoGroup *&gridLines);
    void drawTitle(float start, float end, Parts &parts);
    void setParts(const Parts &parts);

    void preRebuild() override;
    void addElementsAllCaches() override;
    void setDefaultOnNonWritingFields() override;

    /// A new font node for graduation texts; null when there are none to see.
    SoNode *newGradFont() const;
    /// The path that texts run in the local frame: reversal exchanges up and down.
    TextPath effectivePath(TextPath path) const;
    /// Sets all of a text but its place and size.
    void prepareText(PiText &text, const SbString &fontName, SoGroup *group) const;
    /// A fraction of the scale in units of the axis; 0 for one beyond all numbers.
    float lengthOf(float fraction) const;
    void widenLimit(float x, float y);
    void buildLabel(PiText &text, float x, float y, const char *string);

    AxisAttr m_attr;
    float m_length = 0; ///< of the body
    std::vector<float> m_mainCoords, m_subCoords;

private:
    void addFields();
    void addEnumerations();
    void readFields(AxisAttr &attr) const;
    AxisAttr attributes() const;
    void chainFactor(PiText &text, TextPath path, const char *exponent, bool isRight, float anchor,
                     float size);
    void stackFactor(PiText &text, TextPath path, const char *exponent, bool isRight, float anchor,
                     float size);
    float gradFontSizeInForce(const PiText &text, int n, const float *coords,
                              const char *const *strings) const;
    float gradBaseline(float size, bool isFirstRow);

    PoMiscTextAttrConnection m_miscTextAttr{this};
};

#endif
