// Writes and inspects texture files (.qzt): a header followed by one zlib stream
// holding the planes one after the other, rows top to bottom, one byte a sample.
//
// Two header forms exist. The current one is 52 bytes, little-endian, and carries
// the set id, an extra word and the effect-category mask that the texture drawer
// filters on. The older one is 16 bytes, big-endian, and names only the size.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

struct TextureInfo {
    uint32_t setId = 0;
    uint32_t extra = 0;
    uint32_t effectMask = 0;
};

enum class TextureHeaderForm { Current, Legacy };

constexpr size_t kCurrentHeaderSize = 52;
constexpr size_t kLegacyHeaderSize = 16;
// Largest payload accepted, in samples (width * height * planes).
constexpr uint64_t kMaxTextureSamples = uint64_t(1) << 30;

// Checks the size before anything is written; planes must be 1 or 3.
bool CheckTextureSize(uint32_t width, uint32_t height, uint32_t planes, std::string& error);

// The header bytes of either form, without the payload.
std::vector<uint8_t> BuildTextureHeader(uint32_t width, uint32_t height, uint32_t planes, const TextureInfo& info,
                                        TextureHeaderForm form);

// Builds a whole file in memory: header and compressed payload.
bool EncodeTexture(uint32_t width, uint32_t height, uint32_t planes, const uint8_t* planar, const TextureInfo& info,
                   TextureHeaderForm form, std::vector<uint8_t>& out, std::string& error, int level = 6);

// Writes a file. planes is 1 (grey) or 3 (colour); `planar` holds width*height*planes
// bytes, plane after plane. The file appears under `path` only when complete.
bool WriteTextureFile(const std::string& path, uint32_t width, uint32_t height, uint32_t planes, const uint8_t* planar,
                      const TextureInfo& info, TextureHeaderForm form, std::string& error, int level = 6);

struct TextureHeader {
    TextureHeaderForm form = TextureHeaderForm::Current;
    uint32_t width = 0;
    uint32_t height = 0;
    uint32_t planes = 0; // as stored; anything but 1 means three planes
    TextureInfo info;    // zeros in the older form
    size_t payloadOffset = 0;
};

// Recognises either form by its magic bytes; reads at most 52 bytes, inflates nothing.
bool ParseTextureHeader(const uint8_t* bytes, size_t size, TextureHeader& out, std::string& error);
bool ReadTextureHeader(const std::string& path, TextureHeader& out, std::string& error);

// Reads a whole file for the tools: header and inflated planes (1 or 3 of them,
// width*height bytes each). Fails on a stream shorter than the header promises.
bool ReadTextureFile(const std::string& path, TextureHeader& header, std::vector<uint8_t>& planar, std::string& error);

// Name of effect category `bit` (1 to 20) as the drawer lists it, or nullptr.
const char* EffectCategoryName(unsigned bit);
constexpr unsigned kFirstEffectBit = 1;
constexpr unsigned kLastEffectBit = 20;
