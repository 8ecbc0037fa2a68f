#pragma once

#include <libsoup/soup.h>

#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace network {

// A web server on a port of the loopback device that serves files from memory. It answers on the
// main thread, in the loop that the host runs.
class LocalServer {
public:
    struct File {
        const char* type;
        std::string_view bytes;
    };

    // The files by path. The bytes must outlive the server.
    explicit LocalServer(std::map<std::string, File> files);

    // Empty when the server could not start.
    [[nodiscard]] std::string url(const std::string& path) const;

private:
    std::map<std::string, File> files_;
    std::unique_ptr<SoupServer, decltype(&g_object_unref)> server_;
};

}  // namespace network
