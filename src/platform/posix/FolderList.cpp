// Folder listing over opendir/readdir, with the wildcard and attribute rules
// of the Windows listing so both systems see the same folders.
#include "platform/FolderList.h"

#include <dirent.h>
#include <sys/stat.h>

#include <cstring>
#include <memory>

namespace {

unsigned char Lower(char c) {
    auto u = static_cast<unsigned char>(c);
    return (u >= 'A' && u <= 'Z') ? static_cast<unsigned char>(u + ('a' - 'A')) : u;
}

// `*` and `?` wildcards, ASCII case-insensitive; backtracks to the last `*`.
bool GlobMatch(const char* pattern, const char* name) {
    const char* starPattern = nullptr;
    const char* starName = nullptr;
    while (*name) {
        if (*pattern == '*') {
            starPattern = ++pattern;
            starName = name;
        } else if (*pattern == '?' || (*pattern && Lower(*pattern) == Lower(*name))) {
            ++pattern;
            ++name;
        } else if (starPattern) {
            pattern = starPattern;
            name = ++starName;
        } else {
            return false;
        }
    }
    while (*pattern == '*') ++pattern;
    return *pattern == '\0';
}

// Windows lets a trailing ".*" match names without any dot ("*.*" is everything).
bool NameMatches(const std::string& pattern, const char* name) {
    if (GlobMatch(pattern.c_str(), name)) return true;
    size_t n = pattern.size();
    return n >= 2 && pattern.compare(n - 2, 2, ".*") == 0 && std::strchr(name, '.') == nullptr &&
           GlobMatch(pattern.substr(0, n - 2).c_str(), name);
}

bool IsDotEntry(const std::string& name) { return name == "." || name == ".."; }

} // namespace

bool ListFolder(const std::string& folder, const std::string& pattern, std::vector<FolderEntry>& entries) noexcept {
    entries.clear();
    try {
        std::string base = folder.empty() ? "." : folder;
        std::unique_ptr<DIR, int (*)(DIR*)> dir(opendir(base.c_str()), closedir);
        if (!dir) return false;
        if (base.back() != '/') base += '/';
        while (const dirent* item = readdir(dir.get())) {
            if (!NameMatches(pattern, item->d_name)) continue;
            FolderEntry entry{item->d_name, false, false, false, 0};
            struct stat info {};
            std::string path = base + entry.name;
            // Follow links like Windows does; a dangling link still shows as itself.
            if (stat(path.c_str(), &info) == 0 || lstat(path.c_str(), &info) == 0) {
                entry.isDirectory = S_ISDIR(info.st_mode);
                entry.isArchive = S_ISREG(info.st_mode);
                if (entry.isArchive) entry.size = static_cast<uint64_t>(info.st_size);
            }
            entry.isHidden = entry.name[0] == '.' && !IsDotEntry(entry.name);
            entries.push_back(std::move(entry));
        }
        SortListing(entries);
        return true;
    } catch (...) {
        entries.clear();
        return false;
    }
}
