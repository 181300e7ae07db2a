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
// listed when they match. Windows keeps the system's order; POSIX puts "."
// and ".." first and sorts the rest case-insensitively, so listings are
// deterministic. Replaces the contents of `entries`. Returns false, with
// `entries` empty, when the folder cannot be opened.
bool ListFolder(const std::string& folder, const std::string& pattern, std::vector<FolderEntry>& entries) noexcept;
