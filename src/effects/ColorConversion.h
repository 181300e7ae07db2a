// The two families of colour conversion the surface and background colour maths use.
// They differ in scale and rounding and are not interchangeable:
//  - scale 240: integer hue, lightness and saturation 0..240; a grey has hue 160.
//  - scale 255: computed in double, hue, saturation and lightness 0..255, rounded.
// Colours are components 0..255 in both.
#pragma once

#include <cstdint>

struct RgbColor {
    int32_t r = 0, g = 0, b = 0;
};
struct HlsColor {
    int32_t h = 0, l = 0, s = 0;
};
struct HslColor {
    int32_t h = 0, s = 0, l = 0;
};

HlsColor RgbToHls240(int32_t r, int32_t g, int32_t b);
// Not limited: callers that need bytes limit the result.
RgbColor HlsToRgb240(int32_t h, int32_t l, int32_t s);

HslColor RgbToHsl255(int32_t r, int32_t g, int32_t b);
RgbColor HslToRgb255(int32_t h, int32_t s, int32_t l);
