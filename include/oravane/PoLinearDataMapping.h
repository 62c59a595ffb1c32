#ifndef ORAVANE_POLINEARDATAMAPPING_H
#define ORAVANE_POLINEARDATAMAPPING_H

#include <oravane/PbLinearDataMapping.h>
#include <oravane/PoDataMapping.h>

/// The node of `PbLinearDataMapping`.
///
/// \code
///   PoLinearDataMapping { value1 -20 color1 0 0 1  value2 40 color2 1 0 0 }
/// \endcode
class ORAVANE_API PoLinearDataMapping : public PoDataMapping {
    SO_NODE_HEADER(PoLinearDataMapping);

public:
    SoSFFloat value1;        ///< default 0
    SoSFColor color1;        ///< default black
    SoSFFloat transparency1; ///< default 0
    SoSFFloat value2;        ///< default 1
    SoSFColor color2;        ///< default white
    SoSFFloat transparency2; ///< default 0

    PoLinearDataMapping();
    static void initClass();

protected:
    ~PoLinearDataMapping() override = default;

    void updateDataMapping() override;

private:
    PbLinearDataMapping m_linearDataMapping;
    PoFieldWatch m_valuesWatch;
};

#endif
