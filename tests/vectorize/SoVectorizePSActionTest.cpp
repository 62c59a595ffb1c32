#include "vectorize/PageFixture.h"

#include "CommaLocale.h"

#include <Inventor/nodes/SoMarkerSet.h>

#include <cmath>
#include <sstream>
#include <vector>

namespace {

using namespace oravane_test;

const auto kMillimeter = SoVectorizeAction::MILLIMETER;
const SbColor kGreen(0, 1, 0);
const std::vector<SbColor> kRed(1000, SbColor(1, 0, 0));

std::vector<SbVec4f> rowOfPoints(int n) {
    std::vector<SbVec4f> points;
    for (int i = 0; i < n; ++i)
        points.emplace_back(i + 0.25f, 7.0f, 0.0f, 1.0f);
    return points;
}

/// The lines with `word` in them.
std::string linesWith(const std::string &word, const std::string &text) {
    std::istringstream in(text);
    std::string result;
    for (std::string line; std::getline(in, line);)
        if (line.find(word) != std::string::npos)
            result += line + ";";
    return result;
}

/// Gives the tests the drawing operations themselves: what each writes after a header, on a good page.
class Driver : public SoVectorizePSAction {
public:
    using SoVectorizePSAction::printPolyLine;

    template <class Draw>
    std::string written(Draw draw) {
        const std::string page = writtenTo(getOutput(),
                                           [&] {
                                               writeHeader();
                                               draw();
                                               writeFooter();
                                           }),
                          start = "10.00 10.00 translate\n";
        EXPECT_EQ(complaints(page), "");
        const std::size_t begin = page.find(start) + start.size();
        return page.substr(begin, page.size() - begin - std::string("showpage\n").size());
    }
    std::string line(int n, unsigned short pattern = 0xFFFF) {
        return written([&] { printPolyLine(rowOfPoints(n).data(), n, kRed.data(), 0, 1, pattern); });
    }
    std::string coloredLine(const std::vector<SbColor> &colors) {
        const int n = static_cast<int>(colors.size());
        return written([&] { printPolyLine(rowOfPoints(n).data(), n, colors.data(), 1, 2, 0xFFFF); });
    }
    std::string marks(int n, float size, int multicolor = 0) {
        return written([&] { printPolyMark(rowOfPoints(n).data(), n, kRed.data(), multicolor, size); });
    }
    std::string markers(int n, SoMarkerSet *set) {
        return written([&] { printPolyMark(rowOfPoints(n).data(), n, kRed.data(), 0, set); });
    }
    std::string polygon(int n) {
        return written([&] { printPolygon(rowOfPoints(n).data(), n, kRed.data()); });
    }
    /// Strings and their fonts.
    std::string texts(const std::vector<std::pair<const char *, const char *>> &all, int justification = 1,
                      float angle = 0) {
        return written([&] {
            for (const auto &[string, font] : all)
                printText2(SbVec4f(1, 2, 0, 1), kRed[0], font, 10, string, justification, angle);
        });
    }
    std::string image(SbVec2s size, SbVec2s source, int components, int horizontal = 0, int vertical = 0) {
        const unsigned char pixels[64] = {255, 0, 0, 0, 255, 0, 0, 0, 255, 10, 20, 30, 1, 2, 3, 4, 5, 6};
        return written([&] {
            printImage(SbVec4f(50, 60, 0, 1), pixels, size, source, components,
                       static_cast<SoImage::HorAlignment>(horizontal),
                       static_cast<SoImage::VertAlignment>(vertical));
        });
    }
};

TEST(SoVectorizePSAction, PageOfASimpleScene) {
    SoVectorizePSAction action;
    const std::string page = pageOf(action, Scene(view(kPlain + "BaseColor { rgb 1 0.5 0 } " + kTriangle)));
    EXPECT_EQ(bodyOf(page), expectedFile("triangle_body.ps"));
    EXPECT_EQ(complaints(page), "");
}

TEST(SoVectorizePSAction, PrologAndBoundingBox) {
    SoVectorizePSAction action;
    for (const int colored : {1, 0}) {
        action.getOutput()->setColored(colored);
        const std::string page = pageOf(action, nullptr);
        std::string expected = expectedFile(colored ? "prolog_color.ps" : "prolog_grey.ps");
        expected.replace(expected.find("xxxx yyyy"), 9, " 538  785");
        EXPECT_EQ(page.substr(0, page.size() - bodyOf(page).size()), expected);
    }
    action.setDrawingDimensions(100, 2, SoVectorizeAction::METER);
    EXPECT_EQ(count(pageOf(action, nullptr), "%%BoundingBox: 0 0 283464 5669\n%%EndComments\n"), 1);
}

TEST(SoVectorizePSAction, HeaderFollowsTheSettings) {
    SoVectorizePSAction action;
    action.setOrientation(SoVectorizeAction::LANDSCAPE);
    action.setLineEndStyle(SoVectorizeAction::SQUARE_END);
    action.setMiterLimit(0.5f);
    action.setNominalWidth(0.5f, kMillimeter);
    action.setStartPosition(1, 2, kMillimeter);
    action.setBorder(0);
    std::string joins;
    for (const int join : {0, 1, 2, 3, 4, 5}) {
        action.setLineJoinsStyle(static_cast<SoVectorizeAction::JoinLineStyle>(join));
        joins += linesWith("setlinejoin", pageOf(action, nullptr)).substr(0, 1);
    }
    EXPECT_EQ(joins, "200211");
    EXPECT_EQ(bodyOf(pageOf(action, nullptr)),
              "2.834646 2.834646 scale\n/linecap 2 def\nlinecap setlinecap\n"
              "1 setlinejoin\n1.00 setmiterlimit\n0.50 ps\n0.50 ep\n[] 0 tl\n"
              "2.00 1.00 translate\n90 rotate\n0 -277.00 translate\nshowpage\n");
}

TEST(SoVectorizePSAction, PolylinesGoInJoinedBatches) {
    Driver driver;
    EXPECT_EQ(driver.line(0), "");
    EXPECT_EQ(driver.line(3), "1 0 0 gc\n2.25 7 1.25 7 0.25 7\n3 ppl\n");
    EXPECT_EQ(linesWith("ppl", driver.line(100)), "100 ppl;");
    EXPECT_EQ(linesWith("ppl", driver.line(199)), "100 ppl;100 ppl;");
    const std::string text = driver.line(150);
    EXPECT_EQ(linesWith("ppl", text), "100 ppl;51 ppl;");
    EXPECT_EQ(count(text, "\n50.25 7\n") + count(text, " 50.25 7\n") + count(text, "\n50.25 7 "), 2)
        << "the point that closes a batch opens the next: " << text;
    EXPECT_EQ(driver.coloredLine({kRed[0], kRed[0], SbColor(0, 0.5f, 0), SbColor(0, 0, 0)}),
              "0.71 ep\n1 0 0 gc\n0.25 7 1.25 7 2 ppl\n1.25 7 2.25 7 2 ppl\n"
              "0 0.5 0 gc\n2.25 7 3.25 7 2 ppl\n");
}

TEST(SoVectorizePSAction, LinePatterns) {
    const std::pair<unsigned short, const char *> rows[] = {{0xFFFF, ""}, // set already
                                                            {0x00FF, "[2.80 2.80 ] 5.64 tl;"},
                                                            {0xFF00, "[2.80 2.80 ] 2.82 tl;"},
                                                            {0x8000, "[0.35 5.25 ] 0.35 tl;"},
                                                            {0xC003, "[0.70 4.20 0.70 0. ] 5.64 tl;"}};
    Driver driver;
    for (const auto &[pattern, expected] : rows)
        EXPECT_EQ(linesWith(" tl", driver.line(2, pattern)), expected);
    EXPECT_EQ(driver.line(2, 0), "");
    const std::string change = driver.written([&] {
        for (const unsigned short pattern : {1, 0xFFFF})
            driver.printPolyLine(rowOfPoints(2).data(), 2, kRed.data(), 0, 1, pattern);
    });
    EXPECT_EQ(linesWith(" tl", change), "[0.35 5.25 ] 5.64 tl;[] 0.00 tl;");
}

TEST(SoVectorizePSAction, MarksAndPolygonsKeepTheStackSmall) {
    Driver driver;
    EXPECT_EQ(driver.marks(2, 0), "1 0 0 gc\n1.25 7 0.25 7\n2 ppmp\n") << "size 0 counts as 1";
    EXPECT_EQ(driver.marks(1, 3), "1.06 ps\n1 0 0 gc\n0.25 7\n1 ppmp\n");
    EXPECT_EQ(driver.marks(2, 1, 1), "1 0 0 gc\n0.25 7.00 1 ppmp\n1.25 7.00 1 ppmp\n");
    EXPECT_EQ(linesWith("ppmp", driver.marks(250, 1)), "100 ppmp;100 ppmp;50 ppmp;");
    EXPECT_EQ(linesWith("pfa", driver.polygon(249)), "0.25 7.00 pfabeg;248 pfaend;1 pfa;");
    EXPECT_EQ(linesWith("pfa", driver.polygon(600)),
              "0.25 7.00 pfabeg;248 pfacnt;248 pfacnt;103 pfaend;1 pfa;");
    for (const auto &[text, longest] : {std::pair(driver.polygon(300), 66), {driver.line(99), 78}}) {
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);)
            EXPECT_LE(line.size(), longest + 14u) << line;
    }
    driver.setPenDescription(1, &kGreen, nullptr, kMillimeter);
    EXPECT_EQ(linesWith("gc", driver.polygon(3)), "0 1 0 gc;") << "pens replace colours";
}

