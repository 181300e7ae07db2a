// qz-artsheet OUTPUT.png [--fonts DIR] [--zoom N]: every picture of the dialog's skin on one
// sheet, to judge it by eye: the header put together as the dialog lays it out, the band
// and drawer corners, then each control's states side by side with their ids, once on the
// dialog's face and once on black; the cursors, the icon and the sound's wave at the end.
// --zoom N enlarges the sheet N times, pixel for pixel.
#include "ImageIo.h"
#include "Skin.h"

#include "resources/ArtIds.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

using namespace artgen;

namespace {

constexpr int kSheetWidth = 1120, kMargin = 16, kGap = 12, kCaption = 15;

void Label(Canvas& c, const Fonts& fonts, const std::string& text, int x, int baseline, Colour colour, float size) {
    c.Fill(fonts.bold.Text(text, size, float(x), float(baseline)), Paint::Solid(colour));
}

struct Sheet {
    const Fonts& fonts;
    Canvas canvas;
    int y = kMargin;

    void Label(const std::string& text, int x, int baseline, Colour colour, float size = 11) {
        ::Label(canvas, fonts, text, x, baseline, colour, size);
    }
    void Heading(const std::string& text) {
        y += 6;
        Label(text, kMargin, y + 13, {40, 40, 40}, 13);
        y += 20;
    }
};

void Paste(Canvas& dst, const Canvas& src, int x, int y) { dst.Draw(src, x, y); }

Canvas FromRgba(const RgbaImage& img, Colour back) {
    Canvas c(img.width, img.height, back);
    for (int y = 0; y < img.height; ++y)
        for (int x = 0; x < img.width; ++x) {
            const uint8_t* p = &img.pixels[(size_t(y) * img.width + x) * 4];
            c.Set(x, y, Mix(back, {float(p[0]), float(p[1]), float(p[2])}, float(p[3]) / 255.0f));
        }
    return c;
}

// The header as the dialog lays it out at a client width of `width`, with the buttons in
// the states asked for.
Canvas HeaderMock(const std::map<int, Canvas>& art, int width, bool hover, bool fresh) {
    Canvas c(width, 90, Of(art::kFace));
    Paste(c, art.at(art::kHeaderLeft), 0, 0);
    const Canvas& tile = art.at(art::kHeaderTile);
    for (int x = art::kHeaderTileStart; x < width - 334; ++x)
        for (int y = 0; y < art::kHeaderHeight; ++y) c.Set(x, y, tile.Get((x - art::kHeaderTileStart) % 4, y));
    Paste(c, art.at(art::kHeaderRight), width - 334, 0);
    Paste(c, art.at(hover ? art::kAutoHover : art::kAutoNormal), 453, 9);
    Paste(c, art.at(hover ? art::kHelpHover : art::kHelpNormal), width - 328, 19);
    Paste(c, art.at(hover ? art::kPresetsHover : art::kPresetsNormal), width - 202, 19);
    const int about =
        fresh ? (hover ? art::kAboutNewHover : art::kAboutNewNormal) : (hover ? art::kAboutHover : art::kAboutNormal);
    Paste(c, art.at(about), 23, 18);
    return c;
}

// A band of height 33 between two preview edges, its ends rounded by the corner weights:
// the upper band has its outer edge at the top, the lower one at the bottom.
Canvas BandMock(const std::map<int, Canvas>& art, int width, bool upper) {
    const Canvas& w = art.at(art::kCornerWeights);
    Canvas c(width, art::kCornerRows, Of(art::kBand));
    const Colour face = Of(art::kFace);
    for (int r = 0; r < art::kCornerRows; ++r) {
        const int y = upper ? r : art::kCornerRows - 1 - r;
        for (int col = 0; col < art::kCornerColumns; ++col) {
            const float weight = w.Get(col, r).r / 255.0f;
            const Colour px{face.r * weight, face.g * weight, face.b * weight};
            c.Set(col, y, px);
            c.Set(width - 1 - col, y, px);
        }
    }
    return c;
}

} // namespace

