#include "ArtChecks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>

namespace {

uint32_t Le(const uint8_t* p, int bytes) {
    uint32_t v = 0;
    for (int i = 0; i < bytes; ++i) v |= uint32_t(p[i]) << (8 * i);
    return v;
}

struct DibLayout {
    int width = 0, height = 0, bits = 0;
    bool topDown = false;
    size_t pixels = 0, row = 0;
    uint32_t colours = 0;
    bool ok = false;
};

DibLayout Layout(const uint8_t* dib, size_t size) {
    DibLayout d;
    if (size < 40 || Le(dib, 4) != 40) return d;
    d.width = int(Le(dib + 4, 4));
    const int32_t h = int32_t(Le(dib + 8, 4));
    d.topDown = h < 0;
    d.height = h < 0 ? -h : h;
    d.bits = int(Le(dib + 14, 2));
    d.colours = Le(dib + 32, 4);
    if (d.bits == 8 && d.colours == 0) d.colours = 256;
    if (d.bits != 8) d.colours = 0;
    d.row = size_t((d.width * d.bits + 31) / 32 * 4);
    d.pixels = 40 + 4 * size_t(d.colours);
    d.ok = d.width > 0 && d.height > 0 && (d.bits == 8 || d.bits == 24) && d.pixels + d.row * d.height <= size;
    return d;
}

} // namespace

void CheckDib(const uint8_t* dib, size_t size, const art::BitmapSpec& want) {
    ASSERT_GE(size, 40u) << want.id;
    EXPECT_EQ(Le(dib, 4), 40u) << want.id << ": a plain info header";
    EXPECT_EQ(int32_t(Le(dib + 4, 4)), want.width) << want.id;
    EXPECT_EQ(int32_t(Le(dib + 8, 4)), want.height) << want.id << ": height, rows bottom-up";
    EXPECT_EQ(Le(dib + 12, 2), 1u) << want.id;
    EXPECT_EQ(int(Le(dib + 14, 2)), want.bits) << want.id;
    EXPECT_EQ(Le(dib + 16, 4), 0u) << want.id << ": uncompressed";
    const DibLayout d = Layout(dib, size);
    EXPECT_TRUE(d.ok) << want.id << ": pixels run past the end";
    if (want.bits == 8) {
        EXPECT_GE(d.colours, 2u) << want.id;
        EXPECT_LE(d.colours, 256u) << want.id;
        for (size_t y = 0; d.ok && y < size_t(d.height); ++y)
            for (size_t x = 0; x < size_t(d.width); ++x)
                ASSERT_LT(dib[d.pixels + y * d.row + x], d.colours) << want.id << ": index beyond the palette";
    }
}

int DibRed(const uint8_t* dib, size_t size, int x, int y) {
    const DibLayout d = Layout(dib, size);
    if (!d.ok || x < 0 || y < 0 || x >= d.width || y >= d.height) return -1;
    const size_t row = d.pixels + d.row * size_t(d.topDown ? y : d.height - 1 - y);
    if (d.bits == 24) return dib[row + 3 * size_t(x) + 2];
    return dib[40 + 4 * size_t(dib[row + size_t(x)]) + 2];
}

void CheckCornerWeights(const uint8_t* dib, size_t size) {
    EXPECT_EQ(DibRed(dib, size, 0, 0), 255) << "the outer corner shows the face";
    EXPECT_EQ(DibRed(dib, size, 19, 32), 0) << "the inner corner is band";
    // The face's share of the corner is the square less the quarter disc: 400 - 100 pi.
    double face = 0;
    for (int y = 0; y < art::kCornerRows; ++y)
        for (int x = 0; x < art::kCornerColumns; ++x) {
            const int w = DibRed(dib, size, x, y);
            ASSERT_GE(w, 0);
            face += w / 255.0;
            if (x > 0) {
                EXPECT_LE(w, DibRed(dib, size, x - 1, y)) << "weights fall towards the band";
            }
            if (y > 0) {
                EXPECT_LE(w, DibRed(dib, size, x, y - 1)) << "weights fall towards the band";
            }
            if (y >= art::kCornerColumns) {
                EXPECT_EQ(w, 0) << "below the curve the band is whole";
            }
        }
    EXPECT_NEAR(face, 400 - 100 * 3.14159265, 1.0);
}

void CheckAutoSound(const uint8_t* data, size_t size) {
    ASSERT_GE(size, 44u);
    EXPECT_LE(size, size_t(art::kSoundMaxBytes));
    ASSERT_EQ(std::string(reinterpret_cast<const char*>(data), 4), "RIFF");
    EXPECT_EQ(Le(data + 4, 4), size - 8) << "the RIFF length covers the rest";
    ASSERT_EQ(std::string(reinterpret_cast<const char*>(data + 8), 4), "WAVE");
    uint32_t rate = 0, blockAlign = 0, bits = 0, byteRate = 0;
    bool format = false, samples = false;
    for (size_t at = 12; at + 8 <= size;) {
        const std::string id(reinterpret_cast<const char*>(data + at), 4);
        const uint32_t length = Le(data + at + 4, 4);
        ASSERT_LE(length, size - at - 8) << "chunk " << id << " runs past the end";
        const uint8_t* body = data + at + 8;
        if (id == "fmt ") {
            ASSERT_GE(length, 16u);
            format = true;
            EXPECT_EQ(Le(body, 2), 1u) << "PCM";
            EXPECT_EQ(Le(body + 2, 2), 1u) << "one channel";
            rate = Le(body + 4, 4);
            byteRate = Le(body + 8, 4);
            blockAlign = Le(body + 12, 2);
            bits = Le(body + 14, 2);
            EXPECT_TRUE(bits == 8 || bits == 16) << bits;
            EXPECT_EQ(blockAlign, bits / 8);
            EXPECT_EQ(byteRate, rate * blockAlign);
        } else if (id == "data") {
            ASSERT_TRUE(format) << "the format comes before the samples";
            samples = true;
            ASSERT_GT(blockAlign, 0u);
            EXPECT_EQ(length % blockAlign, 0u);
            EXPECT_GT(length, 0u);
            EXPECT_LT(double(length) / byteRate, 1.0) << "under a second";
            int loudest = 0;
            for (uint32_t i = 0; i + blockAlign <= length; i += blockAlign)
                loudest = std::max(loudest,
                                   bits == 16 ? std::abs(int(int16_t(Le(body + i, 2)))) : std::abs(int(body[i]) - 128));
            EXPECT_GT(loudest, bits == 16 ? 8000 : 30) << "the sound is heard";
        }
        at += 8 + length + (length & 1);
    }
    EXPECT_TRUE(format && samples);
}
