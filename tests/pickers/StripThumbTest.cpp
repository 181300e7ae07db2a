// The strip's pictures: the tint by whole hundreds, the cache file made once and read
// after, "none", and gParams left as found.
#include "presets/PresetFixture.h"
#include "raster/TextureTestFiles.h"

#include "pickers/StripThumb.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <vector>

namespace fs = std::filesystem;

class StripPictures : public PresetFixture {
protected:
    fs::path Data() const { return Presets().parent_path(); }
    void Palette(const char* name, const std::string& lines) {
        WriteText(Presets() / "BackPalette" / (std::string(name) + ".qztpst"),
                  "Quenzit Press Preset;\nVersion 2;\n" + lines);
    }
    // A 300 x 300 texture whose bytes all read `value`.
    void Texture(const char* name, uint8_t value) {
        rastertest::WriteTexture((Data() / name).string(), false, 300, 300, 1,
                                 rastertest::Compress(std::vector<uint8_t>(300 * 300, value)));
    }
};

TEST_F(StripPictures, TintTakesWholeHundreds) {
    FilterParameters p = *gParams;
    p.BackgroundHighlightColor = 0x00204060; // blue 0x20, green 0x40, red 0x60
    p.BackgroundMidtoneColor = 0x00808080;
    p.BackgroundShadowColor = 0x00030609;
    p.BackgroundHighlight = p.BackgroundMidtone = p.BackgroundShadow = 100;
    p.BackgroundHue = 0;
    p.BackgroundInvert = 0;
    AllocateStripPixels();
    const auto tint = [&](uint8_t grey) {
        StripPixels.assign(StripPixels.size(), grey);
        TintStripPixels(p);
        return std::vector<uint8_t>(StripPixels.begin(), StripPixels.begin() + 3);
    };
    // The top of the ramp is a hair past 1 in f32, so the highlight may come out one under.
    const auto nearHighlight = [](const std::vector<uint8_t>& bgr) {
        const int want[3] = {0x20, 0x40, 0x60};
        for (int c = 0; c < 3; ++c)
            if (bgr[size_t(c)] > want[c] || bgr[size_t(c)] < want[c] - 1) return false;
        return true;
    };
    EXPECT_EQ(tint(0), (std::vector<uint8_t>{0x03, 0x06, 0x09}));
    EXPECT_TRUE(nearHighlight(tint(255)));
    p.BackgroundInvert = 1;
    EXPECT_TRUE(nearHighlight(tint(0)));

    // 99 is 0 hundreds: that colour's part goes black.
    p.BackgroundInvert = 0;
    p.BackgroundHighlight = 99;
    EXPECT_EQ(tint(255), (std::vector<uint8_t>{0, 0, 0}));
    p.BackgroundHighlight = p.BackgroundShadow = 100;
    p.BackgroundMidtone = 99;
    EXPECT_EQ(tint(166), (std::vector<uint8_t>{0, 0, 0})); // just above the split: nearly all midtone
    FreeStripPixels();
}

TEST_F(StripPictures, CacheRoundTripNoneAndParamsKept) {
    Texture("Plain.qzt", 200);
    Palette("Warm", "NFkB Plain.qzt \t;Name\ntLHB 100\ntdMB 100\nwdSB 100\neuHB 0\nvnIB 0\n"
                    "lCHB 255\nlCMB 128\nlCSB 0\nWkLI 1\n");
    Palette("Tones", "rgtC Empty\nlCiH 65280\nlCdM 65280\nlCdS 65280\n");
    Palette("Broken", "");
    WriteText(Presets() / "BackPalette" / "Bad.qztpst", "not a preset\n");
    std::strcpy(gParams->BackgroundFileName, "Plain.qzt");
    const FilterParameters before = *gParams;
    const std::vector<std::string> names{"none", "Warm", "Tones", "Bad", "Missing"};

    ThumbImage picture;
    ASSERT_TRUE(MakeStripThumb(names, 1, picture));
    EXPECT_EQ(picture.width, 61);
    EXPECT_EQ(picture.stride, 184);
    // Grey 200 is above 0.65: red from the highlight's 255 and the midtone's 128.
    EXPECT_EQ(picture.bytes[0], 0);
    EXPECT_GT(picture.bytes[2], 128);
    EXPECT_EQ(std::memcmp(gParams, &before, sizeof before), 0);
    EXPECT_EQ(LinkWash, 0);
    const fs::path cache = Presets() / "BackPalette" / "Warm.bmp";
    ASSERT_TRUE(fs::exists(cache));

    // The next dialog reads the file, whatever became of the texture.
    fs::remove(Data() / "Plain.qzt");
    ThumbImage again;
    ASSERT_TRUE(MakeStripThumb(names, 1, again));
    EXPECT_EQ(again.bytes, picture.bytes);
    // A cut file is made again (and here, without its texture, cannot be).
    fs::resize_file(cache, 100);
    EXPECT_FALSE(MakeStripThumb(names, 1, again));

    // A palette of colours alone tints the current texture with them.
    Texture("Plain.qzt", 0);
    ASSERT_TRUE(MakeStripThumb(names, 2, again));
    EXPECT_EQ(again.bytes[0], 0);
    EXPECT_EQ(again.bytes[1], 255);

    // "none" is the placeholder and leaves no file; the rest have no picture.
    ASSERT_TRUE(MakeStripThumb(names, 0, again));
    EXPECT_FALSE(fs::exists(Presets() / "BackPalette" / "none.bmp"));
    EXPECT_FALSE(MakeStripThumb(names, 3, again));
    EXPECT_FALSE(MakeStripThumb(names, 4, again));
    EXPECT_FALSE(MakeStripThumb(names, 5, again));
    EXPECT_EQ(std::memcmp(gParams, &before, sizeof before), 0);
    FreeStripPixels();
}
