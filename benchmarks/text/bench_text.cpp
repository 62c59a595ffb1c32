// Labels by the thousand, as the graduations of axes and the annotations of contour lines need them: measured
// and built, in the toolkit's built-in font. The growth over the sizes is printed behind each family; items
// are labels.
#include <oravane/PiText.h>
#include <oravane/PoBase.h>

#include <Inventor/nodes/SoGroup.h>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>

namespace {

/// The number of labels that have been made: a text that no one has measured.
long made = 0;

PiText builder() {
    PiText text;
    text.setFont("defaultFont", 0.05f);
    return text;
}

void finish(benchmark::State &state) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}

template <class Label>
void measure(benchmark::State &state, Label label) {
    const PiText text = builder();
    float width, height;
    for (auto _ : state)
        for (long i = 0; i < state.range(0); ++i) {
            text.getStringSizes(label(i).c_str(), width, height);
            benchmark::DoNotOptimize(width + height);
        }
    finish(state);
}

void build(benchmark::State &state, int isMirrored) {
    for (auto _ : state) {
        auto *group = new SoGroup;
        group->ref();
        PiText text = builder();
        text.setGroup(group);
        text.setMirrorEnable(isMirrored); // which takes a measure
        for (long i = 0; i < state.range(0); ++i) {
            text.setOrigin(static_cast<float>(i), 0);
            text.setString(std::to_string(i).c_str());
            text.build();
        }
        group->unref();
    }
    finish(state);
}

std::string distinct(long) {
    return std::to_string(++made);
}
std::string equal(long) {
    return "1234567";
}
std::string oneOfThousand(long i) {
    return std::to_string(1234000 + i % 1000);
}

void sizes(benchmark::internal::Benchmark *b) {
    b->RangeMultiplier(8)->Range(1 << 10, 1 << 16)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);
}

BENCHMARK_CAPTURE(measure, distinct, distinct)->Apply(sizes);
BENCHMARK_CAPTURE(measure, equal, equal)->Apply(sizes);
BENCHMARK_CAPTURE(measure, thousand, oneOfThousand)->Apply(sizes);
BENCHMARK_CAPTURE(build, plain, 0)->Apply(sizes);
BENCHMARK_CAPTURE(build, mirrored, 1)->Apply(sizes);

} // namespace

int main(int argc, char **argv) {
    setenv("COIN_FORCE_FREETYPE_OFF", "1", 1);
    PoBase::init();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
