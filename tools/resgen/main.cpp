// qz-resgen OUTDIR: writes pipl.bin and aete.bin, the raw data of the module's
// PiPL and terminology resources, for the resource script to include.
#include "ResourceWriter.h"

#include <cstdio>
#include <string>

namespace {
bool WriteFile(const std::string& path, const std::vector<uint8_t>& bytes) {
    FILE* f = std::fopen(path.c_str(), "wb");
    if (!f) return false;
    const bool ok = std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
    return std::fclose(f) == 0 && ok;
}
} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: qz-resgen OUTDIR\n");
        return 1;
    }
    const std::string dir = argv[1];
    if (!WriteFile(dir + "/pipl.bin", BuildPipl()) || !WriteFile(dir + "/aete.bin", BuildTerminology())) {
        std::fprintf(stderr, "qz-resgen: cannot write into %s\n", dir.c_str());
        return 1;
    }
    return 0;
}
