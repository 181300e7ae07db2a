#include "TextureLibrary.h"
#include "common/TempPaths.h"
#include "TextureWriter.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace {

uint32_t Le32(const std::vector<uint8_t>& b, size_t at) {
    return uint32_t(b[at]) | uint32_t(b[at + 1]) << 8 | uint32_t(b[at + 2]) << 16 | uint32_t(b[at + 3]) << 24;
}

uint32_t Be32(const std::vector<uint8_t>& b, size_t at) {
    return uint32_t(b[at]) << 24 | uint32_t(b[at + 1]) << 16 | uint32_t(b[at + 2]) << 8 | uint32_t(b[at + 3]);
}

std::vector<uint8_t> Inflate(const std::vector<uint8_t>& file, size_t offset, size_t expected) {
    std::vector<uint8_t> out(expected + 16);
    uLongf size = uLongf(out.size());
    const int rc = uncompress(out.data(), &size, file.data() + offset, uLong(file.size() - offset));
    EXPECT_EQ(rc, Z_OK);
    out.resize(size);
    return out;
}

// Three planes of 5 by 3 whose bytes tell plane, row and column apart.
std::vector<uint8_t> Planar(uint32_t w, uint32_t h, uint32_t planes) {
    std::vector<uint8_t> p(size_t(w) * h * planes);
    for (size_t i = 0; i < p.size(); ++i) p[i] = uint8_t(i * 7 + 3);
    return p;
}

std::string TempPath(const char* name) { return (ProcessTempDir() / name).string(); }

} // namespace

// ---- Header forms and payload ----

TEST(TextureWriter, CurrentFormIsLittleEndianWithOnePlanarStream) {
    const std::vector<uint8_t> planar = Planar(5, 3, 3);
    std::vector<uint8_t> file;
    std::string error;
    ASSERT_TRUE(EncodeTexture(5, 3, 3, planar.data(), {7, 0x01020304u, (1u << 14) | (1u << 4)},
                              TextureHeaderForm::Current, file, error))
        << error;
    ASSERT_GT(file.size(), 52u);
    EXPECT_EQ(std::string(file.begin(), file.begin() + 4), "1tzq");
    EXPECT_EQ(Le32(file, 4), 5u);
    EXPECT_EQ(Le32(file, 8), 3u);
    EXPECT_EQ(Le32(file, 12), 3u);
    EXPECT_EQ(Le32(file, 16), 0u);
    EXPECT_EQ(Le32(file, 20), 7u);
    EXPECT_EQ(Le32(file, 24), 0x01020304u);
    EXPECT_EQ(Le32(file, 28), (1u << 14) | (1u << 4));
    EXPECT_TRUE(std::all_of(file.begin() + 32, file.begin() + 52, [](uint8_t b) { return b == 0; }));
    EXPECT_EQ(file[52], 0x78) << "payload is a zlib stream right after the header";
    EXPECT_EQ(Inflate(file, 52, planar.size()), planar);

    TextureHeader h;
    ASSERT_TRUE(ParseTextureHeader(file.data(), file.size(), h, error)) << error;
    EXPECT_EQ(h.form, TextureHeaderForm::Current);
    EXPECT_EQ(h.info.effectMask, (1u << 14) | (1u << 4));
    EXPECT_EQ(h.payloadOffset, 52u);
}

TEST(TextureWriter, LegacyFormIsBigEndianSixteenBytes) {
    const std::vector<uint8_t> planar = Planar(258, 2, 1);
    std::vector<uint8_t> file;
    std::string error;
    ASSERT_TRUE(EncodeTexture(258, 2, 1, planar.data(), {9, 9, 9}, TextureHeaderForm::Legacy, file, error)) << error;
    EXPECT_EQ(std::string(file.begin(), file.begin() + 4), "wash");
    EXPECT_EQ(Be32(file, 4), 258u);
    EXPECT_EQ(Be32(file, 8), 2u);
    EXPECT_EQ(Be32(file, 12), 1u);
    EXPECT_EQ(Inflate(file, 16, planar.size()), planar);

    TextureHeader h;
    ASSERT_TRUE(ParseTextureHeader(file.data(), file.size(), h, error)) << error;
    EXPECT_EQ(h.form, TextureHeaderForm::Legacy);
    EXPECT_EQ(h.width, 258u);
    EXPECT_EQ(h.info.setId, 0u) << "the older form carries no set";
}

TEST(TextureWriter, FileRoundTripsAndTruncationIsCaught) {
    const std::string path = TempPath("qz_writer_test.qzt");
    const std::vector<uint8_t> planar = Planar(64, 48, 3);
    std::string error;
    ASSERT_TRUE(
        WriteTextureFile(path, 64, 48, 3, planar.data(), {3, 0, 1u << 20}, TextureHeaderForm::Current, error, 9))
        << error;
    for (const auto& entry : std::filesystem::directory_iterator(ProcessTempDir()))
        EXPECT_NE(entry.path().filename().string().rfind("qz_writer_test.qzt.", 0), 0u)
            << "left behind: " << entry.path();

    TextureHeader h;
    std::vector<uint8_t> back;
    ASSERT_TRUE(ReadTextureFile(path, h, back, error)) << error;
    EXPECT_EQ(h.info.setId, 3u);
    EXPECT_EQ(back, planar);

    // A file cut inside its stream is an error, not a short success.
    std::filesystem::resize_file(path, std::filesystem::file_size(path) - 5);
    EXPECT_FALSE(ReadTextureFile(path, h, back, error));
    std::filesystem::remove(path);
}

