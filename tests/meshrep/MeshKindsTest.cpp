// What all representations have in common: the same field on every kind of mesh that can hold it gives the
// same drawing, files and copies keep it, and each change is followed once.
#include "Drawn.h"

#include <oravane/PbCartesianGrid2D.h>
#include <oravane/PbIsovaluesList.h>
#include <oravane/PbLinearDataMapping.h>
#include <oravane/PbParalCartesianGrid2D.h>
#include <oravane/PbPolarGrid2D.h>
#include <oravane/PbQuadrangleMesh2D.h>
#include <oravane/PbRegularCartesianGrid2D.h>
#include <oravane/PbTriangleMesh2D.h>
#include <oravane/PoIsovaluesList.h>
#include <oravane/PoLinearDataMapping.h>
#include <oravane/PoMeshContouring.h>
#include <oravane/PoMeshFilled.h>
#include <oravane/PoMeshLimit.h>
#include <oravane/PoMeshLines.h>
#include <oravane/PoMeshSides.h>

#include <Inventor/nodes/SoSeparator.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

using test::Drawn;

namespace {

constexpr int NX = 6, NY = 5;
constexpr float STEP = 0.5f;

/// A sloping plane with a field that is linear on it, so that triangles hold it as exactly as quadrangles.
struct Plane {
    Plane() {
        for (int i = 0; i < NX; ++i)
            columns.push_back(STEP * static_cast<float>(i));
        for (int j = 0; j < NY; ++j)
            rows.push_back(1 + STEP * static_cast<float>(j));
        for (const float column : columns)
            for (const float row : rows) {
                x.push_back(column);
                y.push_back(row);
                z.push_back(0.5f * column + 0.25f * row);
                values.push_back((column + row) / 6);
            }
        for (int i = 0; i + 1 < NX; ++i)
            for (int j = 0; j + 1 < NY; ++j) {
                const int n = i * NY + j;
                quads.insert(quads.end(), {n, n + NY, n + NY + 1, n + 1});
                triangles.insert(triangles.end(), {n, n + NY, n + NY + 1, n, n + NY + 1, n + 1});
            }
    }
    std::vector<float> columns, rows, x, y, z, values;
    std::vector<int> quads, triangles;
};

struct Kind {
    const char *name;
    std::unique_ptr<PbMesh2D> mesh;
    bool isOfQuads = true;
};

std::vector<Kind> allKinds(const Plane &p) {
    const int numNodes = NX * NY, numQuads = (NX - 1) * (NY - 1);
    const float *x = p.x.data(), *y = p.y.data();
    std::vector<Kind> kinds;
    kinds.push_back({"regular", std::make_unique<PbRegularCartesianGrid2D>(
                                    NX, NY, p.columns[0], p.rows[0], p.columns.back(), p.rows.back(), 1)});
    kinds.push_back({"Cartesian", std::make_unique<PbCartesianGrid2D>(NX, NY, x, y, 1)});
    kinds.push_back(
        {"parallel", std::make_unique<PbParalCartesianGrid2D>(NX, NY, p.columns.data(), p.rows.data(), 1)});
    kinds.push_back(
        {"quadrangles", std::make_unique<PbQuadrangleMesh2D>(numNodes, x, y, numQuads, p.quads.data(), 1)});
    std::vector<int> mixed, sizes;
    for (std::size_t k = 0; k < p.quads.size(); k += 4) {
        const bool isQuad = k % 8 == 0;
        const int *from = isQuad ? &p.quads[k] : &p.triangles[k / 4 * 6];
        mixed.insert(mixed.end(), from, from + (isQuad ? 4 : 6));
        sizes.insert(sizes.end(), isQuad ? 1 : 2, isQuad ? 4 : 3);
    }
    kinds.push_back({"mixed",
                     std::make_unique<PbIndexedMesh2D>(numNodes, x, y, static_cast<int>(sizes.size()),
                                                       mixed.data(), sizes.data(), 1),
                     false});
    sizes.assign(static_cast<std::size_t>(numQuads), 4);
    kinds.push_back({"indexed", std::make_unique<PbIndexedMesh2D>(numNodes, x, y, numQuads, p.quads.data(),
                                                                  sizes.data(), 1)});
    kinds.push_back({"triangles",
                     std::make_unique<PbTriangleMesh2D>(numNodes, x, y, 2 * numQuads, p.triangles.data(), 1),
                     false});
    for (const int orientation : {0, 1}) {
        auto reversed = p.quads;
        for (std::size_t k = 0; k < reversed.size(); k += 8)
            std::swap(reversed[k + 1], reversed[k + 3]);
        auto mesh = std::make_unique<PbQuadrangleMesh2D>(numNodes, x, y, numQuads, reversed.data(), 1);
        mesh->setElemOrientation(static_cast<PbIndexedMesh2D::ElemOrientation>(orientation));
        kinds.push_back({orientation ? "reversed, flagged" : "reversed", std::move(mesh)});
    }
    for (Kind &kind : kinds) {
        kind.mesh->addValuesSet(0, p.values.data());
        kind.mesh->addValuesSet(1, p.z.data());
    }
    return kinds;
}

/// Rings and spokes, and their nodes as those of quadrangles. The field follows the rings: between spokes the
/// one goes along an arc, and the other one straight.
std::vector<Kind> polarKinds() {
    const float radius[] = {1, 2, 3, 4}, angle[] = {0, 1, 2, 2.5f};
    auto polar = std::make_unique<PbPolarGrid2D>(4, 4, radius, angle, 1);
    std::vector<float> x, y, values, z;
    std::vector<int> quads;
    for (int n = 0; n < 16; ++n) {
        x.push_back(polar->PbGrid2D::getNodeCoord(n)[0]);
        y.push_back(polar->PbGrid2D::getNodeCoord(n)[1]);
        values.push_back(0.3f * static_cast<float>(n / 4));
        z.push_back(1 + values.back());
        if (n < 12 && n % 4 < 3)
            quads.insert(quads.end(), {n, n + 4, n + 5, n + 1});
    }
    std::vector<Kind> kinds;
    kinds.push_back({"polar", std::move(polar)});
    kinds.push_back({"its quadrangles",
                     std::make_unique<PbQuadrangleMesh2D>(16, x.data(), y.data(), 9, quads.data(), 1)});
    for (Kind &kind : kinds) {
        kind.mesh->addValuesSet(0, values.data());
        kind.mesh->addValuesSet(1, z.data());
    }
    return kinds;
}

struct Representation {
    const char *name;
    std::function<PoMesh2D *()> make;
    bool showsEdges;
};

const Representation REPRESENTATIONS[] = {
    {"filled", [] { return new PoMeshFilled; }, false},
    {"lines", [] { return new PoMeshLines; }, true},
    {"sides",
     [] {
         auto *kit = new PoMeshSides;
         kit->thresholdType = PoMeshSides::THRESHOLD_ZMAX;
         return kit;
     },
     false},
    {"limit", [] { return new PoMeshLimit; }, false},
    {"contours", [] { return new PoMeshContouring; }, false},
    {"labelled contours",
     [] {
         auto *kit = new PoMeshContouring;
         kit->annotIsVisible = TRUE;
         kit->annotIsBackground = TRUE;
         return kit;
     },
     false},
};

void expectAlike(const Drawn &drawn, const Drawn &expected) {
    EXPECT_GT(drawn.areaInSpace + drawn.length, 4);
    EXPECT_NEAR(drawn.area, expected.area, 1e-4);
    EXPECT_NEAR(drawn.areaInSpace, expected.areaInSpace, 1e-4);
    EXPECT_NEAR(drawn.redArea, expected.redArea, 1e-4);
    EXPECT_NEAR(drawn.length, expected.length, 1e-4);
    EXPECT_NEAR(drawn.redLength, expected.redLength, 1e-4);
}

TEST(MeshKinds, DrawTheSameFieldAlikeInEveryRepresentationAndColoring) {
    PbIsovaluesList levels(0.1f, 0.9f, 8);
    PbLinearDataMapping mapping;
    mapping.setValues(0, SbColor(0, 0, 0), 1, SbColor(1, 0, 0));
    for (const std::vector<Kind> &kinds : {allKinds(Plane()), polarKinds()})
        for (const Representation &representation : REPRESENTATIONS)
            for (int coloring = PoMesh::COLOR_INHERITED; coloring <= PoMesh::COLOR_CONTOURING; ++coloring) {
                Drawn expected;
                for (const Kind &kind : kinds) {
                    SCOPED_TRACE(std::string(representation.name) + " of " + kind.name + ", colouring " +
                                 std::to_string(coloring));
                    if (representation.showsEdges && !kind.isOfQuads)
                        continue;
                    const test::Ref<PoMesh2D> kit(representation.make());
                    kit->setMesh(kind.mesh.get());
                    kit->setIsovaluesList(&levels);
                    kit->setDataMapping(&mapping);
                    kit->valuesIndex = 0;
                    kit->zValuesIndex = 1;
                    kit->coloringType = coloring;
                    const Drawn drawn = test::drawnBy(kit.get());
                    if (&kind == &kinds.front())
                        expected = drawn;
                    expectAlike(drawn, expected);
                }
            }
}

TEST(MeshKinds, AreKeptByFilesAndCopiesInEveryRepresentation) {
    Plane plane;
    plane.z.back() = test::NOT_A_NUMBER; // files have no word for it
    const std::vector<Kind> kinds = allKinds(plane);
    PbMesh2D *mesh = kinds.front().mesh.get();
    for (const Representation &representation : REPRESENTATIONS)
        for (const bool isBinary : {false, true}) {
            SCOPED_TRACE(representation.name);
            const test::Ref<SoSeparator> root(new SoSeparator);
            auto *levels = new PoIsovaluesList;
            levels->setRegularIsoList(0.1f, 0.9f, 8);
            PoMesh2D *kit = representation.make();
            kit->setMesh(mesh);
            kit->valuesIndex = 0;
            kit->zValuesIndex = 1;
            kit->coloringType = PoMesh::COLOR_CONTOURING;
            for (SoNode *node : std::initializer_list<SoNode *>{new PoLinearDataMapping, levels, kit})
                root->addChild(node);
            const Drawn expected = test::drawnBy(root.get());
            const std::string fields = test::written(root.get(), isBinary);
            for (const char *generated : {"Coordinate3", "LineSet", "FaceSet", "defaultFont", "AnnoText3"})
                EXPECT_EQ(fields.find(generated), std::string::npos) << generated;
            const auto withFields = test::readBack(fields);
            ASSERT_TRUE(withFields);
            static_cast<PoMesh2D *>(withFields->getChild(2))->setMesh(mesh);
            PoBase::setNodeWriteFormat(PoBase::WRITE_PARTS);
            const auto withParts = test::readBack(test::written(root.get(), isBinary));
            PoBase::setNodeWriteFormat(PoBase::WRITE_FIELDS);
            ASSERT_TRUE(withParts);
            const test::Ref<SoNode> copied(root->copy());
            for (SoNode *read :
                 std::initializer_list<SoNode *>{withFields.get(), withParts.get(), copied.get()})
                expectAlike(test::drawnBy(read), expected);
        }
}

} // namespace
