#include <oravane/PbNumericDisplayFormat.h>

PbNumericDisplayFormat::PbNumericDisplayFormat(FormatType type, int tenPower, int numDecimal)
    : m_formatType(type), m_tenPower(tenPower), m_numDecimal(numDecimal) {}

PbNumericDisplayFormat::PbNumericDisplayFormat(const PbNumericDisplayFormat &source) = default;

PbNumericDisplayFormat &PbNumericDisplayFormat::operator=(const PbNumericDisplayFormat &source) {
    if (this == &source)
        return *this;
    m_formatType = source.m_formatType;
    m_tenPower = source.m_tenPower;
    m_numDecimal = source.m_numDecimal;
    PbBase::operator=(source); // tells the kits, of the values that are in place by now
    return *this;
}

void PbNumericDisplayFormat::setFormat(FormatType type, int tenPower, int numDecimal) {
    m_formatType = type;
    m_tenPower = tenPower;
    m_numDecimal = numDecimal;
    notifyChange(CHANGE_GENERAL);
}

void PbNumericDisplayFormat::getFormat(FormatType &type, int &tenPower, int &numDecimal) const {
    type = m_formatType;
    tenPower = m_tenPower;
    numDecimal = m_numDecimal;
}
