// Coverage noise: five octaves of gradient noise with the quintic fade, seeded so a
// look stored as a seed comes out the same on every build and in every run.
#pragma once

#include <climits>
#include <cstdint>

struct Raster;

// The generator that seeds the noise: state * 214013 + 2531011, value bits 16..30.
// Its state is shared by the whole module; MakeNoiseField leaves it where its draws end.
void NoiseSeedRandom(uint32_t seed);
int NoiseRandom();

struct NoiseField {
    alignas(32) double Gradient[512][2];
    int32_t Perm[512];
};

void MakeNoiseField(NoiseField& field, int32_t seed);
double Noise2(const NoiseField& field, double x, double y);
// Noise2 at (x, y) plus four finer octaves of halving weight.
double FractalNoise(const NoiseField& field, double x, double y);

// A colour of three 16-bit components; only the high byte counts.
struct NoiseColor {
    uint16_t c[3];
};
inline constexpr NoiseColor kNoiseBlack = {{0, 0, 0}};
inline constexpr NoiseColor kNoiseWhite = {{0xFFFF, 0xFFFF, 0xFFFF}};

// Every plane of the whole raster, border included; the sample wraps at 256.
bool FillNoiseFull(Raster* raster, int32_t seed, NoiseColor low, NoiseColor high, double feature);
// Plane 0 only, lined up with the full-size noise through the preview's origin.
bool FillNoisePreview(Raster* textureSource, Raster* raster, int32_t seed, NoiseColor low, NoiseColor high,
                      double feature);

// x86 truncation: a value that has no int32 (NaN, out of range) gives INT32_MIN.
inline int32_t TruncToInt(double v) {
    if (!(v > -2147483649.0 && v < 2147483648.0)) return INT32_MIN;
    return int32_t(v);
}
