#include "Platform/LoopbackHttp.h"

#include "Platform/Clock.h"
#include "Platform/Descriptor.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace lumo::platform {

namespace {

SystemResult<Descriptor> openSocket(int family) {
    Descriptor opened(socket(family, SOCK_STREAM, 0));
    if (!opened.isOpen() || fcntl(opened.number(), F_SETFD, FD_CLOEXEC) != 0 ||
        fcntl(opened.number(), F_SETFL, O_NONBLOCK) != 0) {
        return failed(errno);
    }
    return opened;
}

/// What the calls with addresses take: a pointer to the beginning that all families share.
template <class Address>
int connectTo(int number, const Address& address) {
    return connect(number, reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

int startConnecting(int number, const LoopbackAddress& address) {
    if (address.family == LoopbackFamily::ipv4) {
        sockaddr_in place = {};
        place.sin_family = AF_INET;
        place.sin_port = htons(address.port);
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return connectTo(number, place);
    }
    sockaddr_in6 place = {};
    place.sin6_family = AF_INET6;
    place.sin6_port = htons(address.port);
    place.sin6_addr = in6addr_loopback;
    return connectTo(number, place);
}

/// The address of a socket in the file system.
SystemResult<sockaddr_un> addressOf(const std::string& path) {
    sockaddr_un place = {};
    if (path.size() >= sizeof place.sun_path) {
        return failed(ENAMETOOLONG);
    }
    place.sun_family = AF_UNIX;
    path.copy(place.sun_path, path.size());
    return place;
}

/// One connection from its opening to the end of the reply.
class Connection final {
  public:
    Connection(Descriptor opened, std::chrono::milliseconds patience, const std::stop_token& stop)
        : socket_(std::move(opened)),
          end_(monotonicSeconds() + std::chrono::duration<double>(patience).count()), stop_(stop) {}

    /// Waits for the connection that the call begins, which takes a socket's number.
    template <class StartConnecting>
    SystemResult<void> connect(const StartConnecting& start) {
        if (start(socket_.number()) == 0) {
            return {};
        }
        if (errno != EINPROGRESS && errno != EINTR) {
            return failed(errno);
        }
        if (const auto ready = wait(POLLOUT); !ready) {
            return ready;
        }
        int problem = 0;
        socklen_t size = sizeof problem;
        if (getsockopt(socket_.number(), SOL_SOCKET, SO_ERROR, &problem, &size) != 0) {
            return failed(errno);
        }
        return problem == 0 ? SystemResult<void>() : failed(problem);
    }

    SystemResult<void> send(std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t sent = ::send(socket_.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (sent >= 0) {
                bytes.remove_prefix(static_cast<std::size_t>(sent));
                continue;
            }
            if (errno != EINTR && errno != EAGAIN) {
                return failed(errno);
            }
            if (const auto ready = wait(POLLOUT); !ready) {
                return ready;
            }
        }
        return {};
    }

    SystemResult<HttpReply> receive(std::size_t mostBodyBytes) {
        using State = HttpReplyReader::State;
        HttpReplyReader reader(mostBodyBytes);
        std::array<char, 16384> buffer = {};
        for (State state = State::unfinished; state != State::finished;) {
            if (const auto ready = wait(POLLIN); !ready) {
                return std::unexpected(ready.error());
            }
            const ssize_t count = recv(socket_.number(), buffer.data(), buffer.size(), 0);
            if (count < 0) {
                if (errno != EINTR && errno != EAGAIN) {
                    return failed(errno);
                }
                continue;
            }
            state = count > 0 ? reader.add({buffer.data(), static_cast<std::size_t>(count)}) : reader.end();
            if (state == State::malformed || state == State::tooLarge) {
                return failed(state == State::tooLarge ? EFBIG : EBADMSG);
            }
        }
        return reader.take();
    }

  private:
    /// Waits until the socket can do that, or has nothing more to wait for.
    [[nodiscard]] SystemResult<void> wait(short events) const {
        constexpr double longestPause = 0.05; // Within which a stop is noticed.
        constexpr double millisecondsASecond = 1000;
        for (;;) {
            const double left = end_ - monotonicSeconds();
            if (stop_.stop_requested() || left <= 0) {
                return failed(stop_.stop_requested() ? ECANCELED : ETIMEDOUT);
            }
            pollfd watched = {.fd = socket_.number(), .events = events, .revents = 0};
            const int pause = 1 + static_cast<int>(std::min(left, longestPause) * millisecondsASecond);
            const int count = poll(&watched, 1, pause);
            if (count > 0) {
                return {};
            }
            if (count < 0 && errno != EINTR) {
                return failed(errno);
            }
        }
    }

    Descriptor socket_;
    double end_;
    const std::stop_token& stop_;
};

std::string bytesOf(const LoopbackRequest& request, const std::string& host) {
    std::string bytes = (request.json ? "POST " : "GET ") + request.path + " HTTP/1.0\r\nHost: " + host +
                        "\r\nAccept: application/json\r\nConnection: close\r\n";
    if (request.json) {
        bytes += "Content-Type: application/json\r\nContent-Length: " + std::to_string(request.json->size()) +
                 "\r\n";
    }
    return bytes + "\r\n" + request.json.value_or("");
}

template <class StartConnecting>
SystemResult<HttpReply> ask(int family, const StartConnecting& start, const std::string& bytes,
                            const LoopbackLimits& limits, const std::stop_token& stop) {
    SystemResult<Descriptor> opened = openSocket(family);
    if (!opened) {
        return std::unexpected(opened.error());
    }
    Connection connection(std::move(*opened), limits.patience, stop);
    if (const auto connected = connection.connect(start); !connected) {
        return std::unexpected(connected.error());
    }
    if (const auto sent = connection.send(bytes); !sent) {
        return std::unexpected(sent.error());
    }
    return connection.receive(limits.mostBodyBytes);
}

} // namespace

std::string hostAndPort(const LoopbackAddress& address) {
    return (address.family == LoopbackFamily::ipv4 ? "127.0.0.1:" : "[::1]:") + std::to_string(address.port);
}

SystemResult<HttpReply> askLoopback(const LoopbackAddress& address, const LoopbackRequest& request,
                                    const LoopbackLimits& limits, const std::stop_token& stop) {
    return ask(
        address.family == LoopbackFamily::ipv4 ? AF_INET : AF_INET6,
        [&](int number) { return startConnecting(number, address); }, bytesOf(request, hostAndPort(address)),
        limits, stop);
}

SystemResult<HttpReply> askSocketFile(const std::string& path, const LoopbackRequest& request,
                                      const LoopbackLimits& limits, const std::stop_token& stop) {
    const auto address = addressOf(path);
    if (!address) {
        return std::unexpected(address.error());
    }
    return ask(
        AF_UNIX, [&](int number) { return connectTo(number, *address); }, bytesOf(request, "localhost"),
        limits, stop);
}

} // namespace lumo::platform
