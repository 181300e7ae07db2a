// "Rotor CPP": the shaded sphere the user drags to set a direction (the lighting, 1058) or,
// with a cross-hair knob, a position (the wash offset pad, 1231). The page hears of it once
// per press, when the button comes up, and reads Alpha and Beta from the record.
#pragma once

#include "controls/Sphere.h"
#include "controls/win32/Contaner.h"

struct TRotor : TContaner, RotorAngles {
    static constexpr const char* kClassName = "Rotor CPP";

    char Caption[32] = {}; // a name, never drawn
    uint8_t IsOffsetPad = 0;
    HWND AlphaEdit = nullptr, BetaEdit = nullptr; // buddies that mirror the angles
    int32_t KnobX = 0, KnobY = 0;                 // the last point of a drag
    DibSection Canvas;
};

// Stores both angles, repaints and rewrites the buddies.
void SetAngles(TRotor* rotor, float alpha, float beta);
// The offset pad's angles as percent of its square, and a point of the square as angles.
void PadToPercent(const TRotor* rotor, float& px, float& py);
void PercentToPad(TRotor* rotor, float px, float py);
