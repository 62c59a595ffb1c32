#include <oravane/PoMeshContouring.h>

#include "Drawn.h"

#include <oravane/PbCartesianGrid2D.h>
#include <oravane/PbDomain.h>
#include <oravane/PbIsovaluesList.h>
#include <oravane/PbLinearDataMapping.h>
#include <oravane/PbMiscTextAttr.h>
#include <oravane/PbNumericDisplayFormat.h>
#include <oravane/PbRegularCartesianGrid2D.h>
#include <oravane/PiText.h>
#include <oravane/PlanarPolygons.h>
#include <oravane/PoMiscTextAttr.h>
#include <oravane/PoNumericDisplayFormat.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoText3.h>
#include <Inventor/nodes/SoTransform.h>
#include <Inventor/sensors/SoFieldSensor.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

using test::INFINITE;
using test::NOT_A_NUMBER;

constexpr const char *GENERATED[] = {"majorContourLine",      "minorContourLine", "annotBackground",
                                     "annotBackgroundBorder", "annotText",        "transform"};

struct Line {
    std::vector<Ppoint3> points;
    int level = 0; ///< by its colour
};

struct Label {
    std::string text;
    SbVec3f middle, u, v; ///< along the text and across, of length 1
    float width, height;

    /// The box with its margin, and with `more` on all sides; closed.
    std::array<Ppoint3, 5> outer(float more) const {
        const SbVec3f a = (0.55f * width + more) * u, b = (0.5f * height + 0.05f * width + more) * v;
        const auto point = [](const SbVec3f &p) { return Ppoint3{p[0], p[1], p[2]}; };
        return {point(middle - a - b), point(middle - a + b), point(middle + a + b), point(middle + a - b),
                point(middle - a - b)};
    }
    bool covers(const Ppoint3 &point, float more) const {
        auto corners = outer(more);
        return pscanLine2D(point, Ppoint_list3{5, corners.data()}) % 2 != 0;
    }
};

/// Hills from 1.5 to 9.5 on a rectangle.
struct Hills {
    static constexpr int N = 49;
    explicit Hills(const SbVec2f &first = SbVec2f(0, 0), const SbVec2f &sides = SbVec2f(1, 1))
        : grid(N, N, first[0], first[1], first[0] + sides[0], first[1] + sides[1], 1) {
        for (int i = 0; i < N; ++i)
            for (int j = 0; j < N; ++j) {
                const float s = static_cast<float>(i) / (N - 1), t = static_cast<float>(j) / (N - 1);
                x.push_back(first[0] + s * sides[0]);
                y.push_back(first[1] + t * sides[1]);
                values.push_back(5.5f + 4 * std::sin(4 * s + 1) * std::cos(5 * t - 1));
                z.push_back(0.1f * values.back());
            }
        grid.addValuesSet(0, values.data());
        grid.addValuesSet(1, z.data());
    }
    PbRegularCartesianGrid2D grid;
    std::vector<float> x, y, values, z;
};

