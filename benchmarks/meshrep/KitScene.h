#ifndef ORAVANE_BENCHMARKS_MESHREP_KITSCENE_H
#define ORAVANE_BENCHMARKS_MESHREP_KITSCENE_H

#include <oravane/PoBase.h>

#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoShapeHints.h>

#include <benchmark/benchmark.h>

/// A kit below a separator without caches: every traversal reaches the kit. Only after `runKitBenchmarks` has
/// started the library.
class KitScene {
public:
    explicit KitScene(PoBase *kit) : m_root(new SoSeparator) {
        m_root->boundingBoxCaching = SoSeparator::OFF;
        m_root->ref();
        m_root->addChild(kit);
    }
    ~KitScene() { m_root->unref(); }
    KitScene(const KitScene &) = delete;
    KitScene &operator=(const KitScene &) = delete;

    SoNode *root() const { return m_root; }
    /// A search inside of kits: reaches the kit, and leaves its geometry alone.
    void traverse() {
        SoSearchAction search;
        search.setType(SoShapeHints::getClassTypeId());
        search.apply(m_root);
    }

private:
    SoSeparator *m_root;
};

/// The time of one of `count` things that each iteration goes through, to be shown beside the time.
inline benchmark::Counter timePer(double count) {
    return {count, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert};
}

inline void runKitBenchmarks(int argc, char **argv) {
    PoBase::init();
    SoBaseKit::setSearchingChildren(TRUE);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}

#endif
