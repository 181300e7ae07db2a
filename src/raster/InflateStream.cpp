// InflateStream: one zlib stream from a file into memory, never past its end.
#include "raster/AWashFile.h"

#include <zlib.h>

#include <cstdlib>

namespace {

constexpr size_t kReadChunk = 0x40000;
constexpr size_t kWriteChunk = 0x80000;

} // namespace

int InflateStream(std::FILE* stream, uint8_t* dest, size_t size) {
    unsigned char* buffer = static_cast<unsigned char*>(std::malloc(kReadChunk));
    if (!buffer) {
        std::perror("InflateStream(): Failed to allocate read buffer.");
        return Z_MEM_ERROR;
    }
    z_stream z = {};
    int ret = inflateInit(&z);
    if (ret != Z_OK) {
        std::perror("InflateStream(): inflateInit(&zStream) failed.");
        std::free(buffer);
        return ret;
    }
    size_t written = 0;
    // Where output goes once the raster is full: anything landing here means the
    // stream is longer than the raster.
    unsigned char overflow[1];
    do {
        const size_t got = std::fread(buffer, 1, kReadChunk, stream);
        if (std::ferror(stream)) {
            inflateEnd(&z);
            std::free(buffer);
            return -1;
        }
        if (got == 0) break;
        z.next_in = buffer;
        z.avail_in = uInt(got);
        do {
            const size_t room = size - written;
            const size_t chunk = room < kWriteChunk ? room : kWriteChunk;
            z.next_out = chunk ? dest + written : overflow;
            z.avail_out = chunk ? uInt(chunk) : uInt(sizeof overflow);
            ret = inflate(&z, Z_NO_FLUSH);
            if (ret == Z_DATA_ERROR || ret == Z_MEM_ERROR || ret == Z_NEED_DICT) {
                inflateEnd(&z);
                std::free(buffer);
                return ret == Z_NEED_DICT ? Z_DATA_ERROR : ret;
            }
            if (!chunk) {
                if (z.avail_out == 0) {
                    inflateEnd(&z);
                    std::free(buffer);
                    return Z_BUF_ERROR;
                }
                break; // nothing more came out: the stream may still end cleanly
            }
            written += chunk - z.avail_out;
            // Z_STREAM_ERROR and Z_BUF_ERROR are no errors here: the loops go on.
        } while (z.avail_out == 0);
    } while (ret != Z_STREAM_END);
    inflateEnd(&z);
    std::free(buffer);
    return ret == Z_STREAM_END ? 0 : Z_DATA_ERROR;
}
