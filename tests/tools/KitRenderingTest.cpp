// Kits under the renderer: seen in the traversal that first reaches them, and never old behind the renderer's
// caches.
#include "TestScene.h"
#include "tools/HeadlessRenderer.h"

#include <oravane/PbLinearDataMapping.h>
#include <oravane/PbRegularCartesianGrid2D.h>
#include <oravane/PoDomain.h>
#include <oravane/PoLinearDataMapping.h>
#include <oravane/PoMeshFilled.h>
#include <oravane/PoRectangle.h>

#include <Inventor/nodes/SoBaseColor.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoOrthographicCamera.h>

#include <gtest/gtest.h>

namespace {

using Pixel = std::array<unsigned char, 3>;

/// A view of the unit square, 100 by 100 pixels, below separators that keep what they have drawn.
class View {
public:
    View() : m_root(new SoSeparator), m_renderer(1) {
        auto *camera = new SoOrthographicCamera;
        camera->position.setValue(0.5f, 0.5f, 5);
        camera->height = 1;
        camera->nearDistance = 1;
        camera->farDistance = 10;
        m_root->addChild(camera);
        m_cached = new SoSeparator;
        m_cached->renderCaching = SoSeparator::ON;
    }
    void addBefore(SoNode *attribute) { m_root->addChild(attribute); }
    void addCached(SoNode *node) {
        m_cached->addChild(node);
        m_root->addChild(m_cached);
    }
    Pixel at(int x, int y) { return m_renderer.render(m_root.get(), 100, 100).at(x, 99 - y); }

private:
    test::Ref<SoSeparator> m_root;
    SoSeparator *m_cached;
    oravane::HeadlessRenderer m_renderer;
};

constexpr Pixel RED{255, 0, 0}, WHITE{255, 255, 255};

TEST(KitRendering, ANewKitIsSeenAtOnceAndAttributesReachItThroughRenderCaches) {
    View view;
    auto *domain = new PoDomain;
    view.addBefore(domain);
    auto *color = new SoBaseColor;
    color->rgb.setValue(SbColor(1, 0, 0));
    view.addBefore(color);
    auto *kit = new PoRectangle;
    kit->q = SbVec2f(0.5f, 0.5f);
    view.addCached(kit);
    EXPECT_EQ(view.at(25, 25), RED) << "in the first rendering";
    EXPECT_EQ(view.at(25, 75), WHITE);
    for (int i = 0; i < 4; ++i) // long enough for every cache to be made
        view.at(25, 25);
    domain->max = SbVec3f(4, 2, 4); // twice as high
    EXPECT_EQ(view.at(25, 75), RED);
    domain->max = SbVec3f(1, 1, 1);
    EXPECT_EQ(view.at(25, 75), WHITE);
    kit->q = SbVec2f(1, 1);
    EXPECT_EQ(view.at(75, 75), RED);
}

TEST(KitRendering, AMappingAboveACacheRecoloursTheSurface) {
    const float values[] = {0, 0, 0, 0};
    PbRegularCartesianGrid2D grid(2, 2, 0.f, 0.f, 1.f, 1.f, 1);
    grid.addValuesSet(0, values);
    View view;
    auto *mapping = new PoLinearDataMapping;
    mapping->color1 = SbColor(1, 0, 0);
    view.addBefore(mapping);
    auto *kit = new PoMeshFilled;
    kit->setMesh(&grid);
    kit->valuesIndex = 0;
    kit->coloringType = PoMesh::COLOR_MAPPING;
    kit->set("appearance.lightModel { model BASE_COLOR }");
    view.addCached(kit);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(view.at(50, 50), RED);
    mapping->color1 = SbColor(0, 0, 1);
    EXPECT_EQ(view.at(50, 50), (Pixel{0, 0, 255}));
    const float ones[] = {1, 1, 1, 1};
    grid.addValuesSet(0, ones);
    EXPECT_EQ(view.at(50, 50), WHITE) << "the colour of the value 1";
}

TEST(KitRendering, SurfacesAreLitFromTheSideOfTheLight) {
    PbRegularCartesianGrid2D grid(3, 3, 0.f, 0.f, 1.f, 1.f, 1);
    const float slope[] = {0, 0, 0, 0.1f, 0.1f, 0.1f, 0.2f, 0.2f, 0.2f};
    grid.addValuesSet(0, slope);
    for (const bool isFlat : {true, false}) {
        View view;
        auto *light = new SoDirectionalLight;
        light->direction.setValue(0, 0, -1);
        view.addBefore(light);
        auto *kit = new PoMeshFilled;
        kit->setMesh(&grid);
        kit->zValuesIndex = isFlat ? -1 : 0;
        view.addCached(kit);
        EXPECT_GT(view.at(50, 50)[0], 150) << "seen from the side of the light";
    }
}

} // namespace
