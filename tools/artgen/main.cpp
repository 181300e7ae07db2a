// qz-artgen OUTDIR [--fonts DIR]: draws the dialog's art and writes it into OUTDIR as the
// files the resource script takes, with art.rc naming them by number.
#include "ArtFiles.h"
#include "Skin.h"

#include <cstdio>
#include <filesystem>
#include <string>

int main(int argc, char** argv) {
    std::string out, fonts = "/usr/share/fonts/truetype/dejavu";
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--fonts" && i + 1 < argc) fonts = argv[++i];
        else if (out.empty() && arg[0] != '-') out = arg;
        else out.clear(), i = argc;
    }
    if (out.empty()) {
        std::fprintf(stderr, "usage: qz-artgen OUTDIR [--fonts DIR]\n");
        return 1;
    }
    artgen::Fonts loaded;
    std::string error;
    if (!artgen::LoadFonts(fonts, loaded, error)) {
        std::fprintf(stderr, "qz-artgen: %s (Debian package fonts-dejavu-core)\n", error.c_str());
        return 2;
    }
    std::error_code ec;
    std::filesystem::create_directories(out, ec);
    const std::string folder = std::filesystem::absolute(out).lexically_normal().generic_string();
    for (const artgen::ArtFile& file : artgen::BuildArtFiles(loaded, folder)) {
        const std::string path = folder + "/" + file.name;
        FILE* f = std::fopen(path.c_str(), "wb");
        const bool ok = f && std::fwrite(file.bytes.data(), 1, file.bytes.size(), f) == file.bytes.size();
        if (!f || std::fclose(f) != 0 || !ok) {
            std::fprintf(stderr, "qz-artgen: cannot write %s\n", path.c_str());
            return 2;
        }
    }
    return 0;
}
