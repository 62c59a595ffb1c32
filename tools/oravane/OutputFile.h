#ifndef ORAVANE_TOOLS_ORAVANE_OUTPUTFILE_H
#define ORAVANE_TOOLS_ORAVANE_OUTPUTFILE_H

#include <string>
#include <string_view>

namespace oravane {

/// Writes a file whole or not at all: under another name in its folder, and then renamed, so that what stood
/// there before stays until the new content is complete. What is no plain file (a device, a pipe) is written
/// to; so is the standard output, which is named "-". Throws `std::runtime_error` with one line that names
/// the file and the system's reason.
void writeWholeFile(const std::string &path, std::string_view content);

} // namespace oravane

#endif
