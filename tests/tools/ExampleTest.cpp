#include "tools/Example.h"

#include "TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

using oravane::Example;

namespace {

int run(std::vector<std::string> arguments, const std::function<void(Example &)> &body) {
    arguments.insert(arguments.begin(), "build/terrain");
    std::vector<char *> argv(arguments.size());
    std::transform(arguments.begin(), arguments.end(), argv.begin(),
                   [](std::string &argument) { return argument.data(); });
    return oravane::runExample(static_cast<int>(argv.size()), argv.data(), body);
}

TEST(Example, MakesTheFolderAndNamesWhatWasWritten) {
    const TemporaryFolder folder;
    const std::string out = folder.path("new/out");
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(run({"--data", folder.path("d"), "--out", out},
                  [&](Example &example) {
                      EXPECT_EQ(example.dataFile("a.txt"), folder.path("d") + "/a.txt");
                      std::ofstream(example.outFile("page.ps")) << "%!PS";
                  }),
              0);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), out + "/page.ps\n");
}

TEST(Example, EndsWithOneLineWhenSomethingFails) {
    const TemporaryFolder folder;
    const std::string file = folder.write("file", "x"), out = folder.path("out");
    const std::string usage = "usage: build/terrain [--out DIR] [--data DIR] [--every-format]\n";
    const auto nothing = [](Example &) {};
    const auto failing = [](Example &) { throw std::runtime_error("no data"); };
    const auto forgetful = [](Example &example) { example.outFile("page.ps"); };
    const struct {
        std::vector<std::string> arguments;
        std::function<void(Example &)> body;
        int status;
        std::string line;
    } rows[] = {
        {{"--out", out}, failing, 1, "terrain: no data\n"},
        {{"--out", out}, forgetful, 1, "terrain: nothing was written to " + out + "/page.ps\n"},
        {{"--out", file + "/out"},
         nothing,
         1,
         "terrain: cannot make the folder " + file + "/out: Not a directory\n"},
        {{"--out"}, nothing, 2, usage},
        {{"--size", "3"}, nothing, 2, usage},
    };
    for (const auto &row : rows) {
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(run(row.arguments, row.body), row.status);
        EXPECT_EQ(::testing::internal::GetCapturedStderr(), row.line);
    }
}

} // namespace
