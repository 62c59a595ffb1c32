#include "vectorize/PageFixture.h"

#include <Inventor/errors/SoDebugError.h>

namespace {

using namespace oravane_test;

TEST(SoVectorOutput, AFileThatCannotBeOpenedGivesTheStandardOutput) {
    SoPSVectorOutput output;
    for (const char *const name : {"/nowhere/at/all.ps", static_cast<const char *>(nullptr)}) {
        EXPECT_EQ(output.openFile(name), 0);
        EXPECT_EQ(output.getFilePointer(), stdout);
    }
    output.closeFile();
    EXPECT_NE(fileno(stdout), -1) << "the standard output stays open";
}

TEST(SoVectorOutput, StreamsOfTheCallerAreClosedWhenReplaced) {
    const TemporaryFile first, second;
    SoPSVectorOutput output;
    FILE *stream = std::fopen(first.name(), "w");
    output.setFilePointer(stream);
    output.setFilePointer(stream); // must not close what it is about to use
    output.write("one");
    ASSERT_TRUE(output.openFile(second.name()));
    EXPECT_EQ(readFile(first.path()), "one") << "closed, so written";
    output.write("two");
    output.setFilePointer(nullptr);
    EXPECT_EQ(output.getFilePointer(), stdout);
    EXPECT_EQ(readFile(second.path()), "two");
}

TEST(SoVectorOutput, AFullDiskIsNoticedAndReportedOnce) {
    int reports = 0;
    SoDebugError::setHandlerCallback([](const SoError *, void *n) { ++*static_cast<int *>(n); }, &reports);
    SoVectorizePSAction action;
    const Scene scene(view("Sphere { }"));
    ASSERT_TRUE(action.getOutput()->openFile("/dev/full"));
    action.apply(scene);
    EXPECT_TRUE(action.getOutput()->hasWriteError());
    action.apply(scene);
    action.getOutput()->closeFile();
    EXPECT_TRUE(action.getOutput()->hasWriteError());
    SoDebugError::setHandlerCallback(SoError::getHandlerCallback(), nullptr);
    EXPECT_EQ(reports, 1);
    const TemporaryFile file;
    ASSERT_TRUE(action.getOutput()->openFile(file.name()));
    EXPECT_FALSE(action.getOutput()->hasWriteError());
}

} // namespace
