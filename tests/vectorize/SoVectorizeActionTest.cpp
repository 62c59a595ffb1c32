#include "vectorize/PageFixture.h"
#include "vectorize/RecordingAction.h"

#include <Inventor/SoPath.h>
#include <Inventor/actions/SoAction.h>
#include <Inventor/elements/SoViewportRegionElement.h>
#include <Inventor/lists/SoPathList.h>
#include <Inventor/nodes/SoCallback.h>
#include <Inventor/nodes/SoCoordinate3.h>

#include <cmath>
#include <limits>

namespace {

using namespace oravane_test;
using Action = SoVectorizeAction;

const std::string kCamera = "OrthographicCamera { position 0 0 5 nearDistance 1 farDistance 9 height 2 "
                            "viewportMapping LEAVE_ALONE aspectRatio 1 } ";
const std::string kPlain = "LightModel { model BASE_COLOR } ";
const std::string kCorners = "Coordinate3 { point [ -1 -1 0, 1 -1 0, 0 1 0 ] } ";

std::string view(const std::string &nodes) {
    return "Separator { " + kCamera + nodes + " }";
}

RecordingAction &draw(RecordingAction &action, const std::string &nodes) {
    const Scene scene(view(nodes));
    action.forget();
    action.apply(scene);
    return action;
}

TEST(SoVectorizeAction, FrameOfPages) {
    RecordingAction action;
    const Scene scene(view(kCorners + "FaceSet { }"));
    action.apply(scene);
    EXPECT_EQ(action.frame, "HGCBF");
    action.forget();
    action.beginPage(SbVec2f(1, 2), SbVec2f(20, 30), Action::MILLIMETER);
    action.apply(scene);
    action.apply(scene);
    action.endPage();
    EXPECT_EQ(action.frame, "HGCBGCBF");
    action.forget();
    action.endPage();
    action.apply(static_cast<SoNode *>(nullptr));
    EXPECT_EQ(action.frame, "HGBF");
    action.beginPage(SbVec2f(1, 2), SbVec2f(20, 30), Action::MILLIMETER);
    EXPECT_FLOAT_EQ(action.getOffsetX(), 11) << "the page's origin and the start position";
}

TEST(SoVectorizeAction, PathsAndPathListsDrawTheirPart) {
    const Scene scene(view(kPlain + kCorners + "FaceSet { } LineSet { } PointSet { }"));
    auto *root = static_cast<SoSeparator *>(static_cast<SoNode *>(scene));
    const auto pathTo = [&](int child) {
        auto *path = new SoPath(root);
        path->append(child);
        return path;
    };
    SoPathList paths;
    paths.append(pathTo(3));
    paths.append(pathTo(5));
    RecordingAction action;
    action.apply(paths);
    EXPECT_EQ(action.kinds(), "polygon marks ");
    action.forget();
    action.apply(paths[1]);
    EXPECT_EQ(action.kinds(), "marks ");
    EXPECT_EQ(action.frame, "HGCBF");
}

TEST(SoVectorizeAction, SettingsKeepTheirMeaningInAllUnits) {
    RecordingAction action;
    action.setStartPosition(1, 2, Action::INCH);
    EXPECT_EQ(action.getStartPosition(Action::MILLIMETER), SbVec2f(25.4f, 50.8f));
    action.setDrawingDimensions(SbVec2f(0.1f, 0.2f), Action::METER);
    EXPECT_EQ(action.getDrawingDimensions(Action::MILLIMETER), SbVec2f(100, 200));
    action.setDrawingDimensions(std::numeric_limits<float>::quiet_NaN(), 1, Action::METER);
    EXPECT_EQ(action.getDrawingDimensions(Action::METER), SbVec2f(0.1f, 0.2f));
    EXPECT_FLOAT_EQ(action.getNominalWidth(Action::INCH), 1 / 72.0f);
    action.setNominalWidth(3, static_cast<Action::DimensionUnit>(9));
    EXPECT_EQ(action.getNominalWidth(Action::MILLIMETER), 0);
    action.setMiterLimit(0.5f);
    EXPECT_EQ(action.getMiterLimit(), 1);
    action.setBorder(3, SbColor(1, 0, 0));
    action.setBorder(std::numeric_limits<float>::infinity());
    float width = 0;
    action.getBorder(&width, nullptr);
    EXPECT_EQ(width, 3);
    action.setHLHSRMode(static_cast<Action::HLHSRMode>(7));
    EXPECT_EQ(action.getHLHSRMode(), Action::HLHSR_NONE);
}

TEST(SoVectorizeAction, TranslatesColors) {
    RecordingAction action;
    const SbColor black(0, 0, 0), white(1, 1, 1), red(1, 0, 0);
    EXPECT_EQ(action.translateColor(black), white);
    EXPECT_EQ(action.translateColor(white), black);
    EXPECT_EQ(action.translateColor(red), red);
    action.setColorTranslationMethod(Action::COMPLEMENT_COLORS);
    EXPECT_EQ(action.translateColor(red), SbColor(0, 1, 1));
    action.setColorTranslationMethod(Action::KEEP_COLORS);
    EXPECT_EQ(action.translateColor(black), black);
}

TEST(SoVectorizeAction, DrawStylesOfTriangles) {
    const std::string blue = kPlain + "BaseColor { rgb 0 0 1 } " + kCorners;
    RecordingAction action;
    for (const auto mode : {Action::HLHSR_NONE, Action::HLHSR_Z_SORT, Action::HLHSR_LINE_REMOVAL}) {
        action.setHLHSRMode(mode);
        draw(action, blue + "FaceSet { }");
        ASSERT_EQ(action.kinds(), "polygon ");
        EXPECT_EQ(action.drawn[0].points.size(), 3u);
        EXPECT_EQ(action.drawn[0].points[2][0], 50);
        EXPECT_EQ(action.drawn[0].points[2][1], 100);
        EXPECT_EQ(action.drawn[0].colors[0], SbColor(0, 0, 1));
        draw(action, blue + "DrawStyle { style LINES lineWidth 2 linePattern 0xF0F0 } FaceSet { }");
        ASSERT_EQ(action.kinds(), "line ");
        EXPECT_EQ(action.drawn[0].points.size(), 4u) << "closed";
        EXPECT_EQ(action.drawn[0].size, 2);
        EXPECT_EQ(action.drawn[0].pattern, 0xF0F0);
        draw(action, blue + "DrawStyle { style POINTS pointSize 5 } FaceSet { }");
        ASSERT_EQ(action.kinds(), "marks ");
        EXPECT_EQ(action.drawn[0].size, 5);
        EXPECT_EQ(draw(action, blue + "DrawStyle { style INVISIBLE } FaceSet { }").kinds(), "");
    }
}

TEST(SoVectorizeAction, TransparentVerticesDropAPrimitiveOnlyTogether) {
    const auto triangle = [](const std::string &transparency) {
        return kPlain +
               "MaterialBinding { value PER_VERTEX } Material { diffuseColor [ 1 0 0, 0 1 0, 0 0 1 ] "
               "transparency [ " +
               transparency + " ] } " + kCorners;
    };
    RecordingAction action;
    EXPECT_EQ(draw(action, triangle("1, 0, 0") + "FaceSet { }").kinds(), "polygon ");
    EXPECT_EQ(draw(action, triangle("1, 1, 1") + "FaceSet { }").kinds(), "");
    EXPECT_EQ(draw(action, triangle("0.99, 1, 1") + "FaceSet { }").kinds(), "polygon ");
    EXPECT_EQ(draw(action, triangle("1, 1, 0") + "LineSet { }").drawn.at(0).points.size(), 2u);
    EXPECT_EQ(draw(action, triangle("1, 1, 0") + "PointSet { }").drawn.at(0).points.size(), 1u);
}

TEST(SoVectorizeAction, LinesJoinIntoRuns) {
    RecordingAction action;
    const std::string points =
        kPlain + "Coordinate3 { point [ 0 0 0, .5 0 0, .5 .5 0, 0 .5 0, -1 0 0, 3 0 0 ] } ";
    draw(action, points + "IndexedLineSet { coordIndex [ 0, 1, 2, -1, 3, 4, -1 ] }");
    ASSERT_EQ(action.kinds(), "line line ");
    EXPECT_EQ(action.drawn[0].points.size(), 3u);
    EXPECT_EQ(action.drawn[1].points.size(), 2u);
    draw(action, points + "IndexedLineSet { coordIndex [ 4, 5, 2, -1 ] }");
    ASSERT_EQ(action.kinds(), "line line ") << "cut where it leaves the view";
    EXPECT_EQ(action.drawn[0].points[1][0], 100);
    // One node after the other, with nothing between: the runs do not mix.
    draw(action,
         points + "Separator { Translation { translation 0 .1 0 } IndexedLineSet { coordIndex [ 0, 1 ] } } "
                  "IndexedLineSet { coordIndex [ 1, 2 ] }");
    ASSERT_EQ(action.kinds(), "line line ");
    EXPECT_FLOAT_EQ(action.drawn[0].points[0][1], 55);
    EXPECT_FLOAT_EQ(action.drawn[1].points[0][1], 50);
}

TEST(SoVectorizeAction, LostPointsLeaveTheirColorsToOthers) {
    RecordingAction action;
    draw(action, kPlain + "MaterialBinding { value PER_VERTEX } BaseColor { rgb [ 1 0 0, 0 1 0, 0 0 1 ] } "
                          "Coordinate3 { point [ 5 0 0, 0 0 0, .5 0 0 ] } MarkerSet { }");
    ASSERT_EQ(action.kinds(), "markers ");
    ASSERT_EQ(action.drawn[0].points.size(), 2u);
    EXPECT_EQ(action.drawn[0].multicolor, 1);
    EXPECT_EQ(action.drawn[0].points[0][0], 50);
    EXPECT_EQ(action.drawn[0].colors[0], SbColor(1, 0, 0));
}

TEST(SoVectorizeAction, QuadMeshTakesTheMaterialOfEachFace) {
    RecordingAction action;
    draw(action, kPlain +
                     "MaterialBinding { value PER_FACE } "
                     "BaseColor { rgb [ .1 0 0, .2 0 0, .3 0 0, .4 0 0 ] } "
                     "Coordinate3 { point [ -1 -1 0, 0 -1 0, 1 -1 0, -1 0 0, 0 0 0, 1 0 0, -1 1 0, 0 1 0, "
                     "1 1 0 ] } QuadMesh { verticesPerRow 3 verticesPerColumn 3 }");
    ASSERT_EQ(action.count("polygon"), 8);
    for (int i = 0; i < 8; ++i)
        EXPECT_FLOAT_EQ(action.drawn[i].colors[0][0], 0.1f * static_cast<float>(i / 2 + 1)) << i;
}

TEST(SoVectorizeAction, TooFewMaterialsAreNotReadBeyondTheirEnd) {
    RecordingAction action;
    draw(action, kPlain + "MaterialBinding { value PER_VERTEX } BaseColor { rgb [ .5 0 0 ] } " + kCorners +
                     "FaceSet { }");
    ASSERT_EQ(action.kinds(), "polygon ");
    for (const SbColor &color : action.drawn[0].colors)
        EXPECT_EQ(color, SbColor(0.5f, 0, 0));
}

TEST(SoVectorizeAction, TextsAndImages) {
    RecordingAction action;
    const std::string text =
        "Font { size 10 } Text2 { string [ \"a\", \"b\" ] justification CENTER spacing 2 } ";
    draw(action, text);
    ASSERT_EQ(action.kinds(), "text text ");
    EXPECT_EQ(action.drawn[1].text, "b");
    EXPECT_EQ(action.drawn[0].justification, 3);
    EXPECT_NEAR(action.drawn[0].points[0][1] - action.drawn[1].points[0][1], 20 * 0.3527778, 1e-4);
    EXPECT_EQ(draw(action, "Translation { translation 1.01 0 0 } " + text).kinds(), "");

    const std::string image = "Image { width 8 image 2 1 3 0xff0000 0x00ff00 } ";
    draw(action, "Translation { translation 1.01 0 0 } " + image);
    ASSERT_EQ(action.kinds(), "image ") << "only the depth of its origin counts, and it has no triangles";
    EXPECT_EQ(action.drawn[0].text, "2x1x3");
    EXPECT_EQ(action.drawn[0].size, 8);
    EXPECT_EQ(draw(action, "Translation { translation 0 0 5 } " + image).kinds(), "");
    action.setHLHSRMode(Action::HLHSR_Z_SORT);
    EXPECT_EQ(draw(action, text + kCorners + "FaceSet { } " + image).kinds(), "text text polygon image ")
        << "equal depths in the order of the scene";
}

TEST(SoVectorizeAction, LitTrianglesAreFlat) {
    const std::string lit =
        "DirectionalLight { direction 0 0 -1 } "
        "Material { ambientColor 0 0 0 diffuseColor 0 .5 1 } Normal { vector [ 0 0 1, 0 0.6 0.8, "
        "0 0 -1 ] } NormalBinding { value PER_VERTEX } " +
        kCorners + "FaceSet { }";
    RecordingAction action;
    action.enableLighting(1);
    action.setColorTranslationMethod(Action::KEEP_COLORS);
    draw(action, lit);
    ASSERT_EQ(action.kinds(), "polygon ");
    for (const SbColor &color : action.drawn[0].colors) {
        EXPECT_EQ(color[0], 0);
        EXPECT_NEAR(color[1], 0.5f * 1.8f / 3, 1e-5);
        EXPECT_NEAR(color[2], 1.8f / 3, 1e-5);
    }
    draw(action, "ShapeHints { vertexOrdering COUNTERCLOCKWISE } " + lit);
    EXPECT_NEAR(action.drawn[0].colors[0][2], 2.8f / 3, 1e-5) << "both sides";
    draw(action, kPlain + lit);
    EXPECT_EQ(action.drawn[0].colors[0], SbColor(0, 0.5f, 1));
    action.setColorTranslationMethod(Action::SWAP_BLACK_WHITE);
    draw(action, lit);
    EXPECT_NEAR(action.drawn[0].colors[0][0], 1 / 3.0f, 1e-5) << "a black corner is white on the page";
    draw(action, "DirectionalLight { on FALSE } Material { ambientColor 0 0 0 emissiveColor 1 1 1 } " +
                     kCorners + "FaceSet { }");
    EXPECT_NEAR(action.drawn[0].colors[0][2], 0.9999f, 1e-6) << "bright, and so not turned black";
    EXPECT_EQ(action.drawn[0].colors[0][0], 1);
}

TEST(SoVectorizeAction, LightsFadeAsTheToolkitCounts) {
    // Factors of the squared distance, of the distance, and of 1; as a rule light does not fade.
    for (const auto &[fading, brightness] : {std::pair("", 1.0),
                                             {"Environment { attenuation 0.0003 0 1 }", 0.25},
                                             {"Environment { attenuation 0 0.02 0 }", 0.5}}) {
        RecordingAction action;
        action.enableLighting(1);
        action.setColorTranslationMethod(Action::KEEP_COLORS);
        draw(action,
             std::string(fading) +
                 "PointLight { location 0 0 100 } Material { ambientColor 0 0 0 diffuseColor 0 .5 1 } "
                 "Normal { vector 0 0 1 } NormalBinding { value OVERALL } " +
                 kCorners + "FaceSet { }");
        ASSERT_EQ(action.kinds(), "polygon ");
        EXPECT_NEAR(action.drawn[0].colors[0][2], brightness, 1e-3) << fading;
    }
}

TEST(SoVectorizeAction, LightsFollowTheViewAndTheModel) {
    // The whole scene is turned by half a turn about x together with the camera's place: light, normals and
    // points must be seen in one and the same frame.
    const std::string turned =
        "Separator { OrthographicCamera { position 0 0 -5 orientation 0 1 0 3.14159265 "
        "nearDistance 1 farDistance 9 } DirectionalLight { direction 0 0 1 } "
        "Material { ambientColor 0 0 0 diffuseColor 0 .5 1 } "
        "Scale { scaleFactor 1 1 10 } Normal { vector 0 0.6 -0.08 } "
        "NormalBinding { value OVERALL } " +
        kCorners + "FaceSet { } }";
    RecordingAction action;
    action.enableLighting(1);
    const Scene scene(turned);
    action.apply(scene);
    ASSERT_EQ(action.kinds(), "polygon ");
    const double length = std::hypot(0.6, 0.008);
    EXPECT_NEAR(action.drawn[0].colors[0][2], 0.008 / length, 1e-5) << "normals go by the inverse scaling";
}

/// A callback node's function: the view is the left or the right half of the window.
void enterHalf(void *data, SoAction *action) {
    SbViewportRegion region = SoViewportRegionElement::get(action->getState());
    region.setViewport(data ? 0.5f : 0.0f, 0.0f, 0.5f, 1.0f);
    SoViewportRegionElement::set(action->getState(), region);
}

TEST(SoVectorizeAction, EachViewIsClippedAndSortedByItself) {
    const Scene scene("Separator { Separator { Callback { } " + kCamera + "DEF part Separator { " + kPlain +
                      "Separator { Translation { translation 0 0 1 } " + kCorners +
                      "FaceSet { } } Separator { "
                      "Translation { translation 0 0 -1 } " +
                      kCorners +
                      "FaceSet { } } } } "
                      "Separator { Callback { } " +
                      kCamera +
                      "Translation { translation 0.5 0 -2 } "
                      "USE part } }");
    for (int k = 0; k < 2; ++k) {
        auto *half =
            static_cast<SoSeparator *>(static_cast<SoSeparator *>(static_cast<SoNode *>(scene))->getChild(k));
        static_cast<SoCallback *>(half->getChild(0))->setCallback(enterHalf, k ? half : nullptr);
    }
    RecordingAction action;
    action.setHLHSRMode(Action::HLHSR_Z_SORT);
    action.apply(scene);
    EXPECT_EQ(action.frame, "HGCCBF");
    ASSERT_EQ(action.kinds(), "polygon polygon polygon polygon ");
    const auto z = [&](int i) { return action.drawn[i].points[0][2]; };
    EXPECT_GT(z(0), z(1)) << "far first";
    EXPECT_GT(z(2), z(3));
    EXPECT_GT(z(2), z(1)) << "but not across views";
    EXPECT_EQ(action.drawn[0].points[0][0], 0);
    EXPECT_EQ(action.drawn[0].points[1][0], 50);
    EXPECT_EQ(action.drawn[2].points[0][0], 62.5f) << "half of the way out to the middle of its half";
    EXPECT_EQ(action.getClippingLimits(), SbBox2f(50, 0, 100, 100));
}

TEST(SoVectorizeAction, CoordinatesThatAreNotFiniteAreLeftOut) {
    RecordingAction action;
    const Scene scene(view(kPlain +
                           "Coordinate3 { point [ 0 0 0, 1 0 0, 0 1 0, 0 0 0, 1 0 0, 0 1 0 ] } "
                           "FaceSet { numVertices [ 3, 3 ] } LineSet { numVertices 6 } PointSet { }"));
    auto *coordinates =
        static_cast<SoCoordinate3 *>(static_cast<SoSeparator *>(static_cast<SoNode *>(scene))->getChild(2));
    coordinates->point.set1Value(1, SbVec3f(std::numeric_limits<float>::quiet_NaN(), 0, 0));
    coordinates->point.set1Value(4, SbVec3f(0, std::numeric_limits<float>::infinity(), 0));
    for (const auto mode : {Action::HLHSR_NONE, Action::HLHSR_FULL_SORT}) {
        action.setHLHSRMode(mode);
        action.forget();
        action.apply(scene);
        EXPECT_EQ(action.count("polygon"), 0);
        EXPECT_EQ(action.count("line"), 1) << "from the third point to the fourth";
        ASSERT_EQ(action.count("marks"), 1);
        EXPECT_EQ(action.drawn.back().points.size(), 4u);
    }
}

TEST(SoVectorizeAction, Pens) {
    RecordingAction action;
    const auto pen = [&](const SbColor &color, float width) {
        int index = -1;
        float penWidth = -1;
        action.penAssignment(color, width, &index, &penWidth);
        action.penAssignment(color, width, nullptr, nullptr);
        return std::pair(index, penWidth);
    };
    EXPECT_EQ(pen(SbColor(1, 0, 0), 2), std::pair(0, 2.0f)) << "unrestricted";
    action.setPenDescription(3, nullptr, nullptr, Action::MILLIMETER);
    ASSERT_EQ(action.getPenNum(), 4);
    SbColor colors[4];
    float widths[4];
    action.getPenDescription(colors, widths, Action::MILLIMETER);
    action.getPenDescription(nullptr, nullptr, Action::MILLIMETER);
    EXPECT_EQ(colors[0], SbColor(1, 1, 1));
    EXPECT_EQ(colors[3], SbColor(0, 1, 0));
    EXPECT_FLOAT_EQ(widths[3], 0.3527778f);
    EXPECT_EQ(pen(SbColor(0.8f, 0.1f, 0.1f), 1).first, 2);

    const SbColor red(1, 0, 0), green(0, 1, 0);
    const SbColor four[] = {red, red, green, red};
    const float inMillimeters[] = {0.5f, 1, 1, 0.2f};
    action.setPenDescription(4, four, inMillimeters, Action::MILLIMETER);
    EXPECT_EQ(pen(red, 0.7f), std::pair(0, 0.5f)) << "the widest red one that is not wider";
    EXPECT_EQ(pen(red, 0.1f), std::pair(3, 0.2f)) << "the narrowest red one";
    EXPECT_EQ(pen(green, 0.1f), std::pair(2, 1.0f));
    action.setColorPriority(0);
    EXPECT_EQ(pen(green, 5), std::pair(2, 1.0f)) << "of the widest the nearest colour";
    EXPECT_EQ(pen(green, 0.6f), std::pair(0, 0.5f));
    EXPECT_EQ(pen(green, 0.1f), std::pair(3, 0.2f));
    action.setPenDescription(-1, four, nullptr, Action::MILLIMETER);
    EXPECT_EQ(action.getPenNum(), 4);
    action.setPenDescription(1000, std::vector<SbColor>(1000, red).data(), nullptr, Action::MILLIMETER);
    EXPECT_EQ(action.getPenNum(), 256);
    action.setPenDescription(0, nullptr, nullptr, Action::MILLIMETER);
    EXPECT_EQ(action.getPenNum(), 0);
}

/// The debugging back end under a driver that draws nothing of its own.
class PrintingAction : public SoVectorizeAction {
protected:
    void writeHeader() override {}
    void writeFooter() override {}
    void setHardwareClip() override {}
    void printBorder() override {}
    void printBackground() override {}
};

TEST(SoVectorizeAction, PrintsForDebugging) {
    PrintingAction action;
    action.setDrawingDimensions(100, 100, Action::MILLIMETER);
    const Scene scene(view(kPlain + "BaseColor { rgb 1 .5 0 } " + kCorners +
                           "FaceSet { } DrawStyle { lineWidth 2 pointSize 3 linePattern 0xff } LineSet { } "
                           "MaterialBinding { value PER_VERTEX } BaseColor { rgb [ 1 0 0, 0 1 0, 0 0 1 ] } "
                           "PointSet { } Font { name \"Times\" size 12 } Text2 { string \"hi\" }"));
    ::testing::internal::CaptureStdout();
    action.apply(scene);
    std::fflush(stdout);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "Unicolor Polygon drawing  (color = FF8000)\n"
              "      (0.00 - 0.00)\n      (100.00 - 0.00)\n      (50.00 - 100.00)\n"
              "Unicolor Line drawing  (thickness : 2.000000 , pattern : 00FF , color = FF8000)\n"
              "      (0.00 - 0.00)\n      (100.00 - 0.00)\n      (50.00 - 100.00)\n"
              "Multicolor Point drawing (size : 3.000000)\n"
              "      (0.00 - 0.00)  color = FF0000\n      (100.00 - 0.00)  color = 00FF00\n"
              "      (50.00 - 100.00)  color = 0000FF\n"
              "Text 2D color : FF0000\n"
              "font_name=Times font_size=12.000000 string=hi justif=1 angle=0.000000\n"
              "      (50.00 - 50.00)\n");
}

} // namespace
