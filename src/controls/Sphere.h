// The rotor's sphere: a point on it gives two angles, Alpha around the centre (0 to the
// right, 90 straight up, -180 to 180) and Beta above the rim (0 at the rim, 90 at the
// centre); the offset pad maps them to percent of a square; the painter shades the sphere
// into a PixelView. All pure: the window class (win32/Rotor.h) keeps them in its record.
#pragma once

#include "controls/PixelView.h"

#include <cstdint>

// The angles of a rotor, in degrees, in the order its record keeps them.
struct RotorAngles {
    float Alpha = 0;
    float Beta = 90; // the light straight above the centre
    float Turns = 0; // full turns counted during a drag
    float LastAngle = 0, PrevAngle = 0, FirstAngle = 0;
};

// The left button went down at (x, y) in a width by height window: Beta from the distance
// to the centre over a radius 2 pixels short of the half width, the direction into
// LastAngle and FirstAngle unless the point lies on the horizontal through the centre.
void RotorPress(RotorAngles& angles, int32_t width, int32_t height, int32_t x, int32_t y);

struct KnobPoint {
    int32_t x = 0, y = 0;
};
// A move with the left button held: the point clamped into the window (returned, it is
// the record's knob) and the angles over the full half width; Turns counts wraps.
KnobPoint RotorDrag(RotorAngles& angles, int32_t width, int32_t height, int32_t x, int32_t y);

// The offset pad: angles to percent of the square and back. PercentToPad then
// PadToPercent gives (px, -py): the y axis turns over once on the way in.
void PadToPercent(float alpha, float beta, float& px, float& py);
void PercentToPad(float px, float py, float& alpha, float& beta);

struct SphereLook {
    float alpha = 0, beta = 90;
    bool offsetPad = false; // no highlight, and a cross-hair knob
    bool enabled = true;    // only the knob shows it
    uint32_t face = 0;      // the dialog's face colour, 0x00RRGGBB
};

// Fills the view with the face colour and shades the sphere of radius min(w/2, h/2) about
// (w/2, h/2), lit from (alpha, beta): grey c * 205 + 50 with c the cube of the lit cosine
// (plus its twentieth power for the highlight), fading into the face over the outer rim.
void PaintSphere(const PixelView& view, const SphereLook& look);