TEST(TextureWriter, RefusesAbsurdSizes) {
    const uint8_t byte = 0;
    std::vector<uint8_t> file;
    std::string error;
    EXPECT_FALSE(EncodeTexture(0, 10, 1, &byte, {}, TextureHeaderForm::Current, file, error));
    EXPECT_NE(error.find("empty"), std::string::npos);
    EXPECT_FALSE(EncodeTexture(10, 0, 1, &byte, {}, TextureHeaderForm::Legacy, file, error));
    EXPECT_FALSE(EncodeTexture(10, 10, 2, &byte, {}, TextureHeaderForm::Current, file, error));
    // 65536 x 16384 grey is exactly the limit; one more row, or colour, is not.
    EXPECT_TRUE(CheckTextureSize(65536, 16384, 1, error));
    EXPECT_FALSE(CheckTextureSize(65536, 16385, 1, error));
    EXPECT_FALSE(CheckTextureSize(65536, 16384, 3, error));
    EXPECT_NE(error.find("1 GiB"), std::string::npos);

    const std::string path = TempPath("qz_writer_absurd.qzt");
    EXPECT_FALSE(WriteTextureFile(path, 100000, 100000, 1, &byte, {}, TextureHeaderForm::Current, error));
    EXPECT_FALSE(std::filesystem::exists(path));
}

// ---- Building blocks of the generator ----

TEST(TextureSynth, NoisesStayInTheirRanges) {
    EXPECT_EQ(synth::FloorInt(-0.5f), -1);
    EXPECT_EQ(synth::FloorInt(-1.0f), -1);
    EXPECT_EQ(synth::FloorInt(2.0f), 2);
    for (int i = 0; i < 4000; ++i) {
        // Negative coordinates and lattice points included.
        const float x = float(i % 80) * 0.37f - 15.0f, y = float(i / 80) * 0.53f - 13.0f;
        const float n = synth::Noise(x, y, 7);
        EXPECT_LE(synth::Abs(n), 1.01f) << x << "," << y;
        const float v = synth::ValueNoise(x, y, 7);
        EXPECT_TRUE(v >= 0.0f && v <= 1.0f);
        const float r = synth::Ridged(x, y, 7, 5);
        EXPECT_TRUE(r >= 0.0f && r <= 1.0f);
        const synth::Cells c = synth::Worley(x, y, 7);
        EXPECT_LE(c.f1, c.f2);
        EXPECT_LT(c.f1, 1.5f) << "a point lies within every 3 by 3 block of cells";
    }
    EXPECT_EQ(synth::Quantize(-0.2f), 0);
    EXPECT_EQ(synth::Quantize(0.5f), 128);
    EXPECT_EQ(synth::Quantize(1.7f), 255);
}

// ---- The shipped library ----

TEST(TextureLibrary, CatalogueKeepsItsPromises) {
    std::set<std::string> names;
    int perCategory[21] = {};
    for (const TextureSpec& s : TextureCatalogue()) {
        const std::string name = s.name;
        EXPECT_TRUE(names.insert(name).second) << "duplicate " << name;
        EXPECT_LT(name.size(), 32u) << name;
        EXPECT_EQ(name.substr(name.size() - 4), ".qzt") << name;
        EXPECT_TRUE(s.planes == 1 || s.planes == 3) << name;
        if (name == "No_Texture.qzt" || name == "Solid.qzt") {
            EXPECT_EQ(s.effectMask, 0u);
            continue;
        }
        EXPECT_EQ(s.width * 3, s.height * 4) << name << " is not 4:3";
        EXPECT_GE(s.width, 1200) << name;
        EXPECT_LE(s.width, 2400) << name;
        EXPECT_EQ(s.effectMask & ~0x1FFFFEu, 0u) << name << " uses a bit no filter row tests";
        for (unsigned bit = 1; bit <= 20; ++bit)
            if (s.effectMask & (1u << bit)) ++perCategory[bit];
    }
    for (const char* name : {"Scratched.qzt", "General_Store.qzt", "Rusted.qzt", "Battleship.qzt", "Fiberglass.qzt",
                             "No_Texture.qzt", "Solid.qzt"})
        EXPECT_TRUE(names.count(name)) << name;
    for (unsigned bit = 1; bit <= 20; ++bit) EXPECT_GE(perCategory[bit], 2) << EffectCategoryName(bit);
}

TEST(TextureLibrary, GenerationIsDeterministicAndFillsTheRange) {
    const TextureSpec* scratched = FindTextureSpec("Scratched.qzt");
    ASSERT_NE(scratched, nullptr);
    const synth::Texture a = RenderTexture(*scratched, 160, 120);
    const synth::Texture b = RenderTexture(*scratched, 160, 120);
    ASSERT_EQ(a.data.size(), 160u * 120u);
    EXPECT_EQ(a.data, b.data);

    // Every texture renders small with the planes its header will claim, and none
    // comes out flat in its first plane, the one a wash or a relief reads.
    for (const TextureSpec& s : TextureCatalogue()) {
        const synth::Texture t = RenderTexture(s, 160, 120);
        EXPECT_EQ(t.planes, s.planes) << s.name;
        ASSERT_EQ(t.data.size(), size_t(160 * 120 * t.planes)) << s.name;
        if (s.effectMask == 0) continue;
        const auto [lo, hi] = std::minmax_element(t.data.begin(), t.data.begin() + 160 * 120);
        EXPECT_GT(*hi - *lo, 50) << s.name;
    }
}
