// Coverage noise.
#include "effects/Noise.h"

#include "host/Acquisition.h"
#include "host/Progress.h"
#include "raster/Raster.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <new>

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

void ReportRow(int32_t row, int32_t rows) {
    ReportProgress(float(ProgressPercent + int32_t(int64_t(ProgressSpan) * row / rows)), 100);
}

std::unique_ptr<NoiseField> NewField(int32_t seed) {
    std::unique_ptr<NoiseField> field(new (std::nothrow) NoiseField);
    if (field) MakeNoiseField(*field, seed);
    return field;
}

} // namespace

int32_t TruncToInt(double v) {
    if (!(v > -2147483649.0 && v < 2147483648.0)) return INT32_MIN;
    return int32_t(v);
}

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

double Noise2(const NoiseField& field, double x, double y) {
    const double tx = x + 4096.0;
    const int32_t kx = TruncToInt(tx);
    const int32_t bx0 = kx & 127, bx1 = (bx0 + 1) & 127;
    const double rx0 = tx - kx, rx1 = rx0 - 1.0;
    const double ty = y + 4096.0;
    const int32_t ky = TruncToInt(ty);
    const int32_t by0 = ky & 127, by1 = (by0 + 1) & 127;
    const double ry0 = ty - ky, ry1 = ry0 - 1.0;

    const int32_t* perm = field.Perm;
    const int32_t i = perm[bx0], j = perm[bx1];
    const int32_t b00 = perm[i + by0], b10 = perm[j + by0], b01 = perm[i + by1], b11 = perm[j + by1];

    const double sx = ((rx0 * 6 - 15) * rx0 + 10) * rx0 * rx0 * rx0;
    const double sy = ((ry0 * 6 - 15) * ry0 + 10) * ry0 * ry0 * ry0;

    const auto& g = field.Gradient;
    double u = rx0 * g[b00][0] + ry0 * g[b00][1];
    double v = rx1 * g[b10][0] + ry0 * g[b10][1];
    const double a = u + sx * (v - u);
    u = rx0 * g[b01][0] + ry1 * g[b01][1];
    v = rx1 * g[b11][0] + ry1 * g[b11][1];
    const double b = u + sx * (v - u);
    return a + sy * (b - a);
}

double FractalNoise(const NoiseField& field, double x, double y) {
    return Noise2(field, x, y) + 0.5 * Noise2(field, 2 * x, 2 * y) + 0.25 * Noise2(field, 4 * x, 4 * y) +
           0.125 * Noise2(field, 8 * x, 8 * y) + 0.0625 * Noise2(field, 16 * x, 16 * y);
}

bool FillNoiseFull(Raster* raster, int32_t seed, NoiseColor low, NoiseColor high, double feature) {
    FillSetup s;
    if (!Setup(raster, low, high, feature, s)) return false;
    std::unique_ptr<NoiseField> field = NewField(seed);
    if (!field) return false;
    const int32_t w = raster->Columns(), h = raster->Rows();
    const double stepX = s.frequency / w, stepY = s.frequency / h;
    uint8_t* base = raster->Pixels();
    const size_t planeBytes = raster->PlaneBytes();
    const size_t rowBytes = size_t(raster->RowBytes());
    for (int32_t r = 0; r < h; ++r) {
        const double y = r * stepY;
        double x = 0.0;
        for (int32_t c = 0; c < w; ++c) {
            const double sum = FractalNoise(*field, x, y);
            for (uint32_t p = 0; p < raster->Planes && p < 4; ++p) {
                const int32_t middle = s.low[p] + s.amplitude[p];
                base[p * planeBytes + r * rowBytes + size_t(c)] =
                    uint8_t((TruncToInt(s.amplitude[p] * sum) & 255) + middle);
            }
            x += stepX;
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
    uint8_t* base = raster->Pixels();
    const size_t rowBytes = size_t(raster->RowBytes());
    for (int32_t r = 0; r < h; ++r) {
        const double y = PreviewOriginY * stepY + r * stepY;
        for (int32_t c = 0; c < w; ++c) {
            const double x = PreviewOriginX * stepX + c * stepX;
            const double sum = FractalNoise(*field, x, y);
            base[r * rowBytes + size_t(c)] = uint8_t(TruncToInt(s.amplitude[0] * sum) + s.low[0] + s.amplitude[0]);
        }
        ReportRow(r, h);
    }
    return true;
}
