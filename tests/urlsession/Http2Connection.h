#pragma once

#include <openssl/ssl.h>

// Whether HTTP/2 was agreed on in the handshake.
bool isHttp2(const SSL* tls);

// Answers every request with 200 and no body, and with the path that was asked for as the content
// type, whose name is in lower case as the protocol has it, until the other side goes.
void serveHttp2(SSL* tls);
