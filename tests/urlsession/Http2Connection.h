#pragma once

#include <openssl/ssl.h>

// Whether HTTP/2 was negotiated in the handshake.
bool isHttp2(const SSL* tls);

// Answers every request until the client closes the connection: with status 200, no body, and the
// requested path as the value of "content-type" (the protocol sends names in lower case).
void serveHttp2(SSL* tls);
