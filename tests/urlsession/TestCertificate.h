#pragma once

#include <openssl/ssl.h>

#include <memory>
#include <string>

// What a TLS server needs, made for one test run: its certificate vouches for itself.
class TestCertificate {
public:
    enum class Protocol { Http1Unsaid, Http2 };

    // For this host: "DNS:name" or "IP:address".
    explicit TestCertificate(const std::string& host, Protocol protocol = Protocol::Http1Unsaid);
    ~TestCertificate();
    TestCertificate(const TestCertificate&) = delete;
    TestCertificate& operator=(const TestCertificate&) = delete;

    [[nodiscard]] SSL_CTX* server() const { return server_.get(); }
    // A PEM file for those who trust it, which goes with the object.
    [[nodiscard]] const std::string& file() const { return file_; }

private:
    std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)> server_;
    std::string file_ = "/tmp/orvane-certificate-XXXXXX";
};
