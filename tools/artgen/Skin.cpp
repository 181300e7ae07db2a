#include "Skin.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace artgen {

using namespace art;

namespace {

constexpr float kPi = 3.14159265358979f;

// ---- Noise for the worn look of the name ----

uint32_t Hash(int x, int y, uint32_t seed) {
    uint32_t h = uint32_t(x) * 0x8DA6B343u ^ uint32_t(y) * 0xD8163841u ^ seed * 0xCB1AB31Fu;
    h ^= h >> 13;
    h *= 0x85EBCA6Bu;
    h ^= h >> 16;
    return h;
}

float Unit(int x, int y, uint32_t seed) { return float(Hash(x, y, seed) & 0xFFFF) / 65535.0f; }

// Smooth noise of cells `cell` pixels wide, 0 to 1.
float ValueNoise(float x, float y, float cell, uint32_t seed) {
    const float fx = x / cell, fy = y / cell;
    const int ix = int(std::floor(fx)), iy = int(std::floor(fy));
    const float tx = fx - float(ix), ty = fy - float(iy);
    const float sx = tx * tx * (3 - 2 * tx), sy = ty * ty * (3 - 2 * ty);
    const float a = Unit(ix, iy, seed), b = Unit(ix + 1, iy, seed);
    const float c = Unit(ix, iy + 1, seed), d = Unit(ix + 1, iy + 1, seed);
    return (a + (b - a) * sx) + ((c + (d - c) * sx) - (a + (b - a) * sx)) * sy;
}

// How much of a letter's ink survives at (x, y): mostly all, worn away in patches of
// about `grain` times 5 pixels.
float Wear(int x, int y, uint32_t seed, float amount, float grain = 1.0f) {
    const float n = ValueNoise(float(x), float(y), 5.0f * grain, seed) * 0.7f +
                    ValueNoise(float(x), float(y), 2.0f * grain, seed + 1) * 0.3f;
    const float speck = Unit(int(float(x) / grain), int(float(y) / grain), seed + 2) < 0.05f ? 0.5f : 0.0f;
    const float worn = std::clamp((n - (1.0f - amount)) / 0.12f, 0.0f, 1.0f);
    return std::max(0.0f, 1.0f - 0.75f * worn - speck * amount);
}

// ---- Small drawing helpers ----

Colour Grey(float v) { return {v, v, v}; }

void FillSolid(Canvas& c, const Path& p, Colour colour, float opacity = 1.0f) {
    c.Fill(p, Paint::Solid(colour), opacity);
}

// Text with its baseline on a whole pixel row, as small type stays sharpest there.
void DrawText(Canvas& c, const Font& font, const std::string& text, float size, float x, float baseline, Colour colour,
              float tracking = 0.0f) {
    FillSolid(c, font.Text(text, size, std::round(x), std::round(baseline), tracking), colour);
}

void CentredText(Canvas& c, const Font& font, const std::string& text, float size, float cx, float baseline,
                 Colour colour, float tracking = 0.0f) {
    DrawText(c, font, text, size, cx - font.Width(text, size, tracking) / 2, baseline, colour, tracking);
}

// A ring: the band between two rounded rectangles.
Path Ring(float x, float y, float w, float h, float r, float stroke) {
    Path p = Path::RoundRect(x, y, w, h, r);
    p.Append(
        Path::RoundRect(x + stroke, y + stroke, w - 2 * stroke, h - 2 * stroke, std::max(0.0f, r - stroke)).Reversed());
    return p;
}

Path Circle(float cx, float cy, float r) { return Path::Ellipse(cx, cy, r, r); }

Path CircleRing(float cx, float cy, float r, float stroke) {
    Path p = Circle(cx, cy, r);
    p.Append(Circle(cx, cy, r - stroke).Reversed());
    return p;
}

// ---- The header: one black band across the dialog's top ----

Colour HeaderRow(int y) {
    // Lighter at the top edge, black below, a gold hairline near the foot.
    if (y == kHeaderHeight - 4) return Mix(Of(kBand), Of(kGold), 0.55f);
    if (y == kHeaderHeight - 5) return Mix(Of(kBand), Of(kGold), 0.12f);
    const float t = std::clamp(float(y) / 44.0f, 0.0f, 1.0f);
    return Mix(Grey(38), Of(kBand), t * (2 - t));
}

Canvas HeaderBack(int width, int height, int top) {
    Canvas c(width, height, Of(kBand));
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) c.Set(x, y, HeaderRow(top + y));
    return c;
}

enum class State { Normal, Hover, Pressed, Disabled, On };

