#include "text/TextMeasure.h"

#include <oravane/SoAnnoText3.h>

#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/fields/SoMFString.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoGroup.h>

#include <unordered_map>
#include <utility>

namespace oravane {

namespace {

/// Values by key, of which the last ones used are kept: between one and two times as many as `kGeneration`.
class Memory {
public:
    const SbBox3f *find(const std::string &key) {
        if (const auto young = m_young.find(key); young != m_young.end())
            return &young->second;
        const auto old = m_old.find(key);
        if (old == m_old.end())
            return nullptr;
        const SbBox3f box = old->second;
        return &keep(key, box);
    }

    const SbBox3f &keep(const std::string &key, const SbBox3f &box) {
        if (m_young.size() == kGeneration)
            m_old = std::exchange(m_young, {});
        return m_young.insert_or_assign(key, box).first->second;
    }

private:
    static constexpr std::size_t kGeneration = 4096;
    std::unordered_map<std::string, SbBox3f> m_young, m_old;
};

class Measure {
public:
    Measure() {
        m_root->ref();
        m_root->addChild(m_font);
        m_root->addChild(m_text);
    }

    SbBox3f box(const SbString &fontName, float fontSize, int justification, const TextLines &lines) {
        m_key.assign(reinterpret_cast<const char *>(&fontSize), sizeof fontSize);
        m_key += static_cast<char>(justification);
        m_key.append(fontName.getString(), fontName.getLength() + 1);
        m_key += lines.packed();
        if (const SbBox3f *known = m_memory.find(m_key))
            return *known;
        m_font->name = SbName(fontName);
        m_font->size = fontSize;
        m_text->justification = justification;
        lines.fill(m_text->string);
        SoGetBoundingBoxAction action{SbViewportRegion()};
        action.apply(m_root);
        return m_memory.keep(m_key, action.getBoundingBox());
    }

private:
    SoGroup *m_root = new SoGroup;
    SoFont *m_font = new SoFont;
    SoAnnoText3 *m_text = new SoAnnoText3;
    Memory m_memory;
    std::string m_key;
};

/// Never deleted: at the end of the program the toolkit may go before it.
Measure *measure = nullptr;

} // namespace

void TextLines::add(std::string_view line) {
    (m_packed += line) += '\0';
    ++m_count;
}

void TextLines::fill(SoMFString &field) const {
    field.setNum(m_count);
    SbString *line = field.startEditing();
    for (const char *at = m_packed.data(); at != m_packed.data() + m_packed.size();) {
        *line = at;
        at += line++->getLength() + 1;
    }
    field.finishEditing();
}

SbBox3f textBox(const SbString &fontName, float fontSize, int justification, const TextLines &lines) {
    if (!measure)
        measure = new Measure;
    return measure->box(fontName, fontSize, justification, lines);
}

void restartTextMeasure() {
    measure = nullptr;
}

} // namespace oravane
