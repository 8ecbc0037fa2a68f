#pragma once

#include <cstdint>
#include <ctime>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>

#include "orvane/commons/Export.h"

namespace orvane::network {

class Request;
class Response;

// Keeps bodies of responses in a folder, each in a file, for as long as the servers say (RFC 9111).
// What has not been used for the longest time is deleted when the folder exceeds its limit. A file
// that cannot be read or written counts as missing.
//
// Thread-safe. Several processes may share a folder: files are replaced as a whole.
class ORVANE_EXPORT ResponseCache {
public:
    // `limit` is the size of all files together, in bytes.
    ResponseCache(std::filesystem::path folder, std::uintmax_t limit);

    // What was kept for an address.
    struct Entry {
        std::string body;
        // Until then the body may be used without asking the server, in seconds since 1970.
        std::time_t expires = 0;
        std::string entityTag;     // for "If-None-Match"; may be empty
        std::string lastModified;  // for "If-Modified-Since"; may be empty
    };
    // Returns what is kept for an address, also if it has expired.
    std::optional<Entry> find(const std::string& address);
    // Makes the server answer with status 304, and without a body, if the entry is still right.
    static void addConditions(Request& request, const Entry& entry);

    // Keeps a response of status 200, received at `now`, if its headers allow it.
    void store(const std::string& address, const Response& response, std::time_t now);
    // Keeps an entry for longer, after a response of status 304.
    void renew(const std::string& address, Entry entry, const Response& response, std::time_t now);

    // Until when a response may be used, by its headers; nothing if it may not be kept. Without a
    // statement of the server, a tenth of the time for which it has not changed, at most a day.
    static std::optional<std::time_t> expiryOf(const Response& response, std::time_t now);

private:
    std::filesystem::path pathOf(const std::string& address) const;
    void write(const std::string& address, const Entry& entry);
    void shrink();

    const std::filesystem::path folder_;
    const std::uintmax_t limit_;
    std::mutex mutex_;
};

}  // namespace orvane::network
