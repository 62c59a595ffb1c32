#include "vectorize/PageFixture.h"

#include <Inventor/errors/SoDebugError.h>

#include <cstring>

namespace {

using namespace oravane_test;

/// Counts the error reports while it lives.
class ReportCounter {
public:
    ReportCounter() { SoDebugError::setHandlerCallback(count, this); }
    ReportCounter(const ReportCounter &) = delete;
    ReportCounter &operator=(const ReportCounter &) = delete;
    ~ReportCounter() { SoDebugError::setHandlerCallback(SoError::getHandlerCallback(), nullptr); }
    int reports = 0;

private:
    static void count(const SoError *, void *self) { ++static_cast<ReportCounter *>(self)->reports; }
};

TEST(SoVectorOutput, AFileThatCannotBeOpenedGivesTheStandardOutput) {
    SoPSVectorOutput output;
    EXPECT_EQ(output.getFilePointer(), stdout);
    EXPECT_EQ(output.openFile("/nowhere/at/all.ps"), 0);
    EXPECT_EQ(output.openFile(nullptr), 0);
    EXPECT_EQ(output.getFilePointer(), stdout);
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
    ReportCounter counter;
    SoVectorizePSAction action;
    const Scene scene("Separator { OrthographicCamera { } Sphere { } }");
    ASSERT_TRUE(action.getOutput()->openFile("/dev/full"));
    action.apply(scene);
    EXPECT_TRUE(action.getOutput()->hasWriteError());
    action.apply(scene);
    action.getOutput()->closeFile();
    EXPECT_TRUE(action.getOutput()->hasWriteError());
    EXPECT_EQ(counter.reports, 1);
    const TemporaryFile file;
    ASSERT_TRUE(action.getOutput()->openFile(file.name()));
    EXPECT_FALSE(action.getOutput()->hasWriteError());
}

} // namespace
