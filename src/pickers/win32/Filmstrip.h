// The preset strip at the top of the Background page (control 1157): one picture per
// background preset, five at a time, a click applies it.
#pragma once

#include "controls/win32/Buttons.h"
#include "pickers/BmpFile.h"
#include "pickers/Filmstrip.h"

#include <windows.h>

#include <string>
#include <vector>

// The template's control class: binds to its window, and asks it for the procedure.
struct TQZT2Control {
    virtual ~TQZT2Control() = default;
    virtual LRESULT WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) = 0;

    HWND Window = nullptr, Parent = nullptr;
    int32_t Width = 0, Height = 0;
    int32_t ControlId = 0;
    RECT ClientRect{};
};

struct TFilmstripControl : TQZT2Control {
    ~TFilmstripControl() override;
    LRESULT WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;

    ButtonSkin NextSkin, PrevSkin;
    HBITMAP ArrowBitmaps[6] = {}; // back normal, hover, disabled, then forward
    StripGeometry Geometry;       // StripLeft .. TileHeight
    int32_t ScrollOffset = 0;
    uint8_t PresetKind = 7;
    uint8_t ClickLatch = 0;
    StripMotion Motion; // page, slide direction and percent
    HWND PrevButton = nullptr, NextButton = nullptr;
    std::vector<std::string> Names;
    std::vector<ThumbImage> Thumbs; // an empty picture shows a cross
    int32_t Count = 0;
    int32_t HoverSlot = -1;
    DibSection Canvas;
};

// The class's procedure, registered as "OrnQZT2Class" with the control family.
LRESULT CALLBACK FilmstripProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// When the dialog builds its tabs: the presets of `kind`'s folder.
void ListFilmstripPresets(int32_t kind);
// When the Background page is made: binds the template's control, lays it out, makes the pictures.
void AttachFilmstrip(HWND control);
// The dialog ends: names, pictures and the work buffer go.
void DestroyFilmstrip();
