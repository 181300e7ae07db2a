// User store as a small text file of "name=value" lines in the user's
// configuration folder; rewritten whole through a temporary file and a
// rename, so a crash never leaves half a file.
#include "platform/UserStore.h"

#include <unistd.h>

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

std::mutex gStoreMutex;

fs::path StoreFile() {
    const char* config = std::getenv("XDG_CONFIG_HOME");
    fs::path folder;
    if (config && config[0] == '/') {
        folder = config;
    } else if (const char* home = std::getenv("HOME"); home && home[0] != '\0') {
        folder = fs::path(home) / ".config";
    } else {
        return {};
    }
    return folder / "Quenzit" / "Environment";
}

std::vector<std::string> ReadLines(const fs::path& file) {
    std::vector<std::string> lines;
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

// Splits at the last '=': names may hold spaces or '=', values are plain digits.
bool LineHasName(const std::string& line, const char* name, std::string& value) {
    size_t eq = line.rfind('=');
    if (eq == std::string::npos || line.compare(0, eq, name) != 0 || eq != std::strlen(name)) return false;
    value = line.substr(eq + 1);
    return true;
}

bool ValidName(const char* name) { return name && name[0] != '\0' && !std::strpbrk(name, "\r\n"); }

} // namespace

uint32_t ReadUserValue(const char* name) noexcept {
    try {
        if (!ValidName(name)) return 0;
        fs::path file = StoreFile();
        if (file.empty()) return 0;
        std::lock_guard lock(gStoreMutex);
        std::string text;
        for (const std::string& line : ReadLines(file)) {
            if (!LineHasName(line, name, text)) continue;
            uint32_t value = 0;
            auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
            return (error == std::errc() && end == text.data() + text.size()) ? value : 0;
        }
    } catch (...) {}
    return 0;
}

bool WriteUserValue(const char* name, uint32_t value) noexcept {
    try {
        if (!ValidName(name)) return false;
        fs::path file = StoreFile();
        if (file.empty()) return false;
        std::lock_guard lock(gStoreMutex);
        std::error_code error;
        fs::create_directories(file.parent_path(), error);
        if (error) return false;

        std::vector<std::string> lines = ReadLines(file);
        std::string newLine = std::string(name) + '=' + std::to_string(value);
        std::string old;
        bool replaced = false;
        for (std::string& line : lines) {
            if (LineHasName(line, name, old)) {
                line = newLine;
                replaced = true;
            }
        }
        if (!replaced) lines.push_back(newLine);

        fs::path temp = file;
        temp += ".tmp" + std::to_string(getpid());
        {
            std::ofstream out(temp, std::ios::trunc);
            for (const std::string& line : lines) out << line << '\n';
            out.close();
            if (!out) {
                fs::remove(temp, error);
                return false;
            }
        }
        fs::rename(temp, file, error);
        if (!error) return true;
        fs::remove(temp, error);
        return false;
    } catch (...) {
        return false;
    }
}
