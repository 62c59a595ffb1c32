#include "vectorize/PageFixture.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoMarkerSet.h>
#include <Inventor/nodes/SoText2.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <sstream>
#include <vector>

namespace {

using namespace oravane_test;

const char *const kFrontCamera = "OrthographicCamera { position 0 0 5 nearDistance 1 farDistance 9 height 2 "
                                 "viewportMapping LEAVE_ALONE aspectRatio 1 }\n";
const char *const kTriangle = "Coordinate3 { point [ -1 -1 0, 1 -1 0, 0 1 0 ] } FaceSet { }\n";

std::string withCamera(const std::string &nodes) {
    return std::string("Separator { ") + kFrontCamera + nodes + " }";
}

TEST(SoVectorizePSAction, PageOfASimpleScene) {
    const Scene scene(
        withCamera(std::string("LightModel { model BASE_COLOR } BaseColor { rgb 1 0.5 0 }") + kTriangle));
    SoVectorizePSAction action;
    const std::string page = pageOf(action, scene);
    EXPECT_EQ(bodyOf(page), R"(2.834646 2.834646 scale
/linecap 0 def
linecap setlinecap
2 setlinejoin
1.50 setmiterlimit
0.35 ps
0.35 ep
[] 0 tl
10.00 10.00 translate
newpath
0.00 0.00 moveto
190.00 0.00 lineto
190.00 277.00 lineto
0.00 277.00 lineto
0.00 0.00 lineto
closepath
gsave
clip
1 0.5 0 gc
0.00 0.00 pfabeg
95 277 190 0
2 pfaend
1 pfa
grestore
newpath
0 0 moveto
190.00 0 lineto
190.00 277.000000 lineto
0 277.00 lineto
0 0 lineto
closepath
gsave
clip
0.71 ep
0 0 0 gc
0 0 0 277 190 277 190 0 0 0
5 ppl
grestore
showpage
)");
    EXPECT_EQ(complaints(page), "");
}

/// Gives the tests the drawing operations themselves.
class Driver : public SoVectorizePSAction {
public:
    using SoVectorizePSAction::printImage;
    using SoVectorizePSAction::printPolygon;
    using SoVectorizePSAction::printPolyLine;
    using SoVectorizePSAction::printPolyMark;
    using SoVectorizePSAction::printText2;
    using SoVectorizePSAction::writeFooter;
    using SoVectorizePSAction::writeHeader;

