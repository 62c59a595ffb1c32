#include "TestScene.h"

#include <oravane/PbMiscTextAttr.h>
#include <oravane/PiText.h>
#include <oravane/PoBase.h>
#include <oravane/SoAnnoText3.h>

#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoTransform.h>
#include <Inventor/nodes/SoTransformSeparator.h>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

/// A builder, and the label that it made last.
struct Builder : PiText {
    Builder() {
        setFont("defaultFont", 1);
        setGroup(group.get());
    }
    int buildLabel(const char *string) {
        int numLines = -1;
        setString(string);
        build(numLines);
        const auto *separator =
            static_cast<SoTransformSeparator *>(group->getChild(group->getNumChildren() - 1));
        transform = static_cast<SoTransform *>(separator->getChild(0));
        text = static_cast<SoText3 *>(separator->getChild(1));
        return numLines;
    }
    std::string lines() const {
        std::string all;
        for (int i = 0; i < text->string.getNum(); ++i)
            (all += i > 0 ? "|" : "") += text->string[i].getString();
        return all;
    }
    SbMatrix matrix() const {
        SbMatrix m;
        m.setTransform(transform->translation.getValue(), transform->rotation.getValue(),
                       transform->scaleFactor.getValue());
        return m;
    }

    test::Ref<SoGroup> group{new SoGroup};
    SoTransform *transform = nullptr;
    SoText3 *text = nullptr;
};

SbMatrix rows(const SbVec3f &x, const SbVec3f &y, const SbVec3f &z, const SbVec3f &origin) {
    return {x[0], x[1], x[2], 0, y[0],      y[1],      y[2],      0,
            z[0], z[1], z[2], 0, origin[0], origin[1], origin[2], 1};
}

TEST(PiText, NodesOfALabel) {
    Builder b;
    ASSERT_EQ(b.buildLabel("one\ntwo"), 1);
    ASSERT_EQ(b.group->getNumChildren(), 1);
    EXPECT_EQ(b.group->getChild(0)->getTypeId(), SoTransformSeparator::getClassTypeId());
    EXPECT_EQ(static_cast<SoGroup *>(b.group->getChild(0))->getNumChildren(), 2) << "no font";
    EXPECT_EQ(b.text->getTypeId(), SoAnnoText3::getClassTypeId());
    EXPECT_EQ(b.lines(), "one\ntwo");
    EXPECT_EQ(b.text->getName(), "");
    PoBase::setTextType(PoBase::TEXT3_NODE);
    b.setName("label");
    b.setHorAlignment(PiText::HOR_CENTER);
    b.buildLabel("");
    PoBase::setTextType(PoBase::ANNO_TEXT3_NODE);
    EXPECT_EQ(b.text->getTypeId(), SoText3::getClassTypeId());
    EXPECT_EQ(b.text->getName(), "label");
    EXPECT_EQ(b.text->justification.getValue(), SoText3::CENTER);
    EXPECT_EQ(b.lines(), "");
}

TEST(PiText, WrapsAtWords) {
    const struct {
        const char *text;
        int length;
        const char *lines;
        int numNotEmpty;
    } rows[] = {
        {"ab/cd/ef", 4, "ab|cd|ef", 3},
        {"ab/cd/ef", 5, "ab/cd|ef", 2},
        {"ab/cd/ef", 8, "ab/cd/ef", 1},
        {"ab/cd/ef", 0, "ab/cd/ef", 1},
        {"ab/cd", -3, "ab|cd", 2},
        {"abcdefgh/ij", 4, "abcdefgh|ij", 2},
        {"ab///cd//", 4, "ab|cd//", 2},
        {"/abcdef/gh", 4, "|abcdef|gh", 2},
        {"///", 2, "", 0},
        {"", 4, "", 0},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(std::string(row.text) + " at " + std::to_string(row.length));
        PbMiscTextAttr attributes;
        attributes.setLineLength('/', row.length);
        Builder b;
        b.setTextAttributes(&attributes);
        b.setTextAttributes(nullptr);
        EXPECT_EQ(b.getSubStringNum(row.text), row.numNotEmpty);
        const int numLines = b.buildLabel(row.text);
        EXPECT_EQ(numLines, b.text->string.getNum());
        EXPECT_EQ(b.lines(), row.lines);
        b.setMultiLinesEnable(0);
        EXPECT_EQ(b.buildLabel(row.text), 1);
        EXPECT_EQ(b.lines(), row.text);
    }
}

