// The art as the files the resource script takes: BMP pictures (24-bit, or 8-bit with a
// palette), a cursor and an icon file, a RIFF WAVE sound, and the script's lines naming
// them by number.
#pragma once

#include "Canvas.h"
#include "Skin.h"

#include <cstdint>
#include <string>
#include <vector>

namespace artgen {

// Bottom-up BMP files at 96 dpi. With 8 bits the palette holds the picture's own colours
// in the order they first appear (row by row from the top); a picture of more than 256
// colours loses low bits until it fits.
std::vector<uint8_t> EncodeBmp(const Canvas& picture, int bits);
// One 32-bit image with its AND mask (transparent where alpha is below half).
std::vector<uint8_t> EncodeCursor(const CursorImage& cursor);
std::vector<uint8_t> EncodeIcon(const std::vector<RgbaImage>& images);
// PCM, 16-bit, one channel.
std::vector<uint8_t> EncodeWave(const std::vector<int16_t>& samples, uint32_t rate);

struct ArtFile {
    std::string name; // file name, no folder
    std::vector<uint8_t> bytes;
};
// Every file of the art, and last "art.rc", whose lines name the files under `folder`.
std::vector<ArtFile> BuildArtFiles(const Fonts& fonts, const std::string& folder);

} // namespace artgen
