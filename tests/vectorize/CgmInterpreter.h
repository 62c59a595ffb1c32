#ifndef ORAVANE_TESTS_CGMINTERPRETER_H
#define ORAVANE_TESTS_CGMINTERPRETER_H

#include "vectorize/CgmReader.h"

#include <algorithm>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace oravane_test {

/// Draws a metafile by the standard's rules, but for images, which are left out, and the height of letters,
/// which is the size of their font.
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
        } else {
            m_now[said.name] = v;
            if (said.name == "FONTLIST")
                m_fonts = said.strings;
        }
    }

    void color(const Numbers &said) {
        const bool isDirect = now("COLRMODE") == 1;
        for (std::size_t k = 0; k < 3; ++k)
            m_ps << (isDirect ? said.at(k)
                              : now("COLRTABLE", 1 + 3 * static_cast<std::size_t>(said.at(0)) + k)) /
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

    static std::string escaped(const std::string &string) {
        std::string text;
        for (const char c : string)
            text += std::string(c == '(' || c == ')' || c == '\\' ? "\\" : "") + c;
        return text;
    }

    void text(const Numbers &v, const std::string &string) {
        constexpr double kShares[] = {0, 0, 0.5, 1};
        color(m_now["TEXTCOLR"]);
        m_ps << "gsave " << v[0] << " " << v[1] << " translate [" << now("CHARORI", 2) << " "
             << now("CHARORI", 3) << " " << now("CHARORI", 0) << " " << now("CHARORI", 1) << " 0 0] concat\n/"
             << m_fonts.at(static_cast<std::size_t>(std::max(now("TEXTFONTINDEX"), 1.0)) - 1) << " findfont "
             << now("CHARHEIGHT") << " scalefont setfont (" << escaped(string) << ") dup stringwidth pop "
             << -kShares[static_cast<int>(now("TEXTALIGN"))] << " mul 0 moveto show grestore\n";
    }

    std::ostringstream m_ps;
    std::map<std::string, Numbers> m_now;
    std::vector<std::string> m_fonts;
};

} // namespace oravane_test

#endif
