#include "pickers/Filmstrip.h"

#include "platform/FolderList.h"
#include "presets/PresetFormat.h"
#include "presets/PresetLibrary.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

bool SameIgnoringCase(const std::string& a, const char* b) {
    const size_t n = std::strlen(b);
    if (a.size() != n) return false;
    for (size_t i = 0; i < n; ++i)
        if (std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

std::string WithoutPresetExtension(const std::string& file) {
    const size_t n = std::strlen(kPresetExtension);
    if (file.size() <= n || !SameIgnoringCase(file.substr(file.size() - n), kPresetExtension)) return file;
    return file.substr(0, file.size() - n);
}

bool Counts(const FolderEntry& e) { return e.isArchive && !e.isDirectory; }

void FillTile(const PixelView& view, int32_t left, int32_t right, int32_t bottom, uint32_t color) {
    FillPixels(view, PixelRect{left, 0, right, bottom}, color);
}

void Put(const PixelView& view, int32_t x, int32_t y, uint32_t color) {
    if (view.Contains(x, y)) view.At(x, y) = color;
}

} // namespace

StripGeometry LayOutStrip() {
    StripGeometry g;
    g.TilePitch = StripThumbWidth + 2;
    g.TileHeight = StripThumbHeight + 2;
    g.Height = g.TileHeight;
    g.Width = (g.TilePitch + 8) * kStripTilesShown;
    g.PrevButton = PixelRect{0, 0, kStripArrowWidth, g.Height};
    g.NextButton = PixelRect{g.Width - kStripArrowWidth, 0, g.Width, g.Height};
    g.StripLeft = kStripArrowWidth;
    g.StripTop = 0;
    g.StripWidth = g.Width - 2 * kStripArrowWidth;
    g.StripHeight = g.Height;
    return g;
}

std::string StripFolder() { return PresetFolderPath(PresetPalette, std::string()); }

StripPresets ListPresets(const std::string& folder) {
    StripPresets list;
    std::vector<FolderEntry> entries;
    if (!ListFolder(folder, std::string("*") + kPresetExtension, entries)) return list;
    list.Count = int32_t(std::count_if(entries.begin(), entries.end(), Counts));
    if (list.Count == 0) return list;
    list.Names.reserve(size_t(list.Count));
    list.Names.push_back("none");
    for (const FolderEntry& e : entries) {
        if (list.Names.size() >= size_t(list.Count)) break;
        if (!Counts(e)) continue;
        std::string name = WithoutPresetExtension(e.name);
        if (!SameIgnoringCase(name, "none")) list.Names.push_back(std::move(name));
    }
    // Two files that both read "none" (possible off Windows) leave a row without a name.
    list.Names.resize(size_t(list.Count));
    return list;
}

void ResetMotion(StripMotion& m, int32_t count) {
    m.Count = std::max(count, 0);
    m.PageCount = m.Count / kStripTilesShown + (m.Count % kStripTilesShown ? 1 : 0);
    m.Page = 0;
    m.SlideDirection = 0;
    m.SlidePercent = 0;
}

bool StartSlide(StripMotion& m, bool forward) {
    if (m.SlideDirection != 0) return false;
    m.SlideDirection = forward ? 1 : 255;
    m.SlidePercent = 0;
    return true;
}

bool TickSlide(StripMotion& m) {
    if (m.SlideDirection == 0) return false;
    if (m.SlidePercent < 100) {
        m.SlidePercent += 10;
        return false;
    }
    if (m.SlideDirection == 1) m.Page = std::max(std::min(m.Page + 1, m.PageCount - 1), 0);
    else m.Page = std::max(m.Page - 1, 0);
    m.SlideDirection = 0;
    return true;
}

bool PrevEnabled(const StripMotion& m) { return m.Page >= 1; }
bool NextEnabled(const StripMotion& m) { return m.Page < m.PageCount - 1; }

StripFrame FrameOf(const StripMotion& m, int32_t pitch) {
    StripFrame frame;
    frame.first = m.Page * kStripTilesShown;
    float shift = 0;
    const bool sliding = m.SlideDirection != 0;
    if (sliding) {
        const float u = std::sqrt(m.SlidePercent / 100.0f);
        const float d = 5.0f * u;
        const float whole = std::trunc(d);
        const float f = (d - whole) * float(pitch);
        if (m.SlideDirection == 1) {
            shift = -f;
            frame.first += int32_t(whole);
        } else {
            shift = f - float(pitch);
            frame.first = frame.first - 1 - int32_t(whole);
            if (frame.first < 0) {
                frame.first = 0;
                shift = 0;
            }
        }
    }
    frame.last = std::min(m.Count, frame.first + (sliding ? 6 : 5));
    frame.shift = int32_t(shift);
    return frame;
}

bool InsideStrip(const StripGeometry& g, int32_t x, int32_t y) {
    return x >= g.StripLeft && x <= g.StripLeft + g.StripWidth && y >= 0 && y <= g.Height;
}

int32_t SlotAt(const StripGeometry& g, int32_t x) { return (x - g.StripLeft) / g.TilePitch; }

void PaintStrip(const PixelView& view, const StripGeometry& g, const StripMotion& m, int32_t hoverSlot,
                const std::vector<ThumbImage>& thumbs, uint32_t face) {
    FillPixels(view, PixelRect{0, 0, g.StripWidth, g.StripHeight}, face);
    if (thumbs.empty()) return;
    const StripFrame frame = FrameOf(m, g.TilePitch);
    const int32_t last = std::min(frame.last, int32_t(thumbs.size()));
    constexpr uint32_t kBlack = 0x000000, kWhite = 0xFFFFFF;
    for (int32_t i = frame.first; i < last; ++i) {
        const int32_t x = frame.shift + (i - frame.first) * g.TilePitch;
        FillTile(view, x, x + g.TilePitch, g.TileHeight, i - frame.first == hoverSlot ? kBlack : kWhite);
        const ThumbImage& t = thumbs[size_t(i)];
        if (!t.bytes.empty() && t.width > 0 && t.height > 0 && t.bytes.size() >= size_t(t.stride) * size_t(t.height) &&
            t.stride >= t.width * 3) {
            // Rows bottom-up, blue, green, red.
            for (int32_t row = 0; row < t.height; ++row) {
                const uint8_t* p = t.bytes.data() + size_t(t.height - 1 - row) * size_t(t.stride);
                for (int32_t col = 0; col < t.width; ++col, p += 3)
                    Put(view, x + 1 + col, 1 + row, PixelOf(p[2], p[1], p[0]));
            }
        } else {
            // The cross a failed preset leaves, corner to corner as LineTo draws it (the end
            // point left out).
            for (int32_t k = 0; k < g.TileHeight && k < g.TilePitch; ++k) {
                Put(view, x + k, k, kBlack);
                Put(view, x + g.TilePitch - k, k, kBlack);
            }
        }
    }
}
