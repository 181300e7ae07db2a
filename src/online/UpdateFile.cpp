#include "online/UpdateFile.h"

#include <cstring>

namespace {

constexpr const char* kStampKey = "datestr:";
constexpr const char* kVersionKey = "lastvers:";

const char* ValueOf(const char* text, const char* key) {
    const char* at = text ? std::strstr(text, key) : nullptr;
    return at ? at + std::strlen(key) : nullptr;
}

bool Digit(char c) { return c >= '0' && c <= '9'; }

bool NoCaseStartsWith(const char* text, const char* prefix) {
    for (; *prefix; ++text, ++prefix) {
        char c = *text;
        if (c >= 'A' && c <= 'Z') c = char(c - 'A' + 'a');
        if (c != *prefix) return false;
    }
    return true;
}

// The Content-Length header's value, or -1 when there is none that reads.
long long ContentLength(const char* headers, const char* end) {
    for (const char* line = std::strstr(headers, "\r\n"); line && line < end; line = std::strstr(line + 2, "\r\n")) {
        if (!NoCaseStartsWith(line + 2, "content-length:")) continue;
        const char* p = line + 2 + 15;
        while (*p == ' ' || *p == '\t') ++p;
        if (!Digit(*p)) return -1;
        long long n = 0;
        for (; Digit(*p) && n < (1LL << 40); ++p) n = n * 10 + (*p - '0');
        return n;
    }
    return -1;
}

} // namespace

bool ReadEntryNumber(const char* value, uint32_t& number) {
    if (!value || !Digit(*value)) return false;
    uint64_t n = 0;
    for (; Digit(*value); ++value) {
        n = n * 10 + uint64_t(*value - '0');
        if (n > 0xFFFFFFFFu) return false;
    }
    number = uint32_t(n);
    return true;
}

bool StampIsFresh(const char* text, int64_t now) {
    uint32_t stamp = 0;
    if (!ReadEntryNumber(ValueOf(text, kStampKey), stamp)) return false;
    return int64_t(stamp) < now && now - int64_t(stamp) < 86401;
}

float ReadLatestVersion(const char* text) {
    const char* p = ValueOf(text, kVersionKey);
    if (!p || !Digit(*p)) return 0.0f;
    // Read by hand: the host's locale may want a comma.
    double whole = 0.0;
    for (int n = 0; Digit(*p); ++p, ++n)
        if (n < 12) whole = whole * 10.0 + (*p - '0');
    if (*p == '.') {
        double scale = 0.1;
        for (++p; Digit(*p); ++p, scale /= 10.0) whole += (*p - '0') * scale;
    }
    const float version = float(whole);
    return version > 0.0f ? version : 0.0f;
}

bool ReadAnswerBody(const char* answer, std::string& body) {
    if (!answer || std::strncmp(answer, "HTTP/", 5) != 0) return false;
    const char* status = std::strchr(answer, ' ');
    const char* end = std::strstr(answer, "\r\n\r\n");
    if (!status || !end || status > end || std::strncmp(status + 1, "200", 3) != 0 || Digit(status[4])) return false;
    const char* start = end + 4;
    const long long declared = ContentLength(answer, end);
    if (declared >= 0 && (long long)std::strlen(start) < declared) return false;
    // Only a number followed by its ";" was written whole.
    const char* version = ValueOf(start, kVersionKey);
    if (!version || !Digit(*version)) return false;
    while (Digit(*version) || *version == '.') ++version;
    if (*version != ';') return false;
    body.assign(start);
    return true;
}

std::string StampedText(uint32_t now, const std::string& rest) {
    return std::string(kStampKey) + std::to_string(now) + ";" + rest;
}

std::string RestampAfterFailure(const std::string& old, uint32_t now) {
    std::string rest = old.substr(0, std::strlen(old.c_str()));
    const size_t at = rest.find(kStampKey);
    if (at != std::string::npos) {
        const size_t semicolon = rest.find(';', at);
        rest.erase(at, semicolon == std::string::npos ? std::string::npos : semicolon + 1 - at);
    }
    if (rest.find(kVersionKey) == std::string::npos) rest.insert(0, std::string(kVersionKey) + "0;");
    return StampedText(now, rest);
}
