// Four-character codes, as the host's interface, its resources, presets and scripts
// spell keys and types: the big-endian reading of the four bytes.
#pragma once

#include <cstdint>

// FourCC("8BIM") == 0x3842494D. Reads exactly four characters.
constexpr uint32_t FourCC(const char* s) {
    return (uint32_t(uint8_t(s[0])) << 24) | (uint32_t(uint8_t(s[1])) << 16) | (uint32_t(uint8_t(s[2])) << 8) |
           uint32_t(uint8_t(s[3]));
}
