#include "tests/urlsession/TestCertificate.h"

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>
#include <unistd.h>

#include <cstdio>

namespace {

int chooseHttp2(SSL*, const unsigned char** out, unsigned char* outLength,
                const unsigned char* offered, unsigned offeredLength, void*) {
    static const unsigned char wanted[] = {2, 'h', '2'};
    unsigned char* chosen = nullptr;
    const int found =
        SSL_select_next_proto(&chosen, outLength, wanted, sizeof wanted, offered, offeredLength);
    *out = chosen;
    return found == OPENSSL_NPN_NEGOTIATED ? SSL_TLSEXT_ERR_OK : SSL_TLSEXT_ERR_NOACK;
}

}  // namespace

TestCertificate::TestCertificate(const std::string& host, Protocol protocol)
    : server_(SSL_CTX_new(TLS_server_method()), &SSL_CTX_free) {
    const std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key(EVP_EC_gen("P-256"),
                                                                  &EVP_PKEY_free);
    const std::unique_ptr<X509, decltype(&X509_free)> owned(X509_new(), &X509_free);
    X509* const certificate = owned.get();
    X509_set_version(certificate, X509_VERSION_3);
    X509_gmtime_adj(X509_getm_notBefore(certificate), -3600);
    X509_gmtime_adj(X509_getm_notAfter(certificate), 24L * 3600);
    X509_set_pubkey(certificate, key.get());
    X509_NAME* const name = X509_get_subject_name(certificate);
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC,
                               reinterpret_cast<const unsigned char*>(host.c_str()), -1, -1, 0);
    X509_set_issuer_name(certificate, name);
    X509_EXTENSION* const extension =
        X509V3_EXT_conf_nid(nullptr, nullptr, NID_subject_alt_name, host.c_str());
    X509_add_ext(certificate, extension, -1);
    X509_EXTENSION_free(extension);
    X509_sign(certificate, key.get(), EVP_sha256());
    SSL_CTX_use_certificate(server_.get(), certificate);
    SSL_CTX_use_PrivateKey(server_.get(), key.get());
    if (protocol == Protocol::Http2) {
        SSL_CTX_set_alpn_select_cb(server_.get(), chooseHttp2, nullptr);
    }
    std::FILE* file = fdopen(mkstemp(file_.data()), "w");
    PEM_write_X509(file, certificate);
    std::fclose(file);
}

TestCertificate::~TestCertificate() {
    unlink(file_.c_str());
}
