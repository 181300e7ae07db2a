// Coverage noise.
#include "effects/Noise.h"

#include "state/WorkImages.h"
#include "state/Progress.h"
#include "raster/Raster.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <new>
#include <vector>

namespace {

uint32_t gNoiseState = 1;

// Plane components of a colour carried over to the raster's mode.
void ConvertColor(const Raster& raster, NoiseColor color, int32_t out[4]) {
    uint16_t rgb[3] = {uint16_t(color.c[0] >> 8), uint16_t(color.c[1] >> 8), uint16_t(color.c[2] >> 8)};
    uint16_t converted[4] = {rgb[0], rgb[1], rgb[2], 0};
    if (raster.Mode != 7 && raster.Mode != 8 && RasterConvertColor) RasterConvertColor(raster.Mode, rgb, converted);
    for (int i = 0; i < 4; ++i) out[i] = converted[i];
}

struct FillSetup {
    double frequency = 0.0;
    int32_t amplitude[4] = {};
    int32_t low[4] = {};
};

bool Setup(Raster* raster, NoiseColor low, NoiseColor high, double feature, FillSetup& s) {
    if (!raster || raster->Desc.depth != 8 || raster->Width() <= 0 || raster->Height() <= 0 || !raster->Pixels())
        return false;
    feature = std::clamp(feature, 8.0, 256.0);
    s.frequency = 256.0 / feature;
    int32_t lo[4], hi[4];
    ConvertColor(*raster, low, lo);
    ConvertColor(*raster, high, hi);
    for (int p = 0; p < 4; ++p) {
        s.amplitude[p] = std::abs(hi[p] - lo[p]) >> 1;
        s.low[p] = std::min(lo[p], hi[p]);
    }
    return true;
}

void ReportRow(int32_t row, int32_t rows) { ReportStageProgress(row, rows); }

std::unique_ptr<NoiseField> NewField(int32_t seed) {
    std::unique_ptr<NoiseField> field(new (std::nothrow) NoiseField);
    if (field) MakeNoiseField(*field, seed);
    return field;
}

} // namespace

void NoiseSeedRandom(uint32_t seed) { gNoiseState = seed; }

int NoiseRandom() {
    gNoiseState = gNoiseState * 214013u + 2531011u;
    return int((gNoiseState >> 16) & 0x7fffu);
}

void MakeNoiseField(NoiseField& field, int32_t seed) {
    NoiseSeedRandom(uint32_t(seed));
    for (int i = 0; i < 256; ++i) {
        field.Perm[i] = i;
        double x = (NoiseRandom() % 512 - 256) * 0.00390625;
        double y = (NoiseRandom() % 512 - 256) * 0.00390625;
        const double length = std::sqrt(x * x + y * y);
        x /= length;
        y /= length;
        field.Gradient[i][0] = x;
        field.Gradient[i][1] = y;
    }
    for (int i = 1; i < 256; ++i) {
        const int n = i + 1;
        int v = NoiseRandom();
        // Draws from the uneven top of the range are thrown back.
        while (v / n >= 32767 / n && 32767 % n != n - 1) v = NoiseRandom();
        const int j = v % n;
        if (j != i) std::swap(field.Perm[i], field.Perm[j]);
    }
    for (int i = 256; i < 512; ++i) {
        field.Perm[i] = field.Perm[i - 256];
        field.Gradient[i][0] = field.Gradient[i - 256][0];
        field.Gradient[i][1] = field.Gradient[i - 256][1];
    }
}

