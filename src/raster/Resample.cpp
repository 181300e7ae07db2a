// ResampleRaster: the enlarging and the reducing filter.
#include "raster/Resample.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

// Enlarging. The source position runs in f32 and each step is added in f64 and
// rounded back, so the sequence of positions is the same for every row: the column
// half of the weights is worked out once. The four weights of a pixel do not depend
// on the plane, so each row's are worked out once for all planes. The SSE2 paths do
// the same f32 operations in the same order as the scalar ones (IEEE single
// precision, truncating conversion), so both give the same bytes.
struct EnlargeColumns {
    std::vector<int32_t> c0, c1;
    std::vector<float> c, d;
    // Columns before this one all have c1 = c0 + 1 (no clamp at the right edge).
    int32_t pairs = 0;
};

EnlargeColumns ColumnWeights(int32_t width, int32_t newWidth, double inv) {
    EnlargeColumns cols;
    const size_t n = static_cast<size_t>(newWidth);
    cols.c0.resize(n);
    cols.c1.resize(n);
    cols.c.resize(n);
    cols.d.resize(n);
    float fx = 0.0f;
    for (size_t x = 0; x < n; ++x) {
        const int32_t ix = int32_t(fx);
        const float wx = fx - float(ix);
        cols.c0[x] = ix < width ? ix : width - 1;
        cols.c1[x] = ix + 1 < width ? ix + 1 : width - 1;
        cols.c[x] = (1.0f - wx) * (1.0f - wx);
        cols.d[x] = wx * wx;
        fx = float(double(fx) + inv);
    }
    while (cols.pairs < newWidth && cols.c1[size_t(cols.pairs)] == cols.c0[size_t(cols.pairs)] + 1) ++cols.pairs;
    return cols;
}

// w00 = a + c, w01 = d + a, w10 = b + c, w11 = b + d, each divided by their sum
// ((w00 + w01) + w10) + w11 unless that is 0.
void RowWeights(float a, float b, const EnlargeColumns& cols, float* w00, float* w01, float* w10, float* w11,
                int32_t n) {
    int32_t x = 0;
#if defined(__SSE2__)
    const __m128 va = _mm_set1_ps(a), vb = _mm_set1_ps(b), zero = _mm_setzero_ps();
    for (; x + 4 <= n; x += 4) {
        const __m128 c = _mm_loadu_ps(&cols.c[size_t(x)]);
        const __m128 d = _mm_loadu_ps(&cols.d[size_t(x)]);
        __m128 q00 = _mm_add_ps(va, c), q01 = _mm_add_ps(d, va), q10 = _mm_add_ps(vb, c), q11 = _mm_add_ps(vb, d);
        const __m128 s = _mm_add_ps(_mm_add_ps(_mm_add_ps(q00, q01), q10), q11);
        const __m128 keep = _mm_cmpneq_ps(s, zero);
        q00 = _mm_or_ps(_mm_and_ps(keep, _mm_div_ps(q00, s)), _mm_andnot_ps(keep, q00));
        q01 = _mm_or_ps(_mm_and_ps(keep, _mm_div_ps(q01, s)), _mm_andnot_ps(keep, q01));
        q10 = _mm_or_ps(_mm_and_ps(keep, _mm_div_ps(q10, s)), _mm_andnot_ps(keep, q10));
        q11 = _mm_or_ps(_mm_and_ps(keep, _mm_div_ps(q11, s)), _mm_andnot_ps(keep, q11));
        _mm_storeu_ps(w00 + x, q00);
        _mm_storeu_ps(w01 + x, q01);
        _mm_storeu_ps(w10 + x, q10);
        _mm_storeu_ps(w11 + x, q11);
    }
#endif
    for (; x < n; ++x) {
        const float c = cols.c[size_t(x)], d = cols.d[size_t(x)];
        float q00 = a + c, q01 = d + a, q10 = b + c, q11 = b + d;
        const float s = q00 + q01 + q10 + q11;
        if (s != 0.0f) {
            q00 /= s;
            q01 /= s;
            q10 /= s;
            q11 /= s;
        }
        w00[x] = q00;
        w01[x] = q01;
        w10[x] = q10;
        w11[x] = q11;
    }
}