/// A kit of its own mesh, the levels 1 to 10 and a mapping whose red tells the level.
struct Scene : test::KitScene<PoMeshContouring> {
    explicit Scene(PbMesh2D *mesh, bool isAnnotated = false) : KitScene(mesh) {
        mapping.setValues(0, SbColor(0, 0, 0), 16, SbColor(1, 0, 0));
        kit->setIsovaluesList(&levels);
        kit->setDataMapping(&mapping);
        kit->coloringType = PoMesh::COLOR_MAPPING;
        kit->annotIsVisible = isAnnotated;
    }
    template <class Node>
    Node *in(const char *name) const {
        const SoGroup *group = part(name);
        for (int k = 0; group && k < group->getNumChildren(); ++k)
            if (auto *node = dynamic_cast<Node *>(group->getChild(k)))
                return node;
        return nullptr;
    }
    std::vector<Line> lines(const char *name) const {
        std::vector<Line> result;
        if (!part(name))
            return result;
        const SoMFInt32 &counts = in<SoLineSet>(name)->numVertices;
        const SbVec3f *point = in<SoCoordinate3>(name)->point.getValues(0);
        for (int k = 0; k < counts.getNum(); ++k) {
            Line &line = result.emplace_back();
            line.level = static_cast<int>(std::lround(16 * in<SoMaterial>(name)->diffuseColor[k][0]));
            for (int i = 0; i < counts[k]; ++i, ++point)
                line.points.push_back({(*point)[0], (*point)[1], (*point)[2]});
        }
        return result;
    }
    /// The labels, from the text nodes alone.
    std::vector<Label> labels() const {
        std::vector<Label> result;
        const SoGroup *group = part("annotText");
        PiText measure;
        measure.setTextAttributes(kit->getMiscTextAttr());
        measure.setFontSize(fontSize());
        for (int k = 0; group && k < group->getNumChildren(); ++k) {
            const auto *pair = static_cast<SoGroup *>(group->getChild(k));
            const auto *place = static_cast<SoTransform *>(pair->getChild(0));
            Label &label = result.emplace_back();
            const SoMFString &lines = static_cast<SoText3 *>(pair->getChild(1))->string;
            for (int line = 0; line < lines.getNum(); ++line)
                label.text.append(line > 0 ? "\n" : "").append(lines[line].getString());
            measure.getStringSizes(label.text.c_str(), label.width, label.height);
            if (kit->annotIsBackground.getValue()) {
                label.width += label.height / 2;
                label.height *= 1.5f;
            }
            EXPECT_TRUE(place->scaleFactor.getValue().equals(SbVec3f(1, 1, 1), 1e-5f)) << "of its shape";
            place->rotation.getValue().multVec(SbVec3f(1, 0, 0), label.u);
            place->rotation.getValue().multVec(SbVec3f(0, 1, 0), label.v);
            // The letters' middle is 0.32 sizes above their base.
            label.middle = place->translation.getValue() + 0.32f * fontSize() * label.v;
        }
        return result;
    }
    float fontSize() const {
        const auto *font = part<SoFont>("annotTextApp.font");
        return font ? font->size.getValue() : 0;
    }

    PbIsovaluesList levels;
    PbLinearDataMapping mapping;
};

TEST(PoMeshContouring, RanksTellMajorFromMinorLevels) {
    constexpr int N = 12;
    PbRegularCartesianGrid2D grid(N, 3, 0.f, 0.f, 11.f, 2.f, 1);
    std::vector<float> values; // each level is the value of nodes, and is moved off
    for (int i = 0; i < N; ++i)
        values.insert(values.end(), 3, static_cast<float>(i));
    grid.addValuesSet(0, values.data());
    struct Row {
        unsigned short period, first;
        std::set<int> majors;
    };
    for (const Row &row :
         {Row{3, 1, {1, 4, 7, 10}}, Row{3, 2, {2, 5, 8}}, Row{3, 0, {3, 6, 9}}, Row{3, 11, {2, 5, 8}},
          Row{7, 65535, {1, 8}}, Row{65535, 4, {4}}, Row{1, 5, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}},
          Row{0, 5, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}}}) {
        SCOPED_TRACE(std::to_string(row.period) + " from " + std::to_string(row.first));
        const Scene scene(&grid);
        scene.kit->majorPeriod = row.period;
        scene.kit->firstMajor = row.first;
        for (const bool isAnnotated : {false, true}) {
            scene.kit->annotIsVisible = isAnnotated;
            scene.traverse();
            for (const char *name : {"majorContourLine", "minorContourLine"}) {
                std::set<int> found;
                for (const Line &line : scene.lines(name)) {
                    found.insert(line.level);
                    EXPECT_NEAR(line.points[0].x, line.level, 0.02) << "one colour a line, of its level";
                }
                std::set<int> expected = row.majors;
                for (int level = 1; name[1] == 'i' && level <= 10; ++level)
                    if (!expected.erase(level))
                        expected.insert(level);
                EXPECT_EQ(found, expected) << name;
            }
            EXPECT_EQ(scene.part("minorContourLine") != nullptr, row.period > 1);
        }
    }
}

