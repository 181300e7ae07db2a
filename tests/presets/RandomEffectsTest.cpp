// The Auto button's look: one seed worked through by hand, and the odds the
// step tables promise over many seeds.
#include "PresetFixture.h"

#include "presets/RandomEffects.h"

#include <cstring>

using RandomEffects = PresetFixture;

TEST_F(RandomEffects, FixedSecondGivesTheWorkedLook) {
    // With no preset folders the draws go: throw-away, Basic chance (fails), s = 317, then
    // the texture drawer reseeds with the clock for each wash, so wash 2 repeats wash 1's
    // texture and colours.
    RandomSources sources;
    sources.textures = {"No_Texture.qzt", "Alpha.qzt", "Beta.qzt", "Gamma.qzt", "Delta.qzt"};
    sources.tones = {"Reset Colors"};
    std::strcpy(BackgroundColorsName, "Sepia");
    RandomizeEffects(sources, 1700000031);

    const FilterParameters& p = *gParams;
    EXPECT_STREQ(p.WashFileName1, "Beta.qzt");
    EXPECT_EQ(p.WashType1, 1);
    EXPECT_EQ(p.WashStainColor1, 10242196u);
    EXPECT_EQ(p.WashIntensity1, 100);
    EXPECT_EQ(p.WashFlipHor1, 1);
    EXPECT_EQ(p.WashFlipVer1, 0);
    EXPECT_EQ(p.WashInvert1, 0);
    EXPECT_EQ(p.WashAngle1, 90);
    EXPECT_EQ(p.WashCoverage1, -12);
    EXPECT_EQ(p.WashCoverageScale1, 100);
    EXPECT_EQ(p.WashRandomize1, 685);
    EXPECT_EQ(p.SecondWashExists, 1);
    EXPECT_STREQ(p.WashFileName2, "Beta.qzt");
    EXPECT_EQ(p.WashType2, 4); // t of 936 and up: one past the last type, kept
    EXPECT_EQ(p.WashStainColor2, 10242196u);
    EXPECT_EQ(p.WashCoverage2, -12);
    EXPECT_EQ(p.WashCoverageScale2, 86);
    EXPECT_EQ(p.WashRandomize2, 431);
    EXPECT_STREQ(BackgroundColorsName, "Custom");
}

TEST_F(RandomEffects, OddsOverManySeconds) {
    RandomSources sources;
    sources.textures = {"Alpha.qzt", "Beta.qzt", "Gamma.qzt"}; // no "No_Texture.qzt" to pick
    int noWash = 0, typeFour = 0;
    for (int i = 0; i < 1000; ++i) {
        RandomizeEffects(sources, 1700000000 + int64_t(i) * 7919);
        const FilterParameters& p = *gParams;
        if (std::strcmp(p.WashFileName1, "No_Texture.qzt") == 0) {
            ++noWash;
            continue;
        }
        typeFour += p.WashType1 == 4;
        EXPECT_LE(p.WashType1, 4);
        EXPECT_GE(p.WashIntensity1, 15);
        EXPECT_LE(p.WashIntensity1, 185);
        if (p.WashCoverage1 == 0) {
            EXPECT_EQ(p.WashCoverageScale1, 100);
            EXPECT_EQ(p.WashRandomize1, 123);
        } else {
            EXPECT_LT(p.WashCoverage1, 0);
            EXPECT_LE(p.WashCoverageScale1, 100);
        }
    }
    EXPECT_GT(noWash, 25);
    EXPECT_LT(noWash, 80);
    EXPECT_GT(typeFour, 0);
}

TEST_F(RandomEffects, PicksFromTheFoldersAsTheDrawersShowThem) {
    WriteText(root_ / "Quenzit" / "b.qzt", "x");
    WriteText(root_ / "Quenzit" / "no_texture.QZT", "x");
    WriteText(root_ / "Quenzit" / (std::string(40, 'L') + ".qzt"), "x");
    WriteText(Presets() / "Colors" / "Rust.qztpst", "x");
    const RandomSources sources = ListRandomSources();
    ASSERT_EQ(sources.textures.size(), 3u);
    EXPECT_EQ(sources.textures[0], "no_texture.QZT");
    EXPECT_EQ(sources.textures[2], std::string(32, 'L'));
    EXPECT_EQ(sources.tones, (std::vector<std::string>{"Reset Colors", "Rust.qztpst"}));

    WriteText(Presets() / "Surface" / "Deep" / "Only.qztpst", "x");
    const std::string picked = PickRandomFile((Presets() / "Surface").string());
    EXPECT_EQ(std::filesystem::path(picked).filename(), "Only.qztpst");
    EXPECT_EQ(PickRandomFile((Presets() / "Basic").string()), "");
}
