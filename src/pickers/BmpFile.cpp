// The cache files: 24-bit uncompressed DIBs with the two classic headers.
#include "pickers/BmpFile.h"

#include <cstdio>
#include <cstring>

namespace {

constexpr size_t kHeaderBytes = 54;
// Caches are small pictures; anything larger is not one of ours, and the limit keeps
// every size product far from overflowing.
constexpr int32_t kMaxSide = 16384;
constexpr size_t kMaxFileBytes = size_t(64) << 20;

uint32_t Word32(const uint8_t* p) {
    return uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24;
}
uint16_t Word16(const uint8_t* p) { return uint16_t(p[0] | p[1] << 8); }

void Put32(uint8_t* p, uint32_t v) {
    for (int i = 0; i < 4; ++i) p[i] = uint8_t(v >> (8 * i));
}
void Put16(uint8_t* p, uint16_t v) {
    p[0] = uint8_t(v);
    p[1] = uint8_t(v >> 8);
}

int32_t PaddedRow(int32_t width) { return (width * 3 + 3) & ~3; }

} // namespace

bool ReadBmpBytes(const uint8_t* data, size_t size, ThumbImage& out) {
    out = ThumbImage{};
    if (!data || size < kHeaderBytes || data[0] != 'B' || data[1] != 'M') return false;
    const uint32_t offset = Word32(data + 10);
    const uint32_t infoSize = Word32(data + 14);
    const int32_t width = int32_t(Word32(data + 18));
    const int32_t height = int32_t(Word32(data + 22));
    const uint16_t depth = Word16(data + 28);
    const uint32_t compression = Word32(data + 30);
    // Top-down (negative height) and packed pictures are not what we write.
    if (infoSize < 40 || depth != 24 || compression != 0) return false;
    if (width <= 0 || height <= 0 || width > kMaxSide || height > kMaxSide) return false;
    const size_t stride = size_t(PaddedRow(width));
    const size_t bytes = stride * size_t(height);
    if (offset < kHeaderBytes || offset > size || size - offset < bytes) return false;
    out.width = width;
    out.height = height;
    out.stride = int32_t(stride);
    out.bytes.assign(data + offset, data + offset + bytes);
    return true;
}

bool ReadBmp(const char* path, ThumbImage& out) {
    out = ThumbImage{};
    std::FILE* file = path ? std::fopen(path, "rb") : nullptr;
    if (!file) return false;
    std::vector<uint8_t> data;
    uint8_t chunk[16384];
    size_t got = 0;
    while ((got = std::fread(chunk, 1, sizeof chunk, file)) > 0) {
        if (data.size() + got > kMaxFileBytes) {
            std::fclose(file);
            return false;
        }
        data.insert(data.end(), chunk, chunk + got);
    }
    const bool failed = std::ferror(file) != 0;
    std::fclose(file);
    return !failed && ReadBmpBytes(data.data(), data.size(), out);
}

bool WriteBmp(const uint8_t* pixels, int32_t width, int32_t height, int32_t stride, const char* path) {
    if (!pixels || !path || width <= 0 || height <= 0 || width > kMaxSide || height > kMaxSide || stride < width * 3)
        return false;
    const int32_t padded = PaddedRow(width);
    uint8_t header[kHeaderBytes] = {};
    header[0] = 'B';
    header[1] = 'M';
    Put32(header + 2, uint32_t(padded) * uint32_t(height) + uint32_t(kHeaderBytes));
    Put32(header + 10, uint32_t(kHeaderBytes));
    Put32(header + 14, 40);
    Put32(header + 18, uint32_t(width));
    Put32(header + 22, uint32_t(height));
    Put16(header + 26, 1);
    Put16(header + 28, 24);
    std::FILE* file = std::fopen(path, "wb");
    if (!file) return false;
    bool ok = std::fwrite(header, 1, sizeof header, file) == sizeof header;
    // Padding is written as zeros whatever the caller's buffer holds there, so the same
    // picture always makes the same file.
    std::vector<uint8_t> row(size_t(padded), 0);
    for (int32_t y = 0; ok && y < height; ++y) {
        std::memcpy(row.data(), pixels + size_t(y) * size_t(stride), size_t(width) * 3);
        ok = std::fwrite(row.data(), 1, row.size(), file) == row.size();
    }
    if (std::fclose(file) != 0) ok = false;
    // A short file would only be refused later; better none at all.
    if (!ok) std::remove(path);
    return ok;
}