// Bytes c and c + 1 of both rows as one word: s00, s01, s10, s11 from the low byte up.
inline uint32_t SamplePair(const uint8_t* row0, const uint8_t* row1, int32_t c) {
    uint16_t top, bottom;
    std::memcpy(&top, row0 + c, 2);
    std::memcpy(&bottom, row1 + c, 2);
    return uint32_t(top) | uint32_t(bottom) << 16;
}

// trunc(s00 * w00 + s01 * w01 + s10 * w10 + s11 * w11), summed in that order.
void RowSamples(const uint8_t* row0, const uint8_t* row1, const EnlargeColumns& cols, const float* w00,
                const float* w01, const float* w10, const float* w11, uint8_t* out, int32_t n) {
    const int32_t* c0 = cols.c0.data();
    const int32_t* c1 = cols.c1.data();
    int32_t x = 0;
#if defined(__SSE2__)
    // Where c1 = c0 + 1, one 16-bit read gives both samples of a row: four pixels'
    // samples come in as one vector and are transposed into s00, s01, s10, s11.
    const __m128i zero = _mm_setzero_si128();
    for (; x + 4 <= cols.pairs; x += 4) {
        const __m128i quad = _mm_set_epi64x(
            int64_t(uint64_t(SamplePair(row0, row1, c0[x + 2])) | uint64_t(SamplePair(row0, row1, c0[x + 3])) << 32),
            int64_t(uint64_t(SamplePair(row0, row1, c0[x])) | uint64_t(SamplePair(row0, row1, c0[x + 1])) << 32));
        __m128i t = _mm_unpacklo_epi8(quad, _mm_srli_si128(quad, 8));
        t = _mm_unpacklo_epi8(t, _mm_srli_si128(t, 8)); // s00 x4, s01 x4, s10 x4, s11 x4
        const __m128i low = _mm_unpacklo_epi8(t, zero), high = _mm_unpackhi_epi8(t, zero);
        const __m128 s00 = _mm_cvtepi32_ps(_mm_unpacklo_epi16(low, zero));
        const __m128 s01 = _mm_cvtepi32_ps(_mm_unpackhi_epi16(low, zero));
        const __m128 s10 = _mm_cvtepi32_ps(_mm_unpacklo_epi16(high, zero));
        const __m128 s11 = _mm_cvtepi32_ps(_mm_unpackhi_epi16(high, zero));
        __m128 v = _mm_mul_ps(s00, _mm_loadu_ps(w00 + x));
        v = _mm_add_ps(v, _mm_mul_ps(s01, _mm_loadu_ps(w01 + x)));
        v = _mm_add_ps(v, _mm_mul_ps(s10, _mm_loadu_ps(w10 + x)));
        v = _mm_add_ps(v, _mm_mul_ps(s11, _mm_loadu_ps(w11 + x)));
        const __m128i i32 = _mm_cvttps_epi32(v);
        const __m128i i16 = _mm_packs_epi32(i32, i32);
        const int32_t bytes = _mm_cvtsi128_si32(_mm_packus_epi16(i16, i16));
        std::memcpy(out + x, &bytes, 4);
    }
#endif
    for (; x < n; ++x) {
        const float v = float(row0[c0[x]]) * w00[x] + float(row0[c1[x]]) * w01[x] + float(row1[c0[x]]) * w10[x] +
                        float(row1[c1[x]]) * w11[x];
        out[x] = uint8_t(int32_t(v));
    }
}

void Enlarge(const Raster& src, const uint8_t* srcOrigin, Raster& dest, uint8_t* destOrigin, double inv) {
    const int32_t width = src.Width(), height = src.Height();
    const int32_t newWidth = dest.Width(), newHeight = dest.Height();
    const EnlargeColumns cols = ColumnWeights(width, newWidth, inv);
    std::vector<float> weights(size_t(newWidth) * 4);
    float* w00 = weights.data();
    float* w01 = w00 + newWidth;
    float* w10 = w01 + newWidth;
    float* w11 = w10 + newWidth;
    float fy = 0.0f;
    for (int32_t y = 0; y < newHeight; ++y) {
        const int32_t iy = int32_t(fy);
        const float wy = fy - float(iy);
        const int32_t r0 = iy < height ? iy : height - 1;
        const int32_t r1 = iy + 1 < height ? iy + 1 : height - 1;
        RowWeights((1.0f - wy) * (1.0f - wy), wy * wy, cols, w00, w01, w10, w11, newWidth);
        for (uint32_t p = 0; p < src.Planes; ++p) {
            const uint8_t* plane = srcOrigin + size_t(p) * src.PlaneBytes();
            RowSamples(plane + int64_t(r0) * src.RowBytes(), plane + int64_t(r1) * src.RowBytes(), cols, w00, w01, w10,
                       w11, destOrigin + size_t(p) * dest.PlaneBytes() + int64_t(y) * dest.RowBytes(), newWidth);
        }
        fy = float(double(fy) + inv);
    }
}

