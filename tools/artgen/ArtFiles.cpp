#include "ArtFiles.h"

#include "resources/ArtIds.h"

#include <algorithm>
#include <map>

namespace artgen {

namespace {

class Bytes {
public:
    void U8(uint32_t v) { out_.push_back(uint8_t(v)); }
    void U16(uint32_t v) {
        U8(v);
        U8(v >> 8);
    }
    void U32(uint32_t v) {
        U16(v);
        U16(v >> 16);
    }
    void Tag(const char* t) { out_.insert(out_.end(), t, t + 4); }
    void Append(const std::vector<uint8_t>& more) { out_.insert(out_.end(), more.begin(), more.end()); }
    size_t Size() const { return out_.size(); }
    std::vector<uint8_t>& Data() { return out_; }

private:
    std::vector<uint8_t> out_;
};

constexpr uint32_t kPixelsPerMetre = 3780; // 96 dpi

void InfoHeader(Bytes& b, int width, int height, int bits, uint32_t imageBytes, uint32_t colours) {
    b.U32(40);
    b.U32(uint32_t(width));
    b.U32(uint32_t(height));
    b.U16(1);
    b.U16(uint32_t(bits));
    b.U32(0); // no compression
    b.U32(imageBytes);
    b.U32(kPixelsPerMetre);
    b.U32(kPixelsPerMetre);
    b.U32(colours);
    b.U32(0);
}

uint32_t RowBytes(int width, int bits) { return uint32_t((width * bits + 31) / 32 * 4); }

// The picture's colours as 0xRRGGBB, at most 256 of them.
std::vector<uint32_t> Palette(const std::vector<uint8_t>& rgb, std::vector<uint32_t>& pixels) {
    for (uint32_t mask = 0xFF;; mask = (mask << 1) & 0xFF) {
        std::vector<uint32_t> palette;
        std::map<uint32_t, uint32_t> index;
        pixels.clear();
        for (size_t i = 0; i + 2 < rgb.size(); i += 3) {
            const uint32_t c = (rgb[i] & mask) << 16 | (rgb[i + 1] & mask) << 8 | (rgb[i + 2] & mask);
            const auto it = index.emplace(c, uint32_t(palette.size())).first;
            if (it->second == palette.size()) palette.push_back(c);
            pixels.push_back(it->second);
        }
        if (palette.size() <= 256) return palette;
    }
}

} // namespace

std::vector<uint8_t> EncodeBmp(const Canvas& picture, int bits) {
    const int w = picture.Width(), h = picture.Height();
    const std::vector<uint8_t> rgb = picture.Rgb8();
    std::vector<uint32_t> indices;
    const std::vector<uint32_t> palette = bits == 8 ? Palette(rgb, indices) : std::vector<uint32_t>{};
    const uint32_t row = RowBytes(w, bits), image = row * uint32_t(h);
    const uint32_t offset = 14 + 40 + 4 * uint32_t(palette.size());
    Bytes b;
    b.U8('B');
    b.U8('M');
    b.U32(offset + image);
    b.U32(0);
    b.U32(offset);
    InfoHeader(b, w, h, bits, image, uint32_t(palette.size()));
    for (uint32_t c : palette) b.U32(c); // blue, green, red, 0 in file order
    for (int y = h - 1; y >= 0; --y) {
        const size_t start = b.Size();
        for (int x = 0; x < w; ++x) {
            const size_t i = size_t(y) * w + x;
            if (bits == 8) {
                b.U8(indices[i]);
            } else {
                b.U8(rgb[i * 3 + 2]);
                b.U8(rgb[i * 3 + 1]);
                b.U8(rgb[i * 3]);
            }
        }
        while (b.Size() - start < row) b.U8(0);
    }
    return std::move(b.Data());
}

namespace {

// The image part of a cursor or icon: the header counts the colour and mask rows together.
std::vector<uint8_t> IconImage(const RgbaImage& img) {
    const uint32_t maskRow = RowBytes(img.width, 1);
    Bytes b;
    InfoHeader(b, img.width, img.height * 2, 32, uint32_t(img.width * img.height * 4) + maskRow * uint32_t(img.height),
               0);
    for (int y = img.height - 1; y >= 0; --y)
        for (int x = 0; x < img.width; ++x) {
            const uint8_t* p = &img.pixels[(size_t(y) * img.width + x) * 4];
            b.U8(p[2]);
            b.U8(p[1]);
            b.U8(p[0]);
            b.U8(p[3]);
        }
    for (int y = img.height - 1; y >= 0; --y) {
        std::vector<uint8_t> row(maskRow, 0);
        for (int x = 0; x < img.width; ++x)
            if (img.pixels[(size_t(y) * img.width + x) * 4 + 3] < 128) row[size_t(x / 8)] |= uint8_t(0x80 >> (x % 8));
        b.Append(row);
    }
    return std::move(b.Data());
}

// type 1 icon, 2 cursor; the two words after each entry's size are planes and bits for an
// icon, the hot spot for a cursor.
std::vector<uint8_t> IconFile(uint32_t type, const std::vector<RgbaImage>& images, uint32_t word1, uint32_t word2) {
    Bytes b;
    b.U16(0);
    b.U16(type);
    b.U16(uint32_t(images.size()));
    std::vector<std::vector<uint8_t>> parts;
    uint32_t offset = 6 + 16 * uint32_t(images.size());
    for (const RgbaImage& img : images) {
        parts.push_back(IconImage(img));
        b.U8(uint32_t(img.width) & 0xFF);
        b.U8(uint32_t(img.height) & 0xFF);
        b.U8(0);
        b.U8(0);
        b.U16(word1);
        b.U16(word2);
        b.U32(uint32_t(parts.back().size()));
        b.U32(offset);
        offset += uint32_t(parts.back().size());
    }
    for (const auto& p : parts) b.Append(p);
    return std::move(b.Data());
}

} // namespace

std::vector<uint8_t> EncodeCursor(const CursorImage& cursor) {
    return IconFile(2, {cursor.image}, uint32_t(cursor.hotX), uint32_t(cursor.hotY));
}

std::vector<uint8_t> EncodeIcon(const std::vector<RgbaImage>& images) { return IconFile(1, images, 1, 32); }

std::vector<uint8_t> EncodeWave(const std::vector<int16_t>& samples, uint32_t rate) {
    const uint32_t data = uint32_t(samples.size() * 2);
    Bytes b;
    b.Tag("RIFF");
    b.U32(4 + 8 + 16 + 8 + data);
    b.Tag("WAVE");
    b.Tag("fmt ");
    b.U32(16);
    b.U16(1); // PCM
    b.U16(1);
    b.U32(rate);
    b.U32(rate * 2);
    b.U16(2);
    b.U16(16);
    b.Tag("data");
    b.U32(data);
    for (int16_t s : samples) b.U16(uint16_t(s));
    return std::move(b.Data());
}

std::vector<ArtFile> BuildArtFiles(const Fonts& fonts, const std::string& folder) {
    std::vector<ArtFile> files;
    std::string script = "// Written by qz-artgen: the dialog's pictures, cursors, icon and sound.\n";
    auto add = [&](const std::string& name, std::vector<uint8_t> bytes, int id, const char* type) {
        files.push_back({name, std::move(bytes)});
        script += std::to_string(id) + " " + type + " \"" + folder + "/" + name + "\"\n";
    };
    const std::map<int, Canvas> pictures = DrawBitmaps(fonts);
    for (const art::BitmapSpec& want : art::kBitmaps)
        add("bitmap-" + std::to_string(want.id) + ".bmp", EncodeBmp(pictures.at(want.id), want.bits), want.id,
            "BITMAP");
    for (int id : {art::kCursorPreviewDrag, art::kCursorPreviewHover})
        add("cursor-" + std::to_string(id) + ".cur", EncodeCursor(DrawCursor(id)), id, "CURSOR");
    std::vector<RgbaImage> icons;
    for (int size : art::kIconSizes) icons.push_back(DrawIcon(fonts, size));
    add("icon-" + std::to_string(art::kIcon) + ".ico", EncodeIcon(icons), art::kIcon, "ICON");
    add("sound-" + std::to_string(art::kAutoSound) + ".wav", EncodeWave(SynthesiseAutoSound(), art::kSoundRate),
        art::kAutoSound, "WAVE");
    files.push_back({"art.rc", std::vector<uint8_t>(script.begin(), script.end())});
    return files;
}

} // namespace artgen
