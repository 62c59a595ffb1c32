#ifndef ORAVANE_TOOLS_ORAVANE_FILEJOBS_H
#define ORAVANE_TOOLS_ORAVANE_FILEJOBS_H

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace oravane {

/// A file to be read, and the file to be made of it.
struct FileJob {
    std::string input;
    std::string output;
};

/// Which file each input becomes.
struct FilePlan {
    std::vector<FileJob> jobs;
    std::string folder; ///< to be made when it is missing; empty when there is none
};

/// `output` is a file for one input ("-" the standard output), or a folder: for several inputs, and when a
/// folder of that name exists or the name ends with "/". Empty, it is the current folder. In a folder an
/// output has the input's name with `extension` in place of its own. Throws `UsageError` when an input has
/// no name or there is none, when two outputs are the same file, when one of them is an input, and when
/// `output` is a file where a folder is needed. Makes nothing.
FilePlan planJobs(const std::vector<std::string> &inputs, const std::string &output,
                  std::string_view extension);

/// Makes the folder, and for each job the content of its output, by `draw`, and writes it. Says so on
/// standard error unless `isQuiet`, and there too in one line each what went wrong; the other jobs go on.
/// Returns whether all went well.
bool runJobs(const FilePlan &plan, bool isQuiet, const std::function<std::string(const FileJob &)> &draw);

} // namespace oravane

#endif
