#ifndef ORAVANE_PONONLINEARVALUELEGEND3_H
#define ORAVANE_PONONLINEARVALUELEGEND3_H

#include <oravane/PoAutoValueLegend.h>

/// One long box of colour bands, with labels at the values between them: the legend of filled contours. The
/// band above a value has the colour of that value, as filled contours have it.
///
/// \code
///   Separator {
///       PoIsovaluesList { isovaluesList [ 0, 100, 200, 500 ] }
///       PoLinearDataMapping { value1 0 color1 0 0.4 0 value2 500 color2 1 1 1 }
///       PoNonLinearValueLegend3 { start 1.05 0  end 1.3 1 }
///   }
/// \endcode
class ORAVANE_API PoNonLinearValueLegend3 : public PoAutoValueLegend {
    SO_KIT_HEADER(PoNonLinearValueLegend3);

public:
    /// Share of the width across the box that labels may take, up to 0.9; default 0.6, as for what is no
    /// size.
    SoSFFloat maxValueSize;

    PoNonLinearValueLegend3();
    static void initClass();

private:
    ~PoNonLinearValueLegend3() override = default;
    void drawLegend() override;
};

#endif
