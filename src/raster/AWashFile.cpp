// AWashFile: header forms and rasterizing.
#include "raster/AWashFile.h"

#include <cstring>

uint32_t SwapBytes32(uint32_t value) {
    const uint32_t low = value & 0xFFFFu, high = value >> 16;
    const uint32_t lowSwapped = ((low & 0xFFu) << 8) | (low >> 8);
    const uint32_t highSwapped = ((high & 0xFFu) << 8) | (high >> 8);
    return (lowSwapped << 16) | highSwapped;
}

namespace {

uint32_t LoadLittle32(const uint8_t* p) {
    return uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24;
}

uint32_t PlaneCount(uint32_t planes) { return planes == 1 ? 1 : 3; }

// Sizes a raster can hold: no side 0, sides that fit its 32-bit rectangle, a plane
// whose bit size fits 32 bits, and no more than kMaxTextureBytes in all.
bool SaneSize(uint32_t width, uint32_t height, uint32_t planes) {
    if (width == 0 || height == 0 || width > 0x7FFFFFFFu || height > 0x7FFFFFFFu) return false;
    const uint64_t plane = uint64_t(width) * height;
    if (plane * 8 > 0xFFFFFFFFu) return false;
    return plane * PlaneCount(planes) <= kMaxTextureBytes;
}

} // namespace

AWashFile::AWashFile() = default;

AWashFile::~AWashFile() {
    if (Stream) std::fclose(Stream);
    Stream = nullptr;
}

bool AWashFile::InitWithFile(const char* path) {
    std::FILE* stream = path ? std::fopen(path, "rb") : nullptr;
    if (path && std::strchr(path, '.')) LegacyHeader = 0;
    return InitOpen(stream);
}

bool AWashFile::InitOpen(std::FILE* stream) {
    if (Stream && Stream != stream) std::fclose(Stream);
    Stream = stream;
    if (!Stream) {
        std::perror("AWashFile::InitOpen() failed.");
        return false;
    }
    std::fseek(Stream, 0, SEEK_SET);
    bool holds = false;
    if (LegacyHeader) {
        uint8_t bytes[16] = {};
        if (std::fread(bytes, 1, sizeof bytes, Stream) == sizeof bytes) {
            // The words are big-endian on disk: decode them the same on any machine.
            Header.Magic = SwapBytes32(LoadLittle32(bytes));
            Header.Width = SwapBytes32(LoadLittle32(bytes + 4));
            Header.Height = SwapBytes32(LoadLittle32(bytes + 8));
            Header.Planes = SwapBytes32(LoadLittle32(bytes + 12));
            holds = Header.Magic == kWashMagic;
        }
    } else {
        if (std::fread(FileHeader, 1, sizeof FileHeader, Stream) == sizeof FileHeader &&
            LoadLittle32(FileHeader) == kTextureMagic) {
            Header.Width = LoadLittle32(FileHeader + 4);
            Header.Height = LoadLittle32(FileHeader + 8);
            Header.Planes = LoadLittle32(FileHeader + 12);
            holds = true;
        }
    }
    if (holds && !SaneSize(Header.Width, Header.Height, Header.Planes)) {
        std::fputs("AWashFile::InitOpen() - Header gives an impossible size\n", stderr);
        holds = false;
    } else if (!holds) {
        std::perror("AWashFile::InitWithFile - Header check failed, file does not appear to be a wash file");
    }
    if (!holds) {
        std::fclose(Stream);
        Stream = nullptr; // closed: the destructor must not close it again
        Header = {};
        return false;
    }
    return true;
}

bool AWashFile::Rasterize(Raster*& out) {
    out = nullptr;
    if (!Stream) return false;
    if (LegacyHeader ? Header.Magic != kWashMagic : LoadLittle32(FileHeader) != kTextureMagic) return false;
    const RasterRect bounds{0, 0, int32_t(Header.Height), int32_t(Header.Width)};
    const bool grey = Header.Planes == 1;
    Raster* raster = NewRaster(grey ? 1 : 3, bounds, grey ? 1 : 3, 8, 0, 1);
    if (!raster) return true;
    std::fseek(Stream, LegacyHeader ? 16 : 52, SEEK_SET);
    const size_t planeSize = raster->PlaneBytes();
    uint8_t* pixels = raster->Pixels();
    out = raster;
    if (!pixels) return true;
    const int result = InflateStream(Stream, pixels, planeSize * raster->Planes);
    if (result != 0) {
        std::fprintf(stderr, "InflateStream failed with error %d.\n", result);
        return false;
    }
    return true;
}
