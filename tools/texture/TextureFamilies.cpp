#include "TextureFamilies.h"

#include <algorithm>

namespace family {

using namespace synth;

namespace {

// Seeds of the independent noise layers inside one texture.
uint32_t Sub(uint64_t seed, uint32_t layer) {
    return Hash1(uint32_t(seed) ^ uint32_t(seed >> 32), layer * 0x5BD1E995u + 1u);
}

void RandomDir(Rng& r, float& dx, float& dy) {
    for (;;) {
        const float a = r.Range(-1.0f, 1.0f), b = r.Range(-1.0f, 1.0f);
        const float l = a * a + b * b;
        if (l > 0.01f && l <= 1.0f) {
            const float n = Sqrt(l);
            dx = a / n;
            dy = b / n;
            return;
        }
    }
}

void Normalise2(float& x, float& y) {
    const float n = Sqrt(x * x + y * y);
    if (n > 0.0f) {
        x /= n;
        y /= n;
    }
}

float Grain(int x, int y, uint32_t seed) { return HashUnit(Hash(x, y, seed)) - 0.5f; }

// A smooth field (features of 40 units and more) computed every two units and
// interpolated: most of a texture's time would otherwise go into it.
template <typename F> Field Low(const Canvas& c, F f) { return FillCoarse(c, std::max(1, int(2.0f * c.k + 0.5f)), f); }

// Visits the pixels whose centres lie in the square of half-side `r` units round
// (cx, cy): f(x, y, u, v).
template <typename F> void ForArea(const Canvas& c, float cx, float cy, float r, F f) {
    const int x0 = std::max(0, FloorInt((cx - r) * c.k));
    const int x1 = std::min(c.w - 1, FloorInt((cx + r) * c.k));
    const int y0 = std::max(0, FloorInt((cy - r) * c.k));
    const int y1 = std::min(c.h - 1, FloorInt((cy + r) * c.k));
    for (int y = y0; y <= y1; ++y)
        for (int x = x0; x <= x1; ++x) f(x, y, c.U(x), c.V(y));
}

// A scratch: a gently curving path that tapers at both ends, flickers in strength
// and breaks up where the tool lifted.
std::vector<StrokePoint> ScratchPath(Rng& r, float x, float y, float dx, float dy, float len, float width, float alpha,
                                     float curl, float gaps) {
    std::vector<StrokePoint> pts;
    const float step = std::max(1.5f, std::min(6.0f, len / 30.0f));
    const int n = std::max(2, int(len / step) + 1);
    float turn = r.Normal() * curl;
    const uint32_t s = r.Next();
    const float gapScale = r.Range(15.0f, 60.0f);
    for (int i = 0; i <= n; ++i) {
        const float t = float(i) / float(n);
        const float dist = t * len;
        float taper = Sqrt(4.0f * t * (1.0f - t));
        taper = std::min(1.0f, taper * 1.7f);
        float a = alpha * (0.65f + 0.35f * ValueNoise(dist / 6.0f, 0.5f, s));
        if (gaps > 0.0f) a *= SmoothStep(gaps - 0.12f, gaps + 0.12f, ValueNoise(dist / gapScale, 3.5f, s + 1));
        const float w = width * taper * (0.7f + 0.3f * ValueNoise(dist / 11.0f, 7.5f, s + 2));
        pts.push_back({x, y, w, a * std::min(1.0f, taper * 2.0f)});
        const float ndx = dx - dy * turn * step, ndy = dy + dx * turn * step;
        dx = ndx;
        dy = ndy;
        Normalise2(dx, dy);
        turn += r.Normal() * curl * 0.25f;
        x += dx * step;
        y += dy * step;
    }
    return pts;
}

// Blends a direction with a preferred one.
void BiasedDir(Rng& r, float bx, float by, float bias, float& dx, float& dy) {
    RandomDir(r, dx, dy);
    if (bias <= 0.0f) return;
    // Fold onto the preferred axis, so that strokes run both ways along it.
    if (dx * bx + dy * by < 0.0f) {
        dx = -dx;
        dy = -dy;
    }
    dx = Lerp(dx, bx, bias);
    dy = Lerp(dy, by, bias);
    Normalise2(dx, dy);
}

// Irregular blob: distance scaled so that 1 is the outline, frayed by noise.
float BlobDistance(float u, float v, float cx, float cy, float radius, float rough, uint32_t seed) {
    const float ex = (u - cx) / radius, ey = (v - cy) / radius;
    const float d = Sqrt(ex * ex + ey * ey);
    const float n = Fbm(u / (radius * 0.55f), v / (radius * 0.55f), seed, 4);
    return d + rough * n;
}

} // namespace

Texture Flat(const Canvas& c, uint8_t level) {
    Texture t;
    t.w = c.w;
    t.h = c.h;
    t.planes = 1;
    t.data.assign(size_t(c.w) * c.h, level);
    return t;
}

// ---------------------------------------------------------------------------
// Scratches: a light surface marked by the life of an object: long and short
// scratches, deep gouges with a burr, scuffs of parallel marks, dents, grime.
Texture Scratches(const Canvas& c, uint64_t seed, const ScratchParams& p) {
    Rng r(seed);
    Field base = FillCoarse(c, 4, [&](float u, float v) {
        const float m = Fbm(u / 380.0f, v / 380.0f, Sub(seed, 1), 4);
        const float g = SmoothStep(0.05f, 0.45f, Fbm(u / 260.0f, v / 260.0f, Sub(seed, 2), 5));
        return p.base + p.mottle * m - p.smudge * g;
    });
    {
        const uint32_t s = Sub(seed, 3);
        for (int y = 0; y < c.h; ++y)
            for (int x = 0; x < c.w; ++x) {
                const float u = c.U(x), v = c.V(y);
                const float fine = Noise(u / 5.0f, v / 5.0f, s) * 0.025f;
                base(x, y) += fine + 0.02f * Grain(x, y, s + 1);
            }
    }
    Field dark(c), rim(c);
    const float W = c.Width(), H = c.Height();
    for (int i = 0; i < p.fine; ++i) {
        float dx, dy;
        BiasedDir(r, p.dirX, p.dirY, p.dirBias, dx, dy);
        const float e = r.Uniform();
        const float len = (20.0f + 380.0f * e * e * e) * p.length;
        const float x = r.Range(-50.0f, W + 50.0f), y = r.Range(-50.0f, H + 50.0f);
        DrawStroke(dark, c,
                   ScratchPath(r, x, y, dx, dy, len, r.Range(0.25f, 0.8f), r.Range(0.2f, 0.75f), 0.0015f,
                               r.Range(0.0f, 0.4f)));
    }
    for (int i = 0; i < p.deep; ++i) {
        float dx, dy;
        BiasedDir(r, p.dirX, p.dirY, p.dirBias, dx, dy);
        const float len = r.Range(120.0f, 650.0f) * p.length;
        const float x = r.Range(0.0f, W), y = r.Range(0.0f, H);
        Rng copy = r;
        const float width = r.Range(1.0f, 2.6f);
        DrawStroke(dark, c,
                   ScratchPath(r, x, y, dx, dy, len, width, r.Range(0.75f, 1.0f), 0.001f, r.Range(0.0f, 0.25f)));
        // The same path again, wider and faint: the burr thrown up along the groove.
        DrawStroke(rim, c, ScratchPath(copy, x, y, dx, dy, len, width * 2.6f, 0.6f, 0.001f, 0.0f));
    }
    for (int i = 0; i < p.scuffs; ++i) {
        float dx, dy;
        BiasedDir(r, p.dirX, p.dirY, p.dirBias, dx, dy);
        const float cx = r.Range(0.0f, W), cy = r.Range(0.0f, H);
        const float spread = r.Range(15.0f, 70.0f);
        const int marks = 6 + r.Below(26);
        const float strength = r.Range(0.15f, 0.5f);
        for (int m = 0; m < marks; ++m) {
            const float off = r.Normal() * spread * 0.5f, along = r.Normal() * spread * 0.4f;
            const float jx = dx + r.Normal() * 0.04f, jy = dy + r.Normal() * 0.04f;
            DrawStroke(dark, c,
                       ScratchPath(r, cx - dy * off + dx * along, cy + dx * off + dy * along, jx, jy,
                                   r.Range(12.0f, 80.0f) * p.length, r.Range(0.25f, 0.6f),
                                   strength * r.Range(0.5f, 1.0f), 0.002f, 0.3f));
        }
    }
    {
        const uint32_t s = Sub(seed, 4);
        int placed = 0, tries = 0;
        while (placed < p.pits && tries < p.pits * 20) {
            ++tries;
            const float x = r.Range(0.0f, W), y = r.Range(0.0f, H);
            if (Fbm(x / 200.0f, y / 200.0f, s, 3) < 0.05f && r.Uniform() > 0.15f) continue;
            const float e = r.Uniform();
            DrawDisc(dark, c, x, y, 0.4f + 2.2f * e * e, r.Range(0.35f, 0.9f), 0.6f);
            ++placed;
        }
    }
    Field out(c);
    for (size_t i = 0; i < out.v.size(); ++i) {
        float v = base.v[i];
        v += (1.0f - v) * rim.v[i] * 0.7f;
        v *= 1.0f - dark.v[i] * p.darkness;
        out.v[i] = Clamp01(v);
    }
    return ToGrey(out);
}

// ---------------------------------------------------------------------------
// Painted boards: the weather-worn front of an old store, lap siding whose paint has
// gone, down to grey wood, along the board edges and in the lower half.
Texture PaintedBoards(const Canvas& c, uint64_t seed, const BoardParams& p) {
    Rng r(seed);
    std::vector<float> tops;
    for (float y = -r.Range(0.0f, p.boardMax); y < c.Height(); y += r.Range(p.boardMin, p.boardMax)) tops.push_back(y);
    tops.push_back(c.Height() + p.boardMax);
    const float studStep = r.Range(380.0f, 440.0f), studOff = r.Range(0.0f, studStep);
    Field out(c);
    const uint32_t sWear = Sub(seed, 1), sStreak = Sub(seed, 2), sGrain = Sub(seed, 3);
    const uint32_t sBrush = Sub(seed, 4), sCrack = Sub(seed, 5), sDirt = Sub(seed, 6);
    Field wearLow = Low(c, [&](float u, float v) {
        return Fbm(u / 260.0f, v / 170.0f, sWear, 5) + 0.3f * Fbm(u / 900.0f, v / 30.0f, sStreak, 3) +
               0.18f * (v / 1200.0f - 0.5f);
    });
    Field dirt = Low(c, [&](float u, float v) {
        return 0.05f * SmoothStep(0.0f, 0.6f, Fbm(u / 150.0f, v / 150.0f, sDirt + 1, 3)) +
               0.06f * SmoothStep(0.0f, 0.5f, Fbm(u / 25.0f, v / 400.0f, sDirt + 2, 3));
    });
    const float th = 0.55f - p.wear;
    size_t board = 0;
    for (int y = 0; y < c.h; ++y) {
        const float v = c.V(y);
        while (board + 1 < tops.size() && v >= tops[board + 1]) ++board;
        const float top = tops[board], height = tops[board + 1] - top;
        const float t = (v - top) / height;
        const uint32_t bs = sGrain + uint32_t(board) * 7919u;
        const float boardTone = HashUnit(Hash1(uint32_t(board), sGrain)) * 0.06f;
        // Paint goes first at the lower lap edge and the top of the board.
        const float edge =
            0.3f * (1.0f - SmoothStep(0.0f, 0.22f, t)) + 0.22f * (1.0f - SmoothStep(0.0f, 0.12f, 1.0f - t));
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x);
            // The break line frays along the grain.
            const float fray =
                0.07f * Fbm(u / 14.0f, v / 4.0f, sDirt + 3, 3) + 0.04f * Noise(u / 70.0f, v / 2.5f, sDirt + 4);
            const float w = wearLow(x, y) + edge + fray;
            float paint = 1.0f - SmoothStep(th - 0.012f, th + 0.012f, w);
            // Small chips ahead of the main loss.
            const float chipZone = SmoothStep(th - 0.22f, th - 0.04f, w);
            if (chipZone > 0.0f)
                paint =
                    std::min(paint, 1.0f - SmoothStep(0.55f, 0.62f, Noise(u / 6.0f, v / 3.0f, sDirt + 5)) * chipZone);
            float wood = 0.0f;
            if (paint < 1.0f) {
                // Grey, open-grained wood where the paint is gone, darkest in the furrows.
                const float g = Fbm(u / 420.0f, v / 5.0f + float(board) * 13.0f, bs, 4);
                const float fibre = Noise(u / 70.0f, v / 1.3f, bs + 1);
                wood = 0.5f + 0.2f * g + 0.07f * fibre - boardTone;
                wood -= 0.16f * SmoothStep(0.55f, 0.85f, Ridged(u / 300.0f, v / 4.0f, bs + 2, 3));
            }
            float paintTone = 0.9f + 0.035f * Noise(u / 60.0f, v / 2.5f, sBrush) - dirt(x, y);
            const float near = SmoothStep(th - 0.2f, th, w);
            if (near > 0.0f) {
                // Hairline cracks along the grain in the paint near the worn parts.
                const float crack = SmoothStep(0.9f, 0.97f, Ridged(u / 160.0f, v / 7.0f, sCrack, 3)) * near;
                paintTone -= 0.4f * crack;
            }
            // Dirt collects at the broken edge of the paint.
            const float edgeBand = 1.0f - Clamp01(Abs(w - th) / 0.03f);
            float val = Lerp(wood, paintTone, paint) - 0.15f * edgeBand * paint;
            // The shadow under the lap of the board above, and the joint itself.
            val *= 0.72f + 0.28f * SmoothStep(0.0f, 0.14f, t);
            if (t < 0.015f) val *= 0.45f;
            out(x, y) = val + 0.015f * Grain(x, y, sBrush + 9);
        }
    }
    // Nails at the studs, with a rust halo.
    Field nails(c), halo(c);
    for (size_t b = 0; b + 1 < tops.size(); ++b) {
        const float y = tops[b] + (tops[b + 1] - tops[b]) * 0.22f;
        for (float x = studOff - studStep; x < c.Width() + studStep; x += studStep) {
            const float nx = x + r.Normal() * 4.0f, ny = y + r.Normal() * 1.5f;
            if (r.Chance(0.15f)) continue;
            DrawDisc(nails, c, nx, ny, r.Range(1.8f, 2.8f), 0.9f, 0.5f);
            DrawDisc(halo, c, nx, ny + 4.0f, r.Range(5.0f, 12.0f), r.Range(0.15f, 0.4f), 8.0f);
        }
    }
    for (size_t i = 0; i < out.v.size(); ++i)
        out.v[i] = Clamp01(out.v[i] * (1.0f - halo.v[i] * 0.5f) * (1.0f - nails.v[i] * 0.8f));
    return ToGrey(out);
}