// A header or drawer button's body: grey at rest, lighter under the mouse.
void ButtonBody(Canvas& c, const Path& shape, float y0, float y1, State state) {
    const bool hover = state == State::Hover;
    const Colour mid = Of(hover ? kHover : kTile);
    const Colour top = Mix(mid, Of(kActive), 0.10f), bottom = Mix(mid, Of(kBand), 0.12f);
    c.Fill(shape, Paint::Vertical(top, bottom, y0, y1));
}

Colour ButtonInk(State state) { return state == State::Hover ? Of(kBand) : Of(kActive); }

// ---- Header pictures ----

struct NameMark {
    float size = 34, x = 34, baseline = 47;
};

enum class AboutLook { None, Normal, Hover, NewNormal, NewHover };

// The left header: the product's name, worn like the textures it lays; the About button
// stands over it and shows the same with its own mark.
Canvas LeftHeader(const Fonts& f, AboutLook look) {
    Canvas c = HeaderBack(453, kHeaderHeight, 0);
    const NameMark m;
    const bool hover = look == AboutLook::Hover || look == AboutLook::NewHover;
    const Path name = f.bold.Text("Quenzit", m.size, m.x, m.baseline, -0.5f);
    std::vector<float> ink = Coverage(name, c.Width(), c.Height());
    for (int y = 0; y < c.Height(); ++y)
        for (int x = 0; x < c.Width(); ++x) ink[size_t(y) * c.Width() + x] *= Wear(x, y, 7, 0.33f);
    // A faint shadow lifts the name off the band.
    FillSolid(c, name.Transformed(1.0f, 1.0f, 1.0f), Of(kBand), 0.8f);
    c.FillCoverage(ink, Paint::Solid(hover ? Of(kGold) : Of(kActive)));
    const float after = m.x + f.bold.Width("Quenzit", m.size, -0.5f) + 14;
    DrawText(c, f.bold, "texture", 13, after, m.baseline - 14, Of(kHover));
    DrawText(c, f.bold, "distress filter", 13, after, m.baseline, Of(kHover));

    if (look == AboutLook::None) return c;
    // The About mark at the button's right end: a ring with an "i", then the word.
    const bool fresh = look == AboutLook::NewNormal || look == AboutLook::NewHover;
    const std::string word = fresh ? "NEW VERSION" : "ABOUT";
    const Colour ink2 = hover ? Of(kGold) : fresh ? Of(kGold) : Of(kQuiet);
    const float size = fresh ? 10.0f : 11.0f, tracking = fresh ? 0.5f : 1.0f;
    const float right = 23 + 400 - 6, base = 18 + 22;
    const float w = f.bold.Width(word, size, tracking);
    DrawText(c, f.bold, word, size, right - w, base, fresh && hover ? Of(kActive) : ink2, tracking);
    const float cx = right - w - 13, cy = base - 4.5f;
    if (fresh) {
        FillSolid(c, Circle(cx, cy, 5.5f), Of(kGold));
        FillSolid(c, Path::Rect(cx - 1, cy - 3.5f, 2, 4.5f), Of(kBand));
        FillSolid(c, Path::Rect(cx - 1, cy + 2, 2, 1.8f), Of(kBand));
    } else {
        FillSolid(c, CircleRing(cx, cy, 6.5f, 1.4f), ink2);
        FillSolid(c, Path::Rect(cx - 0.9f, cy - 1, 1.8f, 4.5f), ink2);
        FillSolid(c, Path::Rect(cx - 0.9f, cy - 4, 1.8f, 1.8f), ink2);
    }
    if (hover) FillSolid(c, Path::Rect(m.x, m.baseline + 3, f.bold.Width("Quenzit", m.size, -0.5f), 1.5f), Of(kGold));
    return c;
}

Canvas AboutButton(const Fonts& f, AboutLook look) { return LeftHeader(f, look).Crop(23, 18, 400, 35); }

// The small emblem of the right header and the icon: a worn Q in a ring.
void Emblem(Canvas& c, const Fonts& f, float cx, float cy, float r, Colour ring, Colour letter) {
    FillSolid(c, CircleRing(cx, cy, r, std::max(1.2f, r * 0.12f)), ring);
    const float size = r * 1.45f;
    const float w = f.bold.Width("Q", size);
    FillSolid(c, f.bold.Text("Q", size, cx - w / 2, cy + f.bold.CapHeight(size) / 2), letter);
}

Canvas RightHeader(const Fonts& f) {
    Canvas c = HeaderBack(334, kHeaderHeight, 0);
    Emblem(c, f, 304, 38, 14, Mix(Of(kBand), Of(kGold), 0.6f), Of(kQuiet));
    return c;
}