TEST(PiText, PlacesTheLinesInTheirPlane) {
    const struct {
        PiText::VertAlignment alignment;
        float one, three; ///< lift of one line and of three, in font sizes
    } lifts[] = {
        {PiText::VERT_TOP, -0.73f, -0.73f},  {PiText::VERT_CAP, -0.65f, -0.65f},
        {PiText::VERT_HALF, -0.32f, 0.68f},  {PiText::VERT_BASE, 0, 2},
        {PiText::VERT_BOTTOM, 0.28f, 2.28f},
    };
    const SbVec2f ups[] = {{0, 1}, {0, -1}, {-1, 0}, {1, 0}}; // of the paths
    const SbVec3f origin(3, 4, 5), slant[] = {{0, 2, 0}, {-1, 1, 3}};
    SbVec3f base = slant[0], up = slant[1];
    base.normalize();
    up.normalize();
    for (int path = 0; path < 4; ++path)
        for (const auto &lift : lifts)
            for (const bool isMirrored : {false, true}) {
                SCOPED_TRACE(::testing::Message() << path << " " << lift.alignment << " " << isMirrored);
                Builder b;
                b.setFontSize(2);
                b.setOrigin(origin);
                b.setDirectionVectors(slant);
                b.setPath(static_cast<PiText::Path>(path));
                b.setAlignment(PiText::HOR_CENTER, lift.alignment);
                b.setMirrorEnable(isMirrored);
                b.setMultiLines(' ', 1);
                const SbVec3f n = base.cross(up), top = ups[path][0] * base + ups[path][1] * up;
                const float s = isMirrored ? -1.0f : 1.0f;
                for (const auto &[string, height] : {std::pair{"a", lift.one}, {"a b c", lift.three}}) {
                    b.buildLabel(string);
                    const SbVec3f at = origin + 2 * height * top;
                    EXPECT_TRUE(b.matrix().equals(rows(s * top.cross(n), top, s * n, at), 1e-5f)) << string;
                }
            }
}

TEST(PiText, BoxesAreThoseOfTheNodes) {
    const SbVec3f slant[] = {{1, 1, 0}, {-1, 1, 1}};
    const test::Ref<SoFont> font(new SoFont);
    font->name = "defaultFont";
    font->size = 3;
    for (const auto alignment : {PiText::HOR_LEFT, PiText::HOR_RIGHT, PiText::HOR_CENTER})
        for (const char *string : {"Hello", "12.5 three lines", ""}) {
            SCOPED_TRACE(::testing::Message() << alignment << string);
            Builder b;
            b.group->addChild(font.get());
            b.setFontSize(3);
            b.setAlignment(alignment, PiText::VERT_HALF);
            b.setMultiLines(' ', 5);
            b.setOrigin(SbVec2f(7, 8));
            b.setString(string);
            SbBox2f plain, box;
            int numLines = 0;
            b.getLimit(plain, numLines);
            b.setMirrorEnable(1);
            b.getLimit(box, numLines);
            EXPECT_TRUE(box.getMin().equals(plain.getMin(), 1e-4f)) << "a mirrored text covers the same span";
            EXPECT_TRUE(box.getMax().equals(plain.getMax(), 1e-4f));
            b.setDirectionVectors(slant);
            b.build(box, numLines);
            const SbBox3f told = b.getBoundingBox(), seen = test::boundingBox(b.group.get());
            EXPECT_EQ(numLines, *string == '1' ? 3 : 1);
            ASSERT_EQ(told.isEmpty(), *string == '\0');
            ASSERT_EQ(seen.isEmpty(), told.isEmpty());
            if (told.isEmpty())
                continue;
            EXPECT_TRUE(told.getMin().equals(seen.getMin(), 1e-4f));
            EXPECT_TRUE(told.getMax().equals(seen.getMax(), 1e-4f));
            EXPECT_EQ(box.getMax(), SbVec2f(told.getMax()[0], told.getMax()[1]));
        }
}

