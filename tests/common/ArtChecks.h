// Checks of the generated art, shared by the native test of the generator (its files) and
// the Win64 test of the built module (its resources).
#pragma once

#include "resources/ArtIds.h"

#include <cstddef>
#include <cstdint>

// A packed DIB (info header, palette, pixels), as a BITMAP resource holds it and a BMP file
// after its 14-byte file header: size, depth and layout as the table says.
void CheckDib(const uint8_t* dib, size_t size, const art::BitmapSpec& want);
// Red of pixel (x, y), y counted from the top, of a packed 24- or 8-bit DIB; -1 outside it.
int DibRed(const uint8_t* dib, size_t size, int x, int y);
// Bitmap 155: grey weights of a quarter circle of radius 20, 255 at the outer corner.
void CheckCornerWeights(const uint8_t* dib, size_t size);
// A RIFF WAVE: PCM, one channel, a data chunk of the length it states, under a second,
// within the size limit, and not silent.
void CheckAutoSound(const uint8_t* data, size_t size);
