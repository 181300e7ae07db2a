// Pictures in and out of the command line: 8-bit PNG (grey, grey with alpha, RGB, RGBA),
// JPEG, and TIFF (grey, RGB, CMYK, each with or without alpha) in; PNG, TIFF (which keeps
// CMYK) and JPEG (flat pictures only) out, chosen by the file's extension. Samples are
// interleaved, rows top to bottom.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct Picture {
    uint32_t width = 0, height = 0;
    int channels = 0;  // 1 grey, 2 grey + alpha, 3 RGB, 4 RGBA; with cmyk 4 CMYK, 5 CMYK + alpha
    bool cmyk = false; // ink amounts, 0 no ink
    std::vector<uint8_t> samples;
};

enum class PictureFormat { Png, Tiff, Jpeg, Unknown };
PictureFormat FormatOf(const std::string& path);
// The extension of a format, with its dot.
const char* ExtensionOf(PictureFormat format);

// False with a reason (without the path) when the file cannot be used.
bool ReadPicture(const std::string& path, Picture& out, std::string& error);
// A CMYK picture is written as such to TIFF only; the caller converts it for the others.
bool WritePicture(const std::string& path, PictureFormat format, const Picture& picture, std::string& error);
