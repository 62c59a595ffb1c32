#include <oravane/PoDomain.h>
#include <oravane/PoPieChart2D.h>
#include <oravane/PoPieChart3D.h>
#include <oravane/PoSingleHistogram.h>

#include "Drawn.h"

#include <oravane/PbNumericDisplayFormat.h>
#include <oravane/PoMiscTextAttr.h>
#include <oravane/PoNumericDisplayFormat.h>

#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/nodes/SoAnnotation.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoText3.h>
#include <Inventor/nodes/SoTransform.h>
#include <Inventor/sensors/SoFieldSensor.h>

#include <memory>
#include <numbers>
#include <span>

namespace {

using test::INFINITE;
using test::NOT_A_NUMBER;

constexpr double PI = std::numbers::pi;
constexpr float HUGE_VALUE = 3e38f;
const char *const NAMES[] = {"a", "bb", "c", "d", "e"};

constexpr const char *GENERATED[] = {
    "slice",         "sliceBorder",     "extAnnotBox",    "extAnnotBoxBorder", "extAnnotText",
    "extAnnotValue", "extAnnotPercent", "arrow",          "intAnnotBox",       "intAnnotBoxBorder",
    "intAnnotText",  "intAnnotValue",   "intAnnotPercent"};

struct Slice {
    std::string name;
    double part; ///< of the pie, by its area
    SbColor color;
    std::vector<SbVec3f> points, normals;
    std::vector<std::int32_t> counts;
};

struct Label {
    std::string text, name;
    SbVec3f place;
};

double signedArea(const std::vector<SbVec3f> &points, int count) {
    double area = 0;
    for (int k = 0; k < count; ++k) {
        const SbVec3f &a = points[k], &b = points[(k + 1) % count];
        area += (double{a[0]} * b[1] - double{b[0]} * a[1]) / 2;
    }
    return area;
}

template <class Field>
auto valuesOf(const Field &field) {
    return std::vector(field.getValues(0), field.getValues(0) + field.getNum());
}

template <class Pie>
struct Scene : test::KitScene<Pie> {
    using test::KitScene<Pie>::kit;

