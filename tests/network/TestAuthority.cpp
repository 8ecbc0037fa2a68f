#include "TestAuthority.h"

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>

namespace {

using Key = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;
using Certificate = std::unique_ptr<X509, decltype(&X509_free)>;

Key newKey() {
    return {EVP_EC_gen("P-256"), &EVP_PKEY_free};
}

void addExtension(X509* certificate, int kind, const std::string& value) {
    X509V3_CTX context;
    X509V3_set_ctx(&context, certificate, certificate, nullptr, nullptr, 0);
    X509_EXTENSION* extension = X509V3_EXT_conf_nid(nullptr, &context, kind, value.c_str());
    X509_add_ext(certificate, extension, -1);
    X509_EXTENSION_free(extension);
}

Certificate newCertificate(const char* name, EVP_PKEY* key, long serial) {
    Certificate certificate(X509_new(), &X509_free);
    X509_set_version(certificate.get(), X509_VERSION_3);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), serial);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -3600);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), 24L * 3600);
    X509_set_pubkey(certificate.get(), key);
    X509_NAME_add_entry_by_txt(X509_get_subject_name(certificate.get()), "CN", MBSTRING_ASC,
                               reinterpret_cast<const unsigned char*>(name), -1, -1, 0);
    return certificate;
}

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

TestAuthority::TestAuthority(const char* name)
    : key_(newKey()),
      certificate_(newCertificate(name, key_.get(), 1)),
      file_("/tmp/orvane-authority-XXXXXX") {
    X509_set_issuer_name(certificate_.get(), X509_get_subject_name(certificate_.get()));
    addExtension(certificate_.get(), NID_basic_constraints, "critical,CA:TRUE");
    X509_sign(certificate_.get(), key_.get(), EVP_sha256());
    std::FILE* file = fdopen(mkstemp(file_.data()), "w");
    PEM_write_X509(file, certificate_.get());
    std::fclose(file);
}

TestAuthority::~TestAuthority() {
    unlink(file_.c_str());
}

TestAuthority::Context TestAuthority::server(const std::string& host, Protocol protocol) const {
    const Key key = newKey();
    const Certificate certificate = newCertificate("Test server", key.get(), 2);
    X509_set_issuer_name(certificate.get(), X509_get_subject_name(certificate_.get()));
    addExtension(certificate.get(), NID_subject_alt_name, host);
    X509_sign(certificate.get(), key_.get(), EVP_sha256());
    Context context(SSL_CTX_new(TLS_server_method()), &SSL_CTX_free);
    SSL_CTX_use_certificate(context.get(), certificate.get());
    SSL_CTX_use_PrivateKey(context.get(), key.get());
    if (protocol == Protocol::Http2) {
        SSL_CTX_set_alpn_select_cb(context.get(), chooseHttp2, nullptr);
    }
    return context;
}
