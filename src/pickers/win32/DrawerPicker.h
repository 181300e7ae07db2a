// The drawer itself: title, filter row, a panel of tiles a page at a time, page buttons,
// Select, Cancel and Live Preview; it slides in from the left and out again.
#pragma once

#include "pickers/Catalogue.h"
#include "pickers/BmpFile.h"
#include "pickers/win32/DrawerWindow.h"

#include <vector>

struct TButton;
struct TPicture;
class TPickerThump2;

extern HWND ThumbProgressBar; // the dialog's progress bar, the only sign of a page's work

class TDrawerPicker : public TDrawerWindow {
public:
    explicit TDrawerPicker(uint8_t mode);
    ~TDrawerPicker() override;
    LRESULT WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
    void CreateChildren() override;

    void SetTitle(HBITMAP bitmap);
    void Initialise(const char* currentName, const char* folder, uint8_t mode);
    // After the dialog was resized: tiles anew for the new height; list and filter stay.
    void Rebuild(const char* folder, uint8_t mode);
    void MoveButtons();
    // The title and the Next button, which stand by the width, after a resize.
    void FollowWidth();
    // Every visible tile its entry and its picture.
    void RefreshPage();
    void Open();
    void Close();
    // A tile was pressed: select its entry, tell the dialog.
    void TileClicked(int32_t index);

    TPicture* TitleControl = nullptr;
    TButton *SelectButton = nullptr, *CancelButton = nullptr, *LiveButton = nullptr; // no Live for tones
    HWND SetCombo = nullptr, SetLabel = nullptr;                                     // textures only
    HWND EffectCombo = nullptr, EffectLabel = nullptr;
    uint8_t Built = 0;
    Catalogue List;
    uint8_t LivePreviewOn = 0;
    uint8_t TargetKind = 0; // 0 wash, 1 background, 2 surface: set by the dialog before opening
    TDrawerWindow* TilePanel = nullptr;
    std::vector<TPickerThump2*> Tiles;
    TButton *PrevPageButton = nullptr, *NextPageButton = nullptr;
    ThumbImage ColourBase; // the grey texture under colour thumbnails

private:
    void MakeTiles();
    void DropTiles();
    void RepaintTiles();
    void Turn(int32_t step);
    void FilterChanged(int32_t id);
    void Tick();
    // The category combo's selected text, or null when every preset passes.
    const char* Category(char (&text)[64]) const;
    HBITMAP Title = nullptr; // owned
};