TEST(PoMeshContouring, PartsStandInTheirOrderAndGroupsHoldColorsWhenColored) {
    Hills hills;
    Scene scene(&hills.grid);
    const SoNodekitCatalog *catalog = scene.kit->getNodekitCatalog();
    SbString before = "transform";
    for (const char *name :
         {"majorContourLine", "minorContourLine", "annotBackground", "annotBackgroundBorder", "annotText"}) {
        const SbString separator = SbString(name) + "Sep", appearance = SbString(name) + "App";
        EXPECT_EQ(catalog->getRightSiblingName(before.getString()), SbName(separator)) << name;
        EXPECT_EQ(catalog->getRightSiblingName(appearance.getString()), SbName(name));
        EXPECT_EQ(catalog->getParentName(name), SbName(separator));
        EXPECT_FALSE(catalog->isPublic(SbName(separator)));
        EXPECT_TRUE(catalog->isPublic(SbName(appearance)) && catalog->isPublic(name));
        before = separator;
    }
    for (const auto &[name, model] : {std::pair("annotTextApp.lightModel", SoLightModel::BASE_COLOR),
                                      {"annotBackgroundApp.lightModel", SoLightModel::BASE_COLOR},
                                      {"appearance.lightModel", SoLightModel::PHONG}})
        EXPECT_EQ(scene.part<SoLightModel>(name)->model.getValue(), model) << name;
    for (const auto &[coloring, expected] :
         {std::pair(PoMesh::COLOR_CONTOURING, "Material MaterialBinding Coordinate3 LineSet "),
          {PoMesh::COLOR_INHERITED, "Coordinate3 LineSet "}})
        for (const char *name : {"majorContourLine", "minorContourLine"}) {
            scene.kit->coloringType = coloring;
            scene.traverse();
            std::string types;
            for (int k = 0; k < scene.part(name)->getNumChildren(); ++k)
                (types += scene.part(name)->getChild(k)->getTypeId().getName().getString()) += " ";
            EXPECT_EQ(types, expected);
            const auto *binding = scene.in<SoMaterialBinding>(name);
            EXPECT_TRUE(!binding || binding->value.getValue() == SoMaterialBinding::PER_FACE);
        }
    scene.kit->annotIsVisible = TRUE;
    scene.kit->annotIsBackground = TRUE;
    PbDomain domain(0, 0, 1, 2, PbDomain::BBOX_AS_GIVEN);
    scene.kit->setDomain(&domain);
    for (const bool isWhole : {true, false, true})
        for (const int missing : {0, 1, 2}) {
            scene.kit->valuesIndex = missing == 0 && !isWhole ? 5 : 0;
            scene.kit->setIsovaluesList(missing == 1 && !isWhole ? nullptr : &scene.levels);
            scene.kit->setMesh(missing == 2 && !isWhole ? nullptr : &hills.grid);
            scene.traverse();
            for (const char *name : GENERATED)
                EXPECT_EQ(scene.part<SoNode>(name) != nullptr, isWhole) << name << missing;
        }
}

