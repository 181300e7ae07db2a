#include "platform/Sockets.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>

bool StartSockets() noexcept { return true; }
void StopSockets() noexcept {}

bool ResolveHost(const char* name, uint8_t address[4]) noexcept {
    if (!name || !name[0]) return false;
    addrinfo hints{};
    hints.ai_family = AF_INET;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (getaddrinfo(name, nullptr, &hints, &found) != 0 || !found) return false;
    const auto* in = reinterpret_cast<const sockaddr_in*>(found->ai_addr);
    std::memcpy(address, &in->sin_addr.s_addr, 4);
    freeaddrinfo(found);
    return true;
}

SocketHandle OpenStreamSocket() noexcept {
    const int s = socket(AF_INET, SOCK_STREAM, 0);
    return s < 0 ? kNoSocket : s;
}

bool ConnectSocket(SocketHandle s, const uint8_t address[4], uint16_t port) noexcept {
    sockaddr_in to{};
    to.sin_family = AF_INET;
    to.sin_port = htons(port);
    std::memcpy(&to.sin_addr.s_addr, address, 4);
    return connect(int(s), reinterpret_cast<const sockaddr*>(&to), sizeof to) == 0;
}

int SendOnce(SocketHandle s, const char* bytes, int count) noexcept {
    const ssize_t sent = send(int(s), bytes, size_t(count), MSG_NOSIGNAL);
    return sent < 0 ? -1 : int(sent);
}

bool SetReceiveTimeout(SocketHandle s, int milliseconds) noexcept {
    timeval wait{};
    wait.tv_sec = milliseconds / 1000;
    wait.tv_usec = (milliseconds % 1000) * 1000;
    return setsockopt(int(s), SOL_SOCKET, SO_RCVTIMEO, &wait, sizeof wait) == 0;
}

int ReceiveSome(SocketHandle s, char* buffer, int capacity) noexcept {
    const ssize_t got = recv(int(s), buffer, size_t(capacity), 0);
    return got < 0 ? -1 : int(got);
}

void CloseSocket(SocketHandle s) noexcept {
    if (s != kNoSocket) close(int(s));
}

SocketHandle ListenLoopback(uint16_t& port) noexcept {
    const int s = socket(AF_INET, SOCK_STREAM, 0);
    if (s < 0) return kNoSocket;
    sockaddr_in at{};
    at.sin_family = AF_INET;
    at.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof at;
    if (bind(s, reinterpret_cast<const sockaddr*>(&at), sizeof at) != 0 || listen(s, 4) != 0 ||
        getsockname(s, reinterpret_cast<sockaddr*>(&at), &size) != 0) {
        close(s);
        return kNoSocket;
    }
    port = ntohs(at.sin_port);
    return s;
}

SocketHandle AcceptConnection(SocketHandle listener, int milliseconds) noexcept {
    fd_set ready;
    FD_ZERO(&ready);
    FD_SET(int(listener), &ready);
    timeval wait{milliseconds / 1000, (milliseconds % 1000) * 1000};
    if (select(int(listener) + 1, &ready, nullptr, nullptr, &wait) != 1) return kNoSocket;
    const int s = accept(int(listener), nullptr, nullptr);
    return s < 0 ? kNoSocket : s;
}
