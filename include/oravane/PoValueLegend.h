#ifndef ORAVANE_POVALUELEGEND_H
#define ORAVANE_POVALUELEGEND_H

#include <oravane/PbDataMapping.h>
#include <oravane/PiNumericFormat.h>
#include <oravane/PoLegend.h>

#include <Inventor/SbColor.h>

#include <span>

class PbIsovaluesList;
class PbNumericDisplayFormat;

/// What all legends of data values know: which values there are to show, and which colours belong to them, by
/// the data mapping and the list of isovalues that stand before the legend in the scene.
///
/// The values are those of the list of isovalues; without one, round values between the ends of a linear
/// mapping (`PbLinearDataMapping`), or the table of a `PbNonLinearDataMapping2`. Values beyond a threshold in
/// force, repeated ones and those that are not finite are left out. Without a list, and without such a
/// mapping, there is nothing to show but background and title; so it is without a traversal, which alone sees
/// the scene.
///
/// A threshold of the mapping that is in force has a box of its own, in its colour, below the first value or
/// above the last one. A value on a threshold has the colour next to it, not that of the threshold. Values
/// that have no colour have boxes with a border alone.
class ORAVANE_API PoValueLegend : public PoLegend {
    SO_KIT_HEADER(PoValueLegend);
    ORAVANE_SHOWN_PART_HEADER(multFactor);

public:
    SoSFString upperUndefString; ///< of the box beyond the upper threshold, default "UNDEF>"
    SoSFString lowerUndefString; ///< default "UNDEF<"
    SoSFShort periodValue;       ///< every so many values one is shown, default 1, which stands for less, too
    SoSFShort firstValue;        ///< rank of the first value shown, from 1; default 1
    SoSFShort lastValue;         ///< default 32767. A last value before the first: all values

    static void initClass();

    /// How numbers are written: by the object given here, else by that of the scene. Not owned; one that is
    /// deleted is forgotten. Outside of a traversal, without an own object, a default one. `AUTO_FORMAT`
    /// writes all values with the fewest decimals that tell each from the next.
    void setFormat(PbNumericDisplayFormat *format);
    const PbNumericDisplayFormat *getFormat() const;

protected:
    PoValueLegend();
    ~PoValueLegend() override;
    void preRebuild() override;
    void postRebuild() override;
    void addElementsAllCaches() override;
    void setDefaultOnNonWritingFields() override;

    /// What a box shows.
    struct BoxRepresentation {
        enum Kind : int {
            NO_COLOR = -1,       ///< there is no mapping
            UNDEFINED_COLOR = 0, ///< the mapping has no colour for the value
            ONE_COLOR = 1,
            TWO_COLORS = 2, ///< running into each other
        };
        int kind = NO_COLOR;
        SbColor firstColor{0, 0, 0}, secondColor{0, 0, 0};
        float firstValue = 0, secondValue = 0;
        float firstTransparency = 0, secondTransparency = 0;
        int hasTransparency = 0;
        SbString text;
    };
    enum SourceKind : int { MAPPING_VALUES = 0, ISOVALUES = 1, NOTHING = 2 };
    /// Ranks of the values shown, from 0.
    struct ShownValues {
        int first, last, period;
    };

    /// Finds the values to show, and the format for all of them.
    void computeValuesList();
    void newBoxRepresentationList(int count);
    void deleteBoxRepresentationList();
    /// Fills in the boxes of thresholds; an index below 0 is none.
    void computeUndefBoxRepresentation(int lowIndex, int highIndex);
    /// Colours of box `index` by its values: of the first one, or, with `range` not 0, of both.
    void computeBoxColors(int index, int range);

    bool hasValues() const { return m_sourceKind != NOTHING && !m_values.empty(); }
    bool hasLowBox() const { return hasValues() && m_hasLowThreshold; }
    bool hasHighBox() const { return hasValues() && m_hasHighThreshold; }
    /// Ends of a linear mapping, within the thresholds, the smaller one first.
    void linearRange(float &from, float &to) const;
    /// By `firstValue`, `lastValue` and `periodValue`.
    ShownValues shownValues() const;
    /// Chooses how `valueString` writes numbers: as fits these.
    void chooseFormat(std::span<const float> values);
    SbString valueString(float value) const;

    std::vector<BoxRepresentation> m_boxes; ///< within a rebuild
    std::vector<float> m_values;
    int m_hasLowThreshold = 0, m_hasHighThreshold = 0;
    float m_lowThreshold = 0, m_highThreshold = 0;
    SourceKind m_sourceKind = NOTHING;
    PbDataMapping::ClassType m_mappingType = PbDataMapping::DATA_MAPPING;
    PiNumericFormat m_numbers;
    const PbDataMapping *m_mapping = nullptr; ///< within a rebuild; may be null

private:
    void takeValues(const float *values, int count);
    void takeLinearValues();
    float endOfRange(const BoxRepresentation &range) const;
    bool colorOf(float value, SbColor &color, float &transparency) const;

    PoNumericFormatConnection m_format{this};
};

#endif
