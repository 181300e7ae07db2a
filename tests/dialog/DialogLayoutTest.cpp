// The main dialog's geometry and its own pictures, without a window: LayoutDialog against
// tables worked out by hand, the minimum track size, the band and header painters.
#include "dialog/DialogLayout.h"
#include "dialog/FramePainters.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// The preview control of the template at 96 dpi (8-point MS Sans Serif: 1.5 pixels a
// horizontal unit, 13/8 a vertical one), in client pixels.
constexpr LayoutRect kPreviewControl{385, 115, 796, 461};

DialogLayout Layout(int32_t w, int32_t h, int32_t dpi) {
    const PreviewFrameSetup s = InitialPreviewFrame(kPreviewControl, dpi);
    return LayoutDialog(w, h, dpi, s.frame, s.bandTop);
}

} // namespace

TEST(DialogLayout, InitialFrameMovesLeftAboveNinetySixDpiAndTakesInBothBands) {
    PreviewFrameSetup s = InitialPreviewFrame(kPreviewControl, 96);
    EXPECT_EQ(s.frame, (LayoutRect{385, 82, 796, 494}));
    EXPECT_EQ(s.bandTop, (LayoutRect{385, 82, 796, 115}));
    EXPECT_EQ(s.bandBottom, (LayoutRect{385, 461, 796, 494}));
    EXPECT_EQ(InitialPreviewFrame(kPreviewControl, 120).frame.left, 315);
    EXPECT_EQ(InitialPreviewFrame(kPreviewControl, 144).frame.left, 370);
    EXPECT_EQ(InitialPreviewFrame(kPreviewControl, 216).bandBottom.left, 370);
}

TEST(DialogLayout, EveryRectangleAtTheMinimumSizeAt96Dpi) {
    const DialogLayout d = Layout(923, 704, 96);
    EXPECT_EQ(d.headerMiddleWidth, 136);
    EXPECT_EQ(d.rightHeader, (LayoutBox{589, 0, 334, 71}));
    EXPECT_EQ(d.allPresets, (LayoutBox{721, 19, 140, 40}));
    EXPECT_EQ(d.help, (LayoutBox{595, 19, 127, 40}));
    EXPECT_EQ(d.tabs, (LayoutBox{10, 80, 366, 615}));
    EXPECT_EQ(d.pageClientHeight, 614);
    EXPECT_EQ(d.ok, (LayoutBox{740, 667, 89, 22}));
    EXPECT_EQ(d.cancel, (LayoutBox{469, 667, 89, 22}));
    EXPECT_EQ(d.zoomUp, (LayoutBox{676, 665, 30, 26}));
    EXPECT_EQ(d.zoomDown, (LayoutBox{592, 665, 30, 26}));
    EXPECT_EQ(d.percent, (LayoutBox{636, 671, 26, 12}));
    EXPECT_EQ(d.progress, (LayoutBox{400, 647, 498, 10}));
    EXPECT_EQ(d.frame, (LayoutRect{385, 82, 910, 633}));
    EXPECT_EQ(d.bandTop, (LayoutRect{385, 82, 910, 115}));
    EXPECT_EQ(d.bandBottom, (LayoutRect{385, 600, 910, 633}));
    EXPECT_EQ(d.bandWidth, 528); // 525 rounded up
    EXPECT_EQ(d.bandBufferBytes, 532u * 33 * 3);
    EXPECT_EQ(d.invalidate, (LayoutRect{385, 82, 923, 704}));
    EXPECT_EQ(d.headerRepaint, (LayoutRect{453, 0, 923, 71}));
    const int32_t resetX[4] = {845, 830, 823, 800}, resetW[4] = {50, 70, 87, 110};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(d.resets[size_t(i)].x, resetX[i]) << i;
        EXPECT_EQ(d.resets[size_t(i)].width, resetW[i]) << i;
        EXPECT_EQ(d.resets[size_t(i)].height, 16);
    }
    EXPECT_EQ(d.optionBox, (LayoutBox{405, 606, 20, 20}));
    EXPECT_EQ(d.optionLabel[0], (LayoutBox{427, 606, 210, 20}));
    EXPECT_EQ(d.optionLabel[3], (LayoutBox{427, 606, 250, 20}));
    EXPECT_EQ(d.preview, (LayoutBox{385, 115, 528, 485}));
    EXPECT_EQ(d.drawers, (LayoutBox{0, 80, 376, 615}));
}

