#ifndef ORAVANE_SOVECTOROUTPUT_H
#define ORAVANE_SOVECTOROUTPUT_H

#include <oravane/OravaneApi.h>

#include <cstdio>
#include <string_view>

ORAVANE_VECTORIZE_BEGIN

/// The file that a vectorize action writes to. Without `openFile` or `setFilePointer` it is the standard
/// output, which is never closed.
///
/// \code
///   SoVectorizePSAction action;
///   if (action.getOutput()->openFile("page.ps")) {
///       action.apply(scene);
///       action.getOutput()->closeFile();
///       if (action.getOutput()->hasWriteError()) ...
///   }
/// \endcode
class ORAVANE_API SoVectorOutput {
public:
    SoVectorOutput() = default;
    SoVectorOutput(const SoVectorOutput &) = delete;
    SoVectorOutput &operator=(const SoVectorOutput &) = delete;

    /// Writes to `fp` from now on, after closing the present stream if it is not the standard output. The
    /// stream stays the caller's: it is closed by `closeFile`, the next `openFile` or `setFilePointer`, but
    /// not by the destructor. Null takes the standard output; the present stream changes nothing.
    virtual void setFilePointer(FILE *fp);

    /// The stream; never null.
    virtual FILE *getFilePointer() const;

    /// Closes the present stream as `closeFile` does and opens the file for writing, replacing its content.
    /// Returns 1; or 0 when it cannot be opened (null included), with the standard output in its place.
    virtual int openFile(const char *fileName);

    /// Closes a stream that is not the standard output, and returns to the standard output.
    virtual void closeFile();

    /// Closes a file that `openFile` opened.
    virtual ~SoVectorOutput();

    /// 1 when some of what was written to the present or last closed stream did not arrive (a full disk, a
    /// broken pipe). Reset by `openFile` and `setFilePointer`. What the stream still holds back counts
    /// after `flush` or `closeFile` only; `SoVectorizeAction::apply` and `endPage` end with `flush`.
    int hasWriteError() const { return m_writeError; }

    /// Writes `text` to the stream. For the drivers.
    void write(std::string_view text);

    /// Makes the stream pass on what it holds back. The first failure on a stream is reported through
    /// `SoDebugError`.
    void flush();

protected:
    /// `openFile` in a mode of `fopen`, for outputs that are not text.
    int openInMode(const char *fileName, const char *mode);

private:
    void take(FILE *fp, bool isOwned);
    void closeStream();
    void noteError();

    FILE *m_fp = nullptr; ///< null stands for the standard output
    bool m_isOwned = false;
    int m_writeError = 0;
};

ORAVANE_VECTORIZE_END

#endif
