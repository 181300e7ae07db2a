// Deterministic building blocks for procedural textures: a small random number
// generator, lattice noises, cellular noise, float images with filters, anti-aliased
// strokes and colour ramps.
//
// Every result must be the same byte on every machine and compiler, so only
// + - * / and sqrt are used on floats (all correctly rounded in IEEE arithmetic, with contraction
// into fused multiply-adds switched off), never libm's transcendental functions or the
// standard library's distributions, whose algorithms vary between versions.
//
// Coordinates: a texture is designed on a virtual canvas 1600 units wide (1200 high
// at 4:3). A Canvas maps pixels to units, so that one design renders at any size and
// a bigger file only adds detail.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace synth {

using std::size_t;

// SplitMix64: tiny, fast and identical everywhere.
class Rng {
public:
    explicit Rng(uint64_t seed) : state_(seed) {}
    uint64_t Next64();
    uint32_t Next() { return uint32_t(Next64() >> 32); }
    float Uniform();                 // [0, 1), 24 bits
    float Range(float lo, float hi); // [lo, hi)
    int Below(int n);                // [0, n)
    float Normal();                  // about N(0, 1): sum of four uniforms
    bool Chance(float p) { return Uniform() < p; }

private:
    uint64_t state_;
};

inline uint32_t Hash(int32_t x, int32_t y, uint32_t seed) {
    uint32_t h = uint32_t(x) * 0x8DA6B343u ^ uint32_t(y) * 0xD8163841u ^ seed * 0xCB1AB31Fu;
    h ^= h >> 16;
    h *= 0x7FEB352Du;
    h ^= h >> 15;
    h *= 0x846CA68Bu;
    h ^= h >> 16;
    return h;
}
inline uint32_t Hash1(uint32_t x, uint32_t seed) { return Hash(int32_t(x), 0x3C6EF372, seed); }
inline float HashUnit(uint32_t h) { return float(h >> 8) * (1.0f / 16777216.0f); }

inline int FloorInt(float x) {
    const int i = int(x);
    return i - (x < float(i) ? 1 : 0);
}
inline float Clamp01(float x) { return x < 0.0f ? 0.0f : (x > 1.0f ? 1.0f : x); }
inline float Lerp(float a, float b, float t) { return a + (b - a) * t; }
inline float SmoothStep(float edge0, float edge1, float x) {
    const float t = Clamp01((x - edge0) / (edge1 - edge0));
    return t * t * (3.0f - 2.0f * t);
}
inline float Abs(float x) { return x < 0.0f ? -x : x; }
// Correctly rounded in IEEE arithmetic, so the same everywhere.
inline float Sqrt(float x) { return x > 0.0f ? std::sqrt(x) : 0.0f; }
// Triangle wave of period 1 between 0 and 1: a cheap stand-in for a sine.
float Tri(float x);
// x raised to a power between 0 and 4 by mixing neighbouring integer powers.
float Pow(float x, float e);

// Gradient noise with 16 gradient directions, quintic fade; about -1..1.
float Noise(float x, float y, uint32_t seed);
// Value noise, smooth, 0..1.
float ValueNoise(float x, float y, uint32_t seed);
// Fractal sums. Each octave is rotated against the last, so no lattice axis shows.
float Fbm(float x, float y, uint32_t seed, int octaves, float gain = 0.5f, float lacunarity = 2.0f);
float Turbulence(float x, float y, uint32_t seed, int octaves, float gain = 0.5f); // 0..~1
float Ridged(float x, float y, uint32_t seed, int octaves, float gain = 0.5f);     // 0..1

struct Cells {
    float f1 = 0.0f, f2 = 0.0f; // distance to the nearest and second nearest point
    float px = 0.0f, py = 0.0f; // the nearest point
    uint32_t id = 0;            // hash of the nearest point's cell
};
// Worley noise, one jittered point per unit cell.
Cells Worley(float x, float y, uint32_t seed, float jitter = 1.0f);

struct Canvas {
    int w = 0, h = 0;
    float k = 1.0f; // pixels per unit
    Canvas(int width, int height) : w(width), h(height), k(float(width) / 1600.0f) {}
    float U(int x) const { return (float(x) + 0.5f) / k; }
    float V(int y) const { return (float(y) + 0.5f) / k; }
    float Width() const { return float(w) / k; }
    float Height() const { return float(h) / k; }
};