TEST(PoMeshContouring, SizesFollowTheReferenceLengthAndLabelsKeepTheirShape) {
    Hills hills(SbVec2f(2, 3), SbVec2f(2, 10));
    const SbVec2f polygon[] = {{2, 3}, {3.5f, 3}, {3.5f, 10.5f}, {2, 10.5f}};
    struct Row {
        const char *name;
        SbVec3f max;
        PbDomain::TransformType type;
        bool is3D;
        float reference, polygon; ///< with a polygon of 3/4 of the sides
        SbVec3f factor, back;     ///< of the matrix of `transform`; 0: none
    };
    const SbVec3f box(4, 13, 9), cube(4, 5, 9), none(0, 0, 0);
    std::size_t numLabels = 0;
    for (const Row &row : {
             // The offset in y comes back by the factor of x: 3 / 2 * 10.
             Row{"01", box, PbDomain::TRANSFORM_01, false, 1, 0.75f, {2, 10, 4}, {2, 15, 5}},
             Row{"x", box, PbDomain::SCALE_X_FIXED, false, 2, 1.5f, {1, 5, 2}, none},
             Row{"y", box, PbDomain::SCALE_Y_FIXED, false, 10, 7.5f, {0.2f, 1, 0.4f}, none},
             Row{"z", box, PbDomain::SCALE_Z_FIXED, true, 4, 3, {0.5f, 2.5f, 1}, none},
             Row{"max", box, PbDomain::SCALE_MAX_XYZ_FIXED, false, 10, 7.5f, {0.2f, 1, 0.4f}, none},
             Row{"01, equal in the plane", cube, PbDomain::TRANSFORM_01, false, 2, 7.5f, none, none},
             Row{"z, equal in the plane", cube, PbDomain::SCALE_Z_FIXED, false, 2, 7.5f, none, none},
             Row{"z, surface", cube, PbDomain::SCALE_Z_FIXED, true, 4, 15, {0.5f, 0.5f, 1}, none},
         }) {
        SCOPED_TRACE(row.name);
        const Scene scene(&hills.grid, true);
        PbDomain domain(2, 3, 5, row.max[0], row.max[1], row.max[2], PbDomain::BBOX_AS_GIVEN);
        domain.setTransformType(row.type);
        scene.kit->setDomain(&domain);
        scene.kit->zValuesIndex = row.is3D ? 1 : -1;
        scene.kit->annotGap = 0.3f;
        scene.traverse();
        SbMatrix expected;
        expected.setScale(row.factor);
        expected[3][0] = row.back[0], expected[3][1] = row.back[1], expected[3][2] = row.back[2];
        const auto *transform = scene.part<SoMatrixTransform>("transform");
        EXPECT_EQ(transform != nullptr, row.factor != none);
        EXPECT_TRUE(!transform || transform->matrix.getValue().equals(expected, 1e-5f));
        EXPECT_FLOAT_EQ(scene.fontSize(), 0.04f * row.reference);
        if (row.max == box && !row.is3D) {
            const std::size_t count = scene.labels().size();
            EXPECT_TRUE(numLabels == 0 || count == numLabels) << "the same picture, in another size";
            numLabels = count;
        }
        scene.kit->annotClippingPolygon.setValues(0, 4, polygon);
        scene.kit->annotFontSize = 0.1f;
        scene.traverse();
        EXPECT_FLOAT_EQ(scene.fontSize(), 0.1f * row.polygon);
        EXPECT_EQ(scene.kit->annotClippingPolygon[2], polygon[2]) << "the field stays";
    }
    EXPECT_GT(numLabels, 5u);
}

TEST(PoMeshContouring, LabelsAndTheirBackgroundsObeyTheFields) {
    Hills hills;
    const SbVec2f polygon[] = {{0.1f, 0.1f}, {0.9f, 0.1f}, {0.9f, 0.9f}, {0.1f, 0.9f}};
    const SbVec3f along[] = {{0, 0, 0}, {1, 0, 0}, {0, -1, 0}};
    PbNumericDisplayFormat longNumbers(PbNumericDisplayFormat::FLOAT_FORMAT, 0, 4);
    int numOthers[3] = {}; // lines crossed beside the own one
    for (int row = 0; row < 9; ++row) {
        const int path = row % 3, status = row / 3;
        SCOPED_TRACE("path " + std::to_string(path) + ", crossing " + std::to_string(status));
        const Scene scene(&hills.grid, true);
        scene.kit->majorPeriod = 2;
        scene.kit->annotIsBackground = TRUE;
        scene.kit->annotIsContourClip = TRUE; // of no effect behind backgrounds
        scene.kit->annotPath = path;
        scene.kit->annotCrossStatus = status;
        scene.kit->annotGap = 0.25f;
        scene.kit->setFormat(&longNumbers);
        scene.kit->annotClippingPolygon.setValues(0, row % 2 != 0 ? 4 : 0, polygon);
        scene.traverse();
        const std::vector<Label> labels = scene.labels();
        const SoMFVec3f &box = scene.in<SoCoordinate3>("annotBackground")->point,
                        &border = scene.in<SoCoordinate3>("annotBackgroundBorder")->point;
        const int count = static_cast<int>(labels.size());
        EXPECT_GT(count, 2);
        ASSERT_EQ(box.getNum(), 4 * count);
        ASSERT_EQ(border.getNum(), 8 * count);
        int numCrossings[2] = {};
        for (int k = 0; k < count; ++k) {
            const Label &label = labels[k];
            const SbVec3f *corner = box.getValues(4 * k);
            EXPECT_TRUE((corner[3] - corner[0]).equals(label.width * label.u, 1e-5f));
            EXPECT_TRUE((corner[1] - corner[0]).equals(label.height * label.v, 1e-5f));
            EXPECT_TRUE((corner[2] + corner[0]).equals(2 * label.middle, 1e-5f));
            EXPECT_TRUE(border[8 * k + 6] == corner[3] && border[8 * k + 7] == corner[0]);
            EXPECT_TRUE(path == 0 ? label.u[0] >= 0 : label.u.equals(along[path], 1e-5f));
            const auto outer = label.outer(-1e-5f);
            for (const Ppoint3 &p : outer)
                EXPECT_LE(std::max(std::abs(p.x - 0.5f), std::abs(p.y - 0.5f)), row % 2 != 0 ? 0.4f : 0.5f);
            for (const bool isMinor : {false, true})
                for (const Line &line : scene.lines(isMinor ? "minorContourLine" : "majorContourLine"))
                    numCrossings[isMinor] += pintersParaPolyline2D(outer.data(), line.points.data(),
                                                                   static_cast<int>(line.points.size()));
        }
        numOthers[status] += numCrossings[0] + numCrossings[1] - count;
        EXPECT_TRUE(status == 0 || numCrossings[0] == count) << "its own";
        EXPECT_TRUE(status < 2 || numCrossings[1] == 0);
    }
    EXPECT_GT(std::min(numOthers[0], numOthers[1]), 2);
}

