#include "controls/win32/Rotor.h"

#include "controls/win32/ControlProcs.h"

#include <cstdio>

namespace {

void WriteBuddies(const TRotor& rotor) {
    float a = rotor.Alpha, b = rotor.Beta;
    if (rotor.IsOffsetPad) PadToPercent(&rotor, a, b);
    char text[32];
    if (rotor.AlphaEdit) {
        std::snprintf(text, sizeof text, "%0.2f", double(a));
        SetWindowTextA(rotor.AlphaEdit, text);
    }
    if (rotor.BetaEdit) {
        std::snprintf(text, sizeof text, "%0.2f", double(b));
        SetWindowTextA(rotor.BetaEdit, text);
    }
}

LRESULT HandleRotor(TRotor& rotor, UINT message, WPARAM wParam, LPARAM lParam) {
    HWND window = rotor.Window;
    switch (message) {
    case WM_PAINT:
        PaintCanvas(window, rotor.Canvas, rotor.Width, rotor.Height, [&](const DibSection& canvas) {
            PaintSphere(canvas.View(),
                        SphereLook{rotor.Alpha, rotor.Beta, rotor.IsOffsetPad != 0, rotor.Enabled != 0, FacePixel()});
        });
        return 0;
    case WM_LBUTTONDOWN: {
        SetCapture(window);
        const POINT p = MousePoint(lParam);
        RotorPress(rotor, rotor.Width, rotor.Height, p.x, p.y);
        WriteBuddies(rotor);
        Repaint(window);
        return 0;
    }
    case WM_MOUSEMOVE: {
        if (!(wParam & MK_LBUTTON) || GetCapture() != window) return 0;
        const POINT p = MousePoint(lParam);
        const KnobPoint knob = RotorDrag(rotor, rotor.Width, rotor.Height, p.x, p.y);
        rotor.KnobX = knob.x;
        rotor.KnobY = knob.y;
        Repaint(window);
        WriteBuddies(rotor);
        return 0;
    }
    case WM_LBUTTONUP:
        // One command a press: a release that follows no press of ours tells nothing.
        if (GetCapture() != window) return 0;
        ReleaseOwnCapture();
        SendCommand(window, rotor.ControlId);
        Repaint(window);
        return 0;
    case WM_ENABLE:
        rotor.Enabled = wParam != 0;
        if (rotor.AlphaEdit) EnableWindow(rotor.AlphaEdit, BOOL(wParam));
        if (rotor.BetaEdit) EnableWindow(rotor.BetaEdit, BOOL(wParam));
        Repaint(window);
        return 0;
    default: break;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

} // namespace

LRESULT CALLBACK RotorProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    return ControlProc<TRotor, HandleRotor>(window, message, wParam, lParam);
}

void SetAngles(TRotor* rotor, float alpha, float beta) {
    if (!rotor) return;
    rotor->Alpha = alpha;
    rotor->Beta = beta;
    // A later click on the centre's horizontal keeps this direction, not an older one.
    rotor->LastAngle = alpha - rotor->Turns * 360.0f;
    Repaint(rotor->Window);
    WriteBuddies(*rotor);
}

void PadToPercent(const TRotor* rotor, float& px, float& py) {
    if (rotor) PadToPercent(rotor->Alpha, rotor->Beta, px, py);
}

void PercentToPad(TRotor* rotor, float px, float py) {
    if (!rotor) return;
    float alpha = 0, beta = 0;
    PercentToPad(px, py, alpha, beta);
    SetAngles(rotor, alpha, beta);
}
