// A page in CGM shows what the renderer shows of the same scene.
#include "PageRaster.h"
#include "tools/HeadlessRenderer.h"
#include "vectorize/CgmReader.h"
#include "vectorize/PageFixture.h"

#include <oravane/PiText.h>
#include <oravane/SoVectorizeCGMAction.h>

#include <cstdlib>
#include <map>

namespace {

using namespace oravane_test;
using oravane::Picture;

constexpr int PIXELS = 500; // of a drawing of 100 mm

/// Draws a metafile by the standard's rules, but for the height of letters: it is the size of their font.
class CgmInterpreter {
public:
    std::string postScript(const std::string &page) {
        m_ps << "%!PS\n72 25.4 div dup scale\n";
        for (const CgmSaid &said : CgmReader(page).read())
            draw(said);
        m_ps << "showpage\n";
        return m_ps.str();
    }

private:
    using Numbers = std::vector<double>;

    double now(const std::string &attribute, std::size_t i = 0) {
        const Numbers &v = m_now[attribute];
        return i < v.size() ? v[i] : 0;
    }

    void draw(const CgmSaid &said) {
        const Numbers &v = said.numbers;
        if (said.name == "CLIPRECT") {
            m_ps << "initclip ";
            path({v[0], v[1], v[2], v[1], v[2], v[3], v[0], v[3]}, "clip");
        } else if (said.name == "POLYGON") {
            color(m_now["FILLCOLR"]);
            path(v, "eofill");
        } else if (said.name == "LINE") {
            color(m_now["LINECOLR"]);
            m_ps << now("LINEWIDTH") << " setlinewidth [" << dashes() << "] 0 setdash\n";
            path(v, "stroke");
        } else if (said.name == "MARKER") {
            const double size = now("MARKERSIZE");
            color(m_now["MARKERCOLR"]);
            for (std::size_t i = 0; i < v.size(); i += 2)
                m_ps << v[i] << " " << v[i + 1] << " " << size / 2 << " 0 360 arc fill\n";
        } else if (said.name == "TEXT") {
            text(v, said.strings[0]);
        } else if (said.name == "CELLARRAY") {
            cells(v);
        } else {
            m_now[said.name] = v;
            if (said.name == "FONTLIST")
                m_fonts = said.strings;
        }
    }

    void color(const Numbers &said, std::size_t at = 0) {
        const bool isDirect = now("COLRMODE") == 1;
        for (std::size_t k = 0; k < 3; ++k)
            m_ps << (isDirect ? said.at(at + k)
                              : now("COLRTABLE", 1 + 3 * static_cast<std::size_t>(said.at(at)) + k)) /
                        255
                 << " ";
        m_ps << "setrgbcolor\n";
    }

    void path(const Numbers &points, const char *operation) {
        m_ps << "newpath\n";
        for (std::size_t i = 0; i < points.size(); i += 2)
            m_ps << points[i] << " " << points[i + 1] << (i == 0 ? " moveto\n" : " lineto\n");
        m_ps << operation << "\n";
    }

    std::string dashes() {
        constexpr const char *kTypes[] = {
            "", "", "2.8 2.8", "0.4 0.4", "2.8 1 0.8 1", "2.8 0.6 0.8 0.6 0.8 0.6"};
        const int type = static_cast<int>(now("LINETYPE"));
        if (type >= 0)
            return kTypes[type];
        const Numbers &defined = m_now["LINEEDGETYPEDEF"];
        double sum = 0;
        for (std::size_t i = 2; i < defined.size(); ++i)
            sum += defined[i];
        std::ostringstream out;
        for (std::size_t i = 2; i < defined.size(); ++i)
            out << defined[i] * defined[1] / sum << " ";
        return out.str();
    }

    void text(const Numbers &v, const std::string &string) {
        constexpr double kShares[] = {0, 0, 0.5, 1};
        color(m_now["TEXTCOLR"]);
        m_ps << "gsave " << v[0] << " " << v[1] << " translate [" << now("CHARORI", 2) << " "
             << now("CHARORI", 3) << " " << now("CHARORI", 0) << " " << now("CHARORI", 1) << " 0 0] concat\n/"
             << m_fonts.at(static_cast<std::size_t>(now("TEXTFONTINDEX")) - 1) << " findfont "
             << now("CHARHEIGHT") << " scalefont setfont (" << string << ") dup stringwidth pop "
             << -kShares[static_cast<int>(now("TEXTALIGN"))] << " mul 0 moveto show grestore\n";
    }

    void cells(const Numbers &v) {
        const double columns = v[6], rows = v[7];
        m_ps << "gsave [" << (v[4] - v[0]) / columns << " " << (v[5] - v[1]) / columns << " "
             << (v[2] - v[4]) / rows << " " << (v[3] - v[5]) / rows << " " << v[0] << " " << v[1]
             << "] concat\n";
        const Numbers &hidden = m_now["TRANSPCELLCOLR"];
        std::size_t at = 8;
        const std::size_t perCell = now("COLRMODE") == 1 ? 3 : 1;
        for (int row = 0; row < rows; ++row)
            for (int column = 0; column < columns; ++column, at += perCell) {
                if (now("TRANSPCELLCOLR") == 1 &&
                    std::equal(hidden.begin() + 1, hidden.end(), v.begin() + at))
                    continue;
                color(v, at);
                m_ps << column << " " << row << " 1 1 rectfill\n";
            }
        m_ps << "grestore\n";
    }

