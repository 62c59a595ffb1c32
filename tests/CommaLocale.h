#ifndef ORAVANE_TESTS_COMMALOCALE_H
#define ORAVANE_TESTS_COMMALOCALE_H

#include "TemporaryFolder.h"

#include <clocale>

/// A locale with a decimal comma while it lives, made on the spot when the machine has the sources of
/// locales.
class CommaLocale {
public:
    CommaLocale() {
        const std::string command =
            "localedef -i de_DE -f UTF-8 " + m_folder.path("de_DE.UTF-8") + " > /dev/null 2>&1";
        if (std::system(command.c_str()) == 0)
            setenv("LOCPATH", m_folder.path("").c_str(), 1);
        isSet = std::setlocale(LC_NUMERIC, "de_DE.UTF-8") != nullptr;
    }
    ~CommaLocale() {
        std::setlocale(LC_NUMERIC, "C");
        unsetenv("LOCPATH");
    }
    CommaLocale(const CommaLocale &) = delete;
    CommaLocale &operator=(const CommaLocale &) = delete;

    bool isSet = false; ///< not on a machine without the package locales

private:
    TemporaryFolder m_folder;
};

#endif
