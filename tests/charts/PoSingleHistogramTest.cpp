#include <oravane/PoSingleHistogram.h>

#include "Drawn.h"

#include <oravane/PbLinearDataMapping.h>
#include <oravane/PbMiscTextAttr.h>
#include <oravane/PbNumericDisplayFormat.h>
#include <oravane/PoMiscTextAttr.h>
#include <oravane/PoNumericDisplayFormat.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoText3.h>
#include <Inventor/nodes/SoTransform.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace {

using Kit = PoSingleHistogram;
using Strings = std::vector<std::string>;

struct Scene : test::KitScene<Kit> {
    explicit Scene(const std::vector<float> &values = {}, const std::vector<const char *> &names = {}) {
        kit->value.setValues(0, static_cast<int>(values.size()), values.data());
        for (const char *name : names)
            kit->name.set1Value(kit->name.getNum(), name);
    }
    SbMatrix toData() const { return part<SoMatrixTransform>("transform")->matrix.getValue(); }
    SoNode *last(const char *name) const { return part(name)->getChild(part(name)->getNumChildren() - 1); }
    /// The bars as an axis in the same domain sees them.
    std::vector<SbBox2f> bars() const {
        std::vector<SbBox2f> boxes;
        const auto *bar = part("bar");
        const SoMFVec3f &points =
            static_cast<SoCoordinate3 *>(bar->getChild(bar->getNumChildren() - 2))->point;
        for (int k = 0; k < points.getNum(); ++k) {
            SbVec3f point;
            toData().multVecMatrix(points[k], point);
            EXPECT_EQ(point[2], 0);
            if (k % 4 == 0)
                boxes.emplace_back();
            boxes.back().extendBy(SbVec2f(point[0], point[1]));
        }
        return boxes;
    }
    Strings texts(const char *name) const {
        Strings result;
        for (int k = 0; part(name) && k < part(name)->getNumChildren(); ++k)
            result.emplace_back(
                static_cast<SoText3 *>(static_cast<SoGroup *>(part(name)->getChild(k))->getChild(1))
                    ->string[0]
                    .getString());
        return result;
    }
    /// The box of the first value's text, in the space of its bar.
    SbBox3f textBox() const {
        const test::Ref<SoSeparator> alone(new SoSeparator);
        alone->addChild(kit->getPart("valueTextApp.font", FALSE));
        alone->addChild(part("valueText")->getChild(0));
        return test::boundingBox(alone.get());
    }
};