    /// What `draw` writes after a header.
    template <class Draw>
    std::string written(Draw draw) {
        const TemporaryFile file;
        getOutput()->openFile(file.name());
        writeHeader();
        draw();
        writeFooter();
        getOutput()->closeFile();
        m_page = readFile(file.path());
        const std::string start = "10.00 10.00 translate\n";
        const std::size_t begin = m_page.find(start) + start.size();
        return m_page.substr(begin, m_page.size() - begin - std::string("showpage\n").size());
    }
    const std::string &page() const { return m_page; }

private:
    std::string m_page;
};

std::vector<SbVec4f> rowOfPoints(int n) {
    std::vector<SbVec4f> points;
    for (int i = 0; i < n; ++i)
        points.emplace_back(i + 0.25f, 7.0f, 0.0f, 1.0f);
    return points;
}

const std::vector<SbColor> kRed(1000, SbColor(1, 0, 0));

std::string lastLines(const std::string &text, const std::string &word) {
    std::istringstream in(text);
    std::string result;
    for (std::string line; std::getline(in, line);)
        if (line.find(word) != std::string::npos)
            result += line + ";";
    return result;
}

TEST(SoVectorizePSAction, PrologAndBoundingBox) {
    SoVectorizePSAction action;
    for (const int colored : {1, 0}) {
        action.getOutput()->setColored(colored);
        const std::string page = pageOf(action, nullptr);
        std::string expected = readFile(std::string(ORAVANE_SOURCE_DIR "/tests/vectorize/data/prolog_") +
                                        (colored ? "color.ps" : "grey.ps"));
        expected.replace(expected.find("xxxx yyyy"), 9, " 538  785");
        EXPECT_EQ(page.substr(0, page.size() - bodyOf(page).size()), expected);
    }
    action.setDrawingDimensions(100, 2, SoVectorizeAction::METER);
    EXPECT_NE(pageOf(action, nullptr).find("%%BoundingBox: 0 0 283464 5669\n%%EndComments\n"),
              std::string::npos);
}

TEST(SoVectorizePSAction, HeaderFollowsTheSettings) {
    SoVectorizePSAction action;
    action.setOrientation(SoVectorizeAction::LANDSCAPE);
    action.setLineEndStyle(SoVectorizeAction::SQUARE_END);
    action.setLineJoinsStyle(SoVectorizeAction::ROUND_JOIN);
    action.setMiterLimit(0.5f);
    action.setNominalWidth(0.5f, SoVectorizeAction::MILLIMETER);
    action.setStartPosition(1, 2, SoVectorizeAction::MILLIMETER);
    action.setBorder(0);
    EXPECT_EQ(bodyOf(pageOf(action, nullptr)),
              "2.834646 2.834646 scale\n/linecap 2 def\nlinecap setlinecap\n"
              "1 setlinejoin\n1.00 setmiterlimit\n0.50 ps\n0.50 ep\n[] 0 tl\n"
              "2.00 1.00 translate\n90 rotate\n0 -277.00 translate\nshowpage\n");
}

TEST(SoVectorizePSAction, PolylinesGoInJoinedBatches) {
    Driver driver;
    const auto points = rowOfPoints(400);
    const auto line = [&](int n) {
        return driver.written([&] { driver.printPolyLine(points.data(), n, kRed.data(), 0, 1, 0xFFFF); });
    };
    EXPECT_EQ(line(3), "1 0 0 gc\n2.25 7 1.25 7 0.25 7\n3 ppl\n");
    EXPECT_EQ(lastLines(line(150), "ppl"), "100 ppl;51 ppl;");
    EXPECT_EQ(lastLines(line(100), "ppl"), "100 ppl;");
    EXPECT_EQ(lastLines(line(199), "ppl"), "100 ppl;100 ppl;");
    const std::string text = line(150);
    EXPECT_EQ(count(text, "\n50.25 7\n") + count(text, " 50.25 7\n") + count(text, "\n50.25 7 "), 2)
        << "the point that closes a batch opens the next: " << text;
    EXPECT_EQ(complaints(driver.page()), "");
    EXPECT_EQ(driver.written([&] { driver.printPolyLine(points.data(), 0, kRed.data(), 0, 1, 0xFFFF); }), "");

    const SbColor colors[] = {SbColor(1, 0, 0), SbColor(1, 0, 0), SbColor(0, 0.5f, 0), SbColor(0, 0, 0)};
    EXPECT_EQ(
        driver.written([&] { driver.printPolyLine(points.data(), 4, colors, 1, 2, 0xFFFF); }),
        "0.71 ep\n1 0 0 gc\n0.25 7 1.25 7 2 ppl\n1.25 7 2.25 7 2 ppl\n0 0.5 0 gc\n2.25 7 3.25 7 2 ppl\n");
}

TEST(SoVectorizePSAction, LinePatterns) {
    Driver driver;
    const auto points = rowOfPoints(2);
    const auto patterns = [&](unsigned short pattern) {
        const std::string text =
            driver.written([&] { driver.printPolyLine(points.data(), 2, kRed.data(), 0, 0, pattern); });
        EXPECT_EQ(complaints(driver.page()), "");
        return lastLines(text, " tl");
    };
    EXPECT_EQ(patterns(0xFFFF), "") << "set already";
    EXPECT_EQ(patterns(0x00FF), "[2.80 2.80 ] 5.64 tl;");
    EXPECT_EQ(patterns(0xFF00), "[2.80 2.80 ] 2.82 tl;");
    EXPECT_EQ(patterns(0x8000), "[0.35 5.25 ] 0.35 tl;");
    EXPECT_EQ(patterns(0xC003), "[0.70 4.20 0.70 0. ] 5.64 tl;");
    EXPECT_EQ(driver.written([&] { driver.printPolyLine(points.data(), 2, kRed.data(), 0, 1, 0); }), "");
    EXPECT_EQ(lastLines(driver.written([&] {
                  driver.printPolyLine(points.data(), 2, kRed.data(), 0, 1, 1);
                  driver.printPolyLine(points.data(), 2, kRed.data(), 0, 1, 0xFFFF);
              }),
                        " tl"),
              "[0.35 5.25 ] 5.64 tl;[] 0.00 tl;");
}

TEST(SoVectorizePSAction, MarksAndPolygonsKeepTheStackSmall) {
    Driver driver;
    const auto points = rowOfPoints(600);
    const auto marks = [&](int n, float size) {
        return driver.written([&] { driver.printPolyMark(points.data(), n, kRed.data(), 0, size); });
    };
    EXPECT_EQ(marks(2, 0), "1 0 0 gc\n1.25 7 0.25 7\n2 ppmp\n") << "size 0 counts as 1";
    EXPECT_EQ(marks(1, 3), "1.06 ps\n1 0 0 gc\n0.25 7\n1 ppmp\n");
    EXPECT_EQ(lastLines(marks(250, 1), "ppmp"), "100 ppmp;100 ppmp;50 ppmp;");
    EXPECT_EQ(complaints(driver.page()), "");
    EXPECT_EQ(driver.written([&] { driver.printPolyMark(points.data(), 2, kRed.data(), 1, 1); }),
              "1 0 0 gc\n0.25 7.00 1 ppmp\n1.25 7.00 1 ppmp\n");

    const auto polygon = [&](int n) {
        return driver.written([&] { driver.printPolygon(points.data(), n, kRed.data()); });
    };
    EXPECT_EQ(lastLines(polygon(600), "pfa"), "0.25 7.00 pfabeg;248 pfacnt;248 pfacnt;103 pfaend;1 pfa;");
    EXPECT_EQ(complaints(driver.page()), "");
    EXPECT_EQ(lastLines(polygon(249), "pfa"), "0.25 7.00 pfabeg;248 pfaend;1 pfa;");
    const std::string lines = polygon(300);
    std::istringstream in(lines);
    for (std::string line; std::getline(in, line);)
        EXPECT_LE(line.size(), 66u + 14) << line;
}

TEST(SoVectorizePSAction, StringsStayWellFormed) {
    Driver driver;
    const std::pair<const char *, const char *> cases[] = {
        {"a(b)", "(a\\(b\\))"},
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
        {"", "()"},
    };
    for (const auto &entry : cases) {
        const char *const string = entry.first;
        const std::string text = driver.written(
            [&] { driver.printText2(SbVec4f(1, 2, 0, 1), SbColor(1, 0, 0), "Times", 10, string, 1, 0); });
        EXPECT_EQ(text, std::string("1 0 0 gc\n/Times findfont 3.53 scalefont setfont\n") + entry.second +
                            " 0.00 1.00 2.00 ltx\n");
        EXPECT_EQ(complaints(driver.page()), "") << string;
    }
}

TEST(SoVectorizePSAction, FontsAndJustification) {
    Driver driver;
    const auto text = [&](const char *font, int justification, float angle) {
        return driver.written([&] {
            for (int k = 0; k < 2; ++k)
                driver.printText2(SbVec4f(1, 2, 0, 1), SbColor(1, 0, 0), font, 10, "x", justification, angle);
        });
    };
    const std::string before = "1 0 0 gc\n/Helvetica findfont 3.53 scalefont setfont\n";
    EXPECT_EQ(text("Helvetica", 2, 3.1415927f / 2),
              before + "1.00 2.00 90.00 (x) rtx\n1.00 2.00 90.00 (x) rtx\n");
    EXPECT_EQ(complaints(driver.page()), "");
    EXPECT_EQ(text("Helvetica", 3, 0), before + "1.00 2.00 0.00 (x) ctx\n1.00 2.00 0.00 (x) ctx\n");
    EXPECT_EQ(complaints(driver.page()), "");
    EXPECT_EQ(text("Helvetica", 4, 0), before);
    EXPECT_NE(text("Times New:Bold", 1, 0).find("(Times New:Bold) cvn findfont"), std::string::npos);
    EXPECT_NE(text("a)b%\n", 1, 0).find("(a\\)b%\\012) cvn findfont"), std::string::npos);
    const std::string longName(300, 'f');
    EXPECT_EQ(count(text(longName.c_str(), 1, 0), "f"), 255 + 4) << "beside findfont, scalefont, setfont";
    EXPECT_NE(text(nullptr, 1, 0).find("/ findfont"), std::string::npos);
}

TEST(SoVectorizePSAction, MarkersAreDefinedOnce) {
    const unsigned char arrow[] = {0x80, 0xC0, 0x01, 0x40};
    SoMarkerSet::addMarker(200, SbVec2s(10, 2), arrow, FALSE, FALSE);
    auto *markers = new SoMarkerSet;
    markers->ref();
    const int indices[] = {200, SoMarkerSet::CROSS_5_5, 777777};
    markers->markerIndex.setValues(0, 3, indices);
    Driver driver;
    driver.setNominalWidth(0.5f, SoVectorizeAction::MILLIMETER);
    const auto points = rowOfPoints(5);
    const std::string text =
        driver.written([&] { driver.printPolyMark(points.data(), 5, kRed.data(), 0, markers); });
    EXPECT_EQ(text.substr(0, text.find("/Bitmap", 1)),
              "/Bitmap200\n{ 10 2\n true\n [10 0 0 2 0 0]\n{<80C00140>} imagemask\n} bind def\n"
              "/currentBitmapIndex {Bitmap200} bind def\n1 0 0 gc\n5.00 1.00 -2.25 6.50 DisplayBitmap\n");
    EXPECT_EQ(count(text, "imagemask"), 2);
    EXPECT_EQ(count(text, "DisplayBitmap"), 4) << "the third marker has no bitmap";
    EXPECT_EQ(count(text, "/currentBitmapIndex"), 4);
    EXPECT_EQ(complaints(driver.page()), "");

    // More markers than a page of old could hold.
    std::vector<int> many;
    for (int i = 0; i < 1200; ++i) {
        many.push_back(1000 + i);
        SoMarkerSet::addMarker(1000 + i, SbVec2s(8, 1), arrow, FALSE, FALSE);
    }
    markers->markerIndex.setValues(0, 1200, many.data());
    const auto row = rowOfPoints(1200);
    const std::vector<SbColor> colors(1200, SbColor(0, 0, 1));
    EXPECT_EQ(
        count(driver.written([&] { driver.printPolyMark(row.data(), 1200, colors.data(), 0, markers); }),
              "imagemask"),
        1200);
    EXPECT_EQ(complaints(driver.page()), "");
    markers->unref();
}

TEST(SoVectorizePSAction, Images) {
    Driver driver;
    driver.setPixelImageSize(2, SoVectorizeAction::MILLIMETER);
    const unsigned char pixels[] = {255, 0, 0, 0, 255, 0, 0, 0, 255, 10, 20, 30, 1, 2, 3, 4, 5, 6};
    const auto image = [&](SbVec2s size, SbVec2s source, int components, int horizontal, int vertical) {
        return driver.written([&] {
            driver.printImage(SbVec4f(50, 60, 0, 1), pixels, size, source, components,
                              static_cast<SoImage::HorAlignment>(horizontal),
                              static_cast<SoImage::VertAlignment>(vertical));
        });
    };
    const SbVec2s twoByThree(2, 3);
    EXPECT_EQ(image(SbVec2s(4, 6), twoByThree, 3, 0, 0), "2 3\n8.00 12.00\n50.00 60.00\n2\n3\nDisplayImage\n"
                                                         "FF000000FF000000FF0A141E010203040506\n");
    EXPECT_EQ(complaints(driver.page()), "");
    EXPECT_EQ(lastLines(image(SbVec2s(4, 6), twoByThree, 2, 1, 2), ".00"), "8.00 12.00;46.00 48.00;");
    EXPECT_EQ(image(SbVec2s(0, 6), twoByThree, 3, 0, 0), "");
    EXPECT_EQ(image(SbVec2s(4, 6), SbVec2s(-1, 3), 3, 0, 0), "");
    EXPECT_EQ(image(SbVec2s(4, 6), twoByThree, 0, 0, 0), "");
    EXPECT_EQ(image(SbVec2s(9, 40), twoByThree, 3, 0, 2),
              "2 3\n18.00 80.00\n50.00 -20.00\n2\n3\nDisplayImage\n"
              "FF000000FF000000FF0A141E010203040506\n");
    EXPECT_EQ(image(SbVec2s(4, 6), SbVec2s(1, 2), 4, 0, 0),
              "1 2\n8.00 12.00\n50.00 60.00\n1\n3\nDisplayImage\n"
              "FF0000FF0000\n");
    driver.getOutput()->setColored(0);
    EXPECT_EQ(image(SbVec2s(4, 6), twoByThree, 3, 0, 0), "2 3\n8.00 12.00\n50.00 60.00\n2\nDisplayImage\n"
                                                         "4C961C120104\n");
    EXPECT_EQ(complaints(driver.page()), "");
}

TEST(SoVectorizePSAction, PensReplaceColors) {
    Driver driver;
    const SbColor green(0, 1, 0);
    driver.setPenDescription(1, &green, nullptr, SoVectorizeAction::MILLIMETER);
    const auto points = rowOfPoints(3);
    EXPECT_EQ(lastLines(driver.written([&] { driver.printPolygon(points.data(), 3, kRed.data()); }), "gc"),
              "0 1 0 gc;");
}

// ------------------------------------------------------------------------------------------- whole pages

const std::string kEverything =
    std::string("Font { name \"Helvetica\" size 14 } LightModel { model BASE_COLOR } ") +
    "Separator { BaseColor { rgb 1 0 0 } Translation { translation -0.5 0.4 0 } Cube { width .5 height .5 "
    "depth .5 } } "
    "Separator { BaseColor { rgb 0 0 1 } Translation { translation 0.5 0.4 -0.3 } Sphere { radius 0.3 } } "
    "Separator { DrawStyle { style LINES lineWidth 2 linePattern 0xF0F0 } BaseColor { rgb 0 .6 0 } "
    "Translation { translation 0 -0.5 0 } Cone { height .6 bottomRadius .4 } } "
    "Separator { BaseColor { rgb [ 1 .5 0, 0 .5 1 ] } MaterialBinding { value PER_VERTEX } "
    "Coordinate3 { point [ -.8 -.8 0, -.6 -.6 0 ] } MarkerSet { markerIndex [ 10, 40 ] } LineSet { } } "
    "Separator { Translation { translation -.9 .8 .5 } Text2 { string [ \"Depth (m)\", \"second\" ] } } "
    "Separator { Translation { translation .6 -.8 0 } Image { image 2 2 3 0xff0000 0xff00 0xff 0 width 20 "
    "height "
    "20 } } ";

TEST(SoVectorizePSAction, PagesRunThroughGhostscript) {
    const Scene scene(withCamera(kEverything));
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
            EXPECT_EQ(count(bodyOf(page), "gsave"), 2);
            EXPECT_EQ(count(bodyOf(page), "grestore"), 2);
        }
}

