#pragma once

#include <memory>

#include "platform/urlsession/CurlLibrary.h"

namespace orvane::platform {

struct NSURLSessionConfiguration;

// A libcurl handle that is used for one transfer after another. It has the options that all
// transfers of a session share; each transfer sets its own options and resets them at its end. Used
// by the session's thread only.
class URLHandle {
public:
    URLHandle(CURLSH* share, const NSURLSessionConfiguration& configuration);
    URLHandle(const URLHandle&) = delete;
    URLHandle& operator=(const URLHandle&) = delete;

    [[nodiscard]] CURL* get() const { return easy_.get(); }

    template <typename Value>
    void set(CURLoption option, Value value) {
        curl().easySetopt(easy_.get(), option, value);
    }

    // Restores the state of a new handle.
    void reset();

private:
    struct Deleter {
        void operator()(CURL* easy) const { curl().easyCleanup(easy); }
    };

    void prepare();

    CURLSH* share_;
    const NSURLSessionConfiguration& configuration_;
    std::unique_ptr<CURL, Deleter> easy_;
};

}  // namespace orvane::platform
