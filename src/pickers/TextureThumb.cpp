// The grey picture of a texture: a centred crop sampled every `scale` pixels, and its
// cache file beside the texture, so a page shows without inflating textures.
#include "pickers/Thumbnails.h"

#include "raster/AWashFile.h"
#include "raster/Raster.h"

#include <algorithm>
#include <string>

namespace {

std::string EntryPath(const Catalogue& list, int32_t index) {
    return std::string(list.Folder) + "/" + list.ShownEntries[size_t(index)].Name;
}

bool ValidRow(const Catalogue& list, int32_t index) { return index >= 0 && size_t(index) < list.ShownEntries.size(); }

} // namespace

bool GreyThumbFromTexture(const char* path, float scale, int32_t width, int32_t height, ThumbImage& out,
                          bool* clipped) {
    out = ThumbImage{};
    if (!path || width <= 0 || height <= 0) return false;
    AWashFile file;
    if (!file.InitWithFile(path)) return false;
    Raster* raster = nullptr;
    const bool read = file.Rasterize(raster);
    const uint8_t* plane = read && raster ? raster->ImageOrigin() : nullptr;
    if (!plane) {
        FreeRaster(raster);
        return false;
    }
    const int32_t textureWidth = raster->Width(), textureHeight = raster->Height();
    const int32_t rowBytes = raster->RowBytes();

    int32_t w = int32_t(float(width) * scale), h = int32_t(float(height) * scale);
    bool cut = false;
    if (w > textureWidth) {
        cut = true;
        w = textureWidth;
    }
    if (h > textureHeight) {
        cut = true;
        h = textureHeight;
    }
    // A small texture is not magnified: its whole width is sampled at step 1 or more.
    w = std::max(w, width);
    h = std::max(h, height);
    const float fx = float(w) / float(width), fy = float(h) / float(height);
    const int32_t x0 = (textureWidth - w) / 2, y0 = (textureHeight - h) / 2;

    out.width = width;
    out.height = height;
    out.stride = (width * 3 + 3) & ~3;
    out.bytes.assign(size_t(out.stride) * size_t(height), 0);
    for (int32_t j = 0; j < height; ++j) {
        // Narrower than the picture, the crop starts left of or above the texture: its
        // first row and column repeat there.
        const int32_t sy = std::clamp(int32_t(float(j) * fy + float(y0)), 0, textureHeight - 1);
        const uint8_t* from = plane + size_t(sy) * size_t(rowBytes);
        uint8_t* to = out.bytes.data() + size_t(height - 1 - j) * size_t(out.stride); // top row first
        for (int32_t i = 0; i < width; ++i, to += 3) {
            const int32_t sx = std::clamp(int32_t(float(i) * fx + float(x0)), 0, textureWidth - 1);
            to[0] = to[1] = to[2] = from[sx];
        }
    }
    FreeRaster(raster);
    if (clipped) *clipped = cut;
    return true;
}

bool LoadThumbFile(const Catalogue& list, int32_t index, ThumbImage& out) {
    out = ThumbImage{};
    if (!ValidRow(list, index)) return false;
    // Any other size is an old cache: it is made anew.
    if (ReadBmp((EntryPath(list, index) + ".bmp").c_str(), out) && out.width == ThumbWidth && out.height == ThumbHeight)
        return true;
    out = ThumbImage{};
    return false;
}

bool MakeThumbFromTexture(Catalogue& list, int32_t index, ThumbImage& out) {
    out = ThumbImage{};
    if (!ValidRow(list, index)) return false;
    TextureEntry& entry = list.ShownEntries[size_t(index)];
    const std::string path = EntryPath(list, index);
    bool clipped = false;
    if (!GreyThumbFromTexture(path.c_str(), entry.ThumbScale, ThumbWidth, ThumbHeight, out, &clipped)) return false;
    entry.ThumbScale = 4.0f;
    entry.ThumbResolution = 2048;
    if (clipped) entry.Clipped = 1;
    // The shown rows are copies: the catalogue's own row keeps what was learnt.
    if (entry.SourceIndex >= 0 && size_t(entry.SourceIndex) < list.AllEntries.size()) {
        TextureEntry& source = list.AllEntries[size_t(entry.SourceIndex)];
        source.ThumbScale = entry.ThumbScale;
        source.ThumbResolution = entry.ThumbResolution;
        source.Clipped = entry.Clipped;
    }
    // A folder that cannot be written still shows thumbnails; the next visit tries again.
    WriteBmp(out.bytes.data(), out.width, out.height, out.stride, (path + ".bmp").c_str());
    return true;
}