namespace {

constexpr int kOctaves = 5;

// What one coordinate contributes to Noise2: the lattice cell, the offsets into it and
// the quintic fade. Along a row the y terms are fixed, down a column the x terms, so a
// fill works them out once per row and once per column.
struct AxisTerm {
    double r0, r1, fade;
    int32_t b0, b1;
};

AxisTerm Term(double v) {
    AxisTerm t;
    const double tv = v + 4096.0;
    const int32_t k = TruncToInt(tv);
    t.b0 = k & 127;
    t.b1 = (t.b0 + 1) & 127;
    t.r0 = tv - k;
    t.r1 = t.r0 - 1.0;
    t.fade = ((t.r0 * 6 - 15) * t.r0 + 10) * t.r0 * t.r0 * t.r0;
    return t;
}

// The x term with its two permutation entries looked up already.
struct ColumnTerm {
    double r0, r1, fade;
    int32_t i, j;
};

ColumnTerm Column(const NoiseField& field, double x) {
    const AxisTerm t = Term(x);
    return {t.r0, t.r1, t.fade, field.Perm[t.b0], field.Perm[t.b1]};
}

double Combine(const NoiseField& field, const ColumnTerm& x, const AxisTerm& y) {
    const int32_t* perm = field.Perm;
    const int32_t b00 = perm[x.i + y.b0], b10 = perm[x.j + y.b0], b01 = perm[x.i + y.b1], b11 = perm[x.j + y.b1];
    const auto& g = field.Gradient;
    double u = x.r0 * g[b00][0] + y.r0 * g[b00][1];
    double v = x.r1 * g[b10][0] + y.r0 * g[b10][1];
    const double a = u + x.fade * (v - u);
    u = x.r0 * g[b01][0] + y.r1 * g[b01][1];
    v = x.r1 * g[b11][0] + y.r1 * g[b11][1];
    const double b = u + x.fade * (v - u);
    return a + y.fade * (b - a);
}

constexpr double kOctaveScale[kOctaves] = {1, 2, 4, 8, 16};
constexpr double kOctaveWeight[kOctaves] = {1, 0.5, 0.25, 0.125, 0.0625};

double Fractal(const NoiseField& field, const ColumnTerm* x, const AxisTerm* y) {
    return Combine(field, x[0], y[0]) + 0.5 * Combine(field, x[1], y[1]) + 0.25 * Combine(field, x[2], y[2]) +
           0.125 * Combine(field, x[3], y[3]) + 0.0625 * Combine(field, x[4], y[4]);
}

// The x terms of every column of one octave, and the runs of columns that lie in one
// lattice cell: within a run a row's gradients and y products are constants.
struct OctaveColumns {
    std::vector<double> r0, r1, fade;
    struct Run {
        int32_t begin, end, i, j;
    };
    std::vector<Run> runs;
};

// The fractal noise of rows of columns at xs, in the order FractalNoise sums it.
class NoiseRows {
public:
    NoiseRows(const NoiseField& field, const std::vector<double>& xs) : field_(field), sum_(xs.size()) {
        for (int o = 0; o < kOctaves; ++o) {
            OctaveColumns& oc = octaves_[o];
            oc.r0.resize(xs.size());
            oc.r1.resize(xs.size());
            oc.fade.resize(xs.size());
            for (size_t c = 0; c < xs.size(); ++c) {
                const ColumnTerm t = Column(field, kOctaveScale[o] * xs[c]);
                oc.r0[c] = t.r0, oc.r1[c] = t.r1, oc.fade[c] = t.fade;
                if (oc.runs.empty() || oc.runs.back().i != t.i || oc.runs.back().j != t.j)
                    oc.runs.push_back({int32_t(c), int32_t(c), t.i, t.j});
                oc.runs.back().end = int32_t(c) + 1;
            }
        }
    }

    // The noise of the row at y, one value a column.
    const std::vector<double>& Row(double y) {
        for (int o = 0; o < kOctaves; ++o) Octave(o, Term(kOctaveScale[o] * y));
        return sum_;
    }

private:
    void Octave(int o, const AxisTerm& y) {
        const OctaveColumns& oc = octaves_[o];
        const int32_t* perm = field_.Perm;
        const auto& g = field_.Gradient;
        const double weight = kOctaveWeight[o];
        const double* r0 = oc.r0.data();
        const double* r1 = oc.r1.data();
        const double* fade = oc.fade.data();
        double* sum = sum_.data();
        for (const OctaveColumns::Run& run : oc.runs) {
            const int32_t b00 = perm[run.i + y.b0], b10 = perm[run.j + y.b0];
            const int32_t b01 = perm[run.i + y.b1], b11 = perm[run.j + y.b1];
            const double g00 = g[b00][0], g10 = g[b10][0], g01 = g[b01][0], g11 = g[b11][0];
            const double y00 = y.r0 * g[b00][1], y10 = y.r0 * g[b10][1];
            const double y01 = y.r1 * g[b01][1], y11 = y.r1 * g[b11][1];
            const double fy = y.fade;
            for (int32_t c = run.begin; c < run.end; ++c) {
                const double u0 = r0[c] * g00 + y00, v0 = r1[c] * g10 + y10;
                const double a = u0 + fade[c] * (v0 - u0);
                const double u1 = r0[c] * g01 + y01, v1 = r1[c] * g11 + y11;
                const double b = u1 + fade[c] * (v1 - u1);
                const double n = a + fy * (b - a);
                sum[c] = o == 0 ? n : sum[c] + weight * n;
            }
        }
    }

