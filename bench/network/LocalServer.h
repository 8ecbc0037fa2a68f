#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string>
#include <string_view>
#include <thread>

namespace bench {

// The other side of the wire for both sides of the comparison: answers "GET /small" with 100 bytes
// and "GET /large" with largeLength, over kept connections, a thread each. It ends with the
// process.
class LocalServer {
public:
    static constexpr std::size_t largeLength = std::size_t{256} << 20;

    LocalServer() : listener_(socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* const generic = reinterpret_cast<sockaddr*>(&address);
        if (bind(listener_, generic, size) != 0 || listen(listener_, 1024) != 0 ||
            getsockname(listener_, generic, &size) != 0) {
            std::abort();
        }
        port_ = ntohs(address.sin_port);
        std::thread([this] {
            for (int connection = 0; (connection = accept(listener_, nullptr, nullptr)) >= 0;) {
                std::thread(serve, connection).detach();
            }
        }).detach();
    }

    std::string url(const char* path) const {
        return "http://127.0.0.1:" + std::to_string(port_) + path;
    }

private:
    static void serve(int connection) {
        const int on = 1;
        setsockopt(connection, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        static const std::string small = answer(100) + std::string(100, 'x');
        static const std::string block(std::size_t{1} << 20, 'x');
        std::array<char, 4096> buffer;
        for (ssize_t count = 0; (count = recv(connection, buffer.data(), buffer.size(), 0)) > 0;) {
            // Requests without a body from clients that wait: one read is one request.
            const std::string_view request(buffer.data(), static_cast<std::size_t>(count));
            if (!request.starts_with("GET /large")) {
                write(connection, small);
                continue;
            }
            write(connection, answer(largeLength));
            for (std::size_t sent = 0; sent < largeLength; sent += block.size()) {
                write(connection, block);
            }
        }
        close(connection);
    }

    static std::string answer(std::size_t length) {
        return "HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\nContent-Length: " +
               std::to_string(length) + "\r\n\r\n";
    }

    static void write(int connection, std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t count = send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (count <= 0) {
                return;
            }
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
    }

    int listener_;
    int port_ = 0;
};

}  // namespace bench
