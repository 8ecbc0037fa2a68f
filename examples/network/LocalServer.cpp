#include "LocalServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <thread>
#include <utility>

namespace network {

namespace {

using Files = std::map<std::string, LocalServer::File>;

// The first line of a request is all that matters here; it comes in one piece.
std::string requestedPath(int connection) {
    std::array<char, 4096> buffer;
    const ssize_t count = recv(connection, buffer.data(), buffer.size(), 0);
    const std::string_view request(buffer.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    constexpr std::string_view get = "GET ";
    if (!request.starts_with(get)) {
        return {};
    }
    return std::string(request.substr(get.size(), request.find(' ', get.size()) - get.size()));
}

void sendAll(int connection, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0) {
            return;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

void serve(int listener, const Files& files) {
    for (int connection = 0; (connection = accept(listener, nullptr, nullptr)) >= 0;) {
        const auto found = files.find(requestedPath(connection));
        const bool isHere = found != files.end();
        const LocalServer::File file = isHere ? found->second : LocalServer::File{"text/plain", ""};
        sendAll(connection, (isHere ? "HTTP/1.1 200 OK" : "HTTP/1.1 404 Not Found") +
                                std::string("\r\nConnection: close\r\nContent-Type: ") +
                                std::string(file.type) + "\r\nContent-Length: " +
                                std::to_string(file.bytes.size()) + "\r\n\r\n");
        sendAll(connection, file.bytes);
        close(connection);
    }
}

}  // namespace

LocalServer::LocalServer(Files files) {
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    if (bind(listener, generic, size) != 0 || listen(listener, SOMAXCONN) != 0 ||
        getsockname(listener, generic, &size) != 0) {
        close(listener);
        return;
    }
    port_ = ntohs(address.sin_port);
    std::thread([listener, served = std::move(files)] { serve(listener, served); }).detach();
}

std::string LocalServer::url(const std::string& path) const {
    return port_ == 0 ? std::string() : "http://127.0.0.1:" + std::to_string(port_) + path;
}

}  // namespace network
