// PNG and JPEG files for the texture tools. Pixels are interleaved, rows top to
// bottom, one byte a sample: 1 channel (grey) or 3 (red, green, blue).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct Image {
    uint32_t width = 0, height = 0, channels = 0;
    std::vector<uint8_t> pixels;
};

// Reads a PNG or a JPEG, chosen by the first bytes. Alpha is dropped, 16-bit samples
// are reduced to 8, palettes expanded; grey stays one channel.
bool ReadImage(const std::string& path, Image& out, std::string& error);
bool WritePng(const std::string& path, const Image& image, std::string& error);
