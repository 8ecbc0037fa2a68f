#pragma once

#include <curl/curl.h>

namespace orvane::platform {

// libcurl's functions. The library is opened when the first request is made, and not when the
// program is loaded: together with the TLS libraries that it needs it takes 7 MB, more than
// everything else in this library. The members are named after the functions, whose contracts hold.
struct CurlLibrary {
    // Opens and initializes the library on the first call. Returns null, after one line in the log,
    // if that fails. Thread-safe.
    static const CurlLibrary* instance();

    decltype(&::curl_easy_cleanup) easyCleanup;
    decltype(&::curl_easy_getinfo) easyGetinfo;
    decltype(&::curl_easy_header) easyHeader;
    decltype(&::curl_easy_init) easyInit;
    decltype(&::curl_easy_nextheader) easyNextheader;
    decltype(&::curl_easy_reset) easyReset;
    decltype(&::curl_easy_setopt) easySetopt;
    decltype(&::curl_easy_strerror) easyStrerror;
    decltype(&::curl_free) free;
    decltype(&::curl_multi_add_handle) multiAddHandle;
    decltype(&::curl_multi_cleanup) multiCleanup;
    decltype(&::curl_multi_fdset) multiFdset;
    decltype(&::curl_multi_info_read) multiInfoRead;
    decltype(&::curl_multi_init) multiInit;
    decltype(&::curl_multi_perform) multiPerform;
    decltype(&::curl_multi_poll) multiPoll;
    decltype(&::curl_multi_remove_handle) multiRemoveHandle;
    decltype(&::curl_multi_setopt) multiSetopt;
    decltype(&::curl_multi_wakeup) multiWakeup;
    decltype(&::curl_share_cleanup) shareCleanup;
    decltype(&::curl_share_init) shareInit;
    decltype(&::curl_share_setopt) shareSetopt;
    decltype(&::curl_slist_append) slistAppend;
    decltype(&::curl_slist_free_all) slistFreeAll;
    decltype(&::curl_url) url;
    decltype(&::curl_url_cleanup) urlCleanup;
    decltype(&::curl_url_get) urlGet;
    decltype(&::curl_url_set) urlSet;
};

// For code that runs only while the library is open: a URL has been parsed, or a session is
// running.
inline const CurlLibrary& curl() {
    return *CurlLibrary::instance();
}

}  // namespace orvane::platform
