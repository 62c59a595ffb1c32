#ifndef ORAVANE_TEXT_TEXTMEASURE_H
#define ORAVANE_TEXT_TEXTMEASURE_H

#include <Inventor/SbBox3f.h>
#include <Inventor/SbName.h>
#include <Inventor/SbString.h>

#include <string>
#include <string_view>

namespace oravane {

/// The lines of a text, in one piece of memory.
class TextLines {
public:
    void add(std::string_view line) {
        (m_packed += line) += '\0';
        ++m_count;
    }
    int count() const { return m_count; }
    /// Calls `take` with each line, as text that ends in a null character.
    template <class Take>
    void forEach(Take take) const {
        for (const char *at = m_packed.data(); at != m_packed.data() + m_packed.size();) {
            const std::string_view line = at;
            take(line);
            at += line.size() + 1;
        }
    }

private:
    std::string m_packed; ///< each line followed by a null character
    int m_count = 0;
};

/// A string as a name, of a font or a node. The toolkit's memory for names has no room for one of some 65000
/// characters: what is longer than a name can be is cut.
SbName nameOf(const SbString &string);

/// The box of a text in its own space, as `SoAnnoText3` and the front of `SoText3` show it: of each line with
/// letters or blanks, its length by the height of its letters. Empty without such a line. `justification` as
/// the fields of these nodes have it.
///
/// Building letters is what costs: the boxes of the last thousands of lines are remembered, at any size.
SbBox3f textBox(const SbName &fontName, float fontSize, float spacing, int justification,
                const TextLines &lines);

/// To be called when the toolkit has been started: nodes from an earlier start are not used any more.
void restartTextMeasure();

} // namespace oravane

#endif
