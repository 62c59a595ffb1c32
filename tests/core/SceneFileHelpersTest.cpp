#include <oravane/PoDebugError.h>
#include <oravane/PoRectangle.h>
#include <oravane/SceneFileHelpers.h>

#include "TestScene.h"

#include <Inventor/SbVec3f.h>
#include <Inventor/SoInput.h>
#include <Inventor/SoOutput.h>
#include <Inventor/errors/SoReadError.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <string>
#include <vector>

namespace {

/// What `write` writes, without the header of the file.
std::string written(bool isBinary, const std::function<void(SoOutput *)> &write) {
    const std::string text = test::writtenBy(isBinary, write);
    const std::size_t header = text.find("\n\n");
    return isBinary || header == std::string::npos ? text : text.substr(header + 2);
}

TEST(SceneFileHelpers, ListsAreBrokenIntoLines) {
    std::vector<int> ints(31);
    std::iota(ints.begin(), ints.end(), 0);
    const auto linesOf = [](const std::string &text) { return std::count(text.begin(), text.end(), '\n'); };
    const auto writtenInts = [&](int count) {
        return written(false, [&](SoOutput *out) { writeListOfInts(out, count, ints.data()); });
    };
    EXPECT_EQ(linesOf(writtenInts(30)), 1);
    EXPECT_EQ(writtenInts(31).substr(writtenInts(31).find('\n')), "\n30 \n");
    EXPECT_EQ(writtenInts(2), "0 1 \n");
    EXPECT_EQ(writtenInts(0), "");
    const std::vector<float> floats(16, 0.5f);
    EXPECT_EQ(linesOf(written(false, [&](SoOutput *out) { writeListOfFloats(out, 16, floats.data()); })), 2);
    const std::vector<SbVec3f> vectors(6, SbVec3f(1, 2, 3));
    const auto text = written(false, [&](SoOutput *out) { writeListOfSbVec3f(out, 6, vectors.data()); });
    EXPECT_EQ(text.substr(text.find('\n')), "\n1 2 3 \n");
}

TEST(SceneFileHelpers, WordsInAsciiAndNumbersInBinary) {
    const char *names[] = {"A", "B"};
    const auto all = [&](SoOutput *out) {
        writeEnumValue(out, 1, names);
        writeSpace(out);
        writeBooleanValue(out, 5);
        writeComment(out, "# note");
        writeVector3Value(out, SbVec3f(1, 2, 3));
        writeEndLine(out);
    };
    EXPECT_EQ(written(false, all), "B TRUE# note\n1 2 3\n");
    const std::string binary = written(true, all);
    SoInput in;
    in.setBuffer(binary.data(), binary.size());
    ASSERT_TRUE(in.isValidFile());
    int value = 0, flag = 0;
    SbVec3f vector;
    EXPECT_TRUE(readEnumValue(&in, value, 2, names, SoType::badType()));
    EXPECT_TRUE(readBooleanValue(&in, flag, SoType::badType()));
    EXPECT_TRUE(readVector3Value(&in, vector, SoType::badType()));
    EXPECT_EQ(value, 1);
    EXPECT_EQ(flag, 1);
    EXPECT_EQ(vector, SbVec3f(1, 2, 3));
}

TEST(SceneFileHelpers, ReadingRefusesWithItsOwnMessages) {
    const struct {
        bool isEnum;
        std::string text;
        int value; ///< 42: refused values change nothing
        std::string message;
    } rows[] = {
        {false, "2", 42, "Illegal boolean value : 2 for :PoRectangle(must be 0 or 1)"},
        {false, "MAYBE", 42, "Unknown boolean value (\"MAYBE\") for PoRectangle(must be TRUE or FALSE)"},
        {false, "TRUE", 1, ""},
        {true, "D", 42, "Unknown enum value (\"D\") for PoRectangle"},
        {true, "99", 99, ""}, // any integer passes
        {true, "C", 2, ""},
    };
    std::string errors;
    SoErrorCB *const before = SoReadError::getHandlerCallback();
    SoReadError::setHandlerCallback(
        [](const SoError *error, void *data) {
            *static_cast<std::string *>(data) += error->getDebugString().getString();
        },
        &errors);
    const SoType type = PoRectangle::getClassTypeId();
    const char *names[] = {"A", "B", "C"};
    for (const auto &row : rows) {
        const std::string file = "#Inventor V2.1 ascii\n\n" + row.text + " 1 2\n";
        SoInput in;
        in.setBuffer(file.data(), file.size());
        errors.clear();
        int value = 42;
        EXPECT_EQ(row.isEnum ? readEnumValue(&in, value, 3, names, type) : readBooleanValue(&in, value, type),
                  row.message.empty());
        EXPECT_EQ(value, row.value) << row.text;
        EXPECT_NE(errors.find(row.message), std::string::npos) << errors;
        SbVec3f vector;
        EXPECT_FALSE(readVector3Value(&in, vector, type)) << "the third number is missing";
    }
    SoReadError::setHandlerCallback(before, nullptr);
}

TEST(PoDebugError, TellsItsHandlerTheWholeText) {
    std::vector<std::string> texts;
    PoDebugError::setHandlerCallback(
        [](const SoError *error, void *data) {
            EXPECT_EQ(error->getTypeId(), PoDebugError::getClassTypeId());
            static_cast<std::vector<std::string> *>(data)->emplace_back(error->getDebugString().getString());
        },
        &texts);
    PoDebugError::postInfo("X", "n=%d", 3);
    PoDebugError::postWarning("X", "%s", "w");
    PoDebugError::post("X", "%s", std::string(20000, 'x').c_str());
    PoDebugError::setHandlerCallback(nullptr, nullptr);
    EXPECT_EQ(texts, (std::vector<std::string>{"Oravane: in X():n=3", "Oravane warning in X():w",
                                               "Oravane error in X():" +
                                                   std::string(20000, 'x')})); // longer than any buffer
    EXPECT_STREQ(PoDebugError::getClassTypeId().getName().getString(), "DebugError");
    EXPECT_TRUE(PoDebugError::getClassTypeId().isDerivedFrom(SoError::getClassTypeId()));
}

} // namespace