Canvas HeaderTile() { return HeaderBack(16, kHeaderHeight, 0); }

// Help and All Presets stand side by side as one bar: help's right column and the presets'
// left column are the same place of the header and both show the divider.
Canvas HelpButton(const Fonts& f, State state) {
    Canvas c = HeaderBack(127, 40, 19);
    ButtonBody(c, Path::RoundRect4(4, 0, 123, 32, 16, 0, 0, 16), 0, 32, state);
    FillSolid(c, Path::Rect(126, 0, 1, 32), Of(kBand));
    const Colour ink = ButtonInk(state);
    FillSolid(c, CircleRing(27, 16, 8.5f, 1.8f), ink);
    CentredText(c, f.bold, "?", 12, 27.5f, 20.5f, ink);
    DrawText(c, f.bold, "Help", 15, 44, 21.5f, ink);
    return c;
}

Canvas PresetsButton(const Fonts& f, State state) {
    Canvas c = HeaderBack(140, 40, 19);
    ButtonBody(c, Path::RoundRect4(0, 0, 136, 32, 0, 16, 16, 0), 0, 32, state);
    FillSolid(c, Path::Rect(0, 0, 1, 32), Of(kBand));
    const Colour ink = ButtonInk(state);
    for (int i = 0; i < 4; ++i)
        FillSolid(c, Path::RoundRect(13 + 8.5f * float(i % 2), 7.5f + 8.5f * float(i / 2), 7, 7, 1.5f), ink);
    DrawText(c, f.bold, "All Presets", 15, 36, 21.5f, ink);
    return c;
}

// Auto: a die, as it throws a random look.
Canvas AutoButton(const Fonts& f, State state) {
    Canvas c = HeaderBack(118, 50, 9);
    ButtonBody(c, Path::RoundRect(4, 7, 110, 38, 19), 7, 45, state);
    const bool hover = state == State::Hover;
    const Colour face = hover ? Of(kBand) : Of(kActive), pip = hover ? Of(kHover) : Of(kTile);
    FillSolid(c, Path::RoundRect(17, 15, 22, 22, 4.5f), face);
    for (const Point& p : std::vector<Point>{{22.5f, 20.5f}, {33.5f, 20.5f}, {28, 26}, {22.5f, 31.5f}, {33.5f, 31.5f}})
        FillSolid(c, Circle(p.x, p.y, 2.3f), pip);
    DrawText(c, f.bold, "Auto", 19, 48, 33, ButtonInk(state));
    return c;
}

// ---- Glyph buttons on the dialog's face ----
// At rest a dark grey mark; under the mouse the same mark in black on a grey plate;
// disabled, faint.

using Mark = std::function<Path(float w, float h)>;

Canvas GlyphButton(int w, int h, const Mark& mark, State state) {
    Canvas c(w, h, Of(kFace));
    if (state == State::Hover) FillSolid(c, Path::RoundRect(0.5f, 0.5f, float(w) - 1, float(h) - 1, 3), Of(kHover));
    const Colour ink = state == State::Hover      ? Of(kBand)
                       : state == State::Disabled ? Mix(Of(kHover), Of(kFace), 0.35f)
                                                  : Of(kTile);
    FillSolid(c, mark(float(w), float(h)), ink);
    return c;
}

Path RotateMark(float w, float h, bool clockwise) {
    const float cx = w / 2, cy = h / 2 + 0.5f, r = 5.6f, t = 2.0f;
    // Most of a ring, open at the upper right; it runs clockwise into the head at the top.
    Path p = Path::Arc(cx, cy, r - t / 2, r + t / 2, -0.5f * kPi + 1.45f, 1.5f * kPi);
    p.Append(Path::Polygon({{cx - 0.5f, cy - r + 3.3f}, {cx + 4.2f, cy - r}, {cx - 0.5f, cy - r - 3.3f}}));
    if (clockwise) return p;
    // Mirrored for the other way round.
    Path m;
    for (const auto& contour : p.Contours()) {
        std::vector<Point> pts;
        for (const Point& q : contour) pts.push_back({w - q.x, q.y});
        m.Append(Path::Polygon(pts));
    }
    return m;
}

