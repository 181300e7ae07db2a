// hostsim's colour conversions: Convert8's exact RGB/CMYK pair and the colour services.
#include "hostsim/ColorSpace.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace {

using namespace hostsim;

constexpr int16 kRgb = plugIncolorServicesRGBSpace;
constexpr int16 kCmyk = plugIncolorServicesCMYKSpace;

std::vector<uint8> Convert(int16 from, int16 to, std::vector<uint8> bytes) {
    EXPECT_EQ(Convert8(from, to, reinterpret_cast<Color8*>(bytes.data()), int16(bytes.size() / 4)), kSPNoError);
    return bytes;
}

TEST(HostsimColorSpace, RgbCmykRoundTripsAndHandValues) {
    // RGB -> CMYK -> RGB gives every colour back; the brightest component becomes k with no
    // ink on its own plate.
    std::vector<uint8> rgb;
    for (int r = 0; r < 256; r += 3)
        for (int g = 0; g < 256; g += 3)
            for (int b = 0; b < 256; b += 3) rgb.insert(rgb.end(), {0, uint8(r), uint8(g), uint8(b)});
    for (size_t start = 0; start < rgb.size(); start += 4 * 32767) {
        const std::vector<uint8> chunk(rgb.begin() + ptrdiff_t(start),
                                       rgb.begin() + ptrdiff_t(std::min(rgb.size(), start + 4 * 32767)));
        const std::vector<uint8> cmyk = Convert(kRgb, kCmyk, chunk);
        for (size_t i = 0; i < chunk.size(); i += 4) {
            ASSERT_EQ(cmyk[i + 3], std::max({chunk[i + 1], chunk[i + 2], chunk[i + 3]}));
            if (chunk[i + 1] == cmyk[i + 3] && cmyk[i + 3]) {
                ASSERT_EQ(cmyk[i], 255);
            }
        }
        ASSERT_EQ(Convert(kCmyk, kRgb, cmyk), chunk);
    }

    // Hand-computed: R = c * k / 255 rounded; 255 means no ink.
    EXPECT_EQ(Convert(kCmyk, kRgb, {255, 255, 255, 255}), (std::vector<uint8>{0, 255, 255, 255}));
    EXPECT_EQ(Convert(kCmyk, kRgb, {0, 255, 10, 255}), (std::vector<uint8>{0, 0, 255, 10}));
    EXPECT_EQ(Convert(kCmyk, kRgb, {128, 255, 1, 200}), (std::vector<uint8>{0, 100, 200, 1}));
    EXPECT_EQ(Convert(kRgb, kCmyk, {0, 0, 0, 0}), (std::vector<uint8>{255, 255, 255, 0}));
    EXPECT_EQ(Convert(kRgb, kCmyk, {0, 100, 200, 50}), (std::vector<uint8>{128, 255, 64, 200}));

    // CMYK -> RGB is many to one, and the way back is a fixed point.
    std::vector<uint8> cmyk;
    for (int i = 0; i < 4096; ++i)
        cmyk.insert(cmyk.end(), {uint8(i * 37), uint8(i * 91), uint8(i * 13), uint8(i * 59)});
    const std::vector<uint8> once = Convert(kCmyk, kRgb, cmyk);
    EXPECT_EQ(Convert(kCmyk, kRgb, Convert(kRgb, kCmyk, once)), once);
}

TEST(HostsimColorSpace, Convert8ArgumentsAndOtherSpaces) {
    Color8 c = {9, 1, 2, 3};
    EXPECT_EQ(Convert8(kRgb, kRgb, &c, 1), kSPNoError);
    EXPECT_EQ(std::vector<uint8>(c, c + 4), (std::vector<uint8>{9, 1, 2, 3}));
    EXPECT_EQ(Convert8(kRgb, kCmyk, &c, -1), kSPBadParameterError);
    EXPECT_EQ(Convert8(kRgb, kCmyk, nullptr, 1), kSPBadParameterError);
    EXPECT_EQ(Convert8(kRgb, 42, &c, 1), kSPBadParameterError);
    EXPECT_EQ(Convert8(kRgb, plugIncolorServicesXYZSpace, &c, 1), kSPUnimplementedError);
    EXPECT_EQ(Convert8(kRgb, kCmyk, nullptr, 0), kSPNoError);

    // Grey, HSB and Lab: white and a primary come back where they should.
    EXPECT_EQ(Convert(kRgb, plugIncolorServicesGraySpace, {0, 255, 255, 255})[3], 255);
    EXPECT_EQ(Convert(kRgb, plugIncolorServicesHSBSpace, {0, 0, 0, 255}), (std::vector<uint8>{0, 171, 255, 255}));
    const std::vector<uint8> lab = Convert(kRgb, plugIncolorServicesLabSpace, {0, 255, 255, 255});
    EXPECT_EQ(lab[1], 255);
    EXPECT_NEAR(lab[2], 128, 1);
    EXPECT_NEAR(lab[3], 128, 1);
    for (const int16 space : {plugIncolorServicesHSBSpace, plugIncolorServicesHSLSpace, plugIncolorServicesLabSpace}) {
        const std::vector<uint8> back = Convert(space, kRgb, Convert(kRgb, space, {0, 200, 40, 90}));
        EXPECT_NEAR(back[1], 200, 3) << space;
        EXPECT_NEAR(back[2], 40, 3) << space;
        EXPECT_NEAR(back[3], 90, 3) << space;
    }

    // The suite table: Convert8 works, Make/Delete pair up, the rest is unimplemented.
    const PSColorSpaceSuite* suite = ColorSpaceSuite();
    Color8 d = {0, 0, 100, 200};
    EXPECT_EQ(suite->Convert8(kRgb, kCmyk, &d, 1), kSPNoError);
    EXPECT_EQ(d[3], 200);
    ColorID id = nullptr;
    ASSERT_EQ(suite->Make(&id), kSPNoError);
    EXPECT_EQ(suite->Delete(&id), kSPNoError);
    EXPECT_EQ(id, nullptr);
    EXPECT_EQ(suite->Delete(&id), kSPBadParameterError);
    EXPECT_EQ(suite->Convert16(kRgb, kCmyk, nullptr, 0), kSPUnimplementedError);
}

