#ifndef ORAVANE_PBNONLINEARDATAMAPPING2_H
#define ORAVANE_PBNONLINEARDATAMAPPING2_H

#include <oravane/PbDataMapping.h>

#include <memory>
#include <vector>

/// Colours by a table of levels: flat between the levels, or interpolated from level to level. At the start
/// it interpolates from black at 0 to white at 1.
///
/// \code
///   const float depths[] = {10.0f, 50.0f};
///   const SbColor blues[] = {SbColor(0.8f, 0.9f, 1), SbColor(0.4f, 0.6f, 1), SbColor(0, 0, 0.6f)};
///   PbNonLinearDataMapping2 mapping;
///   mapping.setValues(PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL, 2, depths, blues);
/// \endcode
class ORAVANE_API PbNonLinearDataMapping2 : public PbDataMapping {
public:
    enum Type : int { // a file may give any integer
        /// n + 1 colours for n values: colour i below value i, the last one from the last value up. A value
        /// on a level has the colour of the interval above it.
        NON_LINEAR_PER_LEVEL = 0,
        /// A colour at each value, interpolated between them; beyond the ends the line of the last two goes
        /// on, cut to 0..1. A table of one value has that one colour everywhere.
        LINEAR_PER_LEVEL = 1,
    };

    PbNonLinearDataMapping2();

    ClassType getClassType() const override { return NON_LINEAR2; }

    /// Copies the table: `count` values, and `count` colours (and transparencies, 0 without them), one more
    /// of both for `NON_LINEAR_PER_LEVEL`. The values need not be sorted: they are sorted here together with
    /// their colours, all but the additional last colour, which stays last. Of equal values the order is that
    /// of a selection sort by swapping.
    ///
    /// Refused, with nothing changed and nobody told: another type, a `count` below 1, a null array, a value
    /// that is not a number.
    ///
    /// The connected kits are told (`CHANGE_GENERAL`) before the new content is there: inside that
    /// notification the table has its new size, with all values 0 and all colours black.
    void setValues(Type type, int count, const float *values, const SbColor *colors);
    void setValues(Type type, int count, const float *values, const SbColor *colors,
                   const float *transparencies);
    void setValues(Type type, int count, const float *values, const float (*hls)[3]);
    void setValues(Type type, int count, const float *values, const float (*hls)[3],
                   const float *transparencies);

    /// The sorted values, `count` of them; valid until the next `setValues`.
    const float *getValuesList(int &count) const;

    /// All colours in HLS, one more than values for `NON_LINEAR_PER_LEVEL`; valid until the next call of this
    /// function.
    const float (*getHLSColorsList(int &count) const)[3];

private:
    struct Table {
        Type type;
        std::vector<float> values;
        std::vector<SbColor> colors;
        std::vector<float> transparencies; ///< one for each colour
    };

    void setTable(Type type, int count, const float *values, const SbColor *colors,
                  const float *transparencies);
    void setTable(Type type, int count, const float *values, const float (*hls)[3],
                  const float *transparencies);
    const SbColor *interpolatedColor(float value, float &transparency) const;
    const SbColor *computeColor(float value, float &transparency) const override;
    const SbColor *computeColor(float value) const override;
    std::size_t computeColorsOf(std::size_t count, const float *values, SbColor *colors,
                                float *transparencies, unsigned char *hasColor) const override;

    Table m_table;
    mutable std::unique_ptr<float[][3]> m_hlsColors;
};

#endif