    const NoiseField& field_;
    OctaveColumns octaves_[kOctaves];
    std::vector<double> sum_;
};

void RowTerms(double y, AxisTerm out[kOctaves]) {
    for (int o = 0; o < kOctaves; ++o) out[o] = Term(kOctaveScale[o] * y);
}

} // namespace

double Noise2(const NoiseField& field, double x, double y) { return Combine(field, Column(field, x), Term(y)); }

double FractalNoise(const NoiseField& field, double x, double y) {
    ColumnTerm xs[kOctaves];
    AxisTerm ys[kOctaves];
    for (int o = 0; o < kOctaves; ++o) xs[o] = Column(field, kOctaveScale[o] * x);
    RowTerms(y, ys);
    return Fractal(field, xs, ys);
}

bool FillNoiseFull(Raster* raster, int32_t seed, NoiseColor low, NoiseColor high, double feature) {
    FillSetup s;
    if (!Setup(raster, low, high, feature, s)) return false;
    std::unique_ptr<NoiseField> field = NewField(seed);
    if (!field) return false;
    const int32_t w = raster->Columns(), h = raster->Rows();
    const double stepX = s.frequency / w, stepY = s.frequency / h;
    // x runs along a row by repeated addition, the same in every row.
    std::vector<double> xs(static_cast<size_t>(w));
    double x = 0.0;
    for (int32_t c = 0; c < w; ++c, x += stepX) xs[size_t(c)] = x;
    NoiseRows rows(*field, xs);
    uint8_t* base = raster->Pixels();
    const size_t planeBytes = raster->PlaneBytes();
    const size_t rowBytes = size_t(raster->RowBytes());
    for (int32_t r = 0; r < h; ++r) {
        const std::vector<double>& sum = rows.Row(r * stepY);
        for (uint32_t p = 0; p < raster->Planes && p < 4; ++p) {
            const int32_t middle = s.low[p] + s.amplitude[p];
            uint8_t* out = base + p * planeBytes + r * rowBytes;
            for (int32_t c = 0; c < w; ++c)
                out[c] = uint8_t((TruncToInt(s.amplitude[p] * sum[size_t(c)]) & 255) + middle);
        }
        ReportRow(r, h);
    }
    return true;
}

bool FillNoisePreview(Raster* textureSource, Raster* raster, int32_t seed, NoiseColor low, NoiseColor high,
                      double feature) {
    FillSetup s;
    if (!textureSource || textureSource->Width() <= 0 || textureSource->Height() <= 0) return false;
    if (!Setup(raster, low, high, feature, s)) return false;
    std::unique_ptr<NoiseField> field = NewField(seed);
    if (!field) return false;
    const double stepX = s.frequency / textureSource->Width(), stepY = s.frequency / textureSource->Height();
    // The whole plane, border included, as the full-size fill does, so the two line up.
    const int32_t w = raster->Columns(), h = raster->Rows();
    std::vector<double> xs(static_cast<size_t>(w));
    for (int32_t c = 0; c < w; ++c) xs[size_t(c)] = PreviewOriginX * stepX + c * stepX;
    NoiseRows rows(*field, xs);
    uint8_t* base = raster->Pixels();
    const size_t rowBytes = size_t(raster->RowBytes());
    for (int32_t r = 0; r < h; ++r) {
        const std::vector<double>& sum = rows.Row(PreviewOriginY * stepY + r * stepY);
        uint8_t* out = base + r * rowBytes;
        for (int32_t c = 0; c < w; ++c)
            out[c] = uint8_t(TruncToInt(s.amplitude[0] * sum[size_t(c)]) + s.low[0] + s.amplitude[0]);
        ReportRow(r, h);
    }
    return true;
}
