#include "tools/oravane/OptionValues.h"

#include <oravane/SoVectorizePSAction.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <optional>
#include <stdexcept>

namespace oravane {

namespace {

constexpr float kLongestSide = 10000;
constexpr int kMostPixels = 32767;
constexpr int kMostPens = 256, kCustomaryPens = 8;
constexpr float kPoint = 25.4f / 72;

struct Paper {
    const char *name;
    float width, height;
};
constexpr Paper kPapers[] = {
    {"A0", 841, 1189}, {"A1", 594, 841},           {"A2", 420, 594},          {"A3", 297, 420},
    {"A4", 210, 297},  {"A5", 148, 210},           {"A6", 105, 148},          {"B4", 250, 353},
    {"B5", 176, 250},  {"Letter", 215.9f, 279.4f}, {"Legal", 215.9f, 355.6f}, {"Tabloid", 279.4f, 431.8f},
};

struct NamedColor {
    const char *name;
    SbColor color;
};
const NamedColor kColors[] = {
    {"black", {0, 0, 0}}, {"white", {1, 1, 1}},   {"grey", {0.5f, 0.5f, 0.5f}}, {"gray", {0.5f, 0.5f, 0.5f}},
    {"red", {1, 0, 0}},   {"green", {0, 1, 0}},   {"blue", {0, 0, 1}},          {"yellow", {1, 1, 0}},
    {"cyan", {0, 1, 1}},  {"magenta", {1, 0, 1}},
};

[[noreturn]] void refuse(std::string_view text, const std::string &rule) {
    throw std::invalid_argument('"' + std::string(text) + "\" is " + rule);
}

bool isSameWord(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

/// The whole of `text` as a number.
template <class Number>
std::optional<Number> numberOf(std::string_view text) {
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

template <class Number>
std::string shortest(Number value) {
    std::array<char, 32> digits;
    return {digits.data(), std::to_chars(digits.begin(), digits.end(), value).ptr};
}

template <class Number>
Number boundedNumber(std::string_view text, const std::string &kind, Number least, Number most) {
    const auto number = numberOf<Number>(text);
    if (!number || !(*number >= least && *number <= most))
        refuse(text, "no " + kind + " from " + shortest(least) + " to " + shortest(most));
    return *number;
}

/// All pens that the pages have by themselves.
PenList customaryPens() {
    SoVectorizePSAction action;
    action.setPenDescription(kCustomaryPens, nullptr, nullptr, SoVectorizeAction::MILLIMETER);
    PenList pens{std::vector<SbColor>(kCustomaryPens), std::vector<float>(kCustomaryPens)};
    action.getPenDescription(pens.colors.data(), pens.widths.data(), SoVectorizeAction::MILLIMETER);
    return pens;
}

/// The two numbers around an "x".
template <class Number>
std::optional<std::array<Number, 2>> pairOf(std::string_view text, Number least, Number most) {
    const std::size_t cross = text.find_first_of("xX");
    if (cross == std::string_view::npos)
        return std::nullopt;
    const auto first = numberOf<Number>(text.substr(0, cross));
    const auto second = numberOf<Number>(text.substr(cross + 1));
    const auto fits = [&](const auto &n) { return n && *n >= least && *n <= most; };
    return fits(first) && fits(second) ? std::optional(std::array{*first, *second}) : std::nullopt;
}

std::string_view cutAt(std::string_view &text, char separator) {
    const std::size_t end = text.find(separator);
    const std::string_view head = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    return head;
}

} // namespace

SbVec2f parsePaperSize(std::string_view text) {
    for (const Paper &paper : kPapers)
        if (isSameWord(text, paper.name))
            return {paper.width, paper.height};
    const auto size = pairOf<float>(text, 1, kLongestSide);
    if (!size)
        refuse(text, "no paper size: name one of " + paperNames() +
                         ", or give WIDTHxHEIGHT in millimetres, 1 to 10000");
    return {(*size)[0], (*size)[1]};
}

std::string paperNames() {
    std::string names;
    for (const Paper &paper : kPapers)
        names += (names.empty() ? "" : ", ") + std::string(paper.name);
    return names;
}

std::array<int, 2> parsePixelSize(std::string_view text) {
    const auto size = pairOf<int>(text, 1, kMostPixels);
    if (!size)
        refuse(text, "no picture size: give WIDTHxHEIGHT in pixels, 1 to 32767");
    return *size;
}

SbColor parseColor(std::string_view text) {
    for (const NamedColor &named : kColors)
        if (isSameWord(text, named.name))
            return named.color;
    const std::string_view digits = text.substr(text.empty() ? 0 : 1);
    const bool isHex =
        std::all_of(digits.begin(), digits.end(), [](unsigned char c) { return std::isxdigit(c); });
    if (text.empty() || text[0] != '#' || !isHex || (digits.size() != 3 && digits.size() != 6))
        refuse(
            text,
            "no colour: give #rrggbb, #rgb, black, white, grey, red, green, blue, yellow, magenta or cyan");
    const std::size_t length = digits.size() / 3;
    SbColor color;
    for (int c = 0; c < 3; ++c) {
        int level = 0;
        std::from_chars(digits.data() + c * length, digits.data() + (c + 1) * length, level, 16);
        color[c] = static_cast<float>(level) / (length == 1 ? 15.0f : 255.0f);
    }
    return color;
}

float parseNumber(std::string_view text, float least, float most) {
    return boundedNumber(text, "number", least, most);
}

int parseCount(std::string_view text, int least, int most) {
    return boundedNumber(text, "whole number", least, most);
}

PenList parsePens(std::string_view text) {
    PenList pens;
    if (const auto count = numberOf<int>(text)) {
        if (*count < 2 || *count > kCustomaryPens)
            refuse(text, "no number of pens: give 2 to 8, or a list like black:0.35,red:0.5");
        pens = customaryPens();
        pens.colors.resize(*count);
        pens.widths.resize(*count);
        return pens;
    }
    for (std::string_view rest = text; !rest.empty() || pens.colors.empty();) {
        std::string_view width = cutAt(rest, ',');
        pens.colors.push_back(parseColor(cutAt(width, ':')));
        pens.widths.push_back(width.empty() ? kPoint : parseNumber(width, 0, 100));
    }
    if (std::ssize(pens.colors) > kMostPens)
        refuse(text,
               "a list of " + std::to_string(pens.colors.size()) + " pens, and at most 256 are possible");
    return pens;
}

} // namespace oravane
