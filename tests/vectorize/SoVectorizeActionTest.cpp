#include "vectorize/PageFixture.h"
#include "vectorize/RecordingAction.h"

#include <Inventor/SoPath.h>
#include <Inventor/actions/SoAction.h>
#include <Inventor/elements/SoViewportRegionElement.h>
#include <Inventor/lists/SoPathList.h>
#include <Inventor/nodes/SoCallback.h>
#include <Inventor/nodes/SoCoordinate3.h>

#include <algorithm>
#include <cmath>

namespace {

using namespace oravane_test;
using Action = SoVectorizeAction;
using Drawn = RecordingAction::Drawn;

const SbColor kBlack(0, 0, 0), kWhite(1, 1, 1), kRed(1, 0, 0), kGreen(0, 1, 0), kBlue(0, 0, 1);

/// Draws `nodes`, expects drawings of those kinds, and gives the first of them.
Drawn draw(RecordingAction &action, const std::string &nodes, const std::string &kinds) {
    const Scene scene(view(nodes));
    action.forget();
    action.apply(scene);
    EXPECT_EQ(action.kinds(), kinds) << nodes;
    Drawn first = action.drawn.empty() ? Drawn() : action.drawn[0];
    first.points.resize(std::max<std::size_t>(first.points.size(), 3));
    first.colors.resize(first.points.size());
    return first;
}

TEST(SoVectorizeAction, FrameOfPages) {
    RecordingAction action;
    const Scene scene(view(kTriangle));
    action.apply(scene);
    EXPECT_EQ(action.frame, "HGCBF");
    action.forget();
    action.beginPage(SbVec2f(1, 2), SbVec2f(20, 30), Action::MILLIMETER);
    EXPECT_FLOAT_EQ(action.getOffsetX(), 11) << "the page's origin and the start position";
    action.apply(scene);
    action.apply(scene);
    action.endPage();
    action.endPage();
    EXPECT_EQ(action.frame, "HGCBGCBF");
    action.forget();
    action.apply(static_cast<SoNode *>(nullptr));
    action.beginPage(SbVec2f(1, 2), SbVec2f(20, 30), Action::MILLIMETER);
    action.endPage();
    EXPECT_EQ(action.frame, "HGBFHF") << "pages without drawings";
}

TEST(SoVectorizeAction, IsNotAppliedFromInside) {
    RecordingAction action;
    const Scene scene(view("Callback { } " + kTriangle));
    scene.child<SoCallback>(1)->setCallback(
        [](void *self, SoAction *) { static_cast<RecordingAction *>(self)->apply(SoPathList()); }, &action);
    action.apply(scene);
    EXPECT_EQ(action.kinds() + action.frame, "polygon3 HGCBF");
}

TEST(SoVectorizeAction, IsOfUseAfterADriverThrew) {
    class Throwing : public RecordingAction {
    public:
        bool throws = true;

    protected:
        void printBackground() override {
            if (std::exchange(throws, false))
                throw std::bad_alloc();
        }
    } action;
    const Scene scene(view(kTriangle));
    EXPECT_THROW(action.apply(scene), std::bad_alloc);
    action.forget();
    action.apply(scene);
    EXPECT_EQ(action.kinds() + action.frame, "polygon3 HCBF");
}

TEST(SoVectorizeAction, PathsAndPathListsDrawTheirPart) {
    const Scene scene(view(kPlain + kTriangle + "LineSet { } PointSet { }"));
    SoPathList paths;
    for (const int child : {3, 5}) {
        paths.append(new SoPath(scene));
        paths[paths.getLength() - 1]->append(child);
    }
    RecordingAction action;
    action.apply(paths);
    action.apply(paths[1]);
    EXPECT_EQ(action.kinds() + action.frame, "polygon3 marks3 marks3 HGCBFHGCBF");
}

TEST(SoVectorizeAction, SettingsKeepTheirMeaningInAllUnits) {
    RecordingAction action;
    action.setStartPosition(1, 2, Action::INCH);
    EXPECT_EQ(action.getStartPosition(Action::MILLIMETER), SbVec2f(25.4f, 50.8f));
    action.setDrawingDimensions(SbVec2f(0.1f, 0.2f), Action::METER);
    for (const float bad : {NAN, 1e37f}) // too large in millimetres
        action.setDrawingDimensions(1, bad, Action::METER);
    EXPECT_EQ(action.getDrawingDimensions(Action::MILLIMETER), SbVec2f(100, 200));
    action.setNominalWidth(3, static_cast<Action::DimensionUnit>(9));
    EXPECT_EQ(action.getNominalWidth(Action::MILLIMETER), 0);
    float width = 0;
    action.setBorder(3, kRed);
    action.setBorder(HUGE_VALF);
    action.getBorder(&width, nullptr);
    EXPECT_EQ(width, 3);
    action.setMiterLimit(0.5f);
    EXPECT_EQ(action.getMiterLimit(), 1);
}

TEST(SoVectorizeAction, TranslatesColors) {
    RecordingAction action;
    const auto expect = [&](const SbColor &ofBlack, const SbColor &ofWhite, const SbColor &ofRed) {
        EXPECT_EQ(action.translateColor(kBlack), ofBlack);
        EXPECT_EQ(action.translateColor(kWhite), ofWhite);
        EXPECT_EQ(action.translateColor(kRed), ofRed);
    };
    expect(kWhite, kBlack, kRed);
    action.setColorTranslationMethod(Action::COMPLEMENT_COLORS);
    expect(kWhite, kBlack, SbColor(0, 1, 1));
    action.setColorTranslationMethod(Action::KEEP_COLORS);
    expect(kBlack, kWhite, kRed);
}

TEST(SoVectorizeAction, DrawStylesOfTriangles) {
    const std::string blue = kPlain + "BaseColor { rgb 0 0 1 } ";
    RecordingAction action;
    for (const auto mode : {Action::HLHSR_NONE, Action::HLHSR_Z_SORT}) {
        action.setHLHSRMode(mode);
        const Drawn filled = draw(action, blue + kTriangle, "polygon3 ");
        EXPECT_EQ(SbVec2f(filled.points[2].getValue()), SbVec2f(50, 100));
        EXPECT_EQ(filled.colors[0], kBlue);
        const std::string lines = "DrawStyle { style LINES lineWidth 2 linePattern 0xF0F0 } ";
        const Drawn outline = draw(action, blue + lines + kTriangle, "line4 "); // closed
        EXPECT_EQ(outline.size, 2);
        EXPECT_EQ(outline.pattern, 0xF0F0);
        EXPECT_EQ(draw(action, blue + "DrawStyle { style POINTS pointSize 5 } " + kTriangle, "marks3 ").size,
                  5);
        draw(action, "DrawStyle { style POINTS } Coordinate3 { point [ 0 0 0, 1 0 0 ] } LineSet { }",
             "marks2 ");
        draw(action, blue + "DrawStyle { style INVISIBLE } " + kTriangle, "");
    }
}

const std::string kPerVertex = kPlain + "MaterialBinding { value PER_VERTEX } ";

TEST(SoVectorizeAction, TransparentVerticesDropAPrimitiveOnlyTogether) {
    const struct {
        const char *transparency, *shape, *kinds;
    } rows[] = {{"1, 0, 0", "FaceSet { }", "polygon3 "},    {"1, 1, 1", "FaceSet { }", ""},
                {"0.99, 1, 1", "FaceSet { }", "polygon3 "}, {"1, 1, 0", "LineSet { }", "line2 "},
                {"1, 1, 0", "PointSet { }", "marks1 "},     {"0, 1, 1", "Text2 { string \"a\" }", "text1 "},
                {"1, 0, 0", "Text2 { string \"a\" }", ""}};
    RecordingAction action;
    for (const auto &row : rows)
        draw(action,
             kPerVertex + "Material { diffuseColor [ 1 0 0, 0 1 0, 0 0 1 ] transparency [ " +
                 row.transparency + " ] } Coordinate3 { point [ -1 -1 0, 1 -1 0, 0 1 0 ] } " + row.shape,
             row.kinds);
}

TEST(SoVectorizeAction, LinesJoinIntoRuns) {
    RecordingAction action;
    const std::string points =
        kPlain + "Coordinate3 { point [ 0 0 0, .5 0 0, .5 .5 0, 0 .5 0, -1 0 0, 3 0 0 ] } ";
    draw(action, points + "IndexedLineSet { coordIndex [ 0, 1, 2, -1, 3, 4, -1 ] }", "line3 line2 ");
    const Drawn cut = draw(action, points + "IndexedLineSet { coordIndex [ 4, 5, 2, -1 ] }", "line2 line2 ");
    EXPECT_EQ(cut.points[1][0], 100) << "where it leaves the view";
    // One node after the other, with nothing between: the runs do not mix.
    const Drawn first = draw(action,
                             points + "Separator { Translation { translation 0 .1 0 } IndexedLineSet { "
                                      "coordIndex [ 0, 1 ] } } IndexedLineSet { coordIndex [ 1, 2 ] }",
                             "line2 line2 ");
    EXPECT_FLOAT_EQ(first.points[0][1], 55);
    EXPECT_FLOAT_EQ(action.drawn.at(1).points[0][1], 50);
}

TEST(SoVectorizeAction, ColorsOfPointsAndFaces) {
    RecordingAction action;
    const Drawn markers = draw(action,
                               kPerVertex + "BaseColor { rgb [ 1 0 0, 0 1 0, 0 0 1 ] } "
                                            "Coordinate3 { point [ 5 0 0, 0 0 0, .5 0 0 ] } MarkerSet { }",
                               "markers2 ");
    EXPECT_EQ(markers.multicolor, 1);
    EXPECT_EQ(markers.points[0][0], 50);
    EXPECT_EQ(markers.colors[0], kRed) << "lost points leave their colours to others";

    draw(action,
         kPlain +
             "MaterialBinding { value PER_FACE } BaseColor { rgb [ .1 0 0, .2 0 0, .3 0 0, .4 0 0 ] } "
             "Coordinate3 { point [ -1 -1 0, 0 -1 0, 1 -1 0, -1 0 0, 0 0 0, 1 0 0, -1 1 0, 0 1 0, 1 1 0 ] "
             "} QuadMesh { verticesPerRow 3 verticesPerColumn 3 }",
         "polygon3 polygon3 polygon3 polygon3 polygon3 polygon3 polygon3 polygon3 ");
    for (std::size_t i = 0; i < action.drawn.size(); ++i)
        EXPECT_FLOAT_EQ(action.drawn[i].colors[0][0], 0.1f * static_cast<float>(i / 2 + 1)) << i;

    const Drawn tooFew = draw(action, kPerVertex + "BaseColor { rgb [ .5 0 0 ] } " + kTriangle, "polygon3 ");
    EXPECT_EQ(tooFew.colors, std::vector<SbColor>(3, SbColor(0.5f, 0, 0))) << "not read beyond their end";
}

TEST(SoVectorizeAction, TextsAndImages) {
    RecordingAction action;
    const std::string aside = "Translation { translation 1.01 0 0 } ";
    const std::string text =
        "Font { size 10 } Text2 { string [ \"a\", \"b\" ] justification CENTER spacing 2 } ";
    EXPECT_EQ(draw(action, text, "text1 text1 ").justification, 3);
    EXPECT_EQ(action.drawn.at(1).text, "b");
    EXPECT_NEAR(action.drawn[0].points[0][1] - action.drawn[1].points[0][1], 20 * 0.3527778, 1e-4);
    draw(action, aside + text, "");

    // Of an image only the depth of its origin counts, and it has no triangles.
    const std::string image = "Image { width 8 image 2 1 3 0xff0000 0x00ff00 } ";
    EXPECT_EQ(draw(action, aside + image, "image1 ").text, "2x1x3 as 8x1");
    draw(action, "Translation { translation 0 0 5 } " + image, "");
    action.setHLHSRMode(Action::HLHSR_Z_SORT); // equal depths in the order of the scene
    draw(action, text + kTriangle + image, "text1 text1 polygon3 image1 ");
}

TEST(SoVectorizeAction, AnnotationTextByPrintType) {
    RecordingAction action; // one unit of the scene is 50 mm
    const std::string type = "SoAnnoText3Property { renderPrintType ";
    const std::string text = "Font { size 0.1 name \"defaultFont\" } "
                             "SoAnnoText3 { string [ \"I\", \"b\" ] justification RIGHT spacing 2 } ";
    const Scene letters(view(type + "0 } " + text));
    action.apply(letters);
    const std::string polygons = action.kinds();
    EXPECT_EQ(polygons.find("polygon3 polygon3 "), 0);
    for (const auto mode : {Action::HLHSR_NONE, Action::HLHSR_Z_SORT}) {
        action.setHLHSRMode(mode);
        draw(action, text, "text1 text1 "); // text, when the scene says nothing
        draw(action, type + "0 } " + text, polygons);
        draw(action, type + "2 } " + text, "text1 text1 " + polygons);
        const Drawn first = draw(action, type + "1 } " + text + kTriangle, "text1 text1 polygon3 ");
        const Drawn &second = action.drawn.at(1);
        EXPECT_EQ(first.text + second.text, "Ib");
        EXPECT_EQ(first.justification, 2);
        EXPECT_NEAR(first.points[0][1], 50, 1e-4);
        EXPECT_NEAR(first.points[0][1] - second.points[0][1], 10, 1e-4);
    }
    draw(action, type + "1 } DrawStyle { style INVISIBLE } " + text, "");
    draw(action, type + "1 } Translation { translation 1.01 0 0 } " + text, "");
}

TEST(SoVectorizeAction, SizeAndDirectionOfAnnotationText) {
    const std::string near =
        "PerspectiveCamera { position 0 0 5 heightAngle 0.4 nearDistance 1 farDistance 99 } ";
    const float pi = 3.1415927f, atOrigin = 100 * 0.1f / (2 * 5 * std::tan(0.2f)); // mm
    const struct {
        const char *name;
        std::string fields, before;
        float millimeters, angle;
    } rows[] = {
        {"turned", "", "Rotation { rotation 0 0 1 -0.7 } ", 5, -0.7f},
        {"turned, but not followed", "isOriented FALSE", "Rotation { rotation 0 0 1 -0.7 } ", 5, 0},
        {"upside down", "", "Rotation { rotation 0 0 1 3.1415927 } ", 5, pi},
        {"the smaller of two", "", "Scale { scaleFactor 3 2 9 } ", 10, 0},
        {"the largest", "fontSizeHint ANNOTATION", "Scale { scaleFactor 3 2 1 } ", 15, 0},
        {"the largest stands to the back", "fontSizeHint ANNOTATION",
         "Rotation { rotation 1 0 0 1.5707963 } Scale { scaleFactor 1 1 3 } ", 15, 0},
        {"in perspective", "", near, atOrigin, 0},
        {"in perspective, twice as far", "", near + "Translation { translation 0 0 -5 } ", atOrigin / 2, 0},
        {"shrunk to nothing", "", "Scale { scaleFactor 0 0 0 } ", 1, 0},
        {"too large", "", "Scale { scaleFactor 50 50 50 } ", 64, 0},
    };
    RecordingAction action;
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        const Drawn text = draw(action,
                                "SoAnnoText3Property { renderPrintType 1 " + row.fields + " } " + row.before +
                                    "Font { size 0.1 } SoAnnoText3 { string \"x\" } ",
                                "text1 ");
        EXPECT_NEAR(text.size * 0.3527778, row.millimeters, 1e-3);
        EXPECT_NEAR(std::remainder(text.angle - row.angle, 2 * pi), 0, 1e-5);
    }
    // On a sheet that is not square, and lines of turned text stand across its direction.
    action.setDrawingDimensions(100, 50, Action::MILLIMETER);
    const Drawn first = draw(
        action, "Rotation { rotation 0 0 1 0.7 } Font { size 0.1 } SoAnnoText3 { string [ \"x\", \"y\" ] } ",
        "text1 text1 ");
    EXPECT_NEAR(first.angle, std::atan2(0.5 * std::sin(0.7), std::cos(0.7)), 1e-5) << "squeezed by half";
    const SbVec4f step = action.drawn.at(1).points[0] - first.points[0];
    EXPECT_GT(step[0], 1);
    EXPECT_NEAR(step[0] * std::cos(first.angle) + step[1] * std::sin(first.angle), 0, 1e-4);
}

