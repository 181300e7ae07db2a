// TrueType fonts for the words inside the art: the outlines of a font file turned into
// paths (no hinting), spaced by the font's advances and its pair kerning. Text is UTF-8.
#pragma once

#include "Canvas.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace artgen {

class Font {
public:
    // Reads the whole file; false with "PATH: reason" when it is not a usable TrueType font.
    bool Load(const std::string& path, std::string& error);

    // `text` at `size` pixels to the em, its baseline starting at (x, baseline); `tracking`
    // pixels are added after each character.
    Path Text(const std::string& text, float size, float x, float baseline, float tracking = 0.0f) const;
    float Width(const std::string& text, float size, float tracking = 0.0f) const;
    // Height of capitals above the baseline.
    float CapHeight(float size) const { return float(capHeight_) * size / float(unitsPerEm_); }

private:
    uint32_t U16(size_t at) const;
    uint32_t U32(size_t at) const;
    int32_t I16(size_t at) const { return int16_t(U16(at)); }
    int GlyphIndex(uint32_t codepoint) const;
    int Advance(int glyph) const;
    int Kerning(int left, int right) const;
    // Appends the glyph's outline, its origin at (x, baseline), font units times `scale`.
    void AddGlyph(Path& out, int glyph, float scale, float x, float baseline, int depth) const;

    std::vector<uint8_t> data_;
    size_t glyf_ = 0, loca_ = 0, hmtx_ = 0, cmap4_ = 0;
    int unitsPerEm_ = 1000, glyphCount_ = 0, hMetrics_ = 0, capHeight_ = 700;
    bool longLoca_ = false;
    std::map<uint32_t, int> kerning_; // left << 16 | right
};

std::vector<uint32_t> DecodeUtf8(const std::string& text);

} // namespace artgen
