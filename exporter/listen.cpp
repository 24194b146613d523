#include "listen.h"

#include "objects/failure.h"
#include "objects/keys.h"

#include <arpa/inet.h>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/socket.h>
#include <unistd.h>

namespace exporter {

using tool::Failure;

namespace {

constexpr int kPassed = 3; // where the protocol of systemd puts the first socket

// Of either family.
union SocketAddress {
    sockaddr any;
    sockaddr_in v4;
    sockaddr_in6 v6;
};

SocketAddress Parsed(const Address& address)
{
    SocketAddress parsed{};
    if (inet_pton(AF_INET, address.host.c_str(), &parsed.v4.sin_addr) == 1) {
        parsed.v4.sin_family = AF_INET;
        parsed.v4.sin_port = htons(static_cast<uint16_t>(address.port));
    } else if (inet_pton(AF_INET6, address.host.c_str(), &parsed.v6.sin6_addr) == 1) {
        parsed.v6.sin6_family = AF_INET6;
        parsed.v6.sin6_port = htons(static_cast<uint16_t>(address.port));
    } else {
        throw Failure(tool::kBadInput, fmt::format("'{}' must be an IP address, such as 127.0.0.1, [::1]:{} or 0.0.0.0",
                                                   address.host, kDefaultPort));
    }
    return parsed;
}

Address Bound(int socket)
{
    SocketAddress bound{};
    socklen_t size = sizeof(bound);
    char host[INET6_ADDRSTRLEN] = {};
    if (getsockname(socket, &bound.any, &size) != 0) {
        return {};
    }
    const bool isV6 = bound.any.sa_family == AF_INET6;
    inet_ntop(bound.any.sa_family,
              isV6 ? static_cast<const void*>(&bound.v6.sin6_addr) : static_cast<const void*>(&bound.v4.sin_addr), host,
              sizeof(host));
    return {host, ntohs(isV6 ? bound.v6.sin6_port : bound.v4.sin_port)};
}

bool IsPassed()
{
    const char* const process = std::getenv("LISTEN_PID");
    const char* const sockets = std::getenv("LISTEN_FDS");
    int listens = 0;
    socklen_t size = sizeof(listens);
    return process != nullptr && sockets != nullptr && process == std::to_string(getpid()) && *sockets != '0' &&
           getsockopt(kPassed, SOL_SOCKET, SO_ACCEPTCONN, &listens, &size) == 0 && listens != 0;
}

int NewSocket(const Address& address)
{
    const SocketAddress where = Parsed(address);
    const int family = where.any.sa_family;
    const int listener = socket(family, SOCK_STREAM | SOCK_NONBLOCK, 0);
    const int on = 1;
    const int backlog = 1024; // connections that come at once must not lose their first packet
    if (listener < 0 || setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof(on)) != 0 ||
        bind(listener, &where.any, family == AF_INET6 ? sizeof(where.v6) : sizeof(where.v4)) != 0 ||
        listen(listener, backlog) != 0) {
        throw Failure(tool::kInUse, fmt::format("cannot listen on {}: {}; give another address with --listen",
                                                address.Text(), std::strerror(errno)));
    }
    return listener;
}

} // namespace

std::string Address::InUrl() const
{
    return host.find(':') == std::string::npos ? host : '[' + host + ']';
}

std::string Address::Text() const
{
    return fmt::format("{}:{}", InUrl(), port);
}

Address ParseAddress(const std::string& text)
{
    Address address;
    const std::size_t colon = text.rfind(':');
    const bool isBare = text.find(':') != colon && !text.starts_with('['); // an IPv6 address without a port
    const bool hasPort = colon != std::string::npos && !isBare && !text.ends_with(']');
    address.host = hasPort ? text.substr(0, colon) : text;
    if (address.host.starts_with('[') && address.host.ends_with(']')) {
        address.host = address.host.substr(1, address.host.size() - 2);
    }
    if (hasPort) {
        const auto port = tool::ParseNumber(std::string_view(text).substr(colon + 1), 0, UINT16_MAX);
        if (!port) {
            throw Failure(tool::kBadInput, fmt::format("'{}' must end in a port from 0 to 65535", text));
        }
        address.port = *port;
    }
    Parsed(address);
    return address;
}

int Listen(Address& address)
{
    int listener = kPassed;
    if (!IsPassed()) {
        listener = NewSocket(address);
        if (listener != kPassed) {
            dup2(listener, kPassed);
            close(listener);
        }
        // For this program when it has to start itself anew: the process stays the same, and so does the socket.
        setenv("LISTEN_PID", std::to_string(getpid()).c_str(), 1); // NOLINT(concurrency-mt-unsafe): one thread
        setenv("LISTEN_FDS", "1", 1);                              // NOLINT(concurrency-mt-unsafe)
    }
    fcntl(kPassed, F_SETFL, O_NONBLOCK);
    address = Bound(kPassed);
    return kPassed;
}

} // namespace exporter
