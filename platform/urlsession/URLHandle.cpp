#include "platform/urlsession/URLHandle.h"

#include "platform/urlsession/NSURLSessionConfiguration.h"

namespace orvane::platform {

URLHandle::URLHandle(CURLSH* share, const NSURLSessionConfiguration& configuration)
    : share_(share), configuration_(configuration), easy_(curl().easyInit()) {
    prepare();
}

void URLHandle::reset() {
    // curl_easy_reset forgets the list of cookie files without freeing it.
    set(CURLOPT_COOKIEFILE, nullptr);
    curl().easyReset(easy_.get());
    prepare();
}

void URLHandle::prepare() {
    set(CURLOPT_SHARE, share_);
    // An empty name enables the cookies that the handle shares, without reading a file.
    set(CURLOPT_COOKIEFILE, "");
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_NOSIGNAL, 1L);
    // Do not wait for the thread of a name lookup when the handle is destroyed: a name server that
    // does not answer would block the other transfers and the exit.
    set(CURLOPT_QUICK_EXIT, 1L);
    set(CURLOPT_BUFFERSIZE, 32768L);
    set(CURLOPT_USERAGENT, "Orvane");
    // BodyDecoder decodes the bodies.
    set(CURLOPT_ACCEPT_ENCODING, "gzip");
    set(CURLOPT_HTTP_CONTENT_DECODING, 0L);
    set(CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    set(CURLOPT_NOPROGRESS, 0L);
    if (!configuration_.certificateFile.empty()) {
        set(CURLOPT_CAINFO, configuration_.certificateFile.c_str());
    }
    if (!configuration_.certificateFolder.empty()) {
        set(CURLOPT_CAPATH, configuration_.certificateFolder.c_str());
    }
}

}  // namespace orvane::platform