// ---------------------------------------------------------------------------
// Cracks: a paint or glaze layer broken into islands by a cellular network; some
// islands have fallen off, the rest curl up at their edges.
Field CrackField(const Canvas& c, uint64_t seed, const CrackParams& p) {
    const uint32_t sWarpX = Sub(seed, 1), sWarpY = Sub(seed, 2), sCell = Sub(seed, 3);
    const uint32_t sFine = Sub(seed, 4), sWidth = Sub(seed, 5), sLoss = Sub(seed, 6);
    const uint32_t sTex = Sub(seed, 7);
    Field wx =
        FillCoarse(c, 2, [&](float u, float v) { return Fbm(u / (p.cell * 1.3f), v / (p.cell * 1.3f), sWarpX, 4); });
    Field wy =
        FillCoarse(c, 2, [&](float u, float v) { return Fbm(u / (p.cell * 1.3f), v / (p.cell * 1.3f), sWarpY, 4); });
    Field out(c);
    const float aa = 1.0f / (p.cell * c.k); // one pixel, in cell units
    for (int y = 0; y < c.h; ++y) {
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x), v = c.V(y);
            const float qu = u + p.warp * wx(x, y), qv = v + p.warp * wy(x, y);
            const Cells cell = Worley(qu / p.cell, qv / p.cell, sCell);
            const float edge = cell.f2 - cell.f1;
            const float wv = p.width * (0.55f + 0.9f * ValueNoise(u / 40.0f, v / 40.0f, sWidth));
            float crack = 1.0f - SmoothStep(wv, wv + aa * 1.5f, edge);
            // A finer network inside the islands, only in places.
            if (p.fine > 0.0f) {
                const Cells f = Worley(qu / (p.cell * 0.37f), qv / (p.cell * 0.37f), sFine);
                const float fe = (f.f2 - f.f1) * 0.37f;
                const float fw = p.width * 0.45f;
                const float gate = SmoothStep(0.5f - p.fine * 0.5f, 0.9f - p.fine * 0.5f,
                                              ValueNoise(u / 150.0f, v / 150.0f, sFine + 1));
                crack = std::max(crack, (1.0f - SmoothStep(fw, fw + aa * 1.5f, fe)) * gate * 0.85f);
            }
            const float lossGate = ValueNoise(u / 300.0f, v / 300.0f, sLoss);
            const bool lost = HashUnit(cell.id) < p.loss * (0.3f + 1.4f * lossGate);
            const float tex = 0.04f * Noise(u / 6.0f, v / 6.0f, sTex) + 0.015f * Grain(x, y, sTex);
            float val;
            if (lost) {
                val = p.under + 0.1f * Fbm(u / 20.0f, v / 20.0f, sTex + 1, 3) + tex;
                // A sliver of paint stays along the edges of a fallen island.
                val = Lerp(val, p.base * 0.8f, (1.0f - SmoothStep(0.0f, 0.04f, edge)) * 0.5f);
            } else {
                const float lift = 1.0f - SmoothStep(0.0f, 0.28f, edge);
                val = p.base - p.curl * lift * lift + tex;
            }
            val = Lerp(val, p.under * 0.4f, crack);
            out(x, y) = Clamp01(val);
        }
    }
    return out;
}

Texture Cracks(const Canvas& c, uint64_t seed, const CrackParams& p) { return ToGrey(CrackField(c, seed, p)); }

Texture MudCracks(const Canvas& c, uint64_t seed, const CrackParams& p) {
    Field f = CrackField(c, seed, p);
    // Each plate dishes up at its rim as it dries: relief from the tone.
    Field h = f;
    Blur(h, 2.0f * c.k);
    const Field light = Shade(h, c, 6.0f);
    const uint32_t s = Sub(seed, 20);
    const RampStop ramp[] = {
        {0.0f, {38, 26, 18}}, {0.35f, {92, 68, 46}}, {0.7f, {150, 118, 84}}, {1.0f, {196, 168, 128}}};
    Field tintF = Low(c, [&](float u, float v) { return 0.06f * Fbm(u / 250.0f, v / 250.0f, s, 4); });
    ColourField out(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const size_t i = size_t(y) * c.w + x;
            const float tint = tintF(x, y);
            const Rgb col = Ramp(ramp, 4, Clamp01(f.v[i] + tint));
            out.Set(i, Scale(col, 0.55f + 0.75f * light.v[i]));
        }
    return ToColour(out);
}

// ---------------------------------------------------------------------------
// Wear: paint or print eroded in patches, from light wear to heavy grunge.
Texture Wear(const Canvas& c, uint64_t seed, const WearParams& p) {
    const uint32_t sA = Sub(seed, 1), sB = Sub(seed, 2), sC = Sub(seed, 3), sD = Sub(seed, 4);
    const uint32_t sE = Sub(seed, 5);
    Field low = FillCoarse(c, 2, [&](float u, float v) {
        const float wu = u + 60.0f * Fbm(u / 400.0f, v / 400.0f, sA, 3);
        const float wv = v + 60.0f * Fbm(u / 400.0f, v / 400.0f, sB, 3);
        const float sv = p.streak > 0.0f ? wv / (1.0f + 4.0f * p.streak) : wv;
        return Fbm(wu / p.scale, sv / p.scale, sC, 6, 0.55f);
    });
    const float th = Percentile(low, 1.0f - p.coverage);
    Field out(c);
    for (int y = 0; y < c.h; ++y) {
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x), v = c.V(y);
            // Crisp, frayed break line: detail added at the edge only.
            const float detail = 0.09f * Fbm(u / 9.0f, v / 9.0f, sD, 3);
            const float w = low(x, y) + detail;
            const float aa = 0.012f;
            const float gone = SmoothStep(th - aa, th + aa, w);
            const float grain = 0.025f * Noise(u / 3.0f, v / 3.0f, sE) + 0.02f * Grain(x, y, sE);
            float under = p.under + 0.12f * Fbm(u / 25.0f, v / 25.0f, sE + 1, 3) + grain;
            float top = p.base + 0.03f * Fbm(u / 120.0f, v / 120.0f, sE + 2, 3) + grain * 0.5f;
            const float band = SmoothStep(th - 0.07f, th - aa, w) * (1.0f - gone);
            top -= p.edge * band * band;
            top += p.rim * (1.0f - Clamp01(Abs(w - (th - 0.015f)) / 0.01f));
            float val = Lerp(top, under, gone);
            if (p.speckle > 0.0f) {
                const float sp = Noise(u / 2.2f, v / 2.2f, sE + 3) + 0.6f * Fbm(u / 60.0f, v / 60.0f, sE + 4, 2);
                val = Lerp(val, p.under, SmoothStep(0.95f - p.speckle * 0.35f, 1.0f - p.speckle * 0.35f, sp));
            }
            if (p.pores > 0.0f) {
                const Cells a = Worley(u / 7.0f, v / 7.0f, sE + 5);
                const float rad = 0.15f + 0.3f * HashUnit(a.id);
                const float gate = SmoothStep(-0.2f, 0.4f, Fbm(u / 90.0f, v / 90.0f, sE + 6, 3) + p.pores - 0.5f);
                val = Lerp(val, p.under * 0.6f, (1.0f - SmoothStep(rad - 0.08f, rad, a.f1)) * gate);
            }
            out(x, y) = Clamp01(val);
        }
    }
    return ToGrey(out);
}

// ---------------------------------------------------------------------------
// Splatter: blobs of ink or paint with satellites, a fine mist and runs.
Texture Splatter(const Canvas& c, uint64_t seed, const SplatterParams& p) {
    Rng r(seed);
    Field ink(c);
    const float W = c.Width(), H = c.Height();
    auto blob = [&](float cx, float cy, float rad, float rough, float alpha) {
        const uint32_t s = r.Next();
        ForArea(c, cx, cy, rad * (1.0f + rough * 1.5f) + 2.0f, [&](int x, int y, float u, float v) {
            const float d = BlobDistance(u, v, cx, cy, rad, rough, s);
            const float cov = Clamp01((1.0f - d) * rad / p.softness + 0.5f) * alpha;
            float& dst = ink(x, y);
            if (cov > dst) dst = cov;
        });
    };
    for (int i = 0; i < p.blobs; ++i) {
        const float e = r.Uniform();
        const float rad = p.size * (0.3f + 1.4f * e * e);
        const float cx = r.Range(0.0f, W), cy = r.Range(0.0f, H);
        blob(cx, cy, rad, 0.35f, 1.0f);
        const int sats = 8 + r.Below(30);
        for (int k = 0; k < sats; ++k) {
            float dx, dy;
            RandomDir(r, dx, dy);
            const float f = r.Uniform();
            const float dist = rad * (1.1f + 2.8f * f * f);
            const float sr = rad * r.Range(0.03f, 0.22f) * (1.2f - f * 0.6f);
            if (r.Chance(0.3f)) {
                // A streak thrown outward.
                const float len = sr * r.Range(3.0f, 9.0f);
                const float sx = cx + dx * dist, sy = cy + dy * dist;
                DrawStroke(ink, c, {{sx - dx * len, sy - dy * len, sr * 0.2f, 0.8f}, {sx, sy, sr * 0.8f, 1.0f}});
            } else {
                blob(cx + dx * dist, cy + dy * dist, sr, 0.2f, 1.0f);
            }
        }
        if (r.Chance(p.drips)) {
            // A run down from the blob's lower side, ending in a bead.
            const float x0 = cx + r.Normal() * rad * 0.3f;
            float len = r.Range(60.0f, 400.0f);
            std::vector<StrokePoint> run;
            const float w = rad * r.Range(0.06f, 0.16f);
            for (float t = 0.0f; t <= 1.0f; t += 0.02f)
                run.push_back({x0 + Noise(t * 3.0f, 0.5f, uint32_t(i)) * 3.0f, cy + rad * 0.5f + t * len,
                               w * (1.0f - 0.4f * t), 1.0f});
            DrawStroke(ink, c, run);
            DrawDisc(ink, c, run.back().x, run.back().y + w * 0.5f, w * 1.5f, 1.0f, 0.6f);
        }
    }
    for (int i = 0; i < p.mist; ++i) {
        const float e = r.Uniform();
        DrawDisc(ink, c, r.Range(0.0f, W), r.Range(0.0f, H), 0.3f + 2.5f * e * e * e, r.Range(0.5f, 1.0f), 0.5f);
    }
    const uint32_t s = Sub(seed, 1);
    Field out(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x), v = c.V(y);
            const float paper = 0.95f + 0.02f * Fbm(u / 200.0f, v / 200.0f, s, 3) + 0.012f * Grain(x, y, s);
            const float inkTone = p.tone + p.texture * (0.5f + 0.5f * Fbm(u / 12.0f, v / 12.0f, s + 1, 3));
            out(x, y) = Clamp01(Lerp(paper, inkTone, ink(x, y)));
        }
    return ToGrey(out);
}

// ---------------------------------------------------------------------------
// Stains: liquid that dried, leaving a faint fill and a dark tide line at its rim;
// cup rings are nearly circular and often incomplete.
Texture Stains(const Canvas& c, uint64_t seed, const StainParams& p) {
    Rng r(seed);
    Field out(c);
    const uint32_t sPaper = Sub(seed, 1);
    Fill(out, c, [&](float u, float v) { return 0.95f + 0.025f * Fbm(u / 300.0f, v / 300.0f, sPaper, 4); });
    const float W = c.Width(), H = c.Height();
    for (int i = 0; i < p.stains; ++i) {
        const bool ring = r.Uniform() < p.rings;
        const float rad = ring ? p.size * r.Range(0.6f, 1.1f) : p.size * r.Range(0.4f, 1.5f);
        const float cx = r.Range(-rad * 0.3f, W + rad * 0.3f), cy = r.Range(-rad * 0.3f, H + rad * 0.3f);
        const float rough = ring ? 0.035f : 0.45f;
        const float strength = p.strength * r.Range(0.5f, 1.0f);
        const uint32_t s = r.Next();
        const float arc = ring ? r.Range(0.2f, 0.9f) : 1.0f; // how much of the ring shows
        const int inner = ring ? 1 : 1 + r.Below(3);
        std::vector<float> lines(static_cast<size_t>(inner));
        for (float& l : lines) l = r.Range(0.45f, 0.9f);
        ForArea(c, cx, cy, rad * 1.6f, [&](int x, int y, float u, float v) {
            const float d = BlobDistance(u, v, cx, cy, rad, rough, s);
            if (d > 1.15f) return;
            const float px = 1.0f / (rad * c.k);
            const float tide = 1.0f - Clamp01(Abs(d - 1.0f) / (px * 1.5f + 0.012f));
            const float inside = 1.0f - SmoothStep(1.0f - px * 2.0f, 1.0f, d);
            float fill = inside * (0.25f + 0.35f * SmoothStep(0.3f, 1.0f, d));
            float line = tide * (ring ? 1.0f : 0.8f);
            line *= 0.55f + 0.45f * Fbm(u / 15.0f, v / 15.0f, s + 1, 3);
            // Older, fainter tide lines inside, where the water stood before.
            for (float l : lines)
                line = std::max(line, 0.5f * (1.0f - Clamp01(Abs(d - l) / (px * 2.0f + 0.01f))) * inside);
            if (ring) {
                const float show = SmoothStep(arc - 0.25f, arc + 0.25f,
                                              0.5f + 0.8f * Noise(u / (rad * 0.7f), v / (rad * 0.7f), s + 2));
                line *= show;
                fill *= 0.5f;
            }
            const float dark = strength * std::max(fill * 0.45f, line);
            out(x, y) *= 1.0f - dark;
        });
    }
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) out(x, y) = Clamp01(out(x, y) + 0.01f * Grain(x, y, sPaper));
    return ToGrey(out);
}

