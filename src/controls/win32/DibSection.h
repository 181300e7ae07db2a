// A top-down 32-bit DIB section: the painters draw into its PixelView, WM_PAINT blits
// it. One per control or picture; its GDI objects go with it.
#pragma once

#include "controls/PixelView.h"

#include <windows.h>

class DibSection {
public:
    DibSection() = default;
    ~DibSection() { Release(); }
    DibSection(const DibSection&) = delete;
    DibSection& operator=(const DibSection&) = delete;

    // Makes the section width by height (anew when the size changed); false when GDI
    // refuses, and the view is then empty.
    bool Resize(int32_t width, int32_t height);
    const PixelView& View() const { return view_; }
    // The section's memory DC, for GDI text and bitmaps over the painted pixels.
    HDC Dc() const { return dc_; }
    HBITMAP Bitmap() const { return bitmap_; }
    // Copies the whole section to `dc` with its top left at (x, y).
    void Blit(HDC dc, int32_t x, int32_t y) const;
    void Release();

private:
    HBITMAP bitmap_ = nullptr;
    HDC dc_ = nullptr;
    HGDIOBJ previous_ = nullptr;
    PixelView view_;
};
