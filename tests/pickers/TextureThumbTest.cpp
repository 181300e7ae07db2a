// The grey pictures of textures and their cache files, against textures whose bytes
// encode their coordinates, so a wrong crop, step or flip shows as a wrong value.
#include "pickers/Thumbnails.h"

#include "raster/TextureTestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace {

uint8_t Code(int32_t x, int32_t y) { return uint8_t(x * 31 + y * 17); }

// A one-plane texture whose byte at (x, y) is Code(x, y), in a folder of the test's own.
std::string CodedTexture(const std::string& name, int32_t w, int32_t h) {
    const std::string folder = (ProcessTempDir() / "textures").string();
    std::filesystem::create_directories(folder);
    std::vector<uint8_t> plane(size_t(w) * h);
    for (int32_t y = 0; y < h; ++y)
        for (int32_t x = 0; x < w; ++x) plane[size_t(y) * w + x] = Code(x, y);
    rastertest::WriteTexture(folder + "/" + name, false, uint32_t(w), uint32_t(h), 1, rastertest::Compress(plane));
    return folder;
}

// Grey of picture pixel (i, j), j counted from the top.
uint8_t GreyAt(const ThumbImage& t, int32_t i, int32_t j) {
    return t.bytes[size_t(t.height - 1 - j) * t.stride + size_t(i) * 3];
}

} // namespace

TEST(TextureThumb, CropIsCentredAtStepFourTopRowFirstAndSmallTexturesAreNotMagnified) {
    struct Case {
        int32_t w, h;
        bool clipped;
        std::function<uint8_t(int32_t, int32_t)> want;
    };
    const Case cases[] = {
        // The central 448 x 336 pixels, from (800, 600).
        {2048, 1536, false, [](int32_t i, int32_t j) { return Code(800 + 4 * i, 600 + 4 * j); }},
        // The whole texture at 300 / 112 and 200 / 84 a step.
        {300, 200, true,
         [](int32_t i, int32_t j) {
             return Code(int32_t(float(i) * (300.0f / 112.0f)), int32_t(float(j) * (200.0f / 84.0f)));
         }},
        // Step 1 on a centred 112 x 84 window, the edges repeated.
        {100, 50, true, [](int32_t i, int32_t j) { return Code(std::clamp(i - 6, 0, 99), std::clamp(j - 17, 0, 49)); }},
    };
    for (const Case& c : cases) {
        const std::string name = std::to_string(c.w) + ".qzt";
        const std::string path = CodedTexture(name, c.w, c.h) + "/" + name;
        ThumbImage t;
        bool clipped = !c.clipped;
        ASSERT_TRUE(GreyThumbFromTexture(path.c_str(), 4.0f, 112, 84, t, &clipped));
        EXPECT_EQ(clipped, c.clipped) << c.w;
        for (int32_t j = 0; j < 84; ++j)
            for (int32_t i = 0; i < 112; ++i) ASSERT_EQ(GreyAt(t, i, j), c.want(i, j)) << c.w << ": " << i << "," << j;
    }
}

TEST(TextureThumb, CacheIsWrittenBesideTheTextureAndABadOneIsMadeAgain) {
    Catalogue list;
    std::strcpy(list.Folder, CodedTexture("Cached.qzt", 400, 300).c_str());
    TextureEntry entry;
    std::strcpy(entry.Name, "Cached.qzt");
    entry.ThumbScale = 2.0f; // a scale left by live rendering is used once, then reset
    list.AllEntries = list.ShownEntries = {entry};
    const std::string cache = std::string(list.Folder) + "/Cached.qzt.bmp";
    ThumbImage made, loaded;
    EXPECT_FALSE(LoadThumbFile(list, 0, loaded));
    ASSERT_TRUE(MakeThumbFromTexture(list, 0, made));
    EXPECT_EQ(GreyAt(made, 0, 0), Code((400 - 224) / 2, (300 - 168) / 2));
    EXPECT_EQ(list.ShownEntries[0].ThumbScale, 4.0f);
    ASSERT_TRUE(LoadThumbFile(list, 0, loaded));
    EXPECT_EQ(loaded.bytes, made.bytes);

    // Another size, or a file cut short, is not a cache: the next visit makes it again.
    std::vector<uint8_t> square(size_t(184) * 61, 9);
    ASSERT_TRUE(WriteBmp(square.data(), 61, 61, 184, cache.c_str()));
    EXPECT_FALSE(LoadThumbFile(list, 0, loaded));
    std::filesystem::resize_file(cache, 54 + 336 * 83);
    EXPECT_FALSE(LoadThumbFile(list, 0, loaded));
    ASSERT_TRUE(MakeThumbFromTexture(list, 0, made));
    ASSERT_TRUE(LoadThumbFile(list, 0, loaded));
    EXPECT_EQ(loaded.bytes, made.bytes);
}