// Reducing. Rows are limited by Height - 1 and columns by Width: the asymmetry is
// the filter's own. Samples are read with a stride of Width; the output is one run.
void Reduce(const uint8_t* src, int32_t width, int32_t height, uint8_t* dest, int32_t newWidth, int32_t newHeight,
            double inv) {
    // The column half depends only on the column: X restarts at 0 on every row.
    struct Column {
        int32_t x0, lastc, cf;
        double f;
    };
    std::vector<Column> columns(static_cast<size_t>(newWidth));
    double X = 0.0;
    for (int32_t i = 0; i < newWidth; ++i) {
        Column& c = columns[size_t(i)];
        c.x0 = int32_t(X);
        X = X + inv;
        const int32_t x1 = std::min(width, int32_t(X + 1.0));
        c.lastc = x1 - 1;
        c.cf = c.x0 < c.lastc ? c.lastc : c.x0;
        c.f = X - c.cf;
        // Positions stay inside by construction; the clamps only guard the reads.
        c.x0 = std::min(c.x0, width - 1);
        c.cf = std::min(c.cf, width - 1);
    }
    double Y = 0.0;
    uint8_t* out = dest;
    for (int32_t j = 0; j < newHeight; ++j) {
        const int32_t y0 = int32_t(Y);
        Y = Y + inv;
        const int32_t y1 = std::min(height - 1, int32_t(Y + 1.0));
        const int32_t last = y1 - 1;
        const int32_t rf = std::min(y0 < last ? last : y0, height - 1);
        const double g = Y - rf;
        const uint8_t* rowF = src + int64_t(rf) * width;
        for (int32_t i = 0; i < newWidth; ++i) {
            const Column& c = columns[size_t(i)];
            uint32_t acc = 0;
            double wsum = 0.0;
            for (int32_t r = y0; r < last; ++r) {
                const uint8_t* row = src + int64_t(r) * width;
                for (int32_t k = c.x0; k < c.lastc; ++k) {
                    acc += row[k];
                    wsum += 1;
                }
                acc += uint32_t(row[c.cf] * c.f);
                wsum += c.f;
            }
            for (int32_t k = c.x0; k < c.lastc; ++k) {
                acc += uint32_t(rowF[k] * g);
                wsum += g;
            }
            const uint32_t total = acc + uint32_t(rowF[c.cf] * g * c.f);
            const double weight = wsum + g * c.f;
            *out++ = weight > 0.0 ? uint8_t(int32_t(double(total) / weight)) : 0;
        }
    }
}

} // namespace

bool ResampleRaster(Raster*& out, Raster* src, double scale, uint8_t allocKind) {
    if (!src) return false;
    const double w = std::trunc(src->Width() * scale + 0.5);
    const double h = std::trunc(src->Height() * scale + 0.5);
    // Sizes a 32-bit rectangle cannot hold are refused (so is NaN).
    if (!(w >= 1.0 && h >= 1.0 && w <= 2147483647.0 && h <= 2147483647.0)) return false;
    const int32_t newWidth = int32_t(w), newHeight = int32_t(h);
    Raster* made = NewRaster(src->Mode, RasterRect{0, 0, newHeight, newWidth}, src->Planes, src->Desc.depth,
                             src->Border, allocKind);
    if (!made) return false;
    uint8_t* destOrigin = made->ImageOrigin();
    const uint8_t* srcOrigin = src->ImageOriginIfAny();
    if (!destOrigin || !srcOrigin || src->Width() <= 0 || src->Height() <= 0) {
        FreeRaster(made);
        return false;
    }
    const double inv = 1.0 / scale;
    if (scale > 1.0) {
        Enlarge(*src, srcOrigin, *made, destOrigin, inv);
    } else {
        for (uint32_t p = 0; p < src->Planes; ++p)
            Reduce(srcOrigin + size_t(p) * src->PlaneBytes(), src->Width(), src->Height(),
                   destOrigin + size_t(p) * made->PlaneBytes(), newWidth, newHeight, inv);
    }
    out = made;
    return true;
}
