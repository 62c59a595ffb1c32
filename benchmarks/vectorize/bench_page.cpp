// Pages of 10 thousand to a million triangles. The growth that is fitted over the sizes is printed behind
// each family; the counters give triangles per second and bytes per triangle. With gl2ps on the machine its
// pages of the same triangles follow, and the ratios at the end: how many times faster, how many times
// smaller.

#include "PageScene.h"

#include <oravane/PoBase.h>
#include <oravane/SoVectorizePSAction.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoOrthographicCamera.h>
#include <Inventor/nodes/SoQuadMesh.h>
#include <Inventor/nodes/SoSeparator.h>

#include <benchmark/benchmark.h>

#ifdef HAVE_GL2PS
#include <gl2ps.h>
#endif

#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <map>
#include <string>

namespace {

using page_scene::Mesh;

constexpr float kPageMillimeters = 1000 * 25.4f / 72; // 1000 points

const Mesh &meshOf(int numTriangles) {
    static std::map<int, Mesh> meshes;
    Mesh &mesh = meshes[numTriangles];
    if (mesh.corners.empty())
        mesh = page_scene::make(numTriangles);
    return mesh;
}

std::string pageFile() {
    const char *folder = std::getenv("TMPDIR");
    return std::string(folder ? folder : "/tmp") + "/bench_page_" + std::to_string(getpid()) + ".ps";
}

double sizeOf(const std::string &file) {
    struct stat info {};
    return stat(file.c_str(), &info) == 0 ? static_cast<double>(info.st_size) : 0;
}

/// Seconds and bytes of the last page of each kind and size, for the ratios.
struct Measured {
    double seconds = 0, bytes = 0;
};
std::map<std::pair<std::string, int>, Measured> &results() {
    static std::map<std::pair<std::string, int>, Measured> all;
    return all;
}

/// Runs `writePage` for each iteration and reports.
template <class WritePage>
void measure(benchmark::State &state, const std::string &kind, const Mesh &mesh, WritePage writePage) {
    using Clock = std::chrono::steady_clock;
    const std::string file = pageFile();
    writePage(file); // fills the caches that a scene keeps
    double least = 1e30;
    for (auto _ : state) {
        const auto start = Clock::now();
        writePage(file);
        least = std::min(least, std::chrono::duration<double>(Clock::now() - start).count());
    }
    const double bytes = sizeOf(file);
    unlink(file.c_str());
    const auto triangles = static_cast<double>(mesh.numTriangles());
    state.counters["bytes/triangle"] = bytes / triangles;
    state.counters["triangles"] =
        benchmark::Counter(triangles, benchmark::Counter::kIsIterationInvariantRate);
    state.SetComplexityN(static_cast<benchmark::IterationCount>(triangles));
    results()[{kind, static_cast<int>(state.range(0))}] = {least, bytes};
}

// ------------------------------------------------------------------------------------------------- Oravane

SoShape *shapeOf(const Mesh &mesh, bool asQuads) {
    if (asQuads) {
        auto *quads = new SoQuadMesh;
        quads->verticesPerRow = mesh.side + 1;
        quads->verticesPerColumn = mesh.side + 1;
        return quads;
    }
    auto *faces = new SoIndexedFaceSet;
    std::vector<int32_t> indices;
    for (std::size_t i = 0; i < mesh.corners.size(); ++i) {
        indices.push_back(mesh.corners[i]);
        if (i % 3 == 2)
            indices.push_back(-1);
    }
    faces->coordIndex.setValues(0, static_cast<int>(indices.size()), indices.data());
    return faces;
}

SoSeparator *sceneOf(const Mesh &mesh, bool asQuads) {
    auto *root = new SoSeparator;
    root->ref();
    auto *camera = new SoOrthographicCamera;
    camera->position.setValue(500, 500, 1);
    camera->height = 1000;
    camera->nearDistance = 1;
    camera->farDistance = 2;
    auto *coordinates = new SoCoordinate3;
    auto *material = new SoMaterial;
    auto *binding = new SoMaterialBinding;
    binding->value = asQuads ? SoMaterialBinding::PER_VERTEX : SoMaterialBinding::PER_VERTEX_INDEXED;
    std::vector<SbVec3f> points;
    std::vector<SbColor> colors;
    for (const page_scene::Vertex &v : mesh.nodes) {
        points.emplace_back(v.x, v.y, -v.z);
        colors.emplace_back(v.r, v.g, v.b);
    }
    coordinates->point.setValues(0, static_cast<int>(points.size()), points.data());
    material->diffuseColor.setValues(0, static_cast<int>(colors.size()), colors.data());
    for (SoNode *node : std::initializer_list<SoNode *>{camera, coordinates, material, binding})
        root->addChild(node);
    root->addChild(shapeOf(mesh, asQuads));
    return root;
}

void oravanePage(benchmark::State &state, const std::string &kind, SoVectorizeAction::HLHSRMode mode,
                 bool asQuads) {
    const Mesh &mesh = meshOf(static_cast<int>(state.range(0)));
    SoSeparator *scene = sceneOf(mesh, asQuads);
    measure(state, kind, mesh, [&](const std::string &file) {
        SoVectorizePSAction action;
        action.setDrawingDimensions(kPageMillimeters, kPageMillimeters, SoVectorizeAction::MILLIMETER);
        action.setHLHSRMode(mode);
        action.getOutput()->openFile(file.c_str());
        action.apply(scene);
        action.getOutput()->closeFile();
    });
    scene->unref();
}

// --------------------------------------------------------------------------------------------------- gl2ps

#ifdef HAVE_GL2PS
void addToGl2ps(const Mesh &mesh, bool isFlat) {
    for (std::size_t i = 0; i + 2 < mesh.corners.size(); i += 3) {
        GL2PSvertex vertices[3];
        for (int k = 0; k < 3; ++k) {
            const page_scene::Vertex &p = mesh.nodes[mesh.corners[i + k]];
            const page_scene::Vertex &c = isFlat ? mesh.nodes[mesh.corners[i]] : p;
            const float point[] = {p.x, p.y, p.z * 1000}; // as gl2ps scales the depth of a window
            const float color[] = {c.r, c.g, c.b, 1};
            std::copy_n(point, 3, vertices[k].xyz);
            std::copy_n(color, 4, vertices[k].rgba);
        }
        gl2psAddPolyPrimitive(GL2PS_TRIANGLE, 3, vertices, 0, 0, 0, 0xffff, 1, 1, 0, 0, 0);
    }
}

void gl2psPage(benchmark::State &state, const std::string &kind, int sort, bool isFlat) {
    const Mesh &mesh = meshOf(static_cast<int>(state.range(0)));
    measure(state, kind, mesh, [&](const std::string &file) {
        FILE *stream = std::fopen(file.c_str(), "wb");
        GLint viewport[4] = {0, 0, 1000, 1000};
        const GLint options = GL2PS_SILENT | GL2PS_NO_OPENGL_CONTEXT | GL2PS_NO_BLENDING |
                              (sort == GL2PS_BSP_SORT ? GL2PS_BEST_ROOT : 0);
        gl2psBeginPage("page", "bench", viewport, GL2PS_PS, sort, options, GL_RGBA, 0, nullptr, 0, 0, 0,
                       1000000, stream, file.c_str());
        addToGl2ps(mesh, isFlat);
        gl2psEndPage();
        std::fclose(stream);
    });
}
#endif

// -------------------------------------------------------------------------------------------- registration

template <class Function>
void family(const std::string &kind, Function function, std::initializer_list<int> sizes) {
    auto *family = benchmark::RegisterBenchmark(kind.c_str(), function);
    for (const int size : sizes)
        family->Arg(size);
    family->Unit(benchmark::kMillisecond)->Complexity();
}

void registerOravane(const std::string &kind, SoVectorizeAction::HLHSRMode mode, bool asQuads,
                     std::initializer_list<int> sizes) {
    family(
        kind, [=](benchmark::State &state) { oravanePage(state, kind, mode, asQuads); }, sizes);
}

void registerAll() {
    const auto all = {10000, 100000, 1000000};
    const auto few = {10000, 100000};
    registerOravane("oravane/no-sort", SoVectorizeAction::HLHSR_NONE, false, all);
    registerOravane("oravane/z-sort", SoVectorizeAction::HLHSR_Z_SORT, false, all);
    registerOravane("oravane/z-sort-quad-mesh", SoVectorizeAction::HLHSR_Z_SORT, true, all);
    registerOravane("oravane/full-sort", SoVectorizeAction::HLHSR_FULL_SORT, false, few);
#ifdef HAVE_GL2PS
    const auto peer = [](const std::string &kind, int sort, bool isFlat, std::initializer_list<int> sizes) {
        family(
            kind, [=](benchmark::State &state) { gl2psPage(state, kind, sort, isFlat); }, sizes);
    };
    peer("gl2ps/no-sort", GL2PS_NO_SORT, false, all);
    peer("gl2ps/simple-sort", GL2PS_SIMPLE_SORT, false, all);
    peer("gl2ps/simple-sort-flat-colours", GL2PS_SIMPLE_SORT, true, all);
    peer("gl2ps/bsp-sort", GL2PS_BSP_SORT, false, few);
#endif
}

void printRatios() {
    const std::pair<const char *, const char *> pairs[] = {
        {"oravane/no-sort", "gl2ps/no-sort"},
        {"oravane/z-sort", "gl2ps/simple-sort"},
        {"oravane/z-sort", "gl2ps/simple-sort-flat-colours"},
        {"oravane/full-sort", "gl2ps/bsp-sort"},
    };
    for (const auto &[ours, theirs] : pairs)
        for (const int size : {10000, 100000, 1000000}) {
            const auto a = results().find({ours, size}), b = results().find({theirs, size});
            if (a != results().end() && b != results().end())
                std::printf("%s against %s, %d triangles: %.2f times as fast, %.2f times as small\n", ours,
                            theirs, size, b->second.seconds / a->second.seconds,
                            b->second.bytes / a->second.bytes);
        }
}

} // namespace

int main(int argc, char **argv) {
    PoBase::init();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    registerAll();
    benchmark::RunSpecifiedBenchmarks();
    printRatios();
    return 0;
}
