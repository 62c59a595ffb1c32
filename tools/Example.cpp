#include "tools/Example.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace oravane {

namespace {

namespace fs = std::filesystem;

void makeFolder(const std::string &folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (!fs::is_directory(folder))
        throw std::runtime_error("cannot make the folder " + folder + ": " + error.message());
}

void nameOutFiles(const Example &example) {
    for (const std::string &file : example.outFiles()) {
        std::error_code error;
        if (!fs::exists(file, error) || fs::file_size(file, error) == 0)
            throw std::runtime_error("nothing was written to " + file);
        std::printf("%s\n", file.c_str());
    }
}

} // namespace

Example::Example(std::string outFolder, std::string dataFolder, bool everyFormat)
    : m_outFolder(std::move(outFolder)), m_dataFolder(std::move(dataFolder)), m_everyFormat(everyFormat) {}

std::string Example::dataFile(const std::string &name) const {
    return (fs::path(m_dataFolder) / name).string();
}

std::string Example::outFile(const std::string &name) {
    m_outFiles.push_back((fs::path(m_outFolder) / name).string());
    return m_outFiles.back();
}

int runExample(int argc, char **argv, const std::function<void(Example &)> &body) {
    std::string outFolder = "out", dataFolder = ORAVANE_DATA_FOLDER;
    bool everyFormat = false;
    for (int i = 1; i < argc; i += 2) {
        const std::string_view option = argv[i];
        if (option == "--every-format") {
            everyFormat = true;
            --i; // it has no value
            continue;
        }
        if ((option != "--out" && option != "--data") || i + 1 == argc) {
            std::fprintf(stderr, "usage: %s [--out DIR] [--data DIR] [--every-format]\n", argv[0]);
            return 2;
        }
        (option == "--out" ? outFolder : dataFolder) = argv[i + 1];
    }
    setenv("COIN_FORCE_FREETYPE_OFF", "1", 1);
    try {
        makeFolder(outFolder);
        Example example(outFolder, dataFolder, everyFormat);
        body(example);
        nameOutFiles(example);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s: %s\n", fs::path(argv[0]).filename().c_str(), error.what());
        return 1;
    }
    return 0;
}

} // namespace oravane
