// The descriptor registry: descriptors a plug-in keeps between runs under a key of its own
// (a UUID), each marked persistent or not. Persistent entries survive the host: Save writes
// them to a file and Load reads them back, which is how the command line keeps them.
//
// The descriptor registry suite (version 1) works on the current host's registry:
// - Register copies the descriptor (null key or unknown descriptor: paramErr).
// - Erase of a key that is not there answers noErr.
// - Get hands out a new action descriptor the caller frees with the descriptor suite; for a
//   key that is not there it answers noErr with a null descriptor, as hosts do.
#pragma once

#include "Descriptor.h"

#include <map>
#include <string>
#include <vector>

namespace hostsim {

class Registry {
public:
    // Replaces an entry of the same key.
    void Register(const std::string& key, const Descriptor& descriptor, bool persistent);
    // A copy of the entry; false when there is none.
    bool Get(const std::string& key, Descriptor& out) const;
    bool Erase(const std::string& key); // false when there was nothing to erase
    bool Has(const std::string& key) const { return entries_.count(key) != 0; }
    bool IsPersistent(const std::string& key) const;
    size_t Count() const { return entries_.size(); }
    std::vector<std::string> Keys() const; // sorted
    void Clear() { entries_.clear(); }

    // The persistent entries only. False when the file cannot be written.
    bool Save(const std::string& path) const;
    // Replaces every entry with the file's (all persistent). False, with the registry left as it
    // was, for a missing file or any bytes that are not exactly a registry file.
    bool Load(const std::string& path);

    // The same byte form in memory.
    std::string SerializePersistent() const;
    bool Deserialize(const std::string& bytes);

private:
    struct Entry {
        Descriptor descriptor;
        bool persistent = false;
    };
    std::map<std::string, Entry> entries_;
};

// The descriptor registry suite, version 1.
const PSDescriptorRegistryProcs* DescriptorRegistrySuite();
// The registry the suite works on while a host runs (null: none).
void SetSuiteRegistry(Registry* registry);

} // namespace hostsim
