// The grey pictures of textures and their cache files, against textures whose bytes
// encode their coordinates, so a wrong crop, step or flip shows as a wrong value.
#include "pickers/Thumbnails.h"

#include "raster/TextureTestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

namespace {

uint8_t Code(int32_t x, int32_t y) { return uint8_t(x * 31 + y * 17); }

std::string TextureFolder() {
    const std::filesystem::path folder = ProcessTempDir() / "textures";
    std::filesystem::create_directories(folder);
    return folder.string();
}

// A one-plane texture whose byte at (x, y) is Code(x, y).
void WriteCodedTexture(const std::string& folder, const std::string& name, int32_t w, int32_t h) {
    std::vector<uint8_t> plane(size_t(w) * h);
    for (int32_t y = 0; y < h; ++y)
        for (int32_t x = 0; x < w; ++x) plane[size_t(y) * w + x] = Code(x, y);
    rastertest::WriteTexture(folder + "/" + name, false, uint32_t(w), uint32_t(h), 1, rastertest::Compress(plane));
}

// Grey of picture pixel (i, j), j counted from the top.
uint8_t GreyAt(const ThumbImage& t, int32_t i, int32_t j) {
    return t.bytes[size_t(t.height - 1 - j) * t.stride + size_t(i) * 3];
}

Catalogue OneRow(const std::string& folder, const char* name) {
    Catalogue list;
    std::strncpy(list.Folder, folder.c_str(), sizeof list.Folder - 1);
    TextureEntry entry;
    std::strncpy(entry.Name, name, kEntryNameLength);
    entry.ThumbScale = 4.0f;
    list.AllEntries.push_back(entry);
    list.ShownEntries.push_back(entry);
    return list;
}

} // namespace

TEST(TextureThumb, CropIsCentredAtStepFourTopRowFirstAndSmallTexturesAreNotMagnified) {
    const std::string folder = TextureFolder();
    WriteCodedTexture(folder, "Big.qzt", 2048, 1536);
    WriteCodedTexture(folder, "Mid.qzt", 300, 200);
    WriteCodedTexture(folder, "Small.qzt", 100, 50);
    ThumbImage t;
    bool clipped = true;
    ASSERT_TRUE(GreyThumbFromTexture((folder + "/Big.qzt").c_str(), 4.0f, 112, 84, t, &clipped));
    EXPECT_FALSE(clipped);
    ASSERT_EQ(t.stride, 336);
    // The central 448 x 336 pixels start at (800, 600).
    for (int32_t j = 0; j < 84; ++j)
        for (int32_t i = 0; i < 112; ++i) ASSERT_EQ(GreyAt(t, i, j), Code(800 + 4 * i, 600 + 4 * j)) << i << "," << j;
    for (int32_t c = 0; c < 3; ++c) EXPECT_EQ(t.bytes[size_t(83) * 336 + 5 * 3 + c], Code(820, 600));

    // 300 x 200: the whole texture, at 300 / 112 and 200 / 84 a step.
    ASSERT_TRUE(GreyThumbFromTexture((folder + "/Mid.qzt").c_str(), 4.0f, 112, 84, t, &clipped));
    EXPECT_TRUE(clipped);
    for (int32_t j = 0; j < 84; ++j)
        for (int32_t i = 0; i < 112; ++i)
            ASSERT_EQ(GreyAt(t, i, j),
                      Code(int32_t(float(i) * (300.0f / 112.0f)), int32_t(float(j) * (200.0f / 84.0f))));
    EXPECT_EQ(GreyAt(t, 111, 83), Code(297, 197));

    // 100 x 50: step 1, centred on a 112 x 84 window, the edges repeated.
    ASSERT_TRUE(GreyThumbFromTexture((folder + "/Small.qzt").c_str(), 4.0f, 112, 84, t, &clipped));
    EXPECT_TRUE(clipped);
    for (int32_t j = 0; j < 84; ++j)
        for (int32_t i = 0; i < 112; ++i)
            ASSERT_EQ(GreyAt(t, i, j), Code(std::clamp(i - 6, 0, 99), std::clamp(j - 17, 0, 49))) << i << "," << j;

    // The preset strip's square pictures come from the same crop.
    ASSERT_TRUE(GreyThumbFromTexture((folder + "/Big.qzt").c_str(), 4.0f, 61, 61, t));
    EXPECT_EQ(t.stride, 184);
    EXPECT_EQ(GreyAt(t, 0, 0), Code((2048 - 244) / 2, (1536 - 244) / 2));
    EXPECT_FALSE(GreyThumbFromTexture((folder + "/None.qzt").c_str(), 4.0f, 112, 84, t));
}

TEST(TextureThumb, CacheIsWrittenBesideTheTextureAndABadOneIsMadeAgain) {
    const std::string folder = TextureFolder();
    WriteCodedTexture(folder, "Cached.qzt", 400, 300);
    Catalogue list = OneRow(folder, "Cached.qzt");
    const std::string cache = folder + "/Cached.qzt.bmp";
    std::filesystem::remove(cache);
    ThumbImage made, loaded;
    EXPECT_FALSE(LoadThumbFile(list, 0, loaded));
    list.ShownEntries[0].ThumbScale = 2.0f; // a scale left by live rendering is used once, then reset
    ASSERT_TRUE(MakeThumbFromTexture(list, 0, made));
    EXPECT_EQ(GreyAt(made, 0, 0), Code((400 - 224) / 2, (300 - 168) / 2));
    EXPECT_EQ(list.ShownEntries[0].ThumbScale, 4.0f);
    EXPECT_EQ(list.ShownEntries[0].ThumbResolution, 2048);
    ASSERT_TRUE(LoadThumbFile(list, 0, loaded));
    EXPECT_EQ(loaded.bytes, made.bytes);

    // At 4:1 a 400 x 300 texture is too small for the crop, and the catalogue's own row learns it.
    ASSERT_TRUE(MakeThumbFromTexture(list, 0, made));
    EXPECT_EQ(list.ShownEntries[0].Clipped, 1);
    EXPECT_EQ(list.AllEntries[0].Clipped, 1);

    // Another size, or a file cut short, is not a cache: the next visit makes it again.
    std::vector<uint8_t> square(size_t(184) * 61, 9);
    ASSERT_TRUE(WriteBmp(square.data(), 61, 61, 184, cache.c_str()));
    EXPECT_FALSE(LoadThumbFile(list, 0, loaded));
    EXPECT_TRUE(loaded.bytes.empty());
    std::filesystem::resize_file(cache, 54 + 336 * 83);
    EXPECT_FALSE(LoadThumbFile(list, 0, loaded));
    ASSERT_TRUE(MakeThumbFromTexture(list, 0, made));
    ASSERT_TRUE(LoadThumbFile(list, 0, loaded));
    EXPECT_EQ(loaded.bytes, made.bytes);

    EXPECT_FALSE(LoadThumbFile(list, 1, loaded));
    EXPECT_FALSE(MakeThumbFromTexture(list, -1, made));
}
