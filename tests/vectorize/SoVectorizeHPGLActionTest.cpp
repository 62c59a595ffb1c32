#include "vectorize/PageFixture.h"

#include "CommaLocale.h"
#include "vectorize/HpglReader.h"

#include <oravane/SoVectorizeHPGLAction.h>

#include <Inventor/nodes/SoMarkerSet.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

using namespace oravane_test;
using namespace std::string_literals;

const auto kMillimeter = SoVectorizeAction::MILLIMETER;
const std::vector<SbColor> kRed(10000, SbColor(1, 0, 0)); // pen 224
const std::vector<SbColor> kRedRedBlue = {SbColor(1, 0, 0), SbColor(1, 0, 0), SbColor(0, 0, 1)};
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

using Points = std::vector<SbVec4f>;
SbVec4f at(float x, float y) {
    return SbVec4f(x, y, 0, 1);
}
/// In device units (0, 0), (1000, 0), once more the same, and (1000, -1).
const Points kPath = {at(0, 0), at(25, 0), at(25, 0), at(25, -0.025f)};

/// Gives the tests the drawing operations: what each writes after the header of a page at (0, 0).
class Driver : public SoVectorizeHPGLAction {
public:
    using SoVectorizeHPGLAction::printPolygon;
    using SoVectorizeHPGLAction::printPolyLine;
    using SoVectorizeHPGLAction::printPolyMark;
    using SoVectorizeHPGLAction::printText2;

    Driver() { setStartPosition(0, 0, kMillimeter); }

    template <class Draw>
    std::string written(Draw draw) {
        page = writtenTo(getOutput(), [&] {
            writeHeader();
            draw();
            writeFooter();
        });
        EXPECT_EQ(HpglReader(page).error, "");
        const std::size_t begin = page.find("\nLA1,") + 1, end = page.find('\n', begin) + 1;
        return page.substr(end, page.size() - end - "SPPG;\n"s.size());
    }
    std::string line(const Points &p, float width = 1, unsigned short pattern = 0xFFFF) {
        return written([&] { add(p, width, pattern); });
    }
    void add(const Points &p, float width, unsigned short pattern) {
        printPolyLine(p.data(), static_cast<int>(p.size()), kRed.data(), 1, width, pattern);
    }
    std::string polygon(const Points &p, int times = 1) {
        return written([&] {
            for (int k = 0; k < times; ++k)
                printPolygon(p.data(), static_cast<int>(p.size()), kRed.data());
        });
    }
    std::string text(const char *string, int justification = 1, float angle = 0) {
        return written([&] { printText2(at(1, 2), kRed[0], "Times", 10, string, justification, angle); });
    }

    std::string page;
};

TEST(SoVectorizeHPGLAction, EmptyPageByteForByte) {
    SoVectorizeHPGLAction action;
    const std::string page = pageOf(action, nullptr);
    EXPECT_EQ(page.substr(0, page.find("PC")), "\x1B%-1B\nIN;FT;NP256;TR0;\n");
    EXPECT_EQ(count(page, "\nPC"), 256);
    for (const char *pen : {"\nPC0,0,0,0\n", "\nPC37,36,36,85\n", "\nPC255,255,255,255\n"})
        EXPECT_EQ(count(page, pen), 1) << pen;
    EXPECT_EQ(page.substr(page.find("PS")),
              "PS7600,11080;\nLA1,1,2,6,3,1.50\n"
              "IW400.000000,400.000000,8000.000000,11480.000000;\n"
              "PW0.705556PE:\xBF<=_\xCB_\xCB_l\xC2\xBF\xBFOY\xC4`l\xC2\xBF\xBFPY"
              "\xC4;\nSPPG;\n");
    const std::vector<HpglReader::Point> border = {
        {400, 400}, {8000, 400}, {8000, 11480}, {400, 11480}, {400, 400}};
    EXPECT_EQ(HpglReader(page).lines.at(0), border);
}

