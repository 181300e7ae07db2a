// Bitmaps from the pickers' pictures.
#pragma once

#include "pickers/BmpFile.h"

#include <windows.h>

// A device-dependent bitmap of the picture's size and pixels; null when it cannot be made.
inline HBITMAP MakeThumbBitmap(const ThumbImage& picture) {
    if (picture.width <= 0 || picture.height <= 0) return nullptr;
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = picture.width;
    header.biHeight = picture.height; // bottom-up
    header.biPlanes = 1;
    header.biBitCount = 24;
    header.biCompression = BI_RGB;
    HDC screen = GetDC(nullptr);
    HBITMAP bitmap = CreateDIBitmap(screen, &header, CBM_INIT, picture.bytes.data(),
                                    reinterpret_cast<const BITMAPINFO*>(&header), DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
    return bitmap;
}
