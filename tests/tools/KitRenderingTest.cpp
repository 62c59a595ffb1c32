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
    View() {
        auto *camera = addBefore(new SoOrthographicCamera);
        camera->position.setValue(0.5f, 0.5f, 5);
        camera->height = 1;
        camera->nearDistance = 1;
        camera->farDistance = 10;
    }
    template <class Node>
    Node *addBefore(Node *attribute) {
        m_root->addChild(attribute);
        return attribute;
    }
    template <class Kit>
    Kit *addCached(Kit *kit) {
        SoSeparator *cached = addBefore(new SoSeparator);
        cached->renderCaching = SoSeparator::ON;
        cached->addChild(kit);
        return kit;
    }
    Pixel at(int x, int y) { return m_renderer.render(m_root.get(), 100, 100).at(x, 99 - y); }

private:
    test::Ref<SoSeparator> m_root{new SoSeparator};
    oravane::HeadlessRenderer m_renderer{1};
};

constexpr Pixel RED{255, 0, 0}, WHITE{255, 255, 255};

TEST(KitRendering, ANewKitIsSeenAtOnceAndAttributesReachItThroughRenderCaches) {
    View view;
    auto *domain = view.addBefore(new PoDomain);
    view.addBefore(new SoBaseColor)->rgb.setValue(SbColor(1, 0, 0));
    auto *kit = view.addCached(new PoRectangle);
    kit->q = SbVec2f(0.5f, 0.5f);
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
    const float zeros[] = {0, 0, 0, 0}, ones[] = {1, 1, 1, 1};
    PbRegularCartesianGrid2D grid(2, 2, 0.f, 0.f, 1.f, 1.f, 1);
    grid.addValuesSet(0, zeros);
    View view;
    auto *mapping = view.addBefore(new PoLinearDataMapping);
    mapping->color1 = SbColor(1, 0, 0);
    auto *kit = view.addCached(new PoMeshFilled);
    kit->setMesh(&grid);
    kit->valuesIndex = 0;
    kit->coloringType = PoMesh::COLOR_MAPPING;
    kit->set("appearance.lightModel { model BASE_COLOR }");
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(view.at(50, 50), RED);
    mapping->color1 = SbColor(0, 0, 1);
    EXPECT_EQ(view.at(50, 50), (Pixel{0, 0, 255}));
    grid.addValuesSet(0, ones);
    EXPECT_EQ(view.at(50, 50), WHITE) << "the colour of the value 1";
}

TEST(KitRendering, SurfacesAreLitFromTheSideOfTheLight) {
    PbRegularCartesianGrid2D grid(3, 3, 0.f, 0.f, 1.f, 1.f, 1);
    const float slope[] = {0, 0, 0, 0.1f, 0.1f, 0.1f, 0.2f, 0.2f, 0.2f};
    grid.addValuesSet(0, slope);
    for (const bool isFlat : {true, false}) {
        View view;
        view.addBefore(new SoDirectionalLight)->direction.setValue(0, 0, -1);
        auto *kit = view.addCached(new PoMeshFilled);
        kit->setMesh(&grid);
        kit->zValuesIndex = isFlat ? -1 : 0;
        EXPECT_GT(view.at(50, 50)[0], 150) << "seen from the side of the light";
    }
}

} // namespace
