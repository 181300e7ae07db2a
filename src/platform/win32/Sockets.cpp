#include "platform/Sockets.h"

#include <winsock2.h>

#include <cstring>

bool StartSockets() noexcept {
    WSADATA data;
    return WSAStartup(MAKEWORD(1, 1), &data) == 0;
}

void StopSockets() noexcept { WSACleanup(); }

bool ResolveHost(const char* name, uint8_t address[4]) noexcept {
    if (!name || !name[0]) return false;
    // Older Winsocks do not take a dotted quad as a name.
    const unsigned long numeric = inet_addr(name);
    if (numeric != INADDR_NONE) {
        std::memcpy(address, &numeric, 4);
        return true;
    }
    const hostent* host = gethostbyname(name);
    if (!host || host->h_addrtype != AF_INET || host->h_length != 4 || !host->h_addr_list[0]) return false;
    std::memcpy(address, host->h_addr_list[0], 4);
    return true;
}

SocketHandle OpenStreamSocket() noexcept {
    const SOCKET s = socket(AF_INET, SOCK_STREAM, 0);
    return s == INVALID_SOCKET ? kNoSocket : SocketHandle(s);
}

bool ConnectSocket(SocketHandle s, const uint8_t address[4], uint16_t port) noexcept {
    sockaddr_in to{};
    to.sin_family = AF_INET;
    to.sin_port = htons(port);
    std::memcpy(&to.sin_addr.s_addr, address, 4);
    return connect(SOCKET(s), reinterpret_cast<const sockaddr*>(&to), sizeof to) == 0;
}

int SendOnce(SocketHandle s, const char* bytes, int count) noexcept {
    const int sent = send(SOCKET(s), bytes, count, 0);
    return sent == SOCKET_ERROR ? -1 : sent;
}

bool SetReceiveTimeout(SocketHandle s, int milliseconds) noexcept {
    const DWORD wait = DWORD(milliseconds);
    return setsockopt(SOCKET(s), SOL_SOCKET, SO_RCVTIMEO, reinterpret_cast<const char*>(&wait), sizeof wait) == 0;
}

int ReceiveSome(SocketHandle s, char* buffer, int capacity) noexcept {
    const int got = recv(SOCKET(s), buffer, capacity, 0);
    return got == SOCKET_ERROR ? -1 : got;
}

void CloseSocket(SocketHandle s) noexcept {
    if (s != kNoSocket) closesocket(SOCKET(s));
}

SocketHandle ListenLoopback(uint16_t& port) noexcept {
    const SOCKET s = socket(AF_INET, SOCK_STREAM, 0);
    if (s == INVALID_SOCKET) return kNoSocket;
    sockaddr_in at{};
    at.sin_family = AF_INET;
    at.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    int size = sizeof at;
    if (bind(s, reinterpret_cast<const sockaddr*>(&at), sizeof at) != 0 || listen(s, 4) != 0 ||
        getsockname(s, reinterpret_cast<sockaddr*>(&at), &size) != 0) {
        closesocket(s);
        return kNoSocket;
    }
    port = ntohs(at.sin_port);
    return SocketHandle(s);
}

SocketHandle AcceptConnection(SocketHandle listener, int milliseconds) noexcept {
    fd_set ready;
    FD_ZERO(&ready);
    FD_SET(SOCKET(listener), &ready);
    timeval wait{milliseconds / 1000, (milliseconds % 1000) * 1000};
    if (select(0, &ready, nullptr, nullptr, &wait) != 1) return kNoSocket;
    const SOCKET s = accept(SOCKET(listener), nullptr, nullptr);
    return s == INVALID_SOCKET ? kNoSocket : SocketHandle(s);
}
