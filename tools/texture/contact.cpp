// qz-contact OUTPUT.png DIR [--detail | --pictures]: one PNG sheet of thumbnails of every
// .qzt in DIR, each with its name, size and planes written under it, to judge the library
// at a glance. With --detail each cell shows the middle of the texture at full size
// instead, to judge fine detail. With --pictures the cells are the PNG pictures in DIR
// (rendered looks, say), each under its name.
#include "ImageIo.h"
#include "TextureWriter.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

constexpr uint32_t kThumbW = 200, kThumbH = 150;
constexpr uint32_t kGap = 10, kColumns = 6;
constexpr uint32_t kTextLine = 10;
constexpr uint32_t kCellW = kThumbW + kGap, kCellH = kThumbH + 2 * kTextLine + kGap;

// A 5 by 7 font, one byte a row, bit 4 the leftmost column. Capitals only: the sheet
// prints names in upper case.
struct Glyph {
    char c;
    uint8_t rows[7];
};
const Glyph kFont[] = {
    {'A', {0x0E, 0x11, 0x11, 0x1F, 0x11, 0x11, 0x11}}, {'B', {0x1E, 0x11, 0x11, 0x1E, 0x11, 0x11, 0x1E}},
    {'C', {0x0E, 0x11, 0x10, 0x10, 0x10, 0x11, 0x0E}}, {'D', {0x1E, 0x11, 0x11, 0x11, 0x11, 0x11, 0x1E}},
    {'E', {0x1F, 0x10, 0x10, 0x1E, 0x10, 0x10, 0x1F}}, {'F', {0x1F, 0x10, 0x10, 0x1E, 0x10, 0x10, 0x10}},
    {'G', {0x0E, 0x11, 0x10, 0x17, 0x11, 0x11, 0x0F}}, {'H', {0x11, 0x11, 0x11, 0x1F, 0x11, 0x11, 0x11}},
    {'I', {0x0E, 0x04, 0x04, 0x04, 0x04, 0x04, 0x0E}}, {'J', {0x07, 0x02, 0x02, 0x02, 0x02, 0x12, 0x0C}},
    {'K', {0x11, 0x12, 0x14, 0x18, 0x14, 0x12, 0x11}}, {'L', {0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x1F}},
    {'M', {0x11, 0x1B, 0x15, 0x15, 0x11, 0x11, 0x11}}, {'N', {0x11, 0x11, 0x19, 0x15, 0x13, 0x11, 0x11}},
    {'O', {0x0E, 0x11, 0x11, 0x11, 0x11, 0x11, 0x0E}}, {'P', {0x1E, 0x11, 0x11, 0x1E, 0x10, 0x10, 0x10}},
    {'Q', {0x0E, 0x11, 0x11, 0x11, 0x15, 0x12, 0x0D}}, {'R', {0x1E, 0x11, 0x11, 0x1E, 0x14, 0x12, 0x11}},
    {'S', {0x0F, 0x10, 0x10, 0x0E, 0x01, 0x01, 0x1E}}, {'T', {0x1F, 0x04, 0x04, 0x04, 0x04, 0x04, 0x04}},
    {'U', {0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x0E}}, {'V', {0x11, 0x11, 0x11, 0x11, 0x11, 0x0A, 0x04}},
    {'W', {0x11, 0x11, 0x11, 0x15, 0x15, 0x15, 0x0A}}, {'X', {0x11, 0x11, 0x0A, 0x04, 0x0A, 0x11, 0x11}},
    {'Y', {0x11, 0x11, 0x11, 0x0A, 0x04, 0x04, 0x04}}, {'Z', {0x1F, 0x01, 0x02, 0x04, 0x08, 0x10, 0x1F}},
    {'0', {0x0E, 0x11, 0x13, 0x15, 0x19, 0x11, 0x0E}}, {'1', {0x04, 0x0C, 0x04, 0x04, 0x04, 0x04, 0x0E}},
    {'2', {0x0E, 0x11, 0x01, 0x02, 0x04, 0x08, 0x1F}}, {'3', {0x1F, 0x02, 0x04, 0x02, 0x01, 0x11, 0x0E}},
    {'4', {0x02, 0x06, 0x0A, 0x12, 0x1F, 0x02, 0x02}}, {'5', {0x1F, 0x10, 0x1E, 0x01, 0x01, 0x11, 0x0E}},
    {'6', {0x06, 0x08, 0x10, 0x1E, 0x11, 0x11, 0x0E}}, {'7', {0x1F, 0x01, 0x02, 0x04, 0x08, 0x08, 0x08}},
    {'8', {0x0E, 0x11, 0x11, 0x0E, 0x11, 0x11, 0x0E}}, {'9', {0x0E, 0x11, 0x11, 0x0F, 0x01, 0x02, 0x0C}},
    {'_', {0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x1F}}, {'.', {0x00, 0x00, 0x00, 0x00, 0x00, 0x0C, 0x0C}},
    {'-', {0x00, 0x00, 0x00, 0x1F, 0x00, 0x00, 0x00}}, {'(', {0x02, 0x04, 0x08, 0x08, 0x08, 0x04, 0x02}},
    {')', {0x08, 0x04, 0x02, 0x02, 0x02, 0x04, 0x08}}, {'/', {0x01, 0x01, 0x02, 0x04, 0x08, 0x10, 0x10}},
    {'?', {0x0E, 0x11, 0x01, 0x02, 0x04, 0x00, 0x04}}, {' ', {0, 0, 0, 0, 0, 0, 0}},
};

