#ifndef ORAVANE_TOOLS_DATAFILE_H
#define ORAVANE_TOOLS_DATAFILE_H

#include <limits>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace oravane {

/// A regular grid of values in the plane, as the files `NAME.txt` of examples/data hold it.
///
/// The text starts with lines `# key: value`, of which `nx ny x0 y0 dx dy` must be there, and `min max
/// missing` may be. Then come ny rows of nx numbers, the first row at y0.
struct GridFile {
    int numX = 0; ///< at least 2
    int numY = 0; ///< at least 2
    float xmin = 0.0f;
    float ymin = 0.0f;
    float xmax = 0.0f; ///< xmin + (numX - 1) * dx
    float ymax = 0.0f;
    /// numX * numY values in the node order of the library's grids: node (i, j) is at i * numY + j.
    std::vector<float> values;
    float minimum = std::numeric_limits<float>::quiet_NaN(); ///< as the file states it, NaN when it does not
    float maximum = std::numeric_limits<float>::quiet_NaN(); ///< the same
    std::optional<float> missing;                            ///< the value that stands for "no data"
};

/// Throws `std::runtime_error` with one line that names the file and the fault: no such file, a key missing
/// or no number, too few or too many values, words among the values.
GridFile readGridFile(const std::string &path);

/// One array of a pair `NAME.hdr`, `NAME.raw`.
struct RawArray {
    int components = 0;        ///< numbers an entry; they are adjacent
    std::vector<float> floats; ///< filled for `float32`
    std::vector<int> ints;     ///< filled for `int32`
};

/// The lines `key: value` of a `.hdr` file, and the arrays that its `array:` lines name.
struct RawFile {
    std::vector<int> dims; ///< of `dims:`, empty when there is none; the first index runs fastest
    std::map<std::string, std::string> keys;
    std::map<std::string, RawArray> arrays;
};

/// `path` is that of the `.hdr` file; the other is named by its `raw_file:` line and stands beside it. Throws
/// like `readGridFile`.
RawFile readRawFile(const std::string &path);

/// A table of the files `NAME.csv` of examples/data: lines that begin with `#` are comments, of which `#
/// missing: value` may name the value that stands for "no data"; then one line of column names, then the
/// rows. Commas stand between values only. What a column holds (numbers, dates, words) is for the reader to
/// know.
struct TableFile {
    std::string path; ///< for the message of a refusal
    std::vector<std::string> names;
    std::vector<std::vector<std::string>> rows; ///< as many texts each as there are names
    std::optional<float> missing;

    /// Column `name` as it stands in the file. Throws when there is none.
    std::vector<std::string> texts(const std::string &name) const;

    /// Column `name` as numbers, missing ones as the file has them. Throws when there is no such column, or
    /// when a value in it is no number.
    std::vector<float> numbers(const std::string &name) const;
};

/// Throws like `readGridFile`, also when a row has too few or too many values, or two columns share a name.
TableFile readTableFile(const std::string &path);

} // namespace oravane

#endif
