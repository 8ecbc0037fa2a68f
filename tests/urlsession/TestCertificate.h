#pragma once

#include <openssl/ssl.h>

#include <memory>
#include <string>

// A self-signed certificate and the context of a TLS server that uses it.
class TestCertificate {
public:
    enum class Protocol { Http1, Http2 };

    // `host` is the certificate's subject: "DNS:name" or "IP:address".
    explicit TestCertificate(const std::string& host, Protocol protocol = Protocol::Http1);
    ~TestCertificate();
    TestCertificate(const TestCertificate&) = delete;
    TestCertificate& operator=(const TestCertificate&) = delete;

    [[nodiscard]] SSL_CTX* server() const { return server_.get(); }
    // The certificate and its key as a PEM file, which is removed with the object.
    [[nodiscard]] const std::string& file() const { return file_; }

private:
    std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)> server_;
    std::string file_ = "/tmp/orvane-certificate-XXXXXX";
};
