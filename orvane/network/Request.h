#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "orvane/commons/ByteArray.h"
#include "orvane/commons/Export.h"

namespace orvane::network {

// The HTTP method of a request.
enum class RequestMethod : std::int32_t {
    GET = 0,
    POST = 1,
    PUT = 2,
    DELETE = 3,
    // Sent as the method "HEADER", which is not HEAD: its response has a body.
    HEADER = 4,
};

// The description of one HTTP request, as data. Applications fill it in, and RequestService sends
// it. Nothing here performs input or output.
//
// A request is copied into background work. Its byte parts are views: unless the ByteArray owns its
// bytes, the application keeps them alive until the request has been answered. One thread at a time
// may use a request.
class ORVANE_EXPORT Request {
public:
    // The name and the value of a query parameter, not encoded.
    using Parameter = std::pair<std::string, std::string>;
    // Receives the status code, or -1 when there was no response, and a message for people.
    using ErrorCallback = std::function<void(std::int32_t code, const std::string& message)>;

    // A media type, such as "text/plain; charset=utf-8".
    struct ORVANE_EXPORT Mime {
        std::string type;
        std::string subtype;
        std::string parameter;

        // Returns "type/subtype", followed by "; parameter" if there is a parameter.
        [[nodiscard]] std::string asString() const;
    };

    // A body part made of text.
    struct ContentPart {
        std::string content;
        Mime mime;
    };

    // A body part made of bytes.
    struct ByteContentPart {
        commons::ByteArray content;
        Mime mime;
    };

    // Sets credentials for basic authentication. They are sent only if neither text is empty. A
    // header named "Authorization" replaces them.
    void setBasicAuthorization(const std::string& login, const std::string& password);
    // What setBasicAuthorization has set:
    [[nodiscard]] const std::string& getLogin() const { return login_; }
    [[nodiscard]] const std::string& getPassword() const { return password_; }

    // GET by default.
    void setMethod(RequestMethod method) { method_ = method; }
    [[nodiscard]] RequestMethod getMethod() const { return method_; }

    // Sets an http or https address. The query, which follows the first "?", is split at "&" and
    // added to the existing parameters; a parameter whose name is empty is dropped.
    //
    // The query must not be encoded: nothing is decoded here, and buildUrl() encodes every
    // parameter, so "%20" would be sent as "%2520". Parameters that are encoded have to be decoded
    // and passed to addParam().
    void setUrl(const std::string& url) { parseURL(url); }
    // Returns the address without its query.
    [[nodiscard]] const std::string& getUrl() const { return url_; }
    // Returns the address with its encoded parameters: those with a value come first. A space
    // becomes "+".
    [[nodiscard]] std::string buildUrl() const;

    // Appends a query parameter. A name may occur several times.
    void addParam(const std::string& name, const std::string& value);
    // The parameters with a value, in the order of adding.
    [[nodiscard]] const std::vector<Parameter>& getParameters() const { return parameters_; }
    // Appends a query parameter that has no value and no "=".
    void addSingleParam(const std::string& name);
    // The parameters without a value, in the order of adding.
    [[nodiscard]] const std::vector<std::string>& getSingleParameters() const {
        return singleParameters_;
    }

    // Sets a header field; a second value for the same name replaces the first. RequestService
    // sets Content-Type and Content-Length of a body itself, and drops a field whose name or value
    // is not valid, with a line in the log.
    void addHeader(const std::string& name, const std::string& value);
    // The header fields by name.
    [[nodiscard]] const std::unordered_map<std::string, std::string>& getHeaders() const {
        return headers_;
    }

    // Adds a body part. A request has a body only if it has exactly one part of either kind:
    // multipart bodies are not supported, and with several parts none is sent.
    //
    // Content with the subtype "x-www-form-urlencoded" must consist of "name=value" pairs, joined
    // by "&" and not encoded. It is encoded here.
    void addContent(const std::string& content, const std::string& type, const std::string& subtype,
                    const std::string& parameter = {});
    // Adds a body part that is sent as it is. See above for the lifetime of the bytes.
    void addByteContent(const commons::ByteArray& bytes, const std::string& type,
                        const std::string& subtype, const std::string& parameter);
    // Shorthands for addContent with common types; text is sent as UTF-8:
    void addHtmlContent(const std::string& content) { addContent(content, "text", "html"); }
    void addJsonContent(const std::string& content) { addContent(content, "application", "json"); }
    void addXmlContent(const std::string& content) { addContent(content, "application", "xml"); }
    void addFormContent(const std::string& content) {
        addContent(content, "application", "x-www-form-urlencoded");
    }
    void addTextContent(const std::string& content) {
        addContent(content, "text", "plain", "charset=utf-8");
    }
    // The body parts, in the order of adding:
    [[nodiscard]] const std::vector<ContentPart>& getContents() const { return contents_; }
    [[nodiscard]] const std::vector<ByteContentPart>& getByteContents() const {
        return byteContents_;
    }

    // Called on the main thread when a request sent by asyncRequest fails.
    void setErrorCallback(const ErrorCallback& callback) { errorCallback_ = callback; }
    // Calls the error callback, if there is one.
    void onError(std::int32_t code, const std::string& message) const;

    // The request fails when no byte was sent or received for this many seconds. Values of 0 and
    // below mean the default of 60 seconds.
    void setTimeout(std::int32_t seconds) { timeout_ = seconds; }
    [[nodiscard]] std::int32_t getTimeout() const { return timeout_; }

private:
    void parseURL(const std::string& url);

    std::string login_;
    std::string password_;
    RequestMethod method_ = RequestMethod::GET;
    std::string url_;
    std::vector<Parameter> parameters_;
    std::vector<std::string> singleParameters_;
    std::unordered_map<std::string, std::string> headers_;
    std::vector<ContentPart> contents_;
    std::vector<ByteContentPart> byteContents_;
    ErrorCallback errorCallback_;
    std::int32_t timeout_ = 0;
};

}  // namespace orvane::network
