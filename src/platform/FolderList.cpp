// The one listing order both backends return.
#include "platform/FolderList.h"

#include <algorithm>

namespace {

unsigned char Upper(char c) {
    const auto u = static_cast<unsigned char>(c);
    return (u >= 'a' && u <= 'z') ? static_cast<unsigned char>(u - ('a' - 'A')) : u;
}

int Rank(const std::string& name) { return name == "." ? 0 : name == ".." ? 1 : 2; }

// NTFS's own order: "." and ".." first, then names compared as upper case, byte by byte
// ("A_B" after "AB", since '_' lies above the letters). Names that differ only in case
// (possible off Windows) keep a fixed order by their bytes.
bool ListedBefore(const FolderEntry& a, const FolderEntry& b) {
    if (Rank(a.name) != Rank(b.name)) return Rank(a.name) < Rank(b.name);
    const size_t n = std::min(a.name.size(), b.name.size());
    for (size_t i = 0; i < n; ++i)
        if (Upper(a.name[i]) != Upper(b.name[i])) return Upper(a.name[i]) < Upper(b.name[i]);
    if (a.name.size() != b.name.size()) return a.name.size() < b.name.size();
    return a.name < b.name;
}

} // namespace

void SortListing(std::vector<FolderEntry>& entries) { std::sort(entries.begin(), entries.end(), ListedBefore); }