int main(int argc, char** argv) {
    std::string output, fontDir = "/usr/share/fonts/truetype/dejavu";
    int zoom = 1;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--fonts" && i + 1 < argc) fontDir = argv[++i];
        else if (arg == "--zoom" && i + 1 < argc) zoom = std::clamp(std::atoi(argv[++i]), 1, 8);
        else if (output.empty() && arg[0] != '-') output = arg;
        else output.clear(), i = argc;
    }
    if (output.empty()) {
        std::fprintf(stderr, "usage: qz-artsheet OUTPUT.png [--fonts DIR] [--zoom N]\n");
        return 1;
    }
    Fonts fonts;
    std::string error;
    if (!LoadFonts(fontDir, fonts, error)) {
        std::fprintf(stderr, "qz-artsheet: %s\n", error.c_str());
        return 2;
    }
    const std::map<int, Canvas> art = DrawBitmaps(fonts);
    Sheet s{fonts, Canvas(kSheetWidth, 4000, {226, 226, 226})};
    const Colour labelDark{40, 40, 40}, labelLight{200, 200, 200};

    s.Heading("Header at the smallest width (923), at rest, under the mouse, with a new version");
    for (int mock = 0; mock < 3; ++mock) {
        Paste(s.canvas, HeaderMock(art, 923, mock == 1, mock == 2), kMargin, s.y);
        s.y += 90 + 6;
    }
    s.Heading("Bands above and below the preview (corner weights 155), a drawer's right edge");
    {
        Canvas panel(1080, 170, Of(art::kFace));
        Paste(panel, BandMock(art, 600, true), 20, 10);
        Canvas preview(600, 40, {120, 132, 140});
        Paste(panel, preview, 20, 43);
        Paste(panel, BandMock(art, 600, false), 20, 83);
        Paste(panel, art.at(art::kDeleteNormal), 120, 20);
        Paste(panel, art.at(art::kDeleteHover), 140, 20);
        // A drawer's top and foot as it lays them out: black, its right corners rounded by
        // the mirrored weights.
        const Canvas& w = art.at(art::kCornerWeights);
        const int dw = 380, dh = 150, b = (dw - 302) / 2;
        Canvas drawer(dw, dh, Of(art::kBand));
        for (int r = 0; r < art::kCornerRows; ++r)
            for (int col = 0; col < art::kCornerColumns; ++col) {
                const float cover = 1 - w.Get(art::kCornerColumns - 1 - col, r).r / 255.0f;
                const Colour px = Mix(Of(art::kFace), Of(art::kBand), cover);
                drawer.Set(dw - 20 + col, r, px);
                drawer.Set(dw - 20 + col, dh - 1 - r, px);
            }
        Paste(drawer, art.at(art::kTitleTextures), (dw - 199) / 2, 17);
        Paste(drawer, art.at(art::kPagePrevNormal), 20, 16);
        Paste(drawer, art.at(art::kPageNextHover), dw - 32, 16);
        Paste(drawer, art.at(art::kCancelNormal), b, dh - 57);
        Paste(drawer, art.at(art::kLiveOn), b + 131, dh - 57);
        Paste(drawer, art.at(art::kSelectHover), b + 186, dh - 57);
        Paste(panel, drawer, 680, 10);
        Paste(s.canvas, panel, kMargin, s.y);
        s.y += 170 + 6;
    }

    s.Heading("Every picture by control: on the dialog's face, then on black");
    for (size_t i = 0; i < std::size(art::kBitmaps);) {
        const std::string control = art::kBitmaps[i].control;
        size_t end = i;
        int width = 0, height = 0;
        while (end < std::size(art::kBitmaps) && control == art::kBitmaps[end].control) {
            width += std::max(art::kBitmaps[end].width, 64) + kGap;
            height = std::max(height, art::kBitmaps[end].height);
            ++end;
        }
        const bool sideBySide = 2 * (width + kGap) + 140 <= kSheetWidth - 2 * kMargin;
        const int rowHeight = height + kCaption + 2 * 6;
        const int panels = sideBySide ? 1 : 2;
        if (s.y + rowHeight * panels + 20 > s.canvas.Height()) break;
        s.Label(control, kMargin, s.y + rowHeight / 2 + 4, labelDark);
        for (int p = 0; p < 2; ++p) {
            const bool black = p == 1;
            const int px = sideBySide ? kMargin + 130 + p * (width + kGap + 4) : kMargin + 130;
            const int py = sideBySide ? s.y : s.y + p * (rowHeight + 4);
            Canvas panel(width + kGap, rowHeight, black ? Of(art::kBand) : Of(art::kFace));
            int x = kGap / 2 + 2;
            for (size_t k = i; k < end; ++k) {
                const art::BitmapSpec& want = art::kBitmaps[k];
                Paste(panel, art.at(want.id), x, 6);
                Label(panel, fonts, std::to_string(want.id) + " " + want.state, x, 6 + height + 12,
                      black ? labelLight : labelDark, 10);
                x += std::max(want.width, 64) + kGap;
            }
            Paste(s.canvas, panel, px, py);
        }
        s.y += sideBySide ? rowHeight + 6 : 2 * rowHeight + 10;
        i = end;
    }

    s.Heading("Cursors 144 (drag) and 145 (over the preview), icon 230, sound 236");
    {
        int x = kMargin;
        for (Colour back : {Of(art::kFace), Of(art::kBand)}) {
            for (int id : {art::kCursorPreviewDrag, art::kCursorPreviewHover}) {
                Paste(s.canvas, FromRgba(DrawCursor(id).image, back), x, s.y);
                x += 40;
            }
            for (int size : art::kIconSizes) {
                Paste(s.canvas, FromRgba(DrawIcon(fonts, size), back), x, s.y);
                x += size + 8;
            }
            x += 16;
        }
        const std::vector<int16_t> wave = SynthesiseAutoSound();
        Canvas plot(500, 48, Of(art::kBand));
        for (size_t i = 0; i < wave.size(); ++i) {
            const int px = int(i * 500 / wave.size()), py = 24 - wave[i] * 22 / 32768;
            plot.Set(px, py, Of(art::kGold));
        }
        Paste(s.canvas, plot, x, s.y);
        s.y += 56;
    }

    Canvas done = s.canvas.Crop(0, 0, kSheetWidth, s.y + kMargin);
    Image image;
    image.width = uint32_t(done.Width() * zoom);
    image.height = uint32_t(done.Height() * zoom);
    image.channels = 3;
    const std::vector<uint8_t> rgb = done.Rgb8();
    image.pixels.resize(size_t(image.width) * image.height * 3);
    for (uint32_t y = 0; y < image.height; ++y)
        for (uint32_t x = 0; x < image.width; ++x)
            for (int ch = 0; ch < 3; ++ch)
                image.pixels[(size_t(y) * image.width + x) * 3 + ch] =
                    rgb[(size_t(y / zoom) * done.Width() + x / zoom) * 3 + ch];
    if (!WritePng(output, image, error)) {
        std::fprintf(stderr, "qz-artsheet: %s\n", error.c_str());
        return 2;
    }
    return 0;
}
