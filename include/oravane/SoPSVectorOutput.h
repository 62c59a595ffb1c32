#ifndef ORAVANE_SOPSVECTOROUTPUT_H
#define ORAVANE_SOPSVECTOROUTPUT_H

#include <oravane/SoVectorOutput.h>

ORAVANE_VECTORIZE_BEGIN

/// The file of a PostScript page, and whether it has colours.
class ORAVANE_API SoPSVectorOutput : public SoVectorOutput {
public:
    /// Non-zero (the start value 1): colours; 0: grey levels, for printers that know no colour operators.
    /// Takes effect with the next header.
    void setColored(int flag) { m_colored = flag; }
    int getColored() const { return m_colored; }

private:
    int m_colored = 1;
};

ORAVANE_VECTORIZE_END

#endif
