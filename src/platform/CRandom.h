// CRandom: the C library's rand()/srand() exactly as the Windows C runtime
// computes them, on every build, so a look made from a seed is the same on
// Linux and Windows. One process-wide state, apart from every other generator.
#pragma once

#include <cstdint>

// Restarts the sequence; the state before any seed is 1.
void CSeedRandom(uint32_t seed) noexcept;

// Next value in 0..32767: state = state * 214013 + 2531011, value = bits 16..30.
int CRandom() noexcept;
