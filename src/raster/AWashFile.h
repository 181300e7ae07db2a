// AWashFile: the reader of texture files (.qzt).
//
// A texture file is a header and one zlib stream that inflates to the planes one
// after the other, Width * Height bytes each, rows top to bottom, no padding. Two
// header forms exist:
//   - current, 52 bytes, little-endian: "1tzq" (the word 'qzt1'), width, height,
//     planes, then words the catalogue reads (set id at 20, extra at 24, effect
//     mask at 28); payload at 52.
//   - older, 16 bytes, big-endian: "wash", width, height, planes; payload at 16.
// Planes 1 is one grey plane; any other value is three planes.
//
// The form is chosen by the path, not by the file: a path with a '.' anywhere is
// read as the current form, one without as the older form. Failures go to the
// standard error stream only; telling the user is the loader's business.
//
// Hardening: a header whose size is 0, or whose planes would take more than
// kMaxTextureBytes (or a 32-bit plane size) fails the header check, and inflating
// never writes past the raster: a stream longer than it fails.
#pragma once

#include "raster/Raster.h"

#include <cstdint>
#include <cstdio>

inline constexpr uint32_t kWashMagic = 0x77617368u;    // "wash", big-endian
inline constexpr uint32_t kTextureMagic = 0x717A7431u; // 'qzt1', stored little-endian
inline constexpr uint64_t kMaxTextureBytes = uint64_t(1) << 30;

class AWashFile {
public:
    // LegacyHeader starts at 1: only a path with a dot clears it.
    AWashFile();
    ~AWashFile();
    AWashFile(const AWashFile&) = delete;
    AWashFile& operator=(const AWashFile&) = delete;

    // Opens `path` ("rb"), picks the header form by the path and reads the header.
    bool InitWithFile(const char* path);
    // Takes `stream` (closing any held before) and reads the header from offset 0.
    // False, with the file closed and the header values zeroed, when it does not hold.
    bool InitOpen(std::FILE* stream);

    uint32_t Width() const { return Header.Width; }
    uint32_t Height() const { return Header.Height; }

    // Makes a raster (mode 1 with one plane for planes 1, else mode 3 with three) and
    // inflates the payload into it. `out` receives the raster, or null when not even
    // its record could be had; a raster whose memory could not be had comes back empty
    // with true. On a corrupt or short stream `out` holds what was inflated and the
    // answer is false; the caller owns `out` in every case.
    bool Rasterize(Raster*& out);

    uint8_t LegacyHeader = 1;
    // The decoded header; the older form is read onto it whole and swapped.
    struct Words {
        uint32_t Magic;
        uint32_t Width;
        uint32_t Height;
        uint32_t Planes;
    } Header = {};
    uint8_t FileHeader[52] = {};
    std::FILE* Stream = nullptr;
};

// Swaps the bytes of a 32-bit value, each 16-bit half by itself.
uint32_t SwapBytes32(uint32_t value);

// Inflates one zlib stream from the stream's current position into `dest`. Answers 0
// at the stream's end, -1 on a read error, -3 on corrupt data or a stream that ends
// early (also for a stream asking for a dictionary), -4 when memory fails, and -5
// when the stream holds more than `size` bytes: nothing is ever written past them.
int InflateStream(std::FILE* stream, uint8_t* dest, size_t size);
