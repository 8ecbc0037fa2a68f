#include "tests/urlsession/TestCertificate.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>

namespace {

// A client that did not offer it ends the handshake.
int chooseHttp2(SSL*, const unsigned char** chosen, unsigned char* length, const unsigned char*,
                unsigned, void*) {
    *chosen = reinterpret_cast<const unsigned char*>("h2");
    *length = 2;
    return SSL_TLSEXT_ERR_OK;
}

}  // namespace

TestCertificate::TestCertificate(const std::string& host, Protocol protocol)
    : server_(SSL_CTX_new(TLS_server_method()), &SSL_CTX_free) {
    close(mkstemp(file_.data()));
    const std::string command =
        "openssl req -x509 -nodes -newkey ec -pkeyopt ec_paramgen_curve:P-256 -subj /CN=test "
        "-addext subjectAltName=" +
        host + " -keyout " + file_ + " -out " + file_ + " 2>/dev/null";
    EXPECT_EQ(std::system(command.c_str()), 0);
    SSL_CTX_use_certificate_file(server_.get(), file_.c_str(), SSL_FILETYPE_PEM);
    SSL_CTX_use_PrivateKey_file(server_.get(), file_.c_str(), SSL_FILETYPE_PEM);
    if (protocol == Protocol::Http2) {
        SSL_CTX_set_alpn_select_cb(server_.get(), chooseHttp2, nullptr);
    }
}

TestCertificate::~TestCertificate() {
    unlink(file_.c_str());
}
