#include <oravane/SoVectorOutput.h>

#include <Inventor/errors/SoDebugError.h>

ORAVANE_VECTORIZE_BEGIN

SoVectorOutput::~SoVectorOutput() {
    if (m_isOwned)
        std::fclose(m_fp);
}

FILE *SoVectorOutput::getFilePointer() const {
    return m_fp ? m_fp : stdout;
}

void SoVectorOutput::setFilePointer(FILE *fp) {
    FILE *const stream = fp == stdout ? nullptr : fp;
    if (stream && stream == m_fp)
        return;
    closeStream();
    take(stream, false);
}

int SoVectorOutput::openFile(const char *fileName) {
    return openInMode(fileName, "wt");
}

int SoVectorOutput::openInMode(const char *fileName, const char *mode) {
    closeStream();
    take(fileName ? std::fopen(fileName, mode) : nullptr, true);
    if (!m_fp)
        return 0;
    // Pages are written in small pieces and may be large.
    std::setvbuf(m_fp, nullptr, _IOFBF, std::size_t{1} << 18);
    return 1;
}

void SoVectorOutput::closeFile() {
    closeStream();
}

void SoVectorOutput::take(FILE *fp, bool isOwned) {
    m_fp = fp;
    m_isOwned = fp && isOwned;
    m_writeError = 0;
}

void SoVectorOutput::closeStream() {
    if (m_fp && std::fclose(m_fp) != 0)
        noteError();
    m_fp = nullptr;
    m_isOwned = false;
}

void SoVectorOutput::noteError() {
    if (!m_writeError)
        SoDebugError::post("SoVectorOutput", "The page could not be written completely.");
    m_writeError = 1;
}

void SoVectorOutput::write(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), getFilePointer()) != text.size())
        noteError();
}

void SoVectorOutput::flush() {
    if (std::fflush(getFilePointer()) != 0 || std::ferror(getFilePointer()))
        noteError();
}

ORAVANE_VECTORIZE_END