TEST(HostsimColorSpace, ColorServices) {
    ColorServicesSetup setup;
    setup.foreground = {10, 20, 30};
    std::vector<std::string> prompts;
    const auto request = [](int16 selector, int16 from, int16 to, std::vector<int16> components) {
        ColorServicesInfo info{};
        info.infoSize = sizeof info;
        info.selector = selector;
        info.sourceSpace = from;
        info.resultSpace = to;
        for (size_t i = 0; i < components.size(); ++i) info.colorComponents[i] = components[i];
        return info;
    };
    const auto components = [](const ColorServicesInfo& info) {
        return std::vector<int16>(info.colorComponents, info.colorComponents + 4);
    };

    ColorServicesInfo info = request(plugIncolorServicesConvertColor, kRgb, kCmyk, {0, 100, 200, 0});
    ASSERT_EQ(ServeColorServices(&info, setup, prompts), noErr);
    EXPECT_EQ(components(info), (std::vector<int16>{0, 128, 255, 200})); // as Convert8 gives it
    EXPECT_TRUE(info.resultGamutInfoValid);

    info = request(plugIncolorServicesConvertColor, kRgb, plugIncolorServicesHSBSpace, {255, 0, 0, 0});
    ASSERT_EQ(ServeColorServices(&info, setup, prompts), noErr);
    EXPECT_EQ(components(info), (std::vector<int16>{0, 100, 100, 0}));

    info = request(plugIncolorServicesGetSpecialColor, kRgb, kRgb, {});
    info.selectorParameter.specialColorID = plugIncolorServicesForegroundColor;
    ASSERT_EQ(ServeColorServices(&info, setup, prompts), noErr);
    EXPECT_EQ(components(info), (std::vector<int16>{10, 20, 30, 0}));

    // The picker: OK on the colour given, a preset answer, cancel or an error; prompts are kept.
    Str255 prompt = {6, 'C', 'o', 'l', 'o', 'u', 'r'};
    info = request(plugIncolorServicesChooseColor, kRgb, kRgb, {1, 2, 3, 255});
    info.selectorParameter.pickerPrompt = &prompt;
    ASSERT_EQ(ServeColorServices(&info, setup, prompts), noErr);
    EXPECT_EQ(components(info), (std::vector<int16>{1, 2, 3, 0}));
    setup.pickedColour = std::array<uint8, 3>{200, 100, 50};
    info = request(plugIncolorServicesChooseColor, kRgb, plugIncolorServicesChosenSpace, {1, 2, 3, 255});
    ASSERT_EQ(ServeColorServices(&info, setup, prompts), noErr);
    EXPECT_EQ(components(info), (std::vector<int16>{200, 100, 50, 0}));
    EXPECT_EQ(info.resultSpace, kRgb);
    setup.pickerAnswer = userCanceledErr;
    EXPECT_EQ(ServeColorServices(&info, setup, prompts), userCanceledErr);
    setup.pickerAnswer = memFullErr; // a host that cannot show its picker
    EXPECT_EQ(ServeColorServices(&info, setup, prompts), memFullErr);
    EXPECT_EQ(prompts, (std::vector<std::string>{"Colour", "", "", ""}));

    info = request(plugIncolorServicesConvertColor, kRgb, kCmyk, {0, 0, 0, 0});
    info.reserved = &info;
    EXPECT_EQ(ServeColorServices(&info, setup, prompts), paramErr);
    info = request(plugIncolorServicesSamplePoint, kRgb, kRgb, {});
    EXPECT_EQ(ServeColorServices(&info, setup, prompts), paramErr);
}

} // namespace
