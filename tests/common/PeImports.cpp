#include "PeImports.h"

#include <cstdint>
#include <fstream>
#include <iterator>

namespace {

struct Image {
    std::vector<uint8_t> bytes;

    bool Has(uint64_t offset, uint64_t n) const { return offset + n <= bytes.size(); }
    uint32_t Read(uint64_t offset, int n) const {
        uint32_t v = 0;
        for (int i = 0; i < n; ++i) v |= uint32_t(bytes[offset + i]) << (8 * i);
        return v;
    }
};

struct Section {
    uint32_t virtualAddress, virtualSize, rawOffset, rawSize;
};

} // namespace

bool ReadImportedDlls(const std::string& path, std::vector<std::string>& dlls, std::string& error) {
    dlls.clear();
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        error = "cannot open " + path;
        return false;
    }
    Image img{std::vector<uint8_t>(std::istreambuf_iterator<char>(in), {})};

    if (!img.Has(0, 64) || img.Read(0, 2) != 0x5A4D) return error = "no MZ header", false;
    const uint32_t pe = img.Read(0x3C, 4);
    if (!img.Has(pe, 24) || img.Read(pe, 4) != 0x00004550) return error = "no PE signature", false;
    const uint32_t sectionCount = img.Read(pe + 6, 2);
    const uint32_t optionalSize = img.Read(pe + 20, 2);
    const uint64_t optional = pe + 24;
    if (!img.Has(optional, optionalSize) || optionalSize < 128 || img.Read(optional, 2) != 0x20B)
        return error = "not a PE32+ image", false;

    std::vector<Section> sections;
    const uint64_t table = optional + optionalSize;
    for (uint32_t i = 0; i < sectionCount; ++i) {
        const uint64_t s = table + 40ull * i;
        if (!img.Has(s, 40)) return error = "section table cut short", false;
        sections.push_back({img.Read(s + 12, 4), img.Read(s + 8, 4), img.Read(s + 20, 4), img.Read(s + 16, 4)});
    }
    auto fileOffset = [&](uint32_t rva, uint64_t& offset) {
        for (const Section& s : sections) {
            if (rva >= s.virtualAddress && rva - s.virtualAddress < std::max(s.virtualSize, s.rawSize)) {
                offset = uint64_t(s.rawOffset) + (rva - s.virtualAddress);
                return img.Has(offset, 1);
            }
        }
        return false;
    };

    // Data directory 1 is the import table: 20-byte descriptors ended by an empty one.
    const uint32_t importRva = img.Read(optional + 112 + 8, 4);
    if (importRva == 0) return true;
    uint64_t desc;
    if (!fileOffset(importRva, desc)) return error = "import table outside every section", false;
    for (;; desc += 20) {
        if (!img.Has(desc, 20)) return error = "import table cut short", false;
        const uint32_t nameRva = img.Read(desc + 12, 4);
        if (nameRva == 0 && img.Read(desc + 16, 4) == 0) break;
        uint64_t name;
        if (!fileOffset(nameRva, name)) return error = "import name outside every section", false;
        std::string dll;
        while (img.Has(name, 1) && img.bytes[name] != 0 && dll.size() < 260) dll.push_back(char(img.bytes[name++]));
        dlls.push_back(dll);
    }
    return true;
}