TEST(SoVectorizePSAction, SeveralDrawingsOnAPage) {
    const Scene scene(withCamera(kEverything));
    for (const float border : {2.0f, 0.0f}) {
        const TemporaryFile file;
        {
            SoVectorizePSAction action;
            action.getOutput()->openFile(file.name());
            action.setDrawingDimensions(80, 80, SoVectorizeAction::MILLIMETER);
            action.setBackgroundColor(1);
            action.setBorder(border);
            action.beginPage(SbVec2f(10, 10), SbVec2f(190, 277), SoVectorizeAction::MILLIMETER);
            action.apply(scene);
            action.apply(static_cast<SoNode *>(nullptr));
            action.setStartPosition(100, 100, SoVectorizeAction::MILLIMETER);
            action.apply(scene);
        } // the destructor ends the page and closes the file
        const std::string page = readFile(file.path());
        EXPECT_EQ(count(page, "%!PS"), 1);
        EXPECT_EQ(count(page, "showpage"), 1);
        EXPECT_EQ(count(page, "gsave\n10.00 10.00 translate\n"), 2);
        EXPECT_EQ(count(page, "gsave\n100.00 100.00 translate\n"), 1);
        EXPECT_EQ(count(page, "clip\n0.71 ep\n"), border > 0 ? 3 : 0);
        EXPECT_EQ(count(bodyOf(page), "gsave"), count(bodyOf(page), "grestore"))
            << "each drawing ends in the state that it began in";
        EXPECT_EQ(complaints(page), "");
    }
}