// ---------------------------------------------------------------------------
// Specks: dust, hairs and, for film, long vertical scratches and density blotches.
Texture Specks(const Canvas& c, uint64_t seed, const SpeckParams& p) {
    Rng r(seed);
    const float W = c.Width(), H = c.Height();
    const uint32_t sB = Sub(seed, 1);
    Field base = FillCoarse(c, 3, [&](float u, float v) {
        return p.base - p.blotch * SmoothStep(0.0f, 0.6f, Fbm(u / 180.0f, v / 180.0f, sB, 5));
    });
    Field dark(c);
    for (int i = 0; i < p.lines; ++i) {
        float x = r.Range(0.0f, W);
        const float y0 = r.Chance(0.6f) ? -10.0f : r.Range(0.0f, H);
        const float len = r.Chance(0.6f) ? H + 20.0f : r.Range(100.0f, H);
        const float w = r.Range(0.3f, 1.3f), a = r.Range(0.25f, 0.85f);
        const uint32_t s = r.Next();
        std::vector<StrokePoint> pts;
        for (float t = 0.0f; t <= len; t += 8.0f) {
            const float flick = 0.5f + 0.5f * ValueNoise(t / 40.0f, 0.5f, s);
            pts.push_back({x + 2.0f * Noise(t / 300.0f, 0.5f, s + 1), y0 + t, w, a * flick});
        }
        DrawStroke(dark, c, pts);
    }
    for (int i = 0; i < p.dust; ++i) {
        const float e = r.Uniform();
        const float rad = 0.3f + 2.2f * e * e * e * e;
        const float x = r.Range(0.0f, W), y = r.Range(0.0f, H);
        if (rad > 1.2f) {
            // Bigger specks are lumpy: a few overlapping discs.
            for (int k = 0; k < 4; ++k)
                DrawDisc(dark, c, x + r.Normal() * rad * 0.5f, y + r.Normal() * rad * 0.5f, rad * r.Range(0.4f, 0.8f),
                         r.Range(0.6f, 1.0f), 0.5f);
        } else {
            DrawDisc(dark, c, x, y, rad, r.Range(0.4f, 1.0f), 0.5f);
        }
    }
    for (int i = 0; i < p.hairs; ++i) {
        float dx, dy;
        RandomDir(r, dx, dy);
        DrawStroke(dark, c,
                   ScratchPath(r, r.Range(0.0f, W), r.Range(0.0f, H), dx, dy, r.Range(30.0f, 160.0f),
                               r.Range(0.35f, 0.7f), r.Range(0.6f, 1.0f), 0.03f, 0.0f));
    }
    Field out(c);
    for (size_t i = 0; i < out.v.size(); ++i) out.v[i] = Clamp01(base.v[i] * (1.0f - 0.85f * dark.v[i]));
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) out(x, y) = Clamp01(out(x, y) + 0.02f * Grain(x, y, sB + 3));
    return ToGrey(out);
}

// ---------------------------------------------------------------------------
// Frost: fern-like ice crystals branching at sixty degrees from scattered seeds.
namespace {
void Branch(Field& m, const Canvas& c, Rng& r, float x, float y, float dx, float dy, float len, float width,
            int depth) {
    std::vector<StrokePoint> pts;
    const float step = std::max(2.0f, len / 20.0f);
    float t = 0.0f;
    std::vector<std::pair<float, float>> forks;
    while (t < len) {
        pts.push_back({x, y, width * (1.0f - 0.7f * t / len), 0.9f});
        if (depth > 0 && r.Chance(0.35f)) forks.push_back({x, y});
        const float wob = r.Normal() * 0.05f;
        const float ndx = dx - dy * wob, ndy = dy + dx * wob;
        dx = ndx;
        dy = ndy;
        Normalise2(dx, dy);
        x += dx * step;
        y += dy * step;
        t += step;
    }
    DrawStroke(m, c, pts);
    if (depth == 0) return;
    for (const auto& f : forks) {
        // Sixty degrees either side: cos 0.5, sin 0.866.
        const float side = r.Chance(0.5f) ? 0.8660254f : -0.8660254f;
        const float bx = dx * 0.5f - dy * side, by = dy * 0.5f + dx * side;
        Branch(m, c, r, f.first, f.second, bx, by, len * r.Range(0.2f, 0.45f), width * 0.6f, depth - 1);
    }
}
} // namespace

Texture Frost(const Canvas& c, uint64_t seed) {
    Rng r(seed);
    Field ice(c);
    const float W = c.Width(), H = c.Height();
    for (int i = 0; i < 120; ++i) {
        const float x = r.Range(0.0f, W), y = r.Range(0.0f, H);
        const int arms = 2 + r.Below(4);
        for (int a = 0; a < arms; ++a) {
            float dx, dy;
            RandomDir(r, dx, dy);
            Branch(ice, c, r, x, y, dx, dy, r.Range(60.0f, 260.0f), r.Range(0.6f, 1.4f), 2);
        }
    }
    const uint32_t s = Sub(seed, 1);
    Field haze =
        FillCoarse(c, 2, [&](float u, float v) { return SmoothStep(-0.1f, 0.5f, Fbm(u / 140.0f, v / 140.0f, s, 5)); });
    Field out(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x), v = c.V(y);
            const float crystals = 0.4f * Clamp01(Noise(u / 3.0f, v / 3.0f, s + 2) * 1.5f + 0.3f) * haze(x, y);
            const float m = std::max(ice(x, y), crystals);
            out(x, y) = Clamp01(0.96f - 0.8f * m + 0.015f * Grain(x, y, s + 3));
        }
    return ToGrey(out);
}

// ---------------------------------------------------------------------------
// Condensation: drops of three sizes on glass, each with a dark rim and a highlight.
Texture Condensation(const Canvas& c, uint64_t seed) {
    const uint32_t s = Sub(seed, 1);
    Field out(c);
    struct Layer {
        float cell, size;
    };
    const Layer layers[] = {{46.0f, 0.42f}, {17.0f, 0.4f}, {6.0f, 0.38f}};
    for (int y = 0; y < c.h; ++y) {
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x), v = c.V(y);
            float val = 0.9f + 0.04f * Fbm(u / 200.0f, v / 200.0f, s, 3);
            for (int l = 0; l < 3; ++l) {
                const Cells cell = Worley(u / layers[l].cell, v / layers[l].cell, s + 10u * uint32_t(l) + 1u, 0.8f);
                const float h = HashUnit(cell.id * 0x9E3779B1u);
                const float rad = layers[l].size * (0.35f + 0.65f * h);
                // Big drops are rarer where the glass is drier.
                if (HashUnit(cell.id) < 0.15f) continue;
                const float d = cell.f1 / rad;
                if (d >= 1.0f) continue;
                const float ex = (u / layers[l].cell - cell.px) / rad, ey = (v / layers[l].cell - cell.py) / rad;
                const float aa = 1.0f / (rad * layers[l].cell * c.k);
                const float edge = SmoothStep(1.0f, 1.0f - aa * 1.5f, d);
                // Darker lens, dark rim, bright spot up and to the left.
                float drop = 0.55f + 0.25f * ey - 0.35f * SmoothStep(0.65f, 1.0f, d);
                const float hx = ex + 0.35f, hy = ey + 0.4f;
                drop += 0.6f * (1.0f - SmoothStep(0.0f, 0.25f, Sqrt(hx * hx + hy * hy)));
                val = Lerp(val, drop, edge);
            }
            out(x, y) = Clamp01(val);
        }
    }
    return ToGrey(out);
}

// ---------------------------------------------------------------------------
// Smoke: thin filaments curling through still air: level lines of a doubly warped
// field, bundled where the smoke is dense.
Texture Smoke(const Canvas& c, uint64_t seed) {
    const uint32_t a = Sub(seed, 1), b = Sub(seed, 2), d = Sub(seed, 3), e = Sub(seed, 4);
    Field out = FillCoarse(c, 2, [&](float u, float v) {
        const float wu = u + 160.0f * Fbm(u / 500.0f, v / 700.0f, a, 4);
        const float wv = v + 110.0f * Fbm(u / 500.0f, v / 700.0f, b, 4);
        const float wu2 = wu + 60.0f * Fbm(wu / 150.0f, wv / 220.0f, e, 4);
        const float wv2 = wv + 40.0f * Fbm(wu / 150.0f, wv / 220.0f, e + 2, 4);
        const float n = Fbm(wu2 / 420.0f, wv2 / 700.0f, d, 5, 0.5f);
        float lines = 0.0f;
        // Several level lines: a bundle of filaments.
        for (int k = -2; k <= 2; ++k) {
            const float lv = float(k) * 0.045f;
            const float w = 0.008f + 0.006f * float(2 - (k < 0 ? -k : k));
            lines = std::max(lines, (1.0f - SmoothStep(0.0f, w, Abs(n - lv))) * (1.0f - 0.15f * Abs(float(k))));
        }
        const float haze = 1.0f - SmoothStep(0.0f, 0.12f, Abs(n));
        const float body = SmoothStep(-0.3f, 0.4f, Fbm(u / 600.0f, v / 600.0f, e + 1, 3));
        return 1.0f - (0.8f * lines + 0.25f * haze) * body;
    });
    // Soften the thinnest filaments, which would otherwise break into dots.
    Blur(out, 0.8f * c.k);
    const uint32_t g = Sub(seed, 5);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) out(x, y) = Clamp01(out(x, y) + 0.012f * Grain(x, y, g));
    Normalize(out, 0.001f, 0.999f);
    return ToGrey(out);
}

// ---------------------------------------------------------------------------
// Woven cloth: warp threads run down, weft threads across; at each crossing one lies
// on top and arches over the other. Thread paths wander and thicken, so no two repeats
// are alike.
Texture Weave(const Canvas& c, uint64_t seed, const WeaveParams& p) {
    const uint32_t sWx = Sub(seed, 1), sWy = Sub(seed, 2), sSlub = Sub(seed, 3);
    const uint32_t sFibre = Sub(seed, 4), sFade = Sub(seed, 5), sTone = Sub(seed, 6);
    Field height(c), which(c), fibre(c);
    Field wobX = FillCoarse(c, 2, [&](float u, float v) { return Fbm(u / 150.0f, v / 150.0f, sWx, 3); });
    Field wobY = FillCoarse(c, 2, [&](float u, float v) { return Fbm(u / 150.0f, v / 150.0f, sWy, 3); });
    for (int y = 0; y < c.h; ++y) {
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x), v = c.V(y);
            const float wu = u + p.wobble * p.pitch * 3.0f * wobX(x, y);
            const float wv = v + p.wobble * p.pitch * 3.0f * wobY(x, y);
            const float sx = wu / p.pitch, sy = wv / p.pitch;
            const int i = FloorInt(sx), j = FloorInt(sy);
            const float fx = sx - float(i), fy = sy - float(j);
            auto width = [&](float along, int index, uint32_t s) {
                const float n = ValueNoise(along / (p.pitch * 7.0f), float(index) * 1.618f, s) - 0.5f;
                return Clamp01((1.0f - p.gap) * (1.0f + 2.0f * p.slub * n));
            };
            const float warpW = std::max(0.2f, width(wv, i, sSlub));
            const float weftW = std::max(0.2f, width(wu, j, sSlub + 1));
            const float dWarp = Abs(fx - 0.5f) * 2.0f / warpW;
            const float dWeft = Abs(fy - 0.5f) * 2.0f / weftW;
            const float warpH = dWarp < 1.0f ? Sqrt(1.0f - dWarp * dWarp) : -1.0f;
            const float weftH = dWeft < 1.0f ? Sqrt(1.0f - dWeft * dWeft) : -1.0f;
            const bool weftTop = p.twill ? ((i + j) & 3) == 0 : ((i + j) & 1) == 0;
            const float archX = Sqrt(1.0f - (2.0f * fx - 1.0f) * (2.0f * fx - 1.0f));
            const float archY = Sqrt(1.0f - (2.0f * fy - 1.0f) * (2.0f * fy - 1.0f));
            float h, w, f;
            const float alongWeft = Noise(wu / (p.pitch * 1.2f), wv / (p.pitch * 0.09f), sFibre);
            const float alongWarp = Noise(wu / (p.pitch * 0.09f), wv / (p.pitch * 1.2f), sFibre + 1);
            if (weftTop && weftH >= 0.0f) {
                h = 0.45f + 0.55f * weftH * (0.55f + 0.45f * (p.twill ? 1.0f : archX));
                w = 1.0f;
                f = alongWeft;
            } else if (!weftTop && warpH >= 0.0f) {
                h = 0.45f + 0.55f * warpH * (0.55f + 0.45f * (p.twill ? 1.0f : archY));
                w = 0.0f;
                f = alongWarp;
            } else if (weftH >= 0.0f) {
                h = 0.3f * weftH;
                w = 1.0f;
                f = alongWeft;
            } else if (warpH >= 0.0f) {
                h = 0.3f * warpH;
                w = 0.0f;
                f = alongWarp;
            } else {
                h = 0.0f;
                w = 0.5f;
                f = 0.0f;
            }
            const bool weft = w > 0.5f;
            const float streak =
                ValueNoise((weft ? wu : wv) / (p.pitch * 6.0f), float(weft ? j : i) * 1.618f, sTone + 7);
            const float tone = (HashUnit(Hash1(uint32_t(weft ? j : i), sTone + uint32_t(weft))) - 0.5f) +
                               p.streaks * (streak - 0.5f) * 2.0f;
            height(x, y) = h + 0.12f * f + p.fuzz * 0.3f * Noise(u / 1.3f, v / 1.3f, sFibre + 2);
            which(x, y) = w;
            fibre(x, y) = 0.1f * f + 0.1f * tone + p.fuzz * 0.15f * Noise(u / 2.0f, v / 2.0f, sFibre + 3);
        }
    }
    const Field light = Shade(height, c, p.relief * 1.5f / p.pitch * 6.0f);
    ColourField out(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const size_t i = size_t(y) * c.w + x;
            Rgb col = Mix(p.warp, p.weft, which.v[i]);
            if (p.fade > 0.0f) {
                const float f = SmoothStep(0.0f, 0.6f, Fbm(c.U(x) / 260.0f, c.V(y) / 260.0f, sFade, 5) + p.fade - 0.4f);
                col = Mix(col, Mix(col, p.weft, 0.55f), f * (1.0f - which.v[i]));
            }
            const float shade = (0.3f + 0.85f * light.v[i]) * (1.0f + fibre.v[i]);
            const float gapShade = height.v[i] <= 0.0f ? 0.35f : 1.0f;
            col = Scale(col, shade * gapShade);
            if (!p.colour) {
                const float g = (col.r * 0.3f + col.g * 0.59f + col.b * 0.11f);
                col = {g, g, g};
            }
            out.Set(i, col);
        }
    if (p.colour) return ToColour(out);
    for (float& g : out.r.v) g /= 255.0f;
    return ToGrey(out.r);
}

