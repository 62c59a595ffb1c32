#include "vectorize/CgmEncoder.h"

namespace oravane {

namespace {

constexpr int kPointsOnLine = 6;
constexpr int kMitreDigits = 6;
constexpr std::string_view kEnd = ";\n";

class CgmClearText : public CgmEncoder {
public:
    bool isBinary() const override { return false; }

    void constant(const CgmElement &, std::string_view text, std::initializer_list<int>) override {
        m_text << text;
    }

    void string(const CgmElement &element, std::string_view text) override {
        m_text << element.name << " ";
        quoted(text);
        m_text << kEnd;
    }

    void integers(const CgmElement &element, std::initializer_list<int> values) override {
        m_text << element.name;
        numbers(values);
        m_text << kEnd;
    }

    void lengths(const CgmElement &element, std::initializer_list<float> values) override {
        m_text << element.name;
        for (const float value : values)
            (m_text << " ").general(value);
        m_text << kEnd;
    }

    void color(const CgmElement &element, const CgmColor &color, std::initializer_list<int> flags) override {
        m_text << element.name;
        numbers(flags);
        numbers(color.span());
        m_text << kEnd;
    }

    void points(const CgmElement &element, std::span<const SbVec4f> points, const SbVec2f &offset) override {
        const std::string_view between = element == cgm::kMarker ? " " : ",";
        const bool isBroken = element != cgm::kLine;
        m_text << element.name << "\n";
        int onLine = 0;
        for (const SbVec4f &point : points) {
            if (isBroken && onLine++ == kPointsOnLine) {
                m_text << "\n";
                onLine = 1;
            }
            (m_text << " ").general(point[0] + offset[0]);
            (m_text << between).general(point[1] + offset[1]);
        }
        m_text << kEnd;
    }

    void text(const SbVec2f &point, std::string_view text) override {
        (m_text << "TEXT ").general(point[0]);
        (m_text << " ").general(point[1]);
        m_text << " FINAL\n";
        quoted(text);
        m_text << kEnd;
    }

    void cellArray(const CgmCells &cells) override {
        constexpr int kLargestValue = 255;
        m_text << "CELLARRAY";
        for (const SbVec2f &corner : {cells.p, cells.q, cells.r}) {
            (m_text << " ").general(corner[0]);
            (m_text << " ").general(corner[1]);
        }
        numbers(std::initializer_list<int>{cells.columns, cells.rows, kLargestValue});
        for (std::size_t i = 0; i < cells.numbers.size(); ++i) {
            if (i % cells.columns == 0)
                m_text << "\n";
            for (int shift = 8 * (cells.valuesPerCell - 1); shift >= 0; shift -= 8)
                m_text << " " << (cells.numbers[i] >> shift & kLargestValue);
        }
        m_text << kEnd;
    }

    void fontList() override {
        m_text << "FONTLIST\n";
        for (const std::string_view font : kCgmFonts) {
            // The ninth font has this name on a page in clear text.
            m_text << "'" << (font == "Courier" ? "Courier findfont" : font) << "'";
            m_text << (font == kCgmFonts.back() ? ";\n" : ",\n");
        }
    }

    void colorTable(std::span<const ColorBytes> rows) override {
        m_text << "COLRTABLE 0\n";
        for (const ColorBytes &row : rows)
            m_text << row[0] << " " << row[1] << " " << row[2] << "\n";
        m_text << ";%\n";
    }

    void dashes(std::span<const int> runs) override {
        if (runs.empty())
            return;
        (m_text << "LINEEDGETYPEDEF -1 ").general(kCgmDashCycle) << " ";
        for (const int run : runs)
            m_text << run << " ";
        m_text << kEnd;
    }

    void mitreLimit(float limit) override { (m_text << "MITRELIMIT ").fixed(limit, kMitreDigits) << kEnd; }

private:
    template <class Numbers>
    void numbers(const Numbers &values) {
        for (const auto value : values)
            m_text << " " << static_cast<int>(value);
    }

    void quoted(std::string_view text) {
        m_text << "'";
        for (std::size_t at; (at = text.find('\'')) != std::string_view::npos; text.remove_prefix(at + 1))
            m_text << text.substr(0, at) << "''";
        m_text << text << "'";
    }
};

} // namespace

std::unique_ptr<CgmEncoder> makeCgmClearText() {
    return std::make_unique<CgmClearText>();
}

} // namespace oravane
