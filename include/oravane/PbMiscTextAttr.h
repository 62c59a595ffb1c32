#ifndef ORAVANE_PBMISCTEXTATTR_H
#define ORAVANE_PBMISCTEXTATTR_H

#include <oravane/PbBase.h>

#include <Inventor/SbString.h>

/// Attributes of texts: the font's name, and where lines end.
class ORAVANE_API PbMiscTextAttr : public PbBase {
public:
    void setFontName(const SbString &fontName) { m_fontName = fontName; }
    const SbString &getFontName() const { return m_fontName; }

    /// A line of at most `lineLength` characters ends at `endLineChar`; a length of 0 means no wrapping.
    void setLineLength(char endLineChar, int lineLength) {
        m_endLineChar = endLineChar;
        m_lineLength = lineLength;
    }
    void getLineLength(char &endLineChar, int &lineLength) const {
        endLineChar = m_endLineChar;
        lineLength = m_lineLength;
    }

private:
    char m_endLineChar = ' ';
    int m_lineLength = 0;
    SbString m_fontName = "defaultFont";
};

#endif