// ---------------------------------------------------------------------------
// Leather: pebbled grain between fine creases, larger wrinkles where the hide flexed.
Texture Leather(const Canvas& c, uint64_t seed, const LeatherParams& p) {
    const uint32_t sWx = Sub(seed, 1), sWy = Sub(seed, 2), sCell = Sub(seed, 3);
    const uint32_t sCrease = Sub(seed, 4), sTone = Sub(seed, 5), sWear = Sub(seed, 6);
    Field height(c), tone(c), wear(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x), v = c.V(y);
            const float wu = u + p.grain * 0.8f * Noise(u / (p.grain * 2.5f), v / (p.grain * 2.5f), sWx);
            const float wv = v + p.grain * 0.8f * Noise(u / (p.grain * 2.5f), v / (p.grain * 2.5f), sWy);
            const Cells cell = Worley(wu / p.grain, wv / p.grain, sCell);
            const float pebble = SmoothStep(0.0f, 0.4f, cell.f2 - cell.f1) * (1.0f - 0.3f * cell.f1 * cell.f1);
            const float wr = Ridged(u / 160.0f, v / 70.0f, sCrease, 4);
            const float crease = SmoothStep(0.72f, 0.95f, wr);
            const float macro = Fbm(u / 320.0f, v / 320.0f, sTone, 4);
            height(x, y) = 0.55f * pebble - p.creases * 0.6f * crease + 0.05f * Noise(u / 1.5f, v / 1.5f, sTone + 1);
            tone(x, y) = 0.5f + 0.25f * macro + 0.22f * (pebble - 0.5f) - 0.25f * crease;
            wear(x, y) = p.wear > 0.0f
                             ? SmoothStep(0.1f, 0.45f, Fbm(u / 180.0f, v / 180.0f, sWear, 5) + p.wear - 0.5f) *
                                   (0.6f + 0.4f * pebble)
                             : 0.0f;
        }
    const Field light = Shade(height, c, 2.0f * 9.0f / p.grain);
    ColourField out(c);
    for (size_t i = 0; i < out.r.v.size(); ++i) {
        Rgb col = Mix(p.dark, p.light, Clamp01(tone.v[i]));
        const float w = wear.v[i];
        col = Mix(col, Mix(p.light, Rgb{205, 185, 160}, 0.45f), w * 0.7f);
        col = Scale(col, Lerp(0.4f + 0.9f * light.v[i], 1.0f, w * 0.5f));
        out.Set(i, col);
    }
    return ToColour(out);
}

// Crocodile: rows of rectangular horny scales with rounded edges and deep grooves.
Texture CrocodileHide(const Canvas& c, uint64_t seed) {
    const uint32_t sW = Sub(seed, 1), sRow = Sub(seed, 2), sTex = Sub(seed, 3), sTone = Sub(seed, 4);
    Field height(c), tone(c);
    const float rowH = 58.0f;
    Field warpU = Low(c, [&](float u, float v) { return u + 14.0f * Fbm(u / 220.0f, v / 220.0f, sW, 3); });
    Field warpV = Low(c, [&](float u, float v) { return v + 10.0f * Fbm(u / 220.0f, v / 220.0f, sW + 1, 3); });
    Field band = Low(c, [&](float u, float v) {
        return 0.15f * Fbm(u / 300.0f, v / 300.0f, sTone, 3) -
               0.2f * SmoothStep(0.4f, 0.9f, Tri(v / 520.0f + 0.2f * Fbm(u / 400.0f, 0.5f, sTone + 1, 2)));
    });
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x), v = c.V(y);
            const float wu = warpU(x, y), wv = warpV(x, y);
            // Horny scales: wide irregular polygons in loose rows.
            const Cells cell = Worley(wu / 78.0f, wv / rowH, sRow, 0.7f);
            const float e = (cell.f2 - cell.f1) * rowH * 0.5f; // about the distance to the groove
            const uint32_t id = cell.id;
            const float dome = SmoothStep(0.0f, 10.0f, e);
            // A horny keel in the middle of some scales.
            const float keel = HashUnit(id) < 0.45f ? 1.0f - SmoothStep(0.05f, 0.35f, cell.f1) : 0.0f;
            const Cells pebble = Worley(u / 4.0f, v / 4.0f, sTex);
            height(x, y) = 0.7f * dome + 0.25f * keel + 0.06f * SmoothStep(0.0f, 0.5f, pebble.f2 - pebble.f1) +
                           0.04f * Noise(u / 9.0f, v / 9.0f, sTex + 1);
            tone(x, y) = 0.35f + 0.3f * HashUnit(id * 0x2545F491u) + 0.25f * dome + band(x, y);
        }
    const Field light = Shade(height, c, 3.0f);
    const RampStop ramp[] = {
        {0.0f, {22, 20, 14}}, {0.4f, {62, 58, 38}}, {0.75f, {112, 100, 64}}, {1.0f, {160, 145, 100}}};
    ColourField out(c);
    for (size_t i = 0; i < out.r.v.size(); ++i)
        out.Set(i, Scale(Ramp(ramp, 4, Clamp01(tone.v[i])), 0.35f + 0.95f * light.v[i]));
    return ToColour(out);
}

// Snake: overlapping keeled scales in offset rows, each scale one colour from the
// blotched pattern of the skin.
Texture SnakeScales(const Canvas& c, uint64_t seed) {
    const uint32_t sPat = Sub(seed, 1), sW = Sub(seed, 2), sTone = Sub(seed, 3);
    const float sw = 26.0f, sh = 16.0f;
    const float a = sw * 0.64f, b = sh * 1.05f;
    Field height(c), tone(c), pat(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const float u0 = c.U(x), v0 = c.V(y);
            const float u = u0 + 25.0f * Fbm(u0 / 500.0f, v0 / 500.0f, sW, 3);
            const float v = v0 + 25.0f * Fbm(u0 / 500.0f, v0 / 500.0f, sW + 1, 3);
            const int j0 = FloorInt(v / sh);
            float bestH = 0.0f, bestT = 0.0f, bestP = 0.0f;
            bool found = false;
            for (int j = j0 - 2; j <= j0 + 1 && !found; ++j) {
                const float off = (j & 1) ? 0.5f : 0.0f;
                const int i0 = FloorInt(u / sw - off);
                for (int i = i0 - 1; i <= i0 + 1; ++i) {
                    const float cx = (float(i) + 0.5f + off) * sw, cy = (float(j) + 0.5f) * sh;
                    const float dx = (u - cx) / a, dy = (v - cy) / b;
                    const float d = 0.55f * (Abs(dx) + Abs(dy)) + 0.45f * Sqrt(dx * dx + dy * dy);
                    if (d >= 1.0f) continue;
                    // The upper row lies on top: the first scale found wins.
                    found = true;
                    const float rise = 0.35f + 0.45f * Clamp01(dy * 0.5f + 0.5f);
                    const float keel = 0.15f * (1.0f - SmoothStep(0.0f, 0.12f, Abs(dx)));
                    bestH = (rise + keel) * (1.0f - Pow(d, 4.0f)) + 0.1f;
                    const uint32_t id = Hash(i, j, sTone);
                    const Cells blot = Worley(cx / 150.0f, cy / 110.0f, sPat, 0.9f);
                    const float bd = blot.f1 + 0.15f * HashUnit(id);
                    bestP = bd < 0.32f ? 0.0f : (bd < 0.42f ? 1.0f : 0.55f);
                    bestT = 0.85f + 0.2f * HashUnit(id * 0x9E3779B1u) - 0.3f * SmoothStep(0.8f, 1.0f, d);
                    break;
                }
            }
            height(x, y) = bestH;
            tone(x, y) = bestT;
            pat(x, y) = bestP;
        }
    const Field light = Shade(height, c, 3.0f);
    const RampStop ramp[] = {{0.0f, {52, 36, 22}}, {0.55f, {140, 112, 66}}, {1.0f, {214, 196, 140}}};
    ColourField out(c);
    for (size_t i = 0; i < out.r.v.size(); ++i) {
        const Rgb col = Scale(Ramp(ramp, 3, pat.v[i]), tone.v[i]);
        out.Set(i, Scale(col, 0.3f + 0.95f * light.v[i]));
    }
    return ToColour(out);
}

// ---------------------------------------------------------------------------
// Rust: corroded steel: granular crust over pitted ground, scale lifting in plates
// here and there, fresh orange blooms, and islands of the old paint.
Texture Rust(const Canvas& c, uint64_t seed, float remnant) {
    const uint32_t sLow = Sub(seed, 1), sMid = Sub(seed, 2), sFlake = Sub(seed, 3);
    const uint32_t sPit = Sub(seed, 4), sPaint = Sub(seed, 5), sW = Sub(seed, 6), sSpeck = Sub(seed, 7);
    const uint32_t sHue = Sub(seed, 8), sGate = Sub(seed, 9);
    Field low = Low(c, [&](float u, float v) {
        const float wu = u + 80.0f * Fbm(u / 400.0f, v / 400.0f, sW, 3);
        const float wv = v + 80.0f * Fbm(u / 400.0f, v / 400.0f, sW + 1, 3);
        return Fbm(wu / 300.0f, wv / 300.0f, sLow, 5);
    });
    Field blotch = Low(c, [&](float u, float v) { return Fbm(u / 80.0f, v / 80.0f, sMid, 4); });
    Field hue = Low(c, [&](float u, float v) { return SmoothStep(0.0f, 0.45f, Fbm(u / 140.0f, v / 140.0f, sHue, 4)); });
    Field gate =
        Low(c, [&](float u, float v) { return SmoothStep(0.05f, 0.35f, Fbm(u / 260.0f, v / 260.0f, sGate, 4)); });
    Field paint = Low(c, [&](float u, float v) {
        return Fbm(u / 220.0f, v / 220.0f, sPaint, 6) + 0.25f * Fbm(u / 45.0f, v / 45.0f, sPaint + 1, 3);
    });
    const float paintTh = Percentile(paint, 1.0f - remnant);
    Field height(c), t(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x), v = c.V(y);
            const float crust = Fbm(u / 12.0f, v / 12.0f, sMid + 1, 4);
            const float grit = Noise(u / 2.5f, v / 2.5f, sSpeck) + 0.7f * Grain(x, y, sSpeck + 1);
            // Scale: plates of rust lifting along cracks, only in some places.
            const float g = gate(x, y);
            float plate = 0.0f, crack = 0.0f;
            if (g > 0.0f) {
                const float qu = u + 10.0f * blotch(x, y), qv = v + 10.0f * crust;
                const Cells flake = Worley(qu / 55.0f, qv / 55.0f, sFlake);
                const float edge = flake.f2 - flake.f1;
                crack = g * (1.0f - SmoothStep(0.01f, 0.05f, edge + 0.03f * crust));
                plate = g * SmoothStep(0.0f, 0.2f, edge) * (0.4f + 0.6f * HashUnit(flake.id));
            }
            // Pits, clustered and of all sizes.
            const Cells pit = Worley(u / 8.0f, v / 8.0f, sPit);
            const float density = 0.02f + 0.22f * SmoothStep(0.0f, 0.5f, blotch(x, y));
            float pd = 0.0f;
            if (HashUnit(pit.id) < density) {
                const float pr = 0.08f + 0.3f * HashUnit(pit.id * 0x9E3779B1u);
                pd = (1.0f - SmoothStep(pr * 0.2f, pr, pit.f1 + 0.12f * crust)) *
                     (0.4f + 0.6f * HashUnit(pit.id * 0x2545F491u));
            }
            height(x, y) = 0.3f * crust + 0.35f * plate - 0.45f * pd - 0.3f * crack + 0.05f * grit;
            t(x, y) = 0.5f + 0.35f * low(x, y) + 0.18f * blotch(x, y) + 0.16f * crust + 0.1f * plate - 0.3f * pd -
                      0.3f * crack + 0.05f * grit;
        }
    const Field light = Shade(height, c, 3.0f);
    const RampStop ramp[] = {{0.0f, {30, 14, 9}},    {0.2f, {66, 28, 14}},   {0.42f, {112, 48, 22}},
                             {0.62f, {156, 74, 32}}, {0.8f, {186, 112, 54}}, {1.0f, {214, 156, 96}}};
    ColourField out(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const size_t i = size_t(y) * c.w + x;
            const float tv = Clamp01(t.v[i]);
            Rgb col = Ramp(ramp, 6, tv);
            // Fresh rust blooms bright orange in the middle tones.
            const float bloom = hue.v[i] * SmoothStep(0.3f, 0.55f, tv) * (1.0f - SmoothStep(0.75f, 0.95f, tv));
            col = Mix(col, Rgb{200, 96, 34}, bloom * 0.55f);
            const float pv = paint.v[i] + 0.03f * Noise(c.U(x) / 4.0f, c.V(y) / 4.0f, sPaint + 2);
            const float on = SmoothStep(paintTh - 0.008f, paintTh + 0.008f, pv);
            if (on > 0.0f) {
                // Old grey-green paint, chalky and stained where rust creeps under it.
                const float chalk =
                    0.1f * Noise(c.U(x) / 5.0f, c.V(y) / 5.0f, sPaint + 3) + 0.04f * Grain(x, y, sPaint + 4);
                const float creep = 1.0f - SmoothStep(paintTh, paintTh + 0.1f, pv);
                Rgb pc = Scale(Rgb{74, 80, 72}, 1.0f + chalk + 0.15f * blotch.v[i]);
                pc = Mix(pc, Rgb{110, 60, 34}, creep * 0.7f);
                col = Mix(col, pc, on);
            }
            out.Set(i, Scale(col, 0.5f + 0.75f * light.v[i]));
        }
    return ToColour(out);
}

