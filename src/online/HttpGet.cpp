#include "online/HttpGet.h"

#include "platform/Sockets.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <new>

namespace {

constexpr int kReceiveTimeoutMs = 1000;
constexpr int kReadSize = 4;
constexpr int kMaxFailures = 3;

// Digits only, 1 to 65535; anything else is no port at all.
uint16_t ReadPort(const std::string& text) {
    if (text.empty() || text.size() > 5) return 0;
    unsigned value = 0;
    for (char c : text) {
        if (c < '0' || c > '9') return 0;
        value = value * 10 + unsigned(c - '0');
    }
    return value <= 65535 ? uint16_t(value) : 0;
}

// Ends the sockets' use on every way out.
struct SocketsInUse {
    bool started = StartSockets();
    SocketHandle socket = kNoSocket;
    ~SocketsInUse() {
        CloseSocket(socket);
        if (started) StopSockets();
    }
};

} // namespace

bool SplitHttpAddress(const char* address, HttpTarget& target) {
    if (!address || (std::strncmp(address, "http://", 7) != 0 && std::strncmp(address, "HTTP://", 7) != 0))
        return false;
    const char* rest = address + 7;
    const char* slash = std::strchr(rest, '/');
    target.host = slash ? std::string(rest, slash) : std::string(rest);
    target.path = slash ? std::string(slash + 1) : std::string();
    const size_t colon = target.host.find(':');
    target.name = target.host.substr(0, colon);
    target.port = 80;
    if (colon != std::string::npos) {
        const uint16_t port = ReadPort(target.host.substr(colon + 1));
        if (port != 0) target.port = port;
    }
    return true;
}

std::string BuildHttpRequest(const HttpTarget& target) {
    std::string request = "GET /" + target.path + " HTTP/1.1\r\nHost: " + target.host +
                          "\r\nUser-agent: Mozilla/4.0 (compatible; MSIE 6.0; Windows NT 5.1; SV1)" +
                          "\r\nAccept: */*\r\n\r\n";
    if (request.size() >= kHttpRequestSize) return {};
    return request;
}

std::unique_ptr<char[]> HttpGet(const char* address) {
    HttpTarget target;
    if (!SplitHttpAddress(address, target)) return nullptr;
    SocketsInUse sockets;
    if (!sockets.started) return nullptr;

    uint8_t ip[4];
    if (!ResolveHost(target.name.c_str(), ip)) return nullptr;
    sockets.socket = OpenStreamSocket();
    if (sockets.socket == kNoSocket) return nullptr;
    std::printf("Conecting to %d.%d.%d.%d...", ip[0], ip[1], ip[2], ip[3]);
    const bool connected = ConnectSocket(sockets.socket, ip, target.port);
    std::fputs(connected ? "Ok\n" : "Error\n", stdout);
    std::fflush(stdout);
    if (!connected) return nullptr;

    const std::string request = BuildHttpRequest(target);
    if (request.empty()) return nullptr;
    if (SendOnce(sockets.socket, request.data(), int(request.size())) != int(request.size())) return nullptr;

    std::unique_ptr<char[]> answer(new (std::nothrow) char[kHttpAnswerSize]);
    if (!answer) return nullptr;
    SetReceiveTimeout(sockets.socket, kReceiveTimeoutMs);
    size_t used = 0;
    int failures = 0;
    // The last byte stays for the zero.
    while (failures < kMaxFailures && used < kHttpAnswerSize - 1) {
        const int want = int(std::min<size_t>(kReadSize, kHttpAnswerSize - 1 - used));
        const int got = ReceiveSome(sockets.socket, answer.get() + used, want);
        if (got > 0) {
            used += size_t(got);
            continue;
        }
        ++failures;
        if (got == 0) break;
    }
    answer[used] = '\0';
    if (used == 0) return nullptr;
    return answer;
}
