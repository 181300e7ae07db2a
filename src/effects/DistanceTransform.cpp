// Four-point sequential Euclidean distance mapping: each word carries the offset to its
// nearest zero word found so far, as two 16-bit numbers, until the last step squares it.
#include "effects/WashMask.h"

#include <algorithm>

namespace {

struct Offset {
    int32_t dx, dy;
};

Offset Unpack(uint32_t w) { return {int16_t(uint16_t(w & 0xFFFF)), int16_t(uint16_t(w >> 16))}; }
uint32_t Pack(int32_t dx, int32_t dy) {
    return uint32_t(uint16_t(int16_t(dx))) | (uint32_t(uint16_t(int16_t(dy))) << 16);
}
int64_t Square(Offset o) { return int64_t(o.dx) * o.dx + int64_t(o.dy) * o.dy; }

// The neighbour's offset moved by (ddx, ddy) replaces the word only when strictly nearer.
void Try(uint32_t& word, uint32_t neighbour, int32_t ddx, int32_t ddy) {
    const Offset n = Unpack(neighbour);
    const Offset c = {n.dx + ddx, n.dy + ddy};
    if (Square(Unpack(word)) > Square(c)) word = Pack(c.dx, c.dy);
}

} // namespace

int32_t DistanceTransform(uint32_t* map, int32_t width, int32_t height) {
    if (!map || width <= 0 || height <= 0) return 0;
    const int32_t far = std::max(width, height);
    const size_t n = size_t(width) * height;
    for (size_t i = 0; i < n; ++i) map[i] = map[i] ? Pack(far, far) : 0;

    for (int32_t y = 0; y < height; ++y) {
        uint32_t* row = map + size_t(y) * width;
        for (int32_t x = 0; x < width; ++x) {
            if (y > 0) Try(row[x], row[x - ptrdiff_t(width)], 0, 1);
            if (x > 0) Try(row[x], row[x - 1], 1, 0);
        }
        for (int32_t x = width - 2; x >= 0; --x) Try(row[x], row[x + 1], -1, 0);
    }
    for (int32_t y = height - 1; y >= 0; --y) {
        uint32_t* row = map + size_t(y) * width;
        for (int32_t x = width - 1; x >= 0; --x) {
            if (y < height - 1) Try(row[x], row[x + ptrdiff_t(width)], 0, -1);
            if (x < width - 1) Try(row[x], row[x + 1], -1, 0);
        }
        for (int32_t x = 1; x < width; ++x) Try(row[x], row[x - 1], 1, 0);
    }

    int64_t largest = 0;
    for (size_t i = 0; i < n; ++i) {
        const int64_t d = Square(Unpack(map[i]));
        map[i] = uint32_t(d);
        largest = std::max(largest, d);
    }
    return int32_t(largest);
}
