// The texture reader: both header forms by round trip, the form chosen by the path,
// and bad files (wrong magic, absurd sizes, short and long streams, kept fuzz inputs).
#include "TextureTestFiles.h"

#include "raster/AWashFile.h"

#include <gtest/gtest.h>

#include <tuple>

using namespace rastertest;

namespace {

// Opens and rasterizes `path`: 0 did not open, 1 opened but failed, 2 read.
int Read(const std::string& path, RasterPtr& out) {
    AWashFile file;
    Raster* raster = nullptr;
    if (!file.InitWithFile(path.c_str())) return 0;
    const bool ok = file.Rasterize(raster);
    out.reset(raster);
    return ok ? 2 : 1;
}

} // namespace

TEST(TextureFile, HeaderFormsRoundTripAndFollowThePath) {
    const std::vector<uint8_t> grey = Noise(7 * 5, 3), colour = Noise(4 * 6 * 3, 4);
    const std::string qzt = TempFile("qz_rt_form.qzt");
    RasterPtr r;
    WriteTexture(qzt, false, 7, 5, 1, Compress(grey));
    ASSERT_EQ(Read(qzt, r), 2);
    EXPECT_EQ(r->Mode, 1);
    EXPECT_EQ(r->Width(), 7);
    EXPECT_EQ(Bytes(*r), grey);
    // A path without any dot reads the older, big-endian form.
    WriteTexture("qz_rt_legacy", true, 4, 6, 3, Compress(colour));
    ASSERT_EQ(Read("qz_rt_legacy", r), 2);
    EXPECT_EQ(r->Planes, 3);
    EXPECT_EQ(r->Height(), 6);
    EXPECT_EQ(Bytes(*r), colour);
    // A dot in a folder name is enough for the current form; a .qzt beginning "wash" fails.
    std::filesystem::create_directories("qz_rt.d");
    WriteTexture("qz_rt.d/legacy", true, 4, 6, 3, Compress(colour));
    EXPECT_EQ(Read("qz_rt.d/legacy", r), 0);
    WriteTexture(qzt, true, 4, 6, 3, Compress(colour));
    AWashFile file;
    EXPECT_FALSE(file.InitWithFile(qzt.c_str()));
    EXPECT_EQ(file.Width(), 0u);
    EXPECT_EQ(file.Stream, nullptr) << "closed once, not again by the destructor";
    // Any planes value but 1 is three planes.
    for (uint32_t planes : {2u, 4u}) {
        WriteTexture(qzt, false, 4, 6, planes, Compress(colour));
        ASSERT_EQ(Read(qzt, r), 2);
        EXPECT_EQ(Bytes(*r), colour) << planes;
    }
    std::filesystem::remove(qzt);
    std::filesystem::remove("qz_rt_legacy");
    std::filesystem::remove_all("qz_rt.d");
}

TEST(TextureFile, BadFilesFailCleanly) {
    const std::string path = TempFile("qz_rt_bad.qzt");
    const std::vector<uint8_t> grey = Noise(40 * 30, 6), stream = Compress(grey);
    RasterPtr r;
    // Longer than the raster: refused, and not one byte written past it.
    WriteTexture(path, false, 10, 10, 1, stream);
    EXPECT_EQ(Read(path, r), 1);
    EXPECT_TRUE(std::equal(grey.begin(), grey.begin() + 100, r->Pixels()));
    std::vector<uint8_t> room(grey.size() + 1, 0xEE);
    std::FILE* f = std::fopen(path.c_str(), "rb");
    std::fseek(f, 52, SEEK_SET);
    EXPECT_EQ(InflateStream(f, room.data(), 100), -5);
    EXPECT_EQ(room[100], 0xEE);
    std::fclose(f);
    // Cut in the middle: a data error (-3), not a short success.
    WriteTexture(path, false, 40, 30, 1, std::vector<uint8_t>(stream.begin(), stream.begin() + stream.size() / 2));
    EXPECT_EQ(Read(path, r), 1);
    f = std::fopen(path.c_str(), "rb");
    std::fseek(f, 52, SEEK_SET);
    EXPECT_EQ(InflateStream(f, room.data(), grey.size()), -3);
    std::fclose(f);
    // Not zlib at all; shorter than a header; sizes of 0, 4 billion columns, a plane whose
    // bit count wraps 32 bits, over 1 GiB in all.
    WriteTexture(path, false, 4, 4, 1, Noise(64, 2));
    EXPECT_EQ(Read(path, r), 1);
    WriteTexture(path, false, 4, 4, 1, {});
    std::filesystem::resize_file(path, 30);
    EXPECT_EQ(Read(path, r), 0);
    for (const auto& [w, h, planes] : std::vector<std::tuple<uint32_t, uint32_t, uint32_t>>{
             {0, 5, 1}, {5, 0, 3}, {4000000000u, 1, 1}, {65536, 8192, 1}, {20000, 20000, 3}}) {
        WriteTexture(path, false, w, h, planes, stream);
        EXPECT_EQ(Read(path, r), 0) << w << " by " << h;
    }
    std::filesystem::remove(path);
}

TEST(TextureFile, KeptFuzzInputsDoNotCrash) {
    // As in the fuzz target: byte 0 picks the form (bit 0: the older one), the rest is the file.
    int seen = 0;
    for (const auto& entry : std::filesystem::directory_iterator(QZ_RASTER_TEST_DATA)) {
        if (entry.path().extension() != ".fuzz") continue;
        std::FILE* in = std::fopen(entry.path().string().c_str(), "rb");
        ASSERT_NE(in, nullptr);
        std::FILE* body = std::tmpfile();
        const int form = std::fgetc(in);
        for (int c; (c = std::fgetc(in)) != EOF;) std::fputc(c, body);
        std::fclose(in);
        std::rewind(body);
        AWashFile file;
        file.LegacyHeader = uint8_t(form & 1);
        Raster* out = nullptr;
        if (file.InitOpen(body)) file.Rasterize(out);
        FreeRaster(out);
        ++seen;
    }
    EXPECT_GT(seen, 0);
}