// Two links of a chain, joined or broken apart.
Path LinkMark(float w, float h, bool linked) {
    const float lw = 7.0f, t = 1.9f, x = std::round(w / 2 - lw / 2);
    Path p;
    if (linked) {
        // Two links hooked into each other, and the bar where they hold.
        p.Append(Ring(x, 0.5f, lw, 10, 3.5f, t));
        p.Append(Ring(x, h - 10.5f, lw, 10, 3.5f, t));
        p.Append(Path::Rect(x + lw / 2 - t / 2, 5.5f, t, h - 11));
    } else {
        // The same links pulled apart, with marks where they parted.
        p.Append(Ring(x, 0.5f, lw, 7.5f, 3.5f, t));
        p.Append(Ring(x, h - 8.0f, lw, 7.5f, 3.5f, t));
        p.Append(Path::Stroke({{x - 3.5f, 8.0f}, {x - 0.8f, 9.0f}}, 1.3f));
        p.Append(Path::Stroke({{x + lw + 0.8f, 9.0f}, {x + lw + 3.5f, 10.0f}}, 1.3f));
    }
    return p;
}

Path TriangleMark(float w, float h, bool back) {
    const float cx = w / 2, cy = h / 2, hw = 3.2f, hh = 6.0f;
    if (back) return Path::Polygon({{cx + hw, cy - hh}, {cx + hw, cy + hh}, {cx - hw, cy}});
    return Path::Polygon({{cx - hw, cy - hh}, {cx + hw, cy}, {cx - hw, cy + hh}});
}

Path ZoomMark(bool in) {
    const float cx = 7.5f, cy = 8.0f, r = 6.0f;
    Path p = CircleRing(cx, cy, r, 1.7f);
    p.Append(Path::Stroke({{cx + 4.6f, cy + 4.6f}, {15.8f, 16.8f}}, 3.0f));
    p.Append(Path::Rect(cx - 3.2f, cy - 0.8f, 6.4f, 1.6f));
    if (in) p.Append(Path::Rect(cx - 0.8f, cy - 3.2f, 1.6f, 6.4f));
    return p;
}

// ---- Pictures on the black of the band and the drawers ----

Canvas DeleteButton(State state) {
    Canvas c(13, 13, Of(kBand));
    const bool hover = state == State::Hover;
    FillSolid(c, Circle(6.5f, 6.5f, 6.3f), hover ? Of(kActive) : Of(kTile));
    const Colour ink = hover ? Of(kBand) : Mix(Of(kQuiet), Of(kActive), 0.5f);
    FillSolid(c, Path::Stroke({{4.0f, 4.0f}, {9.0f, 9.0f}}, 1.6f), ink);
    FillSolid(c, Path::Stroke({{9.0f, 4.0f}, {4.0f, 9.0f}}, 1.6f), ink);
    return c;
}

Canvas DrawerButton(const Fonts& f, const std::string& word, bool select, State state) {
    Canvas c(116, 38, Of(kBand));
    ButtonBody(c, Path::RoundRect(1, 3, 114, 32, 16), 3, 35, state);
    const Colour ink = ButtonInk(state);
    const float tw = f.bold.Width(word, 15);
    const float x0 = 58 - (tw + 20) / 2;
    if (select) {
        const Colour tick = state == State::Hover ? Of(kBand) : Of(kGold);
        FillSolid(c, Path::Stroke({{x0 + 1, 19.5f}, {x0 + 5, 23.5f}, {x0 + 12, 14.5f}}, 2.6f), tick);
    } else {
        FillSolid(c, Path::Stroke({{x0 + 2, 14.5f}, {x0 + 11, 23.5f}}, 2.4f), ink);
        FillSolid(c, Path::Stroke({{x0 + 11, 14.5f}, {x0 + 2, 23.5f}}, 2.4f), ink);
    }
    DrawText(c, f.bold, word, 15, x0 + 20, 24.5f, ink);
    return c;
}

// An eye: the tiles show the picture itself.
Canvas LiveButton(State state) {
    Canvas c(40, 38, Of(kBand));
    const bool on = state == State::On;
    if (on) {
        c.Fill(Path::RoundRect(1, 3, 38, 32, 16),
               Paint::Vertical(Mix(Of(kGold), Of(kActive), 0.25f), Of(kGold), 3, 35));
    } else {
        ButtonBody(c, Path::RoundRect(1, 3, 38, 32, 16), 3, 35, state);
    }
    const Colour ink = state == State::Normal ? Of(kActive) : Of(kBand);
    const float cx = 20, cy = 19;
    std::vector<Point> outline;
    for (int i = 0; i <= 24; ++i) {
        const float a = kPi * float(i) / 24.0f;
        outline.push_back({cx - 11 * std::cos(a), cy - 7 * std::sin(a)});
    }
    for (int i = 1; i < 24; ++i) {
        const float a = kPi * float(i) / 24.0f;
        outline.push_back({cx + 11 * std::cos(a), cy + 7 * std::sin(a)});
    }
    Path lids = Path::Polygon(outline);
    FillSolid(c, lids, ink);
    FillSolid(c, Circle(cx, cy, 4.6f), on ? Of(kGold) : state == State::Hover ? Of(kHover) : Of(kTile));
    FillSolid(c, Circle(cx, cy, 2.4f), ink);
    return c;
}

