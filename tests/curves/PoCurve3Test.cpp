#include <oravane/PoCurve3.h>

#include "Drawn.h"

#include <Inventor/nodes/SoCoordinate3.h>

namespace {

using Scene = test::KitScene<PoCurve3>;

const SoMFVec3f &pointsOf(const SoGroup *group) {
    return static_cast<SoCoordinate3 *>(group->getChild(0))->point;
}

TEST(PoCurve3, DrawsLineAndMarks) {
    Scene scene;
    const SbVec3f points[] = {{0, 0, 1}, {1, 0, 2}, {1, 1, 3}, {0, 0, 1}};
    scene.kit->point.setValues(0, 4, points);
    struct {
        PoCurve3::CurveRep rep;
        int numPoints;
    } const rows[] = {{PoCurve3::CURVE_NONE, 0}, {PoCurve3::CURVE_POLYLINE, 4}, {PoCurve3::CURVE_SMOOTH, 31}};
    for (const auto &row : rows) {
        scene.kit->curveRep = row.rep;
        scene.kit->isMarkerVisible = row.rep != PoCurve3::CURVE_POLYLINE;
        scene.traverse();
        ASSERT_EQ(scene.part("curvePoint") != nullptr, row.numPoints > 0);
        if (row.numPoints > 0) {
            const SoMFVec3f &line = pointsOf(scene.part("curvePoint"));
            ASSERT_EQ(line.getNum(), row.numPoints);
            EXPECT_EQ(line[2 * (line.getNum() - 1) / 3], points[2]);
        }
        ASSERT_EQ(scene.part("marker") != nullptr, row.rep != PoCurve3::CURVE_POLYLINE);
        if (scene.part("marker")) {
            EXPECT_EQ(pointsOf(scene.part("marker"))[2], SbVec3f(1, 1, 0));
        }
    }
    const int before = scene.rebuilds;
    scene.traverse();
    EXPECT_EQ(scene.rebuilds, before);
    const auto read = test::readBack(test::written(scene.root.get()));
    ASSERT_TRUE(read);
    EXPECT_NEAR(test::drawnBy(read.get()).length, test::drawnBy(scene.root.get()).length, 1e-5);

    scene.kit->point.set1Value(1, SbVec3f(0, 0, test::INFINITE));
    scene.kit->markerString = "x";
    EXPECT_TRUE(test::drawnBy(scene.root.get()).isFinite);
    EXPECT_EQ(scene.part("marker")->getNumChildren(), 3);
    scene.kit->point.setNum(0);
    scene.traverse();
    EXPECT_FALSE(scene.part("curvePoint") || scene.part("marker"));
}

} // namespace
