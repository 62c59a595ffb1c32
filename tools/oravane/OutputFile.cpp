#include "tools/oravane/OutputFile.h"

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace oravane {

namespace {

namespace fs = std::filesystem;

/// Writes all of `content`; 0 or the error.
int writeAll(int file, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = write(file, content.data(), content.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return errno;
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

int writeAndClose(int file, std::string_view content) {
    const int error = writeAll(file, content);
    return close(file) == 0 || error != 0 ? error : errno;
}

/// Holds back what would end the program and leave half a file, for as long as it lives.
class Uninterrupted {
public:
    Uninterrupted() {
        sigset_t ends;
        sigemptyset(&ends);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP})
            sigaddset(&ends, signal);
        sigprocmask(SIG_BLOCK, &ends, &m_before);
    }
    ~Uninterrupted() { sigprocmask(SIG_SETMASK, &m_before, nullptr); }
    Uninterrupted(const Uninterrupted &) = delete;
    Uninterrupted &operator=(const Uninterrupted &) = delete;

private:
    sigset_t m_before{};
};

/// The permissions of the file that is replaced, or those of any new file.
mode_t permissionsFor(const std::string &path) {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0)
        return status.st_mode & 07777;
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

/// Writes what is no plain file, and stays.
int writeInto(const std::string &path, std::string_view content) {
    const int file = open(path.c_str(), O_WRONLY);
    return file < 0 ? errno : writeAndClose(file, content);
}

/// Writes another file beside it, which then takes its name.
int replaceFile(const fs::path &path, std::string_view content) {
    const Uninterrupted uninterrupted;
    std::string part = (path.parent_path() / ".oravane-XXXXXX").string();
    const int file = mkstemp(part.data());
    if (file < 0)
        return errno;
    int error = fchmod(file, permissionsFor(path.string())) == 0 ? 0 : errno;
    if (const int writing = writeAndClose(file, content); error == 0)
        error = writing;
    if (error == 0 && std::rename(part.c_str(), path.c_str()) != 0)
        error = errno;
    if (error != 0)
        unlink(part.c_str());
    return error;
}

int writeFile(const std::string &path, std::string_view content) {
    std::error_code ignored;
    const fs::file_status status = fs::status(path, ignored);
    if (!fs::exists(status))
        return replaceFile(path, content);
    if (access(path.c_str(), W_OK) != 0)
        return errno;
    if (!fs::is_regular_file(status))
        return writeInto(path, content);
    // A link stays, and the file that it leads to is replaced.
    return replaceFile(fs::canonical(path), content);
}

} // namespace

void writeWholeFile(const std::string &path, std::string_view content) {
    const bool isStandard = path == "-";
    if (const int error = isStandard ? writeAll(STDOUT_FILENO, content) : writeFile(path, content))
        throw std::runtime_error("cannot write " + (isStandard ? "the standard output" : path) + ": " +
                                 std::generic_category().message(error));
}

} // namespace oravane
