// HttpGet: the update check's own HTTP client, with no library. One GET, the answer
// read a few bytes at a time under a short time-out, headers and body kept together.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

inline constexpr size_t kHttpAnswerSize = 0x100000; // the answer buffer, its zero included
inline constexpr size_t kHttpRequestSize = 2048;    // the request buffer, its zero included

struct HttpTarget {
    std::string host; // as the address writes it, with its ":port" if any
    std::string name; // the host without the port: what is resolved
    uint16_t port = 80;
    std::string path; // after the first "/", without it
};

// Takes "http://" or "HTTP://" (one case) addresses apart; false for anything else.
bool SplitHttpAddress(const char* address, HttpTarget& target);

// The request's exact bytes, or empty when they would not fit the request buffer.
std::string BuildHttpRequest(const HttpTarget& target);

// The whole answer, zero-terminated inside a buffer of kHttpAnswerSize bytes; null when
// the address is refused, the host unknown, the connection or the send failed, or
// nothing came. Writes its progress lines to standard output.
std::unique_ptr<char[]> HttpGet(const char* address);
