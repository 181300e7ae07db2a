// float(v) / 255.0f for every byte v, worked out once: the same bits as the division,
// without a division per pixel in the compositing loops.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

inline const std::array<float, 256>& ByteFractions() {
    static const std::array<float, 256> table = [] {
        std::array<float, 256> t = {};
        for (int v = 0; v < 256; ++v) t[size_t(v)] = float(v) / 255.0f;
        return t;
    }();
    return table;
}

inline float ByteFraction(uint8_t v) { return ByteFractions()[v]; }