    std::ostringstream m_ps;
    std::map<std::string, Numbers> m_now;
    std::vector<std::string> m_fonts;
};

/// Mean of a colour channel in a square of pixels.
double mean(const Picture &picture, int x0, int y0, int block, std::size_t channel) {
    double sum = 0;
    for (int y = y0; y < y0 + block; ++y)
        for (int x = x0; x < x0 + block; ++x)
            sum += picture.at(x, y)[channel];
    return sum / (block * block);
}

/// Draws `nodes` on pages and on the screen. In each quarter of the picture the difference, in squares of
/// `block` pixels, must be below a part of what there is to see.
void expectSamePicture(const std::string &nodes, int block, double part) {
    const Scene scene(view("LightModel { model BASE_COLOR } " + nodes));
    oravane::HeadlessRenderer renderer(1);
    const Picture picture = renderer.render(scene, PIXELS, PIXELS);
    for (const bool isBinary : {false, true}) {
        SoVectorizeCGMAction action;
        action.getOutput()->setVersion(isBinary ? 3 : 1);
        action.getOutput()->setBinary(isBinary);
        action.getOutput()->setIndexed(!isBinary);
        action.setDrawingDimensions(100, 100, SoVectorizeAction::MILLIMETER);
        action.setColorTranslationMethod(SoVectorizeAction::KEEP_COLORS);
        action.setNominalWidth(0.2f, SoVectorizeAction::MILLIMETER); // a pixel
        action.setPixelImageSize(0.2f, SoVectorizeAction::MILLIMETER);
        action.setBorder(0);
        const TemporaryFile page;
        std::ofstream(page.path()) << CgmInterpreter().postScript(pageOf(action, scene));
        const Picture drawing = drawingOf(page.path(), picture);
        std::array<double, 4> ink{}, difference{};
        for (int y = 0; y < PIXELS; y += block)
            for (int x = 0; x < PIXELS; x += block)
                for (std::size_t c = 0; c < 3; ++c) {
                    const std::size_t quarter = 2 * (y / (PIXELS / 2)) + x / (PIXELS / 2);
                    const double seen = mean(picture, x, y, block, c);
                    ink[quarter] += 255 - seen;
                    difference[quarter] += std::abs(seen - mean(drawing, x, y, block, c));
                }
        for (std::size_t quarter = 0; quarter < 4; ++quarter) {
            EXPECT_GT(ink[quarter] * block * block, 50 * 255) << "there is something to see";
            EXPECT_LT(difference[quarter] / ink[quarter], part)
                << nodes << "\nquarter " << quarter << (isBinary ? ", binary" : ", clear text");
        }
    }
}

TEST(CgmPage, ShowsWhatIsRendered) {
    expectSamePicture(
        "Separator { BaseColor { rgb 1 0 0 } Translation { translation -.5 .5 0 } "
        "Rotation { rotation 1 1 0 1 } Cube { width .4 height .5 depth .3 } } "
        "Separator { BaseColor { rgb 0 0 1 } DrawStyle { lineWidth 5 } "
        "Coordinate3 { point [ .1 .2 0, .5 .9 0, .9 .1 0 ] } LineSet { } } "
        "Separator { BaseColor { rgb [ 0 1 0, 1 0 1, 0 0 0 ] } MaterialBinding { value PER_VERTEX } "
        "DrawStyle { pointSize 15 } Coordinate3 { point [ -.9 -.2 0, -.5 -.3 0, -.2 -.2 0 ] } "
        "PointSet { } Translation { translation 0 -.5 0 } MarkerSet { markerIndex [ 88, 70, 80 ] } } "
        "Translation { translation .5 -.5 0 } Image { image 3 2 3 0xff0000 0xff00 0xff 0xff00ff "
        "0 0xffff width 90 height 80 horAlignment CENTER vertAlignment TOP } ",
        10, 0.15);
}

TEST(CgmPage, DashesAreAsDense) {
    std::string nodes = "BaseColor { rgb 0 0 0 } ";
    for (const char *rest : {"0xFF00 } Coordinate3 { point [ -1 .5 0, 0 .5 0 ] ",
                             "0xF0F0 } Coordinate3 { point [ 0 .5 0, 1 .5 0 ] ",
                             "0x5555 } Coordinate3 { point [ -1 -.5 0, 0 -.5 0 ] ",
                             "0xFFFF } Coordinate3 { point [ 0 -.5 0, 1 -.5 0 ] "})
        nodes += "DrawStyle { lineWidth 5 linePattern " + std::string(rest) + "} LineSet { } ";
    expectSamePicture(nodes, 125, 0.15);
}

TEST(CgmPage, TextStandsWhereItIsRendered) {
    unsetenv("COIN_FORCE_FREETYPE_OFF"); // works until the first letter of the process
    PiText measure;
    float width, height;
    measure.setFont("Helvetica", 1);
    measure.getStringSizes("Hello 12.5", width, height);
    if (std::abs(width - 4.475f) > 0.1f)
        GTEST_SKIP() << "no Helvetica on this machine, or another font was in use before: " << width;
    std::string nodes = "BaseColor { rgb 0 0 1 } Font { name \"Helvetica\" size 0.2 } ";
    for (const char *rest : {"-.9 .5 0 } SoAnnoText3 { string [ \"left\", \"aligned\" ] ",
                             ".9 .5 0 } SoAnnoText3 { string [ \"right\", \"aligned\" ] justification RIGHT ",
                             "-.5 -.5 0 } SoAnnoText3 { string \"middle\" justification CENTER ",
                             ".2 -.7 0 } Rotation { rotation 0 0 1 0.5 } SoAnnoText3 { string \"turned\" "})
        nodes += "Separator { Translation { translation " + std::string(rest) + "} } ";
    expectSamePicture(nodes, 10, 0.2);
}

} // namespace
