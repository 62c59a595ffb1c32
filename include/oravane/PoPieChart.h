#ifndef ORAVANE_POPIECHART_H
#define ORAVANE_POPIECHART_H

#include <oravane/PoAttributeConnection.h>
#include <oravane/PoKestrava.h>
#include <oravane/PoSFEnum.h>
#include <oravane/PoShownPart.h>

#include <Inventor/fields/SoMFColor.h>
#include <Inventor/fields/SoMFFloat.h>
#include <Inventor/fields/SoMFShort.h>
#include <Inventor/fields/SoMFString.h>
#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFString.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

class SoPath;

namespace oravane {
struct PieAnnotAttr;
struct PieAnnotFields;
struct PieAnnotParts;
} // namespace oravane

/// What pie charts have in common: the values and their slices, and the annotations inside of the slices and
/// around the pie. `PoPieChart2D` and `PoPieChart3D` draw them.
///
/// \code
///   auto *pie = new PoPieChart2D;
///   pie->sliceText.setValues(0, 3, names);
///   pie->sliceValue.setValues(0, 3, values);
///   pie->sliceColor.setValues(0, 3, colors);
///   pie->extAnnotPercentVisibility = TRUE;        // "57%" below each name
///   pie->extAnnotTextFontSize = 0.08f;
///   pie->setSliceToTranslate(2, 0.1f);            // the second slice stands out
///   scene->addChild(pie);
/// \endcode
///
/// Slices. There are as many as `sliceValue` and `sliceText` both have entries, at most 360, numbered from 1.
/// They follow each other counter-clockwise from the x axis, with angles in proportion to their values. A
/// value that is not above 0, or not finite, makes no slice and counts nowhere. When two slices or more are
/// below `sliceGroupMinValue` (a value, or a part in a hundred of the sum), they are replaced by one slice
/// of their sum, the last of all; it has the number behind the last value. Slice k has colour k - 1 of
/// `sliceColor`, which is repeated as often as needed, the slice of small ones the last colour; without
/// colours all have that of the scene. Nothing is drawn without slices, when the radius is not above 0 or is
/// above 1e12, or when a coordinate of the centre is not finite. A text too far off for its place to be
/// squared is left out.
///
/// Annotations have up to three lines, text, value and percent, that stand below each other; one without
/// letters is left out. Values are written as the numeric format says, `setFormat` or that of the scene: an
/// automatic one all as exactly as the value that needs the most decimals, of five digits, and in full up to
/// powers of ten of 6. A power that is factored out stands behind each number, "2.5E9"; but where a program
/// chooses the power by its format and shows the additional string, that names it, "2.5 TWh". Percents end
/// with "%". The lines of one annotation have common left or right edges, or middles, as its alignment says;
/// INWARDS_ALIGN is LEFT_ALIGN at the right of the pie and RIGHT_ALIGN at its left, OUTWARDS_ALIGN the
/// opposite. Straight up and down belong to the right.
///
/// Inside, the middle of an annotation lies in the middle angle of its slice, at `intAnnotDistance`; one that
/// is too large for its slice is drawn all the same. Outside, an arrow leads from `extAnnotDistance1`, next
/// to the slice, outwards by `extAnnotDistance2`, and on to the annotation by `extAnnotDistance3`.
/// Annotations keep off each other, off the disc and off slices that stand out: see `AnnotPosPieChart`.
/// Without arrows they stand where the tips would.
///
/// Lengths. Distances, arrow sizes and `sliceAngleStep` that are not above 0 or not finite have their
/// default: 2/3 for `intAnnotDistance`; 1.05, 0.1 and 0.2 for the outer ones; 0.015 for arrow heads; 2
/// degrees. Distances and arrow sizes are multiples of the radius. Font sizes are not; their default is 0.025
/// radii. A length of more than a million radii counts as a million. The transform of a domain does not apply
/// to pies, so that discs stay round in every domain: as legends, they stand in plain coordinates.
///
/// Parts. Each group of the catalog has an appearance part, say `extAnnotTextApp`, for colours, lines and
/// fonts; its font is generated. Annotations are drawn over everything, boxes before texts. Boxes and their
/// borders are made with all annotations and drawn with the style INVISIBLE at first:
///
/// \code
///   pie->set("extAnnotBoxApp.drawStyle { style FILLED } extAnnotBoxApp.material { diffuseColor 1 1 0.8 }"
///            "extAnnotBoxBorderApp.drawStyle { style LINES }");
/// \endcode
///
/// Pages exchange black and white, so that a white box is black there. Texts, borders and arrows have the
/// colour of the scene at first. Shapes of slices and borders and the texts have names, by which picks find
/// their slice; boxes cannot be picked.
class ORAVANE_API PoPieChart : public PoKestrava {
    SO_KIT_HEADER(PoPieChart);
    ORAVANE_SHOWN_PART_HEADER(slice);
    ORAVANE_SHOWN_PART_HEADER(sliceBorder);
    ORAVANE_SHOWN_PART_HEADER(extAnnotBox);
    ORAVANE_SHOWN_PART_HEADER(extAnnotBoxBorder);
    ORAVANE_SHOWN_PART_HEADER(extAnnotText);
    ORAVANE_SHOWN_PART_HEADER(extAnnotValue);
    ORAVANE_SHOWN_PART_HEADER(extAnnotPercent);
    ORAVANE_SHOWN_PART_HEADER(arrow);
    ORAVANE_SHOWN_PART_HEADER(intAnnotBox);
    ORAVANE_SHOWN_PART_HEADER(intAnnotBoxBorder);
    ORAVANE_SHOWN_PART_HEADER(intAnnotText);
    ORAVANE_SHOWN_PART_HEADER(intAnnotValue);
    ORAVANE_SHOWN_PART_HEADER(intAnnotPercent);

public:
    /// Where annotations stand. Both fields take all of them: inside, all but the radial ones are
    /// HOR_INT_POS; outside, the INT ones are as their EXT counterparts.
    enum AnnotPosPieChart : int {
        RADIAL_INT_POS = 0, ///< along the radius, never upside down
        HOR_INT_POS = 1,
        RADIAL_EXT_POS = 2,         ///< along the radius, on a circle that has room for all
        HOR_EXT_POS = 3,            ///< beside the slices; pushed up or down to where there is room
        HOR_ALIGNED_EXT_POS = 4,    ///< in a row above the pie and a row below it
        VERT_ALIGNED_EXT_POS = 5,   ///< in a column at either side
        SQUARE_ALIGNED_EXT_POS = 6, ///< in both, a square that is as large as it has to be
    };
    enum AnnotAlignPieChart : int {
        LEFT_ALIGN = 0,
        CENTER_ALIGN = 1,
        RIGHT_ALIGN = 2,
        INWARDS_ALIGN = 3,
        OUTWARDS_ALIGN = 4,
    };
    enum SliceGroupFlag : int { ABSOLUTE = 0, PERCENTAGE = 1 };

