#ifndef ORAVANE_POMESHCONTOURING_H
#define ORAVANE_POMESHCONTOURING_H

#include <oravane/PoAttributeConnection.h>
#include <oravane/PoMesh2D.h>
#include <oravane/PoShownPart.h>

#include <Inventor/fields/SoMFVec2f.h>
#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFUShort.h>

class PbMiscTextAttr;
class PbNumericDisplayFormat;

/// Draws the contour lines of a surface mesh as major and minor lines, and labels major ones with their
/// value. Labels follow the lines, and keep off each other, the border of the mesh and, when asked to, other
/// lines.
///
/// \code
///   auto *contours = new PoMeshContouring;
///   contours->setMesh(&grid);
///   contours->valuesIndex = 0;
///   contours->majorPeriod = 5;                                // a list of levels every 20 m: every 100 m
///   contours->annotIsVisible = TRUE;
///   contours->annotIsContourClip = TRUE;                      // lines make way for their labels
///   contours->setPart("minorContourLineApp.drawStyle", thin);
///   root->addChild(contours);                                 // behind a list of isovalues
/// \endcode
///
/// The level of rank r in the list (from 1) is major when r - `firstMajor` is a multiple of `majorPeriod`.
/// Under COLOR_INHERITED lines have the colour of the scene or of their appearance parts; under any other
/// colouring each line has the colour of its level. Without a mesh, without isovalues, or without the value
/// set `valuesIndex`, nothing is drawn.
///
/// Labels. The numbers are written as the numeric format says, `setFormat` or that of the scene; its power of
/// ten is not shown. Lengths are factors of a reference length: the larger side of the clipping polygon when
/// there is one, else a side of the domain (its x side, or the one that its transform leaves as it is), and 1
/// under TRANSFORM_01. A label is wanted every `annotGap` along a line, and successive lines start at
/// different places. Where a label fits nowhere, the line has none; a line that is short against its label
/// has none either. In a domain of unequal sides the kit works in the transformed space, so that labels keep
/// their shape, and the part `transform` takes that back. On a surface with a z, labels are tilted so that
/// they contain the direction of their line. Lines break where nodes have no position.
///
/// Generates `majorContourLine`, `minorContourLine` (coordinates and a line set, behind a material and a
/// binding per line when coloured), `annotText`, `annotBackground`, `annotBackgroundBorder`, `transform` and
/// `annotTextApp.font`; what is not needed is null.
class ORAVANE_API PoMeshContouring : public PoMesh2D {
    SO_KIT_HEADER(PoMeshContouring);
    SO_KIT_CATALOG_ENTRY_HEADER(transform);
    ORAVANE_SHOWN_PART_HEADER(majorContourLine);
    ORAVANE_SHOWN_PART_HEADER(minorContourLine);
    ORAVANE_SHOWN_PART_HEADER(annotBackground);
    ORAVANE_SHOWN_PART_HEADER(annotBackgroundBorder);
    ORAVANE_SHOWN_PART_HEADER(annotText);

public:
    enum AnnotPath : int {
        TANGENTIAL_PATH = 0, ///< along the line, never upside down
        HORIZONTAL_PATH = 1,
        VERTICAL_PATH = 2, ///< from top to bottom
    };
    enum AnnotCrossStatus : int {
        CROSS_CONTOUR = 0,       ///< a label may lie on any line
        CROSS_MINOR_CONTOUR = 1, ///< on minor lines only
        DONT_CROSS_CONTOUR = 2,  ///< on none but its own
    };

    SoSFUShort majorPeriod;         ///< every so many levels one is major, default 3; 0 counts as 1
    SoSFUShort firstMajor;          ///< rank of the first major level, from 1; default 1
    SoSFBool annotIsVisible;        ///< default FALSE
    PoSFEnum annotPath;             ///< default TANGENTIAL_PATH
    PoSFEnum annotCrossStatus;      ///< default CROSS_CONTOUR
    SoSFBool annotIsBackground;     ///< a filled box with a border behind each label, default FALSE
    SoSFBool annotIsContourClip;    ///< lines are cut under labels, unless these have boxes; default FALSE
    SoSFFloat annotGap;             ///< between labels on one line, in reference lengths, default 1
    SoMFVec2f annotClippingPolygon; ///< labels stay inside, from three points on; default (0, 0)
    SoSFFloat annotFontSize;        ///< in reference lengths; default 0: 0.04, as for what is no size

    PoMeshContouring();
    static void initClass();
    void rebuild() override;

    /// How numbers are written: the object given here, else that of the scene. Not owned; one that is deleted
    /// is forgotten. Outside of a traversal, without an own object, a default one.
    void setFormat(PbNumericDisplayFormat *format);
    const PbNumericDisplayFormat *getFormat() const;
    /// Font and line length of the labels, in the same way.
    void setMiscTextAttr(PbMiscTextAttr *attributes);
    const PbMiscTextAttr *getMiscTextAttr() const;

protected:
    ~PoMeshContouring() override;
    void preRebuild() override;
    void addElementsAllCaches() override;
    void setDefaultOnNonWritingFields() override;

private:
    struct Drawing;
    struct Parts;

    void drawContourLines(const float *values, const float *z, Parts &parts);
    void drawAnnotated(Drawing &drawing, Parts &parts);
    void drawLabels(Drawing &drawing, float referenceLength, Parts &parts) const;
    void drawLines(const Drawing &drawing, Parts &parts) const;
    SoGroup *newLineGroup(const std::vector<Ppoint_list3> &lines, const std::vector<float> &values) const;
    bool isMajor(float isovalue) const;

    PoNumericFormatConnection m_format{this};
    PoMiscTextAttrConnection m_miscTextAttr{this};
};

#endif