TEST(PoMeshContouring, LinesMakeWayForLabelsAndInSpaceForThoseOfTheirValueOnly) {
    Hills hills;
    std::size_t numCovered[2][2] = {};
    for (const int zIndex : {-1, 1})
        for (const int path : {0, 1, 2}) {
            SCOPED_TRACE("z " + std::to_string(zIndex) + ", path " + std::to_string(path));
            const Scene scene(&hills.grid, true);
            scene.kit->annotPath = path;
            scene.kit->annotGap = 0.3f;
            scene.kit->annotFontSize = 0.14f; // as wide as the distance of lines
            scene.kit->zValuesIndex = zIndex;
            scene.traverse();
            const std::vector<Label> labels = scene.labels();
            EXPECT_GT(labels.size(), 2u);
            const std::vector<Line> whole[] = {scene.lines("majorContourLine"),
                                               scene.lines("minorContourLine")};
            scene.kit->annotIsContourClip = TRUE;
            scene.traverse();
            const auto isCovered = [&](const Ppoint3 &point, int level, float more) {
                return std::any_of(labels.begin(), labels.end(), [&](const Label &label) {
                    return (zIndex < 0 || label.text == std::to_string(level)) && label.covers(point, more);
                });
            };
            for (const int isMinor : {0, 1}) {
                std::size_t numKept = 0, numOutside = 0;
                for (const Line &piece : scene.lines(isMinor ? "minorContourLine" : "majorContourLine"))
                    for (const Ppoint3 &p : piece.points) {
                        EXPECT_FALSE(isCovered(p, piece.level, -1e-5f)) << p.x << ' ' << p.y;
                        numKept += isCovered(p, piece.level, 1e-5f) ? 0 : 1; // without those on a box
                    }
                for (const Line &line : whole[isMinor])
                    for (const Ppoint3 &p : line.points)
                        ++(isCovered(p, line.level, 1e-5f) ? numCovered[isMinor][zIndex > 0] : numOutside);
                EXPECT_EQ(numKept, numOutside);
            }
        }
    EXPECT_GT(std::min({numCovered[0][0], numCovered[0][1], numCovered[1][0]}), 9u);
    EXPECT_EQ(numCovered[1][1], 0u) << "no minor line has a label";
}

TEST(PoMeshContouring, NumbersAndFontAreTheOwnOnesElseThoseOfTheScene) {
    Hills hills;
    Scene scene(&hills.grid, true);
    auto *format = new PoNumericDisplayFormat;
    format->formatType = PoNumericDisplayFormat::FLOAT_FORMAT;
    format->numDecimal = 1;
    auto *attributes = new PoMiscTextAttr;
    attributes->fontName = "Times";
    auto ownFormat = std::make_unique<PbNumericDisplayFormat>(PbNumericDisplayFormat::FLOAT_FORMAT, 0, 3);
    auto ownAttributes = std::make_unique<PbMiscTextAttr>();
    ownAttributes->setFontName("Courier");
    ownAttributes->setLineLength('.', 1);
    const auto expect = [&](const char *text, const char *font) {
        scene.traverse();
        ASSERT_FALSE(scene.labels().empty());
        EXPECT_EQ(scene.labels()[0].text.substr(1), text);
        EXPECT_EQ(scene.part<SoFont>("annotTextApp.font")->name.getValue(), font);
    };
    expect("", "defaultFont");
    scene.root->insertChild(format, 0);
    scene.root->insertChild(attributes, 0);
    expect(".0", "Times");
    scene.kit->setFormat(ownFormat.get());
    scene.kit->setMiscTextAttr(ownAttributes.get());
    expect("\n000", "Courier");
    EXPECT_EQ(scene.kit->getFormat(), ownFormat.get());
    ownFormat.reset();
    ownAttributes.reset();
    EXPECT_EQ(scene.kit->getMiscTextAttr()->getFontName(), "defaultFont") << "outside of a traversal";
    expect(".0", "Times");
}

