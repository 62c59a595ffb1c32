#include "tools/oravane/CommandLine.h"

#include <cctype>
#include <filesystem>
#include <sstream>
#include <utility>

namespace oravane {

namespace {

constexpr std::size_t kTextColumn = 28, kLastColumn = 100;

/// `left`, and `text` in the column beside it.
std::string entry(const std::string &left, const std::string &text) {
    std::string lines = left.size() < kTextColumn ? left : left + "\n";
    std::size_t column = left.size() < kTextColumn ? left.size() : 0;
    std::istringstream words(text);
    for (std::string word; words >> word; column += word.size()) {
        if (column > kTextColumn && column + 1 + word.size() > kLastColumn) {
            lines += '\n';
            column = 0;
        }
        const std::size_t blanks = column < kTextColumn ? kTextColumn - column : 1;
        lines += std::string(blanks, ' ') + word;
        column += blanks;
    }
    return lines + "\n";
}

} // namespace

HelpFormatter::HelpFormatter() {
    label("Positionals", "Scenes");
}

std::string HelpFormatter::make_help(const CLI::App *app, std::string name, CLI::AppFormatMode mode) const {
    std::string help = Formatter::make_help(app, std::move(name), mode);
    for (std::size_t at = help.find("\n\n\n"); at != std::string::npos; at = help.find("\n\n\n", at))
        help.erase(at, 1);
    return help;
}

std::string HelpFormatter::make_usage(const CLI::App *app, std::string name) const {
    const bool isCommand = app->get_subcommands([](const CLI::App *) { return true; }).empty();
    return "\nUsage: " + name + (isCommand ? " [OPTIONS] FILE..." : " COMMAND [OPTIONS] FILE...") + "\n";
}

std::string HelpFormatter::make_option(const CLI::Option *option, bool isPositional) const {
    std::string left = "  " + option->get_type_name(), text = option->get_description();
    if (!isPositional) {
        left = option->get_snames().empty() ? "      " : "  -" + option->get_snames().front() + ", ";
        left += "--" + option->get_lnames().front();
        if (option->get_type_size() != 0)
            left += " " + option->get_type_name();
    }
    if (!option->get_default_str().empty())
        text += " [" + option->get_default_str() + "]";
    return entry(left, text);
}

std::string HelpFormatter::make_subcommand(const CLI::App *command) const {
    return entry("  " + command->get_name(), command->get_description());
}

void FileOptions::addTo(CLI::App &app, const std::string &what) {
    std::string typeName = what;
    for (char &c : typeName)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    app.add_option("scenes", inputs, "Inventor or VRML files, text or binary, also packed by gzip")
        ->type_name("FILE...");
    app.option_defaults()->group("Files")->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    app.add_option("-o,--output", output,
                   "The " + what + ", a folder for several scenes, or - for standard output; by default " +
                       what + "s are named as their scenes, in the current folder")
        ->type_name(typeName);
    app.add_flag("-q,--quiet", isQuiet, "No progress on standard error");
}

std::string FileOptions::extension() const {
    namespace fs = std::filesystem;
    std::error_code ignored;
    if (inputs.size() > 1 || fs::is_directory(output, ignored))
        return "";
    std::string name = fs::path(output).extension().string();
    for (char &c : name)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return name.empty() ? name : name.substr(1);
}

} // namespace oravane
