#include "axes/AxisTexts.h"

#include <oravane/PbDomain.h>
#include <oravane/PbMiscTextAttr.h>
#include <oravane/PbNumericDisplayFormat.h>
#include <oravane/PoGenAxis.h>
#include <oravane/PoLinearAxis.h>
#include <oravane/PoNumericDisplayFormat.h>

#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMatrixTransform.h>

using test::expectClear;
using test::INFINITE;
using test::KitScene;
using test::NOT_A_NUMBER;
using test::Strings;
using test::stringsOf;
using test::Text;
using test::textsOf;

namespace {

TEST(PoLinearAxis, ShowsRoundNumbersAndOneFactor) {
    KitScene<PoLinearAxis> scene;
    PbDomain domain(0, 0, 15000, 1, PbDomain::BBOX_AS_GIVEN);
    PbNumericDisplayFormat format; // automatic
    scene.kit->setDomain(&domain);
    scene.kit->setFormat(&format);
    scene.kit->end = 15000;
    scene.traverse();
    EXPECT_EQ(stringsOf(scene, "mainGradText"), (Strings{"0", "2", "4", "6", "8", "10", "12", "14"}));
    EXPECT_EQ(stringsOf(scene, "multFactor"), (Strings{"x 10", "3"}));
    EXPECT_EQ(scene.kit->getStep(), 2000);
    EXPECT_EQ(stringsOf(scene, "title"), Strings{});
    EXPECT_EQ(scene.part<SoNode>("multFactorApp.font"), scene.part<SoNode>("mainGradTextApp.font"));
    scene.kit->multFactorPosition = PoLinearAxis::MULT_FACTOR_EXTR;
    scene.traverse();
    EXPECT_EQ(stringsOf(scene, "multFactor"), (Strings{"x 10", "3", "3", "x 10"})) << "away from the axis";
    scene.kit->multFactorPosition = PoLinearAxis::MULT_FACTOR_GRAD;
    scene.kit->gradAddString = " m";
    scene.kit->tickNumOrPeriod = 3;
    scene.traverse();
    EXPECT_EQ(stringsOf(scene, "mainGradText"), (Strings{"0E3", "6E3", "12E3"})) << "no unit until it is on";
    EXPECT_EQ(stringsOf(scene, "multFactor"), Strings{});
    scene.kit->gradAddStringVisibility = TRUE;
    scene.traverse();
    EXPECT_EQ(stringsOf(scene, "mainGradText"), (Strings{"0E3 m", "6E3 m", "12E3 m"}));
    const float *coords = nullptr;
    EXPECT_EQ(scene.kit->getSubGradCoords(coords), 5);
    EXPECT_FLOAT_EQ(coords[0], 2000);
    scene.kit->gradAddString = std::string(300, 'm').c_str();
    scene.traverse();
    EXPECT_EQ(stringsOf(scene, "mainGradText")[0].size(), 99U);
    scene.kit->gradVisibility = PoAxis::VISIBILITY_OFF;
    scene.kit->multFactorPosition = PoLinearAxis::MULT_FACTOR_END;
    scene.traverse();
    EXPECT_EQ(stringsOf(scene, "mainGradText"), Strings{});
    EXPECT_EQ(stringsOf(scene, "multFactor"), Strings{});
}

TEST(PoLinearAxis, IsUndistortedInAnyDomainAndDirection) {
    struct Row {
        int type, along;
        SbVec3f up; ///< where local +y points
    };
    const Row rows[] = {{PoCartesianAxis::XY, 0, {0, 1, 0}},  {PoCartesianAxis::XZ, 0, {0, 0, 1}},
                        {PoCartesianAxis::YX, 1, {-1, 0, 0}}, {PoCartesianAxis::YZ, 1, {0, 0, 1}},
                        {PoCartesianAxis::ZX, 2, {1, 0, 0}},  {PoCartesianAxis::ZY, 2, {0, -1, 0}}};
    const SbVec3f origin(2, 700, -0.01f);
    for (const PbDomain::TransformType space :
         {PbDomain::TRANSFORM_01, PbDomain::SCALE_X_FIXED, PbDomain::SCALE_MAX_XYZ_FIXED})
        for (const Row &row : rows) {
            SCOPED_TRACE(testing::Message() << "type " << row.type << " space " << space);
            KitScene<PoLinearAxis> scene;
            PbDomain domain(0, 0, 0, 20, 3000, 0.5f, PbDomain::BBOX_AS_GIVEN);
            domain.setTransformType(space);
            scene.kit->setDomain(&domain);
            scene.kit->start = origin;
            scene.kit->type = row.type;
            scene.kit->end = origin[row.along] * 3;
            scene.traverse();
            const SbMatrix world = scene.part<SoMatrixTransform>("transform")->matrix.getValue();
            SbVec3f first, unit, up;
            world.multVecMatrix(SbVec3f(origin[row.along], 0, 0), first);
            EXPECT_TRUE(first.equals(origin, 1e-4f));
            SbMatrix seen = world;
            seen.multRight(domain.getMatrix());
            seen.multDirMatrix(SbVec3f(1, 0, 0), unit);
            seen.multDirMatrix(SbVec3f(0, 1, 0), up);
            EXPECT_NEAR(up.length() / unit.length(), 1, 1e-5f) << "a square stays a square";
            EXPECT_NEAR(unit[row.along] / unit.length(), 1, 1e-5f);
            EXPECT_NEAR(up.dot(row.up) / up.length(), 1, 1e-5f);

            scene.kit->gridVisibility = PoAxis::VISIBILITY_ON;
            scene.kit->gridLengthGradOtherSide = 0.25f;
            scene.traverse();
            const test::Ref<SoSeparator> grid(new SoSeparator);
            grid->addChild(scene.part<SoNode>("transform"));
            grid->addChild(scene.part("mainGradGrid"));
            const SbVec3f size = test::boundingBox(grid.get()).getSize();
            EXPECT_NEAR(std::abs(size.dot(row.up)), 0.25f, 1e-3f) << "in units of the world";
        }
}

/// The axis in one of its many shapes.
struct Shape {
    int type, position, path, tick, reverse, factor, title, titlePath;
    float end;
};

void setShape(PoLinearAxis &axis, const Shape &shape) {
    axis.type = shape.type;
    axis.gradPosition = shape.position;
    axis.gradPath = shape.path;
    axis.tickPosition = shape.tick;
    axis.reverseFlag = shape.reverse;
    axis.multFactorPosition = shape.factor;
    axis.titlePosition = shape.title;
    axis.titlePath = shape.titlePath;
    axis.end = shape.end;
}

/// The exponent follows along the path, towards the tops of the letters, as whoever sees the axis reads it.
void expectReadable(const Text &times, const Text &exponent, const Shape &shape) {
    const bool isReverse = shape.reverse == PoAxis::AXIS_REVERSE;
    int path = shape.path;
    if (isReverse && path >= PoAxis::PATH_UP)
        path = PoAxis::PATH_UP + PoAxis::PATH_DOWN - path;
    const SbVec3f reading[] = {{1, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}};
    const SbVec3f tops[] = {{0, 1, 0}, {0, -1, 0}, {-1, 0, 0}, {1, 0, 0}};
    const SbVec3f step = exponent.centre() - times.centre();
    EXPECT_GT(step.dot(reading[path]) * (isReverse ? -1 : 1), 10);
    EXPECT_GT(step.dot(tops[path]), 10);
}

TEST(PoLinearAxis, KeepsTextsApartInEveryShape) {
    KitScene<PoLinearAxis> scene;
    PbDomain domain(-2000, -2000, -2000, 2000, 2000, 2000, PbDomain::BBOX_AS_GIVEN);
    PbNumericDisplayFormat format;
    scene.kit->setDomain(&domain);
    scene.kit->setFormat(&format);
    scene.kit->titleVisibility = PoAxis::VISIBILITY_ON;
    scene.kit->titleString = "Depth";
    int shapes = 0;
    for (int code = 0; code < 2 * 2 * 4 * 3 * 2 * 4 * 2 * 4 * 2; ++code) {
        int rest = code;
        const auto take = [&rest](int n) { return std::exchange(rest, rest / n) % n; };
        const Shape shape{take(2) * 2, take(2), take(4),
                          take(3),     take(2), take(4),
                          take(2),     take(4), take(2) == 0 ? 1900.0f : -1900.0f};
        if (code % 7 != 0 && shape.factor == PoLinearAxis::MULT_FACTOR_GRAD)
            continue;
        SCOPED_TRACE(testing::Message() << "shape " << code);
        setShape(*scene.kit, shape);
        scene.traverse();
        std::vector<Text> texts = textsOf(scene, "mainGradText");
        const std::vector<Text> factor = textsOf(scene, "multFactor"), title = textsOf(scene, "title");
        ASSERT_EQ(title.size(), 1U);
        ASSERT_EQ(factor.size(), shape.factor == PoLinearAxis::MULT_FACTOR_GRAD   ? 0U
                                 : shape.factor == PoLinearAxis::MULT_FACTOR_EXTR ? 4U
                                                                                  : 2U);
        for (std::size_t i = 0; i < factor.size(); i += 2) {
            const bool exponentFirst = factor[i].string == "3";
            expectReadable(factor[i + exponentFirst], factor[i + !exponentFirst], shape);
        }
        texts.insert(texts.end(), factor.begin(), factor.end());
        texts.push_back(title[0]);
        texts.push_back({"ticks", test::boundingBox(scene.part("mainGradTick"))});
        const float middle = texts.back().centre()[1] * (shape.position == PoAxis::GRAD_ABOVE ? 1 : -1);
        const int side = (middle > 1) - (middle < -1); // of the texts, the other one, or across
        EXPECT_EQ(side, shape.tick == 0 ? 1 : shape.tick == 1 ? -1 : 0);
        texts.push_back({"arrow", test::boundingBox(scene.part("arrow"))});
        expectClear(texts, 1);
        ++shapes;
        if (HasFailure())
            return;
    }
    EXPECT_GT(shapes, 4000);
}

/// The attributes that depend on the orientation, and the sizes of the texts and ticks.
struct Told {
    explicit Told(const PoAxis &axis) {
        PoAxis::Visibility seen[5];
        PoAxis::GradPosition position;
        PoAxis::TextPath path, titlePath;
        PoAxis::TitlePosition titlePosition;
        PoAxis::TickPosition tickPosition;
        PoAxis::TickSubDef subDef;
        SbString titleFont, string;
        float ignored;
        unsigned short counts[3];
        int suffix;
        axis.getGrad(seen[0], position, path, font, size, distance, suffix, string);
        axis.getTitle(seen[1], titlePosition, titlePath, titleFont, ignored, ignored, string);
        axis.getArrow(seen[2], ignored, ignored);
        axis.getGrid(seen[3], ignored, ignored);
        axis.getTick(seen[4], tickPosition, tick, subTick, subDef, counts[0], counts[1], counts[2]);
        for (const int value :
             {int(seen[0]), int(position), int(path), int(seen[1]), int(titlePosition), int(titlePath),
              int(seen[2]), int(seen[3]), int(seen[4]), int(axis.getReverseFlag()), suffix})
            choices += std::to_string(value);
    }
    std::string choices;
    SbString font;
    float size = 0, distance = 0, tick = 0, subTick = 0;
};

TEST(PoLinearAxis, TellsWhatItSettled) {
    KitScene<PoLinearAxis> scene;
    EXPECT_EQ(Told(*scene.kit).choices, "22422422222");
    PbMiscTextAttr attributes;
    attributes.setFontName("Courier");
    scene.kit->setMiscTextAttr(&attributes);
    scene.traverse();
    const Told along(*scene.kit);
    EXPECT_EQ(along.choices, "11000010102");
    EXPECT_EQ(along.font, "Courier");
    EXPECT_FLOAT_EQ(along.size, 0.04f);
    EXPECT_FLOAT_EQ(along.distance, -0.025f - 0.65f * 0.04f) << "below the ticks";
    scene.kit->step = 0.05f; // 21 graduations
    scene.kit->type = PoCartesianAxis::YX;
    scene.traverse();
    const Told up(*scene.kit);
    EXPECT_EQ(up.choices, "10301310102");
    EXPECT_FLOAT_EQ(up.tick, 0.016f);
    EXPECT_FLOAT_EQ(up.subTick, 0.008f);
}

TEST(PoLinearAxis, LongLabelsShrinkUntilTheyFit) {
    KitScene<PoGenAxis> scene;
    const char *names[] = {"short", "a text that is much longer than its place", "c"};
    scene.kit->gradList.setValues(0, 3, names);
    scene.traverse();
    const std::vector<Text> texts = textsOf(scene, "mainGradText");
    ASSERT_EQ(texts.size(), 3U);
    EXPECT_NEAR(texts[1].box.getSize()[0], 0.8f * 0.5f, 1e-3f);
    EXPECT_NEAR(texts[2].centre()[0], 1, 1e-3f);
    scene.kit->gradAddString = "!";
    scene.kit->gradAddStringVisibility = TRUE;
    scene.traverse();
    EXPECT_EQ(stringsOf(scene, "mainGradText")[2], "c!");
    expectClear(texts);
    scene.kit->marginStart = scene.kit->marginEnd = 0.6f;
    scene.traverse();
    EXPECT_EQ(textsOf(scene, "mainGradText").size(), 0U) << "margins that cross";
    scene.kit->marginStart = scene.kit->marginEnd = 0;
    // One label has the whole axis.
    scene.kit->gradList = std::string(200, 'w').c_str();
    scene.traverse();
    EXPECT_NEAR(textsOf(scene, "mainGradText")[0].box.getSize()[0], 0.8f, 1e-3f);
    scene.kit->gradList.setNum(0);
    scene.traverse();
    EXPECT_EQ(scene.part("mainGradText")->getNumChildren(), 0);
    EXPECT_EQ(test::drawnBy(scene.root.get()).segments, 1) << "the body";
}

TEST(PoLinearAxis, BadInputDrawsNothingBad) {
    KitScene<PoLinearAxis> scene;
    scene.kit->titleVisibility = PoAxis::VISIBILITY_ON;
    scene.kit->titleString = "t";
    const auto expectSound = [&scene](const char *what) {
        scene.traverse();
        const test::Drawn drawn = test::drawnBy(scene.root.get());
        EXPECT_TRUE(drawn.isFinite) << what;
        const SbBox3f box = test::boundingBox(scene.root.get());
        EXPECT_TRUE(box.isEmpty() || std::isfinite(box.getSize().length())) << what;
        return drawn.segments;
    };
    const float body = 1;
    scene.kit->end = 0;
    EXPECT_EQ(expectSound("no length"), 0);
    EXPECT_NE(scene.part<SoNode>("transform"), nullptr);
    scene.kit->end = NOT_A_NUMBER;
    EXPECT_EQ(expectSound("no end"), 0);
    scene.kit->end = INFINITE;
    EXPECT_EQ(expectSound("no finite end"), 0);
    scene.kit->end = 1;
    scene.kit->start.setValue(0, NOT_A_NUMBER, 0);
    EXPECT_EQ(expectSound("nowhere"), 0);
    scene.kit->start.setValue(0, 0, 0);
    PbDomain flat(0, 0, 100, 1, PbDomain::BBOX_AS_GIVEN), tiny(0, 0, 1e-30f, 1e30f, PbDomain::BBOX_AS_GIVEN);
    scene.kit->setDomain(&flat); // a multiple of its scale is beyond all numbers
    scene.kit->gridVisibility = PoAxis::VISIBILITY_ON;
    for (SoSFFloat *field : {&scene.kit->gradFontSize, &scene.kit->gradDistAxis, &scene.kit->marginStart,
                             &scene.kit->marginEnd, &scene.kit->titleFontSize, &scene.kit->titleDistAxis,
                             &scene.kit->gridLengthGradSide, &scene.kit->arrowHeight,
                             &scene.kit->tickMainLength, &scene.kit->step, &scene.kit->multFactorDistAxis}) {
        const float before = field->getValue();
        for (const float bad : {NOT_A_NUMBER, INFINITE, -INFINITE, 3e38f, -1.0f}) {
            *field = bad;
            expectSound("a bad length");
        }
        *field = before;
    }
    scene.kit->setDomain(&tiny);
    expectSound("sizes without a proportion");
    scene.kit->setDomain(nullptr);
    scene.kit->marginStart = scene.kit->marginEnd = 0.7f;
    EXPECT_EQ(expectSound("margins that cross"), body);
    scene.kit->marginStart = scene.kit->marginEnd = 0;
    scene.kit->step = 1e-12f;
    EXPECT_EQ(expectSound("millions of graduations"), body);
    scene.kit->step = 0;
    scene.kit->tickSubDef = PoAxis::NUM_SUB_TICK;
    scene.kit->tickNumOrPeriod = 65535;
    expectSound("sub ticks without end");
}

TEST(PoLinearAxis, FollowsTheSceneAndItsFile) {
    KitScene<PoLinearAxis> scene;
    auto *format = new PoNumericDisplayFormat;
    format->formatType = PbNumericDisplayFormat::FLOAT_FORMAT;
    format->numDecimal = 2;
    scene.root->insertChild(format, 0);
    scene.kit->multFactorPosition = PoLinearAxis::MULT_FACTOR_GRAD; // of which there is none
    EXPECT_EQ(scene.rebuildsOf([] {}), 0);
    EXPECT_EQ(stringsOf(scene, "mainGradText")[1], "0.20");
    EXPECT_EQ(scene.rebuildsOf([&] { format->numDecimal = 1; }), 1);
    EXPECT_EQ(stringsOf(scene, "mainGradText")[1], "0.2");
    EXPECT_EQ(scene.rebuildsOf([&] { scene.kit->end = 2; }), 1);
    const std::string file = test::written(scene.root.get());
    EXPECT_EQ(file.find("Coordinate3"), std::string::npos) << file;
    EXPECT_EQ(file.find("SoFont"), std::string::npos);
    EXPECT_EQ(file.find("Font {"), std::string::npos) << file;
    const test::Ref<SoSeparator> again = test::readBack(file);
    ASSERT_TRUE(again);
    EXPECT_DOUBLE_EQ(test::drawnBy(again.get()).length, test::drawnBy(scene.root.get()).length);
}

} // namespace
