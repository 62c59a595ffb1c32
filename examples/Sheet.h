#ifndef ORAVANE_EXAMPLES_SHEET_H
#define ORAVANE_EXAMPLES_SHEET_H

#include "Gallery.h"

#include <oravane/PiText.h>

/// A sheet of charts: `panels` are put on it in millimetres from its lower left corner.
class Sheet {
public:
    /// At most 190 x 276, or 276 x 190; larger sheets are scaled down.
    Sheet(float width, float height);
    ~Sheet();
    Sheet(const Sheet &) = delete;
    Sheet &operator=(const Sheet &) = delete;

    SoSeparator *scene() const { return m_scene; }

    /// A part of the sheet for kits that draw in units of the data: `data` fills `place`, given in
    /// millimetres. Lengths that kits take as fractions of the scale are fractions of the longer side.
    SoSeparator *addPanel(const SbBox2f &place, const SbBox2f &data) const;

    /// A line of text, in millimetres.
    void addText(float x, float y, float size, const char *text,
                 PiText::HorAlignment alignment = PiText::HOR_LEFT) const;

    void write(oravane::Example &example, const std::string &name) const;

private:
    float m_width, m_height;
    SoSeparator *m_scene;
};

/// For `SoBaseKit::set`: an appearance part in one colour, with lines of one width.
std::string styled(const char *part, const char *color, float lineWidth = 1);

#endif
