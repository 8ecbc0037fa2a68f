#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// The settings of an NSURLSession.
struct ORVANE_EXPORT NSURLSessionConfiguration {
    // Uses the system's certificates, unless the environment names others by the variables of
    // OpenSSL (SSL_CERT_FILE, SSL_CERT_DIR), and the system's proxies. Bodies may use a quarter of
    // the machine's memory, and connections half of the process's file descriptors.
    static NSURLSessionConfiguration defaultSessionConfiguration();

    // The trusted authorities, as a PEM file and as a folder of hashed names. Empty means those of
    // the system.
    std::string certificateFile;
    std::string certificateFolder;

    // Returns the proxy for an address as "scheme://host:port", or an empty text to use that of the
    // environment, if any. The session calls it for each server on a thread of its own, so it may
    // block: only the requests to that server wait for it. The result is used for five seconds.
    std::function<std::string(const std::string& url)> proxy;

    // How many requests run at the same time, in all and for one origin; others wait.
    std::size_t maximumConnections = 0;
    std::size_t HTTPMaximumConnectionsPerHost = 0;

    // The limits for the status lines and header fields of one response, in bytes and in lines.
    std::size_t maximumHeaderLength = 0;
    std::size_t maximumHeaderLines = 0;
    // How many bytes the bodies that are being received may have together, after decoding.
    std::size_t bodyMemory = 0;
};

}  // namespace orvane::platform