TEST(PoSingleHistogram, BarsEndAtTheirValuesInEveryDomain) {
    struct Row {
        const char *name;
        Kit::BarSpaceType spaceType;
        float space; ///< in slots, as is the width
        double width;
    };
    const Row rows[] = {{"relative", Kit::REL_SPACE, 0.25f, 0.75},     {"touching", Kit::REL_SPACE, 0, 1},
                        {"overlapping", Kit::REL_SPACE, -0.5f, 1.5},   {"fixed", Kit::FIXED_SPACE, 0.4f, 0.6},
                        {"too wide", Kit::FIXED_SPACE, 1.5f, 0},       {"negative", Kit::FIXED_SPACE, -1, 1},
                        {"NaN", Kit::REL_SPACE, test::NOT_A_NUMBER, 1}};
    for (const SbVec2f &sides : {SbVec2f(1, 1), SbVec2f(12, 1e5f), SbVec2f(1e5f, 0.1f)})
        for (const SbVec2f &part : {SbVec2f(0, 0), SbVec2f(2, 5)})
            for (const double direction : {1.0, -1.0})
                for (const int axis : {0, 1})
                    for (const Row &row : rows) {
                        SCOPED_TRACE(std::string(row.name) + " " + std::to_string(sides[0]) + " " +
                                     std::to_string(part[0] * direction) + " along " + std::to_string(axis));
                        const int up = 1 - axis;
                        const SbVec2f start(part[0] * sides[0], part[1] * sides[1]);
                        const float low = start[up];
                        PbDomain domain(0, 0, sides[0], sides[1], PbDomain::BBOX_AS_GIVEN);
                        const Scene scene({low + sides[up], low, low - 3 * sides[up]});
                        const double slot = 0.5 * sides[axis];
                        scene.kit->start = start;
                        scene.kit->end = static_cast<float>(start[axis] + direction * 3 * slot);
                        scene.kit->type = axis == 0 ? Kit::X : Kit::Y;
                        scene.kit->barSpaceType = row.spaceType;
                        const bool isLength = row.spaceType == Kit::FIXED_SPACE;
                        scene.kit->barSpaceValue = static_cast<float>(row.space * (isLength ? slot : 1));
                        scene.kit->setDomain(&domain);
                        scene.traverse();
                        const std::vector<SbBox2f> bars = scene.bars();
                        ASSERT_EQ(bars.size(), 3U);
                        for (int i = 0; i < 3; ++i) {
                            const SbVec2f min = bars[i].getMin(), max = bars[i].getMax();
                            const double middle = start[axis] + direction * (i + 0.5) * slot;
                            EXPECT_NEAR((min[axis] + max[axis]) / 2, middle, 1e-6 * sides[axis]);
                            EXPECT_NEAR(max[axis] - min[axis], row.width * slot, 2e-6 * sides[axis]);
                            const float value = scene.kit->value[i];
                            EXPECT_NEAR(min[up], std::min(value, low), 2e-6 * sides[up]);
                            EXPECT_NEAR(max[up], std::max(value, low), 2e-6 * sides[up]);
                        }
                        const SbMatrix letters = scene.toData().multRight(domain.getMatrix());
                        EXPECT_NEAR(letters[0][0], letters[1][1], 1e-6 * letters[0][0]) << "of their shape";
                        EXPECT_FLOAT_EQ(scene.part<SoFont>("valueTextApp.font")->size.getValue(),
                                        0.04f * sides[0]);
                    }
}

// The box of a text tells its place, whatever the alignment by which it came there.
TEST(PoSingleHistogram, TextsLieAtTheirSideOfTheBarOnEveryPath) {
    constexpr float SIZE = 0.05f;
    struct Side {
        Kit::Position out, in, byType;
        int axis, sign;
    };
    for (const Side &side : {Side{Kit::POS_TOP_OUT, Kit::POS_TOP_IN, Kit::POS_TOP_OUT, 1, 1},
                             {Kit::POS_BOTTOM_OUT, Kit::POS_BOTTOM_IN, Kit::POS_BOTTOM_OUT, 1, -1},
                             {Kit::POS_RIGHT_OUT, Kit::POS_RIGHT_IN, Kit::POS_RIGHT_OUT, 0, 1},
                             {Kit::POS_LEFT_OUT, Kit::POS_LEFT_IN, Kit::POS_LEFT_OUT, 0, -1},
                             {Kit::POS_CENTER, Kit::POS_CENTER, Kit::POS_CENTER, 0, 0}})
        for (const bool isInside : {false, true})
            for (const auto path : {Kit::PATH_RIGHT, Kit::PATH_LEFT, Kit::PATH_UP, Kit::PATH_DOWN})
                for (const float value : {0.7f, -0.7f}) {
                    const Kit::Position position = isInside ? side.in : side.out;
                    SCOPED_TRACE(std::to_string(position) + " on path " + std::to_string(path));
                    const Scene scene({value});
                    scene.kit->valuePosition = position;
                    scene.kit->valuePath = path;
                    scene.kit->valueFontSize = SIZE;
                    scene.traverse();
                    const SbBox3f text = scene.textBox();
                    const SbVec3f middle = text.getCenter() / SIZE;
                    const SbBox2f bar = scene.bars()[0];
                    const SbVec2f barMiddle = bar.getCenter() / SIZE;
                    EXPECT_NEAR(middle[1 - side.axis], barMiddle[1 - side.axis], 0.1);
                    if (side.sign == 0) {
                        EXPECT_NEAR(middle[side.axis], barMiddle[side.axis], 0.1);
                        continue;
                    }
                    const bool isMaxOfBar = side.sign > 0, isMaxOfText = isMaxOfBar == isInside;
                    const float border = (isMaxOfBar ? bar.getMax() : bar.getMin())[side.axis],
                                edge = (isMaxOfText ? text.getMax() : text.getMin())[side.axis];
                    const float away = static_cast<float>(isInside ? -side.sign : side.sign);
                    // Texts lie half a capital off, and with their descenders if these are towards the bar.
                    const bool isAcross =
                        (path == Kit::PATH_RIGHT || path == Kit::PATH_LEFT) == (side.axis == 1);
                    const SbVec2f letterTop[] = {{0, 1}, {0, -1}, {-1, 0}, {1, 0}};
                    const bool isBelow = isAcross && letterTop[path][side.axis] * away > 0;
                    EXPECT_NEAR((edge - border) * away / SIZE, isBelow ? 0.325 + 0.28 : 0.325, 0.07);
                }
}

