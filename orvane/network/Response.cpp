#include "orvane/network/Response.h"

#include <utility>

namespace orvane::network {

void Response::setBody(const commons::ByteArray& body, std::shared_ptr<const void> storage) {
    body_ = body;
    bodyStorage_ = std::move(storage);
}

}  // namespace orvane::network
