#include "platform/urlsession/URLTransfer.h"

#include <algorithm>
#include <new>
#include <string_view>
#include <utility>

#include "platform/urlsession/NSMutableURLRequest.h"
#include "platform/urlsession/NSURLSessionConfiguration.h"
#include "platform/urlsession/URLTask.h"
#include "platform/urlsession/headerNames.h"

namespace orvane::platform {

namespace {

// libcurl sets these fields. A length or a transfer encoding that does not match the body would
// make the server read the next request on the connection as a part of this one.
bool isFraming(const char* name) {
    return isSameHeaderName(name, "Content-Length") ||
           isSameHeaderName(name, "Transfer-Encoding") || isSameHeaderName(name, "Expect");
}

std::string_view trimmed(std::string_view text) {
    constexpr const char* blanks = " \t\r\n";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

constexpr const char* kHeaderTooLarge = "The header of the response is too large.";

// An argument of libcurl's functions for header fields: the response to the last request.
constexpr int kLastResponse = -1;

// A body up to this size is allocated in full when its length is announced, in bytes.
constexpr std::size_t kTrusted = std::size_t{16} << 20;

NSString latin1(std::string_view bytes) {
    return NSString::initWithBytes(bytes, NSISOLatin1StringEncoding).value_or(NSString());
}

// HTTP/2 sends all names in lower case, but applications look for their standard form.
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

URLTransfer::URLTransfer(URLHandle& handle, const URLTask& task,
                         const NSURLSessionConfiguration& configuration, URLBodyMemory& memory)
    : handle_(handle),
      sentBody_(task.request.HTTPBody()),
      timeout_(std::chrono::duration_cast<Clock::duration>(
          std::chrono::duration<double>(task.request.timeoutInterval()))),
      lastActivity_(Clock::now()),
      configuration_(configuration),
      memory_(memory) {
    setCallbacks();
    // Without a proxy, libcurl reads the variables of the environment.
    handle_.set(CURLOPT_PROXY, task.proxy.empty() ? nullptr : task.proxy.c_str());
    setURL(task.request.URL()->absoluteString());
    setMethodAndBody(task.request);
    setFields(task.request);
}

URLTransfer::~URLTransfer() {
    memory_.used -= body_.size();
    // The next transfer sets the other options again. But libcurl counts during the whole life of a
    // handle how often it had to repeat a request on a new connection, and gives up after a few.
    if (!hasSucceeded_ || timesSent_ > 1) {
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
    // HTTP/2 is negotiated within TLS. A secure request waits until it is known whether it can
    // share the connection that is being opened. A plain request would wait for the first response.
    isSecure_ = url.starts_with("https:");
    handle_.set(CURLOPT_HTTP_VERSION,
                static_cast<long>(isSecure_ ? CURL_HTTP_VERSION_2TLS : CURL_HTTP_VERSION_1_1));
    handle_.set(CURLOPT_PIPEWAIT, isSecure_ ? 1L : 0L);
}

void URLTransfer::setMethodAndBody(const NSMutableURLRequest& request) {
    const std::string& method = request.HTTPMethod();
    // POST and PUT announce a length of 0 if they have no body.
    if (sentBody_ || method == "POST" || method == "PUT") {
        const bool isEmpty = !sentBody_ || sentBody_->length() == 0;
        handle_.set(CURLOPT_POST, 1L);
        handle_.set(CURLOPT_POSTFIELDSIZE_LARGE,
                    isEmpty ? curl_off_t{0} : static_cast<curl_off_t>(sentBody_->length()));
        handle_.set(CURLOPT_POSTFIELDS,
                    isEmpty ? static_cast<const void*>("") : sentBody_->bytes());
        // Suppress libcurl's automatic Expect and Content-Type headers.
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
        // libcurl sends "Name;" as a field without a value, and "Name:" as no field.
        appendField(value.empty() ? name + ";" : name + ": " + std::string(value));
    }
    handle_.set(CURLOPT_HTTPHEADER, fields_.get());
}

void URLTransfer::appendField(const std::string& line) {
    if (curl_slist* list = curl().slistAppend(fields_.get(), line.c_str())) {
        static_cast<void>(fields_.release());
        fields_.reset(list);
    }
}

int URLTransfer::sending(void* self, char*, char*, int, int localPort) {
    auto& transfer = *static_cast<URLTransfer*>(self);
    ++transfer.timesSent_;
    transfer.localPort_ = localPort;
    return CURL_PREREQFUNC_OK;
}

std::size_t URLTransfer::headerArrived(char* bytes, std::size_t size, std::size_t count,
                                       void* self) {
    auto& transfer = *static_cast<URLTransfer*>(self);
    transfer.lastActivity_ = Clock::now();
    transfer.headerLength_ += size * count;
    ++transfer.headerLines_;
    // libcurl passes complete lines. An empty line ends the header. After it only the lines of a
    // trailer can follow, or another header if the response was an interim one.
    const std::string_view line(bytes, size * count);
    transfer.isHeaderComplete_ = line == "\r\n" || line == "\n" ||
                                 (transfer.isHeaderComplete_ && !line.starts_with("HTTP/"));
    // libcurl's list of fields takes quadratic time to read, so the lines are limited, too.
    if (transfer.headerLength_ > transfer.configuration_.maximumHeaderLength ||
        transfer.headerLines_ > transfer.configuration_.maximumHeaderLines) {
        transfer.refusal_ = kHeaderTooLarge;
        return CURL_WRITEFUNC_ERROR;
    }
    return size * count;
}

std::size_t URLTransfer::bodyArrived(char* bytes, std::size_t size, std::size_t count, void* self) {
    auto& transfer = *static_cast<URLTransfer*>(self);
    if (!transfer.hasBody_) {
        transfer.startBody();
    }
    const std::string_view piece(bytes, size * count);
    const bool isTaken = transfer.decoder_ ? transfer.decode(piece) : transfer.take(piece);
    return isTaken ? piece.size() : CURL_WRITEFUNC_ERROR;
}

void URLTransfer::startBody() {
    hasBody_ = true;
    curl_header* encoding = nullptr;
    if (curl().easyHeader(handle_.get(), "Content-Encoding", 0, CURLH_HEADER, kLastResponse,
                          &encoding) == CURLHE_OK &&
        encoding->amount == 1) {
        decoder_ = BodyDecoder::forEncoding(trimmed(encoding->value));
    }
}

bool URLTransfer::decode(std::string_view bytes) {
    for (;;) {
        const auto piece = decoder_->decode(bytes);
        if (!piece) {
            refusal_ = "The compressed body of the response is damaged.";
            return false;
        }
        if (piece->empty() && bytes.empty()) {
            return true;
        }
        if (!take(*piece)) {
            return false;
        }
    }
}

bool URLTransfer::take(std::string_view bytes) {
    const std::size_t needed = body_.size() + bytes.size();
    try {
        if (bytes.size() > memory_.limit - memory_.used) {
            throw std::bad_alloc();
        }
        if (needed > body_.capacity()) {
            // The announced length saves reallocations. It is only a claim of the server, so the
            // capacity stays in proportion to what has arrived.
            curl_off_t announced = -1;
            curl().easyGetinfo(handle_.get(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &announced);
            const auto expected = static_cast<std::size_t>(std::max<curl_off_t>(announced, 0));
            body_.reserve(std::max({needed, std::min(expected, std::max(kTrusted, 4 * needed)),
                                    expected < needed ? 2 * body_.capacity() : 0}));
        }
        body_.insert(body_.end(), bytes.begin(), bytes.end());
    } catch (const std::bad_alloc&) {
        refusal_ = "The body of the response is too large.";
        return false;
    }
    memory_.used += bytes.size();
    return true;
}

int URLTransfer::progressed(void* self, curl_off_t, curl_off_t down, curl_off_t, curl_off_t up) {
    auto& transfer = *static_cast<URLTransfer*>(self);
    if (const curl_off_t moved = down + up; moved != transfer.moved_) {
        transfer.moved_ = moved;
        transfer.lastActivity_ = Clock::now();
    }
    return 0;
}

int URLTransfer::ownConnectionPort() const {
    long version = CURL_HTTP_VERSION_NONE;
    curl().easyGetinfo(handle_.get(), CURLINFO_HTTP_VERSION, &version);
    const bool isOlder = version == CURL_HTTP_VERSION_1_0 || version == CURL_HTTP_VERSION_1_1;
    return !isSecure_ || isOlder ? localPort_ : 0;
}

bool URLTransfer::isReceivingHeader() const {
    return !isHeaderComplete_ || statusCode() < 200;
}

void URLTransfer::noteActivity(Clock::time_point time) {
    lastActivity_ = std::max(lastActivity_, time);
}

bool URLTransfer::end(CURLcode code) {
    // libcurl reports success when the connection is closed within the header.
    hasSucceeded_ = code == CURLE_OK && isHeaderComplete_ && statusCode() >= 200;
    if (hasSucceeded_ && decoder_ && !decoder_->isFinished()) {
        refusal_ = "The compressed body of the response is incomplete.";
        hasSucceeded_ = false;
    }
    return hasSucceeded_;
}

int URLTransfer::statusCode() const {
    long code = 0;
    curl().easyGetinfo(handle_.get(), CURLINFO_RESPONSE_CODE, &code);
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
    curl().easyGetinfo(handle_.get(), CURLINFO_REDIRECT_URL, &url);
    return url == nullptr ? std::nullopt : std::optional<std::string>(url);
}

NSHTTPURLResponse URLTransfer::response() const {
    NSHTTPURLResponse::HeaderFields fields;
    for (curl_header* header = nullptr;
         (header = curl().easyNextheader(handle_.get(), CURLH_HEADER, kLastResponse, header)) !=
         nullptr;) {
        // libcurl leaves the carriage return in values that are empty.
        const NSString value = latin1(trimmed(header->value));
        const auto [entry, isNew] = fields.try_emplace(latin1(standardName(header->name)), value);
        if (!isNew) {
            entry->second =
                entry->second.stringByAppendingString(latin1(", ")).stringByAppendingString(value);
        }
    }
    return {statusCode(), std::move(fields)};
}

NSData URLTransfer::takeBody() {
    memory_.used -= body_.size();
    return NSData::dataWithVector(std::exchange(body_, {}));
}

NSError URLTransfer::error(CURLcode code) const {
    if (refusal_ != nullptr) {
        return NSError(latin1(refusal_));
    }
    if (code == CURLE_OK) {
        return NSError(latin1("The server closed the connection within the header."));
    }
    if (code == CURLE_OUT_OF_MEMORY && headerLength_ > 0 && !isHeaderComplete_) {
        // libcurl's own limit for a single line.
        return NSError(latin1(kHeaderTooLarge));
    }
    // libcurl's message may quote a host name in any script. Callers read messages as Latin-1, and
    // get the general one instead.
    const std::string_view words(&errorBuffer_[0]);
    const bool isPlain =
        std::ranges::all_of(words, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    return NSError(latin1(isPlain && !words.empty() ? words : curl().easyStrerror(code)));
}

}  // namespace orvane::platform
