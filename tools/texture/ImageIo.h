// PNG, JPEG and TIFF files for the texture tools and the command line. Pixels are
// interleaved, rows top to bottom, one byte a sample: 1 channel (grey), 3 (red, green,
// blue), and with alpha kept 2 or 4; CMYK pictures (TIFF only) have 4, or 5 with alpha,
// as ink amounts (0 no ink). Errors read "PATH: reason".
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct Image {
    uint32_t width = 0, height = 0, channels = 0;
    bool cmyk = false;
    std::vector<uint8_t> pixels;
};

// The largest picture a reader takes, in bytes of pixels (a 16384 by 16384 RGBA picture);
// larger ones are refused as too large before anything is allocated.
inline constexpr uint64_t kMaxImageBytes = uint64_t(1) << 30;

struct ImageReadOptions {
    bool keepAlpha = false;  // else alpha is dropped
    bool refuseWide = false; // else 16-bit samples are reduced to 8 (PNG); TIFF takes 8 bits only
};

// Reads a PNG, a JPEG or a TIFF, chosen by the first bytes. Palettes are expanded; grey
// stays one channel.
bool ReadImage(const std::string& path, Image& out, std::string& error, ImageReadOptions options = {});
// 1 to 4 channels, not CMYK.
bool WritePng(const std::string& path, const Image& image, std::string& error);
// 1 or 3 channels (no alpha), not CMYK; quality 1 to 100.
bool WriteJpeg(const std::string& path, const Image& image, std::string& error, int quality = 92);
// Any layout of the header, LZW-compressed; CMYK stays CMYK.
bool WriteTiff(const std::string& path, const Image& image, std::string& error);

// The TIFF half of ReadImage, for a file already known to be a TIFF.
bool ReadTiff(const std::string& path, Image& out, std::string& error, ImageReadOptions options);