TEST(PiText, MeasuresTheSameAfterManyOtherTexts) {
    PiText text;
    text.setFont("defaultFont", 2);
    std::vector<SbVec2f> sizes(24000);
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        text.getStringSizes(std::to_string(i % 12000).c_str(), sizes[i][0], sizes[i][1]);
        ASSERT_EQ(sizes[i], sizes[i % 12000]) << i;
    }
    const char *const texts[] = {"", nullptr, "AAA", "g", "AAA", "I I"};
    int widest = -1, highest = -1;
    float width = -1, height = -1;
    text.getStringsSizes(texts, 6, widest, highest, width, height);
    EXPECT_EQ(widest, 2) << "the first of equals";
    EXPECT_NEAR(width, 2 * 2.361, 1e-3) << "at the size that is set";
    text.getStringsSizes(texts, 2, widest, highest, width, height);
    EXPECT_EQ(SbVec2f(width, height), SbVec2f(0, 0));
    EXPECT_EQ(widest, 0);
}

TEST(PiText, FindsAFontSizeThatFits) {
    const float width = 2.361f; // of "AAA" at size 1
    const struct {
        float start, decrement, maxWidth, maxHeight, expected;
    } rows[] = {
        {4, 1, 100, 100, 4},     {4, 1, 2.5f * width, 100, 2},
        {4, 1, 100, 1, 1},       {4, 1.5f, 0.1f, 0.1f, 1},
        {4, 9, 1, 1, 4}, // the last one above 0 does not fit
        {4, 0, 1, 1, -1},        {-4, 1, 1, 1, -1},
        {4, 1, 0, 1, -1},        {4, 1, 1, NAN, -1},
        {INFINITY, 1, 1, 1, -1}, {4, INFINITY, 1, 1, 4},
    };
    PiText text;
    text.setFontName("defaultFont");
    for (const auto &[start, decrement, maxWidth, maxHeight, expected] : rows)
        EXPECT_EQ(text.computeFontSize("AAA", start, decrement, maxWidth, maxHeight), expected)
            << start << " " << decrement << " " << maxWidth;
    for (const float decrement : {1e-4f, 1e-9f}) // millions of steps, and steps that change nothing
        EXPECT_NEAR(text.computeFontSize("AAA", 1000, decrement, width, 100), 1, 1e-2) << decrement;
}

TEST(PiText, OddInputHasADefinedResult) {
    PiText text;
    int numLines = 42;
    SbBox2f box(1, 2, 3, 4);
    text.setString("x");
    text.build(box, numLines);
    text.build(numLines);
    EXPECT_EQ(numLines, 42) << "nothing happens without a group";
    EXPECT_EQ(box.getMax(), SbVec2f(3, 4));
    text.getLimit(box, numLines);
    const SbBox2f good = box;
    const SbVec3f bad[] = {{1, 0, 0}, {0, NAN, 0}}, parallel[] = {{1, 0, 0}, {1, 0, 0}};
    text.setOrigin(0, INFINITY);
    text.setCharUpVec(NAN, 0);
    text.setDirectionVectors(bad);
    text.setDirectionVectors(nullptr);
    text.setFont(static_cast<const char *>(nullptr), INFINITY);
    text.setPath(static_cast<PiText::Path>(7));
    text.getLimit(box, numLines);
    EXPECT_EQ(box.getMax(), good.getMax()) << "what is no number is not taken";
    text.setOrigin(1, 2, 3);
    text.setDirectionVectors(parallel);
    text.getLimit(box, numLines);
    EXPECT_EQ(box.getMin(), SbVec2f(1, 2)) << "shrunk to the origin";
    EXPECT_EQ(box.getMax(), SbVec2f(1, 2));
    text.setString(nullptr);
    text.getLimit(box, numLines);
    EXPECT_TRUE(box.isEmpty());
    EXPECT_EQ(text.getSubStringNum(nullptr), 0);
}

} // namespace
