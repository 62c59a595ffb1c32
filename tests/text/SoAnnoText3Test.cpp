#include "TestScene.h"

#include <oravane/SoAnnoText3.h>
#include <oravane/SoAnnoText3Property.h>

#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/details/SoTextDetail.h>
#include <Inventor/elements/SoAnnoText3CharOrientElement.h>

#include <gtest/gtest.h>

namespace {

test::Ref<SoSeparator> scene(const std::string &nodes) {
    return test::readBack("#Inventor V2.1 ascii\nSeparator { Font { name \"defaultFont\" size 2 } " + nodes +
                          " }");
}

TEST(SoAnnoText3, LinesAndTheirBox) {
    // Of the letters of "AAA" at size 1.
    constexpr float WIDTH = 2.361f, HEIGHT = 0.7489f, NEAR = 1e-3f;
    const struct {
        const char *fields;
        float left, right, bottom, top; ///< in font sizes
    } rows[] = {
        {"string \"AAA\"", 0, WIDTH, 0, HEIGHT},
        {"string [ \"AAA\", \"AAA\", \"AAA\" ]", 0, WIDTH, -2, HEIGHT},
        {"string [ \"A\", \"\", \"AAA\" ] spacing 1.5 justification RIGHT", -WIDTH, 0, -3, HEIGHT},
        {"string [ \"AAA\", \"AAA\" ] spacing -1 justification CENTER", -WIDTH / 2, WIDTH / 2, 0, 1 + HEIGHT},
        {"string [ \"\", \"AAA\", \"\" ] spacing 2", 0, WIDTH, -2, HEIGHT - 2},
        {"string [ \"a\", \"AAA\" ] spacing 0.1", 0, WIDTH, -0.1f, HEIGHT - 0.1f},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.fields);
        const auto root = scene(std::string("SoAnnoText3 { ") + row.fields + " }");
        const SbBox3f box = test::boundingBox(root.get());
        EXPECT_NEAR(box.getMin()[0], 2 * row.left, 0.1) << "letters keep a margin";
        EXPECT_NEAR(box.getMax()[0], 2 * row.right, 0.1);
        EXPECT_NEAR(box.getMin()[1], 2 * row.bottom, NEAR);
        EXPECT_NEAR(box.getMax()[1], 2 * row.top, NEAR);
        EXPECT_EQ(box.getSize()[2], 0);
    }
    for (const char *nothing : {"", "string \"\"", "string [ ]", "string [ \"\", \"\" ]"})
        EXPECT_TRUE(test::boundingBox(scene(std::string("SoAnnoText3 { ") + nothing + " }").get()).isEmpty())
            << nothing;
}

TEST(SoAnnoText3, LettersFaceTheViewerAndArePicked) {
    const auto root = scene("MaterialBinding { value PER_PART } SoAnnoText3 { string [ \"I\", \"I\" ] }");
    double area = 0;
    SoCallbackAction action;
    action.addTriangleCallback(
        SoAnnoText3::getClassTypeId(),
        [](void *sum, SoCallbackAction *, const SoPrimitiveVertex *a, const SoPrimitiveVertex *b,
           const SoPrimitiveVertex *c) {
            for (const SoPrimitiveVertex *v : {a, b, c})
                EXPECT_TRUE(v->getPoint()[2] == 0 && v->getNormal() == SbVec3f(0, 0, 1) &&
                            v->getMaterialIndex() == 0);
            *static_cast<double *>(sum) +=
                (b->getPoint() - a->getPoint()).cross(c->getPoint() - a->getPoint())[2];
        },
        &area);
    action.apply(root.get());
    EXPECT_GT(area, 0.2) << "counter-clockwise seen from z";

    const SbBox3f box = test::boundingBox(root.get());
    for (const float y : {box.getMax()[1] - 0.5f, box.getMin()[1] + 0.5f, 10.0f}) {
        SoRayPickAction pick{SbViewportRegion()};
        pick.setRay(SbVec3f(box.getCenter()[0], y, 5), SbVec3f(0, 0, -1));
        pick.apply(root.get());
        const SoPickedPoint *hit = pick.getPickedPoint();
        ASSERT_EQ(hit != nullptr, y < 10);
        if (hit) {
            EXPECT_EQ(static_cast<const SoTextDetail *>(hit->getDetail())->getStringIndex(), y < 0);
        }
    }
}

TEST(SoAnnoText3, FilesKeepTextsAndTheirProperties) {
    const auto root = scene("SoAnnoText3Property { renderPrintType 2 fontSizeHint ANNOTATION isOriented FALSE"
                            " } SoAnnoText3 { string [ \"a b\", \"c\" ] spacing 3 justification CENTER }");
    const std::string text = test::written(root.get());
    for (const char *part :
         {"SoAnnoText3Property {", "renderPrintType RENDER2D_PRINT_RASTER", "fontSizeHint ANNOTATION",
          "isOriented FALSE", "SoAnnoText3 {", "\"a b\"", "spacing 3", "justification CENTER"})
        EXPECT_NE(text.find(part), std::string::npos) << part;
    for (const bool isBinary : {false, true}) {
        const auto back = test::readBack(test::written(root.get(), isBinary));
        ASSERT_TRUE(back);
        EXPECT_EQ(test::written(back.get()), text);
    }
    EXPECT_TRUE(scene("SoAnnoText3 { fields [ SFFloat size ] string \"of a newer library\" }"));
}

TEST(SoAnnoText3, PropertiesReachTheTextsBehindThem) {
    const auto root = scene("SoAnnoText3Property { } Cube { } Separator { SoAnnoText3Property { "
                            "renderPrintType RENDER3D_PRINT_VECTOR "
                            "fontSizeHint ANNOTATION isOriented FALSE } Cube { } SoAnnoText3Property { "
                            "renderPrintType 2 ~ isOriented TRUE } Cube { } } Cube { }");
    std::string seen;
    SoCallbackAction action;
    action.addPreCallback(
        SoType::fromName("Cube"),
        [](void *data, SoCallbackAction *a, const SoNode *) {
            SoState *state = a->getState();
            *static_cast<std::string *>(data) += std::to_string(SoAnnoText3RenderPrintElement::get(state)) +
                                                 std::to_string(SoAnnoText3FontSizeHintElement::get(state)) +
                                                 std::to_string(SoAnnoText3CharOrientElement::get(state)) +
                                                 " ";
            return SoCallbackAction::CONTINUE;
        },
        &seen);
    action.apply(root.get());
    EXPECT_EQ(seen, "111 000 011 111 ") << "print type, size hint, orientation";
    test::boundingBox(root.get()); // actions without these elements pass by
}

} // namespace
