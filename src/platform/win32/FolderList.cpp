// Folder listing over FindFirstFileA/FindNextFileA, put in the NTFS order whatever the
// volume returned (FAT, network shares and wine list in the order of their own).
#include "platform/FolderList.h"
#include "platform/win32/Win32.h"

#include <memory>

namespace {

FolderEntry MakeEntry(const WIN32_FIND_DATAA& data) {
    DWORD attributes = data.dwFileAttributes;
    bool isDirectory = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    uint64_t size = (static_cast<uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
    return FolderEntry{data.cFileName, isDirectory, (attributes & FILE_ATTRIBUTE_ARCHIVE) != 0,
                       (attributes & FILE_ATTRIBUTE_HIDDEN) != 0, isDirectory ? 0 : size};
}

bool IsFolder(const std::string& folder) {
    DWORD attributes = GetFileAttributesA(folder.empty() ? "." : folder.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

} // namespace

bool ListFolder(const std::string& folder, const std::string& pattern, std::vector<FolderEntry>& entries) noexcept {
    entries.clear();
    try {
        std::string query = folder;
        if (!query.empty() && query.back() != '\\' && query.back() != '/') query += '\\';
        query += pattern;

        WIN32_FIND_DATAA data;
        HANDLE handle = FindFirstFileA(query.c_str(), &data);
        // No match in an existing folder is an empty listing, not a failure.
        if (handle == INVALID_HANDLE_VALUE) return IsFolder(folder);
        std::unique_ptr<void, decltype(&FindClose)> find(handle, FindClose);
        do {
            entries.push_back(MakeEntry(data));
        } while (FindNextFileA(find.get(), &data));
        SortListing(entries);
        return true;
    } catch (...) {
        entries.clear();
        return false;
    }
}
