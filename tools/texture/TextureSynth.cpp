#include "TextureSynth.h"

#include <algorithm>
#include <cmath>

namespace synth {

uint64_t Rng::Next64() {
    uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
}

float Rng::Uniform() { return float(Next() >> 8) * (1.0f / 16777216.0f); }

float Rng::Range(float lo, float hi) { return lo + (hi - lo) * Uniform(); }

int Rng::Below(int n) { return n <= 1 ? 0 : int((uint64_t(Next()) * uint64_t(n)) >> 32); }

float Rng::Normal() {
    // Irwin-Hall with four terms has variance 4/12; rescale to 1.
    const float s = Uniform() + Uniform() + Uniform() + Uniform() - 2.0f;
    return s * 1.7320508f;
}

float Tri(float x) {
    const float f = x - float(FloorInt(x));
    return f < 0.5f ? 2.0f * f : 2.0f - 2.0f * f;
}

float Pow(float x, float e) {
    x = Clamp01(x);
    const int whole = e < 0.0f ? 0 : (e > 4.0f ? 4 : int(e));
    const float frac = e - float(whole);
    float p = 1.0f;
    for (int i = 0; i < whole; ++i) p *= x;
    // Between x^n and x^(n+1), sqrt-blended so that the curve stays smooth.
    const float s = Sqrt(x);
    const float mid = frac < 0.5f ? Lerp(1.0f, s, frac * 2.0f) : Lerp(s, x, frac * 2.0f - 1.0f);
    return p * mid;
}

namespace {

// Unit vectors at 11.25 + k * 22.5 degrees: none lies on a lattice axis.
const float kGrad[16][2] = {{0.98078528f, 0.19509032f},   {0.83146961f, 0.55557023f},   {0.55557023f, 0.83146961f},
                            {0.19509032f, 0.98078528f},   {-0.19509032f, 0.98078528f},  {-0.55557023f, 0.83146961f},
                            {-0.83146961f, 0.55557023f},  {-0.98078528f, 0.19509032f},  {-0.98078528f, -0.19509032f},
                            {-0.83146961f, -0.55557023f}, {-0.55557023f, -0.83146961f}, {-0.19509032f, -0.98078528f},
                            {0.19509032f, -0.98078528f},  {0.55557023f, -0.83146961f},  {0.83146961f, -0.55557023f},
                            {0.98078528f, -0.19509032f}};

inline float Fade(float t) { return t * t * t * (t * (t * 6.0f - 15.0f) + 10.0f); }

inline float Corner(int cx, int cy, uint32_t seed, float dx, float dy) {
    const float* g = kGrad[Hash(cx, cy, seed) & 15u];
    return g[0] * dx + g[1] * dy;
}

constexpr uint32_t kOctaveSeed = 0x9E3779B9u;

// Rotation between octaves by the angle of a 3-4-5 triangle (about 36.87 degrees).
inline void NextOctave(float& x, float& y, float lacunarity, int i) {
    const float nx = (0.8f * x - 0.6f * y) * lacunarity + 31.17f + float(i) * 7.3f;
    const float ny = (0.6f * x + 0.8f * y) * lacunarity - 11.71f + float(i) * 3.1f;
    x = nx;
    y = ny;
}

} // namespace

float Noise(float x, float y, uint32_t seed) {
    const int ix = FloorInt(x), iy = FloorInt(y);
    const float fx = x - float(ix), fy = y - float(iy);
    const float n00 = Corner(ix, iy, seed, fx, fy);
    const float n10 = Corner(ix + 1, iy, seed, fx - 1.0f, fy);
    const float n01 = Corner(ix, iy + 1, seed, fx, fy - 1.0f);
    const float n11 = Corner(ix + 1, iy + 1, seed, fx - 1.0f, fy - 1.0f);
    const float u = Fade(fx), v = Fade(fy);
    return Lerp(Lerp(n00, n10, u), Lerp(n01, n11, u), v) * 1.42f;
}

float ValueNoise(float x, float y, uint32_t seed) {
    const int ix = FloorInt(x), iy = FloorInt(y);
    const float u = Fade(x - float(ix)), v = Fade(y - float(iy));
    const float a = HashUnit(Hash(ix, iy, seed)), b = HashUnit(Hash(ix + 1, iy, seed));
    const float c = HashUnit(Hash(ix, iy + 1, seed)), d = HashUnit(Hash(ix + 1, iy + 1, seed));
    return Lerp(Lerp(a, b, u), Lerp(c, d, u), v);
}

float Fbm(float x, float y, uint32_t seed, int octaves, float gain, float lacunarity) {
    float sum = 0.0f, amp = 1.0f, norm = 0.0f;
    for (int i = 0; i < octaves; ++i) {
        sum += amp * Noise(x, y, seed + uint32_t(i) * kOctaveSeed);
        norm += amp;
        amp *= gain;
        NextOctave(x, y, lacunarity, i);
    }
    return sum / norm;
}

float Turbulence(float x, float y, uint32_t seed, int octaves, float gain) {
    float sum = 0.0f, amp = 1.0f, norm = 0.0f;
    for (int i = 0; i < octaves; ++i) {
        sum += amp * Abs(Noise(x, y, seed + uint32_t(i) * kOctaveSeed));
        norm += amp;
        amp *= gain;
        NextOctave(x, y, 2.0f, i);
    }
    return sum / norm;
}

float Ridged(float x, float y, uint32_t seed, int octaves, float gain) {
    float sum = 0.0f, amp = 1.0f, norm = 0.0f, weight = 1.0f;
    for (int i = 0; i < octaves; ++i) {
        float r = 1.0f - Abs(Noise(x, y, seed + uint32_t(i) * kOctaveSeed));
        r *= r;
        r *= weight;
        weight = Clamp01(r * 2.0f);
        sum += amp * r;
        norm += amp;
        amp *= gain;
        NextOctave(x, y, 2.0f, i);
    }
    return sum / norm;
}

Cells Worley(float x, float y, uint32_t seed, float jitter) {
    const int ix = FloorInt(x), iy = FloorInt(y);
    Cells c;
    float d1 = 1e30f, d2 = 1e30f;
    for (int dy = -1; dy <= 1; ++dy) {
        for (int dx = -1; dx <= 1; ++dx) {
            const uint32_t h = Hash(ix + dx, iy + dy, seed);
            const float px = float(ix + dx) + 0.5f + (HashUnit(h) - 0.5f) * jitter;
            const float py = float(iy + dy) + 0.5f + (HashUnit(h * 0x2C1B3C6Du + 0x297A2D39u) - 0.5f) * jitter;
            const float ex = px - x, ey = py - y;
            const float d = ex * ex + ey * ey;
            if (d < d1) {
                d2 = d1;
                d1 = d;
                c.px = px;
                c.py = py;
                c.id = h;
            } else if (d < d2) {
                d2 = d;
            }
        }
    }
    c.f1 = Sqrt(d1);
    c.f2 = Sqrt(d2);
    return c;
}

float Field::At(int x, int y) const {
    x = x < 0 ? 0 : (x >= w ? w - 1 : x);
    y = y < 0 ? 0 : (y >= h ? h - 1 : y);
    return v[size_t(y) * w + x];
}

float Field::Sample(float x, float y) const {
    const int ix = FloorInt(x), iy = FloorInt(y);
    const float fx = x - float(ix), fy = y - float(iy);
    const float a = At(ix, iy), b = At(ix + 1, iy), c = At(ix, iy + 1), d = At(ix + 1, iy + 1);
    return Lerp(Lerp(a, b, fx), Lerp(c, d, fx), fy);
}

namespace {

// One box pass over a line of `n` samples `stride` apart, edges clamped.
void BoxLine(float* p, int n, size_t stride, int r, std::vector<float>& tmp) {
    tmp.resize(size_t(n));
    for (int i = 0; i < n; ++i) tmp[size_t(i)] = p[size_t(i) * stride];
    auto at = [&](int i) { return tmp[size_t(i < 0 ? 0 : (i >= n ? n - 1 : i))]; };
    double sum = 0.0;
    for (int i = -r; i <= r; ++i) sum += at(i);
    const double inv = 1.0 / double(2 * r + 1);
    for (int i = 0; i < n; ++i) {
        p[size_t(i) * stride] = float(sum * inv);
        sum += at(i + r + 1) - at(i - r);
    }
}

template <typename Pick> void RankLine(float* p, int n, size_t stride, int r, Pick pick) {
    std::vector<float> tmp(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) tmp[size_t(i)] = p[size_t(i) * stride];
    for (int i = 0; i < n; ++i) {
        float m = tmp[size_t(i)];
        for (int j = std::max(0, i - r); j <= std::min(n - 1, i + r); ++j) m = pick(m, tmp[size_t(j)]);
        p[size_t(i) * stride] = m;
    }
}

template <typename Pick> void RankFilter(Field& f, int r, Pick pick) {
    if (r <= 0) return;
    for (int y = 0; y < f.h; ++y) RankLine(&f.v[size_t(y) * f.w], f.w, 1, r, pick);
    for (int x = 0; x < f.w; ++x) RankLine(&f.v[size_t(x)], f.h, size_t(f.w), r, pick);
}

} // namespace

void BoxBlur(Field& f, int r) {
    if (r <= 0) return;
    std::vector<float> tmp;
    for (int y = 0; y < f.h; ++y) BoxLine(&f.v[size_t(y) * f.w], f.w, 1, r, tmp);
    for (int x = 0; x < f.w; ++x) BoxLine(&f.v[size_t(x)], f.h, size_t(f.w), r, tmp);
}

void Blur(Field& f, float sigma) {
    // Three box passes of width w have variance (w * w - 1) / 4.
    const float w = Sqrt(4.0f * sigma * sigma + 1.0f);
    const int r = int((w - 1.0f) * 0.5f + 0.5f);
    for (int i = 0; i < 3; ++i) BoxBlur(f, r);
}

void MinFilter(Field& f, int r) {
    RankFilter(f, r, [](float a, float b) { return a < b ? a : b; });
}

void MaxFilter(Field& f, int r) {
    RankFilter(f, r, [](float a, float b) { return a > b ? a : b; });
}

float Percentile(const Field& f, float p) {
    const size_t n = f.v.size();
    if (n == 0) return 0.0f;
    const size_t stride = n > 300000 ? n / 300000 : 1;
    std::vector<float> s;
    s.reserve(n / stride + 1);
    // An odd prime stride keeps the subsample off any row or column pattern.
    const size_t step = stride <= 1 ? 1 : (stride | 1) + 2;
    for (size_t i = 0; i < n; i += step) s.push_back(f.v[i]);
    const size_t k = size_t(Clamp01(p) * float(s.size() - 1));
    std::nth_element(s.begin(), s.begin() + std::ptrdiff_t(k), s.end());
    return s[k];
}

void Remap(Field& f, float from0, float from1, float to0, float to1) {
    const float span = from1 - from0;
    const float inv = span != 0.0f ? 1.0f / span : 0.0f;
    for (float& x : f.v) x = to0 + (to1 - to0) * Clamp01((x - from0) * inv);
}

void Normalize(Field& f, float lo, float hi) { Remap(f, Percentile(f, lo), Percentile(f, hi)); }

Field Shade(const Field& height, const Canvas& c, float strength, float lx, float ly, float lz) {
    const float n = Sqrt(lx * lx + ly * ly + lz * lz);
    lx /= n;
    ly /= n;
    lz /= n;
    Field out(height.w, height.h);
    const float s = strength * c.k * 0.5f;
    for (int y = 0; y < height.h; ++y) {
        for (int x = 0; x < height.w; ++x) {
            const float sx = (height.At(x + 1, y) - height.At(x - 1, y)) * s;
            const float sy = (height.At(x, y + 1) - height.At(x, y - 1)) * s;
            const float len = Sqrt(sx * sx + sy * sy + 1.0f);
            const float d = (-sx * lx - sy * ly + lz) / len;
            out(x, y) = d < 0.0f ? 0.0f : d;
        }
    }
    return out;
}

namespace {

void DrawSegment(Field& m, float x0, float y0, float x1, float y1, float r0, float r1, float a0, float a1) {
    const float rmax = std::max(std::max(r0, r1), 0.7f) + 1.0f;
    const int bx0 = std::max(0, FloorInt(std::min(x0, x1) - rmax));
    const int by0 = std::max(0, FloorInt(std::min(y0, y1) - rmax));
    const int bx1 = std::min(m.w - 1, FloorInt(std::max(x0, x1) + rmax) + 1);
    const int by1 = std::min(m.h - 1, FloorInt(std::max(y0, y1) + rmax) + 1);
    const float dx = x1 - x0, dy = y1 - y0;
    const float len2 = dx * dx + dy * dy;
    for (int y = by0; y <= by1; ++y) {
        for (int x = bx0; x <= bx1; ++x) {
            const float px = float(x) + 0.5f - x0, py = float(y) + 0.5f - y0;
            float t = len2 > 0.0f ? (px * dx + py * dy) / len2 : 0.0f;
            t = Clamp01(t);
            const float ex = px - dx * t, ey = py - dy * t;
            const float d = Sqrt(ex * ex + ey * ey);
            float r = Lerp(r0, r1, t), a = Lerp(a0, a1, t);
            // Lines thinner than a pixel fade instead of breaking up.
            if (r < 0.7f) {
                a *= r / 0.7f;
                r = 0.7f;
            }
            const float cov = Clamp01(r + 0.5f - d) * a;
            float& dst = m(x, y);
            if (cov > dst) dst = cov;
        }
    }
}

} // namespace

void DrawStroke(Field& mask, const Canvas& c, const std::vector<StrokePoint>& pts) {
    for (size_t i = 1; i < pts.size(); ++i) {
        const StrokePoint& p = pts[i - 1];
        const StrokePoint& q = pts[i];
        // Long diagonal segments are cut into pieces, so that each bounding box stays
        // close to the line and little time goes into pixels far from it.
        const float dx = (q.x - p.x) * c.k, dy = (q.y - p.y) * c.k;
        const float len = Sqrt(dx * dx + dy * dy);
        const int pieces = std::max(1, int(len / 12.0f) + 1);
        for (int k = 0; k < pieces; ++k) {
            const float t0 = float(k) / float(pieces), t1 = float(k + 1) / float(pieces);
            DrawSegment(mask, Lerp(p.x, q.x, t0) * c.k, Lerp(p.y, q.y, t0) * c.k, Lerp(p.x, q.x, t1) * c.k,
                        Lerp(p.y, q.y, t1) * c.k, Lerp(p.radius, q.radius, t0) * c.k,
                        Lerp(p.radius, q.radius, t1) * c.k, Lerp(p.alpha, q.alpha, t0), Lerp(p.alpha, q.alpha, t1));
        }
    }
    if (pts.size() == 1) {
        const StrokePoint& p = pts[0];
        DrawSegment(mask, p.x * c.k, p.y * c.k, p.x * c.k, p.y * c.k, p.radius * c.k, p.radius * c.k, p.alpha, p.alpha);
    }
}

void DrawDisc(Field& mask, const Canvas& c, float x, float y, float radius, float alpha, float softness) {
    const float cx = x * c.k, cy = y * c.k, r = radius * c.k;
    const float soft = std::max(softness * c.k, 1.0f);
    const int bx0 = std::max(0, FloorInt(cx - r - soft));
    const int by0 = std::max(0, FloorInt(cy - r - soft));
    const int bx1 = std::min(mask.w - 1, FloorInt(cx + r + soft) + 1);
    const int by1 = std::min(mask.h - 1, FloorInt(cy + r + soft) + 1);
    for (int py = by0; py <= by1; ++py) {
        for (int px = bx0; px <= bx1; ++px) {
            const float ex = float(px) + 0.5f - cx, ey = float(py) + 0.5f - cy;
            const float d = Sqrt(ex * ex + ey * ey);
            const float cov = Clamp01((r - d) / soft + 0.5f) * alpha;
            float& dst = mask(px, py);
            if (cov > dst) dst = cov;
        }
    }
}

Rgb Ramp(const RampStop* stops, int count, float t) {
    if (t <= stops[0].at) return stops[0].colour;
    for (int i = 1; i < count; ++i) {
        if (t <= stops[i].at) {
            const float f = (t - stops[i - 1].at) / (stops[i].at - stops[i - 1].at);
            return Mix(stops[i - 1].colour, stops[i].colour, f);
        }
    }
    return stops[count - 1].colour;
}

uint8_t Quantize(float v01) {
    const float s = v01 * 255.0f + 0.5f;
    return uint8_t(s <= 0.0f ? 0 : (s >= 255.0f ? 255 : int(s)));
}

Texture ToGrey(const Field& f) {
    Texture t;
    t.w = f.w;
    t.h = f.h;
    t.planes = 1;
    t.data.resize(f.v.size());
    for (size_t i = 0; i < f.v.size(); ++i) t.data[i] = Quantize(f.v[i]);
    return t;
}

Texture ToColour(const ColourField& f) {
    Texture t;
    t.w = f.r.w;
    t.h = f.r.h;
    t.planes = 3;
    const size_t n = f.r.v.size();
    t.data.resize(n * 3);
    const float inv = 1.0f / 255.0f;
    for (size_t i = 0; i < n; ++i) {
        t.data[i] = Quantize(f.r.v[i] * inv);
        t.data[n + i] = Quantize(f.g.v[i] * inv);
        t.data[2 * n + i] = Quantize(f.b.v[i] * inv);
    }
    return t;
}

} // namespace synth
