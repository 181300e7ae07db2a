// Folder listing: the entries of one folder whose names match a wildcard
// pattern, with the attributes the preset and texture browsers need.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct FolderEntry {
    std::string name; // name only, no folder
    bool isDirectory;
    bool isArchive; // POSIX: every regular file
    bool isHidden;  // POSIX: names starting with '.', except "." and ".."
    uint64_t size;  // bytes; 0 for folders
};

// Lists `folder` + separator + `pattern`, where `*` matches any run and `?`
// any one character (case-insensitively on every system). "." and ".." are
// listed when they match. Every system returns the order of SortListing, so
// random picks agree between builds and file systems. Replaces the contents of
// `entries`. Returns false, with `entries` empty, when the folder cannot be
// opened.
bool ListFolder(const std::string& folder, const std::string& pattern, std::vector<FolderEntry>& entries) noexcept;

// The order an NTFS volume lists a folder in: "." and ".." first, then names
// compared as upper case, ordinal (bytes as unsigned); names equal but for
// case by their bytes.
void SortListing(std::vector<FolderEntry>& entries);
