#pragma once

#include <openssl/ssl.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

// An HTTP/1.1 server on a port of the loopback device, over TLS if it gets a context. Each
// connection has a thread, which calls the handler for each request. The handler writes bytes, so
// it can also answer in ways that break the protocol. Without a handler the server speaks HTTP/2.
class TestServer {
public:
    struct Request {
        std::string target;
        // The request line and the header lines, as received.
        std::string head;
        std::string body;

        // The value of a header field; empty if there is no such field. Case is significant.
        [[nodiscard]] std::string header(const std::string& name) const;
    };

    class Connection {
    public:
        Connection(int socket, SSL_CTX* tls);

        void send(const std::string& bytes);
        // Sends a complete response and keeps the connection. Each header line ends with "\r\n".
        void answer(int status, const std::string& body, const std::string& headerLines = {});
        [[nodiscard]] int answers() const { return answers_; }
        // Sends nothing and returns when the client has closed the connection.
        void stall();
        void close();

    private:
        friend class TestServer;

        bool receive();
        // Receives until `count` bytes are pending; returns false if the client closes before.
        bool fill(std::size_t count);
        // Answers every request until the client closes the connection: with status 200, no body,
        // and the number of its stream as the value of "content-type".
        void serveHttp2();
        bool readRequest(Request& request);

        int socket_;
        // The socket, or TLS on top of it.
        std::unique_ptr<BIO, decltype(&BIO_free_all)> stream_;
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
    // Used by the acceptor's thread until it has ended.
    std::vector<int> sockets_;
    std::vector<std::thread> threads_;
    std::thread acceptor_;
};