TEST(PoSingleHistogram, TextsTellValuesAndNames) {
    struct Row {
        const char *name;
        std::vector<float> values;
        PbNumericDisplayFormat format;
        Strings expected;
    };
    const PbNumericDisplayFormat automatic;
    for (const Row &row :
         {Row{"integers", {3, 1, 2}, automatic, {"3", "1", "2"}},
          Row{"thousands", {2500, 12000}, automatic, {"2.5E3", "12.0E3"}},
          Row{"of any distance", {1, 2, 3, 5}, automatic, {"1.0", "2.0", "3.0", "5.0"}},
          Row{"small", {0.02f, 0.05f}, automatic, {"20E-3", "50E-3"}},
          Row{"given",
              {2500, 12},
              PbNumericDisplayFormat(PbNumericDisplayFormat::FLOAT_FORMAT, 2, 1),
              {"25.0E2", "0.1E2"}},
          Row{"missing", {1, test::NOT_A_NUMBER, -test::INFINITE, 2}, automatic, {"1", "", "", "2"}}}) {
        SCOPED_TRACE(row.name);
        const Scene scene(row.values);
        PbNumericDisplayFormat format(row.format);
        scene.kit->setFormat(&format);
        scene.traverse();
        EXPECT_EQ(scene.texts("valueText"), row.expected);
        scene.kit->valueAddString = " t"; // not visible yet
        scene.traverse();
        EXPECT_EQ(scene.texts("valueText"), row.expected);
        scene.kit->valueAddStringVisibility = TRUE;
        scene.traverse();
        EXPECT_EQ(scene.texts("valueText")[0], row.expected[0] + " t");
    }
    const Scene scene({1, 2, 3}, {"one two", "", "b"});
    PbMiscTextAttr attributes;
    attributes.setLineLength(' ', 2);
    attributes.setFontName("Courier");
    scene.kit->setMiscTextAttr(&attributes);
    scene.kit->nameFontSize = 0.5f;
    scene.kit->valueFontName = "Times-Roman";
    scene.traverse();
    EXPECT_EQ(scene.texts("nameText"), Strings({"one two", "", "b"})) << "in one line";
    EXPECT_EQ(scene.part<SoFont>("nameTextApp.font")->name.getValue(), "Courier");
    EXPECT_EQ(scene.part<SoFont>("nameTextApp.font")->size.getValue(), 0.5f);
    EXPECT_EQ(scene.part<SoFont>("valueTextApp.font")->name.getValue(), "Times-Roman");
    scene.kit->name.deleteValues(2);
    scene.traverse();
    EXPECT_FALSE(scene.part("nameText")) << "fewer than values";
    EXPECT_EQ(scene.texts("valueText").size(), 3U);
    scene.kit->valueVisibility = Kit::VISIBILITY_OFF;
    scene.kit->name.setNum(3);
    scene.traverse();
    EXPECT_FALSE(scene.part("valueText"));
    EXPECT_TRUE(scene.part("nameText"));
    scene.kit->nameVisibility = Kit::VISIBILITY_OFF;
    scene.traverse();
    EXPECT_FALSE(scene.part("nameText"));
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

TEST(PoSingleHistogram, AttributesOfTheSceneServeUntilOwnOnesComeAndAgainBehindThem) {
    Scene scene({2500, 1000});
    auto *format = new PoNumericDisplayFormat;
    auto *text = new PoMiscTextAttr;
    scene.root->insertChild(format, 0);
    scene.root->insertChild(text, 0);
    const auto shown = [&] {
        scene.traverse();
        return scene.texts("valueText")[0] +
               scene.part<SoFont>("nameTextApp.font")->name.getValue().getString();
    };
    scene.kit->name.setNum(2);
    EXPECT_EQ(shown(), "2.5E3defaultFont");
    EXPECT_EQ(scene.rebuildsOf([&] { format->formatType = PbNumericDisplayFormat::INTEGER_FORMAT; }), 1);
    EXPECT_EQ(scene.rebuildsOf([&] { text->fontName = "Helvetica"; }), 1);
    EXPECT_EQ(shown(), "2500Helvetica");
    auto own = std::make_unique<PbNumericDisplayFormat>(PbNumericDisplayFormat::FLOAT_FORMAT, 0, 2);
    auto ownText = std::make_unique<PbMiscTextAttr>();
    ownText->setFontName("Courier");
    scene.kit->setFormat(own.get());
    scene.kit->setMiscTextAttr(ownText.get());
    EXPECT_EQ(shown(), "2500.00Courier");
    EXPECT_EQ(scene.rebuildsOf([&] { own.reset(); }), 1);
    EXPECT_EQ(scene.rebuildsOf([&] { ownText.reset(); }), 1);
    EXPECT_EQ(shown(), "2500Helvetica");
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
    Scene scene({1, 2}, {"a", "b"});
    const float nan = test::NOT_A_NUMBER, infinite = test::INFINITE;
    PbDomain wide(0, 0, 1e30f, 1e-5f, PbDomain::BBOX_AS_GIVEN);
    const struct {
        const char *fields;
        SbVec2f start;
        float end;
        bool isDrawn;
    } rows[] = {{"", {0, 0}, 1, true},
                {"", {nan, 0}, 1, false},
                {"", {0, infinite}, 1, false},
                {"", {0, 0}, nan, false},
                {"", {0, 0}, -infinite, false},
                {"", {3e38f, 0}, -3e38f, true},
                {"barSpaceValue 1e38", {0, 0}, 1e9f, false},
                {"", {1, 1}, 1, true},
                {"value [ ]", {0, 0}, 1, false},
                {"value [ 3e38, -3e38 ]", {0, -3e38f}, 1, true},
                {"type 7 valuePosition 99 valuePath -3 namePath 77 namePosition -8", {0, 0}, 1, true},
                {"valueFontSize 1e38 nameFontSize -1", {0, 0}, 1, true}};
    for (PbDomain *domain : {static_cast<PbDomain *>(nullptr), &wide})
        for (const auto &row : rows) {
            SCOPED_TRACE(std::string(row.fields) + std::to_string(row.start[0]) + std::to_string(row.end));
            scene.kit->setToDefaults();
            scene.kit->value.setValues(0, 2, std::data({1.0f, 2.0f}));
            scene.kit->name.setNum(2);
            scene.kit->start = row.start;
            scene.kit->end = row.end;
            scene.kit->SoNode::set(row.fields);
            scene.kit->setDomain(domain);
            scene.traverse();
            for (const char *name : {"bar", "valueText", "nameText"})
                EXPECT_EQ(scene.part(name) != nullptr, row.isDrawn) << name;
            EXPECT_TRUE(test::drawnBy(scene.root.get()).isFinite);
        }
}

} // namespace
