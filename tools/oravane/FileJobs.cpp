#include "tools/oravane/FileJobs.h"

#include "tools/oravane/CommandLine.h"
#include "tools/oravane/OutputFile.h"
#include "tools/oravane/SceneFile.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>
#include <new>
#include <set>
#include <stdexcept>

namespace oravane {

namespace {

namespace fs = std::filesystem;

/// "scene" of "data/scene.iv" and of "data/scene.iv.gz".
std::string stemOf(const std::string &input) {
    fs::path name = fs::path(input).filename();
    if (name.extension() == ".gz")
        name = name.stem();
    return name.stem().string();
}

/// One name for each file, whether it exists or not.
std::string identityOf(const std::string &path) {
    std::error_code ignored;
    const fs::path known = fs::weakly_canonical(path, ignored);
    return known.empty() ? path : known.string();
}

void checkOutputs(const std::vector<FileJob> &jobs) {
    std::set<std::string> inputs;
    for (const FileJob &job : jobs)
        inputs.insert(identityOf(job.input));
    std::map<std::string, const FileJob *> makers;
    for (const FileJob &job : jobs) {
        const std::string identity = identityOf(job.output);
        if (inputs.contains(identity))
            throw UsageError(job.output + " is an input, and would be overwritten");
        const auto [maker, isFirst] = makers.emplace(identity, &job);
        if (!isFirst)
            throw UsageError(maker->second->input + " and " + job.input + " would both become " + job.output);
    }
}

/// Does one step for a file; a failure is one line on standard error.
bool attempt(const std::string &file, const std::function<void()> &step) {
    try {
        step();
        return true;
    } catch (const std::bad_alloc &) {
        std::fprintf(stderr, "oravane: %s: there is not enough memory\n", file.c_str());
        return false;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "oravane: %s\n", error.what());
        return false;
    }
}

void makeFolder(const std::string &folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error)
        throw std::runtime_error("cannot make the folder " + folder + ": " + error.message());
}

} // namespace

FilePlan planJobs(const std::vector<std::string> &inputs, const std::string &output,
                  std::string_view extension) {
    if (inputs.empty() || std::count(inputs.begin(), inputs.end(), "") > 0)
        throw UsageError("the file of a scene is needed");
    std::error_code ignored;
    FilePlan plan;
    const std::string suffix = "." + std::string(extension);
    const bool isFolder = output.empty() || output.ends_with('/') || fs::is_directory(output, ignored);
    if (inputs.size() == 1 && !isFolder) {
        plan.jobs.push_back({inputs[0], output});
    } else {
        const bool isFile =
            output == "-" || fs::exists(output, ignored) || fs::path(output).extension() == suffix;
        if (!isFolder && isFile)
            throw UsageError("several scenes need a folder for their files, and " + output + " is none");
        plan.folder = output;
        for (const std::string &input : inputs)
            plan.jobs.push_back({input, (fs::path(output) / (stemOf(input) + suffix)).string()});
    }
    checkOutputs(plan.jobs);
    return plan;
}

bool runJobs(const FilePlan &plan, bool isQuiet, const std::function<std::string(const FileJob &)> &draw) {
    if (!plan.folder.empty() && !attempt(plan.folder, [&] { makeFolder(plan.folder); }))
        return false;
    startScenes();
    bool isGood = true;
    std::size_t number = 0;
    for (const FileJob &job : plan.jobs) {
        if (!isQuiet)
            std::fprintf(stderr, "[%zu/%zu] %s -> %s\n", ++number, plan.jobs.size(), job.input.c_str(),
                         job.output.c_str());
        isGood = attempt(job.input, [&] { writeWholeFile(job.output, draw(job)); }) && isGood;
        for (const std::string &message : takeSceneMessages())
            std::fprintf(stderr, "oravane: warning: %s\n", message.c_str());
    }
    return isGood;
}

} // namespace oravane
