// Sockets: blocking IPv4 TCP for the update check's small client, and the loopback
// listener its tests serve from. Winsock on Windows, BSD sockets elsewhere.
#pragma once

#include <cstdint>

using SocketHandle = intptr_t;
inline constexpr SocketHandle kNoSocket = -1;

// Winsock wants a start (version 1.1) and an end around all use; calls must balance.
// POSIX needs neither.
bool StartSockets() noexcept;
void StopSockets() noexcept;

// The first IPv4 address of a host name or a dotted quad.
bool ResolveHost(const char* name, uint8_t address[4]) noexcept;

SocketHandle OpenStreamSocket() noexcept;
bool ConnectSocket(SocketHandle socket, const uint8_t address[4], uint16_t port) noexcept;
// One send call: the count taken, or -1. A peer that has gone never raises a signal.
int SendOnce(SocketHandle socket, const char* bytes, int count) noexcept;
bool SetReceiveTimeout(SocketHandle socket, int milliseconds) noexcept;
// A count above 0, 0 when the peer has closed, -1 on an error or a time-out.
int ReceiveSome(SocketHandle socket, char* buffer, int capacity) noexcept;
void CloseSocket(SocketHandle socket) noexcept;

// Listens on 127.0.0.1 only, at a port the system picks, written to `port`.
SocketHandle ListenLoopback(uint16_t& port) noexcept;
// One connection, or kNoSocket when none came within `milliseconds`.
SocketHandle AcceptConnection(SocketHandle listener, int milliseconds) noexcept;