const Glyph& FindGlyph(char c) {
    if (c >= 'a' && c <= 'z') c = char(c - 'a' + 'A');
    for (const Glyph& g : kFont)
        if (g.c == c) return g;
    return FindGlyph('?');
}

void PutPixel(Image& img, uint32_t x, uint32_t y, uint8_t r, uint8_t g, uint8_t b) {
    if (x >= img.width || y >= img.height) return;
    uint8_t* p = &img.pixels[(size_t(y) * img.width + x) * 3];
    p[0] = r;
    p[1] = g;
    p[2] = b;
}

void DrawText(Image& img, uint32_t x, uint32_t y, const std::string& text, uint8_t level) {
    for (char c : text) {
        const Glyph& g = FindGlyph(c);
        for (uint32_t row = 0; row < 7; ++row)
            for (uint32_t col = 0; col < 5; ++col)
                if (g.rows[row] & (0x10 >> col)) PutPixel(img, x + col, y + row, level, level, level);
        x += 6;
    }
}

// Box-filtered reduction of one texture into the cell at (ox, oy), keeping its
// proportions and centring it.
void DrawThumb(Image& img, uint32_t ox, uint32_t oy, const TextureHeader& h, const std::vector<uint8_t>& planar,
               bool detail) {
    const bool colour = h.planes != 1;
    double scale = std::max(double(h.width) / kThumbW, double(h.height) / kThumbH);
    uint32_t sx = 0, sy = 0; // first source pixel
    if (detail) {
        scale = 1.0;
        sx = h.width > kThumbW ? (h.width - kThumbW) / 2 : 0;
        sy = h.height > kThumbH ? (h.height - kThumbH) / 2 : 0;
    }
    const uint32_t tw = std::min(kThumbW, std::max(1u, uint32_t(h.width / scale)));
    const uint32_t th = std::min(kThumbH, std::max(1u, uint32_t(h.height / scale)));
    ox += (kThumbW - tw) / 2;
    oy += (kThumbH - th) / 2;
    const size_t plane = size_t(h.width) * h.height;
    for (uint32_t ty = 0; ty < th; ++ty) {
        const uint32_t y0 = sy + uint32_t(ty * scale);
        const uint32_t y1 = std::max(y0 + 1, sy + uint32_t((ty + 1) * scale));
        for (uint32_t tx = 0; tx < tw; ++tx) {
            const uint32_t x0 = sx + uint32_t(tx * scale);
            const uint32_t x1 = std::max(x0 + 1, sx + uint32_t((tx + 1) * scale));
            uint64_t sum[3] = {0, 0, 0};
            uint64_t n = 0;
            for (uint32_t y = y0; y < y1 && y < h.height; ++y) {
                for (uint32_t x = x0; x < x1 && x < h.width; ++x) {
                    const size_t i = size_t(y) * h.width + x;
                    for (int p = 0; p < (colour ? 3 : 1); ++p) sum[p] += planar[plane * p + i];
                    ++n;
                }
            }
            if (!n) continue;
            if (!colour) sum[1] = sum[2] = sum[0];
            PutPixel(img, ox + tx, oy + ty, uint8_t(sum[0] / n), uint8_t(sum[1] / n), uint8_t(sum[2] / n));
        }
    }
}

