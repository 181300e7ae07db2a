#include "TextureWriter.h"

#include <zlib.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <functional>
#include <memory>
#include <thread>

namespace {

// "qzt1" read from the most significant byte down, stored little-endian: "1tzq".
constexpr uint32_t kCurrentMagic = 0x717A7431u;
// "wash" as a big-endian word.
constexpr uint32_t kLegacyMagic = 0x77617368u;

void PutLe32(uint8_t* p, uint32_t v) {
    p[0] = uint8_t(v);
    p[1] = uint8_t(v >> 8);
    p[2] = uint8_t(v >> 16);
    p[3] = uint8_t(v >> 24);
}

void PutBe32(uint8_t* p, uint32_t v) {
    p[0] = uint8_t(v >> 24);
    p[1] = uint8_t(v >> 16);
    p[2] = uint8_t(v >> 8);
    p[3] = uint8_t(v);
}

uint32_t GetLe32(const uint8_t* p) {
    return uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24;
}

uint32_t GetBe32(const uint8_t* p) {
    return uint32_t(p[0]) << 24 | uint32_t(p[1]) << 16 | uint32_t(p[2]) << 8 | uint32_t(p[3]);
}

struct FileCloser {
    void operator()(FILE* f) const { std::fclose(f); }
};

// Deflates `size` bytes and hands each finished chunk to `sink`. zlib's avail_in is
// 32 bits wide, so the input is fed in slices.
template <typename Sink> bool DeflateTo(const uint8_t* data, uint64_t size, int level, std::string& error, Sink sink) {
    z_stream zs{};
    if (deflateInit(&zs, level) != Z_OK) {
        error = "cannot initialise zlib";
        return false;
    }
    std::vector<uint8_t> chunk(1 << 18);
    uint64_t fed = 0;
    int status = Z_OK;
    do {
        if (zs.avail_in == 0 && fed < size) {
            const uint64_t slice = size - fed < (1u << 30) ? size - fed : (1u << 30);
            zs.next_in = const_cast<Bytef*>(data + fed);
            zs.avail_in = uInt(slice);
            fed += slice;
        }
        const int flush = fed == size ? Z_FINISH : Z_NO_FLUSH;
        zs.next_out = chunk.data();
        zs.avail_out = uInt(chunk.size());
        status = deflate(&zs, flush);
        if (status == Z_STREAM_ERROR) break;
        const size_t produced = chunk.size() - zs.avail_out;
        if (produced && !sink(chunk.data(), produced)) {
            deflateEnd(&zs);
            return false;
        }
    } while (status != Z_STREAM_END);
    deflateEnd(&zs);
    if (status != Z_STREAM_END) {
        error = "zlib failed to compress the planes";
        return false;
    }
    return true;
}

} // namespace

bool CheckTextureSize(uint32_t width, uint32_t height, uint32_t planes, std::string& error) {
    if (width == 0 || height == 0) {
        error = "texture size " + std::to_string(width) + " by " + std::to_string(height) + " is empty";
        return false;
    }
    if (planes != 1 && planes != 3) {
        error = "a texture has 1 or 3 planes, not " + std::to_string(planes);
        return false;
    }
    const uint64_t samples = uint64_t(width) * height * planes;
    if (samples > kMaxTextureSamples) {
        error = "texture of " + std::to_string(width) + " by " + std::to_string(height) + " by " +
                std::to_string(planes) + " samples exceeds the limit of 1 GiB";
        return false;
    }
    return true;
}

