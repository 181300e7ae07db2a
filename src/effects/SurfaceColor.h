// The colour maths of a surface: a shade and a picture colour become a new colour,
// through the tri-tone ramp of the surface's three colours, one of the surface types,
// then Hue, Brightness and Contrast. The settings are read from gParams on every call,
// so the drawer's thumbnails get the same colours as the render.
#pragma once

#include <cstdint>

enum SurfaceTypeCode : int32_t {
    SurfaceColorize = 0,
    SurfaceTint = 1,
    SurfaceBoost = 2,
    SurfaceEnhance = 3,
    SurfaceVivid = 4,
    // Not offered by the dialog; a preset may hold them.
    SurfacePlainTone = 5,
    SurfaceMultiply = 6,
    SurfaceColorBurn = 7,
};

// The settings SurfaceColor reads from gParams, taken once for a whole pass.
struct SurfaceColorSettings {
    float brightness = 0.0f, hueShift = 0.0f, weight = 0.0f; // weight: Midtone / 100
    float shadow[3] = {}, midtone[3] = {}, highlight[3] = {};
    int32_t contrast = 100;
};
SurfaceColorSettings ReadSurfaceColorSettings();

// picture: 0..255 each, not changed. shade: 0..1, limited by the caller. out: the
// coloured value (f32, 0..255 after the contrast step); tone: the ramp's colour before
// the type, truncated. alpha is accepted for the thumbnails' sake and not used.
void SurfaceColor(const int32_t picture[3], int32_t alpha, float shade, float out[3], int32_t tone[3], int32_t type);
// The same with the settings read already.
void SurfaceColor(const SurfaceColorSettings& settings, const int32_t picture[3], float shade, float out[3],
                  int32_t tone[3], int32_t type);
// A row of `count` pixels at once: pictures, out and tones three values a pixel.
void SurfaceColorRow(const SurfaceColorSettings& settings, const int32_t* pictures, const float* shades, int32_t count,
                     int32_t type, float* out, int32_t* tones);

// The tone pulled toward the picture by how dark the picture is (in place on tone).
void TintMix(const int32_t picture[3], float tone[3]);
// Colour c mixed into o: multiplied while c is dark, added while it is light; m is the
// brightness of c, (cr + cg + cb) / 765, at most 255.
float BoostMix(float c, float o, float m);
