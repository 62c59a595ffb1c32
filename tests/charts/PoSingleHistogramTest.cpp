#include <oravane/PoSingleHistogram.h>

#include "Drawn.h"

#include <oravane/PbLinearDataMapping.h>
#include <oravane/PbNumericDisplayFormat.h>
#include <oravane/PoMiscTextAttr.h>
#include <oravane/PoNumericDisplayFormat.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoText3.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using Kit = PoSingleHistogram;
using Strings = std::vector<std::string>;

struct Scene : test::KitScene<Kit> {
    explicit Scene(const std::vector<float> &values, const std::vector<const char *> &names = {}) {
        kit->value.setValues(0, static_cast<int>(values.size()), values.data());
        for (const char *name : names)
            kit->name.set1Value(kit->name.getNum(), name);
    }
    SbMatrix toData() const { return part<SoMatrixTransform>("transform")->matrix.getValue(); }
    /// The bars as an axis in the same domain sees them.
    std::vector<SbBox2f> bars() const {
        const auto *bar = part("bar");
        const auto *points = static_cast<SoCoordinate3 *>(bar->getChild(bar->getNumChildren() - 2));
        std::vector<SbBox2f> boxes(static_cast<std::size_t>(points->point.getNum() / 4));
        for (int k = 0; k < points->point.getNum(); ++k) {
            SbVec3f point;
            toData().multVecMatrix(points->point[k], point);
            EXPECT_EQ(point[2], 0);
            boxes[k / 4].extendBy(SbVec2f(point[0], point[1]));
        }
        return boxes;
    }
    Strings texts(const char *name) const {
        Strings result;
        for (int k = 0; part(name) && k < part(name)->getNumChildren(); ++k) {
            const auto *label = dynamic_cast<SoGroup *>(part(name)->getChild(k));
            if (!label) // a polygon offset
                continue;
            result.emplace_back(static_cast<SoText3 *>(label->getChild(1))->string[0].getString());
        }
        return result;
    }
    /// The box of the last text, in the space of its bar.
    SbBox3f textBox(const char *name = "valueText") const {
        const test::Ref<SoSeparator> alone(new SoSeparator);
        alone->addChild(part<SoNode>((name + std::string("App.font")).c_str()));
        alone->addChild(part(name)->getChild(part(name)->getNumChildren() - 1));
        return test::boundingBox(alone.get());
    }
};

struct Space {
    const char *name;
    Kit::BarSpaceType type;
    float value; ///< in slots, as is the width
    double width;
};

void expectBars(const SbVec2f &sides, const SbVec2f &start, int axis, double direction, const Space &space) {
    const int up = 1 - axis;
    const double slot = 0.5 * sides[axis], exactness = 2e-6;
    const float low = start[up];
    PbDomain domain(0, 0, sides[0], sides[1], PbDomain::BBOX_AS_GIVEN);
    const Scene scene({low + sides[up], low, low - 3 * sides[up]});
    scene.kit->start = start;
    scene.kit->end = static_cast<float>(start[axis] + direction * 3 * slot);
    scene.kit->type = axis;
    scene.kit->barSpaceType = space.type;
    scene.kit->barSpaceValue = static_cast<float>(space.value * (space.type == Kit::FIXED_SPACE ? slot : 1));
    scene.kit->setDomain(&domain);
    scene.kit->valueFontSize = 0.06f;
    scene.traverse();
    const std::vector<SbBox2f> bars = scene.bars();
    ASSERT_EQ(bars.size(), 3U);
    for (int i = 0; i < 3; ++i) {
        const SbVec2f min = bars[i].getMin(), max = bars[i].getMax();
        const double middle = start[axis] + direction * (i + 0.5) * slot;
        EXPECT_NEAR((min[axis] + max[axis]) / 2, middle, exactness * sides[axis]);
        EXPECT_NEAR(max[axis] - min[axis], space.width * slot, exactness * sides[axis]);
        EXPECT_NEAR(min[up], std::min(scene.kit->value[i], low), exactness * sides[up]);
        EXPECT_NEAR(max[up], std::max(scene.kit->value[i], low), exactness * sides[up]);
    }
    const SbMatrix letters = scene.toData().multRight(domain.getMatrix());
    EXPECT_NEAR(letters[0][0], letters[1][1], 1e-6 * letters[0][0]) << "they keep their shape";
    EXPECT_FLOAT_EQ(scene.part<SoFont>("valueTextApp.font")->size.getValue(), 0.06f * sides[0]);
}