Canvas PageButton(bool back, State state) {
    Canvas c(12, 25, Of(kBand));
    const bool hover = state == State::Hover;
    if (hover) FillSolid(c, Path::RoundRect(0, 0, 12, 25, 3), Of(kTile));
    const float cx = 6, cy = 12.5f, d = back ? 1.0f : -1.0f;
    FillSolid(c, Path::Stroke({{cx + 2.2f * d, cy - 6}, {cx - 2.2f * d, cy}, {cx + 2.2f * d, cy + 6}}, 2.2f),
              hover ? Of(kActive) : Of(kQuiet));
    return c;
}

Canvas DrawerTitle(const Fonts& f, const std::string& title) {
    Canvas c(199, 20, Of(kBand));
    const float size = 12, tracking = 1.6f;
    const float w = f.bold.Width(title, size, tracking);
    CentredText(c, f.bold, title, size, 99.5f, 14.5f, Of(kActive), tracking);
    const float gap = 9, left = 99.5f - w / 2 - gap, right = 99.5f + w / 2 + gap;
    FillSolid(c, Path::Rect(std::max(4.0f, left - 26), 9, std::min(26.0f, left - 4), 1.5f), Of(kGold));
    FillSolid(c, Path::Rect(right, 9, std::min(26.0f, 195 - right), 1.5f), Of(kGold));
    return c;
}

// ---- List rows ----

Canvas FolderRow(bool parent) {
    Canvas c(16, 14, Of(kListBack));
    FillSolid(c, Path::Polygon({{0.5f, 2.5f}, {6.2f, 2.5f}, {7.7f, 4}, {14.5f, 4}, {14.5f, 12.5f}, {0.5f, 12.5f}}),
              Of(kTile));
    c.Fill(Path::Polygon({{1.5f, 3.5f}, {5.8f, 3.5f}, {7.3f, 5}, {13.5f, 5}, {13.5f, 11.5f}, {1.5f, 11.5f}}),
           Paint::Vertical(Mix(Of(kGold), Of(kActive), 0.35f), Of(kGold), 3, 12));
    FillSolid(c, Path::Rect(1.5f, 6.2f, 12, 1), Mix(Of(kGold), Of(kTile), 0.45f));
    if (parent) {
        // An arrow up and back: the folder above.
        FillSolid(c, Path::Stroke({{11.0f, 10.5f}, {11.0f, 8.2f}, {5.2f, 8.2f}}, 1.5f), Of(kBand));
        FillSolid(c, Path::Polygon({{3.4f, 8.2f}, {6.4f, 5.6f}, {6.4f, 10.8f}}), Of(kBand));
    }
    return c;
}

// ---- The band corners ----

// Weight 255 where the dialog's face shows, 0 inside the band: a quarter circle of radius
// 20 about (20, 20), each pixel's share of the face by 16 by 16 samples.
Canvas CornerWeights() {
    Canvas c(21, kCornerRows, Of(kBand));
    const float r = float(kCornerColumns);
    for (int y = 0; y < kCornerRows; ++y)
        for (int x = 0; x < kCornerColumns; ++x) {
            int outside = 0;
            for (int sy = 0; sy < 16; ++sy)
                for (int sx = 0; sx < 16; ++sx) {
                    const float px = float(x) + (float(sx) + 0.5f) / 16, py = float(y) + (float(sy) + 0.5f) / 16;
                    const float dx = r - px, dy = r - py;
                    if (py < r && dx * dx + dy * dy > r * r) ++outside;
                }
            c.Set(x, y, Grey(float(outside) * 255.0f / 256.0f));
        }
    return c;
}

// ---- The About box ----

// Lines of text broken to fit `width`.
std::vector<std::string> Wrap(const Font& font, const std::string& text, float size, float width) {
    std::vector<std::string> lines;
    std::string line, word;
    auto flush = [&]() {
        if (word.empty()) return;
        const std::string tried = line.empty() ? word : line + " " + word;
        if (!line.empty() && font.Width(tried, size) > width) {
            lines.push_back(line);
            line = word;
        } else {
            line = tried;
        }
        word.clear();
    };
    for (char ch : text) {
        if (ch == ' ') flush();
        else word += ch;
    }
    flush();
    if (!line.empty()) lines.push_back(line);
    return lines;
}