TEST(SoVectorizePSAction, SizesOfNothingAndLessLeaveAGoodPage) {
    const Scene scene(withCamera("Font { size 0 } DrawStyle { lineWidth -3 pointSize -1 } " + kEverything +
                                 "Font { size 0 } Text2 { string \"gone\" }"));
    const float inf = std::numeric_limits<float>::infinity();
    for (const float unit : {0.0f, 1e-9f, -1.0f}) {
        SoVectorizePSAction action;
        action.setNominalWidth(unit, SoVectorizeAction::MILLIMETER);
        action.setPixelImageSize(unit, SoVectorizeAction::MILLIMETER);
        action.setNominalWidth(inf, SoVectorizeAction::MILLIMETER);
        EXPECT_EQ(complaints(pageOf(action, scene)), "") << unit;
        EXPECT_EQ(count(pageOf(action, scene), "(gone)"), 0);
    }
    for (const float size : {0.0f, 1e-9f, -50.0f}) {
        SoVectorizePSAction action;
        action.setDrawingDimensions(size, size, SoVectorizeAction::MILLIMETER);
        EXPECT_EQ(complaints(pageOf(action, scene)), "") << size;
    }
}

/// A comma locale, made on the spot when the machine has the sources of locales; else nothing changes.
class CommaLocale {
public:
    CommaLocale() {
        const TemporaryFile folder("_locale");
        m_folder = folder.path();
        const std::string command = "mkdir -p " + m_folder + " && localedef -i de_DE -f UTF-8 " + m_folder +
                                    "/de_DE.UTF-8 > /dev/null 2>&1";
        if (std::system(command.c_str()) == 0)
            setenv("LOCPATH", m_folder.c_str(), 1);
        isSet = std::setlocale(LC_NUMERIC, "de_DE.UTF-8") != nullptr;
    }
    CommaLocale(const CommaLocale &) = delete;
    CommaLocale &operator=(const CommaLocale &) = delete;
    ~CommaLocale() {
        std::setlocale(LC_NUMERIC, "C");
        unsetenv("LOCPATH");
        if (std::system(("rm -rf " + m_folder).c_str()) != 0)
            ADD_FAILURE();
    }
    bool isSet = false;

private:
    std::string m_folder;
};