// ---------------------------------------------------------------------------
// Battleship steel: painted hull plates in staggered rows, lapped seams with rivets,
// welded butts, pitting and grime running down from the joints.
Texture SteelPlates(const Canvas& c, uint64_t seed) {
    Rng r(seed);
    struct Row {
        float top, bottom;
        std::vector<float> seams; // x positions of vertical joints
        bool welded;
    };
    std::vector<Row> rows;
    for (float y = -r.Range(0.0f, 200.0f); y < c.Height();) {
        Row row;
        row.top = y;
        y += r.Range(260.0f, 340.0f);
        row.bottom = y;
        row.welded = r.Chance(0.35f);
        for (float x = -r.Range(0.0f, 500.0f); x < c.Width() + 700.0f; x += r.Range(420.0f, 640.0f))
            row.seams.push_back(x);
        rows.push_back(row);
    }
    const uint32_t sPaint = Sub(seed, 1), sPit = Sub(seed, 2), sGrime = Sub(seed, 3);
    const uint32_t sBulge = Sub(seed, 4), sFine = Sub(seed, 5);
    const float pitch = 22.0f, inset = 9.0f, rivetR = 4.2f;
    auto rivet = [&](float along, float across) {
        // Distance to the nearest rivet of a line: along its line and across it.
        const float k = along / pitch;
        const float f = (k - float(FloorInt(k + 0.5f))) * pitch;
        const float d = Sqrt(f * f + across * across);
        return d < rivetR ? Sqrt(1.0f - (d / rivetR) * (d / rivetR)) : 0.0f;
    };
    Field bulge = Low(c, [&](float u, float v) { return 0.06f * Fbm(u / 260.0f, v / 200.0f, sBulge, 3); });
    Field pitGateF =
        Low(c, [&](float u, float v) { return SmoothStep(0.15f, 0.45f, Fbm(u / 250.0f, v / 250.0f, sPit + 1, 4)); });
    Field grimeGateF =
        Low(c, [&](float u, float v) { return SmoothStep(-0.1f, 0.4f, Fbm(u / 300.0f, v / 200.0f, sGrime + 1, 3)); });
    Field mottle = Low(c, [&](float u, float v) { return 0.05f * Fbm(u / 350.0f, v / 350.0f, sPaint + 7, 4); });
    Field height(c), paint(c);
    size_t ri = 0;
    for (int y = 0; y < c.h; ++y) {
        const float v = c.V(y);
        while (ri + 1 < rows.size() && v >= rows[ri].bottom) ++ri;
        const Row& row = rows[ri];
        size_t si = 0;
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x);
            while (si + 1 < row.seams.size() && u >= row.seams[si + 1]) ++si;
            const float left = row.seams[si], right = si + 1 < row.seams.size() ? row.seams[si + 1] : 1e9f;
            const float dTop = v - row.top, dBottom = row.bottom - v;
            const float dLeft = u - left, dRight = right - u;
            const float dh = std::min(dTop, dBottom), dv = std::min(dLeft, dRight);
            const uint32_t plate = Hash(int(si), int(ri), sPaint);
            float h = 0.5f + bulge(x, y);
            // Lapped horizontal seam: the upper plate's edge stands proud of the lower.
            h -= 0.45f * (1.0f - SmoothStep(0.4f, 1.8f, dh));
            h += 0.08f * (1.0f - SmoothStep(1.5f, 5.0f, dBottom));
            float bump = std::max(rivet(u, dTop - inset), rivet(u, dBottom - inset));
            if (row.welded) {
                // A weld bead with its ripples along the butt joint.
                const float bead = dv < 4.5f ? Sqrt(1.0f - (dv / 4.5f) * (dv / 4.5f)) : 0.0f;
                const float ripple = 0.8f + 0.2f * Tri(v / 3.2f + 0.3f * Noise(u, v / 10.0f, sFine));
                h += 0.35f * bead * ripple - 0.15f * (1.0f - SmoothStep(4.5f, 7.0f, dv)) * (1.0f - bead);
            } else {
                h -= 0.45f * (1.0f - SmoothStep(0.4f, 1.8f, dv));
                bump = std::max(bump, std::max(rivet(v, dLeft - inset), rivet(v, dRight - inset)));
            }
            h += 0.4f * bump;
            if (pitGateF(x, y) > 0.0f) {
                const Cells pit = Worley(u / 5.0f, v / 5.0f, sPit);
                if (HashUnit(pit.id) < 0.4f) h -= 0.25f * (1.0f - SmoothStep(0.05f, 0.28f, pit.f1)) * pitGateF(x, y);
            }
            h += 0.03f * Noise(u / 2.0f, v / 2.0f, sFine + 1);
            height(x, y) = h;
            const float tone = 0.05f * (HashUnit(plate) - 0.5f);
            const float streak = Fbm(u / 10.0f, v / 260.0f, sGrime, 4);
            const float grimeGate = grimeGateF(x, y);
            // Grime runs down from the seam above.
            const float run = 1.0f - SmoothStep(0.0f, 120.0f + 80.0f * streak, dTop);
            paint(x, y) = 0.56f + tone + mottle(x, y) - 0.14f * SmoothStep(0.0f, 0.5f, streak) * grimeGate -
                          0.1f * run * (0.5f + streak) + 0.02f * Grain(x, y, sFine + 2);
        }
    }
    const Field light = Shade(height, c, 5.0f);
    Field out(c);
    for (size_t i = 0; i < out.v.size(); ++i) out.v[i] = paint.v[i] * (0.35f + 0.9f * light.v[i]);
    Normalize(out, 0.001f, 0.999f);
    // Keep it a mid grey, not a stretched one: the hull colour is what reads as steel.
    for (float& x : out.v) x = 0.1f + 0.82f * x;
    return ToGrey(out);
}

// ---------------------------------------------------------------------------
// Chopped strand mat: glass fibre bundles of a few centimetres, scattered in layers
// and wetted with resin.
Texture FibreMat(const Canvas& c, uint64_t seed) {
    Rng r(seed);
    const uint32_t sRes = Sub(seed, 1);
    Field out = FillCoarse(c, 2, [&](float u, float v) { return 0.3f + 0.08f * Fbm(u / 200.0f, v / 200.0f, sRes, 5); });
    const float W = c.Width(), H = c.Height();
    for (int layer = 0; layer < 4; ++layer) {
        Field m(c);
        for (int i = 0; i < 1500; ++i) {
            float dx, dy;
            RandomDir(r, dx, dy);
            const float len = r.Range(60.0f, 170.0f);
            const float cx = r.Range(-60.0f, W + 60.0f), cy = r.Range(-60.0f, H + 60.0f);
            const int strands = 3 + r.Below(5);
            const float spread = r.Range(1.5f, 4.5f);
            const float bend = r.Normal() * 0.04f;
            for (int s = 0; s < strands; ++s) {
                const float off = (float(s) / float(strands - 1) - 0.5f) * spread * 2.0f + r.Normal() * 0.4f;
                const float sx = cx - dy * off, sy = cy + dx * off;
                const float l = len * r.Range(0.85f, 1.0f);
                const float a = r.Range(0.35f, 0.9f);
                const float w = r.Range(0.35f, 0.7f);
                std::vector<StrokePoint> pts;
                for (int k = 0; k <= 4; ++k) {
                    const float t = float(k) / 4.0f - 0.5f;
                    const float sag = bend * l * (0.25f - t * t);
                    pts.push_back({sx + dx * l * t - dy * sag, sy + dy * l * t + dx * sag, w, a});
                }
                DrawStroke(m, c, pts);
            }
        }
        // Lower layers lie deeper in the resin and show dimmer.
        const float bright = 0.55f + 0.12f * float(layer);
        for (size_t i = 0; i < out.v.size(); ++i) out.v[i] = Lerp(out.v[i], bright, m.v[i] * 0.8f);
    }
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) out(x, y) += 0.02f * Grain(x, y, sRes + 2);
    Normalize(out, 0.002f, 0.998f);
    for (float& x : out.v) x = 0.08f + 0.9f * x;
    return ToGrey(out);
}

// ---------------------------------------------------------------------------
// Brushed metal: long fine streaks in one direction over soft reflections.
Texture BrushedMetal(const Canvas& c, uint64_t seed) {
    const uint32_t a = Sub(seed, 1), b = Sub(seed, 2), d = Sub(seed, 3), e = Sub(seed, 4);
    Field out(c);
    Fill(out, c, [&](float u, float v) {
        const float streak = 0.5f * Noise(u / 420.0f, v / 0.9f, a) + 0.35f * Noise(u / 160.0f, v / 0.45f, b) +
                             0.3f * Noise(u / 900.0f, v / 3.5f, d) + 0.15f * Noise(u / 60.0f, v / 0.3f, e);
        const float sheen =
            0.05f * Noise(u / 1400.0f, v / 500.0f, e + 1) + 0.02f * Fbm(u / 300.0f, v / 300.0f, e + 2, 3);
        return 0.62f + sheen + 0.11f * streak;
    });
    Rng r(seed + 1);
    Field marks(c);
    for (int i = 0; i < 160; ++i) {
        float dx, dy;
        BiasedDir(r, 1.0f, 0.0f, 0.3f, dx, dy);
        DrawStroke(marks, c,
                   ScratchPath(r, r.Range(0.0f, c.Width()), r.Range(0.0f, c.Height()), dx, dy, r.Range(20.0f, 260.0f),
                               r.Range(0.25f, 0.6f), r.Range(0.2f, 0.6f), 0.002f, 0.2f));
    }
    for (size_t i = 0; i < out.v.size(); ++i) out.v[i] *= 1.0f - 0.45f * marks.v[i];
    Normalize(out, 0.001f, 0.999f);
    for (float& x : out.v) x = 0.2f + 0.75f * x;
    return ToGrey(out);
}

// Tread plate: raised lozenges in alternating diagonals, worn bright on top, with grime
// in the hollows.
Texture TreadPlate(const Canvas& c, uint64_t seed) {
    const uint32_t sG = Sub(seed, 1), sW = Sub(seed, 2), sF = Sub(seed, 3);
    const float pitch = 78.0f, halfLen = 27.0f, halfW = 7.0f;
    Field height(c), grime(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x), v = c.V(y);
            const float su = u / pitch, sv = v / pitch;
            const int i = FloorInt(su), j = FloorInt(sv);
            const float lx = (su - float(i) - 0.5f) * pitch, ly = (sv - float(j) - 0.5f) * pitch;
            const bool flip = ((i + j) & 1) != 0;
            const float along = (lx + (flip ? -ly : ly)) * 0.70710678f;
            const float across = (lx - (flip ? -ly : ly)) * 0.70710678f;
            const float ea = std::max(0.0f, Abs(along) - (halfLen - halfW));
            const float d = Sqrt(ea * ea + across * across) / halfW;
            const float lug = d < 1.0f ? Sqrt(1.0f - d * d) : 0.0f;
            const float edge = SmoothStep(1.0f, 0.8f, d);
            height(x, y) = 0.6f * Lerp(lug, 1.0f, 0.35f) * edge + 0.03f * Noise(u / 3.0f, v / 3.0f, sF);
            grime(x, y) = SmoothStep(-0.1f, 0.5f, Fbm(u / 160.0f, v / 160.0f, sG, 5)) * (1.0f - edge);
        }
    const Field light = Shade(height, c, 3.5f);
    Field out(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const size_t i = size_t(y) * c.w + x;
            const float u = c.U(x), v = c.V(y);
            const float streak = 0.05f * Noise(u / 300.0f, v / 1.2f, sW);
            const float worn =
                SmoothStep(0.3f, 0.6f, height.v[i]) * SmoothStep(-0.2f, 0.3f, Fbm(u / 200.0f, v / 200.0f, sW + 1, 4));
            float val = 0.5f + streak + 0.05f * Fbm(u / 400.0f, v / 400.0f, sW + 2, 4);
            val = val * (0.45f + 0.8f * light.v[i]) + 0.25f * worn;
            val -= 0.3f * grime.v[i] * (0.6f + 0.4f * Noise(u / 4.0f, v / 4.0f, sG + 1));
            out.v[i] = Clamp01(val + 0.015f * Grain(x, y, sF + 1));
        }
    Normalize(out, 0.001f, 0.999f);
    return ToGrey(out);
}

// Hot-dip galvanised steel: zinc spangle, crystals a few centimetres across, each
// with feathery dendrites in its own direction and its own sheen.
Texture Galvanized(const Canvas& c, uint64_t seed) {
    const uint32_t sCell = Sub(seed, 1), sW = Sub(seed, 2), sD = Sub(seed, 3), sOx = Sub(seed, 4);
    Field out(c);
    // Directions at 11.25 + k * 22.5 degrees, as for the noise gradients.
    static const float dirs[8][2] = {{0.98078528f, 0.19509032f},  {0.83146961f, 0.55557023f},
                                     {0.55557023f, 0.83146961f},  {0.19509032f, 0.98078528f},
                                     {-0.19509032f, 0.98078528f}, {-0.55557023f, 0.83146961f},
                                     {-0.83146961f, 0.55557023f}, {-0.98078528f, 0.19509032f}};
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x), v = c.V(y);
            const float wu = u + 15.0f * Fbm(u / 90.0f, v / 90.0f, sW, 3);
            const float wv = v + 15.0f * Fbm(u / 90.0f, v / 90.0f, sW + 1, 3);
            const Cells cell = Worley(wu / 75.0f, wv / 75.0f, sCell);
            const float* dir = dirs[cell.id & 7u];
            const float s = u * dir[0] + v * dir[1], t = -u * dir[1] + v * dir[0];
            const float feather =
                Noise(s / 30.0f, t / 1.6f, sD + (cell.id & 255u)) * 0.6f + Noise(s / 9.0f, t / 0.8f, sD + 7u) * 0.4f;
            const float sheen = 0.3f + 0.5f * HashUnit(cell.id * 0x9E3779B1u);
            const float border = 1.0f - SmoothStep(0.0f, 0.04f, cell.f2 - cell.f1);
            float val = sheen + 0.12f * feather - 0.15f * border;
            const float ox = SmoothStep(0.35f, 0.7f, Fbm(u / 120.0f, v / 120.0f, sOx, 5));
            val = Lerp(val, 0.82f + 0.08f * Noise(u / 4.0f, v / 4.0f, sOx + 1), ox * 0.6f);
            out(x, y) = Clamp01(val + 0.02f * Grain(x, y, sOx + 2));
        }
    Normalize(out, 0.002f, 0.998f);
    for (float& x : out.v) x = 0.1f + 0.85f * x;
    return ToGrey(out);
}

// Hammered copper: overlapping shallow dimples, bright where they face the light,
// verdigris gathering in places.
Texture HammeredCopper(const Canvas& c, uint64_t seed) {
    const uint32_t a = Sub(seed, 1), b = Sub(seed, 2), g = Sub(seed, 3);
    Field height(c);
    Fill(height, c, [&](float u, float v) {
        const Cells big = Worley(u / 34.0f, v / 34.0f, a, 0.9f);
        const Cells small = Worley(u / 13.0f, v / 13.0f, b, 0.9f);
        return 0.6f * big.f1 * big.f1 + 0.25f * small.f1 * small.f1 + 0.02f * Noise(u / 3.0f, v / 3.0f, g);
    });
    const Field light = Shade(height, c, 10.0f, -0.5f, -0.6f, 0.5f);
    const RampStop ramp[] = {{0.0f, {50, 20, 10}},
                             {0.35f, {120, 52, 26}},
                             {0.6f, {184, 96, 52}},
                             {0.85f, {232, 156, 104}},
                             {1.0f, {252, 214, 172}}};
    ColourField out(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const size_t i = size_t(y) * c.w + x;
            const float u = c.U(x), v = c.V(y);
            const float tarnish = 0.12f * Fbm(u / 250.0f, v / 250.0f, g + 1, 4);
            Rgb col = Ramp(ramp, 5, Clamp01(light.v[i] * 1.05f - 0.1f + tarnish));
            const float patina = SmoothStep(0.3f, 0.55f, Fbm(u / 160.0f, v / 160.0f, g + 2, 5)) *
                                 SmoothStep(0.1f, 0.4f, height.v[i] + 0.2f * Noise(u / 5.0f, v / 5.0f, g + 3));
            col = Mix(col, Rgb{86, 150, 124}, patina * 0.8f);
            out.Set(i, col);
        }
    return ToColour(out);
}