    SoSFFloat radius;     ///< default 1
    SoMFString sliceText; ///< default none
    SoMFFloat sliceValue; ///< default none
    SoMFColor sliceColor; ///< default black; may be empty

    PoSFEnum intAnnotPosition;            ///< default HOR_INT_POS
    PoSFEnum intAnnotAlignment;           ///< default CENTER_ALIGN
    SoSFBool intAnnotTextVisibility;      ///< default FALSE
    SoSFBool intAnnotValueVisibility;     ///< default TRUE
    SoSFBool intAnnotPercentVisibility;   ///< default FALSE
    SoSFBool intAnnotAddStringVisibility; ///< default FALSE
    SoSFString intAnnotTextFontName;      ///< default empty: that of the text attributes
    SoSFString intAnnotValueFontName;
    SoSFString intAnnotPercentFontName;
    SoSFFloat intAnnotTextFontSize; ///< default 0: 0.025 radii
    SoSFFloat intAnnotValueFontSize;
    SoSFFloat intAnnotPercentFontSize;
    SoSFString intAnnotAddString; ///< behind each value, default empty
    SoSFFloat intAnnotDistance;   ///< default 0: 2/3

    PoSFEnum extAnnotPosition;            ///< default 1, as HOR_EXT_POS
    PoSFEnum extAnnotAlignment;           ///< default INWARDS_ALIGN
    SoSFBool extAnnotTextVisibility;      ///< default TRUE
    SoSFBool extAnnotValueVisibility;     ///< default FALSE
    SoSFBool extAnnotPercentVisibility;   ///< default FALSE
    SoSFBool extAnnotAddStringVisibility; ///< default FALSE
    SoSFString extAnnotTextFontName;      ///< default empty: that of the text attributes
    SoSFString extAnnotValueFontName;
    SoSFString extAnnotPercentFontName;
    SoSFFloat extAnnotTextFontSize; ///< default 0: 0.025 radii
    SoSFFloat extAnnotValueFontSize;
    SoSFFloat extAnnotPercentFontSize;
    SoSFString extAnnotAddString;     ///< behind each value, default empty
    SoSFFloat extAnnotDistance1;      ///< default 0: 1.05
    SoSFFloat extAnnotDistance2;      ///< default 0: 0.1
    SoSFFloat extAnnotDistance3;      ///< default 0: 0.2
    SoSFBool arrowVisibility;         ///< default TRUE
    SoSFFloat arrowHeight;            ///< along the arrow, default 0: 0.015
    SoSFFloat arrowWidth;             ///< default 0: 0.015
    SoSFBool sliceGroupActive;        ///< default TRUE
    SoSFFloat sliceGroupMinValue;     ///< default 5
    PoSFEnum sliceGroupFlagMin;       ///< default PERCENTAGE
    SoSFString sliceGroupString;      ///< default "Others"
    SoMFShort sliceToTranslateNumber; ///< numbers of slices that stand out, default none
    SoMFFloat sliceToTranslateValue;  ///< how far, as a length; what is not above 0 or not finite counts 0
    SoSFFloat
        sliceAngleStep; ///< between points of the round, at most; radians, default 2 degrees, at least 0.1

