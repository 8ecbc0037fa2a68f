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

enum class RequestMethod : std::int32_t {
    GET = 0,
    POST = 1,
    PUT = 2,
    DELETE = 3,
    // Sent as the word "HEADER", which is a method of its own and not HEAD: the answer has a body.
    HEADER = 4,
};

// The description of one HTTP request, as data. It does no input or output: applications fill it,
// RequestService carries it out.
//
// It is copied by value into background work. A byte part is a view: whoever adds one keeps its
// bytes alive until the request has been answered, unless the ByteArray owns them.
class ORVANE_EXPORT Request {
public:
    using Parameter = std::pair<std::string, std::string>;
    using ErrorCallback = std::function<void(std::int32_t, const std::string&)>;

    struct ORVANE_EXPORT Mime {
        std::string type;
        std::string subtype;
        std::string parameter;

        // "type/subtype", and "; parameter" when there is one.
        [[nodiscard]] std::string asString() const;
    };

    struct ContentPart {
        std::string content;
        Mime mime;
    };

    struct ByteContentPart {
        commons::ByteArray content;
        Mime mime;
    };

    void setBasicAuthorization(const std::string& login, const std::string& password);
    [[nodiscard]] const std::string& getLogin() const { return login_; }
    [[nodiscard]] const std::string& getPassword() const { return password_; }

    void setMethod(RequestMethod method) { method_ = method; }
    [[nodiscard]] RequestMethod getMethod() const { return method_; }

    // What follows the first "?" is added to the parameters that are there already. Nothing is
    // percent-decoded, and buildUrl() encodes: an escape in the query of this url goes out with
    // its percent sign escaped. Give such parameters decoded, through addParam().
    void setUrl(const std::string& url) { parseURL(url); }
    // Without the query.
    [[nodiscard]] const std::string& getUrl() const { return url_; }
    // The url with all parameters, encoded: those with a value first.
    [[nodiscard]] std::string buildUrl() const;

    void addParam(const std::string& name, const std::string& value);
    [[nodiscard]] const std::vector<Parameter>& getParameters() const { return parameters_; }
    // A parameter without "=".
    void addSingleParam(const std::string& name);
    [[nodiscard]] const std::vector<std::string>& getSingleParameters() const {
        return singleParameters_;
    }

    // A second value for a name replaces the first.
    void addHeader(const std::string& name, const std::string& value);
    [[nodiscard]] const std::unordered_map<std::string, std::string>& getHeaders() const {
        return headers_;
    }

    // A request carries a body only when it has exactly one part, of either kind.
    // Content of the subtype "x-www-form-urlencoded" is taken as name=value pairs that are not
    // encoded yet, and stored encoded.
    void addContent(const std::string& content, const std::string& type, const std::string& subtype,
                    const std::string& parameter = {});
    void addByteContent(const commons::ByteArray& bytes, const std::string& type,
                        const std::string& subtype, const std::string& parameter);
    void addHtmlContent(const std::string& content) { addContent(content, "text", "html"); }
    void addJsonContent(const std::string& content) { addContent(content, "application", "json"); }
    void addXmlContent(const std::string& content) { addContent(content, "application", "xml"); }
    void addFormContent(const std::string& content) {
        addContent(content, "application", "x-www-form-urlencoded");
    }
    void addTextContent(const std::string& content) {
        addContent(content, "text", "plain", "charset=utf-8");
    }
    [[nodiscard]] const std::vector<ContentPart>& getContents() const { return contents_; }
    [[nodiscard]] const std::vector<ByteContentPart>& getByteContents() const {
        return byteContents_;
    }

    // Told of a failure, with the status code (-1 without a response) and a message.
    void setErrorCallback(const ErrorCallback& callback) { errorCallback_ = callback; }
    void onError(std::int32_t code, const std::string& message) const;

    // How many seconds may pass without a byte moving; not above 0 means the platform's default.
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