TEST(SoVectorizePSAction, StringsStayWellFormed) {
    const std::pair<const char *, const char *> rows[] = {{"a(b)", "(a\\(b\\))"},
                                                          {"a\\b", "(a\\b)"},
                                                          {"\\101", "(\\101)"},
                                                          {"ends in \\", "(ends in \\\\)"},
                                                          {"two \\\\", "(two \\\\)"},
                                                          {"\\)", "(\\\\\\))"},
                                                          {"\\\\)", "(\\\\\\))"},
                                                          {"\\\\\\(", "(\\\\\\\\\\()"},
                                                          {"line\nfeed\x04", "(line\\012feed\\004)"},
                                                          {"\\\n", "(\\\\\\012)"},
                                                          {"\xC3\xA9 %", "(\xC3\xA9 %)"},
                                                          {"", "()"}};
    std::vector<std::pair<const char *, const char *>> texts;
    std::string all = "1 0 0 gc\n/Times findfont 3.53 scalefont setfont\n";
    for (const auto &[string, expected] : rows) {
        texts.emplace_back(string, "Times");
        all += std::string(expected) + " 0.00 1.00 2.00 ltx\n";
    }
    EXPECT_EQ(Driver().texts(texts), all);
}

TEST(SoVectorizePSAction, FontsAndJustification) {
    Driver driver;
    const std::string before = "1 0 0 gc\n/Helvetica findfont 3.53 scalefont setfont\n";
    EXPECT_EQ(driver.texts({{"x", "Helvetica"}, {"y", "Helvetica"}}, 2, 3.1415927f / 2),
              before + "1.00 2.00 90.00 (x) rtx\n1.00 2.00 90.00 (y) rtx\n");
    EXPECT_EQ(driver.texts({{"x", "Helvetica"}}, 3), before + "1.00 2.00 0.00 (x) ctx\n");
    EXPECT_EQ(driver.texts({{"x", "Helvetica"}}, 4), before);
    const std::string longName(300, 'f');
    EXPECT_EQ(
        linesWith(
            "findfont",
            driver.texts(
                {{"x", "Times New:Bold"}, {"x", "a)b%\n"}, {"x", longName.c_str()}, {nullptr, nullptr}})),
        "(Times New:Bold) cvn findfont 3.53 scalefont setfont;(a\\)b%\\012) cvn findfont 3.53 scalefont "
        "setfont;/" +
            longName.substr(0, 255) + " findfont 3.53 scalefont setfont;/ findfont 3.53 scalefont setfont;");
}

