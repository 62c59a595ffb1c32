#include <oravane/PoTimeAxis.h>

#include "axes/AxisTexts.h"

#include <oravane/PbDateFormatMapping.h>
#include <oravane/PbDomain.h>
#include <oravane/PbMiscTextAttr.h>
#include <oravane/PoDateFormatMapping.h>
#include <oravane/PoMiscTextAttr.h>

#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/sensors/SoFieldSensor.h>

#include <memory>

using test::INFINITE;
using test::NOT_A_NUMBER;
using test::stringsOf;
using test::Text;
using test::textsOf;

namespace {

using Scene = test::KitScene<PoTimeAxis>;

/// All texts, levels after one another.
std::string labels(const Scene &scene) {
    std::string all;
    for (const std::string &label : stringsOf(scene, "mainGradText"))
        all += (all.empty() ? "" : ",") + label;
    return all;
}

TEST(PoTimeAxis, ShowsItsLevelsWithTicksOnTheFirst) {
    struct Row {
        const char *setting;
        std::string labels;
        int numTicks;
    };
    const std::string hours = "0h,2h,4h,6h,8h,10h,12h,14h,16h,18h,20h,22h,0h";
    const std::string automatic = hours + ",JAN 1 70,JAN 2 70";
    for (const Row &row : {
             Row{"type X", automatic, 13},
             {"startDate \"2.1.70\" endDate \"1.1.70\"", automatic, 13},
             {"language ESPANOL", hours + ",1 ENE 70,2 ENE 70", 13},
             {"marginStart 0.1 marginEnd 0.1", "4h,6h,8h,10h,12h,14h,16h,18h,20h,JAN 1 70", 9},
             {"marginType FIXED_MARGIN marginStart 0.375 marginEnd 0.125",
              "9h,10h,11h,12h,13h,14h,15h,16h,17h,18h,19h,20h,21h,JAN 1 70", 13},
             {"endDate \"1-01-80\"", "1970,1971,1972,1973,1974,1975,1976,1977,1978,1979,1980", 11},
             {"gradRep \"12 HOU H'h';DAY D 2' 'M;7 MON\"", "0h,12h,0h,TH 1,FR 1,", 3},
             {"gradRep \"0.5 DAY D;1 YEA Y\"", "70", 0},
             {"gradRep [\"12 HOU H\", \"1 DAY D\"] timesPeriod \"23 HOU\"", "1,2", 2},
             {"gradRep [\"12 HOU H\", \"1 DAY D\"] timesPeriod \"1 DAY\"", "0,12,0", 3},
             {"gradRep \"'\"", automatic, 13},
             {"gradVisibility VISIBILITY_OFF", "", 13},
             {"marginStart 0.6 marginEnd 0.6", "", 0},
         }) {
        SCOPED_TRACE(row.setting);
        Scene scene;
        PbMiscTextAttr attributes;
        attributes.setLineLength(';', 0);
        scene.kit->setMiscTextAttr(&attributes);
        EXPECT_TRUE(scene.kit->SoFieldContainer::set(row.setting));
        scene.traverse();
        EXPECT_EQ(labels(scene), row.labels);
        const test::Ref<SoSeparator> ticks(new SoSeparator);
        ticks->addChild(scene.part("mainGradTick"));
        EXPECT_EQ(test::drawnBy(ticks.get()).segments, row.numTicks);
        const float *coords = nullptr;
        EXPECT_EQ(scene.kit->getMainGradCoords(coords), row.numTicks);
        EXPECT_EQ(scene.part("subGradTick"), nullptr);
    }
}

/// Texts of a level stand beside each other, and levels beyond one another and the ticks.
TEST(PoTimeAxis, LevelsKeepClearInEveryShape) {
    for (int code = 0; code < 2 * 2 * 4 * 2 * 2; ++code) {
        SCOPED_TRACE(code);
        Scene scene;
        PbDomain domain(0, 0, 0, 0.001f, 3000, 7, PbDomain::BBOX_AS_GIVEN);
        const float size[] = {domain.getDeltaX(), domain.getDeltaY()};
        const int along = code % 2;
        PbDateFormatMapping mapping("1-03-1999", "11-03-2000", 0, size[along], "dmY");
        scene.kit->setDomain(&domain);
        scene.kit->setDateFormatMapping(&mapping);
        scene.kit->startDate = code / 2 % 2 ? "1-03-1999" : "11-03-2000";
        scene.kit->endDate = code / 2 % 2 ? "11-03-2000" : "1-03-1999";
        scene.kit->type = along;
        scene.kit->coord = 2;
        scene.kit->gradPath = code / 4 % 4;
        scene.kit->gradPosition = code / 16 % 2;
        scene.kit->reverseFlag = code / 32 % 2;
        scene.traverse();
        std::vector<Text> texts = textsOf(scene, "mainGradText");
        ASSERT_EQ(texts.size(), 14U);
        EXPECT_EQ(texts[0].string + texts[12].string, "MARMAR");
        EXPECT_EQ(texts[13].string, "2000");
        texts.push_back({"ticks", test::boundingBox(scene.part("mainGradTick"))});
        test::expectClear(texts);
        SbVec3f origin;
        scene.part<SoMatrixTransform>("transform")->matrix.getValue().multVecMatrix(SbVec3f(0, 0, 0), origin);
        EXPECT_EQ(origin, along == 0 ? SbVec3f(0, 2, 0) : SbVec3f(2, 0, 0));
    }
}

TEST(PoTimeAxis, OnlyTheFirstLevelHasTheDistanceAndTheGridOfTheFields) {
    Scene scene;
    PbDomain domain(0, 0, 0, 1, 2, 5, PbDomain::BBOX_AS_GIVEN);
    scene.kit->setDomain(&domain);
    scene.kit->gradDistAxis = 0.3f;
    scene.kit->gradFontSize = 0.01f;
    scene.kit->gridVisibility = PoAxis::VISIBILITY_ON;
    scene.traverse();
    const std::vector<Text> texts = textsOf(scene, "mainGradText");
    EXPECT_NEAR(texts[0].box.getMax()[1], -0.3f, 2e-3f);
    EXPECT_NEAR(texts[13].box.getMax()[1], texts[0].box.getMin()[1] - 0.0065f, 2e-3f);
    const auto gridHeight = [&] { return test::boundingBox(scene.part("mainGradGrid")).getSize()[1]; };
    EXPECT_FLOAT_EQ(gridHeight(), 0.5f);
    scene.kit->type = PoTimeAxis::Y;
    scene.traverse();
    EXPECT_FLOAT_EQ(gridHeight(), 2.0f / 5.0f) << "by the size of z";
}

TEST(PoTimeAxis, FollowsItsFieldsTheSceneAndItsFile) {
    Scene scene;
    auto *mapping = new PoDateFormatMapping;
    auto *attributes = new PoMiscTextAttr;
    scene.root->insertChild(mapping, 0);
    scene.root->insertChild(attributes, 0);
    EXPECT_EQ(scene.rebuildsOf([&] { mapping->coord2 = 3; }), 1);
    EXPECT_EQ(scene.rebuildsOf([&] { attributes->endLineChar = '/'; }), 1);
    for (const char *field :
         {"gradRep \"12 HOU H/1 DAY D\"", "timesPeriod \"\"", "language FRANCAIS", "gradFit GRAD_FIT",
          "startDate \"31-12-69\"", "endDate \"3-01-70\"", "type Y", "coord 1", "marginEnd 0.1"})
        EXPECT_EQ(scene.rebuildsOf([&] { scene.kit->SoFieldContainer::set(field); }), 1) << field;
    EXPECT_EQ(labels(scene), "0,12,0,12,0,12,31,1,2");
    const std::string file = test::written(scene.root.get());
    EXPECT_EQ(file.find("Coordinate3"), std::string::npos) << file;
    const test::Ref<SoSeparator> again = test::readBack(file);
    ASSERT_TRUE(again);
    EXPECT_DOUBLE_EQ(test::drawnBy(again.get()).length, test::drawnBy(scene.root.get()).length);

    auto own = std::make_unique<PbDateFormatMapping>("1-01-70", "2-01-70", 0, 5, "ymd");
    EXPECT_EQ(scene.rebuildsOf([&] { scene.kit->setDateFormatMapping(own.get()); }), 1);
    EXPECT_EQ(scene.kit->getDateFormatMapping(), own.get());
    EXPECT_EQ(scene.rebuildsOf([&] { scene.kit->endDate = "70-01-03"; }), 1) << "in the format of the object";
    EXPECT_EQ(scene.rebuildsOf([&] { own.reset(); }), 1);
    EXPECT_EQ(scene.kit->getDateFormatMapping()->getFormat(), "dmy");
}

TEST(PoTimeAxis, BadInputHasADefinedResult) {
    constexpr int AS_BEFORE = -1, WHOLE = 14; // body and ticks
    struct Row {
        std::string setting;
        int segments;
        std::function<void(PoTimeAxis &, PbDateFormatMapping &)> spoil = {};
    };
    const Row rows[] = {
        {"startDate \"31-13-70\"", AS_BEFORE},
        {"endDate \"\"", AS_BEFORE},
        {"endDate \"1-01-70\"", AS_BEFORE},
        {"", AS_BEFORE, [](auto &kit, auto &) { kit.coord = NOT_A_NUMBER; }},
        {"", AS_BEFORE, [](auto &, auto &map) { map.setDateMapping("1-01-70", "2-01-70", 5, 5); }},
        {"", AS_BEFORE, [](auto &, auto &map) { map.setDateMapping("1-01-70", "2-01-70", -3e38f, 3e38f); }},
        {"", WHOLE, [](auto &kit, auto &) { kit.marginStart = -INFINITE; }},
        {"type 77 language -3 gradFit 9 timesPeriod \"?\" gradRep []", WHOLE},
        {"marginStart -3e38 marginEnd -3e38", 1},
        {"gradRep \"0.0001 SEC s\"", 1},
        {"gradRep \"9 YEA '" + std::string(100000, 'x') + "'\"", 2},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.setting.substr(0, 80));
        Scene scene;
        PbDateFormatMapping mapping;
        scene.kit->setDateFormatMapping(&mapping);
        scene.traverse();
        const auto *before = scene.part("mainGradText");
        EXPECT_TRUE(scene.kit->SoFieldContainer::set(row.setting.c_str()));
        if (row.spoil)
            row.spoil(*scene.kit, mapping);
        const test::Drawn drawn = test::drawnBy(scene.root.get());
        EXPECT_TRUE(drawn.isFinite);
        EXPECT_EQ(scene.part("mainGradText") == before, row.segments == AS_BEFORE);
        EXPECT_EQ(drawn.segments, row.segments == AS_BEFORE ? WHOLE : row.segments);
        for (const std::string &label : stringsOf(scene, "mainGradText"))
            EXPECT_LE(label.size(), 99U);
    }
}

TEST(PoTimeAxis, ObjectsMayGoWhileThePartsAreSet) {
    auto mapping = std::make_unique<PbDateFormatMapping>();
    const test::Ref<PoTimeAxis> kit(new PoTimeAxis);
    kit->setDateFormatMapping(mapping.get());
    kit->rebuild();
    SoFieldSensor sensor(
        [](void *data, SoSensor *) { static_cast<std::unique_ptr<PbDateFormatMapping> *>(data)->reset(); },
        &mapping);
    sensor.setPriority(0);
    sensor.attach(kit->getField("transform"));
    kit->setUpdateMethod(PoBase::UPDATE_IMMEDIATE); // parts are set with the notification on
    kit->touchKit();
    EXPECT_EQ(mapping, nullptr);
    EXPECT_NE(kit->getPart("mainGradText", FALSE), nullptr);
}

} // namespace