Canvas AboutPicture(const Fonts& f) {
    const Colour slate{0x3F, 0x43, 0x45}; // the box's own brush
    Canvas c(520, 487, slate);
    // The black band with the name, as in the dialog's header.
    for (int y = 0; y < 150; ++y)
        for (int x = 0; x < 520; ++x) c.Set(x, y, Mix(Grey(38), Of(kBand), std::clamp(float(y) / 90.0f, 0.0f, 1.0f)));
    for (int x = 0; x < 520; ++x) c.Set(x, 146, Mix(Of(kBand), Of(kGold), 0.55f));
    const float size = 72;
    const float w = f.bold.Width("Quenzit", size, -1.5f);
    const float x0 = 260 - w / 2;
    const Path name = f.bold.Text("Quenzit", size, x0, 98, -1.5f);
    std::vector<float> ink = Coverage(name, c.Width(), c.Height());
    for (int y = 0; y < c.Height(); ++y)
        for (int x = 0; x < c.Width(); ++x) ink[size_t(y) * c.Width() + x] *= Wear(x, y, 11, 0.36f, 2.0f);
    FillSolid(c, name.Transformed(1.0f, 2.0f, 2.0f), Of(kBand), 0.8f);
    c.FillCoverage(ink, Paint::Solid(Of(kActive)));
    CentredText(c, f.bold, "TEXTURE DISTRESS FILTER", 12, 260, 128, Of(kGold), 2.5f);

    // The light card: the version line sits at its left, the words at its right. It ends
    // above the buttons wherever the dialog font of the system puts them (y 412 to 447).
    c.Fill(Path::RoundRect(18, 170, 484, 235, 10), Paint::Solid(Of(kFace)));
    FillSolid(c, Path::Rect(262, 190, 1, 195), Of(kHover));
    const Colour text{0x32, 0x37, 0x3C};
    // Above the version line, which lands from y 241 to 262 by the system's dialog font.
    DrawText(c, f.bold, "VERSION", 11, 119, 238, Of(kQuiet), 1.2f);
    DrawText(c, f.bold, "Quenzit for hosts of the", 13, 38, 200, text);
    DrawText(c, f.bold, "Photoshop filter interface", 13, 38, 218, text);
    const std::vector<std::string> lines =
        Wrap(f.sans,
             "Two washes, two lit surfaces and a background, each driven by a texture and shaped by "
             "fractal noise, the selection's edge and color tables.",
             12.5f, 215);
    float y = 206;
    for (const std::string& line : lines) {
        DrawText(c, f.sans, line, 12.5f, 280, y, text);
        y += 18;
    }
    y += 10;
    DrawText(c, f.bold, "F1 in the dialog opens the", 12.5f, 280, y, text);
    DrawText(c, f.bold, "manual of the tab in view.", 12.5f, 280, y + 18, text);
    // Five swatches of the five layers' kinds, in the skin's greys and gold.
    const Colour swatches[5] = {Of(kTile), Of(kQuiet), Of(kHover), Mix(Of(kGold), Of(kTile), 0.35f), Of(kGold)};
    for (int i = 0; i < 5; ++i) {
        const float sx = 38 + float(i) * 40;
        std::vector<float> cov = Coverage(Path::RoundRect(sx, 330, 32, 32, 4), c.Width(), c.Height());
        for (int yy = 326; yy < 366; ++yy)
            for (int xx = int(sx) - 2; xx < int(sx) + 36; ++xx)
                cov[size_t(yy) * c.Width() + xx] *= 0.55f + 0.45f * Wear(xx, yy, 20 + uint32_t(i), 0.5f);
        c.FillCoverage(cov, Paint::Solid(swatches[i]));
    }
    DrawText(c, f.sans, "washes · surfaces · background", 11, 38, 382, Of(kQuiet));
    // The foot stays quiet: the two buttons stand there.
    return c;
}

// ---- Cursors and icon ----

// Alpha from a silhouette; colours from the same drawing on black, divided back out.
RgbaImage WithAlpha(const Canvas& onBlack, const std::vector<float>& silhouette) {
    RgbaImage out{onBlack.Width(), onBlack.Height(), {}};
    for (int y = 0; y < out.height; ++y)
        for (int x = 0; x < out.width; ++x) {
            const float a = silhouette[size_t(y) * out.width + x];
            const Colour p = onBlack.Get(x, y);
            auto chan = [&](float v) { return a > 0 ? uint8_t(std::clamp(v / a, 0.0f, 255.0f) + 0.5f) : uint8_t(0); };
            out.pixels.insert(out.pixels.end(), {chan(p.r), chan(p.g), chan(p.b), uint8_t(a * 255.0f + 0.5f)});
        }
    return out;
}

