// qz-testcard OUT.pam WIDTH HEIGHT TUPLETYPE [PHOTO.png]: a deterministic picture for
// end-to-end runs (OUT.png writes RGB or RGB_ALPHA as a PNG, for the command line). Without a photograph (or when it
// cannot be read): smooth ramps, hard edges and a soft alpha ramp, so any shuffle or rounding shows. With one: the
// photograph, cropped or tiled to the size, and for the alpha types a soft oval of opacity with fully transparent
// corners.
#include "hostsim/Pam.h"
#include "ImageIo.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

uint8_t OvalAlpha(int32_t x, int32_t y, int32_t w, int32_t h) {
    const double dx = (x + 0.5) / w * 2.0 - 1.0, dy = (y + 0.5) / h * 2.0 - 1.0;
    const double r = dx * dx + dy * dy; // 1 on the oval's edge
    return uint8_t(std::clamp((1.3 - r) / 0.6, 0.0, 1.0) * 255.0);
}

void FillTestCard(hostsim::PamImage& image, bool alpha) {
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
}

// Colour planes from the photograph (grey for one plane, RGB for three; CMYK takes the
// complements of RGB and black 0, which is enough for a byte comparison).
void FillFromPhoto(hostsim::PamImage& image, const Image& photo, bool alpha) {
    const int colours = image.depth - (alpha ? 1 : 0);
    for (int32_t y = 0; y < image.height; ++y) {
        for (int32_t x = 0; x < image.width; ++x) {
            const uint8_t* s = &photo.pixels[((size_t(y) % photo.height) * photo.width + size_t(x) % photo.width) * 3];
            uint8_t* p = &image.data[(size_t(y) * image.width + x) * image.depth];
            if (colours == 1) {
                p[0] = uint8_t((299 * s[0] + 587 * s[1] + 114 * s[2] + 500) / 1000);
            } else if (colours == 3) {
                p[0] = s[0], p[1] = s[1], p[2] = s[2];
            } else {
                p[0] = uint8_t(255 - s[0]), p[1] = uint8_t(255 - s[1]), p[2] = uint8_t(255 - s[2]), p[3] = 0;
            }
            if (alpha) p[image.depth - 1] = OvalAlpha(x, y, image.width, image.height);
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 5 && argc != 6) {
        std::fprintf(stderr,
                     "usage: qz-testcard OUT.pam WIDTH HEIGHT RGB|RGB_ALPHA|CMYK|CMYK_ALPHA|GRAYSCALE [PHOTO]\n");
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
    Image photo;
    std::string error;
    if (argc == 6 && ReadImage(argv[5], photo, error) && photo.channels == 3 && photo.width && photo.height) {
        FillFromPhoto(image, photo, alpha);
    } else {
        if (argc == 6) std::fprintf(stderr, "qz-testcard: no photograph (%s); a test card instead\n", error.c_str());
        FillTestCard(image, alpha);
    }
    const std::string out = argv[1];
    if (out.size() > 4 && out.compare(out.size() - 4, 4, ".png") == 0) {
        if (image.depth != 3 && image.depth != 4) {
            std::fprintf(stderr, "qz-testcard: a PNG takes RGB or RGB_ALPHA\n");
            return 1;
        }
        const Image png{uint32_t(image.width), uint32_t(image.height), uint32_t(image.depth), false, image.data};
        if (!WritePng(out, png, error)) {
            std::fprintf(stderr, "qz-testcard: %s\n", error.c_str());
            return 2;
        }
        return 0;
    }
    if (!hostsim::WritePam(out, image, error)) {
        std::fprintf(stderr, "qz-testcard: %s\n", error.c_str());
        return 2;
    }
    return 0;
}
