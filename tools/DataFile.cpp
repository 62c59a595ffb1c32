#include "tools/DataFile.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string_view>

namespace oravane {

namespace {

using Keys = std::map<std::string, std::string>;

[[noreturn]] void fail(const std::string &path, const std::string &reason) {
    throw std::runtime_error("cannot read " + path + ": " + reason);
}

std::string contentOf(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    if (!file || std::filesystem::is_directory(path))
        fail(path, "no such file");
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string_view trimmed(std::string_view text) {
    const char *const blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == text.npos ? std::string_view()
                              : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// std::from_chars and not a stream: the numbers of a file do not depend on the locale.
template <class Number>
std::optional<Number> numberOf(std::string_view text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

/// Takes the first line off `text`.
std::string_view nextLine(std::string_view &text) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
    return line;
}

/// Takes the first word off `text`; empty at the end.
std::string_view nextWord(std::string_view &text) {
    const std::size_t first = std::min(text.find_first_not_of(" \t\r\n"), text.size());
    const std::size_t end = std::min(text.find_first_of(" \t\r\n", first), text.size());
    const std::string_view word = text.substr(first, end - first);
    text.remove_prefix(end);
    return word;
}

void addKey(Keys &keys, std::string_view line) {
    const std::size_t colon = line.find(':');
    if (colon != line.npos)
        keys.emplace(trimmed(line.substr(0, colon)), trimmed(line.substr(colon + 1)));
}

template <class Number>
Number required(const Keys &keys, const std::string &key, const std::string &path) {
    const auto found = keys.find(key);
    if (found == keys.end())
        fail(path, "the line \"" + key + "\" is missing");
    const std::optional<Number> number = numberOf<Number>(found->second);
    if (!number)
        fail(path, "the value of \"" + key + "\" is no number: " + found->second);
    return *number;
}

std::optional<float> optional(const Keys &keys, const std::string &key) {
    const auto found = keys.find(key);
    return found == keys.end() ? std::nullopt : numberOf<float>(found->second);
}

/// The rows of the file run along x, the nodes of a grid along y.
std::vector<float> transposedValues(std::string_view text, int numX, int numY, const std::string &path) {
    const std::size_t count = static_cast<std::size_t>(numX) * numY;
    // A count that the text cannot hold is refused before memory is asked for: a value takes two characters.
    if (count > text.size() / 2 + 1)
        fail(path, "fewer values than nx times ny");
    std::vector<float> values(count);
    for (std::size_t n = 0; n < count; ++n) {
        const std::string_view word = nextWord(text);
        if (word.empty())
            fail(path, "only " + std::to_string(n) + " of " + std::to_string(count) + " values");
        const std::optional<float> value = numberOf<float>(word);
        if (!value)
            fail(path, "not a number among the values: " + std::string(word));
        values[n % numX * numY + n / numX] = *value;
    }
    if (!nextWord(text).empty())
        fail(path, "more values than nx times ny");
    return values;
}

/// What an `array:` line states behind its key.
struct ArrayLine {
    std::string name, type;
    std::size_t components = 0, count = 0, offset = 0;
};

ArrayLine parseArrayLine(std::string_view line, const std::string &path) {
    ArrayLine array;
    array.name = nextWord(line);
    array.type = nextWord(line);
    for (std::size_t *const number : {&array.components, &array.count, &array.offset}) {
        const std::optional<std::size_t> value = numberOf<std::size_t>(nextWord(line));
        if (!value)
            fail(path, "the line of array \"" + array.name + "\" is incomplete");
        *number = *value;
    }
    if (array.type != "float32" && array.type != "int32")
        fail(path, "array \"" + array.name + "\" is of unknown type " + array.type);
    return array;
}

RawArray arrayFrom(const std::string &bytes, const ArrayLine &line, const std::string &path) {
    constexpr std::size_t most = 1000; // numbers an entry
    const std::size_t available = line.offset > bytes.size() ? 0 : (bytes.size() - line.offset) / 4;
    if (line.components == 0 || line.components > most || line.count > available / line.components)
        fail(path, "array \"" + line.name + "\" does not fit into the raw file");
    RawArray array;
    array.components = static_cast<int>(line.components);
    const auto *const first = reinterpret_cast<const unsigned char *>(bytes.data()) + line.offset;
    for (std::size_t n = 0; n < line.components * line.count; ++n) {
        const unsigned char *const b = first + 4 * n;
        const std::uint32_t bits = b[0] | b[1] << 8 | b[2] << 16 | std::uint32_t{b[3]} << 24;
        if (line.type == "float32")
            array.floats.push_back(std::bit_cast<float>(bits));
        else
            array.ints.push_back(std::bit_cast<std::int32_t>(bits));
    }
    return array;
}

std::vector<int> parseDims(const Keys &keys, const std::string &path) {
    std::vector<int> dims;
    const auto found = keys.find("dims");
    std::string_view text = found == keys.end() ? std::string_view() : found->second;
    for (std::string_view word = nextWord(text); !word.empty(); word = nextWord(text)) {
        const std::optional<int> size = numberOf<int>(word);
        if (!size || *size < 1)
            fail(path, "the value of \"dims\" is not a list of sizes: " + found->second);
        dims.push_back(*size);
    }
    return dims;
}

/// Splits a line of a table at its commas.
std::vector<std::string> valuesOf(std::string_view line) {
    std::vector<std::string> values;
    for (bool isLast = false; !isLast;) {
        const std::size_t comma = line.find(',');
        isLast = comma == line.npos;
        values.emplace_back(trimmed(line.substr(0, comma)));
        line.remove_prefix(isLast ? line.size() : comma + 1);
    }
    return values;
}

} // namespace

GridFile readGridFile(const std::string &path) {
    const std::string content = contentOf(path);
    std::string_view text = content;
    Keys keys;
    while (text.starts_with('#'))
        addKey(keys, nextLine(text).substr(1));
    GridFile grid;
    grid.numX = required<int>(keys, "nx", path);
    grid.numY = required<int>(keys, "ny", path);
    if (grid.numX < 2 || grid.numY < 2)
        fail(path, "a grid has at least 2 x 2 nodes");
    grid.xmin = required<float>(keys, "x0", path);
    grid.ymin = required<float>(keys, "y0", path);
    grid.xmax = grid.xmin + static_cast<float>(grid.numX - 1) * required<float>(keys, "dx", path);
    grid.ymax = grid.ymin + static_cast<float>(grid.numY - 1) * required<float>(keys, "dy", path);
    grid.minimum = optional(keys, "min").value_or(grid.minimum);
    grid.maximum = optional(keys, "max").value_or(grid.maximum);
    grid.missing = optional(keys, "missing");
    grid.values = transposedValues(text, grid.numX, grid.numY, path);
    return grid;
}

RawFile readRawFile(const std::string &path) {
    const std::string header = contentOf(path);
    RawFile file;
    std::vector<ArrayLine> lines;
    for (std::string_view text = header; !text.empty();) {
        const std::string_view line = trimmed(nextLine(text));
        if (line.starts_with("array:"))
            lines.push_back(parseArrayLine(line.substr(6), path));
        else if (!line.starts_with('#'))
            addKey(file.keys, line);
    }
    file.dims = parseDims(file.keys, path);
    const auto raw = file.keys.find("raw_file");
    if (raw == file.keys.end())
        fail(path, "the line \"raw_file\" is missing");
    const std::string bytes = contentOf((std::filesystem::path(path).parent_path() / raw->second).string());
    for (const ArrayLine &line : lines)
        file.arrays[line.name] = arrayFrom(bytes, line, path);
    return file;
}

std::vector<std::string> TableFile::texts(const std::string &name) const {
    const auto found = std::find(names.begin(), names.end(), name);
    if (found == names.end())
        fail(path, "there is no column \"" + name + "\"");
    std::vector<std::string> column;
    for (const std::vector<std::string> &row : rows)
        column.push_back(row[found - names.begin()]);
    return column;
}

std::vector<float> TableFile::numbers(const std::string &name) const {
    const auto numberFrom = [&](const std::string &text) {
        const std::optional<float> number = numberOf<float>(text);
        if (!number)
            fail(path, "not a number in column \"" + name + "\": " + text);
        return *number;
    };
    const std::vector<std::string> column = texts(name);
    std::vector<float> values(column.size());
    std::transform(column.begin(), column.end(), values.begin(), numberFrom);
    return values;
}

TableFile readTableFile(const std::string &path) {
    const std::string content = contentOf(path);
    TableFile table;
    table.path = path;
    Keys keys;
    int lineNumber = 0;
    for (std::string_view text = content; !text.empty();) {
        const std::string_view line = trimmed(nextLine(text));
        ++lineNumber;
        if (line.starts_with('#'))
            addKey(keys, line.substr(1));
        else if (table.names.empty() && !line.empty())
            table.names = valuesOf(line);
        else if (!line.empty())
            table.rows.push_back(valuesOf(line));
        if (!table.rows.empty() && table.rows.back().size() != table.names.size())
            fail(path, "line " + std::to_string(lineNumber) + " has not " +
                           std::to_string(table.names.size()) + " values but " +
                           std::to_string(table.rows.back().size()));
    }
    if (table.names.empty())
        fail(path, "the line of column names is missing");
    for (const std::string &name : table.names)
        if (std::count(table.names.begin(), table.names.end(), name) > 1)
            fail(path, "two columns are named \"" + name + "\"");
    table.missing = optional(keys, "missing");
    return table;
}

} // namespace oravane
