// The Auto look over a real preset: the wash coverage a parsed Basic preset brings is kept
// when the draw says "the default stays", and the draws after it follow from that.
#include "PresetFixture.h"

#include "effects/EffectLayer.h"
#include "presets/RandomEffects.h"

namespace {

// The preset fixture, and the background layer's tones put back afterwards.
class AutoLook : public PresetFixture {
protected:
    void SetUp() override {
        PresetFixture::SetUp();
        savedBackground_ = BackgroundLayer;
    }
    void TearDown() override {
        BackgroundLayer = savedBackground_;
        PresetFixture::TearDown();
    }

private:
    EffectLayer savedBackground_;
};

} // namespace

TEST_F(AutoLook, ParsedCoverageStaysAndTheLaterDrawsFollowIt) {
    // The only Basic preset (file keys are the field keys reversed), and no Background or
    // Surface folder, so those steps draw nothing.
    WriteText(Presets() / "Basic" / "Pot.qztpst", "Quenzit Press Preset;\nVersion 2;\n"
                                                  "1voC -40 \t;Wash1 Coverage\n1cSC 60 \t;\n1dnR 555 \t;\n"
                                                  "2voC -25 \t;Wash2 Coverage\n2cSC 70 \t;\n2dnR 444 \t;\n");
    RandomSources sources;
    sources.textures = {"No_Texture.qzt", "Alpha.qzt", "Beta.qzt"};
    sources.tones = {"Reset Colors"};
    BackgroundLayer.HighlightRed = BackgroundLayer.MidtoneGreen = BackgroundLayer.ShadowBlue = 7;
    BackgroundLayer.ToneDirty = 0;
    std::strcpy(BackgroundColorsName, "Sepia");

    // The recurrence x = x * 214013 + 2531011, rand() = bits 16-30, worked for second 1700000005:
    // srand, 28479 thrown away; 22001 % 100 = 1 takes Basic, 13680 % 1 picks Pot, 14688 % 100
    // = 88 goes on; s = 28338 % 1000 = 338 (type 0). The drawer reseeds with the second *
    // 12345678: 21365 % 3 = 2; stain 222, 16, 195 (% 255); a = 22602; 24460 & 1; 11638 % 100;
    // c = 10649 % 500 = 149, so Coverage1 stays -40 and the draws go on: 4283 % 250 = 33, then
    // t = 24868 % 1000 = 868 opens wash 2. Its drawer reseeds and replays the same numbers:
    // b = 602, the same c keeps -25, e = 283; then 24868 % 100 = 68 passes over the surface
    // tones and 21805 % 100 = 5 resets the background's.
    RandomizeEffects(sources, 1700000005);
    const FilterParameters& p = *gParams;
    EXPECT_STREQ(p.WashFileName1, "Beta.qzt");
    EXPECT_EQ(p.WashType1, 0);
    EXPECT_EQ(p.WashStainColor1, 1105603u);
    EXPECT_EQ(p.WashCoverage1, -40);
    EXPECT_EQ(p.WashCoverageScale1, 33);
    EXPECT_EQ(p.WashRandomize1, 602);
    EXPECT_EQ(p.SecondWashExists, 1);
    EXPECT_EQ(p.WashCoverage2, -25);
    EXPECT_EQ(p.WashCoverageScale2, 56);
    EXPECT_EQ(p.WashRandomize2, 283);

    // "Reset Colors" on the background: the layer's default tones, the label "Custom".
    EXPECT_EQ(BackgroundLayer.HighlightRed, 0xFF);
    EXPECT_EQ(BackgroundLayer.MidtoneGreen, 0x32);
    EXPECT_EQ(BackgroundLayer.ShadowBlue, 0x00);
    EXPECT_EQ(BackgroundLayer.ToneDirty, 1);
    EXPECT_STREQ(BackgroundColorsName, "Custom");
}
