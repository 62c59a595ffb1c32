#ifndef ORAVANE_TESTS_LEGENDS_LEGENDSCENE_H
#define ORAVANE_TESTS_LEGENDS_LEGENDSCENE_H

#include "Drawn.h"

#include <oravane/PoLegend.h>

#include <Inventor/SbBox2f.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoText3.h>

#include <string>
#include <vector>

namespace test {

/// A box as it is drawn; stripes of one gradient count as one box.
struct Box {
    SbBox2f place;
    SbColor first{-1, -1, -1}, last{-1, -1, -1}; ///< -1: of the scene
};

struct Text {
    std::string string;
    SbBox2f place;
};

inline SbBox2f flat(const SbBox3f &box) {
    return box.isEmpty() ? SbBox2f()
                         : SbBox2f(box.getMin()[0], box.getMin()[1], box.getMax()[0], box.getMax()[1]);
}

inline SbBox2f grown(const SbBox2f &box, float by) {
    return {box.getMin() - SbVec2f(by, by), box.getMax() + SbVec2f(by, by)};
}

inline bool contains(const SbBox2f &outer, const SbBox2f &inner) {
    return outer.intersect(inner.getMin()) && outer.intersect(inner.getMax());
}

/// A legend in a scene.
template <class Legend>
struct LegendScene : KitScene<Legend> {
    using KitScene<Legend>::kit;

    template <class Node>
    Node *in(const char *name) const {
        const SoGroup *group = this->part(name);
        for (int k = 0; group && k < group->getNumChildren(); ++k)
            if (auto *node = dynamic_cast<Node *>(group->getChild(k)))
                return node;
        return nullptr;
    }
    SbBox2f placeOf(const char *name) const {
        SoNode *node = this->template part<SoNode>(name);
        return node ? flat(boundingBox(node)) : SbBox2f();
    }
    /// The boxes that have borders.
    std::vector<Box> boxes() const {
        std::vector<Box> result;
        if (!this->part("boxBorder"))
            return result;
        const SbVec3f *point = in<SoCoordinate3>("boxBorder")->point.getValues(0);
        const SoMFInt32 &counts = in<SoLineSet>("boxBorder")->numVertices;
        for (int k = 0; k < counts.getNum(); point += counts[k++])
            if (counts[k] == 5) // four are ticks
                result.push_back({SbBox2f(point[0][0], point[0][1], point[2][0], point[2][1])});
        const auto *faces = in<SoCoordinate3>("box");
        const auto *material = in<SoMaterial>("box");
        for (int k = 0; faces && material && k + 3 < faces->point.getNum(); k += 4) {
            const SbVec3f middle = (faces->point[k] + faces->point[k + 2]) / 2;
            for (Box &box : result)
                if (box.place.intersect(SbVec2f(middle[0], middle[1]))) {
                    if (box.first[0] < 0)
                        box.first = material->diffuseColor[k];
                    box.last = material->diffuseColor[k + 2];
                }
        }
        return result;
    }
    std::vector<Text> texts(const char *name = "valueText") const {
        std::vector<Text> result;
        const SoGroup *group = this->part(name);
        for (int k = 0; group && k < group->getNumChildren(); ++k) {
            auto *label = dynamic_cast<SoGroup *>(group->getChild(k));
            if (!label)
                continue; // what brings the texts nearer
            const Ref<SoSeparator> measured(new SoSeparator);
            measured->addChild(this->template part<SoFont>((std::string(name) + "App.font").c_str()));
            measured->addChild(label);
            Text &text = result.emplace_back();
            const SoMFString &lines = static_cast<SoText3 *>(label->getChild(1))->string;
            for (int line = 0; line < lines.getNum(); ++line)
                text.string.append(line > 0 ? "\n" : "").append(lines[line].getString());
            text.place = flat(boundingBox(measured.get()));
        }
        return result;
    }
    std::string words() const {
        std::string result;
        for (const Text &text : texts())
            result += text.string + "|";
        return result;
    }
    float fontSize(const char *name = "valueTextApp.font") const {
        const auto *font = this->template part<SoFont>(name);
        return font ? font->size.getValue() : 0;
    }
    /// The kit's fields as in a file.
    void set(const std::string &fields) const { ASSERT_TRUE(kit->SoFieldContainer::set(fields.c_str())); }

    /// Texts lie in the legend, and cover neither each other nor boxes; the same goes for boxes.
    void expectClear() const {
        const SbBox2f frame = grown(placeOf("background"), 1e-4f);
        std::vector<Text> all = texts();
        for (const char *name : {"title", "multFactor"})
            for (const Text &text : texts(name))
                all.push_back(text);
        const std::vector<Box> drawn = boxes();
        const auto apart = [](const SbBox2f &a, const SbBox2f &b) {
            return a.isEmpty() || b.isEmpty() || !grown(a, -1e-4f).intersect(grown(b, -1e-4f));
        };
        for (std::size_t i = 0; i < all.size(); ++i) {
            EXPECT_TRUE(contains(frame, all[i].place)) << all[i].string;
            for (std::size_t k = 0; k < i; ++k)
                EXPECT_TRUE(apart(all[i].place, all[k].place)) << all[i].string << " on " << all[k].string;
            for (const Box &box : drawn)
                EXPECT_TRUE(apart(all[i].place, box.place)) << all[i].string << " on a box";
        }
        for (std::size_t i = 0; i < drawn.size(); ++i) {
            EXPECT_TRUE(contains(frame, drawn[i].place)) << "box " << i;
            for (std::size_t k = 0; k < i; ++k)
                EXPECT_TRUE(apart(drawn[i].place, drawn[k].place)) << "boxes " << i << " and " << k;
        }
    }
};

} // namespace test

#endif
