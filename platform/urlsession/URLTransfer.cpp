#include "platform/urlsession/URLTransfer.h"

#include <algorithm>
#include <new>
#include <string_view>
#include <utility>

#include "platform/urlsession/headerNames.h"

namespace orvane::platform {

namespace {

// The session frames its messages by itself: a length or an encoding that is not that of the body
// would make the next request on the connection part of this one.
bool isFraming(const char* name) {
    return isSameHeaderName(name, "Content-Length") ||
           isSameHeaderName(name, "Transfer-Encoding") || isSameHeaderName(name, "Expect");
}

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

constexpr const char* headerTooLarge = "The header of the response is too large.";

NSString latin1(std::string_view bytes) {
    return NSString::initWithBytes(bytes, NSISOLatin1StringEncoding).value_or(NSString());
}

// HTTP/2 has all names in lower case, and applications look them up as they are written.
std::string_view standardName(const char* name) {
    static constexpr std::string_view names[] = {"Accept-Ranges",
                                                 "Access-Control-Allow-Origin",
                                                 "Age",
                                                 "Allow",
                                                 "Cache-Control",
                                                 "Connection",
                                                 "Content-Disposition",
                                                 "Content-Encoding",
                                                 "Content-Language",
                                                 "Content-Length",
                                                 "Content-Location",
                                                 "Content-Range",
                                                 "Content-Security-Policy",
                                                 "Content-Type",
                                                 "Date",
                                                 "ETag",
                                                 "Expires",
                                                 "Keep-Alive",
                                                 "Last-Modified",
                                                 "Link",
                                                 "Location",
                                                 "Pragma",
                                                 "Proxy-Authenticate",
                                                 "Refresh",
                                                 "Retry-After",
                                                 "Server",
                                                 "Set-Cookie",
                                                 "Strict-Transport-Security",
                                                 "Trailer",
                                                 "Transfer-Encoding",
                                                 "Upgrade",
                                                 "Vary",
                                                 "Via",
                                                 "Warning",
                                                 "WWW-Authenticate"};
    const std::string_view given(name);
    const auto* found = std::ranges::find_if(names, [&](std::string_view standard) {
        return standard.size() == given.size() && isSameHeaderName(standard.data(), name);
    });
    return found == std::end(names) ? given : *found;
}

}  // namespace

URLTransfer::URLTransfer(URLHandle& handle, const URLTask& task, std::size_t maximumHeaderLength,
                         URLBodyMemory& memory)
    : handle_(handle),
      sentBody_(task.request.HTTPBody()),
      timeout_(std::chrono::duration_cast<Clock::duration>(
          std::chrono::duration<double>(task.request.timeoutInterval()))),
      lastActivity_(Clock::now()),
      maximumHeaderLength_(maximumHeaderLength),
      memory_(memory) {
    const NSMutableURLRequest& request = task.request;
    setCallbacks();
    // None named: libcurl looks into the environment.
    handle_.set(CURLOPT_PROXY, task.proxy.empty() ? nullptr : task.proxy.c_str());
    setURL(request.URL()->absoluteString());
    setMethodAndBody(request);
    setFields(request);
}

URLTransfer::~URLTransfer() {
    memory_.used -= body_.capacity();
    // Nothing of one transfer may reach the next. What was set is taken back or set by the next
    // one; but the library also counts, for as long as a handle lives, how often a request had to
    // be sent again, and gives up after a few.
    if (!isOver_ || timesSent_ > 1) {
        handle_.reset();
        return;
    }
    handle_.set(CURLOPT_ERRORBUFFER, nullptr);
    handle_.set(CURLOPT_HTTPHEADER, nullptr);
    if (sentBody_) {
        handle_.set(CURLOPT_POSTFIELDS, nullptr);
    }
}

void URLTransfer::setCallbacks() {
    handle_.set(CURLOPT_ERRORBUFFER, &errorBuffer_[0]);
    handle_.set(CURLOPT_PREREQFUNCTION, &URLTransfer::sending);
    handle_.set(CURLOPT_PREREQDATA, this);
    handle_.set(CURLOPT_HEADERFUNCTION, &URLTransfer::headerArrived);
    handle_.set(CURLOPT_HEADERDATA, this);
    handle_.set(CURLOPT_WRITEFUNCTION, &URLTransfer::bodyArrived);
    handle_.set(CURLOPT_WRITEDATA, this);
    handle_.set(CURLOPT_XFERINFOFUNCTION, &URLTransfer::progressed);
    handle_.set(CURLOPT_XFERINFODATA, this);
}

void URLTransfer::setURL(const std::string& url) {
    handle_.set(CURLOPT_URL, url.c_str());
    // HTTP/2 is agreed on inside TLS. There a request waits until it is known whether it can share
    // the connection that is being made; in the clear it would wait for the first answer.
    const bool isSecure = url.starts_with("https:");
    handle_.set(CURLOPT_HTTP_VERSION,
                static_cast<long>(isSecure ? CURL_HTTP_VERSION_2TLS : CURL_HTTP_VERSION_1_1));
    handle_.set(CURLOPT_PIPEWAIT, isSecure ? 1L : 0L);
}

void URLTransfer::setMethodAndBody(const NSMutableURLRequest& request) {
    const std::string& method = request.HTTPMethod();
    // A method that means to bring something says so even when it brings nothing.
    if (sentBody_ || method == "POST" || method == "PUT") {
        const bool isEmpty = !sentBody_ || sentBody_->length() == 0;
        handle_.set(CURLOPT_POST, 1L);
        handle_.set(CURLOPT_POSTFIELDSIZE_LARGE,
                    isEmpty ? curl_off_t{0} : static_cast<curl_off_t>(sentBody_->length()));
        handle_.set(CURLOPT_POSTFIELDS,
                    isEmpty ? static_cast<const void*>("") : sentBody_->bytes());
        // No waiting for leave to send the body, and no type that nobody gave it.
        appendField("Expect:");
        appendField("Content-Type:");
    } else {
        handle_.set(CURLOPT_HTTPGET, 1L);
    }
    handle_.set(CURLOPT_CUSTOMREQUEST, method.c_str());
}

void URLTransfer::setFields(const NSMutableURLRequest& request) {
    for (const auto& [name, text] : request.allHTTPHeaderFields()) {
        if (isFraming(name.c_str())) {
            continue;
        }
        const std::string_view value = trimmed(text);
        // The library's notation: a colon alone would mean "leave this field out".
        appendField(value.empty() ? name + ";" : name + ": " + std::string(value));
    }
    handle_.set(CURLOPT_HTTPHEADER, fields_.get());
}

void URLTransfer::appendField(const std::string& line) {
    if (curl_slist* list = curl_slist_append(fields_.get(), line.c_str())) {
        static_cast<void>(fields_.release());
        fields_.reset(list);
    }
}

int URLTransfer::sending(void* self, char*, char*, int, int) {
    ++static_cast<URLTransfer*>(self)->timesSent_;
    return CURL_PREREQFUNC_OK;
}

std::size_t URLTransfer::headerArrived(char* bytes, std::size_t size, std::size_t count,
                                       void* self) {
    auto& transfer = *static_cast<URLTransfer*>(self);
    transfer.lastActivity_ = Clock::now();
    transfer.headerLength_ += size * count;
    // Lines come whole. The empty one ends this header; after it only a trailer's lines, or the
    // header after an interim response, can come.
    const std::string_view line(bytes, size * count);
    transfer.isHeaderWhole_ =
        line == "\r\n" || line == "\n" || (transfer.isHeaderWhole_ && !line.starts_with("HTTP/"));
    if (transfer.headerLength_ > transfer.maximumHeaderLength_) {
        transfer.refusal_ = headerTooLarge;
        return CURL_WRITEFUNC_ERROR;
    }
    return size * count;
}

std::size_t URLTransfer::bodyArrived(char* bytes, std::size_t size, std::size_t count, void* self) {
    auto& transfer = *static_cast<URLTransfer*>(self);
    if (!transfer.take(bytes, size * count)) {
        transfer.refusal_ = "The body of the response is too large.";
        return CURL_WRITEFUNC_ERROR;
    }
    return size * count;
}

bool URLTransfer::take(const char* bytes, std::size_t length) {
    const std::size_t needed = body_.size() + length;
    if (needed > body_.capacity()) {
        std::size_t capacity = std::max(needed, body_.capacity() * 2);
        if (body_.empty()) {
            // A length that is announced saves the growing. It is no more than somebody's word, but
            // memory that nothing is written to costs little beyond its place in the account.
            curl_off_t announced = -1;
            curl_easy_getinfo(handle_.get(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &announced);
            const auto trusted = static_cast<std::size_t>(std::max<curl_off_t>(announced, 0));
            capacity = std::max(needed, std::min(trusted, memory_.limit / 4));
        }
        if (capacity - body_.capacity() > memory_.limit - memory_.used) {
            return false;
        }
        try {
            reserveBody(capacity);
        } catch (const std::bad_alloc&) {
            return false;
        }
    }
    body_.insert(body_.end(), bytes, bytes + length);
    return true;
}

void URLTransfer::reserveBody(std::size_t capacity) {
    const std::size_t before = body_.capacity();
    body_.reserve(capacity);
    memory_.used += body_.capacity() - before;
}

int URLTransfer::progressed(void* self, curl_off_t, curl_off_t down, curl_off_t, curl_off_t up) {
    auto& transfer = *static_cast<URLTransfer*>(self);
    if (const curl_off_t moved = down + up; moved != transfer.moved_) {
        transfer.moved_ = moved;
        transfer.lastActivity_ = Clock::now();
    }
    return 0;
}

bool URLTransfer::end(CURLcode code) {
    isOver_ = code == CURLE_OK && isHeaderWhole_ && statusCode() >= 200;
    return isOver_;
}

int URLTransfer::statusCode() const {
    long code = 0;
    curl_easy_getinfo(handle_.get(), CURLINFO_RESPONSE_CODE, &code);
    return static_cast<int>(code);
}

std::optional<std::string> URLTransfer::redirection() const {
    switch (statusCode()) {
        case 301:
        case 302:
        case 303:
        case 307:
        case 308:
            break;
        default:
            return std::nullopt;
    }
    const char* url = nullptr;
    curl_easy_getinfo(handle_.get(), CURLINFO_REDIRECT_URL, &url);
    return url == nullptr ? std::nullopt : std::optional<std::string>(url);
}

NSHTTPURLResponse URLTransfer::response() const {
    NSHTTPURLResponse::HeaderFields fields;
    constexpr int lastAnswer = -1;
    for (curl_header* header = nullptr;
         (header = curl_easy_nextheader(handle_.get(), CURLH_HEADER, lastAnswer, header)) !=
         nullptr;) {
        const NSString value = latin1(header->value);
        const auto [entry, isNew] = fields.try_emplace(latin1(standardName(header->name)), value);
        if (!isNew) {
            entry->second =
                entry->second.stringByAppendingString(latin1(", ")).stringByAppendingString(value);
        }
    }
    return {statusCode(), std::move(fields)};
}

NSData URLTransfer::takeBody() {
    memory_.used -= body_.capacity();
    return NSData::dataWithVector(std::exchange(body_, {}));
}

NSError URLTransfer::error(CURLcode code) const {
    if (refusal_ != nullptr) {
        return NSError(latin1(refusal_));
    }
    if (code == CURLE_OK) {
        return NSError(latin1("The server closed the connection within the header."));
    }
    if (code == CURLE_OUT_OF_MEMORY && headerLength_ > 0 && !isHeaderWhole_) {
        // The library's own limit, on a single line.
        return NSError(latin1(headerTooLarge));
    }
    // The library may quote a name in any script; callers that read Latin-1 get its bare phrase.
    const std::string_view words(&errorBuffer_[0]);
    const bool isPlain =
        std::ranges::all_of(words, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    return NSError(latin1(isPlain && !words.empty() ? words : curl_easy_strerror(code)));
}

}  // namespace orvane::platform
