#include "controls/win32/DibSection.h"

bool DibSection::Resize(int32_t width, int32_t height) {
    if (bitmap_ && view_.width == width && view_.height == height) return true;
    Release();
    if (width <= 0 || height <= 0) return false;
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height; // top row first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    bitmap_ = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    dc_ = bitmap_ ? CreateCompatibleDC(nullptr) : nullptr;
    if (!bitmap_ || !dc_ || !bits) {
        Release();
        return false;
    }
    previous_ = SelectObject(dc_, bitmap_);
    view_ = PixelView{static_cast<uint32_t*>(bits), width, height, width};
    return true;
}

void DibSection::Blit(HDC dc, int32_t x, int32_t y) const {
    if (dc_) BitBlt(dc, x, y, view_.width, view_.height, dc_, 0, 0, SRCCOPY);
}

void DibSection::Release() {
    if (dc_) {
        if (previous_) SelectObject(dc_, previous_);
        DeleteDC(dc_);
    }
    if (bitmap_) DeleteObject(bitmap_);
    bitmap_ = nullptr;
    dc_ = nullptr;
    previous_ = nullptr;
    view_ = PixelView{};
}