    explicit Scene(const std::vector<float> &values = {50, 30, 20}) { setValues(values); }
    void setValues(const std::vector<float> &values) {
        const int n = static_cast<int>(values.size());
        for (int k = 0; k < n; ++k)
            kit->sliceText.set1Value(k, k < 5 ? NAMES[k] : "more");
        kit->sliceText.setNum(n);
        kit->sliceValue.setValues(0, n, values.data());
        kit->sliceValue.setNum(n);
    }
    std::vector<Slice> slices() const {
        std::vector<Slice> result;
        const SoGroup *group = this->part("slice");
        Slice next;
        for (int k = 0; group && k < group->getNumChildren(); ++k) {
            SoNode *node = group->getChild(k);
            if (const auto *material = dynamic_cast<SoMaterial *>(node))
                next.color = material->diffuseColor[0];
            if (const auto *normal = dynamic_cast<SoNormal *>(node))
                next.normals = valuesOf(normal->vector);
            if (const auto *coordinates = dynamic_cast<SoCoordinate3 *>(node))
                next.points = valuesOf(coordinates->point);
            if (const auto *faces = dynamic_cast<SoFaceSet *>(node)) {
                next.counts = valuesOf(faces->numVertices);
                next.name = node->getName().getString();
                next.part =
                    signedArea(next.points, next.counts[0]) / (PI * std::pow(kit->radius.getValue(), 2));
                result.push_back(next);
            }
        }
        return result;
    }
    std::string names() const {
        std::string all;
        for (const Slice &slice : slices())
            all += slice.name + " ";
        return all;
    }
    std::vector<Label> labels(const char *name) const {
        std::vector<Label> result;
        const SoGroup *group = this->part(name);
        for (int k = 0; group && k < group->getNumChildren(); ++k) {
            const auto *pair = static_cast<SoGroup *>(group->getChild(k));
            const auto *text = static_cast<SoText3 *>(pair->getChild(1));
            result.push_back({text->string[0].getString(), text->getName().getString(),
                              static_cast<SoTransform *>(pair->getChild(0))->translation.getValue()});
        }
        return result;
    }
    std::string texts(const char *name) const {
        std::string all;
        for (const Label &label : labels(name))
            all += (all.empty() ? "" : "|") + label.text;
        return all;
    }
};

using Flat = Scene<PoPieChart2D>;
using Solid = Scene<PoPieChart3D>;

/// All fields but parts, in their order, with their values.
std::string fieldsOf(const test::Ref<SoNode> &kit) {
    std::string all;
    SoFieldList fields;
    for (int k = 0, n = kit->getFields(fields); k < n; ++k) {
        SbName name;
        SbString value;
        kit->getFieldName(fields[k], name);
        fields[k]->get(value);
        if (!fields[k]->isOfType(SoSFNode::getClassTypeId()) && name != "callbackList")
            all += std::string(name.getString()) + " " + value.getString() + ", ";
    }
    return all;
}

TEST(PoPieChart, FieldsOfChartsHaveTheirOrderAndDefaults) {
    const auto annotation = [](const std::string &prefix, const char *show) {
        const std::string name = prefix + "Annot", shown = show[0] == 't' ? "TRUE" : "FALSE",
                          valueShown = show[0] == 't' ? "FALSE" : "TRUE";
        std::string all = name + "TextVisibility " + shown + ", " + name + "ValueVisibility " + valueShown +
                          ", " + name + "PercentVisibility FALSE, " + name + "AddStringVisibility FALSE, ";
        for (const char *end : {"FontName \"\", ", "FontSize 0, "})
            for (const char *line : {"Text", "Value", "Percent"})
                all += name + line + end;
        return all + name + "AddString \"\", ";
    };
    EXPECT_EQ(
        fieldsOf(test::Ref<SoNode>(new PoPieChart3D)),
        "radius 1, sliceText [  ], sliceValue [  ], sliceColor 0 0 0, intAnnotPosition HOR_INT_POS, "
        "intAnnotAlignment CENTER_ALIGN, " +
            annotation("int", "value") +
            "intAnnotDistance 0, extAnnotPosition HOR_INT_POS, extAnnotAlignment INWARDS_ALIGN, " +
            annotation("ext", "text") +
            "extAnnotDistance1 0, extAnnotDistance2 0, extAnnotDistance3 0, arrowVisibility TRUE, "
            "arrowHeight 0, arrowWidth 0, sliceGroupActive TRUE, sliceGroupMinValue 5, sliceGroupFlagMin "
            "PERCENTAGE, sliceGroupString \"Others\", sliceToTranslateNumber [  ], sliceToTranslateValue "
            "[  ], sliceAngleStep 0.0349066, center 0 0 0, zCenter2 1, ");
    EXPECT_EQ(
        fieldsOf(test::Ref<SoNode>(new PoSingleHistogram)),
        "start 0 0, end 1, type X, color 0 0 0, coloring COLOR_LIST, valueVisibility VISIBILITY_ON, "
        "valuePosition POS_DEPEND, valuePath PATH_DEPEND, valueFontSize 0, valueFontName \"\", "
        "valueAddStringVisibility FALSE, valueAddString \"\", nameVisibility VISIBILITY_ON, namePosition "
        "POS_DEPEND, namePath PATH_DEPEND, nameFontSize 0, nameFontName \"\", barSpaceType REL_SPACE, "
        "barSpaceValue 0.25, value [  ], name [  ], ");
}

TEST(PoPieChart, SmallSlicesAreGroupedWhenThereAreTwo) {
    struct Row {
        std::vector<float> values;
        const char *fields, *names;
        std::vector<double> parts;
    };
    std::vector<float> many(400, 1);
    many[359] = 0, many[380] = 1e9f; // beyond the last one
    for (const Row &row : {
             Row{{50, 30, 1, 1, 1}, "", "slice1 slice2 sliceGroup6 ", {50 / 83., 30 / 83., 3 / 83.}},
             Row{{50, 49, 1}, "", "slice1 slice2 slice3 ", {0.5, 0.49, 0.01}},
             Row{{5, 5, 90}, "", "slice1 slice2 slice3 ", {0.05, 0.05, 0.9}},
             Row{{7, 7, 14}, "sliceGroupMinValue 25", "slice1 slice2 slice3 ", {0.25, 0.25, 0.5}},
             Row{{1, 50, 1}, "sliceGroupActive FALSE", "slice1 slice2 slice3 ", {1 / 52., 50 / 52., 1 / 52.}},
             Row{{4, 3, 20}, "sliceGroupFlagMin ABSOLUTE", "slice3 sliceGroup4 ", {20 / 27., 7 / 27.}},
             Row{{1, 1}, "sliceGroupMinValue 60", "sliceGroup3 ", {1}},
             Row{{10, -5, 0, NOT_A_NUMBER, 30}, "", "slice1 slice5 ", {0.25, 0.75}},
             Row{{INFINITE, 3, -INFINITE}, "", "slice2 ", {1}},
             Row{{HUGE_VALUE, HUGE_VALUE, HUGE_VALUE}, "", "slice1 slice2 slice3 ", {1 / 3., 1 / 3., 1 / 3.}},
             Row{{HUGE_VALUE, HUGE_VALUE}, "sliceGroupMinValue 99", "sliceGroup3 ", {1}},
             Row{{1, 2, 3}, "sliceText [ x, y ]", "slice1 slice2 ", {1 / 3., 2 / 3.}},
             Row{{0, -1}, "", "", {}},
             Row{many, "", "sliceGroup361 ", {1}},
         }) {
        SCOPED_TRACE(row.names);
        Flat scene(row.values);
        EXPECT_TRUE(scene.kit->SoFieldContainer::set(row.fields));
        scene.traverse();
        EXPECT_EQ(scene.names(), row.names);
        const std::vector<Slice> slices = scene.slices();
        ASSERT_EQ(slices.size(), row.parts.size());
        for (std::size_t k = 0; k < slices.size(); ++k)
            EXPECT_NEAR(slices[k].part, row.parts[k], 1e-3 * row.parts[k] + 1e-6);
    }
}

TEST(PoPieChart, SlicesFollowEachOtherFromTheXAxisAndStandOut) {
    Flat scene({25, 50, 25});
    scene.kit->center.setValue(4, 7);
    scene.kit->radius = 2;
    scene.kit->setSliceToTranslate(3, 0.5f);
    scene.kit->setSliceToTranslate(1, -3);
    scene.traverse();
    const std::vector<Slice> slices = scene.slices();
    EXPECT_EQ(slices[0].points.size(), 47u) << "2 degrees a step, and the centre";
    EXPECT_TRUE(slices[0].points[0].equals(SbVec3f(4, 7, 0), 1e-12f));
    EXPECT_TRUE(slices[0].points[1].equals(SbVec3f(6, 7, 0), 1e-12f));
    EXPECT_EQ(slices[0].points.back(), slices[1].points[1]) << "no gap";
    EXPECT_TRUE(slices[1].points.back().equals(SbVec3f(4, 5, 0), 1e-10f));
    const float out = 0.5f * std::sqrt(0.5f);
    EXPECT_TRUE(slices[2].points[0].equals(SbVec3f(4 + out, 7 - out, 0), 1e-10f));
    const test::Drawn drawn = test::drawnBy(scene.part("slice"));
    EXPECT_NEAR(drawn.area, 4 * PI, 0.01) << "the half circle, too";
    const auto *border = static_cast<SoCoordinate3 *>(scene.part("sliceBorder")->getChild(0));
    EXPECT_EQ(border->point.getNum(), 48) << "closed";
    EXPECT_TRUE(border->point[1].equals(SbVec3f(6, 7, 0.0002f), 1e-12f));

    scene.setValues({0, 9});
    scene.traverse();
    EXPECT_EQ(scene.slices()[0].points.size(), 180u) << "a full turn has neither seam nor centre";
    EXPECT_NEAR(test::drawnBy(scene.part("slice")).area, 4 * PI, 0.01);
    EXPECT_NEAR(test::drawnBy(scene.part("sliceBorder")).length, 4 * PI, 0.01);

    auto *domain = new PoDomain;
    domain->max.setValue(10, 1000, 0.1f);
    scene.root->insertChild(domain, 0);
    scene.kit->extAnnotTextVisibility = FALSE;
    const SbVec3f size = test::boundingBox(scene.root.get()).getSize();
    EXPECT_NEAR(size[1], size[0], 0.02) << "round in any domain";
}

TEST(PoPieChart, ColorsRepeatAndTheGroupHasTheLast) {
    Flat scene({10, 20, 30, 1, 1});
    scene.kit->sliceColor.set("[ 1 0 0, 0 1 0 ]");
    scene.traverse();
    const std::vector<Slice> slices = scene.slices();
    const SbColor red(1, 0, 0), green(0, 1, 0);
    const SbColor expected[] = {red, green, red, green};
    for (std::size_t k = 0; k < 4; ++k)
        EXPECT_EQ(slices[k].color, expected[k]);
    scene.kit->sliceColor.setNum(0);
    auto *state = new SoMaterial;
    state->diffuseColor.setValue(1, 0, 0);
    scene.root->insertChild(state, 0);
    scene.traverse();
    const test::Drawn drawn = test::drawnBy(scene.root.get());
    EXPECT_NEAR(drawn.redArea, drawn.area, 1e-6);
}

TEST(PoPieChart, BodiesAreClosedAndTheirNormalsPointOutwards) {
    for (const int pulled : {0, 1, 2, 3}) // the number of a slice
        for (const std::vector<float> &values : {std::vector<float>{7}, {60, 25, 15}}) {
            Solid scene(values);
            scene.kit->center.setValue(1, 2, 3);
            scene.kit->zCenter2 = 2.5f;
            scene.kit->setSliceToTranslate(pulled, 0.2f);
            scene.traverse();
            double volume = 0;
            SbVec3f sum(0, 0, 0); // of all faces, as vectors: nothing is open
            for (const Slice &slice : scene.slices()) {
                ASSERT_EQ(slice.normals.size(), slice.points.size());
                std::size_t start = 0;
                for (const std::int32_t count : slice.counts) {
                    const std::span<const SbVec3f> face(slice.points.data() + start, count);
                    SbVec3f area(0, 0, 0);
                    for (std::size_t k = 1; k + 1 < face.size(); ++k)
                        area += (face[k] - face[0]).cross(face[k + 1] - face[0]) / 2;
                    for (std::size_t k = 0; k < face.size(); ++k)
                        EXPECT_GT(slice.normals[start + k].dot(area), 0.99f * area.length());
                    volume += area.dot(face[0] - SbVec3f(1, 2, 3)) / 3;
                    sum += area;
                    start += count;
                }
            }
            EXPECT_NEAR(volume, PI / 2, 0.001);
            EXPECT_LT(sum.length(), 1e-4f);
            EXPECT_TRUE(test::drawnBy(scene.part("sliceBorder")).isFinite);
            const float z = scene.labels("extAnnotText")[0].place[2];
            EXPECT_NEAR(z, 3, 0.001) << "at the upper face, whichever it is";
        }
}

TEST(PoPieChart, NumbersAreWrittenAsAReaderExpects) {
    using Format = PbNumericDisplayFormat;
    struct Row {
        std::vector<float> values;
        Format format;
        const char *unit; ///< null: not visible
        const char *valueTexts, *percentTexts;
    };
    for (const Row &row : {
             Row{{35361, 3853, 1437}, Format(), " GWh", "35361 GWh|3853 GWh|1437 GWh", "87.0%|9.5%|3.5%"},
             Row{{3000, 1000}, Format(Format::FLOAT_FORMAT, 3, 1), nullptr, "3.0E3|1.0E3", "75.0%|25.0%"},
             Row{{3000, 1000}, Format(Format::FLOAT_FORMAT, 3, 1), " kt", "3.0 kt|1.0 kt", "75.0%|25.0%"},
             Row{{3, 1, -1000}, Format(Format::INTEGER_FORMAT, 0, 0), "", "3|1", "75%|25%"},
             Row{{50, 1, 2}, Format(), nullptr, "50|3", "94.3%|5.7%"},
         }) {
        SCOPED_TRACE(row.valueTexts);
        Flat scene(row.values);
        Format format(row.format);
        scene.kit->setFormat(&format);
        scene.kit->extAnnotPercentVisibility = TRUE;
        scene.kit->intAnnotAddStringVisibility = row.unit != nullptr;
        scene.kit->intAnnotAddString = row.unit ? row.unit : "unseen";
        scene.traverse();
        EXPECT_EQ(scene.texts("intAnnotValue"), row.valueTexts);
        EXPECT_EQ(scene.texts("extAnnotPercent"), row.percentTexts);
    }
}

TEST(PoPieChart, AnnotationsStandWhereTheFieldsSay) {
    Flat scene({50, 25, 25});
    scene.kit->center.setValue(10, 0);
    scene.kit->radius = 2;
    scene.kit->SoFieldContainer::set(
        "extAnnotValueVisibility TRUE intAnnotTextVisibility TRUE intAnnotDistance 0.5");
    scene.traverse();
    EXPECT_EQ(scene.texts("extAnnotText"), "a|bb|c");
    EXPECT_EQ(scene.texts("intAnnotText"), "a|bb|c");
    EXPECT_EQ(scene.part<SoNode>("extAnnotPercent"), nullptr);
    EXPECT_FLOAT_EQ(scene.part<SoFont>("extAnnotTextApp.font")->size.getValue(), 0.05f);
    const SbVec3f inside =
        (scene.labels("intAnnotText")[0].place + scene.labels("intAnnotValue")[0].place) / 2;
    EXPECT_NEAR(inside[0], 10, 0.02) << "centred";
    EXPECT_NEAR(inside[1], 1 - 0.32 * 0.05, 1e-4) << "between the lines of capitals";
    for (int position = -1; position <= 7; ++position) {
        SCOPED_TRACE(position);
        scene.kit->extAnnotPosition = position;
        scene.kit->intAnnotPosition = position;
        scene.traverse();
        for (const Label &label : scene.labels("extAnnotText"))
            EXPECT_GT((label.place - SbVec3f(10, 0, 0)).length(), 2) << label.text;
        for (const Label &label : scene.labels("intAnnotText"))
            EXPECT_LT((label.place - SbVec3f(10, 0, 0)).length(), 1.2f);
        const auto *turn = static_cast<SoTransform *>(
            static_cast<SoGroup *>(scene.part("intAnnotValue")->getChild(1))->getChild(0));
        EXPECT_EQ(turn->rotation.getValue() != SbRotation::identity(), position == 0 || position == 2);
    }
    scene.kit->extAnnotTextFontName = "Own";
    scene.kit->extAnnotValueFontSize = 0.3f;
    auto *attributes = new PoMiscTextAttr;
    attributes->fontName = "Scene";
    scene.root->insertChild(attributes, 0);
    scene.kit->arrowVisibility = FALSE;
    scene.traverse();
    EXPECT_EQ(scene.part<SoFont>("extAnnotTextApp.font")->name.getValue(), "Own");
    EXPECT_EQ(scene.part<SoFont>("extAnnotValueApp.font")->name.getValue(), "Scene");
    EXPECT_FLOAT_EQ(scene.part<SoFont>("extAnnotValueApp.font")->size.getValue(), 0.3f);
    EXPECT_EQ(scene.part("arrow"), nullptr);
}

TEST(PoPieChart, PicksFindSlicesByTheirShapesAndLabels) {
    Solid scene({50, 40, 3, 2});
    scene.kit->zCenter2 = 0.2f;
    scene.kit->extAnnotTextFontSize = 0.2f;
    auto *other = new PoPieChart2D(SbVec2f(5, 0), 1, 2, const_cast<const char **>(NAMES),
                                   scene.kit->sliceValue.getValues(0), 0, nullptr);
    scene.root->addChild(other);
    const auto pick = [&](const PoPieChart *kit, const SbVec2f &at, int &isGroup) {
        SoRayPickAction action(SbViewportRegion(100, 100));
        action.setRay(SbVec3f(at[0], at[1], 10), SbVec3f(0, 0, -1));
        action.apply(scene.root.get());
        return kit->getPickedSliceNumber(
            action.getPickedPoint() ? action.getPickedPoint()->getPath() : nullptr, isGroup);
    };
    struct Row {
        const char *name;
        SbVec2f at;
        int number, isGroup;
    };
    scene.traverse();
    for (const Row &row : {Row{"first", {0, 0.5f}, 1, 0},
                           {"second", {-0.3f, -0.3f}, 2, 0},
                           {"small ones", {0.8f, -0.1f}, 5, 1},
                           {"nothing", {3, 3}, 0, 0},
                           {"below its box", {-0.07f, 0.66f}, 1, 0},
                           {"other", {5, 0.5f}, 0, 0}}) {
        SCOPED_TRACE(row.name);
        int isGroup = 7;
        EXPECT_EQ(pick(scene.kit, row.at, isGroup), row.number);
        EXPECT_EQ(isGroup, row.isGroup);
    }
    int isGroup = 7;
    EXPECT_EQ(pick(other, {5, 0.5f}, isGroup), 1);
    const SbVec3f label = scene.labels("extAnnotText")[0].place;
    bool isHit = false;
    for (float x = -0.2f; x < 0.2f; x += 0.01f)
        isHit = isHit || pick(scene.kit, {label[0] + x, label[1] + 0.05f}, isGroup) == 1;
    EXPECT_TRUE(isHit) << "the letters of a label";
}

TEST(PoPieChart, SlicesToTranslateAreEntries) {
    const test::Ref<PoPieChart2D> kit(new PoPieChart2D);
    EXPECT_EQ(kit->getSliceToTranslate(2), 0);
    kit->setSliceToTranslate(2, 0.5f);
    kit->setSliceToTranslate(4, 0.1f);
    kit->setSliceToTranslate(2, 0.25f);
    EXPECT_EQ(kit->sliceToTranslateNumber.getNum(), 2);
    EXPECT_EQ(kit->getSliceToTranslate(2), 0.25f);
    kit->sliceToTranslateNumber.set("[ 2, 4, 6, 8 ]"); // the last two have no value
    EXPECT_EQ(kit->getSliceToTranslate(6), 0);
    kit->setSliceToTranslate(8, 1);
    EXPECT_EQ(kit->sliceToTranslateNumber[2], 8);
    for (const int number : {0, -2, 65538})
        kit->setSliceToTranslate(number, 3);
    EXPECT_EQ(kit->sliceToTranslateValue.getNum(), 3);
}

TEST(PoPieChart, EachChangeRebuildsOnceAndWithoutSlicesAllPartsGo) {
    Flat scene({50, 30, 1, 1, 1});
    for (const char *field :
         {"radius 2", "sliceColor [ 1 0 0 ]", "intAnnotPosition RADIAL_INT_POS", "intAnnotAlignment 4",
          "intAnnotTextVisibility TRUE", "intAnnotPercentVisibility TRUE", "intAnnotDistance 0.5",
          "extAnnotPosition SQUARE_ALIGNED_EXT_POS", "extAnnotValueVisibility TRUE", "extAnnotDistance1 1.1",
          "extAnnotPercentVisibility TRUE", "arrowHeight 0.1", "sliceGroupMinValue 1.3",
          "sliceGroupFlagMin ABSOLUTE", "sliceToTranslateNumber [ 1 ]", "sliceAngleStep 0.1",
          "sliceGroupString rest", "center 1 2"})
        EXPECT_EQ(scene.rebuildsOf([&] { scene.kit->SoFieldContainer::set(field); }), 1) << field;
    auto *format = new PoNumericDisplayFormat;
    scene.root->insertChild(format, 0);
    scene.traverse();
    EXPECT_EQ(scene.rebuildsOf([&] { format->numDecimal = 2; }), 1);
    PbDomain domain;
    scene.kit->setDomain(&domain);
    EXPECT_EQ(scene.rebuildsOf([&] { domain.setDomain(0, 0, 2, 1, PbDomain::BBOX_AS_GIVEN); }), 0);
    for (const char *name : GENERATED)
        EXPECT_NE(scene.part<SoNode>(name), nullptr) << name;
    scene.kit->sliceValue.setNum(0);
    scene.traverse();
    for (const char *name : GENERATED)
        EXPECT_EQ(scene.part<SoNode>(name), nullptr) << name;
}

TEST(PoPieChart, FilesMakeTheSamePicture) {
    for (const PoBase::NodeWriteFormat format : {PoBase::WRITE_FIELDS, PoBase::WRITE_PARTS}) {
        Flat scene;
        scene.kit->extAnnotPosition = PoPieChart::VERT_ALIGNED_EXT_POS;
        const test::Drawn drawn = test::drawnBy(scene.root.get());
        PoBase::setNodeWriteFormat(format);
        const std::string file = test::written(scene.root.get());
        PoBase::setNodeWriteFormat(PoBase::WRITE_FIELDS);
        EXPECT_EQ(file.find("Font {") == std::string::npos, format == PoBase::WRITE_FIELDS);
        const auto copy = test::readBack(file);
        EXPECT_NEAR(test::drawnBy(copy.get()).length, drawn.length, 1e-4);
        EXPECT_NEAR(test::drawnBy(copy.get()).area, drawn.area, 1e-4);
    }
    EXPECT_TRUE(test::readBack("#Inventor V2.1 ascii\nPoPieChart { radius 3 }")) << "draws nothing";
}

TEST(PoPieChart, BadInputHasADefinedResult) {
    const std::vector<float> bad{0, -1, NOT_A_NUMBER, INFINITE, HUGE_VALUE};
    struct Row {
        const char *field;
        std::vector<float> values;
        bool isDrawn;
    };
    for (const Row &row : {Row{"radius", bad, false}, Row{"radius", {1e-45f, 1e-30f, 1e9f}, true},
                           Row{"zCenter2", {NOT_A_NUMBER, INFINITE}, false}, Row{"zCenter2", {0, -1}, true},
                           Row{"sliceToTranslateValue", bad, true}, Row{"sliceAngleStep", bad, true},
                           Row{"sliceGroupMinValue", bad, true}, Row{"intAnnotDistance", bad, true},
                           Row{"extAnnotDistance1", bad, true}, Row{"extAnnotDistance1", {0.2f}, true},
                           Row{"extAnnotDistance2", bad, true}, Row{"extAnnotDistance3", bad, true},
                           Row{"arrowHeight", bad, true}, Row{"arrowWidth", bad, true},
                           Row{"extAnnotTextFontSize", bad, true}, Row{"intAnnotValueFontSize", bad, true}})
        for (const float value : row.values)
            for (const int position : {0, 3, 4, 5, 6}) {
                SCOPED_TRACE(testing::Message() << row.field << " " << value);
                Solid scene;
                scene.kit->extAnnotPosition = position;
                scene.kit->sliceToTranslateNumber = 2;
                if (auto *single = dynamic_cast<SoSFFloat *>(scene.kit->getField(row.field)))
                    single->setValue(value);
                else
                    scene.kit->sliceToTranslateValue = value;
                EXPECT_TRUE(test::drawnBy(scene.root.get()).isFinite);
                EXPECT_EQ(scene.slices().empty(), !row.isDrawn);
                for (const Slice &slice : scene.slices())
                    for (const SbVec3f &normal : slice.normals)
                        EXPECT_NEAR(normal.length(), 1, 1e-5);
            }
    Flat scene;
    scene.kit->sliceText.set1Value(0, "");
    scene.kit->sliceText.set1Value(1, std::string(5000, 'x').c_str());
    scene.kit->extAnnotAlignment = 99;
    scene.kit->extAnnotTextFontName = std::string(70000, 'x').c_str(); // more than the toolkit can keep
    EXPECT_TRUE(test::drawnBy(scene.root.get()).isFinite);
    EXPECT_EQ(scene.labels("extAnnotText").size(), 2u) << "none without letters";
    scene.kit->center.setValue(HUGE_VALUE, HUGE_VALUE);
    EXPECT_TRUE(test::drawnBy(scene.root.get()).isFinite);
    EXPECT_EQ(scene.slices().size(), 3u);
    EXPECT_EQ(scene.texts("extAnnotText"), "") << "too far off for a text";

    const char *texts[] = {"a", nullptr};
    const float values[] = {1, 2};
    for (const test::Ref<PoPieChart2D> &kit :
         {test::Ref(new PoPieChart2D({0, 0}, 1, 2, texts, nullptr, 3, nullptr)),
          test::Ref(new PoPieChart2D({0, 0}, 1, -2, texts, values, -3, nullptr))})
        EXPECT_TRUE(kit->sliceText.getNum() == 0 && kit->sliceColor.getNum() == 0);
    const test::Ref<PoPieChart3D> kit(new PoPieChart3D({1, 2, 3}, 4, 5, 2, texts, values, 0, nullptr));
    EXPECT_EQ(kit->sliceText[1], "");
    EXPECT_EQ(kit->sliceValue[1], 2);
}

TEST(PoPieChart, ObjectsMayGoWhileThePartsAreSet) {
    for (const char *part : GENERATED) {
        auto format = std::make_unique<PbNumericDisplayFormat>();
        const Flat scene;
        scene.kit->setFormat(format.get());
        scene.kit->SoFieldContainer::set("intAnnotTextVisibility TRUE intAnnotPercentVisibility TRUE "
                                         "extAnnotValueVisibility TRUE extAnnotPercentVisibility TRUE");
        scene.kit->rebuild();
        SoFieldSensor sensor(
            [](void *data, SoSensor *) {
                static_cast<std::unique_ptr<PbNumericDisplayFormat> *>(data)->reset();
            },
            &format);
        sensor.setPriority(0);
        sensor.attach(scene.kit->getField(part));
        scene.kit->setUpdateMethod(PoBase::UPDATE_IMMEDIATE); // parts are set with the notification on
        scene.kit->touchKit();
        EXPECT_EQ(format, nullptr) << part;
    }
}

} // namespace
