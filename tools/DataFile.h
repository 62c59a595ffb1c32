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

} // namespace oravane

#endif