TEST(SoVectorizePSAction, MarkersAreDefinedOnce) {
    const unsigned char arrow[22] = {0x80, 0xC0, 0x01, 0x40};
    SoMarkerSet::addMarker(200, SbVec2s(10, 11), arrow, FALSE, FALSE);
    auto *markers = new SoMarkerSet;
    markers->ref();
    const int indices[] = {200, 200, SoMarkerSet::CROSS_5_5, 777777};
    markers->markerIndex.setValues(0, 4, indices);
    Driver driver;
    driver.setNominalWidth(0.5f, kMillimeter);
    const std::string text = driver.markers(5, markers);
    EXPECT_EQ(text.substr(0, text.find("/Bitmap", 1)),
              "/Bitmap200\n{ 10 11\n true\n [10 0 0 11 0 0]\n{<80C00140" + std::string(32, '0') +
                  "\n0000>} imagemask\n} bind def\n/currentBitmapIndex {Bitmap200} bind def\n1 0 0 gc\n"
                  "5.00 5.50 -2.25 4.25 DisplayBitmap\n5.00 5.50 -1.25 4.25 DisplayBitmap\n");
    EXPECT_EQ(count(text, "\n{<000000002200140008001400220000000000>} imagemask"), 1);
    EXPECT_EQ(count(text, "DisplayBitmap"), 4) << "the last marker has no bitmap";
    EXPECT_EQ(count(text, "/currentBitmapIndex"), 3);
    markers->unref();
}

