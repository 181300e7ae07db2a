// Shared helpers of the raster tests: rasters owned by the test, noise, texture files
// made with zlib directly.
#pragma once

#include "raster/Raster.h"
#include "common/TempPaths.h"

#include <zlib.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace rastertest {

struct RasterDeleter {
    void operator()(Raster* r) const { FreeRaster(r); }
};
using RasterPtr = std::unique_ptr<Raster, RasterDeleter>;

inline std::vector<uint8_t> Noise(size_t n, uint32_t seed) {
    std::vector<uint8_t> v(n);
    for (auto& b : v) b = uint8_t((seed = seed * 214013u + 2531011u) >> 16);
    return v;
}

// A borderless 8-bit raster holding `samples` (plane after plane).
inline RasterPtr Make(int32_t w, int32_t h, const std::vector<uint8_t>& samples, uint8_t planes = 1) {
    RasterPtr r(NewRaster(planes == 1 ? 1 : 3, RasterRect{0, 0, h, w}, planes, 8, 0, 0));
    uint8_t* p = r->Pixels();
    if (!samples.empty()) std::memcpy(p, samples.data(), std::min(samples.size(), r->Storage.Bytes));
    return r;
}

inline std::vector<uint8_t> Bytes(Raster& r) {
    const uint8_t* p = r.Pixels();
    return std::vector<uint8_t>(p, p + r.Storage.Bytes);
}

inline std::vector<uint8_t> Compress(const std::vector<uint8_t>& raw) {
    uLongf size = compressBound(uLong(raw.size()));
    std::vector<uint8_t> out(size);
    compress2(out.data(), &size, raw.data(), uLong(raw.size()), 6);
    out.resize(size);
    return out;
}

// A file of either header form followed by `stream` as it is.
inline void WriteTexture(const std::string& path, bool legacy, uint32_t w, uint32_t h, uint32_t planes,
                         const std::vector<uint8_t>& stream) {
    std::vector<uint8_t> b =
        legacy ? std::vector<uint8_t>{'w', 'a', 's', 'h'} : std::vector<uint8_t>{'1', 't', 'z', 'q'};
    for (uint32_t v : {w, h, planes})
        for (int i = 0; i < 4; ++i) b.push_back(uint8_t(v >> (legacy ? 24 - 8 * i : 8 * i)));
    if (!legacy) b.resize(52, 0);
    b.insert(b.end(), stream.begin(), stream.end());
    std::FILE* f = std::fopen(path.c_str(), "wb");
    if (!f) return;
    std::fwrite(b.data(), 1, b.size(), f);
    std::fclose(f);
}

inline std::string TempFile(const std::string& name) { return (ProcessTempDir() / name).string(); }

} // namespace rastertest