const std::string kBlueMaterial = "Material { ambientColor 0 0 0 diffuseColor 0 .5 1 } ";

TEST(SoVectorizeAction, LitTrianglesAreFlat) {
    const std::string lit = "DirectionalLight { direction 0 0 -1 } " + kBlueMaterial +
                            "Normal { vector [ 0 0 1, 0 0.6 0.8, 0 0 -1 ] } "
                            "NormalBinding { value PER_VERTEX } " +
                            kTriangle;
    RecordingAction action;
    action.enableLighting(1);
    const auto color = [&](const std::string &nodes) { return draw(action, nodes, "polygon3 ").colors[0]; };
    action.setColorTranslationMethod(Action::KEEP_COLORS);
    for (const SbColor &flat : draw(action, lit, "polygon3 ").colors)
        EXPECT_TRUE(flat.equals(SbColor(0, 0.5f * 1.8f / 3, 1.8f / 3), 1e-10f));
    EXPECT_NEAR(color("ShapeHints { vertexOrdering COUNTERCLOCKWISE } " + lit)[2], 2.8f / 3, 1e-5)
        << "both sides";
    EXPECT_EQ(color(kPlain + lit), SbColor(0, 0.5f, 1));
    action.setColorTranslationMethod(Action::SWAP_BLACK_WHITE);
    EXPECT_NEAR(color(lit)[0], 1 / 3.0f, 1e-5) << "a black corner is white on the page";
    const SbColor bright = color("Material { ambientColor 0 0 0 emissiveColor 1 1 1 } " + kTriangle);
    EXPECT_EQ(bright[0], 1);
    EXPECT_NEAR(bright[2], 0.9999f, 1e-6) << "and so not turned black";
}

