#include "vectorize/CgmEncoder.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <string>

namespace oravane {

namespace {

constexpr std::size_t kLongForm = 31;        ///< from so many bytes on the length has a word of its own
constexpr std::size_t kPartition = 0x7FF8;   ///< bytes of a partition that is not the last one
constexpr std::size_t kLongString = 255;     ///< from so many bytes on a string's length has words
constexpr std::size_t kStringPart = 0x7FFE;  ///< bytes of a part of a long string
constexpr std::uint32_t kContinues = 0x8000; ///< more partitions, or more parts, follow
constexpr int kBitsPerValue = 8;             ///< of a cell

/// Integers and indexes of 16 bits, colours of 8 bits a channel, indexes of colours of 16 bits: of 8 bits
/// they would take as much room in an element. Reals are in 32 bits of floating form.
class CgmBinary : public CgmEncoder {
public:
    bool isBinary() const override { return true; }

    void constant(const CgmElement &element, std::string_view, std::initializer_list<int> words) override {
        for (const int w : words)
            word(w);
        end(element);
        if (element == cgm::kVdcRealPrec)
            m_vdcIsFloat = true;
    }

    void string(const CgmElement &element, std::string_view text) override {
        counted(text);
        end(element);
    }

    void integers(const CgmElement &element, std::initializer_list<int> values) override {
        constant(element, {}, values);
    }

    void lengths(const CgmElement &element, std::initializer_list<float> values) override {
        for (const float value : values)
            vdc(value);
        end(element);
    }

    void color(const CgmElement &element, const CgmColor &color, std::initializer_list<int> flags) override {
        for (const int flag : flags)
            word(flag);
        if (color.count == 1)
            word(color.values[0]);
        else
            rgb(color.values);
        end(element);
    }

    void points(const CgmElement &element, std::span<const SbVec4f> points, const SbVec2f &offset) override {
        for (const SbVec4f &point : points) {
            vdc(point[0] + offset[0]);
            vdc(point[1] + offset[1]);
        }
        end(element);
    }

    void text(const SbVec2f &point, std::string_view text) override {
        constexpr int kFinal = 1;
        pair(point);
        word(kFinal);
        counted(text);
        end(cgm::kText);
    }

    void cellArray(const CgmCells &cells) override {
        constexpr int kPacked = 1;
        for (const SbVec2f &corner : {cells.p, cells.q, cells.r})
            pair(corner);
        for (const int value : {cells.columns, cells.rows, kBitsPerValue, kPacked})
            word(value);
        for (std::size_t i = 0; i < cells.numbers.size(); ++i) {
            if (i % cells.columns == 0 && m_parameters.size() % 2 != 0)
                m_parameters += '\0'; // a row begins on a word
            for (int shift = 8 * (cells.valuesPerCell - 1); shift >= 0; shift -= 8)
                m_parameters += static_cast<char>(cells.numbers[i] >> shift);
        }
        end(cgm::kCellArray);
    }

    void fontList() override {
        for (const std::string_view font : kCgmFonts)
            counted(font);
        end(cgm::kFontList);
    }

    void colorTable(std::span<const ColorBytes> rows) override {
        word(0);
        for (const ColorBytes &row : rows)
            rgb(row);
        end(cgm::kColrTable);
    }

    void dashes(std::span<const int> runs) override {
        constexpr int kSolid = 1, kDefined = -1;
        if (!runs.empty()) {
            word(kDefined);
            vdc(kCgmDashCycle);
            for (const int run : runs)
                word(run);
            end(cgm::kLineEdgeTypeDef);
        }
        word(runs.empty() ? kSolid : kDefined);
        end(cgm::kLineType);
    }

    void mitreLimit(float limit) override {
        bits(std::bit_cast<std::uint32_t>(limit));
        end(cgm::kMitreLimit);
    }

private:
    void word(std::uint32_t value) {
        const char bytes[] = {static_cast<char>(value >> 8), static_cast<char>(value)};
        m_parameters.append(bytes, sizeof bytes);
    }
    void bits(std::uint32_t value) {
        const char bytes[] = {static_cast<char>(value >> 24), static_cast<char>(value >> 16),
                              static_cast<char>(value >> 8), static_cast<char>(value)};
        m_parameters.append(bytes, sizeof bytes);
    }
    void rgb(const ColorBytes &color) {
        for (const int channel : color)
            m_parameters += static_cast<char>(channel);
    }

    /// In the form that is in force: the standard's own, of 16 bits before and 16 behind the point, up to the
    /// element that chooses the floating form.
    void vdc(float value) {
        const float finite = std::isfinite(value) ? value : 0.0f;
        if (m_vdcIsFloat)
            return bits(std::bit_cast<std::uint32_t>(finite));
        const double fixed = std::floor(static_cast<double>(finite) * 0x1p16);
        bits(static_cast<std::uint32_t>(static_cast<std::int32_t>(std::clamp(fixed, -0x1p31, 0x1p31 - 1))));
    }
    void pair(const SbVec2f &point) {
        vdc(point[0]);
        vdc(point[1]);
    }

    void counted(std::string_view text) {
        if (text.size() < kLongString) {
            m_parameters += static_cast<char>(text.size());
            m_parameters += text;
            return;
        }
        m_parameters += static_cast<char>(kLongString);
        for (std::size_t size; !text.empty(); text.remove_prefix(size)) {
            size = std::min(text.size(), kStringPart);
            word(static_cast<std::uint32_t>(size) | (size < text.size() ? kContinues : 0));
            m_parameters += text.substr(0, size);
        }
    }

    void pass(std::uint32_t value) {
        const char bytes[] = {static_cast<char>(value >> 8), static_cast<char>(value)};
        m_text << std::string_view(bytes, sizeof bytes);
    }

    /// Passes on the element with the parameters that were collected.
    void end(const CgmElement &element) {
        std::string_view rest = m_parameters;
        pass(element.elementClass << 12 | element.id << 5 |
             static_cast<int>(std::min(rest.size(), kLongForm)));
        if (rest.size() >= kLongForm) {
            for (; rest.size() > kPartition; rest.remove_prefix(kPartition)) {
                pass(kContinues | kPartition);
                m_text << rest.substr(0, kPartition);
            }
            pass(static_cast<std::uint32_t>(rest.size()));
        }
        m_text << rest;
        if (rest.size() % 2 != 0) // an element begins on a word
            m_text << std::string_view("\0", 1);
        m_parameters.clear();
    }

    std::string m_parameters;
    bool m_vdcIsFloat = false;
};

} // namespace

std::unique_ptr<CgmEncoder> makeCgmBinary() {
    return std::make_unique<CgmBinary>();
}

} // namespace oravane
