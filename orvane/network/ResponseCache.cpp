#include "orvane/network/ResponseCache.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <iomanip>
#include <sstream>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "orvane/network/Request.h"
#include "orvane/network/Response.h"

namespace orvane::network {

namespace {

namespace fs = std::filesystem;

// The first line of each file. Files of another version are not read.
constexpr std::string_view kVersion = "orvane response 1";

// The FNV-1a hash (http://www.isthe.com/chongo/tech/comp/fnv). A file contains its address, so
// addresses with the same hash replace one another.
std::uint64_t hashOf(std::string_view text) {
    std::uint64_t hash = 0xcbf29ce484222325u;
    for (const char c : text) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3u;
    }
    return hash;
}

std::string lowered(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return result;
}

std::string headerOf(const Response& response, std::string_view name) {
    for (const auto& [key, value] : response.getHeaders()) {
        if (lowered(key) == name) {
            return value;
        }
    }
    return {};
}

// The number after "name=" in a Cache-Control header.
std::optional<std::time_t> directive(std::string_view control, std::string_view name) {
    const std::size_t at = control.find(name);
    if (at == control.npos) {
        return std::nullopt;
    }
    const std::string_view rest = control.substr(at + name.size());
    std::int64_t seconds = 0;
    const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), seconds);
    constexpr std::int64_t kLongest = std::int64_t{10} * 365 * 24 * 3600;
    return result.ec == std::errc() && seconds >= 0
               ? std::optional<std::time_t>(std::min(seconds, kLongest))
               : std::nullopt;
}

// A date as in "Sun, 06 Nov 1994 08:49:37 GMT". Independent of the locale.
std::optional<std::time_t> dateOf(const std::string& text) {
    static constexpr std::string_view kMonths = "JanFebMarAprMayJunJulAugSepOctNovDec";
    std::tm date{};
    std::array<char, 4> month{};
    if (std::sscanf(text.c_str(), "%*3s, %d %3s %d %d:%d:%d GMT", &date.tm_mday, month.data(),
                    &date.tm_year, &date.tm_hour, &date.tm_min, &date.tm_sec) != 6) {
        return std::nullopt;
    }
    const std::size_t at = kMonths.find(month.data());
    if (at == kMonths.npos || date.tm_year < 1970 || date.tm_year > 9999) {
        return std::nullopt;
    }
    date.tm_mon = static_cast<int>(at / 3);
    date.tm_year -= 1900;
    return timegm(&date);
}

// A header of one line; what could not be written back is empty.
std::string line(const std::string& text) {
    return text.find_first_of("\r\n") == text.npos ? text : std::string();
}

}  // namespace

ResponseCache::ResponseCache(fs::path folder, std::uintmax_t limit)
    : folder_(std::move(folder)), limit_(limit) {}

fs::path ResponseCache::pathOf(const std::string& address) const {
    std::ostringstream name;
    name << std::hex << std::setfill('0') << std::setw(16) << hashOf(address);
    return folder_ / name.str();
}

auto ResponseCache::find(const std::string& address) -> std::optional<Entry> {
    const std::lock_guard lock(mutex_);
    const fs::path path = pathOf(address);
    std::ifstream file(path, std::ios::binary);
    std::string version;
    std::string stated;
    std::string expires;
    Entry entry;
    if (!std::getline(file, version) || version != kVersion || !std::getline(file, stated) ||
        stated != address || !std::getline(file, expires) || !std::getline(file, entry.entityTag) ||
        !std::getline(file, entry.lastModified)) {
        return std::nullopt;
    }
    std::from_chars(expires.data(), expires.data() + expires.size(), entry.expires);
    std::ostringstream body;
    body << file.rdbuf();
    entry.body = std::move(body).str();
    std::error_code ignored;
    fs::last_write_time(path, fs::file_time_type::clock::now(), ignored);
    return entry;
}

void ResponseCache::addConditions(Request& request, const Entry& entry) {
    if (!entry.entityTag.empty()) {
        request.addHeader("If-None-Match", entry.entityTag);
    } else if (!entry.lastModified.empty()) {
        request.addHeader("If-Modified-Since", entry.lastModified);
    }
}

std::optional<std::time_t> ResponseCache::expiryOf(const Response& response, std::time_t now) {
    const std::string control = lowered(headerOf(response, "cache-control"));
    if (control.find("no-store") != control.npos || headerOf(response, "vary") == "*") {
        return std::nullopt;
    }
    if (control.find("no-cache") != control.npos) {
        return now;
    }
    if (const auto age = directive(control, "max-age=")) {
        const auto spent = directive("age=" + headerOf(response, "age"), "age=");
        return now + *age - spent.value_or(0);
    }
    const auto date = dateOf(headerOf(response, "date"));
    if (const std::string expires = headerOf(response, "expires"); !expires.empty()) {
        const auto stated = dateOf(expires);
        return stated ? now + (*stated - date.value_or(now)) : now;
    }
    const auto modified = dateOf(headerOf(response, "last-modified"));
    constexpr std::time_t kDay = 24 * 3600;
    return modified && *modified < now ? now + std::min((now - *modified) / 10, kDay) : now;
}

void ResponseCache::store(const std::string& address, const Response& response, std::time_t now) {
    const auto expires = expiryOf(response, now);
    const std::lock_guard lock(mutex_);
    const commons::ByteArray& body = response.getBody();
    if (!expires || response.getStatusCode() != 200 || body.size() > limit_ / 2) {
        std::error_code ignored;
        fs::remove(pathOf(address), ignored);
        return;
    }
    write(address, {std::string(reinterpret_cast<const char*>(body.data()), body.size()), *expires,
                    headerOf(response, "etag"), headerOf(response, "last-modified")});
    shrink();
}

void ResponseCache::renew(const std::string& address, Entry entry, const Response& response,
                          std::time_t now) {
    entry.expires = expiryOf(response, now).value_or(now);
    const std::lock_guard lock(mutex_);
    write(address, entry);
}

void ResponseCache::write(const std::string& address, const Entry& entry) {
    if (line(address).empty()) {
        return;
    }
    std::error_code error;
    fs::create_directories(folder_, error);
    const fs::path path = pathOf(address);
    const fs::path partial = path.string() + "." + std::to_string(getpid());
    {
        std::ofstream file(partial, std::ios::binary | std::ios::trunc);
        file << kVersion << '\n'
             << address << '\n'
             << entry.expires << '\n'
             << line(entry.entityTag) << '\n'
             << line(entry.lastModified) << '\n'
             << entry.body;
        if (!file.flush()) {
            error = std::make_error_code(std::errc::io_error);
        }
    }
    if (!error) {
        fs::rename(partial, path, error);
    }
    if (error) {
        fs::remove(partial, error);
    }
}

void ResponseCache::shrink() {
    struct File {
        fs::path path;
        std::uintmax_t size;
        fs::file_time_type used;
    };
    std::vector<File> files;
    std::uintmax_t total = 0;
    std::error_code error;
    for (fs::directory_iterator at(folder_, error), end; !error && at != end; at.increment(error)) {
        std::error_code gone;
        const File file{at->path(), at->file_size(gone), at->last_write_time(gone)};
        if (!gone) {
            total += file.size;
            files.push_back(file);
        }
    }
    std::ranges::sort(files, {}, &File::used);
    for (const File& file : files) {
        if (total <= limit_) {
            return;
        }
        fs::remove(file.path, error);
        total -= file.size;
    }
}

}  // namespace orvane::network
