#include "dialog/DialogLayout.h"

#include <cmath>

LayoutBox MinimumTrackSize(int32_t dpi) {
    const int32_t factor = dpi / 96;
    return {0, 0, factor * kMinimumWidth, factor * kMinimumHeight};
}

PreviewFrameSetup InitialPreviewFrame(const LayoutRect& previewControl, int32_t dpi) {
    PreviewFrameSetup s;
    s.frame = previewControl;
    if (dpi > 96) s.frame.left -= dpi == 120 ? 70 : 15;
    s.bandTop = {s.frame.left, s.frame.top - kBandHeight, s.frame.right, s.frame.top};
    s.bandBottom = {s.frame.left, s.frame.bottom, s.frame.right, s.frame.bottom + kBandHeight};
    s.frame.top -= kBandHeight;
    s.frame.bottom += kBandHeight;
    return s;
}

DialogLayout LayoutDialog(int32_t w, int32_t h, int32_t dpi, const LayoutRect& frame, const LayoutRect& bandTop) {
    DialogLayout d;
    const int32_t L = frame.left;
    const float s = DpiScaleOf(dpi);

    d.headerMiddleWidth = w - 787;
    d.rightHeader = {w - 334, 0, 334, 71};
    d.allPresets = {w - 202, 19, 140, 40};
    d.help = {w - 328, 19, 127, 40};

    d.tabs = {10, 80, L - 19, h - 89};
    d.pageClientHeight = h - 90;

    int32_t height = 22, a = 20, b = 5;
    if (dpi >= 216) height = 38, a = 13, b = -4;
    else if (dpi >= 144) height = 28, a = 18, b = 1;

    const int32_t half = (w - L + 9) / 2;
    const int32_t c = L - 9 + half;
    const int32_t row = h - a - height + 5;
    d.ok = {c + 91, row, 89, height};
    d.cancel = {c - 180, row, 89, height};
    const int32_t zoomRow = h - a + b - 24;
    d.zoomUp = {c + 27, zoomRow, 30, 26};
    d.zoomDown = {c - 57, zoomRow, 30, 26};

    int32_t labelHeight = 16, labelWidth = 38;
    if (dpi < 97) labelHeight = 12, labelWidth = 26;
    else if (dpi == 120) labelHeight = 14, labelWidth = 34;
    d.percent = {c - labelWidth / 2, h - labelHeight - 21, labelWidth, labelHeight};
    d.progress = {L + 15, h - 57, 2 * half - 48, 10};

    d.frame = {L, frame.top, w - 13, h - 71};
    d.bandTop = {L, bandTop.top, w - 13, bandTop.top + kBandHeight};
    d.bandBottom = {L, h - 104, w - 13, h - 71};
    int32_t band = d.frame.Width();
    if (band < 1) band = 4;
    d.bandWidth = (band + 3) / 4 * 4;
    d.bandBufferBytes = size_t(d.bandWidth + 4) * kBandHeight * 3;
    d.invalidate = {L, d.frame.top, w, h};
    d.headerRepaint = {kHeaderStripLeft, 0, w, kHeaderHeight};

    const float R = float(d.frame.right);
    const float base = R - 70.0f * s;
    d.resets[0] = {int32_t(base + 5.0f), 0, int32_t(50.0f * s), 16};
    d.resets[1] = {int32_t(base - 10.0f * s * s), 0, int32_t(70.0f * s), 16};
    d.resets[2] = {int32_t(base - 17.0f * s * s), 0, int32_t(87.0f * s), 16};
    d.resets[3] = {int32_t(base - 40.0f * s * s), 0, int32_t(110.0f * s), 16};

    const int32_t ox = d.bandBottom.left + 20, oy = d.bandBottom.top + 6;
    d.optionBox = {ox, oy, 20, 20};
    const int32_t labelW = int32_t(210.0f * s);
    d.optionLabel = {LayoutBox{ox + 22, oy, labelW, 20}, LayoutBox{ox + 22, oy, labelW, 20},
                     LayoutBox{ox + 22, oy, labelW, 20}, LayoutBox{ox + 22, oy, labelW + 40, 20}};

    d.preview = {L, d.bandTop.bottom, d.bandWidth, d.frame.Height() - 2 * kBandHeight};
    d.drawers = {0, 80, L - 9, h - 89};
    return d;
}
