// The thumbnail cache files: uncompressed 24-bit .bmp, rows bottom-up, padded to 4 bytes.
// Both drawers and the preset strip keep their pictures in them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// A 24-bit picture laid out as a DIB: rows bottom-up, blue, green, red, `stride` bytes a row.
struct ThumbImage {
    int32_t width = 0, height = 0, stride = 0;
    std::vector<uint8_t> bytes;
};

// Reads a "BM" file of depth 24 from its data offset. False for anything else, truncated
// or hostile (`out` then empty).
bool ReadBmp(const char* path, ThumbImage& out);
bool ReadBmpBytes(const uint8_t* data, size_t size, ThumbImage& out); // the same from memory
// Writes the 54-byte headers and the rows as given, padded; stops at the first failed write.
bool WriteBmp(const uint8_t* pixels, int32_t width, int32_t height, int32_t stride, const char* path);
