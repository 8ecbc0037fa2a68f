#include "tests/urlsession/TestServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <stdexcept>

std::string TestServer::Request::header(const std::string& name) const {
    const auto start = head.find("\r\n" + name + ": ");
    if (start == std::string::npos) {
        return {};
    }
    const auto value = start + name.size() + 4;
    return head.substr(value, head.find("\r\n", value) - value);
}

TestServer::Connection::Connection(int socket, SSL_CTX* tls)
    : socket_(socket), stream_(BIO_new_socket(socket, BIO_NOCLOSE), &BIO_free_all) {
    if (tls != nullptr) {
        stream_.reset(BIO_push(BIO_new_ssl(tls, 0), stream_.release()));
        isOpen_ = BIO_do_handshake(stream_.get()) == 1;
    }
}

void TestServer::Connection::close() {
    isOpen_ = false;
    shutdown(socket_, SHUT_RDWR);
}

void TestServer::Connection::send(const std::string& bytes) {
    for (std::size_t sent = 0; isOpen_ && sent < bytes.size();) {
        const int count =
            BIO_write(stream_.get(), bytes.data() + sent, static_cast<int>(bytes.size() - sent));
        isOpen_ = count > 0;
        sent += static_cast<std::size_t>(std::max(count, 0));
    }
}

void TestServer::Connection::answer(int status, const std::string& body,
                                    const std::string& headerLines) {
    ++answers_;
    send("HTTP/1.1 " + std::to_string(status) + " x\r\n" + headerLines +
         "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
}

void TestServer::Connection::stall() {
    while (receive()) {
    }
}

bool TestServer::Connection::receive() {
    std::array<char, 65536> buffer;
    const int count = BIO_read(stream_.get(), buffer.data(), static_cast<int>(buffer.size()));
    isOpen_ = isOpen_ && count > 0;
    if (isOpen_) {
        pending_.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return isOpen_;
}

bool TestServer::Connection::readRequest(Request& request) {
    auto end = std::string::npos;
    while ((end = pending_.find("\r\n\r\n")) == std::string::npos) {
        if (!receive()) {
            return false;
        }
    }
    request.head = pending_.substr(0, end + 2);
    pending_.erase(0, end + 4);
    const auto target = request.head.find(' ') + 1;
    request.target = request.head.substr(target, request.head.find(' ', target) - target);
    const std::string length = request.header("Content-Length");
    const std::size_t needed = length.empty() ? 0 : std::stoul(length);
    if (!fill(needed)) {
        return false;
    }
    request.body = pending_.substr(0, needed);
    pending_.erase(0, needed);
    return true;
}

bool TestServer::Connection::fill(std::size_t count) {
    while (pending_.size() < count && receive()) {
    }
    return pending_.size() >= count;
}

void TestServer::Connection::serveHttp2() {
    using namespace std::string_literals;
    constexpr char kHeaders = 1;
    constexpr char kSettings = 4;
    send("\0\0\0\4\0\0\0\0\0"s);  // empty settings
    // Every frame begins with its length, its type, its flags and the number of its stream. Before
    // the first one the client sends a preface.
    for (std::size_t skipped = 24; fill(skipped + 9);) {
        const std::string frame = pending_.substr(skipped, 9);
        pending_.erase(0, skipped + 9);
        const auto byte = [&](int i) { return static_cast<unsigned char>(frame[i]); };
        skipped = byte(0) << 16 | byte(1) << 8 | byte(2);
        const std::string stream = frame.substr(5);
        if (frame[3] == kHeaders) {
            const std::string type = std::to_string(byte(7) << 8 | byte(8));
            // Entry 8 of the static table is the status 200; the name of entry 31 is
            // "content-type".
            const std::string fields = "\x88\x0f\x10"s + static_cast<char>(type.size()) + type;
            send("\0\0"s + static_cast<char>(fields.size()) + "\1\5"s + stream + fields);
        } else if (frame[3] == kSettings && frame[4] == 0) {
            send("\0\0\0\4\1\0\0\0\0"s);  // acknowledged
        }
    }
}

TestServer::TestServer(Handler handler, SSL_CTX* tls)
    : handler_(std::move(handler)),
      tls_(tls),
      listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    if (bind(listener_, generic, size) != 0 || listen(listener_, 1024) != 0 ||
        getsockname(listener_, generic, &size) != 0) {
        throw std::runtime_error("no port of the loopback device is free");
    }
    port_ = ntohs(address.sin_port);
    acceptor_ = std::thread([this] { accept(); });
}

TestServer::~TestServer() {
    shutdown(listener_, SHUT_RDWR);
    acceptor_.join();
    for (const int socket : sockets_) {
        shutdown(socket, SHUT_RDWR);
    }
    for (std::thread& thread : threads_) {
        thread.join();
    }
    for (const int socket : sockets_) {
        ::close(socket);
    }
    ::close(listener_);
}

std::string TestServer::url(const std::string& path, const std::string& host) const {
    return (tls_ == nullptr ? "http://" : "https://") + host + ":" + std::to_string(port_) + path;
}

void TestServer::accept() {
    for (int socket = 0; (socket = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC)) >= 0;) {
        const int on = 1;
        setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        ++connections_;
        sockets_.push_back(socket);
        threads_.emplace_back([this, socket] { serve(socket); });
    }
}

void TestServer::serve(int socket) {
    // A write to a connection that the client closed must not end the process.
    sigset_t pipe;
    sigemptyset(&pipe);
    sigaddset(&pipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
    Connection connection(socket, tls_);
    if (!handler_) {
        connection.serveHttp2();
    } else {
        for (Request request; connection.isOpen_ && connection.readRequest(request);) {
            handler_(request, connection);
        }
    }
    connection.close();
}
