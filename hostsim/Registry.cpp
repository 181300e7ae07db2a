#include "Registry.h"

#include "ActionSuites.h"

#include <cstring>
#include <fstream>

namespace hostsim {
namespace {

constexpr char kMagic[4] = {'Q', 'Z', 'r', '1'};
// A registry file is a few kilobytes; refuse anything absurd before reading it.
constexpr std::streamoff kMaxFileSize = std::streamoff(1) << 28;

void PutU32(std::string& out, uint32 v) {
    for (int i = 0; i < 4; ++i) out.push_back(char((v >> (8 * i)) & 0xFF));
}

bool GetU32(const std::string& in, size_t& pos, uint32& v) {
    if (in.size() - pos < 4) return false;
    const auto* p = reinterpret_cast<const uint8*>(in.data() + pos);
    v = uint32(p[0]) | uint32(p[1]) << 8 | uint32(p[2]) << 16 | uint32(p[3]) << 24;
    pos += 4;
    return true;
}

bool GetBytes(const std::string& in, size_t& pos, std::string& out) {
    uint32 n;
    if (!GetU32(in, pos, n) || n > in.size() - pos) return false;
    out.assign(in, pos, n);
    pos += n;
    return true;
}

Registry* gSuiteRegistry = nullptr;

// ---- The suite ----

OSErr QZ_HOSTCALL SuiteRegister(const char* key, PIActionDescriptor descriptor, Boolean isPersistent) {
    try {
        ActionSuites* suites = ActionSuites::Current();
        if (!key || !suites || !gSuiteRegistry) return paramErr;
        const Descriptor* d = suites->FindDescriptor(descriptor, "Register");
        if (!d) return paramErr;
        gSuiteRegistry->Register(key, *d, isPersistent != 0);
        return noErr;
    } catch (...) {
        return memFullErr;
    }
}

OSErr QZ_HOSTCALL SuiteErase(const char* key) {
    try {
        if (!key || !gSuiteRegistry) return paramErr;
        gSuiteRegistry->Erase(key);
        return noErr;
    } catch (...) {
        return memFullErr;
    }
}

OSErr QZ_HOSTCALL SuiteGet(const char* key, PIActionDescriptor* descriptor) {
    try {
        ActionSuites* suites = ActionSuites::Current();
        if (!descriptor) return paramErr;
        *descriptor = nullptr;
        if (!key || !suites || !gSuiteRegistry) return paramErr;
        Descriptor d;
        if (gSuiteRegistry->Get(key, d)) *descriptor = suites->NewDescriptor(d);
        return noErr;
    } catch (...) {
        return memFullErr;
    }
}

const PSDescriptorRegistryProcs kSuite = {SuiteRegister, SuiteErase, SuiteGet};

} // namespace

void Registry::Register(const std::string& key, const Descriptor& descriptor, bool persistent) {
    entries_[key] = Entry{descriptor, persistent};
}

bool Registry::Get(const std::string& key, Descriptor& out) const {
    auto it = entries_.find(key);
    if (it == entries_.end()) return false;
    out = it->second.descriptor;
    return true;
}

bool Registry::Erase(const std::string& key) { return entries_.erase(key) != 0; }

bool Registry::IsPersistent(const std::string& key) const {
    auto it = entries_.find(key);
    return it != entries_.end() && it->second.persistent;
}

std::vector<std::string> Registry::Keys() const {
    std::vector<std::string> keys;
    for (const auto& [key, entry] : entries_) keys.push_back(key);
    return keys;
}

std::string Registry::SerializePersistent() const {
    std::string out(kMagic, sizeof kMagic);
    uint32 count = 0;
    for (const auto& [key, entry] : entries_) count += entry.persistent ? 1 : 0;
    PutU32(out, count);
    for (const auto& [key, entry] : entries_) {
        if (!entry.persistent) continue;
        PutU32(out, uint32(key.size()));
        out += key;
        const std::string bytes = entry.descriptor.Serialize();
        PutU32(out, uint32(bytes.size()));
        out += bytes;
    }
    return out;
}

bool Registry::Deserialize(const std::string& bytes) {
    if (bytes.size() < sizeof kMagic || std::memcmp(bytes.data(), kMagic, sizeof kMagic) != 0) return false;
    size_t pos = sizeof kMagic;
    uint32 count;
    // Each entry takes at least its two lengths.
    if (!GetU32(bytes, pos, count) || count > (bytes.size() - pos) / 8) return false;
    std::map<std::string, Entry> loaded;
    for (uint32 i = 0; i < count; ++i) {
        std::string key, body;
        Entry entry;
        if (!GetBytes(bytes, pos, key) || !GetBytes(bytes, pos, body)) return false;
        if (!Descriptor::Deserialize(body.data(), body.size(), entry.descriptor)) return false;
        entry.persistent = true;
        if (!loaded.emplace(std::move(key), std::move(entry)).second) return false;
    }
    if (pos != bytes.size()) return false;
    entries_ = std::move(loaded);
    return true;
}

bool Registry::Save(const std::string& path) const {
    const std::string bytes = SerializePersistent();
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (!file) return false;
    file.write(bytes.data(), std::streamsize(bytes.size()));
    file.close();
    return !file.fail();
}

bool Registry::Load(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return false;
    file.seekg(0, std::ios::end);
    const std::streamoff size = file.tellg();
    if (size < 0 || size > kMaxFileSize) return false;
    file.seekg(0, std::ios::beg);
    std::string bytes(size_t(size), '\0');
    if (size > 0 && !file.read(bytes.data(), size)) return false;
    return Deserialize(bytes);
}

const PSDescriptorRegistryProcs* DescriptorRegistrySuite() { return &kSuite; }

void SetSuiteRegistry(Registry* registry) { gSuiteRegistry = registry; }

} // namespace hostsim