TEST(DialogLayout, ButtonsLabelAndResetsFollowTheDpi) {
    // 923 by 704 at 120 dpi: the frame starts 70 further left.
    DialogLayout d = Layout(923, 704, 120);
    EXPECT_EQ(d.ok, (LayoutBox{705, 667, 89, 22}));
    EXPECT_EQ(d.cancel, (LayoutBox{434, 667, 89, 22}));
    EXPECT_EQ(d.zoomUp, (LayoutBox{641, 665, 30, 26}));
    EXPECT_EQ(d.zoomDown, (LayoutBox{557, 665, 30, 26}));
    EXPECT_EQ(d.percent, (LayoutBox{597, 669, 34, 14}));
    EXPECT_EQ(d.progress, (LayoutBox{330, 647, 568, 10}));
    EXPECT_EQ(d.bandWidth, 596);
    EXPECT_EQ(d.preview, (LayoutBox{315, 115, 596, 485}));
    EXPECT_EQ(d.tabs, (LayoutBox{10, 80, 296, 615}));

    struct Row {
        int32_t dpi;
        LayoutBox ok, cancel, zoomUp, zoomDown, percent, progress;
        int32_t bandWidth;
        int32_t resetX[4], resetW[4];
        int32_t labelWidth;
    };
    // 1200 by 900; s = sqrt(dpi / 96): 1, 1.118, 1.2247, 1.5; the resets step left by s².
    const Row rows[] = {
        {96,
         {879, 863, 89, 22},
         {608, 863, 89, 22},
         {815, 861, 30, 26},
         {731, 861, 30, 26},
         {775, 867, 26, 12},
         {400, 843, 776, 10},
         804,
         {1122, 1107, 1100, 1077},
         {50, 70, 87, 110},
         210},
        {120,
         {844, 863, 89, 22},
         {573, 863, 89, 22},
         {780, 861, 30, 26},
         {696, 861, 30, 26},
         {736, 865, 34, 14},
         {330, 843, 846, 10},
         872,
         {1113, 1096, 1087, 1058},
         {55, 78, 97, 122},
         234},
        {144,
         {871, 859, 89, 28},
         {600, 859, 89, 28},
         {807, 859, 30, 26},
         {723, 859, 30, 26},
         {761, 863, 38, 16},
         {385, 843, 790, 10},
         820,
         {1106, 1086, 1075, 1041},
         {61, 85, 106, 134},
         257},
        {216,
         {871, 854, 89, 38},
         {600, 854, 89, 38},
         {807, 859, 30, 26},
         {723, 859, 30, 26},
         {761, 863, 38, 16},
         {385, 843, 790, 10},
         820,
         {1087, 1059, 1043, 992},
         {75, 105, 130, 165},
         315},
    };
    for (const Row& r : rows) {
        d = Layout(1200, 900, r.dpi);
        EXPECT_EQ(d.ok, r.ok) << r.dpi;
        EXPECT_EQ(d.cancel, r.cancel) << r.dpi;
        EXPECT_EQ(d.zoomUp, r.zoomUp) << r.dpi;
        EXPECT_EQ(d.zoomDown, r.zoomDown) << r.dpi;
        EXPECT_EQ(d.percent, r.percent) << r.dpi;
        EXPECT_EQ(d.progress, r.progress) << r.dpi;
        EXPECT_EQ(d.bandWidth, r.bandWidth) << r.dpi;
        EXPECT_EQ(d.frame.right, 1187);
        EXPECT_EQ(d.bandBottom, (LayoutRect{d.frame.left, 796, 1187, 829})) << r.dpi;
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(d.resets[size_t(i)].x, r.resetX[i]) << r.dpi << " reset " << i;
            EXPECT_EQ(d.resets[size_t(i)].width, r.resetW[i]) << r.dpi << " reset " << i;
        }
        EXPECT_EQ(d.optionLabel[1].width, r.labelWidth) << r.dpi;
        EXPECT_EQ(d.optionLabel[3].width, r.labelWidth + 40) << r.dpi;
    }
}

