#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// How an NSURLSession deals with the network.
struct ORVANE_EXPORT NSURLSessionConfiguration {
    // The system's certificates, unless the environment names others as OpenSSL's own programs take
    // them (SSL_CERT_FILE, SSL_CERT_DIR). Limits follow from the machine: bodies may take a quarter
    // of its memory, connections half of the process's descriptors.
    static NSURLSessionConfiguration defaultSessionConfiguration();

    // The authorities that are trusted, as a PEM file and as a folder of hashed names. Empty means
    // the system's.
    std::string certificateFile;
    std::string certificateFolder;

    // The proxy for an address, as "scheme://host:port"; empty where none is to be used but one
    // that the environment names. The system's settings by default. Called on the thread that sends
    // a request, and for redirections to another server on the session's.
    std::function<std::string(const std::string& url)> proxy;

    // Requests that run at once, altogether and to one host; the others wait for their turn.
    std::size_t maximumConnections = 0;
    std::size_t HTTPMaximumConnectionsPerHost = 0;

    // Bytes of status lines and header fields that one answer may have.
    std::size_t maximumHeaderLength = 0;
    // Bytes that all bodies on their way in may hold together, decoded.
    std::size_t bodyMemory = 0;
};

}  // namespace orvane::platform
