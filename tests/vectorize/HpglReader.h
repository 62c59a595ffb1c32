#ifndef ORAVANE_TESTS_HPGLREADER_H
#define ORAVANE_TESTS_HPGLREADER_H

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace oravane_test {

/// Reads a page of HP-GL/2 strictly, as far as the library writes it, and draws it anew in PostScript.
class HpglReader {
public:
    using Point = std::pair<long, long>; ///< device units

    std::string error; ///< empty for a good page, else what is wrong
    std::string postScript;
    std::vector<std::vector<Point>> lines, polygons;
    std::vector<Point> marks;
    std::vector<std::string> labels;

    explicit HpglReader(std::string_view page) : m_rest(page) {
        m_out << "%!PS\n72 1016 div dup scale 1 setlinejoin\n";
        try {
            if (take(6) != "\x1B%-1B\n")
                fail("not in HP-GL/2 mode");
            while (!m_rest.empty())
                command();
            if (m_last != "PG")
                fail("no end of the page");
        } catch (const std::exception &e) {
            error = std::string(e.what()) + " before: " + std::string(m_rest.substr(0, 40));
        }
        m_out << "showpage\n";
        postScript = m_out.str();
    }

private:
    [[noreturn]] static void fail(const std::string &why) { throw std::runtime_error(why); }

    std::string take(std::size_t n) {
        if (m_rest.size() < n)
            fail("cut off");
        std::string text(m_rest.substr(0, n));
        m_rest.remove_prefix(n);
        return text;
    }
    std::string takeUntil(char end) {
        const std::size_t at = m_rest.find(end);
        if (at == std::string_view::npos)
            fail("not ended");
        std::string text = take(at);
        take(1);
        return text;
    }
    bool next(const char *set) const {
        return !m_rest.empty() && std::string_view(set).find(m_rest[0]) != std::string_view::npos;
    }

    std::vector<double> numbers() {
        std::vector<double> all;
        for (bool more = next("-.0123456789"); more; more = next(",") && take(1) == ",") {
            const char *const end = m_rest.data() + m_rest.size();
            const auto read =
                std::from_chars(m_rest.data(), end, all.emplace_back(), std::chars_format::fixed);
            if (read.ec != std::errc())
                fail("bad number");
            m_rest.remove_prefix(read.ptr - m_rest.data());
            while (next(" "))
                take(1);
        }
        return all;
    }

    using Numbers = const std::vector<double> &;
    struct Command {
        std::vector<std::size_t> counts; ///< of parameters that it may have; empty for any
        void (HpglReader::*draw)(Numbers) = nullptr;
    };
    static const Command &commandOf(const std::string &name) {
        using R = HpglReader;
        static const std::map<std::string, Command> kCommands = {{"IN", {{0}}},
                                                                 {"RO", {{1}}},
                                                                 {"IP", {{0}}},
                                                                 {"FT", {{0}}},
                                                                 {"NP", {{1}}},
                                                                 {"TR", {{1}}},
                                                                 {"PS", {{2}}},
                                                                 {"LA", {{6}}},
                                                                 {"SS", {{0}}},
                                                                 {"PG", {{0}}},
                                                                 {"PC", {{4}, &R::penColor}},
                                                                 {"SP", {{0, 1}, &R::selectPen}},
                                                                 {"PW", {{1}, &R::penWidth}},
                                                                 {"UL", {{}, &R::userLine}},
                                                                 {"LT", {{0, 3}, &R::lineType}},
                                                                 {"IW", {{0, 4}, &R::window}},
                                                                 {"PU", {{0, 2}, &R::moves}},
                                                                 {"PA", {{}, &R::moves}},
                                                                 {"PM", {{0, 1}, &R::polygonMode}},
                                                                 {"FP", {{0}, &R::fill}},
                                                                 {"SD", {{4}, &R::font}},
                                                                 {"LO", {{1}, &R::labelOrigin}},
                                                                 {"DI", {{2}, &R::direction}}};
        const auto found = kCommands.find(name);
        if (found == kCommands.end())
            fail("unknown command " + name);
        return found->second;
    }

    void command() {
        m_last = take(2);
        if (m_last == "PE") {
            encoded(takeUntil(';'));
        } else if (m_last == "LB") {
            label(takeUntil('\x03'));
        } else if (m_last == "SM") {
            m_symbol = next(";") ? '\0' : take(1)[0];
        } else {
            const std::vector<double> p = numbers();
            const Command &c = commandOf(m_last);
            if (!c.counts.empty() && std::find(c.counts.begin(), c.counts.end(), p.size()) == c.counts.end())
                fail(m_last + " with " + std::to_string(p.size()) + " parameters");
            if (c.draw)
                (this->*c.draw)(p);
        }
        if (next(";"))
            take(1);
        if (next("\n"))
            take(1);
    }

    void penColor(Numbers p) { m_palette[std::lround(p[0])] = {p[1], p[2], p[3]}; }
    void selectPen(Numbers p) {
        if (p.empty())
            return;
        const auto color = m_palette.find(std::lround(p[0]));
        if (color == m_palette.end())
            fail("no such pen");
        for (const double c : color->second)
            m_out << c / 255 << " ";
        m_out << "setrgbcolor\n";
    }
    void penWidth(Numbers p) {
        if (p[0] < 0)
            fail("negative width");
        m_width = p[0] * 40;
    }
    void userLine(Numbers p) {
        double sum = 0;
        for (std::size_t i = 1; i < p.size(); ++i)
            sum += p[i];
        if (p.size() < 2 || p.size() > 21 || !(sum > 0))
            fail("bad line type");
        m_userDash.clear();
        for (std::size_t i = 1; i < p.size(); ++i)
            m_userDash += std::to_string(p[i] / sum * 5.65 * 40) + " ";
    }
    void lineType(Numbers p) { m_dash = p.empty() ? "" : m_userDash; }
    void window(Numbers p) {
        m_out << "initclip\n";
        if (!p.empty())
            m_out << p[0] << " " << p[1] << " " << p[2] - p[0] << " " << p[3] - p[1] << " rectclip\n";
    }
    void moves(Numbers p) {
        if (p.size() % 2 != 0)
            fail("half a point");
        for (std::size_t i = 0; i < p.size(); i += 2) {
            m_at = {std::lround(p[i]), std::lround(p[i + 1])};
            if (m_symbol) {
                marks.push_back(m_at);
                m_out << "newpath " << m_at.first << " " << m_at.second << " 7 0 360 arc fill\n";
            }
        }
    }
    void polygonMode(Numbers p) {
        m_inPolygon = p.empty();
        if (m_inPolygon)
            m_outline = {m_at};
    }
    void fill(Numbers) {
        polygons.push_back(m_outline);
        path(m_outline, "fill");
    }
    void font(Numbers p) {
        m_height = p[3] * 1016 / 72;
        if (m_height <= 0)
            fail("letters without height");
    }
    void labelOrigin(Numbers p) { m_origin = static_cast<int>(p[0]); }
    void direction(Numbers p) {
        if (p[0] == 0 && p[1] == 0)
            fail("no direction");
        m_angle = std::atan2(p[1], p[0]);
    }

    static long decoded(std::string_view &data) {
        unsigned long value = 0;
        for (unsigned shift = 0;; shift += 6) {
            if (data.empty() || shift > 30)
                fail("bad encoded number");
            const auto c = static_cast<unsigned char>(data[0]);
            data.remove_prefix(1);
            const bool isLast = c >= 191;
            if (c < 63 || c == 127 || c == 255 || (c > 126 && !isLast))
                fail("character outside of an encoded number");
            value += (c - (isLast ? 191ul : 63ul)) << shift;
            if (isLast)
                return value & 1 ? -static_cast<long>(value >> 1) : static_cast<long>(value >> 1);
        }
    }
    void encoded(std::string_view data) {
        std::vector<Point> line{m_at};
        if (data.starts_with(":")) {
            data.remove_prefix(1);
            selectPen({static_cast<double>(decoded(data))});
        }
        const bool isAbsolute = data.starts_with("<=");
        if (isAbsolute)
            data.remove_prefix(2);
        for (bool isFirst = isAbsolute; !data.empty(); isFirst = false) {
            const long x = decoded(data), y = decoded(data);
            m_at = isFirst ? Point{x, y} : Point{m_at.first + x, m_at.second + y};
            if (isFirst)
                line.clear();
            line.push_back(m_at);
        }
        if (m_inPolygon)
            m_outline = line;
        else
            path(lines.emplace_back(line), "stroke");
    }
    void path(const std::vector<Point> &points, const char *paint) {
        m_out << "[" << m_dash << "] 0 setdash " << m_width << " setlinewidth newpath\n";
        for (const Point &p : points)
            m_out << p.first << " " << p.second << (&p == points.data() ? " moveto\n" : " lineto\n");
        m_out << paint << "\n";
    }
    void label(const std::string &text) {
        for (const unsigned char c : text)
            if (c < ' ' || c == 127)
                fail("control character in a label");
        labels.push_back(text);
        if (m_height <= 0 || m_origin <= 0)
            fail("label without font or origin");
        constexpr double kCapHeight = 0.72;
        m_out << "gsave " << m_at.first << " " << m_at.second << " translate "
              << m_angle * 180 / 3.14159265358979 << " rotate 0 "
              << -kCapHeight * m_height * (m_origin - 1) / 2 << " moveto /Helvetica findfont " << m_height
              << " scalefont setfont <";
        for (const unsigned char c : text)
            m_out << "0123456789ABCDEF"[c >> 4] << "0123456789ABCDEF"[c & 15];
        m_out << "> show grestore\n";
    }

    std::string_view m_rest;
    std::string m_last;
    std::ostringstream m_out;
    std::map<long, std::array<double, 3>> m_palette;
    double m_width = 14, m_height = 0, m_angle = 0;
    int m_origin = 0;
    char m_symbol = '\0';
    bool m_inPolygon = false;
    std::string m_dash, m_userDash;
    Point m_at{0, 0};
    std::vector<Point> m_outline;
};

} // namespace oravane_test

#endif
