#ifndef ORAVANE_TESTS_PAGEFIXTURE_H
#define ORAVANE_TESTS_PAGEFIXTURE_H

#include <oravane/SoVectorizePSAction.h>

#include <Inventor/SoInput.h>
#include <Inventor/nodes/SoSeparator.h>

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace oravane_test {

inline std::string readFile(const std::string &path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// A scene from its text in the toolkit's file format, without the header line.
class Scene {
public:
    explicit Scene(const std::string &text) {
        const std::string file = "#Inventor V2.1 ascii\n" + text;
        SoInput in;
        in.setBuffer(file.data(), file.size());
        m_root = SoDB::readAll(&in);
        if (m_root)
            m_root->ref();
        EXPECT_TRUE(m_root) << text;
    }
    Scene(const Scene &) = delete;
    Scene &operator=(const Scene &) = delete;
    ~Scene() {
        if (m_root)
            m_root->unref();
    }
    operator SoNode *() const { return m_root; }

private:
    SoSeparator *m_root = nullptr;
};

/// A file that is removed at the end.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string &suffix = ".ps") {
        static int counter = 0;
        m_path = ::testing::TempDir() + "oravane_" + std::to_string(getpid()) + "_" +
                 std::to_string(counter++) + suffix;
    }
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;
    ~TemporaryFile() { std::remove(m_path.c_str()); }
    const std::string &path() const { return m_path; }
    const char *name() const { return m_path.c_str(); }

private:
    std::string m_path;
};

/// The complete page that `action` makes of `scene`.
inline std::string pageOf(SoVectorizePSAction &action, SoNode *scene) {
    const TemporaryFile file;
    EXPECT_TRUE(action.getOutput()->openFile(file.name()));
    action.apply(scene);
    action.getOutput()->closeFile();
    EXPECT_FALSE(action.getOutput()->hasWriteError());
    return readFile(file.path());
}

/// The page behind its prolog.
inline std::string bodyOf(const std::string &page) {
    const std::size_t end = page.find("% end\n");
    return end == std::string::npos ? page : page.substr(end + 6);
}

inline int count(const std::string &text, const std::string &what) {
    int n = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + what.size()))
        ++n;
    return n;
}

/// What Ghostscript has to complain about, empty for a good page.
inline std::string complaints(const std::string &page) {
    const TemporaryFile file, log(".log");
    std::ofstream(file.path(), std::ios::binary) << page;
    const std::string command = "timeout 60 gs -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=nullpage " +
                                file.path() + " > " + log.path() + " 2>&1";
    const int status = std::system(command.c_str());
    const std::string said = readFile(log.path());
    return status == 0 && said.empty() ? "" : "gs exits with " + std::to_string(status) + ": " + said;
}

} // namespace oravane_test

#endif
