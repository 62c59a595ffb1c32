#ifndef ORAVANE_TOOLS_EXAMPLE_H
#define ORAVANE_TOOLS_EXAMPLE_H

#include <functional>
#include <string>
#include <vector>

namespace oravane {

/// What an example knows of the world outside: where its data is, and where its pages go.
class Example {
public:
    Example(std::string outFolder, std::string dataFolder, bool everyFormat = false);

    /// The path of a file of examples/data.
    std::string dataFile(const std::string &name) const;

    /// The path for a file to be written; `runExample` says at the end that it was.
    std::string outFile(const std::string &name);

    const std::vector<std::string> &outFiles() const { return m_outFiles; }

    /// Whether pages are wanted in each format and with each way of hiding, instead of one page and picture.
    bool everyFormat() const { return m_everyFormat; }

private:
    std::string m_outFolder, m_dataFolder;
    bool m_everyFormat;
    std::vector<std::string> m_outFiles;
};

/// The frame of each example program. Reads `--out DIR` (made when missing; default `out`), `--data DIR` and
/// `--every-format`, runs `body`, and names the files that were written. Text is drawn with the toolkit's
/// built-in font, so that a page is the same on every machine. Returns the exit status of `main`: 0, 1 after
/// one line on standard error when `body` threw or a file was not written, 2 for a wrong command line.
///
/// \code
///   int main(int argc, char **argv) {
///       return oravane::runExample(argc, argv, [](oravane::Example &example) {
///           const oravane::GridFile grid = oravane::readGridFile(example.dataFile("terrain.txt"));
///           ...
///           oravane::writePng(example.outFile("terrain.png"), renderer.render(scene, 800, 600));
///       });
///   }
/// \endcode
int runExample(int argc, char **argv, const std::function<void(Example &)> &body);

} // namespace oravane

#endif
