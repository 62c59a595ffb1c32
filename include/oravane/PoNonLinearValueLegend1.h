#ifndef ORAVANE_PONONLINEARVALUELEGEND1_H
#define ORAVANE_PONONLINEARVALUELEGEND1_H

#include <oravane/PoAutoValueLegend.h>

/// Separate boxes, each for the range between two values, and one for what is less than the first value and
/// one for what is greater than the last. The colours of the two ends of a range run into each other; where
/// the colours of the mapping jump at the end, it is that below.
///
/// \code
///   Separator {
///       PoNonLinearDataMapping2 { type NON_LINEAR_PER_LEVEL value [ 10, 20 ] color [ 0 0 1, 0 1 0, 1 0 0 ] }
///       PoNonLinearValueLegend1 { start 1.05 0  end 1.3 1 }   # "<10", "10 _ 20", ">20"
///   }
/// \endcode
///
/// Of the values first to last with a period p there are (last - first) / p ranges, rounded down: from the
/// first, the first + p, ... value to the one next to it. The lowest box always is that below the first of
/// all values; the highest that above the last value shown.
class ORAVANE_API PoNonLinearValueLegend1 : public PoAutoValueLegend {
    SO_KIT_HEADER(PoNonLinearValueLegend1);

public:
    SoSFString lessLevelString;      ///< before the text of the lowest box, default "<"
    SoSFString greaterLevelString;   ///< before that of the highest, default ">"
    SoSFString valueSeparatorString; ///< between two values, default " _ "

    PoNonLinearValueLegend1();
    static void initClass();

private:
    ~PoNonLinearValueLegend1() override = default;
    void drawLegend() override;
    std::vector<BoxRepresentation> rangeBoxes() const;
};

#endif
