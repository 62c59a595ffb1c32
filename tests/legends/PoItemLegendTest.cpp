#include <oravane/PoItemLegend.h>

#include "LegendScene.h"

#include <oravane/PbMiscTextAttr.h>
#include <oravane/PiText.h>
#include <oravane/PoDomain.h>
#include <oravane/PoMiscTextAttr.h>

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoPointSet.h>

#include <gtest/gtest.h>

namespace {

using test::Box;
using test::INFINITE;
using test::NOT_A_NUMBER;
using test::Text;

constexpr const char *CONTENT[] = {"background", "backgroundBorder", "box",  "boxBorder",
                                   "title",      "valueText",        "line", "marker"};

struct Scene : test::LegendScene<PoItemLegend> {
    explicit Scene(const std::string &fields = "") {
        kit->set("appearance.lightModel { model BASE_COLOR }");
        set("item [ \"Sand\", \"Clay and silt\", \"Rock\", \"Water\", \"Ice\" ] boxColor [ 1 0 0, 0 1 0, 0 0 "
            "1 ]" +
            fields);
        traverse();
    }
};

/// The width of the widest of these texts, in font sizes.
float widest(std::initializer_list<const char *> texts) {
    PiText text;
    text.setFont("defaultFont", 1);
    const std::vector<const char *> list(texts);
    int first = 0, second = 0;
    float width = 0, height = 0;
    text.getStringsSizes(list.data(), static_cast<int>(list.size()), first, second, width, height);
    return width;
}

TEST(PoItemLegend, NothingCoversAnythingInAnyArrangement) {
    int numTexts = 0;
    for (const char *place : {"end 1 1", "end 0.3 2", "start 4 1 end 0 0"})
        for (const char *columns : {"", "numColumns 2 ", "numColumns 3 incrementType HORIZONTAL_INCREMENT ",
                                    "numColumns 9 boxRatio 0.4 ", "numColumns 2 boxRatio 3"})
            for (const char *samples :
                 {"", "lineVisibility TRUE markerVisibility TRUE markerString [ \"abc\", \"+\" ] ",
                  "boxVisibility FALSE", "boxVisibility FALSE lineVisibility TRUE"})
                for (const char *texts :
                     {"valuePosition POS_RIGHT", "valuePosition POS_LEFT", "valuePosition POS_TOP",
                      "valuePosition POS_BOTTOM valueAddStringVisibility TRUE valueAddString \" m\""})
                    for (const char *titles :
                         {"titlePosition POS_TOP", "titlePosition POS_RIGHT titlePath PATH_UP",
                          "titlePosition POS_LEFT titlePath PATH_DOWN",
                          "titlePath PATH_LEFT titleFontSize 9"}) {
                        const std::string fields = std::string(" ") + place + " " + columns + " " + samples +
                                                   " " + texts + " titleVisibility VISIBILITY_ON " + titles +
                                                   " titleString \"Ground types\"";
                        SCOPED_TRACE(fields);
                        const Scene scene(fields);
                        // Letters that reach below their line are the margin's.
                        scene.expectClear();
                        EXPECT_GT(scene.fontSize(), 0);
                        numTexts += static_cast<int>(scene.texts().size());
                        ASSERT_FALSE(testing::Test::HasFailure());
                    }
    EXPECT_EQ(numTexts, 3 * 5 * 4 * 4 * 4 * 5);
}

TEST(PoItemLegend, FontSizeIsTheFitInHeightOrWidth) {
    const float column = widest({"Sand", "Clay and silt", "Rock", "Water", "Ice"});
    const std::string high =
        " marginType FIXED_MARGIN marginLeft 0 marginRight 0 marginBottom 0 marginTop 0 ";
    struct Row {
        const char *fields;
        float units; ///< of a height of 10
    };
    for (const Row &row : {
             Row{"end 99 10", 4 * 0.975f + 5 * 1.3f},
             {"end 99 10 valuePosition POS_LEFT", 4 * 0.975f + 5 * 1.3f},
             {"end 99 10 lineVisibility TRUE", 4 * 0.975f + 5 * 1.95f},
             {"end 99 10 lineVisibility TRUE markerVisibility TRUE", 4 * 0.975f + 5 * 2.275f},
             {"end 99 10 boxVisibility FALSE", 4 * 0.975f + 5 * 0.65f},
             {"end 99 10 boxVisibility FALSE valuePosition POS_TOP", 4 * 0.975f + 5 * 0.975f},
             {"end 99 10 numColumns 2", 2 * 0.975f + 3 * 1.3f},
             {"end 99 10 numColumns 4", 0.975f + 2 * 1.3f},
             {"end 999 10 numColumns 32767", 1.3f},
             {"end 99 10 numColumns -3", 4 * 0.975f + 5 * 1.3f},
             {"end 99 10 boxRatio 2", 4 * 0.975f + 5 * 1.95f},
             {"end 99 10 boxRatio -2", 4 * 0.975f + 5 * 1.3f},
         }) {
        const Scene scene(high + row.fields);
        EXPECT_NEAR(scene.fontSize(), 10 / row.units, 1e-4f) << row.fields;
        for (const Box &box : scene.boxes()) {
            const SbVec2f size = box.place.getSize();
            const float ratio = std::string(row.fields).ends_with("Ratio 2") ? 2 : 1;
            EXPECT_NEAR(size[1] / size[0], ratio, 1e-4f) << row.fields;
            EXPECT_NEAR(size[0] / scene.fontSize(), scene.part("line") ? 0.65f : 0.975f, 1e-4f);
        }
    }
    const Scene narrow(high + "boxVisibility FALSE end 3 99");
    EXPECT_NEAR(narrow.fontSize(), 3 / column, 1e-4f);
    const Scene twoColumns(high + "boxVisibility FALSE end 3 99 numColumns 2");
    EXPECT_NEAR(twoColumns.fontSize(), 3 / (column + 1.3f + widest({"Water", "Ice"})), 1e-4f);
}

TEST(PoItemLegend, CellsAreCountedDownColumnsOrAlongRows) {
    struct Row {
        const char *fields;
        std::vector<std::string> rows; ///< from above
    };
    for (const Row &row : {Row{"", {"Sand ", "Clay and silt ", "Rock ", "Water ", "Ice "}},
                           {" numColumns 2", {"Sand Water ", "Clay and silt Ice ", "Rock "}},
                           {" numColumns 2 incrementType HORIZONTAL_INCREMENT",
                            {"Sand Clay and silt ", "Rock Water ", "Ice "}},
                           {" numColumns 77", {"Sand Clay and silt Rock Water Ice "}}}) {
        const Scene scene(std::string(row.fields));
        const std::vector<Text> texts = scene.texts();
        const std::vector<Box> boxes = scene.boxes();
        ASSERT_EQ(texts.size(), 5u);
        ASSERT_EQ(boxes.size(), 5u);
        std::map<int, std::map<float, std::string>> found;
        for (std::size_t i = 0; i < 5; ++i) {
            const SbVec2f middle = boxes[i].place.getCenter();
            found[-static_cast<int>(std::lround(1000 * middle[1]))][middle[0]] = texts[i].string + " ";
            EXPECT_EQ(boxes[i].first, SbColor(i % 3 == 0, i % 3 == 1, i % 3 == 2)) << "entries go round";
            EXPECT_GT(texts[i].place.getMin()[0], boxes[i].place.getMax()[0]);
            EXPECT_NEAR(texts[i].place.getCenter()[1], middle[1], 0.2f * scene.fontSize());
        }
        std::vector<std::string> rows;
        for (const auto &[y, line] : found) {
            rows.emplace_back();
            for (const auto &[x, text] : line)
                rows.back() += text;
        }
        EXPECT_EQ(rows, row.rows) << row.fields;
    }
}

TEST(PoItemLegend, MarginsFallBackOnATwentiethOfTheSmallerSide) {
    struct Row {
        const char *fields;
        float left, right, bottom, top; ///< in a legend of 10 x 4
    };
    for (const Row &row : {Row{"", 0.5f, 0.5f, 0.2f, 0.2f},
                           {"marginLeft 0.3 marginTop 0.25", 3, 0.5f, 0.2f, 1},
                           {"marginLeft 0.3 marginRight 0.7 marginTop 0.25", 0.2f, 0.2f, 0.2f, 1},
                           {"marginLeft 0.3 marginBottom 9", 3, 0.5f, 0.2f, 0.2f},
                           {"marginLeft 0.3 marginBottom -9", 0.2f, 0.2f, 0.2f, 0.2f},
                           {"marginType FIXED_MARGIN marginLeft 4 marginRight 5.5", 4, 5.5f, 0.05f, 0.05f},
                           {"marginType FIXED_MARGIN marginLeft 4 marginRight 6", 0.2f, 0.2f, 0.2f, 0.2f},
                           {"marginType FIXED_MARGIN marginBottom 4", 0.2f, 0.2f, 0.2f, 0.2f}}) {
        for (const char *corners : {" start 1 2 end 11 6 ", " start 11 6 end 1 2 ", " start 1 6 end 11 2 "}) {
            SCOPED_TRACE(std::string(row.fields) + corners);
            // Two columns fill the width, and two rows the height.
            const Scene scene(
                "item [ \"a\", \"b\", \"c\", \"d\" ] numColumns 2 valueVisibility VISIBILITY_OFF" +
                std::string(corners) + row.fields);
            const SbBox2f place = scene.placeOf("box");
            const float slack = (1.3f - 0.975f) / 2 * scene.boxes()[0].place.getSize()[1] / 0.975f;
            EXPECT_NEAR(place.getMin()[0], 1 + row.left, 1e-4f);
            EXPECT_NEAR(place.getMax()[0], 11 - row.right, 1e-4f);
            EXPECT_NEAR(place.getMin()[1], 2 + row.bottom + slack, 1e-4f);
            EXPECT_NEAR(place.getMax()[1], 6 - row.top - slack, 1e-4f);
            EXPECT_EQ(scene.placeOf("background").getMin(), SbVec2f(1, 2));
            EXPECT_EQ(scene.placeOf("backgroundBorder").getMax(), SbVec2f(11, 6));
        }
    }
}

TEST(PoItemLegend, LongTitlesShrinkAndOthersKeepTheirSize) {
    const std::string title = " end 10 10 titleVisibility VISIBILITY_ON titleString ";
    const auto size = [&](const std::string &fields) {
        return Scene(title + fields).fontSize("titleApp.font");
    };
    EXPECT_FLOAT_EQ(size("Hg titleFontSize 0.5"), 0.5f);
    const Scene wide(title + "\"A title that is a good deal too long\" titleFontSize 2");
    EXPECT_NEAR(wide.texts("title")[0].place.getSize()[0], 0.95f * 9, 1e-3f) << "the whole length";
    const Scene high(title + "Hg titleFontSize 8");
    EXPECT_LE(high.texts("title")[0].place.getSize()[1], 0.5f * 9 + 1e-3f);
    const Scene aside(title + "\"Ground types\" titleFontSize 8 titlePosition POS_LEFT");
    EXPECT_NEAR(aside.texts("title")[0].place.getSize()[0], 0.5f * 9, 1e-3f);
    const Scene automatic(title + "Hg");
    EXPECT_NEAR(automatic.fontSize("titleApp.font"), 1.2f * automatic.fontSize(), 0.05f);
    EXPECT_EQ(size("Hg titleFontSize -3"), automatic.fontSize("titleApp.font"));
}

TEST(PoItemLegend, SamplesTakeEntriesByTheirIndex) {
    const Scene scene(" lineVisibility TRUE lineColor [ 1 0 0, 0 1 0 ] lineSize [ 0, 2, 2, -1 ] linePattern "
                      "[ 0xffff, 0xf0f0, 0xf0f0 ] markerVisibility TRUE markerSize [ 0, 0.01 ] markerString "
                      "[ \"o\", \"+\" ] markerColor [ 0 0 1 ]");
    struct Seen {
        std::vector<std::array<float, 3>> styles; ///< width (-1: of the scene), pattern, red
        std::vector<float> y;
    } seen;
    SoCallbackAction action;
    action.addLineSegmentCallback(
        SoLineSet::getClassTypeId(),
        [](void *data, SoCallbackAction *traversal, const SoPrimitiveVertex *a, const SoPrimitiveVertex *b) {
            auto &to = *static_cast<Seen *>(data);
            to.styles.push_back({traversal->getLineWidth(), static_cast<float>(traversal->getLinePattern()),
                                 static_cast<float>(test::redOf(traversal, a))});
            to.y.push_back(a->getPoint()[1]);
            EXPECT_EQ(a->getPoint()[1], b->getPoint()[1]);
        },
        &seen);
    const test::Ref<SoSeparator> lines(new SoSeparator);
    auto *style = new SoDrawStyle;
    style->lineWidth = 5;
    lines->addChild(style);
    lines->addChild(scene.part("line"));
    action.apply(lines.get());
    const std::vector<std::array<float, 3>> expected = {
        {5, 0xffff, 1}, {2, 0xf0f0, 0}, {2, 0xf0f0, 1}, {5, 0xffff, 0}, {5, 0xf0f0, 1}};
    EXPECT_EQ(seen.styles, expected);
    const std::vector<Box> boxes = scene.boxes();
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_NEAR(seen.y[i], boxes[i].place.getCenter()[1], 1e-5f);
    const SbBox2f lineSpan = scene.placeOf("line"),
                  markers = test::flat(test::boundingBox(scene.part("marker")));
    EXPECT_GT(lineSpan.getMin()[0], boxes[0].place.getMax()[0]);
    EXPECT_GT(markers.getMin()[0], lineSpan.getMax()[0]);
    EXPECT_GT(scene.texts()[0].place.getMin()[0], markers.getMax()[0]);
    EXPECT_NEAR(markers.getMin()[1], boxes[4].place.getMin()[1], 0.2f * scene.fontSize());
}

TEST(PoItemLegend, DotsHavePointSizes) {
    const Scene scene(
        " markerVisibility TRUE markerSize [ 0, 3, -1 ] markerColor [ 1 0 0, 0 0 0 ] markerString "
        "[ \".\", \".\", \"+\", \".\" ]");
    std::vector<std::array<float, 3>> seen; // y, size, red
    SoCallbackAction action;
    action.addPointCallback(
        SoPointSet::getClassTypeId(),
        [](void *data, SoCallbackAction *traversal, const SoPrimitiveVertex *v) {
            static_cast<std::vector<std::array<float, 3>> *>(data)->push_back(
                {v->getPoint()[1], traversal->getPointSize(), static_cast<float>(test::redOf(traversal, v))});
        },
        &seen);
    action.apply(scene.root.get());
    const std::array<int, 4> items{0, 1, 3, 4};
    const std::array<std::array<float, 2>, 4> expected{{{5, 1}, {3, 0}, {5, 0}, {3, 1}}};
    ASSERT_EQ(seen.size(), items.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        EXPECT_NEAR(seen[i][0], scene.boxes()[static_cast<std::size_t>(items[i])].place.getCenter()[1],
                    1e-5f);
        EXPECT_EQ(seen[i][1], expected[i][0]) << items[i];
        EXPECT_EQ(seen[i][2], expected[i][1]) << items[i];
    }
}

TEST(PoItemLegend, PartsAreMadeAsNeeded) {
    struct Row {
        const char *name, *fields, *parts;
    };
    for (const Row &row :
         {Row{"by default", " ", "background backgroundBorder box boxBorder valueText "},
          {"no items", "item []", "background backgroundBorder "},
          {"no items, title", "item [] titleVisibility VISIBILITY_ON titleString x",
           "background backgroundBorder title "},
          {"all", "lineVisibility TRUE markerVisibility TRUE titleVisibility VISIBILITY_ON",
           "background backgroundBorder box boxBorder title valueText line marker "},
          {"no texts", "valueVisibility VISIBILITY_OFF", "background backgroundBorder box boxBorder "},
          {"nothing in the grid", "valueVisibility VISIBILITY_OFF boxVisibility FALSE",
           "background backgroundBorder "},
          {"empty texts and lists",
           "item [ \"\", \"\" ] boxVisibility FALSE markerVisibility TRUE markerString [] markerSize [] "
           "markerColor []",
           "background backgroundBorder valueText marker "},
          {"no width", "end 0 1", ""},
          {"no size", "start 1 1", ""}}) {
        Scene scene(" lineVisibility TRUE markerVisibility TRUE titleVisibility VISIBILITY_ON");
        scene.set(" lineVisibility FALSE markerVisibility FALSE titleVisibility VISIBILITY_OFF ");
        scene.set(row.fields);
        scene.traverse();
        std::string parts;
        for (const char *name : CONTENT)
            if (scene.part<SoNode>(name))
                parts += std::string(name) + " ";
        EXPECT_EQ(parts, row.parts) << row.name;
    }
}

TEST(PoItemLegend, NumbersThatAreNoneAreSafe) {
    for (const float bad : {NOT_A_NUMBER, INFINITE, -INFINITE, 1e15f, -1e15f, 1e-30f, 0.f, -1.f})
        for (const char *type : {"REL_MARGIN", "FIXED_MARGIN"})
            for (int field = 0; field < 12; ++field) {
                SCOPED_TRACE(std::to_string(bad) + " in field " + std::to_string(field));
                const Scene scene(" titleVisibility VISIBILITY_ON titleString x lineVisibility TRUE "
                                  "markerVisibility TRUE marginType " +
                                  std::string(type));
                SoSFFloat *const numbers[] = {&scene.kit->titleFontSize, &scene.kit->marginLeft,
                                              &scene.kit->marginRight,   &scene.kit->marginBottom,
                                              &scene.kit->marginTop,     &scene.kit->boxRatio};
                if (field < 6)
                    *numbers[field] = bad;
                else if (field < 8)
                    (field == 6 ? scene.kit->lineSize : scene.kit->markerSize).set1Value(1, bad);
                else
                    (field < 10 ? scene.kit->start : scene.kit->end)
                        .setValue(field % 2 ? bad : 0.1f, field % 2 ? 0.2f : bad);
                scene.traverse();
                EXPECT_TRUE(test::drawnBy(scene.root.get()).isFinite);
                const auto *font = scene.part<SoFont>("valueTextApp.font");
                EXPECT_TRUE(!font || std::isfinite(font->size.getValue()));
            }
    const Scene scene(" titleVisibility VISIBILITY_ON ");
    scene.kit->item.setValue(std::string(100000, 'x').c_str());
    scene.kit->titleString.setValue(std::string(100000, 'y').c_str());
    for (const PoSFEnum *field : {&scene.kit->titlePosition, &scene.kit->titlePath, &scene.kit->valuePosition,
                                  &scene.kit->marginType, &scene.kit->incrementType})
        const_cast<PoSFEnum *>(field)->setValue(77);
    scene.traverse();
    scene.expectClear();
}

TEST(PoItemLegend, FollowsItsFieldsAndTheTextsOfTheSceneOnly) {
    Scene scene;
    auto *attributes = new PoMiscTextAttr;
    auto *domain = new PoDomain;
    scene.root->insertChild(attributes, 0);
    scene.root->insertChild(domain, 0);
    const SbBox2f before = scene.placeOf("background");
    EXPECT_EQ(scene.rebuildsOf([&] { attributes->lineLength = 5; }), 1);
    EXPECT_EQ(scene.words(), "Sand|Clay\nand\nsilt|Rock|Water|Ice|");
    scene.expectClear();
    EXPECT_EQ(scene.rebuildsOf([&] { domain->max.setValue(1, 20, 3); }), 0) << "no letter is distorted";
    EXPECT_EQ(scene.placeOf("background").getMax(), before.getMax());
    EXPECT_EQ(scene.part<SoNode>("domainTransform"), nullptr);
    EXPECT_EQ(scene.rebuildsOf([&] { scene.kit->item.set1Value(2, "Gravel"); }), 1);
    auto own = std::make_unique<PbMiscTextAttr>();
    EXPECT_EQ(scene.rebuildsOf([&] { scene.kit->setMiscTextAttr(own.get()); }), 1);
    EXPECT_EQ(scene.words(), "Sand|Clay and silt|Gravel|Water|Ice|");
    EXPECT_EQ(scene.rebuildsOf([&] { own->setFontName("Helvetica"); }), 1);
    EXPECT_EQ(scene.part<SoFont>("valueTextApp.font")->name.getValue(), SbName("Helvetica"));
    EXPECT_EQ(scene.rebuildsOf([&] { scene.kit->valueFontName = "Courier"; }), 1);
    EXPECT_EQ(scene.part<SoFont>("valueTextApp.font")->name.getValue(), SbName("Courier"));
    EXPECT_EQ(scene.rebuildsOf([&] { own.reset(); }), 1);
    EXPECT_EQ(scene.words().substr(0, 9), "Sand|Clay") << "of the scene again";
}

TEST(PoItemLegend, ConstructorAndFilesKeepTheFields) {
    const char *names[] = {"one", nullptr};
    const SbColor colors[] = {SbColor(1, 0, 0), SbColor(0, 1, 0)};
    const test::Ref<PoItemLegend> empty(new PoItemLegend(SbVec2f(1, 2), SbVec2f(0, 0), 2, nullptr, nullptr));
    EXPECT_EQ(empty->item.getNum(), 0);
    EXPECT_EQ(empty->boxColor.getNum(), 1);
    const test::Ref<SoSeparator> root(new SoSeparator);
    root->addChild(new PoItemLegend(SbVec2f(1, 2), SbVec2f(0, 0), 2, names, colors));
    SoCallbackAction().apply(root.get());
    for (const bool isBinary : {false, true}) {
        const std::string file = test::written(root.get(), isBinary);
        EXPECT_EQ(file.find("valueText Group"), std::string::npos);
        EXPECT_EQ(file.find("Font {"), std::string::npos);
        const test::Ref<SoSeparator> read = test::readBack(file);
        auto *legend = static_cast<PoItemLegend *>(read->getChild(0));
        EXPECT_EQ(legend->start.getValue(), SbVec2f(1, 2));
        EXPECT_EQ(legend->item.getNum(), 2);
        EXPECT_EQ(legend->item[0], SbString("one"));
        EXPECT_EQ(legend->item[1], SbString(""));
        EXPECT_EQ(legend->boxColor[1], colors[1]);
        auto *material = static_cast<SoMaterial *>(legend->getPart("backgroundApp.material", FALSE));
        ASSERT_TRUE(material);
        EXPECT_EQ(material->diffuseColor[0], SbColor(0, 0, 0));
    }
}

} // namespace
