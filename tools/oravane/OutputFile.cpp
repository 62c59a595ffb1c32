#include "tools/oravane/OutputFile.h"

#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace oravane {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const std::string &path, int error) {
    throw std::runtime_error("cannot write " + path + ": " + std::generic_category().message(error));
}

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

/// The permissions of the file that is replaced, or those of any new file.
mode_t permissionsFor(const std::string &path) {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0)
        return status.st_mode & 07777;
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

} // namespace

void writeWholeFile(const std::string &path, std::string_view content) {
    if (path == "-") {
        if (const int error = writeAll(STDOUT_FILENO, content))
            fail("the standard output", error);
        return;
    }
    std::error_code ignored;
    const fs::file_status status = fs::status(path, ignored);
    if (fs::exists(status) && access(path.c_str(), W_OK) != 0)
        fail(path, errno);
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        const int file = open(path.c_str(), O_WRONLY);
        if (const int error = file < 0 ? errno : writeAndClose(file, content))
            fail(path, error);
        return;
    }
    // A link stays, and the file that it leads to is replaced.
    const std::string target = fs::exists(status) ? fs::canonical(path).string() : path;
    std::string part = target + ".XXXXXX";
    const int file = mkstemp(part.data());
    if (file < 0)
        fail(path, errno);
    int error = fchmod(file, permissionsFor(target)) == 0 ? 0 : errno;
    if (const int writing = writeAndClose(file, content); error == 0)
        error = writing;
    if (error == 0 && std::rename(part.c_str(), target.c_str()) != 0)
        error = errno;
    if (error != 0) {
        unlink(part.c_str());
        fail(path, error);
    }
}

} // namespace oravane
