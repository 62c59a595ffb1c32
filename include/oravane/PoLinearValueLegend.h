#ifndef ORAVANE_POLINEARVALUELEGEND_H
#define ORAVANE_POLINEARVALUELEGEND_H

#include <oravane/PoAutoValueLegend.h>

/// A colour bar: one long box in which the colours of the values run into each other, with labels at the
/// values.
///
/// \code
///   Separator {
///       PoLinearDataMapping { value1 -2 color1 0 0 1 value2 30 color2 1 0 0 }
///       PoLinearValueLegend { start 1.05 0  end 1.3 1 }
///   }
/// \endcode
///
/// The bar of a linear mapping without a list of isovalues goes from end to end of the mapping, as far as its
/// thresholds let it; any other one from the first value shown to the last.
class ORAVANE_API PoLinearValueLegend : public PoAutoValueLegend {
    SO_KIT_HEADER(PoLinearValueLegend);

public:
    enum ValueDistribution : int {
        ALL_VALUES = 0,     ///< labels at all values
        LINEAR_VALUES = 1,  ///< the same at equal distances: the bar goes from the first one to the last one
        MIN_MAX_VALUES = 2, ///< labels at the two ends of the bar only
    };

    PoSFEnum valueDistribution; ///< default ALL_VALUES
    /// Share of the width across the bar that labels may take, up to 0.9; default 0.6, as for what is no
    /// size.
    SoSFFloat maxValueSize;

    PoLinearValueLegend();
    static void initClass();

private:
    ~PoLinearValueLegend() override = default;
    void drawLegend() override;
};

#endif
