// Contour lines with labels: the time of each point and of each label, above that of the row without labels,
// is to stay the same from small grids to large ones; finding the lines takes a look at each cell. The
// checksum in the last column tells whether two versions draw the same.
#include "geometry/fields.h"
#include "meshrep/KitScene.h"

#include <oravane/PbDomain.h>
#include <oravane/PbIsovaluesList.h>
#include <oravane/PbRegularCartesianGrid2D.h>
#include <oravane/PoMeshContouring.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoText3.h>
#include <Inventor/nodes/SoTransform.h>

#include <cstdio>

namespace {

/// What stands behind the lines: nothing; labels whose size and distance are those of a number of cells, so
/// that a larger grid has more of them; labels of the same size on every grid.
enum Labels { NONE, GROWING, FIXED };

/// What a kit has drawn, and a checksum of all numbers and texts in it.
class Drawn {
public:
    explicit Drawn(SoNode *root) {
        SoSearchAction search;
        search.setSearchingAll(TRUE);
        search.setInterest(SoSearchAction::ALL);
        search.setType(SoNode::getClassTypeId());
        search.apply(root);
        for (int k = 0; k < search.getPaths().getLength(); ++k)
            look(static_cast<SoFullPath *>(search.getPaths()[k])->getTail());
    }

    std::size_t points = 0, lines = 0, labels = 0;
    std::string checksum() const {
        char text[17];
        std::snprintf(text, sizeof text, "%016llx", m_checksum);
        return text;
    }

private:
    void look(const SoNode *node) {
        if (node->isOfType(SoCoordinate3::getClassTypeId())) {
            const SoMFVec3f &field = static_cast<const SoCoordinate3 *>(node)->point;
            points += static_cast<std::size_t>(field.getNum());
            addBytes(field.getValues(0), field.getNum());
        } else if (node->isOfType(SoLineSet::getClassTypeId())) {
            const SoMFInt32 &field = static_cast<const SoLineSet *>(node)->numVertices;
            lines += static_cast<std::size_t>(field.getNum());
            addBytes(field.getValues(0), field.getNum());
        } else if (node->isOfType(SoTransform::getClassTypeId())) {
            const auto *transform = static_cast<const SoTransform *>(node);
            addBytes(transform->translation.getValue().getValue(), 3);
            addBytes(transform->rotation.getValue().getValue(), 4);
            addBytes(transform->scaleFactor.getValue().getValue(), 3);
        } else if (node->isOfType(SoText3::getClassTypeId())) {
            ++labels;
            for (const char letter : std::string(static_cast<const SoText3 *>(node)->string[0].getString()))
                addBytes(&letter, 1);
        }
    }

    template <class T>
    void addBytes(const T *values, int count) {
        const auto *bytes = reinterpret_cast<const unsigned char *>(values);
        for (std::size_t k = 0; k < static_cast<std::size_t>(count) * sizeof(T); ++k)
            m_checksum = (m_checksum ^ bytes[k]) * 0x100000001B3ull;
    }

    unsigned long long m_checksum = 0xCBF29CE484222325ull;
};

void contours(benchmark::State &state, fields::Kind kind, Labels labels, int crossStatus) {
    const int n = static_cast<int>(state.range(0));
    const std::vector<float> values = fields::grid(n, kind), levelValues = fields::levels(values, 20);
    const float step = 1.f / static_cast<float>(n - 1);
    PbRegularCartesianGrid2D mesh(n, n, 0, 0, 1, 1, 0);
    mesh.addValuesSet(0, values.data());
    PbIsovaluesList levels;
    levels.setIrregularIsoList(static_cast<int>(levelValues.size()), levelValues.data());
    PbDomain domain(0, 0, 0, 1, 1, 1, PbDomain::BBOX_AS_GIVEN);
    auto *kit = new PoMeshContouring;
    KitScene scene(kit);
    kit->setMesh(&mesh);
    kit->setIsovaluesList(&levels);
    kit->setDomain(&domain);
    kit->valuesIndex = 0;
    kit->coloringType = PoMesh::COLOR_INHERITED;
    kit->annotIsVisible = labels != NONE;
    kit->annotIsContourClip = TRUE;
    kit->annotCrossStatus = crossStatus;
    kit->annotFontSize = labels == GROWING ? 2 * step : 0.01f;
    kit->annotGap = labels == GROWING ? 25 * step : 0.2f;
    scene.traverse();
    for (auto _ : state) {
        mesh.touch();
        scene.traverse();
    }
    const Drawn drawn(scene.root());
    state.counters["points"] = static_cast<double>(drawn.points);
    state.counters["lines"] = static_cast<double>(drawn.lines);
    state.counters["labels"] = static_cast<double>(drawn.labels);
    state.counters["cell"] = timePer(static_cast<double>(n - 1) * (n - 1));
    state.counters["point"] = timePer(static_cast<double>(drawn.points));
    if (drawn.labels)
        state.counters["label"] = timePer(static_cast<double>(drawn.labels));
    state.SetLabel(drawn.checksum());
}

void registerBenchmarks() {
    struct Row {
        const char *name;
        Labels labels;
        int crossStatus;
    };
    static constexpr Row rows[] = {
        {"none", NONE, PoMeshContouring::CROSS_CONTOUR},
        {"growing/cross", GROWING, PoMeshContouring::CROSS_CONTOUR},
        {"growing/cross_minor", GROWING, PoMeshContouring::CROSS_MINOR_CONTOUR},
        {"growing/dont_cross", GROWING, PoMeshContouring::DONT_CROSS_CONTOUR},
        {"fixed/cross", FIXED, PoMeshContouring::CROSS_CONTOUR},
        {"fixed/cross_minor", FIXED, PoMeshContouring::CROSS_MINOR_CONTOUR},
        {"fixed/dont_cross", FIXED, PoMeshContouring::DONT_CROSS_CONTOUR},
    };
    for (const fields::Kind kind : {fields::SMOOTH, fields::ROUGH})
        for (const Row &row : rows) {
            const std::string name = (kind == fields::SMOOTH ? "smooth/" : "rough/") + std::string(row.name);
            benchmark::RegisterBenchmark(name.c_str(), contours, kind, row.labels, row.crossStatus)
                ->ArgsProduct({{125, 250, 500, 1000}})
                ->Unit(benchmark::kMillisecond);
        }
}

} // namespace

int main(int argc, char **argv) {
    registerBenchmarks();
    runKitBenchmarks(argc, argv);
}
