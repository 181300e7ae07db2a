// Fuzz target for the texture reader: header forms, sizes and the zlib stream.
// Byte 0 picks the header form (bit 0 set: the older 16-byte one); the rest is the file.
// With bit 1 set, what follows the header is compressed here first, so that streams of
// every length meet headers of every size (random bytes are rarely a zlib stream).
#include "raster/AWashFile.h"
#include "raster/Raster.h"

#include <cstdint>
#include <cstdio>
#include <vector>

#include <zlib.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1) return 0;
    std::FILE* stream = std::tmpfile();
    if (!stream) return 0;
    const bool legacy = data[0] & 1;
    const size_t header = legacy ? 16 : 52;
    if ((data[0] & 2) && size - 1 > header) {
        std::fwrite(data + 1, 1, header, stream);
        uLongf packedSize = compressBound(uLong(size - 1 - header));
        std::vector<uint8_t> packed(packedSize);
        compress(packed.data(), &packedSize, data + 1 + header, uLong(size - 1 - header));
        std::fwrite(packed.data(), 1, packedSize, stream);
    } else if (size > 1) {
        std::fwrite(data + 1, 1, size - 1, stream);
    }
    std::rewind(stream);
    AWashFile file;
    file.LegacyHeader = legacy;
    if (!file.InitOpen(stream)) return 0;
    Raster* raster = nullptr;
    file.Rasterize(raster);
    if (raster && raster->PixelsIfAny()) {
        // Touch the first and the last byte: the raster must be whole.
        volatile uint8_t sink = raster->PixelsIfAny()[0];
        sink = raster->PixelsIfAny()[raster->Storage.Bytes - 1];
        (void)sink;
    }
    FreeRaster(raster);
    return 0;
}
