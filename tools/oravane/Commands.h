#ifndef ORAVANE_TOOLS_ORAVANE_COMMANDS_H
#define ORAVANE_TOOLS_ORAVANE_COMMANDS_H

#include <functional>

namespace CLI {
class App;
}

namespace oravane {

/// Adds the command "page" to the program. What is returned runs it after the command line was parsed; it
/// returns whether all went well, and throws `UsageError`.
std::function<bool()> addPageCommand(CLI::App &program);

/// The same for the command "picture".
std::function<bool()> addPictureCommand(CLI::App &program);

} // namespace oravane

#endif