    static void initClass();

    /// How values are written: the object given here, else that of the scene. Not owned; one that is deleted
    /// is forgotten. Outside of a traversal, without an own object, a default one.
    void setFormat(PbNumericDisplayFormat *format);
    const PbNumericDisplayFormat *getFormat() const;
    /// Font and line length of the annotations, in the same way.
    void setMiscTextAttr(PbMiscTextAttr *attributes);
    const PbMiscTextAttr *getMiscTextAttr() const;

    /// The number of the slice that a path of a pick leads to, by itself, its border or its annotations;
    /// `isGroup` tells whether it is that of the small ones. 0 for null, and for what is no slice of this
    /// kit.
    int getPickedSliceNumber(const SoPath *path, int &isGroup) const;

    /// Moves a slice out along its middle angle: changes the first entry of `sliceToTranslateNumber` that has
    /// this number and a value, or adds one. What no field can hold as a number is ignored.
    void setSliceToTranslate(int slice, float distance);
    /// The value of that entry, 0 without one.
    float getSliceToTranslate(int slice) const;

protected:
    /// `isSolid`: slices are lit.
    explicit PoPieChart(int isSolid = FALSE);
    /// Null `texts` or `values`, or a `num` below 1, give no slices; null `colors`, or none, no colours. A
    /// null text is an empty one.
    PoPieChart(int isSolid, float radius, short num, const char **texts, const float *values, int numColors,
               const SbColor *colors);
    ~PoPieChart() override;
    void preRebuild() override;
    void addElementsAllCaches() override;
    void setDefaultOnNonWritingFields() override;

    /// All that the `rebuild` of a child does between `preRebuild` and `postRebuild`. The annotations lie at
    /// the top of the disc, the face that is seen from where the texts can be read.
    void rebuildPie(const SbVec3f &center, float zCenter2);
    // The steps of it, in their order.
    void savePieChartAttr();
    void computeSlicePartValuesToDisplay();
    void computeSliceNames();
    /// Writes the values of all slices in their order, or their percents.
    void computeStringsToDisplay(const float *values, int count, int percent);
    void drawInternalAnnotations();
    void drawExternalAnnotations();
    /// Sets all generated parts to null.
    void resetAllPart();

private:
    struct PieChartAttr; ///< the working copy of all attributes, and what a rebuild makes of them

    void init(int isSolid);
    void addParts();
    void addFields();
    void addAnnotFields();
    void defineEnums();
    oravane::PieAnnotFields annotFields(bool isExternal) const;
    oravane::PieAnnotAttr annotAttr(const oravane::PieAnnotFields &fields) const;
    std::array<std::vector<std::string>, 3> annotStrings(const oravane::PieAnnotAttr &attr) const;
    void drawAnnotations(const oravane::PieAnnotAttr &attr, bool isExternal, oravane::PieAnnotParts &parts);
    void drawSlices();
    void drawArrows();
    void setParts();
    void setAnnotParts(const char *prefix, const oravane::PieAnnotParts &parts);

    std::unique_ptr<PieChartAttr> m_attr; ///< never null; empty between rebuilds
    PoNumericFormatConnection m_format{this};
    PoMiscTextAttrConnection m_miscTextAttr{this};
};

#endif
