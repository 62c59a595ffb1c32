#ifndef ORAVANE_TESTS_TEMPORARYFOLDER_H
#define ORAVANE_TESTS_TEMPORARYFOLDER_H

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

/// A folder of its own for a test, gone afterwards.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "oravane-XXXXXX").string();
        m_path = mkdtemp(pattern.data());
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;

    std::string path(const std::string &name) const { return (m_path / name).string(); }

    std::string write(const std::string &name, const std::string &content) const {
        std::ofstream(m_path / name, std::ios::binary) << content;
        return path(name);
    }

private:
    std::filesystem::path m_path;
};

/// What `call` throws, as text; empty when it returns.
template <class Call>
std::string refusalOf(const Call &call) {
    try {
        call();
    } catch (const std::exception &error) {
        return error.what();
    }
    return "";
}

#endif