TEST(SoVectorizeHPGLAction, HeaderFollowsTheSettings) {
    const SbColor pens[] = {SbColor(1, 1, 1), SbColor(0.5f, 0, 7)};
    SoVectorizeHPGLAction action;
    action.setBorder(0);
    action.setOrientation(SoVectorizeAction::LANDSCAPE);
    action.setPenDescription(2, pens, nullptr, kMillimeter);
    action.setMiterLimit(0.5f);
    const int ends[] = {1, 2, 3, 4, 1}, joins[] = {6, 1, 2, 5, 3, 4, 6};
    for (int i = 0; i < 7; ++i) {
        action.setLineEndStyle(static_cast<SoVectorizeAction::EndLineStyle>(i % 5));
        action.setLineJoinsStyle(static_cast<SoVectorizeAction::JoinLineStyle>(i));
        EXPECT_EQ(pageOf(action, nullptr),
                  "\x1B%-1B\nIN;RO90;IP;FT;NP2;TR0;\nPC0,255,255,255\nPC1,127,0,255\nPS11080,7600;\nLA1," +
                      std::to_string(ends[i % 5]) + ",2," + std::to_string(joins[i]) + ",3,1.00\nSPPG;\n");
    }
}

TEST(SoVectorizeHPGLAction, LinesAndPolygonsAreEncoded) {
    Driver driver;
    const std::string start = "PW0.352778PE:?\xC6<=\xBF\xBF", steps = "O\xDE\xBF\xBF\xC2";
    EXPECT_EQ(driver.line(kPath), start + steps + ";\n");
    EXPECT_EQ(driver.line({at(0, 0), at(0.01f, 0), at(0, 0.02f)}), start + ";\n");
    EXPECT_EQ(driver.line({}) + driver.line(kPath, 1, 0) + driver.polygon({}), "");
    EXPECT_EQ(driver.written([&] {
        for (const float width : {2.0f, 2.0f, 0.0f, -1.0f, kNaN})
            driver.add({at(0, 0)}, width, 0xFFFF);
    }),
              "PW0.705556PE:?\xC6<=\xBF\xBF;\nPE<=\xBF\xBF;\nPW0.352778PE<=\xBF\xBF;\n"
              "PE<=\xBF\xBF;\nPE<=\xBF\xBF;\n");
    EXPECT_EQ(driver.polygon(kPath, 2), "SP224PU0,0PMPE" + steps + ";PM2FP\nPU0,0PMPE" + steps + ";PM2FP\n");
    driver.setPenDescription(3, kRedRedBlue.data(), nullptr, kMillimeter);
    EXPECT_EQ(driver.polygon({at(1, 2)}), "SP0PU40,80PMPE;PM2FP\n") << "pens replace colours";
}

TEST(SoVectorizeHPGLAction, LinePatterns) {
    const std::pair<unsigned short, const char *> rows[] = {{0xFFFF, ""},
                                                            {0x00FF, "UL8,2.82 ,2.82 LT8,5.65,1\n"},
                                                            {0xFF00, "UL8,2.82 ,2.82 LT8,5.65,1\n"},
                                                            {0x8000, "UL8,0.35 ,5.29 LT8,5.65,1\n"},
                                                            {0xC003, "UL8,0.71 ,4.23 ,0.71 LT8,5.65,1\n"}};
    Driver driver;
    for (const auto &[pattern, expected] : rows)
        EXPECT_EQ(driver.line(kPath, 1, pattern), expected + driver.line(kPath));
    const std::string change = driver.written([&] {
        for (const int pattern : {0x5555, 0x5555, 0xFFFF})
            driver.add({at(0, 0)}, 1, static_cast<unsigned short>(pattern));
    });
    EXPECT_EQ(change.substr(change.find("1\n")),
              "1\nPW0.352778PE:?\xC6<=\xBF\xBF;\nPE<=\xBF\xBF;\nLTPE<=\xBF\xBF;\n");
    driver.setNominalWidth(1e-3f, kMillimeter);
    EXPECT_EQ(count(driver.line(kPath, 1, 0x5555), "UL"), 0) << "all gaps would be written as 0";
}

