#include "orvane/network/RequestService.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

#include "orvane/commons/Trace.h"
#include "orvane/network/Request.h"
#include "orvane/network/Response.h"
#include "orvane/network/convert.h"
#include "orvane/thread/dispatch.h"
#include "platform/dispatch/dispatch.h"
#include "platform/foundation/NSData.h"
#include "platform/urlsession/NSError.h"
#include "platform/urlsession/NSHTTPURLResponse.h"
#include "platform/urlsession/NSMutableURLRequest.h"
#include "platform/urlsession/NSURL.h"
#include "platform/urlsession/NSURLSession.h"
#include "platform/urlsession/NSURLSessionDataTask.h"

namespace orvane::network {

namespace {

const char* methodWord(RequestMethod method) {
    switch (method) {
        case RequestMethod::POST:
            return "POST";
        case RequestMethod::PUT:
            return "PUT";
        case RequestMethod::DELETE:
            return "DELETE";
        case RequestMethod::HEADER:
            return "HEADER";
        case RequestMethod::GET:
            break;
    }
    return "GET";
}

void setHeader(platform::NSMutableURLRequest& request, const std::string& name,
               const std::string& value) {
    request.setValueForHTTPHeaderField(convert(value), convert(name));
}

void setBody(platform::NSMutableURLRequest& request, const Request::Mime& mime,
             const platform::NSData& body) {
    setHeader(request, "Content-Type", mime.asString());
    setHeader(request, "Content-Length", std::to_string(body.length()));
    request.setHTTPBody(body);
}

// Multipart bodies are not supported: with several parts none of them is sent.
void setBody(platform::NSMutableURLRequest& target, const Request& request) {
    const auto& texts = request.getContents();
    const auto& bytes = request.getByteContents();
    if (texts.size() + bytes.size() != 1) {
        return;
    }
    if (!texts.empty()) {
        const std::string& content = texts.front().content;
        setBody(target, texts.front().mime,
                platform::NSData::dataWithBytes(content.data(), content.size()));
    } else {
        const commons::ByteArray& content = bytes.front().content;
        setBody(target, bytes.front().mime,
                platform::NSData::dataWithBytes(content.data(), content.size()));
    }
}

platform::NSMutableURLRequest nativeRequest(const Request& request) {
    auto target = platform::NSMutableURLRequest::requestWithURL(
        platform::NSURL::URLWithString(convert(request.buildUrl())));
    if (!request.getLogin().empty() && !request.getPassword().empty()) {
        const std::string credentials = convert(request.getLogin()).UTF8String() + ":" +
                                        convert(request.getPassword()).UTF8String();
        const auto data = platform::NSData::dataWithBytes(credentials.data(), credentials.size());
        setHeader(target, "Authorization", "Basic " + data.base64EncodedString());
    }
    // These follow the credentials so that an application's own "Authorization" replaces them.
    for (const auto& [name, value] : request.getHeaders()) {
        setHeader(target, name, value);
    }
    if (request.getTimeout() > 0) {
        target.setTimeoutInterval(request.getTimeout());
    }
    target.setHTTPMethod(methodWord(request.getMethod()));
    setBody(target, request);
    return target;
}

Response responseFrom(const platform::NSData& data,
                      const std::optional<platform::NSHTTPURLResponse>& native,
                      const std::optional<platform::NSError>& error) {
    Response response;
    if (native) {
        response.setStatusCode(native->statusCode());
        if (!response.isOk()) {
            response.setStatusMessage(convert(
                platform::NSHTTPURLResponse::localizedStringForStatusCode(native->statusCode())));
        }
        for (const auto& [name, value] : native->allHeaderFields()) {
            response.addHeader(convert(name), convert(value));
        }
    }
    if (error) {
        response.setStatusMessage(convert(error->localizedDescription()));
    } else {
        // The ByteArray does not own the data, so the response does.
        auto storage = std::make_shared<const platform::NSData>(data);
        const auto body = commons::ByteArray::createFromNativeObject(storage.get());
        response.setBody(body, std::move(storage));
    }
    return response;
}

// Calls `answered` with the response on the session's thread.
template <typename Handler>
void send(const Request& request, Handler answered) {
    const std::uint64_t trace =
        commons::Trace::isRunning() ? commons::Trace::begin("request", request.buildUrl()) : 0;
    platform::NSURLSession::sharedSession()
        .dataTaskWithRequest(nativeRequest(request),
                             [answered = std::move(answered), trace](
                                 const platform::NSData& data,
                                 const std::optional<platform::NSHTTPURLResponse>& response,
                                 const std::optional<platform::NSError>& error) mutable {
                                 commons::Trace::end("request", trace);
                                 answered(responseFrom(data, response, error));
                             })
        ->resume();
}

// What asyncRequest passes from thread to thread. The application's functions, and what they
// captured, are destroyed on the main thread.
struct Delivery {
    Request request;
    std::function<void(const Response&)> callback;

    void deliver(const Response& response) const {
        if (response.isOk()) {
            callback(response);
        } else {
            request.onError(response.getStatusCode(), response.getStatusMessage());
        }
    }
};

}  // namespace

Response RequestService::syncRequest(const Request& request, bool /*flag*/) {
    Response result;
    platform::DispatchSemaphore answered(0);
    send(request, [&](Response response) {
        result = std::move(response);
        answered.signal();
    });
    answered.wait();
    return result;
}

// The steps of syncRequest, except that no thread of the background queue is blocked until the
// response arrives, and none until the main thread has run the callback.
void RequestService::asyncRequest(const Request& request,
                                  const std::function<void(const Response&)>& callback) {
    auto shared = std::make_shared<const Delivery>(Delivery{request, callback});
    thread::dispatch_background([delivery = std::move(shared)]() mutable {
        const Request& sent = delivery->request;
        send(sent, [delivery = std::move(delivery)](Response response) mutable {
            platform::dispatchMainAsync(
                [delivery = std::move(delivery), response = std::move(response)] {
                    delivery->deliver(response);
                });
        });
    });
}

}  // namespace orvane::network