// A hand, open (fingers out) or closed (gripping), with a black rim.
Path HandShape(bool closed, float grow) {
    Path p;
    const float g = grow;
    p.Append(Path::RoundRect(8 - g, 13 - g, 17 + 2 * g, 14 + 2 * g, 5 + g));
    if (closed) {
        for (int i = 0; i < 4; ++i)
            p.Append(Path::RoundRect(8.5f + 4.2f * float(i) - g, 9.5f - g, 4.2f + 2 * g, 7 + 2 * g, 2.1f + g));
        p.Append(Path::RoundRect(4.5f - g, 15 - g, 6 + 2 * g, 4.5f + 2 * g, 2.2f + g));
    } else {
        const float tops[4] = {5.5f, 3.0f, 3.5f, 6.0f};
        for (int i = 0; i < 4; ++i)
            p.Append(Path::RoundRect(8.5f + 4.2f * float(i) - g, tops[i] - g, 4.0f + 2 * g, 14 + 2 * g, 2.0f + g));
        // The thumb, out to the left.
        p.Append(Path::Stroke({{10.5f, 21.0f}, {4.5f, 15.5f}}, 4.2f + 2 * g));
        p.Append(Circle(4.6f, 15.6f, 2.1f + g));
    }
    return p;
}

} // namespace

bool LoadFonts(const std::string& folder, Fonts& fonts, std::string& error) {
    return fonts.sans.Load(folder + "/DejaVuSans.ttf", error) &&
           fonts.bold.Load(folder + "/DejaVuSans-Bold.ttf", error);
}

std::map<int, Canvas> DrawBitmaps(const Fonts& f) {
    std::map<int, Canvas> out;
    out[kHeaderLeft] = LeftHeader(f, AboutLook::None);
    out[kHeaderTile] = HeaderTile();
    out[kHeaderRight] = RightHeader(f);
    out[kHelpNormal] = HelpButton(f, State::Normal);
    out[kHelpHover] = HelpButton(f, State::Hover);
    out[kPresetsNormal] = PresetsButton(f, State::Normal);
    out[kPresetsHover] = PresetsButton(f, State::Hover);
    out[kAutoNormal] = AutoButton(f, State::Normal);
    out[kAutoHover] = AutoButton(f, State::Hover);
    out[kAboutNormal] = AboutButton(f, AboutLook::Normal);
    out[kAboutHover] = AboutButton(f, AboutLook::Hover);
    out[kAboutNewNormal] = AboutButton(f, AboutLook::NewNormal);
    out[kAboutNewHover] = AboutButton(f, AboutLook::NewHover);

    const struct {
        int normal, hover, disabled;
        Mark mark;
        int w, h;
    } glyphs[] = {
        {kRotateCcwNormal, kRotateCcwHover, kRotateCcwDisabled,
         [](float w, float h) { return RotateMark(w, h, false); }, 18, 20},
        {kRotateCwNormal, kRotateCwHover, kRotateCwDisabled, [](float w, float h) { return RotateMark(w, h, true); },
         18, 20},
        {kUnlinkedNormal, kUnlinkedHover, kUnlinkedDisabled, [](float w, float h) { return LinkMark(w, h, false); }, 17,
         19},
        {kLinkedNormal, kLinkedHover, kLinkedDisabled, [](float w, float h) { return LinkMark(w, h, true); }, 17, 19},
        {kStripBackNormal, kStripBackHover, kStripBackDisabled,
         [](float w, float h) { return TriangleMark(w, h, true); }, 14, 25},
        {kStripForwardNormal, kStripForwardHover, kStripForwardDisabled,
         [](float w, float h) { return TriangleMark(w, h, false); }, 12, 25},
        {kZoomInNormal, kZoomInHover, kZoomInDisabled, [](float, float) { return ZoomMark(true); }, 18, 20},
        {kZoomOutNormal, kZoomOutHover, kZoomOutDisabled, [](float, float) { return ZoomMark(false); }, 18, 20},
    };
    for (const auto& g : glyphs) {
        out[g.normal] = GlyphButton(g.w, g.h, g.mark, State::Normal);
        out[g.hover] = GlyphButton(g.w, g.h, g.mark, State::Hover);
        out[g.disabled] = GlyphButton(g.w, g.h, g.mark, State::Disabled);
    }

    out[kCornerWeights] = CornerWeights();
    out[kFolderRow] = FolderRow(false);
    out[kParentFolderRow] = FolderRow(true);
    out[kDeleteNormal] = DeleteButton(State::Normal);
    out[kDeleteHover] = DeleteButton(State::Hover);
    out[kSelectNormal] = DrawerButton(f, "Select", true, State::Normal);
    out[kSelectHover] = DrawerButton(f, "Select", true, State::Hover);
    out[kCancelNormal] = DrawerButton(f, "Cancel", false, State::Normal);
    out[kCancelHover] = DrawerButton(f, "Cancel", false, State::Hover);
    out[kLiveNormal] = LiveButton(State::Normal);
    out[kLiveHover] = LiveButton(State::Hover);
    out[kLiveOn] = LiveButton(State::On);
    out[kPagePrevNormal] = PageButton(true, State::Normal);
    out[kPagePrevHover] = PageButton(true, State::Hover);
    out[kPageNextNormal] = PageButton(false, State::Normal);
    out[kPageNextHover] = PageButton(false, State::Hover);
    out[kTitleTextures] = DrawerTitle(f, "TEXTURES");
    out[kTitleColours] = DrawerTitle(f, "COLOR PRESETS");
    out[kAboutPicture] = AboutPicture(f);
    return out;
}

