#ifndef ORAVANE_TESTS_AXES_AXISTEXTS_H
#define ORAVANE_TESTS_AXES_AXISTEXTS_H

#include "Drawn.h"

#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoText3.h>

namespace test {

/// A text of an axis in its local frame.
struct Text {
    std::string string;
    SbBox3f box;
    SbVec3f centre() const { return box.getCenter(); }
};

/// The texts of a part, of the size that its font node has.
template <class Kit>
std::vector<Text> textsOf(const KitScene<Kit> &scene, const std::string &part) {
    std::vector<Text> texts;
    const auto *group = scene.template part<SoGroup>(part.c_str());
    for (int i = 0; group && i < group->getNumChildren(); ++i) {
        const Ref<SoSeparator> root(new SoSeparator);
        root->addChild(scene.template part<SoFont>((part + "App.font").c_str()));
        root->addChild(group->getChild(i));
        SoSearchAction search;
        search.setType(SoText3::getClassTypeId());
        search.apply(group->getChild(i));
        const auto *text = static_cast<SoText3 *>(search.getPath()->getTail());
        texts.push_back({text->string[0].getString(), boundingBox(root.get())});
    }
    return texts;
}

template <class Kit>
std::vector<std::string> stringsOf(const KitScene<Kit> &scene, const char *part) {
    std::vector<std::string> strings;
    for (const Text &text : textsOf(scene, part))
        strings.push_back(text.string);
    return strings;
}

using Strings = std::vector<std::string>;

/// No two overlap, by more than the roundings of large coordinates.
inline void expectClear(const std::vector<Text> &texts, float slack = 0) {
    const auto overlap = [](const SbBox3f &a, const SbBox3f &b, int k) {
        return std::min(a.getMax()[k], b.getMax()[k]) - std::max(a.getMin()[k], b.getMin()[k]);
    };
    for (std::size_t i = 0; i < texts.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_FALSE(overlap(texts[i].box, texts[j].box, 0) > slack &&
                         overlap(texts[i].box, texts[j].box, 1) > slack)
                << texts[i].string << " and " << texts[j].string;
}

} // namespace test

#endif
