#ifndef ORAVANE_PONONLINEARDATAMAPPING2_H
#define ORAVANE_PONONLINEARDATAMAPPING2_H

#include <oravane/PbNonLinearDataMapping2.h>
#include <oravane/PoDataMapping.h>
#include <oravane/PoSFEnum.h>

#include <Inventor/fields/SoMFColor.h>
#include <Inventor/fields/SoMFFloat.h>

/// The node of `PbNonLinearDataMapping2`.
///
/// \code
///   PoNonLinearDataMapping2 {
///       type NON_LINEAR_PER_LEVEL
///       value [ 10, 50 ]
///       color [ 0.8 0.9 1, 0.4 0.6 1, 0 0 0.6 ]
///   }
/// \endcode
///
/// The table of the fields takes effect at the next action, when it is complete. For `NON_LINEAR_PER_LEVEL`
/// with fewer colours than values + 1 an error is posted, once for each change, and the table before stays.
/// For `LINEAR_PER_LEVEL` with fewer colours than values the table before stays without a message.
/// Transparencies count only when there are as many as colours. Before the first change the table is black at
/// 0 to white at 1.
class ORAVANE_API PoNonLinearDataMapping2 : public PoDataMapping {
    SO_NODE_HEADER(PoNonLinearDataMapping2);

public:
    enum Type {
        NON_LINEAR_PER_LEVEL = PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL,
        LINEAR_PER_LEVEL = PbNonLinearDataMapping2::LINEAR_PER_LEVEL,
    };

    PoSFEnum type;          ///< default LINEAR_PER_LEVEL
    SoMFFloat value;        ///< default one value 0
    SoMFColor color;        ///< default one value black
    SoMFFloat transparency; ///< default one value 0

    PoNonLinearDataMapping2();
    static void initClass();

protected:
    ~PoNonLinearDataMapping2() override = default;

    void updateDataMapping() override;

private:
    PbNonLinearDataMapping2 m_nonLinearDataMapping2;
    PoFieldWatch m_tableWatch;
};

#endif
