#ifndef ORAVANE_TESTS_CGMREADER_H
#define ORAVANE_TESTS_CGMREADER_H

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace oravane_test {

/// What an element of a metafile says, whatever the encoding: enumerations count from 0, a point is two
/// numbers, a colour one or three. Precisions have none; a cell array has three corners, columns, rows,
/// cells.
struct CgmSaid {
    std::string name;
    std::vector<double> numbers;
    std::vector<std::string> strings;
};

/// Name, class, identifier, version; parameters: E enumeration, I integer, X index, R real, V length, P
/// point, C colour, K colour index, D direct colour, S string, * the one before up to the end; # stands for
/// what the encodings write differently. Then the words of an enumeration.
inline constexpr char kCgmElements[] = R"(
BEGMF 0 1 1 S ; ENDMF 0 2 1 - ; BEGPIC 0 3 1 S ; BEGPICBODY 0 4 1 - ; ENDPIC 0 5 1 - ; MFVERSION 1 1 1 I ;
MFDESC 1 2 1 S ; VDCTYPE 1 3 1 E INTEGER REAL ; INTEGERPREC 1 4 1 #I ; REALPREC 1 5 1 #R ;
INDEXPREC 1 6 1 #I ; COLRPREC 1 7 1 #C ; COLRINDEXPREC 1 8 1 #C ; MAXCOLRINDEX 1 9 1 K ;
COLRVALUEEXT 1 10 1 DD ; MFELEMLIST 1 11 1 #L ; FONTLIST 1 13 1 S* ; SCALEMODE 2 1 1 ER ABSTRACT METRIC ;
COLRMODE 2 2 1 E INDEXED DIRECT ; LINEWIDTHMODE 2 3 1 E ABS SCALED ; MARKERSIZEMODE 2 4 1 E ABS SCALED ;
EDGEWIDTHMODE 2 5 1 E ABS SCALED ; VDCEXT 2 6 1 PP ; BACKCOLR 2 7 1 D ; LINEEDGETYPEDEF 2 17 3 XVI* ;
VDCREALPREC 3 2 1 #R ; CLIPRECT 3 5 1 PP ; MITRELIMIT 3 19 3 R ; TRANSPCELLCOLR 3 20 3 XC ;
LINE 4 1 1 PP* ; MARKER 4 3 1 P* ; TEXT 4 4 1 PES NOTFINAL FINAL ; POLYGON 4 7 1 PPP* ;
CELLARRAY 4 9 1 PPPII#A ; LINETYPE 5 2 1 X ; LINEWIDTH 5 3 1 V ; LINECOLR 5 4 1 C ; MARKERTYPE 5 6 1 X ;
MARKERSIZE 5 7 1 V ; MARKERCOLR 5 8 1 C ; TEXTFONTINDEX 5 10 1 X ; TEXTPREC 5 11 1 E STRING CHAR STROKE ;
CHAREXPAN 5 12 1 R ; CHARSPACE 5 13 1 R ; TEXTCOLR 5 14 1 C ; CHARHEIGHT 5 15 1 V ; CHARORI 5 16 1 VVVV ;
TEXTPATH 5 17 1 E RIGHT LEFT UP DOWN ;
TEXTALIGN 5 18 1 EERR NORMHORIZ LEFT CTR RIGHT CONTHORIZ NORMVERT TOP CAP HALF BASE BOTTOM CONTVERT ;
INTSTYLE 5 22 1 E HOLLOW SOLID PAT HATCH EMPTY ; FILLCOLR 5 23 1 C ; EDGEVIS 5 30 1 E OFF ON ;
COLRTABLE 5 34 1 KD* ; LINECAP 5 37 3 XX ; LINEJOIN 5 38 3 X ;
)";

struct CgmRow {
    std::string name;
    int elementClass, id, version;
    std::string parameters, words;
};

inline const std::vector<CgmRow> &cgmRows() {
    static const std::vector<CgmRow> all = [] {
        std::vector<CgmRow> rows;
        std::istringstream in(kCgmElements);
        for (CgmRow row; in >> row.name >> row.elementClass >> row.id >> row.version >> row.parameters;) {
            std::getline(in, row.words, ';');
            rows.push_back(row);
        }
        return rows;
    }();
    return all;
}

/// Reads both encodings and throws at what is not well-formed.
class CgmReader {
public:
    explicit CgmReader(const std::string &page) : m_page(page) {}

    std::vector<CgmSaid> read() {
        m_isBinary = m_page.substr(0, 1) == std::string(1, '\0');
        while (m_isBinary ? m_at < m_page.size() : nextStatement())
            element();
        require(m_state == 5, "the metafile has no end");
        return m_said;
    }

private:
    void require(bool isTrue, const std::string &complaint) const {
        if (!isTrue)
            throw std::runtime_error("at " + std::to_string(m_at) + ": " + complaint);
    }

