#ifndef ORAVANE_BENCHMARKS_MESH_PEAKMEMORY_H
#define ORAVANE_BENCHMARKS_MESH_PEAKMEMORY_H

#include <fstream>
#include <string>

/// How much resident memory the process took since this was made, at the most (Linux only, else 0).
class PeakMemory {
public:
    PeakMemory() {
        std::ofstream("/proc/self/clear_refs") << 5; // starts the peak anew
        m_before = kilobytes("VmRSS:");
    }
    double bytes() const { return 1024 * (kilobytes("VmHWM:") - m_before); }

private:
    static double kilobytes(const char *name) {
        std::ifstream status("/proc/self/status");
        for (std::string word; status >> word;)
            if (double number = 0; word == name && status >> number)
                return number;
        return 0;
    }
    double m_before;
};

#endif