TEST(PoMeshContouring, EachChangeRebuildsOnceAndAMeshMayGo) {
    auto hills = std::make_unique<Hills>();
    Scene scene(&hills->grid);
    auto *format = new PoNumericDisplayFormat;
    scene.root->insertChild(format, 0);
    EXPECT_EQ(scene.rebuildsOf([&] { format->numDecimal = 2; }), 0) << "not read without labels";
    for (const char *field :
         {"annotIsVisible TRUE", "majorPeriod 2", "firstMajor 2", "annotPath VERTICAL_PATH",
          "annotCrossStatus DONT_CROSS_CONTOUR", "annotIsBackground TRUE", "annotIsContourClip TRUE",
          "annotGap 0.3", "annotClippingPolygon [0 0, 0 1]", "annotFontSize 0.05"})
        EXPECT_EQ(scene.rebuildsOf([&] { scene.kit->SoFieldContainer::set(field); }), 1) << field;
    EXPECT_EQ(scene.rebuildsOf([&] { format->numDecimal = 3; }), 1);
    EXPECT_EQ(scene.rebuildsOf([&] { hills.reset(); }), 1);
    for (const char *name : GENERATED)
        EXPECT_EQ(scene.part<SoNode>(name), nullptr) << name;
}

TEST(PoMeshContouring, BadInputHasADefinedResult) {
    struct Row {
        std::string what; ///< a field of the kit, or a name of what `spoil` does
        bool hasLabels;
        std::function<void(Scene &, Hills &)> spoil = {};
    };
    PbNumericDisplayFormat decimals(PbNumericDisplayFormat::FLOAT_FORMAT, 0, 1 << 30),
        powers(PbNumericDisplayFormat::FLOAT_FORMAT, -1000, 5);
    std::unique_ptr<PbCartesianGrid2D> mesh;
    const auto refill = [](float above, float value) {
        return [=](Scene &, Hills &h) {
            for (float &v : h.values)
                v = v > above ? value : v;
            h.grid.addValuesSet(0, h.values.data());
        };
    };
    const SbVec2f inf[] = {{-INFINITE, -INFINITE}, {INFINITE, -INFINITE}, {0, INFINITE}},
                  nan[] = {{NOT_A_NUMBER, 0}, {1, NOT_A_NUMBER}, {NOT_A_NUMBER, NOT_A_NUMBER}};
    const Row rows[] = {
        {"annotGap 0", true},
        {"annotGap -3", true},
        {"annotFontSize -1", true},
        {"annotFontSize 1e38", false},
        {"annotFontSize 1e-30", false},
        {"annotClippingPolygon [0 0, 1 1]", true},
        {"annotClippingPolygon [0 0, 0.5 0.5, 1 1]", false},
        {"annotClippingPolygon [0 0, 0 0, 0 0]", false},
        {"zValuesIndex 99", true},
        {"path", true, [](Scene &s, Hills &) { s.kit->annotPath = 99; }},
        {"crossing", true, [](Scene &s, Hills &) { s.kit->annotCrossStatus = -7; }},
        {"gap NaN", true, [](Scene &s, Hills &) { s.kit->annotGap = NOT_A_NUMBER; }},
        {"gap infinite", true, [](Scene &s, Hills &) { s.kit->annotGap = INFINITE; }},
        {"font NaN", true, [](Scene &s, Hills &) { s.kit->annotFontSize = NOT_A_NUMBER; }},
        {"font infinite", true, [](Scene &s, Hills &) { s.kit->annotFontSize = INFINITE; }},
        {"NaN corners", false, [&](Scene &s, Hills &) { s.kit->annotClippingPolygon.setValues(0, 3, nan); }},
        {"inf corners", false, [&](Scene &s, Hills &) { s.kit->annotClippingPolygon.setValues(0, 3, inf); }},
        {"one level", true, [](Scene &s, Hills &) { s.levels.setRegularIsoList(5.f, 5.f, 1); }},
        {"no level", false, [](Scene &s, Hills &) { s.levels.setRegularIsoList(0); }},
        {"decimals", false, [&](Scene &s, Hills &) { s.kit->setFormat(&decimals); }},
        {"power of ten", true, [&](Scene &s, Hills &) { s.kit->setFormat(&powers); }},
        {"thresholds", true, [](Scene &s, Hills &) { s.mapping.enableThresholds(1, 1); }},
        {"constant field", false, refill(-INFINITE, 5)},
        {"NaN values", true, refill(8, NOT_A_NUMBER)},
        {"infinite values", true, refill(8, INFINITE)},
        {"NaN positions", true,
         [&](Scene &s, Hills &h) {
             h.x[500] = h.y[900] = NOT_A_NUMBER;
             mesh = std::make_unique<PbCartesianGrid2D>(Hills::N, Hills::N, h.x.data(), h.y.data(), 1);
             mesh->addValuesSet(0, h.values.data());
             s.kit->setMesh(mesh.get());
         }},
    };
    for (const Row &row : rows)
        for (const bool isClipped : {false, true}) {
            SCOPED_TRACE(row.what);
            Hills hills;
            Scene scene(&hills.grid, true);
            scene.kit->annotIsContourClip = isClipped;
            scene.kit->annotCrossStatus = PoMeshContouring::DONT_CROSS_CONTOUR;
            if (row.spoil)
                row.spoil(scene, hills);
            else
                EXPECT_TRUE(scene.kit->SoFieldContainer::set(row.what.c_str()));
            EXPECT_TRUE(test::drawnBy(scene.root.get()).isFinite);
            EXPECT_TRUE(std::isfinite(scene.fontSize()));
            EXPECT_EQ(!scene.labels().empty(), row.hasLabels);
            EXPECT_TRUE(row.what != "one level" || isClipped == !scene.part("minorContourLine"))
                << "none to cut";
        }
}