TEST(SoVectorizeHPGLAction, Marks) {
    Driver driver;
    SoMarkerSet *const noMarkers = nullptr;
    const auto marks = [&](int multicolor) {
        return driver.written(
            [&] { driver.printPolyMark(kPath.data(), 3, kRedRedBlue.data(), multicolor, 5.0f); });
    };
    EXPECT_EQ(marks(0), "SP224PUSM.PA0,0,1000,0,1000,0SM;\n");
    EXPECT_EQ(marks(1), "SP224PUSM.PA0,0,1000,0SP3PUSM.PA1000,0SM;\n");
    EXPECT_EQ(
        driver.written([&] { driver.printPolyMark(kPath.data(), 3, kRedRedBlue.data(), 1, noMarkers); }),
        marks(1));
}

TEST(SoVectorizeHPGLAction, Texts) {
    Driver driver;
    const std::string font = "SP224SD2,1,4,10.00SS", place = "PA40,80LB";
    EXPECT_EQ(driver.text("Depth (m); \xC3\xA9"), font + "LO1" + place + "Depth (m); \xC3\xA9\x03\n");
    EXPECT_EQ(driver.text("a\x03"
                          "b\x1B%0A\n\tc\x7F",
                          3, 0.5f),
              font + "LO3DI0.877583,0.479426\n" + place + "ab%0Ac\x03\n");
    EXPECT_EQ(driver.text(nullptr, 2, kNaN), font + "LO2" + place + "\x03\n");
    EXPECT_EQ(driver.written([&] {
        const std::pair<const char *, float> fonts[] = {
            {"A", 10}, {"A", 10}, {"B", 10}, {nullptr, 9}, {"A", 0}};
        for (const auto &[name, size] : fonts)
            driver.printText2(at(1, 2), kRed[0], name, size, "x", 1, 0);
    }),
              font + "LO1" + place + "x\x03\n" + place + "x\x03\nSD2,1,4,10.00SS" + place +
                  "x\x03\nSD2,1,4,9.00SS" + place + "x\x03\n");
    const std::string afterPolygon = driver.written([&] { // the pen is raised, once
        driver.printPolygon(kPath.data(), 3, kRed.data());
        for (int i = 0; i < 2; ++i)
            driver.printText2(at(1, 2), kRed[0], nullptr, 9, "x", 1, 0);
    });
    EXPECT_TRUE(afterPolygon.ends_with("FP\nSD2,1,4,9.00SSLO1PU" + place + "x\x03\n" + place + "x\x03\n"))
        << afterPolygon;
}

TEST(SoVectorizeHPGLAction, RoundingDoesNotAddUp) {
    Points points;
    for (int i = 0; i < 10000; ++i) // steps of less than a unit, back and forth
        points.push_back(at(4.0f + 2.0f * std::sin(0.005f * i), 3.0f * std::sin(0.003f * i) - 5.0f));
    points.push_back(at(0, 0));
    Driver driver;
    driver.line(points);
    EXPECT_EQ(HpglReader(driver.page).lines.at(0).back(), HpglReader::Point(0, 0));
}

// ------------------------------------------------------------------------------------------- whole pages

TEST(SoVectorizeHPGLAction, AnySceneGivesAGoodPage) {
    const Scene scene(view(kEverything));
    SoVectorizeHPGLAction action;
    action.setHLHSRMode(SoVectorizeAction::HLHSR_Z_SORT);
    const std::string page = pageOf(action, scene);
    const HpglReader read(page);
    EXPECT_EQ(read.error, "");
    EXPECT_GE(read.polygons.size(), 2u);
    EXPECT_GE(read.lines.size(), 10u);
    EXPECT_EQ(read.marks.size(), 4u);
    EXPECT_EQ(read.labels, (std::vector<std::string>{"Depth (m)", "it's"}));
    const CommaLocale locale;
    EXPECT_TRUE(locale.isSet) << "the package locales has one with a decimal comma";
    EXPECT_EQ(pageOf(action, scene), page) << "nothing is left of the page before";
}

