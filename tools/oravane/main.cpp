#include "tools/oravane/CommandLine.h"
#include "tools/oravane/Commands.h"

#include <csignal>
#include <cstdio>
#include <exception>
#include <memory>

namespace {

constexpr int kFailed = 1, kWrongCommandLine = 2;

int refuse(const CLI::App &program, const std::string &reason) {
    std::string name = "oravane";
    for (const CLI::App *command : program.get_subcommands())
        name += " " + command->get_name();
    std::fprintf(stderr, "oravane: %s\nSee \"%s --help\".\n", reason.c_str(), name.c_str());
    return kWrongCommandLine;
}

int runProgram(int argc, char **argv) {
    CLI::App program("Prints Open Inventor scenes as pages, and renders them as pictures.", "oravane");
    program.formatter(std::make_shared<oravane::HelpFormatter>());
    program.set_help_flag("-h,--help", "Print this help and end");
    program.set_version_flag("--version", "oravane " ORAVANE_VERSION, "Print the version and end");
    program.require_subcommand(0, 1);
    const auto page = oravane::addPageCommand(program);
    const auto picture = oravane::addPictureCommand(program);
    program.footer("Examples:\n"
                   "  oravane page scene.iv -o scene.ps\n"
                   "  oravane picture scene.iv -o scene.png\n"
                   "\"oravane COMMAND --help\" names the options of a command.");
    if (argc < 2) {
        std::fputs(program.help().c_str(), stderr);
        return kWrongCommandLine;
    }
    try {
        program.parse(argc, argv);
        if (program.get_subcommands().empty())
            return refuse(program, "a command is needed: page or picture");
        const bool isPage = program.got_subcommand("page");
        return (isPage ? page : picture)() ? 0 : kFailed;
    } catch (const CLI::Success &asked) { // help or version
        return program.exit(asked);
    } catch (const CLI::ExtrasError &error) {
        const bool isCommand = program.get_subcommands().empty() && argv[1][0] != '-';
        return refuse(program, isCommand
                                   ? "there is no command " + std::string(argv[1]) + ", but page and picture"
                                   : error.what());
    } catch (const CLI::Error &error) {
        return refuse(program, error.what());
    } catch (const oravane::UsageError &error) {
        return refuse(program, error.what());
    }
}

} // namespace

int main(int argc, char **argv) {
    std::signal(SIGXFSZ, SIG_IGN); // too large a file is an error of its writing
    try {
        return runProgram(argc, argv);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "oravane: %s\n", error.what());
        return kFailed;
    }
}
