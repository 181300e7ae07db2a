#include "hostsim/ScreenShot.h"

#include <vector>

namespace hostsim {

bool CaptureScreen(const RECT& box, PamImage& image) {
    const int w = box.right - box.left, h = box.bottom - box.top;
    if (w <= 0 || h <= 0) return false;
    HDC screen = GetDC(nullptr);
    HDC memory = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, w, h);
    HGDIOBJ old = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, w, h, screen, box.left, box.top, SRCCOPY);
    SelectObject(memory, old);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = w;
    info.bmiHeader.biHeight = -h; // top row first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    std::vector<uint8_t> bgra(size_t(w) * h * 4);
    const int rows = GetDIBits(memory, bitmap, 0, UINT(h), bgra.data(), &info, DIB_RGB_COLORS);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    if (rows != h) return false;

    image.width = w;
    image.height = h;
    image.depth = 3;
    image.tupleType = "RGB";
    image.data.resize(size_t(w) * h * 3);
    for (size_t i = 0, o = 0; i < bgra.size(); i += 4, o += 3) {
        image.data[o] = bgra[i + 2];
        image.data[o + 1] = bgra[i + 1];
        image.data[o + 2] = bgra[i];
    }
    return true;
}

} // namespace hostsim
