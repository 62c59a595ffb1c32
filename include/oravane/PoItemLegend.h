#ifndef ORAVANE_POITEMLEGEND_H
#define ORAVANE_POITEMLEGEND_H

#include <oravane/PoLegend.h>

#include <Inventor/fields/SoMFColor.h>
#include <Inventor/fields/SoMFFloat.h>
#include <Inventor/fields/SoMFString.h>
#include <Inventor/fields/SoMFUShort.h>
#include <Inventor/fields/SoSFVec2f.h>

/// A list of names, each with a box of its colour, a sample of its line, a sample of its marker, or several
/// of them.
///
/// \code
///   const char *names[] = {"measured", "computed"};
///   const SbColor colors[] = {SbColor(1, 0, 0), SbColor(0, 0, 1)};
///   auto *legend = new PoItemLegend(SbVec2f(0.7f, 0.7f), SbVec2f(1, 1), 2, names, colors);
/// \endcode
///
/// Item i takes entry i modulo their number of the colours, sizes, patterns and strings; from an empty list
/// it takes nothing, that is the colour and size of the scene, a full line, no marker. Without items there is
/// a background and a title.
///
/// Rows have the heights, in font sizes, 0.65 for texts alone, 1.3 for texts with one graphic, 1.95 with two,
/// and 2.275 with three, if texts stand beside the graphics, and 0.975 if they stand above or below them; but
/// never less than their contents need.
///
/// Generates, besides what a `PoLegend` shows, `line` and `marker`; what is not needed is null.
class ORAVANE_API PoItemLegend : public PoLegend {
    SO_KIT_HEADER(PoItemLegend);
    ORAVANE_SHOWN_PART_HEADER(line);
    ORAVANE_SHOWN_PART_HEADER(marker);

public:
    SoSFVec2f start;         ///< a corner of the legend, default (0, 0)
    SoSFVec2f end;           ///< the opposite corner, default (1, 1)
    SoMFString item;         ///< the names; default empty
    SoSFBool boxVisibility;  ///< default TRUE
    SoMFColor boxColor;      ///< default black
    SoSFBool lineVisibility; ///< default FALSE
    SoMFColor lineColor;     ///< default black
    SoMFFloat lineSize;      ///< widths, as `SoDrawStyle` has them; default 0: that of `lineApp` or the scene
    SoMFUShort linePattern;  ///< as `SoDrawStyle` has them; default 65535, a full line
    SoSFBool markerVisibility; ///< default FALSE
    SoMFColor markerColor;     ///< default black
    /// Font sizes; of dots the point sizes, as `SoDrawStyle` has them. Default 0: a font size that fits into
    /// the sample's width, at most that of the names; dots of 5. No marker is larger than the legend.
    SoMFFloat markerSize;
    SoMFString markerString; ///< as `PiMarker` has them; default ".", a dot

    PoItemLegend();
    /// The rectangle between two corners with `num` names and as many colours. A null array or a `num` below
    /// 1 leaves the field as it is by default; null names are empty ones.
    PoItemLegend(const SbVec2f &from, const SbVec2f &to, int num, const char **items, const SbColor *colours);
    static void initClass();
    void rebuild() override;

protected:
    ~PoItemLegend() override = default;
    void drawBoxLegendBoxesA(SoGroup *face, SoGroup *border, const SbVec2f &corner, float width, float height,
                             int index) override;
    void computeGraphicSizeForValues(float &boxWidth, float &lineWidth, float &markerWidth) override;

private:
    void init();
    std::vector<SbString> itemStrings() const;
    float rowHeight() const;
    void drawGrid(const oravane::LegendCells &cells, const std::vector<SbString> &strings,
                  const Plimit &room);
    SoGroup *newLines(const oravane::LegendGrid &grid, const SbVec2f &corner, float sampleStart) const;
    float markerSizeOf(int index, float fontSize, const PiText &measure) const;
    SoGroup *newMarkers(const oravane::LegendGrid &grid, const SbVec2f &corner, float sampleMiddle) const;
};

#endif