// A picture as the planar texture DrawThumb takes.
bool ReadPicture(const std::filesystem::path& path, TextureHeader& header, std::vector<uint8_t>& planar,
                 std::string& error) {
    Image image;
    if (!ReadImage(path.string(), image, error)) return false;
    header.width = image.width;
    header.height = image.height;
    header.planes = image.channels == 1 ? 1 : 3;
    const size_t plane = size_t(image.width) * image.height;
    planar.assign(plane * header.planes, 0);
    for (size_t i = 0; i < plane; ++i)
        for (uint32_t p = 0; p < header.planes; ++p) planar[plane * p + i] = image.pixels[i * image.channels + p];
    return true;
}

} // namespace

int main(int argc, char** argv) {
    const std::string option = argc == 4 ? argv[3] : "";
    const bool detail = option == "--detail", pictures = option == "--pictures";
    if (argc != 3 && !detail && !pictures) {
        std::fprintf(stderr, "usage: qz-contact OUTPUT.png DIR [--detail | --pictures]\n");
        return 1;
    }
    const std::string output = argv[1];
    const char* extension = pictures ? ".png" : ".qzt";
    std::vector<std::filesystem::path> files;
    std::error_code ec;
    for (const auto& entry : std::filesystem::directory_iterator(argv[2], ec))
        if (entry.is_regular_file() && entry.path().extension() == extension) files.push_back(entry.path());
    if (ec) {
        std::fprintf(stderr, "qz-contact: cannot list %s: %s\n", argv[2], ec.message().c_str());
        return 2;
    }
    if (files.empty()) {
        std::fprintf(stderr, "qz-contact: no %s files in %s\n", extension, argv[2]);
        return 2;
    }
    std::sort(files.begin(), files.end());

    const uint32_t rows = uint32_t((files.size() + kColumns - 1) / kColumns);
    Image sheet;
    sheet.width = kGap + kColumns * kCellW;
    sheet.height = kGap + rows * kCellH;
    sheet.channels = 3;
    sheet.pixels.assign(size_t(sheet.width) * sheet.height * 3, 48);

    int failures = 0;
    for (size_t i = 0; i < files.size(); ++i) {
        const uint32_t ox = kGap + uint32_t(i % kColumns) * kCellW;
        const uint32_t oy = kGap + uint32_t(i / kColumns) * kCellH;
        const std::string name = (pictures ? files[i].stem() : files[i].filename()).string();
        TextureHeader header;
        std::vector<uint8_t> planar;
        std::string error;
        DrawText(sheet, ox, oy + kThumbH + 3, name, 235);
        const bool read = pictures ? ReadPicture(files[i], header, planar, error)
                                   : ReadTextureFile(files[i].string(), header, planar, error);
        if (!read) {
            std::fprintf(stderr, "qz-contact: %s\n", error.c_str());
            DrawText(sheet, ox, oy + kThumbH + 3 + kTextLine, "UNREADABLE", 255);
            ++failures;
            continue;
        }
        DrawThumb(sheet, ox, oy, header, planar, detail);
        if (pictures) continue;
        const std::string facts = std::to_string(header.width) + "X" + std::to_string(header.height) +
                                  (header.planes == 1 ? " GREY" : " COLOUR") + " SET " +
                                  std::to_string(header.info.setId);
        DrawText(sheet, ox, oy + kThumbH + 3 + kTextLine, facts, 160);
    }
    std::string error;
    if (!WritePng(output, sheet, error)) {
        std::fprintf(stderr, "qz-contact: %s\n", error.c_str());
        return 2;
    }
    std::printf("qz-contact: %zu %s on %s\n", files.size(), pictures ? "pictures" : "textures", output.c_str());
    return failures ? 2 : 0;
}
