// The toolkit's fonts by role, as pure functions of the screen's dpi: all Arial, quality 2.
// Hand-placed sizes grow by DpiScaleOf(dpi), the square root of dpi / 96, and only above
// 96 dpi.
#pragma once

#include <cstdint>

enum class FontRole {
    Small,     // combo boxes and drawer labels; the dialog's default control font
    Thumb,     // tile captions
    Link,      // navigator separators and labels
    LinkUnder, // link text, underlined
    Label,     // heavy text
    Heavy,     // the heaviest text
    Tab,       // the tab control
    List,      // list boxes
};

struct FontStyle {
    int32_t height = 0; // the cell height handed to CreateFont
    int32_t weight = 0;
    bool underline = false;
};

// sqrt(dpi / 96) in f32.
float DpiScaleOf(int32_t dpi);
// h at 96 dpi and below, else DpiScaleOf(dpi) * h truncated.
int32_t Scaled(int32_t h, int32_t dpi);
FontStyle FontFor(FontRole role, int32_t dpi);
// The two link fonts as the About box wants them: height 14 at any dpi.
FontStyle AboutFontFor(FontRole role);

struct PixelOffset {
    int32_t x = 0, y = 0;
};
// Where a link's area lies in its background bitmap, from the point given at 96 dpi: above
// 96 dpi both scale by 96 / dpi, and from 121 dpi on y moves up 10 more.
PixelOffset LinkBackgroundOffset(int32_t x, int32_t y, int32_t dpi);