TEST(PoSingleHistogram, BarsEndAtTheirValuesInEveryDomain) {
    for (const Space &space :
         {Space{"relative", Kit::REL_SPACE, 0.25f, 0.75}, Space{"touching", Kit::REL_SPACE, 0, 1},
          Space{"overlapping", Kit::REL_SPACE, -0.5f, 1.5}, Space{"fixed", Kit::FIXED_SPACE, 0.4f, 0.6},
          Space{"too wide", Kit::FIXED_SPACE, 1.5f, 0}, Space{"negative", Kit::FIXED_SPACE, -1, 1},
          Space{"NaN", Kit::REL_SPACE, test::NOT_A_NUMBER, 1}})
        for (const SbVec2f &sides : {SbVec2f(1, 1), SbVec2f(12, 1e5f), SbVec2f(1e5f, 0.1f)})
            for (const SbVec2f &part : {SbVec2f(0, 0), SbVec2f(2, 5)})
                for (const double direction : {1.0, -1.0})
                    for (const int axis : {0, 1}) {
                        SCOPED_TRACE(std::string(space.name) + " in " + std::to_string(sides[0]) + " from " +
                                     std::to_string(part[0]) + ", axis " + std::to_string(axis));
                        const SbVec2f start(part[0] * sides[0], part[1] * sides[1]);
                        expectBars(sides, start, axis, direction, space);
                    }
}

/// `sign` tells the side of the bar along `axis`, 0 its middle. The box of a text tells its place, whatever
/// the alignment by which it came there.
void expectText(int position, int axis, int sign, bool isInside, int path, float value) {
    SCOPED_TRACE(std::to_string(position) + " on path " + std::to_string(path));
    constexpr float SIZE = 0.05f;
    const Scene scene({value});
    scene.kit->valuePosition = position;
    scene.kit->valuePath = path;
    scene.kit->valueFontSize = SIZE;
    scene.traverse();
    EXPECT_EQ(scene.part("valueText")->getNumChildren(), isInside ? 2 : 1) << "a polygon offset on bars";
    const SbBox3f text = scene.textBox();
    const SbBox2f bar = scene.bars()[0];
    EXPECT_NEAR(text.getCenter()[1 - axis], bar.getCenter()[1 - axis], 0.1 * SIZE);
    if (sign == 0) {
        EXPECT_NEAR(text.getCenter()[axis], bar.getCenter()[axis], 0.1 * SIZE);
        return;
    }
    const float border = (sign > 0 ? bar.getMax() : bar.getMin())[axis],
                edge = ((sign > 0) == isInside ? text.getMax() : text.getMin())[axis];
    const float away = static_cast<float>(isInside ? -sign : sign);
    // Texts lie half a capital off, and with their descenders where these are towards the border.
    const SbVec2f letterTop[] = {{0, 1}, {0, -1}, {-1, 0}, {1, 0}};
    const bool isBelow = letterTop[path][axis] * away > 0;
    EXPECT_NEAR((edge - border) * away / SIZE, isBelow ? 0.325 + 0.28 : 0.325, 0.07);
}

TEST(PoSingleHistogram, TextsLieAtTheirSideOfTheBarOnEveryPath) {
    for (const int path : {Kit::PATH_RIGHT, Kit::PATH_LEFT, Kit::PATH_UP, Kit::PATH_DOWN})
        for (const float value : {0.7f, -0.7f}) {
            for (const bool isInside : {false, true}) {
                expectText(Kit::POS_TOP_OUT + isInside, 1, 1, isInside, path, value);
                expectText(Kit::POS_BOTTOM_OUT + isInside, 1, -1, isInside, path, value);
                expectText(Kit::POS_RIGHT_OUT + isInside, 0, 1, isInside, path, value);
                expectText(Kit::POS_LEFT_OUT + isInside, 0, -1, isInside, path, value);
            }
            expectText(Kit::POS_CENTER, 0, 0, true, path, value);
        }
    for (const Kit::Type type : {Kit::X, Kit::Y}) {
        const Scene scene({0.5f}, {"name"});
        scene.kit->type = type;
        scene.traverse();
        const int axis = type == Kit::X ? 1 : 0;
        EXPECT_GT(scene.textBox().getMin()[axis], 0.5f);
        EXPECT_LT(scene.textBox("nameText").getMax()[axis], 0);
    }
}

