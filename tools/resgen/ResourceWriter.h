// Serialises the resource tables into the byte layouts hosts read on Windows:
// little-endian integers, Pascal strings, no alignment padding in the terminology.
#pragma once

#include <cstdint>
#include <vector>

std::vector<uint8_t> BuildPipl();
std::vector<uint8_t> BuildTerminology();
