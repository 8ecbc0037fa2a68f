#pragma once

#include <openssl/ssl.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

// A real HTTP/1.1 server on a port of the loopback device, a thread a connection; over TLS when it
// gets a context. What it answers is up to its handler, which writes bytes and may break any rule.
class TestServer {
public:
    struct Request {
        std::string target;
        // The whole head, as it came.
        std::string head;
        std::string body;

        // Empty when there is none.
        [[nodiscard]] std::string header(const std::string& name) const;
    };

    class Connection {
    public:
        Connection(int socket, SSL_CTX* tls);

        void send(const std::string& bytes);
        // An answer that keeps the connection. The header lines end with a line break.
        void answer(int status, const std::string& body, const std::string& headerLines = {});
        [[nodiscard]] int answers() const { return answers_; }
        // Answers nothing, until the other side has given up.
        void stall();
        void close();

    private:
        friend class TestServer;

        bool receive();
        bool readRequest(Request& request);

        int socket_;
        // Bytes as they are, or through TLS.
        std::unique_ptr<BIO, decltype(&BIO_free_all)> stream_;
        SSL* tls_ = nullptr;
        std::string pending_;
        bool isOpen_ = true;
        int answers_ = 0;
    };

    using Handler = std::function<void(const Request&, Connection&)>;

    explicit TestServer(Handler handler, SSL_CTX* tls = nullptr);
    ~TestServer();
    TestServer(const TestServer&) = delete;
    TestServer& operator=(const TestServer&) = delete;

    [[nodiscard]] std::string url(const std::string& path,
                                  const std::string& host = "127.0.0.1") const;
    [[nodiscard]] int connections() const { return connections_; }

private:
    void accept();
    void serve(int socket);

    Handler handler_;
    SSL_CTX* tls_;
    int listener_;
    int port_ = 0;
    std::atomic<int> connections_ = 0;
    // The acceptor's, until it has ended.
    std::vector<int> sockets_;
    std::vector<std::thread> threads_;
    std::thread acceptor_;
};
