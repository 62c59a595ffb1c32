#ifndef ORAVANE_PONUMERICDISPLAYFORMAT_H
#define ORAVANE_PONUMERICDISPLAYFORMAT_H

#include <oravane/PbNumericDisplayFormat.h>
#include <oravane/PoFieldWatch.h>
#include <oravane/PoNode.h>
#include <oravane/PoSFEnum.h>

#include <Inventor/fields/SoSFShort.h>

/// Puts a number format into the traversal state (`PoNumericDisplayFormatElement`), for the kits that follow
/// and have none of their own.
///
/// \code
///   PoNumericDisplayFormat { formatType FLOAT_FORMAT  numDecimal 2 }
/// \endcode
class ORAVANE_API PoNumericDisplayFormat : public PoNode {
    SO_NODE_HEADER(PoNumericDisplayFormat);

public:
    enum FormatType {
        AUTO_FORMAT = PbNumericDisplayFormat::AUTO_FORMAT,
        FLOAT_FORMAT = PbNumericDisplayFormat::FLOAT_FORMAT,
        INTEGER_FORMAT = PbNumericDisplayFormat::INTEGER_FORMAT,
    };

    PoSFEnum formatType;  ///< default AUTO_FORMAT
    SoSFShort numDecimal; ///< default 0
    SoSFShort tenPower;   ///< default 0

    PoNumericDisplayFormat();
    static void initClass();

    void doAction(SoAction *action) override;

protected:
    ~PoNumericDisplayFormat() override = default;

private:
    PbNumericDisplayFormat m_format;
    PoFieldWatch m_formatWatch;
};

#endif