TEST(DialogLayout, NarrowBandsAndTheMinimumTrackSize) {
    // A frame with no width still gets a band of 4.
    const DialogLayout d = LayoutDialog(398, 300, 96, LayoutRect{385, 82, 796, 494}, LayoutRect{385, 82, 796, 115});
    EXPECT_EQ(d.frame.Width(), 0);
    EXPECT_EQ(d.bandWidth, 4);
    // The factor is dpi / 96 as an integer: 120 dpi keeps the 96 dpi size.
    EXPECT_EQ(MinimumTrackSize(96), (LayoutBox{0, 0, 923, 704}));
    EXPECT_EQ(MinimumTrackSize(120), (LayoutBox{0, 0, 923, 704}));
    EXPECT_EQ(MinimumTrackSize(144), (LayoutBox{0, 0, 923, 704}));
    EXPECT_EQ(MinimumTrackSize(192), (LayoutBox{0, 0, 1846, 1408}));
    EXPECT_EQ(MinimumTrackSize(288), (LayoutBox{0, 0, 2769, 2112}));
}

TEST(FramePainters, BandsAreBlackWithWeightedMirroredEnds) {
    // A corner picture one column wider than read, grey = 7 row + column.
    std::vector<uint32_t> corner(21 * 33);
    for (int32_t y = 0; y < 33; ++y)
        for (int32_t x = 0; x < 21; ++x) {
            const uint32_t g = uint32_t(7 * y + x);
            corner[size_t(y) * 21 + x] = PixelOf(uint8_t(g), uint8_t(g), uint8_t(g));
        }
    const ShadowWeights weights = ReadShadowWeights(PixelView{corner.data(), 21, 33, 21});
    EXPECT_FLOAT_EQ(ShadowWeightAt(weights, 2, 5), 19.0f / 255.0f);

    const uint32_t face = PixelOf(240, 200, 100);
    // The dialog's colour times the weight, each component truncated.
    const auto expected = [](int32_t row, int32_t column) {
        const float w = float(7 * row + column) / 255.0f;
        return PixelOf(uint8_t(240.0f * w), uint8_t(200.0f * w), uint8_t(100.0f * w));
    };
    const int32_t width = 52;
    std::vector<uint32_t> bits(size_t(width) * 33, 0xABCDEF);
    const PixelView band{bits.data(), width, 33, width};
    for (BandEdge edge : {BandEdge::Top, BandEdge::Bottom}) {
        PaintBand(band, weights, face, edge);
        for (int32_t y : {0, 1, 16, 32}) {
            const int32_t row = edge == BandEdge::Top ? y : 32 - y;
            for (int32_t c : {0, 3, 19}) {
                EXPECT_EQ(band.At(c, y), expected(row, c)) << y << "," << c;
                EXPECT_EQ(band.At(width - 1 - c, y), expected(row, c)) << "mirrored " << y << "," << c;
            }
            for (int32_t x : {20, 26, width - 21}) EXPECT_EQ(band.At(x, y), 0u) << x << "," << y;
        }
    }
}

TEST(FramePainters, HeaderStripRepeatsTheTilesFirstFourColumns) {
    std::vector<uint32_t> tile(6 * 71);
    for (size_t i = 0; i < tile.size(); ++i) tile[i] = uint32_t(i);
    std::vector<uint32_t> strip(10 * 71, 1);
    PaintHeaderStrip(PixelView{strip.data(), 10, 71, 10}, PixelView{tile.data(), 6, 71, 6});
    for (int32_t y : {0, 35, 70})
        for (int32_t x = 0; x < 10; ++x) EXPECT_EQ(strip[size_t(y) * 10 + x], tile[size_t(y) * 6 + x % 4]) << x;
}