    // --------------------------------------------------------------------------------------- clear text
    void skipSeparators() {
        for (; m_at < m_page.size(); ++m_at) {
            if (m_page[m_at] == '%') // a comment; one that a line ends at once is empty
                m_at = m_page[m_at + 1] == '\n' ? m_at + 1 : m_page.find('%', m_at + 1);
            else if (!std::strchr(" \t\r\n,", m_page[m_at]))
                return;
            require(m_at < m_page.size(), "a comment has no end");
        }
    }

    bool nextStatement() {
        m_tokens.clear();
        for (skipSeparators(); m_at < m_page.size() && m_page[m_at] != ';'; skipSeparators()) {
            std::string text(m_page, m_at++, 1); // that of a string keeps its first quote
            if (text == "'") {
                for (; m_page.at(m_at) != '\'' || m_page.substr(m_at, 2) == "''"; ++m_at) {
                    require(static_cast<unsigned char>(m_page[m_at]) >= ' ', "a control in a string");
                    text += m_page[m_at];
                    m_at += m_page[m_at] == '\'' ? 1 : 0;
                }
                ++m_at;
            }
            while (text[0] != '\'' && m_at < m_page.size() && !std::strchr(" \t\r\n,;'%", m_page[m_at]))
                text += m_page[m_at++];
            m_tokens.push_back(text);
        }
        require(m_at < m_page.size() || m_tokens.empty(), "the last statement has no end");
        ++m_at;
        return !m_tokens.empty();
    }

    std::string token(bool isString) {
        require(m_next < m_tokens.size() && (m_tokens[m_next][0] == '\'') == isString, "what is missing");
        return m_tokens[m_next++].substr(isString ? 1 : 0);
    }

    template <class Number>
    double clearNumber() {
        const std::string text = token(false);
        Number value{};
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        require(error == std::errc() && end == text.data() + text.size() && std::isfinite(double(value)),
                "no number: " + text);
        return double(value);
    }

    double clearWord(const std::string &words) {
        const std::string wanted = token(false);
        std::istringstream in(words);
        double index = 0;
        for (std::string word; in >> word; ++index) {
            if (word.rfind("NORM", 0) == 0)
                index = 0;
            if (word == wanted)
                return index;
        }
        throw std::runtime_error("no such word: " + wanted);
    }

