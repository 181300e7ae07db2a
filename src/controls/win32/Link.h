// "ContainerLinkC": a line of text on the About box, blue and underlined when it can be
// clicked, over the face or a piece of a background bitmap. A click sends its command.
#pragma once

#include "controls/win32/Contaner.h"

struct TLink {
    static constexpr const char* kClassName = "ContainerLinkC";
    TLink() = default;
    TLink(const TLink&) = delete;
    TLink& operator=(const TLink&) = delete;
    ~TLink() { delete[] Text; }

    char* Text = nullptr; // owned
    HWND Window = nullptr;
    int32_t ControlId = 0;
    int32_t Width = 0, Height = 0;
    uint8_t LinkKind = 0; // 5 once SetLink gave it text
    uint8_t Clickable = 0;
    uint8_t LeftAligned = 0;
    uint8_t HasBackground = 0;
    int32_t BackX = 0, BackY = 0;
    HBITMAP BackBitmap = nullptr; // not owned
    HFONT Font = nullptr;         // not owned
    uint32_t TextColor = 0;
    uint8_t UseTextColor = 0;
    DibSection Canvas;
};

constexpr uint8_t kLinkKindText = 5;

// Finds the link `id` of `dialog` and gives it a copy of `text`, with no background, font
// or colour of its own. Null when there is no such link.
TLink* SetLink(HWND dialog, int32_t id, const char* text, bool clickable, bool leftAligned);
// The link's area lies at (x, y) of `bitmap` at 96 dpi; ScreenDpi moves it.
void SetLinkBackground(TLink* link, HBITMAP bitmap, int32_t x, int32_t y);
void SetLinkFont(TLink* link, HFONT font, bool useColor, uint32_t color);
