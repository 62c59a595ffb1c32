#ifndef ORAVANE_SOCGMVECTOROUTPUT_H
#define ORAVANE_SOCGMVECTOROUTPUT_H

#include <oravane/SoVectorOutput.h>

ORAVANE_VECTORIZE_BEGIN

/// The file of a CGM page, and the kind of metafile that it holds. The options take effect with the next
/// header; set `setBinary` before `openFile`, which opens the file in the mode that the encoding needs.
class ORAVANE_API SoCGMVectorOutput : public SoVectorOutput {
public:
    /// Returns 1; or 0 when the file cannot be opened, with the standard output in its place.
    int openFile(const char *fileName) override { return openInMode(fileName, m_binary ? "wb" : "wt"); }

    /// Version of the metafile, 1 (the start value) to 4; others are ignored. Version 3 has the line ends,
    /// joins and dashes of the action and transparent image pixels; the others have standard line types.
    void setVersion(int version) {
        if (version >= 1 && version <= 4)
            m_version = version;
    }
    int getVersion() const { return m_version; }

    /// Non-zero: the binary encoding; 0, as at first: clear text.
    void setBinary(int flag) { m_binary = flag; }
    int isBinary() const { return m_binary; }

    /// Non-zero: a table of 256 colours, of which the nearest is taken; 0, as at first: direct colours.
    void setIndexed(int flag) { m_indexed = flag; }
    int isIndexed() const { return m_indexed; }

private:
    int m_version = 1;
    int m_binary = 0;
    int m_indexed = 0;
};

ORAVANE_VECTORIZE_END

#endif