TEST(SoVectorizePSAction, TheSameSceneGivesTheSameBytes) {
    const Scene scene(withCamera(kEverything));
    SoVectorizePSAction first;
    first.setHLHSRMode(SoVectorizeAction::HLHSR_FULL_SORT);
    const std::string page = pageOf(first, scene);
    EXPECT_EQ(pageOf(first, scene), page);
    SoVectorizePSAction second;
    second.setHLHSRMode(SoVectorizeAction::HLHSR_FULL_SORT);
    const CommaLocale locale;
    EXPECT_EQ(pageOf(second, scene), page);
    if (!locale.isSet)
        GTEST_SKIP() << "no locale with a decimal comma to be had; the rest holds";
}

/// The page as Ghostscript paints it, one pixel a point.
struct Bitmap {
    int width = 0, height = 0;
    std::string bytes;

    /// The colour, as RRGGBB, `x` and `y` millimetres from the drawing's lower left corner.
    std::string at(double x, double y) const {
        const int column = static_cast<int>((x + 10) * 72 / 25.4);
        const int row = height - 1 - static_cast<int>((y + 10) * 72 / 25.4);
        char text[8];
        const auto *p = reinterpret_cast<const unsigned char *>(bytes.data()) + 3 * (row * width + column);
        std::snprintf(text, sizeof text, "%02X%02X%02X", p[0], p[1], p[2]);
        return text;
    }
};