struct Field {
    int w = 0, h = 0;
    std::vector<float> v;
    Field() = default;
    Field(int width, int height, float fill = 0.0f) : w(width), h(height), v(size_t(width) * height, fill) {}
    explicit Field(const Canvas& c, float fill = 0.0f) : Field(c.w, c.h, fill) {}
    float& operator()(int x, int y) { return v[size_t(y) * w + x]; }
    float operator()(int x, int y) const { return v[size_t(y) * w + x]; }
    float At(int x, int y) const;         // clamped to the edges
    float Sample(float x, float y) const; // bilinear, pixel centres at integers
};

// Evaluates f(u, v) at every pixel.
template <typename F> void Fill(Field& out, const Canvas& c, F f) {
    for (int y = 0; y < c.h; ++y) {
        const float vv = c.V(y);
        float* row = &out.v[size_t(y) * c.w];
        for (int x = 0; x < c.w; ++x) row[x] = f(c.U(x), vv);
    }
}

// Evaluates a smooth f(u, v) on a grid `step` pixels apart and interpolates:
// for low-frequency fields that would be wasteful to compute at every pixel.
template <typename F> Field FillCoarse(const Canvas& c, int step, F f);

void Blur(Field& f, float radiusPx); // three box passes, about Gaussian
void BoxBlur(Field& f, int radiusPx);
void MinFilter(Field& f, int radiusPx);
void MaxFilter(Field& f, int radiusPx);
float Percentile(const Field& f, float p); // p in 0..1, from a subsample
// Maps the lo and hi percentiles to 0 and 1 and clamps.
void Normalize(Field& f, float lo = 0.002f, float hi = 0.998f);
void Remap(Field& f, float from0, float from1, float to0 = 0.0f, float to1 = 1.0f);

// Lambert shading of a height field: heights 0..1, `strength` in height per unit
// slope. Light from the upper left by default. Flat = lz.
Field Shade(const Field& height, const Canvas& c, float strength, float lx = -0.5f, float ly = -0.6f, float lz = 0.62f);

// Anti-aliased strokes in unit coordinates, written into a coverage mask with max, so
// that joints and crossings never double up.
struct StrokePoint {
    float x, y, radius, alpha;
};
void DrawStroke(Field& mask, const Canvas& c, const std::vector<StrokePoint>& pts);
void DrawDisc(Field& mask, const Canvas& c, float x, float y, float radius, float alpha, float softness = 1.0f);

struct Rgb {
    float r, g, b;
};
inline Rgb Mix(Rgb a, Rgb b, float t) { return {Lerp(a.r, b.r, t), Lerp(a.g, b.g, t), Lerp(a.b, b.b, t)}; }
inline Rgb Scale(Rgb a, float s) { return {a.r * s, a.g * s, a.b * s}; }
// Colours 0..255 at positions 0..1, in rising order.
struct RampStop {
    float at;
    Rgb colour;
};
Rgb Ramp(const RampStop* stops, int count, float t);

struct Texture {
    int w = 0, h = 0, planes = 1;
    std::vector<uint8_t> data; // planar
};
uint8_t Quantize(float v01);
Texture ToGrey(const Field& f); // 0..1
struct ColourField {
    Field r, g, b; // 0..255
    explicit ColourField(const Canvas& c) : r(c), g(c), b(c) {}
    void Set(size_t i, Rgb c) {
        r.v[i] = c.r;
        g.v[i] = c.g;
        b.v[i] = c.b;
    }
};
Texture ToColour(const ColourField& f);

template <typename F> Field FillCoarse(const Canvas& c, int step, F f) {
    const int gw = c.w / step + 2, gh = c.h / step + 2;
    Field grid(gw, gh);
    for (int gy = 0; gy < gh; ++gy)
        for (int gx = 0; gx < gw; ++gx)
            grid(gx, gy) = f((float(gx * step) + 0.5f) / c.k, (float(gy * step) + 0.5f) / c.k);
    Field out(c);
    const float inv = 1.0f / float(step);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) out(x, y) = grid.Sample(float(x) * inv, float(y) * inv);
    return out;
}

} // namespace synth