TEST(PoSingleHistogram, TextsTellValuesAndNames) {
    struct Row {
        const char *name;
        std::vector<float> values;
        PbNumericDisplayFormat format;
        Strings expected;
        std::string withUnit = expected[0] + " t";
    };
    const PbNumericDisplayFormat automatic, inHundreds(PbNumericDisplayFormat::FLOAT_FORMAT, 2, 1);
    for (const Row &row :
         {Row{"of any distance", {1, 2, 3, 5}, automatic, {"1", "2", "3", "5"}},
          Row{"not to be rounded", {1.5f, 2.25f, 3.75f}, automatic, {"1.50", "2.25", "3.75"}},
          Row{"small", {0.02f, 0.05f}, automatic, {"0.02", "0.05"}},
          Row{"below zero", {-2500.5f, 12}, automatic, {"-2500.5", "12.0"}},
          Row{"far apart", {0.05f, 20000}, automatic, {"0.05", "20000.00"}},
          Row{"large", {3e9f, 1.5e9f}, automatic, {"3.0E9", "1.5E9"}},
          Row{"given", {2500, 12}, inHundreds, {"25.0E2", "0.1E2"}, "25.0 t"},
          Row{"missing", {1, test::NOT_A_NUMBER, -test::INFINITE, 2}, automatic, {"1", "", "", "2"}}}) {
        SCOPED_TRACE(row.name);
        const Scene scene(row.values);
        PbNumericDisplayFormat format(row.format);
        scene.kit->setFormat(&format);
        scene.kit->valueAddString = " t"; // not visible yet
        scene.traverse();
        EXPECT_EQ(scene.texts("valueText"), row.expected);
        scene.kit->valueAddStringVisibility = TRUE;
        scene.traverse();
        EXPECT_EQ(scene.texts("valueText")[0], row.withUnit);
    }
}

TEST(PoSingleHistogram, TextsFollowTheAttributesOfTheSceneAndTheirVisibility) {
    Scene scene({2500, 1000, 0}, {"one two", "", "b"});
    auto *format = new PoNumericDisplayFormat;
    auto *attributes = new PoMiscTextAttr;
    scene.root->insertChild(format, 0);
    scene.root->insertChild(attributes, 0);
    attributes->lineLength = 2;
    EXPECT_EQ(scene.rebuildsOf([&] { format->formatType = PbNumericDisplayFormat::INTEGER_FORMAT; }), 1);
    EXPECT_EQ(scene.rebuildsOf([&] { attributes->fontName = "Courier"; }), 1);
    scene.kit->nameFontSize = 0.5f;
    scene.kit->valueFontName = "Times-Roman";
    scene.traverse();
    EXPECT_EQ(scene.texts("valueText"), Strings({"2500", "1000", "0"}));
    EXPECT_EQ(scene.texts("nameText"), Strings({"one two", "", "b"})) << "in one line";
    const auto *valueFont = scene.part<SoFont>("valueTextApp.font");
    const auto *nameFont = scene.part<SoFont>("nameTextApp.font");
    EXPECT_TRUE(valueFont->name.getValue() == "Times-Roman" && valueFont->size.getValue() == 0.04f);
    EXPECT_TRUE(nameFont->name.getValue() == "Courier" && nameFont->size.getValue() == 0.5f);
    const auto shown = [&](const char *fields) {
        scene.kit->SoNode::set(fields);
        scene.traverse();
        return Strings({scene.part("valueText") ? "values" : "", scene.part("nameText") ? "names" : ""});
    };
    EXPECT_EQ(shown("name [ a, b ]"), Strings({"values", ""})) << "fewer than values";
    EXPECT_EQ(shown("name [ a, b, c ] valueVisibility VISIBILITY_OFF"), Strings({"", "names"}));
    EXPECT_EQ(shown("nameVisibility VISIBILITY_OFF"), Strings({"", ""}));
}

TEST(PoSingleHistogram, ColorsComeFromTheListOrTheMappingAndGoWithThem) {
    Scene scene({1, 2, 4});
    const auto redArea = [&] { return test::drawnBy(scene.root.get()).redArea; };
    scene.kit->valueVisibility = Kit::VISIBILITY_OFF;
    const double perValue = 0.25; // the area of a bar of value 1
    EXPECT_NEAR(redArea(), 7 * perValue * 0.8, 1e-6) << "one colour for three values: that of the scene";
    const SbColor reds[] = {{0, 0, 0}, {0.5f, 0, 0}, {1, 0, 0}};
    scene.kit->color.setValues(0, 3, reds);
    EXPECT_NEAR(redArea(), (0.5 * 2 + 4) * perValue, 1e-6);
    const std::string file = test::written(scene.kit);
    EXPECT_EQ(file.find("Material"), std::string::npos) << "generated: " << file;
    {
        PbLinearDataMapping mapping;
        mapping.setValues(0, SbColor(0, 0, 0), 0, 4, SbColor(1, 0, 0), 1);
        mapping.enableTransparency(1);
        scene.kit->setDataMapping(&mapping);
        EXPECT_EQ(scene.rebuildsOf([&] { mapping.touch(); }), 0) << "not in use";
        scene.kit->coloring = Kit::DATA_MAPPING;
        EXPECT_NEAR(redArea(), (0.25 + 0.5 * 2 + 4) * perValue, 1e-6);
        EXPECT_EQ(scene.part<SoMaterial>("barApp.material")->transparency[1], 0.5f);
        EXPECT_EQ(scene.rebuildsOf([&] { mapping.touch(); }), 1);
    }
    EXPECT_NEAR(redArea(), 7 * perValue * 0.8, 1e-6) << "the mapping is gone";
    EXPECT_FALSE(scene.part<SoNode>("barApp.material"));
    EXPECT_EQ(scene.part("bar")->getNumChildren(), 2);
    scene.kit->set("barApp.material { diffuseColor 0.1 0 0 }");
    scene.kit->barSpaceValue = 0;
    EXPECT_NEAR(redArea(), 7 / 3.0 * 0.1, 1e-6) << "a material of the program stays";
    EXPECT_NE(test::written(scene.kit).find("Material"), std::string::npos);
    scene.kit->coloring = Kit::COLOR_LIST;
    scene.traverse();
    scene.kit->color.setNum(1);
    const test::Ref<SoNode> copy(scene.kit->copy());
    EXPECT_NEAR(test::drawnBy(copy.get()).redArea, 7 / 3.0 * 0.8, 1e-6) << "stale colours are not copied";
}

