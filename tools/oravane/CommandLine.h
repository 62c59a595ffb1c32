#ifndef ORAVANE_TOOLS_ORAVANE_COMMANDLINE_H
#define ORAVANE_TOOLS_ORAVANE_COMMANDLINE_H

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace oravane {

/// A command line that cannot be obeyed; its text is one line.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Help that keeps to the width of a terminal, with each option's start value at the end.
class HelpFormatter : public CLI::Formatter {
public:
    HelpFormatter();
    std::string make_help(const CLI::App *app, std::string name, CLI::AppFormatMode mode) const override;
    std::string make_usage(const CLI::App *app, std::string name) const override;
    std::string make_option(const CLI::Option *option, bool isPositional) const override;
    std::string make_subcommand(const CLI::App *command) const override;
};

/// What all commands have: files, and whether they say what they do.
struct FileOptions {
    std::vector<std::string> inputs;
    std::string output;
    bool isQuiet = false;

    /// `what` is what the command makes: "page".
    void addTo(CLI::App &app, const std::string &what);
    /// The extension of the one file that is to be made, without its dot and in small letters; empty
    /// when it has none, and for a folder.
    std::string extension() const;
};

/// An option with one value, which `parse` turns into what is stored; a `std::invalid_argument` of `parse`
/// is a fault of the command line.
template <class Value, class Parse>
CLI::Option *addOption(CLI::App &app, const std::string &names, Value &value, const Parse &parse,
                       const std::string &help) {
    const std::string name = names.substr(names.rfind(',') + 1);
    return app.add_option_function<std::string>(
        names,
        [name, &value, parse](const std::string &text) {
            try {
                value = parse(text);
            } catch (const std::invalid_argument &error) {
                throw CLI::ValidationError(name, error.what());
            }
        },
        help);
}

template <class Value>
struct Choice {
    const char *word;
    Value value;
};

/// An option whose value is one of a few words; the help shows them.
template <class Value, std::size_t N>
CLI::Option *addChoice(CLI::App &app, const std::string &names, Value &value,
                       const Choice<Value> (&choices)[N], const std::string &help) {
    std::string words;
    for (const Choice<Value> &choice : choices)
        words += (words.empty() ? "" : "|") + std::string(choice.word);
    const auto parse = [&choices, words](const std::string &text) {
        for (const Choice<Value> &choice : choices)
            if (text == choice.word)
                return choice.value;
        throw std::invalid_argument('"' + text + "\" is none of " + words);
    };
    const auto isValue = [&value](const Choice<Value> &choice) { return choice.value == value; };
    const auto *start = std::find_if(std::begin(choices), std::end(choices), isValue);
    return addOption(app, names, value, parse, help)->type_name(words)->default_str(start->word);
}

} // namespace oravane

#endif