TEST(SoVectorizeHPGLAction, BadNumbersLeaveAGoodPage) {
    Driver driver;
    for (const float bad : {kNaN, HUGE_VALF, -HUGE_VALF, 3e38f, -1e9f}) {
        const Points points = {at(1, bad), at(bad, 1), at(-bad, 2)};
        const std::vector<SbColor> colors(3, SbColor(bad, 0.5f, -bad));
        driver.written([&] {
            driver.printPolyLine(points.data(), 3, colors.data(), 0, bad, 0x5555);
            driver.printPolyMark(points.data(), 3, colors.data(), 1, bad);
            driver.printPolygon(points.data(), 3, colors.data());
            driver.printText2(points[0], colors[0], "A", 5, "x", 1, bad);
            driver.printText2(points[0], colors[0], "A", bad, "y", 1, 0);
        });
        const HpglReader read(driver.page);
        EXPECT_EQ(read.labels.at(0), "x");
        EXPECT_EQ(read.polygons.at(0).size(), read.lines.at(0).size());
        EXPECT_LE(std::abs(read.marks.at(1).first), 1 << 28);
    }
    const Scene scene(view(kEverything));
    for (const float size : {0.0f, 1e-9f, -1.0f, 1e38f}) {
        SoVectorizeHPGLAction ofUnit, ofPage;
        ofUnit.setNominalWidth(size, kMillimeter);
        ofPage.setDrawingDimensions(50 * size, 50 * size, kMillimeter);
        for (SoVectorizeHPGLAction *action : {&ofUnit, &ofPage})
            EXPECT_EQ(HpglReader(pageOf(*action, scene)).error, "") << size;
    }
}

TEST(SoVectorizeHPGLAction, SeveralDrawingsOnAPage) {
    const Scene scene(view(kPlain + kTriangle));
    const TemporaryFile file;
    {
        SoVectorizeHPGLAction action;
        action.getOutput()->openFile(file.name());
        action.setDrawingDimensions(80, 80, kMillimeter);
        action.setBackgroundColor(1);
        action.beginPage(SbVec2f(5, 6), SbVec2f(190, 277), kMillimeter);
        action.apply(scene);
        action.apply(scene);
        action.setStartPosition(100, 100, kMillimeter);
        action.setBorder(0);
        action.apply(scene);
    } // the destructor ends the page and closes the file
    const std::string page = readFile(file.path());
    const HpglReader read(page);
    EXPECT_EQ(read.error, "");
    EXPECT_EQ(count(page, "\x1B"), 1);
    EXPECT_EQ(count(page, "SPPG"), 1);
    EXPECT_EQ(count(page, "PS7600,11080;"), 1);
    ASSERT_EQ(read.polygons.size(), 6u);
    EXPECT_EQ(read.polygons[0][0], HpglReader::Point(600, 640));
    EXPECT_EQ(read.polygons[4][0], HpglReader::Point(4200, 4240));
    EXPECT_EQ(count(page, "IW600.000000,640.000000,3800.000000,3840.000000;\n"), 4);
    EXPECT_EQ(count(page, "IW;\nSP255PU4200,4240"), 1) << "the window before would hide this background";
    EXPECT_EQ(count(page, "IW;"), 1);
    EXPECT_EQ(count(page, "IW4200.000000,4240.000000,7400.000000,7440.000000;\n"), 1);
}

TEST(SoVectorizeHPGLAction, EachViewHasItsWindow) {
    SoVectorizeHPGLAction action;
    action.setDrawingDimensions(100, 80, kMillimeter);
    action.setStartPosition(0, 5, kMillimeter);
    const std::string page = pageOf(action, twoViews(kPlain + kTriangle));
    EXPECT_EQ(count(page, "LA1,1,2,6,3,1.50\nIW0.000000,200.000000,4000.000000,3400.000000;\nSP"), 1);
    EXPECT_EQ(count(page, "FP\nIW2000.000000,1000.000000,4000.000000,2600.000000;\nPU2000,1000PMPE"), 1);
}

} // namespace
