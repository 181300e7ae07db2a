// qz-testcard OUT.pam WIDTH HEIGHT TUPLETYPE: a deterministic picture for end-to-end runs:
// smooth ramps, hard edges and a soft alpha ramp, so any shuffle or rounding shows.
#include "hostsim/Pam.h"

#include <cstdio>
#include <cstdlib>
#include <string>

int main(int argc, char** argv) {
    if (argc != 5) {
        std::fprintf(stderr, "usage: qz-testcard OUT.pam WIDTH HEIGHT RGB|RGB_ALPHA|CMYK|CMYK_ALPHA|GRAYSCALE\n");
        return 1;
    }
    hostsim::PamImage image;
    image.width = std::atoi(argv[2]);
    image.height = std::atoi(argv[3]);
    image.tupleType = argv[4];
    image.depth = hostsim::PamDepthOf(image.tupleType);
    if (image.width <= 0 || image.height <= 0 || image.width > 20000 || image.height > 20000 || !image.depth) {
        std::fprintf(stderr, "qz-testcard: bad size or tuple type\n");
        return 1;
    }
    image.data.resize(size_t(image.width) * image.height * image.depth);
    const bool alpha = image.tupleType.find("ALPHA") != std::string::npos;
    for (int32_t y = 0; y < image.height; ++y) {
        for (int32_t x = 0; x < image.width; ++x) {
            uint8_t* p = &image.data[(size_t(y) * image.width + x) * image.depth];
            const bool check = ((x / 8) + (y / 8)) % 2 == 0;
            for (int c = 0; c < image.depth; ++c)
                p[c] = uint8_t((x * 255 / image.width) * (c % 3 == 0) + (y * 255 / image.height) * (c % 3 == 1) +
                               (check ? 200 : 40) * (c % 3 == 2) + c * 17);
            if (alpha) p[image.depth - 1] = uint8_t(x * 255 / (image.width > 1 ? image.width - 1 : 1));
        }
    }
    std::string error;
    if (!hostsim::WritePam(argv[1], image, error)) {
        std::fprintf(stderr, "qz-testcard: %s\n", error.c_str());
        return 2;
    }
    return 0;
}
