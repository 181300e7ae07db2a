#include "Exhibits.h"

#include "controls/win32/Fonts.h"
#include "resources/ArtIds.h"

#include <commctrl.h>

namespace gallery {
namespace {

// The module's art: the control pictures by id and size.
struct ArtId {
    int id, width, height;
};
constexpr ArtId kRotateNormal{art::kRotateCwNormal, 18, 20}, kRotateHover{art::kRotateCwHover, 18, 20},
    kRotateDisabled{art::kRotateCwDisabled, 18, 20};
constexpr ArtId kUnlinked{art::kUnlinkedNormal, 17, 19}, kUnlinkedHover{art::kUnlinkedHover, 17, 19},
    kUnlinkedDisabled{art::kUnlinkedDisabled, 17, 19};
constexpr ArtId kLinked{art::kLinkedNormal, 17, 19}, kLinkedHover{art::kLinkedHover, 17, 19},
    kLinkedDisabled{art::kLinkedDisabled, 17, 19};
constexpr ArtId kZoomNormal{art::kZoomInNormal, 18, 20}, kZoomHover{art::kZoomInHover, 18, 20},
    kZoomDisabled{art::kZoomInDisabled, 18, 20};
constexpr ArtId kDrawerTitle{art::kTitleTextures, 199, 20};

HBITMAP ArtOf(const ArtId& art, COLORREF back, const char* mark) {
    return Art(art.id, art.width, art.height, back, mark);
}

constexpr COLORREF kNormal = RGB(70, 90, 130), kHover = RGB(90, 150, 220), kPressed = RGB(30, 40, 70),
                   kDisabled = RGB(170, 170, 170), kChecked = RGB(60, 140, 70), kCheckedHover = RGB(100, 200, 110),
                   kCheckedDisabled = RGB(150, 190, 150);

} // namespace

Exhibits::Exhibits(Window& window) : window_(window) {
    Sliders();
    Rotors();
    Swatches();
    Buttons();
    Skins();
    Labels();
    Links();
    Pump(30);
}

Exhibits::~Exhibits() {
    for (auto it = children_.rbegin(); it != children_.rend(); ++it) DestroyWindow(*it);
    for (HBITMAP bitmap : bitmaps_) DeleteObject(bitmap);
    if (band_) DeleteObject(band_);
}

HWND Exhibits::Child(const char* className, const char* text, DWORD style, int x, int y, int w, int h, int id) {
    const Window& g = window_;
    HWND child = CreateWindowExA(0, className, text, WS_CHILD | WS_VISIBLE | style, g.S(x), g.S(y), g.S(w), g.S(h),
                                 g.Handle(), reinterpret_cast<HMENU>(INT_PTR(id)), GetModuleHandleA(nullptr), nullptr);
    children_.push_back(child);
    return child;
}

void Exhibits::Caption(int x, int y, const char* text, int width) {
    HWND caption = Child("STATIC", text, SS_LEFT, x, y, width, 15, 0);
    SendMessageA(caption, WM_SETFONT, reinterpret_cast<WPARAM>(ThumbFont), FALSE);
}

void Exhibits::Sliders() {
    struct Row {
        int x, id, edit, spin;
        float low, high, value;
        bool snap, enabled;
        const char* caption;
    };
    const Row rows[] = {
        {12, ExhibitIdSlider, ExhibitIdSliderEdit, ExhibitIdSliderSpin, 0, 200, 120, false, true, "Wash Scale 0..200"},
        {262, ExhibitIdSnap, ExhibitIdSnapEdit, ExhibitIdSnapSpin, -100, 100, 0, true, true,
         "Soft-Hard -100..100, snaps"},
        {512, ExhibitIdOffSlider, ExhibitIdOffEdit, ExhibitIdOffSpin, 0, 100, 50, false, false,
         "Edge Distance, disabled"}};
    for (const Row& row : rows) {
        Caption(row.x, 6, row.caption, 240);
        HWND window = Child(TMacSlider::kClassName, "", 0, row.x, 24, 150, 28, row.id);
        HWND edit = Child("EDIT", "", kSliderEditStyle & ~(WS_CHILD | WS_VISIBLE), row.x + 156, 27, 46, 22, row.edit);
        Child(UPDOWN_CLASSA, "", kSliderSpinStyle & ~(WS_CHILD | WS_VISIBLE), row.x + 204, 27, 18, 22, row.spin);
        SendMessageA(edit, WM_SETFONT, reinterpret_cast<WPARAM>(SmallFont), FALSE);
        TMacSlider* made = FindControl<TMacSlider>(window);
        if (!made) continue;
        made->SnapOn = row.snap;
        AttachTrackbar(made);
        made->EditId = row.edit;
        made->SpinId = row.spin;
        SetRange(made, row.low, row.high);
        SetValue(made, row.value, false);
        if (!row.enabled) EnableWindow(window, FALSE);
        (row.id == ExhibitIdSlider ? slider : row.id == ExhibitIdSnap ? snap : off) = made;
    }
}

void Exhibits::Rotors() {
    struct Item {
        int x, w, id;
        bool pad, enabled;
        float a, b; // angles, or percent for a pad
        const char* caption;
    };
    const Item items[] = {{12, 60, ExhibitIdLighting, false, true, 30, 40, "light 30, 40"},
                          {162, 60, 1, false, true, 150, 15, "light 150, 15"},
                          {262, 60, ExhibitIdPad, true, true, 40, 30, "pad 40%, 30%"},
                          {362, 60, 2, true, false, -50, -60, "pad, disabled"},
                          {462, 60, 3, true, true, 0, 0, "pad centre"},
                          {562, 80, 4, false, true, 90, 60, "80 by 50"}};
    for (const Item& item : items) {
        Caption(item.x, 74, item.caption, 95);
        HWND window = Child(TRotor::kClassName, "", 0, item.x, 92, item.w, item.w == 80 ? 50 : 60, item.id);
        TRotor* rotor = FindControl<TRotor>(window);
        if (!rotor) continue;
        rotor->IsOffsetPad = item.pad;
        if (item.id == ExhibitIdLighting) {
            rotor->AlphaEdit =
                Child("EDIT", "", WS_BORDER | ES_READONLY, item.x + 66, 98, 60, 20, ExhibitIdLightingAlpha);
            rotor->BetaEdit =
                Child("EDIT", "", WS_BORDER | ES_READONLY, item.x + 66, 124, 60, 20, ExhibitIdLightingBeta);
            for (HWND edit : {rotor->AlphaEdit, rotor->BetaEdit})
                SendMessageA(edit, WM_SETFONT, reinterpret_cast<WPARAM>(SmallFont), FALSE);
            lighting = rotor;
        }
        if (item.id == ExhibitIdPad) pad = rotor;
        if (item.pad) PercentToPad(rotor, item.a, item.b);
        else SetAngles(rotor, item.a, item.b);
        if (!item.enabled) EnableWindow(window, FALSE);
    }
}

void Exhibits::Swatches() {
    struct Item {
        int id;
        COLORREF color;
        bool hover, enabled;
        const char* caption;
    };
    const Item items[] = {{ExhibitIdSurfaceSwatch, RGB(128, 128, 128), false, true, "mid-grey"},
                          {ExhibitIdStainSwatch, RGB(192, 32, 32), false, true, "red"},
                          {11, RGB(128, 128, 128), true, true, "grey, hover"},
                          {12, RGB(192, 32, 32), true, true, "red, hover"},
                          {13, RGB(192, 32, 32), false, false, "red, disabled"},
                          {14, RGB(250, 250, 240), false, true, "near white"}};
    int x = 12;
    for (const Item& item : items) {
        Caption(x, 164, item.caption, 85);
        HWND window = Child(TColorSwatch::kClassName, "", 0, x, 182, 48, 26, item.id);
        if (TColorSwatch* swatch = FindControl<TColorSwatch>(window)) {
            swatch->HoverFlag = item.hover;
            SetColor(swatch, item.color);
            if (item.id == ExhibitIdSurfaceSwatch) surface = swatch;
            if (item.id == ExhibitIdStainSwatch) stain = swatch;
        }
        if (!item.enabled) EnableWindow(window, FALSE);
        x += 90;
    }
}

void Exhibits::Buttons() {
    // A header button and a toggle in stand-in faces, then the art's small buttons in
    // every state.
    struct Item {
        int id;
        uint8_t mode, toggled, mouse;
        bool enabled, faces, disabledFace;
        const char* caption;
    };
    const Item items[] = {{ExhibitIdButton, 0, 0, 0, true, true, true, "push"},
                          {ExhibitIdToggle, 1, 0, 0, true, true, true, "toggle"},
                          {21, 0, 0, 0, true, true, true, "normal"},
                          {22, 0, 0, 1, true, true, true, "hover"},
                          {23, 0, 0, 2, true, true, true, "pressed"},
                          {24, 0, 0, 1, false, true, true, "disabled"},
                          {25, 0, 0, 1, false, true, false, "no dis. face"},
                          {26, 1, 1, 0, true, true, true, "toggled"},
                          {27, 1, 1, 1, true, true, true, "tog.+hover"},
                          {28, 0, 0, 0, true, false, false, "no faces"}};
    int x = 12;
    for (const Item& item : items) {
        const bool wide = item.id == ExhibitIdButton || item.id == ExhibitIdToggle;
        Caption(x, 228, item.caption, wide ? 75 : 71);
        TButton* record = nullptr;
        HWND window = CreateButton(record, window_.Handle(), GetModuleHandleA(nullptr), window_.S(x), window_.S(246),
                                   wide ? 64 : kRotateNormal.width, wide ? 22 : kRotateNormal.height, item.id);
        children_.push_back(window);
        if (!record) continue;
        record->ButtonMode = item.mode;
        record->Toggled = item.toggled;
        record->MouseState = item.mouse;
        const char* text = item.id == ExhibitIdButton ? "Help" : "Auto";
        if (item.faces && wide)
            SetFaceBitmaps(record, StandIn(64, 22, kNormal, text), StandIn(64, 22, kHover, text),
                           StandIn(64, 22, kPressed, text), StandIn(64, 22, kDisabled, text));
        else if (item.faces)
            SetFaceBitmaps(record, ArtOf(kRotateNormal, kNormal, "N"), ArtOf(kRotateHover, kHover, "H"),
                           StandIn(18, 20, kPressed, "P"),
                           item.disabledFace ? ArtOf(kRotateDisabled, kDisabled, "D") : nullptr);
        if (!item.enabled) EnableWindow(window, FALSE);
        if (item.id == ExhibitIdButton) button = record;
        if (item.id == ExhibitIdToggle) toggle = record;
        buttons.push_back(record);
        x += wide ? 80 : 72;
    }
    tooltips.push_back(AddTooltip(button->Window, "Open the help page of the tab that is shown", "Help"));
}

void Exhibits::Skins() {
    HBITMAP n = ArtOf(kUnlinked, kNormal, "n"), h = ArtOf(kUnlinkedHover, kHover, "h"),
            d = ArtOf(kUnlinkedDisabled, kDisabled, "d"), c = ArtOf(kLinked, kChecked, "c"),
            ch = ArtOf(kLinkedHover, kCheckedHover, "ch"), cd = ArtOf(kLinkedDisabled, kCheckedDisabled, "cd");
    HBITMAP zn = ArtOf(kZoomNormal, kNormal, "z"), zh = ArtOf(kZoomHover, kHover, "zh"),
            zd = ArtOf(kZoomDisabled, kDisabled, "zd");
    bitmaps_.insert(bitmaps_.end(), {n, h, d, c, ch, cd, zn, zh, zd});
    struct Item {
        bool checked, enabled, plain;
        const char* caption;
    };
    const Item items[] = {{false, true, false, "normal"},        {true, true, false, "checked"},
                          {false, false, false, "disabled"},     {true, false, false, "checked, dis."},
                          {false, true, false, "hover (mouse)"}, {true, true, true, "no checked pics"}};
    int x = 12, id = 40;
    for (const Item& item : items) {
        Caption(x, 290, item.caption, 95);
        HWND stock = Child("BUTTON", "", BS_AUTOCHECKBOX | BS_PUSHLIKE | BS_BITMAP, x, 308, 30, 28, id++);
        skinRecords_.push_back(std::make_unique<ButtonSkin>());
        if (item.plain) AttachSkin(skinRecords_.back().get(), stock, zn, zh, zd, nullptr, nullptr, nullptr);
        else AttachSkin(skinRecords_.back().get(), stock, n, h, d, c, ch, cd);
        SendMessageA(stock, BM_SETCHECK, item.checked ? BST_CHECKED : BST_UNCHECKED, 0);
        if (!item.enabled) EnableWindow(stock, FALSE);
        if (id == 41) skinned = stock;
        if (item.plain) plainSkinned = stock;
        skins.push_back(stock);
        x += 100;
    }
}

void Exhibits::Labels() {
    // The band the result labels sit on, shared as one bitmap; each label copies its part.
    band_ = Band(window_.S(760), window_.S(90), 16);
    TPicture* picture = nullptr;
    HBITMAP title = ArtOf(kDrawerTitle, RGB(40, 44, 52), "Texture drawer title");
    bitmaps_.push_back(title);
    Caption(12, 348, "picture", 200);
    children_.push_back(CreatePicture(picture, window_.Handle(), GetModuleHandleA(nullptr), window_.S(12),
                                      window_.S(364), kDrawerTitle.width, kDrawerTitle.height, 50, title));
    struct Item {
        int x, y, id, backMode;
        uint8_t enabled, toggled;
        bool windowEnabled, bitmap;
        const char* text;
    };
    const Item items[] = {{12, 400, ExhibitIdLabel, 6, 1, 0, true, true, "Generate Effect in New Layer Above"},
                          {12, 424, 1112, 6, 1, 1, true, true, "Generate Wash Effect in Mask Layer"},
                          {12, 448, 1113, 6, 1, 2, true, true, "Generate Background in New Layer Below"},
                          {340, 400, 500, 6, 0, 0, true, true, "Composite (shown)"},
                          {340, 424, 501, 6, 1, 0, false, true, "Wash One (disabled)"},
                          {340, 448, 502, 6, 1, 0, true, false, "Wash Two (no bitmap)"},
                          {570, 400, 503, 0, 1, 0, true, false, "Add Wash"},
                          {570, 424, 504, 0, 0, 0, true, false, "Original (off)"}};
    Caption(12, 384, "labels: idle, hover, chosen", 320);
    Caption(340, 384, "Enabled 0, disabled, no bitmap", 225);
    Caption(570, 384, "background mode 0", 180);
    for (const Item& item : items) {
        const int width = item.x == 12 ? 320 : item.x == 340 ? 220 : 180;
        TLabel* made = CreateLabel(window_.S(item.x), window_.S(item.y), window_.S(width), 20, window_.Handle(),
                                   item.id, item.text, item.enabled, true);
        if (!made) continue;
        children_.push_back(made->Window);
        made->BackMode = item.backMode;
        made->Toggled = item.toggled;
        if (item.bitmap) {
            made->BackBitmap = band_;
            made->BackX = window_.S(item.x);
            made->BackY = window_.S(item.y - 384);
        }
        if (!item.windowEnabled) EnableWindow(made->Window, FALSE);
        InvalidateRect(made->Window, nullptr, FALSE);
        if (item.id == ExhibitIdLabel) label = made;
        labels.push_back(made);
    }
    tooltips.push_back(AddTooltip(labels[3]->Window, "View all combined image effects", nullptr));
}

void Exhibits::Links() {
    struct Item {
        int x, y, id;
        bool clickable, left, background, font;
        const char* text;
    };
    const Item items[] = {{12, 500, ExhibitIdLink, true, false, false, false, "www.quenzit.example"},
                          {12, 524, 3002, false, false, false, false, "Version 4.0 (not a link)"},
                          {262, 500, 3003, true, true, false, false, "left aligned link"},
                          {262, 524, 3004, true, false, true, false, "link over a background"},
                          {512, 500, 3005, false, false, false, true, "own font and colour"}};
    Caption(12, 482, "links", 200);
    // The light room the About picture leaves for its links.
    HBITMAP room = Band(window_.S(760), window_.S(90), 200);
    bitmaps_.push_back(room);
    for (const Item& item : items) {
        Child(TLink::kClassName, "", 0, item.x, item.y, 230, 20, item.id);
        TLink* made = SetLink(window_.Handle(), item.id, item.text, item.clickable, item.left);
        if (!made) continue;
        if (item.background) SetLinkBackground(made, room, item.x, item.y - 384 - 100);
        if (item.font) SetLinkFont(made, HeavyFont, true, RGB(200, 60, 30));
        if (item.id == ExhibitIdLink) link = made;
        if (item.id == 3002) plainLink = made;
    }
}

} // namespace gallery
