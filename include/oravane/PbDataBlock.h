#ifndef ORAVANE_PBDATABLOCK_H
#define ORAVANE_PBDATABLOCK_H

#include <algorithm>
#include <cstddef>
#include <functional>
#include <initializer_list>
#include <utility>
#include <vector>

/// One array of a mesh: coordinates, or the entries of a data set. It holds either the address of the
/// program's array, which then has to live as long as it is in use here, or a block of its own.
///
/// Copying never leaves two blocks that depend on each other: an own block is copied in depth, a foreign
/// address is shared. Assignment keeps the target's mode, so that a duplicating target gets its own block in
/// any case.
template <class T>
class PbDataBlock {
public:
    explicit PbDataBlock(bool isDuplicating = false) : m_isDuplicating(isDuplicating) {}
    PbDataBlock(const PbDataBlock &source) : m_isDuplicating(source.m_isDuplicating) { assign(source); }
    PbDataBlock &operator=(const PbDataBlock &source) {
        if (this != &source)
            assign(source);
        return *this;
    }
    ~PbDataBlock() = default;

    /// Takes `count` entries: copies them when duplicating, otherwise keeps the address. Null, or a `count`
    /// below 1, empties the block. `data` may lie within the own block, which then stays an own one.
    void set(const T *data, int count) {
        if (!data || count < 1)
            clear();
        else if (m_isDuplicating || holds(data))
            copyEntries(data, count);
        else
            share(data, count);
    }

    /// What a block is to take.
    struct Source {
        PbDataBlock *block;
        const T *data;
        int count;
    };
    /// Sets several blocks, as `set` does. `data` may lie within an own block of any of them, as when a
    /// program exchanges x and y: none goes before all are taken.
    static void setTogether(std::initializer_list<Source> sources) {
        std::vector<PbDataBlock> taken;
        taken.reserve(sources.size());
        for (const Source &source : sources) {
            const bool isOwn = std::any_of(sources.begin(), sources.end(), [&](const Source &other) {
                return other.block->holds(source.data);
            });
            taken.emplace_back(source.block->m_isDuplicating || isOwn).set(source.data, source.count);
        }
        auto next = taken.begin();
        for (const Source &source : sources)
            source.block->swap(*next++);
    }

    /// Makes an own block of `count` entries, in either mode. Entries of an own block keep their values, new
    /// ones are `fill`; a foreign address is dropped unread, as the program may have freed it already.
    /// Returns the first entry, for the caller to write.
    T *makeOwn(int count, const T &fill) {
        m_own.resize(static_cast<std::size_t>(std::max(count, 0)), fill);
        m_data = m_own.data();
        m_num = std::max(count, 0);
        return m_own.data();
    }

    void clear() {
        m_own = {};
        m_data = nullptr;
        m_num = 0;
    }

    /// Exchanges the entries; each block keeps its mode.
    void swap(PbDataBlock &other) {
        m_own.swap(other.m_own);
        std::swap(m_data, other.m_data);
        std::swap(m_num, other.m_num);
    }

    /// Whether `data` lies within the own block.
    bool holds(const T *data) const {
        const std::less<const T *> before;
        return isOwned() && !before(data, m_own.data()) && before(data, m_own.data() + m_own.size());
    }

    const T *data() const { return m_data; }
    int getNum() const { return m_num; }
    bool isOwned() const { return !m_own.empty(); }
    /// No test of the index: `index` is from 0 to `getNum()` - 1.
    const T &operator[](int index) const { return m_data[index]; }

private:
    void assign(const PbDataBlock &source) {
        if (source.m_num > 0 && (m_isDuplicating || source.isOwned()))
            copyEntries(source.m_data, source.m_num);
        else
            share(source.m_data, source.m_num);
    }

    void share(const T *data, int count) {
        m_own = {};
        m_data = data;
        m_num = count;
    }

    void copyEntries(const T *data, int count) {
        if (holds(data)) {
            m_own.erase(m_own.begin(), m_own.begin() + (data - m_own.data()));
            m_own.resize(static_cast<std::size_t>(count));
        } else {
            m_own.assign(data, data + count);
        }
        m_data = m_own.data();
        m_num = count;
    }

    std::vector<T> m_own;
    const T *m_data = nullptr;
    int m_num = 0;
    bool m_isDuplicating;
};

#endif
