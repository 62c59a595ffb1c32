#ifndef ORAVANE_POSINGLEHISTOGRAM_H
#define ORAVANE_POSINGLEHISTOGRAM_H

#include <oravane/PoHistogram.h>

#include <Inventor/fields/SoMFFloat.h>
#include <Inventor/fields/SoMFString.h>

#include <array>
#include <span>

/// A bar for each value of a series, from `start` on, with its value and its name.
///
/// \code
///   PoSingleHistogram {
///       start 0 0  end 12  type X
///       value [ 3.5, 4.25, 2 ]
///       name [ "April", "May", "June" ]
///       valueAddStringVisibility TRUE  valueAddString " mm"
///   }
/// \endcode
///
/// The segment is divided into one slot for each value, and the bar stands in the middle of its slot. Under
/// REL_SPACE the part `barSpaceValue` of the slot stays free: 0 makes bars touch, and a negative one overlap.
/// Under FIXED_SPACE a length `barSpaceValue` above 0 stays free, up to the whole slot. A bar of type X goes
/// from start.y to y = value, one of type Y from start.x to x = value.
///
/// Values are written in one common format. An automatic one writes all as exactly as the value that needs
/// the most decimals, of five digits, and in full up to powers of ten of 6. A power that is factored out
/// stands behind each number: "2.5E9"; but where a program chooses the power by its format and shows
/// `valueAddString`, that names it: "2.5 kt". Names are drawn only when there are as many as values.
///
/// A value that is not finite has a flat bar and no text. Without values, or with ends of the segment that
/// are not finite, nothing is drawn.
///
/// Generates `bar`: coordinates and one face for each value, behind a material binding per face when
/// `barApp.material` holds a colour for each bar; and `valueText` and `nameText`, in which child i belongs to
/// bar i, behind a polygon offset when the texts lie on the bars. A value without a colour in the mapping has
/// an invisible bar.
class ORAVANE_API PoSingleHistogram : public PoHistogram {
    SO_KIT_HEADER(PoSingleHistogram);

public:
    SoMFFloat value; ///< default empty
    SoMFString name; ///< default empty

    PoSingleHistogram();
    /// `num` values and names, copied; without values or names where the array is null.
    PoSingleHistogram(const SbVec2f &start, float end, Type type, int num, const float *values,
                      const char *const *names);
    static void initClass();
    void rebuild() override;

protected:
    ~PoSingleHistogram() override = default;
    void colorBars(SoGroup *bars) override;

private:
    class Row;
    using Bar = std::array<SbVec2f, 4>;

    void init();
    void build(const Row &row);
    SoMaterial *newBarMaterial() const;
    template <class StringOf>
    static SoGroup *newTexts(std::span<const Bar> bars, const TextStyle &style, StringOf stringOf);
    SoGroup *newValueTexts(std::span<const Bar> bars) const;
    SoGroup *newNameTexts(std::span<const Bar> bars) const;
};

#endif
