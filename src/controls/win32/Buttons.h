// The small picture and text controls: the skinned button ("Control Button CPP"), a skin
// over a stock bitmap button, the static picture ("Control CPP") and the text label that
// can act as a button ("Contaner CPP"). Buttons and labels post their command.
#pragma once

#include "controls/win32/Contaner.h"

struct TButton : TContaner {
    static constexpr const char* kClassName = "Control Button CPP";
    TButton() = default;
    TButton(const TButton&) = delete;
    TButton& operator=(const TButton&) = delete;
    ~TButton();

    uint8_t ButtonMode = 0; // 0 push, 1 toggle
    HBITMAP Faces[4] = {};  // owned: normal, hover, pressed, disabled
    DibSection Canvas;
};

// A "Control Button CPP" child at (x, y); the record comes back in `record`.
HWND CreateButton(TButton*& record, HWND parent, HINSTANCE instance, int32_t x, int32_t y, int32_t width,
                  int32_t height, int32_t id);
// Faces from bitmap resources of the window's module, 0 for none.
void SetFaces(TButton* button, int32_t normal, int32_t hover, int32_t pressed, int32_t disabled);
// Faces as bitmaps, which the button then owns (null for none).
void SetFaceBitmaps(TButton* button, HBITMAP normal, HBITMAP hover, HBITMAP pressed, HBITMAP disabled);
void SetToggle(TButton* button, bool on);

// Makes a stock "BUTTON" with bitmap style look skinned. Kept by the caller for the
// button's life; the bitmaps stay the caller's.
struct ButtonSkin {
    uint32_t Hover = 0;
    HBITMAP HoverBitmap = nullptr, NormalBitmap = nullptr, DisabledBitmap = nullptr;
    HBITMAP CheckedBitmap = nullptr, CheckedHoverBitmap = nullptr, CheckedDisabledBitmap = nullptr;
    WNDPROC OldProc = nullptr;
};

// Shows the right picture at once, then subclasses the button.
void AttachSkin(ButtonSkin* skin, HWND button, HBITMAP normal, HBITMAP hover, HBITMAP disabled, HBITMAP checked,
                HBITMAP checkedHover, HBITMAP checkedDisabled);

struct TPicture : TContaner {
    static constexpr const char* kClassName = "Control CPP";
    uint8_t PictureKind = 0;   // 0 none, 1 a bitmap
    HBITMAP Picture = nullptr; // not owned
    DibSection Canvas;
};

HWND CreatePicture(TPicture*& record, HWND parent, HINSTANCE instance, int32_t x, int32_t y, int32_t width,
                   int32_t height, int32_t id, HBITMAP bitmap);

// The label's record: the family's record and its picture.
struct TLabel : TContaner {
    static constexpr const char* kClassName = "Contaner CPP";
    DibSection Canvas;
};

constexpr uint8_t kLabelKindText = 5;
constexpr int32_t kBackModeBand = 6; // on the preview's band: hover and chosen show

// A label with a copy of `text`; `enabled` goes to Enabled, `leftAligned` to LeftAligned.
// Null when the window could not be made.
TLabel* CreateLabel(int32_t x, int32_t y, int32_t width, int32_t height, HWND parent, int32_t id, const char* text,
                    bool enabled, bool leftAligned);
