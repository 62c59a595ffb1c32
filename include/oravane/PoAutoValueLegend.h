#ifndef ORAVANE_POAUTOVALUELEGEND_H
#define ORAVANE_POAUTOVALUELEGEND_H

#include <oravane/PoValueLegend.h>

#include <Inventor/fields/SoSFVec2f.h>

namespace oravane {
class LegendBar;
class MultiplicationFactor;
struct BoxOutline;
} // namespace oravane

/// Draws the boxes of a value legend between two corners: as a grid of separate boxes, each with its text, or
/// as one long box along the longer side with labels at the values.
///
/// A legend that is higher than wide is held vertical: values grow upwards, a power of ten that belongs to
/// all numbers stands above. Otherwise they grow to the right, and the power of ten stands at the right.
/// Columns of a grid are read from below, and rows of several boxes (HORIZONTAL_INCREMENT) from above.
///
/// The labels of a vertical long box stand at its right, or at its left under POS_LEFT and POS_TOP; those of
/// a horizontal one below, or above under the same two. Labels that are too close together move apart, and
/// ticks lead to them.
class ORAVANE_API PoAutoValueLegend : public PoValueLegend {
    SO_KIT_HEADER(PoAutoValueLegend);

public:
    SoSFVec2f start; ///< a corner of the legend, default (0, 0)
    SoSFVec2f end;   ///< the opposite corner, default (1, 1)

    static void initClass();
    void rebuild() override;

protected:
    PoAutoValueLegend();
    ~PoAutoValueLegend() override = default;

    /// Draws the values that a rebuild has found; here background and title only.
    virtual void drawLegend();

    /// Which labels a long box has, and where.
    enum ValDistrib : int {
        DISTRIB_ALL = 0,     ///< all values, at their places in the range
        DISTRIB_LINEAR = 1,  ///< all values, at equal distances
        DISTRIB_MIN_MAX = 2, ///< the two ends of the range
    };
    enum MultFactorPosition : int { MULT_FACTOR_ABOVE = 0, MULT_FACTOR_RIGHT = 1 };

    /// A box of two values, whose text has the additional string behind it.
    BoxRepresentation newBox(float from, float to, const SbString &text) const;
    /// A grid of these boxes, with their colours by `computeBoxColors`, and those of thresholds. Without
    /// boxes background and title only.
    void drawValueBoxes(std::vector<BoxRepresentation> boxes, int range);
    /// A grid of the boxes of the box list with these texts; with a `count` of 0 background and title only.
    void drawBoxesLegend(int count, const SbString *strings);
    /// One box with all values; with `gradient` 0 each part of it has the one colour of the value at its
    /// lower end.
    void drawOneBoxLegend(ValDistrib distribution, int gradient);
    void drawBoxLegendBoxesA(SoGroup *face, SoGroup *border, const SbVec2f &corner, float width, float height,
                             int index) override;
    /// New parts of the multiplication factor, at a distance from `limit`, which widens by it.
    void drawMultFactor(MultFactorPosition position, Plimit &limit);

    float m_maxValueSize = 0.6f; ///< share of the width across a long box that labels may take

private:
    struct OneBox;

    oravane::LegendCells computeStrFtSizeLegendBoxes(int count, const std::vector<SbVec2f> &sizes);
    void findRange(ValDistrib distribution, OneBox &bar) const;
    void findLabels(ValDistrib distribution, OneBox &bar);
    void computeUndefBoxOneBoxLegend(OneBox &bar);
    void computeValFtSizeOneBoxLegend(OneBox &bar) const;
    void drawValuesRectOneBoxLegend(const OneBox &bar, const oravane::LegendBar &layout, int gradient,
                                    SoGroup *face, SoGroup *border);
    void drawUndefBoxesOneBoxLegend(const OneBox &bar, const oravane::LegendBar &layout, SoGroup *face,
                                    SoGroup *border);
    void drawValuesOneBoxLegend(const OneBox &bar, const oravane::LegendBar &layout, SoGroup *border);
    void addBoxFace(SoGroup *face, const oravane::BoxOutline &outline, const BoxRepresentation &shown) const;
    bool isVertical() const;
    float factorWidth() const;
    oravane::MultiplicationFactor factor(SoGroup *group) const;
    float m_factorSize = 0;
};

#endif
