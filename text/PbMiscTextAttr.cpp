#include <oravane/PbMiscTextAttr.h>

PbMiscTextAttr::PbMiscTextAttr(const PbMiscTextAttr &source) = default;

PbMiscTextAttr &PbMiscTextAttr::operator=(const PbMiscTextAttr &source) {
    if (this == &source)
        return *this;
    m_endLineChar = source.m_endLineChar;
    m_lineLength = source.m_lineLength;
    m_fontName = source.m_fontName;
    PbBase::operator=(source); // tells the kits, of the values that are in place by now
    return *this;
}

void PbMiscTextAttr::setLineLength(char endLineChar, int lineLength) {
    m_endLineChar = endLineChar;
    m_lineLength = lineLength;
    notifyChange(CHANGE_GENERAL);
}

void PbMiscTextAttr::getLineLength(char &endLineChar, int &lineLength) const {
    endLineChar = m_endLineChar;
    lineLength = m_lineLength;
}

void PbMiscTextAttr::setFontName(const char *fontName) {
    if (!fontName)
        return;
    m_fontName = SbString(fontName); // a copy first: the name may be a part of this one
    notifyChange(CHANGE_GENERAL);
}