std::vector<uint8_t> BuildTextureHeader(uint32_t width, uint32_t height, uint32_t planes, const TextureInfo& info,
                                        TextureHeaderForm form) {
    if (form == TextureHeaderForm::Legacy) {
        std::vector<uint8_t> h(kLegacyHeaderSize, 0);
        PutBe32(&h[0], kLegacyMagic);
        PutBe32(&h[4], width);
        PutBe32(&h[8], height);
        PutBe32(&h[12], planes);
        return h;
    }
    std::vector<uint8_t> h(kCurrentHeaderSize, 0);
    PutLe32(&h[0], kCurrentMagic);
    PutLe32(&h[4], width);
    PutLe32(&h[8], height);
    PutLe32(&h[12], planes);
    PutLe32(&h[20], info.setId);
    PutLe32(&h[24], info.extra);
    PutLe32(&h[28], info.effectMask);
    return h;
}

bool EncodeTexture(uint32_t width, uint32_t height, uint32_t planes, const uint8_t* planar, const TextureInfo& info,
                   TextureHeaderForm form, std::vector<uint8_t>& out, std::string& error, int level) {
    if (!CheckTextureSize(width, height, planes, error)) return false;
    if (!planar) {
        error = "no pixel data";
        return false;
    }
    out = BuildTextureHeader(width, height, planes, info, form);
    return DeflateTo(planar, uint64_t(width) * height * planes, level, error, [&](const uint8_t* p, size_t n) {
        out.insert(out.end(), p, p + n);
        return true;
    });
}

bool WriteTextureFile(const std::string& path, uint32_t width, uint32_t height, uint32_t planes, const uint8_t* planar,
                      const TextureInfo& info, TextureHeaderForm form, std::string& error, int level) {
    if (!CheckTextureSize(width, height, planes, error)) return false;
    if (!planar) {
        error = "no pixel data";
        return false;
    }
    // Written beside the target under a name of its own and renamed, so that a reader
    // never sees half a file and two writers of the same file never mix their bytes.
    const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
    const size_t self = std::hash<std::thread::id>()(std::this_thread::get_id());
    const std::string partial = path + "." + std::to_string(uint64_t(stamp) ^ uint64_t(self)) + ".part";
    std::unique_ptr<FILE, FileCloser> file(std::fopen(partial.c_str(), "wb"));
    if (!file) {
        error = "cannot create " + partial + ": " + std::strerror(errno);
        return false;
    }
    const std::vector<uint8_t> header = BuildTextureHeader(width, height, planes, info, form);
    bool ok = std::fwrite(header.data(), 1, header.size(), file.get()) == header.size();
    if (ok) {
        ok = DeflateTo(planar, uint64_t(width) * height * planes, level, error,
                       [&](const uint8_t* p, size_t n) { return std::fwrite(p, 1, n, file.get()) == n; });
    }
    ok = std::fclose(file.release()) == 0 && ok;
    if (!ok) {
        if (error.empty()) error = "cannot write " + partial + ": " + std::strerror(errno);
    } else if (std::rename(partial.c_str(), path.c_str()) != 0) {
        // Windows does not rename onto an existing file.
        std::remove(path.c_str());
        if (std::rename(partial.c_str(), path.c_str()) != 0) {
            error = "cannot rename " + partial + " to " + path + ": " + std::strerror(errno);
            ok = false;
        }
    }
    if (!ok) std::remove(partial.c_str());
    return ok;
}

bool ParseTextureHeader(const uint8_t* bytes, size_t size, TextureHeader& out, std::string& error) {
    out = TextureHeader{};
    if (size >= kCurrentHeaderSize && GetLe32(bytes) == kCurrentMagic) {
        out.form = TextureHeaderForm::Current;
        out.width = GetLe32(bytes + 4);
        out.height = GetLe32(bytes + 8);
        out.planes = GetLe32(bytes + 12);
        out.info.setId = GetLe32(bytes + 20);
        out.info.extra = GetLe32(bytes + 24);
        out.info.effectMask = GetLe32(bytes + 28);
        out.payloadOffset = kCurrentHeaderSize;
        return true;
    }
    if (size >= kLegacyHeaderSize && GetBe32(bytes) == kLegacyMagic) {
        out.form = TextureHeaderForm::Legacy;
        out.width = GetBe32(bytes + 4);
        out.height = GetBe32(bytes + 8);
        out.planes = GetBe32(bytes + 12);
        out.payloadOffset = kLegacyHeaderSize;
        return true;
    }
    error =
        size < kLegacyHeaderSize ? "file too short for a texture header" : "not a texture file (unknown magic bytes)";
    return false;
}

