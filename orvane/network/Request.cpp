#include "orvane/network/Request.h"

#include <sstream>
#include <string_view>

namespace orvane::network {

namespace {

// Keeps empty tokens between delimiters, but not the one after a trailing delimiter.
std::vector<std::string> split(const std::string& text, char delimiter) {
    std::vector<std::string> tokens;
    std::istringstream stream(text);
    for (std::string token; std::getline(stream, token, delimiter);) {
        tokens.push_back(token);
    }
    return tokens;
}

// A token that begins with "=" has no name and is dropped. A token without "=" is a single
// parameter, even if it is empty.
void parseParameters(const std::string& query, std::vector<Request::Parameter>& pairs,
                     std::vector<std::string>& singles) {
    for (const std::string& token : split(query, '&')) {
        const auto equals = token.find('=');
        if (equals == std::string::npos) {
            singles.push_back(token);
        } else if (equals > 0) {
            pairs.emplace_back(token.substr(0, equals), token.substr(equals + 1));
        }
    }
}

// The unreserved characters of RFC 3986. std::isalnum would depend on the locale.
bool isUnreserved(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '.' || c == '_' || c == '~';
}

void appendEncoded(std::string& result, std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    for (const char c : text) {
        if (isUnreserved(c)) {
            result += c;
        } else if (c == ' ') {
            result += '+';
        } else {
            const auto byte = static_cast<unsigned char>(c);
            result += '%';
            result += digits[byte >> 4];
            result += digits[byte & 0xF];
        }
    }
}

std::string buildParameters(const std::vector<Request::Parameter>& pairs,
                            const std::vector<std::string>& singles) {
    std::string result;
    const char* separator = "";
    for (const auto& [name, value] : pairs) {
        result += separator;
        appendEncoded(result, name);
        result += '=';
        appendEncoded(result, value);
        separator = "&";
    }
    for (const std::string& name : singles) {
        result += separator;
        appendEncoded(result, name);
        separator = "&";
    }
    return result;
}

std::string processFormContent(const std::string& content) {
    std::vector<Request::Parameter> pairs;
    std::vector<std::string> singles;
    parseParameters(content, pairs, singles);
    return buildParameters(pairs, singles);
}

}  // namespace

std::string Request::Mime::asString() const {
    std::string text = type + "/" + subtype;
    if (!parameter.empty()) {
        text += "; " + parameter;
    }
    return text;
}

void Request::setBasicAuthorization(const std::string& login, const std::string& password) {
    login_ = login;
    password_ = password;
}

void Request::parseURL(const std::string& url) {
    const auto question = url.find('?');
    url_ = url.substr(0, question);
    if (question != std::string::npos) {
        parseParameters(url.substr(question + 1), parameters_, singleParameters_);
    }
}

std::string Request::buildUrl() const {
    const std::string query = buildParameters(parameters_, singleParameters_);
    return query.empty() ? url_ : url_ + "?" + query;
}

void Request::addParam(const std::string& name, const std::string& value) {
    parameters_.emplace_back(name, value);
}

void Request::addSingleParam(const std::string& name) {
    singleParameters_.push_back(name);
}

void Request::addHeader(const std::string& name, const std::string& value) {
    headers_[name] = value;
}

void Request::addContent(const std::string& content, const std::string& type,
                         const std::string& subtype, const std::string& parameter) {
    const bool isForm = subtype == "x-www-form-urlencoded";
    contents_.push_back(
        {isForm ? processFormContent(content) : content, {type, subtype, parameter}});
}

void Request::addByteContent(const commons::ByteArray& bytes, const std::string& type,
                             const std::string& subtype, const std::string& parameter) {
    byteContents_.push_back({bytes, {type, subtype, parameter}});
}

void Request::onError(std::int32_t code, const std::string& message) const {
    if (errorCallback_) {
        errorCallback_(code, message);
    }
}

}  // namespace orvane::network
