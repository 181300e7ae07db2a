// qz-shots-to-png FOLDER: turns every NAME.pam the gallery wrote in FOLDER into NAME.png and
// removes the PAM. Runs on the build machine, where the PNG writer lives.
#include "ImageIo.h"
#include "hostsim/Pam.h"

#include <cstdio>
#include <filesystem>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: qz-shots-to-png FOLDER\n");
        return 1;
    }
    int written = 0, failed = 0;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        if (entry.path().extension() != ".pam") continue;
        hostsim::PamImage pam;
        std::string error;
        Image png;
        if (hostsim::ReadPam(entry.path().string(), pam, error)) {
            png.width = uint32_t(pam.width);
            png.height = uint32_t(pam.height);
            png.channels = uint32_t(pam.depth);
            png.pixels = pam.data;
            std::filesystem::path out = entry.path();
            out.replace_extension(".png");
            if (WritePng(out.string(), png, error)) {
                std::filesystem::remove(entry.path());
                ++written;
                continue;
            }
        }
        std::fprintf(stderr, "qz-shots-to-png: %s\n", error.c_str());
        ++failed;
    }
    std::printf("qz-shots-to-png: %d pictures in %s\n", written, argv[1]);
    return failed ? 1 : 0;
}
