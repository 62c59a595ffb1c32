#ifndef ORAVANE_PBNUMERICDISPLAYFORMAT_H
#define ORAVANE_PBNUMERICDISPLAYFORMAT_H

#include <oravane/PbBase.h>

/// How kits are to write numbers: by themselves (`AUTO_FORMAT`), with a number of decimals, or as integers.
/// What the wish means for a list of labels is up to `PiNumericFormat`.
///
/// \code
///   PbNumericDisplayFormat format(PbNumericDisplayFormat::FLOAT_FORMAT, 3, 2);   // 12345 reads 12.35, x
///   10^3 kit->setFormat(&format);
/// \endcode
class ORAVANE_API PbNumericDisplayFormat : public PbBase {
public:
    enum FormatType : int {
        AUTO_FORMAT =
            0, ///< decimals and power of ten by the range of the numbers; the two others are ignored
        FLOAT_FORMAT = 1,
        INTEGER_FORMAT = 2,
    };

    /// Numbers are divided by 10 to the power `tenPower`; `numDecimal` counts for `FLOAT_FORMAT` only.
    explicit PbNumericDisplayFormat(FormatType type = AUTO_FORMAT, int tenPower = 0, int numDecimal = 0);
    PbNumericDisplayFormat(const PbNumericDisplayFormat &source);
    /// Tells the kits of this object, after the copy; nothing on self-assignment.
    PbNumericDisplayFormat &operator=(const PbNumericDisplayFormat &source);

    /// Takes any values, as they are, and notifies (`CHANGE_GENERAL`).
    void setFormat(FormatType type, int tenPower, int numDecimal);
    void getFormat(FormatType &type, int &tenPower, int &numDecimal) const;

private:
    FormatType m_formatType;
    int m_tenPower;
    int m_numDecimal;
};

#endif