CursorImage DrawCursor(int id) {
    const bool closed = id == kCursorPreviewDrag;
    Canvas c(kCursorSize, kCursorSize, Of(kBand));
    const Path rim = HandShape(closed, 1.0f);
    FillSolid(c, HandShape(closed, 0.0f), Of(kActive));
    // Lines between the fingers.
    for (int i = 1; i < 4; ++i) {
        const float x = 8.5f + 4.2f * float(i);
        FillSolid(c, Path::Rect(x - 0.5f, closed ? 11.5f : 12.0f, 1.0f, closed ? 4.0f : 6.0f), Of(kBand));
    }
    return {WithAlpha(c, Coverage(rim, kCursorSize, kCursorSize)), 16, closed ? 17 : 15};
}

RgbaImage DrawIcon(const Fonts& f, int size) {
    const float s = float(size) / 32.0f;
    Canvas c(size, size, Of(kBand));
    const Path plate = Path::RoundRect(0.5f * s, 0.5f * s, 31 * s, 31 * s, 6 * s);
    c.Fill(plate, Paint::Vertical(Grey(56), Of(kBand), 0, float(size)));
    const float letter = 26 * s;
    const float w = f.bold.Width("Q", letter);
    const Path q = f.bold.Text("Q", letter, float(size) / 2 - w / 2, 16 * s + f.bold.CapHeight(letter) / 2);
    std::vector<float> ink = Coverage(q, size, size);
    if (size >= 32)
        for (int y = 0; y < size; ++y)
            for (int x = 0; x < size; ++x) ink[size_t(y) * size + x] *= Wear(x, y, 3, 0.3f);
    c.FillCoverage(ink, Paint::Solid(Of(kGold)));
    return WithAlpha(c, Coverage(plate, size, size));
}

std::vector<int16_t> SynthesiseAutoSound() {
    // A short rattle, as of a die, then two bright notes: a random look has been thrown.
    const float rate = float(kSoundRate);
    const int total = int(rate * 0.62f);
    std::vector<float> mix(size_t(total), 0.0f);
    uint32_t noise = 0x1234567u;
    auto next = [&]() {
        noise = noise * 1664525u + 1013904223u;
        return float(int32_t(noise >> 8) - (1 << 23)) / float(1 << 23);
    };
    const float hits[4] = {0.000f, 0.045f, 0.080f, 0.125f};
    for (int h = 0; h < 4; ++h) {
        const int start = int(hits[h] * rate), length = int(0.03f * rate);
        float low = 0.0f;
        for (int i = 0; i < length && start + i < total; ++i) {
            low += (next() - low) * 0.35f; // a duller click
            const float env = std::exp(-float(i) / (0.006f * rate));
            mix[size_t(start + i)] += low * env * (0.55f - 0.08f * float(h));
        }
    }
    const float notes[2][2] = {{0.17f, 1318.5f}, {0.25f, 1975.5f}}; // start, Hz
    for (const auto& n : notes) {
        const int start = int(n[0] * rate);
        for (int i = 0; start + i < total; ++i) {
            const float t = float(i) / rate;
            const float env = std::min(1.0f, t / 0.004f) * std::exp(-t / 0.11f);
            const float tone = std::sin(2 * kPi * n[1] * t) + 0.3f * std::sin(4 * kPi * n[1] * t);
            mix[size_t(start + i)] += 0.32f * env * tone;
        }
    }
    std::vector<int16_t> out(static_cast<size_t>(total));
    for (int i = 0; i < total; ++i) {
        const float fade = std::min(1.0f, float(total - 1 - i) / (0.02f * rate)); // no click at the end
        out[size_t(i)] = int16_t(std::clamp(mix[size_t(i)] * fade, -1.0f, 1.0f) * 30000.0f);
    }
    return out;
}

} // namespace artgen