bool ReadTextureHeader(const std::string& path, TextureHeader& out, std::string& error) {
    std::unique_ptr<FILE, FileCloser> file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        error = "cannot open " + path + ": " + std::strerror(errno);
        return false;
    }
    uint8_t bytes[kCurrentHeaderSize];
    const size_t got = std::fread(bytes, 1, sizeof bytes, file.get());
    return ParseTextureHeader(bytes, got, out, error);
}

const char* EffectCategoryName(unsigned bit) {
    static const char* const names[] = {"Animal Patterns", "Distress (Heavy)", "Distress (Light)", "Distress (Medium)",
                                        "Ephemeral",       "Erosion (Heavy)",  "Erosion (Light)",  "Erosion (Medium)",
                                        "Fabrics",         "Industrial",       "Leather",          "Metals",
                                        "Papers",          "Scratches",        "Stone/Minerals",   "Texture (Heavy)",
                                        "Texture (Light)", "Texture (Medium)", "Weathered/Aged",   "Woods"};
    if (bit < kFirstEffectBit || bit > kLastEffectBit) return nullptr;
    return names[bit - kFirstEffectBit];
}

bool ReadTextureFile(const std::string& path, TextureHeader& header, std::vector<uint8_t>& planar, std::string& error) {
    std::unique_ptr<FILE, FileCloser> file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        error = "cannot open " + path + ": " + std::strerror(errno);
        return false;
    }
    uint8_t head[kCurrentHeaderSize];
    const size_t got = std::fread(head, 1, sizeof head, file.get());
    if (!ParseTextureHeader(head, got, header, error)) return false;
    const uint32_t planes = header.planes == 1 ? 1 : 3;
    if (!CheckTextureSize(header.width, header.height, planes, error)) return false;
    if (std::fseek(file.get(), long(header.payloadOffset), SEEK_SET) != 0) {
        error = "cannot seek in " + path;
        return false;
    }
    const size_t expected = size_t(header.width) * header.height * planes;
    planar.assign(expected, 0);

    z_stream zs{};
    if (inflateInit(&zs) != Z_OK) {
        error = "cannot initialise zlib";
        return false;
    }
    std::vector<uint8_t> input(1 << 18);
    size_t produced = 0;
    int status = Z_OK;
    while (status != Z_STREAM_END) {
        if (zs.avail_in == 0) {
            const size_t n = std::fread(input.data(), 1, input.size(), file.get());
            if (n == 0) break;
            zs.next_in = input.data();
            zs.avail_in = uInt(n);
        }
        const size_t room = expected - produced;
        if (room == 0) {
            // Planes are complete; anything still in the stream is more than promised.
            uint8_t spill[64];
            zs.next_out = spill;
            zs.avail_out = sizeof spill;
            status = inflate(&zs, Z_NO_FLUSH);
            if (status == Z_STREAM_END && zs.avail_out == sizeof spill) break;
            error = path + ": the stream holds more than the header promises";
            inflateEnd(&zs);
            return false;
        }
        zs.next_out = planar.data() + produced;
        zs.avail_out = uInt(room < (1u << 30) ? room : (1u << 30));
        const uInt before = zs.avail_out;
        status = inflate(&zs, Z_NO_FLUSH);
        produced += before - zs.avail_out;
        if (status != Z_OK && status != Z_STREAM_END && status != Z_BUF_ERROR) break;
    }
    inflateEnd(&zs);
    if (status != Z_STREAM_END || produced != expected) {
        error = path + ": compressed planes are corrupt or truncated (" + std::to_string(produced) + " of " +
                std::to_string(expected) + " bytes)";
        return false;
    }
    return true;
}
