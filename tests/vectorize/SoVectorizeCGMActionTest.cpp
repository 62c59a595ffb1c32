#include <oravane/SoVectorizeCGMAction.h>

#include "vectorize/CgmReader.h"
#include "vectorize/PageFixture.h"

#include "CommaLocale.h"

#include <Inventor/nodes/SoMarkerSet.h>

#include <cmath>
#include <functional>
#include <limits>

namespace {

using namespace oravane_test;

const auto kMillimeter = SoVectorizeAction::MILLIMETER;
const std::vector<SbColor> kRed(20000, SbColor(1, 0, 0));
const SbColor kMixed[] = {kRed[0], SbColor(1, 0, 0.001f), SbColor(0, 1, 0), SbColor(0, 0, 1)};
const float kNaN = std::nanf(""), kInfinity = HUGE_VALF;

std::vector<SbVec4f> rowOfPoints(int n) {
    std::vector<SbVec4f> points;
    for (int i = 0; i < n; ++i)
        points.emplace_back(i + 0.25f, 7.0f, 0.0f, 1.0f);
    return points;
}

/// Pages of drawing operations. The page's origin is (1, 2).
class Driver : public SoVectorizeCGMAction {
public:
    explicit Driver(int version = 1, bool isBinary = false, bool isIndexed = false) {
        getOutput()->setVersion(version);
        getOutput()->setBinary(isBinary);
        getOutput()->setIndexed(isIndexed);
        setStartPosition(1, 2, kMillimeter);
        setDrawingDimensions(100, 100, kMillimeter);
    }
    std::string page(const std::function<void(Driver &)> &draw) {
        return writtenTo(getOutput(), [&] {
            writeHeader();
            draw(*this);
            writeFooter();
        });
    }
    /// Between header and footer, in clear text.
    std::string text(const std::function<void(Driver &)> &draw) {
        const std::string all = page(draw), begin = "EDGEVIS OFF;";
        EXPECT_NO_THROW(CgmReader(all).read());
        const std::size_t start = all.find(begin) + begin.size();
        return all.substr(start, all.rfind("\nENDPIC;ENDMF;") - start);
    }
    void line(int n, float width = 1, unsigned short pattern = 0xFFFF, const SbColor *colors = kRed.data(),
              int multicolor = 0) {
        printPolyLine(rowOfPoints(n).data(), n, colors, multicolor, width, pattern);
    }
    void marks(int n, float size, const SbColor *colors = kRed.data(), int multicolor = 0) {
        printPolyMark(rowOfPoints(n).data(), n, colors, multicolor, size);
    }
    void markers(int n, SoMarkerSet *set) { printPolyMark(rowOfPoints(n).data(), n, kMixed, 1, set); }
    void polygon(int n, const SbColor *colors = kRed.data()) {
        printPolygon(rowOfPoints(n).data(), n, colors);
    }
    void string(const char *string, const char *font = "Times-Bold", int justification = 1, float angle = 0,
                float size = 10) {
        printText2(SbVec4f(1, 2, 0, 1), kRed[0], font, size, string, justification, angle);
    }
    void image(const std::vector<unsigned char> &pixels, SbVec2s source, int components,
               SbVec2s size = SbVec2s(4, 6)) {
        printImage(SbVec4f(50, 60, 0, 1), pixels.data(), size, source, components, SoImage::LEFT,
                   SoImage::BOTTOM);
    }
    void polygonOf(const std::vector<SbVec4f> &points) {
        printPolygon(points.data(), static_cast<int>(points.size()), kRed.data());
    }
};

/// One line for each element; numbers in six digits. Without what clear text repeats and version 3 adds to
/// the binary form.
std::string summary(const std::string &page, const std::string &only = "") {
    std::string all, last;
    for (const CgmSaid &said : CgmReader(page).read()) {
        std::ostringstream out;
        out << said.name;
        for (const double value : said.numbers)
            out << " " << (std::fabs(value) < 1e-5 ? 0 : value);
        for (const std::string &text : said.strings)
            out << " '" << text << "'";
        const bool isStyle = said.name == "INTSTYLE";
        if ((isStyle && last == out.str()) || (!only.empty() && said.name != only))
            continue;
        last = isStyle ? out.str() : last;
        all += out.str() + "\n";
    }
    return all;
}

TEST(SoVectorizeCGMAction, HeaderAndFooterInClearText) {
    Driver driver;
    const auto page = [&] { return driver.page([](Driver &) {}); };
    const auto expected = [](const std::string &mode, const std::string &table) {
        std::string text = expectedFile("empty_page.cgm");
        text.insert(text.find("OFF;") + 4, table);
        return text.replace(text.find("COLRMODE DIRECT;\n"), 17, mode);
    };
    EXPECT_EQ(page(), expectedFile("empty_page.cgm"));
    driver.setBackgroundColor(1, SbColor(0.5f, 7, -1));
    EXPECT_EQ(page(), expected("BACKCOLR 127 255 0;\nCOLRMODE DIRECT;\n", ""));
    driver.getOutput()->setIndexed(1);
    const std::string indexed = page(), table = indexed.substr(indexed.find("COLRTABLE"));
    EXPECT_EQ(indexed, expected("COLRMODE INDEXED;\n", table.substr(0, table.find("\nENDPIC"))));
    EXPECT_EQ(table.find("COLRTABLE 0\n127 255 0\n0 0 0\n0 0 85\n0 0 170\n0 0 255\n0 36 0\n"), 0u);
    EXPECT_EQ(count(table, "\n255 255 0\n255 255 85\n255 255 255\n;%\n\n"), 1);
    EXPECT_EQ(count(table, "\n"), 1 + 256 + 1 + 1);
    const SbColor pens[] = {SbColor(1, 0, 0), SbColor(0, 0, 1)};
    driver.setPenDescription(2, pens, nullptr, kMillimeter);
    driver.setBackgroundColor(0);
    EXPECT_EQ(page(), expected("COLRMODE INDEXED;\n", "COLRTABLE 0\n255 0 0\n0 0 255\n;%\n"));
}

TEST(SoVectorizeCGMAction, BinaryFormIsThatOfTheStandard) {
    Driver driver(1, true);
    const std::string page = driver.page([](Driver &d) {
        d.string("even"); // its element is padded
        d.polygon(3), d.polygon(3);
        d.line(4095);
        d.line(4096);
    });
    const auto bytes = [](std::initializer_list<int> values) {
        return std::string(values.begin(), values.end());
    };
    EXPECT_EQ(page.substr(0, 22), bytes({0, 0x30, 15}) + "PLOT CGM OUTPUT" + bytes({0x10, 0x22, 0, 1}));
    for (const auto &[what, expected] : std::initializer_list<std::pair<const char *, std::string>>{
             {"extent, fixed", bytes({0x20, 0xD0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 101, 0, 0, 0, 102, 0, 0})},
             {"precision", bytes({0x30, 0x46, 0, 0, 0, 9, 0, 23})},
             {"text", bytes({0x40, 0x8F, 0x40, 0, 0, 0, 0x40, -0x80, 0, 0, 0, 1, 4}) + "even" +
                          bytes({0, 0x52, -0x3E})},
             {"colour", bytes({0x52, -0x1D, -1, 0, 0, 0, 0x40, -8, 0x3F, -0x60, 0, 0, 0x41, 0x10})},
             {"interior, once", bytes({0x52, -0x3E, 0, 1})},
             {"a full partition", bytes({0x40, 0x3F, 0x7F, -8, 0x3F, -0x60})},
             {"partitions", bytes({0x40, 0x3F, -1, -8, 0x3F, -0x60})}})
        EXPECT_EQ(count(page, expected), 1) << what;
    EXPECT_EQ(page.substr(page.size() - 4), bytes({0, -0x60, 0, 0x40}));
}

TEST(SoVectorizeCGMAction, LinesInClearText) {
    const std::string solid = "LINEWIDTH 0.352778;\nLINECOLR 255 0 0;\n",
                      points = "LINE\n 1.25,9. 2.25,9. 3.25,9. 4.25,9. 5.25,9. 6.25,9. 7.25,9.;\n";
    EXPECT_EQ(Driver().text([](Driver &d) { d.line(7, 0), d.line(7, 1), d.line(1), d.line(7, 1, 0); }),
              solid + points + points)
        << "width 0 counts as 1; neither one point nor an empty pattern is a line";
    EXPECT_EQ(Driver().text([](Driver &d) { d.line(4, 1, 0xFFFF, kMixed, 1); }),
              solid + "LINE\n 1.25,9. 2.25,9. 3.25,9.;\nLINECOLR 0 255 0;\nLINE\n 3.25,9. 4.25,9.;\n");
    const std::string types[] = {"2;", "2;", "2;", "2;", "4;", "2;", "5;", "3;", "3;"};
    const unsigned short patterns[] = {0x00FF, 0xFFF0, 0x8000, 0xC003, 0x02FF,
                                       0x1C6F, 0x15FF, 0xAAAA, 0x5555};
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(Driver().text([&](Driver &d) { d.line(7, 1, patterns[i]), d.line(7, 1, patterns[i]); }),
                  "LINETYPE " + types[i] + "\n" + solid + points + points)
            << std::hex << patterns[i];
    EXPECT_EQ(Driver().text([](Driver &d) { d.line(7, 1, 0xFF), d.line(7); }),
              "LINETYPE 2;\n" + solid + points + "LINETYPE 0;\n" + points);
    EXPECT_EQ(Driver(3).text([](Driver &d) {
        d.setLineEndStyle(SoVectorizeAction::SQUARE_END);
        d.setLineJoinsStyle(SoVectorizeAction::ROUND_JOIN);
        d.line(7), d.line(7, 1, 0xC003), d.line(7, 1, 0xC003);
    }),
              "LINECAP 4 1;\nLINEJOIN 3;\nMITRELIMIT 1.500000;\n" + solid + points +
                  "LINEEDGETYPEDEF -1 5.65 4 12 ;\nLINECAP 4 1;\nLINEJOIN 3;\nMITRELIMIT 1.500000;\n" +
                  points + points);
    std::string said;
    for (const int style : {0, 1, 2, 3, 4, 5}) {
        Driver driver(3, true);
        driver.setLineEndStyle(static_cast<SoVectorizeAction::EndLineStyle>(style % 4));
        driver.setLineJoinsStyle(static_cast<SoVectorizeAction::JoinLineStyle>(style));
        const std::string page = driver.page([](Driver &d) { d.line(2), d.line(2, 1, 1), d.line(2); });
        const std::string ends = summary(page, "LINECAP"), joins = summary(page, "LINEJOIN");
        said += ends.substr(7, ends.find('\n') - 7) + joins.substr(8, joins.find('\n') - 8);
        EXPECT_EQ(summary(page, "LINETYPE"), "LINETYPE -1\nLINETYPE 1\n") << "types in binary only";
    }
    EXPECT_EQ(said, " 2 1 4 4 1 2 5 1 2 3 1 4 2 1 3 4 1 3");
}

TEST(SoVectorizeCGMAction, PolygonsAndMarksInClearText) {
    const std::string six = " 1.25,9. 2.25,9. 3.25,9. 4.25,9. 5.25,9. 6.25,9.";
    EXPECT_EQ(Driver().text([](Driver &d) { d.polygon(7), d.polygon(2), d.polygon(6); }),
              "INTSTYLE SOLID;\nFILLCOLR 255 0 0;\nPOLYGON\n" + six +
                  "\n 7.25,9.;\nINTSTYLE SOLID;\nPOLYGON\n" + six + ";\n");
    EXPECT_EQ(Driver().text([](Driver &d) { d.marks(3, 0, kMixed, 1), d.marks(1, 2); }),
              "MARKERTYPE 1;\nMARKERSIZE 0.352778;\nMARKERCOLR 255 0 0;\nMARKER\n 1.25 9. 2.25 9.;\n"
              "MARKERCOLR 0 255 0;\nMARKER\n 3.25 9.;\n"
              "MARKERTYPE 1;\nMARKERSIZE 0.705556;\nMARKERCOLR 255 0 0;\nMARKER\n 1.25 9.;\n");
    Driver indexed(1, false, true);
    const SbColor pens[] = {SbColor(0, 0, 0), SbColor(0, 0, 1), SbColor(0.8f, 0, 0)};
    indexed.setPenDescription(3, pens, nullptr, kMillimeter);
    EXPECT_NE(indexed.text([](Driver &d) { d.polygon(3); }).find(";%\nINTSTYLE SOLID;\nFILLCOLR 2;\n"),
              std::string::npos);
}

TEST(SoVectorizeCGMAction, TextsInClearText) {
    const std::string style = "TEXTPREC STROKE;\nTEXTPATH RIGHT;\nCHARSPACE 0.;\nCHAREXPAN 1.;\n",
                      left = "TEXTALIGN LEFT NORMVERT 0. 0.;\nCHARORI 0. 1. 1. 0.;\n",
                      at = "TEXT 2. 4. FINAL\n", start = "TEXTCOLR 255 0 0;\nCHARHEIGHT 3.52778;\n";
    EXPECT_EQ(Driver().text([](Driver &d) { d.string("it's\n\x7F'"), d.string("\xC3\xA9", "Courier"); }),
              start + "TEXTFONTINDEX 3;\n" + style + left + at + "'it''s  ''';\nTEXTFONTINDEX 9;\n" + style +
                  at + "'\xC3\xA9';\n");
    EXPECT_EQ(Driver().text([](Driver &d) {
        d.string(nullptr, nullptr, 2, -0.5f), d.string("c", "Times", 3, -0.5f);
        d.string("", "Symbol", 4), d.string("", "Symbol", 1, 0, 0);
    }),
              start + style +
                  "TEXTALIGN RIGHT NORMVERT 0. 0.;\nCHARORI 0.479426 0.877583 0.877583 -0.479426;\n" + at +
                  "'';\n" + style + "TEXTALIGN CTR NORMVERT 0. 0.;\n" + at + "'c';\n");
}

TEST(SoVectorizeCGMAction, MarkersAreCentredRectangles) {
    const unsigned char tee[] = {0x10, 0x10, 0xFE, 0xFE}; // a T of 7 x 4, bottom row first
    SoMarkerSet::addMarker(201, SbVec2s(7, 4), tee, FALSE, FALSE);
    auto *set = new SoMarkerSet;
    set->ref();
    const int indices[] = {201, -2};
    set->markerIndex.setValues(0, 2, indices);
    Driver driver;
    driver.setNominalWidth(0.5f, kMillimeter);
    EXPECT_EQ(driver.text([&](Driver &d) { d.markers(3, set), d.markers(2, nullptr); }),
              "INTSTYLE SOLID;\nFILLCOLR 255 0 0;\nPOLYGON\n 1.,8. 1.5,8. 1.5,9. 1.,9.;\n"
              "INTSTYLE SOLID;\nPOLYGON\n -0.5,9. 3.,9. 3.,10. -0.5,10.;\n"
              "INTSTYLE SOLID;\nFILLCOLR 0 255 0;\nPOLYGON\n 3.,8. 3.5,8. 3.5,9. 3.,9.;\n"
              "INTSTYLE SOLID;\nPOLYGON\n 1.5,9. 5.,9. 5.,10. 1.5,10.;\n");
    set->unref();
}

TEST(SoVectorizeCGMAction, ImagesAreCellsFromTheBottom) {
    using Pixels = std::vector<unsigned char>;
    const Pixels rgb = {255, 0, 0, 0, 255, 0, 0, 0, 255}, rgba = {0, 0, 255, 127, 255, 255, 255, 128},
                 greys = {255, 128, 9, 127};
    const std::string corners = "CELLARRAY 51 62 55 68 55 62 ";
    for (const bool isBinary : {false, true}) {
        const auto cells = [&](int version, const Pixels &pixels, int components, SbVec2s source,
                               bool isIndexed = false) {
            Driver driver(version, isBinary, isIndexed);
            driver.setPixelImageSize(1, kMillimeter);
            const std::string page = driver.page([&](Driver &d) { d.image(pixels, source, components); });
            return summary(page, "TRANSPCELLCOLR") + summary(page, "CELLARRAY");
        };
        EXPECT_EQ(cells(3, rgb, 3, SbVec2s(1, 3)), corners + "1 3 255 0 0 0 255 0 0 0 255\n");
        EXPECT_EQ(cells(1, rgb, 1, SbVec2s(3, 1)), corners + "3 1 255 255 255 0 0 0 0 0 0\n");
        EXPECT_EQ(cells(1, rgba, 4, SbVec2s(1, 2)), corners + "1 2 0 0 255 255 255 255\n");
        EXPECT_EQ(cells(3, rgba, 4, SbVec2s(1, 2)),
                  "TRANSPCELLCOLR 1 255 255 254\nTRANSPCELLCOLR 0 255 255 254\n" + corners +
                      "1 2 255 255 254 255 255 255\n");
        EXPECT_EQ(cells(3, greys, 2, SbVec2s(1, 2), true),
                  "TRANSPCELLCOLR 1 254\nTRANSPCELLCOLR 0 254\n" + corners + "1 2 255 254\n");
        EXPECT_EQ(cells(1, rgb, 3, SbVec2s(-1, 2)) + cells(1, rgb, 0, SbVec2s(1, 2)), "");
    }
}

// --------------------------------------------------------------------------------------------- whole pages

TEST(SoVectorizeCGMAction, BothEncodingsSayTheSame) {
    const Scene scene(view(kEverything));
    const std::string longText(70000, 'x'), text255(255, 'y');
    for (const int version : {1, 3})
        for (const bool isIndexed : {false, true}) {
            std::string said[2];
            for (const bool isBinary : {false, true}) {
                Driver driver(version, isBinary, isIndexed);
                driver.setBackgroundColor(1, SbColor(0.9f, 0.95f, 1));
                std::string &result = said[isBinary];
                result = summary(pageOf(driver, scene)) + summary(driver.page([&](Driver &d) {
                             for (const int n : {2, 3, 4, 4095, 4096, 12284, 12286})
                                 d.line(n, 1, 0x00FF), d.polygon(n), d.marks(n, 3);
                             d.string(longText.c_str(), "Courier", 2);
                             d.string(text255.c_str(), "Symbol", 3);
                             d.string(text255.substr(1).c_str());
                             d.image(std::vector<unsigned char>(3 * 121 * 301, 77), SbVec2s(121, 301), 3);
                         }));
                for (const char *own :
                     {"BEGPIC 'Clear Text Image from PLOT'\n", "BEGPIC 'Binary Image from PLOT'\n",
                      " findfont", "LINETYPE -1\n", "LINETYPE 1\n"})
                    for (std::size_t at; (at = result.find(own)) != std::string::npos;)
                        result.erase(at, std::strlen(own));
            }
            EXPECT_TRUE(said[0] == said[1]) << said[0].substr(0, 20000) << "\n-----\n"
                                            << said[1].substr(0, 20000);
        }
}

TEST(SoVectorizeCGMAction, NothingBreaksAPage) {
    const SbColor wrong[] = {SbColor(kNaN, 2, -3), SbColor(kInfinity, -kInfinity, 0.5f)};
    const std::string everyByte = [] {
        std::string all;
        for (int c = 1; c < 256; ++c)
            all += static_cast<char>(c);
        return all;
    }();
    for (const int kind : {0, 1, 2, 3, 4, 5, 6, 7}) {
        Driver driver(kind & 1 ? 3 : 1, kind & 2, kind & 4);
        driver.setNominalWidth(kind & 1 ? -1.0f : 0.0f, kMillimeter);
        driver.setPenDescription(kind & 1 ? 300 : 0, std::vector<SbColor>(300, wrong[0]).data(), nullptr,
                                 kMillimeter);
        driver.setBackgroundColor(1);
        driver.setDrawingDimensions(kind & 1 ? -5e30f : 0, 0, kMillimeter);
        const auto draw = [&](Driver &d) {
            for (const int n : {0, 1, 2, 3})
                for (const float size : {kNaN, -kInfinity, -1.0f, 1e-30f, 1e30f}) {
                    d.line(n, size, 1, wrong, n < 3), d.marks(n, size, wrong, n < 3), d.polygon(n, wrong);
                    d.string(everyByte.c_str(), everyByte.c_str(), n, size, size);
                    d.setNominalWidth(1, kMillimeter);
                }
            d.polygonOf({{kNaN, kInfinity, 0, 1}, {-kInfinity, 1e38f, 0, 1}, {1e-38f, -1e-5f, 0, 1}});
            d.image({1, 2}, SbVec2s(1, 1), 2, SbVec2s(0, -4));
        };
        EXPECT_NO_THROW(CgmReader(driver.page(draw)).read()) << kind;
        EXPECT_NO_THROW(CgmReader(pageOf(driver, Scene(view(kEverything)))).read()) << kind;
    }
}

TEST(SoVectorizeCGMAction, SeveralDrawingsOnAPage) {
    const TemporaryFile file;
    {
        SoVectorizeCGMAction action;
        action.getOutput()->setIndexed(1);
        action.getOutput()->openFile(file.name());
        action.setBackgroundColor(1);
        action.setDrawingDimensions(80, 80, kMillimeter);
        action.beginPage(SbVec2f(5, 5), SbVec2f(190, 277), kMillimeter);
        for (const float y : {0.0f, 100.0f}) {
            action.setStartPosition(10, y, kMillimeter);
            action.apply(Scene(view(kEverything)));
        }
    } // the destructor ends the page and closes the file
    const std::string page = readFile(file.path());
    EXPECT_EQ(
        summary(page, "VDCEXT") + summary(page, "CLIPRECT") + summary(page, "ENDMF"),
        "VDCEXT 5 5 195 282\nCLIPRECT 15 5 95 85\nCLIPRECT 15 105 95 185\nCLIPRECT 15 105 95 185\nENDMF\n")
        << "each drawing has its own clip, the background of the second one too";
    SoVectorizeCGMAction ofViews;
    EXPECT_EQ(summary(pageOf(ofViews, twoViews(kEverything)), "CLIPRECT"),
              "CLIPRECT 10 10 200 287\nCLIPRECT 105 79.25 200 217.75\nCLIPRECT 10 10 200 287\n")
        << "the frame is around them all";
}

TEST(SoVectorizeCGMAction, OutputsAndLocales) {
    SoVectorizeCGMAction action;
    EXPECT_EQ(action.getOutput()->openFile("/nowhere/page.cgm"), 0);
    for (const int version : {3, 0, 5})
        action.getOutput()->setVersion(version);
    EXPECT_EQ(action.getOutput()->getVersion(), 3);
    const Scene scene(view(kEverything));
    const std::string page = pageOf(action, scene);
    const CommaLocale locale;
    EXPECT_TRUE(locale.isSet);
    EXPECT_EQ(pageOf(action, scene), page) << "and what was drawn before is forgotten";
}

} // namespace