TEST(SoVectorizePSAction, Images) {
    Driver driver;
    driver.setPixelImageSize(2, kMillimeter);
    const SbVec2s size(4, 6), source(2, 3);
    const std::string colors = "\n2\n3\nDisplayImage\nFF000000FF000000FF0A141E010203040506\n";
    EXPECT_EQ(driver.image(size, source, 3), "2 3\n8.00 12.00\n50.00 60.00" + colors);
    EXPECT_EQ(driver.image(SbVec2s(9, 40), source, 3, 0, 2), "2 3\n18.00 80.00\n50.00 -20.00" + colors);
    EXPECT_EQ(driver.image(size, SbVec2s(1, 2), 4),
              "1 2\n8.00 12.00\n50.00 60.00\n1\n3\nDisplayImage\nFF0000FF0000\n");
    EXPECT_EQ(driver.image(size, source, 2, 1, 2),
              "2 3\n8.00 12.00\n46.00 48.00\n2\n1\nDisplayImage\nFF00FF00FF14\n");
    EXPECT_EQ(count(driver.image(size, SbVec2s(41, 1), 1), "0506" + std::string(44, '0') + "\n00\n"), 1);
    EXPECT_EQ(driver.image(SbVec2s(0, 6), source, 3) + driver.image(size, SbVec2s(-1, 3), 3) +
                  driver.image(size, source, 0),
              "");
    driver.getOutput()->setColored(0);
    EXPECT_EQ(driver.image(size, source, 3), "2 3\n8.00 12.00\n50.00 60.00\n2\nDisplayImage\n4C961C120104\n");
    driver.setDrawingDimensions(50, 50, kMillimeter);
    EXPECT_EQ(driver.image(size, source, 3), "") << "out of sight";
}

// ------------------------------------------------------------------------------------------- whole pages

