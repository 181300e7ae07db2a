// qz-texture: packs pictures into texture files and tells what a texture file holds.
//
//   qz-texture pack IMAGE OUT.qzt [--grey] [--set-id N] [--effects BITS] [--legacy]
//   qz-texture info FILE...
//   qz-texture unpack FILE.qzt OUT.png [--crop X Y W H]
//
// Exit codes: 0 done, 1 usage, 2 unreadable input, 3 output not written.
#include "ImageIo.h"
#include "TextureWriter.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr int kUsage = 1, kBadInput = 2, kBadOutput = 3;

int Usage() {
    std::fprintf(stderr, "usage: qz-texture pack IMAGE OUT.qzt [--grey] [--set-id N] [--effects BITS] "
                         "[--legacy]\n"
                         "       qz-texture info FILE...\n"
                         "       qz-texture unpack FILE.qzt OUT.png [--crop X Y W H]\n"
                         "IMAGE is a PNG or JPEG; BITS is the effect mask, decimal or 0x hexadecimal.\n");
    return kUsage;
}

bool ParseU32(const char* text, uint32_t& out) {
    if (!text || !*text || *text == '-') return false;
    errno = 0;
    char* end = nullptr;
    const unsigned long long v = std::strtoull(text, &end, 0);
    if (errno || *end || v > 0xFFFFFFFFull) return false;
    out = uint32_t(v);
    return true;
}

int Pack(int argc, char** argv) {
    if (argc < 2) return Usage();
    const std::string input = argv[0], output = argv[1];
    bool grey = false;
    TextureInfo info;
    TextureHeaderForm form = TextureHeaderForm::Current;
    for (int i = 2; i < argc; ++i) {
        const std::string opt = argv[i];
        if (opt == "--grey") {
            grey = true;
        } else if (opt == "--legacy") {
            form = TextureHeaderForm::Legacy;
        } else if (opt == "--set-id" || opt == "--effects") {
            uint32_t value = 0;
            if (i + 1 >= argc || !ParseU32(argv[i + 1], value)) {
                std::fprintf(stderr, "qz-texture: %s needs a number\n", opt.c_str());
                return kUsage;
            }
            (opt == "--set-id" ? info.setId : info.effectMask) = value;
            ++i;
        } else {
            std::fprintf(stderr, "qz-texture: unknown option %s\n", opt.c_str());
            return kUsage;
        }
    }
    if (form == TextureHeaderForm::Legacy && (info.setId || info.effectMask))
        std::fprintf(stderr, "qz-texture: the legacy header has no set id or effect mask; "
                             "they are dropped\n");

    Image image;
    std::string error;
    if (!ReadImage(input, image, error)) {
        std::fprintf(stderr, "qz-texture: %s\n", error.c_str());
        return kBadInput;
    }
    const size_t n = size_t(image.width) * image.height;
    const uint32_t planes = image.channels == 1 || grey ? 1 : 3;
    std::vector<uint8_t> planar(n * planes);
    for (size_t i = 0; i < n; ++i) {
        const uint8_t* p = &image.pixels[i * image.channels];
        if (image.channels == 1) {
            planar[i] = p[0];
        } else if (grey) {
            // Rec. 601 weights in 1/256ths, rounded.
            planar[i] = uint8_t((77u * p[0] + 150u * p[1] + 29u * p[2] + 128u) >> 8);
        } else {
            planar[i] = p[0];
            planar[n + i] = p[1];
            planar[2 * n + i] = p[2];
        }
    }
    if (!WriteTextureFile(output, image.width, image.height, planes, planar.data(), info, form, error)) {
        std::fprintf(stderr, "qz-texture: %s\n", error.c_str());
        return kBadOutput;
    }
    std::printf("%s: %u x %u, %u plane%s\n", output.c_str(), image.width, image.height, planes, planes == 1 ? "" : "s");
    return 0;
}

int Info(int argc, char** argv) {
    if (argc < 1) return Usage();
    int result = 0;
    for (int i = 0; i < argc; ++i) {
        TextureHeader h;
        std::string error;
        if (!ReadTextureHeader(argv[i], h, error)) {
            std::fprintf(stderr, "qz-texture: %s: %s\n", argv[i], error.c_str());
            result = kBadInput;
            continue;
        }
        std::printf("%s\n  form: %s\n  size: %u x %u\n  planes: %u (%s)\n", argv[i],
                    h.form == TextureHeaderForm::Current ? "current (52 bytes, little-endian)"
                                                         : "legacy (16 bytes, big-endian)",
                    h.width, h.height, h.planes, h.planes == 1 ? "grey" : "colour");
        if (h.form == TextureHeaderForm::Legacy) continue;
        std::printf("  set id: %u\n  extra: %u\n  effects: 0x%08X", h.info.setId, h.info.extra, h.info.effectMask);
        const char* sep = " ";
        for (unsigned bit = 0; bit < 32; ++bit) {
            if (!(h.info.effectMask & (1u << bit))) continue;
            const char* name = EffectCategoryName(bit);
            if (name) std::printf("%s%s", sep, name);
            else std::printf("%s(bit %u, no category)", sep, bit);
            sep = ", ";
        }
        std::printf("%s\n", h.info.effectMask ? "" : " (no category)");
    }
    return result;
}

int Unpack(int argc, char** argv) {
    if (argc != 2 && argc != 7) return Usage();
    TextureHeader h;
    std::vector<uint8_t> planar;
    std::string error;
    if (!ReadTextureFile(argv[0], h, planar, error)) {
        std::fprintf(stderr, "qz-texture: %s\n", error.c_str());
        return kBadInput;
    }
    uint32_t x0 = 0, y0 = 0, w = h.width, hh = h.height;
    if (argc == 7) {
        if (std::strcmp(argv[2], "--crop") != 0 || !ParseU32(argv[3], x0) || !ParseU32(argv[4], y0) ||
            !ParseU32(argv[5], w) || !ParseU32(argv[6], hh))
            return Usage();
        if (x0 >= h.width || y0 >= h.height || w == 0 || hh == 0) {
            std::fprintf(stderr, "qz-texture: crop lies outside the %u x %u texture\n", h.width, h.height);
            return kUsage;
        }
        w = std::min(w, h.width - x0);
        hh = std::min(hh, h.height - y0);
    }
    Image out;
    out.width = w;
    out.height = hh;
    out.channels = h.planes == 1 ? 1 : 3;
    out.pixels.resize(size_t(w) * hh * out.channels);
    const size_t plane = size_t(h.width) * h.height;
    for (uint32_t y = 0; y < hh; ++y)
        for (uint32_t x = 0; x < w; ++x)
            for (uint32_t p = 0; p < out.channels; ++p)
                out.pixels[(size_t(y) * w + x) * out.channels + p] =
                    planar[plane * p + size_t(y + y0) * h.width + x + x0];
    if (!WritePng(argv[1], out, error)) {
        std::fprintf(stderr, "qz-texture: %s\n", error.c_str());
        return kBadOutput;
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) return Usage();
    const std::string command = argv[1];
    if (command == "pack") return Pack(argc - 2, argv + 2);
    if (command == "info") return Info(argc - 2, argv + 2);
    if (command == "unpack") return Unpack(argc - 2, argv + 2);
    return Usage();
}
