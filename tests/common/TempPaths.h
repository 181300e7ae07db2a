// A temporary folder of this test process: tests run as separate processes side by side,
// so names under it never meet another process's. It is removed when the process ends.
#pragma once

#include <filesystem>
#include <string>
#include <system_error>

#ifdef _WIN32
#include <process.h>
#else
#include <unistd.h>
#endif

inline const std::filesystem::path& ProcessTempDir() {
    struct Folder {
        std::filesystem::path path;
        Folder() {
#ifdef _WIN32
            const long id = long(_getpid());
#else
            const long id = long(getpid());
#endif
            path = std::filesystem::temp_directory_path() / ("qz-tests-" + std::to_string(id));
            std::filesystem::create_directories(path);
        }
        ~Folder() {
            std::error_code ignored;
            std::filesystem::remove_all(path, ignored);
        }
    };
    static const Folder folder;
    return folder.path;
}