Bitmap painted(const std::string &page) {
    const TemporaryFile file, picture(".ppm");
    std::ofstream(file.path(), std::ios::binary) << page;
    const std::string command =
        "timeout 60 gs -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=ppmraw -r72 -g400x400 -sOutputFile=" +
        picture.path() + " " + file.path();
    EXPECT_EQ(std::system(command.c_str()), 0);
    const std::string data = readFile(picture.path());
    Bitmap bitmap{400, 400, ""};
    if (data.size() > 3u * 400 * 400)
        bitmap.bytes = data.substr(data.size() - 3u * 400 * 400);
    else
        ADD_FAILURE() << "no picture";
    return bitmap;
}

TEST(SoVectorizePSAction, NearSurfacesHideFarOnes) {
    // The near square comes first in the scene; a red one behind it, and a green one beside.
    const std::string square = "Coordinate3 { point [ -1 -1 0, 1 -1 0, 1 1 0, -1 1 0 ] } FaceSet { } ";
    const Scene scene(withCamera(
        "LightModel { model BASE_COLOR } Scale { scaleFactor .5 .5 1 } "
        "Separator { BaseColor { rgb 0 0 1 } Translation { translation 0 0 1 } " +
        square + "} Separator { BaseColor { rgb 1 0 0 } Translation { translation 1 1 0 } " + square + "}"));
    SoVectorizePSAction action;
    action.setDrawingDimensions(100, 100, SoVectorizeAction::MILLIMETER);
    const auto look = [&] { return painted(pageOf(action, scene)); };
    Bitmap bitmap = look();
    EXPECT_EQ(bitmap.at(30, 30), "0000FF");
    EXPECT_EQ(bitmap.at(60, 60), "FF0000") << "without sorting the last one wins";
    action.setHLHSRMode(SoVectorizeAction::HLHSR_Z_SORT);
    bitmap = look();
    EXPECT_EQ(bitmap.at(60, 60), "0000FF");
    EXPECT_EQ(bitmap.at(90, 90), "FF0000");
    EXPECT_EQ(bitmap.at(10, 90), "FFFFFF");
    EXPECT_EQ(bitmap.at(0, 50), "000000") << "the border";
    EXPECT_EQ(bitmap.at(-5, 50), "FFFFFF");
}

} // namespace