TEST(SoVectorizeAction, LightsFadeAsTheToolkitCounts) {
    RecordingAction action;
    action.enableLighting(1);
    // Factors of the squared distance, of the distance, and of 1; as a rule light does not fade.
    for (const auto &[fading, brightness] : {std::pair("", 1.0),
                                             {"Environment { attenuation 0.0003 0 1 }", 0.25},
                                             {"Environment { attenuation 0 0.02 0 }", 0.5}}) {
        const Drawn drawn = draw(action,
                                 fading + ("PointLight { location 0 0 100 } " + kBlueMaterial) +
                                     "Normal { vector 0 0 1 } NormalBinding { value OVERALL } " + kTriangle,
                                 "polygon3 ");
        EXPECT_NEAR(drawn.colors[0][2], brightness, 1e-3) << fading;
    }
}

TEST(SoVectorizeAction, LightsFollowTheViewAndTheModel) {
    // The whole scene is turned by half a turn about x together with the camera's place: light, normals and
    // points must be seen in one and the same frame.
    const Scene scene("Separator { OrthographicCamera { position 0 0 -5 orientation 0 1 0 3.14159265 "
                      "nearDistance 1 farDistance 9 } DirectionalLight { direction 0 0 1 } " +
                      kBlueMaterial +
                      "Scale { scaleFactor 1 1 10 } Normal { vector 0 0.6 -0.08 } "
                      "NormalBinding { value OVERALL } " +
                      kTriangle + "}");
    RecordingAction action;
    action.enableLighting(1);
    action.apply(scene);
    ASSERT_EQ(action.drawn.size(), 1u);
    EXPECT_NEAR(action.drawn[0].colors[0][2], 0.008 / std::hypot(0.6, 0.008), 1e-5)
        << "normals go by the inverse scaling";
}