TEST(SoVectorizePSAction, PagesRunThroughGhostscript) {
    const Scene scene(view(kEverything));
    SoVectorizePSAction action;
    action.setBackgroundColor(1, SbColor(0.9f, 0.95f, 1));
    for (const int colored : {1, 0})
        for (const int mode : {0, 1, 2, 3}) {
            action.getOutput()->setColored(colored);
            action.setHLHSRMode(static_cast<SoVectorizeAction::HLHSRMode>(mode));
            action.enableLighting(mode == 2);
            const std::string page = pageOf(action, scene);
            EXPECT_EQ(complaints(page), "") << "mode " << mode;
            EXPECT_EQ(count(page, "setrgbcolor") == 0, !colored);
            EXPECT_EQ(count(bodyOf(page), " gc\n") == 0, !colored);
        }
}

TEST(SoVectorizePSAction, SeveralDrawingsOnAPage) {
    const Scene scene(view(kEverything));
    for (const float border : {2.0f, 0.0f}) {
        const TemporaryFile file;
        {
            SoVectorizePSAction action;
            action.getOutput()->openFile(file.name());
            action.setDrawingDimensions(80, 80, kMillimeter);
            action.setBackgroundColor(1);
            action.setBorder(border);
            action.beginPage(SbVec2f(10, 10), SbVec2f(190, 277), kMillimeter);
            action.apply(scene);
            action.apply(static_cast<SoNode *>(nullptr));
            action.setStartPosition(100, 100, kMillimeter);
            action.apply(scene);
        } // the destructor ends the page and closes the file
        const std::string page = readFile(file.path());
        EXPECT_EQ(count(page, "%!PS"), 1);
        EXPECT_EQ(count(page, "showpage"), 1);
        EXPECT_EQ(count(page, "gsave\n10.00 10.00 translate\n"), 2);
        EXPECT_EQ(count(page, "gsave\n100.00 100.00 translate\n"), 1);
        EXPECT_EQ(count(page, "clip\n0.71 ep\n"), border > 0 ? 3 : 0);
        EXPECT_EQ(count(page, "/Helvetica findfont"), 2) << "a font ends with the drawing that chose it";
        EXPECT_EQ(count(bodyOf(page), "gsave"), count(bodyOf(page), "grestore"))
            << "each drawing ends in the state that it began in";
        EXPECT_EQ(complaints(page), "");
    }
}

TEST(SoVectorizePSAction, EachViewChoosesItsFont) {
    SoVectorizePSAction action;
    const std::string page = pageOf(action, twoViews("Text2 { string \"a\" } "));
    EXPECT_EQ(count(page, " findfont "), 2);
    EXPECT_EQ(complaints(page), "");
}

TEST(SoVectorizePSAction, SizesOfNothingAndLessLeaveAGoodPage) {
    const Scene scene(view("Font { size 0 } DrawStyle { lineWidth -3 pointSize -1 } " + kEverything +
                           "Font { size 0 } Text2 { string \"gone\" }"));
    for (const float size : {0.0f, 1e-9f, -1.0f}) {
        SoVectorizePSAction ofUnit, ofPage;
        ofUnit.setNominalWidth(size, kMillimeter);
        ofUnit.setPixelImageSize(size, kMillimeter);
        ofUnit.setNominalWidth(HUGE_VALF, kMillimeter);
        ofPage.setDrawingDimensions(50 * size, 50 * size, kMillimeter);
        for (SoVectorizePSAction *action : {&ofUnit, &ofPage}) {
            const std::string page = pageOf(*action, scene);
            EXPECT_EQ(complaints(page), "") << size;
            EXPECT_EQ(count(page, "(gone)"), 0);
        }
    }
}

TEST(SoVectorizePSAction, TheSameSceneGivesTheSameBytes) {
    const Scene scene(view(kEverything));
    SoVectorizePSAction first, second;
    first.setHLHSRMode(SoVectorizeAction::HLHSR_FULL_SORT);
    second.setHLHSRMode(SoVectorizeAction::HLHSR_FULL_SORT);
    const std::string page = pageOf(first, scene);
    EXPECT_EQ(pageOf(first, scene), page);
    const CommaLocale locale;
    EXPECT_TRUE(locale.isSet) << "the package locales has one with a decimal comma";
    EXPECT_EQ(pageOf(second, scene), page);
}

} // namespace