// Rust streaks: a painted steel wall bleeding rust from bolts and chips, run down by
// the rain.
Texture RustStreaks(const Canvas& c, uint64_t seed) {
    Rng r(seed);
    const uint32_t sSrc = Sub(seed, 1), sRun = Sub(seed, 2), sPaint = Sub(seed, 3);
    Field source(c);
    const float W = c.Width(), H = c.Height();
    for (int i = 0; i < 60; ++i) {
        const float x = r.Range(0.0f, W), y = r.Chance(0.5f) ? r.Range(0.0f, H * 0.35f) : r.Range(0.0f, H);
        const float rad = r.Range(2.0f, 16.0f);
        ForArea(c, x, y, rad * 2.0f, [&](int px, int py, float u, float v) {
            const float d = BlobDistance(u, v, x, y, rad, 0.5f, sSrc + uint32_t(i));
            const float cov = Clamp01((1.0f - d) * 3.0f);
            if (cov > source(px, py)) source(px, py) = cov;
        });
    }
    for (float x = r.Range(20.0f, 80.0f); x < W; x += r.Range(140.0f, 170.0f)) {
        DrawDisc(source, c, x, 70.0f + r.Normal() * 2.0f, 5.0f, 1.0f, 1.0f);
        DrawDisc(source, c, x, H * 0.62f + r.Normal() * 2.0f, 5.0f, 1.0f, 1.0f);
    }
    // Smear downwards: each pixel keeps the larger of its own source and what runs in
    // from above, which fades with a length that changes from column to column.
    Field run(c);
    for (int x = 0; x < c.w; ++x) {
        float acc = 0.0f;
        const float u = c.U(x);
        const float len = (80.0f + 380.0f * ValueNoise(u / 7.0f, 0.5f, sRun)) * c.k;
        const float keep = 1.0f - 1.0f / len;
        for (int y = 0; y < c.h; ++y) {
            acc = std::max(source(x, y), acc * keep);
            run(x, y) = acc;
        }
    }
    ColourField out(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const size_t i = size_t(y) * c.w + x;
            const float u = c.U(x), v = c.V(y);
            const float streakMod = 0.55f + 0.45f * Noise(u / 2.5f, v / 90.0f, sRun + 1);
            const float s = Clamp01(run.v[i] * streakMod * 1.2f);
            const float dirt = 0.06f * Fbm(u / 300.0f, v / 300.0f, sPaint, 4);
            Rgb col = Scale(Rgb{214, 218, 212}, 0.95f + dirt + 0.02f * Grain(x, y, sPaint + 1));
            const RampStop rust[] = {{0.0f, {196, 140, 96}}, {0.45f, {150, 72, 30}}, {1.0f, {74, 30, 12}}};
            col = Mix(col, Ramp(rust, 3, s), SmoothStep(0.0f, 0.35f, s));
            col = Mix(col, Rgb{70, 30, 14}, source.v[i] * 0.8f);
            out.Set(i, col);
        }
    return ToColour(out);
}

// ---------------------------------------------------------------------------
// Concrete: cast wall with formwork joints, tie holes, bugholes, sand and water marks.
Texture Concrete(const Canvas& c, uint64_t seed) {
    const uint32_t sB = Sub(seed, 1), sA = Sub(seed, 2), sP = Sub(seed, 3), sS = Sub(seed, 4);
    const uint32_t sC = Sub(seed, 5);
    Rng r(seed);
    const float panelW = 800.0f, panelH = 600.0f;
    const float ox = r.Range(0.0f, panelW), oy = r.Range(0.0f, panelH);
    Field out(c), height(c);
    Field broad = Low(c, [&](float u, float v) {
        const float stain = SmoothStep(0.0f, 0.5f, Fbm(u / 45.0f, v / 500.0f, sS, 4)) *
                            SmoothStep(-0.2f, 0.3f, Fbm(u / 400.0f, v / 300.0f, sS + 1, 3));
        return 0.6f + 0.07f * Fbm(u / 420.0f, v / 420.0f, sB, 5) - 0.12f * stain;
    });
    Field crackF =
        Low(c, [&](float u, float v) { return SmoothStep(0.965f, 0.99f, Ridged(u / 380.0f, v / 380.0f, sC, 5)); });
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x), v = c.V(y);
            float val = broad(x, y) + 0.035f * Fbm(u / 50.0f, v / 50.0f, sB + 1, 3);
            float h = 0.5f;
            const Cells agg = Worley(u / 9.0f, v / 9.0f, sA);
            if (HashUnit(agg.id) < 0.35f)
                val += (HashUnit(agg.id * 0x9E3779B1u) - 0.5f) * 0.12f * (1.0f - SmoothStep(0.25f, 0.4f, agg.f1));
            const Cells pore = Worley(u / 28.0f, v / 28.0f, sP);
            const float pr = HashUnit(pore.id) < 0.3f ? 0.05f + 0.13f * HashUnit(pore.id * 0x2545F491u) : 0.0f;
            const float hole = 1.0f - SmoothStep(pr - 0.02f, pr + 0.01f, pore.f1);
            h -= 0.5f * hole;
            // Formwork: panel joints and tie holes.
            const float pu = (u + ox) / panelW, pv = (v + oy) / panelH;
            const float ju = Abs(pu - float(FloorInt(pu + 0.5f))) * panelW;
            const float jv = Abs(pv - float(FloorInt(pv + 0.5f))) * panelH;
            const float joint = 1.0f - SmoothStep(0.8f, 2.5f, std::min(ju, jv));
            h -= 0.15f * joint;
            val -= 0.05f * joint;
            const float tu = (pu - float(FloorInt(pu))) * 2.0f, tv = (pv - float(FloorInt(pv))) * 2.0f;
            const float tx = (tu - float(FloorInt(tu)) - 0.5f) * panelW * 0.5f;
            const float ty = (tv - float(FloorInt(tv)) - 0.5f) * panelH * 0.5f;
            const float td = Sqrt(tx * tx + ty * ty);
            h -= 0.6f * (1.0f - SmoothStep(9.0f, 11.0f, td));
            val -= 0.06f * (1.0f - SmoothStep(11.0f, 30.0f, td));
            val -= 0.3f * crackF(x, y);
            h += 0.04f * Noise(u / 1.8f, v / 1.8f, sA + 1);
            val += 0.03f * Noise(u / 1.2f, v / 1.2f, sA + 2) + 0.02f * Grain(x, y, sA + 3);
            out(x, y) = val;
            height(x, y) = h;
        }
    const Field light = Shade(height, c, 3.0f);
    for (size_t i = 0; i < out.v.size(); ++i) out.v[i] *= 0.45f + 0.85f * light.v[i];
    Normalize(out, 0.001f, 0.999f);
    for (float& x : out.v) x = 0.08f + 0.88f * x;
    return ToGrey(out);
}

// Aggregate: stones packed in a binder: asphalt, sandpaper, cork.
Texture Aggregate(const Canvas& c, uint64_t seed, const AggregateParams& p) {
    const uint32_t sA = Sub(seed, 1), sB = Sub(seed, 2), sN = Sub(seed, 3);
    Field tone(c), height(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x), v = c.V(y);
            const float rough = 0.08f * Noise(u / (p.grain * 0.3f), v / (p.grain * 0.3f), sN);
            float t = p.binder + 0.06f * Noise(u / (p.grain * 0.5f), v / (p.grain * 0.5f), sN + 1);
            float h = 0.0f;
            const Cells a = Worley(u / p.grain, v / p.grain, sA);
            const float ra = 0.3f + 0.15f * HashUnit(a.id);
            const float da = (a.f1 + rough) / ra;
            if (da < 1.0f) {
                h = Sqrt(1.0f - da * da);
                t = Lerp(t, p.lo + (p.hi - p.lo) * HashUnit(a.id * 0x9E3779B1u), SmoothStep(1.0f, 0.85f, da));
            }
            const Cells b = Worley(u / (p.grain * 2.6f), v / (p.grain * 2.6f), sB);
            if (HashUnit(b.id) < 0.3f) {
                const float rb = 0.25f + 0.12f * HashUnit(b.id * 0x2545F491u);
                const float db = (b.f1 + rough * 0.4f) / rb;
                if (db < 1.0f) {
                    h = std::max(h, 1.3f * Sqrt(1.0f - db * db));
                    t = Lerp(t, p.lo + (p.hi - p.lo) * HashUnit(b.id * 0x9E3779B1u), SmoothStep(1.0f, 0.9f, db));
                }
            }
            t += 0.05f * Noise(u / 1.0f, v / 1.0f, sN + 2) + 0.03f * Grain(x, y, sN + 3);
            tone(x, y) = t;
            height(x, y) = h;
        }
    const Field light = Shade(height, c, p.relief * 4.0f / p.grain);
    Field out(c);
    for (size_t i = 0; i < out.v.size(); ++i) out.v[i] = tone.v[i] * (0.45f + 0.8f * light.v[i]);
    Normalize(out, 0.002f, 0.998f);
    if (!p.colour) return ToGrey(out);
    ColourField col(c);
    for (size_t i = 0; i < out.v.size(); ++i) col.Set(i, Mix(p.dark, p.light, out.v[i]));
    return ToColour(col);
}

// Plaster: trowelled or knocked-down spatter, lit from the side.
Texture Plaster(const Canvas& c, uint64_t seed, const PlasterParams& p) {
    const uint32_t a = Sub(seed, 1), b = Sub(seed, 2), d = Sub(seed, 3), e = Sub(seed, 4);
    Field height(c);
    Fill(height, c, [&](float u, float v) {
        const float spat = Fbm(u / p.scale, v / p.scale, a, 5, 0.55f);
        const float top = SmoothStep(-0.02f, 0.06f, spat) * (1.0f - p.knock * 0.6f) +
                          p.knock * 0.6f * SmoothStep(-0.02f, 0.25f, spat);
        const float sand =
            0.12f * Noise(u / 1.5f, v / 1.5f, b) + 0.2f * Fbm(u / (p.scale * 0.15f), v / (p.scale * 0.15f), d, 3);
        return 0.6f * top + 0.4f * sand * (0.5f + 0.5f * top);
    });
    const Field light = Shade(height, c, p.relief);
    Field out(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const size_t i = size_t(y) * c.w + x;
            const float u = c.U(x), v = c.V(y);
            float val = p.base * (0.5f + 0.65f * light.v[i]) + 0.04f * Fbm(u / 300.0f, v / 300.0f, e, 4);
            if (p.cracks > 0.0f)
                val -= 0.4f * p.cracks * SmoothStep(0.955f, 0.985f, Ridged(u / 320.0f, v / 320.0f, e + 1, 5));
            out.v[i] = val + 0.015f * Grain(x, y, e + 2);
        }
    Normalize(out, 0.001f, 0.999f);
    for (float& x : out.v) x = 0.06f + 0.9f * x;
    return ToGrey(out);
}

// Brick wall: running bond, bricks of mixed firing with chipped arrises, recessed
// sandy mortar, soot and efflorescence.
Texture BrickWall(const Canvas& c, uint64_t seed) {
    const uint32_t sW = Sub(seed, 1), sB = Sub(seed, 2), sM = Sub(seed, 3), sT = Sub(seed, 4);
    const uint32_t sG = Sub(seed, 5);
    const float course = 68.0f, len = 210.0f, joint = 5.0f;
    static const Rgb palette[] = {{150, 62, 42}, {128, 52, 38}, {170, 86, 56},  {112, 62, 46},
                                  {160, 72, 46}, {82, 44, 36},  {182, 104, 70}, {140, 70, 52}};
    Field height(c);
    ColourField base(c);
    Field warpU = Low(c, [&](float u, float v) { return u + 2.0f * Fbm(u / 60.0f, v / 60.0f, sW, 3); });
    Field warpV = Low(c, [&](float u, float v) { return v + 2.0f * Fbm(u / 60.0f, v / 60.0f, sW + 1, 3); });
    Field soot = Low(c, [&](float u, float v) { return SmoothStep(-0.1f, 0.5f, Fbm(u / 260.0f, v / 180.0f, sG, 5)); });
    Field salt = Low(c, [&](float u, float v) {
        return SmoothStep(0.35f, 0.7f, Fbm(u / 150.0f, v / 150.0f, sG + 1, 5) + 0.25f * (v / 1200.0f));
    });
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x), v = c.V(y);
            const float wu = warpU(x, y), wv = warpV(x, y);
            const int row = FloorInt(wv / course);
            const float off = (row & 1) ? len * 0.5f : 0.0f;
            const float su = (wu + off) / len;
            const int col = FloorInt(su);
            const float lx = (su - float(col)) * len, ly = wv - float(row) * course;
            float e = std::min(std::min(lx - joint, len - joint - lx), std::min(ly - joint, course - joint - ly));
            const uint32_t id = Hash(col, row, sB);
            // Chipped arrises: the brick's outline is eaten in places.
            e += 3.0f * Fbm(u / 14.0f, v / 14.0f, sB + 1, 3) - 1.0f;
            const float brick = SmoothStep(0.0f, 1.2f, e);
            const float mottle = Fbm(u / 30.0f, v / 30.0f, sT, 4);
            Rgb bc = palette[id & 7u];
            bc = Scale(bc, 0.9f + 0.2f * HashUnit(id * 0x9E3779B1u) + 0.12f * mottle);
            // Darker fire flash toward one end of some bricks.
            if (HashUnit(id * 0x2545F491u) < 0.3f) bc = Scale(bc, 0.75f + 0.25f * Clamp01(lx / len));
            const Cells pit = Worley(u / 6.0f, v / 6.0f, sT + 1);
            const float pd = HashUnit(pit.id) < 0.25f ? 1.0f - SmoothStep(0.1f, 0.25f, pit.f1) : 0.0f;
            const float sand = Noise(u / 1.4f, v / 1.4f, sM);
            const Rgb mc =
                Scale(Rgb{168, 160, 148}, 0.85f + 0.15f * sand + 0.06f * Fbm(u / 40.0f, v / 40.0f, sM + 1, 3));
            const Rgb col3 = Mix(mc, Scale(bc, 1.0f - 0.35f * pd), brick);
            height(x, y) =
                brick * (0.7f + 0.12f * SmoothStep(0.0f, 5.0f, e) + 0.05f * mottle - 0.2f * pd) + 0.04f * sand;
            base.Set(size_t(y) * c.w + x, col3);
        }
    const Field light = Shade(height, c, 3.0f);
    ColourField out(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const size_t i = size_t(y) * c.w + x;
            Rgb col{base.r.v[i], base.g.v[i], base.b.v[i]};
            col = Scale(col, (0.45f + 0.8f * light.v[i]) * (1.0f - 0.35f * soot.v[i]));
            col = Mix(col, Rgb{214, 210, 200}, salt.v[i] * 0.55f);
            out.Set(i, col);
        }
    return ToColour(out);
}

