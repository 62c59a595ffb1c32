#ifndef ORAVANE_PBMISCTEXTATTR_H
#define ORAVANE_PBMISCTEXTATTR_H

#include <oravane/PbBase.h>

#include <Inventor/SbString.h>

/// What all texts of a kit share: the name of their font, and where long texts are broken into lines.
///
/// \code
///   PbMiscTextAttr attributes;
///   attributes.setFontName("Helvetica");
///   attributes.setLineLength(' ', 20);   // lines of about 20 characters, broken at blanks
///   kit->setMiscTextAttr(&attributes);
/// \endcode
class ORAVANE_API PbMiscTextAttr : public PbBase {
public:
    /// The font "defaultFont", and no breaking of lines.
    PbMiscTextAttr() = default;
    PbMiscTextAttr(const PbMiscTextAttr &source);
    /// Tells the kits of this object, after the copy; nothing on self-assignment.
    PbMiscTextAttr &operator=(const PbMiscTextAttr &source);

    /// A text is broken at `endLineChar` where a line reaches `lineLength` characters; with a length of 0
    /// it is never broken. Takes any values, and notifies (`CHANGE_GENERAL`).
    void setLineLength(char endLineChar, int lineLength);
    void getLineLength(char &endLineChar, int &lineLength) const;

    /// The name is copied. Notifies (`CHANGE_GENERAL`); null is ignored.
    void setFontName(const char *fontName);
    void setFontName(const SbString &fontName) { setFontName(fontName.getString()); }
    const SbString &getFontName() const { return m_fontName; }

private:
    char m_endLineChar = ' ';
    int m_lineLength = 0;
    SbString m_fontName = "defaultFont";
};

#endif
