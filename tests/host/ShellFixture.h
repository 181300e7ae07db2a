// Documents and hosts for the shell's tests: the real PluginMain driven by hostsim.
#pragma once

#include "hostsim/Descriptor.h"
#include "hostsim/Handles.h"
#include "hostsim/Host.h"
#include "host/PluginMain.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace shelltest {

// A picture with distinct values in every plane, so that any shuffle shows.
inline std::vector<uint8> TestCard(int32 width, int32 height, int planes) {
    std::vector<uint8> pixels(size_t(width) * height * planes);
    for (int32 y = 0; y < height; ++y)
        for (int32 x = 0; x < width; ++x)
            for (int p = 0; p < planes; ++p)
                pixels[(size_t(y) * width + x) * planes + p] = uint8((x * 7 + y * 13 + p * 61) & 0xFF);
    return pixels;
}

inline hostsim::Document RgbDocument(int32 width, int32 height, int planes = 3, int16 mode = plugInModeRGBColor) {
    return hostsim::MakeDocument(width, height, mode, 8, TestCard(width, height, planes), planes);
}

// A layer of four planes whose alpha is 255 everywhere.
inline hostsim::Document OpaqueDocument(int32 width, int32 height) {
    std::vector<uint8> pixels = TestCard(width, height, 4);
    for (size_t i = 3; i < pixels.size(); i += 4) pixels[i] = 255;
    return hostsim::MakeDocument(width, height, plugInModeRGBColor, 8, pixels, 4);
}

// Every texture named "no texture": the render passes the picture through.
inline hostsim::Descriptor AllEffectsOff() {
    hostsim::Descriptor d;
    for (DescriptorKeyID key : {FourCC("WFN1"), FourCC("WFN2"), FourCC("SFN1"), FourCC("SFN2"), FourCC("BkFN")})
        d.PutText(key, "No_Texture.qzt");
    return d;
}

inline std::unique_ptr<hostsim::Host> MakeHost(hostsim::Document doc, hostsim::HostOptions options = {}) {
    return std::make_unique<hostsim::Host>(std::move(doc), std::move(options), PluginMain);
}

// Fails the test on any misuse the host saw.
inline void ExpectNoMisuse(hostsim::Host& host) {
    for (const std::string& m : host.TakeMisuse()) ADD_FAILURE() << "host saw misuse: " << m;
    EXPECT_TRUE(host.HandlesUnlocked());
}

} // namespace shelltest
