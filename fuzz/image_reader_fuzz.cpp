// Fuzz target for the picture reader of the command line and the tools: PNG, JPEG and
// TIFF, chosen by the first bytes as for a file given by a user.
#include "ImageIo.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // The readers take a path: libtiff opens the file itself.
    static const std::string path = "/tmp/qz-image-fuzz-" + std::to_string(getpid());
    std::FILE* f = std::fopen(path.c_str(), "wb");
    if (!f) return 0;
    std::fwrite(data, 1, size, f);
    std::fclose(f);
    Image image;
    std::string error;
    if (ReadImage(path, image, error, ImageReadOptions{true, true})) {
        // What a reader answers must describe its pixels.
        if (image.pixels.size() != size_t(image.width) * image.height * image.channels) __builtin_trap();
    }
    return 0;
}