// Marble: white stone with meandering veins along the level lines of a warped field,
// and cloudy grey veining between them.
Texture Marble(const Canvas& c, uint64_t seed) {
    const uint32_t a = Sub(seed, 1), b = Sub(seed, 2), d = Sub(seed, 3), e = Sub(seed, 4);
    Field warpU = Low(c, [&](float u, float v) { return u + 150.0f * Fbm(u / 500.0f, v / 500.0f, a, 5); });
    Field warpV = Low(c, [&](float u, float v) { return v + 150.0f * Fbm(u / 500.0f, v / 500.0f, a + 1, 5); });
    Field softF = Low(c, [&](float u, float v) { return 0.06f * Fbm(u / 200.0f, v / 200.0f, e + 1, 4); });
    // The vein fields are smooth down to 20 units: the coarse grid keeps their level lines.
    Field tF(c), t2F(c);
    {
        const float step = float(std::max(1, int(2.0f * c.k + 0.5f)));
        const int gw = int(float(c.w) / step) + 2, gh = int(float(c.h) / step) + 2;
        Field g1(gw, gh), g2(gw, gh);
        for (int gy = 0; gy < gh; ++gy)
            for (int gx = 0; gx < gw; ++gx) {
                const float px = float(gx) * step, py = float(gy) * step;
                const float wu = warpU.Sample(px, py), wv = warpV.Sample(px, py);
                g1(gx, gy) = Fbm(wu / 650.0f, wv / 900.0f, b, 6, 0.55f);
                g2(gx, gy) = Fbm(wu / 260.0f, wv / 340.0f, b + 1, 5, 0.55f);
            }
        for (int y = 0; y < c.h; ++y)
            for (int x = 0; x < c.w; ++x) {
                tF(x, y) = g1.Sample(float(x) / step, float(y) / step);
                t2F(x, y) = g2.Sample(float(x) / step, float(y) / step);
            }
    }
    ColourField out(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x), v = c.V(y);
            const float wu = warpU(x, y), wv = warpV(x, y);
            const float t = tF(x, y);
            const float px = 0.0015f;
            const float w1 = 0.006f + 0.008f * (0.5f + 0.5f * Noise(u / 120.0f, v / 120.0f, d));
            const float vein1 = 1.0f - SmoothStep(w1, w1 + px, Abs(t));
            const float t2 = t2F(x, y);
            const float vein2 = (1.0f - SmoothStep(0.003f, 0.006f, Abs(t2 - 0.12f))) * 0.7f;
            const float cloud = SmoothStep(0.55f, 0.95f, Ridged(wu / 180.0f, wv / 180.0f, e, 5)) * 0.45f;
            const float soft = softF(x, y) + 0.12f * (1.0f - SmoothStep(0.0f, 0.08f, Abs(t)));
            Rgb col = Scale(Rgb{240, 238, 232}, 1.0f - soft);
            col = Mix(col, Rgb{150, 150, 156}, cloud);
            col = Mix(col, Rgb{112, 112, 120}, vein2);
            col = Mix(col, Rgb{96, 86, 70}, vein1);
            col = Scale(col, 1.0f + 0.02f * Grain(x, y, e + 2));
            out.Set(size_t(y) * c.w + x, col);
        }
    return ToColour(out);
}

// Granite: interlocking crystals of quartz, feldspar and mica, polished flat.
Texture Granite(const Canvas& c, uint64_t seed) {
    const uint32_t a = Sub(seed, 1), b = Sub(seed, 2), d = Sub(seed, 3);
    static const Rgb minerals[] = {{26, 24, 26},    {40, 38, 40},    {150, 146, 142}, {176, 170, 164},
                                   {196, 146, 128}, {206, 160, 140}, {222, 212, 204}, {186, 130, 116}};
    ColourField out(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x), v = c.V(y);
            const float wu = u + 2.0f * Noise(u / 6.0f, v / 6.0f, d), wv = v + 2.0f * Noise(u / 6.0f, v / 6.0f, d + 1);
            const Cells small = Worley(wu / 4.5f, wv / 4.5f, a);
            const Cells big = Worley(wu / 13.0f, wv / 13.0f, b);
            uint32_t id = small.id;
            if (HashUnit(big.id) < 0.45f && big.f1 < 0.42f) id = big.id;
            Rgb col = minerals[(id >> 3) & 7u];
            col = Scale(col, 0.9f + 0.2f * HashUnit(id * 0x9E3779B1u) + 0.06f * Noise(u / 1.5f, v / 1.5f, d + 2));
            col = Scale(col, 1.0f + 0.05f * Fbm(u / 300.0f, v / 300.0f, d + 3, 3));
            out.Set(size_t(y) * c.w + x, col);
        }
    return ToColour(out);
}

// Slate: dark cleft stone split along its layers into flat terraces with sharp
// risers, each plate a slightly different grey, with fine striations.
Texture Slate(const Canvas& c, uint64_t seed) {
    const uint32_t a = Sub(seed, 1), b = Sub(seed, 2), d = Sub(seed, 3);
    Field layer = Low(c, [&](float u, float v) {
        return 5.0f * Fbm(u / 520.0f, (v + u * 0.15f) / 360.0f, a, 5) + 0.7f * Fbm(u / 70.0f, v / 55.0f, a + 1, 3);
    });
    Field height(c), tone(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x), v = c.V(y);
            const float l = layer(x, y) + 0.04f * Noise(u / 6.0f, v / 6.0f, b + 1);
            const int step = FloorInt(l);
            const float f = l - float(step);
            const float riser = SmoothStep(0.9f, 1.0f, f);
            const float stri = Noise(u / 220.0f, (v + u * 0.15f) / 1.6f, b);
            height(x, y) = (float(step) + riser) * 0.1f + 0.01f * stri;
            tone(x, y) = 0.32f + 0.1f * (HashUnit(Hash1(uint32_t(step + 1000), d)) - 0.5f) + 0.03f * stri +
                         0.05f * Fbm(u / 200.0f, v / 200.0f, d + 1, 3) - 0.1f * riser * (1.0f - riser) * 4.0f;
        }
    const Field light = Shade(height, c, 6.0f);
    Field out(c);
    for (size_t i = 0; i < out.v.size(); ++i) out.v[i] = tone.v[i] * (0.45f + 0.85f * light.v[i]);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) out(x, y) += 0.015f * Grain(x, y, d + 2);
    Normalize(out, 0.001f, 0.999f);
    for (float& x : out.v) x = 0.05f + 0.8f * x;
    return ToGrey(out);
}

// Sandstone: bedded layers of warm sand colours, cross-bedded, pitted by weather.
Texture Sandstone(const Canvas& c, uint64_t seed) {
    const uint32_t a = Sub(seed, 1), b = Sub(seed, 2), d = Sub(seed, 3), e = Sub(seed, 4);
    const RampStop ramp[] = {{0.0f, {128, 88, 60}},
                             {0.3f, {176, 132, 92}},
                             {0.55f, {204, 166, 120}},
                             {0.8f, {224, 196, 156}},
                             {1.0f, {238, 220, 190}}};
    Field height(c), t(c);
    Field broad = Low(c, [&](float u, float v) { return 0.3f * Fbm(u / 250.0f, v / 250.0f, e + 1, 4); });
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x), v = c.V(y);
            const float s =
                v / 90.0f + 1.6f * Fbm(u / 700.0f, v / 350.0f, a, 4) + 0.3f * Fbm(u / 80.0f, v / 50.0f, a + 1, 3);
            const float band = (0.5f * Tri(s * 0.5f) + 0.5f * Tri(s * 2.3f + 0.3f)) *
                               (0.3f + 0.7f * SmoothStep(-0.3f, 0.4f, Fbm(u / 300.0f, v / 300.0f, a + 2, 3)));
            // Weathering pits, centred in their cells so that none is cut off.
            const Cells hole = Worley(u / 90.0f, v / 70.0f, b, 0.5f);
            const float e2 = HashUnit(hole.id * 0x9E3779B1u);
            const float hr = HashUnit(hole.id) < 0.1f ? 0.05f + 0.2f * e2 * e2 : 0.0f;
            const float pit = (1.0f - SmoothStep(hr * 0.3f, hr, hole.f1 + 0.04f * Noise(u / 8.0f, v / 8.0f, b + 1))) *
                              (0.5f + 0.5f * HashUnit(hole.id * 0x2545F491u));
            const float grain = Noise(u / 1.2f, v / 1.2f, d) + Grain(x, y, d + 1);
            height(x, y) = 0.25f * band + 0.1f * Fbm(u / 40.0f, v / 40.0f, e, 3) - 0.6f * pit + 0.03f * grain;
            t(x, y) = 0.3f + 0.4f * band + 1.4f * broad(x, y) + 0.2f * grain - 0.3f * pit;
        }
    const Field light = Shade(height, c, 3.0f);
    ColourField out(c);
    for (size_t i = 0; i < out.r.v.size(); ++i)
        out.Set(i, Scale(Ramp(ramp, 5, Clamp01(t.v[i])), 0.5f + 0.75f * light.v[i]));
    return ToColour(out);
}

// ---------------------------------------------------------------------------
// Wood: boards cut from a log, so the growth rings show as the surface slices the
// cylinders: stripes along the board and arches where the cut meets the rings.
Texture Wood(const Canvas& c, uint64_t seed, const WoodParams& p) {
    Rng r(seed);
    struct Board {
        float x0, x1, y0, y1;
        float axis, depth, slope, tone;
        uint32_t seed;
        std::vector<std::pair<float, float>> knots;
    };
    std::vector<Board> boards;
    const float W = c.Width(), H = c.Height();
    const float rowH = p.plank > 0.0f ? p.plank : H + 1.0f;
    for (float y = 0.0f; y < H; y += rowH) {
        for (float x = -r.Range(0.0f, 900.0f); x < W;) {
            Board b;
            b.x0 = x;
            x += p.plank > 0.0f ? r.Range(600.0f, 1500.0f) : W + 1000.0f;
            b.x1 = x;
            b.y0 = y;
            b.y1 = y + rowH;
            // A single board shows its heart; planks are cut from anywhere in the log.
            b.axis = p.plank > 0.0f ? r.Range(-0.3f, 1.3f) * rowH : r.Range(0.35f, 0.65f) * rowH;
            b.depth = r.Range(0.0f, 6.0f) * p.ring;
            b.slope = r.Normal() * 0.04f;
            b.tone = r.Range(-0.08f, 0.08f);
            b.seed = r.Next();
            const int nk = r.Chance(p.knots) ? 1 + r.Below(2) : 0;
            for (int k = 0; k < nk; ++k) b.knots.push_back({r.Range(b.x0, b.x1), r.Range(y, y + rowH)});
            boards.push_back(b);
        }
    }
    // Boards sorted by row, then by x: a scan finds the one under each pixel.
    Field tone(c), height(c);
    const uint32_t sPore = Sub(seed, 1);
    for (int y = 0; y < c.h; ++y) {
        const float v = c.V(y);
        size_t bi = 0;
        while (bi < boards.size() && !(v >= boards[bi].y0 && v < boards[bi].y1)) ++bi;
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x);
            while (bi + 1 < boards.size() && boards[bi + 1].y0 == boards[bi].y0 && u >= boards[bi + 1].x0) ++bi;
            const Board& b = boards[bi];
            const float a = u - b.x0, across = v - b.y0;
            const float depth = b.depth + a * b.slope + 7.0f * p.ring * Fbm(a / 700.0f, 0.5f, b.seed, 3);
            const float dx = across - b.axis;
            float rings = Sqrt(dx * dx + depth * depth) / p.ring;
            rings += 0.7f * Fbm(a / 500.0f, across / 150.0f, b.seed + 1, 4) +
                     0.12f * Noise(a / 40.0f, across / 12.0f, b.seed + 2);
            float knot = 0.0f;
            for (const auto& k : b.knots) {
                const float kx = (u - k.first) / 1.6f, ky = v - k.second;
                const float d2 = kx * kx + ky * ky;
                rings += 6.0f / (1.0f + d2 / 200.0f);
                knot = std::max(knot, 1.0f - SmoothStep(5.0f, 12.0f, Sqrt(d2)));
            }
            const float f = rings - float(FloorInt(rings));
            const float late = SmoothStep(0.5f, 0.82f, f) * (1.0f - SmoothStep(0.93f, 1.0f, f));
            const float pores = SmoothStep(0.3f, 0.9f, Noise(a / 22.0f, across / 0.7f, sPore)) * 0.35f;
            const float fine = 0.08f * Noise(a / 60.0f, across / 1.5f, sPore + 1);
            float t = 0.75f * late + pores * (0.5f + late) + fine + knot * 0.8f;
            // Seams between boards.
            const float edge = std::min(std::min(a, b.x1 - u), std::min(across, b.y1 - v));
            const float seam = p.plank > 0.0f ? 1.0f - SmoothStep(0.6f, 2.0f, edge) : 0.0f;
            float h = 0.6f - 0.5f * seam - 0.1f * (1.0f - SmoothStep(2.0f, 8.0f, edge)) * (p.plank > 0.0f);
            if (p.weathered) {
                // Soft earlywood wears away, leaving the latewood ridges; checks open along the
                // grain.
                h += 0.3f * late - 0.15f * pores;
                const float check = SmoothStep(0.93f, 0.985f, Ridged(a / 260.0f, across / 4.0f, b.seed + 3, 3));
                h -= 0.5f * check;
                t += 0.6f * check;
            } else {
                h += 0.04f * late;
            }
            tone(x, y) = t + b.tone;
            height(x, y) = h;
        }
    }
    const Field light = Shade(height, c, p.weathered ? 6.0f : 3.0f);
    if (p.weathered) {
        Field out(c);
        const uint32_t sG = Sub(seed, 2);
        for (int y = 0; y < c.h; ++y)
            for (int x = 0; x < c.w; ++x) {
                const size_t i = size_t(y) * c.w + x;
                const float silver = 0.62f + 0.08f * Fbm(c.U(x) / 300.0f, c.V(y) / 300.0f, sG, 4);
                out.v[i] = (silver - 0.35f * tone.v[i]) * (0.45f + 0.8f * light.v[i]) + 0.015f * Grain(x, y, sG + 1);
            }
        Normalize(out, 0.001f, 0.999f);
        for (float& x : out.v) x = 0.04f + 0.9f * x;
        return ToGrey(out);
    }
    ColourField out(c);
    for (size_t i = 0; i < out.r.v.size(); ++i) {
        const Rgb col = Mix(p.early, p.late, Clamp01(tone.v[i]));
        out.Set(i, Scale(col, 0.55f + 0.65f * light.v[i]));
    }
    return ToColour(out);
}

