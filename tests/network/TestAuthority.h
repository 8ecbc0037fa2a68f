#pragma once

#include <openssl/ssl.h>

#include <memory>
#include <string>

// An authority that exists for one test run, and the keys of the servers it vouches for.
class TestAuthority {
public:
    using Context = std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)>;

    explicit TestAuthority(const char* name);
    ~TestAuthority();
    TestAuthority(const TestAuthority&) = delete;
    TestAuthority& operator=(const TestAuthority&) = delete;

    // Its certificate as a PEM file, which goes with it.
    [[nodiscard]] const std::string& file() const { return file_; }

    enum class Protocol { Http1Unsaid, Http2 };
    // What a server needs whose certificate is for this host ("DNS:name" or "IP:address").
    [[nodiscard]] Context server(const std::string& host, Protocol protocol) const;

private:
    std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key_;
    std::unique_ptr<X509, decltype(&X509_free)> certificate_;
    std::string file_;
};
