#pragma once

#include <map>
#include <string>
#include <string_view>

namespace network {

// As much of a web server as the example asks for: it answers each GET on a port of the loopback
// device, one after the other. Its thread runs until the process ends.
class LocalServer {
public:
    struct File {
        std::string_view type;
        std::string_view bytes;
    };

    // The files by path; what they view outlives the process's last request.
    explicit LocalServer(std::map<std::string, File> files);

    // Empty when no port could be had.
    [[nodiscard]] std::string url(const std::string& path) const;

private:
    int port_ = 0;
};

}  // namespace network