/// A callback node's function: the view is the left or the right half of the window.
void enterHalf(void *data, SoAction *action) {
    SbViewportRegion region = SoViewportRegionElement::get(action->getState());
    region.setViewport(data ? 0.5f : 0.0f, 0.0f, 0.5f, 1.0f);
    SoViewportRegionElement::set(action->getState(), region);
}

TEST(SoVectorizeAction, EachViewIsClippedAndSortedByItself) {
    RecordingAction action;
    const std::string half = "Separator { Callback { } " + kCamera;
    const Scene scene("Separator { " + half + "DEF part Separator { " + kPlain +
                      "Separator { Translation { translation 0 0 1 } " + kTriangle +
                      "} Separator { Translation { translation 0 0 -1 } " + kTriangle + "} } } " + half +
                      "Translation { translation 0.5 0 -2 } USE part } }");
    for (int k = 0; k < 2; ++k)
        scene.child<SoCallback>(k, 0)->setCallback(enterHalf, k ? &action : nullptr);
    action.setHLHSRMode(Action::HLHSR_Z_SORT);
    action.apply(scene);
    EXPECT_EQ(action.frame, "HGCCBF");
    ASSERT_EQ(action.kinds(), "polygon3 polygon3 polygon4 polygon4 ");
    const auto z = [&](int i) { return action.drawn[i].points[0][2]; };
    EXPECT_GT(z(0), z(1)) << "far first";
    EXPECT_GT(z(2), z(3));
    EXPECT_GT(z(2), z(1)) << "but not across views";
    EXPECT_EQ(action.drawn[0].points[0][0], 0);
    EXPECT_EQ(action.drawn[0].points[1][0], 50);
    EXPECT_EQ(action.drawn[2].points[0][0], 62.5f) << "half of the way out to the middle of its half";
    EXPECT_EQ(action.getClippingLimits(), SbBox2f(50, 0, 100, 100));
}