// Bark: vertical ridges split by deep furrows into long plates, with lichen.
Texture TreeBark(const Canvas& c, uint64_t seed) {
    const uint32_t a = Sub(seed, 1), b = Sub(seed, 2), d = Sub(seed, 3), e = Sub(seed, 4);
    Field height(c), lichen(c);
    Field warpU = Low(c, [&](float u, float v) { return u + 35.0f * Fbm(u / 200.0f, v / 500.0f, a, 4); });
    Field moss =
        Low(c, [&](float u, float v) { return SmoothStep(0.35f, 0.6f, Fbm(u / 110.0f, v / 110.0f, e + 1, 5)); });
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x), v = c.V(y);
            const float wu = warpU(x, y);
            const float ridge = Ridged(wu / 55.0f, v / 320.0f, b, 5);
            const Cells plate = Worley(wu / 55.0f, v / 150.0f, d);
            const float split = SmoothStep(0.0f, 0.2f, plate.f2 - plate.f1);
            height(x, y) = 0.5f * ridge + 0.4f * split * ridge + 0.08f * Fbm(u / 6.0f, v / 10.0f, e, 3);
            lichen(x, y) = moss(x, y) * SmoothStep(0.35f, 0.6f, height(x, y));
        }
    const Field light = Shade(height, c, 6.0f);
    const RampStop ramp[] = {
        {0.0f, {22, 18, 14}}, {0.35f, {70, 58, 46}}, {0.7f, {120, 106, 90}}, {1.0f, {160, 148, 130}}};
    ColourField out(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const size_t i = size_t(y) * c.w + x;
            Rgb col = Ramp(ramp, 4, Clamp01(height.v[i] * 1.2f));
            col =
                Mix(col, Rgb{150, 158, 120}, lichen.v[i] * (0.6f + 0.4f * Noise(c.U(x) / 3.0f, c.V(y) / 3.0f, e + 2)));
            out.Set(i, Scale(col, 0.45f + 0.8f * light.v[i]));
        }
    return ToColour(out);
}

// ---------------------------------------------------------------------------
// Paper: a sheet of felted fibres with cloudy formation; art papers have a tooth, old
// ones foxing and browned edges.
Texture Paper(const Canvas& c, uint64_t seed, const PaperParams& p) {
    Rng r(seed);
    const uint32_t sB = Sub(seed, 1), sT = Sub(seed, 2), sE = Sub(seed, 3);
    Field darkF(c), lightF(c);
    const float W = c.Width(), H = c.Height();
    const int fibres = int(p.fibres * 30000.0f);
    for (int i = 0; i < fibres; ++i) {
        float dx, dy;
        RandomDir(r, dx, dy);
        Field& m = r.Chance(0.5f) ? darkF : lightF;
        DrawStroke(m, c,
                   ScratchPath(r, r.Range(0.0f, W), r.Range(0.0f, H), dx, dy, r.Range(6.0f, 30.0f),
                               r.Range(0.2f, 0.45f), r.Range(0.1f, 0.35f), 0.03f, 0.0f));
    }
    Field fox(c);
    const int spots = int(p.foxing * 400.0f);
    for (int i = 0; i < spots; ++i) {
        const float x = r.Range(0.0f, W), y = r.Range(0.0f, H);
        const float e = r.Uniform();
        const float rad = 1.0f + 7.0f * e * e;
        DrawDisc(fox, c, x, y, rad * 2.5f, 0.25f, rad * 2.0f);
        DrawDisc(fox, c, x, y, rad, r.Range(0.5f, 0.9f), 0.8f);
    }
    Field shade(c, 1.0f);
    if (p.tooth > 0.0f) {
        Field h(c);
        Fill(h, c, [&](float u, float v) {
            const Cells cell = Worley(u / 9.0f, v / 9.0f, sT);
            return 0.5f * Fbm(u / 14.0f, v / 14.0f, sT + 1, 4) + 0.5f * (1.0f - cell.f1);
        });
        shade = Shade(h, c, p.tooth * 2.0f);
        for (float& s : shade.v) s = Lerp(1.0f, s * 1.6f, 0.6f);
    }
    ColourField out(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const size_t i = size_t(y) * c.w + x;
            const float u = c.U(x), v = c.V(y);
            float k = 1.0f + p.blotch * Fbm(u / 60.0f, v / 60.0f, sB, 4) +
                      0.5f * p.blotch * Fbm(u / 300.0f, v / 300.0f, sB + 1, 4);
            k *= 1.0f - 0.25f * darkF.v[i];
            k += 0.1f * lightF.v[i];
            k *= shade.v[i];
            Rgb col = Scale(p.tint, k + 0.01f * Grain(x, y, sB + 2));
            if (p.edges > 0.0f) {
                const float d =
                    std::min(std::min(u, W - u), std::min(v, H - v)) + 60.0f * Fbm(u / 90.0f, v / 90.0f, sE, 4);
                const float burn = p.edges * (1.0f - SmoothStep(0.0f, 220.0f, d));
                col = Mix(col, Rgb{128, 84, 40}, burn * burn);
            }
            col = Mix(col, Rgb{150, 96, 48}, fox.v[i] * 0.7f);
            if (!p.colour) {
                const float g = col.r * 0.3f + col.g * 0.59f + col.b * 0.11f;
                col = {g, g, g};
            }
            out.Set(i, col);
        }
    if (p.colour) return ToColour(out);
    // A white sheet, but with the tooth spread over enough levels to serve as relief.
    Normalize(out.r, 0.001f, 0.999f);
    for (float& g : out.r.v) g = 0.45f + 0.55f * g;
    return ToGrey(out.r);
}

// Crumpled paper: a sheet folded into flat facets between straight creases. Each
// cell of three cellular layers tilts the sheet its own way; the tilts add up, so
// the light changes abruptly at every crease and stays flat within a facet.
Texture CrumpledPaper(const Canvas& c, uint64_t seed) {
    const uint32_t sW = Sub(seed, 1), sC = Sub(seed, 2), sG = Sub(seed, 3);
    Field warpU = Low(c, [&](float u, float v) { return u + 40.0f * Fbm(u / 320.0f, v / 320.0f, sW, 3); });
    Field warpV = Low(c, [&](float u, float v) { return v + 40.0f * Fbm(u / 320.0f, v / 320.0f, sW + 1, 3); });
    // Soft bulges within the facets.
    Field bulge = Low(c, [&](float u, float v) { return Fbm(u / 200.0f, v / 200.0f, sW + 2, 3); });
    const Field soft = Shade(bulge, c, 15.0f);
    struct Layer {
        float cell, tilt;
    };
    const Layer layers[] = {{260.0f, 0.8f}, {110.0f, 0.45f}, {45.0f, 0.2f}};
    const float lx = -0.5f, ly = -0.6f, lz = 0.62f;
    const float ln = Sqrt(lx * lx + ly * ly + lz * lz);
    Field out(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const float wu = warpU(x, y), wv = warpV(x, y);
            float tx = 0.0f, ty = 0.0f, crease = 0.0f;
            for (int l = 0; l < 3; ++l) {
                const Cells cell = Worley(wu / layers[l].cell, wv / layers[l].cell, sC + uint32_t(l));
                tx += layers[l].tilt * (HashUnit(cell.id) - 0.5f);
                ty += layers[l].tilt * (HashUnit(cell.id * 0x9E3779B1u) - 0.5f);
                const float px = 1.5f / (layers[l].cell * c.k);
                crease = std::max(crease, (1.0f - SmoothStep(0.0f, px, cell.f2 - cell.f1)) * layers[l].tilt);
            }
            const float len = Sqrt(tx * tx + ty * ty + 1.0f);
            float light = (-tx * lx - ty * ly + lz) / (len * ln);
            light -= 0.12f * crease;
            const float grain = 0.025f * Noise(c.U(x) / 2.5f, c.V(y) / 2.5f, sG) + 0.015f * Grain(x, y, sG + 1);
            out(x, y) = light * (0.7f + 0.45f * soft(x, y)) + grain;
        }
    Normalize(out, 0.002f, 0.998f);
    for (float& x : out.v) x = 0.1f + 0.88f * x;
    return ToGrey(out);
}

// ---------------------------------------------------------------------------
// Animal coats.

// Leopard: broken rosettes round a darker centre, solid spots between, over golden fur.
Texture Leopard(const Canvas& c, uint64_t seed) {
    const uint32_t sW = Sub(seed, 1), sR = Sub(seed, 2), sG = Sub(seed, 3), sS = Sub(seed, 4);
    const uint32_t sF = Sub(seed, 5), sT = Sub(seed, 6);
    Field warpU = Low(c, [&](float u, float v) { return u + 12.0f * Fbm(u / 60.0f, v / 60.0f, sW, 3); });
    Field warpV = Low(c, [&](float u, float v) { return v + 12.0f * Fbm(u / 60.0f, v / 60.0f, sW + 1, 3); });
    Field lightF = Low(c, [&](float u, float v) { return Fbm(u / 400.0f, v / 400.0f, sT, 4); });
    ColourField out(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x), v = c.V(y);
            const float wu = warpU(x, y), wv = warpV(x, y);
            const Cells cell = Worley(wu / 62.0f, wv / 55.0f, sR, 0.8f);
            const float d = cell.f1 + 0.07f * Fbm(u / 7.0f, v / 7.0f, sR + 1, 3);
            const float r0 = 0.18f + 0.05f * HashUnit(cell.id), r1 = 0.37f + 0.06f * HashUnit(cell.id * 0x9E3779B1u);
            float ring = SmoothStep(r0 - 0.025f, r0 + 0.025f, d) * (1.0f - SmoothStep(r1 - 0.025f, r1 + 0.025f, d));
            ring *= SmoothStep(-0.3f, -0.12f, Noise(wu / 10.0f, wv / 10.0f, sG));
            const float centre = 1.0f - SmoothStep(r0 - 0.02f, r0 + 0.03f, d);
            float spot = 0.0f;
            if (d > r1 + 0.06f) {
                const Cells s = Worley(wu / 20.0f, wv / 20.0f, sS, 0.9f);
                const float sr = HashUnit(s.id) < 0.5f ? 0.16f + 0.12f * HashUnit(s.id * 0x2545F491u) : 0.0f;
                spot = 1.0f - SmoothStep(sr - 0.05f, sr + 0.02f, s.f1 + 0.1f * Noise(u / 4.0f, v / 4.0f, sS + 1));
            }
            const float light = lightF(x, y);
            Rgb fur = Mix(Rgb{196, 142, 66}, Rgb{230, 196, 128}, Clamp01(0.45f + 0.8f * light));
            fur = Mix(fur, Rgb{176, 108, 44}, centre * 0.7f);
            const float hair = 0.09f * Noise(u / 1.0f, v / 4.0f, sF) + 0.05f * Noise(u / 0.6f, v / 2.0f, sF + 1);
            const float mark = std::max(ring, spot);
            Rgb col = Mix(fur, Rgb{34, 24, 16}, mark);
            col = Scale(col, 1.0f + hair);
            out.Set(size_t(y) * c.w + x, col);
        }
    return ToColour(out);
}

// Zebra: black stripes on white that fork and bend, from the level lines of a warped
// ramp.
Texture Zebra(const Canvas& c, uint64_t seed) {
    const uint32_t a = Sub(seed, 1), b = Sub(seed, 2), d = Sub(seed, 3), e = Sub(seed, 4);
    Field out(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x), v = c.V(y);
            const float s = u / 46.0f + v / 260.0f + 2.2f * Fbm(u / 500.0f, v / 380.0f, a, 4) +
                            0.35f * Fbm(u / 110.0f, v / 110.0f, b, 3);
            const float width = 0.5f + 0.12f * Fbm(u / 300.0f, v / 300.0f, d, 3);
            const float t = Tri(s);
            const float aa = 0.03f;
            const float stripe = SmoothStep(width - aa, width + aa, t);
            const float hair = 0.04f * Noise(u / 1.0f, v / 3.5f, e) + 0.02f * Grain(x, y, e + 1);
            out(x, y) = Clamp01(Lerp(0.93f, 0.07f, stripe) + hair);
        }
    return ToGrey(out);
}

// Giraffe: large brown patches with ragged edges, parted by a net of cream lines.
Texture Giraffe(const Canvas& c, uint64_t seed) {
    const uint32_t sW = Sub(seed, 1), sC = Sub(seed, 2), sE = Sub(seed, 3), sF = Sub(seed, 4);
    Field warpU = Low(c, [&](float u, float v) { return u + 25.0f * Fbm(u / 150.0f, v / 150.0f, sW, 4); });
    Field warpV = Low(c, [&](float u, float v) { return v + 25.0f * Fbm(u / 150.0f, v / 150.0f, sW + 1, 4); });
    ColourField out(c);
    for (int y = 0; y < c.h; ++y)
        for (int x = 0; x < c.w; ++x) {
            const float u = c.U(x), v = c.V(y);
            const float wu = warpU(x, y), wv = warpV(x, y);
            const Cells cell = Worley(wu / 95.0f, wv / 95.0f, sC, 0.85f);
            const float edge = cell.f2 - cell.f1 + 0.06f * Fbm(u / 9.0f, v / 9.0f, sE, 3);
            const float patch = SmoothStep(0.07f, 0.1f, edge);
            const float t = HashUnit(cell.id);
            Rgb brown = Mix(Rgb{150, 78, 32}, Rgb{104, 50, 22}, t);
            brown = Mix(brown, Scale(brown, 0.75f), 1.0f - SmoothStep(0.0f, 0.5f, cell.f1));
            const Rgb cream = Scale(Rgb{232, 214, 176}, 1.0f + 0.05f * Fbm(u / 60.0f, v / 60.0f, sF, 3));
            Rgb col = Mix(cream, brown, patch);
            col = Scale(col, 1.0f + 0.06f * Noise(u / 1.0f, v / 3.5f, sF + 1));
            out.Set(size_t(y) * c.w + x, col);
        }
    return ToColour(out);
}

} // namespace family
