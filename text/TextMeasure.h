#ifndef ORAVANE_TEXT_TEXTMEASURE_H
#define ORAVANE_TEXT_TEXTMEASURE_H

#include <Inventor/SbBox3f.h>
#include <Inventor/SbString.h>

#include <string>
#include <string_view>

class SoMFString;

namespace oravane {

/// The lines of a text, in one piece of memory.
class TextLines {
public:
    void add(std::string_view line);
    int count() const { return m_count; }
    /// Each line followed by a null character.
    const std::string &packed() const { return m_packed; }
    /// Makes the lines the values of `field`.
    void fill(SoMFString &field) const;

private:
    std::string m_packed;
    int m_count = 0;
};

/// The box of a text in its own space, as `SoAnnoText3` and the front of `SoText3` show it with spacing 1;
/// empty when there are no letters. `justification` as the fields of these nodes have it.
///
/// Building letters is what costs: the boxes of some thousand texts last asked for are remembered.
SbBox3f textBox(const SbString &fontName, float fontSize, int justification, const TextLines &lines);

/// To be called when the toolkit has been started: nodes from an earlier start are not used any more.
void restartTextMeasure();

} // namespace oravane

#endif
