#include "controls/win32/Fonts.h"

int32_t ScreenDpi = 96;
HFONT SmallFont = nullptr, ThumbFont = nullptr, LinkFont = nullptr, LinkUnderFont = nullptr, LabelFont = nullptr,
      HeavyFont = nullptr, TabFont = nullptr, ListFont = nullptr;

namespace {

HFONT& Slot(FontRole role) {
    switch (role) {
    case FontRole::Small: return SmallFont;
    case FontRole::Thumb: return ThumbFont;
    case FontRole::Link: return LinkFont;
    case FontRole::LinkUnder: return LinkUnderFont;
    case FontRole::Label: return LabelFont;
    case FontRole::Heavy: return HeavyFont;
    case FontRole::Tab: return TabFont;
    default: return ListFont;
    }
}

constexpr FontRole kRoles[] = {FontRole::Small, FontRole::Thumb, FontRole::Link, FontRole::LinkUnder,
                               FontRole::Label, FontRole::Heavy, FontRole::Tab,  FontRole::List};

bool Make(FontRole role, const FontStyle& style) {
    HFONT& slot = Slot(role);
    if (slot) DeleteObject(slot);
    slot = CreateFontA(style.height, 0, 0, 0, style.weight, FALSE, style.underline, FALSE, DEFAULT_CHARSET,
                       OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, PROOF_QUALITY, DEFAULT_PITCH | FF_DONTCARE, "Arial");
    return slot != nullptr;
}

} // namespace

bool MakeToolkitFonts(int32_t dpi) {
    ScreenDpi = dpi;
    bool all = true;
    for (FontRole role : kRoles) all = Make(role, FontFor(role, dpi)) && all;
    return all;
}

bool MakeAboutLinkFonts() {
    const bool link = Make(FontRole::Link, AboutFontFor(FontRole::Link));
    return Make(FontRole::LinkUnder, AboutFontFor(FontRole::LinkUnder)) && link;
}

void DeleteToolkitFonts() {
    for (FontRole role : kRoles) {
        HFONT& slot = Slot(role);
        if (slot) DeleteObject(slot);
        slot = nullptr;
    }
}

HFONT FontOf(TextFont choice, HFONT own) {
    switch (choice) {
    case TextFont::Heavy: return HeavyFont;
    case TextFont::Own: return own ? own : LabelFont;
    case TextFont::Link: return LinkFont;
    default: return LinkUnderFont;
    }
}
