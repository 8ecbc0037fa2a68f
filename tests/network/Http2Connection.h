#pragma once

#include <openssl/ssl.h>

// Whether HTTP/2 was agreed on in the handshake.
bool isHttp2(SSL* tls);

// Answers every request with 200, the request's method and path as the body, and a content type
// whose name is in lower case as the protocol has it, until the other side goes.
void serveHttp2(SSL* tls);
