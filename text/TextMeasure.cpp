#include "text/TextMeasure.h"

#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoText3.h>

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <utility>

namespace oravane {

namespace {

/// A line of size 1: from x = 0 to its width, its letters from the bottom to the top.
struct LineBox {
    float width = 0, bottom = 0, top = 0;
    bool isEmpty = true;
};

/// Lines by key, of which the last ones used are kept: between one and two times as many as `kGeneration`.
class Memory {
public:
    const LineBox *find(const std::string &key) {
        if (const auto young = m_young.find(key); young != m_young.end())
            return &young->second;
        const auto old = m_old.find(key);
        if (old == m_old.end())
            return nullptr;
        const LineBox box = old->second;
        return &keep(key, box);
    }

    const LineBox &keep(const std::string &key, const LineBox &box) {
        if (m_young.size() == kGeneration)
            m_old = std::exchange(m_young, {});
        return m_young.insert_or_assign(key, box).first->second;
    }

private:
    static constexpr std::size_t kGeneration = 32768;
    std::unordered_map<std::string, LineBox> m_young, m_old;
};

/// Measures with a text of one line: of several, the toolkit takes the height of the lines, and infinity for
/// an empty one, into a box that is then none of theirs.
class Measure {
public:
    Measure() {
        m_root->ref();
        m_root->addChild(m_font);
        m_root->addChild(m_text);
        m_font->size = 1;
    }

    LineBox lineBox(const SbName &fontName, std::string_view line) {
        m_key.assign(fontName.getString(), fontName.getLength() + 1);
        m_key += line;
        if (const LineBox *known = m_memory.find(m_key))
            return *known;
        m_font->name = fontName;
        m_text->string = m_key.c_str() + fontName.getLength() + 1;
        m_action.apply(m_root);
        const SbBox3f box = m_action.getBoundingBox();
        LineBox result;
        if (!box.isEmpty())
            result = {box.getMax()[0], box.getMin()[1], box.getMax()[1], false};
        return m_memory.keep(m_key, result);
    }

private:
    SoGroup *m_root = new SoGroup;
    SoFont *m_font = new SoFont;
    SoText3 *m_text = new SoText3;
    SoGetBoundingBoxAction m_action{SbViewportRegion()};
    Memory m_memory;
    std::string m_key;
};

/// Never deleted: at the end of the program the toolkit may go before it.
Measure *measure = nullptr;

/// Where a line starts that stands at the origin, in widths of the line.
float startOf(int justification) {
    if (justification == SoText3::LEFT)
        return 0;
    return justification == SoText3::RIGHT ? -1.0f : -0.5f;
}

} // namespace

SbName nameOf(const SbString &string) {
    constexpr int LONGEST = 1000;
    return string.getLength() > LONGEST ? string.getSubString(0, LONGEST - 1) : string;
}

SbBox3f textBox(const SbName &fontName, float fontSize, float spacing, int justification,
                const TextLines &lines) {
    if (!measure)
        measure = new Measure;
    SbBox3f box;
    if (!std::isfinite(fontSize) || !std::isfinite(spacing) || fontSize == 0)
        return box;
    float base = 0;
    lines.forEach([&](std::string_view text) {
        const LineBox line = measure->lineBox(fontName, text);
        if (!line.isEmpty) {
            const float left = startOf(justification) * line.width;
            // Both corners: a size below 0 turns them round.
            box.extendBy(fontSize * SbVec3f(left, base + line.bottom, 0));
            box.extendBy(fontSize * SbVec3f(left + line.width, base + line.top, 0));
        }
        base -= spacing;
    });
    return box;
}

void restartTextMeasure() {
    measure = nullptr;
}

} // namespace oravane
