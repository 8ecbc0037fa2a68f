#include "platform/urlsession/CurlLibrary.h"

#include "platform/foundation/LibraryFunctions.h"
#include "platform/foundation/NSLog.h"

namespace orvane::platform {

namespace {

// The name of libcurl's binary interface, which has not changed since 2006.
constexpr const char* kFileName = "libcurl.so.4";

const CurlLibrary* open() {
    static CurlLibrary library;
    LibraryFunctions functions(kFileName, "No requests can be made");
    functions.find(library.easyCleanup, "curl_easy_cleanup");
    functions.find(library.easyGetinfo, "curl_easy_getinfo");
    functions.find(library.easyHeader, "curl_easy_header");
    functions.find(library.easyInit, "curl_easy_init");
    functions.find(library.easyNextheader, "curl_easy_nextheader");
    functions.find(library.easyReset, "curl_easy_reset");
    functions.find(library.easySetopt, "curl_easy_setopt");
    functions.find(library.easyStrerror, "curl_easy_strerror");
    functions.find(library.free, "curl_free");
    functions.find(library.multiAddHandle, "curl_multi_add_handle");
    functions.find(library.multiCleanup, "curl_multi_cleanup");
    functions.find(library.multiFdset, "curl_multi_fdset");
    functions.find(library.multiInfoRead, "curl_multi_info_read");
    functions.find(library.multiInit, "curl_multi_init");
    functions.find(library.multiPerform, "curl_multi_perform");
    functions.find(library.multiPoll, "curl_multi_poll");
    functions.find(library.multiRemoveHandle, "curl_multi_remove_handle");
    functions.find(library.multiSetopt, "curl_multi_setopt");
    functions.find(library.multiWakeup, "curl_multi_wakeup");
    functions.find(library.shareCleanup, "curl_share_cleanup");
    functions.find(library.shareInit, "curl_share_init");
    functions.find(library.shareSetopt, "curl_share_setopt");
    functions.find(library.slistAppend, "curl_slist_append");
    functions.find(library.slistFreeAll, "curl_slist_free_all");
    functions.find(library.url, "curl_url");
    functions.find(library.urlCleanup, "curl_url_cleanup");
    functions.find(library.urlGet, "curl_url_get");
    functions.find(library.urlSet, "curl_url_set");
    decltype(&curl_global_init) initialize = nullptr;
    functions.find(initialize, "curl_global_init");
    if (!functions.isComplete()) {
        return nullptr;
    }
    if (initialize(CURL_GLOBAL_ALL) != CURLE_OK) {
        NSLog("No requests can be made: %s cannot be used.", kFileName);
        return nullptr;
    }
    return &library;
}

}  // namespace

const CurlLibrary* CurlLibrary::instance() {
    static const CurlLibrary* const library = open();
    return library;
}

}  // namespace orvane::platform