TEST(PoMeshContouring, ObjectsMayGoWhileThePartsAreSet) {
    struct Objects {
        std::unique_ptr<Hills> hills = std::make_unique<Hills>();
        std::unique_ptr<PbLinearDataMapping> mapping = std::make_unique<PbLinearDataMapping>();
        std::unique_ptr<PbIsovaluesList> levels = std::make_unique<PbIsovaluesList>();
        std::unique_ptr<PbMiscTextAttr> text = std::make_unique<PbMiscTextAttr>();
        std::unique_ptr<PbDomain> domain = std::make_unique<PbDomain>();
    };
    for (const char *part : GENERATED) {
        SCOPED_TRACE(part);
        Objects objects;
        const test::Ref<PoMeshContouring> kit(new PoMeshContouring);
        kit->setMesh(&objects.hills->grid);
        kit->setDataMapping(objects.mapping.get());
        kit->setIsovaluesList(objects.levels.get());
        kit->setMiscTextAttr(objects.text.get());
        kit->setDomain(objects.domain.get());
        objects.domain->setDomain(0, 0, 1, 2, PbDomain::BBOX_AS_GIVEN);
        kit->valuesIndex = 0;
        kit->coloringType = PoMesh::COLOR_MAPPING;
        kit->annotIsVisible = TRUE;
        kit->annotIsBackground = TRUE;
        kit->rebuild();
        SoFieldSensor sensor(
            [](void *data, SoSensor *) {
                *static_cast<Objects *>(data) = {nullptr, nullptr, nullptr, nullptr, nullptr};
            },
            &objects);
        sensor.setPriority(0);
        sensor.attach(kit->getField(part));
        kit->setUpdateMethod(PoBase::UPDATE_IMMEDIATE); // parts are set with the notification on
        kit->touchKit();
        EXPECT_EQ(objects.hills, nullptr);
        EXPECT_EQ(kit->getMesh(), nullptr);
    }
}

} // namespace
