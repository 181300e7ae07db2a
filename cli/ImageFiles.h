// Pictures in and out of the command line: 8-bit PNG (grey, grey with alpha, RGB, RGBA)
// and JPEG in, PNG out. Samples are interleaved, rows top to bottom.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct Picture {
    uint32_t width = 0, height = 0;
    int channels = 0; // 1 grey, 2 grey + alpha, 3 RGB, 4 RGBA
    std::vector<uint8_t> samples;
};

// False with a reason (without the path) when the file cannot be used.
bool ReadPicture(const std::string& path, Picture& out, std::string& error);
bool WritePicture(const std::string& path, const Picture& picture, std::string& error);