    // ------------------------------------------------------------------------------------------- binary
    std::uint64_t bytes(std::string_view from, std::size_t &at, int count) {
        require(at + count <= from.size(), "parameters end too early");
        std::uint64_t value = 0;
        for (int k = 0; k < count; ++k)
            value = value << 8 | static_cast<unsigned char>(from[at++]);
        return value;
    }
    std::uint64_t parameter(int bits) { return bytes(m_parameters, m_next, bits / 8); }
    double integer(int bits) {
        return static_cast<double>(static_cast<std::int64_t>(parameter(bits) << (64 - bits)) >> (64 - bits));
    }
    double real(bool isFloat) {
        if (!isFloat)
            return integer(32) / 65536;
        const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(parameter(32)));
        require(std::isfinite(value), "a number that is none");
        return value;
    }

    int binaryHeader() {
        const auto word = bytes(m_page, m_at, 2);
        std::uint64_t length = word & 31;
        m_parameters.clear();
        bool continues = length == 31;
        const auto take = [&] {
            require(m_at + length <= m_page.size(), "a length beyond the end");
            m_parameters += m_page.substr(m_at, length);
            m_at += length;
        };
        if (!continues)
            take();
        while (continues) {
            length = bytes(m_page, m_at, 2);
            continues = length >> 15;
            length &= 0x7FFF;
            require(!continues || length == 0x7FF8, "an odd partition");
            take();
        }
        require((word & 31) < 31 || m_parameters.size() >= 31, "a long form that need not be");
        require(length % 2 == 0 || bytes(m_page, m_at, 1) == 0, "padding that is not 0");
        return static_cast<int>(word >> 5);
    }

    std::string binaryString() {
        std::uint64_t length = parameter(8);
        std::string text;
        bool continues = length == 255;
        do {
            if (length == 255 || continues) {
                const auto word = parameter(16);
                continues = word >> 15;
                length = word & 0x7FFF;
            }
            require(m_next + length <= m_parameters.size(), "a string beyond its element");
            text += m_parameters.substr(m_next, length);
            m_next += length;
        } while (continues);
        return text;
    }

    // --------------------------------------------------------------------------------------------- both
    void element() {
        CgmSaid said;
        m_next = 0;
        const int code = m_isBinary ? binaryHeader() : 0;
        const std::string name = m_isBinary ? "" : token(false);
        const CgmRow *row = nullptr;
        for (const CgmRow &r : cgmRows())
            if (m_isBinary ? code == (r.elementClass << 7 | r.id) : name == r.name)
                row = &r;
        require(row, "no such element: " + name + std::to_string(code));
        said.name = row->name;
        checkState(*row);
        parameters(*row, said);
        require(!hasMore(), "too much");
        require(said.name != "COLRTABLE" || said.numbers.size() <= 1 + 3 * 256, "too many colours");
        if (said.name == "MFVERSION")
            m_version = static_cast<int>(said.numbers[0]);
        else if (said.name == "COLRMODE")
            m_isDirect = said.numbers[0] == 1;
        m_said.push_back(std::move(said));
    }

    /// Counts the five delimiters in their order, and keeps the other elements between the right ones.
    void checkState(const CgmRow &row) {
        constexpr int kOrder[] = {0, 1, 3, 4, 5, 2}; // identifiers of class 0
        require(row.version <= m_version, "too new for the version");
        if (row.elementClass == 0)
            return require(m_state < 5 && row.id == kOrder[++m_state], "delimiters in a wrong order");
        // A dash is defined where it is needed, in the body.
        const int wanted = row.id == 17 ? 3 : row.elementClass < 3 ? row.elementClass : 3;
        require(m_state == wanted, "in a wrong place");
    }

    bool hasMore() const { return m_next < (m_isBinary ? m_parameters.size() : m_tokens.size()); }

    void parameters(const CgmRow &row, CgmSaid &said) {
        char kind = 0;
        for (const char *p = row.parameters.c_str(); *p && *p != '-'; ++p) {
            if (*p == '#')
                return special(p[1], row, said);
            if (*p != '*')
                one(kind = *p, row, said);
            while (*p == '*' && hasMore())
                one(kind, row, said);
        }
    }

    void one(char kind, const CgmRow &row, CgmSaid &said) {
        const auto add = [&](double value) { said.numbers.push_back(value); };
        if (kind == 'C')
            kind = m_isDirect ? 'D' : 'K';
        if (kind == 'S')
            said.strings.push_back(m_isBinary ? binaryString() : token(true));
        for (int k = kind == 'P' ? 2 : 1; k > 0 && (kind == 'P' || kind == 'V'); --k)
            add(m_isBinary ? real(m_vdcIsFloat) : clearNumber<double>());
        for (int k = 0; k < 3 && kind == 'D'; ++k)
            add(m_isBinary ? static_cast<double>(parameter(8)) : clearNumber<int>());
        if (kind == 'K')
            add(m_isBinary ? static_cast<double>(parameter(m_colorIndexBits)) : clearNumber<int>());
        if (kind == 'I' || kind == 'X')
            add(m_isBinary ? integer(16) : clearNumber<int>());
        if (kind == 'R')
            add(m_isBinary ? real(m_realIsFloat) : clearNumber<double>());
        if (kind == 'E')
            add(m_isBinary ? integer(16) : clearWord(row.words));
    }

    void special(char kind, const CgmRow &row, CgmSaid &said) {
        if (kind == 'A')
            return cells(said);
        if (!m_isBinary) { // ranges; all that the page may hold is within them
            if (kind == 'L')
                return require(token(true) == "DRAWINGPLUS", "another set of elements");
            for (int k = kind == 'C' ? 2 : kind == 'I' ? 1 : 0; k < 3; ++k)
                clearNumber<double>();
            return;
        }
        const double first = integer(16);
        if (kind == 'R') {
            require(first == 0 && integer(16) == 9 && integer(16) == 23, "another form of reals");
            (row.id == 5 ? m_realIsFloat : m_vdcIsFloat) = true;
        } else if (kind == 'L') {
            require(first == 1 && integer(16) == -1 && integer(16) == 1, "another set of elements");
        } else {
            require(first == (row.id == 7 ? 8 : 16), "another precision");
            m_colorIndexBits = row.id == 8 ? 16 : m_colorIndexBits;
        }
    }

    void cells(CgmSaid &said) {
        const int columns = static_cast<int>(said.numbers[6]), rows = static_cast<int>(said.numbers[7]);
        const int perRow = columns * (m_isDirect ? 3 : 1);
        const double precision = m_isBinary ? integer(16) : clearNumber<int>();
        require(precision == (m_isBinary ? 8 : 255), "cells of another precision");
        require(!m_isBinary || integer(16) == 1, "cells that are not packed");
        for (int row = 0; row < rows; ++row) {
            m_next += m_isBinary ? m_next % 2 : 0;
            for (int k = 0; k < perRow; ++k)
                said.numbers.push_back(m_isBinary ? static_cast<double>(parameter(8)) : clearNumber<int>());
        }
    }

    const std::string m_page;
    std::string m_parameters;
    std::vector<std::string> m_tokens;
    std::vector<CgmSaid> m_said;
    std::size_t m_at = 0, m_next = 0;
    int m_state = 0, m_version = 1, m_colorIndexBits = 8;
    bool m_isBinary = false, m_isDirect = false, m_realIsFloat = false, m_vdcIsFloat = false;
};

} // namespace oravane_test

#endif
