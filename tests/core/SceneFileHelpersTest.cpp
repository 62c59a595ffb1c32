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

/// An input over a text, and the read errors that it causes.
class Reading {
public:
    explicit Reading(const std::string &values) : m_text("#Inventor V2.1 ascii\n\n" + values + "\n") {
        in.setBuffer(m_text.data(), m_text.size());
        m_before = SoReadError::getHandlerCallback();
        SoReadError::setHandlerCallback(
            [](const SoError *error, void *data) {
                *static_cast<std::string *>(data) += error->getDebugString().getString();
            },
            &errors);
    }
    ~Reading() { SoReadError::setHandlerCallback(m_before, nullptr); }
    Reading(const Reading &) = delete;
    Reading &operator=(const Reading &) = delete;
    SoInput *input() { return &in; }
    bool reports(const std::string &message) const { return errors.find(message) != std::string::npos; }

    SoInput in;
    std::string errors;

private:
    std::string m_text;
    SoErrorCB *m_before;
};

TEST(SceneFileHelpers, ListsAreBrokenIntoLines) {
    std::vector<int> ints(31);
    std::iota(ints.begin(), ints.end(), 0);
    const auto linesOf = [](const std::string &text) { return std::count(text.begin(), text.end(), '\n'); };
    const auto writtenInts = [&](int count) {
        return written(false, [&](SoOutput *out) { writeListOfInts(out, count, ints.data()); });
    };
    EXPECT_EQ(linesOf(writtenInts(30)), 1);
    EXPECT_EQ(linesOf(writtenInts(31)), 2);
    EXPECT_EQ(writtenInts(31).substr(writtenInts(31).size() - 4), "30 \n");
    EXPECT_EQ(writtenInts(2), "0 1 \n");
    EXPECT_EQ(writtenInts(0), "");
    const std::vector<float> floats(16, 0.5f);
    EXPECT_EQ(linesOf(written(false, [&](SoOutput *out) { writeListOfFloats(out, 16, floats.data()); })), 2);
    const std::vector<SbVec3f> vectors(6, SbVec3f(1, 2, 3));
    const std::string text =
        written(false, [&](SoOutput *out) { writeListOfSbVec3f(out, 6, vectors.data()); });
    EXPECT_EQ(linesOf(text), 2);
    EXPECT_EQ(text.substr(text.rfind('\n', text.size() - 2) + 1), "1 2 3 \n");
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
    const SoType type = PoRectangle::getClassTypeId();
    const char *names[] = {"A", "B", "C"};
    int value = 42;
    {
        Reading text("2");
        EXPECT_FALSE(readBooleanValue(&text.in, value, type));
        EXPECT_TRUE(text.reports("Illegal boolean value : 2 for :PoRectangle(must be 0 or 1)"))
            << text.errors;
    }
    {
        Reading text("MAYBE");
        EXPECT_FALSE(readBooleanValue(&text.in, value, type));
        EXPECT_TRUE(text.reports("Unknown boolean value (\"MAYBE\") for PoRectangle(must be TRUE or FALSE)"))
            << text.errors;
    }
    {
        Reading text("D");
        EXPECT_FALSE(readEnumValue(&text.in, value, 3, names, type));
        EXPECT_TRUE(text.reports("Unknown enum value (\"D\") for PoRectangle")) << text.errors;
    }
    EXPECT_EQ(value, 42) << "refused values change nothing";
    SbVec3f vector;
    EXPECT_FALSE(readVector3Value(Reading("1 2").input(), vector, type));
    EXPECT_TRUE(readEnumValue(Reading("99").input(), value, 3, names, type)) << "any integer passes";
    EXPECT_EQ(value, 99);
    EXPECT_TRUE(readEnumValue(Reading("C").input(), value, 3, names, type));
    EXPECT_EQ(value, 2);
    EXPECT_TRUE(readBooleanValue(Reading("TRUE").input(), value, type));
    EXPECT_EQ(value, 1);
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
    ASSERT_EQ(texts.size(), 3u);
    EXPECT_EQ(texts[0], "Oravane: in X():n=3");
    EXPECT_EQ(texts[1], "Oravane warning in X():w");
    EXPECT_EQ(texts[2], "Oravane error in X():" + std::string(20000, 'x')) << "longer than any buffer";
    EXPECT_STREQ(PoDebugError::getClassTypeId().getName().getString(), "DebugError");
    EXPECT_TRUE(PoDebugError::getClassTypeId().isDerivedFrom(SoError::getClassTypeId()));
}

} // namespace
