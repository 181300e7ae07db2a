// Internal to the platform layer: the system half of PlayWaveAsync.
#pragma once

#include <cstddef>

bool SystemPlayWave(const void* wave, size_t size) noexcept;