TEST(PoSingleHistogram, FilesHoldTheFieldsByTheirNamesAndNothingGenerated) {
    const float values[] = {1, 5};
    const char *const names[] = {"a", nullptr};
    const test::Ref<SoNode> kit(new Kit(SbVec2f(0, 2), 1, Kit::Y, 2, values, names));
    kit->SoNode::set("valuePosition POS_LEFT_IN namePath PATH_UP barSpaceType FIXED_SPACE "
                     "coloring DATA_MAPPING nameVisibility VISIBILITY_ON");
    const SbBox3f box = test::boundingBox(kit.get());
    const std::string file = test::written(kit.get());
    for (const char *text :
         {"start 0 2", "type Y", "value [ 1, 5 ]", "name [ \"a\",\n      \"\" ]", "POS_LEFT_IN"})
        EXPECT_NE(file.find(text), std::string::npos) << text << file;
    for (const char *text : {"end", "Font", "Coordinate3", "MatrixTransform"})
        EXPECT_EQ(file.find(std::string("\n  ") + text), std::string::npos) << text << file;
    EXPECT_EQ(test::boundingBox(test::readBack(file).get()), box);
    const test::Ref<Kit> cleared(new Kit(SbVec2f(0, 0), 1, Kit::X, 0, values, nullptr));
    EXPECT_TRUE(cleared->value.getNum() == 0 && cleared->value.isDefault() && cleared->start.isDefault());
}

TEST(PoSingleHistogram, WhatCannotBeDrawnIsLeftOut) {
    PbDomain wide(0, 0, 1e30f, 1e-5f, PbDomain::BBOX_AS_GIVEN);
    wide.setTransformType(PbDomain::SCALE_Y_FIXED);
    const auto expectDrawn = [](const Scene &scene, bool isDrawn) {
        scene.traverse();
        for (const char *name : {"bar", "valueText", "nameText"})
            EXPECT_EQ(scene.part(name) != nullptr, isDrawn) << name;
        const SbBox3f box = test::boundingBox(scene.root.get());
        for (int k = 0; isDrawn && k < 3; ++k)
            EXPECT_TRUE(std::isfinite(box.getMin()[k]) && std::isfinite(box.getMax()[k]));
    };
    for (const auto &[fields, isDrawn] :
         {std::pair("start 1 1", true),
          {"start 3e38 0 end -3e38", true},
          {"value [ ]", false},
          {"end 1e9 barSpaceValue 1e38", false},
          {"start 0 -3e38 value [ 3e38, -3e38 ]", true},
          {"type Y value [ 3e38, 1 ]", true},
          {"valueFontSize 1e38 nameFontSize -1", true},
          {"type 7 valuePosition 99 valuePath -3 namePath 77 namePosition -8", true}})
        for (PbDomain *domain : {static_cast<PbDomain *>(nullptr), &wide}) {
            SCOPED_TRACE(fields);
            const Scene scene({1, 2}, {"a", "b"});
            expectDrawn(scene, true);
            EXPECT_TRUE(scene.kit->SoNode::set(fields));
            scene.kit->setDomain(domain);
            expectDrawn(scene, isDrawn);
        }
    for (const float bad : {test::NOT_A_NUMBER, -test::INFINITE})
        for (const int k : {0, 1, 2}) {
            const Scene scene({1, 2}, {"a", "b"});
            scene.kit->start = SbVec2f(k == 0 ? bad : 0, k == 1 ? bad : 0);
            scene.kit->end = k == 2 ? bad : 1;
            expectDrawn(scene, false);
        }
}

} // namespace
