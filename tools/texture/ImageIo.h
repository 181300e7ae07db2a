// PNG and JPEG files for the texture tools and the command line. Pixels are interleaved,
// rows top to bottom, one byte a sample: 1 channel (grey), 3 (red, green, blue), and with
// alpha kept 2 or 4. Errors read "PATH: reason".
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct Image {
    uint32_t width = 0, height = 0, channels = 0;
    std::vector<uint8_t> pixels;
};

struct ImageReadOptions {
    bool keepAlpha = false;  // else alpha is dropped
    bool refuseWide = false; // else 16-bit samples are reduced to 8
};

// Reads a PNG or a JPEG, chosen by the first bytes. Palettes are expanded; grey stays
// one channel.
bool ReadImage(const std::string& path, Image& out, std::string& error, ImageReadOptions options = {});
// 1 to 4 channels.
bool WritePng(const std::string& path, const Image& image, std::string& error);
