#pragma once

#include "Platform/HttpReply.h"
#include "Platform/SystemError.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <stop_token>
#include <string>

/// Asking a program that listens on this machine. The address is built from the loopback constants, so
/// nothing here looks a name up, goes through a proxy, follows a redirection or reaches another machine.
namespace lumo::platform {

enum class LoopbackFamily { ipv4, ipv6 };

struct LoopbackAddress {
    LoopbackFamily family = LoopbackFamily::ipv4;
    std::uint16_t port = 0;

    friend bool operator==(const LoopbackAddress&, const LoopbackAddress&) = default;
};

/// The address as in a URL: "127.0.0.1:11434", "[::1]:8080".
std::string hostAndPort(const LoopbackAddress& address);

struct LoopbackRequest {
    std::string path;                     ///< From the first slash on.
    std::optional<std::string> json = {}; ///< Sent by POST; without one the path is asked for by GET.
};

struct LoopbackLimits {
    std::size_t mostBodyBytes = std::size_t{1024} * 1024;
    std::chrono::milliseconds patience = std::chrono::seconds(60); ///< For all of it.
};

/// The server's reply, whatever its status. Fails with ECANCELED soon after a stop is requested, with
/// ETIMEDOUT when the patience ran out, with EFBIG for a reply beyond the limits and with EBADMSG for what is
/// no reply or only part of one.
SystemResult<HttpReply> askLoopback(const LoopbackAddress& address, const LoopbackRequest& request,
                                    const LoopbackLimits& limits, const std::stop_token& stop);

/// The same of a program that listens at a socket in the file system: nothing there fails with ENOENT, a path
/// that is longer than such addresses can be with ENAMETOOLONG.
SystemResult<HttpReply> askSocketFile(const std::string& path, const LoopbackRequest& request,
                                      const LoopbackLimits& limits, const std::stop_token& stop);

} // namespace lumo::platform