TEST(SoVectorizeAction, Pens) {
    RecordingAction action;
    const auto expectPen = [&](const SbColor &color, float width, int pen, float itsWidth) {
        int index = -1;
        float penWidth = -1;
        action.penAssignment(color, width, &index, &penWidth);
        action.penAssignment(color, width, nullptr, nullptr);
        EXPECT_EQ(std::pair(index, penWidth), std::pair(pen, itsWidth)) << width;
    };
    expectPen(kRed, 2, 0, 2); // unrestricted
    action.setPenDescription(3, nullptr, std::vector<float>(3, 1).data(), Action::MILLIMETER);
    ASSERT_EQ(action.getPenNum(), 4);
    SbColor colors[4];
    float widths[4];
    action.getPenDescription(colors, widths, Action::MILLIMETER);
    action.getPenDescription(nullptr, nullptr, Action::MILLIMETER);
    EXPECT_EQ(colors[0], kWhite);
    EXPECT_EQ(colors[3], kGreen);
    EXPECT_FLOAT_EQ(widths[3], 0.3527778f);
    expectPen(SbColor(0.8f, 0.1f, 0.1f), 1, 2, widths[2]);

    const SbColor four[] = {kRed, kRed, kGreen, kRed};
    const float inMillimeters[] = {0.5f, 1, 1, 0.2f};
    action.setPenDescription(4, four, inMillimeters, Action::MILLIMETER);
    expectPen(kRed, 0.7f, 0, 0.5f);   // the widest red one that is not wider
    expectPen(kRed, 0.1f, 3, 0.2f);   // the narrowest red one
    expectPen(kGreen, 0.1f, 2, 1.0f); // the only green one
    action.setColorPriority(0);
    expectPen(kGreen, 5, 2, 1.0f); // of the widest the nearest colour
    expectPen(kGreen, 0.6f, 0, 0.5f);
    expectPen(kGreen, 0.1f, 3, 0.2f);
    action.setPenDescription(-1, four, nullptr, Action::MILLIMETER);
    EXPECT_EQ(action.getPenNum(), 4);
    action.setPenDescription(1000, std::vector<SbColor>(1000, kRed).data(), nullptr, Action::MILLIMETER);
    EXPECT_EQ(action.getPenNum(), 256);
    action.setPenDescription(0, nullptr, nullptr, Action::MILLIMETER);
    EXPECT_EQ(action.getPenNum(), 0);
}

/// The debugging back end under a driver that draws nothing of its own.
class PrintingAction : public SoVectorizeAction {
    void writeHeader() override {}
    void writeFooter() override {}
    void setHardwareClip() override {}
    void printBorder() override {}
    void printBackground() override {}
};

TEST(SoVectorizeAction, PrintsForDebugging) {
    PrintingAction action;
    action.setDrawingDimensions(100, 100, Action::MILLIMETER);
    const Scene scene(view(kPlain + "BaseColor { rgb 1 .5 0 } " + kTriangle +
                           "DrawStyle { lineWidth 2 pointSize 3 linePattern 0xff } LineSet { } "
                           "MaterialBinding { value PER_VERTEX } BaseColor { rgb [ 1 0 0, 0 1 0, 0 0 1 ] } "
                           "PointSet { } Font { name \"Times\" size 12 } Text2 { string \"hi\" }"));
    ::testing::internal::CaptureStdout();
    action.apply(scene);
    std::fflush(stdout);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), expectedFile("debugging.txt"));
}

} // namespace
