#include "orvane/services/camera/failureFrom.h"

#include <cerrno>

namespace orvane::services {

using Reason = ServiceFailure::Reason;

ServiceFailure failureFrom(GstMessage* message) {
    GError* error = nullptr;
    gchar* details = nullptr;
    gst_message_parse_error(message, &error, &details);
    ServiceFailure failure{Reason::Failed, error->message};
    // Elements report the error of the system in the details, and some of them with a code that is
    // less exact.
    const std::string context = details != nullptr ? details : "";
    const auto is = [&](GstResourceError code) {
        return g_error_matches(error, GST_RESOURCE_ERROR, code) != FALSE;
    };
    const auto names = [&](int systemError) {
        return context.find(g_strerror(systemError)) != std::string::npos;
    };
    if (is(GST_RESOURCE_ERROR_NOT_AUTHORIZED) || names(EACCES)) {
        failure = {Reason::Denied, failure.message + " (permission denied)"};
    } else if (is(GST_RESOURCE_ERROR_BUSY) || names(EBUSY)) {
        failure.message += " (another program uses it)";
    } else if (is(GST_RESOURCE_ERROR_NOT_FOUND) || names(ENODEV)) {
        failure.reason = Reason::Unavailable;
    }
    g_clear_error(&error);
    g_free(details);
    return failure;
}

}  // namespace orvane::services
