// listen.h - the address that the exporter listens on, and its socket.
#pragma once

#include <string>

namespace exporter {

inline constexpr unsigned kDefaultPort = 19821;

// "127.0.0.1", "127.0.0.1:9000", "::1", "[::1]:9000".
struct Address {
    std::string host;
    unsigned port = kDefaultPort; // 0: any that is free

    [[nodiscard]] std::string InUrl() const; // "127.0.0.1", "[::1]"
    // "127.0.0.1:9000"
    [[nodiscard]] std::string Text() const;
};

// Throws a Failure that quotes the text.
Address ParseAddress(const std::string& text);

// The descriptor of a listening socket: the one that systemd, or this program before it started itself anew, has left
// behind as number 3; else a new one.  Puts the address that it has into 'address'.
int Listen(Address& address);

} // namespace exporter
