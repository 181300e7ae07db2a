// One of each control in each of its states, laid out in a gallery window by its dpi:
// what the screenshots show and what the GDI count builds and tears down.
#pragma once

#include "Gallery.h"
#include "controls/win32/Buttons.h"
#include "controls/win32/ColorSwatch.h"
#include "controls/win32/Link.h"
#include "controls/win32/MacSlider.h"
#include "controls/win32/Rotor.h"

#include <memory>
#include <vector>

namespace gallery {

// Ids of the pages' controls the exhibits stand for.
enum ExhibitId : int {
    ExhibitIdSlider = 1023,
    ExhibitIdSliderEdit = 1024,
    ExhibitIdSliderSpin = 1025,
    ExhibitIdSnap = 1033,
    ExhibitIdSnapEdit = 1034,
    ExhibitIdSnapSpin = 1035,
    ExhibitIdOffSlider = 1039,
    ExhibitIdOffEdit = 1040,
    ExhibitIdOffSpin = 1041,
    ExhibitIdLighting = 1058,
    ExhibitIdLightingAlpha = 1015,
    ExhibitIdLightingBeta = 1016,
    ExhibitIdPad = 1231,
    ExhibitIdSurfaceSwatch = 1071,
    ExhibitIdStainSwatch = 1130,
    ExhibitIdButton = 1126,
    ExhibitIdToggle = 1129,
    ExhibitIdLabel = 9111,
    ExhibitIdLink = 3001,
};

struct Exhibits {
    explicit Exhibits(Window& window);
    ~Exhibits();
    Exhibits(const Exhibits&) = delete;
    Exhibits& operator=(const Exhibits&) = delete;

    TMacSlider *slider = nullptr, *snap = nullptr, *off = nullptr;
    TRotor *lighting = nullptr, *pad = nullptr;
    TColorSwatch *surface = nullptr, *stain = nullptr;
    TButton *button = nullptr, *toggle = nullptr;
    HWND skinned = nullptr, plainSkinned = nullptr; // stock buttons: with checked pictures, without
    TLabel* label = nullptr;
    TLink *link = nullptr, *plainLink = nullptr;
    std::vector<TButton*> buttons; // every state
    std::vector<HWND> skins;       // every state
    std::vector<TLabel*> labels;   // every state
    std::vector<HWND> tooltips;
    ButtonSkin& Skin(size_t i) { return *skinRecords_.at(i); }

private:
    HWND Child(const char* className, const char* text, DWORD style, int x, int y, int w, int h, int id);
    void Caption(int x, int y, const char* text, int width);
    void Sliders();
    void Rotors();
    void Swatches();
    void Buttons();
    void Skins();
    void Labels();
    void Links();

    Window& window_;
    std::vector<HWND> children_;
    std::vector<HBITMAP> bitmaps_; // skins, pictures and backgrounds belong to the caller
    std::vector<std::unique_ptr<ButtonSkin>> skinRecords_;
    HBITMAP band_ = nullptr;
};

} // namespace gallery
