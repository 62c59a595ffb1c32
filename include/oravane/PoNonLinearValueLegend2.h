#ifndef ORAVANE_PONONLINEARVALUELEGEND2_H
#define ORAVANE_PONONLINEARVALUELEGEND2_H

#include <oravane/PoAutoValueLegend.h>

/// Separate boxes, each in the colour of one value, with that value as its text: the legend of contour lines.
///
/// \code
///   Separator {
///       PoIsovaluesList { isovaluesList [ 0, 50, 100 ] }
///       PoLinearDataMapping { value1 0 value2 100 color2 0 1 0 }
///       PoNonLinearValueLegend2 { start 1.05 0  end 1.3 1 }
///   }
/// \endcode
class ORAVANE_API PoNonLinearValueLegend2 : public PoAutoValueLegend {
    SO_KIT_HEADER(PoNonLinearValueLegend2);

public:
    PoNonLinearValueLegend2();
    static void initClass();

private:
    ~PoNonLinearValueLegend2() override = default;
    void drawLegend() override;
};

#endif
